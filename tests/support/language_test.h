#ifndef TESTS_SUPPORT_LANGUAGE_TEST_H
#define TESTS_SUPPORT_LANGUAGE_TEST_H

#include <gtest/gtest.h>

#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"

namespace ktltest {

// A suite over a fresh language frame. The notify level and the trace flag are put back after
// each test, and the frame is ended (drop other handles on it in the test, or in an overriding
// TearDown before calling this one).
class LanguageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLevel_ = KORRti::DtNotifyLevel;
    savedDebug_ = KORRti::DtLispDebugOn;
  }
  void TearDown() override {
    KORRti::DtNotifyLevel = savedLevel_;
    KORRti::DtLispDebugOn = savedDebug_;
    destroyLanguageFrame(root);
  }

  KORRti::DtlObjPtr eval(std::string const& text) { return evalText(text, root); }
  std::string show(std::string const& text) { return printed(eval(text)); }
  // The first cause's message of the halt that evaluating text raises.
  std::string error(std::string const& text) {
    return initialMessage([&] { eval(text); });
  }

  KORRti::DtlObjPtr root = makeLanguageFrame();

 private:
  int savedLevel_ = 1;
  int savedDebug_ = 0;
};

}  // namespace ktltest

#endif
