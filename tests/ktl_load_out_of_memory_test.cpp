// Allocation failures in the loaders and in putenv halt with the words of each site. This
// program replaces the global allocation functions, so that the non-throwing allocations can be
// made to fail on demand.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/failing_allocator.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::haltMessage;
using ktltest::initialMessage;

using KORRti::detail::loadLispFile;

using ktltest::failCountdown;

namespace {

class LoadOutOfMemoryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    DtlObjPtr::nil();  // the singletons exist before any failure
    DtlObjPtr::unbound();
    DtcIntern("eof", frame);
  }
  void TearDown() override { failCountdown = -1; }

  DtlObjPtr frame{DtlFrameTag};
};

}  // namespace

TEST_F(LoadOutOfMemoryTest, TheFileStreamHaltsOutsideTheCatching) {
  std::string path = ktltest::writeTempFile("5");
  EXPECT_EQ(initialMessage([&] {
              failCountdown = 0;
              loadLispFile(path.c_str(), frame, 1);
            }),
            haltMessage("out of memory in DtcLoadLispFile"));
  // The exported loader drops the halt and answers a null handle, with nothing written.
  DtlObjPtr result = DtlObjPtr::nil();
  auto output = captureOutput([&] {
    failCountdown = 0;
    result = DtcLoadLispFile(path.c_str(), frame, nullptr, 1);
  });
  EXPECT_TRUE(result.isNull());
  EXPECT_EQ(output.err, "");
  failCountdown = -1;
  EXPECT_FALSE(DtcLoadLispFile(path.c_str(), frame, nullptr, 1).isNull());  // all well again
}

TEST_F(LoadOutOfMemoryTest, TheExpressionStreamHalts) {
  EXPECT_EQ(initialMessage([&] {
              failCountdown = 0;
              DtcLoadLispExpr("5", frame, nullptr, 1);
            }),
            haltMessage("out of memory in DtcLoadLispExpr"));
}

TEST_F(LoadOutOfMemoryTest, ThePutenvTextHalts) {
  DtlObjPtr args =
      DtcCons(DtlObjPtr("KTL_OOM_TEST_PUT"), DtcCons(DtlObjPtr("v"), DtlObjPtr::nil()));
  EXPECT_EQ(initialMessage([&] {
              failCountdown = 0;
              DtlPutenv(args, frame);
            }),
            haltMessage("Out of memory in putenv"));
  EXPECT_EQ(std::getenv("KTL_OOM_TEST_PUT"), nullptr);
}
