#ifndef KTL_ENVIRONMENT_H
#define KTL_ENVIRONMENT_H

#include <ktl/envList.h>
#include <ktl/envNamedList.h>
#include <ktl/envObject.h>
#include <ktl/envValue.h>
#include <ktl/nativeValue.h>
#include <util/export.h>

#include <list>
#include <memory>
#include <ostream>

KTL_API_BEGIN

namespace KORRti {

class DtEnvObjectSync;

/// A handle on a configuration tree, and a cursor in it: it holds one node, its root, and nearly
/// every operation works either at the root or at a node it is given. Copies share the tree and
/// move their own cursor.
class DtEnvironment {
 public:
  /// A new object named and typed "root", with an empty value.
  DtEnvironment();
  /// A new object named and typed name, with an empty value.
  explicit DtEnvironment(const DtString& name);
  /// A handle on an existing node.
  explicit DtEnvironment(DtEnvValueSP node);
  /// Another handle on the same tree, with the same root.
  /// @{
  DtEnvironment(const DtEnvironment&) = default;
  DtEnvironment& operator=(const DtEnvironment&) = default;
  /// @}
  virtual ~DtEnvironment();

  // -- Cursor
  /// The node the handle holds: the start of every operation given no node.
  DtEnvValueSP root() const { return root_; }
  /// Moves the cursor to node; the tree is not changed.
  void setRoot(DtEnvValueSP node) { root_ = std::move(node); }
  /// Moves the cursor to the root's parent, if it has a live one.
  void rootToParent();
  /// The topmost ancestor of the root (or of node); the node itself when it has no parent, and
  /// an empty handle when the parent links run in a circle.
  /// @{
  DtEnvValueSP getTopParent() const;
  DtEnvValueSP getTopParent(DtEnvValueSP node) const;
  /// @}

  // -- Adding. Each form without a parent works at the root; each answers the new node, or an
  // empty handle when the parent can't hold it.
  /// A comment. Made only under a list; it gets no parent link. Answers the new node, or an
  /// empty handle when parent (the root by default) is not a list.
  /// @{
  DtEnvValueSP addComment(const DtString& text);
  DtEnvValueSP addComment(const DtString& text, DtEnvValueSP parent);
  /// @}
  /// Appends the given native value; it gets no parent link. Answers native, or an empty handle
  /// when native is empty or parent is not a list.
  DtEnvValueSP addNativeValue(std::shared_ptr<DtNativeValue> native, DtEnvValueSP parent);
  /// A named list holding value; the change of value is reported upward. Answers the new node,
  /// or an empty handle when parent (the root by default) is not a list.
  /// @{
  DtEnvValueSP addAttribute(const DtString& name, const DtString& value);
  DtEnvValueSP addAttribute(const DtString& name, const DtString& value, DtEnvValueSP parent);
  /// @}
  /// A named list with an empty value. Answers the new node, or an empty handle when parent
  /// (the root by default) is not a list.
  /// @{
  DtEnvValueSP addNamedList(const DtString& name);
  DtEnvValueSP addNamedList(const DtString& name, DtEnvValueSP parent);
  /// @}
  /// An object with an empty value; without a type its type is its name. Answers the new node,
  /// or an empty handle when parent (the root by default) is not a list.
  /// @{
  DtEnvValueSP addObject(const DtString& name, const DtString& type);
  DtEnvValueSP addObject(const DtString& name, const DtString& type, DtEnvValueSP parent);
  DtEnvValueSP addObject(const DtString& name);
  DtEnvValueSP addObject(const DtString& name, DtEnvValueSP parent);
  /// @}

  // -- Finding. Names are matched whole; there is no path syntax.
  /// The first named list (objects included) of that name, depth first, pre-order, from start
  /// (the root by default) itself on; an empty handle when there is none.
  /// @{
  DtEnvValueSP getNamedList(const DtString& name) const;
  DtEnvValueSP getNamedList(const DtString& name, DtEnvValueSP start) const;
  /// @}
  /// The same search as getNamedList.
  /// @{
  DtEnvValueSP getAttribute(const DtString& name) const;
  DtEnvValueSP getAttribute(const DtString& name, DtEnvValueSP start) const;
  /// @}
  /// The first object with that name and type, depth first, pre-order, from start (the root by
  /// default) itself on; an empty handle when there is none.
  /// @{
  DtEnvValueSP getObject(const DtString& name, const DtString& type) const;
  DtEnvValueSP getObject(const DtString& name, const DtString& type, DtEnvValueSP start) const;
  /// @}
  /// The first direct child of parent that is a native value.
  DtEnvValueSP getNativeValue(DtEnvValueSP parent) const;
  /// Append every match, in pre-order, to out; its earlier content stays. The named lists
  /// (objects included) of that name, the objects of that name, or the objects of that type,
  /// from start (the root by default) itself on.
  /// @{
  void getNamedListsByName(const DtString& name, std::list<DtEnvValueSP>& out) const;
  void getNamedListsByName(const DtString& name, std::list<DtEnvValueSP>& out,
                           DtEnvValueSP start) const;
  void getObjectsByName(const DtString& name, std::list<DtEnvValueSP>& out) const;
  void getObjectsByName(const DtString& name, std::list<DtEnvValueSP>& out,
                        DtEnvValueSP start) const;
  void getObjectsByType(const DtString& type, std::list<DtEnvValueSP>& out) const;
  void getObjectsByType(const DtString& type, std::list<DtEnvValueSP>& out,
                        DtEnvValueSP start) const;
  /// @}
  /// The sync of getObject(name, type), or null.
  /// @{
  DtEnvObjectSync* getObjectSync(const DtString& name, const DtString& type) const;
  DtEnvObjectSync* getObjectSync(const DtString& name, const DtString& type,
                                 DtEnvValueSP start) const;
  /// @}

  // -- Other
  /// Has every object with a sync, in pre-order, write its application's data into the tree.
  /// @{
  void sync();
  void sync(DtEnvValueSP start);
  /// @}
  /// A detached clone of node, appended to parent (the root by default) when that is a list.
  /// The clone has no parent link; an empty handle for node gives an empty handle.
  /// @{
  DtEnvValueSP copy(DtEnvValueSP node);
  DtEnvValueSP copy(DtEnvValueSP node, DtEnvValueSP parent);
  /// @}
  /// Takes node out of its parent and out of the root. Its parent link stays.
  void remove(DtEnvValueSP node);
  /// Moves node under newParent. Does nothing when newParent can't hold children, or is node
  /// or lies below it, and for a node without a parent link.
  void reparent(DtEnvValueSP node, DtEnvValueSP newParent);
  /// Walks up from node: false at the first node with an empty value, true on reaching the root.
  bool contains(DtEnvValueSP node) const;
  /// The number of steps of that walk up to the root, or -1 where contains() is false.
  int level(DtEnvValueSP node) const;
  /// Writes the tree from the root; comments are always shown.
  void print(std::ostream& out, const DtString& indent, bool showComments) const;
  /// Writes the tree from node, one line per node, children indented three blanks further.
  void print(std::ostream& out, DtEnvValueSP node, const DtString& indent, bool showComments) const;

 private:
  DtEnvValueSP root_;
};

/// print() from the root with an indent of two blanks, comments shown.
std::ostream& operator<<(std::ostream& out, const DtEnvironment& env);

}  // namespace KORRti

KTL_API_END

#endif
