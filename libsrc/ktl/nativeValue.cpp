#include <ktl/nativeValue.h>

namespace KORRti {

DtNativeValue::DtNativeValue(const DtString& type, void* nativeValue)
    : DtEnvValue(type), nativeValue_(nativeValue) {
  addFormat(DtEnvNativeFormat);
}

DtNativeValue::~DtNativeValue() {
  nativeValue_ = nullptr;
}

std::shared_ptr<DtNativeValue> DtNativeValue::create(const DtString& type, void* nativeValue) {
  return std::make_shared<DtNativeValue>(type, nativeValue);
}

bool DtNativeValue::isNativeValue(const DtEnvValueSP& node) {
  return node && (node->format() & DtEnvNativeFormat) != 0;
}

DtNativeValue* DtNativeValue::castToNativeValue(const DtEnvValueSP& node) {
  if (!isNativeValue(node)) return nullptr;
  return dynamic_cast<DtNativeValue*>(node.get());
}

}  // namespace KORRti
