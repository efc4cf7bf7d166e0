// Every IEEE 1516-2000 document of the test corpus (tests/data/fom/ieee1516-2000, public files
// kept as found) read by the 1516-2000 reader: the result and message each file gives, with the
// reason where the file is wrong, and the number of classes, attributes, parameters and data
// types of each kind delivered, checked against a count of the document's elements made by a
// separate scan of the text. The largest file is also validated against the DTD it names.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <ktl/fedReader1516.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/counting_target.h"
#include "support/files.h"

using namespace KORRti;
using ktltest::CountingTarget;
using ktltest::Counts;

namespace {

const std::string theCorpus = std::string(KTL_TEST_DATA_DIR) + "/fom/ieee1516-2000";
const std::string theRpr = theCorpus + "/RPR_FOM_v2.0_1516-2000.xml";

// The text without its comments.
std::string withoutComments(const std::string& text) {
  std::string out;
  size_t at = 0;
  for (;;) {
    size_t open = text.find("<!--", at);
    out += text.substr(at, open == std::string::npos ? std::string::npos : open - at);
    if (open == std::string::npos) return out;
    size_t close = text.find("-->", open + 4);
    if (close == std::string::npos) return out;
    at = close + 3;
  }
}

// The number of start tags "<name" followed by a blank, "/" or ">" (the text has no comments).
int countElements(const std::string& text, const std::string& name) {
  int count = 0;
  std::string open = "<" + name;
  size_t at = 0;
  while ((at = text.find(open, at)) != std::string::npos) {
    char after = at + open.size() < text.size() ? text[at + open.size()] : '\0';
    if (after == ' ' || after == '\t' || after == '\n' || after == '\r' || after == '/' ||
        after == '>') {
      ++count;
    }
    at += open.size();
  }
  return count;
}

Counts scan(const std::string& document) {
  const std::string text = withoutComments(document);
  Counts c;
  c.objectClasses = countElements(text, "objectClass");
  c.attributes = countElements(text, "attribute");
  c.interactionClasses = countElements(text, "interactionClass");
  c.parameters = countElements(text, "parameter");
  c.basic = countElements(text, "basicData");
  c.simple = countElements(text, "simpleData");
  c.enumerated = countElements(text, "enumeratedData");
  c.enumerators = countElements(text, "enumerator");
  c.array = countElements(text, "arrayData");
  c.fixedRecord = countElements(text, "fixedRecordData");
  c.fields = countElements(text, "field");
  c.variantRecord = countElements(text, "variantRecordData");
  c.alternatives = countElements(text, "alternative");
  c.notes = countElements(text, "note");
  c.dimensions = countElements(text, "dimension");
  c.transportations = countElements(text, "transportation");
  return c;
}

struct Read {
  int result = -1;
  std::string error;
  Counts counts;
};

Read readDocument(const std::string& path, unsigned int strict = 0, bool validate = false) {
  Read read;
  DtFedReader1516 reader;
  CountingTarget target;
  ktltest::captureOutput(
      [&] { read.result = reader.readFed(path.c_str(), &target, strict, validate, false); });
  read.error = reader.lastError().c_str();
  read.counts = target.counts;
  return read;
}

struct Expected {
  const char* file;
  int result;
  const char* error;  // lastError() after the read
  const char* why;
};

// Each file with the result and text it gives. A result of 0 may leave the last warning.
const Expected theExpected[] = {
    {"RPR_FOM_v2.0_1516-2000.xml", 0, "Missing or invalid Sync Points",
     "complete and valid; it has no synchronizations section, which only warns"},
    {"certi_Billard_Test.xml", 2, "Object class root is not HLAobjectRoot in FDD file.",
     "a lenient dialect whose root class is named \"ObjectRoot\""},
    {"certi_Certi-Test-02.xml", 0, "Missing or invalid Notes", "valid; no notes section"},
    {"certi_Certi-Test-02_small.xml", 0, "Missing or invalid Time",
     "valid; only objects, interactions and synchronizations: the last missing one is time"},
    {"certi_OMT-DIF_template.xml", 2,
     "Dimension \"xxx\" upper bound is invalid in FDD file.\nname= xxx\nnameNotes= xxx\n"
     "dataType= xxx\ndataTypeNotes= xxx\nupperBound= xxx\nupperBoundNotes= xxx\n"
     "normalization= xxx\nnormalizationNotes= xxx\nvalue= xxx\nvalueNotes= xxx\n",
     "a template whose placeholder values are not numbers: a bad dimension always fails"},
    {"certi_testFederation.xml", 0,
     "Unexpected attribute value for Size in a Basic Datatype Representation Tag for FDD "
     "file.\n\tValue =  at XML Node basicData near line 84",
     "a basic data representation with an empty size only warns without strict checking"},
    {"jcerti_uav.xml", 0, "Missing or invalid Sync Points",
     "only an objects section; every other missing section only warns"},
    {"openrti_fddget_fdd-1.xml", 0, "Missing or invalid Sync Points", "a minimal document"},
    {"openrti_fddget_fdd-2.xml", 2, "Object class root is not HLAobjectRoot in FDD file.",
     "its first object class is not the root"},
    {"openrti_interaction_fdd.xml", 0, "Missing or invalid Sync Points", "complete"},
    {"openrti_objectinstance_fdd.xml", 0, "Missing or invalid Sync Points", "complete"},
    {"openrti_time_fdd.xml", 0, "Missing or invalid Sync Points", "complete"},
    {"portico_datatypeEdgecases.xml", 0, "Missing or invalid Notes",
     "empty data type sections; no notes"},
    {"portico_testfom.xml", 0, "Missing or invalid Notes", "valid; no notes section"},
    {"negative/certi_testFederation1516-2010.xml", 2,
     "Bad FDD File. Could not find Document Root in FDD File.", "not well-formed XML"},
    {"negative/portico_testfom-invalid.xml", 2,
     "Object class root is not HLAobjectRoot in FDD file.", "its root object class has no name"},
    {"negative/portico_testfom-undefinedAttributeOrder.xml", 0, "Missing or invalid Notes",
     "an attribute without an order is delivered with order -1"},
    {"negative/portico_testfom-undefinedAttributeTransport.xml", 0, "Missing or invalid Notes",
     "an attribute without a transportation is delivered with transport -1"},
    {"negative/portico_testfom-undefinedInteractionOrder.xml", 0, "Missing or invalid Notes",
     "an interaction without an order is delivered with order -1"},
    {"negative/portico_testfom-undefinedInteractionTransport.xml", 0, "Missing or invalid Notes",
     "an interaction without a transportation is delivered with transport -1"},
};

TEST(FedCorpus1516, EveryFileGivesItsResultAndText) {
  for (const Expected& expected : theExpected) {
    SCOPED_TRACE(std::string(expected.file) + ": " + expected.why);
    Read read = readDocument(theCorpus + "/" + expected.file);
    EXPECT_EQ(read.result, expected.result);
    EXPECT_EQ(read.error, expected.error);
  }
}

TEST(FedCorpus1516, EveryFileOfTheCorpusIsListed) {
  int files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(theCorpus)) {
    if (entry.path().extension() != ".xml") continue;
    ++files;
    std::string relative = entry.path().lexically_relative(theCorpus).string();
    bool listed = false;
    for (const Expected& expected : theExpected) listed = listed || relative == expected.file;
    EXPECT_TRUE(listed) << relative;
  }
  EXPECT_EQ(files, static_cast<int>(sizeof theExpected / sizeof theExpected[0]));
}

