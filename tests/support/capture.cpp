#include "support/capture.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include <ktl/ktl.h>

namespace ktltest {

CaptureFd::CaptureFd(int fd) : fd_(fd), saved_(-1), file_(-1), active_(false) {
  std::fflush(nullptr);
  char name[] = "/tmp/ktl-capture-XXXXXX";
  file_ = mkstemp(name);
  if (file_ < 0) throw std::runtime_error("mkstemp failed");
  unlink(name);
  saved_ = dup(fd_);
  dup2(file_, fd_);
  active_ = true;
}

CaptureFd::~CaptureFd() {
  release();
}

std::string CaptureFd::release() {
  if (active_) {
    std::fflush(nullptr);
    dup2(saved_, fd_);
    close(saved_);
    active_ = false;
    lseek(file_, 0, SEEK_SET);
    char buffer[4096];
    ssize_t n;
    while ((n = read(file_, buffer, sizeof buffer)) > 0)
      text_.append(buffer, static_cast<size_t>(n));
    close(file_);
  }
  return text_;
}

Captured captureOutput(const std::function<void()>& fn) {
  CaptureFd err(2);
  CaptureFd out(1);
  fn();
  Captured result;
  result.out = out.release();
  result.err = err.release();
  return result;
}

std::string initialMessage(const std::function<void()>& fn) {
  try {
    fn();
  } catch (const KORRti::DtException& e) {
    return e.initialException()->message();
  } catch (...) {
    return "<other exception>";
  }
  return "<no exception>";
}

std::string haltMessage(const std::string& text) {
  return "DtException: KTL Error: " + text;
}

namespace {

// Files made by writeTempFile, removed when the test program exits.
std::vector<std::string>* tempFiles() {
  static std::vector<std::string>* files = [] {
    auto* list = new std::vector<std::string>();
    std::atexit([] {
      for (const auto& path : *tempFiles()) unlink(path.c_str());
    });
    return list;
  }();
  return files;
}

}  // namespace

std::string writeTempFile(const std::string& text, const std::string& suffix) {
  std::string path = "/tmp/ktl-test-XXXXXX" + suffix;
  std::vector<char> name(path.begin(), path.end());
  name.push_back('\0');
  int fd = mkstemps(name.data(), static_cast<int>(suffix.size()));
  if (fd < 0) throw std::runtime_error("mkstemps failed");
  size_t done = 0;
  while (done < text.size()) {
    ssize_t n = write(fd, text.data() + done, text.size() - done);
    if (n <= 0) break;
    done += static_cast<size_t>(n);
  }
  close(fd);
  tempFiles()->push_back(name.data());
  return name.data();
}

}  // namespace ktltest
