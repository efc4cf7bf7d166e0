// The IEEE 1516-2000 reader's data types and notes: the six kinds of data type and the notes,
// every field each one fills, the wrong child, wrong attribute and duplicate reports of each
// walker, the values that basic data representations check, the order in which a variant record
// reads its parts, and the sections in any order and repeated.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include <ktl/fedReader1516.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"

using namespace KORRti;
using namespace ktltest;

namespace {

// A whole document whose dataTypes section holds sections.
std::string withDataTypes(const std::string& sections) {
  return completeFdd("<dataTypes>\n" + sections + "</dataTypes>\n");
}

// The calls that offer or deliver data types and notes.
Calls dataTypeCalls(const FddRecorder& target) {
  Calls found;
  for (const std::string& call : target.calls) {
    if (call.find("Data") != std::string::npos || call.find("Datatype") != std::string::npos ||
        call.find("Note(") != std::string::npos) {
      found.push_back(call);
    }
  }
  return found;
}

// Each text of a record against the one expected of it.
void expectTexts(const std::vector<std::pair<DtString, std::string>>& texts) {
  for (const auto& text : texts) EXPECT_EQ(str(text.first), text.second);
}

// The children of a record as texts, sorted: a record keeps them in a set of pointers, whose order
// is not the document's.
template <typename Children, typename Text>
std::vector<std::string> sortedTexts(const Children& children, Text text) {
  std::vector<std::string> texts;
  for (const auto& child : children) texts.push_back(text(*child));
  std::sort(texts.begin(), texts.end());
  return texts;
}

// ---------------------------------------------------------------------------------------------
// Every kind with every field

const char* const theFullDataTypes =
    "<basicDataRepresentations>\n"
    "<basicData name=\"HLAinteger32BE\" size=\"32\" interpretation=\"signed\" endian=\"Big\" "
    "encoding=\"two's complement\" nameNotes=\"n\" sizeNotes=\"n\" interpretationNotes=\"n\" "
    "endianNotes=\"n\" encodingNotes=\"n\"/>\n"
    "<basicData name=\"HLAinteger32LE\" endian=\"Little\"/>\n"
    "</basicDataRepresentations>\n"
    "<simpleDataTypes>\n"
    "<simpleData name=\"Metres\" representation=\"HLAfloat64BE\" units=\"m\" resolution=\"0.1\" "
    "accuracy=\"perfect\" semantics=\"length\" nameNotes=\"n\" representationNotes=\"n\" "
    "unitsNotes=\"n\" resolutionNotes=\"n\" accuracyNotes=\"n\" semanticsNotes=\"n\"/>\n"
    "</simpleDataTypes>\n"
    "<enumeratedDataTypes>\n"
    "<enumeratedData name=\"Colour\" representation=\"HLAoctet\" semantics=\"hue\" "
    "nameNotes=\"n\" representationNotes=\"n\" semanticsNotes=\"n\">\n"
    "<!-- the enumerators -->\n"
    "<enumerator name=\"Red\" values=\"1\" nameNotes=\"n\" valuesNotes=\"n\"/>\n"
    "<enumerator name=\"Green\" values=\"2, 3\"/>\n"
    "</enumeratedData>\n"
    "</enumeratedDataTypes>\n"
    "<arrayDataTypes>\n"
    "<arrayData name=\"Name\" dataType=\"HLAunicodeChar\" cardinality=\"Dynamic\" "
    "encoding=\"HLAvariableArray\" semantics=\"a name\" nameNotes=\"n\" dataTypeNotes=\"n\" "
    "cardinalityNotes=\"n\" encodingNotes=\"n\" semanticsNotes=\"n\"/>\n"
    "</arrayDataTypes>\n"
    "<fixedRecordDataTypes>\n"
    "<fixedRecordData name=\"Point\" encoding=\"HLAfixedRecord\" semantics=\"a point\" "
    "nameNotes=\"n\" encodingNotes=\"n\" semanticsNotes=\"n\">\n"
    "<field name=\"x\" dataType=\"Metres\" semantics=\"east\" nameNotes=\"n\" "
    "dataTypeNotes=\"n\" semanticsNotes=\"n\"/>\n"
    "<field name=\"y\" dataType=\"Metres\"/>\n"
    "</fixedRecordData>\n"
    "</fixedRecordDataTypes>\n"
    "<variantRecordDataTypes>\n"
    "<variantRecordData name=\"Shape\" discriminant=\"kind\" dataType=\"Colour\" "
    "encoding=\"HLAvariantRecord\" semantics=\"a shape\" nameNotes=\"n\" discriminantNotes=\"n\" "
    "dataTypeNotes=\"n\" encodingNotes=\"n\" semanticsNotes=\"n\">\n"
    "<alternative enumerator=\"Red\" name=\"radius\" dataType=\"Metres\" semantics=\"r\" "
    "enumeratorNotes=\"n\" nameNotes=\"n\" dataTypeNotes=\"n\" semanticsNotes=\"n\"/>\n"
    "<alternative enumerator=\"Green\" name=\"side\" dataType=\"Metres\"/>\n"
    "</variantRecordData>\n"
    "</variantRecordDataTypes>\n";

TEST(FedReader1516DataTypes, EveryKindWithEveryField) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome =
      readFddText(reader,
                  completeFdd(std::string("<dataTypes>\n") + theFullDataTypes +
                              "</dataTypes>\n<notes>\n<note name=\"n1\" semantics=\"first note\" "
                              "nameNotes=\"x\" semanticsNotes=\"x\"/>\n</notes>\n"),
                  &target, strict(1));
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(dataTypeCalls(target),
            (Calls{"hasBasicDataRepresentation(HLAinteger32BE)",
                   "addBasicDataRepresentation(HLAinteger32BE)",
                   "hasBasicDataRepresentation(HLAinteger32LE)",
                   "addBasicDataRepresentation(HLAinteger32LE)", "hasSimpleDatatype(Metres)",
                   "addSimpleDatatype(Metres)", "hasEnumeratedDatatype(Colour)",
                   "addEnumeratedDatatype(Colour)", "hasArrayDatatype(Name)",
                   "addArrayDatatype(Name)", "hasFixedRecordDatatype(Point)",
                   "addFixedRecordDatatype(Point)", "hasVariantRecordDatatype(Shape)",
                   "addVariantRecordDatatype(Shape)", "hasNote(n1)", "addNote(n1)"}));

