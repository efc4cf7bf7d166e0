// Loading KTL files and expressions: the search, the messages, where halts are caught, and the
// hand-over of host variables around a load.
#include <gtest/gtest.h>

#include <stdlib.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/files.h"
#include "support/language.h"
#include "support/language_test.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::evalText;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::printed;

using KORRti::detail::loadLispFile;

using ktltest::TempDir;

namespace {

// How operator<< writes the exception that evaluating text in a fresh frame throws.
std::string exceptionText(std::string const& text) {
  DtlObjPtr frame = ktltest::makeLanguageFrame();
  std::ostringstream out;
  try {
    evalText(text, frame);
  } catch (DtException const& e) {
    out << e;
  }
  ktltest::destroyLanguageFrame(frame);
  return out.str();
}

class LoadTest : public ktltest::LanguageTest {
 protected:
  void SetUp() override {
    LanguageTest::SetUp();
    DtNotifyLevel = 1;
    DtLispDebugOn = 0;
    DtcInternCompiledC("load", DtlLoad, root);
  }
  void TearDown() override {
    DtlClearLoadPaths();
    LanguageTest::TearDown();
  }

  bool bound(char const* name) { return DtcBoundp(DtcIntern(name, root), root) == 1; }
  DtlObjPtr loadFile(std::string const& path, int warn = 1) {
    return DtcLoadLispFile(path.c_str(), root, root->params(), warn);
  }
  DtlObjPtr loadExpr(std::string const& text) {
    return DtcLoadLispExpr(text.c_str(), root, root->params(), 1);
  }
  // A KTL list of strings.
  DtlObjPtr strings(std::vector<std::string> const& items) {
    DtlObjPtr result = DtlObjPtr::nil();
    for (auto it = items.rbegin(); it != items.rend(); ++it) {
      result = DtcCons(DtlObjPtr(it->c_str()), result);
    }
    return result;
  }
};

}  // namespace

// ---- DtcLoadLispFile ---------------------------------------------------------------------

TEST_F(LoadTest, MissingFileWarnsOnlyWhenAsked) {
  DtlObjPtr result = DtlObjPtr::nil();
  auto output = captureOutput([&] { result = loadFile("/nonexistent/ktl-missing.ktl", 1); });
  EXPECT_TRUE(result.isNull());
  EXPECT_EQ(output.err, "Couldn't open /nonexistent/ktl-missing.ktl\n");
  EXPECT_EQ(output.out, "");
  result = DtlObjPtr::nil();
  output = captureOutput([&] { result = loadFile("/nonexistent/ktl-missing.ktl", 0); });
  EXPECT_TRUE(result.isNull());
  EXPECT_EQ(output.err, "");
  EXPECT_EQ(output.out, "");
}

TEST_F(LoadTest, AFileAnswersItsLastValue) {
  std::string path = ktltest::writeTempFile("(define a 40)\n(define b (+ a 2))\nb\n");
  DtlObjPtr result;
  auto output = captureOutput([&] { result = loadFile(path); });
  EXPECT_EQ(printed(result), "42");
  EXPECT_EQ(output.out, "");  // the progress line is on DtInfo, silent at level 1
  EXPECT_EQ(output.err, "");
  EXPECT_EQ(show("a"), "40");
}

TEST_F(LoadTest, LoadingIsAnnouncedOnInfo) {
  std::string path = ktltest::writeTempFile("1\n");
  DtNotifyLevel = 2;
  auto output = captureOutput([&] { loadFile(path); });
  EXPECT_EQ(output.out, "Loading Config File: " + path + "\n");
  EXPECT_EQ(output.err, "");
}

TEST_F(LoadTest, EachExpressionRunsBeforeTheNextIsRead) {
  // The second expression reads a symbol that the first one defined.
  std::string path = ktltest::writeTempFile("(define (twice x) (* 2 x)) (twice 21)");
  EXPECT_EQ(printed(loadFile(path)), "42");
}

TEST_F(LoadTest, ARelativeNameIsFoundUnderALoadPath) {
  TempDir first;
  TempDir second;
  second.write("ktl-load-path-only.ktl", "(define where \"second\")");
  DtlAddLoadPath(nullptr);  // ignored
  DtlAddLoadPath(first.path().c_str());
  DtlAddLoadPath(second.path().c_str());
  EXPECT_EQ(theAdditionalLoadPaths.size(), 2u);
  DtNotifyLevel = 2;
  DtlObjPtr result;
  auto output = captureOutput([&] { result = loadFile("ktl-load-path-only.ktl"); });
  EXPECT_FALSE(result.isNull());
  EXPECT_EQ(show("where"), "\"second\"");
  EXPECT_EQ(output.out, "Loading Config File: " + second.path() + "/ktl-load-path-only.ktl\n");
  EXPECT_EQ(output.err, "");
}

