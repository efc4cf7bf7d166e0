// The XML writer of the configuration tree: what each kind of node becomes, the order of
// attributes, indentation, the DTD declaration, the reused string buffer, and the lines on
// standard error of each failure that a document can provoke.
#include <gtest/gtest.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <support/capture.h>
#include <support/files.h>

#include <cstdlib>
#include <memory>
#include <string>

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::fileText;
using ktltest::TempDir;

namespace {

// The declaration of a file as xmlSaveFormatFileEnc writes it, and of a string as the memory
// writer writes it: there libxml2 names the encoding by its handler, in capitals.
const std::string declaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
const std::string stringDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// Exposes the protected state.
class OpenWriter : public DtEnvXMLWriter {
 public:
  using DtEnvXMLWriter::buffer;
  using DtEnvXMLWriter::dtdFile;
  using DtEnvXMLWriter::DtEnvXMLWriter;
  using DtEnvXMLWriter::env;
  using DtEnvXMLWriter::indent;
  using DtEnvXMLWriter::indentString;
  using DtEnvXMLWriter::root;
  using DtEnvXMLWriter::rootName;
  using DtEnvXMLWriter::writeDtd;
};

// writeString, expecting success and a silent standard error.
std::string written(DtEnvironment& env, DtEnvXMLWriter& writer) {
  DtString out;
  bool ok = false;
  auto captured = captureOutput([&] { ok = writer.writeString(env, out); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("", captured.err);
  return out.c_str();
}

std::string written(DtEnvironment& env) {
  DtEnvXMLWriter writer("root");
  return written(env, writer);
}

// writeFile into dir, expecting success and a silent standard error; the file's content.
std::string writtenFile(DtEnvironment& env, DtEnvXMLWriter& writer, const TempDir& dir) {
  std::string path = dir.file("out.xml");
  bool ok = false;
  auto captured = captureOutput([&] { ok = writer.writeFile(env, path.c_str()); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("", captured.err);
  return fileText(path);
}

// The example tree: a vehicle named "car" with one attribute and a value.
DtEnvironment vehicleTree() {
  DtEnvironment env;
  DtEnvValueSP car = env.addObject("car", "vehicle");
  env.addAttribute("speed", "3", car);
  car->setValue("fast");
  return env;
}

}  // namespace

TEST(EnvXmlWriterTest, ConstructorsAndIndentation) {
  OpenWriter plain("cfg");
  EXPECT_STREQ("cfg", plain.rootName.c_str());
  EXPECT_STREQ("", plain.dtdFile.c_str());
  EXPECT_FALSE(plain.writeDtd);
  EXPECT_FALSE(plain.indent);
  EXPECT_STREQ("", plain.indentString.c_str());
  EXPECT_EQ(nullptr, plain.buffer);

  OpenWriter withDtd("cfg", "cfg.dtd");
  EXPECT_STREQ("cfg", withDtd.rootName.c_str());
  EXPECT_STREQ("cfg.dtd", withDtd.dtdFile.c_str());
  EXPECT_TRUE(withDtd.writeDtd);
  EXPECT_FALSE(withDtd.indent);

  plain.setIndentation("\t");
  EXPECT_TRUE(plain.indent);
  EXPECT_STREQ("\t", plain.indentString.c_str());
  plain.setIndentation("");
  EXPECT_FALSE(plain.indent);
  EXPECT_STREQ("", plain.indentString.c_str());
}

TEST(EnvXmlWriterTest, TheExampleDocument) {
  DtEnvironment env = vehicleTree();
  EXPECT_EQ(stringDeclaration + "<root><vehicle name=\"car\" speed=\"3\">fast</vehicle></root>\n",
            written(env));

  TempDir dir;
  DtEnvXMLWriter writer("root");
  writer.setIndentation("  ");
  EXPECT_EQ(declaration +
                "<root>\n"
                "  <vehicle name=\"car\" speed=\"3\">fast</vehicle>\n"
                "</root>\n",
            writtenFile(env, writer, dir));
}

TEST(EnvXmlWriterTest, IndentationStringIsUsedByWriteFile) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  env.addObject("b", a);
  env.addComment("note", a);
  TempDir dir;
  DtEnvXMLWriter writer("root");
  writer.setIndentation("\t");
  // libxml2's writer puts no indentation before an end tag that follows a comment.
  EXPECT_EQ(declaration + "<root>\n\t<a>\n\t\t<b/>\n\t\t<!--note-->\n</a>\n</root>\n",
            writtenFile(env, writer, dir));
}

TEST(EnvXmlWriterTest, EmptyIndentationTurnsIndentationOff) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  env.addObject("b", a);
  TempDir dir;

  DtEnvXMLWriter never("root");
  std::string unindented = writtenFile(env, never, dir);

  DtEnvXMLWriter writer("root");
  writer.setIndentation("\t");
  std::string tabbed = writtenFile(env, writer, dir);
  writer.setIndentation("");
  std::string off = writtenFile(env, writer, dir);

  EXPECT_NE(std::string::npos, tabbed.find("\t<a>"));
  EXPECT_EQ(std::string::npos, off.find('\t'));
  EXPECT_EQ(unindented, off);
}

TEST(EnvXmlWriterTest, WriteStringIsNeverIndented) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  env.addObject("b", a);
  DtEnvXMLWriter writer("root");
  writer.setIndentation("    ");
  EXPECT_EQ(stringDeclaration + "<root><a><b/></a></root>\n", written(env, writer));
}

TEST(EnvXmlWriterTest, RootIsNamedByItsNameAndItsValueAndTypeAreNotWritten) {
  DtEnvironment env(DtEnvValueSP(std::make_shared<DtEnvObject>("main", "settings", "v")));
  env.addAttribute("a", "1");
  EXPECT_EQ(stringDeclaration + "<main a=\"1\"/>\n", written(env));
}

TEST(EnvXmlWriterTest, RootThatIsNoNamedListWritesNoElement) {
  DtEnvironment comment(DtEnvValueSP(std::make_shared<DtEnvValue>("just text")));
  EXPECT_EQ(stringDeclaration + "\n", written(comment));
  DtEnvironment list(DtEnvValueSP(std::make_shared<DtEnvList>("")));
  EXPECT_EQ(stringDeclaration + "\n", written(list));

  TempDir dir;
  DtEnvXMLWriter writer("root");
  EXPECT_EQ(declaration, writtenFile(comment, writer, dir));
}

TEST(EnvXmlWriterTest, ChildObjectWithNameEqualToTypeHasNoNameAttribute) {
  DtEnvironment env;
  env.addObject("wheel");
  env.addObject("spare", "wheel");
  EXPECT_EQ(stringDeclaration + "<root><wheel/><wheel name=\"spare\"/></root>\n", written(env));
}

TEST(EnvXmlWriterTest, AttributesAndValuesFromTheUnmodifiedText) {
  setenv("KTL_XML_WRITER_HOME", "/home/x", 1);
  DtEnvironment env;
  DtEnvValueSP path = env.addObject("path");
  env.addAttribute("where", "$(KTL_XML_WRITER_HOME)/etc", path);
  path->setValue("$(KTL_XML_WRITER_HOME)/bin");
  // Comments are written from value(), expanded.
  env.addComment("in $(KTL_XML_WRITER_HOME)", path);
  EXPECT_STREQ("/home/x/bin", path->value().c_str());
  EXPECT_EQ(stringDeclaration +
                "<root><path where=\"$(KTL_XML_WRITER_HOME)/etc\"><!--in /home/x-->"
                "$(KTL_XML_WRITER_HOME)/bin</path></root>\n",
            written(env));
  unsetenv("KTL_XML_WRITER_HOME");
}

TEST(EnvXmlWriterTest, ValueComesAfterTheChildren) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  a->setValue("text");
  env.addObject("b", a);
  env.addComment("c", a);
  EXPECT_EQ(stringDeclaration + "<root><a><b/><!--c-->text</a></root>\n", written(env));
}

