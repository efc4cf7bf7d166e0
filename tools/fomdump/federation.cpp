#include "fomdump/federation.h"

#include "fomdump/tracedReader.h"

#include <strings.h>

#include <cctype>
#include <cstdio>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlreader.h>

#include <ktl/fedReader1516e.h>
#include <ktl/fedReaderFactory.h>
#include <ktl/fomSorter.h>
#include <util/notify.h>

namespace fomdump {

using namespace KORRti;

namespace {

// The text after the first " - " of a model name, or "" if it has none.
std::string afterPrefix(const std::string& name) {
  size_t at = name.find(" - ");
  return at == std::string::npos ? std::string() : name.substr(at + 3);
}

// Whether a model name is one of the standard MIMs' own.
bool isStandardMimName(const std::string& name) {
  return name.find("Standard MOM and Initialization Module") != std::string::npos;
}

// Lets a read report on the notify streams into a text instead of standard output, whatever
// the notify level, while it lives.
class VerboseCapture {
 public:
  VerboseCapture() : saved_(DtVerbose.rdbuf(&text_)) {}
  ~VerboseCapture() { DtVerbose.rdbuf(saved_); }
  VerboseCapture(const VerboseCapture&) = delete;
  VerboseCapture& operator=(const VerboseCapture&) = delete;
  std::vector<std::string> lines() const {
    std::vector<std::string> found;
    std::istringstream in(text_.str());
    std::string line;
    while (std::getline(in, line)) {
      if (!line.empty()) found.push_back(line);
    }
    return found;
  }

