#include <ktl/atom.h>

#include <string>

#include <ktl/io.h>
#include <ktl/lenv.h>

namespace KORRti {

namespace {

bool isSymbol(DtlObjPtr const& x) {
  return !x.isNull() && x->tag() == DtlSymbolTag;
}

char const* nameOf(DtlObjPtr const& symbol) {
  char const* name = symbol->pname();
  return name ? name : "";
}

// The table of a frame; anything else cannot hold bindings.
DtlHashTable* tableOf(DtlObj* frame) {
  if (!frame || frame->tag() != DtlFrameTag) DtcHaltAndCatchFire("non-frame environment");
  return frame->frameBindings();
}

DtlHashTable* tableOf(DtlObjPtr const& frame) {
  return tableOf(frame.get());
}

}  // namespace

DtlObjPtr DtcMakeSymbol(char const* name) {
  DtlObjPtr symbol(DtlSymbolTag);
  if (symbol.isNull()) DtcHaltAndCatchFire("out of memory in DtcMakeSymbol");
  symbol->setPname(name);
  return symbol;
}

DtlObjPtr DtcIntern(char const* name, DtlObjPtr const& env) {
  // Raw pointers up the chain: counted copies of frames would rescan them at each release.
  for (DtlObj* frame = env.get(); frame; frame = frame->frameParentObj()) {
    if (frame->tag() != DtlFrameTag) break;
    DtlObjPtr found = frame->frameBindings()->findsym(name);
    if (!found.isNull()) return found;
  }
  DtlObjPtr symbol = DtcMakeSymbol(name);
  DtcSet(symbol, DtlObjPtr::unbound(), env);
  return symbol;
}

DtlObjPtr DtcSet(DtlObjPtr const& symbol, DtlObjPtr const& value, DtlObjPtr const& frame) {
  if (!isSymbol(symbol)) DtcHaltAndCatchFire("Non-symbol to set1env");
  DtlHashTable* table = tableOf(frame);
  char const* name = nameOf(symbol);
  if (!table->lookup(name).isNull()) {
    table->rebind(symbol, value, frame);
    return table->findsym(name);
  }
  return table->insert(symbol, value, frame);
}

DtlObjPtr DtcSymeval(DtlObjPtr const& symbol, DtlObjPtr const& env) {
  if (!isSymbol(symbol)) DtcHaltAndCatchFire("Non-symbol to DtcSymeval");
  char const* name = nameOf(symbol);
  // Up the chain in a loop; an unbound binding stops the search where it stands.
  for (DtlObj* frame = env.get(); frame; frame = frame->frameParentObj()) {
    DtlObjPtr value = tableOf(frame)->lookup(name);
    if (value.isNull()) continue;
    if (value == DtlObjPtr::unbound()) break;
    return value;
  }
  DtcHaltAndCatchFire(std::string("Unbound symbol ") + name);
}

int DtcBoundp(DtlObjPtr const& symbol, DtlObjPtr const& frame) {
  if (!isSymbol(symbol)) DtcHaltAndCatchFire("non-symbol to boundp");
  DtlObjPtr value = tableOf(frame)->lookup(nameOf(symbol));
  return !value.isNull() && !(value == DtlObjPtr::unbound());
}

DtlObjPtr DtcInternPtr(char const* name, DtlObjPtr const& value, DtlObjPtr const& env) {
  DtlObjPtr symbol = DtcIntern(name, env);
  DtcSet(symbol, value, env);
  return symbol;
}

DtlObjPtr alloc_compiled_c(DtlTagType tag, char const* name, DtlPrimitive fn) {
  DtlObjPtr function(tag);
  if (function.isNull()) DtcHaltAndCatchFire("out of memory in alloc_compiled_c");
  function->setFcnPname(name);
  function->setFcnCode(fn);
  return function;
}

DtlObjPtr DtcInternSpecialForm(char const* name, DtlPrimitive fn, DtlObjPtr const& env) {
  DtlObjPtr symbol = DtcIntern(name, env);
  DtcSet(symbol, alloc_compiled_c(DtlSpecialFormTag, name, fn), env);
  return symbol;
}

DtlObjPtr DtcInternCompiledC(char const* name, DtlPrimitive fn, DtlObjPtr const& env) {
  DtlObjPtr symbol = DtcIntern(name, env);
  DtcSet(symbol, alloc_compiled_c(DtlCompiledCTag, name, fn), env);
  return symbol;
}

}  // namespace KORRti
