#include <ktl/baseConfigVariable.h>
#include <ktl/variableGroup.h>

namespace KORRti {

namespace {

// An xs:attribute called name of xsType, with use required or optional, under type.
void addSchemaAttribute(DtEnvironment& env, DtEnvValueSP type, const DtString& name,
                        const DtString& xsType, const DtString& use) {
  DtEnvValueSP attribute = env.addObject(name, "xs:attribute", type);
  env.addAttribute("type", xsType, attribute);
  env.addAttribute("use", use, attribute);
}

}  // namespace

DtBaseConfigVariable::DtBaseConfigVariable(DtVariableGroup* group, DtVariableScope scope,
                                           const DtString& description)
    : scope_(scope), description_(description) {
  if (group) group->addBaseVariable(this);
}

DtBaseConfigVariable::DtBaseConfigVariable(const DtBaseConfigVariable& other)
    : scope_(other.scope_), set_(other.set_), description_(other.description_) {}

DtBaseConfigVariable& DtBaseConfigVariable::operator=(const DtBaseConfigVariable& other) {
  scope_ = other.scope_;
  set_ = other.set_;
  description_ = other.description_;
  return *this;
}

DtBaseConfigVariable::~DtBaseConfigVariable() {
  delete commandLineArg_;
}

DtEnvValueSP DtBaseConfigVariable::createSimpleSchemaType(DtEnvironment env, const DtString& name,
                                                          const DtString& xsType) {
  DtEnvValueSP type = env.addObject(name, "xs:complexType");
  addSchemaAttribute(env, type, "value", xsType, "required");
  addSchemaAttribute(env, type, "name", "xs:string", "optional");
  return type;
}

DtEnvValueSP DtBaseConfigVariable::createComplexSchemaType(
    DtEnvironment env, const DtString& name, bool sequence,
    const std::list<DtBaseConfigVariable*>& variables) {
  DtEnvValueSP type = env.addObject(name, "xs:complexType");
  DtEnvValueSP members = env.addObject(sequence ? "xs:sequence" : "xs:all", type);
  for (const DtBaseConfigVariable* variable : variables) {
    if (!variable->inConfigFile()) continue;
    DtEnvValueSP element = env.addObject(variable->name(), "xs:element", members);
    env.addAttribute("type", variable->type(), element);
    if (!variable->isRequired()) env.addAttribute("minOccurs", "0", element);
  }
  addSchemaAttribute(env, type, "name", "xs:string", "optional");
  return type;
}

DtEnvValueSP DtBaseConfigVariable::createSchemaDeclaration(DtEnvironment env, const DtString& name,
                                                           const DtString& type) {
  DtEnvValueSP element = env.addObject(name, "xs:element");
  if (!type.isEmpty()) env.addAttribute("type", type, element);
  return element;
}

}  // namespace KORRti
