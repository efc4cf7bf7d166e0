// fomdump: reads a FOM file with the library's readers and prints the model they deliver.
//
// The program is a host of the reader interface: its target writes down every space, class,
// attribute and parameter it is told about, in the order it is told, and prints them as an
// indented tree or as JSON.
#include <tclap/CmdLine.h>

#include <strings.h>

#include <algorithm>
#include <cstdio>
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

namespace {

using namespace KORRti;

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
    "Exit status: 0 read, 1 no such file, 2 the file is wrong, 64 a wrong command line.";

const int kExitRead = 0;
const int kExitNoFile = 1;
const int kExitWrongFile = 2;
const int kExitUsage = 64;

struct Attribute {
  std::string name;
  DtTransportType transport;
  DtOrderType order;
  std::string space;  // empty for none
  std::vector<std::string> dimensions;
};

struct ObjectClass {
  std::string name;
  std::string parent;  // empty at the root
  std::vector<Attribute> attributes;
  std::vector<std::string> dimensions;
};

struct InteractionClass {
  std::string name;
  std::string parent;
  DtTransportType transport;
  DtOrderType order;
  std::string space;
  std::vector<std::string> parameters;
  std::vector<std::string> dimensions;
};

struct Space {
  std::string name;
  std::vector<std::string> dimensions;
};

struct Dimension {
  std::string name;
  unsigned long upperBound;
  unsigned long rangeLower;
  unsigned long rangeUpper;
  bool excluded;
  std::string normalization;
};

struct Switch {
  std::string name;
  bool enabled;
};

// The records of an XML document, kept as the reader handed them over.
struct DataTypes {
  std::vector<std::unique_ptr<DtBasicDataRepresentationType>> basic;
  std::vector<std::unique_ptr<DtSimpleDatatypeType>> simple;
  std::vector<std::unique_ptr<DtEnumeratedDatatypeType>> enumerated;
  std::vector<std::unique_ptr<DtArrayDatatypeType>> array;
  std::vector<std::unique_ptr<DtFixedRecordDatatypeType>> fixedRecord;
  std::vector<std::unique_ptr<DtVariantRecordDatatypeType>> variantRecord;
  size_t size() const {
    return basic.size() + simple.size() + enumerated.size() + array.size() + fixedRecord.size() +
           variantRecord.size();
  }
};

// The target: everything it is told, in order. Names are copied, since the reader's texts die
// with each call.
class ModelRecorder : public DtFedTarget {
 public:
  std::vector<Space> spaces;
  std::vector<ObjectClass> objects;
  std::vector<InteractionClass> interactions;
  std::vector<Dimension> dimensions;
  std::vector<std::unique_ptr<DtTransportationType>> transportations;
  std::vector<Switch> switches;
  std::vector<std::unique_ptr<DtTimeType>> time;
  std::vector<std::unique_ptr<DtUserSuppliedTagsType>> tags;
  std::vector<std::unique_ptr<DtSynchronizationPointsType>> synchronizations;
  std::vector<std::unique_ptr<DtNotesType>> notes;
  DataTypes dataTypes;
  // What only IEEE 1516-2010 and 1516-2025 modules have.
  std::string modelName;
  std::vector<std::string> dependencies;
  std::vector<std::unique_ptr<DtUpdateRateType>> updateRates;

