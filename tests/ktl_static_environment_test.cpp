// An interpreter that lives in a static object, as some hosts keep theirs, is destroyed after
// the main thread's own storage at exit, and must still go down cleanly.
#include <gtest/gtest.h>

#include <ktl/ktl.h>

namespace {

KORRti::DtKtlEnvironment& staticEnvironment() {
  static KORRti::DtKtlEnvironment environment;
  return environment;
}

}  // namespace

TEST(StaticEnvironmentTest, LoadsAndOutlivesTheThreadsStorage) {
  char text[] = "(define (f n) (if (= n 0) 'done (f (- n 1)))) (define kept (f 100))";
  EXPECT_FALSE(staticEnvironment().loadLispExpr(text, 1).isNull());
  EXPECT_STREQ(staticEnvironment().lookup("kept")->pname(), "done");
}
