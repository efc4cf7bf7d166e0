#ifndef TESTS_SUPPORT_FAILING_XML_MEMORY_H
#define TESTS_SUPPORT_FAILING_XML_MEMORY_H

// Makes libxml2's allocations fail on demand, through its own allocator hooks, for the suites
// that check how the library answers libxml2 running out of memory.
#include <libxml/xmlmemory.h>

#include <cstdlib>
#include <cstring>

// libxml2 leaks on some of its own out-of-memory paths: a suite pauses leak checking around
// the runs in which an allocation fails.
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

namespace ktltest {

// Allocations left before the one that fails; negative: none fails.
inline long allocationsLeft = -1;
// Whether the allocations after the failed one fail too.
inline bool keepFailing = false;
inline bool allocationFailed = false;

inline bool failNow() {
  if (allocationsLeft < 0) return false;
  if (allocationsLeft == 0) {
    allocationFailed = true;
    if (!keepFailing) allocationsLeft = -1;
    return true;
  }
  --allocationsLeft;
  return false;
}

inline void* failingMalloc(size_t size) {
  return failNow() ? nullptr : std::malloc(size);
}
inline void* failingRealloc(void* pointer, size_t size) {
  return failNow() ? nullptr : std::realloc(pointer, size);
}
inline char* failingStrdup(const char* text) {
  return failNow() ? nullptr : strdup(text);
}
inline void plainFree(void* pointer) {
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

}  // namespace ktltest

#endif
