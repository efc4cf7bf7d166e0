#include <ktl/fedReader13.h>

#include <cstring>
#include <new>

#include <ktl/atom.h>
#include <ktl/ktlEnvironment.h>
#include <ktl/lstream.h>
#include <ktl/null.h>
#include <ktl/read.h>
#include <util/notify.h>

namespace KORRti {

// ---------------------------------------------------------------------------------------------
// The form checks.

namespace DtFed13Form {

const char* atomText(const DtlObjPtr& x) {
  if (x.isNull()) return nullptr;
  if (x->tag() == DtlSymbolTag) return x->pname();
  if (x->tag() == DtlStringTag) return x->string();
  return nullptr;
}

DtlObjPtr head(const DtlObjPtr& form) {
  if (form.isNull() || form->tag() != DtlConsTag) return DtlObjPtr();
  return form->car();
}

int length(const DtlObjPtr& form) {
  int count = 0;
  DtlObj* cell = form.get();
  for (; cell && cell->tag() == DtlConsTag; cell = cell->cdrObj()) ++count;
  if (cell && cell->tag() != DtlNilTag) return -1;
  if (!cell && count == 0) return -1;
  return count;
}

DtlObjPtr tail(const DtlObjPtr& form, int count) {
  DtlObj* cell = form.get();
  for (int i = 0; i < count && cell && cell->tag() == DtlConsTag; ++i) cell = cell->cdrObj();
  return DtlObjPtr(cell);
}

DtlObjPtr element(const DtlObjPtr& form, int index) {
  return head(tail(form, index));
}

bool beginsWith(const DtlObjPtr& form, const char* keyword) {
  DtlObjPtr first = head(form);
  return !first.isNull() && first->tag() == DtlSymbolTag && first->pname() &&
         std::strcmp(first->pname(), keyword) == 0;
}

DtTransportType transportOf(const char* text) {
  if (!text) return DtTransportInvalid;
  DtString value(text);
  if (value.caseCompare("best_effort")) return DtTransportBestEffort;
  if (value.caseCompare("reliable")) return DtTransportReliable;
  return DtTransportInvalid;
}

DtOrderType orderOf(const char* text) {
  if (!text) return DtOrderInvalid;
  DtString value(text);
  if (value.caseCompare("receive")) return DtOrderReceive;
  if (value.caseCompare("timestamp")) return DtOrderTimestamp;
  return DtOrderInvalid;
}

namespace {

int fail(DtString& error, const char* text) {
  error = text;
  return 2;
}

int failWith(DtString& error, const char* text, const char* name) {
  error = text;
  error += name ? name : "";
  return 2;
}

// The root class of objects or interactions: the name behind "class" compared without case.
bool rootNamed(const DtlObjPtr& classForm, const char* name) {
  const char* text = atomText(element(classForm, 1));
  return text && DtString(text).caseCompare(name);
}

}  // namespace

int checkFed(const DtlObjPtr& form, DtString& error) {
  if (!DtcListp(form)) {
    DtVerbose << "File is not a fed file\n";
    return 2;
  }
  if (length(form) != 6) return 2;
  if (!beginsWith(form, "FED")) return fail(error, "Symbol \"FED\" not found");
  return 0;
}

int checkFederation(const DtlObjPtr& form, DtString& error) {
  if (!beginsWith(form, "Federation")) return fail(error, "Symbol \"Federation\" not found");
  return 0;
}

int checkVersion(const DtlObjPtr& form, DtString& error) {
  if (!beginsWith(form, "FEDversion")) return fail(error, "Symbol \"FEDversion\" not found");
  return 0;
}

int checkSpaces(const DtlObjPtr& form, DtString& error) {
  if (!beginsWith(form, "spaces")) return fail(error, "Symbol \"spaces\" not found");
  return 0;
}

int checkSpace(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (!beginsWith(form, "space")) return fail(error, "Symbol \"space\" not found");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow symbol \"space\"");
  return 0;
}

int checkDimension(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (length(form) != 2) return 2;
  if (!beginsWith(form, "dimension")) return fail(error, "Symbol \"dimension\" not found");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow symbol \"dimension\"");
  return 0;
}

