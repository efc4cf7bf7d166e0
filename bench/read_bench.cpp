// Speed of the KTL reader on a large configuration text, with two baselines over input of the
// same size: libxml2 parsing an XML document of the same shape into a tree, and a plain loop
// over the bytes of the KTL text. All three report bytes per second.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include <ktl/ktl.h>

namespace {

const size_t kTargetSize = 1 << 20;

// A small deterministic generator, so that every run reads the same text.
class Lcg {
 public:
  explicit Lcg(uint64_t seed) : state_(seed) {}
  uint32_t next() {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<uint32_t>(state_ >> 33);
  }
  uint32_t below(uint32_t n) { return next() % n; }

 private:
  uint64_t state_;
};

const char* const kClasses[] = {"Aircraft", "Vehicle", "Ship",    "Radar",
                                "Sensor",   "Weapon",  "Country", "Platform"};
const char* const kAttributes[] = {"Position", "Velocity", "Orientation", "Damage",
                                   "Fuel",     "Name",     "Callsign",    "Status"};
const char* const kTransports[] = {"HLAreliable", "HLAbestEffort"};

std::string format(const char* fmt, double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, fmt, value);
  return buffer;
}

// The same federation configuration in its KTL and its XML form, each of about kTargetSize
// bytes.
struct Documents {
  std::string ktl;
  std::string xml;
};

// One federate entry, in both forms.
struct Block {
  std::string ktl;
  std::string xml;
};

Block generateBlock(Lcg& rng, int block) {
  std::string id = std::to_string(block);
  char hexBuffer[16];
  std::snprintf(hexBuffer, sizeof hexBuffer, "0x%X", rng.below(0x10000));
  std::string hex = hexBuffer;
  std::string port = std::to_string(1024 + rng.below(60000));
  std::string rate = format("%.3f", rng.below(100000) / 100.0);
  std::string lookahead = format("%.1e", (1 + rng.below(9)) / 1000.0);
  const char* transport = kTransports[rng.below(2)];

  Block b;
  std::string& k = b.ktl;
  std::string& x = b.xml;
  k += "; federate " + id + ": generated entry\n";
  k += "(federate\n  (name \"federate-" + id + "\")\n  (handle " + hex + ")\n  (port " + port +
       ")\n  (rate " + rate + ")\n  (lookahead " + lookahead + ")\n  (transport '" + transport +
       ")\n  (classes";
  x += "  <!-- federate " + id + ": generated entry -->\n";
  x += "  <federate>\n    <name>federate-" + id + "</name>\n    <handle>" + hex +
       "</handle>\n    <port>" + port + "</port>\n    <rate>" + rate + "</rate>\n    <lookahead>" +
       lookahead + "</lookahead>\n    <transport>" + transport + "</transport>\n    <classes>";
  int classes = 1 + rng.below(3);
  for (int c = 0; c < classes; ++c) {
    const char* name = kClasses[rng.below(8)];
    k += "\n    (" + std::string(name) + " (attributes";
    x += "\n      <class name=\"" + std::string(name) + "\"><attributes>";
    int attributes = 1 + rng.below(4);
    for (int a = 0; a < attributes; ++a) {
      const char* attribute = kAttributes[rng.below(8)];
      k += " " + std::string(attribute);
      x += "<attribute>" + std::string(attribute) + "</attribute>";
    }
    k += "))";
    x += "</attributes></class>";
  }
  k += "))\n";
  x += "\n    </classes>\n  </federate>\n";
  return b;
}

// The same sequence of entries in both forms, each form cut after the entry that takes it to
// kTargetSize bytes. XML being wordier, its document holds fewer entries.
Documents generate() {
  Documents docs;
  Lcg rng(20240611);
  const std::string xmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<configuration>\n";
  const std::string xmlTail = "</configuration>\n";
  docs.xml = xmlHead;
  for (int block = 0;
       docs.ktl.size() < kTargetSize || docs.xml.size() + xmlTail.size() < kTargetSize; ++block) {
    Block b = generateBlock(rng, block);
    if (docs.ktl.size() < kTargetSize) docs.ktl += b.ktl;
    if (docs.xml.size() + xmlTail.size() < kTargetSize) docs.xml += b.xml;
  }
  docs.xml += xmlTail;
  return docs;
}

const Documents& documents() {
  static const Documents docs = generate();
  return docs;
}

// Reads every form of the KTL text into a fresh frame.
void BM_KtlRead(benchmark::State& state) {
  using namespace KORRti;
  const std::string& text = documents().ktl;
  int64_t forms = 0;
  for (auto _ : state) {
    DtlObjPtr frame(DtlFrameTag);
    DtlObjPtr eof = DtcIntern("eof", frame);
    DtlStringInputStream stream(text.c_str());
    forms = 0;
    for (DtlObjPtr form = DtcRead(&stream, frame); form != eof; form = DtcRead(&stream, frame)) {
      benchmark::DoNotOptimize(form.get());
      ++forms;
    }
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(text.size()));
  state.counters["forms"] = static_cast<double>(forms);
  state.counters["input_bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_KtlRead)->Unit(benchmark::kMillisecond);

// Baseline: libxml2 parses the XML form of the same configuration into a document tree.
void BM_LibXml2ReadMemory(benchmark::State& state) {
  const std::string& text = documents().xml;
  for (auto _ : state) {
    xmlDocPtr doc = xmlReadMemory(text.data(), static_cast<int>(text.size()), "bench.xml", nullptr,
                                  XML_PARSE_NONET);
    if (!doc) {
      state.SkipWithError("xmlReadMemory failed");
      break;
    }
    benchmark::DoNotOptimize(doc);
    xmlFreeDoc(doc);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(text.size()));
  state.counters["input_bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_LibXml2ReadMemory)->Unit(benchmark::kMillisecond);

// Baseline: one pass over the bytes of the KTL text, counting parentheses.
void BM_ByteLoopCountParens(benchmark::State& state) {
  const std::string& text = documents().ktl;
  for (auto _ : state) {
    const char* p = text.c_str();
    benchmark::DoNotOptimize(p);
    int64_t open = 0, close = 0;
    for (; *p; ++p) {
      open += *p == '(';
      close += *p == ')';
    }
    benchmark::DoNotOptimize(open);
    benchmark::DoNotOptimize(close);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(text.size()));
  state.counters["input_bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_ByteLoopCountParens)->Unit(benchmark::kMillisecond);

}  // namespace
