#include <ktl/null.h>

#include <cstring>
#include <utility>
#include <vector>

#include <ktl/eval.h>
#include <ktl/io.h>
#include <ktl/list.h>
#include <ktl/lstring.h>

namespace KORRti {

namespace {

DtlTagType tagOf(DtlObjPtr const& x) {
  return x.isNull() ? DtlNilTag : x->tag();
}

void checkCount(DtlObjPtr const& args, int count, char const* message) {
  if (DtcLength(args) != count) DtcHaltAndCatchFire(message);
}

// The four numeric cases shared by the order relations; anything else halts with message.
template <typename Compare>
int compareNumbers(DtlObjPtr const& a, DtlObjPtr const& b, Compare compare, char const* message) {
  DtlTagType ta = tagOf(a);
  DtlTagType tb = tagOf(b);
  if (ta == DtlFixnumTag && tb == DtlFixnumTag) return compare(a->fixnum(), b->fixnum());
  if (ta == DtlFlonumTag && tb == DtlFlonumTag) return compare(a->flonum(), b->flonum());
  if (ta == DtlFixnumTag && tb == DtlFlonumTag) {
    return compare(static_cast<double>(a->fixnum()), b->flonum());
  }
  if (ta == DtlFlonumTag && tb == DtlFixnumTag) {
    return compare(a->flonum(), static_cast<double>(b->fixnum()));
  }
  DtcHaltAndCatchFire(message);
}

// A two-argument predicate primitive over a host relation.
DtlObjPtr relation(DtlObjPtr const& args, char const* countMessage,
                   int (*test)(DtlObjPtr const&, DtlObjPtr const&)) {
  checkCount(args, 2, countMessage);
  return DtcCBooleanToLispBoolean(test(DtcCar(args), DtcCadr(args)));
}

DtlObjPtr predicate(DtlObjPtr const& args, char const* countMessage,
                    int (*test)(DtlObjPtr const&)) {
  checkCount(args, 1, countMessage);
  return DtcCBooleanToLispBoolean(test(DtcCar(args)));
}

}  // namespace

int DtcNull(DtlObjPtr const& x) {
  return x.isNull() || x->tag() == DtlNilTag;
}
int DtcEq(DtlObjPtr const& a, DtlObjPtr const& b) {
  return a == b;
}
int DtcNumberp(DtlObjPtr const& x) {
  return tagOf(x) == DtlFixnumTag || tagOf(x) == DtlFlonumTag;
}
int DtcLocativep(DtlObjPtr const& x) {
  return tagOf(x) == DtlLocativeTag;
}
int DtcStringp(DtlObjPtr const& x) {
  return tagOf(x) == DtlStringTag;
}
int DtcListp(DtlObjPtr const& x) {
  return tagOf(x) == DtlConsTag;
}

int DtcEqualSign(DtlObjPtr const& a, DtlObjPtr const& b) {
  if (tagOf(a) == DtlLocativeTag && tagOf(b) == DtlLocativeTag) {
    return a->nodeptr() == b->nodeptr();
  }
  return compareNumbers(
      a, b, [](auto x, auto y) { return x == y; }, "Wrong type to DtcEqualSign");
}

int DtcEqual(DtlObjPtr const& a, DtlObjPtr const& b) {
  // Depth first, cars before cdrs, with a stack of the pairs still to compare, so neither long
  // nor deeply nested lists cost host stack. Both lists are held by the caller throughout.
  std::vector<std::pair<DtlObj*, DtlObj*>> pending{{a.get(), b.get()}};
  while (!pending.empty()) {
    DtlObj* x = pending.back().first;
    DtlObj* y = pending.back().second;
    pending.pop_back();
    if (x == y) continue;
    DtlTagType tag = x ? x->tag() : DtlNilTag;
    if (tag != (y ? y->tag() : DtlNilTag)) return 0;
    switch (tag) {
      case DtlFixnumTag:
      case DtlFlonumTag:
      case DtlLocativeTag:
        if (!DtcEqualSign(DtlObjPtr(x), DtlObjPtr(y))) return 0;
        break;
      case DtlStringTag:
        if (!DtcStringEqual(DtlObjPtr(x), DtlObjPtr(y))) return 0;
        break;
      case DtlSymbolTag:
        if (std::strcmp(x->pname() ? x->pname() : "", y->pname() ? y->pname() : "") != 0) {
          return 0;
        }
        break;
      case DtlConsTag:
        pending.emplace_back(x->cdrObj(), y->cdrObj());
        pending.emplace_back(x->carObj(), y->carObj());
        break;
      default:
        DtcHaltAndCatchFire("Unknown type passed to equal!");
    }
  }
  return 1;
}

int DtcGreater(DtlObjPtr const& a, DtlObjPtr const& b) {
  return compareNumbers(
      a, b, [](auto x, auto y) { return x > y; }, "Wrong type to DtcGreater");
}

int DtcLess(DtlObjPtr const& a, DtlObjPtr const& b) {
  return compareNumbers(
      a, b, [](auto x, auto y) { return x < y; }, "Wrong type to DtcLess");
}

int DtcLessEqual(DtlObjPtr const& a, DtlObjPtr const& b) {
  return compareNumbers(
      a, b, [](auto x, auto y) { return x <= y; }, "Wrong type to DtcLessEqual");
}

int DtcGreaterEqual(DtlObjPtr const& a, DtlObjPtr const& b) {
  return compareNumbers(
      a, b, [](auto x, auto y) { return x >= y; }, "Wrong type to DtcGreaterEqual");
}

DtlObjPtr DtcCBooleanToLispBoolean(int value) {
  return value ? DtlObjPtr::t() : DtlObjPtr::nil();
}

DtlObjPtr DtcPtrToNode(DtlTagType tag, void* p) {
  DtlObjPtr node(tag);
  if (node.isNull()) DtcHaltAndCatchFire("out of memory in DtcPtrToNode");
  node->setNodeptr(p);
  return node;
}

// ---- primitives ------------------------------------------------------------------------

DtlObjPtr DtlEq(DtlObjPtr const& args, DtlObjPtr const&) {
  return relation(args, "Wrong number of arguments to eq", DtcEq);
}

DtlObjPtr DtlEqual(DtlObjPtr const& args, DtlObjPtr const&) {
  return relation(args, "Wrong number of arguments to eq", DtcEqual);
}

DtlObjPtr DtlEqualSign(DtlObjPtr const& args, DtlObjPtr const&) {
  return relation(args, "Wrong number of args to =", DtcEqualSign);
}

DtlObjPtr DtlGreater(DtlObjPtr const& args, DtlObjPtr const&) {
  return relation(args, "Wrong number of args to >", DtcGreater);
}

DtlObjPtr DtlGreaterEqual(DtlObjPtr const& args, DtlObjPtr const&) {
  return relation(args, "Wrong number of args to >=", DtcGreaterEqual);
}

DtlObjPtr DtlLess(DtlObjPtr const& args, DtlObjPtr const&) {
  return relation(args, "Wrong number of args to <", DtcLess);
}

DtlObjPtr DtlLessEqual(DtlObjPtr const& args, DtlObjPtr const&) {
  return relation(args, "Wrong number of args to <=", DtcLessEqual);
}

DtlObjPtr DtlNotOrNull(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 1, "Wrong number of arguments to not/null");
  // By identity with the nil singleton, unlike DtcNull's test of the tag.
  return DtcCBooleanToLispBoolean(DtcCar(args) == DtlObjPtr::nil());
}

