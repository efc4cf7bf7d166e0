#include <ktl/read.h>

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include <ktl/atom.h>
#include <ktl/eval.h>
#include <ktl/io.h>
#include <ktl/list.h>
#include <util/dtException.h>
#include <util/notify.h>

namespace KORRti {

char const* DtKtlReadEscapeChar = nullptr;

namespace {

thread_local int readDepth = 0;

// Counts the nesting of DtcRead for as long as one call is running.
class DepthGuard {
 public:
  DepthGuard() { ++readDepth; }
  ~DepthGuard() { --readDepth; }
};

bool isWhite(int c) {
  return c != -1 && std::isspace(static_cast<unsigned char>(c));
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string atLine(char const* text, DtlInputStream* stream) {
  return std::string(text) + " at line " + std::to_string(stream->lineCount());
}

}  // namespace

DtlReadListener::~DtlReadListener() = default;

// The readers behind DtcRead.
DtlObjPtr lreadstring(DtlInputStream* stream);
DtlObjPtr lreadparen(DtlInputStream* stream, DtlObjPtr const& env, DtlReadListener* listener);
DtlObjPtr lreadquoted(DtlInputStream* stream, DtlObjPtr const& env, DtlReadListener* listener);
DtlObjPtr lreadtk(DtlInputStream* stream, DtlObjPtr const& env);
using detail::lreadnum;

DtlObjPtr lreadstring(DtlInputStream* stream) {
  std::string text;
  for (;;) {
    int c = stream->fgetc();
    if (c == -1) DtcHaltAndCatchFire("EOF while reading string");
    if (DtKtlReadEscapeChar && c == static_cast<signed char>(*DtKtlReadEscapeChar)) {
      int next = stream->fgetc();
      if (next == '"') {
        text += '"';
        continue;
      }
      text += static_cast<char>(c);
      if (next == -1) DtcHaltAndCatchFire("EOF while reading string");
      text += static_cast<char>(next);
      continue;
    }
    if (c == '"') {
      DtlObjPtr string(text.c_str());
      if (string.isNull()) DtcHaltAndCatchFire("out of memory in lreadstring");
      return string;
    }
    text += static_cast<char>(c);
  }
}

DtlObjPtr lreadparen(DtlInputStream* stream, DtlObjPtr const& env, DtlReadListener* listener) {
  if (listener) listener->listOpened(*stream);
  // Built front to back in a loop, so the length of a list costs no stack.
  DtlObjPtr head = DtlObjPtr::nil();
  DtlObj* last = nullptr;
  for (;;) {
    int c = stream->fgetc_past_whitespace();
    if (c == ')') {
      if (listener) listener->listClosed(*stream, head);
      return head;
    }
    if (c == -1) DtcHaltAndCatchFire("Missing \")\"");
    stream->ungetc(c);
    DtlObjPtr cell = DtcCons(DtcRead(stream, env, listener), DtlObjPtr::nil());
    if (last) {
      last->setCdr(cell);
    } else {
      head = cell;
    }
    last = cell.get();
  }
}

DtlObjPtr lreadquoted(DtlInputStream* stream, DtlObjPtr const& env, DtlReadListener* listener) {
  DtlObjPtr quoted = DtcRead(stream, env, listener);
  return DtcCons(DtcIntern("quote", env), DtcCons(quoted, DtlObjPtr::nil()));
}

DtlObjPtr detail::lreadnum(char const* text) {
  bool floating = std::strchr(text, '.') != nullptr;
  if (!floating && text[0] != '0') {
    floating = std::strchr(text, 'e') != nullptr || std::strchr(text, 'E') != nullptr;
  }
  char* end = nullptr;
  if (floating) {
    DtlObjPtr number(DtlFlonumTag);
    if (number.isNull()) DtcHaltAndCatchFire("out of memory in lreadnum");
    number->setFlonum(std::strtod(text, &end));
    if (end == text) DtWarn("bad floating point input: %s\n", text);
    return number;
  }
  DtlObjPtr number(DtlFixnumTag);
  if (number.isNull()) DtcHaltAndCatchFire("out of memory in lreadnum");
  // Base 0 reads 0x1F and 010 too; the value keeps its low 32 bits.
  unsigned long value = std::strtoul(text, &end, 0);
  number->setFixnum(static_cast<int>(static_cast<uint32_t>(value)));
  if (end == text) DtWarn("bad integer input: %s\n", text);
  return number;
}

DtlObjPtr lreadtk(DtlInputStream* stream, DtlObjPtr const& env) {
  int c = stream->fgetc_past_whitespace();
  if (c == -1) return DtcIntern("eof", env);
  stream->ungetc(c);
  // A token ends at end of input, white space or a parenthesis, and has no length limit.
  std::string token;
  for (;;) {
    c = stream->fgetc();
    if (c == -1 || isWhite(c) || c == ')' || c == '(') break;
    token += static_cast<char>(c);
  }
  stream->ungetc(c);
  if (isDigit(token[0]) || (token[0] == '-' && isDigit(token[1]))) return lreadnum(token.c_str());
  return DtcIntern(token.c_str(), env);
}

DtlObjPtr DtcRead(DtlInputStream* stream, DtlObjPtr const& env) {
  return DtcRead(stream, env, nullptr);
}

DtlObjPtr DtcRead(DtlInputStream* stream, DtlObjPtr const& env, DtlReadListener* listener) {
  try {
    DepthGuard depth;
    if (readDepth > DtlMaxReadDepth || DtcStackNearlyExhausted()) {
      DtcHaltAndCatchFire(atLine("Nesting too deep", stream));
    }
    int c = stream->fgetc_past_whitespace();
    switch (c) {
      case -1:
        return DtcIntern("eof", env);
      case '"':
        return lreadstring(stream);
      case '\'':
        return lreadquoted(stream, env, listener);
      case '(':
        return lreadparen(stream, env, listener);
      case ')':
        DtcHaltAndCatchFire(atLine("Unexpected \")\"", stream));
      default:
        stream->ungetc(c);
        return lreadtk(stream, env);
    }
  } catch (...) {
    DtcPropagate(__PRETTY_FUNCTION__, DtSourceName(__FILE__).c_str(), __LINE__);
  }
}

}  // namespace KORRti
