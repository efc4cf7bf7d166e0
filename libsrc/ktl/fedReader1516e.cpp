#include <ktl/fedReader1516e.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlstring.h>

#include <ktl/envXmlReader.h>
#include <ktl/internal/schemaCache.h>
#include <ktl/internal/xmlRecordWalk.h>
#include <util/notify.h>

namespace KORRti {

namespace {

using detail::contains;
using detail::Duplicate;
using detail::Field;
using detail::LocalLoadsOnly;
using detail::named;
using detail::textOf;
using detail::Word;
using detail::xmlText;

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
const Word<int> theResignActions[] = {
    {valueUnconditionallyDivestAttributes, 0},    {valueDeleteObjects, 1},
    {valueCancelPendingOwnershipAcquisitions, 2}, {valueDeleteObjectsThenDivest, 3},
    {valueCancelThenDeleteThenDivest, 4},         {valueNoAction, 5}};

// Interaction classes of the management model that a target with its own root may lack.
const char* const theOptionalInteractions[] = {
    "HLArequestSynchronizationPoint", "HLAreportSynchronizationPoint",
    "HLArequestAttributeTransportationTypeChange", "HLArequestInteractionTransportationTypeChange"};

// The child elements of an interaction class that its walk passes over.
const char* const theInteractionProperties[] = {attrName,       tagTransport, attrOrder,
                                                attrDimensions, attrSharing,  attrSemantics};

// The field tables of the records: the child elements each one takes.
const Field<DtTimeType> theTimeFields[] = {{attrDataType, &DtTimeType::dataType},
                                           {attrSemantics, &DtTimeType::semantics}};
const Field<DtSynchronizationPointsType> theSynchronizationFields[] = {
    {attrLabel, &DtSynchronizationPointsType::label},
    {attrDataType, &DtSynchronizationPointsType::dataType},
    {attrCapability, nullptr},
    {attrSemantics, &DtSynchronizationPointsType::semantics}};
const Field<DtTransportationType> theTransportationFields[] = {
    {attrName, &DtTransportationType::name}, {attrReliable, nullptr}, {attrSemantics, nullptr}};
// The one element name of the form that the shared vocabulary lacks.
const char kRate[] = "rate";
const Field<DtUpdateRateType> theUpdateRateFields[] = {
    {attrName, &DtUpdateRateType::name},
    {kRate, nullptr},
    {attrSemantics, &DtUpdateRateType::semantics}};
const Field<DtUserSuppliedTagsType> theTagFields[] = {
    {attrDataType, &DtUserSuppliedTagsType::dataType},
    {attrSemantics, &DtUserSuppliedTagsType::semantics}};
const Field<DtNotesType> theNoteFields[] = {{attrLabel, &DtNotesType::label},
                                            {attrSemantics, &DtNotesType::semantics}};
const Field<DtBasicDataRepresentationType> theBasicFields[] = {
    {attrName, &DtBasicDataRepresentationType::name},
    {attrSize, nullptr},
    {attrInterpretation, &DtBasicDataRepresentationType::interpretation},
    {attrEndian, nullptr},
    {attrEncoding, &DtBasicDataRepresentationType::encoding}};
const Field<DtSimpleDatatypeType> theSimpleFields[] = {
    {attrName, &DtSimpleDatatypeType::name},
    {attrRepresentation, &DtSimpleDatatypeType::representation},
    {attrUnits, &DtSimpleDatatypeType::units},
    {attrResolution, &DtSimpleDatatypeType::resolution},
    {attrAccuracy, &DtSimpleDatatypeType::accuracy},
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
    {attrEnumerator, nullptr},
    {attrSemantics, &DtEnumeratedDatatypeType::semantics}};
const Field<DtEnumeratorType> theEnumeratorFields[] = {{attrName, &DtEnumeratorType::name},
                                                       {attrValue, &DtEnumeratorType::values}};
const Field<DtFixedRecordDatatypeType> theFixedRecordFields[] = {
    {attrName, &DtFixedRecordDatatypeType::name},
    {tagFixedRecField, nullptr},
    {attrEncoding, &DtFixedRecordDatatypeType::encoding},
    {attrSemantics, &DtFixedRecordDatatypeType::semantics}};
const Field<DtFieldType> theFieldFields[] = {{attrName, &DtFieldType::name},
                                             {attrDataType, &DtFieldType::dataType},
                                             {attrSemantics, &DtFieldType::semantics}};
const Field<DtVariantRecordDatatypeType> theVariantRecordFields[] = {
    {attrName, &DtVariantRecordDatatypeType::name},
    {attrDiscriminant, &DtVariantRecordDatatypeType::discriminant},
    {tagVarRecAlternative, nullptr},
    {attrDataType, &DtVariantRecordDatatypeType::dataType},
    {attrEncoding, &DtVariantRecordDatatypeType::encoding},
    {attrSemantics, &DtVariantRecordDatatypeType::semantics}};
const Field<DtAlternativeType> theAlternativeFields[] = {
    {attrEnumerator, &DtAlternativeType::enumerator},
    {attrName, &DtAlternativeType::name},
    {attrDataType, &DtAlternativeType::dataType},
    {attrSemantics, &DtAlternativeType::semantics}};

// The words of each section. These texts are read by hosts and tests as they stand, odd
// spelling ("Endianess", "Alternate") included: do not correct them.
const char kWrongTimeInner[] = "Unexpected tag in Time Tree for FDD file.\n\tTime Tag = ";
const char kWrongTimeChild[] = "Unexpected tag in times list for FDD file.\n\tTime Tag = ";
const Duplicate kTimeDuplicate = {"Ignoring Unexpected duplicate time type ( ",
                                  " ) for FDD file.\n\ttime Tag = ", true, false};

const char kWrongSynchronizationInner[] =
    "Unexpected tag in Synchronization Point tree for FDD file.\n\tSynchronization Point Tag = ";
const char kWrongSynchronizationChild[] =
    "Unexpected tag in Synchronization Points tree for FDD file.\n\tSynchronization Points Tag = ";
const char kBadCapability[] =
    "Unexpected Capability for Synchronization Point for FDD file.\n\tCapability = ";
const Duplicate kSynchronizationDuplicate = {
    "Ignoring Unexpected duplicate Synchronization Point type ( ",
    " ) for FDD file.\n\tSynchronization Point Tag = ", true, false};

const char kWrongTransportInner[] =
    "Unexpected tag in Transport tree for FDD file.\n\tTransport Tag = ";
const char kWrongTransportChild[] =
    "Unexpected tag in Transportation Lists tree for FDD file.\n\tTransportation Lists Tag = ";
const char kBadReliable[] = "Unexpected value in Reliable tag for FDD file.\n\tReliable = ";
const Duplicate kTransportDuplicate = {"Ignoring Unexpected duplicate Transportation type ( ",
                                       " ) for FDD file.\n\tTransportation Tag = ", true, false};

const char kWrongUpdateRateInner[] =
    "Unexpected tag in Update Rate tree for FDD file.\n\tUpdate Rate Tag = ";
const char kWrongUpdateRateChild[] =
    "Unexpected tag in Update Rates tree for FDD file.\n\tUpdate Rates Tag = ";
const Duplicate kUpdateRateDuplicate = {"Ignoring Unexpected duplicate Update Rate type ( ",
                                        " ) for FDD file.\n\tUpdate Rate Tag = ", true, false};

const char kWrongTagInner[] =
    "Unexpected tag in User Supplied Tag for FDD file.\n\tUser Supplied Tag = ";
const Duplicate kTagDuplicate = {"Ignoring Unexpected duplicate User Supplied Tag ( ",
                                 " ) for FDD file.\n\tUser Supplied Tag = ", true, false};

const char kWrongNoteInner[] = "Unexpected tag in Note for FDD file.\n\tNote Tag = ";
const char kWrongNoteChild[] = "Unexpected tag in Notes Tree for FDD file.\n\tNotes Tag = ";
const Duplicate kNoteDuplicate = {"Ignoring Unexpected duplicate Note ( ",
                                  " ) for FDD file.\n\tNote = ", true, false};

const char kWrongBasicInner[] =
    "Unexpected tag in Basic Datatype Representation for FDD file.\n\tBasic Datatype "
    "Representation Tag = ";
const char kWrongBasicChild[] =
    "Unexpected tag in Basic Datatype Representation tree for FDD file.\n\tBasic Datatype "
    "Representation Tag = ";
const char kBadEndian[] =
    "Unexpected tag in Endianess of a Basic Datatype Representation for FDD file.\n\tEndianess "
    "Tag = ";
const Duplicate kBasicDuplicate = {"Ignoring Unexpected duplicate Basic Data Representation ( ",
                                   " ) for FDD file.\n\tBasic Data Representation = ", true, false};

const char kWrongSimpleInner[] =
    "Unexpected tag in Simple Datatype for FDD file.\n\tSimple Datatype Tag = ";
const char kWrongSimpleChild[] =
    "Unexpected tag in Simple Datatype tree for FDD file.\n\tSimple Datatype Tag = ";
const Duplicate kSimpleDuplicate = {"Ignoring Unexpected duplicate Simple Datatype ( ",
                                    " ) for FDD file.\n\tSimple Datatype = ", true, false};

const char kWrongArrayInner[] =
    "Unexpected tag in Array Datatype for FDD file.\n\tArray Datatype Tag = ";
const char kWrongArrayChild[] =
    "Unexpected tag in Array Datatype tree for FDD file.\n\tArray Datatype Tag = ";
const Duplicate kArrayDuplicate = {"Ignoring Unexpected duplicate Array Datatype ( ",
                                   " ) for FDD file.\n\tArray Datatype = ", true, false};

const char kWrongEnumeratedInner[] =
    "Unexpected tag in Enumerated Datatype for FDD file.\n\tEnumerated Datatype Tag = ";
const char kWrongEnumeratedChild[] =
    "Unexpected tag in Enumerated Datatype tree for FDD file.\n\tEnumerated Datatype Tag = ";
const char kWrongEnumeratorInner[] =
    "Unexpected tag in Enumerator in Enumerated Datatype for FDD file.\n\tEnumerator = ";
const Duplicate kEnumeratedDuplicate = {"Ignoring Unexpected duplicate Enumerated Datatype ( ",
                                        " ) for FDD file.\n\tEnumerated Datatype = ", true, false};

const char kWrongFixedRecordInner[] =
    "Unexpected tag in Fixed Datatype for FDD file.\n\tFixed Datatype Tag = ";
const char kWrongFixedRecordChild[] =
    "Unexpected tag in Fixed Datatype tree for FDD file.\n\tFixed Datatype Tag = ";
const char kWrongFieldInner[] =
    "Unexpected tag in Field in Fixed Datatype for FDD file.\n\tField Tag = ";
const Duplicate kFixedRecordDuplicate = {"Ignoring Unexpected duplicate Fixed Record Datatype ( ",
                                         " ) for FDD file.\n\tFixed Record Datatype = ", true,
                                         false};

const char kWrongVariantRecordInner[] =
    "Unexpected tag in Variant Datatype for FDD file.\n\tVariant Datatype Tag = ";
const char kWrongVariantRecordChild[] =
    "Unexpected tag in Variant Datatype tree for FDD file.\n\tVariant Datatype Tag = ";
const char kWrongAlternativeInner[] =
    "Unexpected tag in Alternate in Variant Datatype for FDD file.\n\tAlternative Tag = ";
const Duplicate kVariantRecordDuplicate = {
    "Ignoring Unexpected duplicate Variant Record Datatype ( ",
    " ) for FDD file.\n\tVariant Record Datatype = ", true, false};

const char kNoRoot[] = "Bad FDD File. Could not find Document Root in FDD File.";

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

// The text of an element whose first child is text; "" otherwise.
DtString firstText(const xmlNode* element) {
  const xmlNode* first = element->children;
  if (!first || first->type != XML_TEXT_NODE || !first->content) return DtString("");
  return DtString(textOf(first->content));
}

// A schema location names a local file; one given as a URL names nothing here, since a read
// fetches nothing over the network.
bool schemaFileExists(const DtString& name) {
  if (contains(name, "://")) return false;
  return DtFilename(name.c_str()).exists();
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Document level

DtFedReader1516e::DtFedReader1516e()
    : schemaValidationEnabled(false),
      replacedObjectRoot(false),
      replacedInteractionRoot(false),
      standardMimText(theHLAeStandardMIM_xml),
      standardMimSize(theHLAeStandardMIM_xml_len),
      timeStampTag(xmlText(attrTimeStamp)),
      lookaheadTag(xmlText(attrLookahead)) {
  expectedType = DtFomTypeEvolved;
}

DtFedReader1516e::~DtFedReader1516e() {
  detail::releaseParserState();
}

int DtFedReader1516e::readFedFilePtr(FILE* file, DtFedTarget* readTarget, DtFilename name,
                                     unsigned int mask, bool validate, bool skip) {
  return readFedFilePtr(file, readTarget, name, DtFomTypeEvolved, mask, validate, skip);
}

int DtFedReader1516e::readFedFilePtr(FILE* file, DtFedTarget* readTarget, DtFilename name,
                                     DtFomType type, unsigned int mask, bool /*validate*/,
                                     bool skip) {
  fileName = name;
  // With no file, only the standard MIM of this reader's edition can be read: from the
  // library's own copy.
  const bool fromHeldCopy = !file;
  if (fromHeldCopy) {
    DtFilename baseName(name);
    baseName.stripPath();
    if (!baseName.caseCompare(standardMimFileName(type))) return DtFedNoFile;
  }
  target = readTarget;
  int status = DtFedOk;
  DtQuietXmlErrors quiet;
  LocalLoadsOnly localLoads;
  detail::XmlPtr<xmlDoc> doc;
  try {
    if (target) target->setFomType(type);
    strictCheckingMask = mask;
    skipSwitches = skip;
    delete[] currFddData;
    currFddData = nullptr;
    currFddSize = 0;
    if (fromHeldCopy) {
      doc.reset(xmlReadMemory(reinterpret_cast<const char*>(standardMimText),
                              static_cast<int>(standardMimSize), nullptr, nullptr, 0));
    } else {
      readFileIntoBuffer(file, &currFddData, &currFddSize);
      rewind(file);
      doc.reset(xmlReadMemory(currFddData, static_cast<int>(currFddSize), nullptr, nullptr, 0));
    }
    xmlNode* root = doc ? xmlDocGetRootElement(doc.get()) : nullptr;
    if (!root) {
      lastErrorText = kNoRoot;
      status = DtFedFailed;
    }
    if (status == DtFedOk) status = checkSchema(root);
    if (status == DtFedOk) status = processFed(root);
  } catch (...) {
    lastErrorText = "Unexpected problem reading fed file.";
    status = DtFedFailed;
  }
  return status;
}

void DtFedReader1516e::setSchemaValidationEnabled(bool) {
  // Once on, validation stays on: a host cannot switch off what a federation asked for.
  schemaValidationEnabled = true;
}

int DtFedReader1516e::checkSchema(xmlNode* root) {
  if (!schemaValidationEnabled) return DtFedOk;
  const char* location = propertyByName(root, xmlText(tagSchemaLocation));
  if (!location) return DtFedOk;
  // The location is a pair of namespace and file: the file is what stands after the last blank.
  DtString schemaFile(location);
  schemaFile.snipFront(' ', true);
  if (!schemaFileExists(schemaFile)) {
    lastErrorText = "Could not open schema file ";
    lastErrorText += schemaFile;
    return DtFedFailed;
  }
  if (!schemaValidate(root->doc, schemaFile.c_str())) {
    lastErrorText = "FDD file did not pass validation against schema ";
    lastErrorText += schemaFile;
    return DtFedFailed;
  }
  return DtFedOk;
}

bool DtFedReader1516e::schemaValidate(xmlDoc* doc, const char* schemaFile) {
  if (!doc || !schemaFile) return false;
  if (!LocalLoadsOnly::isLocalFile(schemaFile)) return false;
  DtQuietXmlErrors quiet;
  LocalLoadsOnly localLoads;
  return detail::validateWithCachedSchema(doc, schemaFile);
}

int DtFedReader1516e::processXmlDocPtr(xmlDoc* doc) {
  if (!doc) {
    lastErrorText = "Error reading FDD";
    return DtFedFailed;
  }
  detail::XmlPtr<xmlDoc> held(doc);
  DtQuietXmlErrors quiet;
  DtVerbose("Reading FDD : \n");
  int status = DtFedOk;
  xmlNode* root = xmlDocGetRootElement(doc);
  if (!root) {
    lastErrorText = kNoRoot;
    status = DtFedFailed;
  }
  if (status == DtFedOk) status = checkSchema(root);
  if (status == DtFedOk) {
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

int DtFedReader1516e::processFed(xmlNode* root) {
  if (!root) {
    lastErrorText = "Invalid node";
    return DtFedFailed;
  }
  int status = DtFedOk;
  // Update rates, notes, time, synchronization points and the model identification count as
  // seen from the start; so do the switches unless strict bit 2 asks for them.
  unsigned int seen = 0x7A0;
  if (!strictChecking(DtStrictMissingTables)) seen |= 0x10;
  DtVerbose("Federation Properties:\n");
  logNodeProperties(root);

  // Dimensions and transportations first, wherever they stand: classes refer to them.
  if (xmlNode* dimensions = getNodeByName(root, xmlText(tagDimensions))) {
    status = parseDimensionList(dimensions);
    if (status == DtFedOk) seen |= 0x4;
  }
  if (status != DtFedFailed) {
    if (xmlNode* transportations = getNodeByName(root, xmlText(tagTransportations))) {
      status = parseTransportationsList(transportations);
      if (status == DtFedOk) seen |= 0x8;
    }
  }

  for (xmlNode* child = root->children; child && status != DtFedFailed; child = child->next) {
    DtVerbose("\nTop-level Tag: %s\n", textOf(child->name));
    if (isCommentOrBlank(child)) continue;
    if (named(child, tagModelIdentification)) {
      seen |= 0x400;
      status = processModelIdentification(child);
    } else if (named(child, tagObjects)) {
      seen |= 0x1;
      status = processObjects(child);
    } else if (named(child, tagInteractions)) {
      seen |= 0x2;
      status = processInteractions(child);
    } else if (named(child, tagSwitches)) {
      seen |= 0x10;
      status = parseSwitches(child);
    } else if (named(child, tagUpdateRates)) {
      seen |= 0x20;
      status = parseUpdateRates(child);
    } else if (named(child, tagDimensions) || named(child, tagTransportations)) {
      continue;
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
      if (strictChecking(DtStrictUnexpectedContent)) {
        status = DtFedFailed;
      } else {
        DtVerbose << "Unhandled top-level tag: " << textOf(child->name)
                  << " encountered when processing " << fileName;
      }
    }
  }

  if (status != DtFedFailed && seen != 0x7FF) {
    // Each missing section replaces the report of the one before: the last one stays.
    struct Missing {
      unsigned int bit;
      const char* words;
      unsigned int fatalUnder;  // the strict bit that makes it fatal, 0 for none
    };
    static const Missing missing[] = {
        {0x1, "Missing or invalid objects table", DtStrictMissingTables},
        {0x2, "Missing or invalid interactions table", DtStrictMissingTables},
        {0x4, "Missing or invalid dimensions table", DtStrictMissingTables},
        {0x8, "Missing or invalid transportations table", DtStrictMissingTables},
        // Only missing under strict bit 2, which is what makes it fatal.
        {0x10, "Missing or invalid switches table", DtStrictMissingTables},
        {0x20, "Missing or invalid Update Rates", 0},
        {0x40, "Missing or invalid Data Types", 0},
        {0x80, "Missing or invalid Notes", 0},
        {0x100, "Missing or invalid Time", 0},
        {0x200, "Missing or invalid Sync Points", 0},
        {0x400, "Missing or invalid Model Identification", 0}};
    for (const Missing& section : missing) {
      if (seen & section.bit) continue;
      lastErrorText = section.words;
      if (section.fatalUnder && strictChecking(section.fatalUnder)) status = DtFedFailed;
    }
  }
  return status;
}

int DtFedReader1516e::processModelIdentification(xmlNode* node) {
  std::vector<DtString> dependencies;
  // Set by a reference's "type" of "Dependency" and cleared by the "identification" it
  // announces; a reference with no identification leaves it set for the next one.
  bool dependency = false;
  for (xmlNode* child = node ? node->children : nullptr; child; child = child->next) {
    if (isCommentOrBlank(child)) continue;
    if (named(child, attrName)) {
      DtString name = childrenContent(child);
      DtVerbose << "Name: " << name;
      if (target) target->setFomName(name.c_str());
    } else if (named(child, attrReferences)) {
      for (xmlNode* item = child->children; item; item = item->next) {
        if (named(item, tagReferenceType)) {
          if (childrenContent(item) == "Dependency") dependency = true;
        } else if (named(item, tagReferenceIdentification) && dependency) {
          dependencies.push_back(childrenContent(item));
          dependency = false;
          break;
        }
      }
    }
  }
  if (!dependencies.empty() && target) target->setFomDependencies(dependencies);
  return DtFedOk;
}

// ---------------------------------------------------------------------------------------------
// Switches, update rates, tags, synchronization points, transportations, time

int DtFedReader1516e::parseSwitches(xmlNode* node) {
  if (!target || skipSwitches || !node) return DtFedOk;
  int status = DtFedOk;
  // A fault is fatal under strict bit 1 but the remaining switches are still read.
  auto fault = [&](const DtString& text) {
    lastErrorText = text;
    if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
  };
  for (xmlNode* child = node->children; child; child = child->next) {
    if (isCommentOrBlank(child)) continue;
    DtString name(textOf(child->name));
    if (!target->isKnownSwitch(name)) {
      lastErrorText = "Ignored non standard switch ";
      lastErrorText += name;
      lastErrorText += "\n";
      appendNodeContent(child, lastErrorText);
      appendErrorLine(child, lastErrorText);
      DtVerbose("%s", lastErrorText.c_str());
      continue;
    }
    const bool resign = name == attrAutomaticResignAction;
    const char* given = propertyByName(child, xmlText(resign ? attrResignAction : attrIsEnabled));
    if (!given) {
      DtVerbose("\t%-30s: value not defined!\n", name.c_str());
      fault(DtString("Value not defined for switch ") + name);
      continue;
    }
    DtString value(given);
    if (resign) {
      DtVerbose("\t%-30s: %s", name.c_str(), given);
      int action = detail::lookUpWord(given, theResignActions, -1, -1);
      if (action < 0) {
        DtVerbose(" value not recognized!");
        fault(DtString("Unrecognized value, ") + value + ", for switch " + name);
      } else {
        target->setAutomaticResignAction(action);
      }
      DtVerbose("\n");
    } else if (target->hasSwitch(name)) {
      DtVerbose("\t%-30s: %s duplicate ignored!\n", name.c_str(), given);
      lastErrorText = "Ignored duplicate switch ";
      lastErrorText += name;
      lastErrorText += " with value ";
      lastErrorText += value;
      lastErrorText += "\n";
      appendNodeContent(child, lastErrorText);
      appendErrorLine(child, lastErrorText);
      DtVerbose("%s", lastErrorText.c_str());
    } else if (value == valueTrue) {
      target->setSwitch(name, true);
    } else if (value == valueFalse) {
      target->setSwitch(name, false);
    } else {
      DtVerbose("\t%-30s: %s unrecognized value!\n", name.c_str(), given);
      fault(DtString("Unrecognized value for switch ") + name + " with value " + value);
    }
  }
  return status;
}

int DtFedReader1516e::parseUpdateRates(xmlNode* node) {
  RecordWalk walk(*this);
  walk.innerByContent = true;
  auto rate = [](DtUpdateRateType& record, const Field<DtUpdateRateType>&, const DtString& value,
                 xmlNode*) {
    // As a C reader takes it: a leading number, 0 for none.
    if (!value.isEmpty()) std::sscanf(value.c_str(), "%f", &record.rate);
  };
  return walk.section(node, tagSingleUpdateRate, kWrongUpdateRateChild, [&](xmlNode* child) {
    DtUpdateRateType* record = new DtUpdateRateType();
    walk.fillFromElements(child, *record, theUpdateRateFields, kWrongUpdateRateInner, rate);
    walk.deliver(
        record, child, record->name, kUpdateRateDuplicate,
        [&](const DtUpdateRateType& r) { return target->hasUpdateRate(r); },
        [&](DtUpdateRateType* r) { return target->addUpdateRate(r); });
  });
}

int DtFedReader1516e::parseTagsTree(xmlNode* node) {
  RecordWalk walk(*this);
  if (!node) return walk.status;
  // Every child is a tag, named by its element; a comment too, as "comment".
  for (xmlNode* child = node->children; child && walk.going(); child = child->next) {
    DtUserSuppliedTagsType* record = new DtUserSuppliedTagsType();
    record->name = textOf(child->name);
    walk.fillFromElements(child, *record, theTagFields, kWrongTagInner);
    walk.deliver(
        record, child, record->name, kTagDuplicate,
        [&](const DtUserSuppliedTagsType& r) { return target->hasUserSuppliedTag(r); },
        [&](DtUserSuppliedTagsType* r) { return target->addUserSuppliedTag(r); });
  }
  return walk.status;
}

int DtFedReader1516e::parseSynchronizationsTree(xmlNode* node) {
  RecordWalk walk(*this);
  walk.innerByContent = true;
  auto capability = [&](DtSynchronizationPointsType& record,
                        const Field<DtSynchronizationPointsType>&, const DtString& value,
                        xmlNode* element) {
    if (value.isEmpty()) {
      record.capability = 5;
      return;
    }
    record.capability = detail::lookUpWord(value.c_str(), theCapabilities, 0, -1);
    if (record.capability < 0) {
      record.capability = 0;
      walk.unexpectedValue(element, kBadCapability, value.c_str());
    }
  };
  return walk.section(node, attrSynchronizationPoint, kWrongSynchronizationChild,
                      [&](xmlNode* child) {
                        DtSynchronizationPointsType* record = new DtSynchronizationPointsType();
                        walk.fillFromElements(child, *record, theSynchronizationFields,
                                              kWrongSynchronizationInner, capability);
                        walk.deliver(
                            record, child, record->label, kSynchronizationDuplicate,
                            [&](const DtSynchronizationPointsType& r) {
                              return target->hasSynchronizationPoint(r);
                            },
                            [&](DtSynchronizationPointsType* r) {
                              DtVerbose("\t%s", r->label.c_str());
                              return target->addSynchronizationPoint(r);
                            });
                      });
}

int DtFedReader1516e::parseTransportationsList(xmlNode* node) {
  RecordWalk walk(*this);
  walk.innerByContent = true;
  DtVerbose("Transportations:");
  auto convert = [&](DtTransportationType& record, const Field<DtTransportationType>& field,
                     const DtString& value, xmlNode* element) {
    if (std::strcmp(field.name, attrSemantics) == 0) {
      record.semantics = value;
      record.description = record.semantics;
    } else if (value == valueYes) {
      record.reliable = true;
    } else if (value == valueNo) {
      record.reliable = false;
    } else if (!value.isEmpty()) {
      walk.unexpectedValue(element, kBadReliable, value.c_str());
    }
  };
  return walk.section(node, tagTransport, kWrongTransportChild, [&](xmlNode* child) {
    DtTransportationType* record = new DtTransportationType();
    walk.fillFromElements(child, *record, theTransportationFields, kWrongTransportInner, convert);
    walk.deliver(
        record, child, record->name, kTransportDuplicate,
        [&](const DtTransportationType& r) { return target->hasTransportation(r); },
        [&](DtTransportationType* r) {
          DtVerbose << "\tname: " << r->name << " semantics: " << r->semantics;
          return target->addTransportation(r);
        });
  });
}

int DtFedReader1516e::parseTimeTree(xmlNode* node) {
  RecordWalk walk(*this);
  walk.innerByContent = true;
  if (!node) return walk.status;
  for (xmlNode* child = node->children; child && walk.going(); child = child->next) {
    if (isCommentOrBlank(child)) continue;
    if (!xmlStrEqual(child->name, timeStampTag) && !xmlStrEqual(child->name, lookaheadTag)) {
      walk.unexpectedChild(child, kWrongTimeChild);
      continue;
    }
    DtTimeType* record = new DtTimeType();
    record->name = textOf(child->name);
    walk.fillFromElements(child, *record, theTimeFields, kWrongTimeInner);
    walk.deliver(
        record, child, record->name, kTimeDuplicate,
        [&](const DtTimeType& r) { return target->hasTime(r); },
        [&](DtTimeType* r) { return target->addTime(r); });
  }
  return walk.status;
}

// ---------------------------------------------------------------------------------------------
// Data types and notes

int DtFedReader1516e::parseDataTypeTree(xmlNode* node) {
  int status = DtFedOk;
  if (!node) return status;
  for (xmlNode* child = node->children; child && status == DtFedOk; child = child->next) {
    DtVerbose("DataType Tree Tag: %s\n", textOf(child->name));
    status = parseDataType(child);
  }
  return status;
}

int DtFedReader1516e::parseDataType(xmlNode* node) {
  if (!node || isCommentOrBlank(node)) return DtFedOk;
  if (named(node, tagBasicDataReps)) return parseBasicDataTypesTree(node);
  if (named(node, tagSimpleDataTypes)) return parseSimpleDataTypesTree(node);
  if (named(node, tagArrayDataTypes)) return parseArrayDataTypesTree(node);
  if (named(node, tagEnumDataTypes)) return parseEnumeratedDataTypesTree(node);
  if (named(node, tagFixedRecDataTypes)) return parseFixedRecordDataTypesTree(node);
  if (named(node, tagVarRecDataTypes)) return parseVariantRecordDataTypesTree(node);
  lastErrorText = "Unexpected tag in dataTypes tree for FDD file.\n\tDataType Tag = ";
  appendNodeContent(node, lastErrorText);
  appendErrorLine(node, lastErrorText);
  return strictChecking(DtStrictUnexpectedContent) ? DtFedFailed : DtFedOk;
}

int DtFedReader1516e::parseBasicDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  auto convert = [&](DtBasicDataRepresentationType& record,
                     const Field<DtBasicDataRepresentationType>& field, const DtString& value,
                     xmlNode* element) {
    if (value.isEmpty()) return;
    if (std::strcmp(field.name, attrSize) == 0) {
      // A size that is not a number is taken as far as it reads, with no report.
      convertStringToULong(value.stdString(), record.size);
    } else if (value == valueBig) {
      record.endian = 1;
    } else if (value == valueLittle) {
      record.endian = 2;
    } else {
      walk.unexpectedValue(element, kBadEndian, value.c_str());
    }
  };
  return walk.section(node, tagBasicData, kWrongBasicChild, [&](xmlNode* child) {
    DtBasicDataRepresentationType* record = new DtBasicDataRepresentationType();
    walk.fillFromElements(child, *record, theBasicFields, kWrongBasicInner, convert);
    walk.deliver(
        record, child, record->name, kBasicDuplicate,
        [&](const DtBasicDataRepresentationType& r) {
          return target->hasBasicDataRepresentation(r);
        },
        [&](DtBasicDataRepresentationType* r) { return target->addBasicDataRepresentation(r); });
  });
}

int DtFedReader1516e::parseSimpleDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagSimpleData, kWrongSimpleChild, [&](xmlNode* child) {
    DtSimpleDatatypeType* record = new DtSimpleDatatypeType();
    walk.fillFromElements(child, *record, theSimpleFields, kWrongSimpleInner);
    walk.deliver(
        record, child, record->name, kSimpleDuplicate,
        [&](const DtSimpleDatatypeType& r) { return target->hasSimpleDatatype(r); },
        [&](DtSimpleDatatypeType* r) { return target->addSimpleDatatype(r); });
  });
}

int DtFedReader1516e::parseArrayDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagArrayData, kWrongArrayChild, [&](xmlNode* child) {
    DtArrayDatatypeType* record = new DtArrayDatatypeType();
    walk.fillFromElements(child, *record, theArrayFields, kWrongArrayInner);
    walk.deliver(
        record, child, record->name, kArrayDuplicate,
        [&](const DtArrayDatatypeType& r) { return target->hasArrayDatatype(r); },
        [&](DtArrayDatatypeType* r) { return target->addArrayDatatype(r); });
  });
}

