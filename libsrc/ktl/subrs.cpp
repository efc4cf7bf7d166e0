#include <ktl/subrs.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <ktl/atom.h>
#include <ktl/eval.h>
#include <ktl/io.h>
#include <ktl/list.h>
#include <ktl/lstream.h>
#include <ktl/null.h>
#include <ktl/read.h>
#include <ktl/register.h>
#include <util/dtException.h>
#include <util/notify.h>

namespace KORRti {

using detail::loadLispFile;

namespace {

DtlObjPtr single(DtlObjPtr const& form) {
  return DtcCons(form, DtlObjPtr::nil());
}

}  // namespace

DtlObjPtr DtlIf(DtlObjPtr const& args, DtlObjPtr const& env) {
  int count = DtcLength(args);
  if (count != 2 && count != 3) DtcHaltAndCatchFire("Wrong number of args to if");
  DtlObjPtr test = DtcEval(DtcCar(args), env);
  if (!DtcNull(test)) return single(DtcCadr(args));
  if (count == 3) return single(DtcCaddr(args));
  return single(DtlObjPtr::nil());
}

DtlObjPtr DtlCond(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcNull(args)) DtcHaltAndCatchFire("No clauses to cond");
  for (DtlObjPtr clauses = args; !DtcNull(clauses); clauses = DtcCdr(clauses)) {
    DtlObjPtr clause = DtcCar(clauses);
    DtlObjPtr test = DtcEval(DtcCar(clause), env);
    if (DtcTracing()) {
      std::printf("clause ");
      DtcPrint(clause);
      std::printf("Predicate ");
      DtcPrint(DtcCar(clause));
      std::printf("Predicate result ");
      DtcPrint(test);
    }
    if (!DtcNull(test)) {
      // A clause of the test alone answers the test's value, which the evaluator then runs as
      // the list of forms.
      if (DtcLength(clause) == 1) return test;
      return DtcCdr(clause);
    }
  }
  return single(DtlObjPtr::nil());
}

DtlObjPtr DtlSetqBoundVariable(DtlObjPtr const& args, DtlObjPtr const& env) {
  if (DtcTracing() && !DtcNull(args)) {
    std::printf("(setq-variable ");
    DtcPrint(DtcCar(args));
  }
  if (DtcLength(args) != 2) DtcHaltAndCatchFire("Wrong number of args to setq");
  DtlObjPtr symbol = DtcCar(args);
  if (symbol.isNull() || symbol->tag() != DtlSymbolTag) DtcHaltAndCatchFire("non-symbol to boundp");
  // Up the chain on raw pointers: counted copies of frames would rescan them at each release.
  DtlObj* frame = env.get();
  while (frame && !DtcBoundp(symbol, DtlObjPtr(frame))) frame = frame->frameParentObj();
  if (!frame) {
    DtWarn("Lisp Warning: can't set unbound variable: %s\n",
           symbol->pname() ? symbol->pname() : "");
    return DtlObjPtr::nil();
  }
  DtlObjPtr value = DtcEval(DtcCadr(args), env);
  return DtcSet(symbol, value, DtlObjPtr(frame));
}

// ---- loading ---------------------------------------------------------------------------

std::vector<DtFilename> theAdditionalLoadPaths;

