#ifndef UTIL_NOTIFY_H
#define UTIL_NOTIFY_H

#include <util/export.h>
#include <cstdio>
#include <ostream>
#include <streambuf>

KTL_API_BEGIN

namespace KORRti {

/// How much the notify streams print: a stream writes only while DtNotifyLevel is at least its
/// threshold (DtWarn 1, DtInfo 2, DtVerbose 3, DtDebug 4). The default is 1.
extern int DtNotifyLevel;
/// Switches on the interpreter's traces. The default is 0.
extern int DtLispDebugOn;

/// Stream buffer that writes straight through to a stdio file and flushes after every write, so
/// that its output stays in order with printf and fprintf on the same file.
class DtNotifyBuf : public std::streambuf {
 public:
  DtNotifyBuf(FILE* (*file)(), int threshold) : file_(file), threshold_(threshold) {}
  bool enabled() const { return DtNotifyLevel >= threshold_; }
  int threshold() const { return threshold_; }

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* text, std::streamsize count) override;

 private:
  FILE* (*file_)();
  int threshold_;
};

/// An ostream with a printf-style call operator; both obey the same DtNotifyLevel filter.
class DtOutputStream : public std::ostream {
 public:
  DtOutputStream(FILE* (*file)(), int threshold);
  DtOutputStream& operator()(const char* format, ...) __attribute__((format(printf, 2, 3)));
  bool enabled() const { return buf_.enabled(); }

 private:
  DtNotifyBuf buf_;
};

extern DtOutputStream DtInfo;     ///< standard output, level 2
extern DtOutputStream DtWarn;     ///< standard error, level 1
extern DtOutputStream DtVerbose;  ///< standard output, level 3
extern DtOutputStream DtDebug;    ///< standard output, level 4

}  // namespace KORRti

KTL_API_END

#endif
