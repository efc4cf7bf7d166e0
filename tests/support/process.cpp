#include "support/process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace ktltest {

namespace {

// A temporary file, removed with the object.
class TempFile {
 public:
  TempFile() {
    char name[] = "/tmp/ktl-process-XXXXXX";
    fd_ = mkstemp(name);
    if (fd_ < 0) throw std::runtime_error("mkstemp failed");
    unlink(name);
  }
  ~TempFile() { close(fd_); }
  TempFile(TempFile const&) = delete;
  TempFile& operator=(TempFile const&) = delete;

  int fd() const { return fd_; }
  void write(std::string const& text) {
    size_t done = 0;
    while (done < text.size()) {
      ssize_t n = ::write(fd_, text.data() + done, text.size() - done);
      if (n <= 0) break;
      done += static_cast<size_t>(n);
    }
    lseek(fd_, 0, SEEK_SET);
  }
  std::string read() const {
    std::string text;
    lseek(fd_, 0, SEEK_SET);
    char buffer[4096];
    ssize_t n;
    while ((n = ::read(fd_, buffer, sizeof buffer)) > 0)
      text.append(buffer, static_cast<size_t>(n));
    return text;
  }

 private:
  int fd_;
};

}  // namespace

Outcome runProgram(std::string const& program, std::vector<std::string> const& args,
                   std::string const& input) {
  TempFile in, out, err;
  in.write(input);
  std::fflush(nullptr);
  pid_t pid = fork();
  if (pid == 0) {
    dup2(in.fd(), 0);
    dup2(out.fd(), 1);
    dup2(err.fd(), 2);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (std::string const& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  Outcome run;
  int status = 0;
  if (pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status)) {
    run.status = WEXITSTATUS(status);
  }
  run.out = out.read();
  run.err = err.read();
  return run;
}

}  // namespace ktltest
