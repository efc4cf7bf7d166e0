#include <ktl/alist.h>

#include <ktl/io.h>
#include <ktl/list.h>
#include <ktl/null.h>

namespace KORRti {

namespace {

DtlObjPtr findPair(DtlObjPtr const& key, DtlObjPtr const& alist,
                   int (*matches)(DtlObjPtr const&, DtlObjPtr const&)) {
  int n = DtcLength(alist);
  DtlObjPtr cell = alist;
  for (int i = 0; i < n; ++i, cell = cell->cdr()) {
    DtlObjPtr entry = DtcCar(cell);
    if (matches(DtcCar(entry), key)) return entry;
  }
  return DtlObjPtr::nil();
}

DtlObjPtr lookupPrimitive(DtlObjPtr const& args, char const* countMessage,
                          DtlObjPtr (*find)(DtlObjPtr const&, DtlObjPtr const&)) {
  if (DtcLength(args) != 2) DtcHaltAndCatchFire(countMessage);
  return find(DtcCar(args), DtcCadr(args));
}

}  // namespace

DtlObjPtr DtcAssoc(DtlObjPtr const& key, DtlObjPtr const& alist) {
  return findPair(key, alist, DtcEqual);
}

DtlObjPtr DtcAssq(DtlObjPtr const& key, DtlObjPtr const& alist) {
  return findPair(key, alist, DtcEq);
}

DtlObjPtr DtcAssv(DtlObjPtr const& key, DtlObjPtr const& alist) {
  return findPair(key, alist, DtcEqualSign);
}

DtlObjPtr DtlAssoc(DtlObjPtr const& args, DtlObjPtr const&) {
  return lookupPrimitive(args, "Wrong number of args to assoc", DtcAssoc);
}

DtlObjPtr DtlAssq(DtlObjPtr const& args, DtlObjPtr const&) {
  return lookupPrimitive(args, "Wrong number of args to assq", DtcAssq);
}

DtlObjPtr DtlAssv(DtlObjPtr const& args, DtlObjPtr const&) {
  return lookupPrimitive(args, "Wrong number of args to assv", DtcAssv);
}

}  // namespace KORRti
