// The IEEE 1516-2010 reader's data types, notes and tags: each record filled from its child
// elements, the nested enumerators, fields and alternatives, the endian and size rules, and for
// every walker its wrong inner element, its wrong child and its duplicate, word for word. Every
// duplicate is only reported; the enumerated one included.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"

using namespace KORRti;
using namespace ktltest;

namespace {

using EvolvedRun = std::unique_ptr<FddRunOf<DtFedReader1516e>>;

// A whole document whose dataTypes section holds these sections.
std::string withDataTypes(const std::string& sections) {
  return completeFdd2010("<dataTypes>\n" + sections + "</dataTypes>\n");
}

// One data type section of the given name holding these lines.
std::string section(const std::string& name, const std::string& lines) {
  return "<" + name + ">\n" + lines + "</" + name + ">\n";
}

// The names of a set of nested records, sorted, since the set keeps no order of its own.
template <typename Item>
std::vector<std::string> namesOf(const std::set<std::shared_ptr<Item>>& items) {
  std::vector<std::string> names;
  for (const auto& item : items) names.push_back(str(item->name));
  std::sort(names.begin(), names.end());
  return names;
}

template <typename Item>
const Item* named(const std::set<std::shared_ptr<Item>>& items, const std::string& name) {
  for (const auto& item : items) {
    if (str(item->name) == name) return item.get();
  }
  return nullptr;
}

EvolvedRun read(const std::string& document, const FddReadOptions& options = FddReadOptions(),
                const FddSetUp& setUp = FddSetUp()) {
  return runFdd<DtFedReader1516e>(document, options, setUp);
}

// ---------------------------------------------------------------------------------------------
// Records and their fields

TEST(FedReader1516eDataTypes, ABasicDataRepresentation) {
  EvolvedRun run =
      read(withDataTypes(section("basicDataRepresentations",
                                 "<basicData><name>HLAinteger16BE</name><size>16</size>"
                                 "<interpretation>Integer</interpretation><endian>Big</endian>"
                                 "<encoding>16-bit two's complement</encoding></basicData>\n"
                                 "<basicData><!-- c --><name>HLAinteger16LE</name><size> 16</size>"
                                 "<endian>Little</endian></basicData>\n")),
           strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.basicData.size(), 2u);
  const DtBasicDataRepresentationType& big = *run->target.basicData[0];
  EXPECT_EQ(str(big.name), "HLAinteger16BE");
  EXPECT_EQ(big.size, 16u);
  EXPECT_EQ(str(big.interpretation), "Integer");
  EXPECT_EQ(big.endian, 1);
  EXPECT_EQ(str(big.encoding), "16-bit two's complement");
  EXPECT_EQ(run->target.basicData[1]->endian, 2);
  EXPECT_EQ(run->target.basicData[1]->size, 16u);
}

TEST(FedReader1516eDataTypes, ASizeThatIsNotANumberIsZeroWithNoMessage) {
  for (unsigned int mask : {0u, 1u}) {
    EvolvedRun run = read(withDataTypes(section("basicDataRepresentations",
                                                "<basicData><name>B</name><size>abc</size>"
                                                "</basicData>\n")),
                          strict(mask));
    EXPECT_EQ(run->outcome.result, 0);
    EXPECT_EQ(run->outcome.error, "");
    ASSERT_EQ(run->target.basicData.size(), 1u);
    EXPECT_EQ(run->target.basicData[0]->size, 0u);
  }
}

TEST(FedReader1516eDataTypes, AnEndianOtherThanBigOrLittle) {
  const std::string document = withDataTypes(
      section("basicDataRepresentations",
              "<basicData><name>B</name><endian>big</endian><encoding>e</encoding></basicData>\n"
              "<basicData><name>After</name></basicData>\n"));
  const std::string text =
      "Unexpected tag in Endianess of a Basic Datatype Representation for FDD file.\n"
      "\tEndianess Tag = big" +
      atNode(document, "endian", "<endian>big");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(document, text);
  ASSERT_EQ(runs.lax->target.basicData.size(), 2u);
  EXPECT_EQ(runs.lax->target.basicData[0]->endian, 0);
  EXPECT_EQ(str(runs.lax->target.basicData[0]->encoding), "e");
  // Under strict bit 1 the record is delivered as far as it was filled, and the walk ends.
  ASSERT_EQ(runs.strict->target.basicData.size(), 1u);
  EXPECT_EQ(str(runs.strict->target.basicData[0]->name), "B");
  EXPECT_EQ(str(runs.strict->target.basicData[0]->encoding), "");
}

TEST(FedReader1516eDataTypes, ASimpleDatatype) {
  EvolvedRun run = read(
      withDataTypes(section("simpleDataTypes",
                            "<simpleData><name>Angle</name><representation>HLAfloat32BE"
                            "</representation><units>degree</units><resolution>0.1</resolution>"
                            "<accuracy>perfect</accuracy><semantics>An angle</semantics>"
                            "</simpleData>\n")),
      strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.simpleData.size(), 1u);
  const DtSimpleDatatypeType& simple = *run->target.simpleData[0];
  EXPECT_EQ(str(simple.name), "Angle");
  EXPECT_EQ(str(simple.representation), "HLAfloat32BE");
  EXPECT_EQ(str(simple.units), "degree");
  EXPECT_EQ(str(simple.resolution), "0.1");
  EXPECT_EQ(str(simple.accuracy), "perfect");
  EXPECT_EQ(str(simple.semantics), "An angle");
}

TEST(FedReader1516eDataTypes, AnArrayDatatypeKeepsItsCardinalityAsText) {
  EvolvedRun run =
      read(withDataTypes(section("arrayDataTypes",
                                 "<arrayData><name>Chars</name><dataType>HLAASCIIchar</dataType>"
                                 "<cardinality>Dynamic</cardinality><encoding>HLAvariableArray"
                                 "</encoding><semantics>text</semantics></arrayData>\n")),
           strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.arrayData.size(), 1u);
  const DtArrayDatatypeType& array = *run->target.arrayData[0];
  EXPECT_EQ(str(array.name), "Chars");
  EXPECT_EQ(str(array.dataType), "HLAASCIIchar");
  EXPECT_EQ(str(array.cardinality), "Dynamic");
  EXPECT_EQ(str(array.encoding), "HLAvariableArray");
  EXPECT_EQ(str(array.semantics), "text");
}

TEST(FedReader1516eDataTypes, AnEnumeratedDatatypeWithItsEnumerators) {
  EvolvedRun run =
      read(withDataTypes(section("enumeratedDataTypes",
                                 "<enumeratedData><name>Colour</name><representation>HLAoctet"
                                 "</representation><semantics>s</semantics>\n"
                                 "<enumerator><name>Red</name><value>1</value></enumerator>\n"
                                 "<!-- c -->\n"
                                 "<enumerator><name>Blue</name><value>2</value></enumerator>\n"
                                 "</enumeratedData>\n")),
           strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.enumeratedData.size(), 1u);
  const DtEnumeratedDatatypeType& colour = *run->target.enumeratedData[0];
  EXPECT_EQ(str(colour.name), "Colour");
  EXPECT_EQ(str(colour.representation), "HLAoctet");
  EXPECT_EQ(str(colour.semantics), "s");
  EXPECT_EQ(namesOf(colour.enumerators), (std::vector<std::string>{"Blue", "Red"}));
  ASSERT_NE(named(colour.enumerators, "Red"), nullptr);
  EXPECT_EQ(str(named(colour.enumerators, "Red")->values), "1");
  EXPECT_EQ(str(named(colour.enumerators, "Blue")->values), "2");
}

TEST(FedReader1516eDataTypes, AFixedRecordWithItsFields) {
  EvolvedRun run =
      read(withDataTypes(section("fixedRecordDataTypes",
                                 "<fixedRecordData><name>Point</name><encoding>HLAfixedRecord"
                                 "</encoding><semantics>s</semantics>\n"
                                 "<field><name>x</name><dataType>HLAfloat64BE</dataType><semantics>"
                                 "east</semantics></field>\n"
                                 "<field><name>y</name><dataType>HLAfloat64BE</dataType></field>\n"
                                 "</fixedRecordData>\n")),
           strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.fixedRecordData.size(), 1u);
  const DtFixedRecordDatatypeType& point = *run->target.fixedRecordData[0];
  EXPECT_EQ(str(point.name), "Point");
  EXPECT_EQ(str(point.encoding), "HLAfixedRecord");
  EXPECT_EQ(str(point.semantics), "s");
  EXPECT_EQ(namesOf(point.fields), (std::vector<std::string>{"x", "y"}));
  // The target's duplicate test had a copy that shares the fields: it marked them.
  EXPECT_EQ(str(named(point.fields, "x")->semantics), "east+seen");
  EXPECT_EQ(str(named(point.fields, "y")->dataType), "HLAfloat64BE");
}

TEST(FedReader1516eDataTypes, AVariantRecordWithItsAlternatives) {
  EvolvedRun run =
      read(withDataTypes(section("variantRecordDataTypes",
                                 "<variantRecordData><name>Shape</name><discriminant>Kind"
                                 "</discriminant><dataType>KindEnum</dataType><alternative>"
                                 "<enumerator>Circle</enumerator><name>radius</name><dataType>"
                                 "HLAfloat32BE</dataType><semantics>r</semantics></alternative>\n"
                                 "<alternative><enumerator>HLAother</enumerator><name>none</name>"
                                 "</alternative><encoding>HLAvariantRecord</encoding><semantics>s"
                                 "</semantics></variantRecordData>\n")),
           strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.variantRecordData.size(), 1u);
  const DtVariantRecordDatatypeType& shape = *run->target.variantRecordData[0];
  EXPECT_EQ(str(shape.name), "Shape");
  EXPECT_EQ(str(shape.discriminant), "Kind");
  EXPECT_EQ(str(shape.dataType), "KindEnum");
  EXPECT_EQ(str(shape.encoding), "HLAvariantRecord");
  EXPECT_EQ(str(shape.semantics), "s");
  EXPECT_EQ(namesOf(shape.alternatives), (std::vector<std::string>{"none", "radius"}));
  const DtAlternativeType* radius = named(shape.alternatives, "radius");
  ASSERT_NE(radius, nullptr);
  EXPECT_EQ(str(radius->enumerator), "Circle");
  EXPECT_EQ(str(radius->dataType), "HLAfloat32BE");
  EXPECT_EQ(str(radius->semantics), "r");
}

TEST(FedReader1516eDataTypes, AVariantRecordIsReadInOnePassInDocumentOrder) {
  // Under strict bit 1 the wrong element ends the filling: what stands before it is read, what
  // stands after it is not, and the record is still delivered before the walk ends.
  const std::string document = withDataTypes(section(
      "variantRecordDataTypes",
      "<variantRecordData><name>V</name><alternative><enumerator>A</enumerator><name>a</name>"
      "</alternative>\n<bogus/><discriminant>D</discriminant></variantRecordData>\n"
      "<variantRecordData><name>After</name></variantRecordData>\n"));
  EvolvedRun run = read(document, strict(1));
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error,
            "Unexpected tag in Variant Datatype for FDD file.\n\tVariant Datatype Tag = bogus" +
                atNode(document, "bogus", "<bogus"));
  ASSERT_EQ(run->target.variantRecordData.size(), 1u);
  EXPECT_EQ(namesOf(run->target.variantRecordData[0]->alternatives), std::vector<std::string>{"a"});
  EXPECT_EQ(str(run->target.variantRecordData[0]->discriminant), "");
  // Without the bit the rest is read.
  EvolvedRun lax = read(document);
  EXPECT_EQ(lax->outcome.result, 0);
  ASSERT_EQ(lax->target.variantRecordData.size(), 2u);
  EXPECT_EQ(str(lax->target.variantRecordData[0]->discriminant), "D");
}

