// Runs the ktl program as a process: loads of files, expressions and name=value arguments,
// the load paths, the read-eval-print loop, and the exit status.
#include <gtest/gtest.h>

#include <string>

#include "support/capture.h"
#include "support/process.h"

namespace {

const char kProgram[] = KTL_BINARY_DIR "/tools/ktl";

ktltest::Outcome runKtl(std::vector<std::string> const& args, std::string const& input = "") {
  return ktltest::runProgram(kProgram, args, input);
}

}  // namespace

TEST(KtlTool, LoadsFilesAndExpressionsInOrderIntoOneInterpreter) {
  std::string file = ktltest::writeTempFile("(define greeting \"hello\")\n(define n 41)\n");
  auto run = runKtl({file, "(format t \"~A ~A~%\" greeting (+ n 1))"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "\"hello\"42");  // the text between goes to DtInfo, shown from level 2
  EXPECT_EQ(run.err, "");
}

TEST(KtlTool, NameValueArgumentsSetBoundVariables) {
  auto run = runKtl({"DtNotifyLevel=2", "(format t \"level ~A~%\" DtNotifyLevel)"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "level 2\n");
}

TEST(KtlTool, UnboundNameValueOnlyWarns) {
  auto run = runKtl({"nosuch=5"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "Lisp Warning: can't set unbound variable: nosuch\n");
}

TEST(KtlTool, LoadPathsFindFilesAndLoads) {
  std::string inner = ktltest::writeTempFile("(define from-path 'yes)\n");
  std::string dir = inner.substr(0, inner.rfind('/'));
  std::string name = inner.substr(inner.rfind('/') + 1);
  std::string outer = ktltest::writeTempFile("(load \"" + name + "\")\n");
  auto run = runKtl({"-I", dir, outer, "DtNotifyLevel=2", "(format t \"~A~%\" from-path)"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "yes\n");
  run = runKtl({"-I" + dir, name, "(prin1 from-path)"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "yes");
}

TEST(KtlTool, AFailingArgumentIsReportedAndTheRestStillLoads) {
  auto run = runKtl({"(car 1)", "(prin1 'after)"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "after");
  EXPECT_NE(run.err.find("Caught exception loading LISP expression: "), std::string::npos);
  EXPECT_NE(run.err.find("car of non-cons"), std::string::npos);
  EXPECT_NE(run.err.find("ktl: (car 1) did not load\n"), std::string::npos);
}

TEST(KtlTool, MissingFileFails) {
  auto run = runKtl({"/nonexistent/config.ktl"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "Couldn't open /nonexistent/config.ktl\n"
            "ktl: /nonexistent/config.ktl did not load\n");
}

TEST(KtlTool, FileOfCommentsOnlyIsFine) {
  std::string file = ktltest::writeTempFile("; nothing but a comment\n");
  auto run = runKtl({file});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
}

TEST(KtlTool, ReadEvalPrintLoopPrintsEachValue) {
  auto run = runKtl({}, "(define x 2)\n(+ x 3)\n'(a \"b\")\nnil\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "x\n5\n(a \"b\")\nnil\n");
  EXPECT_EQ(run.err, "");
}

TEST(KtlTool, ReadEvalPrintLoopReportsAHaltAndCarriesOn) {
  auto run = runKtl({}, "(car 1)\n(+ 1 1)\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "2\n");
  EXPECT_EQ(run.err, "ktl: DtException: KTL Error: car of non-cons\n");
}

TEST(KtlTool, HelpReadsLikeAManualPage) {
  for (char const* option : {"-h", "--help"}) {
    auto run = runKtl({option});
    EXPECT_EQ(run.status, 0);
    for (char const* section :
         {"NAME\n", "SYNOPSIS\n", "DESCRIPTION\n", "OPTIONS\n", "EXIT STATUS\n", "EXAMPLES\n"}) {
      EXPECT_NE(run.out.find(section), std::string::npos) << section;
    }
  }
}

TEST(KtlTool, DashIWithoutADirectoryIsAUsageError) {
  auto run = runKtl({"-I"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "ktl: -I needs a directory\n");
}
