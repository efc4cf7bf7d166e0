#ifndef TOOLS_FOMDUMP_TRACEDREADER_H
#define TOOLS_FOMDUMP_TRACEDREADER_H

// The XML readers as fomdump runs them: the library's reader for the format, extended to tell
// the program what the target interface does not carry. Before each declaration is read, the
// recorder learns the line where it opens, so that a conflict or an unresolved name can be
// shown at its place; each attribute and parameter's data type, and an IEEE 1516-2025 module's
// reference data types, are written down beside what the reader delivers. The reading itself,
// its results and its messages stay the library's.
#include <memory>

#include <ktl/fedReader.h>

#include "fomdump/model.h"

namespace fomdump {

// The factory's reader for a format; for the three XML formats, that reader extended to trace
// into recorder, which must outlive the read.
std::unique_ptr<KORRti::DtFedReader> makeTracedReader(KORRti::DtFomType type,
                                                      ModelRecorder& recorder);

}  // namespace fomdump

#endif
