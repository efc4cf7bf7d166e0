// Feeds arbitrary bytes, as a configuration file, to DtApplicationSettings::loadConfigFile, into
// settings with a setting of every type in two nested groups. The first byte picks the form: an
// even one makes the rest an .xml file, an odd one a .ktl file. Settings that loaded are written
// back into a tree and out as XML text, so that whatever values a file gave pass through the
// conversions again. A false answer and a DtException (DtCorruptedState from the XML form or a
// missing group, the interpreter's halt from the KTL form, a conversion's DtInvalidInput) are the
// normal answers to bad bytes; anything else (a crash, a sanitizer report, a leak, another
// exception) is a finding.
//
// The settings' "not unique" lines go to standard output and the KTL reader's reports to
// standard error: run it with -close_fd_mask=3.
#include <cstddef>
#include <cstdint>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <ktl/applicationSettings.h>
#include <ktl/configVariable.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <ktl/variableGroup.h>
#include <matrix/taitBryan.h>
#include <matrix/vector.h>
#include <util/dtException.h>
#include <util/notify.h>

#include "no_external_loads.h"
#include "support/scratch_file.h"

namespace {

using namespace KORRti;

// One setting of each type, in the groups outer and, inside it, inner.
class EveryType : public DtApplicationSettings {
 public:
  EveryType()
      : DtApplicationSettings("fuzz", "1", "top"),
        outer(this, "outer", "", "Outer"),
        inner(&outer, "inner", "innerType", "Inner"),
        text(&outer, "s", "", "", DtAllScopes, false, ""),
        stdText(&outer, "t", "", "", DtAllScopes, false, ""),
        count(&outer, "i", 0, "", DtAllScopes, false, ""),
        position(&outer, "v", DtVector64(), "", DtAllScopes, false, ""),
        size(&inner, "u", 0, "", DtAllScopes, false, ""),
        rate(&inner, "d", 0, "", DtAllScopes, false, ""),
        ratio(&inner, "f", 0, "", DtAllScopes, false, ""),
        flag(&inner, "b", false, "", DtAllScopes, false, ""),
        attitude(&inner, "a", DtTaitBryan(), "", DtAllScopes, false, "") {}
  DtVariableGroup outer;
  DtVariableGroup inner;
  DtConfigVariable<DtString> text;
  DtConfigVariable<std::string> stdText;
  DtConfigVariable<int> count;
  DtConfigVariable<DtVector64> position;
  DtConfigVariable<unsigned int> size;
  DtConfigVariable<double> rate;
  DtConfigVariable<float> ratio;
  DtConfigVariable<bool> flag;
  DtConfigVariable<DtTaitBryan> attitude;
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  ktlfuzz::refuseExternalLoads();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ktltest::ScratchFile xmlFile("ktl-settings-fuzz", "input.xml");
  static const ktltest::ScratchFile ktlFile("ktl-settings-fuzz", "input.ktl");
  if (size == 0 || size > (1u << 20)) return 0;
  const ktltest::ScratchFile& file = (data[0] & 1) ? ktlFile : xmlFile;
  file.hold(data + 1, size - 1);

  // The interpreter's number warnings would flood the output.
  int level = DtNotifyLevel;
  DtNotifyLevel = 0;
  EveryType settings;
  bool loaded = false;
  try {
    loaded = settings.loadConfigFile(file.path().c_str());
  } catch (const DtException&) {
  }
  if (loaded) {
    DtEnvironment env("fuzz");
    settings.getEnvironmentValue(env);
    DtString text;
    DtEnvXMLWriter("fuzz").writeString(env, text);
  }
  DtNotifyLevel = level;
  return 0;
}
