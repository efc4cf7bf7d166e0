// DtcSetIfBoundp: the host's checked read of a binding, for int, double and text.
#include <gtest/gtest.h>

#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::evalText;

namespace {

class SetIfBoundpTest : public ::testing::Test {
 protected:
  void SetUp() override { savedLevel_ = DtNotifyLevel; }
  void TearDown() override { DtNotifyLevel = savedLevel_; }

  void bind(char const* symbol, DtlObjPtr const& value) {
    DtcSet(DtcIntern(symbol, frame), value, frame);
  }

  DtlObjPtr frame = ktltest::makeLanguageFrame();
  int savedLevel_ = 1;
  char n_[2] = "n";
  char* name = n_;
};

}  // namespace

// ---- int -------------------------------------------------------------------------------

TEST_F(SetIfBoundpTest, IntegerOfAFixnumIsStored) {
  evalText("(define n -42)", frame);
  int out = 7;
  EXPECT_EQ(DtcSetIfBoundp(name, &out, frame), 1);
  EXPECT_EQ(out, -42);
}

TEST_F(SetIfBoundpTest, NoBindingLeavesTheIntegerAlone) {
  int out = 7;
  DtNotifyLevel = 4;
  auto output = captureOutput([&] { EXPECT_EQ(DtcSetIfBoundp(name, &out, frame), 0); });
  EXPECT_EQ(out, 7);
  EXPECT_EQ(output.out, "");
  EXPECT_EQ(output.err, "");
}

TEST_F(SetIfBoundpTest, ParentsAreNotSearched) {
  bind("n", DtlObjPtr(5));
  DtlObjPtr child(DtlFrameTag);
  child->setFrameParent(frame);
  int i = 7;
  double d = 7.0;
  char keep[] = "keep";
  char* s = keep;
  EXPECT_EQ(DtcSetIfBoundp(name, &i, child), 0);
  EXPECT_EQ(DtcSetIfBoundp(name, &d, child), 0);
  EXPECT_EQ(DtcSetIfBoundp(name, &s, child), 0);
  EXPECT_EQ(i, 7);
  EXPECT_EQ(d, 7.0);
  EXPECT_EQ(s, keep);
  EXPECT_EQ(DtcSetIfBoundp(name, &i, frame), 1);
  EXPECT_EQ(i, 5);
}

TEST_F(SetIfBoundpTest, IntegerOfAnotherKindWarns) {
  bind("n", DtlObjPtr("x"));
  int out = 7;
  int result = -1;
  auto output = captureOutput([&] { result = DtcSetIfBoundp(name, &out, frame); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(out, 7);
  EXPECT_EQ(output.err, "Lisp Warning: Variable n should be an integer, not \"x\"");
  EXPECT_EQ(output.out, "");
}

TEST_F(SetIfBoundpTest, IntegerDoesNotTakeAFlonum) {
  bind("n", DtlObjPtr(2.0));
  int out = 7;
  int result = -1;
  auto output = captureOutput([&] { result = DtcSetIfBoundp(name, &out, frame); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(out, 7);
  EXPECT_EQ(output.err, "Lisp Warning: Variable n should be an integer, not 2.000000");
}

TEST_F(SetIfBoundpTest, AnInternedButUnsetNameShowsAsUnbound) {
  DtcIntern("n", frame);
  int out = 7;
  int result = -1;
  auto output = captureOutput([&] { result = DtcSetIfBoundp(name, &out, frame); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(output.err, "Lisp Warning: Variable n should be an integer, not *unbound*");
}

TEST_F(SetIfBoundpTest, WarningsAreSilentAtLevelZero) {
  bind("n", DtlObjPtr("x"));
  DtNotifyLevel = 0;
  int i = 7;
  double d = 7.0;
  char keep[] = "keep";
  char* s = keep;
  auto output = captureOutput([&] {
    EXPECT_EQ(DtcSetIfBoundp(name, &i, frame), 0);
    EXPECT_EQ(DtcSetIfBoundp(name, &d, frame), 0);
  });
  EXPECT_EQ(output.err, "");
  bind("n", DtlObjPtr(1));
  output = captureOutput([&] { EXPECT_EQ(DtcSetIfBoundp(name, &s, frame), 0); });
  EXPECT_EQ(output.err, "");
  EXPECT_EQ(i, 7);
  EXPECT_EQ(d, 7.0);
  EXPECT_EQ(s, keep);
}

// ---- double ----------------------------------------------------------------------------

TEST_F(SetIfBoundpTest, FloatOfAFixnumIsWidened) {
  evalText("(define n 2)", frame);
  double out = 0.0;
  EXPECT_EQ(DtcSetIfBoundp(name, &out, frame), 1);
  EXPECT_EQ(out, 2.0);
}

TEST_F(SetIfBoundpTest, FloatOfAFlonumIsStored) {
  evalText("(define n 2.75)", frame);
  double out = 0.0;
  EXPECT_EQ(DtcSetIfBoundp(name, &out, frame), 1);
  EXPECT_EQ(out, 2.75);
}

TEST_F(SetIfBoundpTest, FloatOfAnotherKindWarns) {
  bind("n", DtlObjPtr("x"));
  double out = 7.0;
  int result = -1;
  auto output = captureOutput([&] { result = DtcSetIfBoundp(name, &out, frame); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(out, 7.0);
  EXPECT_EQ(output.err, "Lisp Warning: Variable n should be a float, not \"x\"");
}

TEST_F(SetIfBoundpTest, NoBindingLeavesTheFloatAlone) {
  double out = 7.0;
  EXPECT_EQ(DtcSetIfBoundp(name, &out, frame), 0);
  EXPECT_EQ(out, 7.0);
}

// ---- text ------------------------------------------------------------------------------

TEST_F(SetIfBoundpTest, StringGivesTheObjectsOwnText) {
  evalText("(define n \"hello\")", frame);
  char* out = nullptr;
  EXPECT_EQ(DtcSetIfBoundp(name, &out, frame), 1);
  DtlObjPtr value = frame->frameBindings()->lookup("n");
  EXPECT_EQ(out, value->string());  // not a copy
  EXPECT_STREQ(out, "hello");
}

TEST_F(SetIfBoundpTest, StringOfAnotherKindWarns) {
  bind("n", DtlObjPtr(5));
  char keep[] = "keep";
  char* out = keep;
  int result = -1;
  auto output = captureOutput([&] { result = DtcSetIfBoundp(name, &out, frame); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(out, keep);
  EXPECT_EQ(output.err, "Lisp Warning: Variable n should be a string, not 5");
  bind("n", DtcCons(DtlObjPtr(1), DtlObjPtr::nil()));
  output = captureOutput([&] { DtcSetIfBoundp(name, &out, frame); });
  EXPECT_EQ(output.err, "Lisp Warning: Variable n should be a string, not (1)");
}

TEST_F(SetIfBoundpTest, NoBindingLeavesTheTextAlone) {
  char keep[] = "keep";
  char* out = keep;
  EXPECT_EQ(DtcSetIfBoundp(name, &out, frame), 0);
  EXPECT_EQ(out, keep);
}

TEST_F(SetIfBoundpTest, ALongNameIsWrittenWhole) {
  std::string longName(5000, 'v');
  bind(longName.c_str(), DtlObjPtr("x"));
  int out = 0;
  auto output = captureOutput([&] { DtcSetIfBoundp(&longName[0], &out, frame); });
  EXPECT_EQ(output.err, "Lisp Warning: Variable " + longName + " should be an integer, not \"x\"");
}
