#ifndef KTL_FEDREADER13_H
#define KTL_FEDREADER13_H

#include <util/export.h>
#include <functional>

#include <ktl/fedReader.h>
#include <ktl/memory.h>
#include <ktl/null.h>

KTL_API_BEGIN

namespace KORRti {

/// Reader of the HLA 1.3 FED text form, one Lisp list:
///
///   (FED (Federation x) (FEDversion v)
///     (spaces (space S (dimension D) ...) ...)
///     (objects (class ObjectRoot (attribute a reliable timestamp [S]) (class C ...) ...))
///     (interactions (class InteractionRoot best_effort receive [S] (parameter p) ...)))
///
/// The text is read with DtcRead and walked, never evaluated. Classes reach the target with
/// their full dotted names, parents before children, in file order. A file rooted in ObjectRoot
/// (InteractionRoot) loads into a target that only takes HLAobjectRoot (HLAinteractionRoot):
/// the root is replaced and the management classes of the file are skipped.
///
/// Every process... operation answers 0 to go on or 2 to stop; each can be replaced by a
/// subclass, since the walkers call each other through these slots.
class DtFedReader13 : public DtFedReader {
 public:
  /// A reader for format 1 with no target and no text.
  DtFedReader13();
  ~DtFedReader13() override;  ///< Frees the text of the last file read, unless it was taken.

  /// Reads the whole text of file into currFddData, where it stays, and walks its first form.
  /// A read needs a target: without one it answers 2 ("No FED target given"); the target is
  /// told format 1 before anything else. A null file answers 1. fileName and validate are not
  /// used.
  int readFedFilePtr(FILE* file, DtFedTarget* target, DtFilename fileName,
                     unsigned int strictChecking, bool validate, bool skipSwitches) override;

  /// The walk, one operation for each kind of form: processFed takes the whole file, the others
  /// one element of it. className and parentName are full dotted names (parentName is null at
  /// the root) and spaceName is the name of the space. Each checks its form, writes its verbose
  /// line, tells the target and walks what the form holds through these same slots. A wrong
  /// form answers 2, mostly with a message in lastError(); a class the target refuses answers 2
  /// with no message of its own (see the class comment for the roots and the skipped classes).
  /// @{
  virtual int processFed(DtlObjPtr form);
  virtual int processFederation(DtlObjPtr form);
  virtual int processVersion(DtlObjPtr form);
  virtual int processSpaces(DtlObjPtr form);
  virtual int processSpace(DtlObjPtr form);
  virtual int processDimension(DtlObjPtr form, const char* spaceName);
  virtual int processObjects(DtlObjPtr form);
  virtual int processObjClass(DtlObjPtr form, const char* parentName);
  virtual int processAttribute(DtlObjPtr form, const char* className);
  virtual int processInteractions(DtlObjPtr form);
  virtual int processIntClass(DtlObjPtr form, const char* parentName);
  virtual int processParameter(DtlObjPtr form, const char* className);
  /// @}

