#ifndef KTL_KTLFEDREADER_H
#define KTL_KTLFEDREADER_H

#include <ktl/fedReader.h>
#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// The older reader of the HLA 1.3 FED text form: the same walk and the same checks as
/// DtFedReader13, without root replacement or skipping, and without looking at the target's
/// answers. It never tells the target the format, so a read without a target checks a file and
/// delivers nothing. The file's text is not kept after the read.
class DtKtlFedReader : public DtFedReader {
 public:
  /// A reader for format 1 with no target.
  DtKtlFedReader();
  ~DtKtlFedReader() override;  ///< Nothing of its own to free.

  /// Reads the whole text of file and walks its first form; target may be null. A null file
  /// reads as an empty text, which answers 2 ("Unable to find FED in fedfile"). fileName and
  /// validate are not used.
  int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName,
                     unsigned int strictChecking, bool validate, bool skipSwitches) override;

  /// The walk, one operation for each kind of form, as in DtFedReader13: processFed takes the
  /// whole file, the others one element of it, with full dotted class names (parentName is null
  /// at the root). Each checks its form, writes its verbose line, tells the target, if there is
  /// one, and walks what the form holds through these same slots. A wrong form answers 2,
  /// mostly with a message in lastError(); what the target answers is not looked at.
  /// @{
  virtual int processFed(DtlObjPtr form);
  virtual int processFederation(DtlObjPtr form);
  virtual int processVersion(DtlObjPtr form);
  virtual int processSpaces(DtlObjPtr form);
  virtual int processSpace(DtlObjPtr form);
  virtual int processDimension(DtlObjPtr form, const char* spaceName);
  virtual int processObjects(DtlObjPtr form);
  virtual int processObjClass(DtlObjPtr form, const char* parentName);
  virtual int processAttribute(DtlObjPtr form, const char* className);
  virtual int processInteractions(DtlObjPtr form);
  virtual int processIntClass(DtlObjPtr form, const char* parentName);
  virtual int processParameter(DtlObjPtr form, const char* className);
  /// @}

 protected:
  /// This reader keeps its target apart from DtFedReader's, which it leaves untouched, so the
  /// name hides the base's on purpose.
  DtFedTarget* target;
};

}  // namespace KORRti

KTL_API_END

#endif
