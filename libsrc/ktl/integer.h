#ifndef KTL_INTEGER_H
#define KTL_INTEGER_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// The host's checked read of a binding of name in env alone (parents aren't searched). No
/// binding: 0 and *out untouched. A fixnum goes to *out and gives 1. Anything else gives 0,
/// with a warning on standard error while DtNotifyLevel is above 0.
int DtcSetIfBoundp(char* name, int* out, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
