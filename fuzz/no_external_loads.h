#ifndef FUZZ_NO_EXTERNAL_LOADS_H
#define FUZZ_NO_EXTERNAL_LOADS_H

// Start-up of the fuzz targets that feed bytes to the tree's XML reader: libxml2 initialized
// once, and every external entity or DTD load refused, so that no input reaches outside the
// process.
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace ktlfuzz {

inline xmlParserInputPtr refuseExternal(const char*, const char*, xmlParserCtxtPtr) {
  return nullptr;
}

inline void refuseExternalLoads() {
  xmlInitParser();
  xmlSetExternalEntityLoader(&refuseExternal);
}

}  // namespace ktlfuzz

#endif
