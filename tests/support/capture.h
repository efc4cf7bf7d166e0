#ifndef TESTS_SUPPORT_CAPTURE_H
#define TESTS_SUPPORT_CAPTURE_H

#include <functional>
#include <string>

namespace ktltest {

// Redirects a file descriptor (1 or 2) into a temporary file for its lifetime, flushing stdio
// first, so that output written by printf, fprintf and the notify streams is all caught.
class CaptureFd {
 public:
  explicit CaptureFd(int fd);
  ~CaptureFd();
  CaptureFd(const CaptureFd&) = delete;
  CaptureFd& operator=(const CaptureFd&) = delete;
  // Everything written so far; stops the capture.
  std::string release();

 private:
  int fd_;
  int saved_;
  int file_;
  bool active_;
  std::string text_;
};

struct Captured {
  std::string out;
  std::string err;
};

// Runs fn with standard output and standard error captured.
Captured captureOutput(const std::function<void()>& fn);

// Runs fn and returns the message of the first cause of the DtException it throws, or
// "<no exception>" / "<other exception>".
std::string initialMessage(const std::function<void()>& fn);

// The message a halt with this text carries.
std::string haltMessage(const std::string& text);

// Writes text to a new temporary file and returns its path; the file is removed at exit.
std::string writeTempFile(const std::string& text, const std::string& suffix = ".ktl");

}  // namespace ktltest

#endif