TEST_F(LoadTest, LoadPathsAreTriedInOrder) {
  TempDir first;
  TempDir second;
  first.write("sub/ktl-load-order.ktl", "\"first\"");
  second.write("sub/ktl-load-order.ktl", "\"second\"");
  DtlAddLoadPath((second.path() + "/").c_str());  // a trailing slash is not doubled
  DtlAddLoadPath(first.path().c_str());
  DtNotifyLevel = 2;
  DtlObjPtr result;
  auto output = captureOutput([&] { result = loadFile("sub/ktl-load-order.ktl"); });
  EXPECT_EQ(printed(result), "\"second\"");
  EXPECT_EQ(output.out, "Loading Config File: " + second.path() + "/sub/ktl-load-order.ktl\n");
}

TEST_F(LoadTest, ClearedLoadPathsAreNoLongerSearched) {
  TempDir dir;
  dir.write("ktl-load-cleared.ktl", "1");
  DtlAddLoadPath(dir.path().c_str());
  EXPECT_FALSE(loadFile("ktl-load-cleared.ktl").isNull());
  DtlClearLoadPaths();
  EXPECT_TRUE(theAdditionalLoadPaths.empty());
  auto output = captureOutput([&] { EXPECT_TRUE(loadFile("ktl-load-cleared.ktl").isNull()); });
  EXPECT_EQ(output.err, "Couldn't open ktl-load-cleared.ktl\n");
}

TEST_F(LoadTest, AnAbsoluteNameDoesNotUseTheLoadPaths) {
  TempDir dir;
  // Under the load path, "<dir>/" joined with "/<unique>/abs.ktl" would name this file.
  std::string unique = "ktl-abs-" + dir.base();
  dir.write(unique + "/abs.ktl", "1");
  DtlAddLoadPath(dir.path().c_str());
  EXPECT_FALSE(loadFile(unique + "/abs.ktl").isNull());  // relative: found there
  std::string absolute = "/" + unique + "/abs.ktl";
  DtlObjPtr result = DtlObjPtr::nil();
  auto output = captureOutput([&] { result = loadFile(absolute); });
  EXPECT_TRUE(result.isNull());
  EXPECT_EQ(output.err, "Couldn't open " + absolute + "\n");
}

TEST_F(LoadTest, AHaltStopsTheFileAndKeepsWhatRanBefore) {
  std::string path = ktltest::writeTempFile("(define a 1) (car 1) (define b 2)");
  DtlObjPtr result = DtlObjPtr::nil();
  auto output = captureOutput([&] { result = loadFile(path); });
  EXPECT_TRUE(result.isNull());
  EXPECT_TRUE(bound("a"));
  EXPECT_FALSE(bound("b"));
  std::string caught = exceptionText("(car 1)");
  EXPECT_NE(caught.find(haltMessage("car of non-cons")), std::string::npos);
  EXPECT_EQ(output.err, "Caught exception loading LISP file: " + caught + "\n");
  EXPECT_EQ(output.out, "");
}

TEST_F(LoadTest, AFileThatEndsInsideAnExpressionIsCaught) {
  std::string path = ktltest::writeTempFile("(define a 1)\n(define b");
  DtlObjPtr result = DtlObjPtr::nil();
  auto output = captureOutput([&] { result = loadFile(path); });
  EXPECT_TRUE(result.isNull());
  EXPECT_TRUE(bound("a"));
  EXPECT_EQ(output.err, "Caught exception loading LISP file: " + exceptionText("(define b") + "\n");
}

TEST_F(LoadTest, AFileOfCommentsAnswersNullQuietly) {
  std::string path = ktltest::writeTempFile("; nothing but\n; comments here\n");
  DtlObjPtr result = DtlObjPtr::nil();
  auto output = captureOutput([&] { result = loadFile(path); });
  EXPECT_TRUE(result.isNull());
  EXPECT_EQ(output.err, "");
  EXPECT_EQ(output.out, "");
  EXPECT_TRUE(loadFile(ktltest::writeTempFile("")).isNull());
}

