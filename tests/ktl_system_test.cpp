// The primitives that reach the process: environment variables, commands, exit and abort, and
// the conversions between numbers and strings.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"
#include "support/language_test.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::evalText;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::printed;

namespace {

struct Primitive {
  char const* name;
  DtlPrimitive code;
};

const Primitive kSystemPrimitives[] = {
    {"getenv", DtlGetenv},
    {"putenv", DtlPutenv},
    {"system", DtlSystem},
    {"popen", DtlPopen},
    {"exit", DtlExit},
    {"abort", DtlAbort},
    {"string->number", DtlStringToNumber},
    {"number->string", DtlNumberToString},
};

class SystemTest : public ktltest::LanguageTest {
 protected:
  void SetUp() override {
    LanguageTest::SetUp();
    DtNotifyLevel = 1;
    DtLispDebugOn = 0;
    for (auto const& fn : kSystemPrimitives) DtcInternCompiledC(fn.name, fn.code, root);
  }
  void TearDown() override {
    DtlClearLoadPaths();
    LanguageTest::TearDown();
  }

  // Calls a primitive on the list of its arguments, without the evaluator (whose own traces
  // would mix with those of the primitive).
  DtlObjPtr call(DtlPrimitive fn, std::initializer_list<DtlObjPtr> args) {
    return fn(ktltest::list(args), root);
  }
  // Traces print only with DtLispDebugOn and DtNotifyLevel 2 or more.
  void trace() {
    DtLispDebugOn = 1;
    DtNotifyLevel = 2;
  }
};

}  // namespace

// ---- getenv and putenv -----------------------------------------------------------------

TEST_F(SystemTest, GetenvOfAnUnsetVariableYieldsNil) {
  unsetenv("KTL_SYSTEM_TEST_NOSUCH");
  EXPECT_EQ(eval("(getenv \"KTL_SYSTEM_TEST_NOSUCH\")"), DtlObjPtr::nil());
}

TEST_F(SystemTest, GetenvYieldsANewString) {
  setenv("KTL_SYSTEM_TEST_GET", "value", 1);
  DtlObjPtr result = eval("(getenv \"KTL_SYSTEM_TEST_GET\")");
  ASSERT_EQ(result->tag(), DtlStringTag);
  EXPECT_STREQ(result->string(), "value");
  EXPECT_NE(result->string(), std::getenv("KTL_SYSTEM_TEST_GET"));  // a copy
  unsetenv("KTL_SYSTEM_TEST_GET");
}

TEST_F(SystemTest, GetenvOfANonStringYieldsNil) {
  EXPECT_EQ(eval("(getenv 5)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(getenv 'HOME)"), DtlObjPtr::nil());
}

TEST_F(SystemTest, GetenvCountsItsArguments) {
  EXPECT_EQ(error("(getenv)"), haltMessage("Wrong number of args to getenv"));
  EXPECT_EQ(error("(getenv \"A\" \"B\")"), haltMessage("Wrong number of args to getenv"));
}

TEST_F(SystemTest, GetenvTraces) {
  setenv("KTL_SYSTEM_TEST_TRACE", "v", 1);
  unsetenv("KTL_SYSTEM_TEST_NOSUCH");
  trace();
  auto output = captureOutput([&] {
    call(DtlGetenv, {DtlObjPtr("KTL_SYSTEM_TEST_TRACE")});
    call(DtlGetenv, {DtlObjPtr("KTL_SYSTEM_TEST_NOSUCH")});
  });
  EXPECT_EQ(output.out,
            "(getenv \"KTL_SYSTEM_TEST_TRACE\") ==> \"v\")\n"
            "(getenv \"KTL_SYSTEM_TEST_NOSUCH\") ==> \"\")\n");
  DtNotifyLevel = 1;  // DtInfo is silent below 2
  output = captureOutput([&] { call(DtlGetenv, {DtlObjPtr("KTL_SYSTEM_TEST_TRACE")}); });
  EXPECT_EQ(output.out, "");
  unsetenv("KTL_SYSTEM_TEST_TRACE");
}

TEST_F(SystemTest, PutenvSetsTheProcessEnvironment) {
  DtlObjPtr value(DtlObjPtr("abc"));
  DtcInternPtr("value", value, root);
  DtlObjPtr result = eval("(putenv \"KTL_SYSTEM_TEST_PUT\" value)");
  EXPECT_EQ(result, value);  // the value string itself
  EXPECT_STREQ(std::getenv("KTL_SYSTEM_TEST_PUT"), "abc");
  EXPECT_EQ(show("(getenv \"KTL_SYSTEM_TEST_PUT\")"), "\"abc\"");
  eval("(putenv \"KTL_SYSTEM_TEST_PUT\" \"second\")");
  EXPECT_STREQ(std::getenv("KTL_SYSTEM_TEST_PUT"), "second");
  eval("(putenv \"KTL_SYSTEM_TEST_PUT\" \"\")");
  EXPECT_STREQ(std::getenv("KTL_SYSTEM_TEST_PUT"), "");
  unsetenv("KTL_SYSTEM_TEST_PUT");
}

