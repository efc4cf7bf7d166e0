#ifndef TOOLS_FOMDUMP_PRINT_H
#define TOOLS_FOMDUMP_PRINT_H

// fomdump's two forms of a recorded model on standard output: an indented text and JSON.
#include <string>
#include <vector>

#include <ktl/fedReader.h>

#include "fomdump/model.h"

namespace fomdump {

// JSON texts: a string with its escapes, null for an empty one, a list of strings.
std::string json(const std::string& text);
std::string json(const char* text);
std::string json(const KORRti::DtString& text);
std::string jsonOrNull(const std::string& text);
std::string jsonList(const std::vector<std::string>& names);

void printText(const std::string& fileName, KORRti::DtFomType type, const ModelRecorder& model);
// The JSON object of a model, one key a line, ending in "\n}\n".
std::string modelJson(const std::string& fileName, KORRti::DtFomType type,
                      const ModelRecorder& model);
void printJson(const std::string& fileName, KORRti::DtFomType type, const ModelRecorder& model);

}  // namespace fomdump

#endif
