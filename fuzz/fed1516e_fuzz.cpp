// Feeds arbitrary bytes to the IEEE 1516-2010 reader (see xml_fdd_fuzz.h).
#include <ktl/fedReader1516e.h>

#include "xml_fdd_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ktltest::ScratchFile& scratch =
      ktlfuzz::scratchWithSchema("fed1516e-fuzz", "http://standards.ieee.org/IEEE1516-2010");
  return ktlfuzz::readXmlFdd<KORRti::DtFedReader1516e>(scratch, data, size);
}
