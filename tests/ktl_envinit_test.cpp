// The language in a fresh root frame: constants, special forms and compiled functions.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"

using namespace KORRti;
using ktltest::evalText;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::printed;

namespace {

// The names of the language, in the order they are registered.
const std::vector<std::string> kSpecialForms = {"quote",    "define", "setq", "lambda", "let",
                                                "sequence", "if",     "cond", "set!",   "setqb"};
const std::vector<std::string> kCompiled = {"load",
                                            "+",
                                            "-",
                                            "*",
                                            "/",
                                            "=",
                                            ">",
                                            ">=",
                                            "<",
                                            "<=",
                                            "abort",
                                            "abs",
                                            "and",
                                            "append",
                                            "assoc",
                                            "assv",
                                            "assq",
                                            "car",
                                            "cdr",
                                            "cons",
                                            "cos",
                                            "describe",
                                            "bindings",
                                            "eq?",
                                            "equal?",
                                            "eq",
                                            "equal",
                                            "eval",
                                            "exit",
                                            "format",
                                            "frame-bindings",
                                            "frame-bound?",
                                            "frame-parent",
                                            "getenv",
                                            "length",
                                            "list",
                                            "list?",
                                            "logior",
                                            "mem",
                                            "make-frame",
                                            "not",
                                            "null?",
                                            "nullp",
                                            "number?",
                                            "or",
                                            "plus",
                                            "popen",
                                            "prin1",
                                            "putenv",
                                            "reverse",
                                            "sin",
                                            "string-append",
                                            "string-equal",
                                            "string?",
                                            "the-frame",
                                            "path-cross",
                                            "system",
                                            "terpri",
                                            "print-registered",
                                            "string->number",
                                            "number->string"};

class EnvInitTest : public ::testing::Test {
 protected:
  void SetUp() override { DtcGlobalEnvInit(root); }
  void TearDown() override { ktltest::destroyLanguageFrame(root); }

  DtlObjPtr eval(std::string const& text) { return evalText(text, root); }
  std::string show(std::string const& text) { return printed(eval(text)); }
  std::string error(std::string const& text) {
    return initialMessage([&] { eval(text); });
  }
  DtlObjPtr valueOf(std::string const& name) { return root->frameBindings()->lookup(name.c_str()); }

  DtlObjPtr root{DtlFrameTag};
};

}  // namespace

TEST_F(EnvInitTest, SeventyOnePrimitives) {
  EXPECT_EQ(kSpecialForms.size(), 10u);
  EXPECT_EQ(kCompiled.size(), 61u);
  for (auto const& name : kSpecialForms) {
    DtlObjPtr value = valueOf(name);
    ASSERT_FALSE(value.isNull()) << name;
    EXPECT_EQ(value->tag(), DtlSpecialFormTag) << name;
    EXPECT_STREQ(value->fcnPname(), name.c_str());
  }
  for (auto const& name : kCompiled) {
    DtlObjPtr value = valueOf(name);
    ASSERT_FALSE(value.isNull()) << name;
    EXPECT_EQ(value->tag(), DtlCompiledCTag) << name;
    EXPECT_STREQ(value->fcnPname(), name.c_str());
  }
}

TEST_F(EnvInitTest, RegistrationOrderDecidesTheOrderWithinABucket) {
  // Walking a bucket gives the newest first: the reverse of the registration order.
  std::vector<std::string> all = {"*unbound*", "nil", "t", "eof"};
  all.insert(all.end(), kSpecialForms.begin(), kSpecialForms.end());
  all.insert(all.end(), kCompiled.begin(), kCompiled.end());
  std::map<int, std::vector<std::string>> expected;
  for (auto const& name : all) {
    auto& chain = expected[bucket_number(name.c_str())];
    chain.insert(chain.begin(), name);
  }
  for (auto const& [bucket, names] : expected) {
    std::vector<std::string> found;
    for (symbol_entry* entry = root->frameBindings()->bucket(bucket); entry; entry = entry->next) {
      found.push_back(entry->symbol->pname());
    }
    EXPECT_EQ(found, names) << "bucket " << bucket;
  }
}