  ASSERT_EQ(target.basicData.size(), 2u);
  const DtBasicDataRepresentationType& basic = *target.basicData[0];
  EXPECT_EQ(str(basic.name), "HLAinteger32BE");
  EXPECT_EQ(basic.size, 32UL);
  EXPECT_EQ(str(basic.interpretation), "signed");
  EXPECT_EQ(basic.endian, 1);
  EXPECT_EQ(str(basic.encoding), "two's complement");
  EXPECT_EQ(target.basicData[1]->endian, 2);
  EXPECT_EQ(target.basicData[1]->size, 0UL);

  ASSERT_EQ(target.simpleData.size(), 1u);
  const DtSimpleDatatypeType& simple = *target.simpleData[0];
  expectTexts({{simple.name, "Metres"},
               {simple.representation, "HLAfloat64BE"},
               {simple.units, "m"},
               {simple.resolution, "0.1"},
               {simple.accuracy, "perfect"},
               {simple.semantics, "length"}});

  ASSERT_EQ(target.enumeratedData.size(), 1u);
  const DtEnumeratedDatatypeType& enumerated = *target.enumeratedData[0];
  expectTexts({{enumerated.name, "Colour"},
               {enumerated.representation, "HLAoctet"},
               {enumerated.semantics, "hue"}});
  ASSERT_EQ(enumerated.enumerators.size(), 2u);
  EXPECT_EQ(
      sortedTexts(enumerated.enumerators,
                  [](const DtEnumeratorType& e) { return str(e.name) + "=" + str(e.values); }),
      (Calls{"Green=2, 3", "Red=1"}));

  ASSERT_EQ(target.arrayData.size(), 1u);
  const DtArrayDatatypeType& array = *target.arrayData[0];
  expectTexts({{array.name, "Name"},
               {array.dataType, "HLAunicodeChar"},
               {array.cardinality, "Dynamic"},
               {array.encoding, "HLAvariableArray"},
               {array.semantics, "a name"}});

