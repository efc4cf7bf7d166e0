// ktl: loads KTL configuration files, expressions and name=value settings into one
// interpreter, or reads expressions from standard input and prints their values.
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <ktl/ktl.h>

using namespace KORRti;

namespace {

const char kUsage[] =
    "NAME\n"
    "    ktl - load and evaluate KTL configuration text\n"
    "\n"
    "SYNOPSIS\n"
    "    ktl [-I dir]... [file | (expression) | name=value]...\n"
    "    ktl [-I dir]...\n"
    "\n"
    "DESCRIPTION\n"
    "    Loads each argument in order into one interpreter. An argument that starts with\n"
    "    \"(\" is an expression, one that holds \"=\" sets a variable that is already bound\n"
    "    (name=value means (set! name value), so a string value needs its quotes), and any\n"
    "    other is a file, looked for in the working directory and then in each -I directory.\n"
    "    Problems with an argument are reported on standard error and the next argument is\n"
    "    loaded all the same.\n"
    "\n"
    "    With no argument but options, ktl reads expressions from standard input and prints\n"
    "    the value of each; an error is reported and reading goes on.\n"
    "\n"
    "OPTIONS\n"
    "    -I dir      add dir to the directories searched for files (also by (load ...))\n"
    "    -h, --help  print this text and exit\n"
    "\n"
    "EXIT STATUS\n"
    "    0 when every argument loaded (or every expression read from standard input\n"
    "    evaluated), 1 when one did not, 2 for a wrong command line.\n"
    "\n"
    "EXAMPLES\n"
    "    ktl site.ktl '(format t \"~A~%\" (+ 1 2))'\n"
    "    ktl -I /etc/sim defaults.ktl DtNotifyLevel=2 local.ktl\n"
    "    echo '(car (list 1 2))' | ktl\n";

// True when the file holds no expression at all, so that an empty answer of the loader is no
// failure for it.
bool holdsNoExpression(char const* path) {
  FILE* file = std::fopen(path, "r");
  if (!file) return false;
  bool empty = false;
  try {
    DtlObjPtr scratch(DtlFrameTag);
    DtlFileInputStream stream(file);
    empty = DtcRead(&stream, scratch) == DtcIntern("eof", scratch);
  } catch (DtException const&) {
    empty = false;
  }
  std::fclose(file);
  return empty;
}

bool isExpression(std::string const& arg) {
  return !arg.empty() && arg[0] == '(';
}

// Loads one argument; true when it loaded. searchPath holds the -I directories.
bool loadArgument(DtKtlEnvironment& ktl, std::string const& arg, std::string const& searchPath) {
  std::vector<char> text(arg.begin(), arg.end());
  text.push_back('\0');
  DtlObjPtr result = ktl.loadLispFileOrExpr(text.data(), 1);
  if (!result.isNull()) return true;
  if (isExpression(arg) || arg.find('=') != std::string::npos) return false;
  // A file of comments only loads to nothing, and that is fine.
  DtFilename path(arg.c_str());
  if (!path.exists()) path.searchAlternatePath(searchPath.c_str());
  return holdsNoExpression(path.c_str());
}

// Reads, evaluates and prints until the end of standard input.
bool readEvalPrint(DtKtlEnvironment& ktl) {
  bool interactive = isatty(STDIN_FILENO) == 1;
  bool allGood = true;
  DtlFileInputStream stream(stdin);
  DtlObjPtr eof = DtcIntern("eof", ktl.env());
  for (;;) {
    if (interactive) {
      std::fputs("ktl> ", stdout);
      std::fflush(stdout);
    }
    try {
      DtlObjPtr form = DtcRead(&stream, ktl.env());
      if (form == eof) break;
      DtlObjPtr value = DtcEval(form, ktl.env());
      if (!value.isNull()) value->DtcObjFprint(stdout);
      std::fputs("\n", stdout);
      std::fflush(stdout);
    } catch (DtException const& e) {
      allGood = false;
      std::fflush(stdout);
      std::fprintf(stderr, "ktl: %s\n", e.initialException()->message());
    }
  }
  if (interactive) std::fputs("\n", stdout);
  return allGood;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> loads;
  std::string searchPath;  // the -I directories, colon-separated
  auto addPath = [&searchPath](char const* dir) {
    DtlAddLoadPath(dir);
    if (!searchPath.empty()) searchPath += ':';
    searchPath += dir;
  };
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "-h" || arg == "--help") {
      std::fputs(kUsage, stdout);
      return 0;
    }
    if (arg == "-I") {
      if (i + 1 >= argc) {
        std::fprintf(stderr, "ktl: -I needs a directory\n");
        return 2;
      }
      addPath(argv[++i]);
      continue;
    }
    if (arg.size() > 2 && arg.compare(0, 2, "-I") == 0) {
      addPath(arg.c_str() + 2);
      continue;
    }
    loads.push_back(arg);
  }

  DtKtlEnvironment ktl;
  if (loads.empty()) return readEvalPrint(ktl) ? 0 : 1;
  bool allGood = true;
  for (std::string const& arg : loads) {
    if (!loadArgument(ktl, arg, searchPath)) {
      allGood = false;
      std::fprintf(stderr, "ktl: %s did not load\n", arg.c_str());
    }
  }
  return allGood ? 0 : 1;
}
