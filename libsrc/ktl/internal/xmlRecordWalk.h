#ifndef KTL_INTERNAL_XMLRECORDWALK_H
#define KTL_INTERNAL_XMLRECORDWALK_H

// What the XML readers share to turn elements into records: the field tables, the filling of a
// record from an element's attributes or from its child elements, the delivery to the target
// with its duplicate rules, and the guard that keeps libxml2 off the network. Private to the
// library: not installed.

#include <sys/stat.h>

#include <cstring>
#include <memory>
#include <set>
#include <string>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/uri.h>
#include <libxml/xmlIO.h>
#include <libxml/xmlstring.h>

#include <ktl/envXmlReader.h>
#include <ktl/xmlFedReader.h>
#include <util/notify.h>

namespace KORRti {
namespace detail {

inline bool named(const xmlNode* node, const char* name) {
  return xmlStrEqual(node->name, xmlText(name)) != 0;
}

// The text of an attribute as the readers take it: its first child's content.
inline const char* attributeText(const xmlAttr* attr) {
  return attr->children && attr->children->content ? textOf(attr->children->content) : "";
}

inline bool contains(const DtString& haystack, const char* needle) {
  return std::strstr(haystack.c_str(), needle) != nullptr;
}

// A read fetches nothing over the network, whatever DTD, schema or entity a document names, and
// reads no device or pipe, which might never end: while this lives, libxml2 loads external
// resources only from local regular files. The loader is process-wide, like the rest of
// libxml2's set-up, and is put back as it was.
class LocalLoadsOnly {
 public:
  LocalLoadsOnly() : saved_(xmlGetExternalEntityLoader()) {
    xmlSetExternalEntityLoader(&localOnly);
  }
  ~LocalLoadsOnly() { xmlSetExternalEntityLoader(saved_); }
  LocalLoadsOnly(const LocalLoadsOnly&) = delete;
  LocalLoadsOnly& operator=(const LocalLoadsOnly&) = delete;

  // A path, or a "file:" URL, that names a regular file on this machine.
  static bool isLocalFile(const char* url) {
    if (!url || !*url) return false;
    std::string path(url);
    for (const char* prefix : {"file://localhost", "file://"}) {
      if (path.compare(0, std::strlen(prefix), prefix) == 0) {
        path.erase(0, std::strlen(prefix));
        break;
      }
    }
    if (path.find("://") != std::string::npos) return false;
    if (isRegular(path.c_str())) return true;
    // libxml2 may have escaped the path as a URI ("%20" for a blank).
    XmlPtr<char> unescaped(xmlURIUnescapeString(path.c_str(), 0, nullptr));
    return unescaped && isRegular(unescaped.get());
  }

