#ifndef KTL_MATH_H
#define KTL_MATH_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

// Arithmetic on the two number kinds, the 32-bit fixnum and the double flonum. Fixnum
// arithmetic wraps around on overflow; nothing reports overflow or division by zero.

/// + and plus: a sum folded from the right, (+ a b c) is a + (b + c). Only the last argument is
/// checked to be a number.
DtlObjPtr DtlPlus(DtlObjPtr const& args, DtlObjPtr const& env);
/// *: a product folded from the right, like the sum.
DtlObjPtr DtlMultiply(DtlObjPtr const& args, DtlObjPtr const& env);
/// -: negation of one argument, or a difference folded from the left, (- a b c) is (a - b) - c.
DtlObjPtr DtlMinus(DtlObjPtr const& args, DtlObjPtr const& env);
/// /: fixnum operands go through single precision; an integral quotient is a fixnum.
DtlObjPtr DtlDivide(DtlObjPtr const& args, DtlObjPtr const& env);
/// abs, sin and cos of one number; abs keeps the kind, sin and cos give a flonum.
DtlObjPtr DtlAbs(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlSin(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlCos(DtlObjPtr const& args, DtlObjPtr const& env);
/// logior: the bitwise or of the fixnum words of two values.
DtlObjPtr DtlLogIOr(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
