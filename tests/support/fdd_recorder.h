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
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader.h>
#include <ktl/fedReader1516.h>
#include <ktl/xmlFedReader.h>

#include "support/capture.h"
#include "support/fed_recorder.h"

namespace ktltest {

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

  bool addUpdateRate(KORRti::DtUpdateRateType* record) override {
    return keep("addUpdateRate", record->name, record, updateRates);
  }
  bool hasUpdateRate(const KORRti::DtUpdateRateType& record) override {
    return has("UpdateRate", record.name);
  }
  bool addSynchronizationPoint(KORRti::DtSynchronizationPointsType* record) override {
    return keep("addSynchronizationPoint", record->label, record, synchronizationPoints);
  }
  bool hasSynchronizationPoint(const KORRti::DtSynchronizationPointsType& record) override {
    return has("SynchronizationPoint", record.label);
  }
  bool addTransportation(KORRti::DtTransportationType* record) override {
    return keep("addTransportation", record->name, record, transportations);
  }
  bool hasTransportation(const KORRti::DtTransportationType& record) override {
    return has("Transportation", record.name);
  }
  KORRti::DtTransportType transportationType(const KORRti::DtTransportationType& record) override {
    note("transportationType", text(record.name));
    return DtFedTarget::transportationType(record);
  }
  bool addUserSuppliedTag(KORRti::DtUserSuppliedTagsType* record) override {
    return keep("addUserSuppliedTag", record->name, record, tags);
  }
  bool hasUserSuppliedTag(const KORRti::DtUserSuppliedTagsType& record) override {
    return has("UserSuppliedTag", record.name);
  }
  bool addNote(KORRti::DtNotesType* record) override {
    return keep("addNote", record->label, record, notes);
  }
  bool hasNote(const KORRti::DtNotesType& record) override { return has("Note", record.label); }

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

  bool addTime(KORRti::DtTimeType* record) override {
    return keep("addTime", record->name, record, times);
  }
  bool hasTime(const KORRti::DtTimeType& record) override { return has("Time", record.name); }
  bool addBasicDataRepresentation(KORRti::DtBasicDataRepresentationType* record) override {
    return keep("addBasicDataRepresentation", record->name, record, basicData);
  }
  bool hasBasicDataRepresentation(const KORRti::DtBasicDataRepresentationType& record) override {
    return has("BasicDataRepresentation", record.name);
  }
  bool addSimpleDatatype(KORRti::DtSimpleDatatypeType* record) override {
    return keep("addSimpleDatatype", record->name, record, simpleData);
  }
  bool hasSimpleDatatype(const KORRti::DtSimpleDatatypeType& record) override {
    return has("SimpleDatatype", record.name);
  }
  bool addEnumeratedDatatype(KORRti::DtEnumeratedDatatypeType* record) override {
    return keep("addEnumeratedDatatype", record->name, record, enumeratedData);
  }
  bool hasEnumeratedDatatype(const KORRti::DtEnumeratedDatatypeType& record) override {
    return has("EnumeratedDatatype", record.name);
  }
  bool addArrayDatatype(KORRti::DtArrayDatatypeType* record) override {
    return keep("addArrayDatatype", record->name, record, arrayData);
  }
  bool hasArrayDatatype(const KORRti::DtArrayDatatypeType& record) override {
    return has("ArrayDatatype", record.name);
  }
  bool addFixedRecordDatatype(KORRti::DtFixedRecordDatatypeType* record) override {
    return keep("addFixedRecordDatatype", record->name, record, fixedRecordData);
  }
  bool hasFixedRecordDatatype(KORRti::DtFixedRecordDatatypeType record) override {
    // The copy shares its fields with the reader's record: mark them to show it.
    for (const auto& field : record.fields) field->semantics += "+seen";
    return has("FixedRecordDatatype", record.name);
  }
  bool addVariantRecordDatatype(KORRti::DtVariantRecordDatatypeType* record) override {
    return keep("addVariantRecordDatatype", record->name, record, variantRecordData);
  }
  bool hasVariantRecordDatatype(const KORRti::DtVariantRecordDatatypeType& record) override {
    return has("VariantRecordDatatype", record.name);
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
  template <typename Record>
  bool keep(const std::string& operation, const KORRti::DtString& name, Record* record,
            std::vector<std::unique_ptr<Record>>& into) {
    into.emplace_back(record);
    added_.insert(operation.substr(3) + "(" + text(name) + ")");
    note(operation, text(name));
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
