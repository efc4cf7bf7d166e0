#include <ktl/register.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

#include <ktl/atom.h>
#include <ktl/float.h>
#include <ktl/integer.h>
#include <ktl/io.h>
#include <ktl/lenv.h>
#include <ktl/lstring.h>
#include <util/dtList.h>
#include <util/notify.h>

namespace KORRti {

namespace {

char* copyOf(char const* text) {
  size_t length = std::strlen(text) + 1;
  char* copy = new char[length];
  std::memcpy(copy, text, length);
  return copy;
}

// The binding of symbol in frame alone, or a null handle.
DtlObjPtr bindingIn(DtlObjPtr const& symbol, DtlObjPtr const& frame) {
  if (symbol.isNull() || symbol->tag() != DtlSymbolTag || !symbol->pname()) return DtlObjPtr();
  if (frame.isNull() || frame->tag() != DtlFrameTag) return DtlObjPtr();
  return frame->frameBindings()->lookup(symbol->pname());
}

// A binding that is there, set, and of the given kind; an equal value of another kind never
// counts, so no field is read as what it is not.
bool holds(DtlObjPtr const& value, DtlTagType tag) {
  return !value.isNull() && !(value == DtlObjPtr::unbound()) && value->tag() == tag;
}

void rebindNew(DtlObjPtr const& symbol, DtlObjPtr const& value, DtlObjPtr const& frame) {
  if (value.isNull()) DtcHaltAndCatchFire("out of memory in DtcResetLisp");
  DtcSet(symbol, value, frame);
}

}  // namespace

// ---- parameters ------------------------------------------------------------------------

DtcParam::DtcParam(char const* name, DtlObjPtr const& env)
    : name_(copyOf(name ? name : "")), env_(env) {}

DtcParam::~DtcParam() {
  delete[] name_;
}

void DtcParam::init(DtlObjPtr const& symbol) {
  symbol_ = symbol;
  c2lisp();
}

DtlObjPtr DtcLispDouble::newValObj() {
  return DtlObjPtr(0.0);
}
int DtcLispDouble::getLisp(double* out) {
  return DtcSetIfBoundp(name_, out, env_);
}
void DtcLispDouble::setLisp(double value) {
  DtcResetLisp(symbol_, value, env_);
}
char* DtcLispDouble::eval2str() {
  double value = 0.0;
  getLisp(&value);
  char* text = new char[30];
  std::snprintf(text, 30, "%f", value);
  return text;
}

DtlObjPtr DtcLispInt::newValObj() {
  return DtlObjPtr(0);
}
int DtcLispInt::getLisp(int* out) {
  return DtcSetIfBoundp(name_, out, env_);
}
void DtcLispInt::setLisp(int value) {
  DtcResetLisp(symbol_, value, env_);
}
char* DtcLispInt::eval2str() {
  int value = 0;
  getLisp(&value);
  char* text = new char[50];
  std::snprintf(text, 50, "%d", value);
  return text;
}

DtlObjPtr DtcLispString::newValObj() {
  return DtlObjPtr("");
}
int DtcLispString::getLisp(char** out) {
  return DtcSetIfBoundp(name_, out, env_);
}
void DtcLispString::setLisp(char const* value) {
  DtcResetLisp(symbol_, value, env_);
}
char* DtcLispString::eval2str() {
  // A missing or wrong binding shows as the empty string.
  char* value = nullptr;
  if (!getLisp(&value) || !value) value = const_cast<char*>("");
  size_t size = std::strlen(value) + 3;
  char* text = new char[size];
  std::snprintf(text, size, "\"%s\"", value);
  return text;
}

void DtcUserFloat::c2lisp() {
  setLisp(static_cast<double>(*variable_));
}
void DtcUserFloat::lisp2c() {
  double value = 0.0;
  if (getLisp(&value)) *variable_ = static_cast<float>(value);
}

void DtcUserDouble::c2lisp() {
  setLisp(*variable_);
}
void DtcUserDouble::lisp2c() {
  getLisp(variable_);
}

void DtcUserInt::c2lisp() {
  setLisp(*variable_);
}
void DtcUserInt::lisp2c() {
  getLisp(variable_);
}

// The wider and the unsigned types keep the low 32 bits, as bit patterns.
void DtcUserLong::c2lisp() {
  setLisp(static_cast<int>(static_cast<uint32_t>(*variable_)));
}
void DtcUserLong::lisp2c() {
  int value = 0;
  if (getLisp(&value)) *variable_ = value;
}

void DtcUserUlong::c2lisp() {
  setLisp(static_cast<int>(static_cast<uint32_t>(*variable_)));
}
void DtcUserUlong::lisp2c() {
  int value = 0;
  if (getLisp(&value)) *variable_ = static_cast<unsigned long>(static_cast<long>(value));
}

void DtcUserUint::c2lisp() {
  setLisp(static_cast<int>(*variable_));
}
void DtcUserUint::lisp2c() {
  int value = 0;
  if (getLisp(&value)) *variable_ = static_cast<unsigned int>(value);
}

void DtcUserShort::c2lisp() {
  setLisp(static_cast<int>(*variable_));
}
void DtcUserShort::lisp2c() {
  int value = 0;
  if (getLisp(&value)) *variable_ = static_cast<short>(static_cast<uint16_t>(value));
}

void DtcUserUshort::c2lisp() {
  setLisp(static_cast<int>(*variable_));
}
void DtcUserUshort::lisp2c() {
  int value = 0;
  if (getLisp(&value)) *variable_ = static_cast<unsigned short>(value);
}

void DtcUserString::c2lisp() {
  setLisp(*variable_);
}
void DtcUserString::lisp2c() {
  char* text = nullptr;
  if (getLisp(&text)) *variable_ = text;
}

void DtcUserDtString::c2lisp() {
  setLisp(variable_->c_str());
}
void DtcUserDtString::lisp2c() {
  // Only a string binding reaches the host; anything else leaves the DtString alone.
  char* text = nullptr;
  if (getLisp(&text) && text) *variable_ = text;
}

// ---- registration ----------------------------------------------------------------------

int DtcRegister(DtcParam* param, DtlObjPtr const& env, DtList*) {
  DtlObjPtr symbol = DtcIntern(param->name(), env);
  if (DtcBoundp(symbol, env)) {
    DtWarn("DtcRegister: %s is already bound\n", param->name());
    delete param;
    return 0;
  }
  param->init(symbol);
  return env->registerVal(param);
}

int DtcRegister(char const* name, float* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserFloat(name, variable, env), env, params);
}
int DtcRegister(char const* name, double* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserDouble(name, variable, env), env, params);
}
int DtcRegister(char const* name, int* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserInt(name, variable, env), env, params);
}
int DtcRegister(char const* name, unsigned long* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserUlong(name, variable, env), env, params);
}
int DtcRegister(char const* name, long* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserLong(name, variable, env), env, params);
}
int DtcRegister(char const* name, unsigned int* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserUint(name, variable, env), env, params);
}
int DtcRegister(char const* name, unsigned short* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserUshort(name, variable, env), env, params);
}
int DtcRegister(char const* name, short* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserShort(name, variable, env), env, params);
}
int DtcRegister(char const* name, char** variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserString(name, variable, env), env, params);
}
int DtcRegister(char const* name, DtString* variable, DtlObjPtr const& env, DtList* params) {
  return DtcRegister(new DtcUserDtString(name, variable, env), env, params);
}

