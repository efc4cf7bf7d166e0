#include <ktl/fedReader1516.h>

#include <climits>
#include <cstring>
#include <memory>
#include <string>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/valid.h>
#include <libxml/xmlIO.h>
#include <libxml/xmlmemory.h>
#include <libxml/xmlstring.h>

#include <ktl/envXmlReader.h>
#include <ktl/internal/schemaCache.h>
#include <ktl/internal/xmlRecordWalk.h>
#include <util/notify.h>

namespace KORRti {

namespace {

using detail::attributeText;
using detail::contains;
using detail::Duplicate;
using detail::Field;
using detail::LocalLoadsOnly;
using detail::named;
using detail::textOf;
using detail::Word;
using detail::xmlText;

// The value of the attribute name of node looked up in words; absent when the attribute is
// missing, unknown when its text is none of the words.
template <typename Value, size_t N>
Value lookUp(DtXmlFedReader& reader, xmlNode* node, const char* name, const Word<Value> (&words)[N],
             Value absent, Value unknown, DtString* found) {
  const char* given = reader.propertyByName(node, xmlText(name));
  if (found) *found = given ? given : "";
  return detail::lookUpWord(given, words, absent, unknown);
}

const Word<DtTransportType> theTransports[] = {{valueTransportBestEffort, DtTransportBestEffort},
                                               {valueTransportReliable, DtTransportReliable}};
const Word<DtOrderType> theOrders[] = {{valueOrderReceive, DtOrderReceive},
                                       {valueOrderTimeStamp, DtOrderTimestamp}};
const Word<DtSharingType_enum> theSharings[] = {
    {valueSharingPublishSubscribe, DtSharingPublishSubscribe},
    {valueSharingPublish, DtSharingPublish},
    {valueSharingSubscribe, DtSharingSubscribe},
    {valueSharingNeither, DtSharingNeither}};
const Word<DtOwnershipType_enum> theOwnerships[] = {
    {valueOwnershipDivest, DtOwnershipDivest},
    {valueOwnershipAcquire, DtOwnershipAcquire},
    {valueOwnershipDivestAcquire, DtOwnershipDivestAcquire},
    {valueOwnershipNoTransfer, DtOwnershipNoTransfer}};
const Word<DtFomUpdateType_enum> theUpdateTypes[] = {
    {valueFomUpdateTypeStatic, DtFomUpdateStatic},
    {valueFomUpdateTypePeriodic, DtFomUpdatePeriodic},
    {valueFomUpdateTypeConditional, DtFomUpdateConditional},
    {valueFomUpdateTypeNA, DtFomUpdateNA}};
const Word<int32_t> theCapabilities[] = {{valueRegister, 1},
                                         {valueAchieve, 2},
                                         {valueRegisterAchieve, 3},
                                         {valueNoSynch, 4},
                                         {valueNA, 5}};

// The switches that have a setter of their own on the target, in the order they are pushed.
struct SwitchSetter {
  const char* name;
  bool (DtFedTarget::*set)(bool);
};
const SwitchSetter theSwitchSetters[] = {
    {attrAutoProvide, &DtFedTarget::setAutoProvide},
    {attrConveyRegionDesignatorSets, &DtFedTarget::setConveyRegionDesignatorSets},
    {attrAttributeScopeAdvisory, &DtFedTarget::setAttributeScopeAdvisory},
    {attrAttributeRelevanceAdvisory, &DtFedTarget::setAttributeRelevanceAdvisory},
    {attrObjectClassRelevanceAdvisory, &DtFedTarget::setObjectClassRelevanceAdvisory},
    {attrInteractionRelevanceAdvisory, &DtFedTarget::setInteractionRelevanceAdvisory},
    {attrServiceReporting, &DtFedTarget::setServiceReporting}};

// Interaction classes of the management model that a target with its own root may lack.
const char* const theOptionalInteractions[] = {
    "HLArequestSynchronizationPoint", "HLAreportSynchronizationPoint",
    "HLAchangeAttributeTransportationType", "HLAchangeInteractionTransportationType"};

// The field tables of the records. Every attribute not named here, and not the annotation of
// one named here, is unexpected.
const Field<DtUserSuppliedTagsType> theTagFields[] = {
    {attrDataType, &DtUserSuppliedTagsType::dataType},
    {attrSemantics, &DtUserSuppliedTagsType::semantics}};
const Field<DtSynchronizationPointsType> theSynchronizationFields[] = {
    {attrCapability, nullptr},
    {attrDataType, &DtSynchronizationPointsType::dataType},
    {attrLabel, &DtSynchronizationPointsType::label},
    {attrSemantics, &DtSynchronizationPointsType::semantics}};
const Field<DtTransportationType> theTransportationFields[] = {
    {attrName, &DtTransportationType::name}, {attrDescription, nullptr}};
const Field<DtTimeType> theTimeFields[] = {{attrDataType, &DtTimeType::dataType},
                                           {attrSemantics, &DtTimeType::semantics}};
const Field<DtBasicDataRepresentationType> theBasicFields[] = {
    {attrName, &DtBasicDataRepresentationType::name},
    {attrEncoding, &DtBasicDataRepresentationType::encoding},
    {attrEndian, nullptr},
    {attrSize, nullptr},
    {attrInterpretation, &DtBasicDataRepresentationType::interpretation}};
const Field<DtSimpleDatatypeType> theSimpleFields[] = {
    {attrName, &DtSimpleDatatypeType::name},
    {attrAccuracy, &DtSimpleDatatypeType::accuracy},
    {attrRepresentation, &DtSimpleDatatypeType::representation},
    {attrResolution, &DtSimpleDatatypeType::resolution},
    {attrUnits, &DtSimpleDatatypeType::units},
    {attrSemantics, &DtSimpleDatatypeType::semantics}};
const Field<DtArrayDatatypeType> theArrayFields[] = {
    {attrName, &DtArrayDatatypeType::name},
    {attrDataType, &DtArrayDatatypeType::dataType},
    {attrCardinality, &DtArrayDatatypeType::cardinality},
    {attrEncoding, &DtArrayDatatypeType::encoding},
    {attrSemantics, &DtArrayDatatypeType::semantics}};
const Field<DtEnumeratedDatatypeType> theEnumeratedFields[] = {
    {attrName, &DtEnumeratedDatatypeType::name},
    {attrRepresentation, &DtEnumeratedDatatypeType::representation},
    {attrSemantics, &DtEnumeratedDatatypeType::semantics}};
const Field<DtEnumeratorType> theEnumeratorFields[] = {{attrName, &DtEnumeratorType::name},
                                                       {attrValues, &DtEnumeratorType::values}};
const Field<DtFixedRecordDatatypeType> theFixedRecordFields[] = {
    {attrName, &DtFixedRecordDatatypeType::name},
    {attrEncoding, &DtFixedRecordDatatypeType::encoding},
    {attrSemantics, &DtFixedRecordDatatypeType::semantics}};
const Field<DtFieldType> theFieldFields[] = {{attrName, &DtFieldType::name},
                                             {attrDataType, &DtFieldType::dataType},
                                             {attrSemantics, &DtFieldType::semantics}};
const Field<DtVariantRecordDatatypeType> theVariantRecordFields[] = {
    {attrName, &DtVariantRecordDatatypeType::name},
    {attrDiscriminant, &DtVariantRecordDatatypeType::discriminant},
    {attrDataType, &DtVariantRecordDatatypeType::dataType},
    {attrEncoding, &DtVariantRecordDatatypeType::encoding},
    {attrSemantics, &DtVariantRecordDatatypeType::semantics}};
const Field<DtAlternativeType> theAlternativeFields[] = {
    {attrName, &DtAlternativeType::name},
    {attrDataType, &DtAlternativeType::dataType},
    {attrEnumerator, &DtAlternativeType::enumerator},
    {attrSemantics, &DtAlternativeType::semantics}};
const Field<DtNotesType> theNoteFields[] = {{attrName, &DtNotesType::label},
                                            {attrSemantics, &DtNotesType::semantics}};

// The words of each section. These texts are read by hosts and tests as they stand, odd
// spelling and grammar ("Endianess", "in a Enumerated") included: do not correct them.
const char kWrongTagAttribute[] =
    "Unexpected attribute in a User Supplied Tag for FDD file.\n\tAttribute = ";
const Duplicate kTagDuplicate = {"Ignoring Unexpected duplicate User Supplied Tag ( ",
                                 " ) for FDD file.\n\tUser Supplied Tag = ", false, false};

const char kWrongSynchronizationChild[] =
    "Unexpected tag in Synchronization Points list for FDD file.\n\tSynchronization Point Tag = ";
const char kWrongSynchronizationAttribute[] =
    "Unexpected attribute in a Synchronization Point Tag for FDD file.\n\tAttribute = ";
const char kBadCapability[] =
    "Unexpected attribute value for Capability in a Synchronization Point Tag for FDD "
    "file.\n\tValue = ";
const Duplicate kSynchronizationDuplicate = {
    "Ignoring Unexpected duplicate Synchronization Point Tag ( ",
    " ) for FDD file.\n\tSynchronization Point Tag = ", false, false};

const char kWrongTransportChild[] =
    "Unexpected tag in transports list for FDD file.\n\tTransport Tag = ";
const char kWrongTransportAttribute[] =
    "Unexpected attribute in a Transport Tag for FDD file.\n\tAttribute = ";
const Duplicate kTransportDuplicate = {"Ignoring Unexpected duplicate transport type ( ",
                                       " ) for FDD file.\n\tTransport Tag = ", false, false};

const char kWrongTimeChild[] = "Unexpected tag in times list for FDD file.\n\tTime Tag = ";
const char kWrongTimeAttribute[] =
    "Unexpected attribute in a Time Tag for FDD file.\n\tAttribute = ";
const Duplicate kTimeDuplicate = {"Ignoring Unexpected duplicate time type ( ",
                                  " ) for FDD file.\n\ttime Tag = ", false, false};

const char kWrongBasicChild[] =
    "Unexpected tag in Basic Datatypes tree for FDD file.\n\tBasic DataType Tag = ";
const char kWrongBasicAttribute[] =
    "Unexpected attribute in a Basic Datatype Representation Tag for FDD file.\n\tAttribute = ";
const char kBadEndian[] =
    "Unexpected value for Endianess in a Basic Datatype Representation for FDD "
    "file.\n\tEndianess = ";
const char kBadSize[] =
    "Unexpected attribute value for Size in a Basic Datatype Representation Tag for FDD "
    "file.\n\tValue = ";
const Duplicate kBasicDuplicate = {"Ignoring Unexpected duplicate Basic Data Representation Tag ( ",
                                   " ) for FDD file.\n\tBasic Data Representation Tag = ", true,
                                   false};

const char kWrongSimpleChild[] =
    "Unexpected tag in Simple Datatypes tree for FDD file.\n\tSimple DataType Tag = ";
const char kWrongSimpleAttribute[] =
    "Unexpected attribute in a Simple Datatype for FDD file.\n\tAttribute = ";
const Duplicate kSimpleDuplicate = {"Ignoring Unexpected duplicate Simple Datatype Tag ( ",
                                    " ) for FDD file.\n\tSimple Datatype Tag = ", true, false};

const char kWrongArrayChild[] =
    "Unexpected tag in Array Datatypes tree for FDD file.\n\tArray DataType Tag = ";
const char kWrongArrayAttribute[] =
    "Unexpected attribute in an Array Datatype Tag for FDD file.\n\tAttribute = ";
const Duplicate kArrayDuplicate = {"Ignoring Unexpected duplicate Array Datatype Tag ( ",
                                   " ) for FDD file.\n\tArray Datatype Tag = ", true, false};

const char kWrongEnumeratedChild[] =
    "Unexpected tag in Enumerated Datatypes tree for FDD file.\n\tEnumerated DataType Tag = ";
const char kWrongEnumeratedAttribute[] =
    "Unexpected attribute in a Enumerated Datatype Tag for FDD file.\n\tAttribute = ";
const char kWrongEnumeratorChild[] =
    "Unexpected tag in Enumerator tree for FDD file.\n\tEnumerator Tag = ";
const char kWrongEnumeratorAttribute[] =
    "Unexpected attribute in an Enumerator for an Enumerated Datatype for FDD file.\n\tAttribute "
    "= ";
// The one duplicate that is not ignored: no "Ignoring", no log line, fatal under strict bit 1.
const Duplicate kEnumeratedDuplicate = {"Unexpected duplicate Enumerated Datatype Tag ( ",
                                        " ) for FDD file.\n\tEnumerated Datatype Tag = ", true,
                                        true};

const char kWrongFixedRecordChild[] =
    "Unexpected tag in Fixed Record Datatypes tree for FDD file.\n\tFixed Record DataType Tag = ";
const char kWrongFixedRecordAttribute[] =
    "Unexpected attribute in a Fixed Record Datatype Tag for FDD file.\n\tAttribute = ";
const char kWrongFieldChild[] = "Unexpected tag in Field tree for FDD file.\n\tField Tag = ";
const char kWrongFieldAttribute[] =
    "Unexpected attribute in a Field Tag for a Fixed Record Datatype for FDD file.\n\tAttribute = ";
const Duplicate kFixedRecordDuplicate = {
    "Ignoring Unexpected duplicate Fixed Record Datatype Tag ( ",
    " ) for FDD file.\n\tFixed Record Datatype Tag = ", true, false};

const char kWrongVariantRecordChild[] =
    "Unexpected tag in Variant Record Datatype tree for FDD file.\n\tVariant Record Datatype Tag "
    "= ";
const char kWrongVariantRecordAttribute[] =
    "Unexpected attribute in a Variant Datatype Tag for FDD file.\n\tAttribute = ";
const char kWrongAlternativeChild[] =
    "Unexpected tag in Alternative tree for FDD file.\n\tAlternative Tag = ";
const char kWrongAlternativeAttribute[] =
    "Unexpected attribute in a Alternative Tag for FDD file.\n\tAttribute = ";
const Duplicate kVariantRecordDuplicate = {
    "Ignoring Unexpected duplicate Variant Record Datatype Tag ( ",
    " ) for FDD file.\n\tVariant Record Datatype Tag = ", true, false};

const char kWrongNoteChild[] = "Unexpected tag in Notes tree for FDD file.\n\tNote Tag = ";
const char kWrongNoteAttribute[] =
    "Unexpected attribute in a Note Tag for FDD file.\n\tAttribute = ";
const Duplicate kNoteDuplicate = {"Ignoring Unexpected duplicate Note Tag ( ",
                                  " ) for FDD file.\n\tNote Tag = ", true, false};

const char kNoRoot[] = "Bad FDD File. Could not find Document Root in FDD File.";
const char kNotObjectModel[] = "Document Type is not Object Model.\n\tDocument Type Name: ";
const char kFailedValidation[] = "FDD failed DTD validation.";

}  // namespace

// ---------------------------------------------------------------------------------------------
// Document level

DtFedReader1516::DtFedReader1516() : replacedObjectRoot(false), replacedInteractionRoot(false) {
  expectedType = DtFomType1516;
}

DtFedReader1516::~DtFedReader1516() {
  detail::releaseParserState();
}

int DtFedReader1516::readFedFilePtr(FILE* file, DtFedTarget* readTarget, DtFilename name,
                                    unsigned int mask, bool validate, bool skip) {
  if (!file) return DtFedNoFile;
  target = readTarget;
  strictCheckingMask = mask;
  skipSwitches = skip;
  int status = DtFedOk;
  DtQuietXmlErrors quiet;
  LocalLoadsOnly localLoads;
  detail::XmlPtr<xmlDoc> doc;
  try {
    if (target) target->setFomType(DtFomType1516);
    delete[] currFddData;
    currFddData = nullptr;
    currFddSize = 0;
    readFileIntoBuffer(file, &currFddData, &currFddSize);
    doc.reset(xmlReadMemory(currFddData, static_cast<int>(currFddSize), nullptr, nullptr, 0));
    xmlNode* root = doc ? xmlDocGetRootElement(doc.get()) : nullptr;
    if (!root) {
      lastErrorText = kNoRoot;
      return DtFedFailed;
    }
    if (validate) {
      bool found = false;
      DtFilename dtdFile;
      for (xmlNode* child = doc->children; child; child = child->next) {
        if (child->type != XML_DTD_NODE) continue;
        xmlDtd* dtd = reinterpret_cast<xmlDtd*>(child);
        if (!xmlStrEqual(dtd->name, xmlText(tagDocumentType))) {
          lastErrorText = kNotObjectModel;
          lastErrorText += textOf(reinterpret_cast<const xmlChar*>(doc->name));
          status = DtFedFailed;
          break;
        }
        found = true;
        dtdFile = textOf(dtd->SystemID);
        if (dtdFile.relative()) {
          DtInfo("Checking path relative to FED file directory for %s\n", dtdFile.c_str());
          DtFilename directory = DtFilename::stripFilename(name);
          dtdFile = directory.append(dtdFile);
        }
        break;
      }
      if (!found) {
        lastErrorText = "FDD missing DTD.";
        if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
      } else if (!dtdValidate(doc.get(), dtdFile.c_str())) {
        lastErrorText = kFailedValidation;
        if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
      }
    }
    if (status == DtFedOk) status = processFed(root);
  } catch (...) {
    lastErrorText = "Unexpected problem reading FDD.";
    status = DtFedFailed;
  }
  return status;
}

bool DtFedReader1516::dtdValidate(xmlDoc* doc, const char* dtdFile) {
  if (!doc || !dtdFile) return false;
  if (!LocalLoadsOnly::isLocalFile(dtdFile)) return false;
  LocalLoadsOnly localLoads;
  detail::XmlPtr<xmlDtd> dtd(xmlParseDTD(nullptr, xmlText(dtdFile)));
  if (!dtd) return false;
  detail::XmlPtr<xmlValidCtxt> context(static_cast<xmlValidCtxt*>(xmlMalloc(sizeof(xmlValidCtxt))));
  if (!context) return false;
  std::memset(context.get(), 0, sizeof(xmlValidCtxt));
  return xmlValidateDtd(context.get(), doc, dtd.get()) != 0;
}

int DtFedReader1516::processXmlDocPtr(xmlDoc* doc) {
  if (!doc) {
    lastErrorText = "Error reading FDD";
    return DtFedFailed;
  }
  detail::XmlPtr<xmlDoc> held(doc);
  int status = DtFedOk;
  // Validity reports are this reader's to give, as in a read.
  DtQuietXmlErrors quiet;
  DtVerbose("Reading FDD : \n");
  xmlNode* root = xmlDocGetRootElement(doc);
  if (!root) {
    lastErrorText = kNoRoot;
    status = DtFedFailed;
  }
  bool found = false;
  DtString dtdFile;
  for (xmlNode* child = doc->children; child && !found; child = child->next) {
    if (isCommentOrBlank(child)) {
      DtDebug << "FDD Comment: " << textOf(child->content) << "\n";
    } else if (child->type == XML_DTD_NODE) {
      xmlDtd* dtd = reinterpret_cast<xmlDtd*>(child);
      if (xmlStrEqual(dtd->name, xmlText(tagDocumentType))) {
        found = true;
        dtdFile = textOf(dtd->SystemID);
      } else {
        lastErrorText = kNotObjectModel;
        lastErrorText += textOf(reinterpret_cast<const xmlChar*>(doc->name));
        status = DtFedFailed;
      }
    }
  }
  // The version of the document is not told apart: this flag stays true.
  const bool rightVersion = true;
  if (!rightVersion) {
    lastErrorText = "Wrong FDD version.";
    status = DtFedFailed;
  }
  if (!found) {
    lastErrorText = "No DTD Node found.";
    if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
  } else if (!dtdValidate(doc, dtdFile.c_str())) {
    lastErrorText = kFailedValidation;
    if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
  }
  if (status == DtFedOk && root) {
    if (!named(root, tagObjectModel)) {
      lastErrorText = "Root node is not Object Model.\n\tRoot Node Name: ";
      lastErrorText += textOf(root->name);
      status = DtFedFailed;
    } else if (!root->children) {
      lastErrorText = "Bad FDD File. Object Model is empty.";
      status = DtFedFailed;
    }
  }
  // The caller keeps a document that passed; one that failed is freed here.
  if (status == DtFedOk) static_cast<void>(held.release());
  return status;
}

int DtFedReader1516::processFed(xmlNode* root) {
  if (!root) {
    lastErrorText = "Invalid node";
    return DtFedFailed;
  }
  int status = DtFedOk;
  // This form has no update rates: their bit counts as seen.
  unsigned int seen = 0x20;
  DtVerbose("Federation Properties:\n");
  logNodeProperties(root);

  // Dimensions and transportations first, wherever they stand: classes refer to them.
  if (xmlNode* dimensions = getNodeByName(root, xmlText(tagDimensions))) {
    DtVerbose("\nTop-level Tag: %s\n", textOf(dimensions->name));
    status = parseDimensionList(dimensions);
    if (status == DtFedOk) seen |= 0x4;
  }
  if (status != DtFedFailed) {
    if (xmlNode* transportations = getNodeByName(root, xmlText(tagTransportations))) {
      DtVerbose("\nTop-level Tag: %s\n", textOf(transportations->name));
      status = parseTransportationsList(transportations);
      if (status == DtFedOk) seen |= 0x8;
    }
  }

  for (xmlNode* child = root->children; child && status != DtFedFailed; child = child->next) {
    DtVerbose("\nTop-level Tag: %s\n", textOf(child->name));
    if (isCommentOrBlank(child) || named(child, tagDimensions) ||
        named(child, tagTransportations)) {
      continue;
    }
    if (named(child, tagObjects)) {
      seen |= 0x1;
      status = processObjects(child);
    } else if (named(child, tagInteractions)) {
      seen |= 0x2;
      status = processInteractions(child);
    } else if (named(child, tagSwitches)) {
      seen |= 0x10;
      status = parseSwitches(child);
    } else if (named(child, tagDataTypes)) {
      seen |= 0x40;
      status = parseDataTypeTree(child);
    } else if (named(child, tagNotes)) {
      seen |= 0x80;
      status = parseNotesTree(child);
    } else if (named(child, tagTags)) {
      status = parseTagsTree(child);
    } else if (named(child, tagTime)) {
      seen |= 0x100;
      status = parseTimeTree(child);
    } else if (named(child, tagSynchronizations)) {
      seen |= 0x200;
      status = parseSynchronizationsTree(child);
    } else {
      lastErrorText = "Unrecognized top-level tag: ";
      lastErrorText += textOf(child->name);
      if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
    }
  }

  if (status != DtFedFailed && seen != 0x3FF) {
    // Each missing section replaces the report of the one before: the last one stays.
    struct Missing {
      unsigned int bit;
      const char* words;
      bool fatal;
    };
    static const Missing missing[] = {{0x1, "Missing or invalid objects table", true},
                                      {0x2, "Missing or invalid interactions table", false},
                                      {0x4, "Missing or invalid dimensions table", false},
                                      {0x8, "Missing or invalid transportations table", false},
                                      {0x10, "Missing or invalid switches table", false},
                                      {0x20, "Missing or invalid Update Rates", false},
                                      {0x40, "Missing or invalid Data Types", false},
                                      {0x80, "Missing or invalid Notes", false},
                                      {0x100, "Missing or invalid Time", false},
                                      {0x200, "Missing or invalid Sync Points", false}};
    for (const Missing& section : missing) {
      if (seen & section.bit) continue;
      lastErrorText = section.words;
      if (section.fatal && strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
    }
  }
  return status;
}

// ---------------------------------------------------------------------------------------------
// Switches, tags, synchronization points, transportations, time

int DtFedReader1516::parseSwitches(xmlNode* node) {
  if (!target || skipSwitches || !node) return DtFedOk;
  int status = DtFedOk;
  for (xmlAttr* attr = node->properties; attr; attr = attr->next) {
    DtString name(textOf(attr->name));
    DtString value(attributeText(attr));
    const char* ignored = nullptr;
    if (!target->isKnownSwitch(name)) {
      ignored = "Ignoring non standard switch ";
    } else if (target->hasSwitch(name)) {
      ignored = "Ignoring Unexpected duplicate switch ";
    }
    if (ignored) {
      lastErrorText = ignored;
      lastErrorText += name;
      lastErrorText += " with value ";
      lastErrorText += value;
      lastErrorText += "\n";
      appendNodeContent(node, lastErrorText);
      appendErrorLine(node, lastErrorText);
      DtVerbose("%s", lastErrorText.c_str());
    } else if (value == valueEnabled) {
      target->setSwitch(name, true);
    } else if (value == valueDisabled) {
      target->setSwitch(name, false);
    } else {
      DtVerbose("\t%-30s: %s Invalid!\n", name.c_str(), value.c_str());
      lastErrorText = "Invalid value, ";
      lastErrorText += value;
      lastErrorText += ", found for switch ";
      lastErrorText += name;
      appendErrorLine(node, lastErrorText);
      if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
    }
  }
  if (status == DtFedOk) {
    for (const SwitchSetter& setter : theSwitchSetters) {
      (target->*setter.set)(target->switchValue(DtString(setter.name)));
    }
  }
  return status;
}

int DtFedReader1516::parseTagsTree(xmlNode* node) {
  RecordWalk walk(*this);
  walk.anyNotes = true;
  if (!node) return walk.status;
  // Every child is a tag, named by its element; a comment too, as "comment".
  for (xmlNode* child = node->children; child && walk.going(); child = child->next) {
    DtUserSuppliedTagsType* record = new DtUserSuppliedTagsType();
    record->name = textOf(child->name);
    walk.fill(child, *record, theTagFields, kWrongTagAttribute);
    walk.deliver(
        record, child, record->name, kTagDuplicate,
        [&](const DtUserSuppliedTagsType& r) { return target->hasUserSuppliedTag(r); },
        [&](DtUserSuppliedTagsType* r) { return target->addUserSuppliedTag(r); });
  }
  return walk.status;
}

int DtFedReader1516::parseSynchronizationsTree(xmlNode* node) {
  RecordWalk walk(*this);
  walk.anyNotes = true;
  auto capability = [&](DtSynchronizationPointsType& record,
                        const Field<DtSynchronizationPointsType>&, const DtString& value,
                        xmlNode* element) {
    record.capability =
        lookUp(*this, element, attrCapability, theCapabilities, int32_t(0), int32_t(-1), nullptr);
    if (record.capability < 0) {
      record.capability = 0;
      walk.unexpectedValue(element, kBadCapability, value.c_str());
    }
  };
  return walk.section(node, attrSynchronization, kWrongSynchronizationChild, [&](xmlNode* child) {
    DtSynchronizationPointsType* record = new DtSynchronizationPointsType();
    walk.fill(child, *record, theSynchronizationFields, kWrongSynchronizationAttribute, capability);
    walk.deliver(
        record, child, record->label, kSynchronizationDuplicate,
        [&](const DtSynchronizationPointsType& r) { return target->hasSynchronizationPoint(r); },
        [&](DtSynchronizationPointsType* r) {
          DtVerbose("\t%s", r->label.c_str());
          return target->addSynchronizationPoint(r);
        });
  });
}

int DtFedReader1516::parseTransportationsList(xmlNode* node) {
  RecordWalk walk(*this);
  walk.anyNotes = true;
  auto description = [](DtTransportationType& record, const Field<DtTransportationType>&,
                        const DtString& value, xmlNode*) {
    record.semantics = value;
    record.description = record.semantics;
  };
  return walk.section(node, tagTransport, kWrongTransportChild, [&](xmlNode* child) {
    DtTransportationType* record = new DtTransportationType();
    walk.fill(child, *record, theTransportationFields, kWrongTransportAttribute, description);
    walk.deliver(
        record, child, record->name, kTransportDuplicate,
        [&](const DtTransportationType& r) { return target->hasTransportation(r); },
        [&](DtTransportationType* r) {
          // Reliability is read from the name: any name holding "reliable", in any case, is
          // reliable, whatever stands around it.
          if (r->name == valueTransportBestEffort) {
            r->reliable = false;
          } else if (r->name == valueTransportReliable) {
            r->reliable = true;
          } else {
            DtString lower(r->name);
            lower.toLower();
            r->reliable = contains(lower, "reliable");
            DtInfo << "Adding transportation type " << r->name << " as "
                   << (r->reliable ? valueTransportReliable : valueTransportBestEffort);
          }
          return target->addTransportation(r);
        });
  });
}

int DtFedReader1516::parseTimeTree(xmlNode* node) {
  RecordWalk walk(*this);
  walk.anyNotes = true;
  if (!node) return walk.status;
  for (xmlNode* child = node->children; child && walk.going(); child = child->next) {
    if (isCommentOrBlank(child)) continue;
    if (!named(child, attrTimeStamp) && !named(child, attrLookahead)) {
      walk.unexpectedChild(child, kWrongTimeChild);
      continue;
    }
    DtTimeType* record = new DtTimeType();
    record->name = textOf(child->name);
    walk.fill(child, *record, theTimeFields, kWrongTimeAttribute);
    walk.deliver(
        record, child, record->name, kTimeDuplicate,
        [&](const DtTimeType& r) { return target->hasTime(r); },
        [&](DtTimeType* r) { return target->addTime(r); });
  }
  return walk.status;
}

// ---------------------------------------------------------------------------------------------
// Data types and notes

int DtFedReader1516::parseDataTypeTree(xmlNode* node) {
  int status = DtFedOk;
  if (!node) return status;
  logNodeProperties(node);
  for (xmlNode* child = node->children; child && status == DtFedOk; child = child->next) {
    if (isCommentOrBlank(child)) continue;
    DtVerbose("DataType Tree Tag: %s\n", textOf(child->name));
    logNodeProperties(child);
    if (named(child, tagBasicDataReps)) {
      status = parseBasicDataTypesTree(child);
    } else if (named(child, tagSimpleDataTypes)) {
      status = parseSimpleDataTypesTree(child);
    } else if (named(child, tagArrayDataTypes)) {
      status = parseArrayDataTypesTree(child);
    } else if (named(child, tagEnumDataTypes)) {
      status = parseEnumeratedDataTypesTree(child);
    } else if (named(child, tagFixedRecDataTypes)) {
      status = parseFixedRecordDataTypesTree(child);
    } else if (named(child, tagVarRecDataTypes)) {
      status = parseVariantRecordDataTypesTree(child);
    } else {
      lastErrorText = "Unexpected tag in dataTypes tree for FDD file.\n\tDataType Tag = ";
      appendNodeContent(child, lastErrorText);
      appendErrorLine(child, lastErrorText);
      if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
    }
  }
  return status;
}

int DtFedReader1516::parseBasicDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  auto convert = [&](DtBasicDataRepresentationType& record,
                     const Field<DtBasicDataRepresentationType>& field, const DtString& value,
                     xmlNode* element) {
    if (std::strcmp(field.name, attrEndian) == 0) {
      if (value == valueBig) {
        record.endian = 1;
      } else if (value == valueLittle) {
        record.endian = 2;
      } else {
        walk.unexpectedValue(element, kBadEndian, value.c_str());
      }
    } else if (!convertStringToULong(value.stdString(), record.size)) {
      walk.unexpectedValue(element, kBadSize, value.c_str());
    }
  };
  return walk.section(node, tagBasicData, kWrongBasicChild, [&](xmlNode* child) {
    DtBasicDataRepresentationType* record = new DtBasicDataRepresentationType();
    walk.fill(child, *record, theBasicFields, kWrongBasicAttribute, convert);
    walk.deliver(
        record, child, record->name, kBasicDuplicate,
        [&](const DtBasicDataRepresentationType& r) {
          return target->hasBasicDataRepresentation(r);
        },
        [&](DtBasicDataRepresentationType* r) { return target->addBasicDataRepresentation(r); });
  });
}

int DtFedReader1516::parseSimpleDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagSimpleData, kWrongSimpleChild, [&](xmlNode* child) {
    DtSimpleDatatypeType* record = new DtSimpleDatatypeType();
    walk.fill(child, *record, theSimpleFields, kWrongSimpleAttribute);
    walk.deliver(
        record, child, record->name, kSimpleDuplicate,
        [&](const DtSimpleDatatypeType& r) { return target->hasSimpleDatatype(r); },
        [&](DtSimpleDatatypeType* r) { return target->addSimpleDatatype(r); });
  });
}

