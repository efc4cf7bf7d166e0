#include <ktl/math.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <ktl/io.h>
#include <ktl/list.h>
#include <ktl/null.h>
#include <util/notify.h>

namespace KORRti {

namespace {

DtlTagType tagOf(DtlObjPtr const& x) {
  return x.isNull() ? DtlNilTag : x->tag();
}

bool isNumber(DtlObjPtr const& x) {
  return tagOf(x) == DtlFixnumTag || tagOf(x) == DtlFlonumTag;
}

void checkCount(DtlObjPtr const& args, int count, char const* message) {
  if (DtcLength(args) != count) DtcHaltAndCatchFire(message);
}

// The 32-bit pattern as a signed fixnum, two's complement, with no implementation-defined
// conversion on the way.
int wrap(uint32_t bits) {
  if (bits <= static_cast<uint32_t>(INT32_MAX)) return static_cast<int>(bits);
  return -static_cast<int>(~bits) - 1;
}

uint32_t bitsOf(int value) {
  return static_cast<uint32_t>(value);
}

// The value word of any object, as the bits of whichever field the kind keeps there. Kinds
// that keep nothing there (nil, cons, procedure) read as 0.
uint64_t valueWord(DtlObjPtr const& x) {
  uint64_t bits = 0;
  // A pointer field gives the bits of the pointer itself.
  auto take = [&bits](auto const& field) {
    std::memcpy(&bits, &field, sizeof field);  // NOLINT(bugprone-sizeof-expression)
  };
  switch (tagOf(x)) {
    case DtlFixnumTag:
      take(x->fixnum());
      break;
    case DtlFlonumTag:
      take(x->flonum());
      break;
    case DtlSymbolTag:
      take(x->pname());
      break;
    case DtlStringTag:
      take(x->string());
      break;
    case DtlSpecialFormTag:
    case DtlCompiledCTag:
      take(x->fcnPname());
      break;
    case DtlLocativeTag:
      take(x->nodeptr());
      break;
    case DtlFrameTag:
      take(x->frameBindings());
      break;
    default:
      break;
  }
  return bits;
}

// The value word read as a fixnum, whatever the kind: its first four bytes.
int fixnumWord(DtlObjPtr const& x) {
  if (tagOf(x) == DtlFixnumTag) return x->fixnum();
  uint64_t bits = valueWord(x);
  int value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// The value word read as a flonum, whatever the kind.
double flonumWord(DtlObjPtr const& x) {
  if (tagOf(x) == DtlFlonumTag) return x->flonum();
  uint64_t bits = valueWord(x);
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

DtlObjPtr makeFixnum(int value, char const* place) {
  DtlObjPtr result(value);
  if (result.isNull()) DtcHaltAndCatchFire(std::string("out of memory in ") + place);
  return result;
}

DtlObjPtr makeFlonum(double value, char const* place) {
  DtlObjPtr result(value);
  if (result.isNull()) DtcHaltAndCatchFire(std::string("out of memory in ") + place);
  return result;
}

// One of the binary operations of +, * and -, with its word in the traces.
struct Operation {
  char const* word;
  char const* place;
  uint32_t (*fixnums)(uint32_t, uint32_t);
  double (*flonums)(double, double);
};

const Operation kPlus = {"plus", "DtlPlus", [](uint32_t a, uint32_t b) { return a + b; },
                         [](double a, double b) { return a + b; }};
const Operation kMultiply = {"mul", "DtlMultiply", [](uint32_t a, uint32_t b) { return a * b; },
                             [](double a, double b) { return a * b; }};
const Operation kSubtract = {"sub", "DtlMinus", [](uint32_t a, uint32_t b) { return a - b; },
                             [](double a, double b) { return a - b; }};

// a op b by the four cases. When neither of the first three fits, a is taken for a flonum and
// b for a fixnum with no test, whatever they hold.
DtlObjPtr combine(DtlObjPtr const& a, DtlObjPtr const& b, Operation const& op) {
  DtlTagType ta = tagOf(a);
  DtlTagType tb = tagOf(b);
  if (ta == DtlFixnumTag && tb == DtlFixnumTag) {
    int result = wrap(op.fixnums(bitsOf(a->fixnum()), bitsOf(b->fixnum())));
    if (DtLispDebugOn) DtInfo("(%s %d %d) ==> %d\n", op.word, a->fixnum(), b->fixnum(), result);
    return makeFixnum(result, op.place);
  }
  if (ta == DtlFlonumTag && tb == DtlFlonumTag) {
    double result = op.flonums(a->flonum(), b->flonum());
    if (DtLispDebugOn) {
      DtInfo("(%s %lf %lf) ==> %lf\n", op.word, a->flonum(), b->flonum(), result);
    }
    return makeFlonum(result, op.place);
  }
  if (ta == DtlFixnumTag && tb == DtlFlonumTag) {
    double result = op.flonums(static_cast<double>(a->fixnum()), b->flonum());
    if (DtLispDebugOn) {
      DtInfo("(%s %d %lf) ==> %lf\n", op.word, a->fixnum(), b->flonum(), result);
    }
    return makeFlonum(result, op.place);
  }
  double x = flonumWord(a);
  int y = fixnumWord(b);
  double result = op.flonums(x, static_cast<double>(y));
  if (DtLispDebugOn) DtInfo("(%s %lf %d) ==> %lf\n", op.word, x, y, result);
  return makeFlonum(result, op.place);
}

// The sum and the product: the last argument must be a number and stands alone; every earlier
// one is combined with the result of those after it, from the right. The loop gives the
// results and the traces of the recursion a + (b + (c + ...)) without its depth.
DtlObjPtr foldRight(DtlObjPtr const& args, Operation const& op, char const* countMessage,
                    char const* typeMessage) {
  if (DtcNull(args)) DtcHaltAndCatchFire(countMessage);
  std::vector<DtlObjPtr> items;
  for (DtlObjPtr rest = args; !DtcNull(rest); rest = DtcCdr(rest)) items.push_back(DtcCar(rest));
  DtlObjPtr result = items.back();
  if (!isNumber(result)) DtcHaltAndCatchFire(typeMessage);
  for (size_t i = items.size() - 1; i-- > 0;) result = combine(items[i], result, op);
  return result;
}

// A number's value as a double, a fixnum going through single precision first.
double divisionOperand(DtlObjPtr const& x) {
  if (tagOf(x) == DtlFixnumTag) return static_cast<double>(static_cast<float>(x->fixnum()));
  return x->flonum();
}

// The truncation of an integral quotient to 32 bits. Out of range, and for the infinities,
// the answer is what the x86-64 conversion gives: -2147483648.
int truncateQuotient(double q) {
  if (q >= -2147483648.0 && q < 2147483648.0) return static_cast<int>(q);
  return INT32_MIN;
}

// The one number argument of abs, sin and cos, widened to double.
double unaryOperand(DtlObjPtr const& args, char const* countMessage, char const* typeMessage) {
  checkCount(args, 1, countMessage);
  DtlObjPtr x = DtcCar(args);
  if (tagOf(x) == DtlFixnumTag) return static_cast<double>(x->fixnum());
  if (tagOf(x) == DtlFlonumTag) return x->flonum();
  DtcHaltAndCatchFire(typeMessage);
  __builtin_unreachable();  // the halt throws; said for compilers that don't see it
}

}  // namespace

DtlObjPtr DtlPlus(DtlObjPtr const& args, DtlObjPtr const&) {
  return foldRight(args, kPlus, "Wrong number of args to plus", "Non-number to plus");
}

DtlObjPtr DtlMultiply(DtlObjPtr const& args, DtlObjPtr const&) {
  return foldRight(args, kMultiply, "Wrong number of args to multiply", "Non-number to multiply");
}

DtlObjPtr DtlMinus(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcNull(args)) DtcHaltAndCatchFire("Wrong number of args to subtract");
  DtlObjPtr result = DtcCar(args);
  DtlObjPtr rest = DtcCdr(args);
  if (DtcNull(rest)) {
    if (tagOf(result) == DtlFixnumTag) {
      return makeFixnum(wrap(0u - bitsOf(result->fixnum())), kSubtract.place);
    }
    if (tagOf(result) == DtlFlonumTag) return makeFlonum(-result->flonum(), kSubtract.place);
    DtcHaltAndCatchFire("Non-number to subtract");
  }
  // From the left: each step's result is the first operand of the next, and only the second
  // operand of a step is checked.
  for (; !DtcNull(rest); rest = DtcCdr(rest)) {
    DtlObjPtr b = DtcCar(rest);
    if (!isNumber(b)) DtcHaltAndCatchFire("Non-number to subtract");
    result = combine(result, b, kSubtract);
  }
  return result;
}

DtlObjPtr DtlDivide(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 2, "Wrong number of args to divide");
  DtlObjPtr a = DtcCar(args);
  DtlObjPtr b = DtcCadr(args);
  if (!isNumber(a) || !isNumber(b)) DtcHaltAndCatchFire("Non-number to divide");
  double q = divisionOperand(a) / divisionOperand(b);
  // The kind follows the value: an integral quotient, the infinities included, is a fixnum.
  if (std::floor(q) == q && !std::isnan(q)) return makeFixnum(truncateQuotient(q), "DtlDivide");
  return makeFlonum(q, "DtlDivide");
}

DtlObjPtr DtlAbs(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 1, "Wrong number of args to abs");
  DtlObjPtr x = DtcCar(args);
  if (tagOf(x) == DtlFixnumTag) {
    int value = x->fixnum();
    return makeFixnum(value < 0 ? wrap(0u - bitsOf(value)) : value, "DtlAbs");
  }
  if (tagOf(x) == DtlFlonumTag) {
    double value = x->flonum();
    return makeFlonum(value < 0.0 ? -value : value, "DtlAbs");
  }
  DtcHaltAndCatchFire("Non-number to abs");
  __builtin_unreachable();  // the halt throws; said for compilers that don't see it
}

// sin and cos report a wrong count in the words of abs, and cos a wrong kind in those of sin.
DtlObjPtr DtlSin(DtlObjPtr const& args, DtlObjPtr const&) {
  double x = unaryOperand(args, "Wrong number of args to abs", "Non-number to sin");
  return makeFlonum(std::sin(x), "DtlSin");
}

DtlObjPtr DtlCos(DtlObjPtr const& args, DtlObjPtr const&) {
  double x = unaryOperand(args, "Wrong number of args to abs", "Non-number to sin");
  return makeFlonum(std::cos(x), "DtlCos");
}

DtlObjPtr DtlLogIOr(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 2, "Wrong number of args to logior");
  // No kind test: the fixnum word of whatever the arguments are.
  int a = fixnumWord(DtcCar(args));
  int b = fixnumWord(DtcCadr(args));
  int result = a | b;
  if (DtLispDebugOn) {
    DtInfo("(logior 0x%X 0x%X) ==> 0x%X\n", bitsOf(a), bitsOf(b), bitsOf(result));
  }
  return makeFixnum(result, "DtlLogIOr");
}

}  // namespace KORRti
