#include <ktl/ktlFedReader.h>

#include <memory>

#include <ktl/atom.h>
#include <ktl/fedReader13.h>
#include <ktl/ktlEnvironment.h>
#include <ktl/lstream.h>
#include <ktl/null.h>
#include <ktl/read.h>
#include <util/notify.h>

namespace KORRti {

using namespace DtFed13Form;

DtKtlFedReader::DtKtlFedReader() : target(nullptr) {
  expectedType = DtFomType13;
}

DtKtlFedReader::~DtKtlFedReader() = default;

int DtKtlFedReader::readFedFilePtr(FILE* file, DtFedTarget* readTarget, DtFilename,
                                   unsigned int strictChecking, bool, bool skip) {
  target = readTarget;
  strictCheckingMask = strictChecking;
  skipSwitches = skip;
  // A null file leaves the buffer null: readFileIntoBuffer warns, and the text read is empty.
  // The text is not kept after the read.
  char* buffer = nullptr;
  unsigned int size = 0;
  readFileIntoBuffer(file, &buffer, &size);
  std::unique_ptr<char[]> text(buffer);
  return walkFirstForm(text.get(), lastErrorText,
                       [this](DtlObjPtr form) { return processFed(form); });
}

int DtKtlFedReader::processFed(DtlObjPtr form) {
  return walkFed(*this, form, lastErrorText);
}

int DtKtlFedReader::processFederation(DtlObjPtr form) {
  return checkFederation(form, lastErrorText);
}

int DtKtlFedReader::processVersion(DtlObjPtr form) {
  return checkVersion(form, lastErrorText);
}

int DtKtlFedReader::processSpaces(DtlObjPtr form) {
  return walkSpaces(*this, form, lastErrorText);
}

int DtKtlFedReader::processSpace(DtlObjPtr form) {
  return walkSpace(*this, form, target, lastErrorText);
}

int DtKtlFedReader::processDimension(DtlObjPtr form, const char* spaceName) {
  return deliverDimension(form, spaceName, target, lastErrorText);
}

int DtKtlFedReader::processObjects(DtlObjPtr form) {
  return walkObjects(*this, form, lastErrorText);
}

int DtKtlFedReader::processObjClass(DtlObjPtr form, const char* parentName) {
  const char* name = nullptr;
  int result = checkObjClass(form, name, lastErrorText);
  if (result != DtFedOk) return result;
  DtString fullName = className(parentName, name);
  DtVerbose("Class: %s, Base: %s \n", fullName.c_str(), baseName(parentName));
  if (target) target->addObjectClass(fullName.c_str(), parentName);
  return walkClassBody(*this, tail(form, 2), fullName.c_str(), "attribute",
                       &DtKtlFedReader::processAttribute, &DtKtlFedReader::processObjClass,
                       lastErrorText);
}

int DtKtlFedReader::processAttribute(DtlObjPtr form, const char* className) {
  return deliverAttribute(form, className, target, lastErrorText);
}

int DtKtlFedReader::processInteractions(DtlObjPtr form) {
  return walkInteractions(*this, form, lastErrorText);
}

int DtKtlFedReader::processIntClass(DtlObjPtr form, const char* parentName) {
  Member head;
  int result = checkIntClass(form, head, lastErrorText);
  if (result != DtFedOk) return result;
  DtString fullName = className(parentName, head.name);
  result = takeIntClassSpace(head, lastErrorText);
  if (result != DtFedOk) return result;
  if (head.space) {
    DtVerbose("Class: %s, base: %s, transport: %s, order: %s, space: %s\n", fullName.c_str(),
              baseName(parentName), head.transportText, head.orderText, head.space);
  } else {
    DtVerbose("Class: %s, base: %s, transport: %s, order: %s\n", fullName.c_str(),
              baseName(parentName), head.transportText, head.orderText);
  }
  if (target) {
    target->addInteractionClass(fullName.c_str(), parentName, head.transport, head.order,
                                head.space);
  }
  return walkClassBody(*this, head.rest, fullName.c_str(), "parameter",
                       &DtKtlFedReader::processParameter, &DtKtlFedReader::processIntClass,
                       lastErrorText);
}

int DtKtlFedReader::processParameter(DtlObjPtr form, const char* className) {
  return deliverParameter(form, className, target, lastErrorText);
}

}  // namespace KORRti
