// The XML writer when libxml2 runs out of memory while it sets itself up for the first writer
// of a process: then the start of the document fails. Each sweep runs in a child process that
// forks before this process has written anything.
#include <gtest/gtest.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <libxml/xmlmemory.h>
#include <support/capture.h>
#include <support/failing_xml_memory.h>
#include <support/files.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

using namespace KORRti;
using ktltest::allocationFailed;
using ktltest::captureOutput;
using ktltest::FailingXmlMemory;
using ktltest::TempDir;

namespace {

// Fails the first, second, ... allocation of write and every one after it, from a process
// whose libxml2 has not written yet; ends the process with 0 if line came with a false result.
template <class Write>
void sweepFromScratch(Write write, const std::string& line) {
  bool seen = false;
  for (long allowed = 0; allowed < 100000 && !seen; ++allowed) {
    bool ok = true;
    bool failed = false;
    auto captured = captureOutput([&] {
      KTL_LEAK_CHECK_PAUSE;
      FailingXmlMemory memory(allowed, true);
      ok = write();
      failed = allocationFailed;
    });
    if (!ok && captured.err.find(line) != std::string::npos) seen = true;
    if (!failed) break;
  }
  std::fflush(nullptr);
  _exit(seen ? 0 : 1);
}

}  // namespace

TEST(EnvXmlWriterStartFaultsTest, WriteStringStartDocument) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(sweepFromScratch(
                  [] {
                    DtEnvironment env;
                    env.addObject("a");
                    DtEnvXMLWriter writer("root");
                    DtString out;
                    return writer.writeString(env, out);
                  },
                  "DtEnvXMLWriter::writeString: Error at xmlTextWriterStartDocument\n"),
              ::testing::ExitedWithCode(0), "");
}

TEST(EnvXmlWriterStartFaultsTest, WriteFileStartDocument) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  TempDir dir;
  std::string path = dir.file("out.xml");
  EXPECT_EXIT(sweepFromScratch(
                  [&] {
                    DtEnvironment env;
                    env.addObject("a");
                    DtEnvXMLWriter writer("root");
                    return writer.writeFile(env, path.c_str());
                  },
                  "testXmlwriterDoc: Error at xmlTextWriterStartDocument\n"),
              ::testing::ExitedWithCode(0), "");
}
