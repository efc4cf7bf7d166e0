#ifndef KTL_ATOM_H
#define KTL_ATOM_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// A new symbol of that name, interned nowhere.
DtlObjPtr DtcMakeSymbol(char const* name);
/// The symbol of that name for the chain of env; made and bound to unbound in env if no frame
/// of the chain has it.
DtlObjPtr DtcIntern(char const* name, DtlObjPtr const& env);
/// Binds or rebinds in exactly this frame; answers the symbol held by the binding.
DtlObjPtr DtcSet(DtlObjPtr const& symbol, DtlObjPtr const& value, DtlObjPtr const& frame);
/// The value of a symbol, searched up the chain.
DtlObjPtr DtcSymeval(DtlObjPtr const& symbol, DtlObjPtr const& env);
/// 1 if this frame alone binds the name to something other than unbound.
int DtcBoundp(DtlObjPtr const& symbol, DtlObjPtr const& frame);
DtlObjPtr DtcInternPtr(char const* name, DtlObjPtr const& value, DtlObjPtr const& env);
DtlObjPtr DtcInternSpecialForm(char const* name, DtlPrimitive fn, DtlObjPtr const& env);
DtlObjPtr DtcInternCompiledC(char const* name, DtlPrimitive fn, DtlObjPtr const& env);
DtlObjPtr alloc_compiled_c(DtlTagType tag, char const* name, DtlPrimitive fn);

}  // namespace KORRti

KTL_API_END

#endif
