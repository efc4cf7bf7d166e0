#include <ktl/eval.h>

#include <pthread.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <ktl/atom.h>
#include <ktl/io.h>
#include <ktl/lenv.h>
#include <ktl/list.h>
#include <ktl/null.h>
#include <ktl/subrs.h>
#include <util/dtException.h>
#include <util/notify.h>

namespace KORRti {

bool DtcTracing() {
  return DtLispDebugOn && DtNotifyLevel > 1;
}

unsigned long DtlEvalStepLimit = 0;

namespace {

thread_local int evalDepth = 0;
thread_local char const* stackReserveStart = nullptr;
thread_local unsigned long evalSteps = 0;

// Counts the nesting of DtcEval for as long as one call is running; the outermost call starts
// a new count of steps.
class EvalLevel {
 public:
  EvalLevel() {
    if (evalDepth++ == 0) evalSteps = 0;
  }
  ~EvalLevel() { --evalDepth; }
};

void trace(char const* what, DtlObjPtr const& x) {
  if (!DtcTracing()) return;
  std::printf("%s", what);
  DtcPrint(x);
}

// Runs every form of a non-empty list but the last, and answers the last.
DtlObjPtr allButLast(DtlObjPtr forms, DtlObjPtr const& frame) {
  while (!DtcNull(DtcCdr(forms))) {
    DtcEval(DtcCar(forms), frame);
    forms = DtcCdr(forms);
  }
  return DtcCar(forms);
}

// The lowest address the thread's stack may grow to before only the reserve is left: an
// eighth of the stack, between 64 KiB and 1 MiB, kept for unwinding and for the printer.
char const* reserveStart() {
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return nullptr;
  void* base = nullptr;
  size_t size = 0;
  int rc = pthread_attr_getstack(&attributes, &base, &size);
  pthread_attr_destroy(&attributes);
  if (rc != 0 || !base || size == 0) return nullptr;
  size_t reserve =
      std::min<size_t>(std::max<size_t>(size / 8, size_t{64} * 1024), size_t{1024} * 1024);
  if (reserve >= size) return nullptr;
  return static_cast<char const*>(base) + reserve;
}

}  // namespace

bool DtcStackNearlyExhausted() {
  if (!stackReserveStart) stackReserveStart = reserveStart();
  char const* here = static_cast<char const*>(__builtin_frame_address(0));
  // The stack grows down: below the start of the reserve means the reserve is in use.
  return stackReserveStart && here < stackReserveStart;
}

namespace {

// One pass of the evaluator's loop over current in frame. Answers true with result set when
// the evaluation is done; false when current and frame now hold a form in tail position.
// The evaluator's loop variables. The frame is the caller's own handle until a procedure call
// in tail position brings a frame of its own: copying the caller's would cost a release, and
// with it a scan of the frame, on every evaluation.
struct Evaluation {
  DtlObjPtr current;
  DtlObjPtr const* frame;
  DtlObjPtr local;
  DtlObjPtr result;
};

bool step(Evaluation& state) {
  DtlObjPtr& current = state.current;
  DtlObjPtr const& frame = *state.frame;
  DtlObjPtr& result = state.result;
  if (DtlEvalStepLimit && ++evalSteps > DtlEvalStepLimit) {
    DtcHaltAndCatchFire("Evaluation step limit reached");
  }
  trace("EVALing ", current);
  switch (current.isNull() ? DtlTagType(-1) : current->tag()) {
    case DtlNilTag:
    case DtlFixnumTag:
    case DtlFlonumTag:
    case DtlStringTag:
    case DtlLocativeTag:
    case DtlFrameTag:
      result = current;
      return true;
    case DtlSymbolTag:
      result = DtcSymeval(current, frame);
      return true;
    case DtlConsTag:
      break;
    default:
      DtWarn << "unknown expression type in eval: ";
      DtcPrint(current);
      DtcHaltAndCatchFire("unknown expression type in eval");
  }

  DtlObjPtr fn = DtcEval(current->car(), frame);
  switch (fn.isNull() ? DtlNilTag : fn->tag()) {
    case DtlCompiledCTag: {
      DtlObjPtr values = eval_args(current->cdr(), frame);
      result = fn->fcnCode()(values, frame);
      return true;
    }
    case DtlProcedureTag: {
      DtlObjPtr local(DtlFrameTag);
      if (local.isNull()) DtcHaltAndCatchFire("out of memory in eval");
      local->setFrameParent(fn->procEnv());
      DtlObjPtr values = eval_args(current->cdr(), frame);
      int rc = bind_args(fn->procParams(), values, local);
      if (rc == DtlBindCountMismatch) {
        DtcHaltAndCatchFire("Wrong number of args for function application");
      }
      if (rc == DtlBindNotASymbol) {
        DtcHaltAndCatchFire("Non-symbol in function parameter list for apply");
      }
      current = allButLast(fn->procBody(), local);
      state.local = std::move(local);
      state.frame = &state.local;
      return false;
    }
    case DtlSpecialFormTag: {
      DtlPrimitive code = fn->fcnCode();
      result = code(current->cdr(), frame);
      if (code != DtlIf && code != DtlCond) return true;
      current = allButLast(result, frame);
      return false;
    }
    default:
      DtcHaltAndCatchFire("Cannot apply a non-function");
  }
  __builtin_unreachable();  // the halt throws; said for compilers that don't see it
}

}  // namespace

DtlObjPtr DtcEval(DtlObjPtr const& expr, DtlObjPtr const& env) {
  try {
    EvalLevel level;
    if (DtcStackNearlyExhausted()) DtcHaltAndCatchFire("Evaluation nested too deep");
    Evaluation state{expr, &env, DtlObjPtr(), DtlObjPtr()};
    while (!step(state)) {
    }
    return std::move(state.result);
  } catch (...) {
    DtcPropagate(__PRETTY_FUNCTION__, DtSourceName(__FILE__).c_str(), __LINE__);
  }
}

DtlObjPtr eval_args(DtlObjPtr const& list, DtlObjPtr const& env) {
  // The whole list is checked before anything is evaluated, then the values are made from the
  // last to the first, as a recursion on the tail would, without its depth.
  std::vector<DtlObj*> forms;
  DtlObj* cell = list.get();
  for (; cell && cell->tag() != DtlNilTag; cell = cell->cdrObj()) {
    if (cell->tag() != DtlConsTag) DtcHaltAndCatchFire("function arguments are not a list");
    forms.push_back(cell->carObj());
  }
  DtlObjPtr values = DtlObjPtr::nil();
  for (auto form = forms.rbegin(); form != forms.rend(); ++form) {
    values = DtcCons(DtcEval(DtlObjPtr(*form), env), values);
  }
  return values;
}

int bind_args(DtlObjPtr const& params, DtlObjPtr const& values, DtlObjPtr const& frame) {
  if (DtcLength(params) != DtcLength(values)) return DtlBindCountMismatch;
  DtlObjPtr value = values;
  for (DtlObjPtr param = params; !DtcNull(param); param = param->cdr(), value = value->cdr()) {
    DtlObjPtr name = param->car();
    if (name.isNull() || name->tag() != DtlSymbolTag) return DtlBindNotASymbol;
    DtcSet(name, value->car(), frame);
  }
  return DtlBindDone;
}

int EnvLocalProcRefcnt(DtlObj* frame) {
  if (!frame || frame->tag() != DtlFrameTag) DtcHaltAndCatchFire("non-frame to EnvLocalProcRefcnt");
  DtlHashTable* table = frame->frameBindings();
  if (!table) return 0;
  // Raw walk: counted copies would change the very counts being measured.
  int count = 0;
  for (int bucket = 0; bucket < DtlHashTable::kBuckets; ++bucket) {
    for (symbol_entry* entry = table->bucket(bucket); entry; entry = entry->next) {
      DtlObj* value = entry->value.get();
      if (value && value->tag() == DtlProcedureTag && value->procEnvObj() == frame &&
          value->refcnt() == 1) {
        ++count;
      }
    }
  }
  return count;
}

int EnvLocalProcRefcnt(DtlObjPtr const& frame) {
  return EnvLocalProcRefcnt(frame.get());
}

// ---- special forms ---------------------------------------------------------------------

DtlObjPtr DtlQuote(DtlObjPtr const& args, DtlObjPtr const&) {
  trace("QUOTE", args);
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("Wrong number of args to quote");
  return DtcCar(args);
}

DtlObjPtr DtlSetq(DtlObjPtr const& args, DtlObjPtr const& env) {
  trace("SETQ", args);
  int count = DtcLength(args);
  if (count > 1 && DtcCar(args)->tag() == DtlConsTag) {
    // (define (name params...) body...)
    DtlObjPtr head = DtcCar(args);
    DtlObjPtr name = DtcCar(head);
    if (DtcBoundp(name, env)) DtcHaltAndCatchFire("Variable is already bound");
    DtlObjPtr procedure = DtlLambda(DtcCons(DtcCdr(head), DtcCdr(args)), env);
    return DtcSet(name, procedure, env);
  }
  if (count != 2) {
    std::string text = "Got " + std::to_string(count) + " args, expected 2\nARGS: ";
    if (DtNotifyLevel >= 0) {
      std::fprintf(stderr, "Lisp Error: %s", text.c_str());
      DtcErrPrint(args);
    }
    DtcHaltAndCatchFire("Wrong number of args to define");
  }
  DtlObjPtr value = DtcEval(DtcCadr(args), env);
  return DtcSet(DtcCar(args), value, env);
}

DtlObjPtr DtlSequence(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcNull(args)) DtcHaltAndCatchFire("Wrong number of args to sequence");
  return DtcEval(allButLast(args, env), env);
}

DtlObjPtr DtlEval(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcLength(args) == 2) return DtcEval(DtcCar(args), DtcCadr(args));
  return DtcEval(DtcCar(args), env);
}

}  // namespace KORRti