int checkObjects(const DtlObjPtr& form, DtlObjPtr& classForm, DtString& error) {
  if (length(form) != 2) return 2;
  if (!beginsWith(form, "objects")) return fail(error, "Symbol \"objects\" not found");
  classForm = element(form, 1);
  if (!rootNamed(classForm, "objectroot")) return fail(error, "\"ObjectRoot\" not found");
  return 0;
}

int checkObjClass(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (length(form) < 2) return 2;
  if (!beginsWith(form, "class")) return fail(error, "Symbol \"class\" not found");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow symbol \"class\"");
  return 0;
}

int checkAttribute(const DtlObjPtr& form, const char*& name, const char*& transportText,
                   const char*& orderText, DtTransportType& transport, DtOrderType& order,
                   const char*& space, DtString& error) {
  int count = length(form);
  if (count != 4 && count != 5) return 2;
  if (!beginsWith(form, "attribute")) return fail(error, "Symbol \"attribute\" expected");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow attribute");
  transportText = atomText(element(form, 2));
  orderText = atomText(element(form, 3));
  transport = transportOf(transportText);
  if (transport == DtTransportInvalid) {
    DtWarn << "Invalid TransportType for Attribute: " << name;
  }
  order = orderOf(orderText);
  if (order == DtOrderInvalid) return failWith(error, "Invalid OrderType for Attribute: ", name);
  space = nullptr;
  if (count == 5) {
    space = atomText(element(form, 4));
    if (!space) return failWith(error, "Invalid space for Attribute: ", name);
  }
  if (!transportText) transportText = "";
  return 0;
}

int checkInteractions(const DtlObjPtr& form, DtlObjPtr& classForm, DtString& error) {
  if (length(form) != 2) return 2;
  if (!beginsWith(form, "interactions")) return fail(error, "Symbol \"interactions\" not found");
  classForm = element(form, 1);
  if (!rootNamed(classForm, "interactionroot")) {
    return fail(error, "\"InteractionRoot\" not found");
  }
  return 0;
}

int checkIntClass(const DtlObjPtr& form, const char*& name, const char*& transportText,
                  const char*& orderText, DtTransportType& transport, DtOrderType& order,
                  DtlObjPtr& rest, DtString& error) {
  if (length(form) < 4) return 2;
  if (!beginsWith(form, "class")) return fail(error, "Symbol \"class\" not found");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow class");
  transportText = atomText(element(form, 2));
  orderText = atomText(element(form, 3));
  transport = transportOf(transportText);
  if (transport == DtTransportInvalid) {
    DtWarn << "Invalid TransportType for Interaction: " << name;
  }
  order = orderOf(orderText);
  if (order == DtOrderInvalid) {
    return failWith(error, "Invalid OrderType for Interaction: ", name);
  }
  if (!transportText) transportText = "";
  rest = tail(form, 4);
  return 0;
}

int takeIntClassSpace(DtlObjPtr& rest, const char* className, const char*& space, DtString& error) {
  space = nullptr;
  DtlObjPtr next = head(rest);
  if (next.isNull() || DtcNull(next) || DtcListp(next)) return 0;
  space = atomText(next);
  if (!space) return failWith(error, "Invalid space for Interaction: ", className);
  rest = tail(rest, 1);
  return 0;
}

int checkParameter(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (length(form) != 2) return fail(error, "parameter must be followed by a single string");
  if (!beginsWith(form, "parameter")) return fail(error, "Symbol \"parameter\" expected");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow parameter");
  return 0;
}

int deliverSpace(const DtlObjPtr& form, const char*& name, DtFedTarget* target, DtString& error) {
  int result = checkSpace(form, name, error);
  if (result != 0) return result;
  DtVerbose("Space: %s\n", name);
  if (target) target->addSpace(name);
  return 0;
}

int deliverDimension(const DtlObjPtr& form, const char* spaceName, DtFedTarget* target,
                     DtString& error) {
  const char* name = nullptr;
  int result = checkDimension(form, name, error);
  if (result != 0) return result;
  DtVerbose("Dimension: %s\n", name);
  if (target) target->addSpaceDimension(spaceName, name);
  return 0;
}

