#ifndef KTL_ENVNAMEDLIST_H
#define KTL_ENVNAMEDLIST_H

#include <ktl/envList.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// A name with a value: an attribute, which may hold further children. The name is kept in a
/// hidden first child, which iteration skips.
class DtEnvNamedList : public DtEnvList {
 public:
  /// A named list holding value, without children; name goes to the hidden holder.
  DtEnvNamedList(const DtString& name, const DtString& value);
  ~DtEnvNamedList() override;

  DtEnvValue* clone() const override;
  /// The first child behind the name holder.
  DtEnvValueSP first() const override;
  /// The name, expanded by Modifiers like a value.
  virtual DtString name() const;
  /// Sets the holder's value, so the name is expanded too; no notification travels up.
  virtual void setName(const DtString& name);

  /// True when the handle is non-empty and carries the list and named flags.
  static bool isNamedList(DtEnvValueSP node);
  /// The node as a named list, or null.
  static DtEnvNamedList* castToNamedList(DtEnvValueSP node);
};

}  // namespace KORRti

KTL_API_END

#endif
