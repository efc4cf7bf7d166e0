#ifndef KTL_READ_H
#define KTL_READ_H

#include <ktl/lstream.h>
#include <ktl/memory.h>

namespace KORRti {

// When a host points it at a character, that character escapes a double quote inside string
// literals. Null by default: string literals then have no escape at all.
extern char const* DtKtlReadEscapeChar;

// Lists may nest this deep in one read (less where the thread's stack is small); deeper text
// halts rather than exhaust the stack.
const int DtlMaxReadDepth = 1000;

// Reads one expression, interning its symbols in env. End of input gives the symbol eof.
DtlObjPtr DtcRead(DtlInputStream* stream, DtlObjPtr const& env);

// The module's own steps, declared for its tests; hosts call DtcRead.
namespace detail {
// The number a token that starts with a digit (or "-" and a digit) stands for.
DtlObjPtr lreadnum(char const* text);
}  // namespace detail

}  // namespace KORRti

#endif
