// The arithmetic primitives: +, *, -, /, abs, sin, cos and logior.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
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

DtlObjPtr fix(int value) {
  return DtlObjPtr(value);
}
DtlObjPtr flo(double value) {
  return DtlObjPtr(value);
}

class MathTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLevel_ = DtNotifyLevel;
    savedDebug_ = DtLispDebugOn;
  }
  void TearDown() override {
    DtNotifyLevel = savedLevel_;
    DtLispDebugOn = savedDebug_;
  }

  DtlObjPtr eval(std::string const& text) { return evalText(text, frame); }
  std::string halt(std::string const& text) {
    return initialMessage([&] { eval(text); });
  }
  // Calls a primitive on the values given, as the evaluator would after evaluating them.
  DtlObjPtr call(DtlPrimitive fn, std::initializer_list<DtlObjPtr> args) {
    return fn(list(args), frame);
  }
  // What a primitive writes to standard output with the traces on.
  std::string traced(DtlPrimitive fn, std::initializer_list<DtlObjPtr> args) {
    DtNotifyLevel = 2;
    DtLispDebugOn = 1;
    DtlObjPtr arguments = list(args);
    auto output = captureOutput([&] { fn(arguments, frame); });
    EXPECT_EQ(output.err, "");
    return output.out;
  }

  DtlObjPtr frame = ktltest::makeLanguageFrame();
  int savedLevel_ = 1;
  int savedDebug_ = 0;
};

void expectFixnum(DtlObjPtr const& x, int value) {
  ASSERT_FALSE(x.isNull());
  ASSERT_EQ(x->tag(), DtlFixnumTag);
  EXPECT_EQ(x->fixnum(), value);
}

void expectFlonum(DtlObjPtr const& x, double value) {
  ASSERT_FALSE(x.isNull());
  ASSERT_EQ(x->tag(), DtlFlonumTag);
  EXPECT_DOUBLE_EQ(x->flonum(), value);
}

}  // namespace

// ---- + and plus ------------------------------------------------------------------------

TEST_F(MathTest, SumOfFixnumsIsAFixnum) {
  expectFixnum(eval("(+ 1 2 3)"), 6);
  expectFixnum(eval("(plus 1 2 3)"), 6);
  expectFixnum(eval("(+ 40 2)"), 42);
}

TEST_F(MathTest, SumWithAFlonumIsAFlonumOnEitherSide) {
  expectFlonum(eval("(+ 1 2.5)"), 3.5);
  expectFlonum(eval("(+ 2.5 1)"), 3.5);
  expectFlonum(eval("(+ 1.25 2.5)"), 3.75);
  expectFlonum(eval("(+ 1 2 0.5)"), 3.5);
  EXPECT_EQ(printed(eval("(+ 1 2.5)")), "3.500000");
}

TEST_F(MathTest, SumOfOneArgumentIsThatVeryObject) {
  DtlObjPtr one = fix(1);
  EXPECT_EQ(call(DtlPlus, {one}), one);
  DtlObjPtr half = flo(0.5);
  EXPECT_EQ(call(DtlPlus, {half}), half);
  EXPECT_EQ(call(DtlMultiply, {one}), one);
}

TEST_F(MathTest, SumOfTwoIsANewObject) {
  DtlObjPtr a = fix(1);
  DtlObjPtr b = fix(0);
  DtlObjPtr sum = call(DtlPlus, {a, b});
  EXPECT_FALSE(sum == a);
  EXPECT_FALSE(sum == b);
  expectFixnum(sum, 1);
}

TEST_F(MathTest, NoArgumentsHaltWithTheCountMessages) {
  EXPECT_EQ(halt("(+)"), haltMessage("Wrong number of args to plus"));
  EXPECT_EQ(halt("(plus)"), haltMessage("Wrong number of args to plus"));
  EXPECT_EQ(halt("(*)"), haltMessage("Wrong number of args to multiply"));
  EXPECT_EQ(halt("(-)"), haltMessage("Wrong number of args to subtract"));
}

TEST_F(MathTest, OnlyTheLastArgumentOfASumIsChecked) {
  EXPECT_EQ(halt("(+ \"a\")"), haltMessage("Non-number to plus"));
  EXPECT_EQ(halt("(+ 1 \"a\")"), haltMessage("Non-number to plus"));
  EXPECT_EQ(halt("(+ 1 2 'x)"), haltMessage("Non-number to plus"));
  EXPECT_EQ(halt("(* \"a\")"), haltMessage("Non-number to multiply"));
  EXPECT_EQ(halt("(* 2 nil)"), haltMessage("Non-number to multiply"));
}