 private:
  static bool isRegular(const char* path) {
    struct stat info;
    return ::stat(path, &info) == 0 && S_ISREG(info.st_mode);
  }
  static xmlParserInputPtr localOnly(const char* url, const char* id, xmlParserCtxtPtr context) {
    if (!isLocalFile(url)) return nullptr;
    return xmlNoNetExternalEntityLoader(url, id, context);
  }
  xmlExternalEntityLoader saved_;
};

// The words of a section's duplicate report.
struct Duplicate {
  const char* first;   // before the record's name
  const char* second;  // after it
  bool errorLine;      // the report ends with the node's line, and its log line with a line end
  bool fatal;          // fatal under strict bit 1 and kept out of the verbose log
};

// What an attribute or a child element (or, for tags and time, an element's name) fills in a
// record. A rule with no text field is one whose value the section converts itself.
template <typename Record>
struct Field {
  const char* name;
  DtString Record::*text;
};

template <typename Record, size_t N>
const Field<Record>* findField(const Field<Record> (&fields)[N], const xmlChar* name) {
  for (const Field<Record>& field : fields) {
    if (xmlStrEqual(name, xmlText(field.name))) return &field;
  }
  return nullptr;
}

// An annotation: a name that ends in "Notes" behind at least one other character.
inline bool isNotes(const xmlChar* name) {
  static const size_t suffix = std::strlen("Notes");
  size_t length = static_cast<size_t>(xmlStrlen(name));
  return length > suffix && std::strcmp(textOf(name) + length - suffix, "Notes") == 0;
}

// The annotation of a taken attribute ("semanticsNotes" beside "semantics") is accepted and
// passed over.
template <typename Record, size_t N>
bool isFieldNotes(const Field<Record> (&fields)[N], const xmlChar* name) {
  if (!isNotes(name)) return false;
  size_t length = static_cast<size_t>(xmlStrlen(name)) - std::strlen("Notes");
  for (const Field<Record>& field : fields) {
    if (std::strlen(field.name) == length && std::strncmp(field.name, textOf(name), length) == 0) {
      return true;
    }
  }
  return false;
}

// A converter for the rules without a text field that converts nothing.
struct NoConversion {
  template <typename Record>
  void operator()(Record&, const Field<Record>&, const DtString&, xmlNode*) const {}
};

template <typename Value>
struct Word {
  const char* text;
  Value value;
};

// given looked up in words: absent when given is null, unknown when it is none of the words.
template <typename Value, size_t N>
Value lookUpWord(const char* given, const Word<Value> (&words)[N], Value absent, Value unknown) {
  if (!given) return absent;
  for (const Word<Value>& word : words) {
    if (std::strcmp(given, word.text) == 0) return word.value;
  }
  return unknown;
}

// The upper bound of a dimension: leading blanks, then digits only.
bool parseUpperBound(DtXmlFedReader& reader, const DtString& given, unsigned long& bound);

// The "value" of a dimension: "excluded" in any case, or "[n)" for the range n to n + 1 (n below
// upperBound), or "[m..n)" for m to n (m below n, n not above upperBound), with blanks allowed
// before each part. Leaves the outputs as they were and answers false for anything else.
bool parseDimensionValue(DtXmlFedReader& reader, const DtString& given, unsigned long upperBound,
                         unsigned long& rangeLower, unsigned long& rangeUpper, bool& excluded);

}  // namespace detail

// The walk of a section whose elements each become one record: the status of the walk, the
// reports of unexpected content, the filling of a record and its delivery.
struct DtXmlFedReader::RecordWalk {
  DtXmlFedReader& reader;
  int status = DtFedOk;
  // Every attribute whose name ends in "Notes" is passed over, not only the annotation of a
  // taken one: the small sections of the attribute form take any annotation.
  bool anyNotes = false;
  // A wrong inner element is reported by its name and content (the small sections of the
  // element form) or, as a wrong attribute would be, by its name alone (the data types).
  bool innerByContent = false;

  explicit RecordWalk(DtXmlFedReader& owner) : reader(owner) {}

  bool going() const { return status == DtFedOk; }

  void failUnderStrict() {
    if (reader.strictChecking(DtStrictUnexpectedContent)) status = DtFedFailed;
  }

  void unexpectedChild(xmlNode* child, const char* words) {
    reader.lastErrorText = words;
    reader.appendNodeContent(child, reader.lastErrorText);
    reader.appendErrorLine(child, reader.lastErrorText);
    failUnderStrict();
  }

  void unexpectedValue(xmlNode* element, const char* words, const char* value) {
    reader.lastErrorText = words;
    reader.lastErrorText += value;
    reader.appendErrorLine(element, reader.lastErrorText);
    failUnderStrict();
  }

  void unexpectedInner(xmlNode* inner, const char* words) {
    if (innerByContent) {
      unexpectedChild(inner, words);
    } else {
      unexpectedValue(inner, words, detail::textOf(inner->name));
    }
  }

  // Fills record from the attributes of element while the walk goes on; convert handles the
  // rules that have no text field.
  template <typename Record, size_t N, typename Convert>
  void fill(xmlNode* element, Record& record, const detail::Field<Record> (&fields)[N],
            const char* wrongAttribute, Convert convert) {
    for (xmlAttr* attr = element->properties; attr && going(); attr = attr->next) {
      const detail::Field<Record>* field = detail::findField(fields, attr->name);
      if (field) {
        if (field->text) {
          record.*(field->text) = detail::attributeText(attr);
        } else {
          convert(record, *field, DtString(detail::attributeText(attr)), element);
        }
      } else if (!(anyNotes ? detail::isNotes(attr->name)
                            : detail::isFieldNotes(fields, attr->name))) {
        unexpectedValue(element, wrongAttribute, detail::textOf(attr->name));
      }
    }
  }

