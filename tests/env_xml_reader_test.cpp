// The XML reader of the configuration tree: elements, attributes, comments and text runs into
// nodes, the document element on the root, file and memory input, DTD validation and the
// exceptions of each failure.
#include <gtest/gtest.h>
#include <ktl/envXmlReader.h>
#include <ktl/environment.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlreader.h>
#include <support/capture.h>
#include <support/files.h>
#include <util/dtException.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <sstream>
#include <string>
#include <vector>
#include "support/thrown.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::TempDir;
using ktltest::thrownMessage;

namespace {

// The children of a list from first() on.
std::vector<DtEnvValueSP> childrenOf(const DtEnvValueSP& node) {
  std::vector<DtEnvValueSP> out;
  DtEnvList* list = DtEnvList::castToList(node);
  if (!list) return out;
  for (DtEnvValueSP child = list->first(); child; child = list->next(child)) out.push_back(child);
  return out;
}

DtString nameOf(const DtEnvValueSP& node) {
  DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node);
  return named ? named->name() : DtString("<no name>");
}

DtString typeOf(const DtEnvValueSP& node) {
  DtEnvObject* object = DtEnvObject::castToObject(node);
  return object ? object->type() : DtString("<no type>");
}

// Reads text into a fresh tree.
DtEnvironment readText(const std::string& text, bool validate = false) {
  DtEnvironment env;
  DtEnvXMLReader reader(validate);
  EXPECT_TRUE(reader.readMemory(env, text.data(), static_cast<int>(text.size())));
  return env;
}

// Reads text with a reader that may validate, expecting E; standard error must stay silent.
template <class E>
std::string memoryFailure(const std::string& text, bool validate = false) {
  std::string message;
  auto captured = captureOutput([&] {
    DtEnvironment env;
    DtEnvXMLReader reader(validate);
    message = thrownMessage<E>(
        [&] { reader.readMemory(env, text.data(), static_cast<int>(text.size())); });
  });
  EXPECT_EQ("", captured.err);
  EXPECT_EQ("", captured.out);
  return message;
}

// Exposes the protected steps, to drive them on states a document can't reach.
class OpenReader : public DtEnvXMLReader {
 public:
  using DtEnvXMLReader::current;
  using DtEnvXMLReader::DtEnvXMLReader;
  using DtEnvXMLReader::env;
  using DtEnvXMLReader::popRoot;
  using DtEnvXMLReader::validate;
};

// Notes the node types that reach processNode.
class CountingReader : public DtEnvXMLReader {
 public:
  using DtEnvXMLReader::DtEnvXMLReader;
  std::vector<int> types;
  int pops = 0;

 protected:
  void processNode(xmlTextReaderPtr reader) override {
    types.push_back(xmlTextReaderNodeType(reader));
    DtEnvXMLReader::processNode(reader);
  }
  void popRoot() override {
    ++pops;
    DtEnvXMLReader::popRoot();
  }
};

const char* const simpleDtd =
    "<!ELEMENT cfg (item*)>\n"
    "<!ELEMENT item (#PCDATA)>\n"
    "<!ATTLIST item name CDATA #IMPLIED kind CDATA \"plain\">\n";

}  // namespace

TEST(EnvXmlReaderTest, ElementsBecomeObjectsTypedByTheirName) {
  DtEnvironment env = readText(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
      "<root><vehicle name=\"car\" speed=\"3\">fast</vehicle><wheel/></root>");
  EXPECT_STREQ("root", nameOf(env.root()).c_str());
  auto top = childrenOf(env.root());
  ASSERT_EQ(2u, top.size());
  EXPECT_TRUE(DtEnvObject::isObject(top[0]));
  EXPECT_STREQ("car", nameOf(top[0]).c_str());
  EXPECT_STREQ("vehicle", typeOf(top[0]).c_str());
  EXPECT_STREQ("fast", top[0]->value().c_str());
  EXPECT_STREQ("wheel", nameOf(top[1]).c_str());
  EXPECT_STREQ("wheel", typeOf(top[1]).c_str());
  EXPECT_STREQ("", top[1]->value().c_str());

  // The "name" attribute renames; every other attribute is a named list, indexed by name.
  auto attributes = childrenOf(top[0]);
  ASSERT_EQ(1u, attributes.size());
  EXPECT_TRUE(DtEnvNamedList::isNamedList(attributes[0]));
  EXPECT_FALSE(DtEnvObject::isObject(attributes[0]));
  EXPECT_STREQ("speed", nameOf(attributes[0]).c_str());
  EXPECT_STREQ("3", attributes[0]->value().c_str());
  EXPECT_EQ(attributes[0], DtEnvObject::castToObject(top[0])->attribute("speed"));
  EXPECT_FALSE(DtEnvObject::castToObject(top[0])->attribute("name"));

  // Parent links run up to the root.
  EXPECT_EQ(env.root(), top[0]->parent());
  EXPECT_EQ(top[0], attributes[0]->parent());
}