  bool addSpace(const char* name) override {
    spaces.push_back({text(name), {}});
    return true;
  }
  bool addSpaceDimension(const char* space, const char* dimension) override {
    for (Space& known : spaces) {
      if (known.name == text(space)) known.dimensions.push_back(text(dimension));
    }
    return true;
  }
  bool addObjectClass(const char* name, const char* parent) override {
    objects.push_back({text(name), text(parent), {}, {}});
    return true;
  }
  bool addObjectClassDimension(const char* className, const char* dimension) override {
    if (ObjectClass* owner = findObject(text(className))) {
      owner->dimensions.push_back(text(dimension));
    }
    return true;
  }
  bool setFomName(const char* name) override {
    modelName = text(name);
    return true;
  }
  bool setFomDependencies(const std::vector<DtString>& names) override {
    for (const DtString& name : names) dependencies.push_back(name.c_str());
    return true;
  }
  bool addSpaceAttribute(const char* className, const char* name, DtTransportType transport,
                         DtOrderType order, const char* space) override {
    if (ObjectClass* owner = findObject(text(className))) {
      owner->attributes.push_back({text(name), transport, order, text(space), {}});
    }
    return true;
  }
  bool addInteractionClass(const char* name, const char* parent, DtTransportType transport,
                           DtOrderType order, const char* space) override {
    interactions.push_back({text(name), text(parent), transport, order, text(space), {}, {}});
    return true;
  }
  bool addParameter(const char* className, const char* name) override {
    if (InteractionClass* owner = findInteraction(text(className))) {
      owner->parameters.push_back(text(name));
    }
    return true;
  }
  bool addAttribute(const char* className, const char* name, DtTransportType transport,
                    DtOrderType order, DtSharingType_enum, DtFomUpdateType_enum, const DtString&,
                    DtOwnershipType_enum, const DtString&, void*) override {
    if (ObjectClass* owner = findObject(text(className))) {
      owner->attributes.push_back({text(name), transport, order, "", {}});
    }
    return true;
  }
  bool addAttributeDimension(const char* className, const char* attribute,
                             const char* dimension) override {
    if (ObjectClass* owner = findObject(text(className))) {
      for (auto it = owner->attributes.rbegin(); it != owner->attributes.rend(); ++it) {
        if (it->name == text(attribute)) {
          it->dimensions.push_back(text(dimension));
          break;
        }
      }
    }
    return true;
  }
  bool addInteractionDimension(const char* className, const char* dimension) override {
    if (InteractionClass* owner = findInteraction(text(className))) {
      owner->dimensions.push_back(text(dimension));
    }
    return true;
  }
  bool addDimension(const char* name, unsigned long upperBound, unsigned long rangeLower,
                    unsigned long rangeUpper, bool excluded,
                    const DtString& normalization) override {
    dimensions.push_back(
        {text(name), upperBound, rangeLower, rangeUpper, excluded, normalization.c_str()});
    return true;
  }
  bool setSwitch(const DtString& name, bool value) override {
    switches.push_back({name.c_str(), value});
    return DtFedTarget::setSwitch(name, value);
  }

  // Records are the target's once added.
  bool addTransportation(DtTransportationType* record) override {
    return keep(transportations, record);
  }
  bool addTime(DtTimeType* record) override { return keep(time, record); }
  bool addUpdateRate(DtUpdateRateType* record) override { return keep(updateRates, record); }
  bool addUserSuppliedTag(DtUserSuppliedTagsType* record) override { return keep(tags, record); }
  bool addSynchronizationPoint(DtSynchronizationPointsType* record) override {
    return keep(synchronizations, record);
  }
  bool addNote(DtNotesType* record) override { return keep(notes, record); }
  bool addBasicDataRepresentation(DtBasicDataRepresentationType* record) override {
    return keep(dataTypes.basic, record);
  }
  bool addSimpleDatatype(DtSimpleDatatypeType* record) override {
    return keep(dataTypes.simple, record);
  }
  bool addEnumeratedDatatype(DtEnumeratedDatatypeType* record) override {
    return keep(dataTypes.enumerated, record);
  }
  bool addArrayDatatype(DtArrayDatatypeType* record) override {
    return keep(dataTypes.array, record);
  }
  bool addFixedRecordDatatype(DtFixedRecordDatatypeType* record) override {
    return keep(dataTypes.fixedRecord, record);
  }
  bool addVariantRecordDatatype(DtVariantRecordDatatypeType* record) override {
    return keep(dataTypes.variantRecord, record);
  }