  ASSERT_EQ(target.fixedRecordData.size(), 1u);
  const DtFixedRecordDatatypeType& fixed = *target.fixedRecordData[0];
  expectTexts(
      {{fixed.name, "Point"}, {fixed.encoding, "HLAfixedRecord"}, {fixed.semantics, "a point"}});
  ASSERT_EQ(fixed.fields.size(), 2u);
  // The recorder's duplicate test marks the fields of the copy it gets with "+seen".
  EXPECT_EQ(sortedTexts(fixed.fields,
                        [](const DtFieldType& f) {
                          return str(f.name) + ":" + str(f.dataType) + ":" + str(f.semantics);
                        }),
            (Calls{"x:Metres:east+seen", "y:Metres:+seen"}));

  ASSERT_EQ(target.variantRecordData.size(), 1u);
  const DtVariantRecordDatatypeType& variant = *target.variantRecordData[0];
  expectTexts({{variant.name, "Shape"},
               {variant.discriminant, "kind"},
               {variant.dataType, "Colour"},
               {variant.encoding, "HLAvariantRecord"},
               {variant.semantics, "a shape"}});
  ASSERT_EQ(variant.alternatives.size(), 2u);
  EXPECT_EQ(sortedTexts(variant.alternatives,
                        [](const DtAlternativeType& a) {
                          return str(a.enumerator) + ":" + str(a.name) + ":" + str(a.dataType) +
                                 ":" + str(a.semantics);
                        }),
            (Calls{"Green:side:Metres:", "Red:radius:Metres:r"}));

  ASSERT_EQ(target.notes.size(), 1u);
  expectTexts({{target.notes[0]->label, "n1"}, {target.notes[0]->semantics, "first note"}});
}

TEST(FedReader1516DataTypes, TheVerboseLinesOfTheSection) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome =
      readFddText(reader,
                  completeFdd("<dataTypes kind=\"k\">\n<!-- c -->\n<simpleDataTypes flavour=\"f\">"
                              "<simpleData name=\"S\"/></simpleDataTypes>\n"
                              "<arrayDataTypes/>\n</dataTypes>\n"),
                  &target, strict(1, 3));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(contains(outcome.out,
                       "\nTop-level Tag: dataTypes\n"
                       "kind= k\n \n\n"
                       "DataType Tree Tag: simpleDataTypes\n"
                       "flavour= f\n \n\n"
                       "DataType Tree Tag: arrayDataTypes\n"
                       " \n\n"))
      << outcome.out;
}

TEST(FedReader1516DataTypes, AnUnexpectedSection) {
  const std::string text = withDataTypes(
      "<referenceDataTypes/>\n<simpleDataTypes><simpleData name=\"S\"/></simpleDataTypes>\n");
  const std::string message =
      "Unexpected tag in dataTypes tree for FDD file.\n\tDataType Tag = referenceDataTypes *" +
      atNode(text, "referenceDataTypes", "<referenceDataTypes");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(text, message);
  EXPECT_EQ(runs.lax->target.simpleData.size(), 1u);
  EXPECT_TRUE(runs.strict->target.simpleData.empty());
}

TEST(FedReader1516DataTypes, SectionsInAnyOrderAndRepeated) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd(
          "<dataTypes>\n"
          "<variantRecordDataTypes><variantRecordData name=\"V\"/></variantRecordDataTypes>\n"
          "<simpleDataTypes><simpleData name=\"S1\"/></simpleDataTypes>\n"
          "<basicDataRepresentations><basicData name=\"B\"/></basicDataRepresentations>\n"
          "<simpleDataTypes><simpleData name=\"S2\"/></simpleDataTypes>\n"
          "</dataTypes>\n"
          "<notes><note name=\"N1\"/></notes>\n"
          "<dataTypes><arrayDataTypes><arrayData name=\"A\"/></arrayDataTypes></dataTypes>\n"
          "<notes><note name=\"N2\"/></notes>\n"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  Calls adds;
  for (const std::string& call : dataTypeCalls(target)) {
    if (call.rfind("add", 0) == 0) adds.push_back(call);
  }
  EXPECT_EQ(adds, (Calls{"addVariantRecordDatatype(V)", "addSimpleDatatype(S1)",
                         "addBasicDataRepresentation(B)", "addSimpleDatatype(S2)", "addNote(N1)",
                         "addArrayDatatype(A)", "addNote(N2)"}));
}

// ---------------------------------------------------------------------------------------------
// Wrong children

// The section's element around inside, in the dataTypes section or, for notes, at the top.
std::string wrapped(const char* section, const std::string& inside) {
  std::string open = std::string("<") + section + ">\n";
  std::string close = std::string("</") + section + ">\n";
  if (std::string(section) == "notes") return completeFdd(open + inside + close);
  return withDataTypes(open + inside + close);
}

