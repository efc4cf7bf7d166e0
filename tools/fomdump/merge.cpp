#include "fomdump/merge.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fomdump {

using namespace KORRti;

namespace {

std::string str(const DtString& text) {
  return text.c_str();
}

// A member (attribute or parameter) as two declarations of it are compared: its name and what
// it carries besides.
using Members = std::map<std::string, std::string>;

Members membersOf(const ObjectClass& item) {
  Members members;
  for (const Attribute& attribute : item.attributes) {
    std::vector<std::string> dimensions = attribute.dimensions;
    std::sort(dimensions.begin(), dimensions.end());
    std::string contents = std::to_string(attribute.transport) + " " +
                           std::to_string(attribute.order) + " " + attribute.space;
    for (const std::string& dimension : dimensions) contents += " " + dimension;
    members[attribute.name] = contents;
  }
  return members;
}

Members membersOf(const InteractionClass& item) {
  Members members;
  for (const std::string& parameter : item.parameters) members[parameter] = "";
  return members;
}

// The structure of a data type (not its semantics), field by field: two declarations with the
// same fields and members declare the same type. The members of an enumeration or variant
// stand apart, so that an extension can be told from a conflict.
struct TypeShape {
  std::string kind;
  std::vector<std::string> own;
  Members members;
};

// Whether an extension's own fields agree with the held ones: each field it gives (not empty)
// is the same, so that an extension need not restate what it does not change.
bool ownAgree(const std::vector<std::string>& held, const std::vector<std::string>& extension) {
  if (held.size() != extension.size()) return false;
  for (size_t i = 0; i < held.size(); ++i) {
    if (!extension[i].empty() && extension[i] != held[i]) return false;
  }
  return true;
}

TypeShape shapeOf(const DtBasicDataRepresentationType& r) {
  return {
      "basic data representation",
      {std::to_string(r.size), str(r.interpretation), std::to_string(r.endian), str(r.encoding)},
      {}};
}
TypeShape shapeOf(const DtSimpleDatatypeType& r) {
  return {"simple data type",
          {str(r.representation), str(r.units), str(r.resolution), str(r.accuracy)},
          {}};
}
TypeShape shapeOf(const DtArrayDatatypeType& r) {
  return {"array data type", {str(r.dataType), str(r.cardinality), str(r.encoding)}, {}};
}
TypeShape shapeOf(const DtEnumeratedDatatypeType& r) {
  TypeShape shape{"enumerated data type", {str(r.representation)}, {}};
  for (const auto& enumerator : r.enumerators) {
    shape.members[str(enumerator->name)] = str(enumerator->values);
  }
  return shape;
}
TypeShape shapeOf(const DtFixedRecordDatatypeType& r) {
  TypeShape shape{"fixed record data type", {str(r.encoding)}, {}};
  // A record's fields are its own: no module adds fields to another's record.
  std::vector<std::string> fields;
  for (const auto& field : r.fields) {
    fields.push_back(str(field->name) + ":" + str(field->dataType));
  }
  std::sort(fields.begin(), fields.end());
  shape.own.insert(shape.own.end(), fields.begin(), fields.end());
  return shape;
}
TypeShape shapeOf(const DtVariantRecordDatatypeType& r) {
  TypeShape shape{
      "variant record data type", {str(r.discriminant), str(r.dataType), str(r.encoding)}, {}};
  for (const auto& alternative : r.alternatives) {
    shape.members[str(alternative->enumerator)] =
        str(alternative->name) + ":" + str(alternative->dataType);
  }
  return shape;
}

// Whether every member that both declare agrees.
bool commonAgree(const Members& a, const Members& b) {
  for (const auto& member : b) {
    auto found = a.find(member.first);
    if (found != a.end() && found->second != member.second) return false;
  }
  return true;
}

// Where an item was declared, and its contents as one text.
struct Known {
  std::string file;
  long line = 0;
  std::string contents;
};

class Merger {
 public:
  Merger(Federation& federation, MergedModel& merged)
      : federation_(federation), merged_(merged), model_(merged.model) {}

  void run() {
    for (size_t index : federation_.order) {
      Module& module = federation_.modules[index];
      if (!module.model || module.result != 0) continue;
      file_ = module.file;
      extends_ = module.type == DtFomType2025;
      mergeModule(*module.model);
      for (const NamedLine& type : module.model->referenceDataTypes) {
        if (!types_.count(type.name)) {
          types_[type.name] =
              HeldType{file_, type.line, TypeShape{"reference data type", {}, {}}, true, {}};
        }
      }
      for (const MemberType& use : module.model->memberTypes) {
        memberUses_.push_back({&module.file, &use});
      }
    }
    findUnresolved();
    for (const auto& item : objects_) merged_.objectModules[item.first] = item.second.first;
    for (const auto& item : interactions_) {
      merged_.interactionModules[item.first] = item.second.first;
    }
  }

