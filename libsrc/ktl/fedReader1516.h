#ifndef KTL_FEDREADER1516_H
#define KTL_FEDREADER1516_H

#include <ktl/xmlFedReader.h>
#include <util/export.h>

KTL_API_BEGIN

/// libxml2's document type, declared as libxml2 declares it.
struct _xmlDoc;
typedef struct _xmlDoc xmlDoc;

namespace KORRti {

/// Reader of the IEEE 1516-2000 form of an object model document (FDD), where nearly everything
/// stands in XML attributes and the document names a DTD.
///
/// What reaches the target, in order: dimensions and transportations, wherever they stand in
/// the file; then the other sections in document order (switches, tags, synchronization points,
/// time, object and interaction classes with their attributes, parameters and dimensions, data
/// types, notes). Every item is offered to the target's has... operation first and added only
/// when that answers false. Class names are full dotted paths and a parent comes before its
/// children.
///
/// Records (ktl/xmlFedReader.h) handed to an add... operation belong to the target; one that
/// the target already has is deleted by the reader.
///
/// Without strict bit 1 most unexpected content only leaves a warning in lastError() and the
/// read answers 0; with it, the section ends and the read answers 2.
class DtFedReader1516 : public DtXmlFedReader {
 public:
  /// A reader for format 2 with no target and no text.
  DtFedReader1516();
  /// Calls xmlCleanupParser, which acts on the whole process, after dropping the schema that
  /// DtFedReader1516e and DtFedReader1516_4 keep compiled (it depends on what that frees).
  ~DtFedReader1516() override;

  /// Reads the whole file, tells the target its format (2) and walks the document. With
  /// validate, the document must name the DTD "objectModel", which is looked for relative to
  /// the directory of fileName and must validate it. A DTD or an entity named by a URL is never
  /// fetched: such a DTD fails validation. Answers 0 read, 1 no file, 2 the file is wrong.
  int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName,
                     unsigned int strictChecking, bool validate, bool skipSwitches) override;

  /// The walk of the document, one slot for each section or element: processFed takes the
  /// root, each other its element, with the full dotted name of the class it belongs to. Each
  /// answers 0 to go on or 2 to stop. A class, attribute, parameter or dimension without a
  /// name, a dimension with a bad bound or value, a wrong root class and a refused class (but
  /// for the management classes that a replaced root may lack) fail; most other unexpected
  /// content, an unknown order among it, fails only under strict bit 1.
  /// @{
  int processFed(xmlNode* root) override;
  int parseTransportationsList(xmlNode* node) override;
  int processObjects(xmlNode* node) override;
  int processInteractions(xmlNode* node) override;
  int parseObjectTree(xmlNode* node, const DtString& parentName) override;
  int parseAttribute(xmlNode* node, const DtString& className) override;
  int parseAttributeDimensions(xmlNode* node, const DtString& className,
                               const DtString& attributeName) override;
  int parseInteractionTree(xmlNode* node, const DtString& parentName) override;
  int parseInteractionDimensions(xmlNode* node, const DtString& className) override;
  int parseDimensionList(xmlNode* node) override;
  int parseDimension(xmlNode* node) override;
  int parseSwitches(xmlNode* node) override;
  int parseParameter(xmlNode* node, const DtString& className) override;
  int parseDataTypeTree(xmlNode* node) override;
  int parseNotesTree(xmlNode* node) override;
  int parseTagsTree(xmlNode* node) override;
  int parseBasicDataTypesTree(xmlNode* node) override;
  int parseSimpleDataTypesTree(xmlNode* node) override;
  int parseArrayDataTypesTree(xmlNode* node) override;
  int parseEnumeratedDataTypesTree(xmlNode* node) override;
  int parseFixedRecordDataTypesTree(xmlNode* node) override;
  int parseVariantRecordDataTypesTree(xmlNode* node) override;
  /// @}

  /// True if doc is valid against the DTD in dtdFile (a local file: a URL is refused).
  virtual bool dtdValidate(xmlDoc* doc, const char* dtdFile);
  /// Checks a document that the caller parsed (its DTD, always validated, and its root) without
  /// reading its content. After a failure the document has been freed here.
  virtual int processXmlDocPtr(xmlDoc* doc);
  /// The time section: its timeStamp and lookahead elements, each a DtTimeType record named by
  /// its element; any other element is unexpected.
  virtual int parseTimeTree(xmlNode* node);
  /// The synchronization points section: each element a DtSynchronizationPointsType record,
  /// its capability a number from 1 to 5 in the order of the document's words; 0 when it is not
  /// given, and 0 as unexpected content when it is no known word.
  virtual int parseSynchronizationsTree(xmlNode* node);

  /// The getters of one class, attribute or parameter element; only getOrderType can fail.
  /// Each reads an XML attribute of node. One that is missing or holds an unknown word gives
  /// publish-subscribe sharing, no-transfer ownership, the not-applicable update type, an empty
  /// text, or a transport or order of -1 (an unknown transport warns). An unknown order sets
  /// lastError() and answers 2.
  /// @{
  virtual int getSharingType(xmlNode* node, DtSharingType_enum& sharing);
  virtual int getSemantics(xmlNode* node, DtString& semantics);
  virtual int getNotes(xmlNode* node, DtString& notes);
  virtual int getOwnershipType(xmlNode* node, DtOwnershipType_enum& ownership);
  virtual int getUpdateCondition(xmlNode* node, DtString& condition);
  virtual int getUpdateType(xmlNode* node, DtFomUpdateType_enum& updateType);
  virtual int getTransportType(xmlNode* node, DtTransportType& transport);
  virtual int getOrderType(xmlNode* node, DtOrderType& order);
  /// @}

 protected:
  /// The target refused "HLAobjectRoot" and took "ObjectRoot"; kept from one read to the next.
  bool replacedObjectRoot;
  /// The same for "HLAinteractionRoot" and "InteractionRoot".
  bool replacedInteractionRoot;

 private:
  /// Adds the dimensions named in a blank-separated list through add; 2 on a refusal under
  /// strict bit 1.
  template <typename Add>
  int addDimensionList(xmlNode* node, Add add);
};

}  // namespace KORRti

KTL_API_END

#endif
