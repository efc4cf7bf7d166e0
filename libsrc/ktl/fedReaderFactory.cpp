#include <ktl/fedReaderFactory.h>

#include <ktl/fedReader13.h>
#include <ktl/fedReader1516.h>
#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>

using namespace KORRti;

DtFedReader* DtFedReaderFactory::makeFedReader(DtFomType type) {
  switch (type) {
    case DtFomType13:
      // KTL FED text counts as 1.3 and is read by the 1.3 reader.
      return new DtFedReader13();
    case DtFomType1516:
      return new DtFedReader1516();
    case DtFomTypeEvolved:
      return new DtFedReader1516e();
    case DtFomType2025:
      return new DtFedReader1516_4();
    default:
      return nullptr;
  }
}

DtFedReader* DtFedReaderFactory::makeFedReader(void* file, DtFedTarget* target,
                                               const DtFilename& fileName) {
  DtFomType type = DtFedReader::checkFomType(fileName.c_str(), file);
  DtFedReader* reader = makeFedReader(type);
  if (target) target->setFomType(type);
  return reader;
}
