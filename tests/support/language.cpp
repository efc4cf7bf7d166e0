#include "support/language.h"

#include <cstdio>

namespace ktltest {

using namespace KORRti;

namespace {

struct Primitive {
  char const* name;
  DtlPrimitive code;
};

const Primitive kSpecialForms[] = {
    {"quote", DtlQuote},
    {"define", DtlSetq},
    {"setq", DtlSetq},
    {"lambda", DtlLambda},
    {"let", DtlLet},
    {"sequence", DtlSequence},
    {"if", DtlIf},
    {"cond", DtlCond},
    {"set!", DtlSetqBoundVariable},
    {"setqb", DtlSetqBoundVariable},
};

const Primitive kCompiled[] = {
    {"+", DtlPlus},
    {"plus", DtlPlus},
    {"-", DtlMinus},
    {"*", DtlMultiply},
    {"/", DtlDivide},
    {"abs", DtlAbs},
    {"sin", DtlSin},
    {"cos", DtlCos},
    {"logior", DtlLogIOr},
    {"string-equal", DtlStringEqual},
    {"string-append", DtlStringAppend},
    {"path-cross", DtlPathCross},
    {"=", DtlEqualSign},
    {">", DtlGreater},
    {">=", DtlGreaterEqual},
    {"<", DtlLess},
    {"<=", DtlLessEqual},
    {"and", DtlAnd},
    {"append", DtlAppend},
    {"assoc", DtlAssoc},
    {"assv", DtlAssv},
    {"assq", DtlAssq},
    {"car", DtlLCar},
    {"cdr", DtlLCdr},
    {"cons", DtlLCons},
    {"bindings", DtlEnvDump},
    {"eq?", DtlEq},
    {"equal?", DtlEqual},
    {"eq", DtlEq},
    {"equal", DtlEqual},
    {"eval", DtlEval},
    {"frame-bindings", DtlFrameBindings},
    {"frame-bound?", DtlFrameBound},
    {"frame-parent", DtlFrameParent},
    {"length", DtlLength},
    {"list", DtlList},
    {"list?", DtlListp},
    {"mem", DtlMem},
    {"make-frame", DtlNewFrame},
    {"not", DtlNotOrNull},
    {"null?", DtlNotOrNull},
    {"nullp", DtlNotOrNull},
    {"number?", DtlNumberp},
    {"or", DtlOr},
    {"reverse", DtlReverse},
    {"string?", DtlStringp},
    {"the-frame", DtlTheFrame},
    {"prin1", DtlPrin1},
    {"terpri", DtlTerpri},
    {"format", DtlFormat},
    {"describe", DtlDescribe},
    {"print-registered", DtlPrintRegistered},
};

}  // namespace

DtlObjPtr makeLanguageFrame() {
  DtlObjPtr frame(DtlFrameTag);
  DtcSet(DtlObjPtr::unbound(), DtlObjPtr::unbound(), frame);
  DtcInternPtr("nil", DtlObjPtr::nil(), frame);
  DtcInternPtr("t", DtlObjPtr::t(), frame);
  DtcInternPtr("eof", DtlObjPtr::nil(), frame);
  for (auto const& form : kSpecialForms) DtcInternSpecialForm(form.name, form.code, frame);
  for (auto const& fn : kCompiled) DtcInternCompiledC(fn.name, fn.code, frame);
  return frame;
}

void destroyLanguageFrame(DtlObjPtr& frame) {
  if (frame.isNull()) return;
  frame->setRefcnt(1);
  frame = DtlObjPtr();
}

DtlObjPtr list(std::initializer_list<DtlObjPtr> items) {
  DtlObjPtr result = DtlObjPtr::nil();
  for (auto it = items.end(); it != items.begin();) result = DtcCons(*--it, result);
  return result;
}

DtlObjPtr evalText(std::string const& text, DtlObjPtr const& frame) {
  DtlStringInputStream stream(text.c_str());
  DtlObjPtr eof = DtcIntern("eof", frame);
  DtlObjPtr result = DtlObjPtr::nil();
  for (DtlObjPtr form = DtcRead(&stream, frame); !(form == eof); form = DtcRead(&stream, frame)) {
    result = DtcEval(form, frame);
  }
  return result;
}

std::string printed(DtlObjPtr const& x) {
  FILE* file = std::tmpfile();
  if (!x.isNull()) x->DtcObjFprint(file);
  std::rewind(file);
  std::string text;
  for (int c; (c = std::fgetc(file)) != EOF;) text += static_cast<char>(c);
  std::fclose(file);
  return text;
}

}  // namespace ktltest
