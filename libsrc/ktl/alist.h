#ifndef KTL_ALIST_H
#define KTL_ALIST_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// The first pair of alist whose car matches key, or nil: by DtcEqual, DtcEq or DtcEqualSign.
DtlObjPtr DtcAssoc(DtlObjPtr const& key, DtlObjPtr const& alist);
DtlObjPtr DtcAssq(DtlObjPtr const& key, DtlObjPtr const& alist);
DtlObjPtr DtcAssv(DtlObjPtr const& key, DtlObjPtr const& alist);

DtlObjPtr DtlAssoc(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlAssq(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlAssv(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