TEST(EnvXmlReaderTest, AttributesComeInDocumentOrderBeforeTheContent) {
  DtEnvironment env = readText("<root><a x=\"1\" y=\"2\"><!--c--><b/>v</a></root>");
  auto a = childrenOf(env.root());
  ASSERT_EQ(1u, a.size());
  auto inside = childrenOf(a[0]);
  ASSERT_EQ(4u, inside.size());
  EXPECT_STREQ("x", nameOf(inside[0]).c_str());
  EXPECT_STREQ("1", inside[0]->value().c_str());
  EXPECT_STREQ("y", nameOf(inside[1]).c_str());
  EXPECT_STREQ("2", inside[1]->value().c_str());
  EXPECT_FALSE(DtEnvList::isList(inside[2]));
  EXPECT_STREQ("c", inside[2]->value().c_str());
  EXPECT_STREQ("b", typeOf(inside[3]).c_str());
  EXPECT_STREQ("v", a[0]->value().c_str());
}

TEST(EnvXmlReaderTest, EmptyDocumentElementClosesAtOnce) {
  CountingReader reader(false);
  DtEnvironment env;
  std::string text = "<cfg/><!--after the document element-->";
  ASSERT_TRUE(reader.readMemory(env, text.data(), static_cast<int>(text.size())));
  // popRoot ran for the empty element: the comment behind it found no node to go to.
  EXPECT_EQ(1, reader.pops);
  EXPECT_TRUE(childrenOf(env.root()).empty());
  EXPECT_STREQ("cfg", nameOf(env.root()).c_str());
  EXPECT_STREQ("cfg", typeOf(env.root()).c_str());
  EXPECT_STREQ("", env.root()->value().c_str());
  EXPECT_STREQ("", env.root()->unmodifiedValue().c_str());
  // No end-element node comes for an empty element.
  EXPECT_EQ((std::vector<int>{1, 8}), reader.types);
}

TEST(EnvXmlReaderTest, EmptyChildElementClosesAtOnce) {
  DtEnvironment env = readText("<root><a/>tail</root>");
  // Had <a/> not been closed, the text would be a's value.
  EXPECT_STREQ("tail", env.root()->value().c_str());
  auto a = childrenOf(env.root());
  ASSERT_EQ(1u, a.size());
  EXPECT_STREQ("", a[0]->value().c_str());
}

TEST(EnvXmlReaderTest, DocumentElementNameAttributeNamesTheRoot) {
  DtEnvironment env = readText("<vehicle name=\"car\" speed=\"3\">fast</vehicle>");
  EXPECT_STREQ("car", nameOf(env.root()).c_str());
  EXPECT_STREQ("vehicle", typeOf(env.root()).c_str());
  EXPECT_STREQ("fast", env.root()->value().c_str());
  auto attributes = childrenOf(env.root());
  ASSERT_EQ(1u, attributes.size());
  EXPECT_STREQ("speed", nameOf(attributes[0]).c_str());
}

TEST(EnvXmlReaderTest, ReferenceInTextKeptUnmodifiedAndExpandedInValue) {
  setenv("KTL_XML_READER_DIR", "/opt/here", 1);
  DtEnvironment env = readText(
      "<root><path where=\"$(KTL_XML_READER_DIR)/etc\">$(KTL_XML_READER_DIR)/bin</path></root>");
  auto path = childrenOf(env.root());
  ASSERT_EQ(1u, path.size());
  EXPECT_STREQ("$(KTL_XML_READER_DIR)/bin", path[0]->unmodifiedValue().c_str());
  EXPECT_STREQ("/opt/here/bin", path[0]->value().c_str());
  auto where = childrenOf(path[0]);
  ASSERT_EQ(1u, where.size());
  EXPECT_STREQ("$(KTL_XML_READER_DIR)/etc", where[0]->unmodifiedValue().c_str());
  EXPECT_STREQ("/opt/here/etc", where[0]->value().c_str());
  unsetenv("KTL_XML_READER_DIR");
}

