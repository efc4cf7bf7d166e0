#include "fomdump/tracedReader.h"

#include <map>
#include <string>

#include <libxml/tree.h>

#include <ktl/fedReader1516.h>
#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <ktl/fedReaderFactory.h>

namespace fomdump {

using namespace KORRti;

namespace {

bool isElement(const xmlNode* node, const char* name) {
  return node && node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, BAD_CAST name);
}

// A value the two dialects write differently: as an attribute (IEEE 1516-2000) or as a child
// element (1516-2010 and 2025).
std::string valueOf(xmlNode* node, const char* name) {
  std::string value;
  if (!node) return value;
  if (xmlChar* property = xmlGetNoNsProp(node, BAD_CAST name)) {
    value = reinterpret_cast<const char*>(property);
    xmlFree(property);
    return value;
  }
  for (xmlNode* child = node->children; child; child = child->next) {
    if (!isElement(child, name)) continue;
    if (xmlChar* content = xmlNodeGetContent(child)) {
      value = reinterpret_cast<const char*>(content);
      xmlFree(content);
    }
    break;
  }
  return value;
}

long lineOf(const xmlNode* node) {
  return node ? xmlGetLineNo(node) : 0;
}

// Sets the recorder's line for the reading of one declaration, and gives the enclosing one's
// back after it: a class's attributes and subclasses are read inside its reading.
class LineScope {
 public:
  LineScope(ModelRecorder& recorder, const xmlNode* node)
      : recorder_(recorder), saved_(recorder.line) {
    if (long line = lineOf(node)) recorder.line = line;
  }
  ~LineScope() { recorder_.line = saved_; }
  LineScope(const LineScope&) = delete;
  LineScope& operator=(const LineScope&) = delete;

 private:
  ModelRecorder& recorder_;
  long saved_;
};

// The line of each element of a section by its name (or label, for notes and synchronization
// points).
std::map<std::string, long> linesByName(xmlNode* section) {
  std::map<std::string, long> lines;
  for (xmlNode* child = section ? section->children : nullptr; child; child = child->next) {
    if (child->type != XML_ELEMENT_NODE) continue;
    std::string name = valueOf(child, "name");
    if (name.empty()) name = valueOf(child, "label");
    if (!name.empty()) lines.emplace(name, lineOf(child));
  }
  return lines;
}

// Lets the records of one section take the lines of the elements that declare them, while it
// lives; a record whose element it cannot tell takes the section's line.
class SectionScope {
 public:
  SectionScope(ModelRecorder& recorder, xmlNode* section)
      : recorder_(recorder), lines_(linesByName(section)), line_(recorder, section) {
    recorder.sectionLines = &lines_;
  }
  ~SectionScope() { recorder_.sectionLines = nullptr; }
  SectionScope(const SectionScope&) = delete;
  SectionScope& operator=(const SectionScope&) = delete;

 private:
  ModelRecorder& recorder_;
  std::map<std::string, long> lines_;
  LineScope line_;
};

// The overrides every XML reader takes. Each calls the library's own step, and writes down
// what it needs only once that step has read the declaration without a fault.
template <typename Reader>
class Traced : public Reader {
 public:
  explicit Traced(ModelRecorder& recorder) : recorder_(recorder) {}

