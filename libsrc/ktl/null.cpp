#include <ktl/null.h>

namespace KORRti {

int DtcNull(DtlObjPtr const& x) {
  return x.isNull() || x->tag() == DtlNilTag;
}

int DtcEq(DtlObjPtr const& a, DtlObjPtr const& b) {
  return a == b;
}

DtlObjPtr DtcCBooleanToLispBoolean(int value) {
  return value ? DtlObjPtr::t() : DtlObjPtr::nil();
}

}  // namespace KORRti
