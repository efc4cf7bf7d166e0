#include <ktl/envNamedList.h>

#include <memory>

namespace KORRti {

DtEnvNamedList::DtEnvNamedList(const DtString& name, const DtString& value) : DtEnvList(value) {
  addFormat(DtEnvNamedFormat);
  appendHolder(name);
}

DtEnvNamedList::~DtEnvNamedList() = default;

DtEnvValue* DtEnvNamedList::clone() const {
  std::unique_ptr<DtEnvNamedList> copy(new DtEnvNamedList(name(), value()));
  cloneChildren(copy.get());
  return copy.release();
}

DtEnvValueSP DtEnvNamedList::first() const {
  return next(DtEnvList::first());
}

DtString DtEnvNamedList::name() const {
  const DtEnvValue* h = holder(0);
  return h ? h->value() : DtString();
}

void DtEnvNamedList::setName(const DtString& name) {
  if (DtEnvValue* h = holder(0)) h->setValue(name);
}

bool DtEnvNamedList::isNamedList(DtEnvValueSP node) {
  const std::uint32_t both = DtEnvListFormat | DtEnvNamedFormat;
  return node && (node->format() & both) == both;
}

DtEnvNamedList* DtEnvNamedList::castToNamedList(DtEnvValueSP node) {
  if (!isNamedList(node)) return nullptr;
  return dynamic_cast<DtEnvNamedList*>(node.get());
}

}  // namespace KORRti