  int parseObjectTree(xmlNode* node, const DtString& parent) override {
    LineScope scope(recorder_, node);
    return Reader::parseObjectTree(node, parent);
  }
  int parseInteractionTree(xmlNode* node, const DtString& parent) override {
    LineScope scope(recorder_, node);
    return Reader::parseInteractionTree(node, parent);
  }
  int parseAttribute(xmlNode* node, const DtString& className) override {
    LineScope scope(recorder_, node);
    int status = Reader::parseAttribute(node, className);
    if (status != DtFedFailed) noteType(node, className, true);
    return status;
  }
  int parseParameter(xmlNode* node, const DtString& className) override {
    LineScope scope(recorder_, node);
    int status = Reader::parseParameter(node, className);
    if (status != DtFedFailed) noteType(node, className, false);
    return status;
  }
  int parseDimension(xmlNode* node) override {
    LineScope scope(recorder_, node);
    return Reader::parseDimension(node);
  }
  int parseSwitches(xmlNode* node) override {
    LineScope scope(recorder_, node);
    return Reader::parseSwitches(node);
  }
  int parseTransportationsList(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseTransportationsList(node);
  }
  int parseNotesTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseNotesTree(node);
  }
  int parseTagsTree(xmlNode* node) override {
    LineScope scope(recorder_, node);
    return Reader::parseTagsTree(node);
  }
  int parseTimeTree(xmlNode* node) override {
    LineScope scope(recorder_, node);
    return Reader::parseTimeTree(node);
  }
  int parseSynchronizationsTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseSynchronizationsTree(node);
  }
  int parseBasicDataTypesTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseBasicDataTypesTree(node);
  }
  int parseSimpleDataTypesTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseSimpleDataTypesTree(node);
  }
  int parseArrayDataTypesTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseArrayDataTypesTree(node);
  }
  int parseEnumeratedDataTypesTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseEnumeratedDataTypesTree(node);
  }
  int parseFixedRecordDataTypesTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseFixedRecordDataTypesTree(node);
  }
  int parseVariantRecordDataTypesTree(xmlNode* node) override {
    SectionScope scope(recorder_, node);
    return Reader::parseVariantRecordDataTypesTree(node);
  }

 protected:
  ModelRecorder& recorder_;

 private:
  void noteType(xmlNode* node, const DtString& className, bool attribute) {
    std::string type = valueOf(node, "dataType");
    if (type.empty()) return;
    recorder_.memberTypes.push_back(
        {className.c_str(), valueOf(node, "name"), attribute, type, lineOf(node)});
  }
};

template <typename Reader>
class TracedEvolved : public Traced<Reader> {
 public:
  using Traced<Reader>::Traced;
  int parseUpdateRates(xmlNode* node) override {
    SectionScope scope(this->recorder_, node);
    return Reader::parseUpdateRates(node);
  }
  int processModelIdentification(xmlNode* node) override {
    for (xmlNode* child = node ? node->children : nullptr; child; child = child->next) {
      if (!isElement(child, "reference")) continue;
      std::string name = valueOf(child, "identification");
      if (!name.empty()) this->recorder_.dependencyLines.emplace(name, lineOf(child));
    }
    return Reader::processModelIdentification(node);
  }
};

class Traced2025 : public TracedEvolved<DtFedReader1516_4> {
 public:
  using TracedEvolved<DtFedReader1516_4>::TracedEvolved;
  // The library reads the section no further than to accept it: its names are read here.
  int parseReferenceDataTypesTree(xmlNode* first) override {
    for (xmlNode* child = first; child; child = child->next) {
      if (child->type != XML_ELEMENT_NODE) continue;
      std::string name = valueOf(child, "name");
      if (!name.empty()) recorder_.referenceDataTypes.push_back({name, lineOf(child)});
    }
    return DtFedReader1516_4::parseReferenceDataTypesTree(first);
  }
};

}  // namespace

std::unique_ptr<DtFedReader> makeTracedReader(DtFomType type, ModelRecorder& recorder) {
  std::unique_ptr<DtFedReader> reader(DtFedReaderFactory().makeFedReader(type));
  // The factory decides which reader a format takes; its class decides the extension. The most
  // derived class is tested first.
  if (dynamic_cast<DtFedReader1516_4*>(reader.get())) {
    reader.reset(new Traced2025(recorder));
  } else if (dynamic_cast<DtFedReader1516e*>(reader.get())) {
    reader.reset(new TracedEvolved<DtFedReader1516e>(recorder));
  } else if (dynamic_cast<DtFedReader1516*>(reader.get())) {
    reader.reset(new Traced<DtFedReader1516>(recorder));
  }
  return reader;
}

}  // namespace fomdump
