#ifndef TESTS_SUPPORT_COUNTING_TARGET_H
#define TESTS_SUPPORT_COUNTING_TARGET_H

// A FED target for the corpus suites that counts each kind of item it is given, to compare with
// a count of the document's elements made apart from the reader.
#include <memory>
#include <ostream>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/xmlFedReader.h>

namespace ktltest {

// How many of each kind of item a target was given, or a document holds.
struct Counts {
  int objectClasses = 0;
  int attributes = 0;
  int interactionClasses = 0;
  int parameters = 0;
  int basic = 0;
  int simple = 0;
  int enumerated = 0;
  int enumerators = 0;
  int array = 0;
  int fixedRecord = 0;
  int fields = 0;
  int variantRecord = 0;
  int alternatives = 0;
  int notes = 0;
  int dimensions = 0;
  int transportations = 0;
  int updateRates = 0;

  int dataTypes() const {
    return basic + simple + enumerated + array + fixedRecord + variantRecord;
  }
  bool operator==(const Counts& o) const {
    return objectClasses == o.objectClasses && attributes == o.attributes &&
           interactionClasses == o.interactionClasses && parameters == o.parameters &&
           basic == o.basic && simple == o.simple && enumerated == o.enumerated &&
           enumerators == o.enumerators && array == o.array && fixedRecord == o.fixedRecord &&
           fields == o.fields && variantRecord == o.variantRecord &&
           alternatives == o.alternatives && notes == o.notes && dimensions == o.dimensions &&
           transportations == o.transportations && updateRates == o.updateRates;
  }
};

std::ostream& operator<<(std::ostream& out, const Counts& c) {
  return out << "{objects " << c.objectClasses << ", attributes " << c.attributes
             << ", interactions " << c.interactionClasses << ", parameters " << c.parameters
             << ", basic " << c.basic << ", simple " << c.simple << ", enumerated " << c.enumerated
             << " (" << c.enumerators << "), array " << c.array << ", fixed " << c.fixedRecord
             << " (" << c.fields << "), variant " << c.variantRecord << " (" << c.alternatives
             << "), notes " << c.notes << ", dimensions " << c.dimensions << ", transportations "
             << c.transportations << ", update rates " << c.updateRates << "}";
}

// A target that counts what it is given and owns the records handed to it.
class CountingTarget : public KORRti::DtFedTarget {
 public:
  Counts counts;

  bool addObjectClass(const char*, const char*) override { return ++counts.objectClasses; }
  bool addAttribute(const char*, const char*, KORRti::DtTransportType, KORRti::DtOrderType,
                    KORRti::DtSharingType_enum, KORRti::DtFomUpdateType_enum,
                    const KORRti::DtString&, KORRti::DtOwnershipType_enum, const KORRti::DtString&,
                    void*) override {
    return ++counts.attributes;
  }
  bool addInteractionClass(const char*, const char*, KORRti::DtTransportType, KORRti::DtOrderType,
                           const char*) override {
    return ++counts.interactionClasses;
  }
  bool addParameter(const char*, const char*) override { return ++counts.parameters; }
  bool addDimension(const char*, unsigned long, unsigned long, unsigned long, bool,
                    const KORRti::DtString&) override {
    return ++counts.dimensions;
  }
  bool addTransportation(KORRti::DtTransportationType* r) override {
    ++counts.transportations;
    return keep(r);
  }
  bool addUpdateRate(KORRti::DtUpdateRateType* r) override {
    ++counts.updateRates;
    return keep(r);
  }
  bool addBasicDataRepresentation(KORRti::DtBasicDataRepresentationType* r) override {
    ++counts.basic;
    return keep(r);
  }
  bool addSimpleDatatype(KORRti::DtSimpleDatatypeType* r) override {
    ++counts.simple;
    return keep(r);
  }
  bool addEnumeratedDatatype(KORRti::DtEnumeratedDatatypeType* r) override {
    ++counts.enumerated;
    counts.enumerators += static_cast<int>(r->enumerators.size());
    return keep(r);
  }
  bool addArrayDatatype(KORRti::DtArrayDatatypeType* r) override {
    ++counts.array;
    return keep(r);
  }
  bool addFixedRecordDatatype(KORRti::DtFixedRecordDatatypeType* r) override {
    ++counts.fixedRecord;
    counts.fields += static_cast<int>(r->fields.size());
    return keep(r);
  }
  bool addVariantRecordDatatype(KORRti::DtVariantRecordDatatypeType* r) override {
    ++counts.variantRecord;
    counts.alternatives += static_cast<int>(r->alternatives.size());
    return keep(r);
  }
  bool addNote(KORRti::DtNotesType* r) override {
    ++counts.notes;
    return keep(r);
  }

 private:
  template <typename Record>
  bool keep(Record* record) {
    kept.emplace_back(record, [](void* p) { delete static_cast<Record*>(p); });
    return true;
  }
  std::vector<std::unique_ptr<void, void (*)(void*)>> kept;
};

}  // namespace ktltest

#endif