int DtFedReader1516e::parseEnumeratedDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  auto enumerator = [&](DtEnumeratedDatatypeType& record, const Field<DtEnumeratedDatatypeType>&,
                        const DtString&, xmlNode* element) {
    std::shared_ptr<DtEnumeratorType> item = std::make_shared<DtEnumeratorType>();
    record.enumerators.insert(item);
    walk.fillFromElements(element, *item, theEnumeratorFields, kWrongEnumeratorInner);
  };
  return walk.section(node, tagEnumData, kWrongEnumeratedChild, [&](xmlNode* child) {
    DtEnumeratedDatatypeType* record = new DtEnumeratedDatatypeType();
    walk.fillFromElements(child, *record, theEnumeratedFields, kWrongEnumeratedInner, enumerator);
    walk.deliver(
        record, child, record->name, kEnumeratedDuplicate,
        [&](const DtEnumeratedDatatypeType& r) { return target->hasEnumeratedDatatype(r); },
        [&](DtEnumeratedDatatypeType* r) { return target->addEnumeratedDatatype(r); });
  });
}

int DtFedReader1516e::parseFixedRecordDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  auto field = [&](DtFixedRecordDatatypeType& record, const Field<DtFixedRecordDatatypeType>&,
                   const DtString&, xmlNode* element) {
    std::shared_ptr<DtFieldType> item = std::make_shared<DtFieldType>();
    record.fields.insert(item);
    walk.fillFromElements(element, *item, theFieldFields, kWrongFieldInner);
  };
  return walk.section(node, tagFixedRecData, kWrongFixedRecordChild, [&](xmlNode* child) {
    DtFixedRecordDatatypeType* record = new DtFixedRecordDatatypeType();
    walk.fillFromElements(child, *record, theFixedRecordFields, kWrongFixedRecordInner, field);
    walk.deliver(
        record, child, record->name, kFixedRecordDuplicate,
        // The target's test takes a copy, which shares the fields with the record.
        [&](const DtFixedRecordDatatypeType& r) { return target->hasFixedRecordDatatype(r); },
        [&](DtFixedRecordDatatypeType* r) { return target->addFixedRecordDatatype(r); });
  });
}

