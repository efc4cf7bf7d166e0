// The standard MIM documents the library holds: each array is the file of data/mim/ byte for
// byte, with its length and no terminator, with the properties of its edition; and the standard
// names by which readFed lets a request through to a reader.
#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/fedReader13.h>

#include "support/capture.h"
#include "support/fed_recorder.h"
#include "support/files.h"

using namespace KORRti;

namespace {

const std::string theMimDir = std::string(KTL_SOURCE_DIR) + "/data/mim";

std::string held(const unsigned char* bytes, unsigned int length) {
  return std::string(reinterpret_cast<const char*>(bytes), length);
}

int nonAscii(const std::string& text) {
  int count = 0;
  for (unsigned char c : text) count += c >= 0x80;
  return count;
}

// The element children of the root, in order, and the model identification's fields.
struct Outline {
  std::string rootName;
  std::string nameSpace;
  std::vector<std::string> sections;
  std::string type, version, security, domain, date;
};

std::string childText(xmlNode* parent, const char* name) {
  for (xmlNode* child = parent->children; child; child = child->next) {
    if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, BAD_CAST name)) {
      xmlChar* content = xmlNodeGetContent(child);
      std::string text = content ? reinterpret_cast<const char*>(content) : "";
      xmlFree(content);
      return text;
    }
  }
  return "<none>";
}

Outline outline(const std::string& bytes) {
  Outline result;
  xmlDocPtr doc = xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, 0);
  if (!doc) return result;
  xmlNode* root = xmlDocGetRootElement(doc);
  result.rootName = reinterpret_cast<const char*>(root->name);
  if (root->ns && root->ns->href) result.nameSpace = reinterpret_cast<const char*>(root->ns->href);
  for (xmlNode* child = root->children; child; child = child->next) {
    if (child->type != XML_ELEMENT_NODE) continue;
    result.sections.push_back(reinterpret_cast<const char*>(child->name));
    if (xmlStrEqual(child->name, BAD_CAST "modelIdentification")) {
      result.type = childText(child, "type");
      result.version = childText(child, "version");
      result.security = childText(child, "securityClassification");
      result.domain = childText(child, "applicationDomain");
      result.date = childText(child, "modificationDate");
    }
  }
  xmlFreeDoc(doc);
  return result;
}

const std::vector<std::string> theSections = {
    "modelIdentification", "objects",   "interactions", "dimensions",
    "transportations",     "dataTypes", "notes"};

const char theDeclaration[] = "<?xml version=\"1.0\" encoding=\"utf-8\"?>";

TEST(StandardMim, The2010DocumentIsTheFileByteForByte) {
  std::string bytes = held(theHLAeStandardMIM_xml, theHLAeStandardMIM_xml_len);
  EXPECT_EQ(theHLAeStandardMIM_xml_len, 165226u);
  EXPECT_EQ(bytes, ktltest::fileText(theMimDir + "/HLAstandardMIM.xml"));
}

TEST(StandardMim, The2025DocumentIsTheFileByteForByte) {
  std::string bytes = held(theHLA4StandardMIM_xml, theHLA4StandardMIM_xml_len);
  // The public 2025-02-10 revision of the document, not the later one of the standard's text.
  EXPECT_EQ(theHLA4StandardMIM_xml_len, 215907u);
  EXPECT_EQ(bytes, ktltest::fileText(theMimDir + "/HLAstandardMIM-2025.xml"));
}

TEST(StandardMim, The2010DocumentHasLfLineEndsAndEndsAtItsLastLineEnd) {
  std::string bytes = held(theHLAeStandardMIM_xml, theHLAeStandardMIM_xml_len);
  EXPECT_EQ(bytes.find('\r'), std::string::npos);
  EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 2926);
  EXPECT_EQ(bytes.substr(bytes.size() - 15), "</objectModel>\n");
  EXPECT_EQ(bytes.find('\0'), std::string::npos);
  EXPECT_EQ(nonAscii(bytes), 21);
  EXPECT_EQ(bytes.compare(0, sizeof theDeclaration - 1, theDeclaration), 0);
  EXPECT_NE(bytes.find("<!--"), std::string::npos);
  EXPECT_NE(bytes.find("Reprinted with permission from IEEE 1516.1(TM)-2010"), std::string::npos);
}

