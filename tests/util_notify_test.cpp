// The notify streams DtInfo, DtWarn, DtVerbose and DtDebug: filter by DtNotifyLevel, routing to
// standard output and standard error, the printf-style call operator, and ordering with printf.

#include <gtest/gtest.h>

#include <stdio_ext.h>

#include <cstdio>
#include <ostream>
#include <sstream>
#include <string>
#include <type_traits>

#include <util/util.h>

#include "support/capture.h"

using KORRti::DtDebug;
using KORRti::DtInfo;
using KORRti::DtLispDebugOn;
using KORRti::DtNotifyLevel;
using KORRti::DtOutputStream;
using KORRti::DtVerbose;
using KORRti::DtWarn;
using ktltest::Captured;
using ktltest::captureOutput;

namespace {

// Every test that changes the levels gets them back as they were.
class NotifyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLevel_ = DtNotifyLevel;
    savedLispDebug_ = DtLispDebugOn;
  }
  void TearDown() override {
    DtNotifyLevel = savedLevel_;
    DtLispDebugOn = savedLispDebug_;
  }

 private:
  int savedLevel_ = 0;
  int savedLispDebug_ = 0;
};

// Writes one tagged line to each stream with << and captures the result at one level.
Captured writeAllAtLevel(int level) {
  DtNotifyLevel = level;
  return captureOutput([] {
    DtWarn << "warn\n";
    DtInfo << "info\n";
    DtVerbose << "verbose\n";
    DtDebug << "debug\n";
  });
}

// The same with the call operator.
Captured callAllAtLevel(int level) {
  DtNotifyLevel = level;
  return captureOutput([] {
    DtWarn("%s\n", "warn");
    DtInfo("%s\n", "info");
    DtVerbose("%s\n", "verbose");
    DtDebug("%s\n", "debug");
  });
}

TEST(NotifyDefaultsTest, DefaultLevels) {
  EXPECT_EQ(DtNotifyLevel, 1);
  EXPECT_EQ(DtLispDebugOn, 0);
}

TEST(NotifyDefaultsTest, StreamsAreOstreams) {
  static_assert(std::is_base_of<std::ostream, DtOutputStream>::value, "an ostream");
  std::ostream* streams[] = {&DtInfo, &DtWarn, &DtVerbose, &DtDebug};
  for (std::ostream* a : streams) {
    ASSERT_NE(a, nullptr);
    for (std::ostream* b : streams) {
      if (a != b) {
        EXPECT_NE(a->rdbuf(), b->rdbuf());
      }
    }
  }
}

TEST_F(NotifyTest, GlobalsAreWritable) {
  DtNotifyLevel = 3;
  EXPECT_EQ(DtNotifyLevel, 3);
  DtLispDebugOn = 1;
  EXPECT_EQ(DtLispDebugOn, 1);
}

TEST_F(NotifyTest, LevelZeroPrintsNothing) {
  Captured c = writeAllAtLevel(0);
  EXPECT_EQ(c.out, "");
  EXPECT_EQ(c.err, "");
}

TEST_F(NotifyTest, LevelOnePrintsOnlyWarnings) {
  Captured c = writeAllAtLevel(1);
  EXPECT_EQ(c.out, "");
  EXPECT_EQ(c.err, "warn\n");
}

TEST_F(NotifyTest, LevelTwoAddsInfo) {
  Captured c = writeAllAtLevel(2);
  EXPECT_EQ(c.out, "info\n");
  EXPECT_EQ(c.err, "warn\n");
}

TEST_F(NotifyTest, LevelThreeAddsVerbose) {
  Captured c = writeAllAtLevel(3);
  EXPECT_EQ(c.out, "info\nverbose\n");
  EXPECT_EQ(c.err, "warn\n");
}

TEST_F(NotifyTest, LevelFourAddsDebug) {
  Captured c = writeAllAtLevel(4);
  EXPECT_EQ(c.out, "info\nverbose\ndebug\n");
  EXPECT_EQ(c.err, "warn\n");
}

TEST_F(NotifyTest, HigherLevelsPrintEverything) {
  for (int level : {5, 10, 100}) {
    Captured c = writeAllAtLevel(level);
    EXPECT_EQ(c.out, "info\nverbose\ndebug\n") << "level " << level;
    EXPECT_EQ(c.err, "warn\n") << "level " << level;
  }
}

TEST_F(NotifyTest, NegativeLevelPrintsNothing) {
  Captured c = writeAllAtLevel(-1);
  EXPECT_EQ(c.out, "");
  EXPECT_EQ(c.err, "");
}

