#include <ktl/fedReader13.h>

#include <cstring>
#include <memory>
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
  return DtFedFailed;
}

int failWith(DtString& error, const char* text, const char* name) {
  error = text;
  error += name ? name : "";
  return DtFedFailed;
}

// The root class of objects or interactions: the name behind "class" compared without case.
bool rootNamed(const DtlObjPtr& classForm, const char* name) {
  const char* text = atomText(element(classForm, 1));
  return text && DtString(text).caseCompare(name);
}

// The transport and order elements (the third and fourth) of an attribute or a class head. A
// bad transport only warns and goes on with -1; a bad order fails. what ends the messages'
// fixed part, before the member's name.
int takeTransportAndOrder(const DtlObjPtr& form, Member& member, const char* what,
                          DtString& error) {
  member.transportText = atomText(element(form, 2));
  member.orderText = atomText(element(form, 3));
  member.transport = transportOf(member.transportText);
  if (member.transport == DtTransportInvalid) {
    DtWarn << "Invalid TransportType for " << what << member.name;
  }
  member.order = orderOf(member.orderText);
  if (member.order == DtOrderInvalid) {
    error = "Invalid OrderType for ";
    error += what;
    error += member.name;
    return DtFedFailed;
  }
  if (!member.transportText) member.transportText = "";
  return DtFedOk;
}

}  // namespace

int checkFed(const DtlObjPtr& form, DtString& error) {
  if (!DtcListp(form)) {
    DtVerbose << "File is not a fed file\n";
    return DtFedFailed;
  }
  if (length(form) != 6) return DtFedFailed;
  if (!beginsWith(form, "FED")) return fail(error, "Symbol \"FED\" not found");
  return DtFedOk;
}

int checkFederation(const DtlObjPtr& form, DtString& error) {
  if (!beginsWith(form, "Federation")) return fail(error, "Symbol \"Federation\" not found");
  return DtFedOk;
}

int checkVersion(const DtlObjPtr& form, DtString& error) {
  if (!beginsWith(form, "FEDversion")) return fail(error, "Symbol \"FEDversion\" not found");
  return DtFedOk;
}

int checkSpaces(const DtlObjPtr& form, DtString& error) {
  if (!beginsWith(form, "spaces")) return fail(error, "Symbol \"spaces\" not found");
  return DtFedOk;
}

int checkSpace(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (!beginsWith(form, "space")) return fail(error, "Symbol \"space\" not found");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow symbol \"space\"");
  return DtFedOk;
}

int checkDimension(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (length(form) != 2) return DtFedFailed;
  if (!beginsWith(form, "dimension")) return fail(error, "Symbol \"dimension\" not found");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow symbol \"dimension\"");
  return DtFedOk;
}

int checkObjects(const DtlObjPtr& form, DtlObjPtr& classForm, DtString& error) {
  if (length(form) != 2) return DtFedFailed;
  if (!beginsWith(form, "objects")) return fail(error, "Symbol \"objects\" not found");
  classForm = element(form, 1);
  if (!rootNamed(classForm, "objectroot")) return fail(error, "\"ObjectRoot\" not found");
  return DtFedOk;
}

int checkObjClass(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (length(form) < 2) return DtFedFailed;
  if (!beginsWith(form, "class")) return fail(error, "Symbol \"class\" not found");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow symbol \"class\"");
  return DtFedOk;
}

int checkAttribute(const DtlObjPtr& form, Member& attribute, DtString& error) {
  int count = length(form);
  if (count != 4 && count != 5) return DtFedFailed;
  if (!beginsWith(form, "attribute")) return fail(error, "Symbol \"attribute\" expected");
  attribute.name = atomText(element(form, 1));
  if (!attribute.name) return fail(error, "A string must follow attribute");
  int result = takeTransportAndOrder(form, attribute, "Attribute: ", error);
  if (result != DtFedOk) return result;
  attribute.space = nullptr;
  if (count == 5) {
    attribute.space = atomText(element(form, 4));
    if (!attribute.space) return failWith(error, "Invalid space for Attribute: ", attribute.name);
  }
  return DtFedOk;
}

int checkInteractions(const DtlObjPtr& form, DtlObjPtr& classForm, DtString& error) {
  if (length(form) != 2) return DtFedFailed;
  if (!beginsWith(form, "interactions")) return fail(error, "Symbol \"interactions\" not found");
  classForm = element(form, 1);
  if (!rootNamed(classForm, "interactionroot")) {
    return fail(error, "\"InteractionRoot\" not found");
  }
  return DtFedOk;
}

