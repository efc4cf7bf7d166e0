#ifndef KTL_XMLFEDREADER_H
#define KTL_XMLFEDREADER_H

#include <util/export.h>
#include <memory>
#include <set>
#include <string>

#include <ktl/fedReader.h>
#include <util/dtString.h>

KTL_API_BEGIN

/// libxml2's node and character types, declared as libxml2 declares them, so that a host
/// includes this header without libxml2's include path.
struct _xmlNode;
typedef struct _xmlNode xmlNode;
typedef unsigned char xmlChar;

namespace KORRti {

namespace detail {
/// libxml2 keeps text as unsigned characters; these convert a name for a call, and a text for
/// this library's strings ("" for none).
/// @{
inline const xmlChar* xmlText(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}
inline const char* textOf(const xmlChar* text) {
  return text ? reinterpret_cast<const char*>(text) : "";
}
/// @}
}  // namespace detail

// Plain records of what an XML object model document declares. A reader allocates one per
// element and either hands it to the target's add... operation, which then owns it, or
// deletes it when the target's has... operation knows it already.
//
// DtFedReader1516 fills a record from the attributes of its element, DtFedReader1516e and
// DtFedReader1516_4 from its child elements. A text that the document does not give stays empty.

/// One element of the time section, the time stamp or the lookahead one. A reader hands it to
/// DtFedTarget::addTime, which then owns it.
struct DtTimeType {
  DtString name;  ///< The element's own name.
  /// The texts given for the element's data type and semantics.
  /// @{
  DtString dataType;
  DtString semantics;
  /// @}
};

/// One user-supplied tag of the tags section, handed to DtFedTarget::addUserSuppliedTag, which
/// then owns it.
struct DtUserSuppliedTagsType {
  DtString name;  ///< The element's own name; a comment in the section makes a tag "comment".
  /// The texts given for the tag's data type and semantics.
  /// @{
  DtString dataType;
  DtString semantics;
  /// @}
};

/// One synchronization point, handed to DtFedTarget::addSynchronizationPoint, which then owns it.
struct DtSynchronizationPointsType {
  DtString label;     ///< The point's label.
  DtString dataType;  ///< The data type of the point's tag.
  /// 0 not given or not a known word, 1 Register, 2 Achieve, 3 RegisterAchieve, 4 NoSynch, 5 NA.
  /// DtFedReader1516e takes an empty capability element for 5.
  int32_t capability = 0;
  DtString semantics;  ///< The text given for the point's semantics.
};

/// One transportation type, handed to DtFedTarget::addTransportation, which then owns it.
struct DtTransportationType {
  DtString name;         ///< The transportation's name.
  DtString description;  ///< always the same text as semantics
  /// DtFedReader1516e reads it from a Yes or No element; DtFedReader1516 takes it from the
  /// name, true for HLAreliable and for any name holding "reliable" in any case.
  bool reliable = false;
  /// DtFedReader1516 takes it from the description attribute.
  DtString semantics;
};

/// One basic data representation, handed to DtFedTarget::addBasicDataRepresentation, which then
/// owns it.
struct DtBasicDataRepresentationType {
  DtString name;  ///< The representation's name.
  /// The size, as far as convertStringToULong read its text; 0 when not given.
  unsigned long size = 0;
  DtString interpretation;  ///< The text given for the interpretation.
  int32_t endian = 0;       ///< 0 not given, 1 Big, 2 Little
  DtString encoding;        ///< The text given for the encoding.
};

/// One simple data type, handed to DtFedTarget::addSimpleDatatype, which then owns it.
struct DtSimpleDatatypeType {
  /// The texts given for the type's name, representation, units, resolution, accuracy and
  /// semantics.
  /// @{
  DtString name;
  DtString representation;
  DtString units;
  DtString resolution;
  DtString accuracy;
  DtString semantics;
  /// @}
};

/// One enumerator of an enumerated data type, shared by the record that holds it.
struct DtEnumeratorType {
  DtString name;    ///< The enumerator's name.
  DtString values;  ///< The text of its value, or of its values, as given.
};

/// One enumerated data type, handed to DtFedTarget::addEnumeratedDatatype, which then owns it.
struct DtEnumeratedDatatypeType {
  /// The texts given for the type's name and representation.
  /// @{
  DtString name;
  DtString representation;
  /// @}
  /// One record per enumerator element. The set orders them by address, not as the document
  /// gives them.
  std::set<std::shared_ptr<DtEnumeratorType>> enumerators;
  DtString semantics;  ///< The text given for the type's semantics.
};

/// One array data type, handed to DtFedTarget::addArrayDatatype, which then owns it.
struct DtArrayDatatypeType {
  /// The texts given for the type's name, data type, cardinality, encoding and semantics, kept
  /// as they stand (the cardinality is not parsed).
  /// @{
  DtString name;
  DtString dataType;
  DtString cardinality;
  DtString encoding;
  DtString semantics;
  /// @}
};

/// One field of a fixed record data type, shared by the record that holds it.
struct DtFieldType {
  /// The texts given for the field's name, data type and semantics.
  /// @{
  DtString name;
  DtString dataType;
  DtString semantics;
  /// @}
};

/// One fixed record data type, handed to DtFedTarget::addFixedRecordDatatype, which then owns
/// it.
struct DtFixedRecordDatatypeType {
  /// The texts given for the type's name, encoding and semantics.
  /// @{
  DtString name;
  DtString encoding;
  DtString semantics;
  /// @}
  /// One record per field element. The set orders them by address, not as the document gives
  /// them.
  std::set<std::shared_ptr<DtFieldType>> fields;
};

/// One alternative of a variant record data type, shared by the record that holds it.
struct DtAlternativeType {
  /// The texts given for the alternative's enumerator, name, data type and semantics.
  /// @{
  DtString enumerator;
  DtString name;
  DtString dataType;
  DtString semantics;
  /// @}
};

/// One variant record data type, handed to DtFedTarget::addVariantRecordDatatype, which then
/// owns it.
struct DtVariantRecordDatatypeType {
  /// The texts given for the type's name, discriminant and data type.
  /// @{
  DtString name;
  DtString discriminant;
  DtString dataType;
  /// @}
  /// One record per alternative element. The set orders them by address, not as the document
  /// gives them.
  std::set<std::shared_ptr<DtAlternativeType>> alternatives;
  /// The texts given for the type's encoding and semantics.
  /// @{
  DtString encoding;
  DtString semantics;
  /// @}
};

/// One note of the notes section, handed to DtFedTarget::addNote, which then owns it.
struct DtNotesType {
  /// The note's label; DtFedReader1516 takes it from the name attribute.
  DtString label;
  DtString semantics;  ///< The text of the note.
};

/// One update rate, handed to DtFedTarget::addUpdateRate, which then owns it. Only
/// DtFedReader1516e and DtFedReader1516_4 read update rates.
struct DtUpdateRateType {
  DtString name;  ///< The rate's name.
  /// The rate element read as a float; 0 when it is empty or does not start with a number.
  float rate = 0.0f;
  DtString semantics;  ///< The text given for the rate's semantics.
};

// The vocabulary of the object model documents: every element, attribute and value name that
// the XML readers compare against. Readers compare against these names, never against literals.

/// Dialect marks: fomType(xmlNode*) looks for them in the namespace of the root element,
/// the first two for DtFomTypeEvolved, the last for DtFomType2025.
/// @{
inline constexpr const char* IEEE1516_2009 = "IEEE1516-2009";
inline constexpr const char* IEEE1516_2010 = "IEEE1516-2010";
inline constexpr const char* IEEE1516_2025 = "IEEE1516-2025";
/// @}

/// Element names of the documents (schemaLocation, an attribute of the root, too).
/// @{
inline constexpr const char* tagDocumentType = "objectModel";
inline constexpr const char* tagObjectModel = "objectModel";
inline constexpr const char* tagModelIdentification = "modelIdentification";
inline constexpr const char* tagReferenceType = "type";
inline constexpr const char* tagReferenceIdentification = "identification";
inline constexpr const char* tagObjects = "objects";
inline constexpr const char* tagInteractions = "interactions";
inline constexpr const char* tagTransportations = "transportations";
inline constexpr const char* tagDataTypes = "dataTypes";
inline constexpr const char* tagNotes = "notes";
inline constexpr const char* tagTags = "tags";
inline constexpr const char* tagSwitches = "switches";
inline constexpr const char* tagDimensions = "dimensions";
inline constexpr const char* tagTime = "time";
inline constexpr const char* tagSynchronizations = "synchronizations";
inline constexpr const char* tagSchemaLocation = "schemaLocation";
inline constexpr const char* tagObjectClass = "objectClass";
inline constexpr const char* tagAttribute = "attribute";
inline constexpr const char* tagInteractClass = "interactionClass";
inline constexpr const char* tagParameter = "parameter";
inline constexpr const char* tagTransport = "transportation";
inline constexpr const char* tagBasicDataReps = "basicDataRepresentations";
inline constexpr const char* tagBasicData = "basicData";
inline constexpr const char* tagSimpleDataTypes = "simpleDataTypes";
inline constexpr const char* tagSimpleData = "simpleData";
inline constexpr const char* tagReferenceDataTypes = "referenceDataTypes";
inline constexpr const char* tagReferenceData = "referenceDataType";
inline constexpr const char* tagEnumDataTypes = "enumeratedDataTypes";
inline constexpr const char* tagEnumData = "enumeratedData";
inline constexpr const char* tagEnumerator = "enumerator";
inline constexpr const char* tagArrayDataTypes = "arrayDataTypes";
inline constexpr const char* tagArrayData = "arrayData";
inline constexpr const char* tagFixedRecDataTypes = "fixedRecordDataTypes";
inline constexpr const char* tagFixedRecData = "fixedRecordData";
inline constexpr const char* tagFixedRecField = "field";
inline constexpr const char* tagVarRecDataTypes = "variantRecordDataTypes";
inline constexpr const char* tagVarRecData = "variantRecordData";
inline constexpr const char* tagVarRecAlternative = "alternative";
inline constexpr const char* tagNote = "note";
inline constexpr const char* tagUpdateRates = "updateRates";
inline constexpr const char* tagSingleUpdateRate = "updateRate";
/// @}

/// Attribute and child-element names: DtFedReader1516 reads these items as attributes,
/// DtFedReader1516e and DtFedReader1516_4 as child elements.
/// @{
inline constexpr const char* attrAccuracy = "accuracy";
inline constexpr const char* attrAccuracyNotes = "accuracyNotes";
inline constexpr const char* attrAppDomain = "appDomain";
inline constexpr const char* attrCapability = "capability";
inline constexpr const char* attrCapabilityNotes = "capabilityNotes";
inline constexpr const char* attrCardinality = "cardinality";
inline constexpr const char* attrCardinalityNotes = "cardinalityNotes";
inline constexpr const char* attrDate = "date";
inline constexpr const char* attrDataType = "dataType";
inline constexpr const char* attrDTDversion = "DTDversion";
inline constexpr const char* attrDataTypeNotes = "dataTypeNotes";
inline constexpr const char* attrDescription = "description";
inline constexpr const char* attrDescriptionNotes = "descriptionNotes";
inline constexpr const char* attrDimension = "dimension";
inline constexpr const char* attrDimensions = "dimensions";
inline constexpr const char* attrDiscriminant = "discriminant";
inline constexpr const char* attrDiscriminantNotes = "discriminantNotes";
inline constexpr const char* attrEncoding = "encoding";
inline constexpr const char* attrEncodingNotes = "encodingNotes";
inline constexpr const char* attrEndian = "endian";
inline constexpr const char* attrEndianNotes = "endianNotes";
inline constexpr const char* attrEnumerator = "enumerator";
inline constexpr const char* attrEnumeratorNotes = "enumeratorNotes";
inline constexpr const char* attrInterpretation = "interpretation";
inline constexpr const char* attrInterpretationNotes = "interpretationNotes";
inline constexpr const char* attrIsEnabled = "isEnabled";
inline constexpr const char* attrLabel = "label";
inline constexpr const char* attrLabelNotes = "labelNotes";
inline constexpr const char* attrLogicalTime = "logicalTime";
inline constexpr const char* attrLogicalTimeInterval = "logicalTimeInterval";
inline constexpr const char* attrLookahead = "lookahead";
inline constexpr const char* attrName = "name";
inline constexpr const char* attrNameNotes = "nameNotes";
inline constexpr const char* attrNormalization = "normalization";
inline constexpr const char* attrOrder = "order";
inline constexpr const char* attrOther = "other";
inline constexpr const char* attrOwnership = "ownership";
inline constexpr const char* attrPocEmail = "pocEmail";
inline constexpr const char* attrPocName = "pocName";
inline constexpr const char* attrPocOrg = "pocOrg";
inline constexpr const char* attrPocPhone = "pocPhone";
inline constexpr const char* attrPocType = "pocType";
inline constexpr const char* attrPurpose = "purpose";
inline constexpr const char* attrReferences = "reference";
inline constexpr const char* attrReliable = "reliable";
inline constexpr const char* attrRepresentation = "representation";
inline constexpr const char* attrRepresentationNotes = "representationNotes";
inline constexpr const char* attrResignAction = "resignAction";
inline constexpr const char* attrResolution = "resolution";
inline constexpr const char* attrResolutionNotes = "resolutionNotes";
inline constexpr const char* attrSemantics = "semantics";
inline constexpr const char* attrSemanticsNotes = "semanticsNotes";
inline constexpr const char* attrSharing = "sharing";
inline constexpr const char* attrSize = "size";
inline constexpr const char* attrSizeNotes = "sizeNotes";
inline constexpr const char* attrSponsor = "sponsor";
inline constexpr const char* attrSynchronization = "synchronization";
inline constexpr const char* attrTimeStamp = "timeStamp";
inline constexpr const char* attrTransport = "transportation";
inline constexpr const char* attrText = "text";
inline constexpr const char* attrType = "type";
inline constexpr const char* attrUnits = "units";
inline constexpr const char* attrUnitsNotes = "unitsNotes";
inline constexpr const char* attrUpdateCond = "updateCondition";
inline constexpr const char* attrUpdateType = "updateType";
inline constexpr const char* attrUpperBound = "upperBound";
inline constexpr const char* attrValue = "value";
inline constexpr const char* attrValues = "values";
inline constexpr const char* attrValuesNotes = "valuesNotes";
inline constexpr const char* attrVersion = "version";
inline constexpr const char* attrAutoProvide = "autoProvide";
inline constexpr const char* attrConveyProducingFederate = "conveyProducingFederate";
inline constexpr const char* attrConveyRegionDesignatorSets = "conveyRegionDesignatorSets";
inline constexpr const char* attrAttributeRelevanceAdvisory = "attributeRelevanceAdvisory";
inline constexpr const char* attrAttributeScopeAdvisory = "attributeScopeAdvisory";
inline constexpr const char* attrObjectClassRelevanceAdvisory = "objectClassRelevanceAdvisory";
inline constexpr const char* attrInteractionRelevanceAdvisory = "interactionRelevanceAdvisory";
inline constexpr const char* attrServiceReporting = "serviceReporting";
inline constexpr const char* attrExceptionReporting = "exceptionReporting";
inline constexpr const char* attrDelaySubscriptionEvaluation = "delaySubscriptionEvaluation";
inline constexpr const char* attrNonRegulatedGrant = "nonRegulatedGrant";
inline constexpr const char* attrAutomaticResignAction = "automaticResignAction";
inline constexpr const char* attrSendServiceReportsToFile = "sendServiceReportsToFile";
inline constexpr const char* attrAdvisoriesUseKnownClass = "advisoriesUseKnownClass";
inline constexpr const char* attrAllowRelaxedDdm = "allowRelaxedDdm";
inline constexpr const char* attrSynchronizationPoint = "synchronizationPoint";
inline constexpr const char* attrUseLimitation = "useLimitation";
inline constexpr const char* attrUseHistory = "useHistory";
/// @}

/// Values: the words that the readers compare the text of an attribute or element against.
/// @{
inline constexpr const char* valueSharingPublish = "Publish";
inline constexpr const char* valueSharingSubscribe = "Subscribe";
inline constexpr const char* valueSharingPublishSubscribe = "PublishSubscribe";
inline constexpr const char* valueSharingNeither = "Neither";
inline constexpr const char* valueOwnershipDivest = "Divest";
inline constexpr const char* valueOwnershipAcquire = "Acquire";
inline constexpr const char* valueOwnershipDivestAcquire = "DivestAcquire";
inline constexpr const char* valueOwnershipNoTransfer = "NoTransfer";
inline constexpr const char* valueDimensionsNA = "NA";
inline constexpr const char* valueFomUpdateTypeStatic = "Static";
inline constexpr const char* valueFomUpdateTypePeriodic = "Periodic";
inline constexpr const char* valueFomUpdateTypeConditional = "Conditional";
inline constexpr const char* valueFomUpdateTypeNA = "NA";
inline constexpr const char* valueObjectRoot = "HLAobjectRoot";
inline constexpr const char* valueInteractionRoot = "HLAinteractionRoot";
inline constexpr const char* valuePrivilegeToDelete = "HLAprivilegeToDelete";
inline constexpr const char* valueEnabled = "Enabled";
inline constexpr const char* valueTransportBestEffort = "HLAbestEffort";
inline constexpr const char* valueTransportReliable = "HLAreliable";
inline constexpr const char* valueOrderReceive = "Receive";
inline constexpr const char* valueOrderTimeStamp = "TimeStamp";
inline constexpr const char* valueIsEnabled = "isEnabled";
inline constexpr const char* valueDisabled = "Disabled";
inline constexpr const char* valueTrue = "true";
inline constexpr const char* valueFalse = "false";
inline constexpr const char* valueYes = "Yes";
inline constexpr const char* valueNo = "No";
inline constexpr const char* valueResignAction = "resignAction";
inline constexpr const char* valueUnconditionallyDivestAttributes =
    "UnconditionallyDivestAttributes";
inline constexpr const char* valueDeleteObjects = "DeleteObjects";
inline constexpr const char* valueCancelPendingOwnershipAcquisitions =
    "CancelPendingOwnershipAcquisitions";
inline constexpr const char* valueDeleteObjectsThenDivest = "DeleteObjectsThenDivest";
inline constexpr const char* valueCancelThenDeleteThenDivest = "CancelThenDeleteThenDivest";
inline constexpr const char* valueNoAction = "NoAction";
inline constexpr const char* valueRegister = "Register";
inline constexpr const char* valueAchieve = "Achieve";
inline constexpr const char* valueRegisterAchieve = "RegisterAchieve";
inline constexpr const char* valueNoSynch = "NoSynch";
inline constexpr const char* valueNA = "NA";
inline constexpr const char* valueBig = "Big";
inline constexpr const char* valueLittle = "Little";
/// @}

/// The object model namespaces (no reader compares against them).
/// @{
inline constexpr const char* xmlns_HLA1516_2010 = "http://standards.ieee.org/IEEE1516-2010";
inline constexpr const char* xmlns_HLA1516_2025 = "http://standards.ieee.org/IEEE1516-2025";
/// @}

/// Base of the three XML readers: the parser set-up, the format test on a document root, and the
/// helpers that read a libxml2 node. Every parse... and process... operation answers 0 to go on
/// or 2 to stop the walk; the walks are virtual so that a dialect, or a host, can replace one
/// section and keep the rest.
///
/// Construction sets libxml2's process-wide xmlKeepBlanksDefault(0), and the dialect readers'
/// destructors call xmlCleanupParser: neither may overlap XML parsing in another thread.
class DtXmlFedReader : public DtFedReader {
 public:
  DtXmlFedReader();
  ~DtXmlFedReader() override;