TEST_F(NotifyTest, DefaultLevelPrintsWarningsOnly) {
  Captured c = writeAllAtLevel(1);
  EXPECT_EQ(c.err, "warn\n");
  EXPECT_EQ(c.out, "");
}

TEST_F(NotifyTest, EnabledFollowsThresholds) {
  for (int level = 0; level <= 5; ++level) {
    DtNotifyLevel = level;
    EXPECT_EQ(DtWarn.enabled(), level >= 1) << level;
    EXPECT_EQ(DtInfo.enabled(), level >= 2) << level;
    EXPECT_EQ(DtVerbose.enabled(), level >= 3) << level;
    EXPECT_EQ(DtDebug.enabled(), level >= 4) << level;
  }
}

TEST_F(NotifyTest, CallOperatorObeysTheSameFilter) {
  const char* expectedOut[] = {"", "", "info\n", "info\nverbose\n", "info\nverbose\ndebug\n"};
  const char* expectedErr[] = {"", "warn\n", "warn\n", "warn\n", "warn\n"};
  for (int level = 0; level <= 4; ++level) {
    Captured c = callAllAtLevel(level);
    EXPECT_EQ(c.out, expectedOut[level]) << "level " << level;
    EXPECT_EQ(c.err, expectedErr[level]) << "level " << level;
  }
}

TEST_F(NotifyTest, CallOperatorFormatsLikePrintf) {
  DtNotifyLevel = 2;
  Captured c = captureOutput(
      [] { DtInfo("%d-%s-%.2f-%c-%x-%5s|%-3d|%%\n", 42, "text", 3.14159, 'z', 255, "ab", 7); });
  char expected[128];
  std::snprintf(expected, sizeof expected, "%d-%s-%.2f-%c-%x-%5s|%-3d|%%\n", 42, "text", 3.14159,
                'z', 255, "ab", 7);
  EXPECT_EQ(c.out, expected);
  EXPECT_EQ(c.out, "42-text-3.14-z-ff-   ab|7  |%\n");
  EXPECT_EQ(c.err, "");
}

TEST_F(NotifyTest, CallOperatorWritesLongText) {
  DtNotifyLevel = 1;
  std::string longText(10000, 'q');
  longText += "end";
  Captured c = captureOutput([&] { DtWarn("[%s]", longText.c_str()); });
  EXPECT_EQ(c.err, "[" + longText + "]");
  EXPECT_EQ(c.out, "");
}

TEST_F(NotifyTest, CallOperatorWithEmptyOutput) {
  DtNotifyLevel = 4;
  Captured c = captureOutput([] {
    DtDebug("%s", "");
    DtDebug << "after";
  });
  EXPECT_EQ(c.out, "after");
}

TEST_F(NotifyTest, CallOperatorReturnsTheStream) {
  DtNotifyLevel = 2;
  DtOutputStream* returned = nullptr;
  Captured c = captureOutput([&] {
    returned = &DtInfo("%s", "a");
    DtInfo("%d", 1) << "b" << 2 << '\n';
  });
  EXPECT_EQ(returned, &DtInfo);
  EXPECT_EQ(c.out, "a1b2\n");
}

TEST_F(NotifyTest, MixedOperatorsKeepOrder) {
  DtNotifyLevel = 3;
  Captured c = captureOutput([] {
    DtVerbose << "Reading ";
    DtVerbose("%s", "model.xml");
    DtVerbose << " as " << 1516 << '\n';
    DtInfo("info %d\n", 2);
  });
  EXPECT_EQ(c.out, "Reading model.xml as 1516\ninfo 2\n");
}

TEST_F(NotifyTest, OrderKeptWithPrintfOnStandardOutput) {
  DtNotifyLevel = 4;
  Captured c = captureOutput([] {
    std::printf("1");
    DtInfo << "2";
    std::printf("3");
    DtVerbose("%d", 4);
    std::fputs("5", stdout);
    DtDebug << "6";
    std::printf("7\n");
  });
  EXPECT_EQ(c.out, "1234567\n");
  EXPECT_EQ(c.err, "");
}

TEST_F(NotifyTest, OrderKeptWithFprintfOnStandardError) {
  DtNotifyLevel = 1;
  Captured c = captureOutput([] {
    std::fprintf(stderr, "a");
    DtWarn << "b";
    std::fprintf(stderr, "c");
    DtWarn("%s", "d");
    std::fprintf(stderr, "e\n");
  });
  EXPECT_EQ(c.err, "abcde\n");
  EXPECT_EQ(c.out, "");
}

