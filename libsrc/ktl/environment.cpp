#include <ktl/envObjectSync.h>
#include <ktl/environment.h>

namespace KORRti {

namespace {

// The parent of node, or an empty handle.
DtEnvValueSP parentOf(const DtEnvValueSP& node) {
  return node ? node->parent() : DtEnvValueSP();
}

// Calls step on node and on each ancestor in turn, while step answers true. A slow pointer
// that follows at half speed meets the walk only when the parent links run in a circle, which
// ends the walk too.
template <typename Step>
void walkUp(DtEnvValueSP node, Step step) {
  DtEnvValueSP slow = node;
  bool moveSlow = false;
  for (DtEnvValueSP current = std::move(node); current;) {
    if (!step(current)) return;
    current = current->parent();
    if (moveSlow) {
      slow = slow->parent();
      if (slow == current) return;
    }
    moveSlow = !moveSlow;
  }
}

template <typename Accept>
void collect(const DtEnvValueSP& start, std::list<DtEnvValueSP>& out, const Accept& accept) {
  if (!start) return;
  if (accept(start)) out.push_back(start);
  if (DtEnvList* list = DtEnvList::castToList(start)) {
    for (DtEnvValueSP c = list->first(); c; c = list->next(c)) collect(c, out, accept);
  }
}

}  // namespace

DtEnvironment::DtEnvironment() : DtEnvironment(DtString("root")) {}

DtEnvironment::DtEnvironment(const DtString& name)
    : root_(std::make_shared<DtEnvObject>(name, name, DtString::nullString())) {}

DtEnvironment::DtEnvironment(DtEnvValueSP node) : root_(std::move(node)) {}

DtEnvironment::~DtEnvironment() = default;

void DtEnvironment::rootToParent() {
  if (DtEnvValueSP parent = parentOf(root_)) root_ = parent;
}

DtEnvValueSP DtEnvironment::getTopParent() const {
  return getTopParent(root_);
}

DtEnvValueSP DtEnvironment::getTopParent(DtEnvValueSP node) const {
  if (!node) return DtEnvValueSP();
  DtEnvValueSP top = node;
  bool circle = false;
  walkUp(node, [&](const DtEnvValueSP& current) {
    top = current;
    DtEnvValueSP above = current->parent();
    circle = above == node;
    return !circle;
  });
  // The walk also ends in a circle that does not pass the starting node; it has no top either.
  if (circle || top->parent()) return DtEnvValueSP();
  return top;
}

DtEnvValueSP DtEnvironment::addComment(const DtString& text) {
  return addComment(text, root_);
}

DtEnvValueSP DtEnvironment::addComment(const DtString& text, DtEnvValueSP parent) {
  DtEnvList* list = DtEnvList::castToList(parent);
  if (!list) return DtEnvValueSP();
  auto comment = std::make_shared<DtEnvValue>(text);
  list->append(comment);
  return comment;
}

DtEnvValueSP DtEnvironment::addNativeValue(std::shared_ptr<DtNativeValue> native,
                                           DtEnvValueSP parent) {
  DtEnvList* list = DtEnvList::castToList(parent);
  if (!list || !native) return DtEnvValueSP();
  list->append(native);
  return native;
}

DtEnvValueSP DtEnvironment::addAttribute(const DtString& name, const DtString& value) {
  return addAttribute(name, value, root_);
}

DtEnvValueSP DtEnvironment::addAttribute(const DtString& name, const DtString& value,
                                         DtEnvValueSP parent) {
  DtEnvValueSP node = addNamedList(name, std::move(parent));
  // The parent link is set already, so the change of value is reported upward.
  if (node) node->setValue(value);
  return node;
}

DtEnvValueSP DtEnvironment::addNamedList(const DtString& name) {
  return addNamedList(name, root_);
}

DtEnvValueSP DtEnvironment::addNamedList(const DtString& name, DtEnvValueSP parent) {
  DtEnvList* list = DtEnvList::castToList(parent);
  if (!list) return DtEnvValueSP();
  DtEnvValueSP node = std::make_shared<DtEnvNamedList>(name, DtString::nullString());
  node->setParent(parent);
  list->append(node);
  return node;
}

DtEnvValueSP DtEnvironment::addObject(const DtString& name, const DtString& type) {
  return addObject(name, type, root_);
}

DtEnvValueSP DtEnvironment::addObject(const DtString& name, const DtString& type,
                                      DtEnvValueSP parent) {
  DtEnvList* list = DtEnvList::castToList(parent);
  if (!list) return DtEnvValueSP();
  DtEnvValueSP node = std::make_shared<DtEnvObject>(name, type, DtString::nullString());
  node->setParent(parent);
  list->append(node);
  return node;
}

DtEnvValueSP DtEnvironment::addObject(const DtString& name) {
  return addObject(name, name, root_);
}

DtEnvValueSP DtEnvironment::addObject(const DtString& name, DtEnvValueSP parent) {
  return addObject(name, name, std::move(parent));
}

DtEnvValueSP DtEnvironment::getNamedList(const DtString& name) const {
  return getNamedList(name, root_);
}

DtEnvValueSP DtEnvironment::getNamedList(const DtString& name, DtEnvValueSP start) const {
  if (!start) return DtEnvValueSP();
  if (DtEnvNamedList* named = DtEnvNamedList::castToNamedList(start)) {
    if (named->name() == name) return start;
  }
  DtEnvList* list = DtEnvList::castToList(start);
  if (!list) return DtEnvValueSP();
  for (DtEnvValueSP c = list->first(); c; c = list->next(c)) {
    if (DtEnvValueSP found = getNamedList(name, c)) return found;
    if (c == list->last()) break;
  }
  return DtEnvValueSP();
}

DtEnvValueSP DtEnvironment::getAttribute(const DtString& name) const {
  return getNamedList(name, root_);
}

DtEnvValueSP DtEnvironment::getAttribute(const DtString& name, DtEnvValueSP start) const {
  return getNamedList(name, std::move(start));
}

DtEnvValueSP DtEnvironment::getObject(const DtString& name, const DtString& type) const {
  return getObject(name, type, root_);
}

DtEnvValueSP DtEnvironment::getObject(const DtString& name, const DtString& type,
                                      DtEnvValueSP start) const {
  if (!start) return DtEnvValueSP();
  if (DtEnvObject::isObject(start, name, type)) return start;
  DtEnvList* list = DtEnvList::castToList(start);
  if (!list) return DtEnvValueSP();
  for (DtEnvValueSP c = list->first(); c; c = list->next(c)) {
    if (DtEnvValueSP found = getObject(name, type, c)) return found;
  }
  return DtEnvValueSP();
}

DtEnvValueSP DtEnvironment::getNativeValue(DtEnvValueSP parent) const {
  DtEnvList* list = DtEnvList::castToList(parent);
  if (!list) return DtEnvValueSP();
  for (DtEnvValueSP c = list->first(); c; c = list->next(c)) {
    if (DtNativeValue::isNativeValue(c)) return c;
  }
  return DtEnvValueSP();
}

void DtEnvironment::getNamedListsByName(const DtString& name, std::list<DtEnvValueSP>& out) const {
  getNamedListsByName(name, out, root_);
}

void DtEnvironment::getNamedListsByName(const DtString& name, std::list<DtEnvValueSP>& out,
                                        DtEnvValueSP start) const {
  collect(start, out, [&](const DtEnvValueSP& node) {
    DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node);
    return named && named->name() == name;
  });
}

