// The string primitives: string-equal, string-append, path-cross, and DtcListToStr below it.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::evalText;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::list;
using ktltest::printed;

namespace {

// A list of count strings "s0", "s1", ...
DtlObjPtr strings(int count) {
  DtlObjPtr result = DtlObjPtr::nil();
  for (int i = count; i-- > 0;)
    result = DtcCons(DtlObjPtr(("s" + std::to_string(i)).c_str()), result);
  return result;
}

class LStringTest : public ::testing::Test {
 protected:
  void SetUp() override { savedLevel_ = DtNotifyLevel; }
  void TearDown() override { DtNotifyLevel = savedLevel_; }

  DtlObjPtr eval(std::string const& text) { return evalText(text, frame); }
  std::string halt(std::string const& text) {
    return initialMessage([&] { eval(text); });
  }
  // The text of the string that text evaluates to.
  std::string text(std::string const& expression) {
    DtlObjPtr result = eval(expression);
    EXPECT_FALSE(result.isNull());
    if (result.isNull()) return "<null>";
    EXPECT_EQ(result->tag(), DtlStringTag) << expression;
    return result->tag() == DtlStringTag && result->string() ? result->string() : "<not a string>";
  }

  DtlObjPtr frame = ktltest::makeLanguageFrame();
  int savedLevel_ = 1;
};

}  // namespace

using KORRti::detail::DtcListToStr;

// ---- string-equal ----------------------------------------------------------------------