TEST_F(MathTest, AnEarlierNonNumberDoesNotHaltAndGivesSomeFlonum) {
  // The value is whatever the object's value word reads as; only the kind is certain.
  for (char const* text : {"(+ \"a\" 1)", "(+ \"a\" 1.5)", "(+ 'x 1)", "(+ nil 1)", "(+ '(1 2) 1)",
                           "(+ car 1)", "(* \"a\" 2)", "(* '(1) 2.0)"}) {
    DtlObjPtr result;
    EXPECT_EQ(initialMessage([&] { result = eval(text); }), "<no exception>") << text;
    ASSERT_FALSE(result.isNull()) << text;
    EXPECT_EQ(result->tag(), DtlFlonumTag) << text;
  }
  expectFlonum(call(DtlPlus, {DtlObjPtr::nil(), fix(2)}), 2.0);  // nil keeps no value: 0
}

TEST_F(MathTest, FixnumSumWrapsAround) {
  expectFixnum(eval("(+ 2147483647 1)"), INT_MIN);
  expectFixnum(call(DtlPlus, {fix(INT_MIN), fix(-1)}), INT_MAX);
  expectFixnum(call(DtlPlus, {fix(INT_MAX), fix(INT_MAX)}), -2);
}

TEST_F(MathTest, SumFoldsFromTheRight) {
  EXPECT_EQ(traced(DtlPlus, {fix(1), fix(2), fix(3)}),
            "(plus 2 3) ==> 5\n"
            "(plus 1 5) ==> 6\n");
}

TEST_F(MathTest, SumTracesEachCase) {
  EXPECT_EQ(traced(DtlPlus, {fix(1), fix(2)}), "(plus 1 2) ==> 3\n");
  EXPECT_EQ(traced(DtlPlus, {flo(1.5), flo(2.25)}), "(plus 1.500000 2.250000) ==> 3.750000\n");
  EXPECT_EQ(traced(DtlPlus, {fix(1), flo(2.5)}), "(plus 1 2.500000) ==> 3.500000\n");
  EXPECT_EQ(traced(DtlPlus, {flo(2.5), fix(1)}), "(plus 2.500000 1) ==> 3.500000\n");
}

TEST_F(MathTest, TracesNeedDebugAndTheInfoLevel) {
  DtlObjPtr args = list({fix(1), fix(2)});
  DtLispDebugOn = 0;
  DtNotifyLevel = 4;
  auto quiet = captureOutput([&] { DtlPlus(args, frame); });
  EXPECT_EQ(quiet.out, "");
  DtLispDebugOn = 1;
  DtNotifyLevel = 1;  // DtInfo writes from level 2
  auto filtered = captureOutput([&] { DtlPlus(args, frame); });
  EXPECT_EQ(filtered.out, "");
  DtNotifyLevel = 2;
  auto shown = captureOutput([&] { DtlPlus(args, frame); });
  EXPECT_EQ(shown.out, "(plus 1 2) ==> 3\n");
}

TEST_F(MathTest, ManyArgumentsAddUpWithoutDeepRecursion) {
  const int count = 200000;
  DtlObjPtr args = DtlObjPtr::nil();
  for (int i = 0; i < count; ++i) args = DtcCons(fix(1), args);
  expectFixnum(DtlPlus(args, frame), count);
  expectFixnum(DtlMultiply(args, frame), 1);
  args = DtcCons(flo(0.5), args);
  expectFlonum(DtlPlus(args, frame), count + 0.5);
}

// ---- * ---------------------------------------------------------------------------------

TEST_F(MathTest, ProductByKind) {
  expectFixnum(eval("(* 2 3 4)"), 24);
  expectFlonum(eval("(* 2 1.5)"), 3.0);
  expectFlonum(eval("(* 1.5 2)"), 3.0);
  expectFlonum(eval("(* 0.5 0.5)"), 0.25);
}

TEST_F(MathTest, ProductWrapsAround) {
  DtlObjPtr args = DtlObjPtr::nil();
  for (int i = 0; i < 31; ++i) args = DtcCons(fix(2), args);
  expectFixnum(DtlMultiply(args, frame), INT_MIN);
  args = DtcCons(fix(2), args);
  expectFixnum(DtlMultiply(args, frame), 0);
  expectFixnum(call(DtlMultiply, {fix(65536), fix(65537)}), 65536);
}

TEST_F(MathTest, ProductTracesWithMul) {
  EXPECT_EQ(traced(DtlMultiply, {fix(2), fix(3), fix(4)}),
            "(mul 3 4) ==> 12\n"
            "(mul 2 12) ==> 24\n");
  EXPECT_EQ(traced(DtlMultiply, {flo(0.5), flo(3.0)}), "(mul 0.500000 3.000000) ==> 1.500000\n");
  EXPECT_EQ(traced(DtlMultiply, {fix(2), flo(0.25)}), "(mul 2 0.250000) ==> 0.500000\n");
  EXPECT_EQ(traced(DtlMultiply, {flo(0.25), fix(2)}), "(mul 0.250000 2) ==> 0.500000\n");
}

