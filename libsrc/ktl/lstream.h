#ifndef KTL_LSTREAM_H
#define KTL_LSTREAM_H

#include <util/export.h>
#include <cstdint>
#include <cstdio>

KTL_API_BEGIN

namespace KORRti {

/// A source of characters for the reader, with a line counter that starts at 1. End of input is
/// -1 in every operation.
class DtlInputStream {
 public:
  DtlInputStream() : lineCount_(1) {}
  virtual ~DtlInputStream();

  virtual int peekc() = 0;
  virtual int ungetc(int c) = 0;
  virtual int fgetc() = 0;
  /// The next character that is not white space or part of a comment.
  virtual int fgetc_past_whitespace() = 0;
  /// Skips up to and including target.
  virtual int flush_until(char target) = 0;
  virtual int lineCount();
  virtual void incLineCount();

 protected:
  int32_t lineCount_;
};

/// Reads an open stdio file, which it does not own. Newlines skipped as white space count lines.
class DtlFileInputStream : public DtlInputStream {
 public:
  explicit DtlFileInputStream(FILE* file);
  ~DtlFileInputStream() override;

  int peekc() override;
  int ungetc(int c) override;
  int fgetc() override;
  int fgetc_past_whitespace() override;
  int flush_until(char target) override;

 private:
  FILE* file_;
};

/// Reads a text that must outlive the stream. Characters come as signed chars, so a NUL or a
/// 0xFF byte reads as end of input. Only comment lines count.
class DtlStringInputStream : public DtlInputStream {
 public:
  explicit DtlStringInputStream(char const* text);
  ~DtlStringInputStream() override;

  int peekc() override;
  int ungetc(int c) override;
  int fgetc() override;
  int fgetc_past_whitespace() override;
  int flush_until(char target) override;

 private:
  char const* text_;
  long length_;
  long position_;
};

}  // namespace KORRti

KTL_API_END

#endif
