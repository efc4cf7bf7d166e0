// Speed of the IEEE 1516-2000 reader on the largest 1516-2000 document of the test corpus (the
// RPR FOM 2.0, 676,516 bytes), read end to end (file, parse, walk, document freed) into a target
// that records every name and keeps every record, against libxml2's xmlReadMemory of the same
// bytes, with the document freed, measured in the same run: the parse that the reader walks.
#include <benchmark/benchmark.h>

#include "bench_support.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader1516.h>
#include <util/notify.h>

#include "support/keeping_target.h"

namespace {

using namespace KORRti;

const std::string kFile =
    std::string(KTL_SOURCE_DIR) + "/tests/data/fom/ieee1516-2000/RPR_FOM_v2.0_1516-2000.xml";

std::vector<char> fileBytes() {
  return ktlbench::fileBytes(kFile);
}

// One read of the document by reader into a new recording target. The read is timed from the
// call to readFed to its return; making the target and, unless withTeardown, dropping the model
// it built afterwards are the host's business and are not.
bool timedRead(benchmark::State& state, DtFedReader1516& reader, bool withTeardown) {
  state.PauseTiming();
  std::unique_ptr<ktltest::KeepingTarget> target(new ktltest::KeepingTarget());
  state.ResumeTiming();
  if (reader.readFed(kFile.c_str(), target.get(), 0, false, false) != 0) {
    state.SkipWithError("the document did not read");
    return false;
  }
  benchmark::DoNotOptimize(target->names.data());
  if (!withTeardown) state.PauseTiming();
  target.reset();
  if (!withTeardown) state.ResumeTiming();
  return true;
}

// The whole read as a host does it: a new reader, the file opened, read, parsed and walked.
void BM_FedReader1516(benchmark::State& state) {
  size_t bytes = fileBytes().size();
  if (bytes == 0) return state.SkipWithError("the document is missing");
  for (auto _ : state) {
    DtFedReader1516 reader;
    if (!timedRead(state, reader, false)) return;
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_FedReader1516)->Unit(benchmark::kMillisecond);

// The same with one reader for every read, as a host that loads several modules does.
void BM_FedReader1516Reused(benchmark::State& state) {
  size_t bytes = fileBytes().size();
  if (bytes == 0) return state.SkipWithError("the document is missing");
  DtFedReader1516 reader;
  for (auto _ : state) {
    if (!timedRead(state, reader, false)) return;
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_FedReader1516Reused)->Unit(benchmark::kMillisecond);

// A read and the host dropping the model it built: freeing every record the reader handed
// over, which a host pays for too.
void BM_FedReader1516WithTeardown(benchmark::State& state) {
  size_t bytes = fileBytes().size();
  if (bytes == 0) return state.SkipWithError("the document is missing");
  DtFedReader1516 reader;
  for (auto _ : state) {
    if (!timedRead(state, reader, true)) return;
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_FedReader1516WithTeardown)->Unit(benchmark::kMillisecond);

// Baseline: libxml2's tree parser on the same bytes, already in memory, and the tree freed.
void BM_XmlReadMemory(benchmark::State& state) {
  std::vector<char> text = fileBytes();
  if (text.empty()) return state.SkipWithError("the document is missing");
  xmlKeepBlanksDefault(0);
  for (auto _ : state) {
    xmlDocPtr doc = xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0);
    benchmark::DoNotOptimize(doc);
    xmlFreeDoc(doc);
  }
  ktlbench::reportFiles(state, text.size());
}
BENCHMARK(BM_XmlReadMemory)->Unit(benchmark::kMillisecond);

}  // namespace
