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

#include "support/keeping_target.h"
#include "support/scratch_file.h"

namespace {

using namespace KORRti;

// A small DTD: validation needs one that parses, not the whole object model DTD.
const char theDtd[] =
    "<!ELEMENT objectModel ANY>\n"
    "<!ATTLIST objectModel DTDversion CDATA #IMPLIED name CDATA #IMPLIED>\n"
    "<!ELEMENT objects ANY>\n"
    "<!ELEMENT objectClass ANY>\n"
    "<!ATTLIST objectClass name CDATA #REQUIRED>\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The DTD stands beside the document under the names documents use for it.
  static const ktltest::ScratchFile scratch("fed1516-fuzz", "document.xml");
  static const bool dtdsPut =
      (scratch.put("HLA.dtd", theDtd), scratch.put("hla.dtd", theDtd), true);
  static_cast<void>(dtdsPut);
  scratch.hold(data, size);
  const std::string& path = scratch.path();

  int level = DtNotifyLevel;
  DtNotifyLevel = 0;
  {
    DtFedReader1516 reader;
    ktltest::KeepingTarget target;
    target.everyOtherIsDuplicate = true;
    if (size % 3 == 0) {  // a third of the inputs go through root replacement
      target.refusedRoots = {"HLAobjectRoot", "HLAinteractionRoot"};
    }
    bool validate = size % 2 == 1;
    unsigned int strict = (size / 2) % 2 == 1 ? DtStrictUnexpectedContent : 0;
    int result = reader.readFed(path.c_str(), &target, strict, validate, size % 5 == 0);
    if (result < 0 || result > 2) abort();
    delete[] reader.takeCurrFddData();
  }
  DtNotifyLevel = level;
  return 0;
}
