#include <ktl/envObjectSync.h>

namespace KORRti {

DtEnvObjectSync::DtEnvObjectSync() = default;

DtEnvObjectSync::~DtEnvObjectSync() {
  // Virtual calls in a destructor reach this class's own versions, which is what is wanted:
  // the derived part is gone already.
  DtEnvObjectSync::removeAllAttributeSyncs();
  DtEnvObjectSync::unbind();
  // A generated object is not the binding, so unbind leaves it alone; it must not keep a
  // pointer to a sync that is gone.
  DtEnvObject* object = DtEnvObject::castToObject(generated_.lock());
  if (object && object->sync() == this) object->setSync(nullptr);
}

void DtEnvObjectSync::generateObject(DtEnvironment& env, const DtString& name) {
  unbind();
  DtEnvValueSP node = env.addObject(name, objectType(), env.root());
  DtEnvObject* object = DtEnvObject::castToObject(node);
  if (!object) return;
  syncOut(object);
  generated_ = node;
  object->setSync(this);
  DtEnvironment below(node);
  for (const auto& entry : attributeSyncs) {
    if (entry.second) entry.second->generateObject(below, entry.first);
  }
}

void DtEnvObjectSync::bind(DtEnvValueSP node, bool generate) {
  unbind();
  binding_ = node;
  DtEnvObject* object = DtEnvObject::castToObject(node);
  if (!object) return;
  object->setSync(this);
  DtEnvironment env(node);
  for (const auto& entry : attributeSyncs) {
    if (!entry.second) continue;
    if (DtEnvValueSP attribute = object->attribute(entry.first)) {
      entry.second->bind(attribute, generate);
    } else if (generate) {
      entry.second->generateObject(env, entry.first);
    }
  }
}

void DtEnvObjectSync::unbind() {
  if (DtEnvObject* object = DtEnvObject::castToObject(binding_.lock())) object->setSync(nullptr);
  for (const auto& entry : attributeSyncs) {
    if (entry.second) entry.second->unbind();
  }
  binding_.reset();
}

DtEnvValueSP DtEnvObjectSync::binding() const {
  return binding_.lock();
}

void DtEnvObjectSync::addAttributeSync(const DtString& name, DtEnvObjectSync*) {
  removeAttributeSync(name);
}

void DtEnvObjectSync::removeAttributeSync(const DtString& name) {
  auto it = attributeSyncs.find(name);
  if (it == attributeSyncs.end()) return;
  if (it->second) it->second->unbind();
  attributeSyncs.erase(it);
}

void DtEnvObjectSync::removeAllAttributeSyncs() {
  for (const auto& entry : attributeSyncs) {
    if (entry.second) entry.second->unbind();
  }
  attributeSyncs.clear();
}

DtEnvObjectSync* DtEnvObjectSync::attributeSync(const DtString&) {
  return nullptr;
}

void DtEnvObjectSync::unboundAttributeSyncInCB(DtEnvValue*) {}

void DtEnvObjectSync::attributeAddedCB(DtEnvValueSP) {}

void DtEnvObjectSync::attributeRemovedCB(DtEnvValueSP) {}

}  // namespace KORRti
