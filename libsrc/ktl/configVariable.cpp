#include <ktl/configVariable.h>

#include <cstdlib>
#include <list>

namespace KORRti {

template class DtConfigVariable<double>;
template class DtConfigVariable<bool>;

namespace {

[[noreturn]] void throwInvalidInput(const char* message, const char* function, unsigned int line) {
  throw DtInvalidInput(message, function, DtSourceName(__FILE__).c_str(), line, nullptr);
}

[[noreturn]] void throwCorruptedState(const DtString& message, const char* function,
                                      unsigned int line) {
  throw DtCorruptedState(message.c_str(), function, DtSourceName(__FILE__).c_str(), line, nullptr);
}

// Three numbers read with strtod, each from where the last one stopped; one comma standing right
// behind either of the first two is passed over.
void readThreeNumbers(const DtString& text, double numbers[3]) {
  const char* at = text.c_str();
  for (int i = 0; i < 3; ++i) {
    char* end = nullptr;
    numbers[i] = std::strtod(at, &end);
    at = end;
    if (i < 2 && *at == ',') ++at;
  }
}

// Each of the three components' objects under env's root, holding its number.
void componentsToEnvironment(DtEnvironment& env, const char* const names[3],
                             const double values[3]) {
  for (int i = 0; i < 3; ++i) {
    setObjectValue(env.addObject(names[i], names[i]), DtString(values[i]));
  }
}

// The numbers of the three components' objects below env's root: all three objects must be
// there before any number is read.
void componentsFromEnvironment(const DtEnvironment& env, const char* const names[3],
                               const char* const labels[3], const char* missing,
                               const char* function, double values[3]) {
  DtEnvValueSP nodes[3];
  for (int i = 0; i < 3; ++i) nodes[i] = env.getObject(names[i], names[i]);
  if (!nodes[0] || !nodes[1] || !nodes[2]) throwInvalidInput(missing, function, __LINE__);
  for (int i = 0; i < 3; ++i) {
    bool ok = false;
    values[i] = getObjectValue(nodes[i]).toDouble(&ok);
    if (!ok) {
      throwCorruptedState(DtString("DtCorruptedState: Unable to Parse ") + labels[i], function,
                          __LINE__);
    }
  }
}

// A complex type named as the vector type, with a sequence of three required doubles.
DtEnvValueSP createComponentsSchema(DtEnvironment& env, const char* const names[3]) {
  DtConfigVariable<double> first(nullptr, names[0], 0, "", DtConfigFileScope, true, "");
  DtConfigVariable<double> second(nullptr, names[1], 0, "", DtConfigFileScope, true, "");
  DtConfigVariable<double> third(nullptr, names[2], 0, "", DtConfigFileScope, true, "");
  std::list<DtBaseConfigVariable*> components = {&first, &second, &third};
  // The angles' type takes the vector's name too; their settings name "DtTaitBryan".
  return DtBaseConfigVariable::createComplexSchemaType(
      env, DtVarType<DtVector64>::nativeNameOfType(), true, components);
}

const char* const vectorNames[3] = {"x", "y", "z"};
const char* const vectorLabels[3] = {"X", "Y", "Z"};
const char* const angleNames[3] = {"heading", "pitch", "roll"};

}  // namespace

DtString getObjectValue(DtEnvValueSP node) {
  if (!node)
    throwInvalidInput("DtInvalidInput: Object of wrong type", __PRETTY_FUNCTION__, __LINE__);
  // A node that is no object has no attributes to ask.
  DtEnvObject* object = DtEnvObject::castToObject(node);
  DtEnvValueSP attribute = object ? object->attribute("value") : DtEnvValueSP();
  if (!attribute) {
    throwInvalidInput("DtInvalidInput: Object does not have value attribute", __PRETTY_FUNCTION__,
                      __LINE__);
  }
  return attribute->value();
}

void setObjectValue(DtEnvValueSP node, const DtString& text) {
  if (!node)
    throwInvalidInput("DtInvalidInput: Object of wrong type", __PRETTY_FUNCTION__, __LINE__);
  DtEnvObject* object = DtEnvObject::castToObject(node);
  DtEnvValueSP attribute = object ? object->attribute("value") : DtEnvValueSP();
  if (attribute) {
    attribute->setValue(text);
  } else {
    DtEnvironment(node).addAttribute("value", text);
  }
}

DtString vectorToString(DtVector64 vector) {
  return DtString(vector.x()) + " " + DtString(vector.y()) + " " + DtString(vector.z());
}

DtVector64 vectorFromString(const DtString& text) {
  double numbers[3];
  readThreeNumbers(text, numbers);
  return DtVector64(numbers[0], numbers[1], numbers[2]);
}

DtString taitBryanToString(DtTaitBryan angles) {
  return DtString(angles.psi()) + " " + DtString(angles.theta()) + " " + DtString(angles.phi());
}

DtTaitBryan taitBryanFromString(const DtString& text) {
  double numbers[3];
  readThreeNumbers(text, numbers);
  return DtTaitBryan(numbers[0], numbers[1], numbers[2]);
}

void vectorToEnvironment(DtEnvironment env, DtVector64 vector) {
  const double values[3] = {vector.x(), vector.y(), vector.z()};
  componentsToEnvironment(env, vectorNames, values);
}

DtVector64 vectorFromEnvironment(DtEnvironment env) {
  double values[3];
  componentsFromEnvironment(env, vectorNames, vectorLabels,
                            "DtInvalidInput: Object does not have X,Y,Z", __PRETTY_FUNCTION__,
                            values);
  return DtVector64(values[0], values[1], values[2]);
}

void taitBryanToEnvironment(DtEnvironment env, DtTaitBryan angles) {
  const double values[3] = {angles.psi(), angles.theta(), angles.phi()};
  componentsToEnvironment(env, angleNames, values);
}

DtTaitBryan taitBryanFromEnvironment(DtEnvironment env) {
  double values[3];
  componentsFromEnvironment(env, angleNames, angleNames,
                            "DtInvalidInput: Object does not have heading,pitch,roll",
                            __PRETTY_FUNCTION__, values);
  return DtTaitBryan(values[0], values[1], values[2]);
}

DtEnvValueSP createVectorSchema(DtEnvironment env) {
  return createComponentsSchema(env, vectorNames);
}

DtEnvValueSP createTaitBryanSchema(DtEnvironment env) {
  return createComponentsSchema(env, angleNames);
}

}  // namespace KORRti