  template <typename Record, size_t N>
  void fill(xmlNode* element, Record& record, const detail::Field<Record> (&fields)[N],
            const char* wrongAttribute) {
    fill(element, record, fields, wrongAttribute, detail::NoConversion());
  }

  // Fills record from the child elements of element, in document order, while the walk goes
  // on. A field element with no text leaves its field as it was; convert gets the text (or
  // "") and the element for the rules that have no text field.
  template <typename Record, size_t N, typename Convert>
  void fillFromElements(xmlNode* element, Record& record, const detail::Field<Record> (&fields)[N],
                        const char* wrongInner, Convert convert) {
    for (xmlNode* inner = element->children; inner && going(); inner = inner->next) {
      if (reader.isCommentOrBlank(inner)) continue;
      const detail::Field<Record>* field = detail::findField(fields, inner->name);
      if (!field || inner->type != XML_ELEMENT_NODE) {
        unexpectedInner(inner, wrongInner);
      } else if (field->text) {
        reader.getChildrenContent(inner, record.*(field->text));
      } else {
        convert(record, *field, reader.childrenContent(inner), inner);
      }
    }
  }

  template <typename Record, size_t N>
  void fillFromElements(xmlNode* element, Record& record, const detail::Field<Record> (&fields)[N],
                        const char* wrongInner) {
    fillFromElements(element, record, fields, wrongInner, detail::NoConversion());
  }

  // The nested elements of a data type in the attribute form (enumerators, fields,
  // alternatives): each named child becomes a shared record in the set, with no duplicate test.
  template <typename Child, size_t N>
  void fillChildren(xmlNode* element, const char* childName,
                    std::set<std::shared_ptr<Child>>& children,
                    const detail::Field<Child> (&fields)[N], const char* wrongChild,
                    const char* wrongAttribute) {
    for (xmlNode* child = element->children; child && going(); child = child->next) {
      if (reader.isCommentOrBlank(child)) continue;
      if (!detail::named(child, childName)) {
        unexpectedChild(child, wrongChild);
        continue;
      }
      std::shared_ptr<Child> record = std::make_shared<Child>();
      children.insert(record);
      fill(child, *record, fields, wrongAttribute);
    }
  }

  // Offers record to the target: a record the target already has is reported and deleted,
  // any other one is handed over. No target, no delivery.
  template <typename Record, typename Has, typename Add>
  void deliver(Record* made, xmlNode* element, const DtString& name, const detail::Duplicate& words,
               Has has, Add add) {
    std::unique_ptr<Record> record(made);
    if (!reader.target) return;
    if (has(*record)) {
      reader.lastErrorText = words.first;
      reader.lastErrorText += name;
      reader.lastErrorText += words.second;
      reader.appendNodeContent(element, reader.lastErrorText);
      if (words.errorLine) reader.appendErrorLine(element, reader.lastErrorText);
      if (words.fatal) {
        failUnderStrict();
      } else {
        DtVerbose(words.errorLine ? "%s\n" : "%s", reader.lastErrorText.c_str());
        reader.strictChecking(DtStrictUnexpectedContent);  // a duplicate is never fatal
      }
      return;
    }
    add(record.release());
  }

  // The common shape of the sections: each child named childName is built into a record by
  // build (which fills and delivers it, even when its filling failed); any other child is
  // unexpected. The walk ends after a failure.
  template <typename Build>
  int section(xmlNode* node, const char* childName, const char* wrongChild, Build build) {
    if (!node) return status;
    for (xmlNode* child = node->children; child && going(); child = child->next) {
      if (reader.isCommentOrBlank(child)) continue;
      if (!detail::named(child, childName)) {
        unexpectedChild(child, wrongChild);
        continue;
      }
      build(child);
    }
    return status;
  }
};

}  // namespace KORRti

#endif