TEST(EnvXmlReaderTest, CommentBetweenTwoTextRunsLeavesTheSecondRunAsValue) {
  DtEnvironment env = readText("<root><a>first<!--between-->second</a></root>");
  auto a = childrenOf(env.root());
  ASSERT_EQ(1u, a.size());
  EXPECT_STREQ("second", a[0]->value().c_str());
  auto inside = childrenOf(a[0]);
  ASSERT_EQ(1u, inside.size());
  EXPECT_STREQ("between", inside[0]->value().c_str());
}

TEST(EnvXmlReaderTest, TextAroundAChildElementKeepsTheLastRun) {
  DtEnvironment env = readText("<root>before<a/>after</root>");
  EXPECT_STREQ("after", env.root()->value().c_str());
}

TEST(EnvXmlReaderTest, CdataAndWhiteSpaceAddNothing) {
  DtEnvironment env = readText("<root>\n  <a><![CDATA[raw]]></a>\n  <b>  </b>\n</root>");
  EXPECT_STREQ("", env.root()->value().c_str());
  auto children = childrenOf(env.root());
  ASSERT_EQ(2u, children.size());
  EXPECT_STREQ("", children[0]->value().c_str());
  EXPECT_STREQ("", children[1]->value().c_str());
}

TEST(EnvXmlReaderTest, CommentsOutsideTheDocumentElementAreDropped) {
  DtEnvironment env = readText("<!--before--><root><!--inside--></root><!--after-->");
  auto children = childrenOf(env.root());
  ASSERT_EQ(1u, children.size());
  EXPECT_STREQ("inside", children[0]->value().c_str());
}

TEST(EnvXmlReaderTest, CommentsHaveNoParentLink) {
  DtEnvironment env = readText("<root><a><!--c--></a></root>");
  auto a = childrenOf(env.root());
  ASSERT_EQ(1u, a.size());
  auto comment = childrenOf(a[0]);
  ASSERT_EQ(1u, comment.size());
  EXPECT_FALSE(comment[0]->parent());
}

TEST(EnvXmlReaderTest, EntitiesAreSubstitutedOnlyWithValidation) {
  std::string text =
      "<!DOCTYPE root [<!ELEMENT root (#PCDATA)><!ENTITY who \"world\">]>"
      "<root>hello &who;</root>";
  // Without validation the reference is a node of its own, which adds nothing, and the text
  // run before it is replaced by the empty run behind it... or stays, if there is none.
  DtEnvironment plain = readText(text, false);
  EXPECT_STREQ("hello ", plain.root()->value().c_str());
  DtEnvironment substituted = readText(text, true);
  EXPECT_STREQ("hello world", substituted.root()->value().c_str());
}

TEST(EnvXmlReaderTest, ReadMemoryReusesTheRootAndKeepsItsChildren) {
  DtEnvironment env("old");
  env.addAttribute("kept", "1");
  env.addObject("earlier");
  std::string text = "<cfg><later/></cfg>";
  DtEnvXMLReader reader(false);
  ASSERT_TRUE(reader.readMemory(env, text.data(), static_cast<int>(text.size())));
  EXPECT_STREQ("cfg", nameOf(env.root()).c_str());
  EXPECT_STREQ("cfg", typeOf(env.root()).c_str());
  auto children = childrenOf(env.root());
  ASSERT_EQ(3u, children.size());
  EXPECT_STREQ("kept", nameOf(children[0]).c_str());
  EXPECT_STREQ("earlier", nameOf(children[1]).c_str());
  EXPECT_STREQ("later", nameOf(children[2]).c_str());

  // A second read into the same handle appends again.
  ASSERT_TRUE(reader.readMemory(env, text.data(), static_cast<int>(text.size())));
  EXPECT_EQ(4u, childrenOf(env.root()).size());
}

TEST(EnvXmlReaderTest, ReadMemoryReadsOnlyTheGivenBytes) {
  std::string text = "<root>abc</root>trailing garbage <<<";
  DtEnvironment env;
  DtEnvXMLReader reader(false);
  ASSERT_TRUE(
      reader.readMemory(env, text.data(), static_cast<int>(std::strlen("<root>abc</root>"))));
  EXPECT_STREQ("abc", env.root()->value().c_str());
}