int deliverAttribute(const DtlObjPtr& form, const char* className, DtFedTarget* target,
                     DtString& error) {
  const char *name = nullptr, *transportText = nullptr, *orderText = nullptr, *space = nullptr;
  DtTransportType transport = DtTransportInvalid;
  DtOrderType order = DtOrderInvalid;
  int result = checkAttribute(form, name, transportText, orderText, transport, order, space, error);
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

int deliverParameter(const DtlObjPtr& form, const char* className, DtFedTarget* target,
                     DtString& error) {
  const char* name = nullptr;
  int result = checkParameter(form, name, error);
  if (result != 0) return result;
  DtVerbose("Parameter: %s\n", name);
  if (target) target->addParameter(className, name);
  return 0;
}

}  // namespace DtFed13Form

using namespace DtFed13Form;

namespace {

// "ObjectRoot.Manager" and the like: the classes that a replaced root may refuse.
bool startsWithAny(const DtString& name, const char* const* prefixes) {
  for (; *prefixes; ++prefixes) {
    if (name.findString(*prefixes) == 0) return true;
  }
  return false;
}

const char* const theObjectExemptions[] = {"HLAobjectRoot.HLAmanager", "ObjectRoot.Manager",
                                           "ObjectRoot.RTIprivate", nullptr};
const char* const theInteractionExemptions[] = {"HLAinteractionRoot.HLAmanager",
                                                "InteractionRoot.Manager",
                                                "InteractionRoot.RTIprivate", nullptr};

}  // namespace

// ---------------------------------------------------------------------------------------------
// DtFedReader13

DtFedReader13::DtFedReader13() : objectRootReplaced(false), interactionRootReplaced(false) {
  target = nullptr;
  currFddData = nullptr;
  expectedType = DtFomType13;
}

DtFedReader13::~DtFedReader13() = default;

