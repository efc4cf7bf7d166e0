// The reader: KTL text in, objects out.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <ktl/ktl.h>

#include "support/capture.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::haltMessage;
using ktltest::initialMessage;

// The number reader, reached directly for the paths DtcRead cannot take.
using KORRti::detail::lreadnum;

namespace {

class ReadTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLevel_ = DtNotifyLevel;
    savedEscape_ = DtKtlReadEscapeChar;
  }
  void TearDown() override {
    DtNotifyLevel = savedLevel_;
    DtKtlReadEscapeChar = savedEscape_;
  }

  // Reads the first expression of text.
  DtlObjPtr read(char const* text) {
    DtlStringInputStream stream(text);
    return DtcRead(&stream, frame);
  }

  // Every expression of text, up to the eof symbol.
  std::vector<DtlObjPtr> readAll(char const* text) {
    DtlStringInputStream stream(text);
    std::vector<DtlObjPtr> forms;
    DtlObjPtr eof = DtcIntern("eof", frame);
    for (DtlObjPtr form = DtcRead(&stream, frame); !(form == eof); form = DtcRead(&stream, frame)) {
      forms.push_back(form);
    }
    return forms;
  }

  std::string printed(DtlObjPtr const& x) {
    FILE* file = std::tmpfile();
    x->DtcObjFprint(file);
    std::rewind(file);
    std::string text;
    for (int c; (c = std::fgetc(file)) != EOF;) text += static_cast<char>(c);
    std::fclose(file);
    return text;
  }

  std::string readError(char const* text) {
    return initialMessage([&] { read(text); });
  }

  bool isSymbol(DtlObjPtr const& x, char const* name) {
    return x->tag() == DtlSymbolTag && std::string(x->pname()) == name;
  }

  DtlObjPtr frame{DtlFrameTag};
  int savedLevel_ = 1;
  char const* savedEscape_ = nullptr;
};

// A file stream over text, with its file.
class FileSource {
 public:
  explicit FileSource(std::string const& text) : file_(std::tmpfile()), stream_(file_) {
    std::fwrite(text.data(), 1, text.size(), file_);
    std::rewind(file_);
  }
  ~FileSource() { std::fclose(file_); }
  DtlFileInputStream* stream() { return &stream_; }

 private:
  FILE* file_;
  DtlFileInputStream stream_;
};

// A stream that fails in a foreign way on the first character.
class ThrowingStream : public DtlStringInputStream {
 public:
  explicit ThrowingStream(bool standard) : DtlStringInputStream("x"), standard_(standard) {}
  int fgetc_past_whitespace() override {
    if (standard_) throw std::runtime_error("boom");
    throw 42;
  }

 private:
  bool standard_;
};

}  // namespace

TEST_F(ReadTest, EmptyAndBlankSourcesGiveEof) {
  DtlObjPtr eof = DtcIntern("eof", frame);
  EXPECT_EQ(read(""), eof);
  EXPECT_EQ(read("  \n\t ; just a comment\n;another\n"), eof);
}

TEST_F(ReadTest, TheWordEofIsTheEndOfInputSymbol) {
  DtlObjPtr word = read("eof");
  EXPECT_EQ(word, read(""));
  EXPECT_TRUE(isSymbol(word, "eof"));
}

TEST_F(ReadTest, QuotedEmptyListIsQuoteNil) {
  DtlObjPtr form = read("'()");
  EXPECT_EQ(DtcCar(form), DtcIntern("quote", frame));
  EXPECT_EQ(DtcCadr(form), DtlObjPtr::nil());
  EXPECT_EQ(DtcLength(form), 2);
  EXPECT_EQ(printed(form), "(quote nil)");
}

TEST_F(ReadTest, QuoteIsNotAbbreviatedOnOutput) {
  EXPECT_EQ(printed(read("'x")), "(quote x)");
  EXPECT_EQ(printed(read("'(a 'b)")), "(quote (a (quote b)))");
}

TEST_F(ReadTest, QuoteAtTheEndAndBeforeAClosingParenthesis) {
  EXPECT_EQ(printed(read("'")), "(quote eof)");
  EXPECT_EQ(readError("(a ')"), haltMessage("Unexpected \")\" at line 1"));
}

