// Runs the ktlprint program as a process and checks what it writes and how it exits.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/process.h"

namespace {

const char kProgram[] = KTL_BINARY_DIR "/tools/ktlprint";
const char kHello[] = KTL_SOURCE_DIR "/examples/hello.ktl";

using ktltest::Outcome;

// Runs ktlprint with these arguments and this standard input.
Outcome runKtlprint(const std::vector<std::string>& args, const std::string& input = "") {
  return ktltest::runProgram(kProgram, args, input);
}

const char kHelloForms[] =
    "(federation \"HelloWorld\")\n"
    "(federate (name \"hello-1\") (type \"Greeter\") (handle 42) (flags 31) (mode 493) "
    "(tick-rate 60.000000) (lookahead 0.001000) (offset -0.250000))\n"
    "(object-model (module \"HelloWorld.xml\") (classes (Country (attributes Name Population)) "
    "(Greeting (parameters Text Language))))\n"
    "(default-language (quote english))\n"
    "(publish (quote (Country Greeting)))\n"
    "(limits (max-federates 16) (timeout-ms 2500) (tags nil))\n";

TEST(KtlprintTool, PrintsEveryFormOfAFile) {
  Outcome run = runKtlprint({kHello});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, kHelloForms);
  EXPECT_EQ(run.err, "");
}

TEST(KtlprintTool, ReadsAnArgumentThatStartsWithAParenthesisAsAnExpression) {
  Outcome run = runKtlprint({"  (a (b 0x10) \"two words\" 1.5) 'c"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "(a (b 16) \"two words\" 1.500000)\n(quote c)\n");
  EXPECT_EQ(run.err, "");
}

TEST(KtlprintTool, ReadsTheTextAfterDashEAsAnExpression) {
  Outcome run = runKtlprint({"-e", "'x", "-e", "42 -5 sym"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "(quote x)\n42\n-5\nsym\n");
  EXPECT_EQ(run.err, "");
}

TEST(KtlprintTool, ReadsTheSourcesInOrder) {
  Outcome run = runKtlprint({"(first)", kHello, "-e", "last"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, std::string("(first)\n") + kHelloForms + "last\n");
}

TEST(KtlprintTool, ReadsStandardInputWithoutArguments) {
  Outcome run = runKtlprint({}, "; a comment\n(x y)\n  z \"s;t\"\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "(x y)\nz\n\"s;t\"\n");
  EXPECT_EQ(run.err, "");
}

TEST(KtlprintTool, ReadsStandardInputForADash) {
  Outcome run = runKtlprint({"(a)", "-", "(c)"}, "b\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "(a)\nb\n(c)\n");
}

TEST(KtlprintTool, EmptyInputPrintsNothing) {
  Outcome run = runKtlprint({}, "  ; only a comment\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "");
}

TEST(KtlprintTool, ASyntaxErrorIsReportedAndStopsTheRun) {
  Outcome run = runKtlprint({"(ok)", "(a (b", "(never)"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "(ok)\n");
  EXPECT_EQ(run.err.rfind("ktlprint: ", 0), 0u) << run.err;
  EXPECT_NE(run.err.find("Missing \")\""), std::string::npos) << run.err;
  EXPECT_EQ(run.err.back(), '\n');
}

TEST(KtlprintTool, AnUnexpectedClosingParenthesisIsReported) {
  Outcome run = runKtlprint({"-e", ")"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("Unexpected \")\" at line 1"), std::string::npos) << run.err;
}

TEST(KtlprintTool, ASyntaxErrorOnStandardInputIsReported) {
  Outcome run = runKtlprint({}, "(a \"unterminated");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.rfind("ktlprint: ", 0), 0u) << run.err;
  EXPECT_NE(run.err.find("EOF while reading string"), std::string::npos) << run.err;
}

TEST(KtlprintTool, AMissingFileIsReportedAndStopsTheRun) {
  Outcome run = runKtlprint({"(before)", "/nonexistent/dir/x.ktl", "(after)"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "(before)\n");
  EXPECT_EQ(run.err, "ktlprint: cannot open /nonexistent/dir/x.ktl\n");
}

TEST(KtlprintTool, ADirectoryCannotBeOpened) {
  Outcome run = runKtlprint({KTL_SOURCE_DIR "/examples"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "ktlprint: cannot open " KTL_SOURCE_DIR "/examples\n");
}

TEST(KtlprintTool, DashEWithoutAnExpressionIsAUsageError) {
  Outcome run = runKtlprint({"-e"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "ktlprint: -e needs an expression (see ktlprint --help)\n");
}

TEST(KtlprintTool, HelpDescribesTheProgramLikeAManualPage) {
  for (const char* option : {"-h", "--help"}) {
    Outcome run = runKtlprint({option});
    EXPECT_EQ(run.status, 0) << option;
    EXPECT_EQ(run.err, "") << option;
    EXPECT_EQ(run.out.rfind("NAME\n    ktlprint - ", 0), 0u) << run.out;
    size_t last = 0;
    for (const char* section :
         {"\nSYNOPSIS\n", "\nDESCRIPTION\n", "\nOPTIONS\n", "\nEXIT STATUS\n", "\nEXAMPLES\n"}) {
      size_t at = run.out.find(section);
      EXPECT_NE(at, std::string::npos) << section;
      EXPECT_GT(at, last) << section << " is out of order";
      last = at;
    }
    EXPECT_NE(run.out.find("-e EXPRESSION"), std::string::npos);
    EXPECT_NE(run.out.find("ktlprint examples/hello.ktl"), std::string::npos);
  }
}

TEST(KtlprintTool, HelpWinsOverTheSources) {
  Outcome run = runKtlprint({"(a)", "--help", "/nonexistent"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out.rfind("NAME\n", 0), 0u);
  EXPECT_EQ(run.err, "");
}

}  // namespace
