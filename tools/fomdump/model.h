#ifndef TOOLS_FOMDUMP_MODEL_H
#define TOOLS_FOMDUMP_MODEL_H

// fomdump's record of one FOM module: a target that writes down everything a reader tells it,
// in the order it is told.
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/xmlFedReader.h>

namespace fomdump {

using KORRti::DtArrayDatatypeType;
using KORRti::DtBasicDataRepresentationType;
using KORRti::DtEnumeratedDatatypeType;
using KORRti::DtFedTarget;
using KORRti::DtFixedRecordDatatypeType;
using KORRti::DtFomUpdateType_enum;
using KORRti::DtNotesType;
using KORRti::DtOrderType;
using KORRti::DtOwnershipType_enum;
using KORRti::DtSharingType_enum;
using KORRti::DtSimpleDatatypeType;
using KORRti::DtString;
using KORRti::DtSynchronizationPointsType;
using KORRti::DtTimeType;
using KORRti::DtTransportationType;
using KORRti::DtTransportType;
using KORRti::DtUpdateRateType;
using KORRti::DtUserSuppliedTagsType;
using KORRti::DtVariantRecordDatatypeType;

// Every item keeps the line of the file where its declaration opens: 0 where the reader does
// not tell it (HLA 1.3 files).
struct Attribute {
  std::string name;
  DtTransportType transport;
  DtOrderType order;
  std::string space;  // empty for none
  std::vector<std::string> dimensions;
  long line = 0;
};

struct ObjectClass {
  std::string name;
  std::string parent;  // empty at the root
  std::vector<Attribute> attributes;
  std::vector<std::string> dimensions;
  long line = 0;
};

struct InteractionClass {
  std::string name;
  std::string parent;
  DtTransportType transport;
  DtOrderType order;
  std::string space;
  std::vector<std::string> parameters;
  std::vector<std::string> dimensions;
  long line = 0;
};

struct Space {
  std::string name;
  std::vector<std::string> dimensions;
};

struct Dimension {
  std::string name;
  unsigned long upperBound;
  unsigned long rangeLower;
  unsigned long rangeUpper;
  bool excluded;
  std::string normalization;
  long line = 0;
};

struct Switch {
  std::string name;
  bool enabled;
  long line = 0;
};

// The data type an attribute or parameter names. The target interface does not carry it, so
// fomdump's readers read it beside the library's (see tracedReader.h).
struct MemberType {
  std::string owner;   // the class's full name
  std::string member;  // the attribute or parameter
  bool attribute;
  std::string dataType;
  long line;
};

// A name with the line where it is declared.
struct NamedLine {
  std::string name;
  long line;
};

// The records of an XML document, kept as the reader handed them over.
struct DataTypes {
  std::vector<std::unique_ptr<DtBasicDataRepresentationType>> basic;
  std::vector<std::unique_ptr<DtSimpleDatatypeType>> simple;
  std::vector<std::unique_ptr<DtEnumeratedDatatypeType>> enumerated;
  std::vector<std::unique_ptr<DtArrayDatatypeType>> array;
  std::vector<std::unique_ptr<DtFixedRecordDatatypeType>> fixedRecord;
  std::vector<std::unique_ptr<DtVariantRecordDatatypeType>> variantRecord;
  size_t size() const {
    return basic.size() + simple.size() + enumerated.size() + array.size() + fixedRecord.size() +
           variantRecord.size();
  }
};

// The target: everything it is told, in order. Names are copied, since the reader's texts die
// with each call.
class ModelRecorder : public DtFedTarget {
 public:
  std::vector<Space> spaces;
  std::vector<ObjectClass> objects;
  std::vector<InteractionClass> interactions;
  std::vector<Dimension> dimensions;
  std::vector<std::unique_ptr<DtTransportationType>> transportations;
  std::vector<Switch> switches;
  std::vector<std::unique_ptr<DtTimeType>> time;
  std::vector<std::unique_ptr<DtUserSuppliedTagsType>> tags;
  std::vector<std::unique_ptr<DtSynchronizationPointsType>> synchronizations;
  std::vector<std::unique_ptr<DtNotesType>> notes;
  DataTypes dataTypes;
  // What only IEEE 1516-2010 and 1516-2025 modules have.
  std::string modelName;
  std::vector<std::string> dependencies;
  std::vector<std::unique_ptr<DtUpdateRateType>> updateRates;
  // What a traced reader adds (empty for any other reader): the types members name, and the
  // reference data types of an IEEE 1516-2025 module, which the target interface cannot carry.
  std::vector<MemberType> memberTypes;
  std::vector<NamedLine> referenceDataTypes;
  // The line of each dependency's identification, by the name it gives.
  std::map<std::string, long> dependencyLines;

  // The line where the declaration being read opens, kept current by a traced reader; within a
  // section of records, the line of each record by its name.
  long line = 0;
  const std::map<std::string, long>* sectionLines = nullptr;
  // The line of a record this target was handed (0 if unknown); the record may have moved on.
  long lineOf(const void* record) const {
    auto found = recordLines_.find(record);
    return found == recordLines_.end() ? 0 : found->second;
  }

