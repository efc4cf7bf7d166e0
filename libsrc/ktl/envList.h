#ifndef KTL_ENVLIST_H
#define KTL_ENVLIST_H

#include <ktl/envValue.h>
#include <util/export.h>

#include <list>

KTL_API_BEGIN

namespace KORRti {

/// A container of child nodes in insertion order. The base of named lists and objects, whose
/// leading children are hidden holders of their name (and type).
class DtEnvList : public DtEnvValue {
 public:
  /// A list without children, holding value.
  explicit DtEnvList(const DtString& value);
  /// Takes the subtree down without recursion, so that a deep tree can't exhaust the stack.
  ~DtEnvList() override;

  DtEnvValue* clone() const override;

  /// The first and last entry of the children, or an empty handle when there are none. Here
  /// the hidden holders count: named lists and objects override first(), but last() of one
  /// without further children answers its last holder.
  /// @{
  virtual DtEnvValueSP first() const;
  virtual DtEnvValueSP last() const;
  /// @}
  /// The entry behind child; an empty handle for an empty, foreign or last child. A child that
  /// stands in the list twice is found at the place the walk reached, so walks end.
  virtual DtEnvValueSP next(DtEnvValueSP child) const;
  /// Appends a clone of each child, from first() on, to target through its append().
  virtual void cloneChildren(DtEnvList* target) const;
  /// Appends child; its parent link is left to the caller. An empty handle, or the list itself,
  /// is not appended.
  virtual void append(DtEnvValueSP child);
  /// Erases the first entry equal to child, if any. The name and type holders stay.
  virtual void remove(DtEnvValueSP child);

  /// True when the handle is non-empty and carries the list flag.
  static bool isList(const DtEnvValueSP& node);
  /// The node as a list, or null.
  static DtEnvList* castToList(const DtEnvValueSP& node);

 protected:
  /// Appends a holder that stays hidden from iteration and can't be removed.
  void appendHolder(const DtString& text);
  /// The hidden holder at index (0 name, 1 type), or null.
  DtEnvValue* holder(int index) const;

 private:
  std::list<DtEnvValueSP> children_;
  int hidden_ = 0;
  /// The entry next() last handed out, so that the following next() on it needs no scan.
  mutable std::list<DtEnvValueSP>::const_iterator cursor_;
  mutable bool cursorValid_ = false;
};

}  // namespace KORRti

KTL_API_END

#endif
