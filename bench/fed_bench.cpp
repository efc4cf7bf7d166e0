// Speed of the HLA 1.3 FED readers on the largest FED file of the test corpus, in files per
// second and bytes per second, with baselines over the same file measured in the same run:
// a plain read of the file into memory, and the Lisp reader (DtcRead) on the same bytes in a
// fresh environment, which is the parse that the FED readers walk.
#include <benchmark/benchmark.h>

#include "bench_support.h"

#include <cstdio>
#include <string>
#include <vector>

#include <ktl/atom.h>
#include <ktl/fedReader.h>
#include <ktl/fedReader13.h>
#include <ktl/ktlEnvironment.h>
#include <ktl/ktlFedReader.h>
#include <ktl/lstream.h>
#include <ktl/read.h>
#include <util/notify.h>

namespace {

using namespace KORRti;

const std::string kFile =
    std::string(KTL_SOURCE_DIR) + "/tests/data/fom/hla13/RPR_FOM_v2.0_1.3.fed";

// Counts what it is told, as a host that builds a model would at least do.
class CountingTarget : public DtFedTarget {
 public:
  long classes = 0;
  long members = 0;
  bool addObjectClass(const char*, const char*) override {
    ++classes;
    return true;
  }
  bool addInteractionClass(const char*, const char*, DtTransportType, DtOrderType,
                           const char*) override {
    ++classes;
    return true;
  }
  bool addSpaceAttribute(const char*, const char*, DtTransportType, DtOrderType,
                         const char*) override {
    ++members;
    return true;
  }
  bool addParameter(const char*, const char*) override {
    ++members;
    return true;
  }
};

std::vector<char> fileBytes() {
  return ktlbench::fileBytes(kFile);
}

template <typename Reader>
void readWith(benchmark::State& state) {
  size_t bytes = fileBytes().size();
  if (bytes == 0) {
    state.SkipWithError("the FED file is missing");
    return;
  }
  for (auto _ : state) {
    Reader reader;
    CountingTarget target;
    int result = reader.readFed(kFile.c_str(), &target, 0, false, false);
    if (result != 0) {
      state.SkipWithError("the FED file did not read");
      return;
    }
    benchmark::DoNotOptimize(target.classes);
  }
  ktlbench::reportFiles(state, bytes);
}

void BM_FedReader13(benchmark::State& state) {
  readWith<DtFedReader13>(state);
}
BENCHMARK(BM_FedReader13);

void BM_KtlFedReader(benchmark::State& state) {
  readWith<DtKtlFedReader>(state);
}
BENCHMARK(BM_KtlFedReader);

// Baseline: open the file, read it whole into memory and close it.
void BM_PlainFileRead(benchmark::State& state) {
  size_t bytes = 0;
  for (auto _ : state) {
    std::vector<char> data = fileBytes();
    bytes = data.size();
    benchmark::DoNotOptimize(data.data());
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_PlainFileRead);

// Baseline: the Lisp reader alone on the same bytes, in a fresh environment each time as the
// FED readers make one.
void BM_DtcReadSameBytes(benchmark::State& state) {
  std::vector<char> text = fileBytes();
  size_t bytes = text.size();
  text.push_back('\0');
  for (auto _ : state) {
    DtKtlEnvironment environment;
    DtlStringInputStream stream(text.data());
    DtlObjPtr form = DtcRead(&stream, environment.env());
    benchmark::DoNotOptimize(form.get());
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_DtcReadSameBytes);

// What making and dropping the environment alone costs, part of both figures above.
void BM_KtlEnvironmentOnly(benchmark::State& state) {
  for (auto _ : state) {
    DtKtlEnvironment environment;
    benchmark::DoNotOptimize(environment.env().get());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_KtlEnvironmentOnly);

}  // namespace
