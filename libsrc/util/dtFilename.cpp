#include <util/dtFilename.h>

#include <sys/stat.h>

#include <string>

namespace KORRti {

DtFilename::DtFilename() = default;
DtFilename::DtFilename(const char* path) : DtString(path) {}
DtFilename::DtFilename(const DtFilename& other) = default;
DtFilename::DtFilename(const DtString& path) : DtString(path) {}
DtFilename::~DtFilename() = default;

DtFilename& DtFilename::operator=(const char* path) {
  DtString::operator=(path);
  return *this;
}

DtFilename& DtFilename::operator=(const DtFilename& other) {
  DtString::operator=(other);
  return *this;
}

DtString DtFilename::extension() const {
  const std::string& path = stdString();
  size_t slash = path.rfind('/');
  size_t componentStart = slash == std::string::npos ? 0 : slash + 1;
  size_t dot = path.rfind('.');
  if (dot == std::string::npos || dot < componentStart) return DtString();
  return DtString(path.substr(dot + 1));
}

void DtFilename::stripPath() {
  snipFront('/', true);
}

DtFilename DtFilename::stripPath(const DtFilename& path) {
  DtFilename result(path);
  result.stripPath();
  return result;
}

DtFilename DtFilename::stripFilename(const DtFilename& path) {
  const std::string& text = path.stdString();
  size_t slash = text.rfind('/');
  if (slash == std::string::npos) return DtFilename();
  return DtFilename(DtString(text.substr(0, slash + 1)));
}

bool DtFilename::relative() const {
  return c_str()[0] != '/';
}

bool DtFilename::exists() const {
  struct stat info;
  return !isEmpty() && ::stat(c_str(), &info) == 0;
}

DtFilename& DtFilename::append(const DtFilename& name) {
  if (!isEmpty() && stdString().back() != '/') DtString::operator+=("/");
  DtString::operator+=(name);
  return *this;
}

bool DtFilename::searchAlternatePath(const char* directories) {
  if (!directories || isEmpty() || !relative()) return false;
  std::string list(directories);
  size_t start = 0;
  while (start <= list.size()) {
    size_t colon = list.find(':', start);
    if (colon == std::string::npos) colon = list.size();
    std::string directory = list.substr(start, colon - start);
    if (!directory.empty()) {
      DtFilename candidate(directory.c_str());
      candidate.append(*this);
      if (candidate.exists()) {
        *this = candidate;
        return true;
      }
    }
    start = colon + 1;
  }
  return false;
}

}  // namespace KORRti
