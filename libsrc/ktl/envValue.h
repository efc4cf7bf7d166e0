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
  DtEnvListFormat = 1,
  DtEnvNamedFormat = 2,
  DtEnvObjectFormat = 4,
  DtEnvNativeFormat = 8
};

/// Expands the first "$(NAME)" reference of text from the process environment into result. Only
/// the first '$' of the text is considered; an unset variable expands to nothing. Anything else
/// leaves result equal to text.
void Modifiers(DtString& result, const DtString& text);

/// A node of the configuration tree holding one text value. Used as a child of a list it stands
/// for a comment. value() is the text after Modifiers, unmodifiedValue() the text as it was set.
class DtEnvValue {
 public:
  explicit DtEnvValue(const DtString& value);
  DtEnvValue(const DtEnvValue&) = delete;
  DtEnvValue& operator=(const DtEnvValue&) = delete;

  virtual ~DtEnvValue();
  virtual DtString value() const;
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

  std::uint32_t format() const { return format_; }
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
