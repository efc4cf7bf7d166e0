#ifndef TESTS_SUPPORT_KEEPING_TARGET_H
#define TESTS_SUPPORT_KEEPING_TARGET_H

// A FED target for the fuzz targets and the benchmarks: it copies every name it is given (so
// that every pointer a reader passes is read through), keeps every record handed over, and
// refuses the root classes it is told to refuse. It records what a host that builds a model
// would, at the least cost: the names go into one text, each behind a null byte.
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/xmlFedReader.h>

namespace ktltest {

class KeepingTarget : public KORRti::DtFedTarget {
 public:
  std::string names;
  // Root classes (offered with no parent) that addObjectClass and addInteractionClass refuse.
  std::set<std::string> refusedRoots;
  // When set, every other has... of notes, simple and enumerated data types answers true.
  bool everyOtherIsDuplicate = false;

  std::vector<std::unique_ptr<KORRti::DtTransportationType>> transportations;
  std::vector<std::unique_ptr<KORRti::DtSynchronizationPointsType>> synchronizations;
  std::vector<std::unique_ptr<KORRti::DtUserSuppliedTagsType>> tags;
  std::vector<std::unique_ptr<KORRti::DtNotesType>> notes;
  std::vector<std::unique_ptr<KORRti::DtTimeType>> time;
  std::vector<std::unique_ptr<KORRti::DtBasicDataRepresentationType>> basic;
  std::vector<std::unique_ptr<KORRti::DtSimpleDatatypeType>> simple;
  std::vector<std::unique_ptr<KORRti::DtEnumeratedDatatypeType>> enumerated;
  std::vector<std::unique_ptr<KORRti::DtArrayDatatypeType>> array;
  std::vector<std::unique_ptr<KORRti::DtFixedRecordDatatypeType>> fixedRecord;
  std::vector<std::unique_ptr<KORRti::DtVariantRecordDatatypeType>> variantRecord;
  std::vector<std::unique_ptr<KORRti::DtUpdateRateType>> updateRates;

  KeepingTarget() { names.reserve(1 << 16); }

  void keep(const char* text) {
    names += text ? text : "";
    names += '\0';
  }

  bool addSpace(const char* name) override {
    keep(name);
    return true;
  }
  bool addSpaceDimension(const char* space, const char* dimension) override {
    keep(space);
    keep(dimension);
    return true;
  }
  bool addDimension(const char* name, unsigned long, unsigned long, unsigned long, bool,
                    const KORRti::DtString& normalization) override {
    keep(name);
    keep(normalization.c_str());
    return true;
  }
  bool addObjectClass(const char* name, const char* parent) override {
    keep(name);
    keep(parent);
    return !refused(name, parent);
  }
  bool addSpaceAttribute(const char* className, const char* name, KORRti::DtTransportType,
                         KORRti::DtOrderType, const char* space) override {
    keep(className);
    keep(name);
    keep(space);
    return true;
  }
  bool addAttribute(const char* className, const char* name, KORRti::DtTransportType,
                    KORRti::DtOrderType, KORRti::DtSharingType_enum, KORRti::DtFomUpdateType_enum,
                    const KORRti::DtString& condition, KORRti::DtOwnershipType_enum,
                    const KORRti::DtString& semantics, void*) override {
    keep(className);
    keep(name);
    keep(condition.c_str());
    keep(semantics.c_str());
    return true;
  }
  bool addAttributeDimension(const char* className, const char* attribute,
                             const char* dimension) override {
    keep(className);
    keep(attribute);
    keep(dimension);
    return true;
  }
  bool addInteractionClass(const char* name, const char* parent, KORRti::DtTransportType,
                           KORRti::DtOrderType, const char* space) override {
    keep(name);
    keep(parent);
    keep(space);
    return !refused(name, parent);
  }
  bool addInteractionDimension(const char* className, const char* dimension) override {
    keep(className);
    keep(dimension);
    return true;
  }
  bool addParameter(const char* className, const char* name) override {
    keep(className);
    keep(name);
    return true;
  }

  bool addTransportation(KORRti::DtTransportationType* r) override {
    return own(transportations, r);
  }
  bool addSynchronizationPoint(KORRti::DtSynchronizationPointsType* r) override {
    return own(synchronizations, r);
  }
  bool addUserSuppliedTag(KORRti::DtUserSuppliedTagsType* r) override { return own(tags, r); }
  bool addNote(KORRti::DtNotesType* r) override { return own(notes, r); }
  bool addTime(KORRti::DtTimeType* r) override { return own(time, r); }
  bool addBasicDataRepresentation(KORRti::DtBasicDataRepresentationType* r) override {
    return own(basic, r);
  }
  bool addSimpleDatatype(KORRti::DtSimpleDatatypeType* r) override { return own(simple, r); }
  bool addEnumeratedDatatype(KORRti::DtEnumeratedDatatypeType* r) override {
    return own(enumerated, r);
  }
  bool addArrayDatatype(KORRti::DtArrayDatatypeType* r) override { return own(array, r); }
  bool addFixedRecordDatatype(KORRti::DtFixedRecordDatatypeType* r) override {
    return own(fixedRecord, r);
  }
  bool addVariantRecordDatatype(KORRti::DtVariantRecordDatatypeType* r) override {
    return own(variantRecord, r);
  }
  // What only the 1516-2010 and 2025 readers call.
  bool addObjectClassDimension(const char* className, const char* dimension) override {
    keep(className);
    keep(dimension);
    return true;
  }
  bool addUpdateRate(KORRti::DtUpdateRateType* r) override { return own(updateRates, r); }
  bool setFomName(const char* name) override {
    keep(name);
    return true;
  }
  bool setFomDependencies(const std::vector<KORRti::DtString>& dependencies) override {
    for (const KORRti::DtString& name : dependencies) keep(name.c_str());
    return true;
  }
  bool setSwitch(const KORRti::DtString& name, bool) override {
    keep(name.c_str());
    return true;
  }
  // A transportation is known once it has been added, so that both the declared and the
  // undeclared paths of an attribute's transportation are taken.
  bool hasTransportation(const KORRti::DtTransportationType& record) override {
    for (const auto& kept : transportations) {
      if (kept->name == record.name) return true;
    }
    return false;
  }
  bool addUnresolvedAttributeTransportation(const KORRti::DtTransportationType& record,
                                            const KORRti::DtString& className,
                                            const KORRti::DtString& attribute) override {
    keep(record.name.c_str());
    keep(className.c_str());
    keep(attribute.c_str());
    return true;
  }
  bool addUnresolvedInteractionTransportation(const KORRti::DtTransportationType& record,
                                              const KORRti::DtString& className) override {
    keep(record.name.c_str());
    keep(className.c_str());
    return true;
  }

  bool hasNote(const KORRti::DtNotesType&) override { return duplicate(); }
  bool hasSimpleDatatype(const KORRti::DtSimpleDatatypeType&) override { return duplicate(); }
  bool hasEnumeratedDatatype(const KORRti::DtEnumeratedDatatypeType&) override {
    return duplicate();
  }

 private:
  bool refused(const char* name, const char* parent) const {
    return !parent && name && refusedRoots.count(name) != 0;
  }
  bool duplicate() { return everyOtherIsDuplicate && (++asked_ % 2) == 0; }
  template <typename Record>
  static bool own(std::vector<std::unique_ptr<Record>>& records, Record* record) {
    records.emplace_back(record);
    return true;
  }
  int asked_ = 0;
};

}  // namespace ktltest

#endif