 private:
  std::stringbuf text_;
  std::streambuf* saved_;
};

}  // namespace

std::string Module::name() const {
  if (model && !model->modelName.empty()) return model->modelName;
  return file;
}

const std::vector<std::string>& Module::references() const {
  static const std::vector<std::string> none;
  return model ? model->dependencies : none;
}

long Module::referenceLine(const std::string& reference) const {
  if (!model) return 0;
  auto found = model->dependencyLines.find(reference);
  return found == model->dependencyLines.end() ? 0 : found->second;
}

namespace {

// Reads into a new module through reader, told the edition first when it is known.
Module readWith(const std::string& file, DtFomType type, bool strict, bool validate) {
  Module module;
  module.file = file;
  module.type = type;
  module.model.reset(new ModelRecorder());
  module.model->setFomType(type);
  std::unique_ptr<DtFedReader> reader(makeTracedReader(type, *module.model));
  if (validate) {
    // The later XML readers validate against the schema the document names, when told to.
    if (auto* schemaReader = dynamic_cast<DtFedReader1516e*>(reader.get())) {
      schemaReader->setSchemaValidationEnabled(true);
    }
  }
  unsigned int mask = strict ? DtStrictUnexpectedContent : 0;
  module.result = reader->readFed(file.c_str(), module.model.get(), mask, validate, false);
  module.error = reader->lastError().c_str();
  return module;
}

// The edition whose standard MIM the library holds under a file name (compared as the readers
// compare it: without the directory, whatever the case), or unknown.
DtFomType heldMimEdition(const std::string& file) {
  std::string base = file.substr(file.find_last_of('/') + 1);
  for (DtFomType type : {DtFomTypeEvolved, DtFomType2025}) {
    if (strcasecmp(base.c_str(), DtFedReader::standardMimFileName(type).c_str()) == 0) return type;
  }
  return DtFomTypeUnknown;
}

}  // namespace

namespace {

// The attributes by which a root with no namespace is an IEEE 1516-2000 document.
const char* const theAttributesOf2000[] = {
    "DTDversion", "name",    "type",   "version",  "date",     "purpose",  "appDomain",
    "sponsor",    "pocName", "pocOrg", "pocPhone", "pocEmail", "reference"};

// The format of an .xml file as its root element tells it: the namespace of a 1516-2010 or
// 2025 document, or the attributes of a 1516-2000 one; unknown where the root does not decide.
// It reads only as far as the root, where DtFedReader::checkFomType parses the whole document
// before the reader parses it again; a document that is wrong further on is then refused by its
// reader, with the reader's message.
DtFomType rootFormat(const std::string& file) {
  size_t dot = file.find_last_of('.');
  if (dot == std::string::npos || strcasecmp(file.c_str() + dot, ".xml") != 0) {
    return DtFomTypeUnknown;
  }
  std::unique_ptr<xmlTextReader, void (*)(xmlTextReader*)> reader(
      xmlReaderForFile(file.c_str(), nullptr,
                       XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
      xmlFreeTextReader);
  if (!reader) return DtFomTypeUnknown;
  int read;
  while ((read = xmlTextReaderRead(reader.get())) == 1 &&
         xmlTextReaderNodeType(reader.get()) != XML_READER_TYPE_ELEMENT) {
  }
  if (read != 1) return DtFomTypeUnknown;
  if (const xmlChar* space = xmlTextReaderConstNamespaceUri(reader.get())) {
    if (xmlStrstr(space, BAD_CAST "IEEE1516-2010") || xmlStrstr(space, BAD_CAST "IEEE1516-2009")) {
      return DtFomTypeEvolved;
    }
    if (xmlStrstr(space, BAD_CAST "IEEE1516-2025")) return DtFomType2025;
    return DtFomTypeUnknown;
  }
  while (xmlTextReaderMoveToNextAttribute(reader.get()) == 1) {
    if (xmlTextReaderIsNamespaceDecl(reader.get()) == 1) continue;
    const xmlChar* name = xmlTextReaderConstLocalName(reader.get());
    for (const char* known : theAttributesOf2000) {
      if (xmlStrEqual(name, BAD_CAST known)) return DtFomType1516;
    }
  }
  return DtFomTypeUnknown;
}

}  // namespace

Module readModule(const std::string& file, bool strict, bool validate, bool byRoot) {
  DtFomType type = byRoot ? rootFormat(file) : DtFomTypeUnknown;
  // Unknown only when no file of that name can be opened: then a standard MIM's name is
  // answered from the library's copy, which the reader reads once the target has the edition.
  if (type == DtFomTypeUnknown) type = DtFedReader::checkFomType(file.c_str());
  bool held = false;
  if (type == DtFomTypeUnknown) {
    type = heldMimEdition(file);
    held = type != DtFomTypeUnknown;
  }
  if (type == DtFomTypeUnknown) {
    Module missing;
    missing.file = file;
    missing.result = DtFedNoFile;
    return missing;
  }
  Module module = readWith(file, type, strict, validate);
  module.heldCopy = held;
  module.standardMim = held;
  return module;
}

Module readHeldMim(DtFomType edition, bool strict) {
  // A name in a directory that does not exist, so that the reader answers it from its copy.
  const std::string name = "/nonexistent/" + DtFedReader::standardMimFileName(edition).stdString();
  Module module = readWith(name, edition, strict, false);
  module.file = DtFedReader::standardMimFileName(edition).stdString();
  module.heldCopy = true;
  module.standardMim = true;
  return module;
}

const char* ruleName(Rule rule) {
  switch (rule) {
    case Rule::kModelName:
      return "model name";
    case Rule::kNameAfterPrefix:
      return "model name after its \" - \" prefix";
    case Rule::kFileStem:
      return "file name";
    case Rule::kFileStemLessVersion:
      return "file name without its version";
    case Rule::kStandardMim:
      return "standard MIM";
  }
  return "";
}

std::string fileStem(const std::string& file, bool lessVersion) {
  std::string stem = file.substr(file.find_last_of('/') + 1);
  size_t dot = stem.find_last_of('.');
  if (dot != std::string::npos && dot > 0) stem.erase(dot);
  if (!lessVersion) return stem;
  // "_v2.0", "-v1", "_V3.1.2" at the end: a separator, a v, then digits and dots.
  size_t at = stem.size();
  while (at > 0 && (std::isdigit(static_cast<unsigned char>(stem[at - 1])) || stem[at - 1] == '.'))
    --at;
  if (at == stem.size() || at < 3) return stem;
  if (!std::isdigit(static_cast<unsigned char>(stem[at]))) return stem;
  if (stem[at - 1] != 'v' && stem[at - 1] != 'V') return stem;
  if (stem[at - 2] != '_' && stem[at - 2] != '-') return stem;
  return stem.substr(0, at - 2);
}

std::vector<size_t> matches(Rule rule, const std::string& reference,
                            const std::vector<Module>& modules) {
  std::vector<size_t> found;
  for (size_t i = 0; i < modules.size(); ++i) {
    const Module& module = modules[i];
    if (!module.model) continue;
    const std::string& name = module.model->modelName;
    bool match = false;
    switch (rule) {
      case Rule::kModelName:
        match = !name.empty() && name == reference;
        break;
      case Rule::kNameAfterPrefix:
        match = !afterPrefix(name).empty() && afterPrefix(name) == reference;
        break;
      case Rule::kFileStem:
        match = !module.heldCopy && fileStem(module.file, false) == reference;
        break;
      case Rule::kFileStemLessVersion:
        match = !module.heldCopy && fileStem(module.file, true) == reference;
        break;
      case Rule::kStandardMim:
        match = module.standardMim && (reference == "MIM" || isStandardMimName(reference));
        break;
    }
    if (match) found.push_back(i);
  }
  return found;
}

Resolution resolve(size_t module, const std::string& reference,
                   const std::vector<Module>& modules) {
  Resolution resolution;
  resolution.module = module;
  resolution.reference = reference;
  for (Rule rule : {Rule::kModelName, Rule::kNameAfterPrefix, Rule::kFileStem,
                    Rule::kFileStemLessVersion, Rule::kStandardMim}) {
    std::vector<size_t> found;
    for (size_t candidate : matches(rule, reference, modules)) {
      if (candidate != module) found.push_back(candidate);
    }
    if (found.empty()) continue;
    if (found.size() > 1) {
      resolution.ambiguous = true;
      resolution.candidates = found;
      return resolution;
    }
    resolution.resolved = true;
    resolution.target = found.front();
    resolution.rule = rule;
    return resolution;
  }
  return resolution;
}

void Federation::arrange() {
  resolutions.clear();
  order.clear();
  sorterLines.clear();
  DtFomSorter sorter;
  VerboseCapture capture;
  // The standard MIM goes first whatever the sorter makes of ties; it depends on nothing.
  for (size_t i = 0; i < modules.size(); ++i) {
    if (modules[i].standardMim && modules[i].model) order.push_back(i);
  }
  for (size_t i = 0; i < modules.size(); ++i) {
    const Module& module = modules[i];
    if (!module.model) continue;
    std::vector<DtString> names;
    for (const std::string& reference : module.references()) {
      Resolution resolution = resolve(i, reference, modules);
      // What no rule resolves goes to the sorter as written, which reports it as unknown.
      names.push_back(resolution.resolved ? modules[resolution.target].name() : reference);
      resolutions.push_back(resolution);
    }
    sorter.addFom(module.file, module.name(), names);
  }
  std::vector<DtString> sorted;
  sorter.getSortedFomFileNames(sorted);
  for (const DtString& file : sorted) {
    for (size_t i = 0; i < modules.size(); ++i) {
      if (modules[i].file != file.c_str() || modules[i].standardMim) continue;
      bool placed = false;
      for (size_t at : order) placed = placed || at == i;
      if (!placed) order.push_back(i);
    }
  }
  sorterLines = capture.lines();
}

DtFomType mimEdition(const std::vector<Module>& modules) {
  DtFomType edition = DtFomTypeUnknown;
  for (const Module& module : modules) {
    if (module.type == DtFomType2025) return DtFomType2025;
    if (module.type == DtFomTypeEvolved) edition = DtFomTypeEvolved;
  }
  return edition;
}

}  // namespace fomdump
