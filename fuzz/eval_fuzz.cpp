// Feeds arbitrary bytes to the KTL reader and evaluator: every form read from a string stream is
// evaluated in a fresh language frame (constants and every primitive that stays inside the
// process), until the symbol eof or the first halt. Halts (DtException) are the interpreter's
// normal answer to bad programs; anything else that goes wrong (a crash, a sanitizer report, a
// leak) is a finding. The step limit ends endless loops, the evaluator's depth guard ends
// runaway recursion. Printed output goes to standard output, and define's complaints to standard
// error: scripts/fuzz.sh runs the target with -close_fd_mask=3.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <ktl/ktl.h>

#include "support/language.h"

namespace {

// Evaluation steps allowed per input: enough for small loops, few enough to keep the fuzzer
// fast on endless ones.
const unsigned long kStepLimit = 20000;

// Sets the interpreter's globals for one input and puts the host's values back afterwards.
class Quiet {
 public:
  Quiet()
      : level_(KORRti::DtNotifyLevel),
        debug_(KORRti::DtLispDebugOn),
        limit_(KORRti::DtlEvalStepLimit) {
    KORRti::DtNotifyLevel = 0;
    KORRti::DtLispDebugOn = 0;
    KORRti::DtlEvalStepLimit = kStepLimit;
  }
  ~Quiet() {
    KORRti::DtNotifyLevel = level_;
    KORRti::DtLispDebugOn = debug_;
    KORRti::DtlEvalStepLimit = limit_;
  }

 private:
  int level_;
  int debug_;
  unsigned long limit_;
};

void run(char const* text, KORRti::DtlObjPtr const& frame) {
  using namespace KORRti;
  DtlObjPtr eof = DtcIntern("eof", frame);
  DtlStringInputStream stream(text);
  for (;;) {
    DtlObjPtr form = DtcRead(&stream, frame);
    if (form == eof) return;
    DtcEval(form, frame);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace KORRti;
  // The string stream reads up to a NUL, so the text needs one after its last byte.
  std::vector<char> text(size + 1, '\0');
  if (size) std::memcpy(text.data(), data, size);

  Quiet quiet;
  DtlObjPtr frame = ktltest::makeLanguageFrame();
  try {
    run(text.data(), frame);
  } catch (const DtException&) {
    // The first halt ends the program, as it would in a host.
  }
  ktltest::destroyLanguageFrame(frame);
  return 0;
}