TEST(FedReader1516eDataTypes, NotesAndTags) {
  EvolvedRun run = read(completeFdd2010("<notes>\n<note><label>N1</label><semantics>first"
                                        "</semantics></note>\n<!-- c -->\n</notes>\n"
                                        "<tags>\n<updateReflectTag><dataType>HLAopaqueData"
                                        "</dataType><semantics>u</semantics></updateReflectTag>\n"
                                        "<sendReceiveTag/>\n</tags>\n"),
                        strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.notes.size(), 1u);
  EXPECT_EQ(str(run->target.notes[0]->label), "N1");
  EXPECT_EQ(str(run->target.notes[0]->semantics), "first");
  // Each tag is named by its element.
  ASSERT_EQ(run->target.tags.size(), 2u);
  EXPECT_EQ(str(run->target.tags[0]->name), "updateReflectTag");
  EXPECT_EQ(str(run->target.tags[0]->dataType), "HLAopaqueData");
  EXPECT_EQ(str(run->target.tags[0]->semantics), "u");
  EXPECT_EQ(str(run->target.tags[1]->name), "sendReceiveTag");
}

TEST(FedReader1516eDataTypes, ANullTargetReadsEveryRecordAndKeepsNone) {
  DtFedReader1516e reader;
  FedReadOutcome outcome = readFddText(
      reader,
      withDataTypes(section("basicDataRepresentations", "<basicData><name>B</name></basicData>\n") +
                    section("enumeratedDataTypes",
                            "<enumeratedData><name>E</name><enumerator><name>e</name>"
                            "</enumerator></enumeratedData>\n") +
                    section("fixedRecordDataTypes",
                            "<fixedRecordData><name>F</name><field><name>f</name></field>"
                            "</fixedRecordData>\n")),
      nullptr, strict(1));
  EXPECT_EQ(outcome.result, 0) << outcome.error;
}