TEST_F(SystemTest, PutenvChecksItsArguments) {
  EXPECT_EQ(error("(putenv \"A\")"), haltMessage("Wrong number of args to putenv"));
  EXPECT_EQ(error("(putenv \"A\" \"b\" \"c\")"), haltMessage("Wrong number of args to putenv"));
  EXPECT_EQ(error("(putenv 'A \"b\")"), haltMessage("variable name must be string"));
  EXPECT_EQ(error("(putenv \"KTL_SYSTEM_TEST_BAD\" 1)"),
            haltMessage("variable value must be string"));
  EXPECT_EQ(std::getenv("KTL_SYSTEM_TEST_BAD"), nullptr);
}

TEST_F(SystemTest, PutenvTraces) {
  trace();
  auto output = captureOutput([&] {
    call(DtlPutenv, {DtlObjPtr("KTL_SYSTEM_TEST_PUT_TRACE"), DtlObjPtr("x")});
  });
  EXPECT_EQ(output.out, "putenv \"KTL_SYSTEM_TEST_PUT_TRACE\"\n     ==> \"x\"\n");
  DtNotifyLevel = 1;
  output = captureOutput([&] {
    call(DtlPutenv, {DtlObjPtr("KTL_SYSTEM_TEST_PUT_TRACE"), DtlObjPtr("y")});
  });
  EXPECT_EQ(output.out, "");
  EXPECT_STREQ(std::getenv("KTL_SYSTEM_TEST_PUT_TRACE"), "y");
  unsetenv("KTL_SYSTEM_TEST_PUT_TRACE");
}

// ---- system and popen ------------------------------------------------------------------

TEST_F(SystemTest, SystemYieldsTheExitStatus) {
  EXPECT_EQ(show("(system \"exit 3\")"), "3");
  EXPECT_EQ(show("(system \"true\")"), "0");
}

TEST_F(SystemTest, SystemChecksItsArguments) {
  EXPECT_EQ(error("(system)"), haltMessage("Wrong number of args to system"));
  EXPECT_EQ(error("(system \"true\" \"true\")"), haltMessage("Wrong number of args to system"));
  EXPECT_EQ(error("(system 3)"), haltMessage("Non-string argument to system"));
}

TEST_F(SystemTest, PopenYieldsTheOutputLines) {
  EXPECT_EQ(show("(popen \"echo a; echo b\")"), "(\"a\" \"b\")");
  EXPECT_EQ(show("(popen \"printf 'x\\n\\ny\\n'\")"), "(\"x\" \"\" \"y\")");
}

TEST_F(SystemTest, PopenOfNoOutputYieldsNil) {
  EXPECT_EQ(eval("(popen \"true\")"), DtlObjPtr::nil());
}

TEST_F(SystemTest, PopenEndsALastLineWithoutNewlineAtTheEndOfOutput) {
  EXPECT_EQ(show("(popen \"printf 'a\\nb'\")"), "(\"a\" \"b\")");
  EXPECT_EQ(show("(popen \"printf tail\")"), "(\"tail\")");
}

TEST_F(SystemTest, PopenKeepsTheFirst199CharactersOfALine) {
  DtlObjPtr lines = eval("(popen \"printf '%0250d\\nshort\\n' 7\")");
  ASSERT_EQ(DtcLength(lines), 2);
  EXPECT_EQ(std::string(DtcCar(lines)->string()), std::string(199, '0'));
  EXPECT_STREQ(DtcCadr(lines)->string(), "short");
  lines = eval("(popen \"printf '%0199d\\n%0200d' 1 2\")");
  ASSERT_EQ(DtcLength(lines), 2);
  EXPECT_EQ(std::string(DtcCar(lines)->string()), std::string(198, '0') + "1");
  EXPECT_EQ(std::string(DtcCadr(lines)->string()), std::string(199, '0'));
}

TEST_F(SystemTest, PopenChecksItsArguments) {
  EXPECT_EQ(error("(popen)"), haltMessage("Wrong number of args to popen"));
  EXPECT_EQ(error("(popen \"a\" \"b\")"), haltMessage("Wrong number of args to popen"));
  EXPECT_EQ(error("(popen 'echo)"), haltMessage("Non-string argument to popen"));
}

