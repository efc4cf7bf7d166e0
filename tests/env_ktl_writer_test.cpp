// The KTL text form of the tree, written byte for byte, and read back: what comes back and
// what is lost.
#include <gtest/gtest.h>
#include <ktl/envKtlReader.h>
#include <ktl/envKtlWriter.h>
#include <support/capture.h>
#include <support/files.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

using namespace KORRti;
using ktltest::writeTempFile;

using ktltest::fileText;

namespace {

// Exposes the indentation, which must be back at 0 after each file.
class ProbedWriter : public DtEnvKTLWriter {
 public:
  std::int32_t currentDepth() const { return depth; }
  bool writing() const { return env != nullptr; }
};

std::string written(DtEnvironment& env) {
  const std::string path = writeTempFile("", ".ktl");
  ProbedWriter writer;
  EXPECT_TRUE(writer.writeFile(env, path.c_str()));
  EXPECT_EQ(0, writer.currentDepth());
  EXPECT_FALSE(writer.writing());
  return fileText(path);
}

DtEnvironment readBack(const std::string& text) {
  DtEnvKTLReader reader;
  bool ok = false;
  DtEnvironment env = reader.readFile(writeTempFile(text).c_str(), ok);
  EXPECT_TRUE(ok);
  return env;
}

std::string printedTree(const DtEnvironment& env, bool showComments) {
  std::ostringstream out;
  env.print(out, env.root(), "", showComments);
  return out.str();
}

}  // namespace

TEST(EnvKtlWriter, ARootAloneIsALineEndTheNameAndTheClosingLine) {
  DtEnvironment env;
  EXPECT_EQ("\n(root \n)", written(env));
}

TEST(EnvKtlWriter, TheDocumentedExample) {
  DtEnvironment env;
  env.addComment("a comment");
  env.addAttribute("speed", "3");
  DtEnvValueSP car = env.addObject("car", "vehicle");
  car->setValue("fast");
  env.addAttribute("seats", "4", car);
  EXPECT_EQ(
      "\n"
      "(root \n"
      ";a comment\n"
      "   (speed \"3\")\n"
      "   (car vehicle( \"fast\" )\n"
      "      (seats \"4\")\n"
      "   )\n"
      ")",
      written(env));
}

TEST(EnvKtlWriter, AnObjectNamedAsItsTypeWithAValue) {
  DtEnvironment env;
  DtEnvValueSP item = env.addObject("name");
  item->setValue("v");
  EXPECT_EQ("\n(root \n   (name ( \"v\" )\n   )\n)", written(env));
}

TEST(EnvKtlWriter, AnObjectAtDepthTwoIsIndentedSixBlanksAndClosesInItsColumn) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  env.addObject("b", "B", a);
  EXPECT_EQ(
      "\n"
      "(root \n"
      "   (a \n"
      "      (b B\n"
      "      )\n"
      "   )\n"
      ")",
      written(env));
}

TEST(EnvKtlWriter, ANamedListClosesWithNoLineEndBeforeItsParenthesis) {
  DtEnvironment env;
  DtEnvValueSP list = env.addAttribute("a", "1");
  env.addAttribute("inner", "2", list);
  env.addComment("note", list);
  // Its children stay inside its parentheses, at its own depth.
  EXPECT_EQ("\n(root \n   (a \"1\"\n   (inner \"2\")\n;note)\n)", written(env));
}

TEST(EnvKtlWriter, BareListsNativeValuesAndCommentsWithoutIndentation) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  auto bare = std::make_shared<DtEnvList>("bare");
  bare->append(std::make_shared<DtEnvNamedList>("hidden", "x"));
  DtEnvList::castToList(a)->append(bare);
  int payload = 0;
  env.addNativeValue(DtNativeValue::create("MyType", &payload), a);
  env.addComment("deep", a);
  EXPECT_EQ("\n(root \n   (a \"bare\"\n;MyType\n;deep\n   )\n)", written(env));
}

TEST(EnvKtlWriter, ValuesAreWrittenExpanded) {
  setenv("KTL_ENV_KTL_WRITER", "expanded", 1);
  DtEnvironment env;
  env.addAttribute("a", "$(KTL_ENV_KTL_WRITER)");
  EXPECT_EQ("\n(root \n   (a \"expanded\")\n)", written(env));
}