// ---------------------------------------------------------------------------------------------
// The dataTypes tree

TEST(FedReader1516eDataTypes, SectionsInAnyOrderAndRepeated) {
  EvolvedRun run = read(
      withDataTypes(section("simpleDataTypes", "<simpleData><name>S1</name></simpleData>\n") +
                    section("basicDataRepresentations", "<basicData><name>B</name></basicData>\n") +
                    "<!-- c -->\n" +
                    section("simpleDataTypes", "<simpleData><name>S2</name></simpleData>\n")),
      atLevel(3));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->target.deliveries(),
            (Calls{"setFomType(3)", "addSimpleDatatype(S1)", "addBasicDataRepresentation(B)",
                   "addSimpleDatatype(S2)"}));
  EXPECT_TRUE(contains(run->outcome.out,
                       "DataType Tree Tag: simpleDataTypes\n"
                       "DataType Tree Tag: basicDataRepresentations\n"
                       "DataType Tree Tag: comment\n"
                       "DataType Tree Tag: simpleDataTypes\n"))
      << run->outcome.out;
}

TEST(FedReader1516eDataTypes, AnUnexpectedSection) {
  const std::string document =
      withDataTypes("<bogusDataTypes/>\n" +
                    section("simpleDataTypes", "<simpleData><name>S</name></simpleData>\n"));
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      document,
      "Unexpected tag in dataTypes tree for FDD file.\n\tDataType Tag = bogusDataTypes *" +
          atNode(document, "bogusDataTypes", "<bogusDataTypes"));
  EXPECT_EQ(runs.lax->target.simpleData.size(), 1u);
  EXPECT_TRUE(runs.strict->target.simpleData.empty());
}

