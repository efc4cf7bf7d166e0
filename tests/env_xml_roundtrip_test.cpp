// The XML form against itself: documents read into a tree and written back, trees written and
// read back, and the losses that the form has by design.
#include <gtest/gtest.h>
#include <ktl/envXmlReader.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <support/capture.h>
#include <support/files.h>

#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::fileText;
using ktltest::TempDir;

namespace {

const std::string fileDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
const std::string stringDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

DtEnvironment readText(const std::string& text, bool validate = false) {
  DtEnvironment env;
  DtEnvXMLReader reader(validate);
  EXPECT_TRUE(reader.readMemory(env, text.data(), static_cast<int>(text.size())));
  return env;
}

std::string writeText(DtEnvironment& env) {
  DtEnvXMLWriter writer("root");
  DtString out;
  bool ok = false;
  auto captured = captureOutput([&] { ok = writer.writeString(env, out); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("", captured.err);
  return out.c_str();
}

// The tree as print() shows it, with unmodified values added, for comparing two trees.
void describe(std::ostream& out, const DtEnvValueSP& node, const std::string& indent) {
  out << indent;
  if (DtEnvObject* object = DtEnvObject::castToObject(node)) {
    out << "object " << object->type().c_str() << " " << object->name().c_str();
  } else if (DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node)) {
    out << "named " << named->name().c_str();
  } else if (DtEnvList::isList(node)) {
    out << "list";
  } else {
    out << "comment";
  }
  out << " [" << node->unmodifiedValue().c_str() << "|" << node->value().c_str() << "]\n";
  if (DtEnvList* list = DtEnvList::castToList(node)) {
    for (DtEnvValueSP child = list->first(); child; child = list->next(child)) {
      describe(out, child, indent + "  ");
    }
  }
}

std::string describe(const DtEnvironment& env) {
  std::ostringstream out;
  describe(out, env.root(), "");
  return out.str();
}

class EnvXmlRoundTripTest : public ::testing::Test {
 protected:
  void SetUp() override { setenv("KTL_XML_TRIP", "/srv/trip", 1); }
  void TearDown() override { unsetenv("KTL_XML_TRIP"); }
};

// A document in the writer's own form: attributes first, then comments and child elements,
// then the value; "$(NAME)" in attributes and values.
const std::string canonical =
    "<root version=\"2\">"
    "<!--settings of the federate-->"
    "<federate name=\"alpha\" home=\"$(KTL_XML_TRIP)/alpha\">"
    "<vehicle name=\"car\" speed=\"3\">fast</vehicle>"
    "<!--a plain comment-->"
    "<wheel count=\"4\"/>"
    "<path>$(KTL_XML_TRIP)/bin</path>"
    "</federate>"
    "<logging level=\"debug\">on</logging>"
    "</root>\n";

}  // namespace

TEST_F(EnvXmlRoundTripTest, DocumentToTreeToDocument) {
  DtEnvironment env = readText(stringDeclaration + canonical);
  EXPECT_EQ(stringDeclaration + canonical, writeText(env));

  // References stay unexpanded in the file and are expanded in the tree.
  DtEnvValueSP federate = env.getObject("alpha", "federate");
  ASSERT_TRUE(federate);
  DtEnvObject* object = DtEnvObject::castToObject(federate);
  EXPECT_STREQ("/srv/trip/alpha", object->attributeValue("home").c_str());
  EXPECT_STREQ("$(KTL_XML_TRIP)/alpha", object->attribute("home")->unmodifiedValue().c_str());
  DtEnvValueSP path = env.getObject("path", "path");
  ASSERT_TRUE(path);
  EXPECT_STREQ("/srv/trip/bin", path->value().c_str());
}

TEST_F(EnvXmlRoundTripTest, DocumentToTreeToFileToTree) {
  DtEnvironment env = readText(canonical);
  TempDir dir;
  std::string path = dir.file("trip.xml");
  DtEnvXMLWriter writer("root");
  writer.setIndentation("  ");
  ASSERT_TRUE(writer.writeFile(env, path.c_str()));
  EXPECT_EQ(fileDeclaration +
                "<root version=\"2\">\n"
                "  <!--settings of the federate-->\n"
                "  <federate name=\"alpha\" home=\"$(KTL_XML_TRIP)/alpha\">\n"
                "    <vehicle name=\"car\" speed=\"3\">fast</vehicle>\n"
                "    <!--a plain comment-->\n"
                "    <wheel count=\"4\"/>\n"
                "    <path>$(KTL_XML_TRIP)/bin</path>\n"
                "  </federate>\n"
                "  <logging level=\"debug\">on</logging>\n"
                "</root>\n",
            fileText(path));

  // Indentation is white space, which the reader skips: the same tree comes back.
  DtEnvXMLReader reader(false);
  bool ok = false;
  DtEnvironment back = reader.readFile(path.c_str(), ok);
  EXPECT_TRUE(ok);
  EXPECT_EQ(describe(env), describe(back));
}

TEST_F(EnvXmlRoundTripTest, TreeToFileToTreeWithValidation) {
  DtEnvironment env("cfg");
  DtEnvValueSP item = env.addObject("first", "item");
  env.addAttribute("kind", "odd", item);
  item->setValue("$(KTL_XML_TRIP)");
  env.addComment("between");
  env.addObject("item");

  TempDir dir;
  dir.write("cfg.dtd",
            "<!ELEMENT cfg (item*)>\n"
            "<!ELEMENT item (#PCDATA)>\n"
            "<!ATTLIST item name CDATA #IMPLIED kind CDATA #IMPLIED>\n");
  std::string path = dir.file("cfg.xml");
  DtEnvXMLWriter writer("cfg", "cfg.dtd");
  writer.setIndentation("  ");
  ASSERT_TRUE(writer.writeFile(env, path.c_str()));
  EXPECT_EQ(fileDeclaration +
                "<!DOCTYPE cfg SYSTEM \"cfg.dtd\">\n"
                "<cfg>\n"
                "  <item name=\"first\" kind=\"odd\">$(KTL_XML_TRIP)</item>\n"
                "  <!--between-->\n"
                "  <item/>\n"
                "</cfg>\n",
            fileText(path));

  DtEnvXMLReader reader(true);
  bool ok = false;
  DtEnvironment back = reader.readFile(path.c_str(), ok);
  EXPECT_TRUE(ok);
  EXPECT_EQ(describe(env), describe(back));
}

TEST_F(EnvXmlRoundTripTest, ChildNamedLikeItsElementReadsBackTheSame) {
  DtEnvironment env = readText("<root><wheel name=\"wheel\" size=\"2\"/></root>");
  std::string text = writeText(env);
  EXPECT_EQ(stringDeclaration + "<root><wheel size=\"2\"/></root>\n", text);
  DtEnvironment back = readText(text);
  EXPECT_EQ(describe(env), describe(back));
}

TEST_F(EnvXmlRoundTripTest, RootNameAttributeRenamesTheDocumentElement) {
  DtEnvironment env = readText("<settings name=\"main\" a=\"1\"><x/></settings>");
  EXPECT_STREQ("main", DtEnvObject::castToObject(env.root())->name().c_str());
  EXPECT_STREQ("settings", DtEnvObject::castToObject(env.root())->type().c_str());
  // The element takes the name, and no "name" attribute is written.
  std::string text = writeText(env);
  EXPECT_EQ(stringDeclaration + "<main a=\"1\"><x/></main>\n", text);
  DtEnvironment back = readText(text);
  EXPECT_STREQ("main", DtEnvObject::castToObject(back.root())->type().c_str());
}

TEST_F(EnvXmlRoundTripTest, AttributeAddedAfterAChildElementIsLost) {
  DtEnvironment env = readText("<root><a x=\"1\"><b/></a></root>");
  DtEnvValueSP a = env.getObject("a", "a");
  ASSERT_TRUE(a);
  env.addAttribute("late", "2", a);
  EXPECT_STREQ("2", DtEnvObject::castToObject(a)->attributeValue("late").c_str());

  TempDir dir;
  std::string path = dir.file("lost.xml");
  DtEnvXMLWriter writer("root");
  bool ok = false;
  auto captured = captureOutput([&] { ok = writer.writeFile(env, path.c_str()); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("", captured.err);

  DtEnvXMLReader reader(false);
  DtEnvironment back = reader.readFile(path.c_str(), ok);
  DtEnvValueSP backA = back.getObject("a", "a");
  ASSERT_TRUE(backA);
  EXPECT_STREQ("1", DtEnvObject::castToObject(backA)->attributeValue("x").c_str());
  EXPECT_FALSE(DtEnvObject::castToObject(backA)->attribute("late"));
}

TEST_F(EnvXmlRoundTripTest, CommentReferencesAreExpandedOnWriting) {
  DtEnvironment env = readText("<root><!--in $(KTL_XML_TRIP)--></root>");
  std::string text = writeText(env);
  EXPECT_EQ(stringDeclaration + "<root><!--in /srv/trip--></root>\n", text);
}

TEST_F(EnvXmlRoundTripTest, OnlyTheLastTextRunComesBack) {
  DtEnvironment env = readText("<root><a>one<!--c-->two</a></root>");
  EXPECT_EQ(stringDeclaration + "<root><a><!--c-->two</a></root>\n", writeText(env));
  // An object's value comes back when the element holds no later text: here it does.
  DtEnvironment mixed = readText("<root><a>text<b/></a></root>");
  EXPECT_STREQ("text", mixed.getObject("a", "a")->value().c_str());
  std::string text = writeText(mixed);
  EXPECT_EQ(stringDeclaration + "<root><a><b/>text</a></root>\n", text);
  EXPECT_STREQ("text", readText(text).getObject("a", "a")->value().c_str());
}

TEST_F(EnvXmlRoundTripTest, NativeValueComesBackAsAComment) {
  DtEnvironment env;
  int host = 1;
  env.addNativeValue(DtNativeValue::create("HostThing", &host), env.root());
  DtEnvironment back = readText(writeText(env));
  DtEnvValueSP first = DtEnvList::castToList(back.root())->first();
  ASSERT_TRUE(first);
  EXPECT_EQ(0u, first->format());
  EXPECT_STREQ("HostThing", first->value().c_str());
  EXPECT_FALSE(back.getNativeValue(back.root()));
}

TEST_F(EnvXmlRoundTripTest, NamedListChildrenAreLost) {
  DtEnvironment env;
  DtEnvValueSP named = env.addAttribute("n", "v");
  env.addAttribute("inner", "1", named);
  DtEnvironment back = readText(writeText(env));
  DtEnvValueSP n = back.getNamedList("n");
  ASSERT_TRUE(n);
  EXPECT_STREQ("v", n->value().c_str());
  EXPECT_FALSE(DtEnvList::castToList(n)->first());
  EXPECT_FALSE(back.getNamedList("inner"));
}

TEST_F(EnvXmlRoundTripTest, BareListIsFlattened) {
  DtEnvironment env;
  auto list = std::make_shared<DtEnvList>("");
  DtEnvObject::castToObject(env.root())->append(list);
  env.addObject("inside", list);
  DtEnvironment back = readText(writeText(env));
  DtEnvValueSP first = DtEnvList::castToList(back.root())->first();
  ASSERT_TRUE(first);
  EXPECT_TRUE(DtEnvObject::isObject(first, "inside", "inside"));
}
