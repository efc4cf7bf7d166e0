#ifndef KTL_CONFIGVARIABLE_H
#define KTL_CONFIGVARIABLE_H

#include <ktl/baseConfigVariable.h>
#include <ktl/cmdLine.h>
#include <ktl/envObject.h>
#include <ktl/environment.h>
#include <ktl/variableGroup.h>
#include <matrix/taitBryan.h>
#include <matrix/vector.h>
#include <util/dtException.h>
#include <util/dtString.h>
#include <util/export.h>

#include <iostream>
#include <list>
#include <set>
#include <string>
#include <type_traits>

KTL_API_BEGIN

namespace KORRti {

/// How a value of T is named, passes through the command line (as ArgType), becomes text, enters
/// and leaves the configuration tree, and is described in the schema. One specialization for
/// each type a setting can hold: DtString, std::string, int, unsigned int, double, float, bool,
/// DtVector64 and DtTaitBryan.
template <typename T>
struct DtVarType;

// -- Values in the tree. A value lives on an object made for its setting.

/// The value of node's "value" attribute; throws DtInvalidInput for an empty handle and for an
/// object without that attribute.
DtString getObjectValue(DtEnvValueSP node);
/// Sets node's "value" attribute, adding it when there is none; throws DtInvalidInput for an
/// empty handle.
void setObjectValue(DtEnvValueSP node, const DtString& text);

/// -- Vectors and angles as text: three numbers separated by a blank, read back with one comma
/// allowed after each of the first two. A number that can't be read, and each one after it, is 0.
DtString vectorToString(DtVector64 vector);
DtVector64 vectorFromString(const DtString& text);
DtString taitBryanToString(DtTaitBryan angles);
DtTaitBryan taitBryanFromString(const DtString& text);

/// -- Vectors and angles in the tree: the objects "x", "y", "z" (or "heading", "pitch", "roll")
/// under env's root, each holding its number in its "value" attribute. Reading throws
/// DtInvalidInput when an object is missing and DtCorruptedState when a number can't be read.
void vectorToEnvironment(DtEnvironment env, DtVector64 vector);
DtVector64 vectorFromEnvironment(DtEnvironment env);
void taitBryanToEnvironment(DtEnvironment env, DtTaitBryan angles);
DtTaitBryan taitBryanFromEnvironment(DtEnvironment env);

/// -- Their schema types: a complex type "DtVector" holding a sequence of three elements of type
/// "double", for the angles as well (their settings name the type "DtTaitBryan", which nothing
/// declares).
DtEnvValueSP createVectorSchema(DtEnvironment env);
DtEnvValueSP createTaitBryanSchema(DtEnvironment env);

/// -- Single values: the attribute "value" of env's root.
template <typename T>
void simpleValueToEnvironment(DtEnvironment env, T value) {
  env.addAttribute("value", DtVarType<T>::convertToString(value));
}

/// The first "value" attribute at or below env's root, depth first; throws DtCorruptedState
/// when there is none.
template <typename T>
T simpleValueFromEnvironment(DtEnvironment env) {
  DtEnvValueSP attribute = env.getAttribute("value");
  if (!attribute) {
    throw DtCorruptedState("DtCorruptedState: Unable to find value attribute.", __PRETTY_FUNCTION__,
                           DtSourceName(__FILE__).c_str(), __LINE__, nullptr);
  }
  return DtVarType<T>::convertFromString(attribute->value());
}

template <typename T>
DtEnvValueSP simpleValueTypeSchema(DtEnvironment env) {
  return DtBaseConfigVariable::createSimpleSchemaType(env, DtVarType<T>::nativeNameOfType(),
                                                      DtVarType<T>::xsNameOfType());
}

namespace detail {

/// What the types held in one "value" attribute share: they pass through the command line as
/// they are.
template <typename T>
struct DtSimpleVarType {
  typedef T ArgType;
  static ArgType convertToArgType(T value) { return value; }
  static T convertFromArgType(ArgType value) { return value; }
  static DtEnvValueSP createSchemaType(DtEnvironment env) { return simpleValueTypeSchema<T>(env); }
  static void convertToEnvironmentValue(DtEnvironment env, T value) {
    simpleValueToEnvironment<T>(env, value);
  }
  static T convertFromEnvironmentValue(DtEnvironment env) {
    return simpleValueFromEnvironment<T>(env);
  }
};

}  // namespace detail

template <>
struct DtVarType<DtString> : detail::DtSimpleVarType<DtString> {
  static DtString nativeNameOfType() { return "DtString"; }
  static DtString argNameOfType() { return "string"; }
  static DtString xsNameOfType() { return "xs:string"; }
  static DtString convertToString(DtString value) { return value; }
  static DtString convertFromString(const DtString& text) { return text; }
};

template <>
struct DtVarType<std::string> : detail::DtSimpleVarType<std::string> {
  static DtString nativeNameOfType() { return "std::string"; }
  static DtString argNameOfType() { return "string"; }
  static DtString xsNameOfType() { return "xs:string"; }
  static DtString convertToString(const std::string& value) { return DtString(value); }
  static std::string convertFromString(const DtString& text) { return text.stdString(); }
};

template <>
struct DtVarType<int> : detail::DtSimpleVarType<int> {
  static DtString nativeNameOfType() { return "int"; }
  static DtString argNameOfType() { return "int"; }
  static DtString xsNameOfType() { return "xs:integer"; }
  static DtString convertToString(int value) { return DtString(value); }
  static int convertFromString(const DtString& text) { return text.toInt(); }
};

template <>
struct DtVarType<unsigned int> : detail::DtSimpleVarType<unsigned int> {
  static DtString nativeNameOfType() { return "unsigned int"; }
  static DtString argNameOfType() { return "unsigned int"; }
  static DtString xsNameOfType() { return "xs:unsignedInt"; }
  static DtString convertToString(unsigned int value) { return DtString(value); }
  static unsigned int convertFromString(const DtString& text) { return text.toUInt(); }
};

template <>
struct DtVarType<double> : detail::DtSimpleVarType<double> {
  static DtString nativeNameOfType() { return "double"; }
  static DtString argNameOfType() { return "double"; }
  static DtString xsNameOfType() { return "xs:double"; }
  static DtString convertToString(double value) { return DtString(value); }
  static double convertFromString(const DtString& text) { return text.toDouble(); }
};

template <>
struct DtVarType<float> : detail::DtSimpleVarType<float> {
  static DtString nativeNameOfType() { return "float"; }
  static DtString argNameOfType() { return "float"; }
  static DtString xsNameOfType() { return "xs:float"; }
  static DtString convertToString(float value) { return DtString(static_cast<double>(value)); }
  static float convertFromString(const DtString& text) { return text.toFloat(); }
};

template <>
struct DtVarType<bool> : detail::DtSimpleVarType<bool> {
  static DtString nativeNameOfType() { return "bool"; }
  static DtString argNameOfType() { return "boolean"; }
  static DtString xsNameOfType() { return "xs:boolean"; }
  static DtString convertToString(bool value) { return value ? "true" : "false"; }
  static bool convertFromString(const DtString& text) { return text.toBool(); }
};

/// A vector passes through the command line as text, and lives in the tree as three objects.
template <>
struct DtVarType<DtVector64> {
  typedef DtString ArgType;
  static DtString nativeNameOfType() { return "DtVector"; }
  static DtString argNameOfType() { return "string"; }
  static DtString xsNameOfType() { return "DtVector"; }
  static ArgType convertToArgType(DtVector64 value) { return vectorToString(value); }
  static DtVector64 convertFromArgType(ArgType text) { return vectorFromString(text); }
  static DtString convertToString(DtVector64 value) { return vectorToString(value); }
  static DtVector64 convertFromString(const DtString& text) { return vectorFromString(text); }
  static DtEnvValueSP createSchemaType(DtEnvironment env) { return createVectorSchema(env); }
  static void convertToEnvironmentValue(DtEnvironment env, DtVector64 value) {
    vectorToEnvironment(env, value);
  }
  static DtVector64 convertFromEnvironmentValue(DtEnvironment env) {
    return vectorFromEnvironment(env);
  }
};

/// Angles, as vectors are: text on the command line, three objects in the tree.
template <>
struct DtVarType<DtTaitBryan> {
  typedef DtString ArgType;
  static DtString nativeNameOfType() { return "DtTaitBryan"; }
  static DtString argNameOfType() { return "string"; }
  static DtString xsNameOfType() { return "DtTaitBryan"; }
  static ArgType convertToArgType(DtTaitBryan value) { return taitBryanToString(value); }
  static DtTaitBryan convertFromArgType(ArgType text) { return taitBryanFromString(text); }
  static DtString convertToString(DtTaitBryan value) { return taitBryanToString(value); }
  static DtTaitBryan convertFromString(const DtString& text) { return taitBryanFromString(text); }
  static DtEnvValueSP createSchemaType(DtEnvironment env) { return createTaitBryanSchema(env); }
  static void convertToEnvironmentValue(DtEnvironment env, DtTaitBryan value) {
    taitBryanToEnvironment(env, value);
  }
  static DtTaitBryan convertFromEnvironmentValue(DtEnvironment env) {
    return taitBryanFromEnvironment(env);
  }
};

/// One typed setting: a default, a description, and a place on the command line, in
/// configuration files, or both. It joins its group on construction. Its value starts as the
/// default and changes by setValue(), by the command line and by configuration files.
template <typename T>
class DtConfigVariable : public DtBaseConfigVariable {
 public:
  typedef typename DtVarType<T>::ArgType ArgType;

