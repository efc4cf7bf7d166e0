#include <ktl/envXmlWriter.h>

#include <libxml/globals.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlsave.h>
#include <libxml/xmlwriter.h>

#include <ktl/envList.h>
#include <ktl/envNamedList.h>
#include <ktl/envObject.h>
#include <ktl/envXmlReader.h>

#include <cstdio>

namespace KORRti {

namespace {

// Clears the writer's hold on the tree when a write ends.
class WriteScope {
 public:
  WriteScope(DtEnvironment*& env, std::weak_ptr<DtEnvValue>& root) : env_(env), root_(root) {}
  ~WriteScope() {
    env_ = nullptr;
    root_.reset();
  }
  WriteScope(const WriteScope&) = delete;
  WriteScope& operator=(const WriteScope&) = delete;

 private:
  DtEnvironment*& env_;
  std::weak_ptr<DtEnvValue>& root_;
};

const xmlChar* xml(const DtString& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

void report(const char* line) {
  std::fputs(line, stderr);
  std::fflush(stderr);
}

}  // namespace

DtEnvWriter::~DtEnvWriter() = default;

DtEnvXMLWriter::DtEnvXMLWriter(const DtString& rootName) : rootName(rootName) {}

DtEnvXMLWriter::DtEnvXMLWriter(const DtString& rootName, const DtString& dtdFile)
    : rootName(rootName), dtdFile(dtdFile), writeDtd(true) {}

DtEnvXMLWriter::~DtEnvXMLWriter() {
  if (buffer) xmlBufferFree(buffer);
}

void DtEnvXMLWriter::setIndentation(const DtString& text) {
  indent = !text.isEmpty();
  indentString = text;
}

bool DtEnvXMLWriter::writeFile(DtEnvironment& env, const DtString& file) {
  DtQuietXmlErrors quiet;
  WriteScope scope(this->env, root);
  this->env = &env;
  root = env.root();

  xmlDocPtr doc = nullptr;
  xmlTextWriterPtr writer = xmlNewTextWriterDoc(&doc, 0);
  if (!writer) {
    report("testXmlwriterDoc: Error creating the xml writer\n");
    if (doc) xmlFreeDoc(doc);
    return false;
  }
  xmlTextWriterSetIndent(writer, indent ? 1 : 0);
  xmlTextWriterSetIndentString(writer, xml(indentString));

  if (xmlTextWriterStartDocument(writer, nullptr, "utf-8", nullptr) < 0) {
    report("testXmlwriterDoc: Error at xmlTextWriterStartDocument\n");
    xmlFreeTextWriter(writer);
    xmlFreeDoc(doc);
    return false;
  }
  if (writeDtd &&
      xmlTextWriterWriteDTD(writer, xml(rootName), nullptr, xml(dtdFile), nullptr) < 0) {
    report("DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n");
  }
  writeRoot(writer, env.root());

  if (xmlTextWriterEndDocument(writer) < 0) {
    report("testXmlwriterDoc: Error at xmlTextWriterEndDocument\n");
    xmlFreeTextWriter(writer);
    xmlFreeDoc(doc);
    return false;
  }
  xmlFreeTextWriter(writer);

  bool saved = xmlSaveFormatFileEnc(file.c_str(), doc, "utf-8", 1) >= 0;
  if (!saved) report("testXmlwriterDoc: Error at xmlSaveFormatFileEnc\n");
  xmlFreeDoc(doc);
  return saved;
}

bool DtEnvXMLWriter::writeString(DtEnvironment& env, DtString& out) {
  DtQuietXmlErrors quiet;
  WriteScope scope(this->env, root);
  this->env = &env;
  root = env.root();

  if (!buffer) buffer = xmlBufferCreateSize(4000);
  if (!buffer) {
    report("DtEnvXMLWriter::writeString: Error creating the xml buffer\n");
    return false;
  }
  xmlBufferEmpty(buffer);

  xmlTextWriterPtr writer = xmlNewTextWriterMemory(buffer, 0);
  if (!writer) {
    report("DtEnvXMLWriter::writeString: Error creating the xml writer\n");
    return false;
  }
  if (xmlTextWriterStartDocument(writer, nullptr, "utf-8", nullptr) < 0) {
    report("DtEnvXMLWriter::writeString: Error at xmlTextWriterStartDocument\n");
    xmlFreeTextWriter(writer);
    return false;
  }
  if (writeDtd &&
      xmlTextWriterWriteDTD(writer, xml(rootName), nullptr, xml(dtdFile), nullptr) < 0) {
    report("DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n");
  }
  writeRoot(writer, env.root());

  if (xmlTextWriterEndDocument(writer) < 0) {
    report("DtEnvXMLWriter::writeString: Error at xmlTextWriterEndDocument\n");
    xmlFreeTextWriter(writer);
    return false;
  }
  xmlFreeTextWriter(writer);

  const xmlChar* content = xmlBufferContent(buffer);
  out = content ? reinterpret_cast<const char*>(content) : "";
  return true;
}

void DtEnvXMLWriter::writeRoot(xmlTextWriterPtr writer, DtEnvValueSP node) {
  DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node);
  if (!named) return;
  if (xmlTextWriterStartElement(writer, xml(named->name())) < 0) {
    report("testXmlwriterDoc: Error at xmlTextWriterStartElement\n");
    return;
  }
  writeChildren(writer, node);
  if (xmlTextWriterEndElement(writer) < 0) {
    report("testXmlwriterDoc: Error at xmlTextWriterEndElement\n");
  }
}

void DtEnvXMLWriter::writeValue(xmlTextWriterPtr writer, DtEnvValueSP node) {
  if (!node) return;
  if (DtEnvObject* object = DtEnvObject::castToObject(node)) {
    DtString type = object->type();
    DtString name = object->name();
    if (xmlTextWriterStartElement(writer, xml(type)) < 0) {
      report("testXmlwriterDoc: Error at xmlTextWriterStartElement\n");
      return;
    }
    if (type != name) xmlTextWriterWriteAttribute(writer, BAD_CAST "name", xml(name));
    writeChildren(writer, node);
    DtString text = object->unmodifiedValue();
    if (!text.isEmpty()) xmlTextWriterWriteString(writer, xml(text));
    if (xmlTextWriterEndElement(writer) < 0) {
      report("testXmlwriterDoc: Error at xmlTextWriterEndElement\n");
    }
  } else if (DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node)) {
    // Refused once an element's content has begun; the attribute is then left out.
    xmlTextWriterWriteAttribute(writer, xml(named->name()), xml(named->unmodifiedValue()));
  } else if (DtEnvList::isList(node)) {
    writeChildren(writer, node);
  } else if (xmlTextWriterWriteComment(writer, xml(node->value())) < 0) {
    report("testXmlwriterDoc: Error at xmlTextWriterWriteComment\n");
  }
}

void DtEnvXMLWriter::writeChildren(xmlTextWriterPtr writer, DtEnvValueSP list) {
  DtEnvList* children = DtEnvList::castToList(list);
  if (!children) return;
  for (DtEnvValueSP child = children->first(); child; child = children->next(child)) {
    writeValue(writer, child);
  }
}

}  // namespace KORRti
