#ifndef KTL_LIST_H
#define KTL_LIST_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

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
/// Number of cells; nil or a null tail ends the count.
int DtcLength(DtlObjPtr const& x);
/// A new list of the same elements in reverse order; nil as it is.
DtlObjPtr DtcReverse(DtlObjPtr const& x);
/// a followed by b: a copy of a sharing b, or the other one when one is empty.
DtlObjPtr DtcAppend(DtlObjPtr const& a, DtlObjPtr const& b);

/// Primitives.
DtlObjPtr DtlLCons(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlLCar(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlLCdr(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlLength(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlList(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlReverse(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlAppend(DtlObjPtr const& args, DtlObjPtr const& env);
/// Special forms: a closure over env, and let as an application of one.
DtlObjPtr DtlLambda(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlLet(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