int DtFedReader1516::parseArrayDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagArrayData, kWrongArrayChild, [&](xmlNode* child) {
    DtArrayDatatypeType* record = new DtArrayDatatypeType();
    walk.fill(child, *record, theArrayFields, kWrongArrayAttribute);
    walk.deliver(
        record, child, record->name, kArrayDuplicate,
        [&](const DtArrayDatatypeType& r) { return target->hasArrayDatatype(r); },
        [&](DtArrayDatatypeType* r) { return target->addArrayDatatype(r); });
  });
}

int DtFedReader1516::parseEnumeratedDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagEnumData, kWrongEnumeratedChild, [&](xmlNode* child) {
    DtEnumeratedDatatypeType* record = new DtEnumeratedDatatypeType();
    walk.fill(child, *record, theEnumeratedFields, kWrongEnumeratedAttribute);
    walk.fillChildren(child, tagEnumerator, record->enumerators, theEnumeratorFields,
                      kWrongEnumeratorChild, kWrongEnumeratorAttribute);
    walk.deliver(
        record, child, record->name, kEnumeratedDuplicate,
        [&](const DtEnumeratedDatatypeType& r) { return target->hasEnumeratedDatatype(r); },
        [&](DtEnumeratedDatatypeType* r) { return target->addEnumeratedDatatype(r); });
  });
}

