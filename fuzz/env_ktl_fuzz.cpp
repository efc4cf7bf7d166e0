// Feeds arbitrary bytes, through a file, to the reader of the tree's KTL text form, and writes
// what it read back out in both forms. Halts (DtException) are the reader's normal answer to bad
// text; anything else that goes wrong (a crash, a sanitizer report, a leak) is a finding.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

#include <ktl/envKtlReader.h>
#include <ktl/envKtlWriter.h>
#include <ktl/envXmlWriter.h>
#include <util/dtException.h>
#include <util/notify.h>

namespace {

// One scratch file per process, removed at exit.
const std::string& scratchFile() {
  static const std::string path = [] {
    char name[] = "/tmp/env_ktl_fuzz-XXXXXX";
    int fd = mkstemp(name);
    if (fd >= 0) close(fd);
    std::atexit([] { std::remove(scratchFile().c_str()); });
    return std::string(name);
  }();
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace KORRti;
  const std::string& path = scratchFile();
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return 0;
  if (size) std::fwrite(data, 1, size, file);
  std::fclose(file);

  // Number warnings would flood the output.
  int level = DtNotifyLevel;
  DtNotifyLevel = 0;
  try {
    DtEnvKTLReader reader;
    bool ok = false;
    DtEnvironment tree = reader.readFile(path.c_str(), ok);
    DtString xml;
    DtEnvXMLWriter("root").writeString(tree, xml);
    DtEnvKTLWriter().writeFile(tree, path.c_str());
  } catch (const DtException&) {
  }
  DtNotifyLevel = level;
  return 0;
}
