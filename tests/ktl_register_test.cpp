// Host variables bound to KTL names, kept in step before and after a load.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"
#include "support/language_test.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::evalText;
using ktltest::printed;

namespace {

class RegisterTest : public ktltest::LanguageTest {
 protected:
  // What a load does around its text: host values in, evaluate, bindings back out.
  void load(std::string const& text) {
    DtcCToLisp(root->params());
    eval(text);
    DtcLispToC(root->params());
  }
};

// A parameter whose destruction is observable.
class CountedParam : public DtcLispInt {
 public:
  CountedParam(char const* name, DtlObjPtr const& env, int* destroyed)
      : DtcLispInt(name, env), destroyed_(destroyed) {}
  ~CountedParam() override { ++*destroyed_; }
  void c2lisp() override { setLisp(11); }
  void lisp2c() override {}

 private:
  int* destroyed_;
};

}  // namespace

TEST_F(RegisterTest, AnIntShowsInKtl) {
  int x = 5;
  EXPECT_EQ(DtcRegister("x", &x, root, nullptr), 1);
  EXPECT_EQ(show("x"), "5");
}

TEST_F(RegisterTest, SetqbInALoadReachesTheHost) {
  int x = 5;
  DtcRegister("x", &x, root, nullptr);
  load("(setqb x 7)");
  EXPECT_EQ(x, 7);
  load("(set! x 8)");
  EXPECT_EQ(x, 8);
  load("(setq x 9)");  // at the root, setq acts on the same binding
  EXPECT_EQ(x, 9);
  load("((lambda () (setq x 10)))");  // in a nested frame it makes a local
  EXPECT_EQ(x, 9);
}

TEST_F(RegisterTest, HostChangesReachTheBindingBeforeALoad) {
  int x = 5;
  DtcRegister("x", &x, root, nullptr);
  x = 6;
  load("(define seen x)");
  EXPECT_EQ(show("seen"), "6");
}

TEST_F(RegisterTest, WrongKindLeavesTheVariableAndWarns) {
  int x = 5;
  DtcRegister("x", &x, root, nullptr);
  DtNotifyLevel = 1;
  auto output = captureOutput([&] { load("(setqb x \"a\")"); });
  EXPECT_EQ(x, 5);
  EXPECT_EQ(output.err, "Lisp Warning: Variable x should be an integer, not \"a\"");
  DtNotifyLevel = 0;
  output = captureOutput([&] { load("(setqb x \"b\")"); });
  EXPECT_EQ(x, 5);
  EXPECT_EQ(output.err, "");
}