  /// The walks of a document, in the order of their slots. Each reads the element at node (the
  /// document element for processFed) and answers 0 to go on or 2 to stop; parentName is the
  /// full dotted name of the enclosing class (the null text at the root), className that of the
  /// class being read.
  /// @{
  virtual int processFed(xmlNode* root) = 0;
  virtual int parseTransportationsList(xmlNode* node) = 0;
  virtual int processObjects(xmlNode* node) = 0;
  virtual int processInteractions(xmlNode* node) = 0;
  virtual int parseObjectTree(xmlNode* node, const DtString& parentName) = 0;
  virtual int parseAttribute(xmlNode* node, const DtString& className) = 0;
  virtual int parseAttributeDimensions(xmlNode* node, const DtString& className,
                                       const DtString& attributeName) = 0;
  virtual int parseInteractionTree(xmlNode* node, const DtString& parentName) = 0;
  virtual int parseInteractionDimensions(xmlNode* node, const DtString& className) = 0;
  virtual int parseDimensionList(xmlNode* node) = 0;
  virtual int parseDimension(xmlNode* node) = 0;
  virtual int parseSwitches(xmlNode* node) = 0;
  virtual int parseParameter(xmlNode* node, const DtString& className) = 0;
  /// @}
  /// Logs a transportations section of the attribute form; no dialect calls it. A child other
  /// than a transportation sets lastErrorText and answers 2 under DtStrictUnexpectedContent.
  virtual int parseTransportationTree(xmlNode* node);
  /// The walks of the data types, notes and tags sections and of each kind of data type, as
  /// above: 0 to go on, 2 to stop.
  /// @{
  virtual int parseDataTypeTree(xmlNode* node) = 0;
  virtual int parseNotesTree(xmlNode* node) = 0;
  virtual int parseTagsTree(xmlNode* node) = 0;
  virtual int parseBasicDataTypesTree(xmlNode* node) = 0;
  virtual int parseSimpleDataTypesTree(xmlNode* node) = 0;
  virtual int parseArrayDataTypesTree(xmlNode* node) = 0;
  virtual int parseEnumeratedDataTypesTree(xmlNode* node) = 0;
  virtual int parseFixedRecordDataTypesTree(xmlNode* node) = 0;
  virtual int parseVariantRecordDataTypesTree(xmlNode* node) = 0;
  /// @}

