// Reads a KTL text with the installed library and prints what it read, one form per line.
#include <ktl/ktl.h>

#include <cstdio>
#include <iostream>

int main() {
  using namespace KORRti;
  static const char text[] =
      "; a host's configuration\n(host (name \"consumer\") (port 0x1F) (rate 2.5))\n'done";
  try {
    DtlObjPtr frame(DtlFrameTag);
    DtlObjPtr eof = DtcIntern("eof", frame);
    DtlStringInputStream stream(text);
    for (DtlObjPtr form = DtcRead(&stream, frame); form != eof; form = DtcRead(&stream, frame)) {
      form->DtcObjFprint(stdout);
      std::fputs("\n", stdout);
    }
  } catch (const DtException& e) {
    std::cerr << "consumer: " << e << std::endl;
    return 1;
  }
  return 0;
}
