#include <ktl/float.h>

#include <cstdio>
#include <string>

#include <ktl/io.h>
#include <ktl/lenv.h>
#include <util/notify.h>

namespace KORRti {

int DtcSetIfBoundp(char* name, double* out, DtlObjPtr const& env) {
  if (env.isNull() || env->tag() != DtlFrameTag || !env->frameBindings()) return 0;
  DtlObjPtr value = env->frameBindings()->lookup(name);
  if (value.isNull()) return 0;
  if (value->tag() == DtlFlonumTag) {
    *out = value->flonum();
    return 1;
  }
  if (value->tag() == DtlFixnumTag) {
    *out = static_cast<double>(value->fixnum());
    return 1;
  }
  if (DtNotifyLevel > 0) {
    std::string text = std::string("Variable ") + name + " should be a float, not ";
    std::fprintf(stderr, "Lisp Warning: %s", text.c_str());
    DtcErrPrint(value);
  }
  return 0;
}

}  // namespace KORRti
