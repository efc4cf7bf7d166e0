#ifndef KTL_REGISTER_H
#define KTL_REGISTER_H

#include <ktl/memory.h>
#include <util/dtString.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

class DtList;

/// A host variable bound to a name in a frame, kept in step with the binding by copying before
/// and after a load. The frame's parameter list owns it.
class DtcParam {
 public:
  DtcParam(char const* name, DtlObjPtr const& env);
  virtual ~DtcParam();
  DtcParam(DtcParam const&) = delete;
  DtcParam& operator=(DtcParam const&) = delete;

  virtual DtlObjPtr newValObj() = 0;
  virtual void c2lisp() = 0;
  virtual void lisp2c() = 0;
  /// The value as KTL text, in a new array the caller frees.
  virtual char* eval2str() = 0;

  /// Stores the symbol and brings the binding up to the host value.
  void init(DtlObjPtr const& symbol);
  char const* name() const { return name_; }
  DtlObjPtr const& symbol() const { return symbol_; }
  DtlObjPtr const& env() const { return env_; }

 protected:
  char* name_;
  DtlObjPtr symbol_;
  /// The caller's frame handle itself: a counted copy would keep the frame alive through its
  /// own parameter list.
  DtlObjPtr const& env_;
};

/// The Lisp side of a parameter: its kind of binding, read with DtcSetIfBoundp and written with
/// DtcResetLisp.
class DtcLispDouble : public DtcParam {
 public:
  using DtcParam::DtcParam;
  DtlObjPtr newValObj() override;
  char* eval2str() override;
  int getLisp(double* out);
  void setLisp(double value);
};

class DtcLispInt : public DtcParam {
 public:
  using DtcParam::DtcParam;
  DtlObjPtr newValObj() override;
  char* eval2str() override;
  int getLisp(int* out);
  void setLisp(int value);
};

class DtcLispString : public DtcParam {
 public:
  using DtcParam::DtcParam;
  DtlObjPtr newValObj() override;
  char* eval2str() override;
  /// The binding's own text, not a copy.
  int getLisp(char** out);
  void setLisp(char const* value);
};

// The host side: one class per host type, holding the variable's address.
// The parameters name types and classes, which can't stand in parentheses.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define KTL_DECLARE_USER_PARAM(Class, Base, Type)                 \
  class Class : public Base {                                     \
   public:                                                        \
    Class(char const* name, Type* variable, DtlObjPtr const& env) \
        : Base(name, env), variable_(variable) {}                 \
    void c2lisp() override;                                       \
    void lisp2c() override;                                       \
                                                                  \
   private:                                                       \
    Type* variable_;                                              \
  };
// NOLINTEND(bugprone-macro-parentheses)

KTL_DECLARE_USER_PARAM(DtcUserFloat, DtcLispDouble, float)
KTL_DECLARE_USER_PARAM(DtcUserDouble, DtcLispDouble, double)
KTL_DECLARE_USER_PARAM(DtcUserInt, DtcLispInt, int)
KTL_DECLARE_USER_PARAM(DtcUserLong, DtcLispInt, long)
KTL_DECLARE_USER_PARAM(DtcUserUlong, DtcLispInt, unsigned long)
KTL_DECLARE_USER_PARAM(DtcUserUint, DtcLispInt, unsigned int)
KTL_DECLARE_USER_PARAM(DtcUserShort, DtcLispInt, short)
KTL_DECLARE_USER_PARAM(DtcUserUshort, DtcLispInt, unsigned short)
/// The host's pointer gets the binding's own text: valid while the binding keeps that string.
KTL_DECLARE_USER_PARAM(DtcUserString, DtcLispString, char*)
KTL_DECLARE_USER_PARAM(DtcUserDtString, DtcLispString, DtString)

#undef KTL_DECLARE_USER_PARAM

/// Binds a host variable to name in env: 1 if registered; 0 with a warning if env already binds
/// the name. The frame's own parameter list owns the parameter; params is not used.
int DtcRegister(DtcParam* param, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, float* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, double* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, int* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, unsigned long* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, long* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, unsigned int* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, unsigned short* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, short* variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, char** variable, DtlObjPtr const& env, DtList* params);
int DtcRegister(char const* name, DtString* variable, DtlObjPtr const& env, DtList* params);

/// Host values into the bindings (before a load), and bindings into the host (after one).
void DtcCToLisp(DtList* params);
void DtcLispToC(DtList* params);

/// Gives a binding of frame a new value unless it already holds an equal one, so that a host's
/// pointer to a string's text stays valid.
void DtcResetLisp(DtlObjPtr const& symbol, char const* value, DtlObjPtr const& frame);
void DtcResetLisp(DtlObjPtr const& symbol, int value, DtlObjPtr const& frame);
void DtcResetLisp(DtlObjPtr const& symbol, double value, DtlObjPtr const& frame);

/// The primitive print-registered: the frame's parameters as (setqb name value) lines.
DtlObjPtr DtlPrintRegistered(DtlObjPtr const& args, DtlObjPtr const& env);

/// Removes each item of the list and destroys its parameter.
void DtcEmptyParamList(DtList* params);

}  // namespace KORRti

KTL_API_END

#endif
