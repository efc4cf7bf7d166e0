#include <ktl/subrs.h>

#include <cstdio>

#include <ktl/atom.h>
#include <ktl/eval.h>
#include <ktl/io.h>
#include <ktl/list.h>
#include <ktl/null.h>
#include <util/notify.h>

namespace KORRti {

namespace {

DtlObjPtr single(DtlObjPtr const& form) {
  return DtcCons(form, DtlObjPtr::nil());
}

}  // namespace

DtlObjPtr DtlIf(DtlObjPtr const& args, DtlObjPtr const& env) {
  int count = DtcLength(args);
  if (count != 2 && count != 3) DtcHaltAndCatchFire("Wrong number of args to if");
  DtlObjPtr test = DtcEval(DtcCar(args), env);
  if (!DtcNull(test)) return single(DtcCadr(args));
  if (count == 3) return single(DtcCaddr(args));
  return single(DtlObjPtr::nil());
}

DtlObjPtr DtlCond(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcNull(args)) DtcHaltAndCatchFire("No clauses to cond");
  for (DtlObjPtr clauses = args; !DtcNull(clauses); clauses = DtcCdr(clauses)) {
    DtlObjPtr clause = DtcCar(clauses);
    DtlObjPtr test = DtcEval(DtcCar(clause), env);
    if (DtcTracing()) {
      std::printf("clause ");
      DtcPrint(clause);
      std::printf("Predicate ");
      DtcPrint(DtcCar(clause));
      std::printf("Predicate result ");
      DtcPrint(test);
    }
    if (!DtcNull(test)) {
      // A clause of the test alone answers the test's value, which the evaluator then runs as
      // the list of forms.
      if (DtcLength(clause) == 1) return test;
      return DtcCdr(clause);
    }
  }
  return single(DtlObjPtr::nil());
}

DtlObjPtr DtlSetqBoundVariable(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcTracing() && !DtcNull(args)) {
    std::printf("(setq-variable ");
    DtcPrint(DtcCar(args));
  }
  if (DtcLength(args) != 2) DtcHaltAndCatchFire("Wrong number of args to setq");
  DtlObjPtr symbol = DtcCar(args);
  if (symbol.isNull() || symbol->tag() != DtlSymbolTag) DtcHaltAndCatchFire("non-symbol to boundp");
  // Up the chain on raw pointers: counted copies of frames would rescan them at each release.
  DtlObj* frame = env.get();
  while (frame && !DtcBoundp(symbol, DtlObjPtr(frame))) frame = frame->frameParentObj();
  if (!frame) {
    DtWarn("Lisp Warning: can't set unbound variable: %s\n",
           symbol->pname() ? symbol->pname() : "");
    return DtlObjPtr::nil();
  }
  DtlObjPtr value = DtcEval(DtcCadr(args), env);
  return DtcSet(symbol, value, DtlObjPtr(frame));
}

}  // namespace KORRti