int DtFedReader1516::parseFixedRecordDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagFixedRecData, kWrongFixedRecordChild, [&](xmlNode* child) {
    DtFixedRecordDatatypeType* record = new DtFixedRecordDatatypeType();
    walk.fill(child, *record, theFixedRecordFields, kWrongFixedRecordAttribute);
    walk.fillChildren(child, tagFixedRecField, record->fields, theFieldFields, kWrongFieldChild,
                      kWrongFieldAttribute);
    walk.deliver(
        record, child, record->name, kFixedRecordDuplicate,
        // The target's test takes a copy, which shares the fields with the record.
        [&](const DtFixedRecordDatatypeType& r) { return target->hasFixedRecordDatatype(r); },
        [&](DtFixedRecordDatatypeType* r) { return target->addFixedRecordDatatype(r); });
  });
}

int DtFedReader1516::parseVariantRecordDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagVarRecData, kWrongVariantRecordChild, [&](xmlNode* child) {
    DtVariantRecordDatatypeType* record = new DtVariantRecordDatatypeType();
    // This one reads its alternatives before its own attributes.
    walk.fillChildren(child, tagVarRecAlternative, record->alternatives, theAlternativeFields,
                      kWrongAlternativeChild, kWrongAlternativeAttribute);
    if (walk.going())
      walk.fill(child, *record, theVariantRecordFields, kWrongVariantRecordAttribute);
    walk.deliver(
        record, child, record->name, kVariantRecordDuplicate,
        [&](const DtVariantRecordDatatypeType& r) { return target->hasVariantRecordDatatype(r); },
        [&](DtVariantRecordDatatypeType* r) { return target->addVariantRecordDatatype(r); });
  });
}

