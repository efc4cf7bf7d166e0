// Runs the settingsdemo program as a process: its defaults, its command line, saving with the
// schema (and xmllint's verdict), loading back in both forms, and its failures.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "support/files.h"
#include "support/process.h"

using ktltest::fileText;
using ktltest::TempDir;

namespace {

const std::string theProgram = KTL_BINARY_DIR "/tools/settingsdemo";
const std::string theEnvconv = KTL_BINARY_DIR "/tools/envconv";
const char theXmllint[] = "/usr/bin/xmllint";

ktltest::Outcome run(std::vector<std::string> const& args) {
  return ktltest::runProgram(theProgram, args);
}

// Runs a command line in dir through the shell.
ktltest::Outcome shell(const TempDir& dir, const std::string& command) {
  return ktltest::runProgram("/bin/sh", {"-c", "cd '" + dir.path() + "' && " + command});
}

const char theDefaults[] =
    "vessel/callSign            DtString     PH-7\n"
    "vessel/crew                int          12\n"
    "vessel/speed               double       12.5\n"
    "vessel/draught             float        6.25\n"
    "vessel/position            DtVector     4.5 51.9 0\n"
    "vessel/port                std::string  Rotterdam\n"
    "vessel/attitude            DtTaitBryan  90 0 0\n"
    "vessel/engine/running      bool         false\n"
    "vessel/engine/temperature  double       80\n"
    "vessel/engine/rpm          unsigned int 900\n";

// The values after "-c NL-1 -n 3 -s 7 -d 4.5 -p 1,2,3 -r -t 95.5".
const char theChanged[] =
    "vessel/callSign            DtString     NL-1\n"
    "vessel/crew                int          3\n"
    "vessel/speed               double       7\n"
    "vessel/draught             float        4.5\n"
    "vessel/position            DtVector     1 2 3\n"
    "vessel/port                std::string  Rotterdam\n"
    "vessel/attitude            DtTaitBryan  90 0 0\n"
    "vessel/engine/running      bool         true\n"
    "vessel/engine/temperature  double       95.5\n"
    "vessel/engine/rpm          unsigned int 900\n";

const char theChanges[] = "-c NL-1 -n 3 -s 7 -d 4.5 -p 1,2,3 -r -t 95.5";

}  // namespace

TEST(SettingsdemoTool, PrintsTheDefaults) {
  auto result = run({});
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(theDefaults, result.out);
  EXPECT_EQ("", result.err);
}

TEST(SettingsdemoTool, CommandLineSetsEveryType) {
  auto result = run({"--port", "Hamburg", "--attitude", "180, 2, -1", "--rpm", "1200", "-c", "NL-1",
                     "-n", "3", "-s", "7", "-d", "4.5", "-p", "1,2,3", "-r", "-t", "95.5"});
  EXPECT_EQ(0, result.status) << result.err;
  std::string expected = theChanged;
  expected.replace(expected.find("Rotterdam"), 9, "Hamburg");
  expected.replace(expected.find("90 0 0"), 6, "180 2 -1");
  expected.replace(expected.find("900"), 3, "1200");
  EXPECT_EQ(expected, result.out);
}

TEST(SettingsdemoTool, HelpListsEverySetting) {
  auto result = run({"--help"});
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  for (const char* line : {"   -c <string>,  --callSign <string>\n     Radio call sign\n",
                           "   -R <unsigned int>,  --rpm <unsigned int>\n",
                           "   -r,  --running\n     Start with the engine running\n",
                           "   --schema <string>\n", "   -v,  --version\n", "   -h,  --help\n"}) {
    EXPECT_NE(std::string::npos, result.out.find(line)) << line;
  }
  // The message of the help is the application's name.
  const std::string tail = "\n   settingsdemo\n\n";
  ASSERT_GT(result.out.size(), tail.size());
  EXPECT_EQ(tail, result.out.substr(result.out.size() - tail.size()));
}

TEST(SettingsdemoTool, Version) {
  for (const char* version : {"--version", "-v"}) {
    auto result = run({version});
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("\n" + theProgram + "  version: 1.0\n\n", result.out);
  }
}

TEST(SettingsdemoTool, WrongCommandLineEndsWithOne) {
  auto result = run({"--crew", "many"});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(0u, result.err.find("PARSE ERROR: Argument: -n (--crew)\n"
                                "             Couldn't read argument value from string 'many'\n"))
      << result.err;
  EXPECT_NE(std::string::npos, result.err.find("   " + theProgram + " --help\n"));
  EXPECT_EQ("", result.out);
}