int DtFedReader1516e::parseVariantRecordDataTypesTree(xmlNode* node) {
  RecordWalk walk(*this);
  auto alternative = [&](DtVariantRecordDatatypeType& record,
                         const Field<DtVariantRecordDatatypeType>&, const DtString&,
                         xmlNode* element) {
    std::shared_ptr<DtAlternativeType> item = std::make_shared<DtAlternativeType>();
    record.alternatives.insert(item);
    walk.fillFromElements(element, *item, theAlternativeFields, kWrongAlternativeInner);
  };
  return walk.section(node, tagVarRecData, kWrongVariantRecordChild, [&](xmlNode* child) {
    DtVariantRecordDatatypeType* record = new DtVariantRecordDatatypeType();
    walk.fillFromElements(child, *record, theVariantRecordFields, kWrongVariantRecordInner,
                          alternative);
    walk.deliver(
        record, child, record->name, kVariantRecordDuplicate,
        [&](const DtVariantRecordDatatypeType& r) { return target->hasVariantRecordDatatype(r); },
        [&](DtVariantRecordDatatypeType* r) { return target->addVariantRecordDatatype(r); });
  });
}

int DtFedReader1516e::parseNotesTree(xmlNode* node) {
  RecordWalk walk(*this);
  return walk.section(node, tagNote, kWrongNoteChild, [&](xmlNode* child) {
    DtNotesType* record = new DtNotesType();
    walk.fillFromElements(child, *record, theNoteFields, kWrongNoteInner);
    walk.deliver(
        record, child, record->label, kNoteDuplicate,
        [&](const DtNotesType& r) { return target->hasNote(r); },
        [&](DtNotesType* r) { return target->addNote(r); });
  });
}

