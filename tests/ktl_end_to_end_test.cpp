// A configuration from end to end: a host registers its variables, loads a file that loads a
// second one through the load paths, and reads the results back.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/files.h"

using namespace KORRti;
using ktltest::captureOutput;

using ktltest::TempDir;

namespace {

const char kMain[] = R"(; Site configuration.
(load "shapes.ktl")                      ; found through the load path

(define (clamp x lo hi)
  (cond ((< x lo) lo)
        ((> x hi) hi)
        (t x)))

(define (sum l) (if (null? l) 0 (+ (car l) (sum (cdr l)))))

(let ((base 40) (extra (area 2 3)))
  (setqb count (clamp (+ base extra) 0 100)))

(setqb ratio (/ 7 2))
(setqb scale (* 2 1.25))
(setqb name (string-append "sim" "-" site))
(setqb label (string-append name "/" (number->string (sum '(1 2 3)))))
(setqb big (- (* 65536 65536) 1))
(setqb offset (- 0 (abs -12)))
(setqb small (- 0 (sum (list 1 2 3 4))))
(setqb tiny (sum '(60000 5535)))
(setqb flags (logior 1 4))
(if (string-equal site "north") (setqb DtNotifyLevel 1))
)";

const char kShapes[] = R"(; Helpers, loaded from the load path.
(define (area w h) (* w h))
(define site "north")
)";

}  // namespace

TEST(EndToEndTest, ConfigurationFileSetsEveryHostType) {
  TempDir dir;
  TempDir lib;
  std::string main = dir.write("site.ktl", kMain);
  lib.write("shapes.ktl", kShapes);
  DtlAddLoadPath(lib.path().c_str());

  int savedLevel = DtNotifyLevel;
  int count = 0;
  float ratio = 0;
  double scale = 0;
  char* name = nullptr;
  DtString label;
  unsigned long big = 0;
  long offset = 0;
  short small = 0;
  unsigned short tiny = 0;
  unsigned int flags = 0;
  DtlObjPtr result;
  auto output = captureOutput([&] {
    DtKtlEnvironment ktl;
    ktl.registerVar("count", &count);
    ktl.registerVar("ratio", &ratio);
    ktl.registerVar("scale", &scale);
    ktl.registerVar("name", &name);
    ktl.registerVar("label", &label);
    ktl.registerVar("big", &big);
    ktl.registerVar("offset", &offset);
    ktl.registerVar("small", &small);
    ktl.registerVar("tiny", &tiny);
    ktl.registerVar("flags", &flags);
    DtNotifyLevel = 2;
    std::vector<char> path(main.begin(), main.end());
    path.push_back('\0');
    result = ktl.loadLispFile(path.data(), 1);
    EXPECT_FALSE(result.isNull());
    EXPECT_EQ(count, 46);
    EXPECT_FLOAT_EQ(ratio, 3.5f);
    EXPECT_DOUBLE_EQ(scale, 2.5);
    ASSERT_NE(name, nullptr);
    EXPECT_STREQ(name, "sim-north");  // the binding's own text, valid while ktl lives
    EXPECT_EQ(label, DtString("sim-north/6"));
    EXPECT_EQ(big, 0xFFFFFFFFFFFFFFFFul);  // a fixnum of -1, sign-extended
    EXPECT_EQ(offset, -12);
    EXPECT_EQ(small, -10);
    EXPECT_EQ(tiny, 65535);
    EXPECT_EQ(flags, 5u);
    result = DtlObjPtr();
  });
  EXPECT_EQ(DtNotifyLevel, 1);  // set by the file through its binding
  DtNotifyLevel = savedLevel;
  DtlClearLoadPaths();
  EXPECT_NE(output.out.find("Loading Config File: " + main + "\n"), std::string::npos);
  EXPECT_NE(output.out.find("Loading Config File: " + lib.path() + "/shapes.ktl\n"),
            std::string::npos);
  EXPECT_EQ(output.err, "");
}
