#ifndef BENCH_BENCH_SUPPORT_H
#define BENCH_BENCH_SUPPORT_H

// Steps the benchmark programs share.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace ktlbench {

// The whole content of a file; empty when it can't be read.
inline std::vector<char> fileBytes(const std::string& path) {
  std::vector<char> bytes;
  FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return bytes;
  char block[4096];
  size_t count;
  while ((count = std::fread(block, 1, sizeof block, file)) > 0) {
    bytes.insert(bytes.end(), block, block + count);
  }
  std::fclose(file);
  return bytes;
}

// One item per iteration, and bytes per iteration, for the per-second figures.
inline void reportFiles(benchmark::State& state, size_t bytes) {
  state.SetItemsProcessed(state.iterations());
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}

}  // namespace ktlbench

#endif
