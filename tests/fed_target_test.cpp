// The target interface: its defaults, the enumerations and the strict-checking bits.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/fedReader13.h>
#include <ktl/ktlFedReader.h>
#include <ktl/xmlFedReader.h>

#include "support/capture.h"
#include "support/fed_recorder.h"

using namespace KORRti;

namespace {

TEST(FedTarget, EnumerationValues) {
  EXPECT_EQ(sizeof(DtFomType), 4u);
  EXPECT_EQ(DtFomTypeUnknown, 0);
  EXPECT_EQ(DtFomType13, 1);
  EXPECT_EQ(DtFomType1516, 2);
  EXPECT_EQ(DtFomTypeEvolved, 3);
  EXPECT_EQ(DtFomType2025, 4);
  EXPECT_TRUE((std::is_same<DtTransportType, int32_t>::value));
  EXPECT_TRUE((std::is_same<DtOrderType, int32_t>::value));
  EXPECT_EQ(DtTransportInvalid, -1);
  EXPECT_EQ(DtTransportBestEffort, 0);
  EXPECT_EQ(DtTransportReliable, 1);
  EXPECT_EQ(DtOrderInvalid, -1);
  EXPECT_EQ(DtOrderReceive, 0);
  EXPECT_EQ(DtOrderTimestamp, 1);
  EXPECT_EQ(DtSharingPublishSubscribe, 0);
  EXPECT_EQ(DtSharingPublish, 1);
  EXPECT_EQ(DtSharingSubscribe, 2);
  EXPECT_EQ(DtSharingNeither, 3);
  EXPECT_EQ(DtSharingInvalid, 4);
  EXPECT_EQ(DtOwnershipDivest, 0);
  EXPECT_EQ(DtOwnershipAcquire, 1);
  EXPECT_EQ(DtOwnershipDivestAcquire, 2);
  EXPECT_EQ(DtOwnershipNoTransfer, 3);
  EXPECT_EQ(DtFomUpdateStatic, 0);
  EXPECT_EQ(DtFomUpdatePeriodic, 1);
  EXPECT_EQ(DtFomUpdateConditional, 2);
  EXPECT_EQ(DtFomUpdateNA, 3);
  EXPECT_EQ(DtStrictUnexpectedContent, 1u);
  EXPECT_EQ(DtStrictMissingTables, 2u);
}

TEST(FedTarget, DefaultsKeepTheFormatAndAcceptClasses) {
  DtFedTarget target;
  EXPECT_EQ(target.fomType(), DtFomTypeUnknown);
  target.setFomType(DtFomTypeEvolved);
  EXPECT_EQ(target.fomType(), DtFomTypeEvolved);
  EXPECT_TRUE(target.addObjectClass("ObjectRoot", nullptr));
  EXPECT_TRUE(target.addInteractionClass("InteractionRoot", nullptr, 1, 0, nullptr));
  EXPECT_TRUE(target.addInteractionDimension("I", "D"));
  EXPECT_TRUE(target.addObjectClassDimension("O", "D"));
  EXPECT_TRUE(target.addAttributeDimension("O", "a", "D"));
}

TEST(FedTarget, DefaultsOwnTheRecordsHandedOver) {
  // Under the leak checker a record that the defaults forgot would show.
  DtFedTarget target;
  DtTransportationType transport;
  transport.reliable = true;
  EXPECT_FALSE(target.hasTransportation(transport));
  EXPECT_EQ(target.transportationType(transport), DtTransportReliable);
  transport.reliable = false;
  EXPECT_EQ(target.transportationType(transport), DtTransportBestEffort);
  target.addTransportation(new DtTransportationType);
  target.addUpdateRate(new DtUpdateRateType);
  target.addSynchronizationPoint(new DtSynchronizationPointsType);
  target.addUserSuppliedTag(new DtUserSuppliedTagsType);
  target.addNote(new DtNotesType);
  target.addTime(new DtTimeType);
  target.addBasicDataRepresentation(new DtBasicDataRepresentationType);
  target.addSimpleDatatype(new DtSimpleDatatypeType);
  auto* enumerated = new DtEnumeratedDatatypeType;
  enumerated->enumerators.insert(std::make_shared<DtEnumeratorType>());
  target.addEnumeratedDatatype(enumerated);
  target.addArrayDatatype(new DtArrayDatatypeType);
  auto* fixed = new DtFixedRecordDatatypeType;
  fixed->fields.insert(std::make_shared<DtFieldType>());
  EXPECT_FALSE(target.hasFixedRecordDatatype(*fixed));
  target.addFixedRecordDatatype(fixed);
  target.addVariantRecordDatatype(new DtVariantRecordDatatypeType);
  EXPECT_FALSE(target.hasUpdateRate(DtUpdateRateType()));
  EXPECT_FALSE(target.hasNote(DtNotesType()));
  EXPECT_FALSE(target.hasTime(DtTimeType()));
}

TEST(FedTarget, DefaultSwitches) {
  DtFedTarget target;
  EXPECT_TRUE(target.isKnownSwitch("autoProvide"));
  EXPECT_TRUE(target.isKnownSwitch("allowRelaxedDdm"));
  EXPECT_FALSE(target.isKnownSwitch("madeUpSwitch"));
  EXPECT_FALSE(target.hasSwitch("autoProvide"));
  EXPECT_FALSE(target.switchValue("autoProvide"));
  target.setSwitch("autoProvide", true);
  EXPECT_TRUE(target.hasSwitch("autoProvide"));
  EXPECT_TRUE(target.switchValue("autoProvide"));
  target.setSwitch("autoProvide", false);
  EXPECT_FALSE(target.switchValue("autoProvide"));
}

TEST(FedTarget, RecordDefaults) {
  EXPECT_EQ(DtUpdateRateType().rate, 0.0f);
  EXPECT_EQ(DtBasicDataRepresentationType().endian, 0);
  EXPECT_EQ(DtSynchronizationPointsType().capability, 0);
  EXPECT_FALSE(DtTransportationType().reliable);
  // A copy of a fixed record shares its fields.
  DtFixedRecordDatatypeType record;
  record.fields.insert(std::make_shared<DtFieldType>());
  DtFixedRecordDatatypeType copy = record;
  (*copy.fields.begin())->name = "changed";
  EXPECT_EQ(std::string((*record.fields.begin())->name.c_str()), "changed");
}

// What the 1.3 readers do with the mask: store it, and read the same either way.
TEST(FedTarget, StrictBitsHaveNoEffectOnTheOnePointThreeReaders) {
  const std::string text =
      "(FED (Federation f) (FEDversion v) (spaces) (objects (class ObjectRoot (attribute a "
      "reliable receive))) (interactions (class InteractionRoot reliable receive (parameter "
      "p))))";
  std::string path = ktltest::writeTempFile(text, ".fed");
  std::vector<std::string> first;
  for (unsigned int mask : {0u, 1u, 2u, 3u, 0xffffffffu}) {
    DtFedReader13 reader13;
    DtKtlFedReader readerKtl;
    ktltest::FedRecorder target13, targetKtl;
    EXPECT_EQ(reader13.readFed(path.c_str(), &target13, mask, false, false), 0);
    EXPECT_EQ(readerKtl.readFed(path.c_str(), &targetKtl, mask, false, false), 0);
    EXPECT_EQ(reader13.setStrictChecking(0), mask);
    EXPECT_EQ(readerKtl.setStrictChecking(0), mask);
    if (first.empty()) first = target13.calls;
    EXPECT_EQ(target13.calls, first);
    EXPECT_EQ(targetKtl.calls.size() + 1, first.size());
  }
}

}  // namespace