  // Node helpers.
  /// Appends "name= value\n" for each attribute of node ("name\n" for one with no value).
  virtual void appendNodeProperties(xmlNode* node, DtString& text) const;
  /// Appends the node's name, " " and its content, each "*" when missing.
  virtual void appendNodeContent(xmlNode* node, DtString& text) const;
  /// A text node with no content or with only blanks, tabs and line ends.
  virtual bool isBlankText(xmlNode* node) const;
  /// A comment or blank text (by isBlankText): what the walks pass over.
  bool isCommentOrBlank(xmlNode* node) const;
  /// The text of node's attribute of this name; "" for an attribute with an empty value, null
  /// when there is no such attribute.
  virtual const char* propertyByName(xmlNode* node, const xmlChar* name);
  /// value becomes the attribute's text, or "" when there is none; answers whether it exists.
  virtual bool getPropertyByName(xmlNode* node, const xmlChar* name, DtString& value);
  /// value becomes the content of node's first child when there is one with content, and
  /// answers true; otherwise value keeps what it held and the answer is false.
  virtual bool getChildrenContent(xmlNode* node, DtString& value) const;
  /// The same content as a text, or "" where getChildrenContent answers false.
  virtual DtString childrenContent(xmlNode* node) const;
  /// value becomes the text of the first child element of this name whose first child is a text
  /// node (as childContentByName finds it), or ""; answers whether there is one.
  virtual bool getChildContentByName(xmlNode* node, const xmlChar* name, DtString& value);
  /// Digits only: false for "", for a sign, a blank or any other character. value gets what a
  /// stream read all the same ("12a" gives 12 and false).
  virtual bool convertStringToULong(std::string text, unsigned long& value);

