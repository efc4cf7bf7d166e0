#ifndef TESTS_SUPPORT_FDD_RECORDER_H
#define TESTS_SUPPORT_FDD_RECORDER_H

// A FED target for the XML reader suites. Every call it gets becomes one line of `calls`, in the
// form "addAttribute(HLAobjectRoot.A, x, 0, 1, 0, 3, , 3, , 0)" ("null" for a null text,
// "true"/"false" for a flag); a record call names its record by its name or label:
// "hasTime(timeStamp)", "addTime(timeStamp)". The records handed to an add... operation are
// kept, owned, in the vectors below, so that a test can look at every field.
//
// It can be told to answer true from a has... operation (to provoke a duplicate), to refuse
// classes and dimensions, and to throw from a given operation. Switches and the format are
// kept as DtFedTarget keeps them.
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader.h>
#include <ktl/fedReader1516.h>
#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <ktl/xmlFedReader.h>

#include "support/capture.h"
#include "support/fed_recorder.h"

namespace ktltest {

// A list of recorded calls, to compare with FddRecorder::calls and what its finders return.
using Calls = std::vector<std::string>;

// The text of a DtString, so that a check shows it as text.
inline std::string str(const KORRti::DtString& text) {
  return text.c_str();
}

// Whether part stands anywhere in text (in a read's output, among other lines).
inline bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The calls with which a read ends its switches section: for each of the seven switches, in this
// order, the question of its value and then its setter, with true for the switches in enabled.
inline Calls switchPushes(const std::set<std::string>& enabled = std::set<std::string>()) {
  static const char* const switches[][2] = {
      {"autoProvide", "setAutoProvide"},
      {"conveyRegionDesignatorSets", "setConveyRegionDesignatorSets"},
      {"attributeScopeAdvisory", "setAttributeScopeAdvisory"},
      {"attributeRelevanceAdvisory", "setAttributeRelevanceAdvisory"},
      {"objectClassRelevanceAdvisory", "setObjectClassRelevanceAdvisory"},
      {"interactionRelevanceAdvisory", "setInteractionRelevanceAdvisory"},
      {"serviceReporting", "setServiceReporting"}};
  Calls calls;
  for (const auto& names : switches) {
    calls.push_back(std::string("switchValue(") + names[0] + ")");
    calls.push_back(std::string(names[1]) + (enabled.count(names[0]) ? "(true)" : "(false)"));
  }
  return calls;
}

class FddRecorder : public KORRti::DtFedTarget {
 public:
  std::vector<std::string> calls;

  // Refusals: addObjectClass / addInteractionClass answer false for these paths, and the three
  // dimension operations for these dimension names (or for all of them).
  std::set<std::string> refusedObjects;
  std::set<std::string> refusedInteractions;
  std::set<std::string> refusedDimensions;
  bool refuseAllDimensions = false;
  // A has... operation answers true when this set holds its operation name ("hasTime") or its
  // whole line ("hasTime(lookahead)").
  std::set<std::string> answerHas;
  // When set, a has... operation also answers true for a name that was added before, as a
  // target that keeps a model would.
  bool duplicatesByName = false;
  // A call to this operation ("addObjectClass") throws a std::runtime_error once recorded.
  std::string throwOn;
  // isKnownSwitch answers true for these names as well as for the standard ones.
  std::set<std::string> extraKnownSwitches;
  // transportationType answers these values for these names (otherwise as DtFedTarget does).
  std::map<std::string, KORRti::DtTransportType> transportAnswers;

  // The records handed over, in the order of their add... calls.
  std::vector<std::unique_ptr<KORRti::DtTimeType>> times;
  std::vector<std::unique_ptr<KORRti::DtUserSuppliedTagsType>> tags;
  std::vector<std::unique_ptr<KORRti::DtSynchronizationPointsType>> synchronizationPoints;
  std::vector<std::unique_ptr<KORRti::DtTransportationType>> transportations;
  std::vector<std::unique_ptr<KORRti::DtUpdateRateType>> updateRates;
  std::vector<std::unique_ptr<KORRti::DtNotesType>> notes;
  std::vector<std::unique_ptr<KORRti::DtBasicDataRepresentationType>> basicData;
  std::vector<std::unique_ptr<KORRti::DtSimpleDatatypeType>> simpleData;
  std::vector<std::unique_ptr<KORRti::DtEnumeratedDatatypeType>> enumeratedData;
  std::vector<std::unique_ptr<KORRti::DtArrayDatatypeType>> arrayData;
  std::vector<std::unique_ptr<KORRti::DtFixedRecordDatatypeType>> fixedRecordData;
  std::vector<std::unique_ptr<KORRti::DtVariantRecordDatatypeType>> variantRecordData;