TEST_F(SystemTest, PopenThatCannotStartHalts) {
  // With no descriptor left for the pipe, popen fails. Nothing but the primitive and the catch
  // of its halt runs while descriptors are short; a halt of the same kind runs first, so that
  // the sanitizer's type checks of that path have all they need (they use a pipe themselves).
  DtlObjPtr command = DtcCons(DtlObjPtr("echo a"), DtlObjPtr::nil());
  DtlObjPtr number = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  EXPECT_EQ(initialMessage([&] { DtlPopen(number, root); }),
            haltMessage("Non-string argument to popen"));
  int lowest = dup(0);
  ASSERT_GE(lowest, 0);
  close(lowest);
  struct rlimit saved;
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &saved), 0);
  struct rlimit tight = saved;
  tight.rlim_cur = static_cast<rlim_t>(lowest);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &tight), 0);
  std::string message = initialMessage([&] { DtlPopen(command, root); });
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &saved), 0);
  EXPECT_EQ(message, haltMessage("Lisp Error: Popen failed"));
}

// ---- exit and abort --------------------------------------------------------------------

class SystemDeathTest : public SystemTest {
 protected:
  void SetUp() override {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    SystemTest::SetUp();
  }
};

TEST_F(SystemDeathTest, ExitEndsTheProcessWithItsCode) {
  EXPECT_EXIT(eval("(exit 3)"), ::testing::ExitedWithCode(3), "");
  EXPECT_EXIT(eval("(exit)"), ::testing::ExitedWithCode(0), "");
  EXPECT_EXIT(eval("(exit 2.9)"), ::testing::ExitedWithCode(2), "");
}

TEST_F(SystemDeathTest, AbortEndsTheProcessBySignal) {
  EXPECT_EXIT(eval("(abort)"), ::testing::KilledBySignal(SIGABRT), "");
}

TEST_F(SystemTest, ExitChecksItsArguments) {
  EXPECT_EQ(error("(exit 1 2)"), haltMessage("Wrong number of args to exit"));
  EXPECT_EQ(error("(exit \"1\")"), haltMessage("Non-number to exit"));
  EXPECT_EQ(error("(exit 'now)"), haltMessage("Non-number to exit"));
}

TEST_F(SystemTest, AbortTakesNoArguments) {
  EXPECT_EQ(error("(abort 1)"), haltMessage("Wrong number of args to abort"));
}

// ---- string->number and number->string -------------------------------------------------

TEST_F(SystemTest, StringToNumberReadsLeadingDecimalDigits) {
  EXPECT_EQ(show("(string->number \"12x\")"), "12");
  EXPECT_EQ(show("(string->number \"0x10\")"), "0");
  EXPECT_EQ(show("(string->number \"abc\")"), "0");
  EXPECT_EQ(show("(string->number \"\")"), "0");
  EXPECT_EQ(show("(string->number \"  -42\")"), "-42");
  EXPECT_EQ(show("(string->number \"2.5\")"), "2");
}

TEST_F(SystemTest, StringToNumberOfANonStringYieldsNil) {
  EXPECT_EQ(eval("(string->number 12)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(string->number 'abc)"), DtlObjPtr::nil());
}

TEST_F(SystemTest, StringToNumberCountsItsArgument) {
  EXPECT_EQ(error("(string->number)"), haltMessage("No String to convert to number"));
  EXPECT_EQ(error("(string->number \"1\" \"2\")"), haltMessage("No String to convert to number"));
}

TEST_F(SystemTest, StringToNumberTraces) {
  trace();
  auto output = captureOutput([&] { call(DtlStringToNumber, {DtlObjPtr("12x")}); });
  EXPECT_EQ(output.out, "(string->number \"12x\") ==> \"12\")\n");
}

TEST_F(SystemTest, NumberToStringGivesTheDigits) {
  DtlObjPtr result = eval("(number->string 12)");
  ASSERT_EQ(result->tag(), DtlStringTag);
  EXPECT_STREQ(result->string(), "12");
  EXPECT_EQ(show("(number->string -305)"), "\"-305\"");
  EXPECT_EQ(show("(number->string (string->number \"77\"))"), "\"77\"");
}

TEST_F(SystemTest, NumberToStringReadsTheIntegerWordOfAFlonum) {
  // The low 32 bits of the double 0.1.
  double tenth = 0.1;
  uint64_t bits;
  std::memcpy(&bits, &tenth, sizeof bits);
  int low = static_cast<int>(static_cast<uint32_t>(bits & 0xffffffffu));
  EXPECT_EQ(show("(number->string 0.1)"), "\"" + std::to_string(low) + "\"");
  EXPECT_EQ(show("(number->string 1.5)"), "\"0\"");
}

TEST_F(SystemTest, NumberToStringCountsItsArgument) {
  EXPECT_EQ(error("(number->string)"), haltMessage("No number to convert to string"));
  EXPECT_EQ(error("(number->string 1 2)"), haltMessage("No number to convert to string"));
}

TEST_F(SystemTest, NumberToStringTraces) {
  trace();
  auto output = captureOutput([&] { call(DtlNumberToString, {DtlObjPtr(12)}); });
  EXPECT_EQ(output.out, "(number->string \"12\") ==> \"12\")\n");
}
