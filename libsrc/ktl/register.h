#ifndef KTL_REGISTER_H
#define KTL_REGISTER_H

#include <ktl/memory.h>

namespace KORRti {

class DtList;

// A host variable bound to a name in a frame, kept in step with the binding by copying before
// and after a load. The frame's parameter list owns it.
class DtcParam {
 public:
  DtcParam(char const* name, DtlObjPtr const& env);
  virtual ~DtcParam();
  DtcParam(DtcParam const&) = delete;
  DtcParam& operator=(DtcParam const&) = delete;

  virtual DtlObjPtr newValObj() = 0;
  virtual void c2lisp() = 0;
  virtual void lisp2c() = 0;
  // The value as KTL text, in a new array the caller frees.
  virtual char* eval2str() = 0;

  // Stores the symbol and brings the binding up to the host value.
  void init(DtlObjPtr const& symbol);
  char const* name() const { return name_; }
  DtlObjPtr const& symbol() const { return symbol_; }
  DtlObjPtr const& env() const { return env_; }

 protected:
  char* name_;
  DtlObjPtr symbol_;
  // The caller's frame handle itself: a counted copy would keep the frame alive through its
  // own parameter list.
  DtlObjPtr const& env_;
};

// Removes each item of the list and destroys its parameter.
void DtcEmptyParamList(DtList* params);

}  // namespace KORRti

#endif
