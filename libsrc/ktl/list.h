#ifndef KTL_LIST_H
#define KTL_LIST_H

#include <ktl/memory.h>

namespace KORRti {

DtlObjPtr DtcCons(DtlObjPtr const& a, DtlObjPtr const& b);
DtlObjPtr DtcCar(DtlObjPtr const& x);
DtlObjPtr DtcCdr(DtlObjPtr const& x);
DtlObjPtr DtcCadr(DtlObjPtr const& x);
DtlObjPtr DtcCaddr(DtlObjPtr const& x);
DtlObjPtr DtcCadddr(DtlObjPtr const& x);
DtlObjPtr DtcCaddddr(DtlObjPtr const& x);
DtlObjPtr DtcCadddddr(DtlObjPtr const& x);
DtlObjPtr DtcCaddddddr(DtlObjPtr const& x);
// Number of cells; nil or a null tail ends the count.
int DtcLength(DtlObjPtr const& x);

}  // namespace KORRti

#endif
