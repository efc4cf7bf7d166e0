#include <ktl/list.h>

#include <vector>

#include <ktl/atom.h>
#include <ktl/eval.h>
#include <ktl/io.h>
#include <ktl/null.h>

namespace KORRti {

namespace {

bool isList(DtlObj* x) {
  return !x || x->tag() == DtlConsTag || x->tag() == DtlNilTag;
}

void checkCount(DtlObjPtr const& args, int count, char const* message) {
  if (DtcLength(args) != count) DtcHaltAndCatchFire(message);
}

}  // namespace

DtlObjPtr DtcCons(DtlObjPtr const& a, DtlObjPtr const& b) {
  DtlObjPtr cell(DtlConsTag);
  if (cell.isNull()) DtcHaltAndCatchFire("out of memory in cons");
  cell->setCar(a);
  cell->setCdr(b);
  return cell;
}

DtlObjPtr DtcCar(DtlObjPtr const& x) {
  if (x.isNull() || x->tag() != DtlConsTag) DtcHaltAndCatchFire("car of non-cons");
  return x->car();
}

DtlObjPtr DtcCdr(DtlObjPtr const& x) {
  if (x.isNull() || x->tag() != DtlConsTag) DtcHaltAndCatchFire("cdr of non-cons");
  return x->cdr();
}

DtlObjPtr DtcCadr(DtlObjPtr const& x) {
  return DtcCar(DtcCdr(x));
}
DtlObjPtr DtcCaddr(DtlObjPtr const& x) {
  return DtcCadr(DtcCdr(x));
}
DtlObjPtr DtcCadddr(DtlObjPtr const& x) {
  return DtcCaddr(DtcCdr(x));
}
DtlObjPtr DtcCaddddr(DtlObjPtr const& x) {
  return DtcCadddr(DtcCdr(x));
}
DtlObjPtr DtcCadddddr(DtlObjPtr const& x) {
  return DtcCaddddr(DtcCdr(x));
}
DtlObjPtr DtcCaddddddr(DtlObjPtr const& x) {
  return DtcCadddddr(DtcCdr(x));
}

int DtcLength(DtlObjPtr const& x) {
  // Counted in a loop over raw cells, so that any length is safe.
  int length = 0;
  for (DtlObj* cell = x.get(); cell && cell->tag() != DtlNilTag; cell = cell->cdrObj()) {
    if (cell->tag() != DtlConsTag) DtcHaltAndCatchFire("DtcLength of non-cons");
    ++length;
  }
  return length;
}

DtlObjPtr DtcReverse(DtlObjPtr const& x) {
  if (DtcNull(x)) return x;
  // One pass, consing onto the front: the same new list as appending element by element,
  // without the quadratic cost.
  DtlObjPtr result = DtlObjPtr::nil();
  DtlObj* cell = x.get();
  for (; cell && cell->tag() == DtlConsTag; cell = cell->cdrObj()) {
    result = DtcCons(cell->car(), result);
  }
  if (!isList(cell)) DtcHaltAndCatchFire("Non list in reverse");
  return result;
}

DtlObjPtr DtcAppend(DtlObjPtr const& a, DtlObjPtr const& b) {
  if (!isList(a.get()) || !isList(b.get())) DtcHaltAndCatchFire("Non list in append");
  if (DtcNull(a)) return b;
  if (DtcNull(b)) return a;
  // Copy a cell by cell, front to back, and share b as the tail.
  DtlObjPtr head;
  DtlObj* last = nullptr;
  DtlObj* cell = a.get();
  for (; cell && cell->tag() == DtlConsTag; cell = cell->cdrObj()) {
    DtlObjPtr copy = DtcCons(cell->car(), b);
    if (last) {
      last->setCdr(copy);
    } else {
      head = copy;
    }
    last = copy.get();
  }
  if (!isList(cell)) DtcHaltAndCatchFire("Non list in append");
  return head;
}

// ---- primitives ------------------------------------------------------------------------

DtlObjPtr DtlLCons(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 2, "Wrong number of args to cons");
  return DtcCons(DtcCar(args), DtcCadr(args));
}

DtlObjPtr DtlLCar(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 1, "Wrong number of args to car");
  return DtcCar(DtcCar(args));
}

DtlObjPtr DtlLCdr(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 1, "Wrong number of args to cdr");
  return DtcCdr(DtcCar(args));
}

DtlObjPtr DtlLength(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 1, "Wrong number of args to length");
  DtlObjPtr length(DtcLength(DtcCar(args)));
  if (length.isNull()) DtcHaltAndCatchFire("out of memory in length");
  return length;
}

DtlObjPtr DtlList(DtlObjPtr const& args, DtlObjPtr const&) {
  return args;
}

DtlObjPtr DtlReverse(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 1, "Wrong number of args to reverse");
  return DtcReverse(DtcCar(args));
}

DtlObjPtr DtlAppend(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 2, "Wrong number of args to append");
  return DtcAppend(DtcCar(args), DtcCadr(args));
}

DtlObjPtr DtlLambda(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcLength(args) <= 1) DtcHaltAndCatchFire("Wrong number of args to lambda");
  DtlObjPtr procedure(DtlProcedureTag);
  if (procedure.isNull()) DtcHaltAndCatchFire("out of memory in lambda");
  procedure->setProcParams(DtcCar(args));
  procedure->setProcBody(DtcCdr(args));
  procedure->setProcEnv(env);
  return procedure;
}

DtlObjPtr DtlLet(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcLength(args) <= 1) DtcHaltAndCatchFire("Wrong number of args to let");
  // Names and initial values come out reversed; evaluated last argument first, the values
  // then run in written order.
  DtlObjPtr vars = DtlObjPtr::nil();
  DtlObjPtr vals = DtlObjPtr::nil();
  for (DtlObjPtr binding = DtcCar(args); !DtcNull(binding); binding = DtcCdr(binding)) {
    DtlObjPtr element = DtcCar(binding);
    vars = DtcCons(DtcCar(element), vars);
    vals = DtcCons(DtcCadr(element), vals);
  }
  DtlObjPtr lambda = DtcCons(DtcIntern("lambda", env), DtcCons(vars, DtcCdr(args)));
  return DtcEval(DtcCons(lambda, vals), env);
}

}  // namespace KORRti