TEST(EnvXmlReaderTest, ReadMemoryIntoARootThatIsNoObject) {
  // A named list as root is renamed and takes the content.
  DtEnvironment named(DtEnvValueSP(std::make_shared<DtEnvNamedList>("n", "")));
  std::string text = "<cfg a=\"1\"><b/>v</cfg>";
  DtEnvXMLReader reader(false);
  ASSERT_TRUE(reader.readMemory(named, text.data(), static_cast<int>(text.size())));
  EXPECT_STREQ("cfg", nameOf(named.root()).c_str());
  EXPECT_EQ(2u, childrenOf(named.root()).size());
  EXPECT_STREQ("v", named.root()->value().c_str());

  // A plain value can hold no children: the first child element finds no node to be made
  // under, so nothing is filled until the document ends, and nothing breaks.
  DtEnvironment plain(DtEnvValueSP(std::make_shared<DtEnvValue>("x")));
  std::string deeper = "<cfg a=\"1\"><b c=\"2\" name=\"n\"><!--c-->t<d/></b>v</cfg>";
  ASSERT_TRUE(reader.readMemory(plain, deeper.data(), static_cast<int>(deeper.size())));
  EXPECT_STREQ("x", plain.root()->value().c_str());
  EXPECT_FALSE(DtEnvList::isList(plain.root()));
}

TEST(EnvXmlReaderTest, PopRootWithoutANodeIsHarmless) {
  OpenReader reader(false);
  reader.popRoot();
  EXPECT_TRUE(reader.current.expired());
  auto node = std::make_shared<DtEnvObject>("a", "a", "");
  reader.current = node;
  reader.popRoot();
  EXPECT_TRUE(reader.current.expired());
}

TEST(EnvXmlReaderTest, ReaderLetsGoOfTheTreeAfterARead) {
  OpenReader reader(false);
  DtEnvironment env;
  std::string text = "<root><a>";
  EXPECT_THROW(reader.readMemory(env, text.data(), static_cast<int>(text.size())),
               DtCorruptedState);
  EXPECT_EQ(nullptr, reader.env);
  EXPECT_TRUE(reader.current.expired());
  bool ok = true;
  DtEnvironment read = reader.readFile(ktltest::writeTempFile("<root/>", ".xml"), ok);
  EXPECT_TRUE(ok);
  EXPECT_EQ(nullptr, reader.env);
  EXPECT_TRUE(reader.current.expired());
}

TEST(EnvXmlReaderTest, ValidationFlag) {
  OpenReader reader(true);
  EXPECT_TRUE(reader.validate);
  reader.useDtdValidation(false);
  EXPECT_FALSE(reader.validate);
  reader.useDtdValidation(true);
  EXPECT_TRUE(reader.validate);
  OpenReader plain(false);
  EXPECT_FALSE(plain.validate);
}

TEST(EnvXmlReaderTest, ReadFileGivesANewTree) {
  TempDir dir;
  std::string path = dir.write("cfg.xml",
                               "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                               "<cfg>\n  <item name=\"one\" size=\"2\">x</item>\n</cfg>\n");
  DtEnvXMLReader reader(false);
  bool ok = false;
  DtEnvironment env;
  auto captured = captureOutput([&] { env = reader.readFile(path.c_str(), ok); });
  EXPECT_EQ("", captured.err);
  EXPECT_TRUE(ok);
  EXPECT_STREQ("cfg", nameOf(env.root()).c_str());
  EXPECT_FALSE(env.root()->parent());
  auto items = childrenOf(env.root());
  ASSERT_EQ(1u, items.size());
  EXPECT_STREQ("one", nameOf(items[0]).c_str());
  EXPECT_STREQ("item", typeOf(items[0]).c_str());
  EXPECT_STREQ("x", items[0]->value().c_str());
  EXPECT_STREQ("2", DtEnvObject::castToObject(items[0])->attributeValue("size").c_str());
}