TEST(EnvKtlWriter, AnEmptyRootIsRefused) {
  DtEnvironment env{DtEnvValueSP()};
  const std::string path = writeTempFile("untouched", ".ktl");
  ProbedWriter writer;
  EXPECT_FALSE(writer.writeFile(env, path.c_str()));
  EXPECT_FALSE(writer.writing());
  EXPECT_EQ("untouched", fileText(path));
}

TEST(EnvKtlWriter, AFileThatCantBeOpenedIsNotNoticed) {
  DtEnvironment env;
  DtEnvKTLWriter writer;
  EXPECT_TRUE(writer.writeFile(env, "/nonexistent/dir/out.ktl"));
}

TEST(EnvKtlWriter, TheWriterCanBeUsedAgain) {
  DtEnvironment first;
  DtEnvironment second("other");
  const std::string a = writeTempFile("", ".ktl");
  const std::string b = writeTempFile("", ".ktl");
  DtEnvKTLWriter writer;
  EXPECT_TRUE(writer.writeFile(first, a.c_str()));
  EXPECT_TRUE(writer.writeFile(second, b.c_str()));
  EXPECT_EQ("\n(root \n)", fileText(a));
  EXPECT_EQ("\n(other \n)", fileText(b));
}

TEST(EnvKtlRoundTrip, ObjectsNamedListsAndObjectValuesReadBackTheSame) {
  DtEnvironment env("config");
  DtEnvObject::castToObject(env.root())->setType("settings");
  env.addAttribute("speed", "3");
  DtEnvValueSP car = env.addObject("car", "vehicle");
  car->setValue("fast");
  env.addAttribute("seats", "4", car);
  DtEnvValueSP wheel = env.addObject("wheel", car);
  env.addAttribute("size", "16", wheel);
  env.addObject("empty");

  DtEnvironment back = readBack(written(env));
  EXPECT_EQ(printedTree(env, true), printedTree(back, true));
  DtEnvObject* root = DtEnvObject::castToObject(back.root());
  EXPECT_STREQ("config", root->name().c_str());
  EXPECT_STREQ("settings", root->type().c_str());
}

TEST(EnvKtlRoundTrip, TheDocumentedLosses) {
  setenv("KTL_ENV_KTL_TRIP", "expanded", 1);
  DtEnvironment env;
  env.addComment("a comment");
  DtEnvValueSP ref = env.addAttribute("ref", "$(KTL_ENV_KTL_TRIP)");
  DtEnvValueSP list = env.addAttribute("list", "1");
  env.addAttribute("child", "2", list);
  int payload = 0;
  env.addNativeValue(DtNativeValue::create("MyType", &payload), env.root());
  DtEnvValueSP obj = env.addObject("obj", "T");
  obj->setValue("$(KTL_ENV_KTL_TRIP)");

  DtEnvironment back = readBack(written(env));
  // Comments and native values don't come back, nor the children of a named list; the
  // references come back expanded for good.
  EXPECT_EQ(
      "class root root Value= \n"
      "   ref Value= expanded\n"
      "   list Value= 1\n"
      "   class T obj Value= expanded\n",
      printedTree(back, true));
  DtEnvValueSP backRef = back.getNamedList("ref");
  ASSERT_TRUE(backRef);
  EXPECT_STREQ("expanded", backRef->unmodifiedValue().c_str());
  EXPECT_STREQ("$(KTL_ENV_KTL_TRIP)", ref->unmodifiedValue().c_str());
}

TEST(EnvKtlRoundTrip, AQuoteInAValueDoesNotReadBackTheSame) {
  DtEnvironment env;
  env.addAttribute("a", "say \"hi\"");
  DtEnvironment back = readBack(written(env));
  DtEnvValueSP a = back.getNamedList("a");
  ASSERT_TRUE(a);
  EXPECT_STRNE("say \"hi\"", a->value().c_str());
}

TEST(EnvKtlRoundTrip, ALargeTreeReadsBack) {
  DtEnvironment env("big");
  for (int i = 0; i < 200; ++i) {
    DtEnvValueSP o = env.addObject(DtString(("item" + std::to_string(i)).c_str()), "Item");
    o->setValue(DtString(std::to_string(i).c_str()));
    for (int j = 0; j < 5; ++j)
      env.addAttribute(DtString(("k" + std::to_string(j)).c_str()),
                       DtString(std::to_string(i * j).c_str()), o);
  }
  DtEnvironment back = readBack(written(env));
  EXPECT_EQ(printedTree(env, true), printedTree(back, true));
}