// ---------------------------------------------------------------------------------------------
// The getters of a class, attribute or parameter element

int DtFedReader1516e::getTransportType(xmlNode* node, DtTransportType& transport,
                                       std::pair<DtString, DtString> names, bool isAttribute) {
  const char* given = childContentByName(node, xmlText(tagTransport));
  if (!given) {
    transport = DtTransportInvalid;
    return DtFedOk;
  }
  if (std::strcmp(given, valueTransportBestEffort) == 0) {
    transport = DtTransportBestEffort;
    return DtFedOk;
  }
  if (std::strcmp(given, valueTransportReliable) == 0) {
    transport = DtTransportReliable;
    return DtFedOk;
  }
  // A transportation declared by name, in this module or an earlier one.
  DtTransportationType record;
  record.name = given;
  if (target && target->hasTransportation(record)) {
    transport = target->transportationType(record);
  } else if (strictChecking(DtStrictUnexpectedContent)) {
    // A later module may declare it: the target resolves it then, and the caller's value
    // stands meanwhile.
    if (target && isAttribute) {
      target->addUnresolvedAttributeTransportation(record, names.first, names.second);
    } else if (target) {
      target->addUnresolvedInteractionTransportation(record, names.first);
    }
  } else {
    transport = DtTransportBestEffort;
  }
  return DtFedOk;
}

