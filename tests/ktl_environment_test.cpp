// The embedding facade: one interpreter behind DtKtlEnvironment.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::printed;

namespace {

class EnvironmentTest : public ::testing::Test {
 protected:
  void SetUp() override { savedLevel_ = DtNotifyLevel; }
  void TearDown() override {
    DtNotifyLevel = savedLevel_;
    DtlClearLoadPaths();
  }

  DtlObjPtr expr(DtKtlEnvironment& ktl, std::string const& text) {
    std::vector<char> buffer(text.begin(), text.end());
    buffer.push_back('\0');
    return ktl.loadLispExpr(buffer.data(), 1);
  }

  int savedLevel_ = 1;
};

DtlObjPtr seenArgs;
DtlObjPtr seenEnv;
DtlObjPtr recordCall(DtlObjPtr const& args, DtlObjPtr const& env) {
  seenArgs = args;
  seenEnv = env;
  return DtlObjPtr(42);
}

}  // namespace

TEST_F(EnvironmentTest, StandardNames) {
  DtKtlEnvironment ktl;
  DtlObjPtr debug = ktl.lookup("DEBUG");
  ASSERT_FALSE(debug.isNull());
  EXPECT_EQ(debug->tag(), DtlFixnumTag);
  EXPECT_EQ(debug->fixnum(), 1);
  DtlObjPtr os = ktl.lookup("OS");
  ASSERT_FALSE(os.isNull());
  EXPECT_EQ(os->tag(), DtlStringTag);
  EXPECT_STREQ(os->string(), DtOperatingSystem());
  DtlObjPtr level = ktl.lookup("DtNotifyLevel");
  ASSERT_FALSE(level.isNull());
  EXPECT_EQ(level->fixnum(), DtNotifyLevel);
  EXPECT_EQ(ktl.lookup("car")->tag(), DtlCompiledCTag);
}

TEST_F(EnvironmentTest, LookupOfAMissingNameIsANullHandle) {
  DtKtlEnvironment ktl;
  DtlObjPtr missing = ktl.lookup("nosuch");
  EXPECT_TRUE(missing.isNull());
  EXPECT_FALSE(missing == DtlObjPtr::nil());
  DtcIntern("interned", ktl.env());
  EXPECT_EQ(ktl.lookup("interned"), DtlObjPtr::unbound());
}

