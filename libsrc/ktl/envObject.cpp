#include <ktl/envObject.h>
#include <ktl/envObjectSync.h>

namespace KORRti {

DtEnvObject::DtEnvObject(const DtString& name, const DtString& type, const DtString& value)
    : DtEnvNamedList(name, value) {
  addFormat(DtEnvObjectFormat);
  appendHolder(type);
}

DtEnvObject::~DtEnvObject() = default;

void DtEnvObject::valueChanged() {
  if (sync_) {
    sync_->syncIn(this);
    return;
  }
  DtEnvValue::valueChanged();
}

void DtEnvObject::childChanged(DtEnvValue* child) {
  if (sync_) {
    sync_->unboundAttributeSyncInCB(child);
    return;
  }
  DtEnvValue::childChanged(child);
}

DtEnvValue* DtEnvObject::clone() const {
  std::unique_ptr<DtEnvObject> copy(new DtEnvObject(name(), type(), value()));
  cloneChildren(copy.get());
  return copy.release();
}

DtEnvValueSP DtEnvObject::first() const {
  // The list's own first child, past the object's two holders, not the named list's.
  return next(next(DtEnvList::first()));  // NOLINT(bugprone-parent-virtual-call)
}

void DtEnvObject::append(DtEnvValueSP child) {
  if (!child || child.get() == this) return;
  if (DtEnvNamedList* named = castToNamedList(child)) {
    const DtString key = named->name();
    if (!key.isEmpty()) attributes_[key] = child;
  }
  DtEnvList::append(child);
  if (sync_) sync_->attributeAddedCB(child);
}

void DtEnvObject::remove(DtEnvValueSP child) {
  if (!child) return;
  if (DtEnvNamedList* named = castToNamedList(child)) {
    const DtString key = named->name();
    if (!key.isEmpty()) attributes_.erase(key);
  }
  DtEnvList::remove(child);
  if (sync_) sync_->attributeRemovedCB(child);
}

DtString DtEnvObject::name() const {
  const DtEnvValue* h = holder(0);
  return h ? h->value() : DtString();
}

void DtEnvObject::setName(const DtString& name) {
  if (DtEnvValue* h = holder(0)) h->setValue(name);
}

DtString DtEnvObject::type() const {
  const DtEnvValue* h = holder(1);
  return h ? h->value() : DtString();
}

void DtEnvObject::setType(const DtString& type) {
  if (DtEnvValue* h = holder(1)) h->setValue(type);
}

DtEnvObjectSync* DtEnvObject::sync() const {
  return sync_;
}

void DtEnvObject::setSync(DtEnvObjectSync* sync) {
  sync_ = sync;
  if (sync_) sync_->syncIn(this);
}

DtEnvValueSP DtEnvObject::attribute(const DtString& name) const {
  auto it = attributes_.find(name);
  if (it == attributes_.end()) return DtEnvValueSP();
  return it->second.lock();
}

DtString DtEnvObject::attributeValue(const DtString& name) const {
  DtEnvValueSP node = attribute(name);
  return node ? node->value() : DtString();
}

bool DtEnvObject::isObject(DtEnvValueSP node) {
  const std::uint32_t all = DtEnvListFormat | DtEnvNamedFormat | DtEnvObjectFormat;
  return node && (node->format() & all) == all;
}

bool DtEnvObject::isObject(DtEnvValueSP node, const DtString& type) {
  DtEnvObject* object = castToObject(node);
  return object && object->type() == type;
}

bool DtEnvObject::isObject(DtEnvValueSP node, const DtString& name, const DtString& type) {
  DtEnvObject* object = castToObject(node);
  return object && object->type() == type && object->name() == name;
}

DtEnvObject* DtEnvObject::castToObject(DtEnvValueSP node) {
  if (!isObject(node)) return nullptr;
  return dynamic_cast<DtEnvObject*>(node.get());
}

}  // namespace KORRti
