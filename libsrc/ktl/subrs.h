#ifndef KTL_SUBRS_H
#define KTL_SUBRS_H

#include <util/export.h>
#include <vector>

#include <ktl/memory.h>
#include <util/dtFilename.h>

KTL_API_BEGIN

namespace KORRti {

class DtList;

/// if and cond answer the list of forms still to run, which the evaluator runs in tail position.
DtlObjPtr DtlIf(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlCond(DtlObjPtr const& args, DtlObjPtr const& env);
/// set! and setqb: assign in the nearest frame up the chain that binds the name.
DtlObjPtr DtlSetqBoundVariable(DtlObjPtr const& args, DtlObjPtr const& env);

// ---- loading ---------------------------------------------------------------------------

/// Directories tried in order for a relative file name that doesn't open as it is. Shared by the
/// whole process, with no lock.
extern std::vector<DtFilename> theAdditionalLoadPaths;

/// Appends a directory to the search list; a null path is ignored.
void DtlAddLoadPath(char const* path);
/// Empties the search list.
void DtlClearLoadPaths();

/// Reads and evaluates every expression of a file in env, between DtcCToLisp and DtcLispToC of
/// params (the latter also after a failed load). The file is opened as named, then, for a
/// relative name, under each load path. Answers the last value; a null handle when the file
/// couldn't be opened (warned of when warn is non-zero), held no expression, or failed, in
/// which case the failure is written to DtWarn. Never throws for what the text does.
DtlObjPtr DtcLoadLispFile(char const* name, DtlObjPtr const& env, DtList* params, int warn);
/// The same, trying the name under each directory of a KTL list of strings in turn until a
/// load answers a value. An exhausted list answers nil (warned of when warn is non-zero).
DtlObjPtr DtcLoadLispFile(DtlObjPtr const& dirs, char const* name, DtlObjPtr const& env,
                          DtList* params, int warn);
/// Reads and evaluates every expression of text in env. On a failure it writes it to DtWarn and
/// answers a null handle without copying the bindings back to the host. warn is not used.
DtlObjPtr DtcLoadLispExpr(char const* text, DtlObjPtr const& env, DtList* params, int warn);
/// One command-line argument: an expression when it starts with "(", an assignment "name=value"
/// when it holds "=" (the first "=" of arg is overwritten by a blank, and "(set! name value)" is
/// loaded), and a file name otherwise.
DtlObjPtr DtcLoadLispFileOrExpr(char* arg, DtlObjPtr const& env, DtList* params, int warn);

// ---- primitives ------------------------------------------------------------------------

/// (load "file") or (load '("dir" ...) "file"): loads in the calling frame; nil when nothing
/// was loaded. Host variables are not synchronised here.
DtlObjPtr DtlLoad(DtlObjPtr const& args, DtlObjPtr const& env);
/// (getenv "NAME"): a new string, or nil when the variable isn't set.
DtlObjPtr DtlGetenv(DtlObjPtr const& args, DtlObjPtr const& env);
/// (putenv "NAME" "VALUE"): the value string, or nil when the call failed.
DtlObjPtr DtlPutenv(DtlObjPtr const& args, DtlObjPtr const& env);
/// (system "command"): the command's exit status.
DtlObjPtr DtlSystem(DtlObjPtr const& args, DtlObjPtr const& env);
/// (popen "command"): the command's output as a list of lines without their newlines; a line
/// keeps at most its first 199 characters.
DtlObjPtr DtlPopen(DtlObjPtr const& args, DtlObjPtr const& env);
/// (exit) or (exit n): ends the process at once.
DtlObjPtr DtlExit(DtlObjPtr const& args, DtlObjPtr const& env);
/// (abort): aborts the process.
DtlObjPtr DtlAbort(DtlObjPtr const& args, DtlObjPtr const& env);
/// (string->number "12"): the decimal value of the text's leading digits; nil for no text.
DtlObjPtr DtlStringToNumber(DtlObjPtr const& args, DtlObjPtr const& env);
/// (number->string 12): the decimal digits of the argument's integer word.
DtlObjPtr DtlNumberToString(DtlObjPtr const& args, DtlObjPtr const& env);

// The module's own loaders, declared for its tests; hosts call DtcLoadLispFile and the others.
namespace detail {
/// The loader of the primitive load and of DtcLoadLispFile: name, or name under each additional
/// load path; null when no file opens (with a warning if warn) or when a read or an evaluation
/// throws (the exception goes to DtWarn).
DtlObjPtr loadLispFile(char const* name, DtlObjPtr const& env, int warn);
/// Tries name under each directory of a KTL list of strings (entries of any other kind are
/// passed over) until a load answers a value.
DtlObjPtr loadLispFile(DtlObjPtr const& dirs, char const* name, DtlObjPtr const& env, int warn);
}  // namespace detail

}  // namespace KORRti

KTL_API_END

#endif
