// The XML reader base: the records of an object model document (their defaults, their sets and
// the copy that shares fields), the vocabulary table and its statics, the node helpers, the
// format test on a root element and on an open file, and the logging walk of a transportations
// section that no dialect calls.
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader1516.h>
#include <ktl/xmlFedReader.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"

using namespace KORRti;
using namespace ktltest;

namespace {

const xmlChar* x(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

// The smallest reader made directly on the base, to see what the base alone sets up.
class BareXmlReader : public DtXmlFedReader {
 public:
  DtFedTarget* heldTarget() const { return target; }
  int readFedFilePtr(FILE*, DtFedTarget*, DtFilename, unsigned int, bool, bool) override {
    return 0;
  }
  int processFed(xmlNode*) override { return 0; }
  int parseTransportationsList(xmlNode*) override { return 0; }
  int processObjects(xmlNode*) override { return 0; }
  int processInteractions(xmlNode*) override { return 0; }
  int parseObjectTree(xmlNode*, const DtString&) override { return 0; }
  int parseAttribute(xmlNode*, const DtString&) override { return 0; }
  int parseAttributeDimensions(xmlNode*, const DtString&, const DtString&) override { return 0; }
  int parseInteractionTree(xmlNode*, const DtString&) override { return 0; }
  int parseInteractionDimensions(xmlNode*, const DtString&) override { return 0; }
  int parseDimensionList(xmlNode*) override { return 0; }
  int parseDimension(xmlNode*) override { return 0; }
  int parseSwitches(xmlNode*) override { return 0; }
  int parseParameter(xmlNode*, const DtString&) override { return 0; }
  int parseDataTypeTree(xmlNode*) override { return 0; }
  int parseNotesTree(xmlNode*) override { return 0; }
  int parseTagsTree(xmlNode*) override { return 0; }
  int parseBasicDataTypesTree(xmlNode*) override { return 0; }
  int parseSimpleDataTypesTree(xmlNode*) override { return 0; }
  int parseArrayDataTypesTree(xmlNode*) override { return 0; }
  int parseEnumeratedDataTypesTree(xmlNode*) override { return 0; }
  int parseFixedRecordDataTypesTree(xmlNode*) override { return 0; }
  int parseVariantRecordDataTypesTree(xmlNode*) override { return 0; }
  void setMask(unsigned int mask) { strictCheckingMask = mask; }
};

// ---------------------------------------------------------------------------------------------
// Records

TEST(FddRecords, EveryFieldStartsEmptyOrZero) {
  DtTimeType time;
  EXPECT_TRUE(time.name.isEmpty() && time.dataType.isEmpty() && time.semantics.isEmpty());
  DtUserSuppliedTagsType tag;
  EXPECT_TRUE(tag.name.isEmpty() && tag.dataType.isEmpty() && tag.semantics.isEmpty());
  DtSynchronizationPointsType point;
  EXPECT_TRUE(point.label.isEmpty() && point.dataType.isEmpty() && point.semantics.isEmpty());
  EXPECT_EQ(point.capability, 0);
  DtTransportationType transport;
  EXPECT_TRUE(transport.name.isEmpty() && transport.description.isEmpty() &&
              transport.semantics.isEmpty());
  EXPECT_FALSE(transport.reliable);
  DtBasicDataRepresentationType basic;
  EXPECT_TRUE(basic.name.isEmpty() && basic.interpretation.isEmpty() && basic.encoding.isEmpty());
  EXPECT_EQ(basic.size, 0UL);
  EXPECT_EQ(basic.endian, 0);
  DtSimpleDatatypeType simple;
  EXPECT_TRUE(simple.name.isEmpty() && simple.representation.isEmpty() && simple.units.isEmpty() &&
              simple.resolution.isEmpty() && simple.accuracy.isEmpty() &&
              simple.semantics.isEmpty());
  DtEnumeratorType enumerator;
  EXPECT_TRUE(enumerator.name.isEmpty() && enumerator.values.isEmpty());
  DtEnumeratedDatatypeType enumerated;
  EXPECT_TRUE(enumerated.name.isEmpty() && enumerated.representation.isEmpty() &&
              enumerated.semantics.isEmpty());
  EXPECT_TRUE(enumerated.enumerators.empty());
  DtArrayDatatypeType array;
  EXPECT_TRUE(array.name.isEmpty() && array.dataType.isEmpty() && array.cardinality.isEmpty() &&
              array.encoding.isEmpty() && array.semantics.isEmpty());
  DtFieldType field;
  EXPECT_TRUE(field.name.isEmpty() && field.dataType.isEmpty() && field.semantics.isEmpty());
  DtFixedRecordDatatypeType fixed;
  EXPECT_TRUE(fixed.name.isEmpty() && fixed.encoding.isEmpty() && fixed.semantics.isEmpty());
  EXPECT_TRUE(fixed.fields.empty());
  DtAlternativeType alternative;
  EXPECT_TRUE(alternative.enumerator.isEmpty() && alternative.name.isEmpty() &&
              alternative.dataType.isEmpty() && alternative.semantics.isEmpty());
  DtVariantRecordDatatypeType variant;
  EXPECT_TRUE(variant.name.isEmpty() && variant.discriminant.isEmpty() &&
              variant.dataType.isEmpty() && variant.encoding.isEmpty() &&
              variant.semantics.isEmpty());
  EXPECT_TRUE(variant.alternatives.empty());
  DtNotesType note;
  EXPECT_TRUE(note.label.isEmpty() && note.semantics.isEmpty());
}

TEST(FddRecords, UpdateRateWithNoRateHoldsZero) {
  DtUpdateRateType rate;
  EXPECT_EQ(rate.rate, 0.0f);
  EXPECT_TRUE(rate.name.isEmpty());
  EXPECT_TRUE(rate.semantics.isEmpty());
}

TEST(FddRecords, FixedRecordCopySharesItsFields) {
  DtFixedRecordDatatypeType record;
  record.name = "R";
  auto field = std::make_shared<DtFieldType>();
  field->name = "f";
  record.fields.insert(field);
  DtFixedRecordDatatypeType copy = record;
  ASSERT_EQ(copy.fields.size(), 1u);
  (*copy.fields.begin())->dataType = "changed through the copy";
  EXPECT_EQ(str(field->dataType), "changed through the copy");
  EXPECT_EQ(str((*record.fields.begin())->dataType), "changed through the copy");
  EXPECT_EQ(copy.fields.begin()->get(), field.get());
}

TEST(FddRecords, SetsKeepChildrenOfEqualNameApart) {
  DtEnumeratedDatatypeType record;
  for (int i = 0; i < 2; ++i) {
    auto enumerator = std::make_shared<DtEnumeratorType>();
    enumerator->name = "Same";
    enumerator->values = "1";
    record.enumerators.insert(enumerator);
  }
  EXPECT_EQ(record.enumerators.size(), 2u);
}

// The records as a read fills them.

TEST(FddRecords, EnumeratedDataWithTwoEqualEnumeratorsHoldsBoth) {
  DtFedReader1516 reader;
  FddRecorder target;
  auto outcome =
      readFddText(reader,
                  completeFdd("<dataTypes><enumeratedDataTypes>\n"
                              "<enumeratedData name=\"E\" representation=\"HLAinteger32BE\">\n"
                              "<enumerator name=\"One\" values=\"1\"/>\n"
                              "<enumerator name=\"One\" values=\"1\"/>\n"
                              "</enumeratedData></enumeratedDataTypes></dataTypes>\n"),
                  &target);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  ASSERT_EQ(target.enumeratedData.size(), 1u);
  const auto& enumerators = target.enumeratedData[0]->enumerators;
  ASSERT_EQ(enumerators.size(), 2u);
  for (const auto& enumerator : enumerators) {
    EXPECT_EQ(str(enumerator->name), "One");
    EXPECT_EQ(str(enumerator->values), "1");
  }
}

TEST(FddRecords, BasicDataWithNoEndianHoldsZero) {
  DtFedReader1516 reader;
  FddRecorder target;
  auto outcome = readFddText(
      reader,
      completeFdd("<dataTypes><basicDataRepresentations>\n"
                  "<basicData name=\"B\" size=\"8\" interpretation=\"i\" encoding=\"e\"/>\n"
                  "</basicDataRepresentations></dataTypes>\n"),
      &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  ASSERT_EQ(target.basicData.size(), 1u);
  EXPECT_EQ(target.basicData[0]->endian, 0);
  EXPECT_EQ(target.basicData[0]->size, 8UL);
}

TEST(FddRecords, TheFixedRecordDuplicateTestSeesACopySharingTheFields) {
  // The recorder's hasFixedRecordDatatype marks each field of the copy it gets; the mark shows
  // in the record delivered afterwards.
  DtFedReader1516 reader;
  FddRecorder target;
  auto outcome = readFddText(reader,
                             completeFdd("<dataTypes><fixedRecordDataTypes>\n"
                                         "<fixedRecordData name=\"F\">\n"
                                         "<field name=\"a\" dataType=\"T\" semantics=\"s\"/>\n"
                                         "</fixedRecordData></fixedRecordDataTypes></dataTypes>\n"),
                             &target);
  EXPECT_EQ(outcome.result, 0);
  ASSERT_EQ(target.fixedRecordData.size(), 1u);
  ASSERT_EQ(target.fixedRecordData[0]->fields.size(), 1u);
  EXPECT_EQ(str((*target.fixedRecordData[0]->fields.begin())->semantics), "s+seen");
}

TEST(FddRecords, TextsStayAsWrittenAndANamelessRecordStillReachesTheTarget) {
  DtFedReader1516 reader;
  FddRecorder target;
  auto outcome =
      readFddText(reader,
                  completeFdd("<dataTypes><simpleDataTypes>\n"
                              "<simpleData units=\" Metre \" representation=\"Float\"/>\n"
                              "</simpleDataTypes></dataTypes>\n"),
                  &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(target.called("hasSimpleDatatype()"));
  ASSERT_EQ(target.simpleData.size(), 1u);
  EXPECT_EQ(str(target.simpleData[0]->name), "");
  EXPECT_EQ(str(target.simpleData[0]->units), " Metre ");
  EXPECT_EQ(str(target.simpleData[0]->representation), "Float");
}

TEST(FddRecords, TheReaderKeepsTheRawTextForTakeCurrFddData) {
  const std::string text = completeFdd("");
  DtFedReader1516 reader;
  FddRecorder target;
  auto outcome = readFddText(reader, text, &target);
  EXPECT_EQ(outcome.result, 0);
  char* data = reader.takeCurrFddData();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(std::string(data, text.size()), text);
  delete[] data;
  EXPECT_EQ(reader.takeCurrFddData(), nullptr);
  // A second read makes a new buffer (the old one freed by the reader).
  readFddText(reader, text, &target);
  readFddText(reader, text + "\n", &target);
  data = reader.takeCurrFddData();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(std::string(data, text.size() + 1), text + "\n");
  delete[] data;
}

// ---------------------------------------------------------------------------------------------
// Vocabulary

struct Word {
  const char* name;
  const char* value;
  const char* expected;
};

const Word theVocabulary[] = {
    {"IEEE1516_2009", IEEE1516_2009, "IEEE1516-2009"},
    {"IEEE1516_2010", IEEE1516_2010, "IEEE1516-2010"},
    {"IEEE1516_2025", IEEE1516_2025, "IEEE1516-2025"},
    {"tagDocumentType", tagDocumentType, "objectModel"},
    {"tagObjectModel", tagObjectModel, "objectModel"},
    {"tagModelIdentification", tagModelIdentification, "modelIdentification"},
    {"tagReferenceType", tagReferenceType, "type"},
    {"tagReferenceIdentification", tagReferenceIdentification, "identification"},
    {"tagObjects", tagObjects, "objects"},
    {"tagInteractions", tagInteractions, "interactions"},
    {"tagTransportations", tagTransportations, "transportations"},
    {"tagDataTypes", tagDataTypes, "dataTypes"},
    {"tagNotes", tagNotes, "notes"},
    {"tagTags", tagTags, "tags"},
    {"tagSwitches", tagSwitches, "switches"},
    {"tagDimensions", tagDimensions, "dimensions"},
    {"tagTime", tagTime, "time"},
    {"tagSynchronizations", tagSynchronizations, "synchronizations"},
    {"tagSchemaLocation", tagSchemaLocation, "schemaLocation"},
    {"tagObjectClass", tagObjectClass, "objectClass"},
    {"tagAttribute", tagAttribute, "attribute"},
    {"tagInteractClass", tagInteractClass, "interactionClass"},
    {"tagParameter", tagParameter, "parameter"},
    {"tagTransport", tagTransport, "transportation"},
    {"tagBasicDataReps", tagBasicDataReps, "basicDataRepresentations"},
    {"tagBasicData", tagBasicData, "basicData"},
    {"tagSimpleDataTypes", tagSimpleDataTypes, "simpleDataTypes"},
    {"tagSimpleData", tagSimpleData, "simpleData"},
    {"tagReferenceDataTypes", tagReferenceDataTypes, "referenceDataTypes"},
    {"tagReferenceData", tagReferenceData, "referenceDataType"},
    {"tagEnumDataTypes", tagEnumDataTypes, "enumeratedDataTypes"},
    {"tagEnumData", tagEnumData, "enumeratedData"},
    {"tagEnumerator", tagEnumerator, "enumerator"},
    {"tagArrayDataTypes", tagArrayDataTypes, "arrayDataTypes"},
    {"tagArrayData", tagArrayData, "arrayData"},
    {"tagFixedRecDataTypes", tagFixedRecDataTypes, "fixedRecordDataTypes"},
    {"tagFixedRecData", tagFixedRecData, "fixedRecordData"},
    {"tagFixedRecField", tagFixedRecField, "field"},
    {"tagVarRecDataTypes", tagVarRecDataTypes, "variantRecordDataTypes"},
    {"tagVarRecData", tagVarRecData, "variantRecordData"},
    {"tagVarRecAlternative", tagVarRecAlternative, "alternative"},
    {"tagNote", tagNote, "note"},
    {"tagUpdateRates", tagUpdateRates, "updateRates"},
    {"tagSingleUpdateRate", tagSingleUpdateRate, "updateRate"},
    {"attrAccuracy", attrAccuracy, "accuracy"},
    {"attrAccuracyNotes", attrAccuracyNotes, "accuracyNotes"},
    {"attrAppDomain", attrAppDomain, "appDomain"},
    {"attrCapability", attrCapability, "capability"},
    {"attrCapabilityNotes", attrCapabilityNotes, "capabilityNotes"},
    {"attrCardinality", attrCardinality, "cardinality"},
    {"attrCardinalityNotes", attrCardinalityNotes, "cardinalityNotes"},
    {"attrDate", attrDate, "date"},
    {"attrDataType", attrDataType, "dataType"},
    {"attrDTDversion", attrDTDversion, "DTDversion"},
    {"attrDataTypeNotes", attrDataTypeNotes, "dataTypeNotes"},
    {"attrDescription", attrDescription, "description"},
    {"attrDescriptionNotes", attrDescriptionNotes, "descriptionNotes"},
    {"attrDimension", attrDimension, "dimension"},
    {"attrDimensions", attrDimensions, "dimensions"},
    {"attrDiscriminant", attrDiscriminant, "discriminant"},
    {"attrDiscriminantNotes", attrDiscriminantNotes, "discriminantNotes"},
    {"attrEncoding", attrEncoding, "encoding"},
    {"attrEncodingNotes", attrEncodingNotes, "encodingNotes"},
    {"attrEndian", attrEndian, "endian"},
    {"attrEndianNotes", attrEndianNotes, "endianNotes"},
    {"attrEnumerator", attrEnumerator, "enumerator"},
    {"attrEnumeratorNotes", attrEnumeratorNotes, "enumeratorNotes"},
    {"attrInterpretation", attrInterpretation, "interpretation"},
    {"attrInterpretationNotes", attrInterpretationNotes, "interpretationNotes"},
    {"attrIsEnabled", attrIsEnabled, "isEnabled"},
    {"attrLabel", attrLabel, "label"},
    {"attrLabelNotes", attrLabelNotes, "labelNotes"},
    {"attrLogicalTime", attrLogicalTime, "logicalTime"},
    {"attrLogicalTimeInterval", attrLogicalTimeInterval, "logicalTimeInterval"},
    {"attrLookahead", attrLookahead, "lookahead"},
    {"attrName", attrName, "name"},
    {"attrNameNotes", attrNameNotes, "nameNotes"},
    {"attrNormalization", attrNormalization, "normalization"},
    {"attrOrder", attrOrder, "order"},
    {"attrOther", attrOther, "other"},
    {"attrOwnership", attrOwnership, "ownership"},
    {"attrPocEmail", attrPocEmail, "pocEmail"},
    {"attrPocName", attrPocName, "pocName"},
    {"attrPocOrg", attrPocOrg, "pocOrg"},
    {"attrPocPhone", attrPocPhone, "pocPhone"},
    {"attrPocType", attrPocType, "pocType"},
    {"attrPurpose", attrPurpose, "purpose"},
    {"attrReferences", attrReferences, "reference"},
    {"attrReliable", attrReliable, "reliable"},
    {"attrRepresentation", attrRepresentation, "representation"},
    {"attrRepresentationNotes", attrRepresentationNotes, "representationNotes"},
    {"attrResignAction", attrResignAction, "resignAction"},
    {"attrResolution", attrResolution, "resolution"},
    {"attrResolutionNotes", attrResolutionNotes, "resolutionNotes"},
    {"attrSemantics", attrSemantics, "semantics"},
    {"attrSemanticsNotes", attrSemanticsNotes, "semanticsNotes"},
    {"attrSharing", attrSharing, "sharing"},
    {"attrSize", attrSize, "size"},
    {"attrSizeNotes", attrSizeNotes, "sizeNotes"},
    {"attrSponsor", attrSponsor, "sponsor"},
    {"attrSynchronization", attrSynchronization, "synchronization"},
    {"attrTimeStamp", attrTimeStamp, "timeStamp"},
    {"attrTransport", attrTransport, "transportation"},
    {"attrText", attrText, "text"},
    {"attrType", attrType, "type"},
    {"attrUnits", attrUnits, "units"},
    {"attrUnitsNotes", attrUnitsNotes, "unitsNotes"},
    {"attrUpdateCond", attrUpdateCond, "updateCondition"},
    {"attrUpdateType", attrUpdateType, "updateType"},
    {"attrUpperBound", attrUpperBound, "upperBound"},
    {"attrValue", attrValue, "value"},
    {"attrValues", attrValues, "values"},
    {"attrValuesNotes", attrValuesNotes, "valuesNotes"},
    {"attrVersion", attrVersion, "version"},
    {"attrAutoProvide", attrAutoProvide, "autoProvide"},
    {"attrConveyProducingFederate", attrConveyProducingFederate, "conveyProducingFederate"},
    {"attrConveyRegionDesignatorSets", attrConveyRegionDesignatorSets,
     "conveyRegionDesignatorSets"},
    {"attrAttributeRelevanceAdvisory", attrAttributeRelevanceAdvisory,
     "attributeRelevanceAdvisory"},
    {"attrAttributeScopeAdvisory", attrAttributeScopeAdvisory, "attributeScopeAdvisory"},
    {"attrObjectClassRelevanceAdvisory", attrObjectClassRelevanceAdvisory,
     "objectClassRelevanceAdvisory"},
    {"attrInteractionRelevanceAdvisory", attrInteractionRelevanceAdvisory,
     "interactionRelevanceAdvisory"},
    {"attrServiceReporting", attrServiceReporting, "serviceReporting"},
    {"attrExceptionReporting", attrExceptionReporting, "exceptionReporting"},
    {"attrDelaySubscriptionEvaluation", attrDelaySubscriptionEvaluation,
     "delaySubscriptionEvaluation"},
    {"attrNonRegulatedGrant", attrNonRegulatedGrant, "nonRegulatedGrant"},
    {"attrAutomaticResignAction", attrAutomaticResignAction, "automaticResignAction"},
    {"attrSendServiceReportsToFile", attrSendServiceReportsToFile, "sendServiceReportsToFile"},
    {"attrAdvisoriesUseKnownClass", attrAdvisoriesUseKnownClass, "advisoriesUseKnownClass"},
    {"attrAllowRelaxedDdm", attrAllowRelaxedDdm, "allowRelaxedDdm"},
    {"attrSynchronizationPoint", attrSynchronizationPoint, "synchronizationPoint"},
    {"attrUseLimitation", attrUseLimitation, "useLimitation"},
    {"attrUseHistory", attrUseHistory, "useHistory"},
    {"valueSharingPublish", valueSharingPublish, "Publish"},
    {"valueSharingSubscribe", valueSharingSubscribe, "Subscribe"},
    {"valueSharingPublishSubscribe", valueSharingPublishSubscribe, "PublishSubscribe"},
    {"valueSharingNeither", valueSharingNeither, "Neither"},
    {"valueOwnershipDivest", valueOwnershipDivest, "Divest"},
    {"valueOwnershipAcquire", valueOwnershipAcquire, "Acquire"},
    {"valueOwnershipDivestAcquire", valueOwnershipDivestAcquire, "DivestAcquire"},
    {"valueOwnershipNoTransfer", valueOwnershipNoTransfer, "NoTransfer"},
    {"valueDimensionsNA", valueDimensionsNA, "NA"},
    {"valueFomUpdateTypeStatic", valueFomUpdateTypeStatic, "Static"},
    {"valueFomUpdateTypePeriodic", valueFomUpdateTypePeriodic, "Periodic"},
    {"valueFomUpdateTypeConditional", valueFomUpdateTypeConditional, "Conditional"},
    {"valueFomUpdateTypeNA", valueFomUpdateTypeNA, "NA"},
    {"valueObjectRoot", valueObjectRoot, "HLAobjectRoot"},
    {"valueInteractionRoot", valueInteractionRoot, "HLAinteractionRoot"},
    {"valuePrivilegeToDelete", valuePrivilegeToDelete, "HLAprivilegeToDelete"},
    {"valueEnabled", valueEnabled, "Enabled"},
    {"valueTransportBestEffort", valueTransportBestEffort, "HLAbestEffort"},
    {"valueTransportReliable", valueTransportReliable, "HLAreliable"},
    {"valueOrderReceive", valueOrderReceive, "Receive"},
    {"valueOrderTimeStamp", valueOrderTimeStamp, "TimeStamp"},
    {"valueIsEnabled", valueIsEnabled, "isEnabled"},
    {"valueDisabled", valueDisabled, "Disabled"},
    {"valueTrue", valueTrue, "true"},
    {"valueFalse", valueFalse, "false"},
    {"valueYes", valueYes, "Yes"},
    {"valueNo", valueNo, "No"},
    {"valueResignAction", valueResignAction, "resignAction"},
    {"valueUnconditionallyDivestAttributes", valueUnconditionallyDivestAttributes,
     "UnconditionallyDivestAttributes"},
    {"valueDeleteObjects", valueDeleteObjects, "DeleteObjects"},
    {"valueCancelPendingOwnershipAcquisitions", valueCancelPendingOwnershipAcquisitions,
     "CancelPendingOwnershipAcquisitions"},
    {"valueDeleteObjectsThenDivest", valueDeleteObjectsThenDivest, "DeleteObjectsThenDivest"},
    {"valueCancelThenDeleteThenDivest", valueCancelThenDeleteThenDivest,
     "CancelThenDeleteThenDivest"},
    {"valueNoAction", valueNoAction, "NoAction"},
    {"valueRegister", valueRegister, "Register"},
    {"valueAchieve", valueAchieve, "Achieve"},
    {"valueRegisterAchieve", valueRegisterAchieve, "RegisterAchieve"},
    {"valueNoSynch", valueNoSynch, "NoSynch"},
    {"valueNA", valueNA, "NA"},
    {"valueBig", valueBig, "Big"},
    {"valueLittle", valueLittle, "Little"},
};

TEST(FddVocabulary, EveryRowHoldsItsText) {
  EXPECT_EQ(sizeof(theVocabulary) / sizeof(theVocabulary[0]), 173u);
  for (const Word& word : theVocabulary) {
    ASSERT_NE(word.value, nullptr) << word.name;
    EXPECT_STREQ(word.value, word.expected) << word.name;
  }
}

TEST(FddVocabulary, SomeRowsWorthNaming) {
  EXPECT_STREQ(tagObjectModel, "objectModel");
  EXPECT_STREQ(tagDocumentType, "objectModel");
  EXPECT_STREQ(attrReferences, "reference");
  EXPECT_STREQ(tagTransport, "transportation");
  EXPECT_STREQ(attrTransport, "transportation");
  EXPECT_STREQ(valueDimensionsNA, "NA");
  EXPECT_STREQ(valueFomUpdateTypeNA, "NA");
  EXPECT_STREQ(tagReferenceData, "referenceDataType");
  EXPECT_STREQ(attrUpdateCond, "updateCondition");
}

TEST(FddVocabulary, NamespacesEndInTheirMarks) {
  std::string evolved = xmlns_HLA1516_2010;
  std::string four = xmlns_HLA1516_2025;
  ASSERT_GE(evolved.size(), 14u);
  ASSERT_GE(four.size(), 14u);
  EXPECT_EQ(evolved.substr(evolved.size() - 14), "/IEEE1516-2010");
  EXPECT_EQ(four.substr(four.size() - 14), "/IEEE1516-2025");
}

TEST(FddVocabulary, ClassStatics) {
  EXPECT_EQ(str(DtXmlFedReader::theValueObjectRoot), "HLAobjectRoot");
  EXPECT_EQ(str(DtXmlFedReader::theValuePrivilegeToDelete), "HLAprivilegeToDelete");
  EXPECT_EQ(str(DtXmlFedReader::theValueEnabled), "Enabled");
}

// ---------------------------------------------------------------------------------------------
// Set-up

TEST(XmlFedReaderSetUp, TheBaseLeavesTheFormatUnknownAndTheTargetNull) {
  BareXmlReader reader;
  EXPECT_EQ(reader.expectedFomType(), DtFomTypeUnknown);
  EXPECT_EQ(reader.heldTarget(), nullptr);
  EXPECT_EQ(reader.lastFomType(), DtFomTypeUnknown);
  DtFedReader1516 reader1516;
  EXPECT_EQ(reader1516.expectedFomType(), DtFomType1516);
  EXPECT_EQ(reader1516.lastFomType(), DtFomTypeUnknown);
}

TEST(XmlFedReaderSetUp, EachNewReaderDropsBlankTextAgain) {
  int before = xmlKeepBlanksDefault(1);
  {
    DtFedReader1516 reader;
    // The reader set the default to 0; this call puts back 1 and answers what was there.
    EXPECT_EQ(xmlKeepBlanksDefault(1), 0);
    BareXmlReader bare;
    EXPECT_EQ(xmlKeepBlanksDefault(0), 0);
    ParsedXml doc("<a>\n  <b/>\n</a>");
    ASSERT_NE(doc.root(), nullptr);
    ASSERT_NE(doc.root()->children, nullptr);
    EXPECT_EQ(doc.root()->children->type, XML_ELEMENT_NODE);
    EXPECT_EQ(doc.root()->children->next, nullptr);
  }
  xmlKeepBlanksDefault(before);
}

// ---------------------------------------------------------------------------------------------
// Node helpers

TEST(XmlFedReaderHelpers, ConvertStringToULong) {
  BareXmlReader reader;
  unsigned long value = 77;
  EXPECT_FALSE(reader.convertStringToULong("", value));
  value = 0;
  EXPECT_TRUE(reader.convertStringToULong("18446744073709551615", value));
  EXPECT_EQ(value, ULONG_MAX);
  EXPECT_TRUE(reader.convertStringToULong("0", value));
  EXPECT_EQ(value, 0UL);
  EXPECT_TRUE(reader.convertStringToULong("0042", value));
  EXPECT_EQ(value, 42UL);
  value = 0;
  // The stream reads past the blank, so the value is there, but the blank makes it false.
  EXPECT_FALSE(reader.convertStringToULong(" 5", value));
  EXPECT_EQ(value, 5UL);
  value = 0;
  EXPECT_FALSE(reader.convertStringToULong("12a", value));
  EXPECT_EQ(value, 12UL);
  EXPECT_FALSE(reader.convertStringToULong("5 ", value));
  EXPECT_FALSE(reader.convertStringToULong("+5", value));
  EXPECT_FALSE(reader.convertStringToULong("-5", value));
  EXPECT_FALSE(reader.convertStringToULong("abc", value));
  EXPECT_FALSE(reader.convertStringToULong("1.5", value));
  // Too large for the type: the extraction fails although every character is a digit.
  EXPECT_FALSE(reader.convertStringToULong("18446744073709551616", value));
}

TEST(XmlFedReaderHelpers, ClipPrefix) {
  BareXmlReader reader;
  std::string blanks = "   ";
  reader.clipPrefix(blanks, ' ');
  EXPECT_EQ(blanks, "   ");
  std::string text = "   a b ";
  reader.clipPrefix(text, ' ');
  EXPECT_EQ(text, "a b ");
  std::string none = "a  ";
  reader.clipPrefix(none, ' ');
  EXPECT_EQ(none, "a  ");
  std::string empty;
  reader.clipPrefix(empty, ' ');
  EXPECT_EQ(empty, "");
  std::string zeros = "0012";
  reader.clipPrefix(zeros, '0');
  EXPECT_EQ(zeros, "12");
}

TEST(XmlFedReaderHelpers, GetChildrenContent) {
  BareXmlReader reader;
  ParsedXml doc("<a><t>text</t><empty/></a>");
  xmlNode* withText = childElement(doc.root(), "t");
  xmlNode* childless = childElement(doc.root(), "empty");
  ASSERT_NE(withText, nullptr);
  ASSERT_NE(childless, nullptr);
  DtString value("kept");
  EXPECT_FALSE(reader.getChildrenContent(childless, value));
  EXPECT_EQ(str(value), "kept");
  EXPECT_TRUE(reader.getChildrenContent(withText, value));
  EXPECT_EQ(str(value), "text");
  EXPECT_EQ(str(reader.childrenContent(withText)), "text");
  EXPECT_EQ(str(reader.childrenContent(childless)), "");
  // A first child that is an element has no content of its own.
  value = "kept";
  EXPECT_FALSE(reader.getChildrenContent(doc.root(), value));
  EXPECT_EQ(str(value), "kept");
}

TEST(XmlFedReaderHelpers, ChildContentByNamePassesOverAnElementWithNoText) {
  ParsedXml doc("<a><n/><n><m/></n><n>second</n><n>third</n></a>");
  ASSERT_NE(doc.root(), nullptr);
  const char* found = DtXmlFedReader::childContentByName(doc.root(), x("n"));
  ASSERT_NE(found, nullptr);
  EXPECT_STREQ(found, "second");
  EXPECT_EQ(DtXmlFedReader::childContentByName(doc.root(), x("missing")), nullptr);
  BareXmlReader reader;
  DtString value("old");
  EXPECT_TRUE(reader.getChildContentByName(doc.root(), x("n"), value));
  EXPECT_EQ(str(value), "second");
  EXPECT_FALSE(reader.getChildContentByName(doc.root(), x("missing"), value));
  EXPECT_EQ(str(value), "");
}

TEST(XmlFedReaderHelpers, GetNodeByNameFindsAChildOfAnyType) {
  ParsedXml doc("<a><!-- note --><b/><c>1</c><c>2</c></a>");
  xmlNode* comment = DtXmlFedReader::getNodeByName(doc.root(), x("comment"));
  ASSERT_NE(comment, nullptr);
  EXPECT_EQ(comment->type, XML_COMMENT_NODE);
  xmlNode* c = DtXmlFedReader::getNodeByName(doc.root(), x("c"));
  ASSERT_NE(c, nullptr);
  EXPECT_STREQ(reinterpret_cast<const char*>(c->children->content), "1");
  EXPECT_EQ(DtXmlFedReader::getNodeByName(doc.root(), x("d")), nullptr);
  EXPECT_EQ(DtXmlFedReader::getNodeByName(nullptr, x("d")), nullptr);
}

TEST(XmlFedReaderHelpers, PropertiesEmptyAndAbsentDifferOnlyInTheAnswer) {
  BareXmlReader reader;
  ParsedXml doc("<a full=\"value\" empty=\"\" full2=\"second\"/>");
  xmlNode* node = doc.root();
  ASSERT_NE(node, nullptr);
  EXPECT_STREQ(reader.propertyByName(node, x("full")), "value");
  const char* empty = reader.propertyByName(node, x("empty"));
  ASSERT_NE(empty, nullptr);
  EXPECT_STREQ(empty, "");
  EXPECT_EQ(reader.propertyByName(node, x("absent")), nullptr);

  DtString value("old");
  EXPECT_TRUE(reader.getPropertyByName(node, x("empty"), value));
  EXPECT_EQ(str(value), "");
  value = "old";
  EXPECT_FALSE(reader.getPropertyByName(node, x("absent"), value));
  EXPECT_EQ(str(value), "");
  EXPECT_TRUE(reader.getPropertyByName(node, x("full2"), value));
  EXPECT_EQ(str(value), "second");
}

TEST(XmlFedReaderHelpers, PropertyOfAnAttributeMadeWithoutAValue) {
  BareXmlReader reader;
  xmlNode* node = xmlNewNode(nullptr, x("e"));
  xmlNewProp(node, x("bare"), nullptr);
  DtString value("old");
  EXPECT_TRUE(reader.getPropertyByName(node, x("bare"), value));
  EXPECT_EQ(str(value), "");
  xmlFreeNode(node);
}

TEST(XmlFedReaderHelpers, IsBlankText) {
  BareXmlReader reader;
  ParsedXml doc("<a>x</a>");
  EXPECT_FALSE(reader.isBlankText(doc.root()));
  struct Case {
    const char* content;
    bool blank;
  };
  const Case cases[] = {{" \t\n ", true}, {"", true},    {" x ", false},
                        {"\r", false},    {"\v", false}, {"a", false}};
  for (const Case& c : cases) {
    xmlNode* node = xmlNewText(x(c.content));
    EXPECT_EQ(reader.isBlankText(node), c.blank) << '"' << c.content << '"';
    xmlFreeNode(node);
  }
  xmlNode* noContent = xmlNewText(nullptr);
  ASSERT_EQ(noContent->content, nullptr);
  EXPECT_TRUE(reader.isBlankText(noContent));
  xmlFreeNode(noContent);
  xmlNode* comment = xmlNewComment(x("   "));
  EXPECT_FALSE(reader.isBlankText(comment));
  xmlFreeNode(comment);
}

TEST(XmlFedReaderHelpers, AppendNodePropertiesFormat) {
  BareXmlReader reader;
  xmlNode* node = xmlNewNode(nullptr, x("e"));
  xmlNewProp(node, x("name"), x("N"));
  xmlNewProp(node, x("bare"), nullptr);
  xmlNewProp(node, x("size"), x("8"));
  DtString text("before:");
  reader.appendNodeProperties(node, text);
  EXPECT_EQ(str(text), "before:name= N\nbare\nsize= 8\n");
  DtString none("same");
  xmlNode* plain = xmlNewNode(nullptr, x("p"));
  reader.appendNodeProperties(plain, none);
  EXPECT_EQ(str(none), "same");
  xmlFreeNode(plain);
  xmlFreeNode(node);
}

TEST(XmlFedReaderHelpers, AppendNodeContentFormat) {
  BareXmlReader reader;
  ParsedXml doc("<a>words</a>");
  DtString text("T:");
  reader.appendNodeContent(doc.root(), text);
  EXPECT_EQ(str(text), "T:a *");
  DtString ofText;
  reader.appendNodeContent(doc.root()->children, ofText);
  EXPECT_EQ(str(ofText), "text words");
  xmlNode nameless;
  std::memset(&nameless, 0, sizeof nameless);
  DtString ofNameless;
  reader.appendNodeContent(&nameless, ofNameless);
  EXPECT_EQ(str(ofNameless), "* *");
}

// ---------------------------------------------------------------------------------------------
// The format test

DtFomType typeOf(const std::string& xml) {
  ParsedXml doc(xml);
  return DtXmlFedReader::fomType(doc.root());
}

TEST(XmlFedReaderFomType, ByRootElement) {
  EXPECT_EQ(DtXmlFedReader::fomType(static_cast<xmlNode*>(nullptr)), DtFomTypeUnknown);
  EXPECT_EQ(typeOf("<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-2010\"/>"),
            DtFomTypeEvolved);
  EXPECT_EQ(typeOf("<objectModel xmlns=\"urn:IEEE1516-2010:x\"/>"), DtFomTypeEvolved);
  EXPECT_EQ(typeOf("<objectModel xmlns=\"http://x/IEEE1516-2009\"/>"), DtFomTypeEvolved);
  EXPECT_EQ(typeOf("<objectModel xmlns=\"http://x/IEEE1516-2025\"/>"), DtFomType2025);
  // No namespace: any one of the thirteen attributes tells 1516-2000.
  for (const char* attribute :
       {"DTDversion", "name", "type", "version", "date", "purpose", "appDomain", "sponsor",
        "pocName", "pocOrg", "pocPhone", "pocEmail", "reference"}) {
    EXPECT_EQ(typeOf(std::string("<objectModel other=\"1\" ") + attribute + "=\"v\"/>"),
              DtFomType1516)
        << attribute;
  }
  EXPECT_EQ(typeOf("<objectModel other=\"1\"/>"), DtFomTypeUnknown);
  EXPECT_EQ(typeOf("<objectModel/>"), DtFomTypeUnknown);
}

TEST(XmlFedReaderFomType, AnUnknownNamespaceSkipsTheRootAttributes) {
  EXPECT_EQ(typeOf("<objectModel xmlns=\"urn:other\" name=\"n\"/>"), DtFomTypeUnknown);
  EXPECT_EQ(typeOf("<objectModel xmlns=\"urn:other\"><transportations>"
                   "<transportation name=\"HLAreliable\"/></transportations></objectModel>"),
            DtFomType1516);
}

TEST(XmlFedReaderFomType, ByTheFirstTransportation) {
  EXPECT_EQ(typeOf("<objectModel><transportations><transportation description=\"d\"/>"
                   "</transportations></objectModel>"),
            DtFomType1516);
  EXPECT_EQ(typeOf("<objectModel><transportations><transportation reliable=\"Yes\"/>"
                   "</transportations></objectModel>"),
            DtFomTypeUnknown);
  EXPECT_EQ(typeOf("<objectModel><transportations/></objectModel>"), DtFomTypeUnknown);
  EXPECT_EQ(typeOf("<objectModel><transportations><other name=\"n\"/>"
                   "</transportations></objectModel>"),
            DtFomTypeUnknown);
}

TEST(XmlFedReaderFomType, OfAnOpenFileLeavesItAtItsStart) {
  std::string path = writeTempFile("<objectModel name=\"n\"><objects/></objectModel>", ".xml");
  FILE* file = std::fopen(path.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  std::fseek(file, 0, SEEK_END);
  EXPECT_EQ(DtXmlFedReader::fomType(static_cast<void*>(file)), DtFomType1516);
  EXPECT_EQ(std::ftell(file), 0L);
  EXPECT_EQ(std::fgetc(file), '<');
  std::fclose(file);

  std::string broken = writeTempFile("not xml at all <", ".xml");
  file = std::fopen(broken.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  Captured captured =
      captureOutput([&] { EXPECT_EQ(DtXmlFedReader::fomType(file), DtFomTypeUnknown); });
  EXPECT_EQ(captured.err, "");
  std::fclose(file);
}

TEST(XmlFedReaderFomType, OfNoFileIsUnknown) {
  Captured captured = captureOutput(
      [] { EXPECT_EQ(DtXmlFedReader::fomType(static_cast<void*>(nullptr)), DtFomTypeUnknown); });
  EXPECT_EQ(captured.err, "DtFedReader::readFileIntoBuffer: FileHandle not initialized\n");
}

// ---------------------------------------------------------------------------------------------
// The transportations walk of the base

TEST(XmlFedReaderTransportationTree, LogsAndReportsAnUnexpectedTag) {
  BareXmlReader reader;
  ParsedXml doc(
      "<transportations kind=\"k\"><!-- c --><transportation name=\"HLAreliable\"/>"
      "<bogus/><transportation name=\"HLAbestEffort\"/></transportations>");
  FedReadOutcome outcome =
      captureFedRead(reader, 3, [&] { return reader.parseTransportationTree(doc.root()); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error,
            "Unexpected tag in transportations tree for FDD file.\n"
            "\tTransportation Tag = bogus *");
  EXPECT_EQ(outcome.out,
            "kind= k\n \n\n"
            "Transportation Tree Tag: transportation\n"
            "name= HLAreliable\n \n\n"
            "Transportation Tree Tag: bogus\n"
            "Transportation Tree Tag: transportation\n"
            "name= HLAbestEffort\n \n\n");

  reader.setMask(1);
  outcome = captureFedRead(reader, 3, [&] { return reader.parseTransportationTree(doc.root()); });
  EXPECT_EQ(outcome.result, 2);
  // The walk ends at the unexpected tag.
  EXPECT_EQ(outcome.out.find("HLAbestEffort"), std::string::npos);
}

}  // namespace
