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
  int result = checkFed(form, lastErrorText);
  if (result == 0) result = processFederation(element(form, 1));
  if (result == 0) result = processVersion(element(form, 2));
  if (result == 0) result = processSpaces(element(form, 3));
  if (result == 0) result = processObjects(element(form, 4));
  if (result == 0) result = processInteractions(element(form, 5));
  return result;
}

int DtKtlFedReader::processFederation(DtlObjPtr form) {
  return checkFederation(form, lastErrorText);
}

int DtKtlFedReader::processVersion(DtlObjPtr form) {
  return checkVersion(form, lastErrorText);
}

int DtKtlFedReader::processSpaces(DtlObjPtr form) {
  int result = checkSpaces(form, lastErrorText);
  for (DtlObjPtr rest = tail(form, 1); result == 0 && DtcListp(rest); rest = rest->cdr()) {
    result = processSpace(rest->car());
  }
  return result;
}

int DtKtlFedReader::processSpace(DtlObjPtr form) {
  const char* name = nullptr;
  int result = checkSpace(form, name, lastErrorText);
  if (result != 0) return result;
  DtVerbose("Space: %s\n", name);
  if (target) target->addSpace(name);
  for (DtlObjPtr rest = tail(form, 2); result == 0 && DtcListp(rest); rest = rest->cdr()) {
    result = processDimension(rest->car(), name);
  }
  return result;
}

int DtKtlFedReader::processDimension(DtlObjPtr form, const char* spaceName) {
  const char* name = nullptr;
  int result = checkDimension(form, name, lastErrorText);
  if (result != 0) return result;
  DtVerbose("Dimension: %s\n", name);
  if (target) target->addSpaceDimension(spaceName, name);
  return 0;
}

int DtKtlFedReader::processObjects(DtlObjPtr form) {
  DtlObjPtr classForm;
  int result = checkObjects(form, classForm, lastErrorText);
  if (result != 0) return result;
  return processObjClass(classForm, nullptr);
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
  for (DtlObjPtr rest = tail(form, 2); result == 0 && DtcListp(rest); rest = rest->cdr()) {
    DtlObjPtr item = rest->car();
    if (beginsWith(item, "attribute")) {
      result = processAttribute(item, fullName.c_str());
    } else if (beginsWith(item, "class")) {
      result = processObjClass(item, fullName.c_str());
    } else {
      lastErrorText = "Unexpected symbol found";
      result = 2;
    }
  }
  return result;
}

int DtKtlFedReader::processAttribute(DtlObjPtr form, const char* className) {
  const char *name = nullptr, *transportText = nullptr, *orderText = nullptr, *space = nullptr;
  DtTransportType transport = DtTransportInvalid;
  DtOrderType order = DtOrderInvalid;
  int result =
      checkAttribute(form, name, transportText, orderText, transport, order, space, lastErrorText);
  if (result != 0) return result;
  if (space) {
    DtVerbose("Attribute: %s, transport: %s, order: %s, space: %s\n", name, transportText,
              orderText, space);
  } else {
    DtVerbose("Attribute: %s, transport: %s, order: %s\n", name, transportText, orderText);
  }
  if (target) target->addSpaceAttribute(className, name, transport, order, space);
  return 0;
}

int DtKtlFedReader::processInteractions(DtlObjPtr form) {
  DtlObjPtr classForm;
  int result = checkInteractions(form, classForm, lastErrorText);
  if (result != 0) return result;
  return processIntClass(classForm, nullptr);
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
  for (; result == 0 && DtcListp(rest); rest = rest->cdr()) {
    DtlObjPtr item = rest->car();
    if (beginsWith(item, "parameter")) {
      result = processParameter(item, fullName.c_str());
    } else if (beginsWith(item, "class")) {
      result = processIntClass(item, fullName.c_str());
    } else {
      lastErrorText = "Unexpected symbol found";
      result = 2;
    }
  }
  return result;
}

int DtKtlFedReader::processParameter(DtlObjPtr form, const char* className) {
  const char* name = nullptr;
  int result = checkParameter(form, name, lastErrorText);
  if (result != 0) return result;
  DtVerbose("Parameter: %s\n", name);
  if (target) target->addParameter(className, name);
  return 0;
}

}  // namespace KORRti