TEST_F(NotifyTest, EachWriteIsFlushed) {
  DtNotifyLevel = 4;
  size_t pendingOut[4] = {1, 1, 1, 1};
  size_t pendingErr = 1;
  Captured c = captureOutput([&] {
    DtInfo << "i";
    pendingOut[0] = __fpending(stdout);
    DtVerbose << 3;
    pendingOut[1] = __fpending(stdout);
    DtDebug("%s", "d");
    pendingOut[2] = __fpending(stdout);
    DtInfo << 'c';
    pendingOut[3] = __fpending(stdout);
    DtWarn << "w";
    pendingErr = __fpending(stderr);
  });
  for (size_t pending : pendingOut) EXPECT_EQ(pending, 0u);
  EXPECT_EQ(pendingErr, 0u);
  EXPECT_EQ(c.out, "i3dc");
  EXPECT_EQ(c.err, "w");
}

TEST_F(NotifyTest, FilteredWritesLeaveStreamGood) {
  DtNotifyLevel = 0;
  Captured c = captureOutput([] {
    DtWarn << "x" << 12 << 3.5 << std::endl;
    DtDebug << "y" << std::flush;
    DtDebug("%d", 5);
  });
  EXPECT_TRUE(DtWarn.good());
  EXPECT_TRUE(DtDebug.good());
  EXPECT_EQ(c.out, "");
  EXPECT_EQ(c.err, "");
  // Still usable once the level allows it.
  DtNotifyLevel = 4;
  c = captureOutput([] {
    DtWarn << "x\n";
    DtDebug << "y\n";
  });
  EXPECT_EQ(c.err, "x\n");
  EXPECT_EQ(c.out, "y\n");
}

TEST_F(NotifyTest, LevelChangeTakesEffectAtOnce) {
  Captured c = captureOutput([] {
    DtNotifyLevel = 2;
    DtInfo << "shown ";
    DtNotifyLevel = 1;
    DtInfo << "hidden ";
    DtInfo("%s", "hidden too ");
    DtNotifyLevel = 3;
    DtInfo << "prompt";
  });
  EXPECT_EQ(c.out, "shown prompt");
}

TEST_F(NotifyTest, SavedAndRestoredLevelAroundPrompt) {
  // What the command-line layer does around "Press any key to continue".
  DtNotifyLevel = 1;
  Captured c = captureOutput([] {
    int saved = DtNotifyLevel;
    DtNotifyLevel = 3;
    DtInfo << "Press any key to continue" << std::endl;
    DtNotifyLevel = saved;
    DtInfo << "not shown" << std::endl;
  });
  EXPECT_EQ(c.out, "Press any key to continue\n");
  EXPECT_EQ(DtNotifyLevel, 1);
}

TEST_F(NotifyTest, ThroughOstreamReference) {
  DtNotifyLevel = 2;
  Captured c = captureOutput([] {
    std::ostream& info = DtInfo;
    std::ostream& verbose = DtVerbose;
    info << "via ostream " << 7 << '\n';
    verbose << "filtered\n";
  });
  EXPECT_EQ(c.out, "via ostream 7\n");
}

TEST_F(NotifyTest, WritesLibraryTypes) {
  DtNotifyLevel = 1;
  Captured c = captureOutput([] {
    KORRti::DtException e("DtException: KTL Error: Unbound symbol x", "DtcEval", "eval.cpp", 3,
                          nullptr);
    DtWarn << KORRti::DtString("text: ") << e << '\n';
  });
  EXPECT_EQ(c.err.find("text: DtException: KTL Error: Unbound symbol x"), 0u) << c.err;
  EXPECT_EQ(c.out, "");
}

TEST_F(NotifyTest, WarningsGoToStandardErrorOnly) {
  DtNotifyLevel = 4;
  Captured c = captureOutput([] { DtWarn << "only on stderr"; });
  EXPECT_EQ(c.err, "only on stderr");
  EXPECT_EQ(c.out, "");
}

TEST_F(NotifyTest, InfoVerboseDebugGoToStandardOutputOnly) {
  DtNotifyLevel = 4;
  Captured c = captureOutput([] {
    DtInfo << "I";
    DtVerbose << "V";
    DtDebug << "D";
  });
  EXPECT_EQ(c.out, "IVD");
  EXPECT_EQ(c.err, "");
}

}  // namespace
