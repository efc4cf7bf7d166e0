#ifndef KTL_EVAL_H
#define KTL_EVAL_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// When non-zero, an outermost DtcEval halts after this many passes of the evaluator's loop, so
/// that a host can bound scripts that may never end. 0, the default, sets no bound.
extern unsigned long DtlEvalStepLimit;

/// Evaluates expr in the frame env. Procedure applications, if and cond run in tail position in
/// a loop; every failure is a DtException, wrapped once per evaluation level it crosses.
/// Evaluation that nests so deep (non-tail recursion) that the thread's stack is nearly used up
/// halts with "Evaluation nested too deep" rather than overflow it.
DtlObjPtr DtcEval(DtlObjPtr const& expr, DtlObjPtr const& env);
/// The values of the expressions of list, evaluated last first.
DtlObjPtr eval_args(DtlObjPtr const& list, DtlObjPtr const& env);
/// The results of bind_args.
enum DtlBindResult : int { DtlBindDone = 0, DtlBindCountMismatch = 1, DtlBindNotASymbol = 2 };
/// Binds params to values in frame; answers a DtlBindResult.
int bind_args(DtlObjPtr const& params, DtlObjPtr const& values, DtlObjPtr const& frame);

/// How many bindings of the frame hold a closure over that same frame that nothing else holds.
int EnvLocalProcRefcnt(DtlObjPtr const& frame);
int EnvLocalProcRefcnt(DtlObj* frame);

/// True when the calling thread has used its stack down to its last reserve.
bool DtcStackNearlyExhausted();

/// True while the evaluator's traces are on: DtLispDebugOn with DtNotifyLevel above 1.
bool DtcTracing();

/// Special forms and the compiled function eval.
DtlObjPtr DtlQuote(DtlObjPtr const& args, DtlObjPtr const& env);
/// define and setq: assign in env alone; (define (name params...) body...) makes a procedure.
DtlObjPtr DtlSetq(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlSequence(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlEval(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