TEST_F(RegisterTest, SecondRegistrationWarnsAndKeepsTheFirstLink) {
  int x = 5;
  int other = 1;
  EXPECT_EQ(DtcRegister("x", &x, root, nullptr), 1);
  int destroyed = 0;
  int result = -1;
  auto output = captureOutput(
      [&] { result = DtcRegister(new CountedParam("x", root, &destroyed), root, nullptr); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(output.err, "DtcRegister: x is already bound\n");
  output = captureOutput([&] { result = DtcRegister("x", &other, root, nullptr); });
  EXPECT_EQ(result, 0);
  load("(setqb x 3)");
  EXPECT_EQ(x, 3);
  EXPECT_EQ(other, 1);
}

TEST_F(RegisterTest, AnInternedButUnsetNameIsFree) {
  DtcIntern("later", root);
  int later = 4;
  EXPECT_EQ(DtcRegister("later", &later, root, nullptr), 1);
  EXPECT_EQ(show("later"), "4");
}

TEST_F(RegisterTest, FloatShowsWithSixDecimals) {
  float f = 1.5f;
  DtcRegister("f", &f, root, nullptr);
  EXPECT_EQ(show("f"), "1.500000");
  load("(setqb f 2.25)");
  EXPECT_FLOAT_EQ(f, 2.25f);
  load("(setqb f 3)");  // a fixnum is widened
  EXPECT_FLOAT_EQ(f, 3.0f);
}

TEST_F(RegisterTest, DoubleRoundTrips) {
  double d = 0.125;
  DtcRegister("d", &d, root, nullptr);
  EXPECT_EQ(show("d"), "0.125000");
  load("(setqb d -4.5)");
  EXPECT_DOUBLE_EQ(d, -4.5);
  auto output = captureOutput([&] { load("(setqb d 'x)"); });
  EXPECT_DOUBLE_EQ(d, -4.5);
  EXPECT_EQ(output.err, "Lisp Warning: Variable d should be a float, not x");
}

TEST_F(RegisterTest, UnsignedShortKeepsSixteenBits) {
  unsigned short u = 7;
  DtcRegister("u", &u, root, nullptr);
  load("(setqb u 65537)");
  EXPECT_EQ(u, 1);
  u = 65535;
  EXPECT_EQ((load("(define seen u)"), show("seen")), "65535");  // zero-extended
}

TEST_F(RegisterTest, ShortIsSignExtendedAndCut) {
  short s = -2;
  DtcRegister("s", &s, root, nullptr);
  EXPECT_EQ(show("s"), "-2");
  load("(setqb s 65535)");
  EXPECT_EQ(s, -1);
}

TEST_F(RegisterTest, LongAndUnsignedLongKeepThirtyTwoBits) {
  long l = 0x100000005L;
  unsigned long ul = 1;
  DtcRegister("l", &l, root, nullptr);
  DtcRegister("ul", &ul, root, nullptr);
  EXPECT_EQ(show("l"), "5");
  load("(setqb l -3)");
  EXPECT_EQ(l, -3L);
  load("(setqb ul -1)");
  EXPECT_EQ(ul, ULONG_MAX);  // sign extension: a negative fixnum gives a huge value
}

TEST_F(RegisterTest, UnsignedIntKeepsTheBits) {
  unsigned int ui = 4294967295u;
  DtcRegister("ui", &ui, root, nullptr);
  EXPECT_EQ(show("ui"), "-1");
  load("(setqb ui -2)");
  EXPECT_EQ(ui, 4294967294u);
}

TEST_F(RegisterTest, CharPointerGetsTheBindingsOwnText) {
  char initial[] = "first";
  char* text = initial;
  DtcRegister("text", &text, root, nullptr);
  EXPECT_EQ(show("text"), "\"first\"");
  load("(setqb text \"second\")");
  EXPECT_STREQ(text, "second");
  DtlObjPtr bound = root->frameBindings()->lookup("text");
  EXPECT_EQ(text, bound->string());  // not a copy
  // An equal host value keeps the object, so the host's pointer stays valid across loads.
  load("(define unrelated 1)");
  EXPECT_EQ(text, root->frameBindings()->lookup("text")->string());
  auto output = captureOutput([&] { load("(setqb text 5)"); });
  EXPECT_EQ(output.err, "Lisp Warning: Variable text should be a string, not 5");
}

TEST_F(RegisterTest, NullCharPointerMakesAnUnsetString) {
  char* text = nullptr;
  EXPECT_EQ(DtcRegister("text", &text, root, nullptr), 1);
  DtlObjPtr bound = root->frameBindings()->lookup("text");
  EXPECT_EQ(bound->tag(), DtlStringTag);
  EXPECT_EQ(bound->string(), nullptr);
  load("(define unrelated 1)");  // a null host text stays equal to the unset string
  EXPECT_EQ(root->frameBindings()->lookup("text"), bound);
}

TEST_F(RegisterTest, DtStringCopiesTheText) {
  DtString name("alpha");
  DtcRegister("name", &name, root, nullptr);
  EXPECT_EQ(show("name"), "\"alpha\"");
  load("(setqb name \"beta\")");
  EXPECT_EQ(name, DtString("beta"));
  DtNotifyLevel = 0;
  load("(setqb name 1)");  // a wrong kind leaves the DtString alone
  EXPECT_EQ(name, DtString("beta"));
}

TEST_F(RegisterTest, PrintRegisteredWritesLoadableLines) {
  int x = 5;
  char initial[] = "a";
  char* s = initial;
  DtcRegister("x", &x, root, nullptr);
  DtcRegister("s", &s, root, nullptr);
  DtNotifyLevel = 2;
  auto output = captureOutput([&] { evalText("(print-registered)", root); });
  EXPECT_EQ(output.out, "(setqb x 5)\n(setqb s \"a\")\n");
}

TEST_F(RegisterTest, PrintRegisteredOfAFrameWithoutParameters) {
  DtlObjPtr child(DtlFrameTag);
  child->setFrameParent(root);
  DtNotifyLevel = 2;
  DtlObjPtr result;
  auto output = captureOutput([&] { result = DtlPrintRegistered(DtlObjPtr::nil(), child); });
  EXPECT_EQ(output.out, "");
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_NE(child->params(), nullptr);  // the empty list was made on demand
}

TEST_F(RegisterTest, EvalToStringShowsWrongBindingsAsDefaults) {
  double d = 1.0;
  DtString text("t");
  DtcRegister("d", &d, root, nullptr);
  DtcRegister("text", &text, root, nullptr);
  DtNotifyLevel = 0;
  evalText("(setqb d \"no\")", root);
  evalText("(setqb text 3)", root);
  DtNotifyLevel = 2;
  auto output = captureOutput([&] { evalText("(print-registered)", root); });
  EXPECT_EQ(output.out, "(setqb d 0.000000)\n(setqb text \"\")\n");
}

TEST_F(RegisterTest, ParametersDieWithTheirFrame) {
  int destroyed = 0;
  {
    DtlObjPtr frame(DtlFrameTag);
    EXPECT_EQ(DtcRegister(new CountedParam("p", frame, &destroyed), frame, nullptr), 1);
    EXPECT_EQ(frame->frameBindings()->lookup("p")->fixnum(), 11);
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST_F(RegisterTest, ResetLispKeepsEqualValuesAndReplacesOthers) {
  DtlObjPtr symbol = DtcIntern("v", root);
  DtcResetLisp(symbol, 3, root);
  DtlObjPtr first = root->frameBindings()->lookup("v");
  DtcResetLisp(symbol, 3, root);
  EXPECT_EQ(root->frameBindings()->lookup("v"), first);
  DtcResetLisp(symbol, 4, root);
  EXPECT_EQ(root->frameBindings()->lookup("v")->fixnum(), 4);
  DtcResetLisp(symbol, 2.5, root);
  first = root->frameBindings()->lookup("v");
  DtcResetLisp(symbol, 2.5, root);
  EXPECT_EQ(root->frameBindings()->lookup("v"), first);
  DtcResetLisp(symbol, "s", root);  // a different kind is never equal
  first = root->frameBindings()->lookup("v");
  EXPECT_STREQ(first->string(), "s");
  DtcResetLisp(symbol, "s", root);
  EXPECT_EQ(root->frameBindings()->lookup("v"), first);
}

TEST_F(RegisterTest, SyncStopsAtTheFirstEmptyItem) {
  int a = 1;
  int b = 2;
  DtcRegister("a", &a, root, nullptr);
  DtList* params = root->params();
  params->addAfter(nullptr, params->first());  // an empty item after the first parameter
  DtcRegister("b", &b, root, nullptr);
  evalText("(setqb a 10) (setqb b 20)", root);
  DtcLispToC(params);
  EXPECT_EQ(a, 10);
  EXPECT_EQ(b, 2);
}
