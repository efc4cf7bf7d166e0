#include <ktl/lstream.h>

#include <cctype>
#include <cstring>

#include <util/notify.h>

namespace KORRti {

namespace {

bool isWhite(int c) {
  return c != -1 && std::isspace(static_cast<unsigned char>(c));
}

// The closing trace of flush_until, and its result.
int reachedTarget(char target) {
  if (DtLispDebugOn) DtInfo("flushed until [%c]\n", target);
  return static_cast<signed char>(target);
}

}  // namespace

DtlInputStream::~DtlInputStream() = default;
int DtlInputStream::lineCount() {
  return lineCount_;
}
void DtlInputStream::incLineCount() {
  ++lineCount_;
}

// ---- file ------------------------------------------------------------------------------

DtlFileInputStream::DtlFileInputStream(FILE* file) : file_(file) {}
DtlFileInputStream::~DtlFileInputStream() = default;

int DtlFileInputStream::fgetc() {
  return std::fgetc(file_);
}

int DtlFileInputStream::ungetc(int c) {
  if (c != -1) std::ungetc(c, file_);
  return c;
}

int DtlFileInputStream::peekc() {
  int c = fgetc();
  if (c == -1) return -1;
  ungetc(c);
  return c;
}

int DtlFileInputStream::fgetc_past_whitespace() {
  // A loop rather than a recursion per comment line, so any number of them is safe.
  for (;;) {
    int c = fgetc();
    if (c == -1) return -1;
    if (c == ';') {
      flush_until('\n');
      incLineCount();
      continue;
    }
    if (!isWhite(c)) return c;
    if (c == '\n') incLineCount();
  }
}

int DtlFileInputStream::flush_until(char target) {
  for (;;) {
    int c = fgetc();
    if ((c & 0xFF) == (target & 0xFF)) return reachedTarget(target);
    // Covers end of input and a real 0xFF byte alike.
    if ((c & 0xFF) == 0xFF) return static_cast<signed char>(c);
    if (DtLispDebugOn) DtInfo("[%c]\n", c);
  }
}

// ---- string ----------------------------------------------------------------------------

DtlStringInputStream::DtlStringInputStream(char const* text)
    : text_(text ? text : ""), length_(static_cast<long>(std::strlen(text_))), position_(0) {}
DtlStringInputStream::~DtlStringInputStream() = default;

int DtlStringInputStream::fgetc() {
  // The position always advances, also over the terminator; past it every read is -1, and
  // nothing beyond the terminator is ever touched.
  long at = position_++;
  if (at < 0 || at >= length_) return -1;
  // Characters read as signed, as the reader's tests of them expect.
  int c = static_cast<signed char>(text_[at]);  // NOLINT(bugprone-signed-char-misuse)
  return c;
}

int DtlStringInputStream::ungetc(int c) {
  if (position_ > 0) --position_;
  return c;
}

int DtlStringInputStream::peekc() {
  if (position_ < 0 || position_ >= length_) return -1;
  return static_cast<signed char>(text_[position_]);
}

int DtlStringInputStream::fgetc_past_whitespace() {
  for (;;) {
    int c = fgetc();
    if (c == -1) return -1;
    if (c == ';') {
      flush_until('\n');
      incLineCount();
      continue;
    }
    if (!isWhite(c)) return c;
  }
}

int DtlStringInputStream::flush_until(char target) {
  for (;;) {
    int c = fgetc();
    if ((c & 0xFF) == (target & 0xFF)) return reachedTarget(target);
    // A comment on the last line of a text without a final newline ends at the terminator,
    // as it does at the end of a file.
    if (c == -1) return -1;
    if (c == '\n') incLineCount();
    if (DtLispDebugOn) DtInfo("[%c]\n", c);
  }
}

}  // namespace KORRti
