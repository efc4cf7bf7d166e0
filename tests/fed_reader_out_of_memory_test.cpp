// Reading a FED file when memory runs out: the buffer's first allocation, its growth, and the
// string stream of the 1.3 reader.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include <ktl/fedReader13.h>

#include "support/capture.h"
#include "support/failing_allocator.h"
#include "support/fed_recorder.h"

using namespace KORRti;

namespace {

struct Outcome {
  bool ok = true;
  char* data = nullptr;
  unsigned int size = 99;
  ktltest::Captured output;
};

Outcome readFailing(const std::string& text, int countdown) {
  std::string path = ktltest::writeTempFile(text, ".fed");
  Outcome outcome;
  FILE* file = fopen(path.c_str(), "rb");
  if (!file) return outcome;
  outcome.output = ktltest::captureOutput([&] {
    ktltest::failCountdown = countdown;
    outcome.ok = DtFedReader::readFileIntoBuffer(file, &outcome.data, &outcome.size);
    ktltest::failCountdown = -1;
  });
  fclose(file);
  return outcome;
}

TEST(FedReaderOutOfMemory, FirstBufferFails) {
  Outcome outcome = readFailing("(FED)", 0);
  EXPECT_FALSE(outcome.ok);
  EXPECT_EQ(outcome.data, nullptr);
  EXPECT_EQ(outcome.output.err, "DtFedFileTransport::readFile: Failed to allocate file buffer\n");
}

TEST(FedReaderOutOfMemory, GrowingBufferFailsAndFreesTheOld) {
  Outcome outcome = readFailing(std::string(3000, ';'), 1);
  EXPECT_FALSE(outcome.ok);
  EXPECT_EQ(outcome.data, nullptr);
  EXPECT_EQ(outcome.size, 0u);
  EXPECT_EQ(outcome.output.err, "DtFedFileTransport::readFile: Failed to allocate file buffer\n");
}

TEST(FedReaderOutOfMemory, ExactlyOneBlockGrowsBeforeTheNextRead) {
  // A file of 1024 bytes fills the first buffer, which grows at once: the growth is the second
  // allocation. One byte less leaves room and needs no second allocation.
  Outcome full = readFailing(std::string(1024, 'x'), 1);
  EXPECT_FALSE(full.ok);
  EXPECT_EQ(full.data, nullptr);
  EXPECT_EQ(full.output.err, "DtFedFileTransport::readFile: Failed to allocate file buffer\n");
  Outcome less = readFailing(std::string(1023, 'x'), 1);
  EXPECT_TRUE(less.ok);
  EXPECT_EQ(less.size, 1023u);
  EXPECT_EQ(less.output.err, "");
  delete[] less.data;
}

TEST(FedReaderOutOfMemory, NoStreamGivesOne) {
  std::string path = ktltest::writeTempFile("(FED)", ".fed");
  DtFedReader13 reader;
  ktltest::FedRecorder target;
  FILE* file = fopen(path.c_str(), "rt");
  ASSERT_NE(file, nullptr);
  int result = -1;
  ktltest::captureOutput([&] {
    ktltest::failCountdown = 1;  // the buffer succeeds, the stream fails
    result = reader.readFedFilePtr(file, &target, DtFilename(path.c_str()), 0, false, false);
    ktltest::failCountdown = -1;
  });
  fclose(file);
  EXPECT_EQ(result, 1);
}

}  // namespace