  /// A "&" in name makes the character behind it the short flag, in place of flag, and is cut
  /// out of the name: "time&Step" is the setting "timeStep" with the flag "S".
  DtConfigVariable(DtVariableGroup* group, const DtString& name, T defaultValue,
                   const DtString& description, DtVariableScope scope, bool required,
                   const DtString& flag);

  const DtString& name() const override { return name_; }
  /// Binds on the command line and in the schema only: a file may leave the setting out.
  bool isRequired() const override { return required_; }
  /// A value argument that starts from the current value; for bool a switch, which starts from
  /// the default and is never required. Made once and added to each later command line.
  void getCommandLineArg(DtCmdLine::CmdLine& cmd) override;
  /// Takes the argument's value, and notes the setting as set, when the argument was given.
  void updateFromCommandLineArg() override;
  /// Declares the type once; the "minOccurs" it puts on an optional setting's type follows the
  /// type's child elements, so the XML writer leaves it out.
  void getEnvironmentSchemaType(DtEnvironment env, std::set<DtString>& seenTypes) const override;
  /// The description as a comment, then an object named after the setting holding its value.
  DtEnvValueSP getEnvironmentValue(DtEnvironment env) override;
  /// Takes the value of the one object of the setting's name below its group's object. None
  /// leaves the value; more than one leaves it too and says so on standard output.
  void updateFromEnvironment(DtEnvironment env) override;
  DtString type() const override { return DtVarType<T>::nativeNameOfType(); }

