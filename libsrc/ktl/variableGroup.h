#ifndef KTL_VARIABLEGROUP_H
#define KTL_VARIABLEGROUP_H

#include <ktl/baseConfigVariable.h>
#include <ktl/environment.h>
#include <util/dtString.h>
#include <util/export.h>

#include <list>
#include <set>

KTL_API_BEGIN

namespace KORRti {

/// A setting that holds further settings, so that settings form a tree: in a configuration file
/// a group is an element, and its members lie inside it. Every operation is passed on to the
/// members. A group keeps bare pointers to its members, which must outlive its use of them.
class DtVariableGroup : public DtBaseConfigVariable {
 public:
  /// Joins parent, when there is one. An empty type makes the type the name. A group is always
  /// in files and on the command line.
  DtVariableGroup(DtVariableGroup* parent, const DtString& name, const DtString& type,
                  const DtString& description);
  DtVariableGroup(const DtVariableGroup&) = default;
  DtVariableGroup& operator=(const DtVariableGroup&) = default;
  ~DtVariableGroup() override;

  /// The group's type, not its name: a group is written as an element named by its type, so its
  /// element and its schema type carry the same word.
  const DtString& name() const override;
  /// Always true.
  bool isRequired() const override;
  void getCommandLineArg(DtCmdLine::CmdLine& cmd) override;
  /// Every member on the command line, but those that changeOnce() keeps as set.
  void updateFromCommandLineArg() override;
  /// The group's complex type, once per type, and each file member's type.
  void getEnvironmentSchemaType(DtEnvironment env, std::set<DtString>& seenTypes) const override;
  /// The group's object (after its description as a comment) with its file members inside.
  DtEnvValueSP getEnvironmentValue(DtEnvironment env) override;
  /// Every member in files, but those that changeOnce() keeps as set. Each finds its own group's
  /// object in env.
  void updateFromEnvironment(DtEnvironment env) override;
  /// The group's type.
  DtString type() const override;
  /// Appends a member; members register themselves on construction.
  virtual void addBaseVariable(DtBaseConfigVariable* variable);
  /// Whether a setting that the command line has set keeps that value: the flag of the top of
  /// the tree, false without one.
  virtual bool changeOnce() const;

  /// The group's object in env, found below the parent's object: throws DtCorruptedState when
  /// the tree lacks it.
  DtEnvValueSP getGroupValue(DtEnvironment env) const;

  const DtString& groupName() const { return groupName_; }
  const DtString& groupType() const { return groupType_; }
  DtVariableGroup* parent() const { return parent_; }
  const std::list<DtBaseConfigVariable*>& variables() const { return variables_; }

 protected:
  /// The object's name in the tree; it reaches a file only as the element's "name" attribute.
  DtString groupName_;
  /// The object's type in the tree and the schema type.
  DtString groupType_;
  DtVariableGroup* parent_;
  /// In order of registration; not owned.
  std::list<DtBaseConfigVariable*> variables_;
};

}  // namespace KORRti

KTL_API_END

#endif
