#ifndef KTL_ENVOBJECT_H
#define KTL_ENVOBJECT_H

#include <ktl/envNamedList.h>
#include <util/export.h>

#include <map>
#include <memory>

KTL_API_BEGIN

namespace KORRti {

/// Binds an application object to a DtEnvObject. Not owned by the object it is set on.
class DtEnvObjectSync;

/// An element of the tree: name, type, value, children and an index of its named children by
/// name. Name and type are kept in the two hidden first children.
class DtEnvObject : public DtEnvNamedList {
 public:
  /// An object holding value, without children or sync; name and type go to the hidden holders.
  DtEnvObject(const DtString& name, const DtString& type, const DtString& value);
  ~DtEnvObject() override;

  /// With a sync, the sync takes the change and it travels no further up.
  void valueChanged() override;
  void childChanged(DtEnvValue* child) override;
  DtEnvValue* clone() const override;
  /// The first child behind the name and type holders.
  DtEnvValueSP first() const override;
  /// Indexes a named child with a non-empty name (replacing an earlier entry of that name),
  /// appends it, then tells the sync.
  void append(DtEnvValueSP child) override;
  /// Erases the index entry of the child's name, removes the child, then tells the sync.
  void remove(DtEnvValueSP child) override;
  /// The name, expanded by Modifiers like a value.
  DtString name() const override;
  void setName(const DtString& name) override;
  /// The type, expanded by Modifiers like a value.
  virtual DtString type() const;
  /// Sets the type holder's value, so the type is expanded too; no notification travels up.
  virtual void setType(const DtString& type);
  /// The sync set on the object, or null.
  virtual DtEnvObjectSync* sync() const;
  /// Stores the sync (not owned) and, when it is not null, has it take the node's data at once.
  virtual void setSync(DtEnvObjectSync* sync);

  /// The indexed child of that name, or an empty handle when absent or gone.
  DtEnvValueSP attribute(const DtString& name) const;
  /// value() of attribute(name), or the empty text.
  DtString attributeValue(const DtString& name) const;

  /// True for a non-empty handle carrying the list, named and object flags.
  static bool isObject(DtEnvValueSP node);
  /// An object whose type() equals type.
  static bool isObject(DtEnvValueSP node, const DtString& type);
  /// An object whose type() and name() equal; the type is compared first.
  static bool isObject(DtEnvValueSP node, const DtString& name, const DtString& type);
  /// The node as an object, or null.
  static DtEnvObject* castToObject(DtEnvValueSP node);

 private:
  std::map<DtString, std::weak_ptr<DtEnvValue>> attributes_;
  DtEnvObjectSync* sync_ = nullptr;
};

}  // namespace KORRti

KTL_API_END

#endif
