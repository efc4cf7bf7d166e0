// Runs the envconv program as a process: conversions both ways, printing, and its messages and
// exit status on bad input.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "support/capture.h"
#include "support/files.h"
#include "support/process.h"

using ktltest::fileText;

namespace {

const char kProgram[] = KTL_BINARY_DIR "/tools/envconv";

ktltest::Outcome runEnvconv(std::vector<std::string> const& args) {
  return ktltest::runProgram(kProgram, args);
}

const char kKtl[] = "(config (speed \"3\") (car vehicle (\"fast\") (seats \"4\")))";

}  // namespace

TEST(EnvconvTool, KtlToXml) {
  const std::string in = ktltest::writeTempFile(kKtl, ".ktl");
  const std::string out = ktltest::writeTempFile("", ".xml");
  auto run = runEnvconv({in, out});
  EXPECT_EQ(0, run.status) << run.err;
  EXPECT_EQ("", run.err);
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
      "<config speed=\"3\">\n"
      "  <vehicle name=\"car\" seats=\"4\">fast</vehicle>\n"
      "</config>\n",
      fileText(out));
}

TEST(EnvconvTool, XmlToKtlAndBack) {
  const std::string xml = ktltest::writeTempFile(
      "<?xml version=\"1.0\"?>\n<config speed=\"3\"><vehicle name=\"car\" "
      "seats=\"4\">fast</vehicle><!-- dropped in KTL --></config>\n",
      ".XML");
  const std::string ktl = ktltest::writeTempFile("", ".ktl");
  auto run = runEnvconv({xml, ktl});
  EXPECT_EQ(0, run.status) << run.err;
  EXPECT_EQ(
      "\n(config \n   (speed \"3\")\n   (car vehicle( \"fast\" )\n      (seats \"4\")\n   )\n;"
      " dropped in KTL \n)",
      fileText(ktl));
  // Back in XML the comment is gone, the rest is the same tree.
  const std::string again = ktltest::writeTempFile("", ".xml");
  run = runEnvconv({"--indent", "", ktl, again});
  EXPECT_EQ(0, run.status) << run.err;
  auto before = runEnvconv({"print", xml});
  auto after = runEnvconv({"print", again});
  EXPECT_EQ(0, after.status);
  EXPECT_EQ(
      "  class config config Value= \n"
      "     speed Value= 3\n"
      "     class vehicle car Value= fast\n"
      "        seats Value= 4\n",
      after.out);
  EXPECT_EQ(before.out.substr(0, after.out.size()), after.out);
  EXPECT_EQ("// comment Value=  dropped in KTL \n", before.out.substr(after.out.size()));
}

TEST(EnvconvTool, PrintShowsTheTree) {
  const std::string in = ktltest::writeTempFile(kKtl, ".ktl");
  auto run = runEnvconv({"print", in});
  EXPECT_EQ(0, run.status);
  EXPECT_EQ(
      "  class config config Value= \n"
      "     speed Value= 3\n"
      "     class vehicle car Value= fast\n"
      "        seats Value= 4\n",
      run.out);
}

TEST(EnvconvTool, WritesADoctypeOnRequest) {
  const std::string in = ktltest::writeTempFile("(config (a \"1\"))", ".ktl");
  const std::string out = ktltest::writeTempFile("", ".xml");
  auto run = runEnvconv({"--dtd", "config.dtd", in, out});
  EXPECT_EQ(0, run.status) << run.err;
  EXPECT_NE(std::string::npos, fileText(out).find("<!DOCTYPE config SYSTEM \"config.dtd\">"));
}

TEST(EnvconvTool, UnknownExtensionsAndMissingArguments) {
  auto run = runEnvconv({"config.txt", "out.xml"});
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("envconv: 'config.txt' is neither .xml nor .ktl\n", run.err);
  const std::string in = ktltest::writeTempFile(kKtl, ".ktl");
  run = runEnvconv({in, "out.json"});
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("envconv: 'out.json' is neither .xml nor .ktl\n", run.err);
  run = runEnvconv({in});
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("envconv: no output file given\n", run.err);
  run = runEnvconv({"print"});
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("envconv: print needs a file\n", run.err);
  run = runEnvconv({});
  EXPECT_EQ(2, run.status);
  EXPECT_NE(std::string::npos, run.err.find("see envconv --help"));
}

TEST(EnvconvTool, FilesThatCantBeReadOrWritten) {
  auto run = runEnvconv({"/nonexistent/config.ktl", "out.xml"});
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("envconv: cannot read '/nonexistent/config.ktl'\n", run.err);
  run = runEnvconv({"/nonexistent/config.xml", "out.ktl"});
  EXPECT_EQ(1, run.status);
  EXPECT_EQ(
      "envconv: '/nonexistent/config.xml': DtInvalidInput: Unable to open:"
      "/nonexistent/config.xml\n",
      run.err);
  const std::string in = ktltest::writeTempFile(kKtl, ".ktl");
  run = runEnvconv({in, "/nonexistent/dir/out.ktl"});
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("envconv: cannot write '/nonexistent/dir/out.ktl'\n", run.err);
}

TEST(EnvconvTool, BadContentIsAMessageNotACrash) {
  const std::string xml = ktltest::writeTempFile("<a><b", ".xml");
  auto run = runEnvconv({"print", xml});
  EXPECT_EQ(1, run.status);
  EXPECT_EQ(0u, run.err.find("envconv: '" + xml + "': DtCorruptedState: Error reading: "));
  const std::string ktl = ktltest::writeTempFile("(config (a b c))", ".ktl");
  run = runEnvconv({"print", ktl});
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("envconv: '" + ktl + "': " + ktltest::haltMessage("car of non-cons") + "\n", run.err);
  const std::string odd = ktltest::writeTempFile("(config (1 2))", ".ktl");
  run = runEnvconv({"print", odd});
  EXPECT_EQ(0, run.status);
  EXPECT_EQ("DtReaderWriter: error in data stream\n1", run.err);
}
