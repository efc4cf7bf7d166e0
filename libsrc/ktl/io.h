#ifndef KTL_IO_H
#define KTL_IO_H

#include <util/export.h>
#include <string>

#include <ktl/memory.h>

KTL_API_BEGIN

namespace KORRti {

/// The one way the interpreter fails: throws a DtException whose message is
/// "DtException: KTL Error: " followed by text. Never returns.
[[noreturn]] DtlObjPtr DtcHaltAndCatchFire(char const* text);
[[noreturn]] void DtcHaltAndCatchFire(std::string const& text);

/// Rethrows the exception being handled, for a catch-all block of an evaluation or read level:
/// a DtException goes on as a new one with "Propagating DtException." and the old one as its
/// cause, a std::exception as a DtException with "std::exception " and its what(), anything else
/// as a DtTemplatedException<-2> with "Caught Unknown Exception.". Each carries the given place.
[[noreturn]] void DtcPropagate(char const* function, char const* file, unsigned int line);

/// Prints x on standard error, with no newline, and returns it.
DtlObjPtr DtcErrPrint(DtlObjPtr const& x);

/// Output primitives.
/// (prin1 x): x on standard output, no newline.
DtlObjPtr DtlPrin1(DtlObjPtr const& args, DtlObjPtr const& env);
/// (terpri): a newline on DtInfo.
DtlObjPtr DtlTerpri(DtlObjPtr const& args, DtlObjPtr const& env);
/// (format t "text" args...): the text on DtInfo with ~% and ~A; ~A arguments on standard output.
DtlObjPtr DtlFormat(DtlObjPtr const& args, DtlObjPtr const& env);
/// (describe x): x, then what kind of object it is.
DtlObjPtr DtlDescribe(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