TEST(EnvXmlWriterTest, TextIsEscaped) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  env.addAttribute("q", "\"<&>\"", a);
  a->setValue("1 < 2 & 3 > 2");
  EXPECT_EQ(stringDeclaration +
                "<root><a q=\"&quot;&lt;&amp;&gt;&quot;\">1 &lt; 2 &amp; 3 &gt; 2</a></root>\n",
            written(env));
}

TEST(EnvXmlWriterTest, AttributeAfterAChildElementVanishes) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  env.addAttribute("before", "1", a);
  env.addObject("child", a);
  env.addAttribute("after", "2", a);
  EXPECT_EQ(stringDeclaration + "<root><a before=\"1\"><child/></a></root>\n", written(env));

  TempDir dir;
  DtEnvXMLWriter writer("root");
  std::string text = writtenFile(env, writer, dir);
  EXPECT_NE(std::string::npos, text.find("before=\"1\""));
  EXPECT_EQ(std::string::npos, text.find("after"));
}

TEST(EnvXmlWriterTest, AttributeAfterACommentVanishes) {
  DtEnvironment env;
  env.addComment("first");
  env.addAttribute("late", "1");
  EXPECT_EQ(stringDeclaration + "<root><!--first--></root>\n", written(env));
}

TEST(EnvXmlWriterTest, NativeValueIsWrittenAsAComment) {
  DtEnvironment env;
  int host = 7;
  env.addNativeValue(DtNativeValue::create("HostCounter", &host), env.root());
  EXPECT_EQ(stringDeclaration + "<root><!--HostCounter--></root>\n", written(env));
}

