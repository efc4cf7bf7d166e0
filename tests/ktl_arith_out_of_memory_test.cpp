// Allocation failures in the arithmetic and string primitives halt with the words of each
// site. This program replaces the global allocation functions, so that the non-throwing
// allocations can be made to fail on demand.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <new>
#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/failing_allocator.h"
#include "support/language.h"

using namespace KORRti;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::list;

using ktltest::failCountdown;

namespace {

class ArithmeticOutOfMemoryTest : public ::testing::Test {
 protected:
  void SetUp() override { DtlObjPtr::nil(); }  // the singleton exists before any failure
  void TearDown() override { failCountdown = -1; }

  // The first cause of the halt that fn raises on args when the allocation after `after`
  // fails.
  std::string failing(int after, DtlPrimitive fn, DtlObjPtr const& args) {
    return initialMessage([&] {
      failCountdown = after;
      fn(args, frame);
    });
  }

  DtlObjPtr frame{DtlFrameTag};
};

}  // namespace

TEST_F(ArithmeticOutOfMemoryTest, StringAppendBuffer) {
  DtlObjPtr args = list({DtlObjPtr("a"), DtlObjPtr("b")});
  EXPECT_EQ(failing(0, DtlStringAppend, args), haltMessage("Out of memory in string-append"));
}

TEST_F(ArithmeticOutOfMemoryTest, StringAppendResult) {
  DtlObjPtr args = list({DtlObjPtr("a"), DtlObjPtr("b")});
  EXPECT_EQ(failing(1, DtlStringAppend, args), haltMessage("Out of memory in string-append"));
  // The copy of the text into the new string is the object's own site.
  EXPECT_EQ(failing(2, DtlStringAppend, args), haltMessage("out of memory in DtlObj::setString()"));
  failCountdown = -1;
  DtlObjPtr result = DtlStringAppend(args, frame);  // and all is well again
  EXPECT_STREQ(result->string(), "ab");
}

TEST_F(ArithmeticOutOfMemoryTest, PathCrossResult) {
  DtlObjPtr args = list({list({DtlObjPtr("a")}), list({DtlObjPtr("b")})});
  EXPECT_EQ(failing(0, DtlPathCross, args), haltMessage("out of memory in path-cross"));
}

TEST_F(ArithmeticOutOfMemoryTest, NumberResults) {
  DtlObjPtr two = list({DtlObjPtr(1), DtlObjPtr(2)});
  DtlObjPtr one = list({DtlObjPtr(-1)});
  EXPECT_EQ(failing(0, DtlPlus, two), haltMessage("out of memory in DtlPlus"));
  EXPECT_EQ(failing(0, DtlMultiply, list({DtlObjPtr(1.5), DtlObjPtr(2)})),
            haltMessage("out of memory in DtlMultiply"));
  EXPECT_EQ(failing(0, DtlMinus, two), haltMessage("out of memory in DtlMinus"));
  EXPECT_EQ(failing(0, DtlMinus, one), haltMessage("out of memory in DtlMinus"));
  EXPECT_EQ(failing(0, DtlDivide, two), haltMessage("out of memory in DtlDivide"));
  EXPECT_EQ(failing(0, DtlAbs, one), haltMessage("out of memory in DtlAbs"));
  EXPECT_EQ(failing(0, DtlSin, one), haltMessage("out of memory in DtlSin"));
  EXPECT_EQ(failing(0, DtlCos, one), haltMessage("out of memory in DtlCos"));
  EXPECT_EQ(failing(0, DtlLogIOr, two), haltMessage("out of memory in DtlLogIOr"));
}
