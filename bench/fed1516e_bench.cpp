// Speed of the IEEE 1516-2010 reader on the largest module of the test corpus (NETN v3.0 merged
// with the RPR FOM 2.0, 1,907,948 bytes) and on the standard MIM answered from the library's own
// copy, each read end to end (file or held bytes, parse, walk, document freed) into a target that
// records every name and keeps every record, against libxml2's xmlReadMemory of the same bytes,
// with the document freed, measured in the same run. Then the cost of schema validation: the
// 14 RPR FOM 2.0 modules read one after the other by one reader, with and without validation
// against the DIF schema beside them, whose compiled form the reader keeps between reads.
#include <benchmark/benchmark.h>

#include "bench_support.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <util/notify.h>

#include "support/keeping_target.h"

namespace {

using namespace KORRti;

const std::string kData = std::string(KTL_SOURCE_DIR) + "/tests/data/fom/ieee1516-2010";
const std::string kNetn = kData + "/netn-merged/NETN-Merged-With-RPR.xml";
const char* const kRprModules[] = {
    "RPR-Aggregate_v2.0.xml", "RPR-Base_v2.0.xml",         "RPR-Communication_v2.0.xml",
    "RPR-DER_v2.0.xml",       "RPR-Enumerations_v2.0.xml", "RPR-Foundation_v2.0.xml",
    "RPR-Logistics_v2.0.xml", "RPR-Minefield_v2.0.xml",    "RPR-Physical_v2.0.xml",
    "RPR-SE_v2.0.xml",        "RPR-SIMAN_v2.0.xml",        "RPR-Switches_v2.0.xml",
    "RPR-UA_v2.0.xml",        "RPR-Warfare_v2.0.xml"};
// The one module the schema refuses: a reference identification in words where it wants a URI.
const char kRefusedModule[] = "RPR-Enumerations_v2.0.xml";

// A standard MIM's name in a directory that does not exist: the reader answers it from its copy.
std::string heldMimName(DtFomType type) {
  return "/nonexistent-ktl-bench-directory/" + DtFedReader::standardMimFileName(type).stdString();
}

// One read of name by reader into a new recording target, told the edition first as a host
// that loads a federation does. The read is timed from readFed to its return; making the target
// and dropping the model it built are the host's business and are not.
bool timedRead(benchmark::State& state, DtFedReader& reader, const std::string& name,
               DtFomType type, bool validate = false, bool refusalExpected = false) {
  state.PauseTiming();
  std::unique_ptr<ktltest::KeepingTarget> target(new ktltest::KeepingTarget());
  target->setFomType(type);
  state.ResumeTiming();
  int result = reader.readFed(name.c_str(), target.get(), 0, validate, false);
  if (result != 0 && !(refusalExpected && result == 2)) {
    state.SkipWithError(("did not read: " + name).c_str());
    return false;
  }
  benchmark::DoNotOptimize(target->names.data());
  state.PauseTiming();
  target.reset();
  state.ResumeTiming();
  return true;
}

void BM_NetnMerged(benchmark::State& state) {
  size_t bytes = ktlbench::fileBytes(kNetn).size();
  if (bytes == 0) return state.SkipWithError("the document is missing");
  for (auto _ : state) {
    DtFedReader1516e reader;
    if (!timedRead(state, reader, kNetn, DtFomTypeEvolved)) return;
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_NetnMerged)->Unit(benchmark::kMillisecond);

// The same with one reader for every read, as a host that loads several modules does: no
// clean-up of libxml2's global state between reads.
void BM_NetnMergedReused(benchmark::State& state) {
  size_t bytes = ktlbench::fileBytes(kNetn).size();
  if (bytes == 0) return state.SkipWithError("the document is missing");
  DtFedReader1516e reader;
  for (auto _ : state) {
    if (!timedRead(state, reader, kNetn, DtFomTypeEvolved)) return;
  }
  ktlbench::reportFiles(state, bytes);
}
BENCHMARK(BM_NetnMergedReused)->Unit(benchmark::kMillisecond);

void BM_Mim2010(benchmark::State& state) {
  for (auto _ : state) {
    DtFedReader1516e reader;
    if (!timedRead(state, reader, heldMimName(DtFomTypeEvolved), DtFomTypeEvolved)) return;
  }
  ktlbench::reportFiles(state, theHLAeStandardMIM_xml_len);
}
BENCHMARK(BM_Mim2010)->Unit(benchmark::kMillisecond);

void BM_Mim2025(benchmark::State& state) {
  for (auto _ : state) {
    DtFedReader1516_4 reader;
    if (!timedRead(state, reader, heldMimName(DtFomType2025), DtFomType2025)) return;
  }
  ktlbench::reportFiles(state, theHLA4StandardMIM_xml_len);
}
BENCHMARK(BM_Mim2025)->Unit(benchmark::kMillisecond);

// Baselines: libxml2's tree parser on the same bytes, already in memory, and the tree freed.
void parseBytes(benchmark::State& state, const char* bytes, size_t size) {
  xmlKeepBlanksDefault(0);
  for (auto _ : state) {
    xmlDocPtr doc = xmlReadMemory(bytes, static_cast<int>(size), nullptr, nullptr, 0);
    benchmark::DoNotOptimize(doc);
    xmlFreeDoc(doc);
  }
  ktlbench::reportFiles(state, size);
}

void BM_NetnMergedXmlReadMemory(benchmark::State& state) {
  std::vector<char> text = ktlbench::fileBytes(kNetn);
  if (text.empty()) return state.SkipWithError("the document is missing");
  parseBytes(state, text.data(), text.size());
}
BENCHMARK(BM_NetnMergedXmlReadMemory)->Unit(benchmark::kMillisecond);

void BM_Mim2010XmlReadMemory(benchmark::State& state) {
  parseBytes(state, reinterpret_cast<const char*>(theHLAeStandardMIM_xml),
             theHLAeStandardMIM_xml_len);
}
BENCHMARK(BM_Mim2010XmlReadMemory)->Unit(benchmark::kMillisecond);

void BM_Mim2025XmlReadMemory(benchmark::State& state) {
  parseBytes(state, reinterpret_cast<const char*>(theHLA4StandardMIM_xml),
             theHLA4StandardMIM_xml_len);
}
BENCHMARK(BM_Mim2025XmlReadMemory)->Unit(benchmark::kMillisecond);

// The RPR modules in a scratch directory, each naming the DIF schema copied beside them by its
// full path in place of the published URL, made once for the process.
class RprModules {
 public:
  static const RprModules& instance() {
    static const RprModules modules;
    return modules;
  }
  std::vector<std::string> paths;
  size_t bytes = 0;

 private:
  RprModules() {
    char pattern[] = "/tmp/ktl-bench-rpr-XXXXXX";
    if (!mkdtemp(pattern)) return;
    directory_ = pattern;
    const std::string schema = directory_ + "/IEEE1516-DIF-2010.xsd";
    if (!write(schema, ktlbench::fileBytes(kData + "/schemas/IEEE1516-DIF-2010.xsd"))) return;
    const std::string url =
        "http://standards.ieee.org/downloads/1516/1516.2-2010/IEEE1516-DIF-2010.xsd";
    for (const char* module : kRprModules) {
      std::vector<char> original = ktlbench::fileBytes(kData + "/rpr-fom-v2.0/" + module);
      std::string text(original.begin(), original.end());
      size_t at = text.find(url);
      if (at == std::string::npos) return;
      text.replace(at, url.size(), schema);
      std::string path = directory_ + "/" + module;
      if (!write(path, std::vector<char>(text.begin(), text.end()))) return;
      paths.push_back(path);
      this->bytes += text.size();
    }
  }
  ~RprModules() {
    for (const std::string& path : paths) std::remove(path.c_str());
    std::remove((directory_ + "/IEEE1516-DIF-2010.xsd").c_str());
    if (!directory_.empty()) rmdir(directory_.c_str());
  }
  static bool write(const std::string& path, const std::vector<char>& bytes) {
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
  }
  std::string directory_;
};

// The 14 modules read one after the other by one reader, as a host loads a federation.
void readRprModules(benchmark::State& state, bool validate) {
  const RprModules& modules = RprModules::instance();
  if (modules.paths.size() != sizeof kRprModules / sizeof kRprModules[0]) {
    return state.SkipWithError("the modules could not be prepared");
  }
  DtFedReader1516e reader;
  if (validate) reader.setSchemaValidationEnabled(true);
  for (auto _ : state) {
    for (const std::string& path : modules.paths) {
      bool refused = validate && path.find(kRefusedModule) != std::string::npos;
      if (!timedRead(state, reader, path, DtFomTypeEvolved, validate, refused)) return;
    }
  }
  ktlbench::reportFiles(state, modules.bytes);
}

void BM_RprModules(benchmark::State& state) {
  readRprModules(state, false);
}
BENCHMARK(BM_RprModules)->Unit(benchmark::kMillisecond);

void BM_RprModulesValidated(benchmark::State& state) {
  readRprModules(state, true);
}
BENCHMARK(BM_RprModulesValidated)->Unit(benchmark::kMillisecond);

}  // namespace