  static std::string text(const char* value) { return value ? value : "null"; }
  static std::string text(const KORRti::DtString& value) { return value.c_str(); }
  static std::string flag(bool value) { return value ? "true" : "false"; }

  // The calls that begin with this operation name.
  std::vector<std::string> callsOf(const std::string& operation) const {
    std::vector<std::string> found;
    for (const std::string& call : calls) {
      if (call.compare(0, operation.size() + 1, operation + "(") == 0) found.push_back(call);
    }
    return found;
  }
  // The calls that deliver or set something: every line but the questions (has..., fomType,
  // isKnownSwitch, switchValue, transportationType).
  std::vector<std::string> deliveries() const {
    std::vector<std::string> found;
    for (const std::string& call : calls) {
      if (call.compare(0, 3, "has") == 0 || call.compare(0, 8, "fomType(") == 0 ||
          call.compare(0, 14, "isKnownSwitch(") == 0 || call.compare(0, 12, "switchValue(") == 0 ||
          call.compare(0, 19, "transportationType(") == 0) {
        continue;
      }
      found.push_back(call);
    }
    return found;
  }
  // Whether this exact line was recorded.
  bool called(const std::string& line) const {
    for (const std::string& call : calls) {
      if (call == line) return true;
    }
    return false;
  }
  // The index of this exact line in calls, -1 if it is not there.
  int indexOf(const std::string& line) const {
    for (size_t i = 0; i < calls.size(); ++i) {
      if (calls[i] == line) return static_cast<int>(i);
    }
    return -1;
  }

  void setFomType(KORRti::DtFomType type) override {
    note("setFomType", std::to_string(type));
    DtFedTarget::setFomType(type);
  }
  KORRti::DtFomType fomType() override {
    note("fomType", "");
    return DtFedTarget::fomType();
  }
  bool addSpace(const char* name) override {
    note("addSpace", text(name));
    return true;
  }
  bool addSpaceDimension(const char* space, const char* dimension) override {
    note("addSpaceDimension", text(space) + ", " + text(dimension));
    return true;
  }
  bool addDimension(const char* name, unsigned long upperBound, unsigned long rangeLower,
                    unsigned long rangeUpper, bool excluded,
                    const KORRti::DtString& normalization) override {
    note("addDimension", text(name) + ", " + std::to_string(upperBound) + ", " +
                             std::to_string(rangeLower) + ", " + std::to_string(rangeUpper) + ", " +
                             flag(excluded) + ", " + text(normalization));
    return !refusesDimension(name);
  }
  bool addInteractionClass(const char* name, const char* parent, KORRti::DtTransportType transport,
                           KORRti::DtOrderType order, const char* space) override {
    note("addInteractionClass", text(name) + ", " + text(parent) + ", " +
                                    std::to_string(transport) + ", " + std::to_string(order) +
                                    ", " + text(space));
    return refusedInteractions.count(text(name)) == 0;
  }
  bool addParameter(const char* className, const char* name) override {
    note("addParameter", text(className) + ", " + text(name));
    return true;
  }
  bool addInteractionDimension(const char* className, const char* dimension) override {
    note("addInteractionDimension", text(className) + ", " + text(dimension));
    return !refusesDimension(dimension);
  }
  bool addObjectClass(const char* name, const char* parent) override {
    note("addObjectClass", text(name) + ", " + text(parent));
    return refusedObjects.count(text(name)) == 0;
  }
  bool addObjectClassDimension(const char* className, const char* dimension) override {
    note("addObjectClassDimension", text(className) + ", " + text(dimension));
    return !refusesDimension(dimension);
  }
  bool addAttribute(const char* className, const char* name, KORRti::DtTransportType transport,
                    KORRti::DtOrderType order, KORRti::DtSharingType_enum sharing,
                    KORRti::DtFomUpdateType_enum updateType,
                    const KORRti::DtString& updateCondition, KORRti::DtOwnershipType_enum ownership,
                    const KORRti::DtString& semantics, void* reserved) override {
    note("addAttribute", text(className) + ", " + text(name) + ", " + std::to_string(transport) +
                             ", " + std::to_string(order) + ", " + std::to_string(sharing) + ", " +
                             std::to_string(updateType) + ", " + text(updateCondition) + ", " +
                             std::to_string(ownership) + ", " + text(semantics) + ", " +
                             (reserved ? "non-zero" : "0"));
    return true;
  }
  bool addSpaceAttribute(const char* className, const char* name, KORRti::DtTransportType transport,
                         KORRti::DtOrderType order, const char* space) override {
    note("addSpaceAttribute", text(className) + ", " + text(name) + ", " +
                                  std::to_string(transport) + ", " + std::to_string(order) + ", " +
                                  text(space));
    return true;
  }
  bool addAttributeDimension(const char* className, const char* name,
                             const char* dimension) override {
    note("addAttributeDimension", text(className) + ", " + text(name) + ", " + text(dimension));
    return !refusesDimension(dimension);
  }