void DtEnvironment::getObjectsByName(const DtString& name, std::list<DtEnvValueSP>& out) const {
  getObjectsByName(name, out, root_);
}

void DtEnvironment::getObjectsByName(const DtString& name, std::list<DtEnvValueSP>& out,
                                     DtEnvValueSP start) const {
  collect(start, out, [&](const DtEnvValueSP& node) {
    DtEnvObject* object = DtEnvObject::castToObject(node);
    return object && object->name() == name;
  });
}

void DtEnvironment::getObjectsByType(const DtString& type, std::list<DtEnvValueSP>& out) const {
  getObjectsByType(type, out, root_);
}

void DtEnvironment::getObjectsByType(const DtString& type, std::list<DtEnvValueSP>& out,
                                     DtEnvValueSP start) const {
  collect(start, out, [&](const DtEnvValueSP& node) {
    DtEnvObject* object = DtEnvObject::castToObject(node);
    return object && object->type() == type;
  });
}

DtEnvObjectSync* DtEnvironment::getObjectSync(const DtString& name, const DtString& type) const {
  return getObjectSync(name, type, root_);
}

DtEnvObjectSync* DtEnvironment::getObjectSync(const DtString& name, const DtString& type,
                                              DtEnvValueSP start) const {
  DtEnvObject* object = DtEnvObject::castToObject(getObject(name, type, std::move(start)));
  return object ? object->sync() : nullptr;
}