TEST_F(LoadTest, HostVariablesAreCopiedBackAlsoAfterAFailedFile) {
  int x = 5;
  ASSERT_EQ(DtcRegister("x", &x, root, nullptr), 1);
  x = 6;
  EXPECT_EQ(printed(loadFile(ktltest::writeTempFile("(define seen x) (setqb x 7)"))), "x");
  EXPECT_EQ(show("seen"), "6");  // the host value reached the binding before the load
  EXPECT_EQ(x, 7);
  captureOutput(
      [&] { EXPECT_TRUE(loadFile(ktltest::writeTempFile("(setqb x 8) (car 1)")).isNull()); });
  EXPECT_EQ(x, 8);
}

TEST_F(LoadTest, HostVariablesStayAfterAFailedExpression) {
  int x = 5;
  ASSERT_EQ(DtcRegister("x", &x, root, nullptr), 1);
  captureOutput([&] { EXPECT_TRUE(loadExpr("(setqb x 8) (car 1)").isNull()); });
  EXPECT_EQ(x, 5);
  EXPECT_EQ(show("x"), "8");  // the binding changed; the host was not told
  EXPECT_EQ(printed(loadExpr("(setqb x 9)")), "x");
  EXPECT_EQ(x, 9);
}

TEST_F(LoadTest, HostVariablesAroundTheDirectoryForm) {
  TempDir dir;
  dir.write("ktl-load-dirs-params.ktl", "(setqb x 7) (car 1)");
  int x = 5;
  ASSERT_EQ(DtcRegister("x", &x, root, nullptr), 1);
  DtlObjPtr result;
  captureOutput([&] {
    result =
        DtcLoadLispFile(strings({dir.path()}), "ktl-load-dirs-params.ktl", root, root->params(), 1);
  });
  EXPECT_EQ(x, 7);
  EXPECT_EQ(result, DtlObjPtr::nil());  // failed everywhere: the list ran out
}

TEST_F(LoadTest, TheDirectoryFormDropsWhatEscapesTheSearch) {
  // A directory "list" that is no list halts in the search; the outer load drops the halt.
  DtlObjPtr result = DtlObjPtr::nil();
  auto output =
      captureOutput([&] { result = DtcLoadLispFile(DtlObjPtr(5), "f.ktl", root, nullptr, 1); });
  EXPECT_TRUE(result.isNull());
  EXPECT_EQ(output.err, "");
  EXPECT_EQ(initialMessage([&] { loadLispFile(DtlObjPtr(5), "f.ktl", root, 1); }),
            haltMessage("car of non-cons"));
}

// ---- the directory search --------------------------------------------------------------

TEST_F(LoadTest, TheDirectorySearchTakesTheFirstDirectoryThatLoads) {
  TempDir first;
  TempDir second;
  TempDir third;
  first.write("ktl-dirs.ktl", "; only a comment, so the search goes on\n");
  second.write("ktl-dirs.ktl", "\"second\"");
  third.write("ktl-dirs.ktl", "\"third\"");
  DtNotifyLevel = 2;
  DtlObjPtr result;
  auto output = captureOutput([&] {
    result =
        DtcLoadLispFile(strings({"/nonexistent", first.path(), second.path() + "/", third.path()}),
                        "ktl-dirs.ktl", root, nullptr, 1);
  });
  EXPECT_EQ(printed(result), "\"second\"");
  EXPECT_EQ(output.out, "Loading Config File: " + first.path() +
                            "/ktl-dirs.ktl\n"
                            "Loading Config File: " +
                            second.path() + "/ktl-dirs.ktl\n");
  EXPECT_EQ(output.err, "");  // the single tries don't warn
}

TEST_F(LoadTest, AnExhaustedDirectoryListAnswersNil) {
  DtlObjPtr result;
  auto output = captureOutput([&] {
    result = DtcLoadLispFile(strings({"/nonexistent"}), "ktl-none.ktl", root, nullptr, 1);
  });
  EXPECT_FALSE(result.isNull());
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "Couldn't find ktl-none.ktl\n");
  output = captureOutput(
      [&] { result = DtcLoadLispFile(DtlObjPtr::nil(), "ktl-none.ktl", root, nullptr, 0); });
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "");
}

TEST_F(LoadTest, AnEmptyDirectoryEntryIsTheNameAlone) {
  std::string path = ktltest::writeTempFile("\"alone\"");
  EXPECT_EQ(printed(loadLispFile(strings({""}), path.c_str(), root, 1)), "\"alone\"");
}

TEST_F(LoadTest, EntriesThatAreNotStringsArePassedOver) {
  TempDir dir;
  dir.write("ktl-dirs-kinds.ktl", "7");
  DtlObjPtr dirs = DtcCons(DtlObjPtr(3), strings({dir.path()}));
  EXPECT_EQ(printed(loadLispFile(dirs, "ktl-dirs-kinds.ktl", root, 1)), "7");
}

