#include <ktl/envValue.h>

#include <cstdlib>
#include <string>

namespace KORRti {

void Modifiers(DtString& result, const DtString& text) {
  const std::string& s = text.stdString();
  const std::string::size_type p = s.find('$');
  if (p == std::string::npos || p + 3 >= s.size() || s[p + 1] != '(') {
    result = text;
    return;
  }
  const std::string::size_type close = s.find(')', p + 2);
  if (close == std::string::npos) {
    result = text;
    return;
  }
  const std::string name = s.substr(p + 2, close - (p + 2));
  const char* found = std::getenv(name.c_str());
  std::string expanded = s.substr(0, p);
  if (found) expanded += found;
  expanded += s.substr(close + 1);
  result = DtString(expanded);
}

DtEnvValue::DtEnvValue(const DtString& value) {
  DtEnvValue::setValue(value);
}

DtEnvValue::~DtEnvValue() = default;

DtString DtEnvValue::value() const {
  return value_;
}

DtString DtEnvValue::unmodifiedValue() const {
  return unmodifiedValue_;
}

void DtEnvValue::setValue(const DtString& text) {
  if (text == unmodifiedValue_) return;
  // text may be one of our own fields, which the next line changes.
  const DtString copy(text);  // NOLINT(performance-unnecessary-copy-initialization)
  unmodifiedValue_ = copy;
  Modifiers(value_, copy);
  valueChanged();
}

DtEnvValueSP DtEnvValue::parent() const {
  return parent_.lock();
}

void DtEnvValue::setParent(DtEnvValueSP parent) {
  parent_ = parent;
}

void DtEnvValue::valueChanged() {
  if (DtEnvValueSP p = parent_.lock()) p->childChanged(this);
}

void DtEnvValue::childChanged(DtEnvValue* /*child*/) {
  if (DtEnvValueSP p = parent_.lock()) p->childChanged(this);
}

DtEnvValue* DtEnvValue::clone() const {
  return new DtEnvValue(value());
}

}  // namespace KORRti
