#include "fomdump/print.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/xmlFedReader.h>

namespace fomdump {

using namespace KORRti;

namespace {

const char* transportName(DtTransportType transport) {
  if (transport == DtTransportBestEffort) return "best_effort";
  if (transport == DtTransportReliable) return "reliable";
  return "invalid";
}

const char* orderName(DtOrderType order) {
  if (order == DtOrderReceive) return "receive";
  if (order == DtOrderTimestamp) return "timestamp";
  return "invalid";
}

// The depth of each class in its tree: a class's parent was delivered before it.
template <typename Class>
std::vector<int> depths(const std::vector<Class>& classes) {
  std::map<std::string, int> known;
  std::vector<int> result;
  for (const Class& item : classes) {
    auto parent = known.find(item.parent);
    int depth = item.parent.empty() || parent == known.end() ? 0 : parent->second + 1;
    known[item.name] = depth;
    result.push_back(depth);
  }
  return result;
}

// Each class followed by its subclasses, in delivery order, so the indentation shows the tree
// even where a file mixes attributes and subclasses.
template <typename Class>
std::vector<size_t> treeOrder(const std::vector<Class>& classes) {
  std::map<std::string, std::vector<size_t>> children;
  std::vector<size_t> roots;
  std::map<std::string, bool> seen;
  for (size_t i = 0; i < classes.size(); ++i) {
    if (!classes[i].parent.empty() && seen.count(classes[i].parent)) {
      children[classes[i].parent].push_back(i);
    } else {
      roots.push_back(i);
    }
    seen[classes[i].name] = true;
  }
  std::vector<size_t> order;
  std::vector<size_t> stack(roots.rbegin(), roots.rend());
  while (!stack.empty()) {
    size_t at = stack.back();
    stack.pop_back();
    order.push_back(at);
    auto found = children.find(classes[at].name);
    if (found != children.end())
      stack.insert(stack.end(), found->second.rbegin(), found->second.rend());
  }
  return order;
}

const char* endianName(int32_t endian) {
  if (endian == 1) return "Big";
  if (endian == 2) return "Little";
  return "none";
}

const char* capabilityName(int32_t capability) {
  static const char* const names[] = {"none",    "Register", "Achieve", "RegisterAchieve",
                                      "NoSynch", "NA"};
  return capability >= 0 && capability <= 5 ? names[capability] : "none";
}

// The children of a data type in name order: the records hold them in sets ordered by address,
// which says nothing, so a stable order is made for printing.
template <typename Child>
std::vector<const Child*> byName(const std::set<std::shared_ptr<Child>>& children) {
  std::vector<const Child*> sorted;
  sorted.reserve(children.size());
  for (const auto& child : children) sorted.push_back(child.get());
  std::stable_sort(sorted.begin(), sorted.end(), [](const Child* a, const Child* b) {
    return std::string(a->name.c_str()) < std::string(b->name.c_str());
  });
  return sorted;
}

std::string joined(const std::vector<std::string>& names) {
  std::string out;
  for (const std::string& name : names) out += (out.empty() ? "" : " ") + name;
  return out;
}

// Appends "  key value" when the value is not empty.
void field(std::ostringstream& out, const char* key, const DtString& value) {
  if (!value.isEmpty()) out << "  " << key << " " << value.c_str();
}

// Whether the format has a model identification with dependencies, and update rates.
bool isModular(DtFomType type) {
  return type == DtFomTypeEvolved || type == DtFomType2025;
}

// The sections that only the XML documents have, as text, before the classes.
void printXmlHead(std::ostringstream& out, DtFomType type, const ModelRecorder& model) {
  if (isModular(type)) {
    out << "Model: " << model.modelName << "\n";
    out << "Dependencies: " << model.dependencies.size() << "\n";
    for (const std::string& name : model.dependencies) out << "  dependency " << name << "\n";
  }
  out << "Dimensions: " << model.dimensions.size() << "\n";
  for (const Dimension& item : model.dimensions) {
    out << "  dimension " << item.name << "  upperBound " << item.upperBound << "  range ["
        << item.rangeLower << ", " << item.rangeUpper << ")";
    if (item.excluded) out << "  excluded";
    if (!item.normalization.empty()) out << "  normalization " << item.normalization;
    out << "\n";
  }
  out << "Transportations: " << model.transportations.size() << "\n";
  for (const auto& item : model.transportations) {
    out << "  transportation " << item->name.c_str() << "  "
        << (item->reliable ? "reliable" : "best_effort") << "\n";
  }
  out << "Switches: " << model.switches.size() << "\n";
  for (const Switch& item : model.switches) {
    out << "  switch " << item.name << "  " << (item.enabled ? "Enabled" : "Disabled") << "\n";
  }
  if (isModular(type)) {
    out << "Update rates: " << model.updateRates.size() << "\n";
    for (const auto& item : model.updateRates) {
      out << "  rate " << item->name.c_str() << "  " << item->rate << "\n";
    }
  }
  out << "Time: " << model.time.size() << "\n";
  for (const auto& item : model.time) {
    out << "  " << item->name.c_str();
    field(out, "dataType", item->dataType);
    out << "\n";
  }
  out << "Tags: " << model.tags.size() << "\n";
  for (const auto& item : model.tags) {
    out << "  " << item->name.c_str();
    field(out, "dataType", item->dataType);
    out << "\n";
  }
  out << "Synchronization points: " << model.synchronizations.size() << "\n";
  for (const auto& item : model.synchronizations) {
    out << "  " << item->label.c_str() << "  capability " << capabilityName(item->capability);
    field(out, "dataType", item->dataType);
    out << "\n";
  }
}

// The data types and notes of an XML document, as text, after the classes.
void printXmlTail(std::ostringstream& out, const ModelRecorder& model) {
  const DataTypes& types = model.dataTypes;
  out << "Data types: " << types.size() << "\n";
  out << "  basic: " << types.basic.size() << "\n";
  for (const auto& item : types.basic) {
    out << "    " << item->name.c_str() << "  size " << item->size << "  endian "
        << endianName(item->endian);
    field(out, "encoding", item->encoding);
    out << "\n";
  }
  out << "  simple: " << types.simple.size() << "\n";
  for (const auto& item : types.simple) {
    out << "    " << item->name.c_str();
    field(out, "representation", item->representation);
    field(out, "units", item->units);
    out << "\n";
  }
  out << "  enumerated: " << types.enumerated.size() << "\n";
  for (const auto& item : types.enumerated) {
    out << "    " << item->name.c_str();
    field(out, "representation", item->representation);
    out << "\n";
    for (const DtEnumeratorType* enumerator : byName(item->enumerators)) {
      out << "      enumerator " << enumerator->name.c_str() << " = " << enumerator->values.c_str()
          << "\n";
    }
  }
  out << "  array: " << types.array.size() << "\n";
  for (const auto& item : types.array) {
    out << "    " << item->name.c_str();
    field(out, "dataType", item->dataType);
    field(out, "cardinality", item->cardinality);
    field(out, "encoding", item->encoding);
    out << "\n";
  }
  out << "  fixedRecord: " << types.fixedRecord.size() << "\n";
  for (const auto& item : types.fixedRecord) {
    out << "    " << item->name.c_str();
    field(out, "encoding", item->encoding);
    out << "\n";
    for (const DtFieldType* member : byName(item->fields)) {
      out << "      field " << member->name.c_str();
      field(out, "dataType", member->dataType);
      out << "\n";
    }
  }
  out << "  variantRecord: " << types.variantRecord.size() << "\n";
  for (const auto& item : types.variantRecord) {
    out << "    " << item->name.c_str();
    field(out, "discriminant", item->discriminant);
    field(out, "dataType", item->dataType);
    field(out, "encoding", item->encoding);
    out << "\n";
    for (const DtAlternativeType* alternative : byName(item->alternatives)) {
      out << "      alternative " << alternative->name.c_str();
      field(out, "enumerator", alternative->enumerator);
      field(out, "dataType", alternative->dataType);
      out << "\n";
    }
  }
  out << "Notes: " << model.notes.size() << "\n";
  for (const auto& item : model.notes) {
    out << "  note " << item->label.c_str();
    field(out, "semantics", item->semantics);
    out << "\n";
  }
}

}  // namespace

void printText(const std::string& fileName, DtFomType type, const ModelRecorder& model) {
  std::ostringstream out;
  out << "FOM file: " << fileName << "\n";
  out << "Format: " << DtFomTypeName(type) << "\n";
  out << "Routing spaces: " << model.spaces.size() << "\n";
  for (const Space& space : model.spaces) {
    out << "  space " << space.name << "\n";
    for (const std::string& dimension : space.dimensions)
      out << "    dimension " << dimension << "\n";
  }
  const bool xml = type != DtFomType13;
  if (xml) printXmlHead(out, type, model);
  out << "Object classes: " << model.objects.size() << "\n";
  std::vector<int> objectDepths = depths(model.objects);
  for (size_t i : treeOrder(model.objects)) {
    const ObjectClass& item = model.objects[i];
    std::string indent(2 + 2 * objectDepths[i], ' ');
    out << indent << "class " << item.name;
    if (!item.dimensions.empty()) out << "  dimensions " << joined(item.dimensions);
    out << "\n";
    for (const Attribute& attribute : item.attributes) {
      out << indent << "  attribute " << attribute.name << "  transport "
          << transportName(attribute.transport) << "  order " << orderName(attribute.order);
      if (!attribute.space.empty()) out << "  space " << attribute.space;
      if (!attribute.dimensions.empty()) out << "  dimensions " << joined(attribute.dimensions);
      out << "\n";
    }
  }
  out << "Interaction classes: " << model.interactions.size() << "\n";
  std::vector<int> interactionDepths = depths(model.interactions);
  for (size_t i : treeOrder(model.interactions)) {
    const InteractionClass& item = model.interactions[i];
    std::string indent(2 + 2 * interactionDepths[i], ' ');
    out << indent << "class " << item.name << "  transport " << transportName(item.transport)
        << "  order " << orderName(item.order);
    if (!item.space.empty()) out << "  space " << item.space;
    if (!item.dimensions.empty()) out << "  dimensions " << joined(item.dimensions);
    out << "\n";
    for (const std::string& parameter : item.parameters) {
      out << indent << "  parameter " << parameter << "\n";
    }
  }
  if (xml) printXmlTail(out, model);
  std::fputs(out.str().c_str(), stdout);
}

std::string json(const std::string& text) {
  std::string out = "\"";
  for (unsigned char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (c < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          out += escaped;
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  return out + "\"";
}

std::string jsonOrNull(const std::string& text) {
  return text.empty() ? "null" : json(text);
}

std::string jsonList(const std::vector<std::string>& names) {
  std::string out = "[";
  for (size_t i = 0; i < names.size(); ++i) out += (i ? ", " : "") + json(names[i]);
  return out + "]";
}

std::string json(const char* text) {
  return json(std::string(text ? text : ""));
}

std::string json(const DtString& text) {
  return json(text.c_str());
}

namespace {

// Writes "key": [ entries ] at the given indentation, one entry a line, each made by entry.
template <typename Items, typename Entry>
void jsonArray(std::ostringstream& out, const char* key, const Items& items, const char* indent,
               Entry entry) {
  out << indent << json(std::string(key)) << ": [";
  bool first = true;
  for (const auto& item : items) {
    out << (first ? "\n" : ",\n") << indent << "  {";
    entry(item);
    out << "}";
    first = false;
  }
  out << (first ? "]" : std::string("\n") + indent + "]");
}

// The sections that only the XML documents have, as members of the top object.
void printXmlJson(std::ostringstream& out, DtFomType type, const ModelRecorder& model) {
  out << ",\n";
  jsonArray(out, "dimensions", model.dimensions, "  ", [&](const Dimension& item) {
    out << "\"name\": " << json(item.name) << ", \"upperBound\": " << item.upperBound
        << ", \"rangeLower\": " << item.rangeLower << ", \"rangeUpper\": " << item.rangeUpper
        << ", \"excluded\": " << (item.excluded ? "true" : "false")
        << ", \"normalization\": " << json(item.normalization);
  });
  out << ",\n";
  jsonArray(out, "transportations", model.transportations, "  ", [&](const auto& item) {
    out << "\"name\": " << json(item->name)
        << ", \"reliable\": " << (item->reliable ? "true" : "false")
        << ", \"semantics\": " << json(item->semantics);
  });
  out << ",\n";
  jsonArray(out, "switches", model.switches, "  ", [&](const Switch& item) {
    out << "\"name\": " << json(item.name)
        << ", \"enabled\": " << (item.enabled ? "true" : "false");
  });
  if (isModular(type)) {
    out << ",\n";
    jsonArray(out, "updateRates", model.updateRates, "  ", [&](const auto& item) {
      out << "\"name\": " << json(item->name) << ", \"rate\": " << item->rate
          << ", \"semantics\": " << json(item->semantics);
    });
  }
  out << ",\n";
  jsonArray(out, "time", model.time, "  ", [&](const auto& item) {
    out << "\"name\": " << json(item->name) << ", \"dataType\": " << json(item->dataType)
        << ", \"semantics\": " << json(item->semantics);
  });
  out << ",\n";
  jsonArray(out, "tags", model.tags, "  ", [&](const auto& item) {
    out << "\"name\": " << json(item->name) << ", \"dataType\": " << json(item->dataType)
        << ", \"semantics\": " << json(item->semantics);
  });
  out << ",\n";
  jsonArray(out, "synchronizations", model.synchronizations, "  ", [&](const auto& item) {
    out << "\"name\": " << json(item->label)
        << ", \"capability\": " << json(std::string(capabilityName(item->capability)))
        << ", \"dataType\": " << json(item->dataType)
        << ", \"semantics\": " << json(item->semantics);
  });
  out << ",\n  \"dataTypes\": {\n";
  const DataTypes& types = model.dataTypes;
  jsonArray(out, "basic", types.basic, "    ", [&](const auto& item) {
    out << "\"name\": " << json(item->name) << ", \"size\": " << item->size
        << ", \"endian\": " << json(std::string(endianName(item->endian)))
        << ", \"interpretation\": " << json(item->interpretation)
        << ", \"encoding\": " << json(item->encoding);
  });
  out << ",\n";
  jsonArray(out, "simple", types.simple, "    ", [&](const auto& item) {
    out << "\"name\": " << json(item->name)
        << ", \"representation\": " << json(item->representation)
        << ", \"units\": " << json(item->units) << ", \"resolution\": " << json(item->resolution)
        << ", \"accuracy\": " << json(item->accuracy)
        << ", \"semantics\": " << json(item->semantics);
  });
  out << ",\n";
  jsonArray(out, "enumerated", types.enumerated, "    ", [&](const auto& item) {
    out << "\"name\": " << json(item->name)
        << ", \"representation\": " << json(item->representation) << ", \"enumerators\": [";
    bool first = true;
    for (const DtEnumeratorType* enumerator : byName(item->enumerators)) {
      out << (first ? "" : ", ") << "{\"name\": " << json(enumerator->name)
          << ", \"values\": " << json(enumerator->values) << "}";
      first = false;
    }
    out << "], \"semantics\": " << json(item->semantics);
  });
  out << ",\n";
  jsonArray(out, "array", types.array, "    ", [&](const auto& item) {
    out << "\"name\": " << json(item->name) << ", \"dataType\": " << json(item->dataType)
        << ", \"cardinality\": " << json(item->cardinality)
        << ", \"encoding\": " << json(item->encoding)
        << ", \"semantics\": " << json(item->semantics);
  });
  out << ",\n";
  jsonArray(out, "fixedRecord", types.fixedRecord, "    ", [&](const auto& item) {
    out << "\"name\": " << json(item->name) << ", \"encoding\": " << json(item->encoding)
        << ", \"fields\": [";
    bool first = true;
    for (const DtFieldType* member : byName(item->fields)) {
      out << (first ? "" : ", ") << "{\"name\": " << json(member->name)
          << ", \"dataType\": " << json(member->dataType) << "}";
      first = false;
    }
    out << "], \"semantics\": " << json(item->semantics);
  });
  out << ",\n";
  jsonArray(out, "variantRecord", types.variantRecord, "    ", [&](const auto& item) {
    out << "\"name\": " << json(item->name) << ", \"discriminant\": " << json(item->discriminant)
        << ", \"dataType\": " << json(item->dataType) << ", \"encoding\": " << json(item->encoding)
        << ", \"alternatives\": [";
    bool first = true;
    for (const DtAlternativeType* alternative : byName(item->alternatives)) {
      out << (first ? "" : ", ") << "{\"name\": " << json(alternative->name)
          << ", \"enumerator\": " << json(alternative->enumerator)
          << ", \"dataType\": " << json(alternative->dataType) << "}";
      first = false;
    }
    out << "], \"semantics\": " << json(item->semantics);
  });
  out << "\n  },\n";
  jsonArray(out, "notes", model.notes, "  ", [&](const auto& item) {
    out << "\"name\": " << json(item->label) << ", \"semantics\": " << json(item->semantics);
  });
}

}  // namespace

std::string modelJson(const std::string& fileName, DtFomType type, const ModelRecorder& model) {
  const bool xml = type != DtFomType13;
  std::ostringstream out;
  out << "{\n  \"file\": " << json(fileName) << ",\n  \"format\": " << json(DtFomTypeName(type));
  if (isModular(type)) {
    out << ",\n  \"modelName\": " << json(model.modelName)
        << ",\n  \"dependencies\": " << jsonList(model.dependencies);
  }
  out << ",\n  \"spaces\": [";
  for (size_t i = 0; i < model.spaces.size(); ++i) {
    const Space& space = model.spaces[i];
    out << (i ? ",\n" : "\n") << "    {\"name\": " << json(space.name) << ", \"dimensions\": [";
    for (size_t d = 0; d < space.dimensions.size(); ++d) {
      out << (d ? ", " : "") << json(space.dimensions[d]);
    }
    out << "]}";
  }
  out << (model.spaces.empty() ? "]" : "\n  ]") << ",\n  \"objectClasses\": [";
  for (size_t i = 0; i < model.objects.size(); ++i) {
    const ObjectClass& item = model.objects[i];
    out << (i ? ",\n" : "\n") << "    {\"name\": " << json(item.name)
        << ", \"parent\": " << jsonOrNull(item.parent);
    if (isModular(type)) out << ", \"dimensions\": " << jsonList(item.dimensions);
    out << ", \"attributes\": [";
    for (size_t a = 0; a < item.attributes.size(); ++a) {
      const Attribute& attribute = item.attributes[a];
      out << (a ? ", " : "") << "{\"name\": " << json(attribute.name)
          << ", \"transport\": " << json(transportName(attribute.transport))
          << ", \"order\": " << json(orderName(attribute.order))
          << ", \"space\": " << jsonOrNull(attribute.space);
      if (xml) out << ", \"dimensions\": " << jsonList(attribute.dimensions);
      out << "}";
    }
    out << "]}";
  }
  out << (model.objects.empty() ? "]" : "\n  ]") << ",\n  \"interactionClasses\": [";
  for (size_t i = 0; i < model.interactions.size(); ++i) {
    const InteractionClass& item = model.interactions[i];
    out << (i ? ",\n" : "\n") << "    {\"name\": " << json(item.name)
        << ", \"parent\": " << jsonOrNull(item.parent)
        << ", \"transport\": " << json(transportName(item.transport))
        << ", \"order\": " << json(orderName(item.order))
        << ", \"space\": " << jsonOrNull(item.space);
    if (xml) out << ", \"dimensions\": " << jsonList(item.dimensions);
    out << ", \"parameters\": [";
    for (size_t p = 0; p < item.parameters.size(); ++p) {
      out << (p ? ", " : "") << json(item.parameters[p]);
    }
    out << "]}";
  }
  out << (model.interactions.empty() ? "]" : "\n  ]");
  if (xml) printXmlJson(out, type, model);
  out << "\n}\n";
  return out.str();
}

void printJson(const std::string& fileName, DtFomType type, const ModelRecorder& model) {
  std::fputs(modelJson(fileName, type, model).c_str(), stdout);
}

}  // namespace fomdump
