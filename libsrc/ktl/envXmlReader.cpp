#include <ktl/envXmlReader.h>

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/valid.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlmemory.h>
#include <libxml/xmlreader.h>
#include <libxml/xmlschemas.h>
#include <libxml/xmlwriter.h>

#include <ktl/envObject.h>
#include <util/dtException.h>

#include <string>

namespace KORRti {

namespace {

// NOENT, DTDATTR and DTDVALID: substitute entities, default attributes from the DTD, validate.
const int validatingOptions = XML_PARSE_NOENT | XML_PARSE_DTDATTR | XML_PARSE_DTDVALID;

const char* textOf(const xmlChar* text) {
  return reinterpret_cast<const char*>(text);
}

// The message of libxml2's last error, or the empty text when there is none.
std::string lastErrorMessage() {
  xmlErrorPtr error = xmlGetLastError();
  return error && error->message ? error->message : "";
}

[[noreturn]] void throwReadError(const char* function, unsigned int line) {
  std::string message = "DtCorruptedState: Error reading: " + lastErrorMessage();
  throw DtCorruptedState(message.c_str(), function, DtSourceName(__FILE__).c_str(), line, nullptr);
}

void ignoreStructured(void*, xmlErrorPtr) {}
void ignoreGeneric(void*, const char*, ...) {}

}  // namespace

DtQuietXmlErrors::DtQuietXmlErrors() : structured_(xmlStructuredError == nullptr) {
  if (structured_) xmlSetStructuredErrorFunc(xmlStructuredErrorContext, &ignoreStructured);
  // A few reports (a failed conversion from the declared encoding) bypass the structured
  // handler and go straight to the generic one. Setting null installs libxml2's default,
  // which tells whether the handler in place was the default.
  xmlGenericErrorFunc saved = xmlGenericError;
  void* context = xmlGenericErrorContext;
  xmlSetGenericErrorFunc(context, nullptr);
  generic_ = xmlGenericError == saved;
  xmlSetGenericErrorFunc(context, generic_ ? &ignoreGeneric : saved);
}

DtQuietXmlErrors::~DtQuietXmlErrors() {
  if (generic_) xmlSetGenericErrorFunc(xmlGenericErrorContext, nullptr);
  if (structured_) xmlSetStructuredErrorFunc(xmlStructuredErrorContext, nullptr);
}

namespace detail {

void XmlFree::operator()(xmlTextReader* reader) const {
  if (reader) xmlFreeTextReader(reader);
}
void XmlFree::operator()(xmlTextWriter* writer) const {
  if (writer) xmlFreeTextWriter(writer);
}
void XmlFree::operator()(xmlBuffer* buffer) const {
  if (buffer) xmlBufferFree(buffer);
}
void XmlFree::operator()(xmlDoc* doc) const {
  if (doc) xmlFreeDoc(doc);
}
void XmlFree::operator()(xmlDtd* dtd) const {
  if (dtd) xmlFreeDtd(dtd);
}
void XmlFree::operator()(xmlValidCtxt* context) const {
  if (context) xmlFree(context);
}
void XmlFree::operator()(xmlSchema* schema) const {
  if (schema) xmlSchemaFree(schema);
}
void XmlFree::operator()(xmlSchemaParserCtxt* context) const {
  if (context) xmlSchemaFreeParserCtxt(context);
}
void XmlFree::operator()(xmlSchemaValidCtxt* context) const {
  if (context) xmlSchemaFreeValidCtxt(context);
}
void XmlFree::operator()(char* text) const {
  if (text) xmlFree(text);
}

}  // namespace detail

DtEnvReader::~DtEnvReader() = default;

DtEnvXMLReader::DtEnvXMLReader(bool validating) : validate(validating) {}

DtEnvXMLReader::~DtEnvXMLReader() = default;

int DtEnvXMLReader::options() const {
  return validate ? validatingOptions : 0;
}

DtEnvironment DtEnvXMLReader::readFile(const DtString& file, bool& ok) {
  DtQuietXmlErrors quiet;
  // The tree under construction belongs to this call until it is handed out.
  std::unique_ptr<DtEnvironment> built(new DtEnvironment());
  detail::TreeHold hold(env, current);
  env = built.get();
  current.reset();
  ok = false;

  xmlResetLastError();
  detail::XmlPtr<xmlTextReader> reader(xmlReaderForFile(file.c_str(), nullptr, options()));
  if (!reader) {
    std::string message = std::string("DtInvalidInput: Unable to open:") + file.c_str();
    throw DtInvalidInput(message.c_str(), __PRETTY_FUNCTION__, DtSourceName(__FILE__).c_str(),
                         __LINE__, nullptr);
  }
  ok = readDoc(reader.get());
  reader.reset();

  DtEnvValueSP top = built->root();
  built.reset();
  return DtEnvironment(top);
}

void DtEnvXMLReader::useDtdValidation(bool validating) {
  validate = validating;
}

bool DtEnvXMLReader::readMemory(DtEnvironment& tree, const char* bytes, int size) {
  DtQuietXmlErrors quiet;
  detail::TreeHold hold(env, current);
  env = &tree;
  current.reset();

  xmlResetLastError();
  detail::XmlPtr<xmlTextReader> reader(
      xmlReaderForMemory(bytes, size, nullptr, nullptr, options()));
  if (!reader) {
    throw DtCorruptedState("DtCorruptedState: Unable to read memory.", __PRETTY_FUNCTION__,
                           DtSourceName(__FILE__).c_str(), __LINE__, nullptr);
  }
  return readDoc(reader.get());
}

bool DtEnvXMLReader::readDoc(xmlTextReaderPtr reader) {
  int r = xmlTextReaderRead(reader);
  if (r == -1) throwReadError(__PRETTY_FUNCTION__, __LINE__);
  while (r == 1) {
    processNode(reader);
    r = xmlTextReaderRead(reader);
  }
  if (r == -1) throwReadError(__PRETTY_FUNCTION__, __LINE__);

  if (validate && xmlTextReaderIsValid(reader) != 1) {
    xmlErrorPtr error = xmlGetLastError();
    std::string message = "DtCorruptedState: Line " + std::to_string(error ? error->line : 0) +
                          ":" + lastErrorMessage();
    throw DtCorruptedState(message.c_str(), __PRETTY_FUNCTION__, DtSourceName(__FILE__).c_str(),
                           __LINE__, nullptr);
  }
  return true;
}

void DtEnvXMLReader::popRoot() {
  DtEnvValueSP node = current.lock();
  current = node ? node->parent() : DtEnvValueSP();
}

void DtEnvXMLReader::processNode(xmlTextReaderPtr reader) {
  switch (xmlTextReaderNodeType(reader)) {
    case XML_READER_TYPE_ELEMENT: {
      bool empty = xmlTextReaderIsEmptyElement(reader) == 1;
      processElement(reader);
      if (empty) popRoot();
      break;
    }
    case XML_READER_TYPE_TEXT: {
      // Outside every element there is no node to take the text.
      if (DtEnvValueSP node = current.lock()) {
        const char* value = textOf(xmlTextReaderConstValue(reader));
        node->setValue(value ? DtString(value) : DtString::nullString());
      }
      break;
    }
    case XML_READER_TYPE_COMMENT: {
      const char* value = textOf(xmlTextReaderConstValue(reader));
      // Before or after the document element there is no list to hold it, and none is made.
      if (value && env) env->addComment(value, current.lock());
      break;
    }
    case XML_READER_TYPE_END_ELEMENT:
      popRoot();
      break;
    default:
      break;
  }
}

void DtEnvXMLReader::processElement(xmlTextReaderPtr reader) {
  if (!env) return;
  const char* constName = textOf(xmlTextReaderConstName(reader));
  DtString name(constName ? constName : "--");

  DtEnvValueSP node = current.lock();
  if (!node) {
    // The document element names the root object.
    node = env->root();
    if (DtEnvObject* object = DtEnvObject::castToObject(node)) {
      object->setType(name);
      object->setName(name);
    } else if (DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node)) {
      named->setName(name);
    }
  } else {
    // Empty when the node being filled can hold no children; the element's content then goes
    // nowhere.
    node = env->addObject(name, name, node);
  }
  current = node;

  int count = xmlTextReaderAttributeCount(reader);
  for (int i = 0; i < count; ++i) {
    if (xmlTextReaderMoveToAttributeNo(reader, i) == -1) break;
    const char* attributeName = textOf(xmlTextReaderConstName(reader));
    const char* attributeValue = textOf(xmlTextReaderConstValue(reader));
    DtString value(attributeValue ? attributeValue : "");
    if (attributeName && DtString(attributeName) == "name") {
      if (DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node)) named->setName(value);
    } else {
      DtEnvValueSP attribute =
          env->addNamedList(attributeName ? attributeName : "--", current.lock());
      if (attribute) attribute->setValue(value);
    }
  }
  xmlTextReaderMoveToElement(reader);
}

}  // namespace KORRti
