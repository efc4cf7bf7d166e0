// Feeds arbitrary bytes to the HLA 1.3 FED readers through a file: both DtFedReader13 and
// DtKtlFedReader read it into a target that copies every name it is given. A result of 1 or 2
// is the readers' normal answer to bad text; a crash, a sanitizer report or a leak is a finding.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/fedReader13.h>
#include <ktl/ktlFedReader.h>
#include <util/notify.h>

#include "support/keeping_target.h"
#include "support/scratch_file.h"

namespace {

using namespace KORRti;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ktltest::ScratchFile scratch("fed13-fuzz", "input.fed");
  scratch.hold(data, size);
  const std::string& path = scratch.path();

  // The transport warnings would flood the output.
  int level = DtNotifyLevel;
  DtNotifyLevel = 0;
  {
    DtFedReader13 reader;
    ktltest::KeepingTarget target;
    if (size % 2 == 1) {  // half the inputs go through root replacement
      target.refusedRoots = {"ObjectRoot", "InteractionRoot"};
    }
    int result = reader.readFed(path.c_str(), &target, 0, false, false);
    if (result < 0 || result > 2) abort();
    delete[] reader.takeCurrFddData();
  }
  {
    DtKtlFedReader reader;
    ktltest::KeepingTarget target;
    int result = reader.readFed(path.c_str(), &target, 0, false, false);
    if (result < 0 || result > 2) abort();
  }
  DtNotifyLevel = level;
  return 0;
}
