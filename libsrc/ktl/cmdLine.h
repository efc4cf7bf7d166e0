#ifndef KTL_CMDLINE_H
#define KTL_CMDLINE_H

// The command-line parser of the settings: TCLAP's classes under the name DtCmdLine, with a thin
// layer that changes what the settings need changed. The help and version arguments are always
// there (version also as -v), all output goes to the notify streams, help, version and a failure
// can wait for a key before the process ends, and a missing required argument is reported in
// one line for all of them.
#include <tclap/CmdLine.h>
#include <util/dtString.h>
#include <util/export.h>

#include <string>
#include <vector>

KTL_API_BEGIN

// A DtString argument takes the whole text of its value, blanks included, as std::string does.
namespace TCLAP {
template <>
struct ArgTraits<KORRti::DtString> {
  typedef StringLike ValueCategory;
};
}  // namespace TCLAP

namespace KORRti {
namespace DtCmdLine {

using TCLAP::Arg;
using TCLAP::ArgException;
using TCLAP::ArgParseException;
using TCLAP::CmdLineInterface;
using TCLAP::CmdLineOutput;
using TCLAP::CmdLineParseException;
using TCLAP::IgnoreRestVisitor;
using TCLAP::SpecificationException;
using TCLAP::SwitchArg;
using TCLAP::ValueArg;
using TCLAP::Visitor;

/// Ends the process once help, version or a failure has been printed: with pause, it first asks
/// for a key on DtInfo and polls standard input every 0.1 seconds until one comes. DtNotifyLevel
/// is 3 while it asks and has its old value again when the process exits.
[[noreturn]] void exitAfterOutput(int code, bool pause);

/// TCLAP's texts, written to DtInfo (usage, version) and DtWarn (failure). Each raises
/// DtNotifyLevel for its own output only (3 for DtInfo, 4 for DtWarn), so the text comes out
/// whatever the host's level is.
class StdOutput : public TCLAP::StdOutput {
 public:
  void usage(CmdLineInterface& cmd) override;
  void version(CmdLineInterface& cmd) override;
  /// Prints the failure and a brief usage; the caller ends the process.
  void failure(CmdLineInterface& cmd, ArgException& e) override;
};

/// Prints the usage and ends the process with 0, after a key when pause is set.
class HelpVisitor : public TCLAP::HelpVisitor {
 public:
  HelpVisitor(CmdLineInterface* cmd, CmdLineOutput** out, bool pause);
  void visit() override;

 private:
  bool pause_;
};

/// Prints the version and ends the process with 0, after a key when pause is set.
class VersionVisitor : public TCLAP::VersionVisitor {
 public:
  VersionVisitor(CmdLineInterface* cmd, CmdLineOutput** out, bool pause);
  void visit() override;

 private:
  bool pause_;
};

/// A command line with -h/--help, -v/--version and -- always defined. The last constructor
/// argument is not TCLAP's switch for help and version but pause: whether help, version and a
/// failure wait for a key before the process ends.
class CmdLine : public TCLAP::CmdLine {
 public:
  CmdLine(const std::string& message, char delimiter, const std::string& version, bool pause);
  CmdLine(const CmdLine&) = delete;
  CmdLine& operator=(const CmdLine&) = delete;

  bool pause() const { return pause_; }
  /// Help and version are always there, so a failure prints the brief usage.
  bool hasHelpAndVersion() override { return true; }

  /// Parses the arguments into the added Args; argv[0] is the program's name. Help and version
  /// print and end the process. A wrong command line is reported through the output and ends the
  /// process with 1 when exitOnFailure is set; otherwise it is thrown as a CmdLineParseException
  /// with the error text and no argument id.
  void parse(int argc, char** argv, bool exitOnFailure);
  /// TCLAP's own entries take the same road, ending the process on a failure.
  void parse(int argc, const char* const* argv) override;
  void parse(std::vector<std::string>& args);

 private:
  void parse(std::vector<std::string>& args, bool exitOnFailure);
  /// Matches args (the program's name taken off) against the Args; throws the ArgException of
  /// the first thing wrong.
  void matchArgs(std::vector<std::string>& args);

  bool pause_;
};

}  // namespace DtCmdLine
}  // namespace KORRti

KTL_API_END

#endif