  bool setAutoProvide(bool value) override { return set("setAutoProvide", value); }
  bool setConveyRegionDesignatorSets(bool value) override {
    return set("setConveyRegionDesignatorSets", value);
  }
  bool setAttributeScopeAdvisory(bool value) override {
    return set("setAttributeScopeAdvisory", value);
  }
  bool setAttributeRelevanceAdvisory(bool value) override {
    return set("setAttributeRelevanceAdvisory", value);
  }
  bool setObjectClassRelevanceAdvisory(bool value) override {
    return set("setObjectClassRelevanceAdvisory", value);
  }
  bool setInteractionRelevanceAdvisory(bool value) override {
    return set("setInteractionRelevanceAdvisory", value);
  }
  bool setServiceReporting(bool value) override { return set("setServiceReporting", value); }
  bool setAutomaticResignAction(int action) override {
    note("setAutomaticResignAction", std::to_string(action));
    return true;
  }

  KORRti::DtTransportType transportationType(const KORRti::DtTransportationType& record) override {
    note("transportationType", text(record.name));
    auto answer = transportAnswers.find(text(record.name));
    if (answer != transportAnswers.end()) return answer->second;
    return DtFedTarget::transportationType(record);
  }

  bool setSwitch(const KORRti::DtString& name, bool value) override {
    note("setSwitch", text(name) + ", " + flag(value));
    return DtFedTarget::setSwitch(name, value);
  }
  bool hasSwitch(const KORRti::DtString& name) override {
    note("hasSwitch", text(name));
    return DtFedTarget::hasSwitch(name);
  }
  bool isKnownSwitch(const KORRti::DtString& name) override {
    note("isKnownSwitch", text(name));
    return extraKnownSwitches.count(text(name)) > 0 || DtFedTarget::isKnownSwitch(name);
  }
  bool switchValue(const KORRti::DtString& name) override {
    note("switchValue", text(name));
    return DtFedTarget::switchValue(name);
  }

// The add and has operations of one kind of record, written once. The kind in the recorded line
// is the operation's own name, so that the two cannot drift apart.
#define FDD_RECORDER_KEEPS(Kind, Record, nameField, into) \
  bool add##Kind(KORRti::Record* record) override {       \
    return keep(#Kind, record->nameField, record, into);  \
  }                                                       \
  bool has##Kind(const KORRti::Record& record) override { \
    return has(#Kind, record.nameField);                  \
  }

  FDD_RECORDER_KEEPS(UpdateRate, DtUpdateRateType, name, updateRates)
  FDD_RECORDER_KEEPS(SynchronizationPoint, DtSynchronizationPointsType, label,
                     synchronizationPoints)
  FDD_RECORDER_KEEPS(Transportation, DtTransportationType, name, transportations)
  FDD_RECORDER_KEEPS(UserSuppliedTag, DtUserSuppliedTagsType, name, tags)
  FDD_RECORDER_KEEPS(Note, DtNotesType, label, notes)
  FDD_RECORDER_KEEPS(Time, DtTimeType, name, times)
  FDD_RECORDER_KEEPS(BasicDataRepresentation, DtBasicDataRepresentationType, name, basicData)
  FDD_RECORDER_KEEPS(SimpleDatatype, DtSimpleDatatypeType, name, simpleData)
  FDD_RECORDER_KEEPS(EnumeratedDatatype, DtEnumeratedDatatypeType, name, enumeratedData)
  FDD_RECORDER_KEEPS(ArrayDatatype, DtArrayDatatypeType, name, arrayData)
  FDD_RECORDER_KEEPS(VariantRecordDatatype, DtVariantRecordDatatypeType, name, variantRecordData)
#undef FDD_RECORDER_KEEPS