TEST(FedCorpus1516, FilesReadWholeDeliverEveryElement) {
  for (const Expected& expected : theExpected) {
    if (expected.result != 0) continue;
    SCOPED_TRACE(expected.file);
    std::string path = theCorpus + "/" + expected.file;
    Read read = readDocument(path);
    EXPECT_EQ(read.counts, scan(ktltest::fileText(path)));
  }
}

TEST(FedCorpus1516, RprFomCountsAgainstTheDocument) {
  Read read = readDocument(theRpr);
  ASSERT_EQ(read.result, 0);
  Counts scanned = scan(ktltest::fileText(theRpr));
  EXPECT_EQ(read.counts, scanned);
  // The scan itself is not empty: the document is the large one it is known to be.
  EXPECT_EQ(scanned.objectClasses, 67);
  EXPECT_EQ(scanned.interactionClasses, 154);
  EXPECT_EQ(scanned.basic + scanned.simple + scanned.enumerated + scanned.array +
                scanned.fixedRecord + scanned.variantRecord,
            333);
  EXPECT_GT(scanned.attributes, 300);
  EXPECT_GT(scanned.parameters, 300);
}

TEST(FedCorpus1516, RprFomIsValidAgainstTheDtdItNames) {
  // The document names "hla.dtd"; the DTD of the corpus is HLA.dtd. Both go into one directory
  // under the name the document uses, and the DTD is found relative to the document.
  ktltest::TempDir dir;
  std::string document = dir.write("RPR.xml", ktltest::fileText(theRpr));
  dir.write("hla.dtd", ktltest::fileText(theCorpus + "/HLA.dtd"));
  Read read = readDocument(document, DtStrictUnexpectedContent, true);
  EXPECT_EQ(read.result, 0);
  EXPECT_EQ(read.error, "Missing or invalid Sync Points");
  EXPECT_EQ(read.counts, scan(ktltest::fileText(theRpr)));
}