namespace {

DtlTagType tagOf(DtlObjPtr const& x) {
  return x.isNull() ? DtlNilTag : x->tag();
}

// The text of a string object; null for any other kind, so that no other word of the record is
// ever taken for a pointer.
char const* stringText(DtlObjPtr const& x) {
  return tagOf(x) == DtlStringTag ? x->string() : nullptr;
}

DtlObjPtr newString(char const* text, char const* place) {
  DtlObjPtr string(text);
  if (string.isNull()) DtcHaltAndCatchFire(std::string("out of memory in ") + place);
  return string;
}

DtlObjPtr newFixnum(int value, char const* place) {
  DtlObjPtr number(value);
  if (number.isNull()) DtcHaltAndCatchFire(std::string("out of memory in ") + place);
  return number;
}

// Reads and evaluates the expressions of stream one by one until the symbol eof; answers the
// last value, a null handle for none. A DtException goes out to the caller. Any other
// exception of an evaluation is dropped and the next expression runs; any other exception of
// a read ends the loop.
DtlObjPtr readEvalLoop(DtlInputStream* stream, DtlObjPtr const& env) {
  DtlObjPtr eof = DtcIntern("eof", env);
  DtlObjPtr result;
  for (;;) {
    DtlObjPtr expr;
    try {
      expr = DtcRead(stream, env);
    } catch (DtException const&) {
      throw;
    } catch (...) {
      break;
    }
    if (DtcEq(expr, eof)) break;
    try {
      result = DtcEval(expr, env);
    } catch (DtException const&) {
      throw;
    } catch (...) {
    }
  }
  return result;
}

// Closes a file however the load ends.
struct FileCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};

}  // namespace

void DtlAddLoadPath(char const* path) {
  if (!path) return;
  theAdditionalLoadPaths.push_back(DtFilename(path));
}

void DtlClearLoadPaths() {
  theAdditionalLoadPaths.clear();
}

DtlObjPtr detail::loadLispFile(char const* name, DtlObjPtr const& env, int warn) {
  if (!name) name = "";
  std::unique_ptr<FILE, FileCloser> file(std::fopen(name, "rt"));
  DtFilename found(name);
  if (!file && found.relative()) {
    for (DtFilename const& directory : theAdditionalLoadPaths) {
      DtFilename candidate(directory);
      candidate.append(DtFilename(name));
      file.reset(std::fopen(candidate.c_str(), "rt"));
      if (file) {
        found = candidate;
        break;
      }
    }
  }
  if (!file) {
    if (warn) DtWarn("Couldn't open %s\n", name);
    return DtlObjPtr();
  }
  std::unique_ptr<DtlFileInputStream> stream(new (std::nothrow) DtlFileInputStream(file.get()));
  if (!stream) {
    file.reset();
    DtcHaltAndCatchFire("out of memory in DtcLoadLispFile");
  }
  DtInfo("Loading Config File: %s\n", found.c_str());
  try {
    return readEvalLoop(stream.get(), env);
  } catch (DtException const& e) {
    DtWarn << "Caught exception loading LISP file: " << e << "\n";
    return DtlObjPtr();
  }
}

DtlObjPtr detail::loadLispFile(DtlObjPtr const& dirs, char const* name, DtlObjPtr const& env,
                               int warn) {
  if (!name) name = "";
  for (DtlObjPtr rest = dirs;; rest = DtcCdr(rest)) {
    if (DtcNull(rest)) {
      if (warn) DtWarn("Couldn't find %s\n", name);
      return DtlObjPtr::nil();
    }
    char const* directory = stringText(DtcCar(rest));
    if (!directory) continue;
    std::string path(directory);
    if (!path.empty() && path.back() != '/') path += '/';
    path += name;
    DtlObjPtr result = loadLispFile(path.c_str(), env, 0);
    if (!result.isNull()) return result;
  }
}

DtlObjPtr DtcLoadLispFile(char const* name, DtlObjPtr const& env, DtList* params, int warn) {
  DtcCToLisp(params);
  DtlObjPtr result;
  try {
    result = loadLispFile(name, env, warn);
  } catch (...) {
  }
  // Also after a failure: what the file set before it failed reaches the host.
  DtcLispToC(params);
  return result;
}

DtlObjPtr DtcLoadLispFile(DtlObjPtr const& dirs, char const* name, DtlObjPtr const& env,
                          DtList* params, int warn) {
  DtcCToLisp(params);
  DtlObjPtr result;
  try {
    result = loadLispFile(dirs, name, env, warn);
  } catch (...) {
  }
  DtcLispToC(params);
  return result;
}