int DtFedReader1516::parseNotesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagNote, kWrongNoteChild, [&](xmlNode* child) {
    DtNotesType* record = new DtNotesType();
    walk.fill(child, *record, theNoteFields, kWrongNoteAttribute);
    walk.deliver(
        record, child, record->label, kNoteDuplicate,
        [&](const DtNotesType& r) { return target->hasNote(r); },
        [&](DtNotesType* r) { return target->addNote(r); });
  });
}

// ---------------------------------------------------------------------------------------------
// The getters of a class, attribute or parameter element

int DtFedReader1516::getTransportType(xmlNode* node, DtTransportType& transport) {
  DtString given;
  transport = lookUp(*this, node, attrTransport, theTransports, DtTransportInvalid,
                     DtTransportInvalid, &given);
  if (transport == DtTransportInvalid && propertyByName(node, xmlText(attrTransport))) {
    DtWarn << "Invalid TransportType: " << given;
  }
  return DtFedOk;
}

int DtFedReader1516::getOrderType(xmlNode* node, DtOrderType& order) {
  DtString given;
  const DtOrderType unknown = -2;
  order = lookUp(*this, node, attrOrder, theOrders, DtOrderInvalid, unknown, &given);
  if (order != unknown) return DtFedOk;
  order = DtOrderInvalid;
  lastErrorText = "Unknown delivery order found in FDD file.\n\tOrder = ";
  lastErrorText += given;
  lastErrorText += "\n";
  appendNodeProperties(node, lastErrorText);
  return DtFedFailed;
}