TEST(StandardMim, The2025DocumentHasCrLfLineEndsAndEndsAtItsLastLineEnd) {
  std::string bytes = held(theHLA4StandardMIM_xml, theHLA4StandardMIM_xml_len);
  size_t lines = 0;
  for (size_t at = bytes.find('\n'); at != std::string::npos; at = bytes.find('\n', at + 1)) {
    ++lines;
    ASSERT_GT(at, 0u);
    EXPECT_EQ(bytes[at - 1], '\r') << "a bare line feed at byte " << at;
  }
  EXPECT_EQ(lines, 3810u);
  EXPECT_EQ(bytes.substr(bytes.size() - 16), "</objectModel>\r\n");
  EXPECT_EQ(bytes.find('\0'), std::string::npos);
  EXPECT_EQ(nonAscii(bytes), 45);
  EXPECT_EQ(bytes.compare(0, sizeof theDeclaration - 1, theDeclaration), 0);
  EXPECT_NE(bytes.find("Reprinted with permission from IEEE 1516.2(TM)-2025"), std::string::npos);
}

TEST(StandardMim, NeitherHasAByteOrderMark) {
  EXPECT_NE(theHLAeStandardMIM_xml[0], 0xEF);
  EXPECT_NE(theHLA4StandardMIM_xml[0], 0xEF);
}

TEST(StandardMim, EachIsOneObjectModelOfItsEdition) {
  Outline evolved = outline(held(theHLAeStandardMIM_xml, theHLAeStandardMIM_xml_len));
  EXPECT_EQ(evolved.rootName, "objectModel");
  EXPECT_EQ(evolved.nameSpace, "http://standards.ieee.org/IEEE1516-2010");
  EXPECT_EQ(evolved.sections, theSections);
  EXPECT_EQ(evolved.type, "FOM");
  EXPECT_EQ(evolved.version, "1.0");
  EXPECT_EQ(evolved.security, "Unclassified");
  EXPECT_EQ(evolved.domain, "HLA General");
  EXPECT_EQ(evolved.date, "2010-08-16");

  Outline four = outline(held(theHLA4StandardMIM_xml, theHLA4StandardMIM_xml_len));
  EXPECT_EQ(four.rootName, "objectModel");
  EXPECT_EQ(four.nameSpace, "http://standards.ieee.org/IEEE1516-2025");
  EXPECT_EQ(four.sections, theSections);
  EXPECT_EQ(four.type, "FOM");
  EXPECT_EQ(four.version, "1.0");
  EXPECT_EQ(four.security, "Unclassified");
  EXPECT_EQ(four.domain, "HLA General");
  EXPECT_EQ(four.date, "2025-02-10");
}

// A reader that writes down whether and how readFedFilePtr was reached.
class ProbeReader : public DtFedReader {
 public:
  int calls = 0;
  bool gotFile = false;
  int readFedFilePtr(FILE* file, DtFedTarget*, DtFilename, unsigned int, bool, bool) override {
    ++calls;
    gotFile = file != nullptr;
    return 0;
  }
};

TEST(StandardMim, TheStandardNameIgnoresCaseAndDirectoriesInReadFed) {
  ktltest::FedRecorder target;
  target.setFomType(DtFomTypeEvolved);
  for (const char* name :
       {"/nonexistent/HLASTANDARDMIM.XML", "/nonexistent/some/dir/HLAstandardMIM.xml"}) {
    ProbeReader reader;
    EXPECT_EQ(reader.readFed(name, &target, 0, false, false), 0) << name;
    EXPECT_EQ(reader.calls, 1) << name;
    EXPECT_FALSE(reader.gotFile) << name;
  }
  // isStandardMimFileName compares with case and keeps the path.
  EXPECT_FALSE(DtFedReader::isStandardMimFileName("HLASTANDARDMIM.XML", DtFomTypeEvolved));
  EXPECT_FALSE(DtFedReader::isStandardMimFileName("some/dir/HLAstandardMIM.xml", DtFomTypeEvolved));
}

TEST(StandardMim, A1516TargetHasNoStandardDocument) {
  ktltest::FedRecorder target;
  target.setFomType(DtFomType1516);
  ProbeReader reader;
  EXPECT_EQ(reader.readFed("/nonexistent/HLAstandardMIM.xml", &target, 0, false, false), 1);
  EXPECT_EQ(reader.calls, 0);
  EXPECT_EQ(DtFedReader::standardMimFileName(DtFomType1516), "HLAinvalidStandardMIM.xml");
}

TEST(StandardMim, TheInvalidNameReachesThe13ReaderWhichHasNoFile) {
  ktltest::FedRecorder target;
  target.setFomType(DtFomType13);
  DtFedReader13 reader;
  int result = -1;
  ktltest::captureOutput([&] {
    result = reader.readFed("/nonexistent/HLAinvalidStandardMIM.xml", &target, 0, false, false);
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "No Fed File Given");
}

}  // namespace
