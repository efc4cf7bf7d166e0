#include <ktl/cmdLine.h>
#include <util/notify.h>
#include <util/system.h>

#include <cstdlib>
#include <ostream>

namespace KORRti {
namespace DtCmdLine {

namespace {

// Sets DtNotifyLevel for the lifetime of the object and puts the old value back after.
class NotifyLevelFor {
 public:
  explicit NotifyLevelFor(int level) : saved_(DtNotifyLevel) { DtNotifyLevel = level; }
  ~NotifyLevelFor() { DtNotifyLevel = saved_; }
  NotifyLevelFor(const NotifyLevelFor&) = delete;
  NotifyLevelFor& operator=(const NotifyLevelFor&) = delete;

 private:
  int saved_;
};

}  // namespace

void exitAfterOutput(int code, bool pause) {
  {
    NotifyLevelFor level(3);
    if (pause) {
      DtInfo << "Press any key to continue" << std::endl;
      while (!DtPollBlockingInputChar()) DtSleep(0.1);
    }
  }
  std::exit(code);
}

void StdOutput::usage(CmdLineInterface& cmd) {
  NotifyLevelFor level(3);
  DtInfo << std::endl << "USAGE: " << std::endl << std::endl;
  _shortUsage(cmd, DtInfo);
  DtInfo << std::endl << std::endl << "Where: " << std::endl << std::endl;
  _longUsage(cmd, DtInfo);
  DtInfo << std::endl;
}

void StdOutput::version(CmdLineInterface& cmd) {
  NotifyLevelFor level(3);
  DtInfo << std::endl
         << cmd.getProgramName() << "  version: " << cmd.getVersion() << std::endl
         << std::endl;
}

void StdOutput::failure(CmdLineInterface& cmd, ArgException& e) {
  NotifyLevelFor level(4);
  DtWarn << "PARSE ERROR: " << e.argId() << std::endl
         << "             " << e.error() << std::endl
         << std::endl;
  DtWarn << "Brief USAGE: " << std::endl;
  _shortUsage(cmd, DtWarn);
  DtWarn << std::endl
         << "For complete USAGE and HELP type: " << std::endl
         << "   " << cmd.getProgramName() << " " << Arg::nameStartString() << "help" << std::endl
         << std::endl;
}

HelpVisitor::HelpVisitor(CmdLineInterface* cmd, CmdLineOutput** out, bool pause)
    : TCLAP::HelpVisitor(cmd, out), pause_(pause) {}

void HelpVisitor::visit() {
  (*_out)->usage(*_cmd);
  exitAfterOutput(0, pause_);
}

VersionVisitor::VersionVisitor(CmdLineInterface* cmd, CmdLineOutput** out, bool pause)
    : TCLAP::VersionVisitor(cmd, out), pause_(pause) {}

void VersionVisitor::visit() {
  (*_out)->version(*_cmd);
  exitAfterOutput(0, pause_);
}

CmdLine::CmdLine(const std::string& message, char delimiter, const std::string& version, bool pause)
    : TCLAP::CmdLine(message, delimiter, version, false), pause_(pause) {
  // TCLAP made its own output and, without its help and version, only the "--" argument.
  delete _output;
  _output = new StdOutput;

  // Help and version go in as TCLAP puts them, so "--" stays first in the list.
  Arg* ignoreRest = _argList.front();
  _argList.pop_front();
  Visitor* helpVisitor = new HelpVisitor(this, &_output, pause);
  deleteOnExit(helpVisitor);
  SwitchArg* help =
      new SwitchArg("h", "help", "Displays usage information and exits.", false, helpVisitor);
  deleteOnExit(help);
  add(help);
  Visitor* versionVisitor = new VersionVisitor(this, &_output, pause);
  deleteOnExit(versionVisitor);
  SwitchArg* versionArg = new SwitchArg("v", "version", "Displays version information and exits.",
                                        false, versionVisitor);
  deleteOnExit(versionArg);
  add(versionArg);
  _argList.push_front(ignoreRest);
}

void CmdLine::parse(int argc, char** argv, bool exitOnFailure) {
  std::vector<std::string> args(argv, argv + argc);
  parse(args, exitOnFailure);
}

void CmdLine::parse(int argc, const char* const* argv) {
  std::vector<std::string> args(argv, argv + argc);
  parse(args, true);
}

void CmdLine::parse(std::vector<std::string>& args) {
  parse(args, true);
}

void CmdLine::parse(std::vector<std::string>& args, bool exitOnFailure) {
  try {
    matchArgs(args);
  } catch (ArgException& e) {
    if (!exitOnFailure) throw CmdLineParseException(e.error(), "undefined");
    _output->failure(*this, e);
    exitAfterOutput(1, pause_);
  }
}

// TCLAP's own loop, but for the one line about missing required arguments.
void CmdLine::matchArgs(std::vector<std::string>& args) {
  if (args.empty()) {
    throw CmdLineParseException(
        "The args vector must not be empty, the first entry should contain the program's name.");
  }
  _progName = args.front();
  args.erase(args.begin());

  int requiredCount = 0;
  for (int i = 0; static_cast<size_t>(i) < args.size(); i++) {
    bool matched = false;
    for (Arg* arg : _argList) {
      if (arg->processArg(&i, args)) {
        requiredCount += _xorHandler.check(arg);
        matched = true;
        break;
      }
    }
    // A flag start with nothing but blanks behind it is an empty group of switches.
    if (!matched && _emptyCombined(args[i])) matched = true;
    if (!matched && !Arg::ignoreRest()) {
      throw CmdLineParseException("Couldn't find match for argument", args[i]);
    }
  }
  if (requiredCount < _numRequired) {
    throw CmdLineParseException("One or more required arguments missing!");
  }
  if (requiredCount > _numRequired) throw CmdLineParseException("Too many arguments!");
}

}  // namespace DtCmdLine
}  // namespace KORRti