 private:
  void conflict(const std::string& first, long firstLine, long line, const std::string& message) {
    merged_.conflicts.push_back({first, file_, message, firstLine, line});
  }

  void mergeModule(ModelRecorder& from) {
    from_ = &from;
    for (ObjectClass& item : from.objects) mergeObject(item);
    for (InteractionClass& item : from.interactions) mergeInteraction(item);
    for (const Space& space : from.spaces) {
      if (!spaces_.count(space.name)) {
        spaces_[space.name] = file_;
        model_.spaces.push_back(space);
      }
    }
    for (const Dimension& dimension : from.dimensions) mergeDimension(dimension);
    for (auto& record : from.transportations) {
      mergeNamed(transportations_, str(record->name), "transportation",
                 record->reliable ? "reliable" : "best effort", record, model_.transportations);
    }
    for (auto& record : from.updateRates) {
      mergeNamed(updateRates_, str(record->name), "update rate", std::to_string(record->rate),
                 record, model_.updateRates);
    }
    for (const Switch& item : from.switches) {
      auto known = switches_.find(item.name);
      if (known == switches_.end()) {
        switches_[item.name] = {file_, item.line, item.enabled ? "1" : "0"};
        model_.switches.push_back(item);
      } else if (known->second.contents != (item.enabled ? "1" : "0")) {
        conflict(known->second.file, known->second.line, item.line,
                 "switch " + item.name + " is set to another value");
      }
    }
    for (auto& record : from.time) {
      mergeNamed(times_, str(record->name), "time", str(record->dataType), record, model_.time);
    }
    for (auto& record : from.tags) {
      mergeNamed(tags_, str(record->name), "tag", str(record->dataType), record, model_.tags);
    }
    for (auto& record : from.synchronizations) {
      mergeNamed(synchronizations_, str(record->label), "synchronization point",
                 str(record->dataType), record, model_.synchronizations);
    }
    for (auto& record : from.notes) {
      mergeNamed(notes_, str(record->label), "note", str(record->semantics), record, model_.notes);
    }
    DataTypes& types = from.dataTypes;
    for (auto& r : types.basic) mergeType(r, model_.dataTypes.basic);
    for (auto& r : types.simple) mergeType(r, model_.dataTypes.simple);
    for (auto& r : types.array) mergeType(r, model_.dataTypes.array);
    for (auto& r : types.enumerated) mergeType(r, model_.dataTypes.enumerated);
    for (auto& r : types.fixedRecord) mergeType(r, model_.dataTypes.fixedRecord);
    for (auto& r : types.variantRecord) mergeType(r, model_.dataTypes.variantRecord);
  }

  // Classes: the same members merge; a declaration with none of its own (scaffolding) merges
  // with any; a 1516-2025 module may add members; anything else is a conflict.
  template <typename Class>
  void mergeClass(Class& item, std::vector<Class>& into,
                  std::map<std::string, std::pair<std::string, size_t>>& known, const char* kind,
                  const char* members) {
    auto found = known.find(item.name);
    if (found == known.end()) {
      known[item.name] = {file_, into.size()};
      into.push_back(std::move(item));
      return;
    }
    Class& held = into[found->second.second];
    Members mine = membersOf(held);
    Members theirs = membersOf(item);
    if (theirs.empty() || mine == theirs) {
      extendDimensions(held.dimensions, item.dimensions);
      return;
    }
    if (mine.empty()) {
      // The first declaration was scaffolding: this one gives the class its contents.
      held = std::move(item);
      found->second.first = file_;
      return;
    }
    if (extends_ && commonAgree(mine, theirs)) {
      addMembers(held, item);
      extendDimensions(held.dimensions, item.dimensions);
      return;
    }
    conflict(found->second.first, held.line, item.line,
             std::string(kind) + " " + item.name + " is declared again with other " + members);
  }

  static void extendDimensions(std::vector<std::string>& held,
                               const std::vector<std::string>& more) {
    for (const std::string& dimension : more) {
      if (std::find(held.begin(), held.end(), dimension) == held.end()) held.push_back(dimension);
    }
  }
  static void addMembers(ObjectClass& held, const ObjectClass& item) {
    for (const Attribute& attribute : item.attributes) {
      auto same = std::find_if(held.attributes.begin(), held.attributes.end(),
                               [&](const Attribute& a) { return a.name == attribute.name; });
      if (same == held.attributes.end()) held.attributes.push_back(attribute);
    }
  }
  static void addMembers(InteractionClass& held, const InteractionClass& item) {
    for (const std::string& parameter : item.parameters) {
      if (std::find(held.parameters.begin(), held.parameters.end(), parameter) ==
          held.parameters.end()) {
        held.parameters.push_back(parameter);
      }
    }
  }

