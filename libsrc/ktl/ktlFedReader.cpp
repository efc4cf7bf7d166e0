#include <ktl/ktlFedReader.h>

#include <new>

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

int DtKtlFedReader::readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename,
                                   unsigned int strictChecking, bool, bool skipSwitches) {
  this->target = target;
  strictCheckingMask = strictChecking;
  this->skipSwitches = skipSwitches;
  // A null file leaves the buffer null: readFileIntoBuffer warns, and the text read is empty.
  char* buffer = nullptr;
  unsigned int size = 0;
  readFileIntoBuffer(file, &buffer, &size);
  DtlStringInputStream* stream = new (std::nothrow) DtlStringInputStream(buffer);
  if (!stream) {
    delete[] buffer;
    return 1;
  }
  int result = 2;
  try {
    DtKtlEnvironment environment;
    DtlObjPtr eof = DtcIntern("eof", environment.env());
    DtlObjPtr form = DtcRead(stream, environment.env());
    delete stream;
    stream = nullptr;
    delete[] buffer;
    buffer = nullptr;
    if (DtcEq(form, eof)) {
      lastErrorText = "Unable to find FED in fedfile";
      result = 2;
    } else {
      result = processFed(form);
    }
  } catch (...) {
    lastErrorText = "Unexpected problem reading fed file";
    delete stream;
    result = 2;
  }
  delete[] buffer;
  return result;
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
  if (result != 0) return result;
  const char* base = "none";
  DtString fullName;
  if (parentName && *parentName) {
    base = parentName;
    fullName = parentName;
    fullName += ".";
  }
  fullName += name;
  DtVerbose("Class: %s, Base: %s \n", fullName.c_str(), base);
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
  const char *name = nullptr, *transportText = nullptr, *orderText = nullptr, *space = nullptr;
  DtTransportType transport = DtTransportInvalid;
  DtOrderType order = DtOrderInvalid;
  DtlObjPtr rest;
  int result =
      checkIntClass(form, name, transportText, orderText, transport, order, rest, lastErrorText);
  if (result != 0) return result;
  const char* base = "none";
  DtString fullName;
  if (parentName && *parentName) {
    base = parentName;
    fullName = parentName;
    fullName += ".";
  }
  fullName += name;
  result = takeIntClassSpace(rest, name, space, lastErrorText);
  if (result != 0) return result;
  if (space) {
    DtVerbose("Class: %s, base: %s, transport: %s, order: %s, space: %s\n", fullName.c_str(), base,
              transportText, orderText, space);
  } else {
    DtVerbose("Class: %s, base: %s, transport: %s, order: %s\n", fullName.c_str(), base,
              transportText, orderText);
  }
  if (target) target->addInteractionClass(fullName.c_str(), parentName, transport, order, space);
  return walkClassBody(*this, rest, fullName.c_str(), "parameter",
                       &DtKtlFedReader::processParameter, &DtKtlFedReader::processIntClass,
                       lastErrorText);
}

int DtKtlFedReader::processParameter(DtlObjPtr form, const char* className) {
  return deliverParameter(form, className, target, lastErrorText);
}

}  // namespace KORRti