int DtFedReader1516e::getOrderType(xmlNode* node, DtOrderType& order) {
  const char* given = childContentByName(node, xmlText(attrOrder));
  const DtOrderType unknown = -2;
  order = detail::lookUpWord(given, theOrders, DtOrderInvalid, unknown);
  if (order != unknown) return DtFedOk;
  order = DtOrderInvalid;
  lastErrorText = "Unknown delivery order found in FDD file.\n\tOrder = ";
  lastErrorText += given;
  lastErrorText += "\n";
  appendNodeContent(node, lastErrorText);
  return DtFedFailed;
}

int DtFedReader1516e::getSharingType(xmlNode* node, DtSharingType_enum& sharing) {
  const char* given = childContentByName(node, xmlText(attrSharing));
  sharing = detail::lookUpWord(given, theSharings, DtSharingPublishSubscribe, DtSharingInvalid);
  if (sharing != DtSharingInvalid) return DtFedOk;
  if (strictChecking(DtStrictUnexpectedContent)) return DtFedFailed;
  sharing = DtSharingPublishSubscribe;
  return DtFedOk;
}

int DtFedReader1516e::getSemantics(xmlNode* node, DtString& semantics) {
  getChildContentByName(node, xmlText(attrSemantics), semantics);
  return DtFedOk;
}