 protected:
  /// The target refused ObjectRoot and took HLAobjectRoot. From then on RTIprivate and every
  /// class whose full name holds "Manager" are skipped. Never reset: it holds for later reads.
  bool objectRootReplaced;
  /// The same for InteractionRoot and HLAinteractionRoot.
  bool interactionRootReplaced;
};

/// The form checks that both readers of the 1.3 text share. Each answers 0 when the form
/// holds and 2 when it doesn't, with the message, if the form has one, in error.
namespace DtFed13Form {

/// The text of a name: a symbol's or a string's; null for anything else.
const char* atomText(const DtlObjPtr& x);
/// The first element of a list, or a null handle for anything that isn't one.
DtlObjPtr head(const DtlObjPtr& form);
/// The number of elements of a proper list; -1 for anything else.
int length(const DtlObjPtr& form);
/// The element at index, or a null handle past the end.
DtlObjPtr element(const DtlObjPtr& form, int index);
/// The list behind its first count elements.
DtlObjPtr tail(const DtlObjPtr& form, int count);
/// The form begins with the symbol keyword, compared with case.
bool beginsWith(const DtlObjPtr& form, const char* keyword);
/// best_effort 0, reliable 1, without regard to case; anything else -1.
DtTransportType transportOf(const char* text);
/// receive 0, timestamp 1, without regard to case; anything else -1.
DtOrderType orderOf(const char* text);

/// The whole form of the file: a list of six beginning with FED.
int checkFed(const DtlObjPtr& form, DtString& error);
/// A form that begins with Federation, FEDversion or spaces; the rest of it is not looked at.
/// @{
int checkFederation(const DtlObjPtr& form, DtString& error);
int checkVersion(const DtlObjPtr& form, DtString& error);
int checkSpaces(const DtlObjPtr& form, DtString& error);
/// @}
/// A space form: space and its name. Sets name.
int checkSpace(const DtlObjPtr& form, const char*& name, DtString& error);
/// A list of two: dimension and its name. Sets name.
int checkDimension(const DtlObjPtr& form, const char*& name, DtString& error);
/// A list of two: objects and the root class form, named ObjectRoot in any case. Sets the root
/// class form.
int checkObjects(const DtlObjPtr& form, DtlObjPtr& classForm, DtString& error);
/// A class form of two elements or more: class and its name. Sets name.
int checkObjClass(const DtlObjPtr& form, const char*& name, DtString& error);

/// What an attribute form, or the head of an interaction class form, holds. The texts point into
/// the form and live as long as it does.
struct Member {
  /// The attribute's or the class's own name, without its parents.
  const char* name = nullptr;
  const char* transportText = nullptr;  ///< as written; "" when it is not a name
  const char* orderText = nullptr;      ///< as written
  /// The transport; -1, with a warning, when transportText is no known name.
  DtTransportType transport = DtTransportInvalid;
  /// The order; an order that is no known name fails the check.
  DtOrderType order = DtOrderInvalid;
  const char* space = nullptr;  ///< null when there is none
  DtlObjPtr rest;               ///< an interaction class's elements behind its head
};

/// Fills attribute from the form. Writes the transport warning.
int checkAttribute(const DtlObjPtr& form, Member& attribute, DtString& error);
/// A list of two: interactions and the root class form, named InteractionRoot in any case.
/// Sets the root class form.
int checkInteractions(const DtlObjPtr& form, DtlObjPtr& classForm, DtString& error);
/// Fills head from the form, all but its space; rest is what stands behind the order element.
int checkIntClass(const DtlObjPtr& form, Member& head, DtString& error);
/// The space of an interaction class, if its rest begins with one: sets head.space and moves
/// head.rest past it. A number or other atom that has no name fails.
int takeIntClassSpace(Member& head, DtString& error);

/// The full dotted name of a class under parentName (null or empty at the root).
DtString className(const char* parentName, const char* name);
/// The parent of a class as the verbose lines show it: "none" at the root.
const char* baseName(const char* parentName);

/// Reads the first form of text in a fresh environment and hands it to walk, which answers the
/// read's result. 1 when no stream can be made for the text; 2 with "Unable to find FED in
/// fedfile" for text without a form, and with "Unexpected problem reading fed file" for any
/// exception of the read or the walk.
int walkFirstForm(const char* text, DtString& error, const std::function<int(DtlObjPtr)>& walk);
/// A list of two: parameter and its name. Sets name.
int checkParameter(const DtlObjPtr& form, const char*& name, DtString& error);

/// The steps both readers take alike. The walkers call the reader's own process... slots, so a
/// subclass that replaces one form is called from either reader; the leaves check a form, write
/// its verbose line and tell the target, if there is one.
/// @{
int deliverDimension(const DtlObjPtr& form, const char* spaceName, DtFedTarget* target,
                     DtString& error);
int deliverAttribute(const DtlObjPtr& form, const char* className, DtFedTarget* target,
                     DtString& error);
int deliverParameter(const DtlObjPtr& form, const char* className, DtFedTarget* target,
                     DtString& error);
/// @}
/// Checks the space form and tells the target its name; sets name for the dimensions.
int deliverSpace(const DtlObjPtr& form, const char*& name, DtFedTarget* target, DtString& error);

/// The whole file: federation, version, spaces, objects and interactions in file order,
/// stopping at the first failure.
template <class Reader>
int walkFed(Reader& reader, const DtlObjPtr& form, DtString& error) {
  int result = checkFed(form, error);
  if (result == DtFedOk) result = reader.processFederation(element(form, 1));
  if (result == DtFedOk) result = reader.processVersion(element(form, 2));
  if (result == DtFedOk) result = reader.processSpaces(element(form, 3));
  if (result == DtFedOk) result = reader.processObjects(element(form, 4));
  if (result == DtFedOk) result = reader.processInteractions(element(form, 5));
  return result;
}

/// The spaces form: each space in it through the reader's processSpace.
template <class Reader>
int walkSpaces(Reader& reader, const DtlObjPtr& form, DtString& error) {
  int result = checkSpaces(form, error);
  for (DtlObjPtr rest = tail(form, 1); result == DtFedOk && DtcListp(rest); rest = rest->cdr()) {
    result = reader.processSpace(rest->car());
  }
  return result;
}

/// One space: tells the target its name, then each dimension through the reader's
/// processDimension.
template <class Reader>
int walkSpace(Reader& reader, const DtlObjPtr& form, DtFedTarget* target, DtString& error) {
  const char* name = nullptr;
  int result = deliverSpace(form, name, target, error);
  for (DtlObjPtr rest = tail(form, 2); result == DtFedOk && DtcListp(rest); rest = rest->cdr()) {
    result = reader.processDimension(rest->car(), name);
  }
  return result;
}

/// The objects form: its root class through the reader's processObjClass, with no parent.
template <class Reader>
int walkObjects(Reader& reader, const DtlObjPtr& form, DtString& error) {
  DtlObjPtr classForm;
  int result = checkObjects(form, classForm, error);
  if (result != DtFedOk) return result;
  return reader.processObjClass(classForm, nullptr);
}

/// The interactions form: its root class through the reader's processIntClass, with no parent.
template <class Reader>
int walkInteractions(Reader& reader, const DtlObjPtr& form, DtString& error) {
  DtlObjPtr classForm;
  int result = checkInteractions(form, classForm, error);
  if (result != DtFedOk) return result;
  return reader.processIntClass(classForm, nullptr);
}

/// The elements of a class behind its head, in file order: each a member (an attribute or a
/// parameter, by the keyword member) or a subclass, through the reader's slots; anything else
/// is "Unexpected symbol found". Stops at the first failure.
template <class Reader>
int walkClassBody(Reader& reader, DtlObjPtr rest, const char* className, const char* member,
                  int (Reader::*memberSlot)(DtlObjPtr, const char*),
                  int (Reader::*classSlot)(DtlObjPtr, const char*), DtString& error) {
  int result = DtFedOk;
  for (; result == DtFedOk && DtcListp(rest); rest = rest->cdr()) {
    DtlObjPtr item = rest->car();
    if (beginsWith(item, member)) {
      result = (reader.*memberSlot)(item, className);
    } else if (beginsWith(item, "class")) {
      result = (reader.*classSlot)(item, className);
    } else {
      error = "Unexpected symbol found";
      result = DtFedFailed;
    }
  }
  return result;
}

}  // namespace DtFed13Form

}  // namespace KORRti

KTL_API_END

#endif
