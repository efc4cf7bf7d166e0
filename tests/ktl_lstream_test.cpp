// Character streams: file and string variants, white space, comments and line counts.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"

using namespace KORRti;
using ktltest::captureOutput;

namespace {

// A stdio file holding text, closed at the end of the test.
class TextFile {
 public:
  explicit TextFile(std::string const& text) : file_(std::tmpfile()) {
    std::fwrite(text.data(), 1, text.size(), file_);
    std::rewind(file_);
  }
  ~TextFile() { std::fclose(file_); }
  FILE* get() const { return file_; }

 private:
  FILE* file_;
};

class StreamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLevel_ = DtNotifyLevel;
    savedDebug_ = DtLispDebugOn;
  }
  void TearDown() override {
    DtNotifyLevel = savedLevel_;
    DtLispDebugOn = savedDebug_;
  }
  int savedLevel_ = 1;
  int savedDebug_ = 0;
};

}  // namespace

TEST_F(StreamTest, LineCountStartsAtOne) {
  DtlStringInputStream s("x");
  EXPECT_EQ(s.lineCount(), 1);
  s.incLineCount();
  EXPECT_EQ(s.lineCount(), 2);
}

TEST_F(StreamTest, StringCharactersAreSignedAndEndAtTheTerminator) {
  DtlStringInputStream s(
      "a\xc3\xff"
      "b");
  EXPECT_EQ(s.fgetc(), 'a');
  EXPECT_EQ(s.fgetc(), static_cast<signed char>('\xc3'));
  EXPECT_LT(static_cast<signed char>('\xc3'), 0);
  EXPECT_EQ(s.fgetc(), -1);  // 0xFF looks like end of input
  EXPECT_EQ(s.fgetc(), 'b');
  EXPECT_EQ(s.fgetc(), -1);
  EXPECT_EQ(s.fgetc(), -1);  // safe past the end, however often it is asked
  EXPECT_EQ(s.peekc(), -1);
}

TEST_F(StreamTest, StringUngetMovesBackWhateverTheCharacter) {
  DtlStringInputStream s("ab");
  EXPECT_EQ(s.fgetc(), 'a');
  EXPECT_EQ(s.ungetc('z'), 'z');  // not stored: the position moves back
  EXPECT_EQ(s.fgetc(), 'a');
  EXPECT_EQ(s.fgetc(), 'b');
  EXPECT_EQ(s.fgetc(), -1);
  s.ungetc(-1);  // back onto the terminator
  EXPECT_EQ(s.peekc(), -1);
  s.ungetc(0);
  EXPECT_EQ(s.peekc(), 'b');
}

TEST_F(StreamTest, StringPeekDoesNotMove) {
  DtlStringInputStream s("q");
  EXPECT_EQ(s.peekc(), 'q');
  EXPECT_EQ(s.peekc(), 'q');
  EXPECT_EQ(s.fgetc(), 'q');
  EXPECT_EQ(s.peekc(), -1);
}

TEST_F(StreamTest, NullTextReadsAsEmpty) {
  DtlStringInputStream s(nullptr);
  EXPECT_EQ(s.fgetc(), -1);
}

TEST_F(StreamTest, FileStreamReadsUngetsAndPeeks) {
  TextFile text("a\xff");
  DtlFileInputStream s(text.get());
  EXPECT_EQ(s.peekc(), 'a');
  EXPECT_EQ(s.fgetc(), 'a');
  EXPECT_EQ(s.ungetc('a'), 'a');
  EXPECT_EQ(s.fgetc(), 'a');
  EXPECT_EQ(s.fgetc(), 0xff);  // a real byte, not the end
  EXPECT_EQ(s.fgetc(), -1);
  EXPECT_EQ(s.ungetc(-1), -1);  // changes nothing
  EXPECT_EQ(s.peekc(), -1);
}