TEST_F(ReadTest, LoneParenthesesHalt) {
  EXPECT_EQ(readError("("), haltMessage("Missing \")\""));
  EXPECT_EQ(readError(")"), haltMessage("Unexpected \")\" at line 1"));
  EXPECT_EQ(readError("(a (b c)"), haltMessage("Missing \")\""));
}

TEST_F(ReadTest, UnexpectedParenthesisReportsTheFileLine) {
  FileSource source("a\n\n  )");
  EXPECT_TRUE(isSymbol(DtcRead(source.stream(), frame), "a"));
  EXPECT_EQ(initialMessage([&] { DtcRead(source.stream(), frame); }),
            haltMessage("Unexpected \")\" at line 3"));
}

TEST_F(ReadTest, EmptyParenthesesAreTheNilObject) {
  EXPECT_EQ(read("()"), DtlObjPtr::nil());
  EXPECT_EQ(read("( ; nothing\n )"), DtlObjPtr::nil());
  EXPECT_TRUE(isSymbol(read("nil"), "nil"));  // the word is a symbol
}

TEST_F(ReadTest, ListsAndNesting) {
  DtlObjPtr form = read("(a (b 1) \"s\" 2.5)");
  EXPECT_EQ(printed(form), "(a (b 1) \"s\" 2.500000)");
  EXPECT_EQ(DtcLength(form), 4);
}

TEST_F(ReadTest, DotIsAnOrdinarySymbol) {
  DtlObjPtr form = read("(a . b)");
  EXPECT_EQ(DtcLength(form), 3);
  EXPECT_TRUE(isSymbol(DtcCadr(form), "."));
  EXPECT_EQ(printed(form), "(a . b)");
}

TEST_F(ReadTest, SemicolonInsideAStringIsText) {
  DtlObjPtr string = read("\"a;b\"");
  ASSERT_EQ(string->tag(), DtlStringTag);
  EXPECT_STREQ(string->string(), "a;b");
}

TEST_F(ReadTest, StringsKeepNewlinesAndHaveNoLengthLimit) {
  FileSource source("\"a\nb\" x");
  DtlObjPtr string = DtcRead(source.stream(), frame);
  EXPECT_STREQ(string->string(), "a\nb");
  EXPECT_EQ(source.stream()->lineCount(), 1);  // newlines in a string are not counted
  std::string big = "\"" + std::string(100000, 's') + "\"";
  EXPECT_EQ(std::string(read(big.c_str())->string()), std::string(100000, 's'));
  EXPECT_STREQ(read("\"\"")->string(), "");
}

TEST_F(ReadTest, UnterminatedStringHalts) {
  EXPECT_EQ(readError("\"abc"), haltMessage("EOF while reading string"));
  EXPECT_EQ(readError("(\"abc"), haltMessage("EOF while reading string"));
}

TEST_F(ReadTest, SemicolonInATokenDoesNotStartAComment) {
  std::vector<DtlObjPtr> forms = readAll("a;comment\nb");
  ASSERT_EQ(forms.size(), 2u);
  EXPECT_TRUE(isSymbol(forms[0], "a;comment"));
  EXPECT_TRUE(isSymbol(forms[1], "b"));
  DtlObjPtr form = read("(a;comment\nb)");
  EXPECT_EQ(DtcLength(form), 2);
  EXPECT_TRUE(isSymbol(DtcCar(form), "a;comment"));
  EXPECT_TRUE(isSymbol(DtcCadr(form), "b"));
}

TEST_F(ReadTest, QuotesInsideTokensAreTokenCharacters) {
  EXPECT_TRUE(isSymbol(read("ab\"cd"), "ab\"cd"));
  EXPECT_TRUE(isSymbol(read("a'b"), "a'b"));
}

TEST_F(ReadTest, CommentLineThenSymbolCountsTheLineInAFile) {
  FileSource source("; comment\nx");
  EXPECT_TRUE(isSymbol(DtcRead(source.stream(), frame), "x"));
  EXPECT_EQ(source.stream()->lineCount(), 2);
  EXPECT_TRUE(isSymbol(read("; comment\nx"), "x"));
}

