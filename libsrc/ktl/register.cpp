#include <ktl/register.h>

#include <cstring>

#include <util/dtList.h>

namespace KORRti {

DtcParam::DtcParam(char const* name, DtlObjPtr const& env) : name_(nullptr), env_(env) {
  char const* text = name ? name : "";
  size_t length = std::strlen(text) + 1;
  name_ = new char[length];
  std::memcpy(name_, text, length);
}

DtcParam::~DtcParam() {
  delete[] name_;
}

void DtcParam::init(DtlObjPtr const& symbol) {
  symbol_ = symbol;
  c2lisp();
}

void DtcEmptyParamList(DtList* params) {
  if (!params) return;
  while (DtListItem* item = params->first()) {
    DtcParam* param = static_cast<DtcParam*>(item->data());
    params->remove(item);
    delete param;
  }
}

}  // namespace KORRti
