#ifndef KTL_BASECONFIGVARIABLE_H
#define KTL_BASECONFIGVARIABLE_H

#include <ktl/cmdLine.h>
#include <ktl/environment.h>
#include <util/dtString.h>
#include <util/export.h>

#include <list>
#include <set>

KTL_API_BEGIN

namespace KORRti {

class DtVariableGroup;

/// Where a setting can be given: in configuration files, on the command line, or in both.
enum DtVariableScope {
  DtConfigFileScope = 1,
  DtCommandLineScope = 2,
  DtAllScopes = 3,
};

/// One setting as its group sees it: a typed variable (DtConfigVariable<T>) or a group of further
/// settings (DtVariableGroup). Each takes part in the command line, in configuration files and in
/// their schema through the virtual operations below.
class DtBaseConfigVariable {
 public:
  /// Joins group, when there is one, through its addBaseVariable().
  DtBaseConfigVariable(DtVariableGroup* group, DtVariableScope scope, const DtString& description);
  /// A copy joins no group and has no command-line argument yet.
  DtBaseConfigVariable(const DtBaseConfigVariable& other);
  /// Copies the scope, whether it was set and the description; the argument stays this one's.
  DtBaseConfigVariable& operator=(const DtBaseConfigVariable& other);
  /// Deletes the command-line argument.
  virtual ~DtBaseConfigVariable();

  /// The setting's name on the command line and its element name in files.
  virtual const DtString& name() const = 0;
  virtual bool isRequired() const = 0;
  /// Adds the setting's argument to cmd, when it takes part in the command line.
  virtual void getCommandLineArg(DtCmdLine::CmdLine& cmd) = 0;
  /// Takes the value the last parse gave the argument, if it was on the command line.
  virtual void updateFromCommandLineArg() = 0;
  /// Declares the setting's schema type under env's root, unless seenTypes has it already.
  virtual void getEnvironmentSchemaType(DtEnvironment env, std::set<DtString>& seenTypes) const = 0;
  /// Writes the setting under env's root; the node it made.
  virtual DtEnvValueSP getEnvironmentValue(DtEnvironment env) = 0;
  /// Takes the setting's value from a configuration tree, if the tree has it.
  virtual void updateFromEnvironment(DtEnvironment env) = 0;
  /// The name of the setting's schema type.
  virtual DtString type() const = 0;

  DtVariableScope scope() const { return scope_; }
  const DtString& description() const { return description_; }
  bool inConfigFile() const { return (scope_ & DtConfigFileScope) != 0; }
  bool inCommandLine() const { return (scope_ & DtCommandLineScope) != 0; }
  /// Whether the command line has set the setting; a file never does.
  bool isSet() const { return set_; }

  /// Schema building blocks, each added under env's root.
  /// A complex type called name with a required attribute "value" of xsType and an optional
  /// attribute "name".
  static DtEnvValueSP createSimpleSchemaType(DtEnvironment env, const DtString& name,
                                             const DtString& xsType);
  /// A complex type called name with one element for each of variables that is in files (in an
  /// xs:sequence, or an xs:all) and an optional attribute "name".
  static DtEnvValueSP createComplexSchemaType(DtEnvironment env, const DtString& name,
                                              bool sequence,
                                              const std::list<DtBaseConfigVariable*>& variables);
  /// An element declaration called name, of type when that is not empty.
  static DtEnvValueSP createSchemaDeclaration(DtEnvironment env, const DtString& name,
                                              const DtString& type);

 protected:
  DtVariableScope scope_;
  bool set_ = false;
  /// Made by the first getCommandLineArg() and kept for later parses; owned.
  DtCmdLine::Arg* commandLineArg_ = nullptr;
  DtString description_;
};

}  // namespace KORRti

KTL_API_END

#endif