int DtFedReader1516e::getNotes(xmlNode* node, DtString& notes) {
  getChildContentByName(node, xmlText(tagNotes), notes);
  return DtFedOk;
}

int DtFedReader1516e::getOwnershipType(xmlNode* node, DtOwnershipType_enum& ownership) {
  ownership = detail::lookUpWord(childContentByName(node, xmlText(attrOwnership)), theOwnerships,
                                 DtOwnershipNoTransfer, DtOwnershipNoTransfer);
  return DtFedOk;
}

int DtFedReader1516e::getUpdateCondition(xmlNode* node, DtString& condition) {
  getChildContentByName(node, xmlText(attrUpdateCond), condition);
  return DtFedOk;
}

int DtFedReader1516e::getUpdateType(xmlNode* node, DtFomUpdateType_enum& updateType) {
  updateType = detail::lookUpWord(childContentByName(node, xmlText(attrUpdateType)), theUpdateTypes,
                                  DtFomUpdateNA, DtFomUpdateNA);
  return DtFedOk;
}

// ---------------------------------------------------------------------------------------------
// Object classes and attributes

int DtFedReader1516e::processObjects(xmlNode* node) {
  xmlNode* root = getNodeByName(node, xmlText(tagObjectClass));
  if (!root) return DtFedOk;
  const char* name = childContentByName(root, xmlText(attrName));
  if (name && std::strcmp(name, valueObjectRoot) == 0) {
    return parseObjectTree(root, DtString::nullString());
  }
  lastErrorText = "Object class root is not ";
  lastErrorText += valueObjectRoot;
  lastErrorText += " in FDD file.";
  return DtFedFailed;
}