void DtEnvironment::sync() {
  sync(root_);
}

void DtEnvironment::sync(DtEnvValueSP start) {
  if (!start) return;
  if (DtEnvObject* object = DtEnvObject::castToObject(start)) {
    if (DtEnvObjectSync* s = object->sync()) s->syncOut(object);
  }
  if (DtEnvList* list = DtEnvList::castToList(start)) {
    for (DtEnvValueSP c = list->first(); c; c = list->next(c)) sync(c);
  }
}

DtEnvValueSP DtEnvironment::copy(DtEnvValueSP node) {
  return copy(std::move(node), root_);
}

DtEnvValueSP DtEnvironment::copy(DtEnvValueSP node, DtEnvValueSP parent) {
  if (!node) return DtEnvValueSP();
  DtEnvValueSP duplicate(node->clone());
  if (DtEnvList* list = DtEnvList::castToList(parent)) list->append(duplicate);
  return duplicate;
}

void DtEnvironment::remove(DtEnvValueSP node) {
  if (!node) return;
  if (DtEnvList* parent = DtEnvList::castToList(node->parent())) parent->remove(node);
  if (DtEnvList* list = DtEnvList::castToList(root_)) list->remove(node);
}

void DtEnvironment::reparent(DtEnvValueSP node, DtEnvValueSP newParent) {
  DtEnvList* target = DtEnvList::castToList(newParent);
  if (!node || !target) return;
  DtEnvValueSP oldParent = node->parent();
  DtEnvList* source = DtEnvList::castToList(oldParent);
  if (!source) return;
  // A node moved below itself would own itself and vanish from the tree.
  bool below = false;
  walkUp(newParent, [&](const DtEnvValueSP& current) {
    below = current == node;
    return !below;
  });
  if (below) return;
  source->remove(node);
  node->setParent(newParent);
  target->append(node);
}

bool DtEnvironment::contains(DtEnvValueSP node) const {
  return level(std::move(node)) >= 0;
}

int DtEnvironment::level(DtEnvValueSP node) const {
  int steps = 0;
  int result = -1;
  walkUp(std::move(node), [&](const DtEnvValueSP& current) {
    if (current->value().isEmpty()) return false;
    if (current == root_) {
      result = steps;
      return false;
    }
    ++steps;
    return true;
  });
  return result;
}

void DtEnvironment::print(std::ostream& out, const DtString& indent, bool) const {
  print(out, root_, indent, true);
}

void DtEnvironment::print(std::ostream& out, DtEnvValueSP node, const DtString& indent,
                          bool showComments) const {
  if (!node) return;
  DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node);
  if (!named) {
    if (!showComments) return;
    out << "// ";
  } else {
    out << indent;
  }
  if (DtEnvObject* object = DtEnvObject::castToObject(node)) {
    out << "class " << object->type() << " ";
  }
  if (named) {
    out << named->name() << " ";
  } else {
    out << "comment ";
  }
  out << "Value= " << node->value() << std::endl;
  if (DtEnvList* list = DtEnvList::castToList(node)) {
    const DtString deeper = indent + "   ";
    for (DtEnvValueSP c = list->first(); c; c = list->next(c)) print(out, c, deeper, showComments);
  }
}

std::ostream& operator<<(std::ostream& out, const DtEnvironment& env) {
  env.print(out, "  ", true);
  return out;
}

}  // namespace KORRti