int DtFedReader1516::getSharingType(xmlNode* node, DtSharingType_enum& sharing) {
  sharing = lookUp(*this, node, attrSharing, theSharings, DtSharingPublishSubscribe,
                   DtSharingPublishSubscribe, nullptr);
  return DtFedOk;
}

int DtFedReader1516::getSemantics(xmlNode* node, DtString& semantics) {
  getPropertyByName(node, xmlText(attrSemantics), semantics);
  return DtFedOk;
}

int DtFedReader1516::getNotes(xmlNode* node, DtString& notes) {
  getPropertyByName(node, xmlText("notes"), notes);
  return DtFedOk;
}

int DtFedReader1516::getOwnershipType(xmlNode* node, DtOwnershipType_enum& ownership) {
  ownership = lookUp(*this, node, attrOwnership, theOwnerships, DtOwnershipNoTransfer,
                     DtOwnershipNoTransfer, nullptr);
  return DtFedOk;
}

int DtFedReader1516::getUpdateCondition(xmlNode* node, DtString& condition) {
  getPropertyByName(node, xmlText(attrUpdateCond), condition);
  return DtFedOk;
}

int DtFedReader1516::getUpdateType(xmlNode* node, DtFomUpdateType_enum& updateType) {
  updateType =
      lookUp(*this, node, attrUpdateType, theUpdateTypes, DtFomUpdateNA, DtFomUpdateNA, nullptr);
  return DtFedOk;
}