  void mergeObject(ObjectClass& item) {
    mergeClass(item, model_.objects, objects_, "object class", "attributes");
  }
  void mergeInteraction(InteractionClass& item) {
    mergeClass(item, model_.interactions, interactions_, "interaction class", "parameters");
  }

  void mergeDimension(const Dimension& dimension) {
    std::string contents =
        std::to_string(dimension.upperBound) + " " + std::to_string(dimension.rangeLower) + " " +
        std::to_string(dimension.rangeUpper) + " " + (dimension.excluded ? "excluded" : "");
    auto found = dimensions_.find(dimension.name);
    if (found == dimensions_.end()) {
      dimensions_[dimension.name] = {file_, dimension.line, contents};
      model_.dimensions.push_back(dimension);
    } else if (found->second.contents != contents) {
      conflict(found->second.file, found->second.line, dimension.line,
               "dimension " + dimension.name + " is declared again with other bounds");
    }
  }

  // A record known by name whose contents are one text.
  template <typename Record>
  void mergeNamed(std::map<std::string, Known>& known, const std::string& name, const char* kind,
                  const std::string& contents, std::unique_ptr<Record>& record,
                  std::vector<std::unique_ptr<Record>>& into) {
    const long line = from_->lineOf(record.get());
    auto found = known.find(name);
    if (found == known.end()) {
      known[name] = {file_, line, contents};
      into.push_back(std::move(record));
      return;
    }
    // A declaration that leaves its contents unspecified ("NA" or nothing) agrees with any; a
    // later one that specifies them gives them.
    if (found->second.contents == contents || unspecified(contents)) return;
    if (unspecified(found->second.contents)) {
      found->second = {file_, line, contents};
      for (auto& held : into) {
        if (nameOf(*held) == name) *held = *record;
      }
      return;
    }
    conflict(found->second.file, found->second.line, line,
             std::string(kind) + " " + name + " is declared again with other contents");
  }
  static bool unspecified(const std::string& contents) {
    return contents.empty() || contents == "NA";
  }
  static std::string nameOf(const DtSynchronizationPointsType& r) { return str(r.label); }
  static std::string nameOf(const DtNotesType& r) { return str(r.label); }
  template <typename Record>
  static std::string nameOf(const Record& r) {
    return str(r.name);
  }

  template <typename Record>
  void mergeType(std::unique_ptr<Record>& owned, std::vector<std::unique_ptr<Record>>& into) {
    const Record& record = *owned;
    const std::string name = str(record.name);
    const long line = from_->lineOf(owned.get());
    auto found = types_.find(name);
    if (found == types_.end()) {
      // The record keeps its place on the heap when it moves into the merged model.
      const Record* placed = owned.get();
      types_[name] =
          HeldType{file_, line, TypeShape(), false, [placed] { return shapeOf(*placed); }};
      into.push_back(std::move(owned));
      return;
    }
    HeldType& first = found->second;
    if (!first.shaped) {
      first.shape = first.makeShape();
      first.shaped = true;
    }
    TypeShape& held = first.shape;
    TypeShape shape = shapeOf(record);
    if (held.kind != shape.kind) {
      conflict(first.file, first.line, line,
               "data type " + name + " is declared again as a " + shape.kind + " (it is a " +
                   held.kind + ")");
      return;
    }
    if (held.own == shape.own && held.members == shape.members) return;
    if (extends_ && ownAgree(held.own, shape.own) && commonAgree(held.members, shape.members)) {
      for (const auto& member : shape.members) held.members.insert(member);
      extendType(name, record, into);
      return;
    }
    conflict(first.file, first.line, line,
             shape.kind + " " + name + " is declared again with other contents");
  }

  // Adds an extension's new enumerators or alternatives to the merged record.
  template <typename Record>
  void extendType(const std::string& name, const Record& record,
                  std::vector<std::unique_ptr<Record>>& into) {
    for (auto& held : into) {
      if (str(held->name) == name) addChildren(*held, record);
    }
  }
  static void addChildren(DtEnumeratedDatatypeType& held, const DtEnumeratedDatatypeType& more) {
    std::set<std::string> names;
    for (const auto& e : held.enumerators) names.insert(str(e->name));
    for (const auto& e : more.enumerators) {
      if (!names.count(str(e->name))) held.enumerators.insert(e);
    }
  }
  static void addChildren(DtVariantRecordDatatypeType& held,
                          const DtVariantRecordDatatypeType& more) {
    std::set<std::string> names;
    for (const auto& a : held.alternatives) names.insert(str(a->enumerator));
    for (const auto& a : more.alternatives) {
      if (!names.count(str(a->enumerator))) held.alternatives.insert(a);
    }
  }
  template <typename Record>
  static void addChildren(Record&, const Record&) {}

