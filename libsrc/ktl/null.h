#ifndef KTL_NULL_H
#define KTL_NULL_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// 1 for a null handle or the empty list, else 0.
int DtcNull(DtlObjPtr const& x);
/// 1 if both handles hold the same record.
int DtcEq(DtlObjPtr const& a, DtlObjPtr const& b);
int DtcNumberp(DtlObjPtr const& x);
int DtcLocativep(DtlObjPtr const& x);
int DtcStringp(DtlObjPtr const& x);
/// True for a cons only: the empty list is not a list here.
int DtcListp(DtlObjPtr const& x);
/// Numeric equality, fixnums widened against flonums; locatives by address.
int DtcEqualSign(DtlObjPtr const& a, DtlObjPtr const& b);
/// Structural equality.
int DtcEqual(DtlObjPtr const& a, DtlObjPtr const& b);
int DtcGreater(DtlObjPtr const& a, DtlObjPtr const& b);
int DtcLess(DtlObjPtr const& a, DtlObjPtr const& b);
int DtcLessEqual(DtlObjPtr const& a, DtlObjPtr const& b);
int DtcGreaterEqual(DtlObjPtr const& a, DtlObjPtr const& b);
/// t for non-zero, nil for zero.
DtlObjPtr DtcCBooleanToLispBoolean(int value);
/// A new object of tag that remembers a host address.
DtlObjPtr DtcPtrToNode(DtlTagType tag, void* p);

/// Primitives.
DtlObjPtr DtlEq(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlEqual(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlEqualSign(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlGreater(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlGreaterEqual(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlLess(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlLessEqual(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlNotOrNull(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlNumberp(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlStringp(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlListp(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlLocativep(DtlObjPtr const& args, DtlObjPtr const& env);
/// Compiled functions that evaluate their (already evaluated) arguments once more.
DtlObjPtr DtlAnd(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlOr(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
