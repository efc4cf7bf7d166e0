#ifndef TESTS_SUPPORT_FED_RECORDER_H
#define TESTS_SUPPORT_FED_RECORDER_H

// A FED target for the reader suites: it writes down every call it gets, one line per call in
// the form "addObjectClass(ObjectRoot.Ship, ObjectRoot)", with "null" for a null text, and it
// refuses the classes it is told to refuse.
#include <set>
#include <string>
#include <vector>

#include <cstdio>
#include <functional>

#include <ktl/fedReader.h>
#include <util/notify.h>

#include "support/capture.h"

namespace ktltest {

class FedRecorder : public KORRti::DtFedTarget {
 public:
  std::vector<std::string> calls;
  std::set<std::string> refusedObjects;       // addObjectClass answers false for these
  std::set<std::string> refusedInteractions;  // addInteractionClass answers false for these
  bool refuseAll = false;
  // When set, fomType() answers this instead of what setFomType stored.
  int fomTypeAnswer = -1;

  static std::string text(const char* value) { return value ? value : "null"; }

  void setFomType(KORRti::DtFomType type) override {
    calls.push_back("setFomType(" + std::to_string(type) + ")");
    DtFedTarget::setFomType(type);
  }
  KORRti::DtFomType fomType() override {
    if (fomTypeAnswer >= 0) return static_cast<KORRti::DtFomType>(fomTypeAnswer);
    return DtFedTarget::fomType();
  }
  bool addSpace(const char* name) override {
    calls.push_back("addSpace(" + text(name) + ")");
    return true;
  }
  bool addSpaceDimension(const char* space, const char* dimension) override {
    calls.push_back("addSpaceDimension(" + text(space) + ", " + text(dimension) + ")");
    return true;
  }
  bool addObjectClass(const char* name, const char* parent) override {
    calls.push_back("addObjectClass(" + text(name) + ", " + text(parent) + ")");
    return !refuseAll && refusedObjects.count(text(name)) == 0;
  }
  bool addSpaceAttribute(const char* className, const char* name, KORRti::DtTransportType transport,
                         KORRti::DtOrderType order, const char* space) override {
    calls.push_back("addSpaceAttribute(" + text(className) + ", " + text(name) + ", " +
                    std::to_string(transport) + ", " + std::to_string(order) + ", " + text(space) +
                    ")");
    return true;
  }
  bool addInteractionClass(const char* name, const char* parent, KORRti::DtTransportType transport,
                           KORRti::DtOrderType order, const char* space) override {
    calls.push_back("addInteractionClass(" + text(name) + ", " + text(parent) + ", " +
                    std::to_string(transport) + ", " + std::to_string(order) + ", " + text(space) +
                    ")");
    return !refuseAll && refusedInteractions.count(text(name)) == 0;
  }
  bool addParameter(const char* className, const char* name) override {
    calls.push_back("addParameter(" + text(className) + ", " + text(name) + ")");
    return true;
  }

  // The calls that begin with this operation name.
  std::vector<std::string> callsOf(const std::string& operation) const {
    std::vector<std::string> found;
    for (const std::string& call : calls) {
      if (call.compare(0, operation.size() + 1, operation + "(") == 0) found.push_back(call);
    }
    return found;
  }
};

// What one read gave: its result, lastError() after it and the output it wrote.
struct FedReadOutcome {
  int result = -1;
  std::string error;
  std::string out;
  std::string err;
};

// Runs read (which answers the reader's result) at this notify level with the output captured.
inline FedReadOutcome captureFedRead(KORRti::DtFedReader& reader, int level,
                                     const std::function<int()>& read) {
  FedReadOutcome outcome;
  int saved = KORRti::DtNotifyLevel;
  KORRti::DtNotifyLevel = level;
  Captured captured = captureOutput([&] { outcome.result = read(); });
  KORRti::DtNotifyLevel = saved;
  outcome.error = reader.lastError().c_str();
  outcome.out = captured.out;
  outcome.err = captured.err;
  return outcome;
}

// Reads text as a .fed file through readFed.
inline FedReadOutcome readFedText(KORRti::DtFedReader& reader, const std::string& text,
                                  KORRti::DtFedTarget* target, int level = 1) {
  std::string path = writeTempFile(text, ".fed");
  return captureFedRead(reader, level,
                        [&] { return reader.readFed(path.c_str(), target, 0, false, false); });
}

// Reads text through readFedFilePtr with an open file, so a null target is possible.
inline FedReadOutcome readFedTextFromFile(KORRti::DtFedReader& reader, const std::string& text,
                                          KORRti::DtFedTarget* target, int level = 1) {
  std::string path = writeTempFile(text, ".fed");
  FILE* file = std::fopen(path.c_str(), "rt");
  if (!file) return FedReadOutcome();
  FedReadOutcome outcome = captureFedRead(reader, level, [&] {
    return reader.readFedFilePtr(file, target, KORRti::DtFilename(path.c_str()), 0, false, false);
  });
  std::fclose(file);
  return outcome;
}

}  // namespace ktltest

#endif