// How many records of the kind whose tag is name the target got.
size_t recordCount(const FddRecorder& t, const std::string& name) {
  if (name == "basicData") return t.basicData.size();
  if (name == "simpleData") return t.simpleData.size();
  if (name == "arrayData") return t.arrayData.size();
  if (name == "enumeratedData") return t.enumeratedData.size();
  if (name == "fixedRecordData") return t.fixedRecordData.size();
  if (name == "variantRecordData") return t.variantRecordData.size();
  return t.notes.size();
}

struct ChildCase {
  const char* section;
  const char* element;  // the tag of the section's records
  const char* message;
};

const ChildCase theChildCases[] = {
    {"basicDataRepresentations", "basicData",
     "Unexpected tag in Basic Datatypes tree for FDD file.\n\tBasic DataType Tag = "},
    {"simpleDataTypes", "simpleData",
     "Unexpected tag in Simple Datatypes tree for FDD file.\n\tSimple DataType Tag = "},
    {"arrayDataTypes", "arrayData",
     "Unexpected tag in Array Datatypes tree for FDD file.\n\tArray DataType Tag = "},
    {"enumeratedDataTypes", "enumeratedData",
     "Unexpected tag in Enumerated Datatypes tree for FDD file.\n\tEnumerated DataType Tag = "},
    {"fixedRecordDataTypes", "fixedRecordData",
     "Unexpected tag in Fixed Record Datatypes tree for FDD file.\n\tFixed Record DataType Tag "
     "= "},
    {"variantRecordDataTypes", "variantRecordData",
     "Unexpected tag in Variant Record Datatype tree for FDD file.\n\tVariant Record Datatype "
     "Tag = "},
    {"notes", "note", "Unexpected tag in Notes tree for FDD file.\n\tNote Tag = "},
};

TEST(FedReader1516DataTypes, AWrongChildOfEachSection) {
  for (const ChildCase& c : theChildCases) {
    SCOPED_TRACE(c.section);
    const std::string good = std::string("<") + c.element + " name=\"G\"/>";
    const std::string text = wrapped(c.section, "<!-- c -->\n<bogus/>\n" + good + "\n");
    LaxAndStrict runs = expectFatalOnlyWhenStrict(
        text, c.message + std::string("bogus *") + atNode(text, "bogus", "<bogus"));
    EXPECT_EQ(recordCount(runs.lax->target, c.element), 1u);
    EXPECT_EQ(recordCount(runs.strict->target, c.element), 0u);
  }
}

// The kinds whose records hold a list of children, with the reports of a fault in that list.
struct NestedCase {
  const char* section;
  const char* element;
  const char* child;
  const char* wrongChild;      // a tag that is no child, up to the tag
  const char* wrongAttribute;  // an unexpected attribute of a child, up to its name
  const char* offered;         // the duplicate test of a record that a wrong child stopped
};

const NestedCase theNestedCases[] = {
    {"enumeratedDataTypes", "enumeratedData", "enumerator",
     "Unexpected tag in Enumerator tree for FDD file.\n\tEnumerator Tag = ",
     "Unexpected attribute in an Enumerator for an Enumerated Datatype for FDD file.\n"
     "\tAttribute = ",
     "hasEnumeratedDatatype(E)"},
    {"fixedRecordDataTypes", "fixedRecordData", "field",
     "Unexpected tag in Field tree for FDD file.\n\tField Tag = ",
     "Unexpected attribute in a Field Tag for a Fixed Record Datatype for FDD file.\n"
     "\tAttribute = ",
     "hasFixedRecordDatatype(E)"},
    // A variant record reads its alternatives first, so the fault comes before its name.
    {"variantRecordDataTypes", "variantRecordData", "alternative",
     "Unexpected tag in Alternative tree for FDD file.\n\tAlternative Tag = ",
     "Unexpected attribute in a Alternative Tag for FDD file.\n\tAttribute = ",
     "hasVariantRecordDatatype()"},
};

// The case's section with a record "E" around inside, then a record "F".
std::string nestedDocument(const NestedCase& c, const std::string& inside) {
  const std::string element = c.element;
  return wrapped(c.section, "<" + element + " name=\"E\">\n" + inside + "</" + element + ">\n<" +
                                element + " name=\"F\"/>\n");
}