  T value() const { return value_; }
  /// Does not count as set: only the command line does that.
  void setValue(T value) { value_ = value; }
  T defaultValue() const { return defaultValue_; }
  const DtString& flag() const { return flag_; }
  DtVariableGroup* group() const { return group_; }

 protected:
  /// The last step of updateFromEnvironment(): what the search found.
  void updateFromObjects(const std::list<DtEnvValueSP>& found);

 private:
  DtString name_;
  DtString flag_;
  bool required_;
  DtVariableGroup* group_;
  T defaultValue_;
  T value_;
};

template <typename T>
DtConfigVariable<T>::DtConfigVariable(DtVariableGroup* group, const DtString& name, T defaultValue,
                                      const DtString& description, DtVariableScope scope,
                                      bool required, const DtString& flag)
    : DtBaseConfigVariable(group, scope, description),
      name_(name),
      flag_(flag),
      required_(required),
      group_(group),
      defaultValue_(defaultValue),
      value_(defaultValue) {
  std::string text = name.stdString();
  std::string::size_type mark = text.find('&');
  if (mark != std::string::npos) {
    flag_ = DtString(text.substr(mark + 1, 1));
    name_ = DtString(text.erase(mark, 1));
  }
}

template <typename T>
void DtConfigVariable<T>::getCommandLineArg(DtCmdLine::CmdLine& cmd) {
  if (!inCommandLine()) return;
  if (!commandLineArg_) {
    if constexpr (std::is_same<ArgType, bool>::value) {
      commandLineArg_ =
          new DtCmdLine::SwitchArg(flag_.stdString(), name_.stdString(), description_.stdString(),
                                   DtVarType<T>::convertToArgType(defaultValue_));
    } else {
      commandLineArg_ = new DtCmdLine::ValueArg<ArgType>(
          flag_.stdString(), name_.stdString(), description_.stdString(), required_,
          DtVarType<T>::convertToArgType(value_), DtVarType<T>::argNameOfType().stdString());
    }
  }
  cmd.add(commandLineArg_);
}

template <typename T>
void DtConfigVariable<T>::updateFromCommandLineArg() {
  if (!commandLineArg_ || !commandLineArg_->isSet()) return;
  if constexpr (std::is_same<ArgType, bool>::value) {
    setValue(DtVarType<T>::convertFromArgType(
        static_cast<DtCmdLine::SwitchArg*>(commandLineArg_)->getValue()));
  } else {
    setValue(DtVarType<T>::convertFromArgType(
        static_cast<DtCmdLine::ValueArg<ArgType>*>(commandLineArg_)->getValue()));
  }
  set_ = true;
}

template <typename T>
void DtConfigVariable<T>::getEnvironmentSchemaType(DtEnvironment env,
                                                   std::set<DtString>& seenTypes) const {
  if (!seenTypes.insert(type()).second) return;
  DtEnvValueSP node = DtVarType<T>::createSchemaType(env);
  if (!required_) env.addAttribute("minOccurs", "0", node);
}

template <typename T>
DtEnvValueSP DtConfigVariable<T>::getEnvironmentValue(DtEnvironment env) {
  if (!description_.isEmpty()) env.addComment(description_);
  DtEnvValueSP node = env.addObject(name_);
  DtVarType<T>::convertToEnvironmentValue(DtEnvironment(node), value_);
  return node;
}

template <typename T>
void DtConfigVariable<T>::updateFromEnvironment(DtEnvironment env) {
  if (group_) env.setRoot(group_->getGroupValue(env));
  std::list<DtEnvValueSP> found;
  env.getObjectsByName(name_, found);
  updateFromObjects(found);
}

template <typename T>
void DtConfigVariable<T>::updateFromObjects(const std::list<DtEnvValueSP>& found) {
  if (found.empty()) return;
  if (found.size() > 1) {
    std::cout << "Unable to get from Environment, Object not unique: " << name_ << std::endl;
    return;
  }
  if (!DtEnvObject::isObject(found.front())) {
    std::cout << "Environment Object wrong type." << std::endl;
    return;
  }
  setValue(DtVarType<T>::convertFromEnvironmentValue(DtEnvironment(found.front())));
}

/// The library's own instantiations; applications instantiate the other types.
extern template class DtConfigVariable<double>;
extern template class DtConfigVariable<bool>;

}  // namespace KORRti

KTL_API_END

#endif
