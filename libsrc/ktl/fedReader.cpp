#include <ktl/fedReader.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <ostream>

#include <libxml/tree.h>

#include <ktl/xmlFedReader.h>
#include <util/notify.h>

namespace KORRti {

const char* DtFomTypeName(DtFomType type) {
  switch (type) {
    case DtFomType13:
      return "1.3";
    case DtFomType1516:
      return "1516";
    case DtFomTypeEvolved:
      return "HLA Evolved";
    case DtFomType2025:
      return "HLA 4";
    default:
      return "Unknown";
  }
}

// ---------------------------------------------------------------------------------------------
// DtFedTarget: the defaults.

DtFedTarget::DtFedTarget() : heldFomType(DtFomTypeUnknown) {}
DtFedTarget::~DtFedTarget() = default;

void DtFedTarget::setFomType(DtFomType type) {
  heldFomType = type;
}
DtFomType DtFedTarget::fomType() {
  return heldFomType;
}

bool DtFedTarget::addSpace(const char*) {
  return true;
}
bool DtFedTarget::addSpaceDimension(const char*, const char*) {
  return true;
}
bool DtFedTarget::addDimension(const char*, unsigned long, unsigned long, unsigned long, bool,
                               const DtString&) {
  return true;
}
bool DtFedTarget::addInteractionClass(const char*, const char*, DtTransportType, DtOrderType,
                                      const char*) {
  return true;
}
bool DtFedTarget::addParameter(const char*, const char*) {
  return true;
}
bool DtFedTarget::addInteractionDimension(const char*, const char*) {
  return true;
}
bool DtFedTarget::addObjectClass(const char*, const char*) {
  return true;
}
bool DtFedTarget::addObjectClassDimension(const char*, const char*) {
  return true;
}
bool DtFedTarget::addAttribute(const char*, const char*, DtTransportType, DtOrderType,
                               DtSharingType_enum, DtFomUpdateType_enum, const DtString&,
                               DtOwnershipType_enum, const DtString&, void*) {
  return true;
}
bool DtFedTarget::addSpaceAttribute(const char*, const char*, DtTransportType, DtOrderType,
                                    const char*) {
  return true;
}
bool DtFedTarget::addAttributeDimension(const char*, const char*, const char*) {
  return true;
}

bool DtFedTarget::setAutoProvide(bool) {
  return true;
}
bool DtFedTarget::setConveyRegionDesignatorSets(bool) {
  return true;
}
bool DtFedTarget::setAttributeScopeAdvisory(bool) {
  return true;
}
bool DtFedTarget::setAttributeRelevanceAdvisory(bool) {
  return true;
}
bool DtFedTarget::setObjectClassRelevanceAdvisory(bool) {
  return true;
}
bool DtFedTarget::setInteractionRelevanceAdvisory(bool) {
  return true;
}
bool DtFedTarget::setServiceReporting(bool) {
  return true;
}
bool DtFedTarget::setAutomaticResignAction(int) {
  return true;
}

// A record handed to an add... operation belongs to the target: the default owns it by
// deleting it.
bool DtFedTarget::addUpdateRate(DtUpdateRateType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasUpdateRate(const DtUpdateRateType&) {
  return false;
}
bool DtFedTarget::addSynchronizationPoint(DtSynchronizationPointsType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasSynchronizationPoint(const DtSynchronizationPointsType&) {
  return false;
}
bool DtFedTarget::addTransportation(DtTransportationType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasTransportation(const DtTransportationType&) {
  return false;
}
DtTransportType DtFedTarget::transportationType(const DtTransportationType& record) {
  return record.reliable ? DtTransportReliable : DtTransportBestEffort;
}
bool DtFedTarget::addUserSuppliedTag(DtUserSuppliedTagsType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasUserSuppliedTag(const DtUserSuppliedTagsType&) {
  return false;
}
bool DtFedTarget::addNote(DtNotesType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasNote(const DtNotesType&) {
  return false;
}

bool DtFedTarget::setSwitch(const DtString& switchName, bool value) {
  switches[switchName] = value;
  return true;
}
bool DtFedTarget::hasSwitch(const DtString& switchName) {
  return switches.find(switchName) != switches.end();
}
bool DtFedTarget::isKnownSwitch(const DtString& switchName) {
  static const char* const known[] = {"autoProvide",
                                      "conveyRegionDesignatorSets",
                                      "conveyProducingFederate",
                                      "attributeScopeAdvisory",
                                      "attributeRelevanceAdvisory",
                                      "objectClassRelevanceAdvisory",
                                      "interactionRelevanceAdvisory",
                                      "serviceReporting",
                                      "exceptionReporting",
                                      "delaySubscriptionEvaluation",
                                      "automaticResignAction",
                                      "nonRegulatedGrant",
                                      "sendServiceReportsToFile",
                                      "advisoriesUseKnownClass",
                                      "allowRelaxedDdm"};
  for (const char* name : known) {
    if (switchName == name) return true;
  }
  return false;
}
bool DtFedTarget::switchValue(const DtString& switchName) {
  auto found = switches.find(switchName);
  return found != switches.end() && found->second;
}

bool DtFedTarget::addTime(DtTimeType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasTime(const DtTimeType&) {
  return false;
}
bool DtFedTarget::addBasicDataRepresentation(DtBasicDataRepresentationType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasBasicDataRepresentation(const DtBasicDataRepresentationType&) {
  return false;
}
bool DtFedTarget::addSimpleDatatype(DtSimpleDatatypeType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasSimpleDatatype(const DtSimpleDatatypeType&) {
  return false;
}
bool DtFedTarget::addEnumeratedDatatype(DtEnumeratedDatatypeType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasEnumeratedDatatype(const DtEnumeratedDatatypeType&) {
  return false;
}
bool DtFedTarget::addArrayDatatype(DtArrayDatatypeType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasArrayDatatype(const DtArrayDatatypeType&) {
  return false;
}
bool DtFedTarget::addFixedRecordDatatype(DtFixedRecordDatatypeType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasFixedRecordDatatype(DtFixedRecordDatatypeType) {
  return false;
}
bool DtFedTarget::addVariantRecordDatatype(DtVariantRecordDatatypeType* record) {
  delete record;
  return true;
}
bool DtFedTarget::hasVariantRecordDatatype(const DtVariantRecordDatatypeType&) {
  return false;
}

bool DtFedTarget::setFomName(const char*) {
  return true;
}
bool DtFedTarget::setFomDependencies(const std::vector<DtString>&) {
  return true;
}
bool DtFedTarget::addUnresolvedAttributeTransportation(const DtTransportationType&, const DtString&,
                                                       const DtString&) {
  return true;
}
bool DtFedTarget::addUnresolvedInteractionTransportation(const DtTransportationType&,
                                                         const DtString&) {
  return true;
}

// ---------------------------------------------------------------------------------------------
// DtFedReader

const DtString DtFedReader::theHlaEvolvedStandardMimFileName("HLAstandardMIM.xml");
const DtString DtFedReader::theHla4StandardMimFileName("HLAstandardMIM-2025.xml");
const DtString DtFedReader::theInvalidStandardMimFileName("HLAinvalidStandardMIM.xml");

DtFedReader::DtFedReader()
    : currFddData(nullptr),
      currFddSize(0),
      target(nullptr),
      strictCheckingMask(0),
      skipSwitches(false),
      expectedType(DtFomTypeUnknown),
      lastType(DtFomTypeUnknown) {}

DtFedReader::~DtFedReader() {
  delete[] currFddData;
  currFddData = nullptr;
}

int DtFedReader::readFed(const char* fileName, DtFedTarget* readTarget, unsigned int strictChecking,
                         bool validate, bool skip) {
  int result = DtFedNoFile;
  // The standard MIM lookup asks the target for its format, so a read needs one.
  if (!readTarget) {
    lastErrorText = "No FED target given";
    return DtFedFailed;
  }
  FILE* file = openFedFile(fileName, false);
  DtFilename baseName(fileName ? fileName : "");
  baseName.stripPath();
  // A missing standard MIM is still handed on: a reader may have it built in.
  bool standardMim = baseName.caseCompare(standardMimFileName(readTarget->fomType()));
  if (file || standardMim) {
    result = readFedFilePtr(file, readTarget, DtFilename(fileName ? fileName : ""), strictChecking,
                            validate, skip);
  }
  if (file) fclose(file);
  return result;
}

FILE* DtFedReader::openFedFileWithErrCheck(const char* fileName, bool binary) {
  FILE* file = openFedFile(fileName, binary);
  if (!file) {
    lastErrorText = "No such FED file: ";
    lastErrorText += fileName ? fileName : "";
  }
  return file;
}

unsigned int DtFedReader::setStrictChecking(unsigned int mask) {
  unsigned int old = strictCheckingMask;
  strictCheckingMask = mask;
  return old;
}

bool DtFedReader::strictChecking(unsigned int bit) const {
  return (strictCheckingMask & bit) != 0;
}

void DtFedReader::setExpectedFomType(DtFomType type) {
  expectedType = type;
}
DtFomType DtFedReader::expectedFomType() const {
  return expectedType;
}
DtFomType DtFedReader::lastFomType() const {
  return lastType;
}
const DtString& DtFedReader::lastError() const {
  return lastErrorText;
}

char* DtFedReader::takeCurrFddData() {
  char* data = currFddData;
  currFddData = nullptr;
  currFddSize = 0;
  return data;
}

void DtFedReader::appendErrorLine(xmlNode* node, DtString& text) const {
  text += " at XML Node ";
  text += (node && node->name) ? reinterpret_cast<const char*>(node->name) : "*";
  text += " near line ";
  text += DtString(static_cast<unsigned int>(node ? node->line : 0));
}

FILE* DtFedReader::openFedFile(const char* fileName, bool binary) {
  if (!fileName) return nullptr;
  DtFilename name(fileName);
  name.searchAlternatePath(getenv("RTI_CONFIG"));
  FILE* file = fopen(name.c_str(), binary ? "rb" : "rt");
  DtVerbose("Reading FED file: %s\n", name.c_str());
  return file;
}

DtFomType DtFedReader::checkFomType(const char* fileName) {
  FILE* file = openFedFile(fileName, false);
  if (!file) return DtFomTypeUnknown;
  DtFomType type = checkFomType(fileName, file);
  fclose(file);
  return type;
}

DtFomType DtFedReader::checkFomType(const char* fileName, void* file) {
  const char* given = fileName ? fileName : "";
  DtFilename name(given);
  DtString extension = name.extension();
  if (extension.isEmpty()) {
    DtWarn("FED file has no extension: %s\n\tDefaulting to HLA 1516 Evolved format\n",
           name.c_str());
    return DtFomTypeEvolved;
  }
  extension.toLower();
  DtFomType type = DtFomTypeUnknown;
  if (extension == "ktl" || extension == "fed" || extension == "omt") {
    DtVerbose("Found 1.3 format FED file: %s.\n", given);
    type = DtFomType13;
  } else if (extension == "xml" || extension == "fdd") {
    type = DtXmlFedReader::fomType(file);
    switch (type) {
      case DtFomType1516:
        DtVerbose("Found HLA 1516 XML File: %s.\n", given);
        break;
      case DtFomTypeEvolved:
        DtVerbose("Found HLA 1516 Evolved XML File: %s.\n", given);
        break;
      case DtFomType2025:
        DtVerbose("Found HLA 1516_2025 XML File: %s.\n", given);
        break;
      default:
        DtWarn("FED file format is unrecognized: %s\n\tDefaulting to HLA 1516 2025\n",
               name.c_str());
        type = DtFomType2025;
        break;
    }
  } else {
    DtWarn("FED file has unrecognized extension: %s\n\tDefaulting to HLA 1516 2025 format\n",
           name.c_str());
    type = DtFomType2025;
  }
  if (DtNotifyLevel > 2) {
    DtVerbose << "Reading file as " << DtFomTypeName(type) << " format." << std::endl;
  }
  return type;
}

const DtString& DtFedReader::standardMimFileName(DtFomType type) {
  if (type == DtFomTypeEvolved) return theHlaEvolvedStandardMimFileName;
  if (type == DtFomType2025) return theHla4StandardMimFileName;
  return theInvalidStandardMimFileName;
}

bool DtFedReader::isStandardMimFileName(const DtString& name, DtFomType type) {
  return name == standardMimFileName(type);
}

bool DtFedReader::readFileIntoBuffer(FILE* file, char** buffer, unsigned int* size) {
  // The lines below name functions that are not in this code. Hosts match them as they stand,
  // so they are kept, not corrected.
  static const char kNoFile[] = "DtFedReader::readFileIntoBuffer: FileHandle not initialized\n";
  static const char kNoMemory[] = "DtFedFileTransport::readFile: Failed to allocate file buffer\n";
  static const char kReadError[] = "DtFedFileTransport::readFile: Error reading file.\n";
  if (!file) {
    DtWarn << kNoFile;
    return false;
  }
  rewind(file);
  *buffer = nullptr;
  *size = 0;
  unsigned int capacity = 1024;
  unsigned int length = 0;
  // The buffer is this call's until the whole text is in it; every failure frees it.
  std::unique_ptr<char[]> text(new (std::nothrow) char[capacity]);
  if (!text) {
    DtWarn << kNoMemory;
    return false;
  }
  for (;;) {
    // Never more than the room left, so a short read in the middle can't overrun; for a
    // regular file every block but the last is full and this is always 1024.
    size_t room = capacity - length;
    size_t count = fread(text.get() + length, 1, room < 1024 ? room : 1024, file);
    // A read that gets nothing ends the text, whatever the error flag says: only an error
    // that comes with bytes fails the read.
    if (count == 0) break;
    if (ferror(file)) {
      DtWarn << kReadError;
      return false;
    }
    length += static_cast<unsigned int>(count);
    if (capacity <= length) {
      std::unique_ptr<char[]> larger;
      if (capacity <= std::numeric_limits<unsigned int>::max() / 2) {
        larger.reset(new (std::nothrow) char[static_cast<size_t>(capacity) * 2]);
      }
      if (!larger) {
        DtWarn << kNoMemory;
        return false;
      }
      capacity *= 2;
      std::copy(text.get(), text.get() + length, larger.get());
      text = std::move(larger);
    }
  }
  // There is always room behind the text: the 1.3 readers read it as terminated text.
  text[length] = '\0';
  *size = length;
  *buffer = text.release();
  return true;
}

}  // namespace KORRti
