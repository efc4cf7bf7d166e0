#ifndef TOOLS_FOMDUMP_FEDCHECK_H
#define TOOLS_FOMDUMP_FEDCHECK_H

// fomdump's check of an HLA 1.3 FED file against the strict form the library's reader reads,
// and the rewrite of the variants other RTIs accept into that form.
//
// The file is read as the reader reads it (the library's Lisp reader over the file's bytes, the
// first form only), with a listener that gives each list the line and the bytes where it stands.
// The walk then goes over the form as the reader's would, but where the reader stops at the
// first fault and often says nothing, this one notes every deviation with its line and goes on:
// keywords compare without case, and entries the form has no place for are passed over.
#include <cstddef>
#include <string>
#include <vector>

#include "fomdump/model.h"

namespace fomdump {

// One way a FED file departs from the strict form.
struct FedDeviation {
  enum class Kind {
    kMendable,    // the reader refuses it; --fix mends it without a guess
    kUnmendable,  // the reader refuses it, and mending it would take a guess
    kWarned,      // the reader reads it with a warning; --fix keeps it as written
  };
  long line;  // where the list that holds it opens (a word outside any list: its own line)
  std::string message;
  Kind kind;
};

// A change of the text: bytes [begin, end) become replacement.
struct FedEdit {
  size_t begin;
  size_t end;
  std::string replacement;
};

struct FedCheck {
  bool opened = false;                   // the file could be opened and read
  std::string text;                      // its bytes
  std::vector<FedDeviation> deviations;  // in the order of the text
  std::vector<FedEdit> edits;            // what mends the mendable deviations
  // What the file declares, as the reader would deliver it from the mended text: spaces and
  // their dimensions, classes by full name with their attributes, interactions and parameters.
  ModelRecorder declared;

  // The first deviation --fix cannot mend, or null.
  const FedDeviation* firstUnmendable() const;
  // Whether any deviation makes the reader refuse the file.
  bool refused() const;
};

// Checks the FED file. A file that cannot be opened leaves opened false and nothing else.
void checkFed(const std::string& file, FedCheck& check);

// The text with every edit made; or false, with the deviation that stops it in stop: the first
// that cannot be mended, or (should the mended text not read to the declared model) a
// deviation of its own at line 1.
bool mendFed(const FedCheck& check, std::string& mended, FedDeviation& stop);

}  // namespace fomdump

#endif