int checkIntClass(const DtlObjPtr& form, Member& head, DtString& error) {
  if (length(form) < 4) return DtFedFailed;
  if (!beginsWith(form, "class")) return fail(error, "Symbol \"class\" not found");
  head.name = atomText(element(form, 1));
  if (!head.name) return fail(error, "A string must follow class");
  int result = takeTransportAndOrder(form, head, "Interaction: ", error);
  if (result != DtFedOk) return result;
  head.rest = tail(form, 4);
  return DtFedOk;
}

int takeIntClassSpace(Member& head, DtString& error) {
  head.space = nullptr;
  DtlObjPtr next = DtFed13Form::head(head.rest);
  if (next.isNull() || DtcNull(next) || DtcListp(next)) return DtFedOk;
  head.space = atomText(next);
  if (!head.space) return failWith(error, "Invalid space for Interaction: ", head.name);
  head.rest = tail(head.rest, 1);
  return DtFedOk;
}

int checkParameter(const DtlObjPtr& form, const char*& name, DtString& error) {
  if (length(form) != 2) return fail(error, "parameter must be followed by a single string");
  if (!beginsWith(form, "parameter")) return fail(error, "Symbol \"parameter\" expected");
  name = atomText(element(form, 1));
  if (!name) return fail(error, "A string must follow parameter");
  return DtFedOk;
}

int deliverSpace(const DtlObjPtr& form, const char*& name, DtFedTarget* target, DtString& error) {
  int result = checkSpace(form, name, error);
  if (result != DtFedOk) return result;
  DtVerbose("Space: %s\n", name);
  if (target) target->addSpace(name);
  return DtFedOk;
}

int deliverDimension(const DtlObjPtr& form, const char* spaceName, DtFedTarget* target,
                     DtString& error) {
  const char* name = nullptr;
  int result = checkDimension(form, name, error);
  if (result != DtFedOk) return result;
  DtVerbose("Dimension: %s\n", name);
  if (target) target->addSpaceDimension(spaceName, name);
  return DtFedOk;
}

int deliverAttribute(const DtlObjPtr& form, const char* className, DtFedTarget* target,
                     DtString& error) {
  Member attribute;
  int result = checkAttribute(form, attribute, error);
  if (result != DtFedOk) return result;
  if (attribute.space) {
    DtVerbose("Attribute: %s, transport: %s, order: %s, space: %s\n", attribute.name,
              attribute.transportText, attribute.orderText, attribute.space);
  } else {
    DtVerbose("Attribute: %s, transport: %s, order: %s\n", attribute.name, attribute.transportText,
              attribute.orderText);
  }
  if (target) {
    target->addSpaceAttribute(className, attribute.name, attribute.transport, attribute.order,
                              attribute.space);
  }
  return DtFedOk;
}

int deliverParameter(const DtlObjPtr& form, const char* className, DtFedTarget* target,
                     DtString& error) {
  const char* name = nullptr;
  int result = checkParameter(form, name, error);
  if (result != DtFedOk) return result;
  DtVerbose("Parameter: %s\n", name);
  if (target) target->addParameter(className, name);
  return DtFedOk;
}

DtString className(const char* parentName, const char* name) {
  DtString fullName;
  if (parentName && *parentName) {
    fullName = parentName;
    fullName += ".";
  }
  fullName += name;
  return fullName;
}

const char* baseName(const char* parentName) {
  return parentName && *parentName ? parentName : "none";
}

