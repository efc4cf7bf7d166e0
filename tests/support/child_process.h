#ifndef TESTS_SUPPORT_CHILD_PROCESS_H
#define TESTS_SUPPORT_CHILD_PROCESS_H

// Runs a piece of a test in a child process of its own, for code that ends the process: its
// standard output and standard error go to files, its standard input comes from a pipe that the
// test feeds when it likes, and the test reads the exit status and both texts.
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace ktltest {

// The exit status of a child whose body returned instead of ending the process.
const int kBodyReturned = 99;

class ChildProcess {
 public:
  // Starts body in a child; when it returns, the child exits with kBodyReturned.
  explicit ChildProcess(const std::function<void()>& body) {
    out_ = tempFile();
    err_ = tempFile();
    int input[2];
    if (pipe(input) != 0) throw std::runtime_error("pipe failed");
    std::fflush(nullptr);
    pid_ = fork();
    if (pid_ < 0) throw std::runtime_error("fork failed");
    if (pid_ == 0) {
      close(input[1]);
      dup2(input[0], 0);
      dup2(out_, 1);
      dup2(err_, 2);
      body();
      std::exit(kBodyReturned);
    }
    close(input[0]);
    input_ = input[1];
    started_ = std::chrono::steady_clock::now();
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() {
    if (pid_ > 0 && !finished_) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    if (input_ >= 0) close(input_);
    close(out_);
    close(err_);
  }

  // Writes text to the child's standard input.
  void give(const std::string& text) {
    if (::write(input_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
      throw std::runtime_error("write to the child failed");
    }
  }
  // Closes the child's standard input.
  void closeInput() {
    if (input_ >= 0) close(input_);
    input_ = -1;
  }
  // Whether the child is still running.
  bool running() {
    if (finished_) return false;
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) != pid_) return true;
    finish(status);
    return false;
  }
  // Waits for the child's end, for at most timeout seconds (then it is killed): its exit status,
  // or -1 when it did not exit normally.
  int wait(double timeout = 30) {
    auto limit = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeout);
    while (running()) {
      if (std::chrono::steady_clock::now() > limit) {
        kill(pid_, SIGKILL);
        int status = 0;
        waitpid(pid_, &status, 0);
        finish(status);
        break;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return status_;
  }
  int status() const { return status_; }
  // Seconds from the start to the end of the child (or to now while it runs).
  double seconds() const {
    auto end = finished_ ? ended_ : std::chrono::steady_clock::now();
    return std::chrono::duration<double>(end - started_).count();
  }
  // What the child has written so far.
  std::string out() const { return contents(out_); }
  std::string err() const { return contents(err_); }

 private:
  static int tempFile() {
    char name[] = "/tmp/ktl-child-XXXXXX";
    int fd = mkstemp(name);
    if (fd < 0) throw std::runtime_error("mkstemp failed");
    unlink(name);
    return fd;
  }
  static std::string contents(int fd) {
    std::string text;
    char buffer[4096];
    off_t at = 0;
    ssize_t n;
    while ((n = pread(fd, buffer, sizeof buffer, at)) > 0) {
      text.append(buffer, static_cast<size_t>(n));
      at += n;
    }
    return text;
  }
  void finish(int status) {
    finished_ = true;
    ended_ = std::chrono::steady_clock::now();
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  pid_t pid_ = -1;
  int input_ = -1;
  int out_ = -1;
  int err_ = -1;
  bool finished_ = false;
  int status_ = -1;
  std::chrono::steady_clock::time_point started_;
  std::chrono::steady_clock::time_point ended_;
};

// argv for a parse: the program's name, then args; the texts live as long as the object.
class Argv {
 public:
  Argv(std::initializer_list<std::string> args) : texts_(args) {
    for (std::string& text : texts_) pointers_.push_back(&text[0]);
    pointers_.push_back(nullptr);
  }
  Argv(const Argv&) = delete;
  Argv& operator=(const Argv&) = delete;
  int argc() const { return static_cast<int>(texts_.size()); }
  char** argv() { return pointers_.data(); }

 private:
  std::vector<std::string> texts_;
  std::vector<char*> pointers_;
};

}  // namespace ktltest

#endif