 private:
  static std::string text(const char* value) { return value ? value : ""; }
  ObjectClass* findObject(const std::string& name) {
    for (auto it = objects.rbegin(); it != objects.rend(); ++it) {
      if (it->name == name) return &*it;
    }
    return nullptr;
  }
  InteractionClass* findInteraction(const std::string& name) {
    for (auto it = interactions.rbegin(); it != interactions.rend(); ++it) {
      if (it->name == name) return &*it;
    }
    return nullptr;
  }
  template <typename Record>
  static bool keep(std::vector<std::unique_ptr<Record>>& records, Record* record) {
    records.emplace_back(record);
    return true;
  }
};

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

void printJson(const std::string& fileName, DtFomType type, const ModelRecorder& model) {
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
  std::fputs(out.str().c_str(), stdout);
}

// The edition of a standard MIM the library holds.
const char* editionName(DtFomType type) {
  return type == DtFomType2025 ? "IEEE 1516-2025" : "IEEE 1516-2010";
}

// The edition whose standard MIM the library holds under a file name (compared as the readers
// compare it: without the directory, whatever the case), or unknown.
DtFomType heldMimEdition(const std::string& fileName) {
  std::string base = fileName.substr(fileName.find_last_of('/') + 1);
  for (DtFomType type : {DtFomTypeEvolved, DtFomType2025}) {
    if (strcasecmp(base.c_str(), DtFedReader::standardMimFileName(type).c_str()) == 0) return type;
  }
  return DtFomTypeUnknown;
}

int run(int argc, char** argv) {
  std::string fileName;
  bool verbose = false;
  bool asJson = false;
  bool strict = false;
  bool validate = false;
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
    TCLAP::UnlabeledValueArg<std::string> fileArg("file", "The FOM file to read", true, "", "file",
                                                  cmd);
    cmd.setExceptionHandling(false);
    cmd.parse(argc, argv);
    fileName = fileArg.getValue();
    verbose = verboseArg.getValue();
    asJson = jsonArg.getValue();
    strict = strictArg.getValue();
    validate = validateArg.getValue();
  } catch (TCLAP::ExitException& e) {
    return e.getExitStatus();
  } catch (TCLAP::ArgException& e) {
    std::fprintf(
        stderr,
        "fomdump: %s\nUsage: fomdump [-v] [--json] [--strict] [--validate] FILE (see fomdump "
        "--help)\n",
        e.error().c_str());
    return kExitUsage;
  }
  if (verbose && DtNotifyLevel < 3) DtNotifyLevel = 3;

  ModelRecorder model;
  // Unknown only when no file of that name can be opened: then a standard MIM's name is
  // answered from the library's copy, which the reader reads once the target has the edition.
  DtFomType type = DtFedReader::checkFomType(fileName.c_str());
  if (type == DtFomTypeUnknown) {
    type = heldMimEdition(fileName);
    if (type != DtFomTypeUnknown) {
      model.setFomType(type);
      std::fprintf(stderr,
                   "fomdump: %s: no such file; reading the library's own copy of the %s "
                   "standard MIM\n",
                   fileName.c_str(), editionName(type));
    }
  }
  if (type == DtFomTypeUnknown) {
    std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", fileName.c_str());
    return kExitNoFile;
  }
  std::unique_ptr<DtFedReader> reader(DtFedReaderFactory().makeFedReader(type));
  if (validate) {
    // The later XML readers validate against the schema the document names, when told to.
    if (auto* schemaReader = dynamic_cast<DtFedReader1516e*>(reader.get())) {
      schemaReader->setSchemaValidationEnabled(true);
    }
  }

  unsigned int mask = strict ? DtStrictUnexpectedContent : 0;
  int result = reader->readFed(fileName.c_str(), &model, mask, validate, false);
  if (result == DtFedNoFile) {
    std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", fileName.c_str());
    return kExitNoFile;
  }
  // What was delivered before a fault stays delivered, and is shown before the reason.
  if (asJson) {
    printJson(fileName, type, model);
  } else {
    printText(fileName, type, model);
  }
  if (result != DtFedOk) {
    const char* why = reader->lastError().isEmpty()
                          ? "the file does not have the form of a FED file"
                          : reader->lastError().c_str();
    std::fprintf(stderr, "fomdump: %s: %s\n", fileName.c_str(), why);
    return kExitWrongFile;
  }
  // A read that succeeds may still leave its last warning.
  if (!reader->lastError().isEmpty()) {
    std::fprintf(stderr, "fomdump: %s: warning: %s\n", fileName.c_str(),
                 reader->lastError().c_str());
  }
  return kExitRead;
}

}  // namespace

int main(int argc, char** argv) {
  return run(argc, argv);
}
