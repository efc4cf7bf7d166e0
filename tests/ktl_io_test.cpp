// Output primitives: prin1, terpri, format and describe, and where each writes.
#include <gtest/gtest.h>

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

class IoTest : public ktltest::LanguageTest {
 protected:
  void SetUp() override {
    LanguageTest::SetUp();
    DtNotifyLevel = 2;  // DtInfo visible
  }
  void TearDown() override {
    result = DtlObjPtr();  // may hold a closure over the root, which must go first
    LanguageTest::TearDown();
  }

  ktltest::Captured run(std::string const& text) {
    return captureOutput([&] { result = eval(text); });
  }

  DtlObjPtr result;
};

std::string hex(void const* address) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%lx", reinterpret_cast<unsigned long>(address));
  return buffer;
}

}  // namespace

TEST_F(IoTest, Prin1WritesStandardOutputWithoutNewline) {
  auto output = run("(prin1 \"a\")");
  EXPECT_EQ(output.out, "\"a\"");
  EXPECT_STREQ(result->string(), "a");
  output = run("(prin1 '(1 2.5 x))");
  EXPECT_EQ(output.out, "(1 2.500000 x)");
  EXPECT_EQ(error("(prin1 1 2)"), haltMessage("Wrong number of arguments to prin1"));
  EXPECT_EQ(error("(prin1)"), haltMessage("Wrong number of arguments to prin1"));
}

TEST_F(IoTest, TerpriWritesANewlineOnInfo) {
  auto output = run("(terpri)");
  EXPECT_EQ(output.out, "\n");
  EXPECT_EQ(result, DtlObjPtr::nil());
  DtNotifyLevel = 1;
  output = run("(terpri)");
  EXPECT_EQ(output.out, "");  // DtInfo is filtered at level 1, prin1 is not
  output = run("(prin1 1)");
  EXPECT_EQ(output.out, "1");
  EXPECT_EQ(error("(terpri 1)"), haltMessage("No arguments to terpri"));
}

TEST_F(IoTest, FormatWritesTextAndNewlines) {
  auto output = run("(format t \"a~%\")");
  EXPECT_EQ(output.out, "a\n");
  EXPECT_EQ(result, DtlObjPtr::nil());
}

TEST_F(IoTest, FormatArgumentsGoToStandardOutputInTheirPrintedForm) {
  auto output = run("(format t \"~A\" \"x\")");
  EXPECT_EQ(output.out, "\"x\"");
  output = run("(format t \"n=~A, l=~A.~%\" 1 '(a b))");
  EXPECT_EQ(output.out, "n=1, l=(a b).\n");
  DtNotifyLevel = 1;
  output = run("(format t \"n=~A~%\" 1)");
  EXPECT_EQ(output.out, "1");  // only the argument: the text goes to DtInfo
}

TEST_F(IoTest, FormatIgnoresExtraArguments) {
  auto output = run("(format t \"x\" 1 2)");
  EXPECT_EQ(output.out, "x");
}

TEST_F(IoTest, FormatErrors) {
  EXPECT_EQ(error("(format t \"~A\")"), haltMessage("Out of arguments"));
  EXPECT_EQ(error("(format t \"~a\" 1)"), haltMessage("Unknown directive to format"));
  EXPECT_EQ(error("(format t \"x~\")"), haltMessage("Unknown directive to format"));
  EXPECT_EQ(error("(format nil \"x\")"),
            haltMessage("Sorry, output to string not implemented yet"));
  EXPECT_EQ(error("(format 1 \"x\")"), haltMessage("Sorry, output to streams not implemented yet"));
  EXPECT_EQ(error("(format 'stream \"x\")"),
            haltMessage("Sorry, output to streams not implemented yet"));
  EXPECT_EQ(error("(format t 1)"), haltMessage("Format must be a string"));
  EXPECT_EQ(error("(format t)"), haltMessage("Wrong number of args to format"));
}

TEST_F(IoTest, FormatAcceptsAnySymbolNamedT) {
  DtcSet(DtcIntern("other", root), DtcMakeSymbol("t"), root);
  auto output = run("(format other \"ok\")");
  EXPECT_EQ(output.out, "ok");
}

TEST_F(IoTest, DescribeNamesTheKind) {
  EXPECT_EQ(run("(describe nil)").out, "nil isNIL\n");
  EXPECT_EQ(run("(describe 'x)").out, "x is the symbol with name \"x\"\n");
  EXPECT_EQ(run("(describe 1)").out, "1 is a fixed-point number\n");
  EXPECT_EQ(run("(describe 1.5)").out, "1.500000 is a floating-point number\n");
  EXPECT_EQ(run("(describe '(1))").out, "(1) is a cons cell\n");
  EXPECT_EQ(run("(describe \"s\")").out, "\"s\" is a string\n");
  EXPECT_EQ(run("(describe car)").out, "#<primitive-function car> is a compiled C-function\n");
  DtlObjPtr quote = DtcSymeval(DtcIntern("quote", root), root);
  EXPECT_EQ(run("(describe quote)").out,
            "#<special-form " + hex(quote.get()) + "> is a special form\n");
  DtcSet(DtcIntern("here", root), DtcPtrToNode(DtlLocativeTag, nullptr), root);
  EXPECT_EQ(run("(describe here)").out, "0 is a locative\n");
  EXPECT_EQ(printed(result), "0");
}

TEST_F(IoTest, DescribeOfAProcedureShowsItsParts) {
  DtlObjPtr procedure = eval("(define (f a) a)");
  procedure = eval("f");
  std::string id = hex(procedure.get());
  std::string frame = hex(root.get());
  EXPECT_EQ(run("(describe f)").out, "#<procedure " + id +
                                         "> is a lisp procedure\nwith params: (a)\nbody: (a)\n"
                                         "and enclosing environment: #<environment-frame " +
                                         frame + ">\n");
}

TEST_F(IoTest, DescribeOfAFrameShowsItsParent) {
  eval("(define child (make-frame (the-frame)))");
  DtlObjPtr child = eval("child");
  EXPECT_EQ(run("(describe child)").out,
            "#<environment-frame " + hex(child.get()) +
                "> is an environment frame with parent frame #<environment-frame " +
                hex(root.get()) + ">\n");
}

TEST_F(IoTest, DescribeOfARootFrameDoesNotCrash) {
  auto output = run("(describe (the-frame))");
  EXPECT_EQ(output.out, "#<environment-frame " + hex(root.get()) +
                            "> is an environment frame with parent frame (none)\n");
}

TEST_F(IoTest, DescribeOfAnUnknownTag) {
  DtlObjPtr odd(7);
  odd->setTag(static_cast<DtlTagType>(12));
  std::string text;
  auto output = captureOutput([&] {
    // The printer halts on the tag before describe gets to its words.
    text = initialMessage([&] { DtlDescribe(DtcCons(odd, DtlObjPtr::nil()), root); });
  });
  odd->setTag(DtlFixnumTag);
  EXPECT_EQ(text, haltMessage("unknown tag in DtlObj::DtcObjFprint"));
  EXPECT_EQ(error("(describe)"), haltMessage("Wrong number of args to describe"));
}

TEST_F(IoTest, CaughtHaltMessageCarriesBothPrefixes) {
  try {
    eval("(format t 1)");
    FAIL() << "no halt";
  } catch (DtException const& e) {
    EXPECT_STREQ(e.initialException()->message(),
                 "DtException: KTL Error: Format must be a string");
  }
}
