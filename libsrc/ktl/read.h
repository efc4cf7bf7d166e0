#ifndef KTL_READ_H
#define KTL_READ_H

#include <ktl/lstream.h>
#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// When a host points it at a character, that character escapes a double quote inside string
/// literals. Null by default: string literals then have no escape at all.
extern char const* DtKtlReadEscapeChar;

/// Lists may nest this deep in one read (less where the thread's stack is small); deeper text
/// halts rather than exhaust the stack.
const int DtlMaxReadDepth = 1000;

/// Reads one expression, interning its symbols in env. End of input gives the symbol eof.
DtlObjPtr DtcRead(DtlInputStream* stream, DtlObjPtr const& env);

/// Told where each list of a read opens and closes, for a program that reports on the text it
/// reads (a checker of FED files gives each list its line). The stream is the one being read:
/// its line count, and whatever position its own class keeps, stand just past the parenthesis.
/// A read without a listener pays nothing for this.
class DtlReadListener {
 public:
  virtual ~DtlReadListener();
  /// The "(" of a list has just been read.
  virtual void listOpened(DtlInputStream& stream) = 0;
  /// The ")" of the list opened last has just been read; list is what the text reads as (nil for
  /// "()"). A list whose ")" never comes (the read halts) is opened and never closed.
  virtual void listClosed(DtlInputStream& stream, DtlObjPtr const& list) = 0;
};

/// DtcRead, telling listener (when not null) of every list as it is read. What it reads, and how
/// it fails, are those of DtcRead.
DtlObjPtr DtcRead(DtlInputStream* stream, DtlObjPtr const& env, DtlReadListener* listener);

// The module's own steps, declared for its tests; hosts call DtcRead.
namespace detail {
/// The number a token that starts with a digit (or "-" and a digit) stands for.
DtlObjPtr lreadnum(char const* text);
}  // namespace detail

}  // namespace KORRti

KTL_API_END

#endif
