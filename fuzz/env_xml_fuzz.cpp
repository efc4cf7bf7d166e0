// Feeds arbitrary bytes to DtEnvXMLReader::readMemory. The first byte picks the mode: an odd
// one turns DTD validation (with entity substitution) on, and the rest of the bytes are the
// document. A tree that was read is written back with writeString and that text read again,
// so the writer sees every shape the reader can make. DtCorruptedState is the reader's normal
// answer to bad bytes; anything else (a crash, a sanitizer report, a leak, another exception)
// is a finding.
//
// External DTDs and entities are refused here: with validation on, a document names the files
// the parser loads, and a fuzzer must not read devices such as /dev/stdin or go to the network.
#include <cstddef>
#include <cstdint>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <ktl/envXmlReader.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <util/dtException.h>
#include "no_external_loads.h"

namespace {}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  ktlfuzz::refuseExternalLoads();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace KORRti;
  if (size == 0 || size > (1u << 20)) return 0;
  bool validate = (data[0] & 1) != 0;
  const char* bytes = reinterpret_cast<const char*>(data + 1);
  int length = static_cast<int>(size - 1);

  DtEnvXMLReader reader(validate);
  DtEnvironment env;
  bool read = false;
  try {
    read = reader.readMemory(env, bytes, length);
  } catch (const DtCorruptedState&) {
  }
  if (!read) return 0;

  DtEnvXMLWriter writer("root");
  DtString text;
  if (!writer.writeString(env, text)) return 0;
  DtEnvXMLReader again(false);
  DtEnvironment copy;
  try {
    again.readMemory(copy, text.c_str(), text.size());
  } catch (const DtCorruptedState&) {
    // Comments holding "--" are written as they are, so the text need not read back.
  }
  return 0;
}
