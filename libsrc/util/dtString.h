#ifndef UTIL_DTSTRING_H
#define UTIL_DTSTRING_H

#include <util/export.h>
#include <iosfwd>
#include <string>

KTL_API_BEGIN

namespace KORRti {

/// Owning text with value semantics. The text pointer it hands out is never null and stays valid
/// until the string is changed or destroyed. Polymorphic because DtFilename derives from it.
class DtString {
 public:
  DtString();
  DtString(const char* text);  // NOLINT: converts freely from text by design
  DtString(const DtString& other);
  DtString(const std::string& text);  // NOLINT
  explicit DtString(int value);
  explicit DtString(unsigned int value);
  explicit DtString(unsigned long value);
  explicit DtString(double value);
  virtual ~DtString();

  /// Slot order of the virtual members is part of the type's contract.
  virtual DtString& operator=(const DtString& other);
  virtual operator char const*() const;
  virtual DtString& operator+=(const char* text);
  virtual DtString& operator+=(const DtString& text);
  virtual const char* c_str() const;

  DtString& operator=(const char* text);
  const char* string() const { return text_.c_str(); }

  char& operator[](int index) { return text_[static_cast<size_t>(index)]; }
  int size() const { return static_cast<int>(text_.size()); }
  bool isEmpty() const { return text_.empty() || text_[0] == '\0'; }
  static const DtString& nullString();

  void toLower();
  bool caseCompare(const char* text) const;
  bool caseCompare(const DtString& text) const;
  /// Index of the first occurrence of text, negative if there is none.
  int findString(const DtString& text) const;
  /// Removes the front up to and including c (its first occurrence, or its last when greedy).
  void snipFront(char c, bool greedy);
  /// Removes the back from c on (its last occurrence, or its first when greedy).
  void snipBack(char c, bool greedy);
  void chompFront();
  void chompBack();

  /// Numeric and boolean readings of the text. Leading and trailing white space is allowed;
  /// anything else that is not part of the number makes *ok false (when ok is given) and the
  /// result 0 (false for toBool).
  double toDouble(bool* ok = nullptr) const;
  float toFloat(bool* ok = nullptr) const;
  int toInt(bool* ok = nullptr) const;
  unsigned int toUInt(bool* ok = nullptr) const;
  long toLong(bool* ok = nullptr) const;
  unsigned long toULong(bool* ok = nullptr) const;
  /// "true", "yes", "on", "1" and "false", "no", "off", "0", in any case.
  bool toBool(bool* ok = nullptr) const;

  bool operator==(const char* text) const;
  bool operator!=(const char* text) const;
  DtString operator+(const char* text) const;

  const std::string& stdString() const { return text_; }

 private:
  std::string text_;
};

bool operator==(const DtString& a, const DtString& b);
bool operator!=(const DtString& a, const DtString& b);
bool operator<(const DtString& a, const DtString& b);
bool operator==(const char* a, const DtString& b);
bool operator!=(const char* a, const DtString& b);
DtString operator+(const char* a, const DtString& b);
DtString operator+(const DtString& a, const DtString& b);
std::ostream& operator<<(std::ostream& out, const DtString& text);

/// The text with every occurrence of from replaced by to; an empty from changes nothing.
DtString DtReplaceAllSubstrings(const DtString& text, const DtString& from, const DtString& to);

}  // namespace KORRti

KTL_API_END

#endif