// How many children the first record of the kind whose tag is element holds, 0 if none came.
size_t childCount(const FddRecorder& t, const std::string& element) {
  if (recordCount(t, element) == 0) return 0;
  if (element == "enumeratedData") return t.enumeratedData[0]->enumerators.size();
  if (element == "fixedRecordData") return t.fixedRecordData[0]->fields.size();
  return t.variantRecordData[0]->alternatives.size();
}

TEST(FedReader1516DataTypes, AWrongChildOfANestedList) {
  for (const NestedCase& c : theNestedCases) {
    SCOPED_TRACE(c.element);
    const std::string child = c.child;
    const std::string text =
        nestedDocument(c, "<" + child + " name=\"a\"/>\n<other/>\n<" + child + " name=\"b\"/>\n");
    LaxAndStrict runs = expectFatalOnlyWhenStrict(
        text, c.wrongChild + std::string("other *") + atNode(text, "other", "<other"));
    // The record is delivered with what it had so far; the walk ends after it.
    const FddRecorder& strictTarget = runs.strict->target;
    EXPECT_TRUE(strictTarget.called(c.offered)) << ::testing::PrintToString(strictTarget.calls);
    EXPECT_EQ(recordCount(strictTarget, c.element), 1u);
    EXPECT_EQ(childCount(strictTarget, c.element), 1u);
  }
}

// ---------------------------------------------------------------------------------------------
// Wrong attributes

struct AttributeCase {
  const char* section;
  const char* element;  // the element with the wrong attribute, written in full with "@"
                        // where the wrong attribute goes
  const char* name;     // the element's tag
  const char* message;
};

const AttributeCase theAttributeCases[] = {
    {"basicDataRepresentations", "<basicData name=\"E\" @ encoding=\"e\"/>", "basicData",
     "Unexpected attribute in a Basic Datatype Representation Tag for FDD file.\n\tAttribute = "},
    {"simpleDataTypes", "<simpleData name=\"E\" @ units=\"e\"/>", "simpleData",
     "Unexpected attribute in a Simple Datatype for FDD file.\n\tAttribute = "},
    {"arrayDataTypes", "<arrayData name=\"E\" @ encoding=\"e\"/>", "arrayData",
     "Unexpected attribute in an Array Datatype Tag for FDD file.\n\tAttribute = "},
    {"enumeratedDataTypes", "<enumeratedData name=\"E\" @ semantics=\"e\"/>", "enumeratedData",
     "Unexpected attribute in a Enumerated Datatype Tag for FDD file.\n\tAttribute = "},
    {"fixedRecordDataTypes", "<fixedRecordData name=\"E\" @ encoding=\"e\"/>", "fixedRecordData",
     "Unexpected attribute in a Fixed Record Datatype Tag for FDD file.\n\tAttribute = "},
    {"variantRecordDataTypes", "<variantRecordData name=\"E\" @ encoding=\"e\"/>",
     "variantRecordData",
     "Unexpected attribute in a Variant Datatype Tag for FDD file.\n\tAttribute = "},
    {"notes", "<note name=\"E\" @ semantics=\"e\"/>", "note",
     "Unexpected attribute in a Note Tag for FDD file.\n\tAttribute = "},
};

// The record of the case's kind that the target got first, as "name|last field": the last
// field is the one that stands after the wrong attribute.
std::string firstRecord(const FddRecorder& t, const std::string& name) {
  if (name == "basicData" && !t.basicData.empty())
    return str(t.basicData[0]->name) + "|" + str(t.basicData[0]->encoding);
  if (name == "simpleData" && !t.simpleData.empty())
    return str(t.simpleData[0]->name) + "|" + str(t.simpleData[0]->units);
  if (name == "arrayData" && !t.arrayData.empty())
    return str(t.arrayData[0]->name) + "|" + str(t.arrayData[0]->encoding);
  if (name == "enumeratedData" && !t.enumeratedData.empty())
    return str(t.enumeratedData[0]->name) + "|" + str(t.enumeratedData[0]->semantics);
  if (name == "fixedRecordData" && !t.fixedRecordData.empty())
    return str(t.fixedRecordData[0]->name) + "|" + str(t.fixedRecordData[0]->encoding);
  if (name == "variantRecordData" && !t.variantRecordData.empty())
    return str(t.variantRecordData[0]->name) + "|" + str(t.variantRecordData[0]->encoding);
  if (name == "note" && !t.notes.empty())
    return str(t.notes[0]->label) + "|" + str(t.notes[0]->semantics);
  return "<none>";
}

