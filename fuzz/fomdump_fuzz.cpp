// Feeds arbitrary bytes to fomdump's federation load: the file's format told by its root (an
// .xml name) or by the library's test (a .fed name, for every fourth input), read with the
// traced reader of its format, loaded twice with a module of its own and, for one input in
// sixteen, the library's standard MIM, then ordered, merged and printed as JSON and as both
// graphs. Any result of a read is an answer; a crash, a sanitizer report, a leak or a hang is a
// finding.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <ktl/fedReader.h>
#include <util/notify.h>

#include "fomdump/federation.h"
#include "fomdump/graph.h"
#include "fomdump/merge.h"
#include "fomdump/print.h"
#include "support/scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ktltest::ScratchFile xmlFile("fomdump-fuzz", "module.xml");
  static const ktltest::ScratchFile fedFile("fomdump-fuzz", "module.fed");
  const ktltest::ScratchFile& scratch = size % 4 == 3 ? fedFile : xmlFile;
  scratch.hold(data, size);
  int level = KORRti::DtNotifyLevel;
  KORRti::DtNotifyLevel = 0;
  {
    fomdump::Federation federation;
    if (size % 16 == 5) {
      federation.modules.push_back(fomdump::readHeldMim(
          size % 32 == 5 ? KORRti::DtFomTypeEvolved : KORRti::DtFomType2025, false));
    }
    const bool strict = size % 2 == 1;
    federation.modules.push_back(fomdump::readModule(scratch.path(), strict, false, true));
    federation.modules.push_back(fomdump::readModule(scratch.path(), strict, false, true));
    federation.arrange();
    fomdump::MergedModel merged;
    fomdump::merge(federation, merged);
    std::string text = fomdump::modelJson("federation", KORRti::DtFomType2025, merged.model);
    text += fomdump::moduleGraph(federation);
    text += fomdump::classGraph(merged);
    if (text.empty()) abort();
  }
  KORRti::DtNotifyLevel = level;
  return 0;
}
