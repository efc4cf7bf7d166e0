#include <util/notify.h>

#include <cstdarg>
#include <vector>

namespace KORRti {

int DtNotifyLevel = 1;
int DtLispDebugOn = 0;

namespace {
FILE* standardOutput() {
  return stdout;
}
FILE* standardError() {
  return stderr;
}
}  // namespace

DtNotifyBuf::int_type DtNotifyBuf::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  char ch = traits_type::to_char_type(c);
  xsputn(&ch, 1);
  return c;
}

std::streamsize DtNotifyBuf::xsputn(const char* text, std::streamsize count) {
  if (!enabled()) return count;  // filtered out, but not an error of the stream
  FILE* out = file_();
  std::fwrite(text, 1, static_cast<size_t>(count), out);
  std::fflush(out);
  return count;
}

DtOutputStream::DtOutputStream(FILE* (*file)(), int threshold)
    : std::ostream(nullptr), buf_(file, threshold) {
  rdbuf(&buf_);
}

DtOutputStream& DtOutputStream::operator()(const char* format, ...) {
  if (!enabled() || !format) return *this;
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  if (length > 0) {
    std::vector<char> text(static_cast<size_t>(length) + 1);
    std::vsnprintf(text.data(), text.size(), format, args);
    write(text.data(), length);
  }
  va_end(args);
  return *this;
}

DtOutputStream DtInfo(standardOutput, 2);
DtOutputStream DtWarn(standardError, 1);
DtOutputStream DtVerbose(standardOutput, 3);
DtOutputStream DtDebug(standardOutput, 4);

}  // namespace KORRti
