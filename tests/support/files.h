#ifndef TESTS_SUPPORT_FILES_H
#define TESTS_SUPPORT_FILES_H

// Temporary directories and file contents for the suites.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace ktltest {

// A fresh directory under /tmp, removed with everything in it when the object goes.
class TempDir {
 public:
  TempDir() {
    std::string pattern = "/tmp/ktl-test-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    if (!mkdtemp(name.data())) throw std::runtime_error("mkdtemp failed");
    path_ = name.data();
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // The last component of the path.
  std::string base() const { return path_.substr(path_.rfind('/') + 1); }
  // The path of name inside the directory.
  std::string file(const std::string& name) const { return path_ + "/" + name; }
  // Writes text to name (which may hold sub-directories) and returns its path.
  std::string write(const std::string& name, const std::string& text) const {
    std::string where = file(name);
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(where).parent_path(), ignored);
    std::ofstream out(where, std::ios::binary);
    out << text;
    return where;
  }

 private:
  std::string path_;
};

// The whole content of a file, or "<missing>" when it can't be opened.
inline std::string fileText(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return "<missing>";
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace ktltest

#endif