TEST_F(EnvironmentTest, NotifyLevelNameIsTaken) {
  DtKtlEnvironment ktl;
  int x = 0;
  int result = -1;
  auto output = captureOutput([&] { result = ktl.registerVar("DtNotifyLevel", &x); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(output.err, "DtcRegister: DtNotifyLevel is already bound\n");
}

TEST_F(EnvironmentTest, ScriptsSetTheNotifyLevel) {
  DtKtlEnvironment ktl;
  DtNotifyLevel = 1;
  char text[] = "(setqb DtNotifyLevel 3)";
  EXPECT_FALSE(ktl.loadLispExpr(text, 0).isNull());
  EXPECT_EQ(DtNotifyLevel, 3);
}

TEST_F(EnvironmentTest, HostFunctionsGetValuesAndTheCallingFrame) {
  DtKtlEnvironment ktl;
  DtlObjPtr symbol = ktl.setFunction("host-fn", recordCall);
  EXPECT_STREQ(symbol->pname(), "host-fn");
  EXPECT_EQ(printed(expr(ktl, "(host-fn 1 2)")), "42");
  EXPECT_EQ(printed(seenArgs), "(1 2)");
  EXPECT_EQ(seenEnv, ktl.env());
  seenArgs = DtlObjPtr();
  seenEnv = DtlObjPtr();
}

TEST_F(EnvironmentTest, HostSpecialFormsGetTheirArgumentsAsWritten) {
  DtKtlEnvironment ktl;
  ktl.setSpecialForm("host-form", recordCall);
  expr(ktl, "(host-form (car nosuch) x)");
  EXPECT_EQ(printed(seenArgs), "((car nosuch) x)");
  seenArgs = DtlObjPtr();
  seenEnv = DtlObjPtr();
}

TEST_F(EnvironmentTest, SetParameterReplacesAValue) {
  DtKtlEnvironment ktl;
  DtlObjPtr symbol = ktl.setParameter("DEBUG", DtlObjPtr(0));
  EXPECT_STREQ(symbol->pname(), "DEBUG");
  EXPECT_EQ(ktl.lookup("DEBUG")->fixnum(), 0);
  ktl.setParameter("fresh", DtlObjPtr("v"));
  EXPECT_EQ(printed(expr(ktl, "fresh")), "\"v\"");
}

TEST_F(EnvironmentTest, ACopyHasNoFrameAndWarns) {
  DtKtlEnvironment ktl;
  std::string err = captureOutput([&] {
                      DtKtlEnvironment copy(ktl);
                      EXPECT_TRUE(copy.env().isNull());
                      EXPECT_TRUE(copy.lookup("DEBUG").isNull());
                      int x = 0;
                      EXPECT_EQ(copy.registerVar("x", &x), 0);
                      char text[] = "(+ 1 2)";
                      EXPECT_TRUE(copy.loadLispExpr(text, 0).isNull());
                    }).err;
  EXPECT_EQ(err, "WARNING: Copy constructor not implemented for DtKtlEnvironment\n");
  EXPECT_EQ(ktl.lookup("DEBUG")->fixnum(), 1);  // the original is untouched
}

TEST_F(EnvironmentTest, AssignmentWarnsAndChangesNothing) {
  DtKtlEnvironment a;
  DtKtlEnvironment b;
  DtlObjPtr before = a.env();
  auto output = captureOutput([&] { a = b; });
  EXPECT_EQ(output.err, "WARNING: Assignment operator not implemented for DtKtlEnvironment\n");
  EXPECT_EQ(a.env(), before);
  DtKtlEnvironment& same = a;
  output = captureOutput([&] { a = same; });
  EXPECT_EQ(output.err, "");
  before = DtlObjPtr();
}

TEST_F(EnvironmentTest, EveryHostTypeRegisters) {
  DtKtlEnvironment ktl;
  float f = 1.5f;
  double d = 2.5;
  int i = 3;
  unsigned long ul = 4;
  char initial[] = "five";
  char* s = initial;
  DtString ds("six");
  long l = -7;
  short sh = 8;
  unsigned short us = 9;
  unsigned int ui = 10;
  EXPECT_EQ(ktl.registerVar("f", &f), 1);
  EXPECT_EQ(ktl.registerVar("d", &d), 1);
  EXPECT_EQ(ktl.registerVar("i", &i), 1);
  EXPECT_EQ(ktl.registerVar("ul", &ul), 1);
  EXPECT_EQ(ktl.registerVar("s", &s), 1);
  EXPECT_EQ(ktl.registerVar("ds", &ds), 1);
  EXPECT_EQ(ktl.registerVar("l", &l), 1);
  EXPECT_EQ(ktl.registerVar("sh", &sh), 1);
  EXPECT_EQ(ktl.registerVar("us", &us), 1);
  EXPECT_EQ(ktl.registerVar("ui", &ui), 1);
  EXPECT_EQ(printed(expr(ktl, "(list f d i ul s ds l sh us ui)")),
            "(1.500000 2.500000 3 4 \"five\" \"six\" -7 8 9 10)");
  expr(ktl,
       "(setqb f 0.5) (setqb d -1.25) (setqb i 30) (setqb ul 40) (setqb s \"fifty\")"
       " (setqb ds \"sixty\") (setqb l -70) (setqb sh -80) (setqb us 90) (setqb ui 100)");
  EXPECT_FLOAT_EQ(f, 0.5f);
  EXPECT_DOUBLE_EQ(d, -1.25);
  EXPECT_EQ(i, 30);
  EXPECT_EQ(ul, 40u);
  EXPECT_STREQ(s, "fifty");
  EXPECT_EQ(ds, DtString("sixty"));
  EXPECT_EQ(l, -70);
  EXPECT_EQ(sh, -80);
  EXPECT_EQ(us, 90);
  EXPECT_EQ(ui, 100u);
}

TEST_F(EnvironmentTest, EnvGivesTheMemberItself) {
  DtKtlEnvironment ktl;
  DtlObjPtr& first = ktl.env();
  DtlObjPtr& second = ktl.env();
  EXPECT_EQ(&first, &second);
  EXPECT_EQ(first->tag(), DtlFrameTag);
}

TEST_F(EnvironmentTest, DestructionFreesClosuresAndCyclesThroughTheRoot) {
  // Closures made in calls and kept in the root, and frames bound in their parent, hold the
  // root from below; the environment ends them all (LeakSanitizer checks that nothing stays).
  DtlObjPtr held = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  {
    DtKtlEnvironment ktl;
    ktl.setParameter("held", held);
    expr(ktl,
         "(define (adder n) (lambda (x) (+ n x)))"
         "(define add1 (adder 1))"
         "(define child (make-frame (the-frame)))"
         "(define (keep) held)"
         "(define kept (list add1 (keep)))");
    EXPECT_EQ(printed(expr(ktl, "(add1 2)")), "3");
    EXPECT_EQ(held->refcnt(), 3);
  }
  EXPECT_EQ(held->refcnt(), 1);
}

TEST_F(EnvironmentTest, SeveralEnvironmentsAreIndependent) {
  DtKtlEnvironment a;
  DtKtlEnvironment b;
  expr(a, "(define x 1)");
  EXPECT_TRUE(b.lookup("x").isNull());
  EXPECT_EQ(a.lookup("x")->fixnum(), 1);
}

TEST_F(EnvironmentTest, LoadsNeverLetAHaltOut) {
  DtKtlEnvironment ktl;
  DtlObjPtr result;
  auto output = captureOutput([&] { result = expr(ktl, "(car 1)"); });
  EXPECT_TRUE(result.isNull());
  EXPECT_NE(output.err.find("Caught exception loading LISP expression: "), std::string::npos);
  EXPECT_NE(output.err.find("car of non-cons"), std::string::npos);
}

TEST_F(EnvironmentTest, FileOrExpressionArguments) {
  DtKtlEnvironment ktl;
  int x = 1;
  ktl.registerVar("x", &x);
  char assignment[] = "x=5";
  EXPECT_FALSE(ktl.loadLispFileOrExpr(assignment, 1).isNull());
  EXPECT_EQ(x, 5);
  EXPECT_STREQ(assignment, "x 5");  // the argument is changed in place
  char expression[] = "(setqb x 6)";
  ktl.loadLispFileOrExpr(expression, 1);
  EXPECT_EQ(x, 6);
  std::string path = ktltest::writeTempFile("(setqb x 7)\n");
  std::vector<char> name(path.begin(), path.end());
  name.push_back('\0');
  ktl.loadLispFileOrExpr(name.data(), 1);
  EXPECT_EQ(x, 7);
  ktl.loadLispFile(name.data(), 1);
  EXPECT_EQ(x, 7);
}

TEST_F(EnvironmentTest, DirectoryListLoad) {
  DtKtlEnvironment ktl;
  std::string path = ktltest::writeTempFile("(define found 'yes)\n");
  DtFilename file(path.c_str());
  DtFilename dir = DtFilename::stripFilename(file);
  file.stripPath();
  DtlObjPtr dirs =
      DtcCons(DtlObjPtr("/nonexistent-dir"), DtcCons(DtlObjPtr(dir.c_str()), DtlObjPtr::nil()));
  std::vector<char> name(file.c_str(), file.c_str() + file.size() + 1);
  EXPECT_FALSE(ktl.loadLispFile(dirs, name.data(), 1).isNull());
  EXPECT_EQ(printed(ktl.lookup("found")), "yes");
}
