#ifndef KTL_FEDREADER_H
#define KTL_FEDREADER_H

#include <util/export.h>
#include <cstdint>
#include <cstdio>
#include <map>
#include <vector>

#include <util/dtFilename.h>
#include <util/dtString.h>

KTL_API_BEGIN

struct _xmlNode;

namespace KORRti {

/// The format of a FOM file. 0 also answers "could not be told".
enum DtFomType : int32_t {
  DtFomTypeUnknown = 0,  ///< not known, or the file could not be opened
  DtFomType13 = 1,       ///< the 1.3 FED text form (DtFedReader13, DtKtlFedReader)
  DtFomType1516 = 2,     ///< the XML form with a DTD and values in attributes (DtFedReader1516)
  DtFomTypeEvolved = 3,  ///< the XML form with a schema and values in elements (DtFedReader1516e)
  DtFomType2025 = 4      ///< the newest XML form (DtFedReader1516_4)
};

/// The name of a format in reports: "Unknown", "1.3", "1516", "HLA Evolved", "HLA 4"; "Unknown"
/// for any value outside the enumeration.
const char* DtFomTypeName(DtFomType type);

/// 0 best effort, 1 reliable, -1 not given or invalid.
typedef int32_t DtTransportType;
const DtTransportType DtTransportInvalid = -1;    ///< not given, or not a known name
const DtTransportType DtTransportBestEffort = 0;  ///< best effort
const DtTransportType DtTransportReliable = 1;    ///< reliable

/// 0 receive, 1 timestamp, -1 not given.
typedef int32_t DtOrderType;
const DtOrderType DtOrderInvalid = -1;   ///< not given, or not a known name
const DtOrderType DtOrderReceive = 0;    ///< receive order
const DtOrderType DtOrderTimestamp = 1;  ///< timestamp order

/// How an attribute may be shared, as the XML readers hand it to addAttribute.
enum DtSharingType_enum : int32_t {
  DtSharingPublishSubscribe = 0,  ///< published and subscribed; the default when not given
  DtSharingPublish = 1,           ///< published only
  DtSharingSubscribe = 2,         ///< subscribed only
  DtSharingNeither = 3,           ///< neither
  DtSharingInvalid = 4            ///< a word that is none of these; never handed to a target
};

/// The ownership transfers an attribute allows, as the XML readers hand it to addAttribute.
enum DtOwnershipType_enum : int32_t {
  DtOwnershipDivest = 0,         ///< divest only
  DtOwnershipAcquire = 1,        ///< acquire only
  DtOwnershipDivestAcquire = 2,  ///< divest and acquire
  DtOwnershipNoTransfer = 3      ///< no transfer; the default when not given or not known
};

/// How an attribute is updated, as the XML readers hand it to addAttribute.
enum DtFomUpdateType_enum : int32_t {
  DtFomUpdateStatic = 0,       ///< static
  DtFomUpdatePeriodic = 1,     ///< periodic
  DtFomUpdateConditional = 2,  ///< conditional, on the attribute's update condition
  DtFomUpdateNA = 3            ///< not applicable; the default when not given or not known
};

/// The standard MIM documents of IEEE 1516-2010 (theHLAeStandardMIM_xml) and IEEE 1516-2025
/// (theHLA4StandardMIM_xml), held by the library as the bytes of the published files, with their
/// byte counts. Neither array is null-terminated: read them only with their lengths (for
/// instance xmlReadMemory), never as C strings.
/// @{
extern unsigned char theHLAeStandardMIM_xml[];
extern unsigned int theHLAeStandardMIM_xml_len;
extern unsigned char theHLA4StandardMIM_xml[];
extern unsigned int theHLA4StandardMIM_xml_len;
/// @}

/// The result of a read, and the status of each step of a reader's walk: DtFedOk goes on,
/// DtFedFailed stops the walk.
enum DtFedResult : int { DtFedOk = 0, DtFedNoFile = 1, DtFedFailed = 2 };
/// @var DtFedOk
/// Read; for a step, go on.
/// @var DtFedNoFile
/// No file to read.
/// @var DtFedFailed
/// The file is wrong or the target refused it; lastError() says why. For a step, stop.

/// Bits of the strict-checking mask passed to readFed.
const unsigned int DtStrictUnexpectedContent = 1;  ///< unexpected XML content fails the read
const unsigned int DtStrictMissingTables = 2;      ///< missing tables fail a 1516-2010 read

/// The records of an XML object model document, defined with the XML readers
/// (ktl/xmlFedReader.h).
struct DtUpdateRateType;
struct DtSynchronizationPointsType;
struct DtTransportationType;
struct DtUserSuppliedTagsType;
struct DtNotesType;
struct DtTimeType;
struct DtBasicDataRepresentationType;
struct DtSimpleDatatypeType;
struct DtEnumeratedDatatypeType;
struct DtArrayDatatypeType;
struct DtFixedRecordDatatypeType;
struct DtVariantRecordDatatypeType;

/// What a FOM reader delivers a model to. A host derives from it and overrides what it wants
/// to keep; every operation has a harmless default: adds accept and forget (records handed
/// over are deleted), duplicate tests answer false, the format and the switches are kept.
/// Names are only valid during the call: a target that keeps one copies it.
class DtFedTarget {
 public:
  /// A target with the format DtFomTypeUnknown and no switches.
  DtFedTarget();
  /// The readers never delete a target: it stays its host's.
  virtual ~DtFedTarget();

