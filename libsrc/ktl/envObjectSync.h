#ifndef KTL_ENVOBJECTSYNC_H
#define KTL_ENVOBJECTSYNC_H

#include <ktl/envObject.h>
#include <ktl/environment.h>
#include <util/export.h>

#include <map>
#include <memory>

KTL_API_BEGIN

namespace KORRti {

/// Binds an application object to a DtEnvObject of the tree. The application derives from it and
/// supplies the three operations that copy data between itself and the node; once bound, the
/// node calls back on each change, and DtEnvironment::sync has the application write its state
/// into the tree. A sync must unbind before its node goes (its destructor does).
class DtEnvObjectSync {
 public:
  /// A sync bound to nothing, without attribute syncs.
  DtEnvObjectSync();
  DtEnvObjectSync(const DtEnvObjectSync&) = delete;
  DtEnvObjectSync& operator=(const DtEnvObjectSync&) = delete;
  /// Takes down the attribute syncs and unbinds, so no node keeps a pointer to this sync.
  virtual ~DtEnvObjectSync();

  /// Makes an object of objectType() called name under env's root, fills it with syncOut, sets
  /// this sync on it and generates the attribute syncs' objects under it. The new node is not
  /// noted as the binding.
  virtual void generateObject(DtEnvironment& env, const DtString& name);
  /// Binds to node: sets this sync on it when it is an object, and binds each attribute sync to
  /// the attribute of its name, or, with generate, makes that attribute's object.
  virtual void bind(DtEnvValueSP node, bool generate);
  /// Takes this sync off the bound object and unbinds the attribute syncs.
  virtual void unbind();
  /// The bound node, or an empty handle.
  virtual DtEnvValueSP binding() const;
  /// Only removes an earlier sync of that name: the given sync is not kept. A class that wants
  /// attribute syncs overrides this and attributeSync().
  virtual void addAttributeSync(const DtString& name, DtEnvObjectSync* sync);
  /// Unbinds and forgets the attribute sync of that name.
  virtual void removeAttributeSync(const DtString& name);
  /// Unbinds and forgets every attribute sync.
  virtual void removeAllAttributeSyncs();
  /// Always null here; see addAttributeSync().
  virtual DtEnvObjectSync* attributeSync(const DtString& name);
  /// The application takes over the node's data: called when the node's own value changed and
  /// when the sync is set on it.
  virtual void syncIn(DtEnvObject* object) = 0;
  /// The application writes its data into the node.
  virtual void syncOut(DtEnvObject* object) = 0;
  /// The node type generateObject() makes.
  virtual DtString objectType() const = 0;
  /// Something below the object changed; child is the object's direct child on the way. Does
  /// nothing here.
  virtual void unboundAttributeSyncInCB(DtEnvValue* child);
  /// A child was appended to, or removed from, the object. Both do nothing here.
  /// @{
  virtual void attributeAddedCB(DtEnvValueSP node);
  virtual void attributeRemovedCB(DtEnvValueSP node);
  /// @}

 protected:
  /// The syncs of the object's attributes by attribute name; not owned. Filled only by derived
  /// classes.
  std::map<DtString, DtEnvObjectSync*> attributeSyncs;

 private:
  std::weak_ptr<DtEnvValue> binding_;
  /// The object generateObject() made last; its sync is cleared when this sync goes.
  std::weak_ptr<DtEnvValue> generated_;
};

}  // namespace KORRti

KTL_API_END

#endif