TEST_F(ReadTest, EscapeCharacterOnlyEscapesTheDoubleQuote) {
  static char const backslash = '\\';
  DtKtlReadEscapeChar = &backslash;
  EXPECT_STREQ(read("\"a\\\"b\"")->string(), "a\"b");
  EXPECT_STREQ(read("\"a\\nb\"")->string(), "a\\nb");
  EXPECT_EQ(readError("\"a\\"), haltMessage("EOF while reading string"));
}

TEST_F(ReadTest, WithoutEscapeCharacterABackslashIsText) {
  ASSERT_EQ(DtKtlReadEscapeChar, nullptr);
  std::vector<DtlObjPtr> forms = readAll("\"a\\\" b\"");
  ASSERT_EQ(forms.size(), 2u);
  EXPECT_STREQ(forms[0]->string(), "a\\");
  EXPECT_TRUE(isSymbol(forms[1], "b\""));
}

TEST_F(ReadTest, FloatsWithExponents) {
  for (char const* text : {"1e5", "1E5", "1e5x"}) {
    DtlObjPtr number = read(text);
    ASSERT_EQ(number->tag(), DtlFlonumTag) << text;
    EXPECT_DOUBLE_EQ(number->flonum(), 100000.0) << text;
  }
  DtlObjPtr one = read("1e");
  ASSERT_EQ(one->tag(), DtlFlonumTag);
  EXPECT_DOUBLE_EQ(one->flonum(), 1.0);
}

TEST_F(ReadTest, IntegersInEveryBase) {
  struct Case {
    char const* text;
    int value;
  } cases[] = {{"0x10", 16},
               {"-0x10", -16},
               {"-5", -5},
               {"0x1F", 31},
               {"010", 8},
               {"12abc", 12},
               {"1-2", 1},
               {"0e5", 0},
               {"4294967295", -1},
               {"4294967296", 0},
               {"2147483648", -2147483647 - 1},
               {"0", 0}};
  for (auto const& c : cases) {
    DtlObjPtr number = read(c.text);
    ASSERT_EQ(number->tag(), DtlFixnumTag) << c.text;
    EXPECT_EQ(number->fixnum(), c.value) << c.text;
  }
}

TEST_F(ReadTest, FloatsTakeWhatStrtodReads) {
  DtlObjPtr a = read("1.2.3");
  ASSERT_EQ(a->tag(), DtlFlonumTag);
  EXPECT_DOUBLE_EQ(a->flonum(), 1.2);
  DtlObjPtr b = read("-0xe5");
  ASSERT_EQ(b->tag(), DtlFlonumTag);
  EXPECT_DOUBLE_EQ(b->flonum(), -229.0);
  DtlObjPtr c = read("-2.5");
  ASSERT_EQ(c->tag(), DtlFlonumTag);
  EXPECT_DOUBLE_EQ(c->flonum(), -2.5);
}

TEST_F(ReadTest, SignsAndDotsAloneMakeSymbols) {
  for (char const* text : {"--5", "+5", ".5", "-.5", "-", "+", "#t"}) {
    EXPECT_TRUE(isSymbol(read(text), text)) << text;
  }
}

TEST_F(ReadTest, CaseIsKept) {
  DtlObjPtr upper = read("Foo");
  DtlObjPtr lower = read("foo");
  EXPECT_FALSE(upper == lower);
  EXPECT_TRUE(isSymbol(upper, "Foo"));
}

TEST_F(ReadTest, SymbolsAreInternedInTheGivenFrame) {
  DtlObjPtr form = read("(x x)");
  EXPECT_EQ(DtcCar(form), DtcCadr(form));
  EXPECT_EQ(frame->frameBindings()->lookup("x"), DtlObjPtr::unbound());
  DtlObjPtr child(DtlFrameTag);
  child->setFrameParent(frame);
  DtlStringInputStream stream("x y");
  EXPECT_EQ(DtcRead(&stream, child), DtcCar(form));
  DtcRead(&stream, child);
  EXPECT_FALSE(child->frameBindings()->findsym("y").isNull());
  EXPECT_TRUE(frame->frameBindings()->findsym("y").isNull());
}