// ---- DtcLoadLispExpr and DtcLoadLispFileOrExpr ------------------------------------------

TEST_F(LoadTest, AnExpressionAnswersItsLastValue) {
  EXPECT_EQ(printed(loadExpr("(define a 2) (+ a 3)")), "5");
  EXPECT_TRUE(loadExpr("").isNull());
  EXPECT_TRUE(loadExpr("; a comment").isNull());
}

TEST_F(LoadTest, AFailedExpressionIsCaught) {
  DtlObjPtr result = DtlObjPtr::nil();
  auto output = captureOutput([&] { result = loadExpr("(define a 1) (car 1) (define b 2)"); });
  EXPECT_TRUE(result.isNull());
  EXPECT_TRUE(bound("a"));
  EXPECT_FALSE(bound("b"));
  EXPECT_EQ(output.err,
            "Caught exception loading LISP expression: " + exceptionText("(car 1)") + "\n");
}

TEST_F(LoadTest, AnArgumentInParenthesesIsAnExpression) {
  char arg[] = "(define y (+ 1 2))";
  EXPECT_EQ(printed(DtcLoadLispFileOrExpr(arg, root, root->params(), 1)), "y");
  EXPECT_EQ(show("y"), "3");
  EXPECT_STREQ(arg, "(define y (+ 1 2))");
}

TEST_F(LoadTest, NameEqualsValueSetsABoundName) {
  eval("(define x 1) (define s \"\")");
  char arg[] = "x=5";
  EXPECT_EQ(printed(DtcLoadLispFileOrExpr(arg, root, root->params(), 1)), "x");
  EXPECT_EQ(show("x"), "5");
  EXPECT_STREQ(arg, "x 5");   // the caller's text is changed in place
  char text[] = "s=\"a=b\"";  // the value is KTL text: a string needs its quotes
  DtcLoadLispFileOrExpr(text, root, root->params(), 1);
  EXPECT_STREQ(text, "s \"a=b\"");  // only the first "=" is replaced
  EXPECT_EQ(show("s"), "\"a=b\"");
}

TEST_F(LoadTest, NameEqualsValueOnAnUnboundNameOnlyWarns) {
  char arg[] = "x=5";
  DtlObjPtr result;
  auto output = captureOutput([&] { result = DtcLoadLispFileOrExpr(arg, root, nullptr, 1); });
  EXPECT_EQ(output.err, "Lisp Warning: can't set unbound variable: x\n");
  EXPECT_EQ(output.out, "");
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_FALSE(bound("x"));
}

TEST_F(LoadTest, NameEqualsValueReachesARegisteredVariable) {
  int port = 80;
  ASSERT_EQ(DtcRegister("port", &port, root, nullptr), 1);
  char arg[] = "port=8080";
  DtcLoadLispFileOrExpr(arg, root, root->params(), 1);
  EXPECT_EQ(port, 8080);
}

TEST_F(LoadTest, AnyOtherArgumentIsAFileName) {
  std::string path = ktltest::writeTempFile("(define from-file 1) 11");
  std::vector<char> arg(path.begin(), path.end());
  arg.push_back('\0');
  EXPECT_EQ(printed(DtcLoadLispFileOrExpr(arg.data(), root, root->params(), 1)), "11");
  EXPECT_TRUE(bound("from-file"));
  char missing[] = "ktl-no-such-file.ktl";
  auto output = captureOutput(
      [&] { EXPECT_TRUE(DtcLoadLispFileOrExpr(missing, root, nullptr, 1).isNull()); });
  EXPECT_EQ(output.err, "Couldn't open ktl-no-such-file.ktl\n");
}

// ---- the primitive load ----------------------------------------------------------------

TEST_F(LoadTest, LoadOfAMissingFileWarnsAndYieldsNil) {
  DtlObjPtr result;
  auto output = captureOutput([&] { result = eval("(load \"nosuch\")"); });
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "Couldn't open nosuch\n");
}

TEST_F(LoadTest, LoadOfANumberComplainsAndYieldsNil) {
  DtlObjPtr result;
  auto output = captureOutput([&] { result = eval("(load 5)"); });
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "Lisp Error: Wrong type arg to DtlLoad 5");
  EXPECT_EQ(output.out, "");
  output = captureOutput([&] { result = eval("(load '(\"dir\") 5)"); });
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "Lisp Error: Wrong type arg to DtlLoad (\"dir\")");
  DtNotifyLevel = -1;
  output = captureOutput([&] { result = eval("(load 5)"); });
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "");
}

