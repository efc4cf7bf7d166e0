// Cost of loading a federation as fomdump does, with its own code: the 14 RPR FOM 2.0 modules
// and the library's IEEE 1516-2010 MIM, each read end to end into fomdump's recording target,
// the references resolved and the modules sorted, and everything merged into one model with
// its conflicts and unresolved data types, against libxml2's xmlReadMemory of the same 15
// documents (already in memory, each tree freed), measured in the same run.
#include <benchmark/benchmark.h>

#include "bench_support.h"

#include <memory>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader.h>
#include <util/notify.h>

#include "fomdump/federation.h"
#include "fomdump/merge.h"

namespace {

using namespace KORRti;

const std::string kRpr = std::string(KTL_SOURCE_DIR) + "/tests/data/fom/ieee1516-2010/rpr-fom-v2.0";
const char* const kModules[] = {
    "RPR-Aggregate_v2.0.xml", "RPR-Base_v2.0.xml",         "RPR-Communication_v2.0.xml",
    "RPR-DER_v2.0.xml",       "RPR-Enumerations_v2.0.xml", "RPR-Foundation_v2.0.xml",
    "RPR-Logistics_v2.0.xml", "RPR-Minefield_v2.0.xml",    "RPR-Physical_v2.0.xml",
    "RPR-SE_v2.0.xml",        "RPR-SIMAN_v2.0.xml",        "RPR-Switches_v2.0.xml",
    "RPR-UA_v2.0.xml",        "RPR-Warfare_v2.0.xml"};

// The bytes of the 15 documents: the modules and the held MIM.
std::vector<std::vector<char>> documents() {
  std::vector<std::vector<char>> all;
  for (const char* module : kModules) all.push_back(ktlbench::fileBytes(kRpr + "/" + module));
  const char* mim = reinterpret_cast<const char*>(theHLAeStandardMIM_xml);
  all.emplace_back(mim, mim + theHLAeStandardMIM_xml_len);
  return all;
}

size_t totalBytes(const std::vector<std::vector<char>>& all) {
  size_t bytes = 0;
  for (const auto& document : all) bytes += document.size();
  return bytes;
}

void BM_RprFederation(benchmark::State& state) {
  size_t bytes = totalBytes(documents());
  for (auto _ : state) {
    fomdump::Federation federation;
    federation.modules.push_back(fomdump::readHeldMim(DtFomTypeEvolved, false));
    for (const char* module : kModules) {
      federation.modules.push_back(fomdump::readModule(kRpr + "/" + module, false, false, true));
    }
    federation.arrange();
    fomdump::MergedModel merged;
    fomdump::merge(federation, merged);
    if (!merged.conflicts.empty() || !merged.unresolved.empty() || federation.order.size() != 15) {
      return state.SkipWithError("the federation did not load cleanly");
    }
    benchmark::DoNotOptimize(merged.model.objects.data());
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_RprFederation)->Unit(benchmark::kMillisecond);

// The share of the load that merges: each time a federation read and arranged untimed, then
// merged (a merge takes the records out of the modules).
void BM_RprMergeOnly(benchmark::State& state) {
  size_t bytes = totalBytes(documents());
  for (auto _ : state) {
    state.PauseTiming();
    auto federation = std::make_unique<fomdump::Federation>();
    federation->modules.push_back(fomdump::readHeldMim(DtFomTypeEvolved, false));
    for (const char* module : kModules) {
      federation->modules.push_back(fomdump::readModule(kRpr + "/" + module, false, false, true));
    }
    federation->arrange();
    auto merged = std::make_unique<fomdump::MergedModel>();
    state.ResumeTiming();
    fomdump::merge(*federation, *merged);
    benchmark::DoNotOptimize(merged->model.objects.data());
    // The model and the modules are dropped untimed.
    state.PauseTiming();
    merged.reset();
    federation.reset();
    state.ResumeTiming();
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_RprMergeOnly)->Unit(benchmark::kMillisecond);

// The part of the load that tells each module's format (DtFedReader::checkFomType), which for an
// XML file parses the whole document once more before its reader parses it.
void BM_RprFormatDetection(benchmark::State& state) {
  size_t bytes = totalBytes(documents());
  for (auto _ : state) {
    for (const char* module : kModules) {
      benchmark::DoNotOptimize(DtFedReader::checkFomType((kRpr + "/" + module).c_str()));
    }
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_RprFormatDetection)->Unit(benchmark::kMillisecond);

// Baseline: libxml2's tree parser on the same 15 documents, in memory, each tree freed.
void BM_RprXmlReadMemory(benchmark::State& state) {
  std::vector<std::vector<char>> all = documents();
  for (const auto& document : all) {
    if (document.empty()) return state.SkipWithError("a document is missing");
  }
  xmlKeepBlanksDefault(0);
  for (auto _ : state) {
    for (const auto& document : all) {
      xmlDocPtr doc =
          xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr, 0);
      benchmark::DoNotOptimize(doc);
      xmlFreeDoc(doc);
    }
  }
  ktlbench::reportFiles(state, totalBytes(all));
}
BENCHMARK(BM_RprXmlReadMemory)->Unit(benchmark::kMillisecond);

}  // namespace
