#ifndef KTL_FEDREADER1516E_H
#define KTL_FEDREADER1516E_H

#include <util/export.h>
#include <utility>

#include <ktl/xmlFedReader.h>

KTL_API_BEGIN

/// libxml2's document type, declared as libxml2 declares it.
struct _xmlDoc;
typedef struct _xmlDoc xmlDoc;

namespace KORRti {

/// Reader of the IEEE 1516-2010 form of an object model document (FDD, or FOM module), where
/// every value stands in a child element and the document names an XML Schema. Modules name
/// themselves and the modules they depend on in their model identification.
///
/// What reaches the target, in order: dimensions and transportations, wherever they stand in
/// the file; then the other sections in document order (model name and dependencies, object
/// and interaction classes with their attributes, parameters and dimensions, switches, update
/// rates, data types, notes, tags, time, synchronization points). Every record is offered to
/// the target's has... operation first and added only when that answers false; a duplicate is
/// never fatal. Class names are full dotted paths and a parent comes before its children.
///
/// Records (ktl/xmlFedReader.h) handed to an add... operation belong to the target; one that
/// the target already has is deleted by the reader.
///
/// A request for the standard MIM by name ("HLAstandardMIM.xml", in any case and under any
/// directory) with no such file on disk is answered from the library's own copy of the
/// document: readFed passes a null file, and this reader then parses standardMimText in place.
///
/// Without strict bit 1 most unexpected content only leaves a warning in lastError() and the
/// read answers 0; with it, the section ends and the read answers 2. Strict bit 2 makes the
/// object, interaction, dimension, transportation and switch sections obligatory.
class DtFedReader1516e : public DtXmlFedReader {
 public:
  /// A reader for format 3, with validation off and the library's format 3 standard MIM.
  DtFedReader1516e();
  /// Calls xmlCleanupParser, which acts on the whole process; the schema compiled for
  /// validation, which depends on what that frees, is dropped first and compiled again when next
  /// needed.
  ~DtFedReader1516e() override;

  /// Reads the whole file as the format 3 (IEEE 1516-2010). Answers 0 read, 1 no file, 2 the
  /// file is wrong.
  int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName,
                     unsigned int strictChecking, bool validate, bool skipSwitches) override;

  /// The walk of the document, one slot for each section or element: processFed takes the
  /// root, each other its element, with the full dotted name of the class it belongs to. Each
  /// answers 0 to go on or 2 to stop. A class, attribute, parameter or dimension without a
  /// name, a dimension with a bad bound or value (or with no bound, unless its name begins with
  /// "HLA"), a wrong root class and a refused class (but for the management interactions that
  /// a replaced root may lack) fail; most other unexpected content fails only under strict
  /// bit 1.
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

  /// Switches schema validation on, whatever the argument: once on, it stays on. A document
  /// whose root names a schema ("schemaLocation") must then validate against it. The schema is
  /// a local file named as the document names it; a location given as a URL never exists.
  virtual void setSchemaValidationEnabled(bool enabled);
  /// Checks a document that the caller parsed (its schema, when validation is on, and its
  /// root) without reading its content. After a failure the document has been freed here.
  virtual int processXmlDocPtr(xmlDoc* doc);
  /// The time section: its timeStampTag and lookaheadTag elements, each a DtTimeType record
  /// named by its element and read from its child elements; any other element is unexpected.
  virtual int parseTimeTree(xmlNode* node);
  /// The synchronization points section: each element a DtSynchronizationPointsType record read
  /// from its child elements, its capability a number from 1 to 5 in the order of the
  /// document's words; 0 when it is not given, 5 when it is empty, and 0 as unexpected content
  /// when it is no known word.
  virtual int parseSynchronizationsTree(xmlNode* node);
  /// True if doc is valid against the XML Schema in schemaFile (a local file). A compiled
  /// schema is kept, and used again while its file is unchanged, until an XML reader is
  /// destroyed (its clean-up of libxml2 frees what the schema depends on).
  virtual bool schemaValidate(xmlDoc* doc, const char* schemaFile);
  /// The module's name and the names of the modules it depends on, to the target.
  virtual int processModelIdentification(xmlNode* node);
  /// The dimensions of an object class; node is the class's "dimensions" element.
  virtual int parseObjectDimensions(xmlNode* node, const DtString& className);
  /// The update rates section: each element a DtUpdateRateType record read from its child
  /// elements; its rate is the number its text begins with, 0 when there is none.
  virtual int parseUpdateRates(xmlNode* node);
  /// One section of "dataTypes", by its name.
  virtual int parseDataType(xmlNode* node);
  /// The transportation of a class or attribute: 0 and 1 for the two standard ones, the
  /// target's answer for a declared one, -1 when there is no transportation element. names
  /// holds the class and the attribute ("" for an interaction class). A name the target does
  /// not have gives 0; under strict bit 1 it leaves transport as it was and goes to the
  /// target's addUnresolved... operation instead. Always answers 0.
  virtual int getTransportType(xmlNode* node, DtTransportType& transport,
                               std::pair<DtString, DtString> names, bool isAttribute);
  /// The order of a class or attribute, from its order element: -1 when there is none. An
  /// unknown word sets lastError() and answers 2.
  virtual int getOrderType(xmlNode* node, DtOrderType& order);
  /// The read itself, as the format type; the six-argument form calls it with 3.
  virtual int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName, DtFomType type,
                             unsigned int strictChecking, bool validate, bool skipSwitches);

  /// The getters of one class, attribute or parameter element, each from a child element of
  /// node. One that is missing gives publish-subscribe sharing, no-transfer ownership, the
  /// not-applicable update type or an empty text. An unknown word gives the same, but for
  /// sharing, which then answers 2 under strict bit 1; the others always answer 0.
  /// @{
  int getSharingType(xmlNode* node, DtSharingType_enum& sharing);
  int getSemantics(xmlNode* node, DtString& semantics);
  int getNotes(xmlNode* node, DtString& notes);
  int getOwnershipType(xmlNode* node, DtOwnershipType_enum& ownership);
  int getUpdateCondition(xmlNode* node, DtString& condition);
  int getUpdateType(xmlNode* node, DtFomUpdateType_enum& updateType);
  /// @}

 protected:
  /// Off until setSchemaValidationEnabled, then on for good.
  bool schemaValidationEnabled;
  /// The target refused "HLAobjectRoot" and took "ObjectRoot"; kept from one read to the next.
  bool replacedObjectRoot;
  /// The same for "HLAinteractionRoot" and "InteractionRoot".
  bool replacedInteractionRoot;
  /// The standard MIM of this reader's edition, held by the library (not owned, not
  /// null-terminated).
  const unsigned char* standardMimText;
  unsigned int standardMimSize;  ///< The byte count of standardMimText.
  /// The names of the two elements of the "time" section; DtFedReader1516_4 sets its own.
  /// @{
  const xmlChar* timeStampTag;
  const xmlChar* lookaheadTag;
  /// @}

 private:
  /// Checks a document against the schema its root names, when validation is on.
  int checkSchema(xmlNode* root);
  /// Adds the "dimension" children of list through add; 2 on a fault under strict bit 1.
  template <typename Add>
  int addDimensionElements(xmlNode* list, const char* wrongTag, const DtString& className, Add add);
};

}  // namespace KORRti

KTL_API_END

#endif
