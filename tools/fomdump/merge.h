#ifndef TOOLS_FOMDUMP_MERGE_H
#define TOOLS_FOMDUMP_MERGE_H

// fomdump's merge of a federation's modules into one model, as an RTI merges them when it
// creates a federation: what two modules declare alike is one item; a class declared only to
// place subclasses under it (no attributes or parameters of its own) merges with any other
// declaration of it; an IEEE 1516-2025 module may extend what an earlier module declared (add
// attributes, parameters, dimensions, enumerators and alternatives, where a member both declare
// agrees); anything else declared again with other contents is a conflict. Data types that an
// attribute, parameter, type, record, time or tag names and no module declares are unresolved.
#include <map>
#include <string>
#include <vector>

#include "fomdump/federation.h"
#include "fomdump/model.h"

namespace fomdump {

// Two modules that declare one item differently.
struct Conflict {
  std::string first;   // the file that declared it first
  std::string second;  // the file that declares it again
  std::string message;
  long firstLine = 0;  // where each declaration opens, 0 if unknown
  long secondLine = 0;
};

// A data type named and declared nowhere, with the first module that names it.
struct Unresolved {
  std::string file;
  std::string name;
  std::string namedBy;  // what names it: "array X", "field f of record R", ...
  long line = 0;        // where what names it is declared, 0 if unknown
};

struct MergedModel {
  ModelRecorder model;
  // The file that declared each class with its contents (the first, or the one that gave a
  // scaffolding declaration its members), by full class name.
  std::map<std::string, std::string> objectModules;
  std::map<std::string, std::string> interactionModules;
  std::vector<Conflict> conflicts;
  std::vector<Unresolved> unresolved;
};

// Merges the federation's modules that read, in its load order. The merged model takes the
// classes and records out of the modules' models, which are left empty but for their names
// and dependencies: a federation is merged once.
void merge(Federation& federation, MergedModel& merged);

}  // namespace fomdump

#endif
