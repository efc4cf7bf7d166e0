#ifndef KTL_ENVXMLREADER_H
#define KTL_ENVXMLREADER_H

#include <ktl/environment.h>
#include <util/dtString.h>
#include <util/export.h>

#include <memory>

KTL_API_BEGIN

/// libxml2's types, as its headers declare them; a host needs libxml2's headers only to
/// override the reading steps.
typedef struct _xmlTextReader xmlTextReader;
typedef xmlTextReader* xmlTextReaderPtr;
typedef struct _xmlTextWriter xmlTextWriter;
typedef struct _xmlBuffer xmlBuffer;
typedef struct _xmlDoc xmlDoc;
typedef struct _xmlDtd xmlDtd;
typedef struct _xmlValidCtxt xmlValidCtxt;
typedef struct _xmlSchema xmlSchema;
typedef struct _xmlSchemaParserCtxt xmlSchemaParserCtxt;
typedef struct _xmlSchemaValidCtxt xmlSchemaValidCtxt;

namespace KORRti {

/// Keeps libxml2's own error reports off standard error for its lifetime, so that a read or a
/// write reports its failures itself; xmlGetLastError() is filled all the same. A structured or
/// generic handler that the host installed stays in place.
class DtQuietXmlErrors {
 public:
  /// Installs handlers that drop the reports, where libxml2's defaults are in place.
  DtQuietXmlErrors();
  /// Puts libxml2's defaults back where the constructor replaced them.
  ~DtQuietXmlErrors();
  DtQuietXmlErrors(const DtQuietXmlErrors&) = delete;
  DtQuietXmlErrors& operator=(const DtQuietXmlErrors&) = delete;

 private:
  bool structured_;
  bool generic_ = false;
};

namespace detail {

/// The one way this library frees a libxml2 object: an owner per object, whatever the way out.
/// Each call frees its kind with libxml2's own function and does nothing for null.
struct XmlFree {
  /// Frees the object; a validation context with xmlFree.
  /// @{
  void operator()(xmlTextReader* reader) const;
  void operator()(xmlTextWriter* writer) const;
  void operator()(xmlBuffer* buffer) const;
  void operator()(xmlDoc* doc) const;
  void operator()(xmlDtd* dtd) const;
  void operator()(xmlValidCtxt* context) const;
  void operator()(xmlSchema* schema) const;
  void operator()(xmlSchemaParserCtxt* context) const;
  void operator()(xmlSchemaValidCtxt* context) const;
  /// @}
  /// Text that libxml2 allocated (xmlFree).
  void operator()(char* text) const;
};
/// The owner of one libxml2 object, freed through XmlFree.
template <typename Object>
using XmlPtr = std::unique_ptr<Object, XmlFree>;

/// Clears a reader's or writer's hold on a tree (the tree and a node in it) when a read or a
/// write ends, however it ends, so that nothing points into a tree the caller may drop.
class TreeHold {
 public:
  /// Holds the reader's or writer's own members env and node; it does not change them yet.
  TreeHold(DtEnvironment*& env, std::weak_ptr<DtEnvValue>& node) : env_(env), node_(node) {}
  /// Sets env to null and empties node.
  ~TreeHold() {
    env_ = nullptr;
    node_.reset();
  }
  TreeHold(const TreeHold&) = delete;
  TreeHold& operator=(const TreeHold&) = delete;

 private:
  DtEnvironment*& env_;
  std::weak_ptr<DtEnvValue>& node_;
};

}  // namespace detail

/// A reader of one text form of the configuration tree, so that a caller can take any form.
class DtEnvReader {
 public:
  virtual ~DtEnvReader();
  /// Reads file into a new tree. ok stays false unless the whole file was read. Each form says
  /// which failures answer with ok false and which throw: the XML form throws DtInvalidInput
  /// and DtCorruptedState, the KTL form the interpreter's DtException.
  virtual DtEnvironment readFile(const DtString& file, bool& ok) = 0;
};

/// Reads the XML form of the tree through libxml2's text reader. The document element becomes
/// the root object, each further element an object typed by its element name, each attribute
/// other than "name" a named list, each comment a plain value, and the last text run of an
/// element its value. With validation on, the document is checked against its DTD and entities
/// are substituted.
///
/// Failures throw: DtInvalidInput when a file can't be opened, DtCorruptedState when the bytes
/// can't be read, aren't well formed or (with validation) aren't valid. libxml2's own reports
/// are kept off standard error while a document is read (a structured or generic error handler
/// that the host installed still gets them); the exception carries libxml2's message.
class DtEnvXMLReader : public DtEnvReader {
 public:
  /// A reader that validates against the DTD, and substitutes entities, when validate is true.
  explicit DtEnvXMLReader(bool validate);
  DtEnvXMLReader(const DtEnvXMLReader&) = delete;
  DtEnvXMLReader& operator=(const DtEnvXMLReader&) = delete;
  ~DtEnvXMLReader() override;

  /// A new tree read from file; throws DtInvalidInput when the file can't be opened and
  /// DtCorruptedState when its content is wrong, with ok false in both cases.
  DtEnvironment readFile(const DtString& file, bool& ok) override;
  /// Turns DTD validation (and entity substitution) on or off for later reads.
  virtual void useDtdValidation(bool validate);
  /// Reads size bytes into env: the document element renames env's root object, which keeps
  /// its earlier children. True when read; throws DtCorruptedState otherwise.
  virtual bool readMemory(DtEnvironment& env, const char* bytes, int size);

 protected:
  /// Walks the whole document node by node; true when it was read (and, with validation, is
  /// valid). Throws DtCorruptedState otherwise.
  virtual bool readDoc(xmlTextReaderPtr reader);
  /// The node being filled moves to its parent; nothing happens when there is none.
  virtual void popRoot();
  /// Dispatches one node of the reader by its type: element, text, comment, end of element.
  virtual void processNode(xmlTextReaderPtr reader);
  /// Makes the node of an element (or names the root for the document element) and its
  /// attributes; the new node becomes the one being filled.
  virtual void processElement(xmlTextReaderPtr reader);

  /// The tree under construction: a tree of readFile's own, or the caller's handle in
  /// readMemory. Null outside a read.
  DtEnvironment* env = nullptr;
  /// The node being filled; empty before the document element and after it closed.
  std::weak_ptr<DtEnvValue> current;
  bool validate = false;  ///< Whether reads validate; see useDtdValidation().

 private:
  /// libxml2's parser options for the current validation setting.
  int options() const;
};

}  // namespace KORRti

KTL_API_END

#endif