// ---------------------------------------------------------------------------------------------
// Object classes and attributes

namespace {

// The full dotted path of a class under parentName.
DtString classPath(const DtString& parentName, const DtString& name) {
  if (parentName == DtString::nullString()) return name;
  DtString path(parentName);
  path += ".";
  path += name;
  return path;
}

const char* parentOrNull(const DtString& parentName) {
  return parentName.isEmpty() ? nullptr : parentName.c_str();
}

}  // namespace

int DtFedReader1516::processObjects(xmlNode* node) {
  xmlNode* root = getNodeByName(node, xmlText(tagObjectClass));
  if (!root) return DtFedOk;
  const char* name = propertyByName(root, xmlText(attrName));
  if (name && std::strcmp(name, valueObjectRoot) == 0) {
    return parseObjectTree(root, DtString::nullString());
  }
  lastErrorText = "Object class root is not ";
  lastErrorText += valueObjectRoot;
  lastErrorText += " in FDD file.";
  return DtFedFailed;
}

int DtFedReader1516::parseObjectTree(xmlNode* node, const DtString& parentName) {
  DtString name;
  if (!getPropertyByName(node, xmlText(attrName), name)) {
    lastErrorText = "Object class with no name found in FDD file.\n";
    appendNodeProperties(node, lastErrorText);
    return DtFedFailed;
  }
  DtString path = classPath(parentName, name);
  bool skip = replacedObjectRoot && contains(path, "HLAmanager");
  DtVerbose("%sClass: %s, Base: %s \n", skip ? "Skip " : "", path.c_str(), parentName.c_str());
  if (skip) DtVerbose("All subclasses and attributes will also be skipped\n");

  if (!skip && target) {
    const char* parent = parentOrNull(parentName);
    bool added = target->addObjectClass(path.c_str(), parent);
    if (!added && !parent) {
      path = "ObjectRoot";
      added = target->addObjectClass(path.c_str(), nullptr);
      if (added) {
        replacedObjectRoot = true;
        DtVerbose("Replacing HLobjectRoot with ObjectRoot to match Federation FOM.\n");
        DtVerbose("Attributes and subclasses will be attempted with replacement root.\n");
      }
    }
    if (!added) {
      if (contains(path, "HLAobjectRoot.HLAmanager") || contains(path, "ObjectRoot.Manager") ||
          contains(path, "ObjectRoot.RTIprivate")) {
        skip = true;
      } else {
        return DtFedFailed;
      }
    }
  }

  int status = DtFedOk;
  for (xmlNode* child = node->children; child && status == DtFedOk; child = child->next) {
    if (isCommentOrBlank(child)) continue;
    // Under skip every child is unexpected, so a skipped class with content fails a strict read.
    if (!skip && named(child, tagObjectClass)) {
      status = parseObjectTree(child, path);
    } else if (!skip && named(child, tagAttribute)) {
      status = parseAttribute(child, path);
    } else {
      lastErrorText = "Unexpected tag in objects tree for FDD file.\n\tObjects Tag = ";
      appendNodeContent(child, lastErrorText);
      if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
    }
  }
  return status;
}

