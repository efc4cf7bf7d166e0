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

}  // namespace KORRti

#endif