  // Written out: its duplicate test gets a copy, whose shared fields it marks.
  bool addFixedRecordDatatype(KORRti::DtFixedRecordDatatypeType* record) override {
    return keep("FixedRecordDatatype", record->name, record, fixedRecordData);
  }
  bool hasFixedRecordDatatype(KORRti::DtFixedRecordDatatypeType record) override {
    // The copy shares its fields with the reader's record: mark them to show it.
    for (const auto& field : record.fields) field->semantics += "+seen";
    return has("FixedRecordDatatype", record.name);
  }

  bool setFomName(const char* name) override {
    note("setFomName", text(name));
    return true;
  }
  bool setFomDependencies(const std::vector<KORRti::DtString>& names) override {
    std::string list;
    for (const KORRti::DtString& name : names) list += (list.empty() ? "" : ", ") + text(name);
    note("setFomDependencies", list);
    return true;
  }
  bool addUnresolvedAttributeTransportation(const KORRti::DtTransportationType& record,
                                            const KORRti::DtString& className,
                                            const KORRti::DtString& attributeName) override {
    note("addUnresolvedAttributeTransportation",
         text(record.name) + ", " + text(className) + ", " + text(attributeName));
    return true;
  }
  bool addUnresolvedInteractionTransportation(const KORRti::DtTransportationType& record,
                                              const KORRti::DtString& className) override {
    note("addUnresolvedInteractionTransportation", text(record.name) + ", " + text(className));
    return true;
  }

 private:
  // Names added so far, per kind ("Time", "Note", ...), for duplicatesByName.
  std::set<std::string> added_;