int DtFedReader1516::parseAttribute(xmlNode* node, const DtString& className) {
  DtString name;
  if (!getPropertyByName(node, xmlText(attrName), name)) {
    lastErrorText = "Attribute of ";
    lastErrorText += className;
    lastErrorText += " has no name in FDD file.";
    return DtFedFailed;
  }
  DtTransportType transport = DtTransportBestEffort;
  DtOrderType order = DtOrderReceive;
  DtSharingType_enum sharing = DtSharingPublishSubscribe;
  DtFomUpdateType_enum updateType = DtFomUpdateNA;
  DtOwnershipType_enum ownership = DtOwnershipNoTransfer;
  DtString semantics("");
  DtString updateCondition("");
  DtString transportText(valueTransportBestEffort);
  DtString orderText(valueOrderReceive);
  const bool strict = strictChecking(DtStrictUnexpectedContent);
  // The management model's privilege attribute is reliable and time-stamped even when its
  // element says otherwise.
  const bool privilege = className == theValueObjectRoot && name == theValuePrivilegeToDelete;
  const bool logTexts = DtNotifyLevel > 2;

  if (int fault = getTransportType(node, transport)) {
    if (strict) return fault;
    transport = privilege ? DtTransportReliable : DtTransportBestEffort;
    if (privilege) transportText = valueTransportReliable;
  } else if (logTexts) {
    getPropertyByName(node, xmlText(attrTransport), transportText);
  }
  if (int fault = getOrderType(node, order)) {
    if (strict) return fault;
    order = privilege ? DtOrderTimestamp : DtOrderReceive;
    if (privilege) orderText = valueOrderTimeStamp;
  } else if (logTexts) {
    getPropertyByName(node, xmlText(attrOrder), orderText);
  }
  if (getSharingType(node, sharing)) {
    strictChecking(DtStrictUnexpectedContent);
    sharing = DtSharingPublishSubscribe;
  }
  if (getSemantics(node, semantics)) {
    strictChecking(DtStrictUnexpectedContent);
    semantics = "";
  }
  if (int fault = getOwnershipType(node, ownership)) {
    if (strict) return fault;
    ownership = DtOwnershipNoTransfer;
  }
  if (int fault = getUpdateType(node, updateType)) {
    if (strict) return fault;
    updateType = DtFomUpdateNA;
  }
  if (getUpdateCondition(node, updateCondition)) {
    strictChecking(DtStrictUnexpectedContent);
    updateCondition = "";
  }

  DtVerbose("\tAttribute: %s, transport: %s, order: %s\n", name.c_str(), transportText.c_str(),
            orderText.c_str());
  if (!target) return DtFedOk;
  target->addAttribute(className.c_str(), name.c_str(), transport, order, sharing, updateType,
                       updateCondition, ownership, semantics, nullptr);
  return parseAttributeDimensions(node, className, name);
}

template <typename Add>
int DtFedReader1516::addDimensionList(xmlNode* node, Add add) {
  // Without a target the list counts as "NA": nothing is offered.
  if (!target) return DtFedOk;
  DtString list;
  if (!getPropertyByName(node, xmlText(attrDimensions), list)) list = valueDimensionsNA;
  bool ok = true;
  for (;;) {
    while (list.size() > 0 && list[0] == ' ') list.snipFront(' ', false);
    DtString name(list);
    name.snipBack(' ', true);
    if (!name.isEmpty() && name != valueDimensionsNA) ok = add(name);
    ok = ok || !strictChecking(DtStrictUnexpectedContent);
    if (!ok) break;
    // The next name stands behind the next blank.
    int before = list.size();
    list.snipFront(' ', false);
    if (list.size() == before || list.isEmpty()) break;
  }
  return ok ? DtFedOk : DtFedFailed;
}

int DtFedReader1516::parseAttributeDimensions(xmlNode* node, const DtString& className,
                                              const DtString& attributeName) {
  return addDimensionList(node, [&](const DtString& dimension) {
    return target->addAttributeDimension(className.c_str(), attributeName.c_str(),
                                         dimension.c_str());
  });
}

// ---------------------------------------------------------------------------------------------
// Interaction classes and parameters

int DtFedReader1516::processInteractions(xmlNode* node) {
  xmlNode* root = getNodeByName(node, xmlText(tagInteractClass));
  if (!root) return DtFedOk;
  const char* name = propertyByName(root, xmlText(attrName));
  if (!name || std::strcmp(name, valueInteractionRoot) != 0) {
    lastErrorText = "Interaction class with no root found in FDD file.";
    return DtFedFailed;
  }
  return parseInteractionTree(root, DtString::nullString());
}