TEST(FedReader1516eDataTypes, The2025ReaderReadsTheSameRecords) {
  const std::string body =
      "<dataTypes>\n" +
      section("enumeratedDataTypes",
              "<enumeratedData><name>E</name><enumerator><name>e</name><value>0</value>"
              "</enumerator></enumeratedData>\n") +
      "<referenceDataTypes><referenceData><name>R</name></referenceData></referenceDataTypes>\n" +
      "</dataTypes>\n";
  auto run = runFdd<DtFedReader1516_4>(completeFdd2010(body, "IEEE1516-2025"), strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->target.deliveries(), (Calls{"setFomType(4)", "addEnumeratedDatatype(E)"}));
}

// ---------------------------------------------------------------------------------------------
// The words of every walker

struct Walker {
  const char* name;        // for the trace
  const char* top;         // the top-level element, "dataTypes" for the data types
  const char* section;     // the section element ("" where top is the section)
  const char* child;       // the element of one record
  const char* nameField;   // the element that names a record
  const char* operation;   // the target's add operation
  const char* wrongInner;  // text of a wrong element inside a record
  const char* wrongChild;  // text of a wrong child of the section ("" if none)
  const char* duplicateFirst;
  const char* duplicateSecond;
};

const Walker theWalkers[] = {
    {"basic", "dataTypes", "basicDataRepresentations", "basicData", "name",
     "addBasicDataRepresentation",
     "Unexpected tag in Basic Datatype Representation for FDD file.\n"
     "\tBasic Datatype Representation Tag = ",
     "Unexpected tag in Basic Datatype Representation tree for FDD file.\n"
     "\tBasic Datatype Representation Tag = ",
     "Ignoring Unexpected duplicate Basic Data Representation ( ",
     " ) for FDD file.\n\tBasic Data Representation = "},
    {"simple", "dataTypes", "simpleDataTypes", "simpleData", "name", "addSimpleDatatype",
     "Unexpected tag in Simple Datatype for FDD file.\n\tSimple Datatype Tag = ",
     "Unexpected tag in Simple Datatype tree for FDD file.\n\tSimple Datatype Tag = ",
     "Ignoring Unexpected duplicate Simple Datatype ( ", " ) for FDD file.\n\tSimple Datatype = "},
    {"array", "dataTypes", "arrayDataTypes", "arrayData", "name", "addArrayDatatype",
     "Unexpected tag in Array Datatype for FDD file.\n\tArray Datatype Tag = ",
     "Unexpected tag in Array Datatype tree for FDD file.\n\tArray Datatype Tag = ",
     "Ignoring Unexpected duplicate Array Datatype ( ", " ) for FDD file.\n\tArray Datatype = "},
    {"enumerated", "dataTypes", "enumeratedDataTypes", "enumeratedData", "name",
     "addEnumeratedDatatype",
     "Unexpected tag in Enumerated Datatype for FDD file.\n\tEnumerated Datatype Tag = ",
     "Unexpected tag in Enumerated Datatype tree for FDD file.\n\tEnumerated Datatype Tag = ",
     "Ignoring Unexpected duplicate Enumerated Datatype ( ",
     " ) for FDD file.\n\tEnumerated Datatype = "},
    {"fixed record", "dataTypes", "fixedRecordDataTypes", "fixedRecordData", "name",
     "addFixedRecordDatatype",
     "Unexpected tag in Fixed Datatype for FDD file.\n\tFixed Datatype Tag = ",
     "Unexpected tag in Fixed Datatype tree for FDD file.\n\tFixed Datatype Tag = ",
     "Ignoring Unexpected duplicate Fixed Record Datatype ( ",
     " ) for FDD file.\n\tFixed Record Datatype = "},
    {"variant record", "dataTypes", "variantRecordDataTypes", "variantRecordData", "name",
     "addVariantRecordDatatype",
     "Unexpected tag in Variant Datatype for FDD file.\n\tVariant Datatype Tag = ",
     "Unexpected tag in Variant Datatype tree for FDD file.\n\tVariant Datatype Tag = ",
     "Ignoring Unexpected duplicate Variant Record Datatype ( ",
     " ) for FDD file.\n\tVariant Record Datatype = "},
    {"note", "notes", "", "note", "label", "addNote",
     "Unexpected tag in Note for FDD file.\n\tNote Tag = ",
     "Unexpected tag in Notes Tree for FDD file.\n\tNotes Tag = ",
     "Ignoring Unexpected duplicate Note ( ", " ) for FDD file.\n\tNote = "},
};

