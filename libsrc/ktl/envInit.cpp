#include <ktl/envInit.h>

#include <ktl/alist.h>
#include <ktl/atom.h>
#include <ktl/eval.h>
#include <ktl/io.h>
#include <ktl/lenv.h>
#include <ktl/list.h>
#include <ktl/lstring.h>
#include <ktl/math.h>
#include <ktl/null.h>
#include <ktl/register.h>
#include <ktl/subrs.h>

namespace KORRti {

namespace {

struct Primitive {
  char const* name;
  bool special;
  DtlPrimitive code;
};

// In this order: within a hash bucket the later registration comes first.
const Primitive kPrimitives[] = {
    {"quote", true, DtlQuote},
    {"define", true, DtlSetq},
    {"setq", true, DtlSetq},
    {"lambda", true, DtlLambda},
    {"let", true, DtlLet},
    {"sequence", true, DtlSequence},
    {"if", true, DtlIf},
    {"cond", true, DtlCond},
    {"set!", true, DtlSetqBoundVariable},
    {"setqb", true, DtlSetqBoundVariable},
    {"load", false, DtlLoad},
    {"+", false, DtlPlus},
    {"-", false, DtlMinus},
    {"*", false, DtlMultiply},
    {"/", false, DtlDivide},
    {"=", false, DtlEqualSign},
    {">", false, DtlGreater},
    {">=", false, DtlGreaterEqual},
    {"<", false, DtlLess},
    {"<=", false, DtlLessEqual},
    {"abort", false, DtlAbort},
    {"abs", false, DtlAbs},
    {"and", false, DtlAnd},
    {"append", false, DtlAppend},
    {"assoc", false, DtlAssoc},
    {"assv", false, DtlAssv},
    {"assq", false, DtlAssq},
    {"car", false, DtlLCar},
    {"cdr", false, DtlLCdr},
    {"cons", false, DtlLCons},
    {"cos", false, DtlCos},
    {"describe", false, DtlDescribe},
    {"bindings", false, DtlEnvDump},
    {"eq?", false, DtlEq},
    {"equal?", false, DtlEqual},
    {"eq", false, DtlEq},
    {"equal", false, DtlEqual},
    {"eval", false, DtlEval},
    {"exit", false, DtlExit},
    {"format", false, DtlFormat},
    {"frame-bindings", false, DtlFrameBindings},
    {"frame-bound?", false, DtlFrameBound},
    {"frame-parent", false, DtlFrameParent},
    {"getenv", false, DtlGetenv},
    {"length", false, DtlLength},
    {"list", false, DtlList},
    {"list?", false, DtlListp},
    {"logior", false, DtlLogIOr},
    {"mem", false, DtlMem},
    {"make-frame", false, DtlNewFrame},
    {"not", false, DtlNotOrNull},
    {"null?", false, DtlNotOrNull},
    {"nullp", false, DtlNotOrNull},
    {"number?", false, DtlNumberp},
    {"or", false, DtlOr},
    {"plus", false, DtlPlus},
    {"popen", false, DtlPopen},
    {"prin1", false, DtlPrin1},
    {"putenv", false, DtlPutenv},
    {"reverse", false, DtlReverse},
    {"sin", false, DtlSin},
    {"string-append", false, DtlStringAppend},
    {"string-equal", false, DtlStringEqual},
    {"string?", false, DtlStringp},
    {"the-frame", false, DtlTheFrame},
    {"path-cross", false, DtlPathCross},
    {"system", false, DtlSystem},
    {"terpri", false, DtlTerpri},
    {"print-registered", false, DtlPrintRegistered},
    {"string->number", false, DtlStringToNumber},
    {"number->string", false, DtlNumberToString},
};

}  // namespace

void DtcGlobalEnvInit(DtlObjPtr& env) {
  env->setFrameParent(DtlObjPtr());
  // The marker is bound to itself, so that evaluating *unbound* meets the unbound test.
  DtcSet(DtlObjPtr::unbound(), DtlObjPtr::unbound(), env);
  DtcInternPtr("nil", DtlObjPtr::nil(), env);
  DtcInternPtr("t", DtlObjPtr::t(), env);
  DtcInternPtr("eof", DtlObjPtr::nil(), env);
  for (Primitive const& primitive : kPrimitives) {
    if (primitive.special) {
      DtcInternSpecialForm(primitive.name, primitive.code, env);
    } else {
      DtcInternCompiledC(primitive.name, primitive.code, env);
    }
  }
}

}  // namespace KORRti