TEST(EnvXmlReaderTest, ReadFileThatCannotBeOpened) {
  TempDir dir;
  std::string path = dir.file("missing/none.xml");
  DtEnvXMLReader reader(false);
  bool ok = true;
  std::string message;
  auto captured = captureOutput(
      [&] { message = thrownMessage<DtInvalidInput>([&] { reader.readFile(path.c_str(), ok); }); });
  EXPECT_EQ("DtInvalidInput: Unable to open:" + path, message);
  EXPECT_FALSE(ok);
  EXPECT_EQ("", captured.err);

  // The exception tells the library's own place.
  try {
    reader.readFile(path.c_str(), ok);
    ADD_FAILURE() << "no exception";
  } catch (const DtInvalidInput& e) {
    EXPECT_NE(std::string::npos, std::string(e.where()).find("(envXmlReader:")) << e.where();
    EXPECT_EQ(nullptr, e.previous());
  }
}

namespace {

std::vector<std::string>* hostErrors = nullptr;

void hostHandler(void*, xmlErrorPtr error) {
  if (hostErrors && error && error->message) hostErrors->push_back(error->message);
}

}  // namespace

TEST(EnvXmlReaderTest, HostErrorHandlerStaysInPlace) {
  std::vector<std::string> seen;
  hostErrors = &seen;
  xmlSetStructuredErrorFunc(nullptr, &hostHandler);
  std::string message = memoryFailure<DtCorruptedState>("<a><b></a>");
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  hostErrors = nullptr;
  EXPECT_EQ("DtCorruptedState: Error reading: Opening and ending tag mismatch: b line 1 and a\n",
            message);
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ("Opening and ending tag mismatch: b line 1 and a\n", seen.back());
}

TEST(EnvXmlReaderTest, ReadFileOfBrokenContent) {
  std::string path = ktltest::writeTempFile("<cfg><a></cfg>", ".xml");
  DtEnvXMLReader reader(false);
  bool ok = true;
  std::string message;
  auto captured = captureOutput([&] {
    message = thrownMessage<DtCorruptedState>([&] { reader.readFile(path.c_str(), ok); });
  });
  EXPECT_EQ("DtCorruptedState: Error reading: Opening and ending tag mismatch: a line 1 and cfg\n",
            message);
  EXPECT_FALSE(ok);
  EXPECT_EQ("", captured.err);
}

TEST(EnvXmlReaderTest, ReadFileOfAnEmptyFile) {
  std::string path = ktltest::writeTempFile("", ".xml");
  DtEnvXMLReader reader(false);
  bool ok = true;
  std::string message = thrownMessage<DtCorruptedState>([&] { reader.readFile(path.c_str(), ok); });
  // libxml2 feeds the text reader in chunks and reports an empty input at its end.
  EXPECT_EQ("DtCorruptedState: Error reading: Extra content at the end of the document\n", message);
  EXPECT_FALSE(ok);
}

TEST(EnvXmlReaderTest, FirstReadFails) {
  EXPECT_EQ("DtCorruptedState: Error reading: Document is empty\n",
            memoryFailure<DtCorruptedState>("not xml at all"));
}

TEST(EnvXmlReaderTest, LaterReadFails) {
  EXPECT_EQ("DtCorruptedState: Error reading: Opening and ending tag mismatch: b line 1 and a\n",
            memoryFailure<DtCorruptedState>("<a><b></a>"));
  EXPECT_EQ("DtCorruptedState: Error reading: Extra content at the end of the document\n",
            memoryFailure<DtCorruptedState>("<a/><b/>"));
  // An element left open is noticed at the end of the input.
  EXPECT_EQ("DtCorruptedState: Error reading: Extra content at the end of the document\n",
            memoryFailure<DtCorruptedState>("<a>"));
}

TEST(EnvXmlReaderTest, UndecodableBytesFailSilently) {
  // The converter of the declared encoding rejects the bytes; libxml2 reports that through its
  // generic handler, which stays quiet during a read.
  std::string message = memoryFailure<DtCorruptedState>(
      "<?xml version=\"1.0\" encoding=\"EUC-JP\"?><a>\xff\xff\xff\x80\x80</a>");
  EXPECT_EQ(
      "DtCorruptedState: Error reading: input conversion failed due to input error, bytes 0xFF "
      "0xFF 0xFF 0x80\n",
      message);
}

namespace {

std::string* hostGenericText = nullptr;

void hostGeneric(void*, const char* format, ...) {
  if (hostGenericText && format) *hostGenericText += format;
}

}  // namespace

