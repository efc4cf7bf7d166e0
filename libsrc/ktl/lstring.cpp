#include <ktl/lstring.h>

#include <cstring>

#include <ktl/io.h>

namespace KORRti {

int DtcStringEqual(DtlObjPtr const& a, DtlObjPtr const& b) {
  if (a.isNull() || b.isNull() || a->tag() != DtlStringTag || b->tag() != DtlStringTag) {
    DtcHaltAndCatchFire("Wrong type arg to DtcStringEqual");
  }
  return std::strcmp(a->string() ? a->string() : "", b->string() ? b->string() : "") == 0;
}

}  // namespace KORRti
