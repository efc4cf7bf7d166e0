#ifndef KTL_ENVKTLREADER_H
#define KTL_ENVKTLREADER_H

#include <ktl/envXmlReader.h>
#include <ktl/environment.h>
#include <ktl/memory.h>
#include <util/export.h>

#include <memory>

KTL_API_BEGIN

namespace KORRti {

/// Reads the KTL text form of the tree. The first form of the file is read by the KTL reader and
/// nothing is evaluated; each list in it becomes, by its first two elements:
///   ("text")               the value of the enclosing node
///   (name "text")          a named list under the enclosing node (further elements are dropped)
///   (name type child...)   an object of that name and type
///   (name child...)        an object whose type is its name
/// The outermost form names the root object instead of making a child. Comments are dropped by
/// the KTL reader, so no comment node comes from this form.
class DtEnvKTLReader : public DtEnvReader {
 public:
  DtEnvKTLReader();
  DtEnvKTLReader(const DtEnvKTLReader&) = delete;
  DtEnvKTLReader& operator=(const DtEnvKTLReader&) = delete;
  ~DtEnvKTLReader() override;

  /// A new tree read from file, with ok true. A file that can't be opened gives a tree with only
  /// the root and ok false. Text the KTL reader refuses, and an element that is no list, halt as
  /// the interpreter does: a DtException is thrown, with ok false.
  DtEnvironment readFile(const DtString& file, bool& ok) override;
  /// Adds what one form stands for under the node being filled. An element whose first item is
  /// neither a string nor a symbol is reported on standard error and skipped.
  void processObject(const DtlObjPtr& object);

 protected:
  /// The tree under construction, null outside readFile.
  DtEnvironment* env = nullptr;
  /// The node being filled; empty before the outermost form.
  std::weak_ptr<DtEnvValue> current;
};

}  // namespace KORRti

KTL_API_END

#endif
