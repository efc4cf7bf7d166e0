#ifndef KTL_FEDREADER1516_4_H
#define KTL_FEDREADER1516_4_H

#include <ktl/fedReader1516e.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// Reader of the IEEE 1516-2025 form of an object model document. It reads as the 1516-2010
/// reader does, with four differences: the format type (4), the standard MIM it holds
/// ("HLAstandardMIM-2025.xml"), the names of the two time elements ("logicalTime" and
/// "logicalTimeInterval"), and a "referenceDataTypes" section, which it accepts and does not
/// read: the target has no operation for reference data types.
class DtFedReader1516_4 : public DtFedReader1516e {
 public:
  DtFedReader1516_4();
  ~DtFedReader1516_4() override;

  /// Reads the whole file as the format 4.
  int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName,
                     unsigned int strictChecking, bool validate, bool skipSwitches) override;
  int parseDataType(xmlNode* node) override;
  /// Passes a "referenceDataTypes" section over; always 0.
  virtual int parseReferenceDataTypesTree(xmlNode* node);

  using DtFedReader1516e::readFedFilePtr;
};

}  // namespace KORRti

KTL_API_END

#endif
