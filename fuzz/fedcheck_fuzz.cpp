// Feeds arbitrary bytes to fomdump's check of HLA 1.3 FED files and to its rewrite: the check
// must answer for any text, and whatever the rewrite writes must read with result 0 and deliver
// what the check found declared. A crash, a sanitizer report, a leak, a hang or an abort is a
// finding.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <ktl/fedReader13.h>
#include <util/notify.h>

#include "fomdump/fedCheck.h"
#include "fomdump/print.h"
#include "support/scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ktltest::ScratchFile scratch("fedcheck-fuzz", "model.fed");
  static const ktltest::ScratchFile mendedFile("fedcheck-fuzz", "mended.fed");
  scratch.hold(data, size);
  int level = KORRti::DtNotifyLevel;
  KORRti::DtNotifyLevel = 0;
  {
    fomdump::FedCheck check;
    fomdump::checkFed(scratch.path(), check);
    if (!check.opened) abort();
    for (const fomdump::FedDeviation& deviation : check.deviations) {
      if (deviation.message.empty() || deviation.line < 0) abort();
    }
    std::string mended;
    fomdump::FedDeviation stop;
    if (fomdump::mendFed(check, mended, stop)) {
      // Read again here, apart from the rewrite's own test of its text.
      mendedFile.hold(reinterpret_cast<const uint8_t*>(mended.data()), mended.size());
      fomdump::ModelRecorder model;
      KORRti::DtFedReader13 reader;
      if (reader.readFed(mendedFile.path().c_str(), &model, 0, false, false) != 0) abort();
      if (fomdump::modelJson("", KORRti::DtFomType13, model) !=
          fomdump::modelJson("", KORRti::DtFomType13, check.declared)) {
        abort();
      }
    } else if (stop.message.empty()) {
      abort();
    }
  }
  KORRti::DtNotifyLevel = level;
  return 0;
}