  bool addSpace(const char* name) override {
    spaces.push_back({text(name), {}});
    return true;
  }
  bool addSpaceDimension(const char* space, const char* dimension) override {
    for (Space& known : spaces) {
      if (known.name == text(space)) known.dimensions.push_back(text(dimension));
    }
    return true;
  }
  bool addObjectClass(const char* name, const char* parent) override {
    objects.push_back({text(name), text(parent), {}, {}, line});
    return true;
  }
  bool addObjectClassDimension(const char* className, const char* dimension) override {
    if (ObjectClass* owner = findObject(text(className))) {
      owner->dimensions.push_back(text(dimension));
    }
    return true;
  }
  bool setFomName(const char* name) override {
    modelName = text(name);
    return true;
  }
  bool setFomDependencies(const std::vector<DtString>& names) override {
    for (const DtString& name : names) dependencies.push_back(name.c_str());
    return true;
  }
  bool addSpaceAttribute(const char* className, const char* name, DtTransportType transport,
                         DtOrderType order, const char* space) override {
    if (ObjectClass* owner = findObject(text(className))) {
      owner->attributes.push_back({text(name), transport, order, text(space), {}, line});
    }
    return true;
  }
  bool addInteractionClass(const char* name, const char* parent, DtTransportType transport,
                           DtOrderType order, const char* space) override {
    interactions.push_back({text(name), text(parent), transport, order, text(space), {}, {}, line});
    return true;
  }
  bool addParameter(const char* className, const char* name) override {
    if (InteractionClass* owner = findInteraction(text(className))) {
      owner->parameters.push_back(text(name));
    }
    return true;
  }
  bool addAttribute(const char* className, const char* name, DtTransportType transport,
                    DtOrderType order, DtSharingType_enum, DtFomUpdateType_enum, const DtString&,
                    DtOwnershipType_enum, const DtString&, void*) override {
    if (ObjectClass* owner = findObject(text(className))) {
      owner->attributes.push_back({text(name), transport, order, "", {}, line});
    }
    return true;
  }
  bool addAttributeDimension(const char* className, const char* attribute,
                             const char* dimension) override {
    if (ObjectClass* owner = findObject(text(className))) {
      for (auto it = owner->attributes.rbegin(); it != owner->attributes.rend(); ++it) {
        if (it->name == text(attribute)) {
          it->dimensions.push_back(text(dimension));
          break;
        }
      }
    }
    return true;
  }
  bool addInteractionDimension(const char* className, const char* dimension) override {
    if (InteractionClass* owner = findInteraction(text(className))) {
      owner->dimensions.push_back(text(dimension));
    }
    return true;
  }
  bool addDimension(const char* name, unsigned long upperBound, unsigned long rangeLower,
                    unsigned long rangeUpper, bool excluded,
                    const DtString& normalization) override {
    dimensions.push_back(
        {text(name), upperBound, rangeLower, rangeUpper, excluded, normalization.c_str(), line});
    return true;
  }
  bool setSwitch(const DtString& name, bool value) override {
    switches.push_back({name.c_str(), value, line});
    return DtFedTarget::setSwitch(name, value);
  }

  // Records are the target's once added.
  bool addTransportation(DtTransportationType* record) override {
    return keep(transportations, record);
  }
  bool addTime(DtTimeType* record) override { return keep(time, record); }
  bool addUpdateRate(DtUpdateRateType* record) override { return keep(updateRates, record); }
  bool addUserSuppliedTag(DtUserSuppliedTagsType* record) override { return keep(tags, record); }
  bool addSynchronizationPoint(DtSynchronizationPointsType* record) override {
    return keep(synchronizations, record);
  }
  bool addNote(DtNotesType* record) override { return keep(notes, record); }
  bool addBasicDataRepresentation(DtBasicDataRepresentationType* record) override {
    return keep(dataTypes.basic, record);
  }
  bool addSimpleDatatype(DtSimpleDatatypeType* record) override {
    return keep(dataTypes.simple, record);
  }
  bool addEnumeratedDatatype(DtEnumeratedDatatypeType* record) override {
    return keep(dataTypes.enumerated, record);
  }
  bool addArrayDatatype(DtArrayDatatypeType* record) override {
    return keep(dataTypes.array, record);
  }
  bool addFixedRecordDatatype(DtFixedRecordDatatypeType* record) override {
    return keep(dataTypes.fixedRecord, record);
  }
  bool addVariantRecordDatatype(DtVariantRecordDatatypeType* record) override {
    return keep(dataTypes.variantRecord, record);
  }

 private:
  static std::string text(const char* value) { return value ? value : ""; }
  ObjectClass* findObject(const std::string& name) {
    for (auto it = objects.rbegin(); it != objects.rend(); ++it) {
      if (it->name == name) return &*it;
    }
    return nullptr;
  }
  InteractionClass* findInteraction(const std::string& name) {
    for (auto it = interactions.rbegin(); it != interactions.rend(); ++it) {
      if (it->name == name) return &*it;
    }
    return nullptr;
  }
  static std::string nameOf(const KORRti::DtNotesType& r) { return r.label.c_str(); }
  static std::string nameOf(const KORRti::DtSynchronizationPointsType& r) {
    return r.label.c_str();
  }
  template <typename Record>
  static std::string nameOf(const Record& r) {
    return r.name.c_str();
  }
  template <typename Record>
  bool keep(std::vector<std::unique_ptr<Record>>& records, Record* record) {
    records.emplace_back(record);
    long at = line;
    if (sectionLines && record) {
      auto found = sectionLines->find(nameOf(*record));
      if (found != sectionLines->end()) at = found->second;
    }
    if (at > 0) recordLines_[record] = at;
    return true;
  }
  std::unordered_map<const void*, long> recordLines_;
};

}  // namespace fomdump

#endif
