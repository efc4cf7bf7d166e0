#include <util/dtString.h>

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ostream>

namespace KORRti {

namespace {

bool isBlank(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// True when nothing but white space stands from end on.
bool onlyBlanksFrom(const char* end) {
  while (*end && isBlank(*end)) ++end;
  return *end == '\0';
}

bool hasDigits(const char* start, const char* end) {
  return end != start;
}

void report(bool* ok, bool value) {
  if (ok) *ok = value;
}

}  // namespace

DtString::DtString() = default;
DtString::DtString(const char* text) : text_(text ? text : "") {}
DtString::DtString(const DtString& other) = default;
DtString::DtString(const std::string& text) : text_(text) {}
DtString::DtString(int value) : text_(std::to_string(value)) {}
DtString::DtString(unsigned int value) : text_(std::to_string(value)) {}
DtString::DtString(unsigned long value) : text_(std::to_string(value)) {}

DtString::DtString(double value) {
  // The shortest of the usual precisions that reads back to the same double.
  char buffer[64];
  for (int precision : {6, 15, 17}) {
    std::snprintf(buffer, sizeof buffer, "%.*g", precision, value);
    if (std::isnan(value) || std::strtod(buffer, nullptr) == value) break;
  }
  text_ = buffer;
}

DtString::~DtString() = default;

DtString& DtString::operator=(const DtString& other) {
  text_ = other.text_;
  return *this;
}

DtString& DtString::operator=(const char* text) {
  text_ = text ? text : "";
  return *this;
}

DtString::operator char const*() const {
  return text_.c_str();
}
const char* DtString::c_str() const {
  return text_.c_str();
}

DtString& DtString::operator+=(const char* text) {
  if (text) text_ += text;
  return *this;
}

DtString& DtString::operator+=(const DtString& text) {
  text_ += text.text_;
  return *this;
}

const DtString& DtString::nullString() {
  static const DtString empty;
  return empty;
}

void DtString::toLower() {
  for (char& c : text_) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool DtString::caseCompare(const char* text) const {
  return text && strcasecmp(text_.c_str(), text) == 0;
}

bool DtString::caseCompare(const DtString& text) const {
  return caseCompare(text.c_str());
}

int DtString::findString(const DtString& text) const {
  size_t at = text_.find(text.text_);
  return at == std::string::npos ? -1 : static_cast<int>(at);
}

void DtString::snipFront(char c, bool greedy) {
  size_t at = greedy ? text_.rfind(c) : text_.find(c);
  if (at != std::string::npos) text_.erase(0, at + 1);
}

void DtString::snipBack(char c, bool greedy) {
  size_t at = greedy ? text_.find(c) : text_.rfind(c);
  if (at != std::string::npos) text_.erase(at);
}

void DtString::chompFront() {
  size_t at = 0;
  while (at < text_.size() && isBlank(text_[at])) ++at;
  text_.erase(0, at);
}

void DtString::chompBack() {
  size_t end = text_.size();
  while (end > 0 && isBlank(text_[end - 1])) --end;
  text_.erase(end);
}

double DtString::toDouble(bool* ok) const {
  const char* start = text_.c_str();
  char* end = nullptr;
  double value = std::strtod(start, &end);
  // strtod skips leading blanks itself; trailing ones are fine too.
  bool good = hasDigits(start, end) && onlyBlanksFrom(end);
  report(ok, good);
  return good ? value : 0.0;
}

float DtString::toFloat(bool* ok) const {
  return static_cast<float>(toDouble(ok));
}

long DtString::toLong(bool* ok) const {
  const char* start = text_.c_str();
  char* end = nullptr;
  errno = 0;
  long value = std::strtol(start, &end, 10);
  bool good = hasDigits(start, end) && onlyBlanksFrom(end) && errno != ERANGE;
  report(ok, good);
  return good ? value : 0;
}

unsigned long DtString::toULong(bool* ok) const {
  const char* start = text_.c_str();
  while (isBlank(*start)) ++start;
  char* end = nullptr;
  errno = 0;
  unsigned long value = std::strtoul(start, &end, 10);
  bool good = *start != '-' && hasDigits(start, end) && onlyBlanksFrom(end) && errno != ERANGE;
  report(ok, good);
  return good ? value : 0;
}

int DtString::toInt(bool* ok) const {
  bool good = false;
  long value = toLong(&good);
  if (value < INT32_MIN || value > INT32_MAX) good = false;
  report(ok, good);
  return good ? static_cast<int>(value) : 0;
}

unsigned int DtString::toUInt(bool* ok) const {
  bool good = false;
  unsigned long value = toULong(&good);
  if (value > UINT32_MAX) good = false;
  report(ok, good);
  return good ? static_cast<unsigned int>(value) : 0;
}

bool DtString::toBool(bool* ok) const {
  DtString word(*this);
  word.chompFront();
  word.chompBack();
  for (const char* yes : {"true", "yes", "on", "1"}) {
    if (word.caseCompare(yes)) {
      report(ok, true);
      return true;
    }
  }
  for (const char* no : {"false", "no", "off", "0"}) {
    if (word.caseCompare(no)) {
      report(ok, true);
      return false;
    }
  }
  report(ok, false);
  return false;
}

bool DtString::operator==(const char* text) const {
  return text_ == (text ? text : "");
}
bool DtString::operator!=(const char* text) const {
  return !(*this == text);
}

DtString DtString::operator+(const char* text) const {
  DtString result(*this);
  result += text;
  return result;
}

bool operator==(const DtString& a, const DtString& b) {
  return a.stdString() == b.stdString();
}
bool operator!=(const DtString& a, const DtString& b) {
  return !(a == b);
}
bool operator<(const DtString& a, const DtString& b) {
  // std::string compares through char_traits<char>, which orders as unsigned bytes.
  return a.stdString() < b.stdString();
}
bool operator==(const char* a, const DtString& b) {
  return b == a;
}
bool operator!=(const char* a, const DtString& b) {
  return b != a;
}

DtString operator+(const char* a, const DtString& b) {
  DtString result(a);
  result += b;
  return result;
}

DtString operator+(const DtString& a, const DtString& b) {
  DtString result(a);
  result += b;
  return result;
}

std::ostream& operator<<(std::ostream& out, const DtString& text) {
  return out << text.stdString();
}

DtString DtReplaceAllSubstrings(const DtString& text, const DtString& from, const DtString& to) {
  if (from.isEmpty()) return text;
  const std::string& source = text.stdString();
  const std::string& pattern = from.stdString();
  std::string result;
  size_t start = 0;
  for (size_t at = source.find(pattern); at != std::string::npos;
       at = source.find(pattern, start)) {
    result.append(source, start, at - start);
    result += to.stdString();
    start = at + pattern.size();
  }
  result.append(source, start, std::string::npos);
  return DtString(result);
}

}  // namespace KORRti
