#ifndef KTL_ENVVALUE_H
#define KTL_ENVVALUE_H

#include <util/dtString.h>
#include <util/export.h>

#include <cstdint>
#include <memory>

KTL_API_BEGIN

namespace KORRti {

class DtEnvValue;

/// The only owner of a tree node. Links to parents are weak, so the tree owns downward.
using DtEnvValueSP = std::shared_ptr<DtEnvValue>;

/// Bit flags of a node's class chain; a node's format is the union of the flags of its classes.
enum DtEnvValueFormat : std::uint32_t {
  DtEnvListFormat = 1,    ///< a DtEnvList, which holds children
  DtEnvNamedFormat = 2,   ///< a DtEnvNamedList, which has a name
  DtEnvObjectFormat = 4,  ///< a DtEnvObject, which has a type
  DtEnvNativeFormat = 8   ///< a DtNativeValue
};

/// Expands the first "$(NAME)" reference of text from the process environment into result. Only
/// the first '$' of the text is considered; an unset variable expands to nothing. Anything else
/// leaves result equal to text.
void Modifiers(DtString& result, const DtString& text);

/// A node of the configuration tree holding one text value. Used as a child of a list it stands
/// for a comment. value() is the text after Modifiers, unmodifiedValue() the text as it was set.
class DtEnvValue {
 public:
  /// A node without a parent whose value is set as by setValue().
  explicit DtEnvValue(const DtString& value);
  DtEnvValue(const DtEnvValue&) = delete;
  DtEnvValue& operator=(const DtEnvValue&) = delete;

  virtual ~DtEnvValue();
  /// The value after Modifiers: its first "$(NAME)" expanded.
  virtual DtString value() const;
  /// The value as it was last set.
  virtual DtString unmodifiedValue() const;
  /// Does nothing when text equals unmodifiedValue(); otherwise stores it, expands it and
  /// reports the change through valueChanged().
  virtual void setValue(const DtString& text);
  /// The parent if it is still alive, otherwise an empty handle.
  virtual DtEnvValueSP parent() const;
  /// Stores a weak link; the parent is not kept alive by its child.
  virtual void setParent(DtEnvValueSP parent);
  /// Tells a live parent that this node changed.
  virtual void valueChanged();
  /// Tells a live parent that this node changed below; each level passes itself up.
  virtual void childChanged(DtEnvValue* child);
  /// A detached copy built from value(); the caller owns it.
  virtual DtEnvValue* clone() const;

  /// The DtEnvValueFormat flags of the node's classes; 0 for a plain value.
  std::uint32_t format() const { return format_; }
  /// Adds flag to format(); each derived constructor adds the flag of its class.
  void addFormat(DtEnvValueFormat flag) { format_ |= static_cast<std::uint32_t>(flag); }

 private:
  std::uint32_t format_ = 0;
  DtString value_;
  DtString unmodifiedValue_;
  std::weak_ptr<DtEnvValue> parent_;
};

}  // namespace KORRti

KTL_API_END

#endif