// ---- - ---------------------------------------------------------------------------------

TEST_F(MathTest, DifferenceFoldsFromTheLeft) {
  expectFixnum(eval("(- 1 2 3)"), -4);
  expectFixnum(eval("(- 10 2 3)"), 5);
  expectFlonum(eval("(- 1.5 1)"), 0.5);
  expectFlonum(eval("(- 1 0.25)"), 0.75);
  expectFlonum(eval("(- 1.5 0.25 1)"), 0.25);
  EXPECT_EQ(traced(DtlMinus, {fix(10), fix(2), fix(3)}),
            "(sub 10 2) ==> 8\n"
            "(sub 8 3) ==> 5\n");
}

TEST_F(MathTest, DifferenceTracesEachCase) {
  EXPECT_EQ(traced(DtlMinus, {flo(2.5), flo(0.5)}), "(sub 2.500000 0.500000) ==> 2.000000\n");
  EXPECT_EQ(traced(DtlMinus, {fix(1), flo(0.5)}), "(sub 1 0.500000) ==> 0.500000\n");
  EXPECT_EQ(traced(DtlMinus, {flo(1.5), fix(1)}), "(sub 1.500000 1) ==> 0.500000\n");
}

TEST_F(MathTest, MinusOfOneArgumentTurnsTheSignInANewObject) {
  expectFixnum(eval("(- 5)"), -5);
  expectFlonum(eval("(- 2.5)"), -2.5);
  DtlObjPtr zero = fix(0);
  DtlObjPtr negated = call(DtlMinus, {zero});
  EXPECT_FALSE(negated == zero);
  expectFixnum(negated, 0);
  expectFixnum(call(DtlMinus, {fix(INT_MIN)}), INT_MIN);  // wraps
}

TEST_F(MathTest, MinusChecksEverySecondOperandButNotTheFirst) {
  EXPECT_EQ(halt("(- \"x\")"), haltMessage("Non-number to subtract"));
  EXPECT_EQ(halt("(- 1 \"x\")"), haltMessage("Non-number to subtract"));
  EXPECT_EQ(halt("(- 1 2 'y)"), haltMessage("Non-number to subtract"));
  DtlObjPtr result;
  EXPECT_EQ(initialMessage([&] { result = eval("(- \"x\" 1)"); }), "<no exception>");
  ASSERT_FALSE(result.isNull());
  EXPECT_EQ(result->tag(), DtlFlonumTag);
}

TEST_F(MathTest, DifferenceWrapsAround) {
  expectFixnum(call(DtlMinus, {fix(INT_MIN), fix(1)}), INT_MAX);
  expectFixnum(call(DtlMinus, {fix(INT_MAX), fix(-1)}), INT_MIN);
}

// ---- / ---------------------------------------------------------------------------------

TEST_F(MathTest, QuotientKindFollowsTheValue) {
  DtlObjPtr half = eval("(/ 1 2)");
  expectFlonum(half, 0.5);
  EXPECT_EQ(printed(half), "0.500000");
  DtlObjPtr two = eval("(/ 4 2)");
  expectFixnum(two, 2);
  EXPECT_EQ(printed(two), "2");
  expectFixnum(eval("(/ 6 2)"), 3);
  expectFixnum(eval("(/ 6.0 2.0)"), 3);
  expectFlonum(eval("(/ 7 2)"), 3.5);
  expectFixnum(eval("(/ -7 7)"), -1);
  expectFlonum(eval("(/ 1.0 4)"), 0.25);
}

TEST_F(MathTest, FixnumOperandsGoThroughSinglePrecision) {
  expectFixnum(eval("(/ 16777217 1)"), 16777216);
  expectFixnum(eval("(/ 16777216 1)"), 16777216);
  expectFixnum(eval("(/ 16777217.0 1)"), 16777217);                // a flonum is used as it is
  expectFixnum(call(DtlDivide, {fix(INT_MAX), fix(1)}), INT_MIN);  // rounds up to 2^31
}

TEST_F(MathTest, DivisionByZeroRaisesNothing) {
  expectFixnum(eval("(/ 1 0)"), INT_MIN);
  expectFixnum(eval("(/ -1 0)"), INT_MIN);
  expectFixnum(eval("(/ 1.5 0.0)"), INT_MIN);
  DtlObjPtr nan = eval("(/ 0 0)");
  ASSERT_FALSE(nan.isNull());
  ASSERT_EQ(nan->tag(), DtlFlonumTag);
  EXPECT_TRUE(std::isnan(nan->flonum()));
}

