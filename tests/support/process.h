#ifndef TESTS_SUPPORT_PROCESS_H
#define TESTS_SUPPORT_PROCESS_H

#include <string>
#include <vector>

namespace ktltest {

struct Outcome {
  std::string out;
  std::string err;
  int status = -1;  // the exit status, or -1 if the program did not exit normally
};

// Runs a program with these arguments and this standard input, and collects what it writes.
Outcome runProgram(std::string const& program, std::vector<std::string> const& args,
                   std::string const& input = "");

}  // namespace ktltest

#endif