TEST_F(ReadTest, ReadStopsRightAfterTheExpression) {
  DtlStringInputStream stream("(a)b \"c\"d");
  EXPECT_EQ(printed(DtcRead(&stream, frame)), "(a)");
  EXPECT_EQ(stream.peekc(), 'b');
  EXPECT_TRUE(isSymbol(DtcRead(&stream, frame), "b"));
  EXPECT_STREQ(DtcRead(&stream, frame)->string(), "c");
  EXPECT_EQ(stream.peekc(), 'd');
}

TEST_F(ReadTest, TokensLongerThanTheClassicBufferAreReadWhole) {
  std::string name(20000, 'k');
  EXPECT_TRUE(isSymbol(read(name.c_str()), name.c_str()));
  std::string digits = "1" + std::string(9000, '0');
  DtlObjPtr number = read(digits.c_str());
  ASSERT_EQ(number->tag(), DtlFixnumTag);
  EXPECT_EQ(number->fixnum(), -1);  // past the range of strtoul: its largest value, cut to 32 bits
}

TEST_F(ReadTest, AByte0xFFEndsAStringSource) {
  std::vector<DtlObjPtr> forms = readAll(
      "ab\xff"
      "cd");
  ASSERT_EQ(forms.size(), 1u);
  EXPECT_TRUE(isSymbol(forms[0], "ab"));
}

TEST_F(ReadTest, ReadingPastTheEndKeepsGivingEof) {
  DtlStringInputStream stream("x ; no final newline");
  DtlObjPtr eof = DtcIntern("eof", frame);
  EXPECT_TRUE(isSymbol(DtcRead(&stream, frame), "x"));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(DtcRead(&stream, frame), eof);
}

TEST_F(ReadTest, BadNumbersWarnAndGoOn) {
  DtlObjPtr number;
  auto output = captureOutput([&] { number = lreadnum("x"); });
  EXPECT_EQ(output.err, "bad integer input: x\n");
  EXPECT_EQ(number->tag(), DtlFixnumTag);
  EXPECT_EQ(number->fixnum(), 0);
  output = captureOutput([&] { number = lreadnum("."); });
  EXPECT_EQ(output.err, "bad floating point input: .\n");
  EXPECT_EQ(number->tag(), DtlFlonumTag);
  DtNotifyLevel = 0;
  output = captureOutput([&] { lreadnum("x"); });
  EXPECT_EQ(output.err, "");
}

TEST_F(ReadTest, EachLevelAddsAPropagatingLink) {
  try {
    read("((a");
    FAIL() << "no halt";
  } catch (DtException const& e) {
    EXPECT_STREQ(e.message(), "Propagating DtException.");
    EXPECT_EQ(e.lastException(), &e);
    EXPECT_STREQ(e.file(), "read");
    EXPECT_NE(std::string(e.function()).find("DtcRead"), std::string::npos);
    int links = 0;
    for (DtException const* link = &e; link; link = link->previous()) ++links;
    EXPECT_EQ(links, 3);  // the inner list's read, the outer list's read, and the halt
    EXPECT_STREQ(e.initialException()->message(), "DtException: KTL Error: Missing \")\"");
  }
}

TEST_F(ReadTest, ForeignExceptionsAreConverted) {
  ThrowingStream standard(true);
  try {
    DtcRead(&standard, frame);
    FAIL() << "no exception";
  } catch (DtException const& e) {
    EXPECT_STREQ(e.message(), "std::exception boom");
    EXPECT_EQ(e.previous(), nullptr);
  }
  ThrowingStream other(false);
  try {
    DtcRead(&other, frame);
    FAIL() << "no exception";
  } catch (DtTemplatedException<DtUnknownExceptionNumber> const& e) {
    EXPECT_STREQ(e.message(), "Caught Unknown Exception.");
  }
}

