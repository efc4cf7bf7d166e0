#include <ktl/variableGroup.h>
#include <util/dtException.h>

namespace KORRti {

DtVariableGroup::DtVariableGroup(DtVariableGroup* parent, const DtString& name,
                                 const DtString& type, const DtString& description)
    : DtBaseConfigVariable(parent, DtAllScopes, description),
      groupName_(name),
      groupType_(type.isEmpty() ? name : type),
      parent_(parent) {}

DtVariableGroup::~DtVariableGroup() = default;

const DtString& DtVariableGroup::name() const {
  return groupType_;
}

bool DtVariableGroup::isRequired() const {
  return true;
}

void DtVariableGroup::getCommandLineArg(DtCmdLine::CmdLine& cmd) {
  for (DtBaseConfigVariable* variable : variables_) variable->getCommandLineArg(cmd);
}

void DtVariableGroup::updateFromCommandLineArg() {
  for (DtBaseConfigVariable* variable : variables_) {
    if (!variable->inCommandLine()) continue;
    if (changeOnce() && variable->isSet()) continue;
    variable->updateFromCommandLineArg();
  }
}

void DtVariableGroup::getEnvironmentSchemaType(DtEnvironment env,
                                               std::set<DtString>& seenTypes) const {
  if (seenTypes.insert(type()).second) {
    createComplexSchemaType(env, groupType_, false, variables_);
  }
  // Members are visited even when the type was declared already: a sibling of the same type
  // may hold members of other types.
  for (const DtBaseConfigVariable* variable : variables_) {
    if (variable->inConfigFile()) variable->getEnvironmentSchemaType(env, seenTypes);
  }
}

DtEnvValueSP DtVariableGroup::getEnvironmentValue(DtEnvironment env) {
  DtEnvValueSP node;
  if (inConfigFile()) {
    if (!description_.isEmpty()) env.addComment(description_);
    node = env.addObject(groupName_, groupType_);
    env.setRoot(node);
  }
  for (DtBaseConfigVariable* variable : variables_) {
    if (variable->inConfigFile()) variable->getEnvironmentValue(env);
  }
  return node;
}

void DtVariableGroup::updateFromEnvironment(DtEnvironment env) {
  for (DtBaseConfigVariable* variable : variables_) {
    if (!variable->inConfigFile()) continue;
    if (changeOnce() && variable->isSet()) continue;
    variable->updateFromEnvironment(env);
  }
}

DtString DtVariableGroup::type() const {
  return groupType_;
}

void DtVariableGroup::addBaseVariable(DtBaseConfigVariable* variable) {
  variables_.push_back(variable);
}

bool DtVariableGroup::changeOnce() const {
  return parent_ ? parent_->changeOnce() : false;
}

DtEnvValueSP DtVariableGroup::getGroupValue(DtEnvironment env) const {
  if (parent_) env.setRoot(parent_->getGroupValue(env));
  DtEnvValueSP node = env.getObject(groupName_, groupType_);
  if (node) return node;
  DtString message = "DtCorruptedState: Unable to find group:" + groupName_ + ":" + groupType_;
  throw DtCorruptedState(message.c_str(), __PRETTY_FUNCTION__, DtSourceName(__FILE__).c_str(),
                         __LINE__, nullptr);
}

}  // namespace KORRti