  /// The format of an open XML file (a FILE*), told by its root element; 0 if not recognised
  /// or unreadable. The file is left open, and rewound once it was read.
  static DtFomType fomType(void* file);
  /// The format told by a root element: 3 or 4 by the namespace, 2 by the attributes of the
  /// root or of its first transportation, else 0.
  static DtFomType fomType(xmlNode* root);
  /// The text of the first child element of this name whose first child is a text node ("" when
  /// that node has no content); null if there is none.
  static const char* childContentByName(xmlNode* node, const xmlChar* name);
  /// The first child of node with this name, of whatever node type; null if none.
  static xmlNode* getNodeByName(xmlNode* node, const xmlChar* name);

  /// Erases the leading run of c; a text made only of c is left as it is.
  template <typename String, typename Char>
  void clipPrefix(String& text, Char c) {
    size_t run = 0;
    size_t size = static_cast<size_t>(text.size());
    while (run < size && text[run] == c) ++run;
    if (run > 0 && run < size) text.erase(0, run);
  }

  /// Writes the attributes of node to DtVerbose as appendNodeProperties gives them, followed by
  /// " \n\n"; nothing is made when DtVerbose is off.
  void logNodeProperties(xmlNode* node) const;

  /// valueObjectRoot, valuePrivilegeToDelete and valueEnabled as texts, for comparisons.
  /// @{
  static const DtString theValueObjectRoot;
  static const DtString theValuePrivilegeToDelete;
  static const DtString theValueEnabled;
  /// @}

 protected:
  /// The walk shared by the sections whose elements each become one record.
  struct RecordWalk;

  /// The target of the read, null before the first read; not owned. The XML walks go through
  /// this one and leave DtFedReader's unused.
  DtFedTarget* target;
  /// The name of the file being read.
  DtFilename fileName;
};

}  // namespace KORRti

KTL_API_END

#endif
