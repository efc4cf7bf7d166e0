#include <ktl/io.h>

#include <cstdio>
#include <exception>
#include <string>

#include <ktl/list.h>
#include <ktl/null.h>
#include <util/dtException.h>
#include <util/dtString.h>
#include <util/notify.h>

namespace KORRti {

DtlObjPtr DtcHaltAndCatchFire(char const* text) {
  DtString reason("KTL Error: ");
  reason += text ? text : "";
  DtString message("DtException: ");
  message += reason;
  throw DtException(message, __PRETTY_FUNCTION__, DtSourceName(__FILE__).c_str(), __LINE__,
                    nullptr);
}

void DtcHaltAndCatchFire(std::string const& text) {
  DtcHaltAndCatchFire(text.c_str());
}

void DtcPropagate(char const* function, char const* file, unsigned int line) {
  try {
    throw;
  } catch (DtException const& e) {
    throw DtException("Propagating DtException.", function, file, line, &e);
  } catch (std::exception const& e) {
    std::string text = std::string("std::exception ") + e.what();
    throw DtException(text.c_str(), function, file, line, nullptr);
  } catch (...) {
    throw DtTemplatedException<DtUnknownExceptionNumber>("Caught Unknown Exception.", function,
                                                         file, line, nullptr);
  }
}

DtlObjPtr DtcErrPrint(DtlObjPtr const& x) {
  if (!x.isNull()) x->DtcObjFprint(stderr);
  return x;
}

namespace {

// Prints the first argument of a ~A directive on standard output.
void _princ(DtlObjPtr const& args) {
  if (DtcLength(args) < 1) DtcHaltAndCatchFire("Out of arguments");
  DtlObjPtr value = DtcCar(args);
  if (!value.isNull()) value->DtcObjFprint(stdout);
}

// The text goes to DtInfo character by character; ~% is a newline, ~A the next argument.
DtlObjPtr _format(char const* text, DtlObjPtr args) {
  for (char const* at = text; *at; ++at) {
    if (*at != '~') {
      DtInfo("%c", *at);
      continue;
    }
    ++at;
    if (*at == '%') {
      DtInfo << "\n";
    } else if (*at == 'A') {
      _princ(args);
      args = DtcCdr(args);
    } else {
      DtcHaltAndCatchFire("Unknown directive to format");
    }
  }
  return DtlObjPtr::nil();
}

char const* kindOf(DtlTagType tag) {
  switch (tag) {
    case DtlNilTag:
      return "NIL\n";
    case DtlFixnumTag:
      return " a fixed-point number\n";
    case DtlFlonumTag:
      return " a floating-point number\n";
    case DtlConsTag:
      return " a cons cell\n";
    case DtlSpecialFormTag:
      return " a special form\n";
    case DtlCompiledCTag:
      return " a compiled C-function\n";
    case DtlStringTag:
      return " a string\n";
    case DtlLocativeTag:
      return " a locative\n";
    default:
      return " ??????\n";
  }
}

// Prints a part of an object that may be missing, such as the parent of a root frame.
void printPart(DtlObjPtr const& x) {
  if (x.isNull()) {
    std::fputs("(none)", stdout);
    DtInfo << "\n";
  } else {
    DtcPrint(x);
  }
}

}  // namespace

DtlObjPtr DtlPrin1(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("Wrong number of arguments to prin1");
  DtlObjPtr value = DtcCar(args);
  if (!value.isNull()) value->DtcObjFprint(stdout);
  return value;
}

DtlObjPtr DtlTerpri(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) != 0) DtcHaltAndCatchFire("No arguments to terpri");
  DtInfo << "\n";
  return DtlObjPtr::nil();
}

DtlObjPtr DtlFormat(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) < 2) DtcHaltAndCatchFire("Wrong number of args to format");
  DtlObjPtr destination = DtcCar(args);
  if (DtcNull(destination)) DtcHaltAndCatchFire("Sorry, output to string not implemented yet");
  // Any symbol named t will do, not only the singleton.
  if (!DtcEqual(destination, DtlObjPtr::t())) {
    DtcHaltAndCatchFire("Sorry, output to streams not implemented yet");
  }
  DtlObjPtr text = DtcCadr(args);
  if (text->tag() != DtlStringTag) DtcHaltAndCatchFire("Format must be a string");
  return _format(text->string() ? text->string() : "", DtcCdr(DtcCdr(args)));
}

DtlObjPtr DtlDescribe(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("Wrong number of args to describe");
  DtlObjPtr x = DtcCar(args);
  if (!x.isNull()) x->DtcObjFprint(stdout);
  DtInfo << " is";
  DtlTagType tag = x.isNull() ? DtlTagType(-1) : x->tag();
  switch (tag) {
    case DtlSymbolTag:
      DtInfo(" the symbol with name \"%s\"\n", x->pname() ? x->pname() : "");
      break;
    case DtlProcedureTag:
      DtInfo << " a lisp procedure\n";
      DtInfo << "with params: ";
      printPart(x->procParams());
      DtInfo << "body: ";
      printPart(x->procBody());
      DtInfo << "and enclosing environment: ";
      printPart(x->procEnv());
      break;
    case DtlFrameTag:
      DtInfo << " an environment frame with parent frame ";
      printPart(x->frameParent());
      break;
    default:
      DtInfo << kindOf(tag);
  }
  return x;
}

}  // namespace KORRti