  void note(const std::string& operation, const std::string& arguments) {
    calls.push_back(operation + "(" + arguments + ")");
    if (operation == throwOn) throw std::runtime_error("target refuses " + operation);
  }
  bool set(const std::string& operation, bool value) {
    note(operation, flag(value));
    return true;
  }
  bool refusesDimension(const char* name) const {
    return refuseAllDimensions || refusedDimensions.count(text(name)) > 0;
  }
  bool has(const std::string& kind, const KORRti::DtString& name) {
    std::string line = "has" + kind + "(" + text(name) + ")";
    note("has" + kind, text(name));
    return answerHas.count("has" + kind) > 0 || answerHas.count(line) > 0 ||
           (duplicatesByName && added_.count(kind + "(" + text(name) + ")") > 0);
  }
  // Owns record in into and records "add<kind>(<name>)".
  template <typename Record>
  bool keep(const std::string& kind, const KORRti::DtString& name, Record* record,
            std::vector<std::unique_ptr<Record>>& into) {
    into.emplace_back(record);
    added_.insert(kind + "(" + text(name) + ")");
    note("add" + kind, text(name));
    return true;
  }
};

// How one XML read is made.
struct FddReadOptions {
  unsigned int strict = 0;
  bool validate = false;
  bool skipSwitches = false;
  int level = 1;
};

// Reads the file at path through readFedFilePtr, at the options' notify level, with the output
// captured.
inline FedReadOutcome readFddFile(KORRti::DtFedReader& reader, const std::string& path,
                                  KORRti::DtFedTarget* target,
                                  const FddReadOptions& options = FddReadOptions()) {
  FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return FedReadOutcome();
  FedReadOutcome outcome = captureFedRead(reader, options.level, [&] {
    return reader.readFedFilePtr(file, target, KORRti::DtFilename(path.c_str()), options.strict,
                                 options.validate, options.skipSwitches);
  });
  std::fclose(file);
  return outcome;
}

// Writes xml to a new temporary ".xml" file and reads it as readFddFile does.
inline FedReadOutcome readFddText(KORRti::DtFedReader& reader, const std::string& xml,
                                  KORRti::DtFedTarget* target,
                                  const FddReadOptions& options = FddReadOptions()) {
  return readFddFile(reader, writeTempFile(xml, ".xml"), target, options);
}

// The read under strict checking with this mask, at this notify level.
inline FddReadOptions strict(unsigned int mask = 1, int level = 1) {
  FddReadOptions options;
  options.strict = mask;
  options.level = level;
  return options;
}

// The read without strict checking at this notify level.
inline FddReadOptions atLevel(int level) {
  FddReadOptions options;
  options.level = level;
  return options;
}

// One read of a document by a new reader (1516-2000 unless told otherwise) into a new recorder.
template <typename Reader>
struct FddRunOf {
  Reader reader;
  FddRecorder target;
  FedReadOutcome outcome;
};
using FddRun = FddRunOf<KORRti::DtFedReader1516>;

// Prepares the recorder of a read (refusals, answers) before the read.
using FddSetUp = std::function<void(FddRecorder&)>;

// A document already written to a file, for a test that needs what stands beside it (a DTD).
struct FddFile {
  std::string path;
};

// Reads the file as readFddFile does, by a new reader into a new recorder that setUp prepares
// first. The run is held by pointer so that the recorder's records and the reader stay in place.
template <typename Reader = KORRti::DtFedReader1516>
std::unique_ptr<FddRunOf<Reader>> runFdd(const FddFile& file,
                                         const FddReadOptions& options = FddReadOptions(),
                                         const FddSetUp& setUp = FddSetUp()) {
  auto run = std::make_unique<FddRunOf<Reader>>();
  if (setUp) setUp(run->target);
  run->outcome = readFddFile(run->reader, file.path, &run->target, options);
  return run;
}

// The same for xml written to a new temporary ".xml" file, as readFddText does.
template <typename Reader = KORRti::DtFedReader1516>
std::unique_ptr<FddRunOf<Reader>> runFdd(const std::string& xml,
                                         const FddReadOptions& options = FddReadOptions(),
                                         const FddSetUp& setUp = FddSetUp()) {
  return runFdd<Reader>(FddFile{writeTempFile(xml, ".xml")}, options, setUp);
}

// Reads the document as runFdd does and expects the read's result and error text.
template <typename Reader = KORRti::DtFedReader1516, typename Document>
std::unique_ptr<FddRunOf<Reader>> expectRead(const Document& document, int result,
                                             const std::string& error,
                                             const FddReadOptions& options = FddReadOptions(),
                                             const FddSetUp& setUp = FddSetUp()) {
  std::unique_ptr<FddRunOf<Reader>> run = runFdd<Reader>(document, options, setUp);
  EXPECT_EQ(run->outcome.result, result);
  EXPECT_EQ(run->outcome.error, error);
  return run;
}

// The two reads of one document that most fault tests make, each by a new reader into a new
// recorder: one without strict checking and one with it, kept for the test's own checks.
template <typename Reader>
struct LaxAndStrictOf {
  std::unique_ptr<FddRunOf<Reader>> lax;
  std::unique_ptr<FddRunOf<Reader>> strict;
};
using LaxAndStrict = LaxAndStrictOf<KORRti::DtFedReader1516>;

// Reads the document both ways and expects its faults to be only reported without strict checking
// (0, leaving laxError) and to fail the read with it (2, with strictError).
template <typename Reader = KORRti::DtFedReader1516, typename Document>
LaxAndStrictOf<Reader> expectLaxAndStrict(const Document& document, const std::string& laxError,
                                          const std::string& strictError,
                                          const FddSetUp& setUp = FddSetUp(),
                                          const FddReadOptions& laxOptions = FddReadOptions(),
                                          const FddReadOptions& strictOptions = strict(1)) {
  LaxAndStrictOf<Reader> runs;
  {
    SCOPED_TRACE("without strict checking");
    runs.lax = expectRead<Reader>(document, 0, laxError, laxOptions, setUp);
  }
  {
    SCOPED_TRACE("under strict checking");
    runs.strict = expectRead<Reader>(document, 2, strictError, strictOptions, setUp);
  }
  return runs;
}

// The same for a single fault, whose text both reads leave.
template <typename Reader = KORRti::DtFedReader1516, typename Document>
LaxAndStrictOf<Reader> expectFatalOnlyWhenStrict(
    const Document& document, const std::string& error, const FddSetUp& setUp = FddSetUp(),
    const FddReadOptions& laxOptions = FddReadOptions(),
    const FddReadOptions& strictOptions = strict(1)) {
  return expectLaxAndStrict<Reader>(document, error, error, setUp, laxOptions, strictOptions);
}

// Writes xml to a new temporary ".xml" file and reads it through readFed.
inline FedReadOutcome readFddThroughReadFed(KORRti::DtFedReader& reader, const std::string& xml,
                                            KORRti::DtFedTarget* target,
                                            const FddReadOptions& options = FddReadOptions()) {
  std::string path = writeTempFile(xml, ".xml");
  return captureFedRead(reader, options.level, [&] {
    return reader.readFed(path.c_str(), target, options.strict, options.validate,
                          options.skipSwitches);
  });
}

// A document parsed from text with libxml2, freed with its owner.
class ParsedXml {
 public:
  explicit ParsedXml(const std::string& xml)
      : doc_(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, 0)) {}
  ~ParsedXml() {
    if (doc_) xmlFreeDoc(doc_);
  }
  ParsedXml(const ParsedXml&) = delete;
  ParsedXml& operator=(const ParsedXml&) = delete;

