// The command line of the settings (DtCmdLine over TCLAP, and parseCommandLine): help, version
// and each parse error end the process, so each runs in a child process of its own, with its
// exit status and the text on each stream checked, and with a key fed to it where it pauses.
#include <gtest/gtest.h>
#include <ktl/applicationSettings.h>
#include <ktl/cmdLine.h>
#include <ktl/configVariable.h>
#include <support/capture.h>
#include <support/child_process.h>
#include <util/notify.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace KORRti;
using ktltest::Argv;
using ktltest::ChildProcess;
using ktltest::kBodyReturned;

namespace {

// An application "tester" 3.1 with a switch and a value.
class Tester : public DtApplicationSettings {
 public:
  explicit Tester(bool rateRequired = false)
      : DtApplicationSettings("tester", "3.1", "top"),
        verbose(this, "verbose", false, "Talk more", DtAllScopes, false, "V"),
        rate(this, "rate", 1, "Packets per second", DtAllScopes, rateRequired, "r") {}
  DtConfigVariable<bool> verbose;
  DtConfigVariable<double> rate;
};

// Reports DtNotifyLevel as the process ends, after everything else it printed.
void reportLevelAtExit() {
  std::atexit([] { std::printf("DtNotifyLevel at exit: %d\n", DtNotifyLevel); });
}

// Parses args with a Tester in a child, with DtNotifyLevel at 0 so that only the forced levels
// of the command-line output print.
std::unique_ptr<ChildProcess> parseInChild(std::initializer_list<std::string> args, bool pause,
                                           bool rateRequired = false) {
  std::vector<std::string> words(args);
  return std::make_unique<ChildProcess>([words, pause, rateRequired]() mutable {
    DtNotifyLevel = 0;
    reportLevelAtExit();
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(&word[0]);
    argv.push_back(nullptr);
    Tester tester(rateRequired);
    tester.parseCommandLine(static_cast<int>(words.size()), argv.data(), pause);
    std::printf("parsed: rate %g\n", tester.rate.value());
  });
}

// Runs parseInChild to its end.
struct Ended {
  int status;
  std::string out;
  std::string err;
};
Ended parseToEnd(std::initializer_list<std::string> args, bool rateRequired = false) {
  std::unique_ptr<ChildProcess> child = parseInChild(args, false, rateRequired);
  int status = child->wait();
  return {status, child->out(), child->err()};
}

// Waits until the child's standard output holds text, for at most 10 seconds.
bool waitForOutput(ChildProcess& child, const std::string& text) {
  for (int i = 0; i < 1000; ++i) {
    if (child.out().find(text) != std::string::npos) return true;
    if (!child.running()) return child.out().find(text) != std::string::npos;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

const char theUsage[] =
    "\n"
    "USAGE: \n"
    "\n"
    "   prog  [-r <double>] [-V] [--] [-v] [-h]\n"
    "\n"
    "\n"
    "Where: \n"
    "\n"
    "   -r <double>,  --rate <double>\n"
    "     Packets per second\n"
    "\n"
    "   -V,  --verbose\n"
    "     Talk more\n"
    "\n"
    "   --,  --ignore_rest\n"
    "     Ignores the rest of the labeled arguments following this flag.\n"
    "\n"
    "   -v,  --version\n"
    "     Displays version information and exits.\n"
    "\n"
    "   -h,  --help\n"
    "     Displays usage information and exits.\n"
    "\n"
    "\n"
    "   tester\n"
    "\n";

const char theVersion[] = "\nprog  version: 3.1\n\n";

// What a failure writes after its error lines.
const char theBriefUsage[] =
    "Brief USAGE: \n"
    "   prog  [-r <double>] [-V] [--] [-v] [-h]\n"
    "\n"
    "For complete USAGE and HELP type: \n"
    "   prog --help\n"
    "\n";

const char theLevelLine[] = "DtNotifyLevel at exit: 0\n";

}  // namespace

TEST(SettingsCommandLine, HelpPrintsTheUsageAndExitsWithZeroAtOnce) {
  for (const char* help : {"--help", "-h"}) {
    Ended run = parseToEnd({"prog", help});
    EXPECT_EQ(0, run.status) << help;
    // No prompt, and DtNotifyLevel back at its old value when the process ends.
    EXPECT_EQ(std::string(theUsage) + theLevelLine, run.out) << help;
    EXPECT_EQ("", run.err) << help;
  }
}

TEST(SettingsCommandLine, VersionHasALongAndAShortFormAndExitsWithZero) {
  for (const char* version : {"--version", "-v"}) {
    Ended run = parseToEnd({"prog", version});
    EXPECT_EQ(0, run.status) << version;
    EXPECT_EQ(std::string(theVersion) + theLevelLine, run.out) << version;
    EXPECT_EQ("", run.err) << version;
  }
}

TEST(SettingsCommandLine, UnknownArgumentEndsWithOne) {
  Ended run = parseToEnd({"prog", "--bogus"});
  EXPECT_EQ(1, run.status);
  EXPECT_EQ(std::string("PARSE ERROR: Argument: --bogus\n"
                        "             Couldn't find match for argument\n"
                        "\n") +
                theBriefUsage,
            run.err);
  EXPECT_EQ(theLevelLine, run.out);
}

TEST(SettingsCommandLine, MissingRequiredArgumentsAreOneLine) {
  Ended run = parseToEnd({"prog", "-V"}, true);
  EXPECT_EQ(1, run.status);
  EXPECT_EQ(std::string("PARSE ERROR:  \n"
                        "             One or more required arguments missing!\n"
                        "\n") +
                "Brief USAGE: \n"
                "   prog  -r <double> [-V] [--] [-v] [-h]\n"
                "\n"
                "For complete USAGE and HELP type: \n"
                "   prog --help\n"
                "\n",
            run.err);
  EXPECT_EQ(theLevelLine, run.out);
}

TEST(SettingsCommandLine, BadValueEndsWithOne) {
  Ended run = parseToEnd({"prog", "--rate", "fast"});
  EXPECT_EQ(1, run.status);
  EXPECT_EQ(0u, run.err.find("PARSE ERROR: Argument: -r (--rate)\n"
                             "             Couldn't read argument value from string 'fast'\n"))
      << run.err;
}

TEST(SettingsCommandLine, RightCommandLineReturns) {
  Ended run = parseToEnd({"prog", "-r", "4.5", "-V"});
  EXPECT_EQ(kBodyReturned, run.status);
  EXPECT_EQ(std::string("parsed: rate 4.5\n") + theLevelLine, run.out);
  EXPECT_EQ("", run.err);
}

TEST(SettingsCommandLine, IgnoreRestLeavesTheRestAlone) {
  Ended run = parseToEnd({"prog", "-r", "2", "--", "--bogus", "-r", "3"});
  EXPECT_EQ(kBodyReturned, run.status) << run.err;
  EXPECT_EQ(std::string("parsed: rate 2\n") + theLevelLine, run.out);
}

TEST(SettingsCommandLine, TooManyArgumentsEndsWithOne) {
  // A required argument that the command line did not count as one when it was added.
  Argv argv({"prog", "-x", "1"});
  ChildProcess child([&argv] {
    DtCmdLine::CmdLine cmd("counting", ' ', "1", false);
    DtCmdLine::ValueArg<int> extra("x", "extra", "An extra", false, 0, "int");
    cmd.add(extra);
    extra.forceRequired();
    cmd.parse(argv.argc(), argv.argv(), true);
  });
  EXPECT_EQ(1, child.wait());
  EXPECT_EQ(0u, child.err().find("PARSE ERROR:  \n"
                                 "             Too many arguments!\n"
                                 "\n"
                                 "Brief USAGE: \n"))
      << child.err();
  EXPECT_EQ("", child.out());
}

TEST(SettingsCommandLine, HelpWithPauseWaitsForAKey) {
  std::unique_ptr<ChildProcess> child = parseInChild({"prog", "--help"}, true);
  ASSERT_TRUE(waitForOutput(*child, "Press any key to continue\n")) << child->out();
  // It keeps polling while no key comes.
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  EXPECT_TRUE(child->running());
  double asked = child->seconds();
  child->give("x");
  EXPECT_EQ(0, child->wait());
  // A poll every 0.1 seconds sees the key at once; the margin is for the end of the process.
  EXPECT_LT(child->seconds() - asked, 3.0);
  EXPECT_EQ(std::string(theUsage) + "Press any key to continue\n" + theLevelLine, child->out());
  EXPECT_EQ("", child->err());
}

TEST(SettingsCommandLine, VersionWithPauseTakesAKeyWaitingAlready) {
  std::unique_ptr<ChildProcess> child = parseInChild({"prog", "-v"}, true);
  child->give("\n");
  EXPECT_EQ(0, child->wait());
  EXPECT_EQ(std::string(theVersion) + "Press any key to continue\n" + theLevelLine, child->out());
}

TEST(SettingsCommandLine, FailureWithPauseWaitsThenEndsWithOne) {
  std::unique_ptr<ChildProcess> child = parseInChild({"prog", "--bogus"}, true);
  ASSERT_TRUE(waitForOutput(*child, "Press any key to continue\n")) << child->out();
  EXPECT_TRUE(child->running());
  child->give("q");
  EXPECT_EQ(1, child->wait());
  // The failure goes to standard error, the prompt to standard output.
  EXPECT_EQ(std::string("PARSE ERROR: Argument: --bogus\n"
                        "             Couldn't find match for argument\n"
                        "\n") +
                theBriefUsage,
            child->err());
  EXPECT_EQ(std::string("Press any key to continue\n") + theLevelLine, child->out());
}

TEST(SettingsCommandLine, TclapsOwnParseEntriesEndTheProcessTheSameWay) {
  ChildProcess child([] {
    DtCmdLine::CmdLine cmd("entries", ' ', "1", false);
    DtCmdLine::ValueArg<int> needed("n", "needed", "Needed", true, 0, "int");
    cmd.add(needed);
    const char* argv[] = {"prog"};
    cmd.parse(1, argv);
  });
  EXPECT_EQ(1, child.wait());
  EXPECT_EQ(0u, child.err().find("PARSE ERROR:  \n"
                                 "             One or more required arguments missing!\n"))
      << child.err();
  ChildProcess vector([] {
    DtCmdLine::CmdLine cmd("entries", ' ', "1", false);
    std::vector<std::string> args = {"prog", "--nothing"};
    cmd.parse(args);
  });
  EXPECT_EQ(1, vector.wait());
  EXPECT_EQ(0u, vector.err().find("PARSE ERROR: Argument: --nothing\n")) << vector.err();
}

TEST(SettingsCommandLine, WithoutExitOnFailureTheErrorIsThrownWithoutAnArgumentId) {
  DtCmdLine::CmdLine cmd("thrown", ' ', "1", false);
  DtCmdLine::ValueArg<int> count("c", "count", "Count", true, 0, "int");
  cmd.add(count);
  Argv unknown({"prog", "-c", "1", "--bogus"});
  Argv missing({"prog"});
  auto output = ktltest::captureOutput([&] {
    try {
      cmd.parse(unknown.argc(), unknown.argv(), false);
      ADD_FAILURE() << "no exception";
    } catch (const DtCmdLine::CmdLineParseException& e) {
      EXPECT_EQ("Couldn't find match for argument", e.error());
      EXPECT_EQ(" ", e.argId());
      EXPECT_STREQ("undefined -- Couldn't find match for argument", e.what());
    }
    DtCmdLine::CmdLine again("thrown", ' ', "1", false);
    DtCmdLine::ValueArg<int> other("o", "other", "Other", true, 0, "int");
    again.add(other);
    try {
      again.parse(missing.argc(), missing.argv(), false);
      ADD_FAILURE() << "no exception";
    } catch (const DtCmdLine::CmdLineParseException& e) {
      EXPECT_EQ("One or more required arguments missing!", e.error());
    }
  });
  // Nothing is printed on that road.
  EXPECT_EQ("", output.out);
  EXPECT_EQ("", output.err);
}

TEST(SettingsCommandLine, EmptyArgumentListIsAnError) {
  DtCmdLine::CmdLine cmd("empty", ' ', "1", false);
  std::vector<std::string> none;
  char* noArgs[] = {nullptr};
  EXPECT_THROW(cmd.parse(0, noArgs, false), DtCmdLine::CmdLineParseException);
}

TEST(SettingsCommandLine, HelpVersionAndIgnoreRestAreAlwaysThere) {
  for (bool pause : {false, true}) {
    DtCmdLine::CmdLine cmd("always", ' ', "1", pause);
    EXPECT_EQ(pause, cmd.pause());
    EXPECT_TRUE(cmd.hasHelpAndVersion());
    std::vector<std::string> ids;
    for (DtCmdLine::Arg* arg : cmd.getArgList()) ids.push_back(arg->longID());
    EXPECT_EQ(std::vector<std::string>({"--,  --ignore_rest", "-v,  --version", "-h,  --help"}),
              ids);
    EXPECT_NE(nullptr, dynamic_cast<DtCmdLine::StdOutput*>(cmd.getOutput()));
  }
}

TEST(SettingsCommandLine, OutputRestoresDtNotifyLevel) {
  DtCmdLine::CmdLine cmd("levels", ' ', "2.0", false);
  int saved = DtNotifyLevel;
  DtNotifyLevel = 0;
  DtCmdLine::StdOutput output;
  auto printed = ktltest::captureOutput([&] {
    output.version(cmd);
    DtCmdLine::CmdLineParseException e("Too many arguments!");
    output.failure(cmd, e);
  });
  int after = DtNotifyLevel;
  DtNotifyLevel = saved;
  EXPECT_EQ(0, after);
  EXPECT_EQ("\nnot_set_yet  version: 2.0\n\n", printed.out);
  EXPECT_EQ(0u, printed.err.find("PARSE ERROR:  \n             Too many arguments!\n"));
}
