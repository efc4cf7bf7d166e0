#include <ktl/ktlEnvironment.h>

#include <ktl/atom.h>
#include <ktl/envInit.h>
#include <ktl/lenv.h>
#include <ktl/register.h>
#include <ktl/subrs.h>
#include <util/notify.h>
#include <util/system.h>

namespace KORRti {

DtKtlEnvironment::DtKtlEnvironment() : frame(DtlFrameTag), paramList(nullptr) {
  initEnv();
  paramList = frame->params();
  registerVar("DtNotifyLevel", &DtNotifyLevel);
}

DtKtlEnvironment::DtKtlEnvironment(DtKtlEnvironment const&) : paramList(nullptr) {
  DtWarn << "WARNING: Copy constructor not implemented for DtKtlEnvironment\n";
}

DtKtlEnvironment& DtKtlEnvironment::operator=(DtKtlEnvironment const& other) {
  if (this != &other) {
    DtWarn << "WARNING: Assignment operator not implemented for DtKtlEnvironment\n";
  }
  return *this;
}

DtKtlEnvironment::~DtKtlEnvironment() {
  // Forces the root to go, whatever else holds it; the release rule keeps the counts that
  // then run below zero harmless.
  if (frame.isNull()) return;
  frame->setRefcnt(1);
  frame = DtlObjPtr();
}

void DtKtlEnvironment::initEnv() {
  DtcGlobalEnvInit(frame);
  DtcSet(DtcIntern("DEBUG", frame), DtlObjPtr(1), frame);
  DtcSet(DtcIntern("OS", frame), DtlObjPtr(DtOperatingSystem()), frame);
}

DtlObjPtr DtKtlEnvironment::lookup(DtString const& name) {
  if (frame.isNull()) return DtlObjPtr();
  return frame->frameBindings()->lookup(name.c_str());
}

namespace {

// A copy has no frame: everything on it is refused harmlessly.
template <typename T>
int registerOn(DtlObjPtr const& frame, DtList* params, char const* name, T* variable) {
  if (frame.isNull()) return 0;
  return DtcRegister(name, variable, frame, params);
}

}  // namespace

int DtKtlEnvironment::registerVar(char const* name, float* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, double* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, int* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, unsigned long* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, char** variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, DtString* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, long* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, short* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, unsigned short* variable) {
  return registerOn(frame, paramList, name, variable);
}
int DtKtlEnvironment::registerVar(char const* name, unsigned int* variable) {
  return registerOn(frame, paramList, name, variable);
}

DtlObjPtr DtKtlEnvironment::loadLispFile(char* name, int warn) {
  if (frame.isNull()) return DtlObjPtr();
  return DtcLoadLispFile(name, frame, paramList, warn);
}

DtlObjPtr DtKtlEnvironment::loadLispFile(DtlObjPtr const& dirs, char* name, int warn) {
  if (frame.isNull()) return DtlObjPtr();
  return DtcLoadLispFile(dirs, name, frame, paramList, warn);
}

DtlObjPtr DtKtlEnvironment::loadLispFileOrExpr(char* arg, int warn) {
  if (frame.isNull()) return DtlObjPtr();
  return DtcLoadLispFileOrExpr(arg, frame, paramList, warn);
}

DtlObjPtr DtKtlEnvironment::loadLispExpr(char* text, int warn) {
  if (frame.isNull()) return DtlObjPtr();
  return DtcLoadLispExpr(text, frame, paramList, warn);
}

DtlObjPtr DtKtlEnvironment::setParameter(DtString const& name, DtlObjPtr const& value) {
  if (frame.isNull()) return DtlObjPtr();
  return DtcInternPtr(name.c_str(), value, frame);
}

DtlObjPtr DtKtlEnvironment::setFunction(DtString const& name, DtlPrimitive fn) {
  if (frame.isNull()) return DtlObjPtr();
  return DtcInternCompiledC(name.c_str(), fn, frame);
}

DtlObjPtr& DtKtlEnvironment::env() {
  return frame;
}

DtlObjPtr DtKtlEnvironment::setSpecialForm(DtString const& name, DtlPrimitive fn) {
  if (frame.isNull()) return DtlObjPtr();
  return DtcInternSpecialForm(name.c_str(), fn, frame);
}

}  // namespace KORRti
