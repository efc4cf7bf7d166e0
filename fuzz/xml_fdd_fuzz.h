#ifndef FUZZ_XML_FDD_FUZZ_H
#define FUZZ_XML_FDD_FUZZ_H

// The body of the IEEE 1516-2010 and 1516-2025 fuzz targets: arbitrary bytes go to a reader
// through a file, with XML Schema validation on for inputs whose size is odd. The process works
// in the file's directory, which holds a small schema as "fdd.xsd" (the name the seeds give in
// their schemaLocation), so validation runs on inputs that name it. The target copies every
// name and keeps every record it is given. A result of 1 or 2 is the reader's normal answer to
// bad input; a crash, a sanitizer report, a leak or a network access is a finding.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <ktl/fedReader.h>
#include <util/notify.h>

#include "support/keeping_target.h"
#include "support/scratch_file.h"

namespace ktlfuzz {

// A schema that compiles and accepts any content of an object model in either namespace a seed
// uses, so that documents both pass and fail it.
inline std::string schemaFor(const char* targetNamespace) {
  return std::string(
             "<?xml version=\"1.0\"?>\n"
             "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" targetNamespace=\"") +
         targetNamespace +
         "\" elementFormDefault=\"qualified\">\n"
         "  <xs:element name=\"objectModel\">\n"
         "    <xs:complexType>\n"
         "      <xs:sequence>\n"
         "        <xs:any minOccurs=\"0\" maxOccurs=\"unbounded\" processContents=\"skip\"/>\n"
         "      </xs:sequence>\n"
         "      <xs:anyAttribute processContents=\"skip\"/>\n"
         "    </xs:complexType>\n"
         "  </xs:element>\n"
         "</xs:schema>\n";
}

// The scratch file, made once, with the schema beside it and the working directory moved there.
inline const ktltest::ScratchFile& scratchWithSchema(const char* prefix,
                                                     const char* targetNamespace) {
  static const ktltest::ScratchFile scratch(prefix, "document.xml");
  static const bool ready = [&] {
    scratch.put("fdd.xsd", schemaFor(targetNamespace));
    std::string directory = scratch.path().substr(0, scratch.path().rfind('/'));
    return chdir(directory.c_str()) == 0;
  }();
  if (!ready) abort();
  return scratch;
}

template <typename Reader>
int readXmlFdd(const ktltest::ScratchFile& scratch, const uint8_t* data, size_t size) {
  scratch.hold(data, size);
  int level = KORRti::DtNotifyLevel;
  KORRti::DtNotifyLevel = 0;
  {
    Reader reader;
    if (size % 2 == 1) reader.setSchemaValidationEnabled(true);
    ktltest::KeepingTarget target;
    target.everyOtherIsDuplicate = true;
    if (size % 3 == 0) {  // a third of the inputs go through root replacement
      target.refusedRoots = {"HLAobjectRoot", "HLAinteractionRoot"};
    }
    // Each strict bit, both and neither.
    unsigned int strict = (size / 2) % 4;
    int result = reader.readFed(scratch.path().c_str(), &target, strict, false, size % 5 == 0);
    if (result < 0 || result > 2) abort();
    delete[] reader.takeCurrFddData();
  }
  KORRti::DtNotifyLevel = level;
  return 0;
}

}  // namespace ktlfuzz

#endif