TEST_F(MathTest, IntegralQuotientOutOfRangeGivesTheLowestFixnum) {
  expectFixnum(call(DtlDivide, {flo(1e10), fix(1)}), INT_MIN);
  expectFixnum(call(DtlDivide, {flo(-1e10), fix(1)}), INT_MIN);
  expectFixnum(call(DtlDivide, {flo(-2147483648.0), fix(1)}), INT_MIN);
  expectFixnum(call(DtlDivide, {flo(2147483647.0), fix(1)}), INT_MAX);
}

TEST_F(MathTest, DivideChecksCountAndBothOperands) {
  EXPECT_EQ(halt("(/ 1)"), haltMessage("Wrong number of args to divide"));
  EXPECT_EQ(halt("(/ 1 2 3)"), haltMessage("Wrong number of args to divide"));
  EXPECT_EQ(halt("(/ \"a\" 1)"), haltMessage("Non-number to divide"));
  EXPECT_EQ(halt("(/ 1 'b)"), haltMessage("Non-number to divide"));
}

// ---- abs, sin, cos ---------------------------------------------------------------------

TEST_F(MathTest, AbsKeepsTheKind) {
  expectFixnum(eval("(abs -3)"), 3);
  expectFixnum(eval("(abs 3)"), 3);
  expectFlonum(eval("(abs -2.5)"), 2.5);
  expectFlonum(eval("(abs 2.5)"), 2.5);
  expectFixnum(call(DtlAbs, {fix(INT_MIN)}), INT_MIN);  // wraps
}

TEST_F(MathTest, AbsAlwaysGivesANewObject) {
  DtlObjPtr three = fix(3);
  DtlObjPtr result = call(DtlAbs, {three});
  EXPECT_FALSE(result == three);
  expectFixnum(result, 3);
  DtlObjPtr half = flo(0.5);
  EXPECT_FALSE(call(DtlAbs, {half}) == half);
}

TEST_F(MathTest, AbsChecksCountAndKind) {
  EXPECT_EQ(halt("(abs \"x\")"), haltMessage("Non-number to abs"));
  EXPECT_EQ(halt("(abs)"), haltMessage("Wrong number of args to abs"));
  EXPECT_EQ(halt("(abs 1 2)"), haltMessage("Wrong number of args to abs"));
}

TEST_F(MathTest, SineAndCosineAreAlwaysFlonums) {
  DtlObjPtr zero = eval("(sin 0)");
  expectFlonum(zero, 0.0);
  EXPECT_EQ(printed(zero), "0.000000");
  expectFlonum(eval("(cos 0)"), 1.0);
  expectFlonum(eval("(sin 1.5)"), std::sin(1.5));
  expectFlonum(eval("(cos 2)"), std::cos(2.0));
}

TEST_F(MathTest, SineAndCosineSpeakOfAbsAndSin) {
  EXPECT_EQ(halt("(sin)"), haltMessage("Wrong number of args to abs"));
  EXPECT_EQ(halt("(sin 1 2)"), haltMessage("Wrong number of args to abs"));
  EXPECT_EQ(halt("(cos)"), haltMessage("Wrong number of args to abs"));
  EXPECT_EQ(halt("(cos 1 2)"), haltMessage("Wrong number of args to abs"));
  EXPECT_EQ(halt("(sin \"x\")"), haltMessage("Non-number to sin"));
  EXPECT_EQ(halt("(cos \"x\")"), haltMessage("Non-number to sin"));
}

// ---- logior ----------------------------------------------------------------------------

TEST_F(MathTest, LogiorIsTheBitwiseOr) {
  expectFixnum(eval("(logior 5 10)"), 15);
  expectFixnum(eval("(logior 12 10)"), 14);
  expectFixnum(eval("(logior -1 0)"), -1);
}

TEST_F(MathTest, LogiorTracesInHex) {
  EXPECT_EQ(traced(DtlLogIOr, {fix(5), fix(10)}), "(logior 0x5 0xA) ==> 0xF\n");
  EXPECT_EQ(traced(DtlLogIOr, {fix(-16), fix(1)}), "(logior 0xFFFFFFF0 0x1) ==> 0xFFFFFFF1\n");
}

TEST_F(MathTest, LogiorDoesNotTestTheKind) {
  DtlObjPtr result;
  EXPECT_EQ(initialMessage([&] { result = eval("(logior 1.5 \"a\")"); }), "<no exception>");
  ASSERT_FALSE(result.isNull());
  EXPECT_EQ(result->tag(), DtlFixnumTag);
  expectFixnum(call(DtlLogIOr, {DtlObjPtr::nil(), fix(6)}), 6);  // nil keeps no value: 0
}

TEST_F(MathTest, LogiorTakesExactlyTwo) {
  EXPECT_EQ(halt("(logior 1)"), haltMessage("Wrong number of args to logior"));
  EXPECT_EQ(halt("(logior 1 2 3)"), haltMessage("Wrong number of args to logior"));
}
