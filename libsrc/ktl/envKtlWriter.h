#ifndef KTL_ENVKTLWRITER_H
#define KTL_ENVKTLWRITER_H

#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <util/export.h>

#include <cstdint>
#include <fstream>

KTL_API_BEGIN

namespace KORRti {

/// Writes a tree as KTL text for DtEnvKTLReader: an object as "(name type( "value" )" with its
/// children indented three blanks more and its ")" on a line of its own, a named list as
/// (name "value") and a comment or native value as a ";" line. Nothing is escaped, values are
/// written expanded, and comments don't read back.
class DtEnvKTLWriter : public DtEnvWriter {
 public:
  DtEnvKTLWriter();
  ~DtEnvKTLWriter() override;

  /// Writes env's tree to file; false only when its root is an empty handle. Stream failures
  /// are not noticed.
  bool writeFile(DtEnvironment& env, const DtString& file) override;
  /// Writes node and, for an object or named list, its children.
  virtual void writeValue(DtEnvValueSP node, std::ofstream& out);

 protected:
  /// The tree being written, null outside writeFile.
  DtEnvironment* env = nullptr;
  DtEnvValueSP root;  ///< Its root, held only while writeFile runs.
  /// The indentation of the node being written, in blanks.
  std::int32_t depth = 0;
};

}  // namespace KORRti

KTL_API_END

#endif
