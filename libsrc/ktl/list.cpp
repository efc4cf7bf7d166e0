#include <ktl/list.h>

#include <ktl/io.h>

namespace KORRti {

DtlObjPtr DtcCons(DtlObjPtr const& a, DtlObjPtr const& b) {
  DtlObjPtr cell(DtlConsTag);
  if (cell.isNull()) DtcHaltAndCatchFire("out of memory in cons");
  cell->setCar(a);
  cell->setCdr(b);
  return cell;
}

DtlObjPtr DtcCar(DtlObjPtr const& x) {
  if (x.isNull() || x->tag() != DtlConsTag) DtcHaltAndCatchFire("car of non-cons");
  return x->car();
}

DtlObjPtr DtcCdr(DtlObjPtr const& x) {
  if (x.isNull() || x->tag() != DtlConsTag) DtcHaltAndCatchFire("cdr of non-cons");
  return x->cdr();
}

DtlObjPtr DtcCadr(DtlObjPtr const& x) {
  return DtcCar(DtcCdr(x));
}
DtlObjPtr DtcCaddr(DtlObjPtr const& x) {
  return DtcCadr(DtcCdr(x));
}
DtlObjPtr DtcCadddr(DtlObjPtr const& x) {
  return DtcCaddr(DtcCdr(x));
}
DtlObjPtr DtcCaddddr(DtlObjPtr const& x) {
  return DtcCadddr(DtcCdr(x));
}
DtlObjPtr DtcCadddddr(DtlObjPtr const& x) {
  return DtcCaddddr(DtcCdr(x));
}
DtlObjPtr DtcCaddddddr(DtlObjPtr const& x) {
  return DtcCadddddr(DtcCdr(x));
}

int DtcLength(DtlObjPtr const& x) {
  // Counted in a loop over raw cells, so that any length is safe.
  int length = 0;
  for (DtlObj* cell = x.get(); cell && cell->tag() != DtlNilTag; cell = cell->cdrObj()) {
    if (cell->tag() != DtlConsTag) DtcHaltAndCatchFire("DtcLength of non-cons");
    ++length;
  }
  return length;
}

}  // namespace KORRti