TEST(EnvXmlReaderTest, HostGenericHandlerStaysInPlace) {
  std::string text;
  hostGenericText = &text;
  xmlSetGenericErrorFunc(nullptr, &hostGeneric);
  std::string message = memoryFailure<DtCorruptedState>(
      "<?xml version=\"1.0\" encoding=\"EUC-JP\"?><a>\xff\xff\xff\x80\x80</a>");
  xmlSetGenericErrorFunc(nullptr, nullptr);
  hostGenericText = nullptr;
  EXPECT_EQ(0u, message.find("DtCorruptedState: Error reading: ")) << message;
  EXPECT_NE(std::string::npos, text.find("encoder error")) << text;
}

TEST(EnvXmlReaderTest, ReadMemoryCannotOpen) {
  DtEnvironment env;
  DtEnvXMLReader reader(false);
  EXPECT_EQ("DtCorruptedState: Unable to read memory.",
            thrownMessage<DtCorruptedState>([&] { reader.readMemory(env, nullptr, 0); }));
  EXPECT_EQ("DtCorruptedState: Unable to read memory.",
            thrownMessage<DtCorruptedState>([&] { reader.readMemory(env, "<a/>", -1); }));
}

TEST(EnvXmlReaderTest, ReadMemoryOfNoBytes) {
  EXPECT_EQ("DtCorruptedState: Error reading: Extra content at the end of the document\n",
            memoryFailure<DtCorruptedState>(""));
}

TEST(EnvXmlReaderTest, ValidDocumentPassesValidation) {
  TempDir dir;
  std::string dtd = dir.write("cfg.dtd", simpleDtd);
  std::string text = "<!DOCTYPE cfg SYSTEM \"" + dtd +
                     "\">\n<cfg>\n  <item name=\"a\">1</item>\n  <item kind=\"odd\"/>\n</cfg>\n";
  DtEnvironment env = readText(text, true);
  auto items = childrenOf(env.root());
  ASSERT_EQ(2u, items.size());
  // DTDATTR fills in the default of the attribute the first item lacks.
  EXPECT_STREQ("a", nameOf(items[0]).c_str());
  EXPECT_STREQ("plain", DtEnvObject::castToObject(items[0])->attributeValue("kind").c_str());
  EXPECT_STREQ("1", items[0]->value().c_str());
  EXPECT_STREQ("odd", DtEnvObject::castToObject(items[1])->attributeValue("kind").c_str());
}

TEST(EnvXmlReaderTest, InvalidDocumentFailsOnlyWithValidation) {
  TempDir dir;
  std::string dtd = dir.write("cfg.dtd", simpleDtd);
  std::string text = "<!DOCTYPE cfg SYSTEM \"" + dtd + "\">\n<cfg>\n  <other/>\n</cfg>\n";
  // The line is where the parser stood when it reported, here the end of the short input.
  EXPECT_EQ("DtCorruptedState: Line 5:No declaration for element other\n",
            memoryFailure<DtCorruptedState>(text, true));
  DtEnvironment env = readText(text, false);
  EXPECT_EQ(1u, childrenOf(env.root()).size());
}

TEST(EnvXmlReaderTest, ValidationWithoutADtdFails) {
  // libxml2 gives this message without an end of line, and it is kept as it comes.
  EXPECT_EQ("DtCorruptedState: Line 1:Validation failed: no DTD found !",
            memoryFailure<DtCorruptedState>("<cfg/>", true));
}

TEST(EnvXmlReaderTest, ReadFileValidatesAgainstADtdBesideTheFile) {
  TempDir dir;
  dir.write("cfg.dtd", simpleDtd);
  std::string good = dir.write("good.xml", "<!DOCTYPE cfg SYSTEM \"cfg.dtd\"><cfg><item/></cfg>");
  std::string bad = dir.write("bad.xml", "<!DOCTYPE cfg SYSTEM \"cfg.dtd\">\n<cfg>text</cfg>");
  DtEnvXMLReader reader(true);
  bool ok = false;
  DtEnvironment env = reader.readFile(good.c_str(), ok);
  EXPECT_TRUE(ok);
  EXPECT_EQ(1u, childrenOf(env.root()).size());

  ok = true;
  EXPECT_EQ(
      "DtCorruptedState: Line 2:Element cfg content does not follow the DTD, Text not allowed\n",
      thrownMessage<DtCorruptedState>([&] { reader.readFile(bad.c_str(), ok); }));
  EXPECT_FALSE(ok);

  reader.useDtdValidation(false);
  ok = false;
  reader.readFile(bad.c_str(), ok);
  EXPECT_TRUE(ok);
}
