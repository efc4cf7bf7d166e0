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
using ktltest::atNode;
using ktltest::completeFdd;
using ktltest::FddReadOptions;
using ktltest::FddRecorder;
using ktltest::FedReadOutcome;
using ktltest::readFddText;

namespace {

using Calls = std::vector<std::string>;

std::string str(const DtString& text) {
  return text.c_str();
}

FddReadOptions strict(unsigned int mask = 1, int level = 1) {
  FddReadOptions options;
  options.strict = mask;
  options.level = level;
  return options;
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

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
  EXPECT_EQ(str(simple.name), "Metres");
  EXPECT_EQ(str(simple.representation), "HLAfloat64BE");
  EXPECT_EQ(str(simple.units), "m");
  EXPECT_EQ(str(simple.resolution), "0.1");
  EXPECT_EQ(str(simple.accuracy), "perfect");
  EXPECT_EQ(str(simple.semantics), "length");

  ASSERT_EQ(target.enumeratedData.size(), 1u);
  const DtEnumeratedDatatypeType& enumerated = *target.enumeratedData[0];
  EXPECT_EQ(str(enumerated.name), "Colour");
  EXPECT_EQ(str(enumerated.representation), "HLAoctet");
  EXPECT_EQ(str(enumerated.semantics), "hue");
  ASSERT_EQ(enumerated.enumerators.size(), 2u);
  std::vector<std::string> enumerators;
  for (const auto& enumerator : enumerated.enumerators) {
    enumerators.push_back(str(enumerator->name) + "=" + str(enumerator->values));
  }
  std::sort(enumerators.begin(), enumerators.end());
  EXPECT_EQ(enumerators, (std::vector<std::string>{"Green=2, 3", "Red=1"}));

  ASSERT_EQ(target.arrayData.size(), 1u);
  const DtArrayDatatypeType& array = *target.arrayData[0];
  EXPECT_EQ(str(array.name), "Name");
  EXPECT_EQ(str(array.dataType), "HLAunicodeChar");
  EXPECT_EQ(str(array.cardinality), "Dynamic");
  EXPECT_EQ(str(array.encoding), "HLAvariableArray");
  EXPECT_EQ(str(array.semantics), "a name");

  ASSERT_EQ(target.fixedRecordData.size(), 1u);
  const DtFixedRecordDatatypeType& fixed = *target.fixedRecordData[0];
  EXPECT_EQ(str(fixed.name), "Point");
  EXPECT_EQ(str(fixed.encoding), "HLAfixedRecord");
  EXPECT_EQ(str(fixed.semantics), "a point");
  ASSERT_EQ(fixed.fields.size(), 2u);
  std::vector<std::string> fields;
  for (const auto& field : fixed.fields) {
    // The recorder's duplicate test marks the fields of the copy it gets with "+seen".
    fields.push_back(str(field->name) + ":" + str(field->dataType) + ":" + str(field->semantics));
  }
  std::sort(fields.begin(), fields.end());
  EXPECT_EQ(fields, (std::vector<std::string>{"x:Metres:east+seen", "y:Metres:+seen"}));

  ASSERT_EQ(target.variantRecordData.size(), 1u);
  const DtVariantRecordDatatypeType& variant = *target.variantRecordData[0];
  EXPECT_EQ(str(variant.name), "Shape");
  EXPECT_EQ(str(variant.discriminant), "kind");
  EXPECT_EQ(str(variant.dataType), "Colour");
  EXPECT_EQ(str(variant.encoding), "HLAvariantRecord");
  EXPECT_EQ(str(variant.semantics), "a shape");
  ASSERT_EQ(variant.alternatives.size(), 2u);
  std::vector<std::string> alternatives;
  for (const auto& alternative : variant.alternatives) {
    alternatives.push_back(str(alternative->enumerator) + ":" + str(alternative->name) + ":" +
                           str(alternative->dataType) + ":" + str(alternative->semantics));
  }
  std::sort(alternatives.begin(), alternatives.end());
  EXPECT_EQ(alternatives, (std::vector<std::string>{"Green:side:Metres:", "Red:radius:Metres:r"}));

  ASSERT_EQ(target.notes.size(), 1u);
  EXPECT_EQ(str(target.notes[0]->label), "n1");
  EXPECT_EQ(str(target.notes[0]->semantics), "first note");
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
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, message);
  EXPECT_EQ(target.simpleData.size(), 1u);

