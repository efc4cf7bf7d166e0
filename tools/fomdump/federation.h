#ifndef TOOLS_FOMDUMP_FEDERATION_H
#define TOOLS_FOMDUMP_FEDERATION_H

// fomdump's federation: the modules given on the command line, each read with the reader its
// format takes, the standard MIM of the federation's edition, the references between modules
// resolved to loaded modules, and the order in which each module follows what it depends on.
#include <memory>
#include <string>
#include <vector>

#include <ktl/fedReader.h>

#include "fomdump/model.h"

namespace fomdump {

// One module as read.
struct Module {
  std::string file;  // as given; for the library's copy of a MIM, the MIM's file name
  KORRti::DtFomType type = KORRti::DtFomTypeUnknown;
  int result = -1;           // the reader's result
  std::string error;         // its last text, a warning where the result is 0
  bool heldCopy = false;     // read from the library's copy of the standard MIM
  bool standardMim = false;  // the federation's standard MIM, from the library or --mim
  std::unique_ptr<ModelRecorder> model;

  // The name the module goes by in the order: its model name, or its file name for a module
  // that has none (HLA 1.3 and IEEE 1516-2000 files).
  std::string name() const;
  const std::vector<std::string>& references() const;
  // The line where a reference is written, 0 if unknown.
  long referenceLine(const std::string& reference) const;
};

// Reads one module: format by extension and content, the factory's reader, the standard MIM's
// names answered from the library's copy when no such file exists. With byRoot, an .xml file
// whose root element tells its format is read without the library's format test, which parses
// the whole document once more (a federation's load takes this); other files take that test.
Module readModule(const std::string& file, bool strict, bool validate, bool byRoot = false);

// The library's copy of the standard MIM of an edition (IEEE 1516-2010 or 1516-2025).
Module readHeldMim(KORRti::DtFomType edition, bool strict);

// The rules that resolve a module's reference to a loaded module, tried in this order; the
// first that matches exactly one module decides.
enum class Rule {
  kModelName,            // the model name as written
  kNameAfterPrefix,      // the model name after its first " - "
  kFileStem,             // the file name without its directory and extension
  kFileStemLessVersion,  // the same without a version suffix such as "_v2.0"
  kStandardMim,          // "MIM", or the standard MIM's own model name, for the standard MIM
};
const char* ruleName(Rule rule);

// The file name without its directory and extension; without a version suffix ("_v2.0",
// "-v1", "_V3.1.2") when lessVersion.
std::string fileStem(const std::string& file, bool lessVersion);

// The modules that a rule matches for a reference.
std::vector<size_t> matches(Rule rule, const std::string& reference,
                            const std::vector<Module>& modules);

// What became of one reference of one module.
struct Resolution {
  size_t module = 0;      // the referring module
  std::string reference;  // as written
  bool resolved = false;
  size_t target = 0;               // the module it names, when resolved
  Rule rule = Rule::kModelName;    // the rule that resolved it
  bool ambiguous = false;          // the first rule that matched matched more than one module
  std::vector<size_t> candidates;  // those modules, when ambiguous
};

// Resolves a reference by the rules: the first rule that matches exactly one module other than
// the referring one decides; a rule that matches several makes the reference ambiguous and
// no later rule is tried.
Resolution resolve(size_t module, const std::string& reference, const std::vector<Module>& modules);

// The modules, their resolutions, and the load order (indices into modules): the standard MIM
// first, then every module after each module it depends on, as the library's sorter ranks them.
struct Federation {
  std::vector<Module> modules;
  std::vector<Resolution> resolutions;
  std::vector<size_t> order;
  // The sorter's report (unknown dependencies, cycles, duplicate model names), one line each.
  std::vector<std::string> sorterLines;

  // Resolves every reference and orders the modules.
  void arrange();
};

// The edition whose standard MIM a federation of these formats loads: 2025 if any module is
// IEEE 1516-2025, else 2010 if any is 1516-2010, else none (unknown) for HLA 1.3 and 1516-2000
// alone.
KORRti::DtFomType mimEdition(const std::vector<Module>& modules);

}  // namespace fomdump

#endif