void DtcCToLisp(DtList* params) {
  if (!params) return;
  for (DtListItem* item = params->first(); item && item->data(); item = item->next()) {
    static_cast<DtcParam*>(item->data())->c2lisp();
  }
}

void DtcLispToC(DtList* params) {
  if (!params) return;
  for (DtListItem* item = params->first(); item && item->data(); item = item->next()) {
    static_cast<DtcParam*>(item->data())->lisp2c();
  }
}

void DtcEmptyParamList(DtList* params) {
  if (!params) return;
  while (DtListItem* item = params->first()) {
    DtcParam* param = static_cast<DtcParam*>(item->data());
    params->remove(item);
    delete param;
  }
}

// ---- host values into bindings ---------------------------------------------------------

void DtcResetLisp(DtlObjPtr const& symbol, char const* value, DtlObjPtr const& frame) {
  DtlObjPtr bound = bindingIn(symbol, frame);
  if (holds(bound, DtlStringTag)) {
    char const* held = bound->string();
    if (held == value || (held && value && std::strcmp(held, value) == 0)) return;
  }
  rebindNew(symbol, DtlObjPtr(value), frame);
}

void DtcResetLisp(DtlObjPtr const& symbol, int value, DtlObjPtr const& frame) {
  DtlObjPtr bound = bindingIn(symbol, frame);
  if (holds(bound, DtlFixnumTag) && bound->fixnum() == value) return;
  rebindNew(symbol, DtlObjPtr(value), frame);
}

void DtcResetLisp(DtlObjPtr const& symbol, double value, DtlObjPtr const& frame) {
  DtlObjPtr bound = bindingIn(symbol, frame);
  if (holds(bound, DtlFlonumTag) && bound->flonum() == value) return;
  rebindNew(symbol, DtlObjPtr(value), frame);
}

DtlObjPtr DtlPrintRegistered(DtlObjPtr const&, DtlObjPtr const& env) {
  DtList* params = env.isNull() ? nullptr : env->params();
  if (!params) return DtlObjPtr::nil();
  for (DtListItem* item = params->first(); item; item = item->next()) {
    DtcParam* param = static_cast<DtcParam*>(item->data());
    if (!param) continue;
    char* text = param->eval2str();
    DtInfo("(setqb %s %s)\n", param->name(), text);
    delete[] text;
  }
  return DtlObjPtr::nil();
}

}  // namespace KORRti