  /// The format of the model. A reader sets it before it delivers anything, and readFed asks
  /// for it before a read to know the standard MIM's file name. The default keeps what it is
  /// given.
  /// @{
  virtual void setFomType(DtFomType type);
  virtual DtFomType fomType();
  /// @}

  /// The model itself: spaces, dimensions, classes, attributes and parameters. Class names are
  /// full dotted paths, parents come before their children, and parentName is null at the root.
  /// The 1.3 readers use the space operations (addSpace, addSpaceDimension, addSpaceAttribute
  /// and the spaceName of addInteractionClass), the XML readers the dimension ones; reserved is
  /// always null. Each answers whether the target took the item; the default always does. What
  /// a refusal does is up to the reader: DtFedReader13 and the XML readers offer a refused root
  /// class again under the other root name, and most other refused classes fail the read.
  /// @{
  virtual bool addSpace(const char* spaceName);
  virtual bool addSpaceDimension(const char* spaceName, const char* dimensionName);
  virtual bool addDimension(const char* name, unsigned long upperBound, unsigned long rangeLower,
                            unsigned long rangeUpper, bool excluded, const DtString& normalization);
  virtual bool addInteractionClass(const char* className, const char* parentName,
                                   DtTransportType transport, DtOrderType order,
                                   const char* spaceName);
  virtual bool addParameter(const char* className, const char* parameterName);
  virtual bool addInteractionDimension(const char* className, const char* dimensionName);
  virtual bool addObjectClass(const char* className, const char* parentName);
  virtual bool addObjectClassDimension(const char* className, const char* dimensionName);
  virtual bool addAttribute(const char* className, const char* attributeName,
                            DtTransportType transport, DtOrderType order,
                            DtSharingType_enum sharing, DtFomUpdateType_enum updateType,
                            const DtString& updateCondition, DtOwnershipType_enum ownership,
                            const DtString& semantics, void* reserved);
  virtual bool addSpaceAttribute(const char* className, const char* attributeName,
                                 DtTransportType transport, DtOrderType order,
                                 const char* spaceName);
  virtual bool addAttributeDimension(const char* className, const char* attributeName,
                                     const char* dimensionName);
  /// @}

  /// The switches that have a setter of their own. DtFedReader1516 calls the first seven after
  /// its switches section, with switchValue(); DtFedReader1516e calls setAutomaticResignAction
  /// with the number of the action read (0 to 5, in the order of the document's words). Each
  /// answers whether the target took the value; the default takes it and keeps nothing.
  /// @{
  virtual bool setAutoProvide(bool value);
  virtual bool setConveyRegionDesignatorSets(bool value);
  virtual bool setAttributeScopeAdvisory(bool value);
  virtual bool setAttributeRelevanceAdvisory(bool value);
  virtual bool setObjectClassRelevanceAdvisory(bool value);
  virtual bool setInteractionRelevanceAdvisory(bool value);
  virtual bool setServiceReporting(bool value);
  virtual bool setAutomaticResignAction(int action);
  /// @}

