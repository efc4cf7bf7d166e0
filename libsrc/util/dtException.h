#ifndef UTIL_DTEXCEPTION_H
#define UTIL_DTEXCEPTION_H

#include <util/export.h>
#include <iosfwd>
#include <memory>
#include <string>

KTL_API_BEGIN

namespace KORRti {

const int DtInvalidInputNumber = -1;
const int DtUnknownExceptionNumber = -2;
const int DtCorruptedStateNumber = -3;

/// Base of every exception the library throws. It may carry the exception it was raised for
/// (its cause); the chain is held by copies, so a caught exception can go out of scope.
class DtException {
 public:
  DtException(const char* message, const char* function, const char* file, unsigned int line,
              const DtException* previous);
  DtException(const DtException& other);
  DtException& operator=(const DtException& other);
  virtual ~DtException();

  /// The exception itself: the most recent link of its chain.
  virtual const DtException* lastException() const;
  /// The first cause of the chain; the exception itself when it has no cause.
  virtual const DtException* initialException() const;
  virtual const char* message() const;
  virtual const char* what() const;
  /// "function (file:line)".
  virtual const char* where() const;

  const DtException* previous() const { return previous_.get(); }
  const char* function() const { return function_.c_str(); }
  const char* file() const { return file_.c_str(); }
  unsigned int line() const { return line_; }

 private:
  std::string message_;
  std::string function_;
  std::string file_;
  unsigned int line_;
  std::string where_;
  std::shared_ptr<DtException> previous_;
};

template <int N>
class DtTemplatedException : public DtException {
 public:
  DtTemplatedException(const char* message, const char* function, const char* file,
                       unsigned int line, const DtException* previous)
      : DtException(message, function, file, line, previous) {}
};

typedef DtTemplatedException<DtInvalidInputNumber> DtInvalidInput;
typedef DtTemplatedException<DtCorruptedStateNumber> DtCorruptedState;
typedef DtTemplatedException<DtUnknownExceptionNumber> DtUnknownException;

/// Writes the message and its place, then each cause on a line of its own.
std::ostream& operator<<(std::ostream& out, const DtException& exception);

/// The base name of a source file without its extension, as exceptions report it.
std::string DtSourceName(const char* file);

}  // namespace KORRti

KTL_API_END

#endif
