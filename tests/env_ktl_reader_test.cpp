// The KTL text form of the tree, read: the shapes of a form, the root, values, the error lines
// of an element that is neither string nor symbol, and failures.
#include <gtest/gtest.h>
#include <ktl/envKtlReader.h>
#include <ktl/list.h>
#include <ktl/null.h>
#include <support/capture.h>
#include <util/dtException.h>

#include <string>
#include <vector>

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::writeTempFile;

namespace {

DtEnvironment readText(const std::string& text, bool* okOut = nullptr) {
  DtEnvKTLReader reader;
  bool local = false;
  return reader.readFile(writeTempFile(text).c_str(), okOut ? *okOut : local);
}

DtEnvObject* object(const DtEnvValueSP& node) {
  return DtEnvObject::castToObject(node);
}

std::vector<DtEnvValueSP> children(const DtEnvValueSP& node) {
  std::vector<DtEnvValueSP> result;
  DtEnvList* list = DtEnvList::castToList(node);
  if (!list) return result;
  for (DtEnvValueSP c = list->first(); c; c = list->next(c)) result.push_back(c);
  return result;
}

// Exposes the tree under construction, so that processObject can be driven directly.
class OpenReader : public DtEnvKTLReader {
 public:
  void start() {
    env = new DtEnvironment();
    current = env->root();
  }
  DtEnvironment* tree() { return env; }
};

}  // namespace

TEST(EnvKtlReader, RootWithTwoNamedLists) {
  bool ok = false;
  DtEnvironment env = readText("(config (a \"1\") (b \"2\"))", &ok);
  EXPECT_TRUE(ok);
  DtEnvObject* root = object(env.root());
  ASSERT_NE(nullptr, root);
  EXPECT_STREQ("config", root->name().c_str());
  EXPECT_STREQ("config", root->type().c_str());
  std::vector<DtEnvValueSP> nodes = children(env.root());
  ASSERT_EQ(2u, nodes.size());
  EXPECT_EQ(3u, nodes[0]->format());
  EXPECT_STREQ("a", DtEnvNamedList::castToNamedList(nodes[0])->name().c_str());
  EXPECT_STREQ("1", nodes[0]->value().c_str());
  EXPECT_STREQ("b", DtEnvNamedList::castToNamedList(nodes[1])->name().c_str());
  EXPECT_STREQ("2", nodes[1]->value().c_str());
  EXPECT_EQ(env.root(), nodes[0]->parent());
  EXPECT_EQ(nodes[1], root->attribute("b"));
}

TEST(EnvKtlReader, RootWithNameAndType) {
  DtEnvironment env = readText("(config settings (a \"1\"))");
  DtEnvObject* root = object(env.root());
  ASSERT_NE(nullptr, root);
  EXPECT_STREQ("config", root->name().c_str());
  EXPECT_STREQ("settings", root->type().c_str());
  ASSERT_EQ(1u, children(env.root()).size());
  EXPECT_STREQ("1", root->attributeValue("a").c_str());
}

TEST(EnvKtlReader, ObjectWithNameTypeAndValue) {
  DtEnvironment env = readText("(config (item thing (\"v\")))");
  DtEnvValueSP item = env.getObject("item", "thing");
  ASSERT_TRUE(item);
  EXPECT_STREQ("v", item->value().c_str());
  EXPECT_EQ(env.root(), item->parent());
  EXPECT_TRUE(children(item).empty());
}

TEST(EnvKtlReader, ObjectWhoseTypeIsItsName) {
  DtEnvironment env = readText("(config (wheel (size \"16\")) (car vehicle (wheel)))");
  DtEnvValueSP wheel = env.getObject("wheel", "wheel");
  ASSERT_TRUE(wheel);
  EXPECT_STREQ("16", object(wheel)->attributeValue("size").c_str());
  DtEnvValueSP car = env.getObject("car", "vehicle");
  ASSERT_TRUE(car);
  std::vector<DtEnvValueSP> inCar = children(car);
  ASSERT_EQ(1u, inCar.size());
  EXPECT_TRUE(DtEnvObject::isObject(inCar[0], "wheel", "wheel"));
  EXPECT_EQ(car, inCar[0]->parent());
}

TEST(EnvKtlReader, ChildrenOfANamedListAreLost) {
  DtEnvironment env = readText("(config (a \"1\" (b \"2\")))");
  std::vector<DtEnvValueSP> nodes = children(env.root());
  ASSERT_EQ(1u, nodes.size());
  EXPECT_STREQ("1", nodes[0]->value().c_str());
  EXPECT_TRUE(children(nodes[0]).empty());
  EXPECT_FALSE(env.getNamedList("b"));
}