int DtFedReader13::readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename,
                                  unsigned int strictChecking, bool, bool skipSwitches) {
  this->target = target;
  strictCheckingMask = strictChecking;
  this->skipSwitches = skipSwitches;
  // The format goes to the target before anything else, so a read needs one.
  if (!target) {
    lastErrorText = "No FED target given";
    return 2;
  }
  target->setFomType(DtFomType13);
  if (!file) {
    lastErrorText = "No Fed File Given";
    return 1;
  }
  delete[] currFddData;
  currFddData = nullptr;
  currFddSize = 0;
  readFileIntoBuffer(file, &currFddData, &currFddSize);
  DtlStringInputStream* stream = new (std::nothrow) DtlStringInputStream(currFddData);
  if (!stream) return 1;
  int result = 2;
  try {
    DtKtlEnvironment environment;
    DtlObjPtr eof = DtcIntern("eof", environment.env());
    DtlObjPtr form = DtcRead(stream, environment.env());
    delete stream;
    stream = nullptr;
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
  return result;
}

int DtFedReader13::processFed(DtlObjPtr form) {
  return walkFed(*this, form, lastErrorText);
}

int DtFedReader13::processFederation(DtlObjPtr form) {
  return checkFederation(form, lastErrorText);
}

int DtFedReader13::processVersion(DtlObjPtr form) {
  return checkVersion(form, lastErrorText);
}

int DtFedReader13::processSpaces(DtlObjPtr form) {
  return walkSpaces(*this, form, lastErrorText);
}

int DtFedReader13::processSpace(DtlObjPtr form) {
  return walkSpace(*this, form, target, lastErrorText);
}

int DtFedReader13::processDimension(DtlObjPtr form, const char* spaceName) {
  return deliverDimension(form, spaceName, target, lastErrorText);
}

int DtFedReader13::processObjects(DtlObjPtr form) {
  return walkObjects(*this, form, lastErrorText);
}

int DtFedReader13::processObjClass(DtlObjPtr form, const char* parentName) {
  const char* name = nullptr;
  int result = checkObjClass(form, name, lastErrorText);
  if (result != 0) return result;
  DtString base("none");
  DtString fullName;
  if (parentName && *parentName) {
    base = parentName;
    fullName = parentName;
    fullName += ".";
  }
  fullName += name;
  bool skip = objectRootReplaced &&
              (DtString(name).caseCompare("RTIprivate") || fullName.findString("Manager") >= 0);
  DtVerbose("%sClass: %s, Base: %s \n", skip ? "Skip " : "", fullName.c_str(), base.c_str());
  if (skip) DtVerbose << "All subclasses and parameters will also be skipped.\n";
  if (!skip && target) {
    bool added = target->addObjectClass(fullName.c_str(), parentName);
    if (!added && !parentName) {
      fullName = "HLAobjectRoot";
      added = target->addObjectClass(fullName.c_str(), parentName);
      if (added) {
        objectRootReplaced = true;
        DtVerbose << "Replacing ObjectRoot with HLAobjectRoot to match Federation FOM.\n";
        DtVerbose << "Attributes and subclasses will be attempted with replacement root.\n";
      }
    }
    if (!added) {
      if (!startsWithAny(fullName, theObjectExemptions)) return 2;
      skip = true;
    }
  }
  // A skipped class is walked without effect, so its elements are not looked at.
  if (skip) return result;
  return walkClassBody(*this, tail(form, 2), fullName.c_str(), "attribute",
                       &DtFedReader13::processAttribute, &DtFedReader13::processObjClass,
                       lastErrorText);
}

int DtFedReader13::processAttribute(DtlObjPtr form, const char* className) {
  return deliverAttribute(form, className, target, lastErrorText);
}

int DtFedReader13::processInteractions(DtlObjPtr form) {
  return walkInteractions(*this, form, lastErrorText);
}

int DtFedReader13::processIntClass(DtlObjPtr form, const char* parentName) {
  const char *name = nullptr, *transportText = nullptr, *orderText = nullptr, *space = nullptr;
  DtTransportType transport = DtTransportInvalid;
  DtOrderType order = DtOrderInvalid;
  DtlObjPtr rest;
  int result =
      checkIntClass(form, name, transportText, orderText, transport, order, rest, lastErrorText);
  if (result != 0) return result;
  DtString base("none");
  DtString fullName;
  if (parentName && *parentName) {
    base = parentName;
    fullName = parentName;
    fullName += ".";
  }
  fullName += name;
  bool skip = interactionRootReplaced &&
              (DtString(name).caseCompare("RTIprivate") || fullName.findString("Manager") >= 0);
  result = takeIntClassSpace(rest, name, space, lastErrorText);
  if (result != 0) return result;
  const char* skipText = skip ? "Skip " : "";
  if (!space) {
    DtVerbose("%sClass: %s, base: %s, transport: %s, order: %s\n", skipText, fullName.c_str(),
              base.c_str(), transportText, orderText);
    if (skip) DtVerbose << "All subclasses and parameters will also be skipped.\n";
    if (!skip && target) {
      bool added =
          target->addInteractionClass(fullName.c_str(), parentName, transport, order, nullptr);
      if (!added && !parentName) {
        fullName = "HLAinteractionRoot";
        added =
            target->addInteractionClass(fullName.c_str(), parentName, transport, order, nullptr);
        if (added) {
          interactionRootReplaced = true;
          DtVerbose << "Replacing InteractionRoot with HLAinteractionRoot to match Federation "
                       "FOM.\n";
          DtVerbose << "Parameters and subclasses will be attempted with replacement root.\n";
        }
      }
      if (!added) {
        if (!startsWithAny(fullName, theInteractionExemptions)) return 2;
        skip = true;
      }
    }
  } else {
    DtVerbose("%sClass: %s, base: %s, transport: %s, order: %s, space: %s\n", skipText,
              fullName.c_str(), base.c_str(), transportText, orderText, space);
    if (skip) DtVerbose << "All subclasses and parameters will also be skipped.\n";
    if (!skip && target) {
      bool added =
          target->addInteractionClass(fullName.c_str(), parentName, transport, order, space);
      if (!added && !parentName) {
        // With a space the retry takes its root from the target's format, flags nothing and
        // writes nothing; a refused class here is always fatal.
        fullName = target->fomType() == DtFomType13 ? "HLAinteractionRoot" : "InteractionRoot";
        added = target->addInteractionClass(fullName.c_str(), parentName, transport, order, space);
      }
      if (!added) return 2;
    }
  }
  if (skip) return result;
  return walkClassBody(*this, rest, fullName.c_str(), "parameter", &DtFedReader13::processParameter,
                       &DtFedReader13::processIntClass, lastErrorText);
}

int DtFedReader13::processParameter(DtlObjPtr form, const char* className) {
  return deliverParameter(form, className, target, lastErrorText);
}

}  // namespace KORRti