  DtFedReader1516 strictReader;
  FddRecorder strictTarget;
  outcome = readFddText(strictReader, text, &strictTarget, strict(1));
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, message);
  EXPECT_TRUE(strictTarget.simpleData.empty());
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

struct ChildCase {
  const char* section;
  const char* good;
  const char* message;
  size_t (*count)(const FddRecorder&);
};

const ChildCase theChildCases[] = {
    {"basicDataRepresentations", "<basicData name=\"G\"/>",
     "Unexpected tag in Basic Datatypes tree for FDD file.\n\tBasic DataType Tag = ",
     [](const FddRecorder& t) { return t.basicData.size(); }},
    {"simpleDataTypes", "<simpleData name=\"G\"/>",
     "Unexpected tag in Simple Datatypes tree for FDD file.\n\tSimple DataType Tag = ",
     [](const FddRecorder& t) { return t.simpleData.size(); }},
    {"arrayDataTypes", "<arrayData name=\"G\"/>",
     "Unexpected tag in Array Datatypes tree for FDD file.\n\tArray DataType Tag = ",
     [](const FddRecorder& t) { return t.arrayData.size(); }},
    {"enumeratedDataTypes", "<enumeratedData name=\"G\"/>",
     "Unexpected tag in Enumerated Datatypes tree for FDD file.\n\tEnumerated DataType Tag = ",
     [](const FddRecorder& t) { return t.enumeratedData.size(); }},
    {"fixedRecordDataTypes", "<fixedRecordData name=\"G\"/>",
     "Unexpected tag in Fixed Record Datatypes tree for FDD file.\n\tFixed Record DataType Tag "
     "= ",
     [](const FddRecorder& t) { return t.fixedRecordData.size(); }},
    {"variantRecordDataTypes", "<variantRecordData name=\"G\"/>",
     "Unexpected tag in Variant Record Datatype tree for FDD file.\n\tVariant Record Datatype "
     "Tag = ",
     [](const FddRecorder& t) { return t.variantRecordData.size(); }},
    {"notes", "<note name=\"G\"/>", "Unexpected tag in Notes tree for FDD file.\n\tNote Tag = ",
     [](const FddRecorder& t) { return t.notes.size(); }},
};

TEST(FedReader1516DataTypes, AWrongChildOfEachSection) {
  for (const ChildCase& c : theChildCases) {
    const std::string text =
        wrapped(c.section, std::string("<!-- c -->\n<bogus/>\n") + c.good + "\n");
    const std::string message =
        c.message + std::string("bogus *") + atNode(text, "bogus", "<bogus");
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, text, &target);
    EXPECT_EQ(outcome.result, 0) << c.section;
    EXPECT_EQ(outcome.error, message);
    EXPECT_EQ(c.count(target), 1u) << c.section;

    DtFedReader1516 strictReader;
    FddRecorder strictTarget;
    outcome = readFddText(strictReader, text, &strictTarget, strict(1));
    EXPECT_EQ(outcome.result, 2) << c.section;
    EXPECT_EQ(outcome.error, message);
    EXPECT_EQ(c.count(strictTarget), 0u) << c.section;
  }
}

struct NestedChildCase {
  const char* section;
  const char* element;
  const char* child;
  const char* message;
};

const NestedChildCase theNestedChildCases[] = {
    {"enumeratedDataTypes", "enumeratedData", "enumerator",
     "Unexpected tag in Enumerator tree for FDD file.\n\tEnumerator Tag = "},
    {"fixedRecordDataTypes", "fixedRecordData", "field",
     "Unexpected tag in Field tree for FDD file.\n\tField Tag = "},
    {"variantRecordDataTypes", "variantRecordData", "alternative",
     "Unexpected tag in Alternative tree for FDD file.\n\tAlternative Tag = "},
};

