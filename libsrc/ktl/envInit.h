#ifndef KTL_ENVINIT_H
#define KTL_ENVINIT_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// Fills a new frame with the language and makes it a root: the constants nil, t and eof, the
/// marker *unbound*, the ten special forms and the sixty-one compiled functions. Running it
/// again on the same frame replaces each primitive object.
void DtcGlobalEnvInit(DtlObjPtr& env);

}  // namespace KORRti

KTL_API_END

#endif