TEST(SettingsdemoTool, SavesAConfigurationThatValidatesAgainstItsSchema) {
  TempDir dir;
  auto saved = shell(dir, "'" + theProgram + "' --save demo.xml " + theChanges);
  EXPECT_EQ(0, saved.status) << saved.err;
  EXPECT_EQ(theChanged, saved.out);
  std::string xml = fileText(dir.file("demo.xml"));
  EXPECT_NE(std::string::npos, xml.find("xsi:noNamespaceSchemaLocation=\"settingsdemo.xsd\""));
  EXPECT_NE(std::string::npos, xml.find("      <vessel>\n         <!--Radio call sign-->\n"
                                        "         <callSign value=\"NL-1\"/>\n"));
  // Settings on the command line only stay out of the file.
  EXPECT_EQ(std::string::npos, xml.find("port"));
  EXPECT_EQ(std::string::npos, xml.find("rpm"));
  EXPECT_EQ(std::string::npos, xml.find("attitude"));
  EXPECT_NE("<missing>", fileText(dir.file("settingsdemo.xsd")));
  if (access(theXmllint, X_OK) != 0) GTEST_SKIP() << "no xmllint (Debian package libxml2-utils)";
  auto valid = shell(dir, "xmllint --noout --schema settingsdemo.xsd demo.xml");
  EXPECT_EQ(0, valid.status) << valid.err;
  EXPECT_EQ("demo.xml validates\n", valid.err);
}

TEST(SettingsdemoTool, LoadsTheSavedFileInBothForms) {
  TempDir dir;
  ASSERT_EQ(0, shell(dir, "'" + theProgram + "' --save demo.xml " + theChanges).status);
  auto xml = shell(dir, "'" + theProgram + "' --load demo.xml");
  EXPECT_EQ(0, xml.status) << xml.err;
  EXPECT_EQ(theChanged, xml.out);
  auto converted = shell(dir, "'" + theEnvconv + "' demo.xml demo.ktl");
  ASSERT_EQ(0, converted.status) << converted.err;
  auto ktl = shell(dir, "'" + theProgram + "' --load demo.ktl");
  EXPECT_EQ(0, ktl.status) << ktl.err;
  EXPECT_EQ(theChanged, ktl.out);
}

TEST(SettingsdemoTool, CommandLineKeepsItsValueAgainstTheLoadedFile) {
  TempDir dir;
  ASSERT_EQ(0, shell(dir, "'" + theProgram + "' --save demo.xml " + theChanges).status);
  auto result = shell(dir, "'" + theProgram + "' --load demo.xml --crew 20");
  EXPECT_EQ(0, result.status) << result.err;
  std::string expected = theChanged;
  expected.replace(expected.find("int          3"), 14, "int          20");
  EXPECT_EQ(expected, result.out);
}

TEST(SettingsdemoTool, FileThatCannotBeLoadedEndsWithTwo) {
  TempDir dir;
  auto missing = run({"--load", dir.file("none.xml")});
  EXPECT_EQ(2, missing.status);
  EXPECT_EQ("settingsdemo: " + dir.file("none.xml") +
                ": cannot load (a missing file, or not .xml or .ktl)\n",
            missing.err);
  EXPECT_EQ("", missing.out);
  std::string other = dir.write("demo.txt", "<settingsdemo/>");
  EXPECT_EQ(2, run({"--load", other}).status);
  std::string noGroup = dir.write("empty.xml", "<settingsdemo><other/></settingsdemo>");
  auto broken = run({"--load", noGroup});
  EXPECT_EQ(2, broken.status);
  EXPECT_EQ(
      "settingsdemo: " + noGroup + ": DtCorruptedState: Unable to find group:harbour:harbour\n",
      broken.err);
}

TEST(SettingsdemoTool, FileThatCannotBeSavedEndsWithTwo) {
  TempDir dir;
  auto result = run({"--save", dir.file("no/such/dir/demo.xml"), "--schema", dir.file("demo.xsd")});
  EXPECT_EQ(2, result.status);
  EXPECT_EQ("testXmlwriterDoc: Error at xmlSaveFormatFileEnc\nsettingsdemo: " +
                dir.file("no/such/dir/demo.xml") + ": cannot save\n",
            result.err);
}