  /// The records of an XML document. An add... operation takes record, which is then the
  /// target's to delete (the default deletes it at once), and answers whether it was taken. The
  /// matching has... operation answers whether the target already has an equal record (the
  /// default: false); the readers add a record only when it answers false, and delete it
  /// themselves otherwise.
  /// @{
  virtual bool addUpdateRate(DtUpdateRateType* record);
  virtual bool hasUpdateRate(const DtUpdateRateType& record);
  virtual bool addSynchronizationPoint(DtSynchronizationPointsType* record);
  virtual bool hasSynchronizationPoint(const DtSynchronizationPointsType& record);
  virtual bool addTransportation(DtTransportationType* record);
  virtual bool hasTransportation(const DtTransportationType& record);
  /// @}
  /// The transport of a declared transportation, asked for by a class or attribute that names
  /// it. The default reads record.reliable: DtTransportReliable or DtTransportBestEffort.
  virtual DtTransportType transportationType(const DtTransportationType& record);
  /// More records, as for addUpdateRate above.
  /// @{
  virtual bool addUserSuppliedTag(DtUserSuppliedTagsType* record);
  virtual bool hasUserSuppliedTag(const DtUserSuppliedTagsType& record);
  virtual bool addNote(DtNotesType* record);
  virtual bool hasNote(const DtNotesType& record);
  /// @}

  /// The switches by name, as the XML readers find them. setSwitch keeps a value (the default
  /// keeps it in a map and answers true); hasSwitch tells whether one was set; isKnownSwitch
  /// whether the name is one of the switches the library knows (a reader ignores the others);
  /// switchValue gives the value set, false when none was.
  /// @{
  virtual bool setSwitch(const DtString& switchName, bool value);
  virtual bool hasSwitch(const DtString& switchName);
  virtual bool isKnownSwitch(const DtString& switchName);
  virtual bool switchValue(const DtString& switchName);
  /// @}

  /// More records, as for addUpdateRate above.
  /// @{
  virtual bool addTime(DtTimeType* record);
  virtual bool hasTime(const DtTimeType& record);
  virtual bool addBasicDataRepresentation(DtBasicDataRepresentationType* record);
  virtual bool hasBasicDataRepresentation(const DtBasicDataRepresentationType& record);
  virtual bool addSimpleDatatype(DtSimpleDatatypeType* record);
  virtual bool hasSimpleDatatype(const DtSimpleDatatypeType& record);
  virtual bool addEnumeratedDatatype(DtEnumeratedDatatypeType* record);
  virtual bool hasEnumeratedDatatype(const DtEnumeratedDatatypeType& record);
  virtual bool addArrayDatatype(DtArrayDatatypeType* record);
  virtual bool hasArrayDatatype(const DtArrayDatatypeType& record);
  virtual bool addFixedRecordDatatype(DtFixedRecordDatatypeType* record);
  /// @}
  /// The one duplicate test that takes its record by value.
  virtual bool hasFixedRecordDatatype(DtFixedRecordDatatypeType record);
  /// More records, as for addUpdateRate above.
  /// @{
  virtual bool addVariantRecordDatatype(DtVariantRecordDatatypeType* record);
  virtual bool hasVariantRecordDatatype(const DtVariantRecordDatatypeType& record);
  /// @}

  /// The model identification of a module, from DtFedReader1516e: its name and the names of
  /// the modules it depends on (setFomDependencies only when there are some), as DtFomSorter
  /// takes them. The defaults answer true and keep nothing.
  /// @{
  virtual bool setFomName(const char* moduleName);
  virtual bool setFomDependencies(const std::vector<DtString>& moduleNames);
  /// @}
  /// A transportation that a class (className) or attribute (attributeName of className) names
  /// but the target does not have yet. DtFedReader1516e hands it over only under strict bit 1,
  /// and leaves the transport it had; the target may resolve it once a later module declares
  /// it. The defaults answer true and forget it.
  /// @{
  virtual bool addUnresolvedAttributeTransportation(const DtTransportationType& record,
                                                    const DtString& className,
                                                    const DtString& attributeName);
  virtual bool addUnresolvedInteractionTransportation(const DtTransportationType& record,
                                                      const DtString& className);
  /// @}

 private:
  DtFomType heldFomType;
  std::map<DtString, bool> switches;
};

/// Base of every FOM reader: finding and opening the file, telling its format, its bytes, the
/// last error and the strict-checking mask. A read answers 0 (read), 1 (no file) or 2 (the
/// file is wrong; lastError() says why).
class DtFedReader {
 public:
  /// A reader with no target, no text, an empty mask and the format DtFomTypeUnknown.
  DtFedReader();
  /// Frees the text of the last file read, unless it was taken.
  virtual ~DtFedReader();
  DtFedReader(const DtFedReader&) = delete;             ///< A reader is not copied.
  DtFedReader& operator=(const DtFedReader&) = delete;  ///< A reader is not copied.

