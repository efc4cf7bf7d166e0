#ifndef KTL_ENVXMLWRITER_H
#define KTL_ENVXMLWRITER_H

#include <ktl/environment.h>
#include <util/dtString.h>
#include <util/export.h>

#include <memory>

KTL_API_BEGIN

/// libxml2's text writer and memory buffer, as <libxml/xmlwriter.h> and <libxml/tree.h> declare
/// them; a host needs libxml2's headers only to override the writing steps.
typedef struct _xmlTextWriter xmlTextWriter;
typedef xmlTextWriter* xmlTextWriterPtr;
typedef struct _xmlBuffer xmlBuffer;
typedef xmlBuffer* xmlBufferPtr;

namespace KORRti {

/// A writer of one text form of the configuration tree.
class DtEnvWriter {
 public:
  virtual ~DtEnvWriter();
  /// Writes env's tree to file; false (with a line on standard error) when that failed.
  virtual bool writeFile(DtEnvironment& env, const DtString& file) = 0;
};

/// Writes the XML form of the tree through libxml2's text writer. The root becomes the
/// document element named by its name(); a child object an element named by its type(), with
/// a "name" attribute when its name differs; a named list an attribute of the enclosing
/// element; a plain or native value a comment; a bare list its children in its place; and an
/// object's value character data after its children.
///
/// Attributes are written in child order: one that follows a comment or a child element in its
/// parent can't be written any more and is left out without a report.
///
/// A document that can't be started, ended or saved gives false and one line on standard error.
/// An element, attribute or comment that libxml2 refuses inside the document is reported the
/// same way, but the write goes on and can still answer true. libxml2's own reports are kept
/// off standard error during a write (a structured or generic error handler that the host
/// installed still gets them).
class DtEnvXMLWriter : public DtEnvWriter {
 public:
  /// Writes no document type declaration.
  explicit DtEnvXMLWriter(const DtString& rootName);
  /// Writes <!DOCTYPE rootName SYSTEM "dtdFile"> before the document element.
  DtEnvXMLWriter(const DtString& rootName, const DtString& dtdFile);
  DtEnvXMLWriter(const DtEnvXMLWriter&) = delete;
  DtEnvXMLWriter& operator=(const DtEnvXMLWriter&) = delete;
  /// Frees writeString's buffer.
  ~DtEnvXMLWriter() override;

  /// Writes the document to file, laid out by libxml2's formatter.
  bool writeFile(DtEnvironment& env, const DtString& file) override;
  /// Indents each level of writeFile's output by text; the empty text turns indentation off.
  virtual void setIndentation(const DtString& text);
  /// Writes the document, never indented, into out. False, with a line on standard error and
  /// out unchanged, when libxml2 refuses the buffer, the writer or the document's start or end.
  virtual bool writeString(DtEnvironment& env, DtString& out);

 protected:
  /// The document element for node, if it is a named list, with its children inside.
  virtual void writeRoot(xmlTextWriterPtr writer, DtEnvValueSP node);
  /// One node below the document element, by its kind.
  virtual void writeValue(xmlTextWriterPtr writer, DtEnvValueSP node);

  /// The tree being written; null outside a write.
  DtEnvironment* env = nullptr;
  /// Its root node.
  std::weak_ptr<DtEnvValue> root;
  /// The document type name of the DTD declaration.
  DtString rootName;
  /// The system identifier of the DTD declaration.
  DtString dtdFile;
  bool writeDtd = false;  ///< Whether the DTD declaration is written; set by the constructor.
  /// Whether writeFile indents, and by which text; set by setIndentation().
  /// @{
  bool indent = false;
  DtString indentString;
  /// @}
  /// writeString's output buffer, made on its first call and kept for the next ones.
  xmlBufferPtr buffer = nullptr;

 private:
  /// The document from its start to its end; false, with a line on standard error that starts
  /// with lines, when libxml2 refuses its start or its end.
  bool writeDocument(xmlTextWriterPtr writer, DtEnvironment& env, const char* lines);
  /// Writes every child of list from first() on through writeValue.
  void writeChildren(xmlTextWriterPtr writer, DtEnvValueSP list);
};

}  // namespace KORRti

KTL_API_END

#endif
