// fomdump: reads a FOM file with the library's readers and prints the model they deliver.
//
// The program is a host of the reader interface: its target writes down every space, class,
// attribute and parameter it is told about, in the order it is told, and prints them as an
// indented tree or as JSON.
#include <tclap/CmdLine.h>

#include <strings.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/fedReader1516e.h>
#include <ktl/fedReaderFactory.h>
#include <ktl/xmlFedReader.h>
#include <util/notify.h>

#include "fomdump/fedCheck.h"
#include "fomdump/federation.h"
#include "fomdump/graph.h"
#include "fomdump/merge.h"
#include "fomdump/model.h"
#include "fomdump/print.h"

namespace {

using namespace KORRti;
using fomdump::Conflict;
using fomdump::Federation;
using fomdump::MergedModel;
using fomdump::ModelRecorder;
using fomdump::Module;
using fomdump::printJson;
using fomdump::printText;
using fomdump::Resolution;
using fomdump::Unresolved;

const char kDescription[] =
    "Reads a federation object model file and prints the routing spaces, the object classes "
    "with their attributes and the interaction classes with their parameters, as the reader "
    "delivers them; for an XML document also its dimensions, transportations, switches, time, "
    "tags, synchronization points, data types and notes, and for an IEEE 1516-2010 or 1516-2025 "
    "module its model name, dependencies and update rates. The format is told by the extension "
    "and, for XML files, by the content: HLA 1.3 FED files (.fed, .omt, .ktl) and IEEE "
    "1516-2000, 1516-2010 and 1516-2025 documents are read. HLAstandardMIM.xml and "
    "HLAstandardMIM-2025.xml, when no such file exists, are read from the library's own copy of "
    "the standard MIM. A file that is wrong still has what was read before the fault printed; "
    "a file that reads may leave a warning, printed on standard error. "
    "Several files, or --check, --no-mim or --mim, load the files as one federation on top of "
    "the standard MIM of its edition, with every dependency resolved to a loaded module, the "
    "modules in dependency order, merged into one model with every conflict and unresolved data "
    "type reported. "
    "Exit status: 0 read, 1 no such file, 2 a file is wrong, 4 a check failed, 64 a wrong "
    "command line, 70 an unexpected failure (such as no memory left).";

const int kExitRead = 0;
const int kExitNoFile = 1;
const int kExitWrongFile = 2;
const int kExitCheckFailed = 4;
const int kExitUsage = 64;
const int kExitInternal = 70;

// The edition of a standard MIM the library holds.
const char* editionName(DtFomType type) {
  return type == DtFomType2025 ? "IEEE 1516-2025" : "IEEE 1516-2010";
}

// The line a reader's text names (" near line N"), 0 if none.
int lineOf(const std::string& error) {
  const std::string marker = " near line ";
  size_t at = error.rfind(marker);
  return at == std::string::npos ? 0 : std::atoi(error.c_str() + at + marker.size());
}

// "FILE:LINE: " where the line is known, "FILE: " otherwise.
std::string where(const std::string& file, long line) {
  return line > 0 ? file + ":" + std::to_string(line) + ": " : file + ": ";
}

// Each deviation of an HLA 1.3 FED file from the strict form, one a line on standard error.
// Answers how many there are.
size_t reportFedDeviations(const std::string& file) {
  fomdump::FedCheck check;
  fomdump::checkFed(file, check);
  for (const fomdump::FedDeviation& deviation : check.deviations) {
    const bool warned = deviation.kind == fomdump::FedDeviation::Kind::kWarned;
    std::fprintf(stderr, "%s%s%s\n", where(file, deviation.line).c_str(), warned ? "warning: " : "",
                 deviation.message.c_str());
  }
  return check.deviations.size();
}

// The reference as the program reports it: what became of it.
std::string describe(const Federation& federation, const Resolution& resolution) {
  const std::vector<Module>& modules = federation.modules;
  std::string text = "\"" + resolution.reference + "\"";
  if (resolution.resolved) {
    return text + " -> " + modules[resolution.target].file + " (by " +
           fomdump::ruleName(resolution.rule) + ")";
  }
  if (resolution.ambiguous) {
    std::string names;
    for (size_t candidate : resolution.candidates) {
      names += (names.empty() ? "" : ", ") + modules[candidate].file;
    }
    return text + " is ambiguous: " + names;
  }
  return text + " names no loaded module";
}

// The format the merged model is printed in: the edition of the federation's standard MIM, or
// the first module's format for HLA 1.3 and IEEE 1516-2000 federations.
DtFomType federationFormat(const Federation& federation) {
  DtFomType edition = fomdump::mimEdition(federation.modules);
  if (edition != DtFomTypeUnknown || federation.modules.empty()) return edition;
  return federation.modules.front().type;
}

std::string conflictText(const Conflict& conflict) {
  std::string first = conflict.first;
  if (conflict.firstLine > 0) first += ":" + std::to_string(conflict.firstLine);
  return conflict.message + "; first declared in " + first;
}

std::string unresolvedText(const Unresolved& unresolved) {
  return "data type " + unresolved.name + ", named by " + unresolved.namedBy +
         ", is declared in no module";
}

int unresolvedDependencies(const Federation& federation) {
  int count = 0;
  for (const Resolution& resolution : federation.resolutions) count += resolution.resolved ? 0 : 1;
  return count;
}

std::string summary(const Federation& federation, const MergedModel& merged) {
  const ModelRecorder& model = merged.model;
  size_t attributes = 0;
  for (const auto& item : model.objects) attributes += item.attributes.size();
  size_t parameters = 0;
  for (const auto& item : model.interactions) parameters += item.parameters.size();
  return "Summary: " + std::to_string(federation.modules.size()) + " modules, " +
         std::to_string(model.objects.size()) + " object classes, " + std::to_string(attributes) +
         " attributes, " + std::to_string(model.interactions.size()) + " interaction classes, " +
         std::to_string(parameters) + " parameters, " + std::to_string(model.dataTypes.size()) +
         " data types, " + std::to_string(merged.conflicts.size()) + " conflicts, " +
         std::to_string(merged.unresolved.size() + unresolvedDependencies(federation)) +
         " unresolved references\n";
}

void printFederationText(const Federation& federation, const MergedModel& merged, bool verbose) {
  const std::vector<Module>& modules = federation.modules;
  std::printf("Modules: %zu\n", modules.size());
  for (const Module& module : modules) {
    std::printf("  module %s  format %s%s", module.file.c_str(), DtFomTypeName(module.type),
                module.heldCopy ? "  (the library's copy)" : "");
    if (module.model && !module.model->modelName.empty()) {
      std::printf("  model %s", module.model->modelName.c_str());
    }
    std::printf("\n");
  }
  std::printf("Order: %zu\n", federation.order.size());
  for (size_t i = 0; i < federation.order.size(); ++i) {
    std::printf("  %zu %s\n", i + 1, modules[federation.order[i]].file.c_str());
  }
  std::printf("References: %zu\n", federation.resolutions.size());
  for (const Resolution& resolution : federation.resolutions) {
    std::printf("  %s: %s\n", modules[resolution.module].file.c_str(),
                describe(federation, resolution).c_str());
  }
  if (verbose) {
    for (const std::string& line : federation.sorterLines) std::printf("%s\n", line.c_str());
  }
  std::fflush(stdout);
  printText("federation of " + std::to_string(modules.size()) + " modules",
            federationFormat(federation), merged.model);
  std::fputs(summary(federation, merged).c_str(), stdout);
}

void printFederationJson(const Federation& federation, const MergedModel& merged) {
  const std::vector<Module>& modules = federation.modules;
  std::string out =
      fomdump::modelJson("federation of " + std::to_string(modules.size()) + " modules",
                         federationFormat(federation), merged.model);
  out.erase(out.size() - 3);  // the closing "\n}\n"
  out += ",\n  \"modules\": [";
  for (size_t i = 0; i < modules.size(); ++i) {
    const Module& module = modules[i];
    int position = 0;
    for (size_t at = 0; at < federation.order.size(); ++at) {
      if (federation.order[at] == i) position = static_cast<int>(at) + 1;
    }
    out += std::string(i ? ",\n" : "\n") + "    {\"file\": " + fomdump::json(module.file) +
           ", \"name\": " + fomdump::json(module.name()) +
           ", \"format\": " + fomdump::json(DtFomTypeName(module.type)) +
           ", \"dependencies\": " + fomdump::jsonList(module.references()) +
           ", \"order\": " + std::to_string(position) + "}";
  }
  out += modules.empty() ? "]" : "\n  ]";
  out += ",\n  \"references\": [";
  for (size_t i = 0; i < federation.resolutions.size(); ++i) {
    const Resolution& resolution = federation.resolutions[i];
    out += std::string(i ? ",\n" : "\n") +
           "    {\"module\": " + fomdump::json(modules[resolution.module].file) +
           ", \"reference\": " + fomdump::json(resolution.reference) + ", \"resolvedTo\": " +
           (resolution.resolved ? fomdump::json(modules[resolution.target].file) : "null") +
           ", \"rule\": " +
           (resolution.resolved ? fomdump::json(fomdump::ruleName(resolution.rule)) : "null") +
           ", \"ambiguous\": " + (resolution.ambiguous ? "true" : "false") + "}";
  }
  out += federation.resolutions.empty() ? "]" : "\n  ]";
  out += ",\n  \"conflicts\": [";
  for (size_t i = 0; i < merged.conflicts.size(); ++i) {
    const Conflict& conflict = merged.conflicts[i];
    out += std::string(i ? ",\n" : "\n") + "    {\"first\": " + fomdump::json(conflict.first) +
           ", \"firstLine\": " + std::to_string(conflict.firstLine) +
           ", \"second\": " + fomdump::json(conflict.second) +
           ", \"secondLine\": " + std::to_string(conflict.secondLine) +
           ", \"message\": " + fomdump::json(conflict.message) + "}";
  }
  out += merged.conflicts.empty() ? "]" : "\n  ]";
  out += ",\n  \"unresolved\": [";
  for (size_t i = 0; i < merged.unresolved.size(); ++i) {
    const Unresolved& unresolved = merged.unresolved[i];
    out += std::string(i ? ",\n" : "\n") + "    {\"file\": " + fomdump::json(unresolved.file) +
           ", \"line\": " + std::to_string(unresolved.line) +
           ", \"dataType\": " + fomdump::json(unresolved.name) +
           ", \"namedBy\": " + fomdump::json(unresolved.namedBy) + "}";
  }
  out += merged.unresolved.empty() ? "]" : "\n  ]";
  out += "\n}\n";
  std::fputs(out.c_str(), stdout);
}

struct Options {
  std::vector<std::string> files;
  bool verbose = false;
  bool asJson = false;
  bool strict = false;
  bool validate = false;
  bool check = false;
  bool noMim = false;
  std::string mim;
  std::string graph;  // "modules", "classes", or empty for the model
  bool fix = false;
  // One file and nothing that asks for a federation: that file's model alone.
  bool singleModule() const {
    return files.size() == 1 && !check && !noMim && mim.empty() && graph.empty();
  }
};

// One module's model, as the reader delivered it.
int dumpModule(const Options& options) {
  const std::string& fileName = options.files.front();
  Module module = fomdump::readModule(fileName, options.strict, options.validate);
  if (module.result == DtFedNoFile) {
    std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", fileName.c_str());
    return kExitNoFile;
  }
  if (module.heldCopy) {
    std::fprintf(stderr,
                 "fomdump: %s: no such file; reading the library's own copy of the %s "
                 "standard MIM\n",
                 fileName.c_str(), editionName(module.type));
  }
  // What was delivered before a fault stays delivered, and is shown before the reason.
  if (options.asJson) {
    printJson(fileName, module.type, *module.model);
  } else {
    printText(fileName, module.type, *module.model);
  }
  if (module.result != DtFedOk) {
    const char* why = module.error.empty() ? "the file does not have the form of a FED file"
                                           : module.error.c_str();
    std::fprintf(stderr, "fomdump: %s: %s\n", fileName.c_str(), why);
    // The reader stops at the first fault, often without a word: the check says where and why.
    if (module.type == DtFomType13) reportFedDeviations(fileName);
    return kExitWrongFile;
  }
  // A read that succeeds may still leave its last warning.
  if (!module.error.empty()) {
    std::fprintf(stderr, "fomdump: %s: warning: %s\n", fileName.c_str(), module.error.c_str());
  }
  return kExitRead;
}

// An HLA 1.3 FED file rewritten in the strict form on standard output, its deviations told on
// standard error.
int fixFedFile(const Options& options) {
  const std::string& file = options.files.front();
  const size_t dot = file.find_last_of('.');
  if (dot != std::string::npos && strcasecmp(file.c_str() + dot, ".xml") == 0) {
    std::fprintf(stderr, "fomdump: --fix rewrites HLA 1.3 FED files, and %s is an XML document\n",
                 file.c_str());
    return kExitUsage;
  }
  fomdump::FedCheck check;
  fomdump::checkFed(file, check);
  if (!check.opened) {
    std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", file.c_str());
    return kExitNoFile;
  }
  for (const fomdump::FedDeviation& deviation : check.deviations) {
    const bool warned = deviation.kind == fomdump::FedDeviation::Kind::kWarned;
    std::fprintf(stderr, "%s%s%s\n", where(file, deviation.line).c_str(), warned ? "warning: " : "",
                 deviation.message.c_str());
  }
  std::string mended;
  fomdump::FedDeviation stop;
  if (!fomdump::mendFed(check, mended, stop)) {
    std::fprintf(stderr, "%scannot be mended without a guess: %s\n", where(file, stop.line).c_str(),
                 stop.message.c_str());
    return kExitWrongFile;
  }
  std::fwrite(mended.data(), 1, mended.size(), stdout);
  return kExitRead;
}

// The modules as one federation on top of the standard MIM, in dependency order.
int dumpFederation(const Options& options) {
  Federation federation;
  int status = kExitRead;
  bool haveMim = false;
  for (const std::string& file : options.files) {
    Module module = fomdump::readModule(file, options.strict, options.validate, true);
    if (module.result == DtFedNoFile) {
      std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", file.c_str());
      status = kExitNoFile;
      continue;
    }
    haveMim = haveMim || module.standardMim;
    federation.modules.push_back(std::move(module));
  }
  if (!options.mim.empty()) {
    Module mim = fomdump::readModule(options.mim, options.strict, options.validate);
    if (mim.result == DtFedNoFile) {
      std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", options.mim.c_str());
      return kExitNoFile;
    }
    mim.standardMim = true;
    federation.modules.insert(federation.modules.begin(), std::move(mim));
  } else if (!options.noMim && !haveMim) {
    DtFomType edition = fomdump::mimEdition(federation.modules);
    if (edition != DtFomTypeUnknown) {
      federation.modules.insert(federation.modules.begin(),
                                fomdump::readHeldMim(edition, options.strict));
    }
  }
  federation.arrange();
  MergedModel merged;
  fomdump::merge(federation, merged);

  if (options.graph == "modules") {
    std::fputs(fomdump::moduleGraph(federation).c_str(), stdout);
  } else if (options.graph == "classes") {
    std::fputs(fomdump::classGraph(merged).c_str(), stdout);
  } else if (options.asJson) {
    printFederationJson(federation, merged);
  } else {
    printFederationText(federation, merged, options.verbose);
  }
  // One message per line, "FILE:LINE: message" where the line is known.
  bool faults = false;
  // A failed read exits 2, unless it is a FED file that --check explains deviation by deviation.
  bool unexplained = false;
  for (const Module& module : federation.modules) {
    if (module.result != DtFedOk) {
      const std::string why =
          module.error.empty() ? "the file does not have the form of a FED file" : module.error;
      std::fprintf(stderr, "%s%s\n", where(module.file, lineOf(module.error)).c_str(), why.c_str());
      if (status == kExitRead) status = kExitWrongFile;
    } else if (!module.error.empty() && options.verbose) {
      std::fprintf(stderr, "%swarning: %s\n", where(module.file, lineOf(module.error)).c_str(),
                   module.error.c_str());
    }
    // A FED file that fails is told deviation by deviation; under --check, one that reads too.
    size_t deviations = 0;
    if (module.type == DtFomType13 && (module.result != DtFedOk || options.check)) {
      deviations = reportFedDeviations(module.file);
    }
    faults = faults || deviations > 0;
    unexplained = unexplained || (module.result != DtFedOk && deviations == 0);
  }
  for (const Resolution& resolution : federation.resolutions) {
    if (resolution.resolved) continue;
    faults = true;
    std::fprintf(stderr, "%sdependency %s\n",
                 where(federation.modules[resolution.module].file,
                       federation.modules[resolution.module].referenceLine(resolution.reference))
                     .c_str(),
                 describe(federation, resolution).c_str());
  }
  for (const Conflict& conflict : merged.conflicts) {
    faults = true;
    std::fprintf(stderr, "%s%s\n", where(conflict.second, conflict.secondLine).c_str(),
                 conflictText(conflict).c_str());
  }
  for (const Unresolved& unresolved : merged.unresolved) {
    faults = true;
    std::fprintf(stderr, "%s%s\n", where(unresolved.file, unresolved.line).c_str(),
                 unresolvedText(unresolved).c_str());
  }
  if (options.check && faults &&
      (status == kExitRead || (status == kExitWrongFile && !unexplained))) {
    status = kExitCheckFailed;
  }
  return status;
}

int run(int argc, char** argv) {
  Options options;
  try {
    TCLAP::CmdLine cmd(kDescription, ' ', "1.0");
    TCLAP::SwitchArg verboseArg("v", "verbose", "Show the readers' progress lines", cmd, false);
    TCLAP::SwitchArg jsonArg("j", "json", "Print the model as JSON", cmd, false);
    TCLAP::SwitchArg strictArg(
        "s", "strict",
        "Strict checking: unexpected content in an XML document fails the read instead of "
        "leaving a warning",
        cmd, false);
    TCLAP::SwitchArg validateArg(
        "d", "validate",
        "Validate an XML document: an IEEE 1516-2000 document against the DTD it names, looked "
        "for beside the document; an IEEE 1516-2010 or 1516-2025 document against the XML "
        "Schema its schemaLocation names, looked for from the working directory; only local "
        "files are read",
        cmd, false);
    TCLAP::SwitchArg checkArg("c", "check",
                              "Load the files as a federation and exit 4 unless every "
                              "dependency names a loaded module and the merge finds no conflict "
                              "and no unresolved data type",
                              cmd, false);
    TCLAP::SwitchArg noMimArg(
        "", "no-mim", "Load the files as a federation without the standard MIM", cmd, false);
    TCLAP::ValueArg<std::string> mimArg(
        "", "mim", "Load the files as a federation on top of this standard MIM", false, "", "file",
        cmd);
    std::vector<std::string> graphs = {"modules", "classes"};
    TCLAP::ValuesConstraint<std::string> graphNames(graphs);
    TCLAP::ValueArg<std::string> graphArg(
        "g", "graph",
        "Load the files as a federation and write, instead of the model, the module dependency "
        "graph (modules) or the merged class hierarchy with each class's module (classes) as "
        "Graphviz DOT",
        false, "", &graphNames, cmd);
    TCLAP::SwitchArg fixArg("", "fix",
                            "Write the HLA 1.3 FED file in the strict form the reader reads, "
                            "mending keyword case, entries the form has no place for and a "
                            "missing (spaces); refuse, naming the first deviation, when a "
                            "deviation cannot be mended without a guess",
                            cmd, false);
    TCLAP::UnlabeledMultiArg<std::string> fileArg(
        "file",
        "The FOM files to read: one is printed as its reader delivers it, several are loaded "
        "as a federation",
        true, "file", cmd);
    cmd.setExceptionHandling(false);
    cmd.parse(argc, argv);
    options.files = fileArg.getValue();
    options.verbose = verboseArg.getValue();
    options.asJson = jsonArg.getValue();
    options.strict = strictArg.getValue();
    options.validate = validateArg.getValue();
    options.check = checkArg.getValue();
    options.noMim = noMimArg.getValue();
    options.mim = mimArg.getValue();
    options.graph = graphArg.getValue();
    options.fix = fixArg.getValue();
    if (options.fix && (options.files.size() != 1 || options.check || options.asJson ||
                        options.noMim || !options.mim.empty() || !options.graph.empty())) {
      throw TCLAP::CmdLineParseException("--fix takes one FED file and no other option but -v");
    }
    // The file list takes every word that no option claims, an unknown option too.
    for (const std::string& file : options.files) {
      if (file.size() > 1 && file[0] == '-') {
        throw TCLAP::CmdLineParseException("Couldn't find match for argument", file);
      }
    }
  } catch (TCLAP::ExitException& e) {
    return e.getExitStatus();
  } catch (TCLAP::ArgException& e) {
    std::fprintf(stderr,
                 "fomdump: %s\nUsage: fomdump [-v] [--json] [--strict] [--validate] [--check] "
                 "[--no-mim] [--mim FILE] [--graph modules|classes] FILE... or fomdump --fix "
                 "FILE.fed (see fomdump --help)\n",
                 e.error().c_str());
    return kExitUsage;
  }
  if (options.verbose && DtNotifyLevel < 3) DtNotifyLevel = 3;
  if (options.fix) return fixFedFile(options);
  return options.singleModule() ? dumpModule(options) : dumpFederation(options);
}

}  // namespace

int main(int argc, char** argv) {
  // What no step expects, such as running out of memory on a huge federation, ends the program
  // with a line that says so rather than with an abort.
  try {
    return run(argc, argv);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "fomdump: %s\n", e.what());
  } catch (...) {
    std::fprintf(stderr, "fomdump: unexpected failure\n");
  }
  return kExitInternal;
}
