#ifndef KTL_FEDREADERFACTORY_H
#define KTL_FEDREADERFACTORY_H

#include <ktl/fedReader.h>
#include <util/export.h>

KTL_API_BEGIN

/// Makes the reader for a FOM format, or for an open file whose format it tells by the file's
/// name and content (KORRti::DtFedReader::checkFomType). The factory holds nothing: both
/// operations may be called on any instance, or on a temporary.
///
/// The caller owns the reader it gets and deletes it through DtFedReader's virtual destructor.
/// The target and the file stay the caller's.
class DtFedReaderFactory {
 public:
  DtFedReaderFactory() = default;
  ~DtFedReaderFactory() = default;

  /// A new reader for the format: 1 HLA 1.3 (also KTL FED text), 2 IEEE 1516-2000, 3 IEEE
  /// 1516-2010, 4 IEEE 1516-2025. Null, with nothing written, for any other value.
  KORRti::DtFedReader* makeFedReader(KORRti::DtFomType type);
  /// The reader for file (a FILE*, open for reading; an XML file is left rewound), told by
  /// fileName's extension and, for XML, by the document's root. A target that is not null is
  /// told the format at once, so that a read through readFed finds the right standard MIM name.
  /// Never null: a format that can't be told defaults to IEEE 1516-2010 (no extension) or
  /// IEEE 1516-2025, with a warning.
  KORRti::DtFedReader* makeFedReader(void* file, KORRti::DtFedTarget* target,
                                     const KORRti::DtFilename& fileName);
};

KTL_API_END

#endif
