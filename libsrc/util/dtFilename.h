#ifndef UTIL_DTFILENAME_H
#define UTIL_DTFILENAME_H

#include <util/dtString.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// A path held as text; every DtString operation applies to it.
class DtFilename : public DtString {
 public:
  DtFilename();
  DtFilename(const char* path);  // NOLINT
  DtFilename(const DtFilename& other);
  DtFilename(const DtString& path);  // NOLINT
  ~DtFilename() override;
  DtFilename& operator=(const char* path);
  DtFilename& operator=(const DtFilename& other);

  /// Text behind the last dot of the last path component, empty if there is none.
  DtString extension() const;
  /// Drops every directory, keeping the last component.
  void stripPath();
  static DtFilename stripPath(const DtFilename& path);
  /// The directory part with its trailing "/", or empty for a bare name, so that a relative
  /// name can be appended with +=.
  static DtFilename stripFilename(const DtFilename& path);
  bool relative() const;
  bool exists() const;
  /// Joins this directory and a name, in place, and returns this.
  DtFilename& append(const DtFilename& name);
  /// Looks for this relative name in a colon-separated list of directories. On success this
  /// becomes the path found and the answer is true; otherwise (also for a null list or an
  /// absolute name) nothing changes.
  bool searchAlternatePath(const char* directories);
};

}  // namespace KORRti

KTL_API_END

#endif