TEST(FedReader1516DataTypes, AWrongChildOfANestedList) {
  for (const NestedChildCase& c : theNestedChildCases) {
    const std::string element = c.element;
    const std::string child = c.child;
    const std::string text =
        wrapped(c.section, "<" + element + " name=\"E\">\n<" + child +
                               " name=\"a\"/>\n<other/>\n<" + child + " name=\"b\"/>\n</" +
                               element + ">\n<" + element + " name=\"F\"/>\n");
    const std::string message =
        c.message + std::string("other *") + atNode(text, "other", "<other");
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, text, &target);
    EXPECT_EQ(outcome.result, 0) << c.element;
    EXPECT_EQ(outcome.error, message);

    DtFedReader1516 strictReader;
    FddRecorder strictTarget;
    outcome = readFddText(strictReader, text, &strictTarget, strict(1));
    EXPECT_EQ(outcome.result, 2) << c.element;
    EXPECT_EQ(outcome.error, message);
    // The record is delivered with what it had so far; the walk ends after it.
    // A variant record reads its alternatives first, so the fault comes before its name.
    const std::string offered = element == "enumeratedData"    ? "hasEnumeratedDatatype(E)"
                                : element == "fixedRecordData" ? "hasFixedRecordDatatype(E)"
                                                               : "hasVariantRecordDatatype()";
    EXPECT_TRUE(strictTarget.called(offered)) << ::testing::PrintToString(strictTarget.calls);
    size_t nested = element == "enumeratedData"    ? strictTarget.enumeratedData.size()
                    : element == "fixedRecordData" ? strictTarget.fixedRecordData.size()
                                                   : strictTarget.variantRecordData.size();
    EXPECT_EQ(nested, 1u) << c.element;
    size_t children = element == "enumeratedData"
                          ? (nested ? strictTarget.enumeratedData[0]->enumerators.size() : 0)
                      : element == "fixedRecordData"
                          ? (nested ? strictTarget.fixedRecordData[0]->fields.size() : 0)
                          : (nested ? strictTarget.variantRecordData[0]->alternatives.size() : 0);
    EXPECT_EQ(children, 1u) << c.element;
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

size_t recordCount(const FddRecorder& t, const std::string& name) {
  if (name == "basicData") return t.basicData.size();
  if (name == "simpleData") return t.simpleData.size();
  if (name == "arrayData") return t.arrayData.size();
  if (name == "enumeratedData") return t.enumeratedData.size();
  if (name == "fixedRecordData") return t.fixedRecordData.size();
  if (name == "variantRecordData") return t.variantRecordData.size();
  return t.notes.size();
}

TEST(FedReader1516DataTypes, AWrongAttributeOfEachKind) {
  for (const AttributeCase& c : theAttributeCases) {
    std::string element = c.element;
    element.replace(element.find('@'), 1, "wrong=\"w\"");
    const std::string text = wrapped(c.section, element + "\n<" + c.name + " name=\"Second\"/>\n");
    const std::string message =
        c.message + std::string("wrong") + atNode(text, c.name, "<" + std::string(c.name) + " ");
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, text, &target);
    EXPECT_EQ(outcome.result, 0) << c.name;
    EXPECT_EQ(outcome.error, message);
    EXPECT_EQ(firstRecord(target, c.name), "E|e");
    EXPECT_EQ(recordCount(target, c.name), 2u) << c.name;

    // Under strict checking the filling stops at the fault, the record is still delivered, and
    // the walk ends after it.
    DtFedReader1516 strictReader;
    FddRecorder strictTarget;
    outcome = readFddText(strictReader, text, &strictTarget, strict(1));
    EXPECT_EQ(outcome.result, 2) << c.name;
    EXPECT_EQ(outcome.error, message);
    EXPECT_EQ(firstRecord(strictTarget, c.name), "E|") << c.name;
    EXPECT_EQ(recordCount(strictTarget, c.name), 1u) << c.name;
  }
}

struct NestedAttributeCase {
  const char* section;
  const char* element;
  const char* child;
  const char* message;
};

const NestedAttributeCase theNestedAttributeCases[] = {
    {"enumeratedDataTypes", "enumeratedData", "enumerator",
     "Unexpected attribute in an Enumerator for an Enumerated Datatype for FDD file.\n"
     "\tAttribute = "},
    {"fixedRecordDataTypes", "fixedRecordData", "field",
     "Unexpected attribute in a Field Tag for a Fixed Record Datatype for FDD file.\n"
     "\tAttribute = "},
    {"variantRecordDataTypes", "variantRecordData", "alternative",
     "Unexpected attribute in a Alternative Tag for FDD file.\n\tAttribute = "},
};

