#ifndef KTL_LSTRING_H
#define KTL_LSTRING_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// 1 if both strings hold the same text; anything but two strings halts.
int DtcStringEqual(DtlObjPtr const& a, DtlObjPtr const& b);

/// The host's checked read of a binding of name in env alone (parents aren't searched). No
/// binding: 0 and *out untouched. A string gives *out its own text (not a copy) and 1. Anything
/// else gives 0, with a warning on standard error while DtNotifyLevel is above 0.
int DtcSetIfBoundp(char* name, char** out, DtlObjPtr const& env);

/// Primitives.
DtlObjPtr DtlStringEqual(DtlObjPtr const& args, DtlObjPtr const& env);
/// A new string of all the arguments' texts in order.
DtlObjPtr DtlStringAppend(DtlObjPtr const& args, DtlObjPtr const& env);
/// A colon-separated path list: "." and then every a followed by every b of two lists of strings.
DtlObjPtr DtlPathCross(DtlObjPtr const& args, DtlObjPtr const& env);

// The module's own step, declared for its tests.
namespace detail {
/// The texts of a list of one to seven elements go to out[0..n-1] (pointers into the objects,
/// not copies) and n is the answer. A non-list answers 0. A longer list warns and answers 0,
/// but for 48 elements, which warns of an empty string and answers 48 with nothing stored.
int DtcListToStr(DtlObjPtr const& list, char** out);
}  // namespace detail

}  // namespace KORRti

KTL_API_END

#endif