TEST_F(StreamTest, WhiteSpaceAndCommentsAreSkipped) {
  DtlStringInputStream s("  \t\n; comment\n;; another\n  x");
  EXPECT_EQ(s.fgetc_past_whitespace(), 'x');
  EXPECT_EQ(s.lineCount(), 3);  // a string stream counts only the comment lines
  EXPECT_EQ(s.fgetc_past_whitespace(), -1);
}

TEST_F(StreamTest, NewlinesCountInFilesButNotInStrings) {
  DtlStringInputStream s("\n\nx");
  EXPECT_EQ(s.fgetc_past_whitespace(), 'x');
  EXPECT_EQ(s.lineCount(), 1);
  TextFile text("\n\nx");
  DtlFileInputStream f(text.get());
  EXPECT_EQ(f.fgetc_past_whitespace(), 'x');
  EXPECT_EQ(f.lineCount(), 3);
}

TEST_F(StreamTest, CommentLineCountsOnceInAFile) {
  TextFile text("; comment\nx");
  DtlFileInputStream f(text.get());
  EXPECT_EQ(f.fgetc_past_whitespace(), 'x');
  EXPECT_EQ(f.lineCount(), 2);
}

TEST_F(StreamTest, FlushUntilStopsAfterTheTarget) {
  DtlStringInputStream s("abc|def");
  EXPECT_EQ(s.flush_until('|'), '|');
  EXPECT_EQ(s.fgetc(), 'd');
}

TEST_F(StreamTest, StringFlushCountsSkippedNewlines) {
  DtlStringInputStream s("a\nb\n|x");
  EXPECT_EQ(s.flush_until('|'), '|');
  EXPECT_EQ(s.lineCount(), 3);
  TextFile text("a\nb\n|x");
  DtlFileInputStream f(text.get());
  EXPECT_EQ(f.flush_until('|'), '|');
  EXPECT_EQ(f.lineCount(), 1);  // a file stream counts newlines only as white space
}

TEST_F(StreamTest, CommentOnTheLastLineWithoutNewlineEndsAtTheTerminator) {
  DtlStringInputStream s("x ; trailing comment");
  EXPECT_EQ(s.fgetc_past_whitespace(), 'x');
  EXPECT_EQ(s.flush_until('\n'), -1);
  EXPECT_EQ(s.fgetc(), -1);
  DtlStringInputStream t("; only a comment");
  EXPECT_EQ(t.fgetc_past_whitespace(), -1);
  EXPECT_EQ(t.fgetc_past_whitespace(), -1);
  TextFile text("; only a comment");
  DtlFileInputStream f(text.get());
  EXPECT_EQ(f.fgetc_past_whitespace(), -1);
}

TEST_F(StreamTest, FileFlushStopsAtAByte0xFF) {
  TextFile text(
      "ab\xff"
      "cd\n");
  DtlFileInputStream f(text.get());
  EXPECT_EQ(f.flush_until('\n'), -1);
  EXPECT_EQ(f.fgetc(), 'c');
}

TEST_F(StreamTest, FlushTracesUnderLispDebug) {
  DtLispDebugOn = 1;
  DtNotifyLevel = 2;
  DtlStringInputStream s(" ab\nx");
  auto output = captureOutput([&] { EXPECT_EQ(s.flush_until('\n'), '\n'); });
  EXPECT_EQ(output.out, "[ ]\n[a]\n[b]\nflushed until [\n]\n");
  TextFile text("q\n");
  DtlFileInputStream f(text.get());
  output = captureOutput([&] { EXPECT_EQ(f.flush_until('\n'), '\n'); });
  EXPECT_EQ(output.out, "[q]\nflushed until [\n]\n");
  DtlStringInputStream end("zz");
  output = captureOutput([&] { EXPECT_EQ(end.flush_until('\n'), -1); });
  EXPECT_EQ(output.out, "[z]\n[z]\n");  // no closing line when the end comes first
}

TEST_F(StreamTest, NoTraceWithoutLispDebug) {
  DtNotifyLevel = 4;
  DtlStringInputStream s(" ab\nx");
  auto output = captureOutput([&] { s.flush_until('\n'); });
  EXPECT_EQ(output.out, "");
}