int DtFedReader1516::parseInteractionTree(xmlNode* node, const DtString& parentName) {
  DtString name;
  if (!getPropertyByName(node, xmlText(attrName), name)) {
    lastErrorText = "Interaction class with no name found in FDD file.";
    appendNodeProperties(node, lastErrorText);
    return DtFedFailed;
  }
  DtString path = classPath(parentName, name);
  const bool skippedByName = replacedInteractionRoot && contains(path, "HLAmanager");
  bool skip = skippedByName;
  const bool strict = strictChecking(DtStrictUnexpectedContent);

  DtTransportType transport = DtTransportReliable;
  DtOrderType order = DtOrderReceive;
  DtString transportText(valueTransportReliable);
  DtString orderText(valueOrderReceive);
  if (int fault = getTransportType(node, transport)) {
    if (strict) return fault;
    transport = DtTransportReliable;
  } else if (DtNotifyLevel == 3) {
    getPropertyByName(node, xmlText(attrTransport), transportText);
  }
  if (int fault = getOrderType(node, order)) {
    if (strict) return fault;
    order = DtOrderReceive;
  } else if (DtNotifyLevel == 3) {
    getPropertyByName(node, xmlText(attrOrder), orderText);
  }
  DtVerbose("%sClass: %s, base: %s, transport: %s, order: %s\n", skip ? "Skip " : "", path.c_str(),
            parentName.c_str(), transportText.c_str(), orderText.c_str());
  if (skip) DtVerbose("All subclasses and parameters will also be skipped.\n");

  int status = DtFedOk;
  if (!skip && target) {
    const char* parent = parentOrNull(parentName);
    bool added = target->addInteractionClass(path.c_str(), parent, transport, order, nullptr);
    if (!added && !parent) {
      path = "InteractionRoot";
      added = target->addInteractionClass(path.c_str(), nullptr, transport, order, nullptr);
      if (added) {
        replacedInteractionRoot = true;
        DtVerbose("Replacing HLAinteractionRoot with InteractionRoot to match Federation FOM.\n");
        DtVerbose("Parameters and subclasses will be attempted with replacement root.\n");
      }
    }
    if (!added) {
      for (const char* optional : theOptionalInteractions) {
        if (contains(path, optional)) skip = true;
      }
      if (!skip) return DtFedFailed;
      DtVerbose << "Federation FOM does not have interaction class " << path
                << " omitting it from DtFom representation.\n";
    }
  }
  // An omitted class still has its dimensions offered.
  if (!skippedByName && target) status = parseInteractionDimensions(node, path);

  for (xmlNode* child = node->children; child && status == DtFedOk; child = child->next) {
    if (isCommentOrBlank(child) || skip) continue;
    if (named(child, tagInteractClass)) {
      status = parseInteractionTree(child, path);
    } else if (named(child, tagParameter)) {
      status = parseParameter(child, path);
    } else {
      lastErrorText = "Unexpected tag in interactions tree for FDD file.\n\tInteractions Tag = ";
      appendNodeContent(child, lastErrorText);
      if (strict) status = DtFedFailed;
    }
  }
  return status;
}

int DtFedReader1516::parseParameter(xmlNode* node, const DtString& className) {
  DtString name;
  if (!getPropertyByName(node, xmlText(attrName), name)) {
    lastErrorText = "Parameter with no name found in FDD file.\n";
    appendNodeProperties(node, lastErrorText);
    return DtFedFailed;
  }
  DtVerbose("\tParameter: %s\n", name.c_str());
  if (target) target->addParameter(className.c_str(), name.c_str());
  return DtFedOk;
}

int DtFedReader1516::parseInteractionDimensions(xmlNode* node, const DtString& className) {
  if (!target || !propertyByName(node, xmlText(attrDimensions))) {
    lastErrorText = "Interaction ";
    lastErrorText += className;
    lastErrorText += " has no dimensions list.";
    return strictChecking(DtStrictUnexpectedContent) ? DtFedFailed : DtFedOk;
  }
  return addDimensionList(node, [&](const DtString& dimension) {
    return target->addInteractionDimension(className.c_str(), dimension.c_str());
  });
}

// ---------------------------------------------------------------------------------------------
// Dimensions

int DtFedReader1516::parseDimensionList(xmlNode* node) {
  int status = DtFedOk;
  if (!node) return status;
  for (xmlNode* child = node->children; child && status == DtFedOk; child = child->next) {
    if (isCommentOrBlank(child)) continue;
    if (named(child, attrDimension)) {
      status = parseDimension(child);
    } else {
      lastErrorText = "Unexpected tag in dimension list for FDD file.\n\tDimensions Tag = ";
      appendNodeContent(child, lastErrorText);
      if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
    }
  }
  return status;
}

int DtFedReader1516::parseDimension(xmlNode* node) {
  DtString name;
  // Every fault of a dimension ends the walk, whatever the strict bits say.
  auto fail = [&](const char* what) {
    lastErrorText = "Dimension \"";
    lastErrorText += name;
    lastErrorText += "\" ";
    lastErrorText += what;
    lastErrorText += " in FDD file.\n";
    appendNodeProperties(node, lastErrorText);
    return DtFedFailed;
  };
  if (!getPropertyByName(node, xmlText(attrName), name)) {
    lastErrorText = "Dimension with no name found in FDD file.\n";
    appendNodeProperties(node, lastErrorText);
    return DtFedFailed;
  }
  // Only "Federate" must have a normalization, and only it may lack an upper bound.
  const bool federate = name == "Federate";
  DtString normalization;
  if (federate && !getPropertyByName(node, xmlText(attrNormalization), normalization)) {
    return fail("missing normalization");
  }
  DtString bound;
  if (!getPropertyByName(node, xmlText(attrUpperBound), bound)) {
    if (!federate) return fail("missing upper bound");
    bound = DtString(ULONG_MAX);
  }
  unsigned long upperBound = 0;
  if (!detail::parseUpperBound(*this, bound, upperBound)) return fail("upper bound is invalid");
  getPropertyByName(node, xmlText(attrNormalization), normalization);

  unsigned long rangeLower = 0;
  unsigned long rangeUpper = 1;
  bool excluded = false;
  DtString given;
  if (getPropertyByName(node, xmlText(attrValue), given) &&
      !detail::parseDimensionValue(*this, given, upperBound, rangeLower, rangeUpper, excluded)) {
    return fail("value is invalid");
  }
  if (target) {
    target->addDimension(name.c_str(), upperBound, rangeLower, rangeUpper, excluded, normalization);
  }
  return DtFedOk;
}

}  // namespace KORRti
