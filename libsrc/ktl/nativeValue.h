#ifndef KTL_NATIVEVALUE_H
#define KTL_NATIVEVALUE_H

#include <ktl/envValue.h>
#include <util/export.h>

#include <memory>

KTL_API_BEGIN

namespace KORRti {

/// A value that carries an opaque host pointer, not owned; its value text is the pointer's type
/// name. It has no clone of its own: a copy is a plain value with the type name, without pointer.
class DtNativeValue : public DtEnvValue {
 public:
  DtNativeValue(const DtString& type, void* nativeValue);
  ~DtNativeValue() override;

  static std::shared_ptr<DtNativeValue> create(const DtString& type, void* nativeValue);

  DtString nativeType() const { return value(); }
  void* nativeValue() const { return nativeValue_; }

  /// True for a non-empty handle carrying the native flag.
  static bool isNativeValue(const DtEnvValueSP& node);
  /// The node as a native value, or null.
  static DtNativeValue* castToNativeValue(const DtEnvValueSP& node);

 private:
  void* nativeValue_ = nullptr;
};

}  // namespace KORRti

KTL_API_END

#endif
