// Feeds arbitrary bytes to the IEEE 1516-2000 reader through a file, with DTD validation on for
// inputs whose size is odd. The file's directory holds the DTD under the names documents use
// ("HLA.dtd", "hla.dtd"), so that validation runs on inputs that name it. The target copies
// every name and keeps every record it is given. A result of 1 or 2 is the reader's normal
// answer to bad input; a crash, a sanitizer report, a leak or a network access is a finding.
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <ktl/fedReader1516.h>
#include <util/notify.h>

namespace {

using namespace KORRti;

// A small DTD: validation needs one that parses, not the whole object model DTD.
const char theDtd[] =
    "<!ELEMENT objectModel ANY>\n"
    "<!ATTLIST objectModel DTDversion CDATA #IMPLIED name CDATA #IMPLIED>\n"
    "<!ELEMENT objects ANY>\n"
    "<!ELEMENT objectClass ANY>\n"
    "<!ATTLIST objectClass name CDATA #REQUIRED>\n";

class KeepingTarget : public DtFedTarget {
 public:
  std::vector<std::string> names;
  std::vector<std::shared_ptr<void>> records;
  bool refuseRoots = false;

  void keep(const char* text) { names.push_back(text ? text : ""); }
  template <typename Record>
  bool own(Record* record) {
    names.push_back(record ? "record" : "null");
    records.emplace_back(record, [](void* p) { delete static_cast<Record*>(p); });
    return true;
  }
  bool addDimension(const char* name, unsigned long, unsigned long, unsigned long, bool,
                    const DtString& normalization) override {
    keep(name);
    keep(normalization.c_str());
    return true;
  }
  bool addObjectClass(const char* name, const char* parent) override {
    keep(name);
    keep(parent);
    return !(refuseRoots && !parent && std::string(name) == "HLAobjectRoot");
  }
  bool addAttribute(const char* className, const char* name, DtTransportType, DtOrderType,
                    DtSharingType_enum, DtFomUpdateType_enum, const DtString& condition,
                    DtOwnershipType_enum, const DtString& semantics, void*) override {
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
  bool addInteractionClass(const char* name, const char* parent, DtTransportType, DtOrderType,
                           const char* space) override {
    keep(name);
    keep(parent);
    keep(space);
    return !(refuseRoots && !parent && std::string(name) == "HLAinteractionRoot");
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
  bool addTransportation(DtTransportationType* r) override { return own(r); }
  bool addSynchronizationPoint(DtSynchronizationPointsType* r) override { return own(r); }
  bool addUserSuppliedTag(DtUserSuppliedTagsType* r) override { return own(r); }
  bool addNote(DtNotesType* r) override { return own(r); }
  bool addTime(DtTimeType* r) override { return own(r); }
  bool addBasicDataRepresentation(DtBasicDataRepresentationType* r) override { return own(r); }
  bool addSimpleDatatype(DtSimpleDatatypeType* r) override { return own(r); }
  bool addEnumeratedDatatype(DtEnumeratedDatatypeType* r) override { return own(r); }
  bool addArrayDatatype(DtArrayDatatypeType* r) override { return own(r); }
  bool addFixedRecordDatatype(DtFixedRecordDatatypeType* r) override { return own(r); }
  bool addVariantRecordDatatype(DtVariantRecordDatatypeType* r) override { return own(r); }
  // Every other record is a duplicate, so that both roads are taken.
  bool hasNote(const DtNotesType&) override { return (++asked % 2) == 0; }
  bool hasSimpleDatatype(const DtSimpleDatatypeType&) override { return (++asked % 2) == 0; }
  bool hasEnumeratedDatatype(const DtEnumeratedDatatypeType&) override {
    return (++asked % 2) == 0;
  }
  int asked = 0;
};

// One directory for the whole run, with the DTD beside the document rewritten for each input.
const std::string& scratchFile() {
  static std::string path = [] {
    char name[] = "/tmp/fed1516-fuzz-XXXXXX";
    if (!mkdtemp(name)) abort();
    std::string directory(name);
    for (const char* dtd : {"/HLA.dtd", "/hla.dtd"}) {
      FILE* file = fopen((directory + dtd).c_str(), "wb");
      if (!file) abort();
      fputs(theDtd, file);
      fclose(file);
    }
    return directory + "/document.xml";
  }();
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string& path = scratchFile();
  FILE* file = fopen(path.c_str(), "wb");
  if (!file) abort();
  if (size && fwrite(data, 1, size, file) != size) abort();
  fclose(file);

  int level = DtNotifyLevel;
  DtNotifyLevel = 0;
  {
    DtFedReader1516 reader;
    KeepingTarget target;
    target.refuseRoots = size % 3 == 0;  // a third of the inputs go through root replacement
    bool validate = size % 2 == 1;
    unsigned int strict = (size / 2) % 2 == 1 ? DtStrictUnexpectedContent : 0;
    int result = reader.readFed(path.c_str(), &target, strict, validate, size % 5 == 0);
    if (result < 0 || result > 2) abort();
    delete[] reader.takeCurrFddData();
  }
  DtNotifyLevel = level;
  return 0;
}
