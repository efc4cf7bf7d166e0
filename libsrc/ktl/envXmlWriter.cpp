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
#include <string>

namespace KORRti {

namespace {

const xmlChar* xml(const DtString& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

void report(const char* line) {
  std::fputs(line, stderr);
  std::fflush(stderr);
}

// The lines this writer reports start with the names below. They name functions that are not
// in this code; hosts match the lines as they stand, so they are kept, not corrected.
const char kFileLines[] = "testXmlwriterDoc: ";
const char kStringLines[] = "DtEnvXMLWriter::writeString: ";

void report(const char* prefix, const char* what) {
  std::string line(prefix);
  line += what;
  report(line.c_str());
}

}  // namespace

DtEnvWriter::~DtEnvWriter() = default;

DtEnvXMLWriter::DtEnvXMLWriter(const DtString& documentName) : rootName(documentName) {}

DtEnvXMLWriter::DtEnvXMLWriter(const DtString& documentName, const DtString& dtdName)
    : rootName(documentName), dtdFile(dtdName), writeDtd(true) {}

DtEnvXMLWriter::~DtEnvXMLWriter() {
  if (buffer) xmlBufferFree(buffer);
}

void DtEnvXMLWriter::setIndentation(const DtString& text) {
  indent = !text.isEmpty();
  indentString = text;
}

bool DtEnvXMLWriter::writeFile(DtEnvironment& tree, const DtString& file) {
  DtQuietXmlErrors quiet;
  detail::TreeHold hold(env, root);
  env = &tree;
  root = tree.root();

  // The document outlives its writer: the holders go in the opposite order.
  detail::XmlPtr<xmlDoc> doc;
  xmlDocPtr made = nullptr;
  detail::XmlPtr<xmlTextWriter> writer(xmlNewTextWriterDoc(&made, 0));
  doc.reset(made);
  if (!writer) {
    report(kFileLines, "Error creating the xml writer\n");
    return false;
  }
  xmlTextWriterSetIndent(writer.get(), indent ? 1 : 0);
  xmlTextWriterSetIndentString(writer.get(), xml(indentString));
  if (!writeDocument(writer.get(), tree, kFileLines)) return false;
  // The writer must be done with the document before it is saved.
  writer.reset();

  bool saved = xmlSaveFormatFileEnc(file.c_str(), doc.get(), "utf-8", 1) >= 0;
  if (!saved) report(kFileLines, "Error at xmlSaveFormatFileEnc\n");
  return saved;
}

bool DtEnvXMLWriter::writeString(DtEnvironment& tree, DtString& out) {
  DtQuietXmlErrors quiet;
  detail::TreeHold hold(env, root);
  env = &tree;
  root = tree.root();

  if (!buffer) buffer = xmlBufferCreateSize(4000);
  if (!buffer) {
    report(kStringLines, "Error creating the xml buffer\n");
    return false;
  }
  xmlBufferEmpty(buffer);

  detail::XmlPtr<xmlTextWriter> writer(xmlNewTextWriterMemory(buffer, 0));
  if (!writer) {
    report(kStringLines, "Error creating the xml writer\n");
    return false;
  }
  if (!writeDocument(writer.get(), tree, kStringLines)) return false;
  // Freeing the writer flushes it into the buffer.
  writer.reset();

  const xmlChar* content = xmlBufferContent(buffer);
  out = content ? reinterpret_cast<const char*>(content) : "";
  return true;
}

bool DtEnvXMLWriter::writeDocument(xmlTextWriterPtr writer, DtEnvironment& tree,
                                   const char* lines) {
  if (xmlTextWriterStartDocument(writer, nullptr, "utf-8", nullptr) < 0) {
    report(lines, "Error at xmlTextWriterStartDocument\n");
    return false;
  }
  if (writeDtd &&
      xmlTextWriterWriteDTD(writer, xml(rootName), nullptr, xml(dtdFile), nullptr) < 0) {
    report(kStringLines, "Error at xmlTextWriterWriteDTD\n");
  }
  writeRoot(writer, tree.root());
  if (xmlTextWriterEndDocument(writer) < 0) {
    report(lines, "Error at xmlTextWriterEndDocument\n");
    return false;
  }
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