DtlObjPtr DtlNumberp(DtlObjPtr const& args, DtlObjPtr const&) {
  return predicate(args, "Wrong number of args to numberp", DtcNumberp);
}

DtlObjPtr DtlStringp(DtlObjPtr const& args, DtlObjPtr const&) {
  return predicate(args, "Wrong number of args to stringp", DtcStringp);
}

DtlObjPtr DtlListp(DtlObjPtr const& args, DtlObjPtr const&) {
  return predicate(args, "Wrong number of args to listp", DtcListp);
}

DtlObjPtr DtlLocativep(DtlObjPtr const& args, DtlObjPtr const&) {
  return predicate(args, "Wrong number of args to locativep", DtcLocativep);
}

DtlObjPtr DtlAnd(DtlObjPtr const& args, DtlObjPtr const& env) {
  checkCount(args, 2, "Wrong number of args to and");
  // Both values are evaluated once more, with no short cut.
  DtlObjPtr a = DtcEval(DtcCar(args), env);
  DtlObjPtr b = DtcEval(DtcCadr(args), env);
  return DtcCBooleanToLispBoolean(!DtcNull(a) && !DtcNull(b));
}

DtlObjPtr DtlOr(DtlObjPtr const& args, DtlObjPtr const& env) {
  checkCount(args, 2, "Wrong number of args to or");
  DtlObjPtr a = DtcEval(DtcCar(args), env);
  DtlObjPtr b = DtcEval(DtcCadr(args), env);
  return DtcCBooleanToLispBoolean(!DtcNull(a) || !DtcNull(b));
}

}  // namespace KORRti
