#include <ktl/lstring.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <ktl/io.h>
#include <ktl/lenv.h>
#include <ktl/list.h>
#include <ktl/null.h>
#include <util/notify.h>

namespace KORRti {

namespace {

DtlTagType tagOf(DtlObjPtr const& x) {
  return x.isNull() ? DtlNilTag : x->tag();
}

void checkCount(DtlObjPtr const& args, int count, char const* message) {
  if (DtcLength(args) != count) DtcHaltAndCatchFire(message);
}

// The text an element of a path list stands for: a string's text, or the name a symbol or a
// function keeps in the same word. Other kinds keep no text there and give null.
char* textOf(DtlObjPtr const& x) {
  switch (tagOf(x)) {
    case DtlStringTag:
      return x->string();
    case DtlSymbolTag:
      return x->pname();
    case DtlSpecialFormTag:
    case DtlCompiledCTag:
      return x->fcnPname();
    default:
      return nullptr;
  }
}

// The most strings one side of path-cross holds.
const int kPathListMax = 7;

}  // namespace

int DtcStringEqual(DtlObjPtr const& a, DtlObjPtr const& b) {
  if (a.isNull() || b.isNull() || a->tag() != DtlStringTag || b->tag() != DtlStringTag) {
    DtcHaltAndCatchFire("Wrong type arg to DtcStringEqual");
  }
  return std::strcmp(a->string() ? a->string() : "", b->string() ? b->string() : "") == 0;
}

int detail::DtcListToStr(DtlObjPtr const& list, char** out) {
  if (tagOf(list) != DtlConsTag) return 0;
  int n = DtcLength(list);
  if (n >= 1 && n <= kPathListMax) {
    DtlObjPtr rest = list;
    for (int i = 0; i < n; ++i, rest = DtcCdr(rest)) out[i] = textOf(DtcCar(rest));
    return n;
  }
  if (n == '0') {
    // 48, the code of the character 0, is answered as such with nothing stored.
    DtWarn("DtcListToStr: empty str\n");
    return n;
  }
  DtWarn("DtcListToStr: list too long: %d\n", n);
  return 0;
}

int DtcSetIfBoundp(char* name, char** out, DtlObjPtr const& env) {
  if (tagOf(env) != DtlFrameTag || !env->frameBindings()) return 0;
  DtlObjPtr value = env->frameBindings()->lookup(name);
  if (value.isNull()) return 0;
  if (value->tag() == DtlStringTag) {
    *out = value->string();
    return 1;
  }
  if (DtNotifyLevel > 0) {
    std::string text = std::string("Variable ") + name + " should be a string, not ";
    std::fprintf(stderr, "Lisp Warning: %s", text.c_str());
    DtcErrPrint(value);
  }
  return 0;
}

DtlObjPtr DtlStringEqual(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 2, "Wrong number of arguments to string-equal");
  return DtcCBooleanToLispBoolean(DtcStringEqual(DtcCar(args), DtcCadr(args)));
}

DtlObjPtr DtlStringAppend(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcNull(args)) DtcHaltAndCatchFire("Wrong number of args to string-append");
  // Every argument is checked in its turn from the left; the texts then go into one buffer.
  // The texts stay owned by the arguments, which args holds throughout.
  std::vector<char const*> texts;
  size_t total = 0;
  for (DtlObjPtr rest = args; !DtcNull(rest); rest = DtcCdr(rest)) {
    DtlObjPtr item = DtcCar(rest);
    if (tagOf(item) != DtlStringTag) DtcHaltAndCatchFire("Non-string to string-append");
    char const* text = item->string() ? item->string() : "";
    texts.push_back(text);
    total += std::strlen(text);
  }
  std::unique_ptr<char[]> buffer(new (std::nothrow) char[total + 1]);
  if (!buffer) DtcHaltAndCatchFire("Out of memory in string-append");
  char* end = buffer.get();
  for (char const* text : texts) {
    size_t length = std::strlen(text);
    std::memcpy(end, text, length);
    end += length;
  }
  *end = '\0';
  DtlObjPtr result(DtlStringTag);
  if (result.isNull()) DtcHaltAndCatchFire("Out of memory in string-append");
  result->setString(buffer.get());
  return result;
}

DtlObjPtr DtlPathCross(DtlObjPtr const& args, DtlObjPtr const&) {
  checkCount(args, 2, "Need two args to path-cross");
  char* firsts[kPathListMax + 1] = {};
  char* seconds[kPathListMax + 1] = {};
  int firstCount = detail::DtcListToStr(DtcCar(args), firsts);
  int secondCount = detail::DtcListToStr(DtcCadr(args), seconds);
  // A side that answered more strings than it can hold stored none: it counts as empty.
  if (firstCount > kPathListMax) firstCount = 0;
  if (secondCount > kPathListMax) secondCount = 0;
  // The current directory first, then every pairing; the text grows as far as it needs.
  std::string path = ".";
  for (int i = 0; i < firstCount; ++i) {
    for (int j = 0; j < secondCount; ++j) {
      path += ':';
      path += firsts[i] ? firsts[i] : "";
      path += seconds[j] ? seconds[j] : "";
    }
  }
  DtlObjPtr result(DtlStringTag);
  if (result.isNull()) DtcHaltAndCatchFire("out of memory in path-cross");
  result->setString(path.c_str());
  return result;
}

}  // namespace KORRti