TEST(EnvXmlWriterTest, BareListWritesItsChildrenInItsPlace) {
  DtEnvironment env;
  auto list = std::make_shared<DtEnvList>("ignored");
  DtEnvObject::castToObject(env.root())->append(list);
  env.addAttribute("x", "1", list);
  env.addComment("inside", list);
  env.addObject("o", list);
  env.addAttribute("y", "2");
  EXPECT_EQ(stringDeclaration + "<root x=\"1\"><!--inside--><o/></root>\n", written(env));
}

TEST(EnvXmlWriterTest, NamedListChildrenAreDropped) {
  DtEnvironment env;
  DtEnvValueSP named = env.addAttribute("n", "v");
  env.addObject("below", named);
  env.addComment("lost", named);
  EXPECT_EQ(stringDeclaration + "<root n=\"v\"/>\n", written(env));
}

TEST(EnvXmlWriterTest, DtdDeclaration) {
  DtEnvironment env;
  env.addObject("a");
  OpenWriter writer("cfg", "cfg.dtd");
  EXPECT_EQ(stringDeclaration + "<!DOCTYPE cfg SYSTEM \"cfg.dtd\"><root><a/></root>\n",
            written(env, writer));
  TempDir dir;
  writer.setIndentation("  ");
  EXPECT_EQ(declaration + "<!DOCTYPE cfg SYSTEM \"cfg.dtd\">\n<root>\n  <a/>\n</root>\n",
            writtenFile(env, writer, dir));
}

TEST(EnvXmlWriterTest, StringBufferIsMadeOnceAndEmptiedOnEachCall) {
  OpenWriter writer("root");
  DtEnvironment big;
  for (int i = 0; i < 500; ++i) big.addObject(DtString("node") + DtString(i).c_str());
  std::string first = written(big, writer);
  EXPECT_GT(first.size(), 4000u);
  xmlBufferPtr buffer = writer.buffer;
  ASSERT_NE(nullptr, buffer);

  DtEnvironment small;
  EXPECT_EQ(stringDeclaration + "<root/>\n", written(small, writer));
  EXPECT_EQ(buffer, writer.buffer);
  // The writer lets go of the tree after each write.
  EXPECT_EQ(nullptr, writer.env);
  EXPECT_TRUE(writer.root.expired());
}

TEST(EnvXmlWriterTest, WriteFileIntoAMissingDirectory) {
  TempDir dir;
  DtEnvironment env = vehicleTree();
  DtEnvXMLWriter writer("root");
  bool ok = true;
  auto captured =
      captureOutput([&] { ok = writer.writeFile(env, dir.file("missing/out.xml").c_str()); });
  EXPECT_FALSE(ok);
  EXPECT_EQ("testXmlwriterDoc: Error at xmlSaveFormatFileEnc\n", captured.err);
  EXPECT_EQ("", captured.out);
}

TEST(EnvXmlWriterTest, DtdFailureIsOnlyReported) {
  DtEnvironment env;
  env.addObject("a");
  // A document type declaration needs a name.
  DtEnvXMLWriter writer("", "cfg.dtd");
  DtString out;
  bool ok = false;
  auto captured = captureOutput([&] { ok = writer.writeString(env, out); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n", captured.err);
  EXPECT_EQ(stringDeclaration + "<root><a/></root>\n", std::string(out.c_str()));

  // writeFile reports it with the same line.
  TempDir dir;
  std::string path = dir.file("out.xml");
  captured = captureOutput([&] { ok = writer.writeFile(env, path.c_str()); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n", captured.err);
  EXPECT_EQ(declaration + "<root>\n  <a/>\n</root>\n", fileText(path));
}

TEST(EnvXmlWriterTest, ElementWithoutANameIsAbandoned) {
  DtEnvironment env;
  DtEnvValueSP nameless = env.addObject("n", "");
  env.addAttribute("lost", "1", nameless);
  env.addObject("lostToo", nameless);
  env.addObject("kept");
  DtEnvXMLWriter writer("root");
  DtString out;
  bool ok = false;
  auto captured = captureOutput([&] { ok = writer.writeString(env, out); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("testXmlwriterDoc: Error at xmlTextWriterStartElement\n", captured.err);
  EXPECT_EQ(stringDeclaration + "<root><kept/></root>\n", std::string(out.c_str()));
}

TEST(EnvXmlWriterTest, RootWithoutANameIsAbandoned) {
  DtEnvironment env("");
  env.addObject("a");
  DtEnvXMLWriter writer("root");
  DtString out;
  bool ok = false;
  auto captured = captureOutput([&] { ok = writer.writeString(env, out); });
  EXPECT_TRUE(ok);
  EXPECT_EQ("testXmlwriterDoc: Error at xmlTextWriterStartElement\n", captured.err);
  EXPECT_EQ(stringDeclaration + "\n", std::string(out.c_str()));
}