  xmlDoc* doc() const { return doc_; }
  xmlNode* root() const { return doc_ ? xmlDocGetRootElement(doc_) : nullptr; }
  // Gives the document up, to a callee that frees it.
  xmlDoc* release() {
    xmlDoc* doc = doc_;
    doc_ = nullptr;
    return doc;
  }

 private:
  xmlDoc* doc_;
};

// The first element child of node with this name, null if none.
inline xmlNode* childElement(xmlNode* node, const char* name) {
  for (xmlNode* child = node ? node->children : nullptr; child; child = child->next) {
    if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, BAD_CAST name)) return child;
  }
  return nullptr;
}

// A 1516-2000 reader whose protected state a test can set and see, so that one walk can be run
// on a node without a whole read.
class Probe1516 : public KORRti::DtFedReader1516 {
 public:
  using KORRti::DtFedReader1516::replacedInteractionRoot;
  using KORRti::DtFedReader1516::replacedObjectRoot;
  void setTarget(KORRti::DtFedTarget* to) { target = to; }
  void setMask(unsigned int mask) { strictCheckingMask = mask; }
  void setSkipSwitches(bool skip) { skipSwitches = skip; }
  void setLastError(const char* text) { lastErrorText = text; }
};

// The whole document around body: "<?xml ...?>" and an "objectModel" root with a name.
inline std::string fddDocument(const std::string& body) {
  return "<?xml version=\"1.0\"?>\n<objectModel name=\"test\">\n" + body + "</objectModel>\n";
}

// The same, with an empty element added behind body for each top-level section that body lacks,
// so that no section is reported missing.
inline std::string completeFdd(const std::string& body) {
  static const char* const sections[] = {"objects",         "interactions", "dimensions",
                                         "transportations", "switches",     "dataTypes",
                                         "notes",           "time",         "synchronizations"};
  std::string all = body;
  for (const char* section : sections) {
    std::string open = std::string("<") + section;
    if (body.find(open + ">") == std::string::npos && body.find(open + " ") == std::string::npos &&
        body.find(open + "/>") == std::string::npos) {
      all += open + "/>\n";
    }
  }
  return fddDocument(all);
}

// The whole document around body in the IEEE 1516-2010 form (2025 with nameSpace
// "IEEE1516-2025"): "<?xml ...?>" and an "objectModel" root in the object model namespace.
inline std::string fddDocument2010(const std::string& body,
                                   const std::string& nameSpace = "IEEE1516-2010") {
  return "<?xml version=\"1.0\"?>\n<objectModel xmlns=\"http://standards.ieee.org/" + nameSpace +
         "\">\n" + body + "</objectModel>\n";
}

// The same, with an empty element added behind body for each section whose absence a lax read
// reports (objects, interactions, dimensions, transportations, data types), so that a read of it
// leaves lastError() empty.
inline std::string completeFdd2010(const std::string& body,
                                   const std::string& nameSpace = "IEEE1516-2010") {
  static const char* const sections[] = {"objects", "interactions", "dimensions", "transportations",
                                         "dataTypes"};
  std::string all = body;
  for (const char* section : sections) {
    std::string open = std::string("<") + section;
    if (body.find(open + ">") == std::string::npos && body.find(open + " ") == std::string::npos &&
        body.find(open + "/>") == std::string::npos) {
      all += open + "/>\n";
    }
  }
  return fddDocument2010(all, nameSpace);
}

// The line, counted from 1, on which needle first stands in text; 0 if it is not there.
inline int lineOf(const std::string& text, const std::string& needle) {
  size_t at = text.find(needle);
  if (at == std::string::npos) return 0;
  int line = 1;
  for (size_t i = 0; i < at; ++i) {
    if (text[i] == '\n') ++line;
  }
  return line;
}

// What appendErrorLine writes for the element named name that stands at needle in text:
// " at XML Node <name> near line <n>".
inline std::string atNode(const std::string& text, const std::string& name,
                          const std::string& needle) {
  return " at XML Node " + name + " near line " + std::to_string(lineOf(text, needle));
}

// Runs one walk of a Probe1516 at this notify level with the output captured.
inline FedReadOutcome captureWalk(Probe1516& reader, int level, const std::function<int()>& walk) {
  return captureFedRead(reader, level, walk);
}

}  // namespace ktltest

#endif
