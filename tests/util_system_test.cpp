// Platform helpers: DtOperatingSystem, DtPollBlockingInputChar and DtSleep.

#include <gtest/gtest.h>

#include <sys/utsname.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include <util/util.h>

using KORRti::DtOperatingSystem;
using KORRti::DtPollBlockingInputChar;
using KORRti::DtSleep;

namespace {

TEST(DtOperatingSystemTest, IsLinux) {
  const char* name = DtOperatingSystem();
  ASSERT_NE(name, nullptr);
  EXPECT_GT(std::strlen(name), 0u);
  EXPECT_STREQ(name, "Linux");
}

TEST(DtOperatingSystemTest, MatchesUnameAndIsStable) {
  struct utsname info;
  ASSERT_EQ(uname(&info), 0);
  EXPECT_STREQ(DtOperatingSystem(), info.sysname);
  const char* first = DtOperatingSystem();
  const char* second = DtOperatingSystem();
  EXPECT_STREQ(first, second);
  EXPECT_EQ(first, second);  // the text stays valid between calls
}

// Standard input replaced by the read end of a pipe that the test writes into; the real
// standard input comes back at the end, whatever happens in between.
class PipedStdinTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(pipe(pipe_), 0);
    saved_ = dup(STDIN_FILENO);
    ASSERT_GE(saved_, 0);
    ASSERT_EQ(dup2(pipe_[0], STDIN_FILENO), STDIN_FILENO);
  }
  void TearDown() override {
    if (saved_ >= 0) {
      dup2(saved_, STDIN_FILENO);
      close(saved_);
    }
    closeWriteEnd();
    if (pipe_[0] >= 0) close(pipe_[0]);
  }
  void send(const std::string& text) {
    ASSERT_EQ(write(pipe_[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void closeWriteEnd() {
    if (pipe_[1] >= 0) close(pipe_[1]);
    pipe_[1] = -1;
  }

 private:
  int pipe_[2] = {-1, -1};
  int saved_ = -1;
};

TEST_F(PipedStdinTest, NothingWaitingGivesZero) {
  EXPECT_EQ(DtPollBlockingInputChar(), 0);
  EXPECT_EQ(DtPollBlockingInputChar(), 0);  // and again: it never blocks
}

TEST_F(PipedStdinTest, WaitingCharacterIsReturned) {
  send("k");
  EXPECT_EQ(DtPollBlockingInputChar(), 'k');
  EXPECT_EQ(DtPollBlockingInputChar(), 0);  // consumed
}

TEST_F(PipedStdinTest, CharactersComeOneAtATimeInOrder) {
  send("ab\n");
  EXPECT_EQ(DtPollBlockingInputChar(), 'a');
  EXPECT_EQ(DtPollBlockingInputChar(), 'b');
  EXPECT_EQ(DtPollBlockingInputChar(), '\n');
  EXPECT_EQ(DtPollBlockingInputChar(), 0);
  send(" ");
  EXPECT_EQ(DtPollBlockingInputChar(), ' ');
}

TEST_F(PipedStdinTest, EndOfInputGivesZero) {
  send("x");
  closeWriteEnd();
  EXPECT_EQ(DtPollBlockingInputChar(), 'x');
  EXPECT_EQ(DtPollBlockingInputChar(), 0);
  EXPECT_EQ(DtPollBlockingInputChar(), 0);
}

TEST(DtSleepTest, SleepsAtLeastTheTimeAsked) {
  auto start = std::chrono::steady_clock::now();
  DtSleep(0.02);
  std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_GE(elapsed.count(), 0.019);
}

TEST(DtSleepTest, ZeroNegativeAndNotANumberReturn) {
  auto start = std::chrono::steady_clock::now();
  DtSleep(0.0);
  DtSleep(-1.0);
  DtSleep(-1e9);
  DtSleep(std::numeric_limits<double>::quiet_NaN());
  std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_LT(elapsed.count(), 1.0);
}

TEST(DtSleepTest, PollLoopAsUsedByThePrompt) {
  // The command-line layer loops on the poll with DtSleep(0.1); with a key already waiting the
  // loop ends before any sleep.
  int fds[2];
  ASSERT_EQ(pipe(fds), 0);
  int saved = dup(STDIN_FILENO);
  ASSERT_GE(saved, 0);
  dup2(fds[0], STDIN_FILENO);
  ASSERT_EQ(write(fds[1], "q", 1), 1);
  int key = 0;
  int rounds = 0;
  while ((key = DtPollBlockingInputChar()) == 0 && rounds < 50) {
    DtSleep(0.1);
    ++rounds;
  }
  dup2(saved, STDIN_FILENO);
  close(saved);
  close(fds[0]);
  close(fds[1]);
  EXPECT_EQ(key, 'q');
  EXPECT_EQ(rounds, 0);
}

}  // namespace
