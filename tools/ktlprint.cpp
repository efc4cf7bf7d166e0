// ktlprint: reads KTL text and prints every form it reads, one per line.
//
// Each argument is a source, read in order into one frame: an argument that starts with "("
// (after blanks) or follows -e is an expression, "-" is standard input, anything else names a
// file. With no source at all, standard input is read.
#include <ktl/ktl.h>
#include <sys/stat.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace KORRti;

const char kUsage[] =
    "NAME\n"
    "    ktlprint - read KTL text and print what the reader makes of it\n"
    "\n"
    "SYNOPSIS\n"
    "    ktlprint [-h | --help]\n"
    "    ktlprint [SOURCE | -e EXPRESSION]...\n"
    "\n"
    "DESCRIPTION\n"
    "    ktlprint reads KTL, the Lisp of the library's configuration files, with the\n"
    "    library's reader, and prints each form it reads back on a line of its own. It\n"
    "    reads, it does not evaluate: the output shows how a text is parsed (lists,\n"
    "    symbols, integers, floats, strings, quoted forms).\n"
    "\n"
    "    The sources are read in the order given, into one frame, each up to its end\n"
    "    (or up to the symbol eof). A SOURCE that starts with \"(\", after blanks, is\n"
    "    an expression; \"-\" is standard input; any other SOURCE is the name of a file.\n"
    "    Without a source, standard input is read.\n"
    "\n"
    "    Reading stops at the first error: the error is written to standard error,\n"
    "    prefixed \"ktlprint: \", and nothing further is read.\n"
    "\n"
    "OPTIONS\n"
    "    -e EXPRESSION\n"
    "        Read EXPRESSION as KTL text, whatever it starts with.\n"
    "\n"
    "    -h, --help\n"
    "        Print this help and exit.\n"
    "\n"
    "EXIT STATUS\n"
    "    0   every source was read to its end.\n"
    "    1   a source could not be opened or read (\"ktlprint: cannot open FILE\"),\n"
    "        or the reader failed on it.\n"
    "    2   the command line is wrong.\n"
    "\n"
    "EXAMPLES\n"
    "    ktlprint examples/hello.ktl\n"
    "        Print the forms of a configuration file.\n"
    "\n"
    "    ktlprint '(a (b 0x1F) \"text\" 2.5)'\n"
    "        Print one expression; the hexadecimal integer comes back as 31.\n"
    "\n"
    "    ktlprint -e \"'x\" -e 42\n"
    "        Print (quote x), then 42.\n"
    "\n"
    "    echo '(x y) z' | ktlprint\n"
    "        Print the forms of standard input.\n";

enum class Kind { kExpression, kFile, kStdin };

struct Source {
  Kind kind;
  std::string text;  // the expression, or the file name
};

bool isExpression(const char* arg) {
  while (*arg && std::isspace(static_cast<unsigned char>(*arg))) ++arg;
  return *arg == '(';
}

// Prints every form of the stream until the symbol eof.
void printAll(DtlInputStream* stream, const DtlObjPtr& frame, const DtlObjPtr& eof) {
  for (DtlObjPtr form = DtcRead(stream, frame); form != eof; form = DtcRead(stream, frame)) {
    form->DtcObjFprint(stdout);
    std::fputs("\n", stdout);
  }
}

// 0 when the source was read to its end, 1 otherwise (the reason is on standard error).
int readSource(const Source& source, const DtlObjPtr& frame, const DtlObjPtr& eof) {
  FILE* file = nullptr;
  if (source.kind == Kind::kFile) {
    struct stat info;
    file = std::fopen(source.text.c_str(), "r");
    if (file && (fstat(fileno(file), &info) != 0 || S_ISDIR(info.st_mode))) {
      std::fclose(file);
      file = nullptr;
    }
    if (!file) {
      std::fflush(stdout);
      std::fprintf(stderr, "ktlprint: cannot open %s\n", source.text.c_str());
      return 1;
    }
  }
  int status = 0;
  try {
    if (source.kind == Kind::kExpression) {
      DtlStringInputStream stream(source.text.c_str());
      printAll(&stream, frame, eof);
    } else {
      FILE* in = file ? file : stdin;
      DtlFileInputStream stream(in);
      printAll(&stream, frame, eof);
      if (std::ferror(in)) {
        std::fflush(stdout);
        std::fprintf(stderr, "ktlprint: cannot read %s\n",
                     file ? source.text.c_str() : "standard input");
        status = 1;
      }
    }
  } catch (const DtException& e) {
    std::fflush(stdout);
    std::cerr << "ktlprint: " << e << std::endl;
    status = 1;
  }
  if (file) std::fclose(file);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Source> sources;
  for (int i = 1; i < argc; ++i) {
    const char* arg = argv[i];
    if (std::strcmp(arg, "-h") == 0 || std::strcmp(arg, "--help") == 0) {
      std::fputs(kUsage, stdout);
      return 0;
    }
    if (std::strcmp(arg, "-e") == 0) {
      if (i + 1 >= argc) {
        std::fprintf(stderr, "ktlprint: -e needs an expression (see ktlprint --help)\n");
        return 2;
      }
      sources.push_back({Kind::kExpression, argv[++i]});
    } else if (std::strcmp(arg, "-") == 0) {
      sources.push_back({Kind::kStdin, ""});
    } else if (isExpression(arg)) {
      sources.push_back({Kind::kExpression, arg});
    } else {
      sources.push_back({Kind::kFile, arg});
    }
  }
  if (sources.empty()) sources.push_back({Kind::kStdin, ""});

  int status = 0;
  try {
    DtlObjPtr frame(DtlFrameTag);
    DtlObjPtr eof = KORRti::DtcIntern("eof", frame);
    for (const Source& source : sources) {
      status = readSource(source, frame, eof);
      if (status != 0) break;
    }
  } catch (const DtException& e) {
    std::fflush(stdout);
    std::cerr << "ktlprint: " << e << std::endl;
    status = 1;
  }
  std::fflush(stdout);
  return status;
}