TEST(FedCorpus1516, AnInvalidFileFailsValidationUnderStrictChecking) {
  ktltest::TempDir dir;
  std::string text = ktltest::fileText(theCorpus + "/certi_testFederation.xml");
  dir.write("HLA.dtd", ktltest::fileText(theCorpus + "/HLA.dtd"));
  size_t doctype = text.find("\"../../xml/ieee1516-2000/1516_2-2000/HLA.dtd\"");
  ASSERT_NE(doctype, std::string::npos);
  text.replace(doctype, std::string("\"../../xml/ieee1516-2000/1516_2-2000/HLA.dtd\"").size(),
               "\"HLA.dtd\"");
  std::string document = dir.write("testFederation.xml", text);
  Read read = readDocument(document, DtStrictUnexpectedContent, true);
  EXPECT_EQ(read.result, 2);
  EXPECT_EQ(read.error, "FDD failed DTD validation.");
  EXPECT_EQ(read.counts, Counts());
  read = readDocument(document, 0, true);
  EXPECT_EQ(read.result, 0);
}

TEST(FedCorpus1516, ADocumentTypeOtherThanObjectModelIsRefused) {
  ktltest::TempDir dir;
  std::string text = ktltest::fileText(theCorpus + "/certi_Certi-Test-02_small.xml");
  size_t doctype = text.find("<!DOCTYPE objectModel");
  ASSERT_NE(doctype, std::string::npos);
  text.replace(doctype, std::string("<!DOCTYPE objectModel").size(), "<!DOCTYPE otherModel");
  std::string document = dir.write("testfom.xml", text);
  Read read = readDocument(document, 0, true);
  EXPECT_EQ(read.result, 2);
  EXPECT_EQ(read.error, "FDD missing DTD.");
}

TEST(FedCorpus1516, OnlyStrictBitOneChangesAnOutcomeInThisForm) {
  // Bit 2 makes missing tables fatal in the 1516-2010 form only: here a document with no
  // objects section reads as it does without strict checking, and bit 1 fails it.
  ktltest::TempDir dir;
  std::string document = dir.write(
      "noObjects.xml", "<objectModel DTDversion=\"1516.2\"><interactions/></objectModel>");
  Read plain = readDocument(document);
  Read bitTwo = readDocument(document, DtStrictMissingTables);
  Read bitOne = readDocument(document, DtStrictUnexpectedContent);
  EXPECT_EQ(plain.result, 0);
  EXPECT_EQ(bitTwo.result, 0);
  EXPECT_EQ(bitTwo.error, plain.error);
  EXPECT_EQ(plain.error, "Missing or invalid Sync Points");
  EXPECT_EQ(bitOne.result, 2);
  // The whole corpus reads under bit 2 as it does without it.
  for (const Expected& expected : theExpected) {
    SCOPED_TRACE(expected.file);
    Read read = readDocument(theCorpus + "/" + expected.file, DtStrictMissingTables);
    EXPECT_EQ(read.result, expected.result);
    EXPECT_EQ(read.error, expected.error);
  }
}

TEST(FedCorpus1516, CopiesMatchTheSharedCorpus) {
  const std::string shared = std::string(KTL_SOURCE_DIR) + "/../shared/fom-corpus/ieee1516-2000";
  if (!std::filesystem::exists(shared)) GTEST_SKIP() << "no shared corpus on this machine";
  for (const auto& entry : std::filesystem::recursive_directory_iterator(shared)) {
    if (!entry.is_regular_file()) continue;
    std::string relative = entry.path().lexically_relative(shared).string();
    EXPECT_EQ(ktltest::fileText(theCorpus + "/" + relative), ktltest::fileText(entry.path()))
        << relative;
  }
}

}  // namespace
