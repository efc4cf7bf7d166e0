// Allocation failures in the interpreter halt with the words of each allocation site. This
// program replaces the global allocation functions, so that the interpreter's non-throwing
// allocations can be made to fail on demand.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <thread>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/failing_allocator.h"

using namespace KORRti;
using ktltest::haltMessage;
using ktltest::initialMessage;

using ktltest::failCountdown;

namespace {

class OutOfMemoryTest : public ::testing::Test {
 protected:
  void SetUp() override { DtlObjPtr::nil(); }  // the singleton exists before any failure
  void TearDown() override { failCountdown = -1; }

  // The first cause of the halt that fn raises when the allocation after `after` fails.
  std::string failing(int after, std::function<void()> const& fn) {
    return initialMessage([&] {
      failCountdown = after;
      fn();
    });
  }

  DtlObjPtr read(char const* text) {
    DtlStringInputStream stream(text);
    return DtcRead(&stream, frame);
  }

  DtlObjPtr frame{DtlFrameTag};
};

}  // namespace

TEST_F(OutOfMemoryTest, FailuresAreInjected) {
  failCountdown = 0;
  EXPECT_TRUE(DtlObjPtr(1).isNull());  // the record could not be had: a null handle
  EXPECT_FALSE(DtlObjPtr(1).isNull());
}

TEST(OutOfMemorySingletonTest, ASingletonIsNeverNull) {
  // A fresh thread has no singletons yet: the first one fails to be made, the next try works.
  std::string message;
  bool madeLater = false;
  std::thread worker([&] {
    message = initialMessage([] {
      failCountdown = 0;
      DtlObjPtr::nil();
    });
    madeLater = !DtlObjPtr::nil().isNull() && DtlObjPtr::nil()->tag() == DtlNilTag;
  });
  worker.join();
  EXPECT_EQ(message, haltMessage("out of memory in DtlObjPtr::nil()"));
  EXPECT_TRUE(madeLater);
}

TEST_F(OutOfMemoryTest, TextSetters) {
  EXPECT_EQ(failing(1, [] { DtcMakeSymbol("x"); }),
            haltMessage("out of memory in DtlObj::setPname()"));
  EXPECT_EQ(failing(1, [] { DtlObjPtr string("x"); }),
            haltMessage("out of memory in DtlObj::setString()"));
  EXPECT_EQ(failing(1, [] { alloc_compiled_c(DtlCompiledCTag, "f", DtlMem); }),
            haltMessage("out of memory in DtlObj::setFcnPname()"));
}

TEST_F(OutOfMemoryTest, SymbolsBindingsAndFunctions) {
  EXPECT_EQ(failing(0, [] { DtcMakeSymbol("x"); }), haltMessage("out of memory in DtcMakeSymbol"));
  DtlObjPtr symbol = DtcMakeSymbol("y");
  EXPECT_EQ(failing(0, [&] { frame->frameBindings()->insert(symbol, DtlObjPtr::nil(), frame); }),
            haltMessage("out of memory in DtlHashTable::insert"));
  EXPECT_EQ(failing(0, [] { alloc_compiled_c(DtlSpecialFormTag, "f", DtlMem); }),
            haltMessage("out of memory in alloc_compiled_c"));
  EXPECT_EQ(failing(0, [] { DtcCons(DtlObjPtr::nil(), DtlObjPtr::nil()); }),
            haltMessage("out of memory in cons"));
}

TEST_F(OutOfMemoryTest, ReaderObjects) {
  EXPECT_EQ(failing(0, [&] { read("\"text\""); }), haltMessage("out of memory in lreadstring"));
  EXPECT_EQ(failing(0, [&] { read("12"); }), haltMessage("out of memory in lreadnum"));
  EXPECT_EQ(failing(0, [&] { read("1.5"); }), haltMessage("out of memory in lreadnum"));
}
