#ifndef TESTS_SUPPORT_SCRATCH_FILE_H
#define TESTS_SUPPORT_SCRATCH_FILE_H

// The file through which a fuzz target hands each input to a reader that takes a file name:
// one private directory for the whole run, made at the first use, holding the input file
// (rewritten for each input) and any fixed files the target puts beside it.
#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace ktltest {

class ScratchFile {
 public:
  // prefix names the directory under /tmp, name the input file inside it.
  ScratchFile(const char* prefix, const char* name) {
    std::string pattern = std::string("/tmp/") + prefix + "-XXXXXX";
    if (!mkdtemp(&pattern[0])) abort();
    directory_ = pattern;
    path_ = directory_ + "/" + name;
  }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  const std::string& path() const { return path_; }
  // Writes bytes as the file name beside the input.
  void put(const char* name, const std::string& bytes) const {
    write((directory_ + "/" + name).c_str(), reinterpret_cast<const uint8_t*>(bytes.data()),
          bytes.size());
  }
  // Makes the input file hold exactly these bytes.
  void hold(const uint8_t* data, size_t size) const { write(path_.c_str(), data, size); }

 private:
  static void write(const char* path, const uint8_t* data, size_t size) {
    FILE* file = std::fopen(path, "wb");
    if (!file) abort();
    if (size && std::fwrite(data, 1, size, file) != size) abort();
    std::fclose(file);
  }
  std::string directory_;
  std::string path_;
};

}  // namespace ktltest

#endif