TEST(FedReader1516DataTypes, AWrongAttributeOfEachKind) {
  for (const AttributeCase& c : theAttributeCases) {
    SCOPED_TRACE(c.name);
    std::string element = c.element;
    element.replace(element.find('@'), 1, "wrong=\"w\"");
    const std::string text = wrapped(c.section, element + "\n<" + c.name + " name=\"Second\"/>\n");
    LaxAndStrict runs =
        expectFatalOnlyWhenStrict(text, c.message + std::string("wrong") +
                                            atNode(text, c.name, "<" + std::string(c.name) + " "));
    EXPECT_EQ(firstRecord(runs.lax->target, c.name), "E|e");
    EXPECT_EQ(recordCount(runs.lax->target, c.name), 2u);

    // Under strict checking the filling stops at the fault, the record is still delivered, and
    // the walk ends after it.
    EXPECT_EQ(firstRecord(runs.strict->target, c.name), "E|");
    EXPECT_EQ(recordCount(runs.strict->target, c.name), 1u);
  }
}

TEST(FedReader1516DataTypes, AWrongAttributeOfANestedElement) {
  for (const NestedCase& c : theNestedCases) {
    SCOPED_TRACE(c.child);
    const std::string child = c.child;
    const std::string text =
        nestedDocument(c, "<" + child + " name=\"a\" wrong=\"w\"/>\n<" + child + " name=\"b\"/>\n");
    LaxAndStrict runs = expectFatalOnlyWhenStrict(
        text, c.wrongAttribute + std::string("wrong") + atNode(text, child, "<" + child + " "));
    EXPECT_EQ(recordCount(runs.lax->target, c.element), 2u);
    EXPECT_EQ(recordCount(runs.strict->target, c.element), 1u);
  }
}

TEST(FedReader1516DataTypes, AVariantRecordReadsItsAlternativesBeforeItsAttributes) {
  // Both faults are reported; the variant record's own attribute comes last.
  const std::string variant = withDataTypes(
      "<variantRecordDataTypes>\n<variantRecordData name=\"V\" wrong=\"w\">\n"
      "<alternative name=\"a\" odd=\"o\"/>\n</variantRecordData>\n</variantRecordDataTypes>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, variant, &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error,
            "Unexpected attribute in a Variant Datatype Tag for FDD file.\n\tAttribute = wrong" +
                atNode(variant, "variantRecordData", "<variantRecordData "));

  // A fixed record reads its own attributes first: its field's fault comes last.
  const std::string fixed = withDataTypes(
      "<fixedRecordDataTypes>\n<fixedRecordData name=\"R\" wrong=\"w\">\n"
      "<field name=\"a\" odd=\"o\"/>\n</fixedRecordData>\n</fixedRecordDataTypes>\n");
  DtFedReader1516 fixedReader;
  FddRecorder fixedTarget;
  outcome = readFddText(fixedReader, fixed, &fixedTarget);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error,
            "Unexpected attribute in a Field Tag for a Fixed Record Datatype for FDD file.\n"
            "\tAttribute = odd" +
                atNode(fixed, "field", "<field"));
}