DtlObjPtr DtcLoadLispExpr(char const* text, DtlObjPtr const& env, DtList* params, int /*warn*/) {
  DtcCToLisp(params);
  std::unique_ptr<DtlStringInputStream> stream(new (std::nothrow)
                                                   DtlStringInputStream(text ? text : ""));
  if (!stream) DtcHaltAndCatchFire("out of memory in DtcLoadLispExpr");
  DtlObjPtr result;
  try {
    result = readEvalLoop(stream.get(), env);
  } catch (DtException const& e) {
    // Unlike a file, a failed expression leaves the host variables as they were.
    DtWarn << "Caught exception loading LISP expression: " << e << "\n";
    return DtlObjPtr();
  }
  stream.reset();
  DtcLispToC(params);
  return result;
}

DtlObjPtr DtcLoadLispFileOrExpr(char* arg, DtlObjPtr const& env, DtList* params, int warn) {
  if (arg && arg[0] == '(') return DtcLoadLispExpr(arg, env, params, warn);
  char* equals = arg ? std::strchr(arg, '=') : nullptr;
  if (equals) {
    *equals = ' ';
    size_t size = std::strlen(arg) + 10;
    std::vector<char> expression(size, '\0');
    std::snprintf(expression.data(), size, "(set! %s)\n", arg);
    return DtcLoadLispExpr(expression.data(), env, params, warn);
  }
  return DtcLoadLispFile(arg, env, params, warn);
}

// ---- primitives ------------------------------------------------------------------------

DtlObjPtr DtlLoad(DtlObjPtr const& args, DtlObjPtr const& env) {
  int count = DtcLength(args);
  if (count != 1 && count != 2) DtcHaltAndCatchFire("Wrong number of args to load");
  DtlObjPtr first = DtcCar(args);
  DtlObjPtr result;
  if (tagOf(first) == DtlStringTag) {
    char const* name = first->string();
    result = loadLispFile(name ? name : "", env, 1);
  } else {
    // A directory list needs the name behind it: without one, DtcCadr halts.
    DtlObjPtr second = tagOf(first) == DtlConsTag ? DtcCadr(args) : DtlObjPtr();
    if (tagOf(second) != DtlStringTag) {
      if (DtNotifyLevel >= 0) {
        std::fprintf(stderr, "Lisp Error: %s", "Wrong type arg to DtlLoad ");
        DtcErrPrint(first);
      }
      return DtlObjPtr::nil();
    }
    char const* name = second->string();
    result = loadLispFile(first, name ? name : "", env, 1);
  }
  if (result.isNull()) return DtlObjPtr::nil();
  return result;
}

DtlObjPtr DtlGetenv(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("Wrong number of args to getenv");
  char const* name = stringText(DtcCar(args));
  if (!name) return DtlObjPtr::nil();
  char const* value = std::getenv(name);
  if (DtLispDebugOn) DtInfo("(getenv \"%s\") ==> \"%s\")\n", name, value ? value : "");
  if (!value) return DtlObjPtr::nil();
  return newString(value, "getenv");
}

namespace {

// The texts handed to putenv, which keeps them in the environment: they are never freed, and
// stay reachable from here.
std::vector<char*>* keptEnvironmentTexts() {
  static std::vector<char*>* texts = new std::vector<char*>();
  return texts;
}

}  // namespace

DtlObjPtr DtlPutenv(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  if (DtcLength(args) != 2) DtcHaltAndCatchFire("Wrong number of args to putenv");
  DtlObjPtr name = DtcCar(args);
  DtlObjPtr value = DtcCadr(args);
  if (tagOf(name) != DtlStringTag) DtcHaltAndCatchFire("variable name must be string");
  if (tagOf(value) != DtlStringTag) DtcHaltAndCatchFire("variable value must be string");
  if (DtcTracing()) {
    std::printf("putenv ");
    DtcPrint(name);
    std::printf("     ==> ");
    DtcPrint(value);
  }
  char const* nameText = name->string() ? name->string() : "";
  char const* valueText = value->string() ? value->string() : "";
  size_t nameLength = std::strlen(nameText);
  size_t valueLength = std::strlen(valueText);
  char* text = new (std::nothrow) char[nameLength + valueLength + 2];
  if (!text) DtcHaltAndCatchFire("Out of memory in putenv");
  std::memcpy(text, nameText, nameLength);
  text[nameLength] = '=';
  std::memcpy(text + nameLength + 1, valueText, valueLength + 1);
  std::vector<char*>* kept = keptEnvironmentTexts();
  kept->push_back(text);
  if (putenv(text) != 0) {
    kept->pop_back();
    delete[] text;
    return DtlObjPtr::nil();
  }
  return value;
}

