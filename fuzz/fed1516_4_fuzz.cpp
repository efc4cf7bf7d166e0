// Feeds arbitrary bytes to the IEEE 1516-2025 reader (see xml_fdd_fuzz.h).
#include <ktl/fedReader1516_4.h>

#include "xml_fdd_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ktltest::ScratchFile& scratch =
      ktlfuzz::scratchWithSchema("fed1516_4-fuzz", "http://standards.ieee.org/IEEE1516-2025");
  return ktlfuzz::readXmlFdd<KORRti::DtFedReader1516_4>(scratch, data, size);
}
