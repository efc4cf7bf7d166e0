#include <ktl/envKtlReader.h>

#include <ktl/io.h>
#include <ktl/ktlEnvironment.h>
#include <ktl/list.h>
#include <ktl/lstream.h>
#include <ktl/null.h>
#include <ktl/read.h>

#include <cstdio>

namespace KORRti {

namespace {

bool isString(const DtlObjPtr& object) {
  return !object.isNull() && object->tag() == DtlStringTag;
}

bool isSymbol(const DtlObjPtr& object) {
  return !object.isNull() && object->tag() == DtlSymbolTag;
}

// The lines this reader reports name a class that is not in this code. Hosts match them as
// they stand, so they are kept, not corrected.
const char kDataStreamError[] = "DtReaderWriter: error in data stream\n";
const char kErrPrintError[] = "DtReaderWriter: error DtcErrPrint\n";

struct FileCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};

}  // namespace

DtEnvKTLReader::DtEnvKTLReader() = default;

// Outside a read env is null, unless a subclass set it: the reader owns what it points to.
DtEnvKTLReader::~DtEnvKTLReader() {
  delete env;
}

DtEnvironment DtEnvKTLReader::readFile(const DtString& file, bool& ok) {
  ok = false;
  // A tree a subclass left in env is the reader's, and goes now.
  delete env;
  env = nullptr;
  // The tree under construction is this call's until it is handed out; however the read ends,
  // it is handed out or freed, and the reader holds nothing of it.
  std::unique_ptr<DtEnvironment> tree(new DtEnvironment());
  detail::TreeHold hold(env, current);
  env = tree.get();
  current.reset();

  std::unique_ptr<FILE, FileCloser> handle(std::fopen(file, "r"));
  if (!handle) return DtEnvironment(tree->root());
  {
    DtlFileInputStream stream(handle.get());
    DtKtlEnvironment interpreter;
    DtlObjPtr form = DtcRead(&stream, interpreter.env());
    processObject(form);
  }
  ok = true;
  return DtEnvironment(tree->root());
}

void DtEnvKTLReader::processObject(const DtlObjPtr& object) {
  if (!env) return;
  const DtlObjPtr head = DtcCar(object);
  DtlObjPtr rest = DtcCdr(object);
  DtlObjPtr second;
  if (!rest.isNull() && rest->tag() == DtlConsTag) second = DtcCar(rest);

  DtEnvValueSP node = current.lock();
  if (isString(head)) {
    if (node) node->setValue(head->string());
    return;
  }
  if (!isSymbol(head)) {
    std::fputs(kDataStreamError, stderr);
    if (DtcErrPrint(head).isNull()) std::fputs(kErrPrintError, stderr);
    return;
  }
  if (isString(second)) {
    if (node) {
      DtEnvValueSP named = env->addNamedList(head->pname(), node);
      if (named) named->setValue(second->string());
    }
    return;
  }
  // (name type child...) or (name child...): the type is the second element when that is a
  // symbol, the name otherwise.
  const char* type = head->pname();
  if (isSymbol(second)) {
    type = second->pname();
    rest = DtcCdr(rest);
  }
  DtEnvValueSP made;
  if (!node) {
    made = env->root();
    if (DtEnvObject* root = DtEnvObject::castToObject(made)) {
      root->setName(head->pname());
      root->setType(type);
    }
  } else {
    made = env->addObject(head->pname(), type, node);
  }
  current = made;
  while (!DtcNull(rest)) {
    processObject(DtcCar(rest));
    rest = DtcCdr(rest);
  }
  DtEnvValueSP filled = current.lock();
  current = filled ? filled->parent() : DtEnvValueSP();
}

}  // namespace KORRti
