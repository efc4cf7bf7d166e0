#include <ktl/xmlFedReader.h>

#include <ktl/envXmlReader.h>

#include <cstdio>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlstring.h>

namespace KORRti {

namespace {

const xmlChar* text(const char* value) {
  return reinterpret_cast<const xmlChar*>(value);
}

// Root attributes of which any one marks a 1516-2000 document.
const char* const the1516RootAttributes[] = {
    "DTDversion", "name",    "type",   "version",  "date",     "purpose",  "appDomain",
    "sponsor",    "pocName", "pocOrg", "pocPhone", "pocEmail", "reference"};

}  // namespace

DtFomType DtXmlFedReader::fomType(void* file) {
  char* buffer = nullptr;
  unsigned int size = 0;
  if (!readFileIntoBuffer(static_cast<FILE*>(file), &buffer, &size)) return DtFomTypeUnknown;
  rewind(static_cast<FILE*>(file));
  DtFomType type = DtFomTypeUnknown;
  // A file that isn't XML is an answer here, not an error: libxml2 keeps its reports to itself.
  DtQuietXmlErrors quiet;
  xmlDocPtr doc = xmlReadMemory(buffer, static_cast<int>(size), nullptr, nullptr, 0);
  if (doc) {
    type = fomType(xmlDocGetRootElement(doc));
    xmlFreeDoc(doc);
  }
  delete[] buffer;
  return type;
}

DtFomType DtXmlFedReader::fomType(xmlNode* root) {
  DtFomType type = DtFomTypeUnknown;
  try {
    if (!root) return DtFomTypeUnknown;
    if (root->ns && root->ns->href) {
      if (xmlStrstr(root->ns->href, text("IEEE1516-2010")) ||
          xmlStrstr(root->ns->href, text("IEEE1516-2009"))) {
        return DtFomTypeEvolved;
      }
      if (xmlStrstr(root->ns->href, text("IEEE1516-2025"))) return DtFomType2025;
    } else {
      for (xmlAttr* attr = root->properties; attr; attr = attr->next) {
        for (const char* name : the1516RootAttributes) {
          if (xmlStrEqual(attr->name, text(name))) return DtFomType1516;
        }
      }
    }
    xmlNode* transportations = getNodeByName(root, text("transportations"));
    if (!transportations) return type;
    xmlNode* transportation = getNodeByName(transportations, text("transportation"));
    if (!transportation) return type;
    for (xmlAttr* attr = transportation->properties; attr; attr = attr->next) {
      if (xmlStrEqual(attr->name, text("name")) || xmlStrEqual(attr->name, text("description"))) {
        return DtFomType1516;
      }
    }
  } catch (...) {
  }
  return type;
}

xmlNode* DtXmlFedReader::getNodeByName(xmlNode* node, const xmlChar* name) {
  if (!node) return nullptr;
  for (xmlNode* child = node->children; child; child = child->next) {
    if (xmlStrEqual(child->name, name)) return child;
  }
  return nullptr;
}

}  // namespace KORRti