int DtFedReader1516e::parseObjectTree(xmlNode* node, const DtString& parentName) {
  DtString name;
  if (!getChildContentByName(node, xmlText(attrName), name)) {
    lastErrorText = "Object class, a child of ";
    lastErrorText += parentName;
    lastErrorText += ", with no name found in FDD file.\n";
    return DtFedFailed;
  }
  DtString path = classPath(parentName, name);
  const bool skip = replacedObjectRoot && contains(path, "HLAmanager");
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
    // This form tolerates no refusal.
    if (!added) return DtFedFailed;
  }

  int status = DtFedOk;
  for (xmlNode* child = node->children; child && status == DtFedOk && !skip; child = child->next) {
    if (named(child, tagObjectClass)) {
      status = parseObjectTree(child, path);
    } else if (named(child, tagAttribute)) {
      status = parseAttribute(child, path);
    } else if (named(child, tagDimensions)) {
      status = parseObjectDimensions(child, path);
    } else if (named(child, attrSharing) && strictChecking(DtStrictUnexpectedContent)) {
      DtString given = childrenContent(child);
      if (detail::lookUpWord(given.c_str(), theSharings, DtSharingInvalid, DtSharingInvalid) ==
          DtSharingInvalid) {
        status = DtFedFailed;
      }
    }
  }
  return status;
}

template <typename Add>
int DtFedReader1516e::addDimensionElements(xmlNode* list, const char* wrongTag,
                                           const DtString& className, Add add) {
  int status = DtFedOk;
  const bool strict = strictChecking(DtStrictUnexpectedContent);
  DtVerbose("\tDimensions: ");
  const char* separator = "";
  for (xmlNode* child = list->children; child && status == DtFedOk; child = child->next) {
    if (named(child, attrDimension) && child->type == XML_ELEMENT_NODE) {
      DtString dimension = firstText(child);
      if (dimension.isEmpty() || dimension == valueDimensionsNA) continue;
      dimension.chompFront();
      dimension.chompBack();
      DtVerbose("%s%s", separator, dimension.c_str());
      separator = ", ";
      if (!add(dimension) && strict) status = DtFedFailed;
    } else if (strict) {
      lastErrorText = wrongTag;
      lastErrorText += className;
      status = DtFedFailed;
    }
  }
  DtVerbose("\n");
  return status;
}

int DtFedReader1516e::parseObjectDimensions(xmlNode* node, const DtString& className) {
  if (!node || !target) return DtFedOk;
  return addDimensionElements(
      node, "Unexpected tag in dimension list for object class ", className,
      [&](const DtString& dimension) {
        if (target->addObjectClassDimension(className.c_str(), dimension.c_str())) return true;
        lastErrorText = "Error adding dimension ";
        lastErrorText += dimension;
        lastErrorText += " for object class ";
        lastErrorText += className;
        return false;
      });
}

