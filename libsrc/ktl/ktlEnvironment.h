#ifndef KTL_KTLENVIRONMENT_H
#define KTL_KTLENVIRONMENT_H

#include <ktl/memory.h>
#include <util/dtString.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

class DtList;

/// One embedded interpreter: a root frame holding the language, DEBUG, OS and DtNotifyLevel,
/// with the operations to bind host variables and functions and to load configuration.
///
/// Destroying it ends the root frame whatever still holds it, which also frees the reference
/// cycles closures make through the root. Handles a host still holds to the root, or to
/// procedures made in it, dangle from then on. It is not meant to be copied: the copy
/// constructor and the assignment exist, but only warn on DtWarn; a copy holds a null frame and
/// an assignment changes nothing.
class DtKtlEnvironment {
 public:
  DtKtlEnvironment();
  DtKtlEnvironment(DtKtlEnvironment const& other);
  DtKtlEnvironment& operator=(DtKtlEnvironment const& other);
  virtual ~DtKtlEnvironment();

  /// The value bound to name in the root frame: a null handle if there is none, and unbound
  /// for a name interned but not set.
  virtual DtlObjPtr lookup(DtString const& name);
  /// Binds a host variable to name: 1, or 0 with a warning if the name is taken.
  virtual int registerVar(char const* name, float* variable);
  virtual int registerVar(char const* name, double* variable);
  virtual int registerVar(char const* name, int* variable);
  virtual int registerVar(char const* name, unsigned long* variable);
  virtual int registerVar(char const* name, char** variable);
  virtual int registerVar(char const* name, DtString* variable);
  virtual int registerVar(char const* name, long* variable);
  virtual int registerVar(char const* name, short* variable);
  virtual int registerVar(char const* name, unsigned short* variable);
  virtual int registerVar(char const* name, unsigned int* variable);
  /// Loads; each gives the last value, or a null handle for a failure (reported on DtWarn),
  /// a missing file or a file without expressions. No DtException from KTL text gets out.
  virtual DtlObjPtr loadLispFile(char* name, int warn);
  virtual DtlObjPtr loadLispFile(DtlObjPtr const& dirs, char* name, int warn);
  /// A file, an expression starting with "(", or name=value (which changes arg in place).
  virtual DtlObjPtr loadLispFileOrExpr(char* arg, int warn);
  virtual DtlObjPtr loadLispExpr(char* text, int warn);
  virtual DtlObjPtr setParameter(DtString const& name, DtlObjPtr const& value);
  virtual DtlObjPtr setFunction(DtString const& name, DtlPrimitive fn);
  /// The root frame handle itself. Assigning a new frame through it also needs initEnv and a
  /// new parameter list.
  virtual DtlObjPtr& env();
  virtual DtlObjPtr setSpecialForm(DtString const& name, DtlPrimitive fn);

  void initEnv();

 private:
  DtlObjPtr frame;
  DtList* paramList;
};

}  // namespace KORRti

KTL_API_END

#endif