int walkFirstForm(const char* text, DtString& error, const std::function<int(DtlObjPtr)>& walk) {
  std::unique_ptr<DtlStringInputStream> stream(new (std::nothrow) DtlStringInputStream(text));
  if (!stream) return DtFedNoFile;
  try {
    DtKtlEnvironment environment;
    DtlObjPtr eof = DtcIntern("eof", environment.env());
    DtlObjPtr form = DtcRead(stream.get(), environment.env());
    stream.reset();
    if (DtcEq(form, eof)) return fail(error, "Unable to find FED in fedfile");
    return walk(form);
  } catch (...) {
    return fail(error, "Unexpected problem reading fed file");
  }
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

// Offers a refused root class again under the replacement name; when the target takes it,
// notes the replacement and says so.
template <typename Add>
bool replaceRoot(DtString& fullName, const char* replacement, Add add, bool& replaced,
                 const char* replacing, const char* attempting) {
  fullName = replacement;
  if (!add(fullName)) return false;
  replaced = true;
  DtVerbose << replacing;
  DtVerbose << attempting;
  return true;
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

int DtFedReader13::readFedFilePtr(FILE* file, DtFedTarget* readTarget, DtFilename,
                                  unsigned int strictChecking, bool, bool skip) {
  target = readTarget;
  strictCheckingMask = strictChecking;
  skipSwitches = skip;
  // The format goes to the target before anything else, so a read needs one.
  if (!readTarget) {
    lastErrorText = "No FED target given";
    return DtFedFailed;
  }
  target->setFomType(DtFomType13);
  if (!file) {
    lastErrorText = "No Fed File Given";
    return DtFedNoFile;
  }
  delete[] currFddData;
  currFddData = nullptr;
  currFddSize = 0;
  readFileIntoBuffer(file, &currFddData, &currFddSize);
  return walkFirstForm(currFddData, lastErrorText,
                       [this](DtlObjPtr form) { return processFed(form); });
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
  if (result != DtFedOk) return result;
  DtString fullName = className(parentName, name);
  bool skip = objectRootReplaced &&
              (DtString(name).caseCompare("RTIprivate") || fullName.findString("Manager") >= 0);
  DtVerbose("%sClass: %s, Base: %s \n", skip ? "Skip " : "", fullName.c_str(),
            baseName(parentName));
  if (skip) DtVerbose << "All subclasses and parameters will also be skipped.\n";
  if (!skip && target) {
    auto add = [&](const DtString& offered) {
      return target->addObjectClass(offered.c_str(), parentName);
    };
    bool added = add(fullName);
    if (!added && !parentName) {
      added = replaceRoot(fullName, "HLAobjectRoot", add, objectRootReplaced,
                          "Replacing ObjectRoot with HLAobjectRoot to match Federation FOM.\n",
                          "Attributes and subclasses will be attempted with replacement root.\n");
    }
    if (!added) {
      if (!startsWithAny(fullName, theObjectExemptions)) return DtFedFailed;
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
  Member head;
  int result = checkIntClass(form, head, lastErrorText);
  if (result != DtFedOk) return result;
  DtString fullName = className(parentName, head.name);
  bool skip = interactionRootReplaced && (DtString(head.name).caseCompare("RTIprivate") ||
                                          fullName.findString("Manager") >= 0);
  result = takeIntClassSpace(head, lastErrorText);
  if (result != DtFedOk) return result;
  const char* skipText = skip ? "Skip " : "";
  if (head.space) {
    DtVerbose("%sClass: %s, base: %s, transport: %s, order: %s, space: %s\n", skipText,
              fullName.c_str(), baseName(parentName), head.transportText, head.orderText,
              head.space);
  } else {
    DtVerbose("%sClass: %s, base: %s, transport: %s, order: %s\n", skipText, fullName.c_str(),
              baseName(parentName), head.transportText, head.orderText);
  }
  if (skip) DtVerbose << "All subclasses and parameters will also be skipped.\n";
  if (!skip && target) {
    auto add = [&](const DtString& offered) {
      return target->addInteractionClass(offered.c_str(), parentName, head.transport, head.order,
                                         head.space);
    };
    bool added = add(fullName);
    if (!added && !parentName) {
      if (head.space) {
        // With a space the retry takes its root from the target's format, flags nothing and
        // writes nothing; a refused class here is always fatal.
        fullName = target->fomType() == DtFomType13 ? "HLAinteractionRoot" : "InteractionRoot";
        added = add(fullName);
      } else {
        added = replaceRoot(
            fullName, "HLAinteractionRoot", add, interactionRootReplaced,
            "Replacing InteractionRoot with HLAinteractionRoot to match Federation FOM.\n",
            "Parameters and subclasses will be attempted with replacement root.\n");
      }
    }
    if (!added) {
      if (head.space || !startsWithAny(fullName, theInteractionExemptions)) return DtFedFailed;
      skip = true;
    }
  }
  if (skip) return result;
  return walkClassBody(*this, head.rest, fullName.c_str(), "parameter",
                       &DtFedReader13::processParameter, &DtFedReader13::processIntClass,
                       lastErrorText);
}

int DtFedReader13::processParameter(DtlObjPtr form, const char* className) {
  return deliverParameter(form, className, target, lastErrorText);
}

}  // namespace KORRti