TEST_F(ReadTest, DeepNestingWithinTheLimitReads) {
  int depth = DtlMaxReadDepth - 1;
  std::string text = std::string(depth, '(') + "x" + std::string(depth, ')');
  DtlObjPtr form = read(text.c_str());
  int levels = 0;
  for (DtlObjPtr at = form; at->tag() == DtlConsTag; at = DtcCar(at)) ++levels;
  EXPECT_EQ(levels, depth);
}

TEST_F(ReadTest, NestingBeyondTheLimitHalts) {
  std::string text(DtlMaxReadDepth + 5, '(');
  EXPECT_EQ(readError(text.c_str()), haltMessage("Nesting too deep at line 1"));
  std::string quotes(DtlMaxReadDepth + 5, '\'');
  EXPECT_EQ(readError(quotes.c_str()), haltMessage("Nesting too deep at line 1"));
}

namespace {

// Writes down each list's opening and closing line, and what it read as.
class LineListener : public DtlReadListener {
 public:
  void listOpened(DtlInputStream& stream) override {
    open.push_back(stream.lineCount());
    events.push_back("open " + std::to_string(stream.lineCount()));
  }
  void listClosed(DtlInputStream& stream, DtlObjPtr const& list) override {
    events.push_back("close " + std::to_string(open.back()) + "-" +
                     std::to_string(stream.lineCount()) + " " +
                     (list->tag() == DtlConsTag ? std::to_string(DtcLength(list)) : "nil"));
    closed[list.get()] = open.back();
    open.pop_back();
  }
  std::vector<int> open;  // the lines of the lists still open
  std::vector<std::string> events;
  std::map<DtlObj*, int> closed;
};

}  // namespace

TEST_F(ReadTest, AListenerIsToldWhereEachListOpensAndCloses) {
  FileSource source("; heading\n(a\n  (b c)\n  ()\n  '(d)\n  \"(not a list\n\"\n  (e\n   f))\n");
  LineListener listener;
  DtlObjPtr form = DtcRead(source.stream(), frame, &listener);
  // The file stream counts no newline inside a string, so the lists after it stand one line
  // earlier than in the text.
  EXPECT_EQ(listener.events, (std::vector<std::string>{"open 2", "open 3", "close 3-3 2", "open 4",
                                                       "close 4-4 nil", "open 5", "close 5-5 1",
                                                       "open 7", "close 7-8 2", "close 2-8 6"}));
  // Each list of the form is the one the listener was told of.
  ASSERT_EQ(form->tag(), DtlConsTag);
  EXPECT_EQ(listener.closed.at(form.get()), 2);
  EXPECT_EQ(listener.closed.at(DtcCadr(form).get()), 3);
  EXPECT_TRUE(listener.open.empty());
  // The same text reads the same without a listener.
  FileSource again("; heading\n(a\n  (b c)\n  ()\n  '(d)\n  \"(not a list\n\"\n  (e\n   f))\n");
  EXPECT_EQ(printed(DtcRead(again.stream(), frame)), printed(form));
}

TEST_F(ReadTest, AListenerSeesTheListsLeftOpenByAHalt) {
  FileSource source("(a\n (b\n  (c)\n d\n");
  LineListener listener;
  EXPECT_EQ(initialMessage([&] { DtcRead(source.stream(), frame, &listener); }),
            haltMessage("Missing \")\""));
  EXPECT_EQ(listener.open, (std::vector<int>{1, 2}));
  // A stray ")" is refused as without a listener, with nothing opened.
  DtlStringInputStream stray(")");
  LineListener none;
  EXPECT_EQ(initialMessage([&] { DtcRead(&stray, frame, &none); }),
            haltMessage("Unexpected \")\" at line 1"));
  EXPECT_TRUE(none.events.empty());
}

TEST_F(ReadTest, AnAtomIsReadWithNoListEvent) {
  LineListener listener;
  DtlStringInputStream stream("word");
  EXPECT_TRUE(isSymbol(DtcRead(&stream, frame, &listener), "word"));
  EXPECT_TRUE(listener.events.empty());
  DtlStringInputStream none("x");
  EXPECT_TRUE(isSymbol(DtcRead(&none, frame, nullptr), "x"));
}
