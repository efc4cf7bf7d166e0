// Replays inputs through a fuzz target's entry function without libFuzzer, so that the seed
// corpus and every input that once made a target fail run in the ordinary test build:
//   <target>_replay DIR_OR_FILE...
// Directories are walked in name order; a missing one is passed over. Exit status 0 when every
// input returned, 1 when none was found at all (a misplaced corpus would otherwise pass).
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) __attribute__((weak));

namespace {

std::vector<std::string> inputsOf(const std::filesystem::path& place) {
  std::vector<std::string> found;
  std::error_code error;
  if (std::filesystem::is_regular_file(place, error)) {
    found.push_back(place.string());
  } else if (std::filesystem::is_directory(place, error)) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(place, error)) {
      if (entry.is_regular_file()) found.push_back(entry.path().string());
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize) LLVMFuzzerInitialize(&argc, &argv);
  size_t replayed = 0;
  for (int i = 1; i < argc; ++i) {
    for (const std::string& path : inputsOf(argv[i])) {
      std::ifstream in(path, std::ios::binary);
      std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                              std::istreambuf_iterator<char>());
      std::fprintf(stderr, "replay: %s (%zu bytes)\n", path.c_str(), bytes.size());
      LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
      ++replayed;
    }
  }
  std::fprintf(stderr, "replay: %zu inputs\n", replayed);
  return replayed > 0 ? 0 : 1;
}
