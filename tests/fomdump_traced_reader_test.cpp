// fomdump's traced readers: over every XML file of the corpus they give the library reader's
// result, text and model, call for call; on a small document of each dialect they give the line
// of each declaration, the type each attribute and parameter names, each dependency's line and
// the reference data types of an IEEE 1516-2025 module.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <ktl/fedReader.h>
#include <ktl/fedReaderFactory.h>

#include "fomdump/model.h"
#include "fomdump/print.h"
#include "fomdump/tracedReader.h"
#include "support/capture.h"
#include "support/files.h"

using namespace KORRti;
using fomdump::ModelRecorder;

namespace {

struct Read {
  int result = -1;
  std::string error;
  std::string model;  // as JSON
  std::unique_ptr<ModelRecorder> recorder = std::make_unique<ModelRecorder>();
};

Read readWith(const std::string& file, DtFomType type, bool traced, unsigned int mask = 0) {
  Read read;
  ktltest::captureOutput([&] {
    std::unique_ptr<DtFedReader> reader(
        traced ? fomdump::makeTracedReader(type, *read.recorder)
               : std::unique_ptr<DtFedReader>(DtFedReaderFactory().makeFedReader(type)));
    read.result = reader->readFed(file.c_str(), read.recorder.get(), mask, false, false);
    read.error = reader->lastError().c_str();
  });
  read.model = fomdump::modelJson(file, type, *read.recorder);
  return read;
}

// The attributes and parameters of a document's classes that name a data type, counted by
// XPath whatever the dialect.
int typedMembers(const std::string& file) {
  std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> doc(
      xmlReadFile(file.c_str(), nullptr, XML_PARSE_NONET), xmlFreeDoc);
  if (!doc) return -1;
  std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext*)> context(
      xmlXPathNewContext(doc.get()), xmlXPathFreeContext);
  std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObject*)> found(
      xmlXPathEvalExpression(
          BAD_CAST "//*[local-name()='objectClass']/*[local-name()='attribute']"
                   "[normalize-space(@dataType) or normalize-space(*[local-name()='dataType'])] | "
                   "//*[local-name()='interactionClass']/*[local-name()='parameter']"
                   "[normalize-space(@dataType) or normalize-space(*[local-name()='dataType'])]",
          context.get()),
      xmlXPathFreeObject);
  return found && found->nodesetval ? found->nodesetval->nodeNr : 0;
}

TEST(FomdumpTracedReader, EveryCorpusFileReadsAsTheLibraryReadsIt) {
  const std::string data = std::string(KTL_TEST_DATA_DIR) + "/fom";
  int files = 0;
  int traced = 0;
  for (const char* dialect : {"ieee1516-2000", "ieee1516-2010", "ieee1516-2025"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(data + "/" + dialect)) {
      if (entry.path().extension() != ".xml") continue;
      const std::string file = entry.path().string();
      SCOPED_TRACE(file);
      DtFomType type = DtFomTypeUnknown;
      ktltest::captureOutput([&] { type = DtFedReader::checkFomType(file.c_str()); });
      if (type == DtFomTypeUnknown) continue;
      for (unsigned int mask : {0u, static_cast<unsigned int>(DtStrictUnexpectedContent)}) {
        Read plain = readWith(file, type, false, mask);
        Read mine = readWith(file, type, true, mask);
        EXPECT_EQ(mine.result, plain.result);
        EXPECT_EQ(mine.error, plain.error);
        EXPECT_EQ(mine.model, plain.model);
      }
      ++files;
      Read mine = readWith(file, type, true);
      if (mine.result != DtFedOk) continue;
      // Every typed member of a file read whole is written down.
      EXPECT_EQ(static_cast<int>(mine.recorder->memberTypes.size()), typedMembers(file));
      if (!mine.recorder->memberTypes.empty()) ++traced;
    }
  }
  // The corpus holds 195 XML files; 93 of those read whole have typed members (the others are
  // small test modules, data type modules and files of the 1516-2000 test sets).
  EXPECT_EQ(files, 195);
  EXPECT_EQ(traced, 93);
}

// The body of a 1516-2010 or 2025 document, from its third line.
std::string document(const std::string& nameSpace, const std::string& body) {
  return "<?xml version=\"1.0\"?>\n<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-" +
         nameSpace + "\">\n" + body + "</objectModel>\n";
}