DtlObjPtr DtlSystem(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("Wrong number of args to system");
  DtlObjPtr command = DtcCar(args);
  if (tagOf(command) != DtlStringTag) DtcHaltAndCatchFire("Non-string argument to system");
  int status = std::system(command->string() ? command->string() : "");
  return newFixnum(status >> 8, "system");
}

namespace {

struct PipeCloser {
  void operator()(FILE* pipe) const { pclose(pipe); }
};

// The longest line popen keeps, with its terminator.
const int kPopenLineSize = 200;

}  // namespace

DtlObjPtr DtlPopen(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("Wrong number of args to popen");
  DtlObjPtr command = DtcCar(args);
  if (tagOf(command) != DtlStringTag) DtcHaltAndCatchFire("Non-string argument to popen");
  std::unique_ptr<FILE, PipeCloser> pipe(popen(command->string() ? command->string() : "", "r"));
  if (!pipe) DtcHaltAndCatchFire("Lisp Error: Popen failed");
  DtlObjPtr lines = DtlObjPtr::nil();
  char line[kPopenLineSize];
  int length = 0;
  for (;;) {
    int c = std::fgetc(pipe.get());
    if (c == EOF || c == '\n') {
      // A last line without a newline ends with the output.
      if (c == EOF && length == 0) break;
      line[length] = '\0';
      lines = DtcCons(newString(line, "popen"), lines);
      length = 0;
      if (c == EOF) break;
      continue;
    }
    line[length++] = static_cast<char>(c);
    // A longer line keeps its first characters; the last place takes each further one, and the
    // terminator takes that place in the end.
    if (length == kPopenLineSize) length = kPopenLineSize - 1;
  }
  pipe.reset();
  return DtcReverse(lines);
}

DtlObjPtr DtlExit(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  int count = DtcLength(args);
  if (count > 1) DtcHaltAndCatchFire("Wrong number of args to exit");
  if (count == 0) std::exit(0);
  DtlObjPtr code = DtcCar(args);
  switch (tagOf(code)) {
    case DtlFixnumTag:
      std::exit(code->fixnum());
    case DtlFlonumTag: {
      // Truncated toward zero, and held to the range of an int.
      double value = std::trunc(code->flonum());
      if (std::isnan(value)) value = 0;
      if (value < INT_MIN) value = INT_MIN;
      if (value > INT_MAX) value = INT_MAX;
      std::exit(static_cast<int>(value));
    }
    default:
      DtcHaltAndCatchFire("Non-number to exit");
  }
}

DtlObjPtr DtlAbort(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  if (DtcLength(args) != 0) DtcHaltAndCatchFire("Wrong number of args to abort");
  std::abort();
}

DtlObjPtr DtlStringToNumber(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("No String to convert to number");
  char const* text = stringText(DtcCar(args));
  if (!text) return DtlObjPtr::nil();
  // atoi's reading, with the out-of-range case cut to int as the C library does.
  int value = static_cast<int>(std::strtol(text, nullptr, 10));
  if (DtLispDebugOn) DtInfo("(string->number \"%s\") ==> \"%d\")\n", text, value);
  return newFixnum(value, "string->number");
}

DtlObjPtr DtlNumberToString(DtlObjPtr const& args, DtlObjPtr const& /*env*/) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("No number to convert to string");
  DtlObjPtr number = DtcCar(args);
  // The integer word, whatever the kind: a flonum gives the low bits of its representation.
  int value = number.isNull() ? 0 : number->fixnum();
  char digits[16];
  std::snprintf(digits, sizeof digits, "%d", value);
  if (DtLispDebugOn) DtInfo("(number->string \"%s\") ==> \"%s\")\n", digits, digits);
  return newString(digits, "number->string");
}

}  // namespace KORRti
