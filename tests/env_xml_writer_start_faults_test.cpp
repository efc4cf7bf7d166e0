// The XML writer when libxml2 runs out of memory while it sets itself up for the first writer
// of a process: then the start of the document fails. Each sweep runs in a child process that
// forks before this process has written anything.
#include <gtest/gtest.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <libxml/xmlmemory.h>
#include <support/capture.h>
#include <support/env_xml_files.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::TempDir;

#if defined(__SANITIZE_ADDRESS__)
#define KTL_HAS_LSAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KTL_HAS_LSAN 1
#endif
#endif

#ifdef KTL_HAS_LSAN
#include <sanitizer/lsan_interface.h>
#define KTL_LEAK_CHECK_PAUSE __lsan::ScopedDisabler leakCheckPause
#else
#define KTL_LEAK_CHECK_PAUSE \
  do {                       \
  } while (0)
#endif

namespace {

// Allocations left before the one that fails; negative: none fails.
long allocationsLeft = -1;
// Whether the allocations after the failed one fail too.
bool keepFailing = false;
bool allocationFailed = false;

bool failNow() {
  if (allocationsLeft < 0) return false;
  if (allocationsLeft == 0) {
    allocationFailed = true;
    if (!keepFailing) allocationsLeft = -1;
    return true;
  }
  --allocationsLeft;
  return false;
}

void* failingMalloc(size_t size) {
  return failNow() ? nullptr : std::malloc(size);
}
void* failingRealloc(void* pointer, size_t size) {
  return failNow() ? nullptr : std::realloc(pointer, size);
}
char* failingStrdup(const char* text) {
  return failNow() ? nullptr : strdup(text);
}
void plainFree(void* pointer) {
  std::free(pointer);
}

// Routes libxml2's allocations through the failing functions while it lives; the one after
// `allowed` successful ones fails, and those after it succeed again unless `persistent`.
class FailingXmlMemory {
 public:
  FailingXmlMemory(long allowed, bool persistent) {
    xmlMemGet(&free_, &malloc_, &realloc_, &strdup_);
    allocationFailed = false;
    allocationsLeft = allowed;
    keepFailing = persistent;
    xmlMemSetup(plainFree, failingMalloc, failingRealloc, failingStrdup);
  }
  ~FailingXmlMemory() {
    allocationsLeft = -1;
    xmlMemSetup(free_, malloc_, realloc_, strdup_);
  }
  FailingXmlMemory(const FailingXmlMemory&) = delete;
  FailingXmlMemory& operator=(const FailingXmlMemory&) = delete;

 private:
  xmlFreeFunc free_ = nullptr;
  xmlMallocFunc malloc_ = nullptr;
  xmlReallocFunc realloc_ = nullptr;
  xmlStrdupFunc strdup_ = nullptr;
};

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