int DtFedReader1516e::parseAttribute(xmlNode* node, const DtString& className) {
  DtString name;
  if (!getChildContentByName(node, xmlText(attrName), name)) {
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
  // The management model's privilege attribute is time-stamped even when its element says
  // otherwise.
  const bool privilege = className == theValueObjectRoot && name == theValuePrivilegeToDelete;
  const bool logTexts = DtNotifyLevel > 2;

  getTransportType(node, transport, std::make_pair(className, name), true);
  if (logTexts) getChildContentByName(node, xmlText(tagTransport), transportText);
  if (int fault = getOrderType(node, order)) {
    if (strict) return fault;
    order = privilege ? DtOrderTimestamp : DtOrderReceive;
    if (privilege) orderText = valueOrderTimeStamp;
  } else if (logTexts) {
    getChildContentByName(node, xmlText(attrOrder), orderText);
  }
  if (int fault = getSharingType(node, sharing)) {
    if (strict) return fault;
    sharing = DtSharingPublishSubscribe;
  }
  getSemantics(node, semantics);
  getOwnershipType(node, ownership);
  getUpdateType(node, updateType);
  getUpdateCondition(node, updateCondition);

  DtVerbose("\tAttribute: %s, transport: %s, order: %s\n", name.c_str(), transportText.c_str(),
            orderText.c_str());
  if (!target) return DtFedOk;
  target->addAttribute(className.c_str(), name.c_str(), transport, order, sharing, updateType,
                       updateCondition, ownership, semantics, nullptr);
  return parseAttributeDimensions(node, className, name);
}

int DtFedReader1516e::parseAttributeDimensions(xmlNode* node, const DtString& className,
                                               const DtString& attributeName) {
  xmlNode* list = getNodeByName(node, xmlText(attrDimensions));
  if (!list || !target) return DtFedOk;
  xmlNode* first = list->children;
  if (!first || isCommentOrBlank(first)) return DtFedOk;
  if (first->type == XML_TEXT_NODE) {
    DtString text(textOf(first->content));
    if (text == valueDimensionsNA) return DtFedOk;
    lastErrorText = "\"";
    lastErrorText += text;
    lastErrorText += "\" is an invalid value for the symbol \"dimensions\"";
    return DtFedFailed;
  }
  const bool strict = strictChecking(DtStrictUnexpectedContent);
  int status = DtFedOk;
  for (xmlNode* child = first; child && status == DtFedOk; child = child->next) {
    if (!named(child, attrDimension) || child->type != XML_ELEMENT_NODE) {
      if (strict) {
        lastErrorText = "Unexpected tag in dimension list for attribute ";
        lastErrorText += attributeName;
        lastErrorText += " of object class ";
        lastErrorText += className;
        status = DtFedFailed;
      }
      continue;
    }
    DtString dimension = firstText(child);
    if (dimension.isEmpty() && strict) {
      lastErrorText = "Empty or invalid dimension in attribute ";
      lastErrorText += attributeName;
      lastErrorText += " of object class ";
      lastErrorText += className;
      status = DtFedFailed;
      continue;
    }
    dimension.chompFront();
    dimension.chompBack();
    if (dimension.caseCompare(valueDimensionsNA)) continue;
    if (!target->addAttributeDimension(className.c_str(), attributeName.c_str(),
                                       dimension.c_str()) &&
        strict) {
      lastErrorText = "Error adding dimension ";
      lastErrorText += dimension;
      lastErrorText += " for attribute ";
      lastErrorText += attributeName;
      lastErrorText += " of object class ";
      lastErrorText += className;
      status = DtFedFailed;
    }
  }
  return status;
}

// ---------------------------------------------------------------------------------------------
// Interaction classes and parameters

int DtFedReader1516e::processInteractions(xmlNode* node) {
  xmlNode* root = getNodeByName(node, xmlText(tagInteractClass));
  if (!root) return DtFedOk;
  const char* name = childContentByName(root, xmlText(attrName));
  if (!name || std::strcmp(name, valueInteractionRoot) != 0) {
    lastErrorText = "Interaction class with no root found in FDD file.";
    return DtFedFailed;
  }
  return parseInteractionTree(root, DtString::nullString());
}

int DtFedReader1516e::parseInteractionTree(xmlNode* node, const DtString& parentName) {
  DtString name;
  if (!getChildContentByName(node, xmlText(attrName), name)) {
    lastErrorText = "Interaction class, a child of ";
    lastErrorText += parentName;
    lastErrorText += ", with no name found in FDD file.\n";
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
  getTransportType(node, transport, std::make_pair(path, DtString("")), false);
  if (DtNotifyLevel == 3) getChildContentByName(node, xmlText(tagTransport), transportText);
  if (int fault = getOrderType(node, order)) {
    if (strict) return fault;
    order = DtOrderReceive;
  } else if (DtNotifyLevel == 3) {
    getChildContentByName(node, xmlText(attrOrder), orderText);
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
        DtWarn("Replacing HLAinteractionRoot with InteractionRoot to match Federation FOM.\n");
        DtWarn("Parameters and subclasses will be attempted with replacement root.\n");
      }
    }
    if (!added) {
      for (const char* optional : theOptionalInteractions) {
        if (contains(path, optional)) skip = true;
      }
      if (!skip) return DtFedFailed;
      DtWarn << "Federation FOM does not have interaction class " << path
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
      bool property = false;
      for (const char* passed : theInteractionProperties)
        property = property || named(child, passed);
      if (property) continue;
      lastErrorText = "Unexpected tag in interactions tree for FDD file.\n\tInteractions Tag = ";
      appendNodeContent(child, lastErrorText);
      if (strict) status = DtFedFailed;
    }
  }
  return status;
}

int DtFedReader1516e::parseParameter(xmlNode* node, const DtString& className) {
  DtString name;
  if (!getChildContentByName(node, xmlText(attrName), name)) {
    lastErrorText = "Parameter of ";
    lastErrorText += className;
    lastErrorText += " has no name in FDD file.\n";
    return DtFedFailed;
  }
  DtVerbose("\tParameter: %s\n", name.c_str());
  if (target) target->addParameter(className.c_str(), name.c_str());
  return DtFedOk;
}

int DtFedReader1516e::parseInteractionDimensions(xmlNode* node, const DtString& className) {
  xmlNode* list = getNodeByName(node, xmlText(attrDimensions));
  if (!list || !target) return DtFedOk;
  return addDimensionElements(
      list, "Unexpected tag in dimension list for interaction class ", className,
      [&](const DtString& dimension) {
        if (target->addInteractionDimension(className.c_str(), dimension.c_str())) return true;
        lastErrorText = "Error adding dimension ";
        lastErrorText += dimension;
        lastErrorText += " for interaction class ";
        lastErrorText += className;
        return false;
      });
}

// ---------------------------------------------------------------------------------------------
// Dimensions

int DtFedReader1516e::parseDimensionList(xmlNode* node) {
  int status = DtFedOk;
  if (!node) return status;
  DtVerbose("Dimensions:");
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

int DtFedReader1516e::parseDimension(xmlNode* node) {
  DtString name;
  // Every fault of a dimension ends the walk, whatever the strict bits say.
  auto fail = [&](const char* what) {
    lastErrorText = "Dimension \"";
    lastErrorText += name;
    lastErrorText += "\" ";
    lastErrorText += what;
    lastErrorText += " in FDD file.";
    return DtFedFailed;
  };
  if (!getChildContentByName(node, xmlText(attrName), name)) {
    lastErrorText = "Dimension with no name found in FDD file.";
    return DtFedFailed;
  }
  // With no value a dimension covers the whole range; only the standard ("HLA") dimensions may
  // leave their upper bound out.
  unsigned long upperBound = ULONG_MAX;
  DtString bound;
  if (getChildContentByName(node, xmlText(attrUpperBound), bound)) {
    if (!detail::parseUpperBound(*this, bound, upperBound)) return fail("upper bound is invalid");
  } else if (std::strncmp(name.c_str(), "HLA", 3) != 0) {
    return fail("missing upper bound");
  }
  DtString normalization("");
  getChildContentByName(node, xmlText(attrNormalization), normalization);
  unsigned long rangeLower = 0;
  unsigned long rangeUpper = ULONG_MAX;
  bool excluded = false;
  DtString given;
  if (getChildContentByName(node, xmlText(attrValue), given) &&
      !detail::parseDimensionValue(*this, given, upperBound, rangeLower, rangeUpper, excluded)) {
    return fail("value is invalid");
  }
  if (target) {
    DtVerbose("\t%s, %lu, %lu, %lu, %d, %s", name.c_str(), upperBound, rangeLower, rangeUpper,
              excluded ? 1 : 0, normalization.c_str());
    target->addDimension(name.c_str(), upperBound, rangeLower, rangeUpper, excluded, normalization);
  }
  return DtFedOk;
}

}  // namespace KORRti