TEST_F(LStringTest, StringEqualComparesTheText) {
  EXPECT_EQ(eval("(string-equal \"abc\" \"abc\")"), DtlObjPtr::t());
  EXPECT_EQ(eval("(string-equal \"\" \"\")"), DtlObjPtr::t());
  EXPECT_EQ(eval("(string-equal \"abc\" \"abd\")"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(string-equal \"abc\" \"ABC\")"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(string-equal \"ab\" \"abc\")"), DtlObjPtr::nil());
}

TEST_F(LStringTest, StringEqualHaltsOnASymbol) {
  EXPECT_EQ(halt("(string-equal 'abc \"abc\")"), haltMessage("Wrong type arg to DtcStringEqual"));
  EXPECT_EQ(halt("(string-equal \"abc\" 'abc)"), haltMessage("Wrong type arg to DtcStringEqual"));
  EXPECT_EQ(halt("(string-equal 1 1)"), haltMessage("Wrong type arg to DtcStringEqual"));
}

TEST_F(LStringTest, StringEqualTakesExactlyTwo) {
  EXPECT_EQ(halt("(string-equal \"a\")"), haltMessage("Wrong number of arguments to string-equal"));
  EXPECT_EQ(halt("(string-equal \"a\" \"a\" \"a\")"),
            haltMessage("Wrong number of arguments to string-equal"));
}

// ---- string-append ---------------------------------------------------------------------

TEST_F(LStringTest, AppendOfThreeStrings) {
  EXPECT_EQ(text("(string-append \"a\" \"b\" \"c\")"), "abc");
  EXPECT_EQ(text("(string-append \"foo\" \"\" \"bar\")"), "foobar");
  EXPECT_EQ(printed(eval("(string-append \"a\" \"b\")")), "\"ab\"");
}

TEST_F(LStringTest, AppendAlwaysMakesANewString) {
  DtlObjPtr a("a");
  DtlObjPtr copy = DtlStringAppend(list({a}), frame);
  ASSERT_FALSE(copy.isNull());
  EXPECT_FALSE(copy == a);
  ASSERT_EQ(copy->tag(), DtlStringTag);
  EXPECT_STREQ(copy->string(), "a");
  EXPECT_NE(copy->string(), a->string());  // its own text, not shared
  DtlObjPtr b("b");
  DtlObjPtr joined = DtlStringAppend(list({a, b}), frame);
  EXPECT_FALSE(joined == a);
  EXPECT_FALSE(joined == b);
  EXPECT_STREQ(joined->string(), "ab");
  EXPECT_STREQ(a->string(), "a");  // the arguments are left alone
  EXPECT_STREQ(b->string(), "b");
}

TEST_F(LStringTest, AppendChecksEveryArgument) {
  EXPECT_EQ(halt("(string-append \"a\" 1)"), haltMessage("Non-string to string-append"));
  EXPECT_EQ(halt("(string-append 1 \"a\")"), haltMessage("Non-string to string-append"));
  EXPECT_EQ(halt("(string-append \"a\" \"b\" 'c)"), haltMessage("Non-string to string-append"));
  EXPECT_EQ(halt("(string-append 'a)"), haltMessage("Non-string to string-append"));
  EXPECT_EQ(halt("(string-append)"), haltMessage("Wrong number of args to string-append"));
}

TEST_F(LStringTest, AppendOfManyLongStrings) {
  const int count = 5000;
  std::string piece(37, 'x');
  DtlObjPtr args = DtlObjPtr::nil();
  for (int i = 0; i < count; ++i) args = DtcCons(DtlObjPtr(piece.c_str()), args);
  DtlObjPtr result = DtlStringAppend(args, frame);
  ASSERT_FALSE(result.isNull());
  EXPECT_EQ(std::string(result->string()), std::string(count * piece.size(), 'x'));
}

// ---- DtcListToStr ----------------------------------------------------------------------

TEST_F(LStringTest, ListToStrGivesPointersToTheElementsText) {
  DtlObjPtr items = list({DtlObjPtr("a"), DtlObjPtr("bc"), DtlObjPtr("")});
  char* out[8] = {};
  EXPECT_EQ(DtcListToStr(items, out), 3);
  EXPECT_EQ(out[0], DtcCar(items)->string());  // the object's own text, not a copy
  EXPECT_EQ(out[1], DtcCadr(items)->string());
  EXPECT_EQ(out[2], DtcCaddr(items)->string());
  EXPECT_EQ(out[3], nullptr);
}

TEST_F(LStringTest, ListToStrOfSevenIsTheMost) {
  char* out[8] = {};
  DtlObjPtr seven = strings(7);
  EXPECT_EQ(DtcListToStr(seven, out), 7);
  EXPECT_STREQ(out[0], "s0");
  EXPECT_STREQ(out[6], "s6");
  EXPECT_EQ(out[7], nullptr);
}

TEST_F(LStringTest, ListToStrOfANonListIsZeroAndSilent) {
  char* out[8] = {};
  DtNotifyLevel = 4;
  auto output = captureOutput([&] {
    EXPECT_EQ(DtcListToStr(DtlObjPtr::nil(), out), 0);
    EXPECT_EQ(DtcListToStr(DtlObjPtr("a"), out), 0);
    EXPECT_EQ(DtcListToStr(DtlObjPtr(3), out), 0);
    EXPECT_EQ(DtcListToStr(DtlObjPtr(), out), 0);
  });
  EXPECT_EQ(output.out, "");
  EXPECT_EQ(output.err, "");
  EXPECT_EQ(out[0], nullptr);
}

TEST_F(LStringTest, ListToStrOfEightWarnsAndIsZero) {
  char* out[8] = {};
  DtlObjPtr eight = strings(8);
  int count = -1;
  auto output = captureOutput([&] { count = DtcListToStr(eight, out); });
  EXPECT_EQ(count, 0);
  EXPECT_EQ(output.err, "DtcListToStr: list too long: 8\n");
  EXPECT_EQ(out[0], nullptr);
  DtlObjPtr hundred = strings(100);
  output = captureOutput([&] { count = DtcListToStr(hundred, out); });
  EXPECT_EQ(count, 0);
  EXPECT_EQ(output.err, "DtcListToStr: list too long: 100\n");
}

TEST_F(LStringTest, ListToStrOfFortyEightWarnsOfAnEmptyStringAndStoresNothing) {
  char sentinel[] = "untouched";
  char* out[8];
  for (auto& slot : out) slot = sentinel;
  DtlObjPtr items = strings(48);
  int count = -1;
  auto output = captureOutput([&] { count = DtcListToStr(items, out); });
  EXPECT_EQ(count, 48);
  EXPECT_EQ(output.err, "DtcListToStr: empty str\n");
  for (auto* slot : out) EXPECT_EQ(slot, sentinel);
}

TEST_F(LStringTest, ListToStrWarningsFollowTheNotifyLevel) {
  char* out[8] = {};
  DtlObjPtr eight = strings(8);
  DtNotifyLevel = 0;
  auto output = captureOutput([&] { EXPECT_EQ(DtcListToStr(eight, out), 0); });
  EXPECT_EQ(output.err, "");
}

// ---- path-cross ------------------------------------------------------------------------

TEST_F(LStringTest, PathCrossOfOneAndOne) {
  EXPECT_EQ(text("(path-cross '(\"a\") '(\"b\"))"), ".:ab");
}

TEST_F(LStringTest, PathCrossPairsEveryFirstWithEverySecondInOrder) {
  EXPECT_EQ(text("(path-cross '(\"/a/\" \"/b/\") '(\"x\" \"y\"))"), ".:/a/x:/a/y:/b/x:/b/y");
  EXPECT_EQ(text("(path-cross '(\"/etc\") '(\"/\" \"\" \"x\"))"), ".:/etc/:/etc:/etcx");
}

TEST_F(LStringTest, PathCrossWithAnEmptySideIsALoneDot) {
  EXPECT_EQ(text("(path-cross nil '(\"b\"))"), ".");
  EXPECT_EQ(text("(path-cross '(\"a\") nil)"), ".");
  EXPECT_EQ(text("(path-cross \"a\" '(\"b\"))"), ".");
  EXPECT_EQ(text("(path-cross '(\"a\") 5)"), ".");
  EXPECT_EQ(text("(path-cross nil nil)"), ".");
}

TEST_F(LStringTest, PathCrossWithEightOnOneSideWarnsAndIsALoneDot) {
  DtlObjPtr result;
  auto output = captureOutput([&] {
    result = eval("(path-cross '(\"1\" \"2\" \"3\" \"4\" \"5\" \"6\" \"7\" \"8\") '(\"b\"))");
  });
  EXPECT_EQ(output.err, "DtcListToStr: list too long: 8\n");
  ASSERT_FALSE(result.isNull());
  EXPECT_STREQ(result->string(), ".");
  output = captureOutput([&] { result = DtlPathCross(list({strings(3), strings(8)}), frame); });
  EXPECT_EQ(output.err, "DtcListToStr: list too long: 8\n");
  EXPECT_STREQ(result->string(), ".");
}

TEST_F(LStringTest, PathCrossWithSevenOnEachSide) {
  DtlObjPtr result = DtlPathCross(list({strings(7), strings(7)}), frame);
  std::string expected = ".";
  for (int i = 0; i < 7; ++i) {
    for (int j = 0; j < 7; ++j) expected += ":s" + std::to_string(i) + "s" + std::to_string(j);
  }
  ASSERT_FALSE(result.isNull());
  EXPECT_EQ(std::string(result->string()), expected);
}

TEST_F(LStringTest, PathCrossWithFortyEightOnOneSideIsALoneDot) {
  DtlObjPtr result;
  auto output = captureOutput([&] {
    result = DtlPathCross(list({strings(48), strings(2)}), frame);
  });
  EXPECT_EQ(output.err, "DtcListToStr: empty str\n");
  ASSERT_FALSE(result.isNull());
  EXPECT_STREQ(result->string(), ".");
}

TEST_F(LStringTest, PathCrossBeyondTwoThousandBytesGrows) {
  // Seven directories of 300 bytes against seven names: far past 2048 bytes.
  DtlObjPtr dirs = DtlObjPtr::nil();
  DtlObjPtr names = DtlObjPtr::nil();
  std::string dir(299, 'd');
  dir += '/';
  for (int i = 0; i < 7; ++i) {
    dirs = DtcCons(DtlObjPtr(dir.c_str()), dirs);
    names = DtcCons(DtlObjPtr("name"), names);
  }
  DtlObjPtr result = DtlPathCross(list({dirs, names}), frame);
  std::string expected = ".";
  for (int i = 0; i < 49; ++i) expected += ":" + dir + "name";
  ASSERT_FALSE(result.isNull());
  EXPECT_GT(expected.size(), 2048u);
  EXPECT_EQ(std::string(result->string()), expected);
}

TEST_F(LStringTest, PathCrossTakesTheNamesOfSymbolsAndNothingFromOtherKinds) {
  // A symbol keeps its name where a string keeps its text; a number keeps no text at all.
  EXPECT_EQ(text("(path-cross '(a) '(b))"), ".:ab");
  EXPECT_EQ(text("(path-cross '(1 \"/x/\") '(\"b\" 2.5))"), ".:b::/x/b:/x/");
}

TEST_F(LStringTest, PathCrossNeedsTwoArguments) {
  EXPECT_EQ(halt("(path-cross '(\"a\"))"), haltMessage("Need two args to path-cross"));
  EXPECT_EQ(halt("(path-cross '(\"a\") '(\"b\") '(\"c\"))"),
            haltMessage("Need two args to path-cross"));
}