// A document with these record lines in the walker's section.
std::string documentOf(const Walker& walker, const std::string& lines) {
  std::string inner = *walker.section ? section(walker.section, lines) : lines;
  return completeFdd2010(std::string("<") + walker.top + ">\n" + inner + "</" + walker.top + ">\n");
}

// One record line of the walker named name, with extra inside it.
std::string record(const Walker& walker, const std::string& name, const std::string& extra = "") {
  return std::string("<") + walker.child + "><" + walker.nameField + ">" + name + "</" +
         walker.nameField + ">" + extra + "</" + walker.child + ">\n";
}

TEST(FedReader1516eDataTypeWords, AWrongElementInsideARecord) {
  for (const Walker& walker : theWalkers) {
    SCOPED_TRACE(walker.name);
    const std::string document =
        documentOf(walker, record(walker, "R", "<bogus>x</bogus>") + record(walker, "After"));
    const std::string text =
        std::string(walker.wrongInner) + "bogus" + atNode(document, "bogus", "<bogus");
    auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(document, text);
    EXPECT_EQ(runs.lax->target.callsOf(walker.operation).size(), 2u);
    // Under strict bit 1 the record is delivered and the walk ends after it.
    EXPECT_EQ(runs.strict->target.callsOf(walker.operation),
              Calls{std::string(walker.operation) + "(R)"});
  }
}

TEST(FedReader1516eDataTypeWords, AWrongChildOfTheSection) {
  for (const Walker& walker : theWalkers) {
    SCOPED_TRACE(walker.name);
    const std::string document = documentOf(walker, "<bogus/>\n" + record(walker, "After"));
    const std::string text =
        std::string(walker.wrongChild) + "bogus *" + atNode(document, "bogus", "<bogus");
    auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(document, text);
    EXPECT_EQ(runs.lax->target.callsOf(walker.operation).size(), 1u);
    EXPECT_TRUE(runs.strict->target.callsOf(walker.operation).empty());
  }
}

