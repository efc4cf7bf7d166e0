#ifndef KTL_NULL_H
#define KTL_NULL_H

#include <ktl/memory.h>

namespace KORRti {

// 1 for a null handle or the empty list, else 0.
int DtcNull(DtlObjPtr const& x);
// 1 if both handles hold the same record.
int DtcEq(DtlObjPtr const& a, DtlObjPtr const& b);
// t for non-zero, nil for zero.
DtlObjPtr DtcCBooleanToLispBoolean(int value);

}  // namespace KORRti

#endif
