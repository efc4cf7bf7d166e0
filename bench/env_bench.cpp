// Reading and writing a configuration tree of 10,000 nodes in both its forms, against libxml2
// parsing (xmlReadMemory) and saving (xmlDocDumpMemory) the XML form of the same tree. Each
// benchmark reports nodes per second ("items") and bytes per second of the text it reads or
// writes.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

#include <ktl/envKtlReader.h>
#include <ktl/envKtlWriter.h>
#include <ktl/envXmlReader.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>

using namespace KORRti;

namespace {

const int kBlocks = 1000;
const int kNodesPerBlock = 10;
const int kNodes = kBlocks * kNodesPerBlock;

// 1,000 vehicles of 10 nodes each: the object, six attributes, a comment, an engine object and
// its attribute. Attributes come first, so the XML form keeps them all.
DtEnvironment makeTree() {
  DtEnvironment env("federation");
  for (int i = 0; i < kBlocks; ++i) {
    const std::string id = std::to_string(i);
    DtEnvValueSP vehicle = env.addObject(("v" + id).c_str(), "Vehicle");
    vehicle->setValue(("vehicle number " + id).c_str());
    env.addAttribute("speed", std::to_string(i % 120).c_str(), vehicle);
    env.addAttribute("heading", std::to_string((i * 7) % 360).c_str(), vehicle);
    env.addAttribute("callsign", ("CS" + id).c_str(), vehicle);
    env.addAttribute("side", i % 2 ? "blue" : "red", vehicle);
    env.addAttribute("fuel", std::to_string(1000 - i % 1000).c_str(), vehicle);
    env.addAttribute("crew", std::to_string(i % 5).c_str(), vehicle);
    env.addComment(("serviced in block " + id).c_str(), vehicle);
    DtEnvValueSP engine = env.addObject("engine", "Engine", vehicle);
    env.addAttribute("power", std::to_string(200 + i % 300).c_str(), engine);
  }
  return env;
}

std::string fileText(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The tree, its XML text (as writeString makes it) and its KTL text in a file.
struct Fixture {
  Fixture() : tree(makeTree()) {
    DtString text;
    DtEnvXMLWriter("federation").writeString(tree, text);
    xml = text.c_str();
    char name[] = "/tmp/env_bench-XXXXXX";
    int fd = mkstemp(name);
    if (fd >= 0) close(fd);
    ktlFile = name;
    DtEnvKTLWriter().writeFile(tree, ktlFile.c_str());
    ktlSize = fileText(ktlFile).size();
    outFile = ktlFile + ".out";
  }
  ~Fixture() {
    std::remove(ktlFile.c_str());
    std::remove(outFile.c_str());
  }
  DtEnvironment tree;
  std::string xml;
  std::string ktlFile;
  std::string outFile;
  size_t ktlSize = 0;
};

Fixture& fixture() {
  static Fixture f;
  return f;
}

void report(benchmark::State& state, size_t bytes) {
  state.SetItemsProcessed(state.iterations() * kNodes);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}

void BM_LibXml2ReadMemory(benchmark::State& state) {
  const std::string& xml = fixture().xml;
  for (auto _ : state) {
    xmlDocPtr doc = xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, 0);
    benchmark::DoNotOptimize(doc);
    xmlFreeDoc(doc);
  }
  report(state, xml.size());
}
BENCHMARK(BM_LibXml2ReadMemory)->Unit(benchmark::kMillisecond);

void BM_LibXml2DumpMemory(benchmark::State& state) {
  const std::string& xml = fixture().xml;
  xmlDocPtr doc = xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, 0);
  for (auto _ : state) {
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpMemory(doc, &text, &size);
    benchmark::DoNotOptimize(text);
    xmlFree(text);
  }
  xmlFreeDoc(doc);
  report(state, xml.size());
}
BENCHMARK(BM_LibXml2DumpMemory)->Unit(benchmark::kMillisecond);

void BM_EnvXmlReadMemory(benchmark::State& state) {
  const std::string& xml = fixture().xml;
  DtEnvXMLReader reader(false);
  for (auto _ : state) {
    DtEnvironment env;
    benchmark::DoNotOptimize(reader.readMemory(env, xml.data(), static_cast<int>(xml.size())));
  }
  report(state, xml.size());
}
BENCHMARK(BM_EnvXmlReadMemory)->Unit(benchmark::kMillisecond);

void BM_EnvXmlWriteString(benchmark::State& state) {
  DtEnvXMLWriter writer("federation");
  DtString out;
  for (auto _ : state) benchmark::DoNotOptimize(writer.writeString(fixture().tree, out));
  report(state, fixture().xml.size());
}
BENCHMARK(BM_EnvXmlWriteString)->Unit(benchmark::kMillisecond);

void BM_EnvKtlReadFile(benchmark::State& state) {
  DtEnvKTLReader reader;
  for (auto _ : state) {
    bool ok = false;
    DtEnvironment env = reader.readFile(fixture().ktlFile.c_str(), ok);
    if (!ok) state.SkipWithError("the KTL file could not be read");
    benchmark::DoNotOptimize(env.root());
  }
  report(state, fixture().ktlSize);
}
BENCHMARK(BM_EnvKtlReadFile)->Unit(benchmark::kMillisecond);

void BM_EnvKtlWriteFile(benchmark::State& state) {
  DtEnvKTLWriter writer;
  for (auto _ : state)
    benchmark::DoNotOptimize(writer.writeFile(fixture().tree, fixture().outFile.c_str()));
  report(state, fixture().ktlSize);
}
BENCHMARK(BM_EnvKtlWriteFile)->Unit(benchmark::kMillisecond);

}  // namespace