TEST(FedReader1516eDataTypeWords, ADuplicateIsReportedAndNeverFatal) {
  for (const Walker& walker : theWalkers) {
    SCOPED_TRACE(walker.name);
    const std::string document =
        documentOf(walker, record(walker, "R") + record(walker, "R", "<!-- second -->") +
                               record(walker, "After"));
    const std::string text = std::string(walker.duplicateFirst) + "R" + walker.duplicateSecond +
                             walker.child + " *" + atNode(document, walker.child, "second");
    EvolvedRun run =
        read(document, strict(1, 3), [](FddRecorder& target) { target.duplicatesByName = true; });
    EXPECT_EQ(run->outcome.result, 0);
    EXPECT_EQ(run->outcome.error, text);
    EXPECT_TRUE(contains(run->outcome.out, text + "\n")) << run->outcome.out;
    // The first stays, the second is dropped and the walk goes on.
    EXPECT_EQ(
        run->target.callsOf(walker.operation),
        (Calls{std::string(walker.operation) + "(R)", std::string(walker.operation) + "(After)"}));
  }
}

TEST(FedReader1516eDataTypeWords, TheNestedRecords) {
  struct Nested {
    const char* name;
    const char* walker;  // the section and the record around the nested one
    const char* before;
    const char* after;
    const char* wrong;
  };
  const Nested cases[] = {
      {"enumerator", "enumeratedDataTypes", "<enumeratedData><name>R</name><enumerator>",
       "</enumerator></enumeratedData>\n",
       "Unexpected tag in Enumerator in Enumerated Datatype for FDD file.\n\tEnumerator = "},
      {"field", "fixedRecordDataTypes", "<fixedRecordData><name>R</name><field>",
       "</field></fixedRecordData>\n",
       "Unexpected tag in Field in Fixed Datatype for FDD file.\n\tField Tag = "},
      {"alternative", "variantRecordDataTypes", "<variantRecordData><name>R</name><alternative>",
       "</alternative></variantRecordData>\n",
       "Unexpected tag in Alternate in Variant Datatype for FDD file.\n\tAlternative Tag = "},
  };
  for (const Nested& nested : cases) {
    SCOPED_TRACE(nested.name);
    const std::string document = withDataTypes(section(
        nested.walker, std::string(nested.before) + "<name>n</name><bogus/>" + nested.after));
    const std::string text =
        std::string(nested.wrong) + "bogus" + atNode(document, "bogus", "<bogus");
    auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(document, text);
    EXPECT_EQ(runs.lax->target.deliveries().size(), 2u);
    // The record with its nested one, as far as read, still reaches the target.
    EXPECT_EQ(runs.strict->target.deliveries().size(), 2u);
  }
}

TEST(FedReader1516eDataTypeWords, TheWordsOfTags) {
  const std::string wrong = completeFdd2010(
      "<tags>\n<updateReflectTag><bogus/><dataType>T</dataType></updateReflectTag>\n"
      "<sendReceiveTag/>\n</tags>\n");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      wrong, "Unexpected tag in User Supplied Tag for FDD file.\n\tUser Supplied Tag = bogus" +
                 atNode(wrong, "bogus", "<bogus"));
  EXPECT_EQ(runs.lax->target.tags.size(), 2u);
  ASSERT_EQ(runs.strict->target.tags.size(), 1u);
  EXPECT_EQ(str(runs.strict->target.tags[0]->dataType), "");

  const std::string twice = completeFdd2010(
      "<tags>\n<updateReflectTag/>\n<updateReflectTag><semantics>second</semantics>"
      "</updateReflectTag>\n</tags>\n");
  EvolvedRun run =
      read(twice, strict(1), [](FddRecorder& target) { target.duplicatesByName = true; });
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->outcome.error,
            "Ignoring Unexpected duplicate User Supplied Tag ( updateReflectTag ) for FDD file.\n"
            "\tUser Supplied Tag = updateReflectTag *" +
                atNode(twice, "updateReflectTag", "second"));
  EXPECT_EQ(run->target.tags.size(), 1u);
}

}  // namespace