TEST(FedReader1516DataTypes, AWrongAttributeOfANestedElement) {
  for (const NestedAttributeCase& c : theNestedAttributeCases) {
    const std::string element = c.element;
    const std::string child = c.child;
    const std::string text =
        wrapped(c.section, "<" + element + " name=\"E\">\n<" + child +
                               " name=\"a\" wrong=\"w\"/>\n<" + child + " name=\"b\"/>\n</" +
                               element + ">\n<" + element + " name=\"F\"/>\n");
    const std::string message =
        c.message + std::string("wrong") + atNode(text, child, "<" + child + " ");
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, text, &target);
    EXPECT_EQ(outcome.result, 0) << child;
    EXPECT_EQ(outcome.error, message);
    EXPECT_EQ(recordCount(target, element), 2u) << child;

    DtFedReader1516 strictReader;
    FddRecorder strictTarget;
    outcome = readFddText(strictReader, text, &strictTarget, strict(1));
    EXPECT_EQ(outcome.result, 2) << child;
    EXPECT_EQ(outcome.error, message);
    EXPECT_EQ(recordCount(strictTarget, element), 1u) << child;
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
    const int secondLine = ktltest::lineOf(text, "<" + element + " ") + 1;
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
      std::to_string(ktltest::lineOf(text, "<enumeratedData ") + 1);
  DtFedReader1516 reader;
  FddRecorder target;
  target.duplicatesByName = true;
  FedReadOutcome outcome = readFddText(reader, text, &target, FddReadOptions{0, false, false, 3});
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, message);
  EXPECT_FALSE(contains(outcome.out, "duplicate")) << outcome.out;
  ASSERT_EQ(target.enumeratedData.size(), 2u);
  EXPECT_TRUE(target.enumeratedData[0]->enumerators.empty());
  EXPECT_EQ(str(target.enumeratedData[1]->name), "After");

  DtFedReader1516 strictReader;
  FddRecorder strictTarget;
  strictTarget.duplicatesByName = true;
  outcome = readFddText(strictReader, text, &strictTarget, strict(1, 3));
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, message);
  EXPECT_FALSE(contains(outcome.out, "duplicate")) << outcome.out;
  EXPECT_EQ(strictTarget.enumeratedData.size(), 1u);
  EXPECT_FALSE(strictTarget.called("hasEnumeratedDatatype(After)"));
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
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, message);
  ASSERT_EQ(target.basicData.size(), 2u);
  EXPECT_EQ(target.basicData[0]->endian, 0);
  EXPECT_EQ(target.basicData[0]->size, 8UL);
  EXPECT_EQ(target.basicData[1]->endian, 2);

  DtFedReader1516 strictReader;
  FddRecorder strictTarget;
  outcome = readFddText(strictReader, text, &strictTarget, strict(1));
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, message);
  ASSERT_EQ(strictTarget.basicData.size(), 1u);
  EXPECT_EQ(strictTarget.basicData[0]->endian, 0);
  EXPECT_EQ(strictTarget.basicData[0]->size, 0UL);
}

TEST(FedReader1516DataTypes, TheSize) {
  const std::string text = withDataTypes(
      "<basicDataRepresentations>\n<basicData name=\"B\" size=\"abc\"/>\n"
      "<basicData name=\"C\" size=\"12a\"/>\n<basicData name=\"D\" size=\"64\"/>\n"
      "</basicDataRepresentations>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error,
            "Unexpected attribute value for Size in a Basic Datatype Representation Tag for FDD "
            "file.\n\tValue = 12a" +
                atNode(text, "basicData", "<basicData name=\"C\""));
  ASSERT_EQ(target.basicData.size(), 3u);
  EXPECT_EQ(target.basicData[0]->size, 0UL);
  EXPECT_EQ(target.basicData[1]->size, 12UL);
  EXPECT_EQ(target.basicData[2]->size, 64UL);

  DtFedReader1516 strictReader;
  FddRecorder strictTarget;
  outcome = readFddText(strictReader, text, &strictTarget, strict(1));
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error,
            "Unexpected attribute value for Size in a Basic Datatype Representation Tag for FDD "
            "file.\n\tValue = abc" +
                atNode(text, "basicData", "<basicData "));
  ASSERT_EQ(strictTarget.basicData.size(), 1u);
  EXPECT_EQ(str(strictTarget.basicData[0]->name), "B");
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
