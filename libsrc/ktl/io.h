#ifndef KTL_IO_H
#define KTL_IO_H

#include <string>

#include <ktl/memory.h>

namespace KORRti {

// The one way the interpreter fails: throws a DtException whose message is
// "DtException: KTL Error: " followed by text. Never returns.
[[noreturn]] DtlObjPtr DtcHaltAndCatchFire(char const* text);
[[noreturn]] void DtcHaltAndCatchFire(std::string const& text);

// Prints x on standard error, with no newline, and returns it.
DtlObjPtr DtcErrPrint(DtlObjPtr const& x);

// Output primitives.
// (prin1 x): x on standard output, no newline.
DtlObjPtr DtlPrin1(DtlObjPtr const& args, DtlObjPtr const& env);
// (terpri): a newline on DtInfo.
DtlObjPtr DtlTerpri(DtlObjPtr const& args, DtlObjPtr const& env);
// (format t "text" args...): the text on DtInfo with ~% and ~A; ~A arguments on standard output.
DtlObjPtr DtlFormat(DtlObjPtr const& args, DtlObjPtr const& env);
// (describe x): x, then what kind of object it is.
DtlObjPtr DtlDescribe(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

#endif