TEST_F(EnvInitTest, TheRootHasNoParent) {
  EXPECT_EQ(error("(frame-parent (the-frame))"),
            haltMessage("frame-parent called on frame without parent"));
  DtlObjPtr child(DtlFrameTag);
  child->setFrameParent(root);
  DtcGlobalEnvInit(child);
  EXPECT_TRUE(child->frameParent().isNull());
  ktltest::destroyLanguageFrame(child);
}

TEST_F(EnvInitTest, Constants) {
  EXPECT_EQ(show("t"), "t");
  EXPECT_EQ(eval("t"), DtlObjPtr::t());
  EXPECT_FALSE(DtcIntern("t", root) == DtlObjPtr::t());
  EXPECT_EQ(show("nil"), "nil");
  EXPECT_EQ(eval("nil"), DtlObjPtr::nil());
  EXPECT_EQ(eval("eof"), DtlObjPtr::nil());
  EXPECT_EQ(show("'nil"), "nil");
  EXPECT_EQ(eval("'nil")->tag(), DtlSymbolTag);
  EXPECT_EQ(eval("(null? 'nil)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(not nil)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(eq t t)"), DtlObjPtr::t());
}

TEST_F(EnvInitTest, UnboundMarkerIsBoundToItself) {
  EXPECT_EQ(valueOf("*unbound*"), DtlObjPtr::unbound());
  EXPECT_EQ(error("*unbound*"), haltMessage("Unbound symbol *unbound*"));
}

TEST_F(EnvInitTest, NamesThatShareAHandler) {
  EXPECT_EQ(valueOf("plus")->fcnCode(), valueOf("+")->fcnCode());
  EXPECT_EQ(valueOf("null?")->fcnCode(), valueOf("not")->fcnCode());
  EXPECT_EQ(valueOf("nullp")->fcnCode(), valueOf("not")->fcnCode());
  EXPECT_EQ(valueOf("eq")->fcnCode(), valueOf("eq?")->fcnCode());
  EXPECT_EQ(valueOf("equal")->fcnCode(), valueOf("equal?")->fcnCode());
  EXPECT_EQ(valueOf("define")->fcnCode(), valueOf("setq")->fcnCode());
  EXPECT_EQ(valueOf("set!")->fcnCode(), valueOf("setqb")->fcnCode());
  EXPECT_EQ(show("(plus 1 2)"), "3");
}

TEST_F(EnvInitTest, LocativepHasNoName) {
  EXPECT_TRUE(valueOf("locative?").isNull());
  EXPECT_TRUE(valueOf("locativep").isNull());
  DtcInternCompiledC("locative?", DtlLocativep, root);
  EXPECT_EQ(eval("(locative? 1)"), DtlObjPtr::nil());
}

TEST_F(EnvInitTest, RunningItTwiceReplacesEachPrimitive) {
  DtlObjPtr car = valueOf("car");
  DtcGlobalEnvInit(root);
  EXPECT_FALSE(valueOf("car") == car);
  EXPECT_EQ(valueOf("car")->fcnCode(), car->fcnCode());
  EXPECT_EQ(show("(car '(1))"), "1");
}

TEST_F(EnvInitTest, AConfigurationRunsInTheLanguage) {
  eval("(define (square x) (* x x))");
  eval("(define (sum l) (if (null? l) 0 (+ (car l) (sum (cdr l)))))");
  EXPECT_EQ(show("(sum (list (square 2) (square 3)))"), "13");
  EXPECT_EQ(
      show("(let ((s (string-append \"a\" \"b\"))) (cond ((string-equal s \"ab\") 'yes) (t 'no)))"),
      "yes");
}

TEST(AppEnvTest, InitAppEnvReadiesTheXmlParser) {
  initAppEnv();
  initAppEnv();  // a second call is harmless
  const char document[] = "<config><value>1</value></config>";
  xmlDocPtr doc = xmlReadMemory(document, sizeof document - 1, "config.xml", nullptr, 0);
  ASSERT_NE(doc, nullptr);
  EXPECT_TRUE(xmlStrEqual(xmlDocGetRootElement(doc)->name, BAD_CAST "config"));
  xmlFreeDoc(doc);
}