TEST(FomdumpTracedReader, EachDeclarationKeepsItsLine) {
  ktltest::TempDir dir;
  const std::string file = dir.write(
      "m.xml",
      document("2010",
               "<modelIdentification><name>M</name>\n"                                    // 3
               "<reference><type>Dependency</type><identification>Base</identification>"  //
               "</reference></modelIdentification>\n"                                     // 4
               "<objects><objectClass><name>HLAobjectRoot</name>\n"                       // 5
               "<objectClass><name>C</name>\n"                                            // 6
               "<attribute><name>a</name><dataType>T</dataType></attribute>\n"            // 7
               "<attribute><name>b</name><dataType>U</dataType></attribute>\n"            // 8
               "</objectClass></objectClass></objects>\n"                                 // 9
               "<interactions><interactionClass><name>HLAinteractionRoot</name>\n"        // 10
               "<interactionClass><name>I</name>\n"                                       // 11
               "<parameter><name>p</name><dataType>V</dataType></parameter>\n"            // 12
               "</interactionClass></interactionClass></interactions>\n"                  // 13
               "<dimensions>\n<dimension><name>D</name><upperBound>9</upperBound>"        // 14-15
               "</dimension></dimensions>\n"
               "<transportations>\n<transportation><name>R</name></transportation>"        // 16-17
               "</transportations>\n"                                                      //
               "<switches><autoProvide isEnabled=\"true\"/></switches>\n"                  // 18
               "<updateRates>\n<updateRate><name>U1</name><rate>1</rate></updateRate>\n"   // 19-20
               "<updateRate><name>U2</name><rate>2</rate></updateRate></updateRates>\n"    // 21
               "<dataTypes><simpleDataTypes>\n<simpleData><name>S</name></simpleData>\n"   // 22-23
               "<simpleData><name>S2</name></simpleData></simpleDataTypes></dataTypes>\n"  // 24
               "<notes>\n<note><label>N</label></note></notes>\n"));                       // 25-26
  Read read = readWith(file, DtFomTypeEvolved, true);
  ASSERT_EQ(read.result, DtFedOk) << read.error;
  const ModelRecorder& model = *read.recorder;
  EXPECT_EQ(model.dependencyLines.at("Base"), 4);
  ASSERT_EQ(model.objects.size(), 2u);
  EXPECT_EQ(model.objects[0].line, 5);
  EXPECT_EQ(model.objects[1].line, 6);
  ASSERT_EQ(model.objects[1].attributes.size(), 2u);
  EXPECT_EQ(model.objects[1].attributes[0].line, 7);
  EXPECT_EQ(model.objects[1].attributes[1].line, 8);
  ASSERT_EQ(model.interactions.size(), 2u);
  EXPECT_EQ(model.interactions[1].line, 11);
  ASSERT_EQ(model.memberTypes.size(), 3u);
  const fomdump::MemberType& a = model.memberTypes[0];
  EXPECT_EQ(a.owner + " " + a.member + " " + a.dataType + " " + std::to_string(a.line),
            "HLAobjectRoot.C a T 7");
  EXPECT_TRUE(a.attribute);
  const fomdump::MemberType& p = model.memberTypes[2];
  EXPECT_EQ(p.owner + " " + p.member + " " + p.dataType + " " + std::to_string(p.line),
            "HLAinteractionRoot.I p V 12");
  EXPECT_FALSE(p.attribute);
  ASSERT_EQ(model.dimensions.size(), 1u);
  EXPECT_EQ(model.dimensions[0].line, 15);
  ASSERT_EQ(model.transportations.size(), 1u);
  EXPECT_EQ(model.lineOf(model.transportations[0].get()), 17);
  ASSERT_EQ(model.switches.size(), 1u);
  EXPECT_EQ(model.switches[0].line, 18);
  ASSERT_EQ(model.updateRates.size(), 2u);
  EXPECT_EQ(model.lineOf(model.updateRates[0].get()), 20);
  EXPECT_EQ(model.lineOf(model.updateRates[1].get()), 21);
  ASSERT_EQ(model.dataTypes.simple.size(), 2u);
  EXPECT_EQ(model.lineOf(model.dataTypes.simple[0].get()), 23);
  EXPECT_EQ(model.lineOf(model.dataTypes.simple[1].get()), 24);
  ASSERT_EQ(model.notes.size(), 1u);
  EXPECT_EQ(model.lineOf(model.notes[0].get()), 26);
  // The line is the reader's to keep only while it reads.
  EXPECT_EQ(model.line, 0);
  EXPECT_EQ(model.sectionLines, nullptr);
}

TEST(FomdumpTracedReader, A2025ModuleKeepsItsReferenceDataTypes) {
  ktltest::TempDir dir;
  const std::string file = dir.write(
      "m.xml", document("2025",
                        "<modelIdentification><name>M</name></modelIdentification>\n"  // 3
                        "<dataTypes><referenceDataTypes>\n"                            // 4
                        "<referenceDataType><name>R1</name></referenceDataType>\n"     // 5
                        "<referenceDataType><name>R2</name></referenceDataType>\n"     // 6
                        "</referenceDataTypes></dataTypes>\n"));
  Read read = readWith(file, DtFomType2025, true);
  ASSERT_EQ(read.result, DtFedOk) << read.error;
  const auto& names = read.recorder->referenceDataTypes;
  ASSERT_EQ(names.size(), 2u);
  EXPECT_EQ(names[0].name + " " + std::to_string(names[0].line), "R1 5");
  EXPECT_EQ(names[1].name + " " + std::to_string(names[1].line), "R2 6");
  // The library's reader delivers nothing from the section.
  EXPECT_EQ(read.model, readWith(file, DtFomType2025, false).model);
}

TEST(FomdumpTracedReader, AnHla13FileTakesTheFactorysReaderUnchanged) {
  ModelRecorder recorder;
  std::unique_ptr<DtFedReader> reader = fomdump::makeTracedReader(DtFomType13, recorder);
  std::unique_ptr<DtFedReader> plain(DtFedReaderFactory().makeFedReader(DtFomType13));
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(typeid(*reader), typeid(*plain));
  EXPECT_EQ(fomdump::makeTracedReader(DtFomTypeUnknown, recorder), nullptr);
}

}  // namespace