TEST_F(LoadTest, LoadCountsItsArguments) {
  EXPECT_EQ(initialMessage([&] { eval("(load)"); }), haltMessage("Wrong number of args to load"));
  EXPECT_EQ(initialMessage([&] { eval("(load \"a\" \"b\" \"c\")"); }),
            haltMessage("Wrong number of args to load"));
  // A directory list with no name behind it.
  EXPECT_EQ(initialMessage([&] { eval("(load '(\"dir\"))"); }), haltMessage("car of non-cons"));
}

TEST_F(LoadTest, LoadYieldsTheFileValue) {
  std::string path = ktltest::writeTempFile("(define loaded 1) \"done\"");
  EXPECT_EQ(show("(load \"" + path + "\")"), "\"done\"");
  EXPECT_EQ(show("(load \"" + path + "\" 7)"), "\"done\"");  // the second argument is ignored
  EXPECT_EQ(eval("(load \"" + ktltest::writeTempFile("; empty") + "\")"), DtlObjPtr::nil());
}

TEST_F(LoadTest, LoadUsesTheLoadPaths) {
  TempDir dir;
  dir.write("ktl-load-primitive.ktl", "(define through-path 3)");
  DtlAddLoadPath(dir.path().c_str());
  eval("(load \"ktl-load-primitive.ktl\")");
  EXPECT_EQ(show("through-path"), "3");
}

TEST_F(LoadTest, LoadSearchesAListOfDirectories) {
  TempDir first;
  TempDir second;
  second.write("ktl-load-list.ktl", "(define found-in \"second\") 12");
  std::string text =
      "(load (list \"" + first.path() + "\" \"" + second.path() + "\") \"ktl-load-list.ktl\")";
  EXPECT_EQ(show(text), "12");
  EXPECT_EQ(show("found-in"), "\"second\"");
  DtlObjPtr result;
  auto output = captureOutput(
      [&] { result = eval("(load (list \"" + first.path() + "\") \"ktl-load-list.ktl\")"); });
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "Couldn't find ktl-load-list.ktl\n");
}

TEST_F(LoadTest, LoadInsideAProcedureDefinesIntoItsFrame) {
  std::string path = ktltest::writeTempFile("(define inner 5)");
  eval("(define (f) (load \"" + path + "\") inner)");
  EXPECT_EQ(show("(f)"), "5");
  EXPECT_FALSE(bound("inner"));
  EXPECT_EQ(initialMessage([&] { eval("inner"); }), haltMessage("Unbound symbol inner"));
}

TEST_F(LoadTest, AFailureInANestedLoadDoesNotFailTheOuterFile) {
  std::string inner = ktltest::writeTempFile("(define inner-ran 1) (car 1) (define inner-after 1)");
  std::string outer = ktltest::writeTempFile("(define before 1)\n(define got (load \"" + inner +
                                             "\"))\n(define after 2)\nafter\n");
  DtlObjPtr result;
  auto output = captureOutput([&] { result = loadFile(outer); });
  EXPECT_EQ(printed(result), "2");
  EXPECT_EQ(eval("got"), DtlObjPtr::nil());
  EXPECT_TRUE(bound("before"));
  EXPECT_TRUE(bound("inner-ran"));
  EXPECT_FALSE(bound("inner-after"));
  EXPECT_TRUE(bound("after"));
  // The nested evaluation carries one more level of propagation than a top-level one.
  std::string prefix = "Caught exception loading LISP file: ";
  EXPECT_EQ(output.err.rfind(prefix, 0), 0u);
  EXPECT_EQ(output.err.find(prefix, 1), std::string::npos);  // caught once, by the inner load
  EXPECT_NE(output.err.find(haltMessage("car of non-cons")), std::string::npos);
}

TEST_F(LoadTest, TheInnerLoaderWarnsAndAnswersNull) {
  auto output =
      captureOutput([&] { EXPECT_TRUE(loadLispFile("ktl-inner-missing.ktl", root, 1).isNull()); });
  EXPECT_EQ(output.err, "Couldn't open ktl-inner-missing.ktl\n");
  output = captureOutput([&] {
    EXPECT_EQ(loadLispFile(DtlObjPtr::nil(), "ktl-inner-missing.ktl", root, 1), DtlObjPtr::nil());
  });
  EXPECT_EQ(output.err, "Couldn't find ktl-inner-missing.ktl\n");
}
