#include <ktl/fedReader1516_4.h>

#include <libxml/tree.h>
#include <libxml/xmlstring.h>

namespace KORRti {

DtFedReader1516_4::DtFedReader1516_4() {
  expectedType = DtFomType2025;
  standardMimText = theHLA4StandardMIM_xml;
  standardMimSize = theHLA4StandardMIM_xml_len;
  timeStampTag = detail::xmlText(attrLogicalTime);
  lookaheadTag = detail::xmlText(attrLogicalTimeInterval);
}

DtFedReader1516_4::~DtFedReader1516_4() = default;

int DtFedReader1516_4::readFedFilePtr(FILE* file, DtFedTarget* readTarget, DtFilename name,
                                      unsigned int mask, bool validate, bool skip) {
  return DtFedReader1516e::readFedFilePtr(file, readTarget, name, DtFomType2025, mask, validate,
                                          skip);
}

int DtFedReader1516_4::parseDataType(xmlNode* node) {
  if (node && xmlStrEqual(node->name, detail::xmlText(tagReferenceDataTypes))) {
    return parseReferenceDataTypesTree(node->children);
  }
  return DtFedReader1516e::parseDataType(node);
}

int DtFedReader1516_4::parseReferenceDataTypesTree(xmlNode*) {
  // The target has no operation for a reference data type: the section is accepted unread.
  return DtFedOk;
}

}  // namespace KORRti
