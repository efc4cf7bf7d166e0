#include <ktl/xmlFedReader.h>

#include <ktl/envXmlReader.h>
#include <ktl/internal/xmlRecordWalk.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlstring.h>

#include <util/notify.h>

namespace KORRti {

namespace {

using detail::textOf;
using detail::xmlText;

// Root attributes of which any one marks a 1516-2000 document.
const char* const the1516RootAttributes[] = {
    attrDTDversion, attrName,      attrType,      attrVersion, attrDate,
    attrPurpose,    attrAppDomain, attrSponsor,   attrPocName, attrPocOrg,
    attrPocPhone,   attrPocEmail,  attrReferences};

}  // namespace

const DtString DtXmlFedReader::theValueObjectRoot(valueObjectRoot);
const DtString DtXmlFedReader::theValuePrivilegeToDelete(valuePrivilegeToDelete);
const DtString DtXmlFedReader::theValueEnabled(valueEnabled);

DtXmlFedReader::DtXmlFedReader() : target(nullptr) {
  xmlCheckVersion(20907);
  xmlKeepBlanksDefault(0);
  expectedType = DtFomTypeUnknown;
}

DtXmlFedReader::~DtXmlFedReader() = default;

int DtXmlFedReader::parseTransportationTree(xmlNode* node) {
  int status = DtFedOk;
  if (!node) return status;
  logNodeProperties(node);
  for (xmlNode* child = node->children; child && status == DtFedOk; child = child->next) {
    if (isCommentOrBlank(child)) continue;
    DtVerbose("Transportation Tree Tag: %s\n", textOf(child->name));
    if (xmlStrEqual(child->name, xmlText(tagTransport))) {
      logNodeProperties(child);
    } else {
      lastErrorText =
          "Unexpected tag in transportations tree for FDD file.\n\tTransportation Tag = ";
      appendNodeContent(child, lastErrorText);
      if (strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
    }
  }
  return status;
}

void DtXmlFedReader::logNodeProperties(xmlNode* node) const {
  if (!DtVerbose.enabled()) return;
  DtString properties;
  appendNodeProperties(node, properties);
  DtVerbose("%s \n\n", properties.c_str());
}

void DtXmlFedReader::appendNodeProperties(xmlNode* node, DtString& out) const {
  if (!node) return;
  for (xmlAttr* attr = node->properties; attr; attr = attr->next) {
    out += attr->name ? textOf(attr->name) : "";
    if (attr->children) {
      out += "= ";
      out += attr->children->content ? textOf(attr->children->content) : "";
    }
    out += "\n";
  }
}

void DtXmlFedReader::appendNodeContent(xmlNode* node, DtString& out) const {
  out += (node && node->name) ? textOf(node->name) : "*";
  out += " ";
  out += (node && node->content) ? textOf(node->content) : "*";
}

bool DtXmlFedReader::isCommentOrBlank(xmlNode* node) const {
  return (node && node->type == XML_COMMENT_NODE) || isBlankText(node);
}

bool DtXmlFedReader::isBlankText(xmlNode* node) const {
  if (!node || node->type != XML_TEXT_NODE) return false;
  if (!node->content) return true;
  for (const xmlChar* at = node->content; *at; ++at) {
    if (*at != ' ' && *at != '\t' && *at != '\n') return false;
  }
  return true;
}

const char* DtXmlFedReader::propertyByName(xmlNode* node, const xmlChar* name) {
  if (!node) return nullptr;
  for (xmlAttr* attr = node->properties; attr; attr = attr->next) {
    if (xmlStrEqual(attr->name, name)) {
      // An attribute with an empty value has no text child: it exists all the same.
      if (!attr->children || !attr->children->content) return "";
      return textOf(attr->children->content);
    }
  }
  return nullptr;
}

bool DtXmlFedReader::getPropertyByName(xmlNode* node, const xmlChar* name, DtString& value) {
  value = "";
  const char* found = propertyByName(node, name);
  if (found) value = found;
  return found != nullptr;
}

bool DtXmlFedReader::getChildrenContent(xmlNode* node, DtString& value) const {
  if (node && node->children && node->children->content) {
    value = textOf(node->children->content);
    return true;
  }
  return false;
}

DtString DtXmlFedReader::childrenContent(xmlNode* node) const {
  DtString value("");
  getChildrenContent(node, value);
  return value;
}

bool DtXmlFedReader::getChildContentByName(xmlNode* node, const xmlChar* name, DtString& value) {
  value = "";
  const char* found = childContentByName(node, name);
  if (found) value = found;
  return found != nullptr;
}

bool DtXmlFedReader::convertStringToULong(std::string digits, unsigned long& value) {
  std::istringstream stream(digits);
  stream >> value;
  bool extracted = !stream.fail();
  return extracted && !digits.empty() &&
         digits.find_first_not_of("0123456789") == std::string::npos;
}

DtFomType DtXmlFedReader::fomType(void* file) {
  char* buffer = nullptr;
  unsigned int size = 0;
  if (!readFileIntoBuffer(static_cast<FILE*>(file), &buffer, &size)) return DtFomTypeUnknown;
  std::unique_ptr<char[]> held(buffer);
  rewind(static_cast<FILE*>(file));
  DtFomType type = DtFomTypeUnknown;
  // A file that isn't XML is an answer here, not an error: libxml2 keeps its reports to itself.
  DtQuietXmlErrors quiet;
  xmlDocPtr doc = xmlReadMemory(buffer, static_cast<int>(size), nullptr, nullptr, 0);
  if (doc) {
    type = fomType(xmlDocGetRootElement(doc));
    xmlFreeDoc(doc);
  }
  return type;
}

DtFomType DtXmlFedReader::fomType(xmlNode* root) {
  if (!root) return DtFomTypeUnknown;
  if (root->ns && root->ns->href) {
    if (xmlStrstr(root->ns->href, xmlText(IEEE1516_2010)) ||
        xmlStrstr(root->ns->href, xmlText(IEEE1516_2009))) {
      return DtFomTypeEvolved;
    }
    if (xmlStrstr(root->ns->href, xmlText(IEEE1516_2025))) return DtFomType2025;
  } else {
    for (xmlAttr* attr = root->properties; attr; attr = attr->next) {
      for (const char* name : the1516RootAttributes) {
        if (xmlStrEqual(attr->name, xmlText(name))) return DtFomType1516;
      }
    }
  }
  xmlNode* transportations = getNodeByName(root, xmlText(tagTransportations));
  if (!transportations) return DtFomTypeUnknown;
  xmlNode* transportation = getNodeByName(transportations, xmlText(tagTransport));
  if (!transportation) return DtFomTypeUnknown;
  for (xmlAttr* attr = transportation->properties; attr; attr = attr->next) {
    if (xmlStrEqual(attr->name, xmlText(attrName)) ||
        xmlStrEqual(attr->name, xmlText(attrDescription))) {
      return DtFomType1516;
    }
  }
  return DtFomTypeUnknown;
}

const char* DtXmlFedReader::childContentByName(xmlNode* node, const xmlChar* name) {
  if (!node) return nullptr;
  for (xmlNode* child = node->children; child; child = child->next) {
    if (xmlStrEqual(child->name, name) && child->children &&
        child->children->type == XML_TEXT_NODE) {
      return child->children->content ? textOf(child->children->content) : "";
    }
  }
  return nullptr;
}

xmlNode* DtXmlFedReader::getNodeByName(xmlNode* node, const xmlChar* name) {
  if (!node) return nullptr;
  for (xmlNode* child = node->children; child; child = child->next) {
    if (xmlStrEqual(child->name, name)) return child;
  }
  return nullptr;
}

namespace detail {

namespace {

size_t leadingDigits(const std::string& text) {
  size_t run = 0;
  while (run < text.size() && text[run] >= '0' && text[run] <= '9') ++run;
  return run;
}

bool onlyBlanks(const std::string& text) {
  return text.find_first_not_of(' ') == std::string::npos;
}

}  // namespace

bool parseUpperBound(DtXmlFedReader& reader, const DtString& given, unsigned long& bound) {
  std::string text = given.stdString();
  reader.clipPrefix(text, ' ');
  return reader.convertStringToULong(text, bound);
}

bool parseDimensionValue(DtXmlFedReader& reader, const DtString& given, unsigned long upperBound,
                         unsigned long& rangeLower, unsigned long& rangeUpper, bool& excluded) {
  std::string value = given.stdString();
  reader.clipPrefix(value, ' ');
  if (value.empty()) return false;
  if (value[0] != '[') {
    if (!DtString(value).caseCompare("excluded")) return false;
    excluded = true;
    return true;
  }
  value.erase(0, 1);
  reader.clipPrefix(value, ' ');
  size_t run = leadingDigits(value);
  if (run == 0 || run >= value.size()) return false;
  std::string lowerText = value.substr(0, run);
  value.erase(0, run);
  reader.clipPrefix(value, ' ');
  unsigned long lower = 0;
  if (value[0] == ')') {
    value.erase(0, 1);
    if (!onlyBlanks(value)) return false;
    if (!reader.convertStringToULong(lowerText, lower) || upperBound <= lower) return false;
    rangeLower = lower;
    rangeUpper = lower + 1;
    return true;
  }
  // Two dots, each of which may have blanks before it.
  for (int dot = 0; dot < 2; ++dot) {
    if (value.empty() || value[0] != '.') return false;
    value.erase(0, 1);
    reader.clipPrefix(value, ' ');
  }
  run = leadingDigits(value);
  if (run == 0 || run >= value.size()) return false;
  std::string upperText = value.substr(0, run);
  value.erase(0, run);
  reader.clipPrefix(value, ' ');
  if (value[0] != ')') return false;
  value.erase(0, 1);
  if (!onlyBlanks(value)) return false;
  unsigned long upper = 0;
  if (!reader.convertStringToULong(lowerText, lower) ||
      !reader.convertStringToULong(upperText, upper) || upper <= lower || upper > upperBound) {
    return false;
  }
  rangeLower = lower;
  rangeUpper = upper;
  return true;
}

}  // namespace detail

}  // namespace KORRti