  /// Opens fileName (see openFedFile), reads it with readFedFilePtr and closes it. Answers 2
  /// ("No FED target given") without a target. A file that can't be opened answers 1, unless
  /// its base name is the standard MIM name of the target's format: readFedFilePtr then gets a
  /// null file and may read its own copy.
  virtual int readFed(const char* fileName, DtFedTarget* target, unsigned int strictChecking,
                      bool validate, bool skipSwitches);
  /// Reads an open file into target, which the reader keeps (not owns) for the read, with the
  /// strict-checking mask; skipSwitches leaves the switches section unread, and validate asks
  /// for validation where the reader knows it. fileName is the name the file was opened by.
  /// Answers 0, 1 or 2 (DtFedResult). The file stays open for the caller to close.
  virtual int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName,
                             unsigned int strictChecking, bool validate, bool skipSwitches) = 0;
  /// openFedFile; on failure sets lastError() to "No such FED file: " and the name, and answers
  /// null. The caller closes the file.
  virtual FILE* openFedFileWithErrCheck(const char* fileName, bool binary);
  /// Sets the strict-checking mask and answers the one before. A read sets its own mask.
  virtual unsigned int setStrictChecking(unsigned int mask);
  /// True if any bit of bit is set in the strict-checking mask.
  virtual bool strictChecking(unsigned int bit) const;
  /// The format a reader is for; each reader sets its own when it is built. Changing it does
  /// not change what the reader reads.
  /// @{
  virtual void setExpectedFomType(DtFomType type);
  virtual DtFomType expectedFomType() const;
  /// @}
  /// The format of the last read. No reader sets it yet: it is always DtFomTypeUnknown.
  virtual DtFomType lastFomType() const;
  /// The last error or warning of a read. A read does not clear it first, so after a read that
  /// answers 0 it may hold a warning, or an older text.
  virtual const DtString& lastError() const;

  /// Hands over the bytes of the last file read; the caller frees them with delete[].
  char* takeCurrFddData();
  /// Appends " at XML Node <name> near line <line>" to text.
  void appendErrorLine(_xmlNode* node, DtString& text) const;

  /// Opens a file, looking for it in the directories of "RTI_CONFIG" first.
  static FILE* openFedFile(const char* fileName, bool binary);
  /// The format of a file, by extension and, for XML, by content; 0 if it can't be opened.
  static DtFomType checkFomType(const char* fileName);
  /// The format of file (a FILE*), opened as fileName: 1 for the extensions "ktl", "fed" and
  /// "omt"; for "xml" and "fdd" what the content says, 4 when it says nothing known. A name
  /// with no extension answers 3 and any other extension 4, each with a warning.
  static DtFomType checkFomType(const char* fileName, void* file);
  /// The file name of the standard MIM of a format: theHlaEvolvedStandardMimFileName for 3,
  /// theHla4StandardMimFileName for 4 and theInvalidStandardMimFileName for any other.
  static const DtString& standardMimFileName(DtFomType type);
  /// True if name is standardMimFileName(type), compared with case and with no path.
  static bool isStandardMimFileName(const DtString& name, DtFomType type);
  /// Reads a whole file from its start into a new[] buffer. The text is followed by a
  /// terminator that *size does not count.
  static bool readFileIntoBuffer(FILE* file, char** buffer, unsigned int* size);

  static const DtString theHlaEvolvedStandardMimFileName;  ///< "HLAstandardMIM.xml"
  static const DtString theHla4StandardMimFileName;        ///< "HLAstandardMIM-2025.xml"
  /// "HLAinvalidStandardMIM.xml": the name for formats that have no standard MIM.
  static const DtString theInvalidStandardMimFileName;

 protected:
  /// The text of the last file read, from readFileIntoBuffer; the reader's until the next read,
  /// its destructor or takeCurrFddData. Null when there is none.
  char* currFddData;
  unsigned int currFddSize;         ///< The byte count of currFddData, terminator not counted.
  DtFedTarget* target;              ///< The target of the current read; not owned.
  unsigned int strictCheckingMask;  ///< The strict-checking bits of the current read.
  bool skipSwitches;                ///< The current read leaves the switches unread.
  DtFomType expectedType;           ///< What expectedFomType() answers.
  DtFomType lastType;               ///< What lastFomType() answers.
  DtString lastErrorText;           ///< What lastError() answers.
};

}  // namespace KORRti

KTL_API_END

#endif
