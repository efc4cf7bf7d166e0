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
  DtFomTypeUnknown = 0,
  DtFomType13 = 1,
  DtFomType1516 = 2,
  DtFomTypeEvolved = 3,
  DtFomType2025 = 4
};

/// The name of a format in reports: "Unknown", "1.3", "1516", "HLA Evolved", "HLA 4"; "Unknown"
/// for any value outside the enumeration.
const char* DtFomTypeName(DtFomType type);

/// 0 best effort, 1 reliable, -1 not given or invalid.
typedef int32_t DtTransportType;
const DtTransportType DtTransportInvalid = -1;
const DtTransportType DtTransportBestEffort = 0;
const DtTransportType DtTransportReliable = 1;

/// 0 receive, 1 timestamp, -1 not given.
typedef int32_t DtOrderType;
const DtOrderType DtOrderInvalid = -1;
const DtOrderType DtOrderReceive = 0;
const DtOrderType DtOrderTimestamp = 1;

enum DtSharingType_enum : int32_t {
  DtSharingPublishSubscribe = 0,
  DtSharingPublish = 1,
  DtSharingSubscribe = 2,
  DtSharingNeither = 3,
  DtSharingInvalid = 4
};

enum DtOwnershipType_enum : int32_t {
  DtOwnershipDivest = 0,
  DtOwnershipAcquire = 1,
  DtOwnershipDivestAcquire = 2,
  DtOwnershipNoTransfer = 3
};

enum DtFomUpdateType_enum : int32_t {
  DtFomUpdateStatic = 0,
  DtFomUpdatePeriodic = 1,
  DtFomUpdateConditional = 2,
  DtFomUpdateNA = 3
};

/// The standard MIM documents of IEEE 1516-2010 (theHLAeStandardMIM_xml) and IEEE 1516-2025
/// (theHLA4StandardMIM_xml), held by the library as the bytes of the published files, with their
/// byte counts. Neither array is null-terminated: read them only with their lengths (for
/// instance xmlReadMemory), never as C strings.
extern unsigned char theHLAeStandardMIM_xml[];
extern unsigned int theHLAeStandardMIM_xml_len;
extern unsigned char theHLA4StandardMIM_xml[];
extern unsigned int theHLA4StandardMIM_xml_len;

/// The result of a read, and the status of each step of a reader's walk: DtFedOk goes on,
/// DtFedFailed stops the walk.
enum DtFedResult : int { DtFedOk = 0, DtFedNoFile = 1, DtFedFailed = 2 };

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
  DtFedTarget();
  virtual ~DtFedTarget();

  virtual void setFomType(DtFomType type);
  virtual DtFomType fomType();

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

  virtual bool setAutoProvide(bool value);
  virtual bool setConveyRegionDesignatorSets(bool value);
  virtual bool setAttributeScopeAdvisory(bool value);
  virtual bool setAttributeRelevanceAdvisory(bool value);
  virtual bool setObjectClassRelevanceAdvisory(bool value);
  virtual bool setInteractionRelevanceAdvisory(bool value);
  virtual bool setServiceReporting(bool value);
  virtual bool setAutomaticResignAction(int action);

  virtual bool addUpdateRate(DtUpdateRateType* record);
  virtual bool hasUpdateRate(const DtUpdateRateType& record);
  virtual bool addSynchronizationPoint(DtSynchronizationPointsType* record);
  virtual bool hasSynchronizationPoint(const DtSynchronizationPointsType& record);
  virtual bool addTransportation(DtTransportationType* record);
  virtual bool hasTransportation(const DtTransportationType& record);
  virtual DtTransportType transportationType(const DtTransportationType& record);
  virtual bool addUserSuppliedTag(DtUserSuppliedTagsType* record);
  virtual bool hasUserSuppliedTag(const DtUserSuppliedTagsType& record);
  virtual bool addNote(DtNotesType* record);
  virtual bool hasNote(const DtNotesType& record);

  virtual bool setSwitch(const DtString& switchName, bool value);
  virtual bool hasSwitch(const DtString& switchName);
  virtual bool isKnownSwitch(const DtString& switchName);
  virtual bool switchValue(const DtString& switchName);

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
  /// The one duplicate test that takes its record by value.
  virtual bool hasFixedRecordDatatype(DtFixedRecordDatatypeType record);
  virtual bool addVariantRecordDatatype(DtVariantRecordDatatypeType* record);
  virtual bool hasVariantRecordDatatype(const DtVariantRecordDatatypeType& record);

  virtual bool setFomName(const char* moduleName);
  virtual bool setFomDependencies(const std::vector<DtString>& moduleNames);
  virtual bool addUnresolvedAttributeTransportation(const DtTransportationType& record,
                                                    const DtString& className,
                                                    const DtString& attributeName);
  virtual bool addUnresolvedInteractionTransportation(const DtTransportationType& record,
                                                      const DtString& className);

 private:
  DtFomType heldFomType;
  std::map<DtString, bool> switches;
};

/// Base of every FOM reader: finding and opening the file, telling its format, its bytes, the
/// last error and the strict-checking mask. A read answers 0 (read), 1 (no file) or 2 (the
/// file is wrong; lastError() says why).
class DtFedReader {
 public:
  DtFedReader();
  virtual ~DtFedReader();
  DtFedReader(const DtFedReader&) = delete;
  DtFedReader& operator=(const DtFedReader&) = delete;

  virtual int readFed(const char* fileName, DtFedTarget* target, unsigned int strictChecking,
                      bool validate, bool skipSwitches);
  virtual int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName,
                             unsigned int strictChecking, bool validate, bool skipSwitches) = 0;
  virtual FILE* openFedFileWithErrCheck(const char* fileName, bool binary);
  virtual unsigned int setStrictChecking(unsigned int mask);
  virtual bool strictChecking(unsigned int bit) const;
  virtual void setExpectedFomType(DtFomType type);
  virtual DtFomType expectedFomType() const;
  virtual DtFomType lastFomType() const;
  virtual const DtString& lastError() const;

  /// Hands over the bytes of the last file read; the caller frees them with delete[].
  char* takeCurrFddData();
  /// Appends " at XML Node <name> near line <line>" to text.
  void appendErrorLine(_xmlNode* node, DtString& text) const;

  /// Opens a file, looking for it in the directories of "RTI_CONFIG" first.
  static FILE* openFedFile(const char* fileName, bool binary);
  /// The format of a file, by extension and, for XML, by content; 0 if it can't be opened.
  static DtFomType checkFomType(const char* fileName);
  static DtFomType checkFomType(const char* fileName, void* file);
  static const DtString& standardMimFileName(DtFomType type);
  static bool isStandardMimFileName(const DtString& name, DtFomType type);
  /// Reads a whole file from its start into a new[] buffer. The text is followed by a
  /// terminator that *size does not count.
  static bool readFileIntoBuffer(FILE* file, char** buffer, unsigned int* size);

  static const DtString theHlaEvolvedStandardMimFileName;
  static const DtString theHla4StandardMimFileName;
  static const DtString theInvalidStandardMimFileName;

 protected:
  char* currFddData;
  unsigned int currFddSize;
  DtFedTarget* target;
  unsigned int strictCheckingMask;
  bool skipSwitches;
  DtFomType expectedType;
  DtFomType lastType;
  DtString lastErrorText;
};

}  // namespace KORRti

KTL_API_END

#endif
