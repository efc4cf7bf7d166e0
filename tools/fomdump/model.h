#ifndef TOOLS_FOMDUMP_MODEL_H
#define TOOLS_FOMDUMP_MODEL_H

// fomdump's record of one FOM module: a target that writes down everything a reader tells it,
// in the order it is told.
#include <memory>
#include <string>
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

struct Attribute {
  std::string name;
  DtTransportType transport;
  DtOrderType order;
  std::string space;  // empty for none
  std::vector<std::string> dimensions;
};

struct ObjectClass {
  std::string name;
  std::string parent;  // empty at the root
  std::vector<Attribute> attributes;
  std::vector<std::string> dimensions;
};

struct InteractionClass {
  std::string name;
  std::string parent;
  DtTransportType transport;
  DtOrderType order;
  std::string space;
  std::vector<std::string> parameters;
  std::vector<std::string> dimensions;
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
};

struct Switch {
  std::string name;
  bool enabled;
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
    objects.push_back({text(name), text(parent), {}, {}});
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
      owner->attributes.push_back({text(name), transport, order, text(space), {}});
    }
    return true;
  }
  bool addInteractionClass(const char* name, const char* parent, DtTransportType transport,
                           DtOrderType order, const char* space) override {
    interactions.push_back({text(name), text(parent), transport, order, text(space), {}, {}});
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
      owner->attributes.push_back({text(name), transport, order, "", {}});
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
        {text(name), upperBound, rangeLower, rangeUpper, excluded, normalization.c_str()});
    return true;
  }
  bool setSwitch(const DtString& name, bool value) override {
    switches.push_back({name.c_str(), value});
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
  template <typename Record>
  static bool keep(std::vector<std::unique_ptr<Record>>& records, Record* record) {
    records.emplace_back(record);
    return true;
  }
};

}  // namespace fomdump

#endif
