#include <ktl/io.h>

#include <cstdio>

#include <util/dtException.h>
#include <util/dtString.h>

namespace KORRti {

DtlObjPtr DtcHaltAndCatchFire(char const* text) {
  DtString reason("KTL Error: ");
  reason += text ? text : "";
  DtString message("DtException: ");
  message += reason;
  throw DtException(message, __PRETTY_FUNCTION__, DtSourceName(__FILE__).c_str(), __LINE__,
                    nullptr);
}

void DtcHaltAndCatchFire(std::string const& text) {
  DtcHaltAndCatchFire(text.c_str());
}

DtlObjPtr DtcErrPrint(DtlObjPtr const& x) {
  if (!x.isNull()) x->DtcObjFprint(stderr);
  return x;
}

}  // namespace KORRti
