// Feeds arbitrary bytes to the KTL reader: every form is read from a string stream into a fresh
// frame until the symbol eof. Halts (DtException) are the reader's normal answer to bad text;
// anything else that goes wrong (a crash, a sanitizer report, a leak) is a finding.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <ktl/ktl.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace KORRti;
  // The string stream reads up to a NUL, so the text needs one after its last byte.
  std::vector<char> text(size + 1, '\0');
  if (size) std::memcpy(text.data(), data, size);

  // Number warnings would flood the output.
  int level = DtNotifyLevel;
  DtNotifyLevel = 0;
  try {
    DtlObjPtr frame(DtlFrameTag);
    DtlObjPtr eof = DtcIntern("eof", frame);
    DtlStringInputStream stream(text.data());
    for (DtlObjPtr form = DtcRead(&stream, frame); form != eof; form = DtcRead(&stream, frame)) {
    }
  } catch (const DtException&) {
  }
  DtNotifyLevel = level;
  return 0;
}