  // The names of data types that the merged model uses, checked against what it declares.
  void findUnresolved() {
    auto useBy = [&](const std::string& type, const std::string& by, const Known& where) {
      if (type.empty() || type == "NA" || types_.count(type)) return;
      for (const Unresolved& known : merged_.unresolved) {
        if (known.name == type) return;
      }
      merged_.unresolved.push_back({where.file, type, by, where.line});
    };
    auto use = [&](const DtString& name, const std::string& by) {
      useBy(str(name), by, origin(by));
    };
    for (const auto& r : model_.dataTypes.simple) {
      use(r->representation, "simple data type " + str(r->name));
    }
    for (const auto& r : model_.dataTypes.array)
      use(r->dataType, "array data type " + str(r->name));
    for (const auto& r : model_.dataTypes.enumerated) {
      use(r->representation, "enumerated data type " + str(r->name));
    }
    for (const auto& r : model_.dataTypes.fixedRecord) {
      for (const auto& field : r->fields) {
        use(field->dataType,
            "field " + str(field->name) + " of fixed record data type " + str(r->name));
      }
    }
    for (const auto& r : model_.dataTypes.variantRecord) {
      use(r->dataType, "variant record data type " + str(r->name));
      for (const auto& alternative : r->alternatives) {
        use(alternative->dataType, "alternative " + str(alternative->name) +
                                       " of variant record data type " + str(r->name));
      }
    }
    for (const auto& r : model_.time) use(r->dataType, "time " + str(r->name));
    for (const auto& r : model_.tags) use(r->dataType, "tag " + str(r->name));
    for (const auto& r : model_.synchronizations) {
      use(r->dataType, "synchronization point " + str(r->label));
    }
    for (const MemberUse& memberUse : memberUses_) {
      const MemberType& member = *memberUse.member;
      if (member.dataType == "NA" || types_.count(member.dataType)) continue;
      useBy(member.dataType,
            (member.attribute ? "attribute " : "parameter ") + member.member + " of " +
                (member.attribute ? "object class " : "interaction class ") + member.owner,
            {*memberUse.file, member.line, ""});
    }
  }

  // The file that declared the data type named last in a "... data type NAME" text, or the
  // time, tag or synchronization point's module.
  Known origin(const std::string& by) {
    size_t at = by.rfind(' ');
    std::string owner = at == std::string::npos ? by : by.substr(at + 1);
    auto found = types_.find(owner);
    if (found != types_.end()) return {found->second.file, found->second.line, ""};
    for (const auto* known : {&times_, &tags_, &synchronizations_}) {
      auto item = known->find(owner);
      if (item != known->end()) return item->second;
    }
    return {};
  }

  Federation& federation_;
  MergedModel& merged_;
  ModelRecorder& model_;
  ModelRecorder* from_ = nullptr;  // the module being merged
  std::string file_;
  bool extends_ = false;
  // Name to (declaring file, place), per class kind; the class holds its line.
  std::map<std::string, std::pair<std::string, size_t>> objects_;
  std::map<std::string, std::pair<std::string, size_t>> interactions_;
  std::map<std::string, std::string> spaces_;
  // Name to where it was declared and its contents, per kind.
  std::map<std::string, Known> dimensions_;
  std::map<std::string, Known> transportations_;
  std::map<std::string, Known> updateRates_;
  std::map<std::string, Known> switches_;
  std::map<std::string, Known> times_;
  std::map<std::string, Known> tags_;
  std::map<std::string, Known> synchronizations_;
  std::map<std::string, Known> notes_;
  // Each data type an attribute or parameter names, with its module's file, for the check at
  // the end. Both stay in the federation's modules, which the merge does not change.
  struct MemberUse {
    const std::string* file;
    const MemberType* member;
  };
  std::vector<MemberUse> memberUses_;
  // A data type as first declared. Its shape is made only when another declaration of its name
  // comes, since most names are declared once and an enumeration's shape costs a map.
  struct HeldType {
    std::string file;
    long line;
    TypeShape shape;  // once shaped
    bool shaped = false;
    std::function<TypeShape()> makeShape;
  };
  std::map<std::string, HeldType> types_;
};

}  // namespace

void merge(Federation& federation, MergedModel& merged) {
  Merger(federation, merged).run();
}

}  // namespace fomdump