TEST(EnvKtlReader, AnElementThatIsNeitherStringNorSymbolIsReportedAndReadingGoesOn) {
  bool ok = false;
  DtEnvironment env;
  auto captured = captureOutput([&] { env = readText("(config (a \"1\") (1 2) (b \"2\"))", &ok); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("DtReaderWriter: error in data stream\n1", captured.err);
  EXPECT_EQ("", captured.out);
  std::vector<DtEnvValueSP> nodes = children(env.root());
  ASSERT_EQ(2u, nodes.size());
  EXPECT_STREQ("2", object(env.root())->attributeValue("b").c_str());
}

TEST(EnvKtlReader, AnUnprintableHeadWritesTheSecondErrorLine) {
  OpenReader reader;
  reader.start();
  auto captured =
      captureOutput([&] { reader.processObject(DtcCons(DtlObjPtr(), DtlObjPtr::nil())); });
  EXPECT_EQ("DtReaderWriter: error in data stream\nDtReaderWriter: error DtcErrPrint\n",
            captured.err);
  EXPECT_TRUE(children(reader.tree()->root()).empty());
}

TEST(EnvKtlReader, ProcessObjectOutsideAReadDoesNothing) {
  DtEnvKTLReader reader;
  auto captured = captureOutput([&] { reader.processObject(DtlObjPtr()); });
  EXPECT_EQ("", captured.err);
}

TEST(EnvKtlReader, ASecondTopLevelFormIsIgnored) {
  DtEnvironment env = readText("(first (a \"1\"))\n(second (b \"2\"))\nnot even (read");
  EXPECT_STREQ("first", object(env.root())->name().c_str());
  EXPECT_EQ(1u, children(env.root()).size());
  EXPECT_FALSE(env.getNamedList("b"));
}

TEST(EnvKtlReader, AnOutermostNamedListOrValueLeavesTheDefaultRoot) {
  for (const char* text : {"(a \"1\")", "(\"text\")"}) {
    bool ok = false;
    DtEnvironment env = readText(text, &ok);
    EXPECT_TRUE(ok) << text;
    DtEnvObject* root = object(env.root());
    ASSERT_NE(nullptr, root) << text;
    EXPECT_STREQ("root", root->name().c_str()) << text;
    EXPECT_STREQ("root", root->type().c_str()) << text;
    EXPECT_TRUE(root->value().isEmpty()) << text;
    EXPECT_TRUE(children(env.root()).empty()) << text;
  }
}

TEST(EnvKtlReader, ASymbolSecondIsAlwaysATypeAndABareSymbolChildHalts) {
  // (a b c): an object a of type b, whose element c is no list.
  bool ok = true;
  std::string message = initialMessage([&] { readText("(config (a b c))", &ok); });
  EXPECT_EQ(haltMessage("car of non-cons"), message);
  EXPECT_FALSE(ok);
}

TEST(EnvKtlReader, AStringHeadIsAValueWhateverFollows) {
  DtEnvironment env = readText("(config (item (\"v\" (x \"1\") y)))");
  DtEnvValueSP item = env.getObject("item", "item");
  ASSERT_TRUE(item);
  EXPECT_STREQ("v", item->value().c_str());
  EXPECT_TRUE(children(item).empty());
}

TEST(EnvKtlReader, CommentsAreDroppedAndNothingIsEvaluated) {
  DtEnvironment env = readText(
      "; a comment line\n"
      "(config ; trailing\n"
      "  (speed \"3\")\n"
      "  (sum (\"(+ 1 2)\")))\n");
  EXPECT_EQ(2u, children(env.root()).size());
  DtEnvValueSP sum = env.getObject("sum", "sum");
  ASSERT_TRUE(sum);
  EXPECT_STREQ("(+ 1 2)", sum->value().c_str());
}

TEST(EnvKtlReader, ValuesExpandReferences) {
  setenv("KTL_ENV_KTL_READER", "expanded", 1);
  DtEnvironment env =
      readText("(config (a \"x$(KTL_ENV_KTL_READER)y\") (\"$(KTL_ENV_KTL_READER)\"))");
  DtEnvValueSP a = env.getNamedList("a");
  ASSERT_TRUE(a);
  EXPECT_STREQ("xexpandedy", a->value().c_str());
  EXPECT_STREQ("x$(KTL_ENV_KTL_READER)y", a->unmodifiedValue().c_str());
  EXPECT_STREQ("expanded", env.root()->value().c_str());
}

TEST(EnvKtlReader, AMissingFileGivesTheDefaultRootWithOkFalse) {
  DtEnvKTLReader reader;
  bool ok = true;
  DtEnvironment env = reader.readFile("/nonexistent/dir/config.ktl", ok);
  EXPECT_FALSE(ok);
  DtEnvObject* root = object(env.root());
  ASSERT_NE(nullptr, root);
  EXPECT_STREQ("root", root->name().c_str());
  EXPECT_TRUE(children(env.root()).empty());
}

TEST(EnvKtlReader, AnEmptyFileOrABareAtomHalts) {
  bool ok = true;
  EXPECT_EQ(haltMessage("car of non-cons"), initialMessage([&] { readText("", &ok); }));
  EXPECT_FALSE(ok);
  EXPECT_EQ(haltMessage("car of non-cons"), initialMessage([&] { readText("atom", &ok); }));
  EXPECT_EQ(haltMessage("car of non-cons"), initialMessage([&] { readText("()", &ok); }));
}

TEST(EnvKtlReader, TextTheKtlReaderRefusesHalts) {
  bool ok = true;
  EXPECT_EQ(haltMessage("EOF while reading string"),
            initialMessage([&] { readText("(config (a \"1", &ok); }));
  EXPECT_FALSE(ok);
}

TEST(EnvKtlReader, TheReaderCanBeUsedAgainAfterAFailure) {
  DtEnvKTLReader reader;
  bool ok = true;
  EXPECT_THROW(reader.readFile(writeTempFile("(a b c)").c_str(), ok), DtException);
  EXPECT_FALSE(ok);
  DtEnvironment env = reader.readFile(writeTempFile("(again (x \"1\"))").c_str(), ok);
  EXPECT_TRUE(ok);
  EXPECT_STREQ("again", object(env.root())->name().c_str());
}

TEST(EnvKtlReader, NumbersAsValuesAreErrorsButSymbolsNameObjects) {
  // A value must be a string: (speed 3) is an object "speed" whose element 3 is no list.
  bool ok = true;
  EXPECT_EQ(haltMessage("car of non-cons"),
            initialMessage([&] { readText("(config (speed 3))", &ok); }));
}
