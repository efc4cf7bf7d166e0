#ifndef KTL_LSTRING_H
#define KTL_LSTRING_H

#include <ktl/memory.h>

namespace KORRti {

// 1 if both strings hold the same text; anything but two strings halts.
int DtcStringEqual(DtlObjPtr const& a, DtlObjPtr const& b);

}  // namespace KORRti

#endif