TEST(FedReader1516DataTypes, AStrictFaultOfAVariantRecordComesAfterItsAlternatives) {
  const std::string text = withDataTypes(
      "<variantRecordDataTypes>\n"
      "<variantRecordData name=\"V\" wrong=\"w\" encoding=\"e\">\n"
      "<alternative name=\"a\" enumerator=\"A\"/>\n<alternative name=\"b\" enumerator=\"B\"/>\n"
      "</variantRecordData>\n<variantRecordData name=\"Next\"/>\n</variantRecordDataTypes>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target, strict(1));
  EXPECT_EQ(outcome.result, 2);
  ASSERT_EQ(target.variantRecordData.size(), 1u);
  EXPECT_EQ(str(target.variantRecordData[0]->name), "V");
  EXPECT_EQ(str(target.variantRecordData[0]->encoding), "");
  EXPECT_EQ(target.variantRecordData[0]->alternatives.size(), 2u);
  EXPECT_FALSE(target.called("hasVariantRecordDatatype(Next)"));

  // A fault in an alternative stops the walk before the record's own attributes.
  const std::string early = withDataTypes(
      "<variantRecordDataTypes>\n<variantRecordData name=\"V\" encoding=\"e\">\n"
      "<alternative name=\"a\" odd=\"o\"/>\n</variantRecordData>\n</variantRecordDataTypes>\n");
  DtFedReader1516 earlyReader;
  FddRecorder earlyTarget;
  outcome = readFddText(earlyReader, early, &earlyTarget, strict(1));
  EXPECT_EQ(outcome.result, 2);
  ASSERT_EQ(earlyTarget.variantRecordData.size(), 1u);
  EXPECT_EQ(str(earlyTarget.variantRecordData[0]->name), "");
  EXPECT_TRUE(earlyTarget.called("hasVariantRecordDatatype()"));
}

// ---------------------------------------------------------------------------------------------
// Duplicates

struct DuplicateCase {
  const char* section;
  const char* element;
  const char* has;
  const char* first;
  const char* second;
};

const DuplicateCase theDuplicateCases[] = {
    {"basicDataRepresentations", "basicData", "hasBasicDataRepresentation",
     "Ignoring Unexpected duplicate Basic Data Representation Tag ( ",
     " ) for FDD file.\n\tBasic Data Representation Tag = "},
    {"simpleDataTypes", "simpleData", "hasSimpleDatatype",
     "Ignoring Unexpected duplicate Simple Datatype Tag ( ",
     " ) for FDD file.\n\tSimple Datatype Tag = "},
    {"arrayDataTypes", "arrayData", "hasArrayDatatype",
     "Ignoring Unexpected duplicate Array Datatype Tag ( ",
     " ) for FDD file.\n\tArray Datatype Tag = "},
    {"fixedRecordDataTypes", "fixedRecordData", "hasFixedRecordDatatype",
     "Ignoring Unexpected duplicate Fixed Record Datatype Tag ( ",
     " ) for FDD file.\n\tFixed Record Datatype Tag = "},
    {"variantRecordDataTypes", "variantRecordData", "hasVariantRecordDatatype",
     "Ignoring Unexpected duplicate Variant Record Datatype Tag ( ",
     " ) for FDD file.\n\tVariant Record Datatype Tag = "},
    {"notes", "note", "hasNote", "Ignoring Unexpected duplicate Note Tag ( ",
     " ) for FDD file.\n\tNote Tag = "},
};

TEST(FedReader1516DataTypes, ADuplicateIsDroppedAndNeverFatal) {
  for (const DuplicateCase& c : theDuplicateCases) {
    const std::string element = c.element;
    const std::string text =
        wrapped(c.section, "<" + element + " name=\"D\"/>\n<" + element + " name=\"D\"/>\n<" +
                               element + " name=\"After\"/>\n");
    // The second element, one line below the first, is the duplicate.
    const int secondLine = lineOf(text, "<" + element + " ") + 1;
    const std::string message = c.first + std::string("D") + c.second + element + " *" +
                                " at XML Node " + element + " near line " +
                                std::to_string(secondLine);
    DtFedReader1516 reader;
    FddRecorder target;
    target.duplicatesByName = true;
    FedReadOutcome outcome = readFddText(reader, text, &target, strict(1, 3));
    EXPECT_EQ(outcome.result, 0) << element;
    EXPECT_EQ(outcome.error, message);
    EXPECT_TRUE(contains(outcome.out, message + "\n")) << outcome.out;
    EXPECT_EQ(recordCount(target, element), 2u) << element;
    EXPECT_EQ(target.callsOf(c.has).size(), 3u) << element;
  }
}

TEST(FedReader1516DataTypes, ADuplicateSimpleDataLeavesTheFirst) {
  DtFedReader1516 reader;
  FddRecorder target;
  target.duplicatesByName = true;
  FedReadOutcome outcome =
      readFddText(reader,
                  withDataTypes("<simpleDataTypes>\n<simpleData name=\"S\" units=\"first\"/>\n"
                                "<simpleData name=\"S\" units=\"second\"/>\n</simpleDataTypes>\n"),
                  &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  ASSERT_EQ(target.simpleData.size(), 1u);
  EXPECT_EQ(str(target.simpleData[0]->units), "first");
}

TEST(FedReader1516DataTypes, AnEnumeratedDuplicateIsNotIgnored) {
  const std::string text = withDataTypes(
      "<enumeratedDataTypes>\n<enumeratedData name=\"E\"/>\n"
      "<enumeratedData name=\"E\"><enumerator name=\"x\"/></enumeratedData>\n"
      "<enumeratedData name=\"After\"/>\n</enumeratedDataTypes>\n");
  const std::string message =
      "Unexpected duplicate Enumerated Datatype Tag ( E ) for FDD file.\n\tEnumerated Datatype "
      "Tag = enumeratedData *" +
      std::string(" at XML Node enumeratedData near line ") +
      std::to_string(lineOf(text, "<enumeratedData ") + 1);
  LaxAndStrict runs = expectFatalOnlyWhenStrict(
      text, message, [](FddRecorder& t) { t.duplicatesByName = true; }, atLevel(3), strict(1, 3));
  // Neither read reports it as a duplicate that it drops.
  EXPECT_FALSE(contains(runs.lax->outcome.out, "duplicate")) << runs.lax->outcome.out;
  EXPECT_FALSE(contains(runs.strict->outcome.out, "duplicate")) << runs.strict->outcome.out;
  const auto& enumerated = runs.lax->target.enumeratedData;
  ASSERT_EQ(enumerated.size(), 2u);
  EXPECT_TRUE(enumerated[0]->enumerators.empty());
  EXPECT_EQ(str(enumerated[1]->name), "After");
  EXPECT_EQ(runs.strict->target.enumeratedData.size(), 1u);
  EXPECT_FALSE(runs.strict->target.called("hasEnumeratedDatatype(After)"));
}

// ---------------------------------------------------------------------------------------------
// Values of a basic data representation

TEST(FedReader1516DataTypes, TheEndian) {
  const std::string text = withDataTypes(
      "<basicDataRepresentations>\n<basicData name=\"B\" endian=\"big\" size=\"8\"/>\n"
      "<basicData name=\"After\" endian=\"Little\"/>\n</basicDataRepresentations>\n");
  const std::string message =
      "Unexpected value for Endianess in a Basic Datatype Representation for FDD "
      "file.\n\tEndianess = big" +
      atNode(text, "basicData", "<basicData ");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(text, message);
  const auto& basic = runs.lax->target.basicData;
  ASSERT_EQ(basic.size(), 2u);
  EXPECT_EQ(basic[0]->endian, 0);
  EXPECT_EQ(basic[0]->size, 8UL);
  EXPECT_EQ(basic[1]->endian, 2);
  const auto& strictBasic = runs.strict->target.basicData;
  ASSERT_EQ(strictBasic.size(), 1u);
  EXPECT_EQ(strictBasic[0]->endian, 0);
  EXPECT_EQ(strictBasic[0]->size, 0UL);
}

TEST(FedReader1516DataTypes, TheSize) {
  const std::string text = withDataTypes(
      "<basicDataRepresentations>\n<basicData name=\"B\" size=\"abc\"/>\n"
      "<basicData name=\"C\" size=\"12a\"/>\n<basicData name=\"D\" size=\"64\"/>\n"
      "</basicDataRepresentations>\n");
  // Without strict checking the last bad size is left; with it the first ends the read.
  const std::string badSize =
      "Unexpected attribute value for Size in a Basic Datatype Representation Tag for FDD "
      "file.\n\tValue = ";
  LaxAndStrict runs =
      expectLaxAndStrict(text, badSize + "12a" + atNode(text, "basicData", "<basicData name=\"C\""),
                         badSize + "abc" + atNode(text, "basicData", "<basicData "));
  const auto& basic = runs.lax->target.basicData;
  ASSERT_EQ(basic.size(), 3u);
  EXPECT_EQ(basic[0]->size, 0UL);
  EXPECT_EQ(basic[1]->size, 12UL);
  EXPECT_EQ(basic[2]->size, 64UL);
  ASSERT_EQ(runs.strict->target.basicData.size(), 1u);
  EXPECT_EQ(str(runs.strict->target.basicData[0]->name), "B");
}

TEST(FedReader1516DataTypes, AnEnumeratedDataWithTwoEqualEnumerators) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      withDataTypes("<enumeratedDataTypes><enumeratedData name=\"E\">"
                    "<enumerator name=\"A\" values=\"1\"/><enumerator name=\"A\" values=\"1\"/>"
                    "</enumeratedData></enumeratedDataTypes>\n"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  ASSERT_EQ(target.enumeratedData.size(), 1u);
  EXPECT_EQ(target.enumeratedData[0]->enumerators.size(), 2u);
}

}  // namespace
