// The value types of the settings (DtVarType<T>): their names, their text and command-line
// conversions, their form in the configuration tree, and the failures of reading that form.
#include <gtest/gtest.h>
#include <ktl/configVariable.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <matrix/taitBryan.h>
#include <matrix/vector.h>
#include <util/dtException.h>

#include <functional>
#include <string>
#include <type_traits>

#include "support/settings_support.h"
#include "support/thrown.h"

using namespace KORRti;
using ktltest::thrownMessage;
using ktltest::xmlOf;

namespace {

// The message of the exception of kind E that fn throws, or what went otherwise.
template <typename T>
void expectNames(const char* native, const char* arg, const char* xs) {
  EXPECT_EQ(native, DtVarType<T>::nativeNameOfType()) << native;
  EXPECT_EQ(arg, DtVarType<T>::argNameOfType()) << native;
  EXPECT_EQ(xs, DtVarType<T>::xsNameOfType()) << native;
}

}  // namespace

TEST(SettingsValueTypes, NamesOfEveryType) {
  expectNames<DtString>("DtString", "string", "xs:string");
  expectNames<std::string>("std::string", "string", "xs:string");
  expectNames<int>("int", "int", "xs:integer");
  expectNames<unsigned int>("unsigned int", "unsigned int", "xs:unsignedInt");
  expectNames<double>("double", "double", "xs:double");
  expectNames<float>("float", "float", "xs:float");
  expectNames<bool>("bool", "boolean", "xs:boolean");
  expectNames<DtVector64>("DtVector", "string", "DtVector");
  expectNames<DtTaitBryan>("DtTaitBryan", "string", "DtTaitBryan");
}

TEST(SettingsValueTypes, ArgTypes) {
  EXPECT_TRUE((std::is_same<DtVarType<DtString>::ArgType, DtString>::value));
  EXPECT_TRUE((std::is_same<DtVarType<std::string>::ArgType, std::string>::value));
  EXPECT_TRUE((std::is_same<DtVarType<int>::ArgType, int>::value));
  EXPECT_TRUE((std::is_same<DtVarType<unsigned int>::ArgType, unsigned int>::value));
  EXPECT_TRUE((std::is_same<DtVarType<double>::ArgType, double>::value));
  EXPECT_TRUE((std::is_same<DtVarType<float>::ArgType, float>::value));
  EXPECT_TRUE((std::is_same<DtVarType<bool>::ArgType, bool>::value));
  EXPECT_TRUE((std::is_same<DtVarType<DtVector64>::ArgType, DtString>::value));
  EXPECT_TRUE((std::is_same<DtVarType<DtTaitBryan>::ArgType, DtString>::value));
}

TEST(SettingsValueTypes, TextConversionsOfSimpleTypes) {
  EXPECT_EQ("a b", DtVarType<DtString>::convertToString("a b"));
  EXPECT_EQ("a b", DtVarType<DtString>::convertFromString("a b"));
  EXPECT_EQ("std", DtVarType<std::string>::convertToString(std::string("std")));
  EXPECT_EQ(std::string("std"), DtVarType<std::string>::convertFromString("std"));
  EXPECT_EQ("-42", DtVarType<int>::convertToString(-42));
  EXPECT_EQ(-42, DtVarType<int>::convertFromString("-42"));
  EXPECT_EQ("4000000000", DtVarType<unsigned int>::convertToString(4000000000u));
  EXPECT_EQ(4000000000u, DtVarType<unsigned int>::convertFromString("4000000000"));
  EXPECT_EQ("2.5", DtVarType<double>::convertToString(2.5));
  EXPECT_EQ(2.5, DtVarType<double>::convertFromString("2.5"));
  EXPECT_EQ("6.25", DtVarType<float>::convertToString(6.25f));
  EXPECT_EQ(6.25f, DtVarType<float>::convertFromString("6.25"));
}

TEST(SettingsValueTypes, NumbersThatCannotBeReadGiveWhatDtStringGives) {
  // The success flag of DtString's conversions is not looked at.
  EXPECT_EQ(DtString("abc").toDouble(), DtVarType<double>::convertFromString("abc"));
  EXPECT_EQ(0.0, DtVarType<double>::convertFromString("abc"));
  EXPECT_EQ(0.0f, DtVarType<float>::convertFromString("1.5x"));
  EXPECT_EQ(0, DtVarType<int>::convertFromString("twelve"));
  EXPECT_EQ(0u, DtVarType<unsigned int>::convertFromString("-1"));
}

TEST(SettingsValueTypes, BoolIsTrueOrFalseInText) {
  EXPECT_EQ("true", DtVarType<bool>::convertToString(true));
  EXPECT_EQ("false", DtVarType<bool>::convertToString(false));
  EXPECT_TRUE(DtVarType<bool>::convertFromString("true"));
  EXPECT_TRUE(DtVarType<bool>::convertFromString("yes"));
  EXPECT_FALSE(DtVarType<bool>::convertFromString("false"));
  EXPECT_FALSE(DtVarType<bool>::convertFromString("maybe"));
}

TEST(SettingsValueTypes, SimpleTypesPassTheCommandLineAsTheyAre) {
  EXPECT_EQ(7, DtVarType<int>::convertToArgType(7));
  EXPECT_EQ(7u, DtVarType<unsigned int>::convertFromArgType(7u));
  EXPECT_EQ(0.5, DtVarType<double>::convertToArgType(0.5));
  EXPECT_TRUE(DtVarType<bool>::convertFromArgType(true));
  EXPECT_EQ("t", DtVarType<DtString>::convertToArgType("t"));
  EXPECT_EQ(std::string("t"), DtVarType<std::string>::convertFromArgType("t"));
}

TEST(SettingsValueTypes, VectorsAndAnglesPassTheCommandLineAsText) {
  EXPECT_EQ("1 2.5 -3", DtVarType<DtVector64>::convertToArgType(DtVector64(1, 2.5, -3)));
  EXPECT_EQ(DtVector64(4, 5, 6), DtVarType<DtVector64>::convertFromArgType("4,5,6"));
  EXPECT_EQ("0.5 1 1.5", DtVarType<DtTaitBryan>::convertToArgType(DtTaitBryan(0.5, 1, 1.5)));
  EXPECT_EQ(DtTaitBryan(7, 8, 9), DtVarType<DtTaitBryan>::convertFromArgType("7 8 9"));
  EXPECT_EQ("1 2 3", DtVarType<DtVector64>::convertToString(DtVector64(1, 2, 3)));
  EXPECT_EQ(DtTaitBryan(1, 2, 3), DtVarType<DtTaitBryan>::convertFromString("1, 2, 3"));
}

TEST(SettingsValueTypes, VectorTextIsXYZWithOneBlankBetween) {
  EXPECT_EQ("1 2 3", vectorToString(DtVector64(1, 2, 3)));
  EXPECT_EQ("0.1 -2.5 1e+20", vectorToString(DtVector64(0.1, -2.5, 1e20)));
  EXPECT_EQ("10 20 30", taitBryanToString(DtTaitBryan(10, 20, 30)));
}

TEST(SettingsValueTypes, VectorTextReadsBlanksAndOneCommaAfterEachNumber) {
  EXPECT_EQ(DtVector64(1, 2, 3), vectorFromString("1 2 3"));
  EXPECT_EQ(DtVector64(1, 2, 3), vectorFromString("1,2,3"));
  EXPECT_EQ(DtVector64(1, 2, 3), vectorFromString("1, 2, 3"));
  EXPECT_EQ(DtTaitBryan(1, 2, 3), taitBryanFromString("1,2,3"));
  EXPECT_EQ(DtTaitBryan(0.5, -1, 2e3), taitBryanFromString(" 0.5, -1 2e3"));
}

TEST(SettingsValueTypes, VectorTextWithTwoNumbersHasZForZero) {
  EXPECT_EQ(DtVector64(1, 2, 0), vectorFromString("1,2"));
}

TEST(SettingsValueTypes, VectorTextStopsAtASecondCommaOrABadCharacter) {
  // The second comma stops the strtod of y, which gives 0; y's comma rule then passes over that
  // comma, so z reads the 2.
  EXPECT_EQ(DtVector64(1, 0, 2), vectorFromString("1,,2,3"));
  EXPECT_EQ(DtVector64(1, 0, 0), vectorFromString("1 x 3"));
  // A comma after a blank is no comma "standing next".
  EXPECT_EQ(DtTaitBryan(1, 0, 0), taitBryanFromString("1 ,2,3"));
  EXPECT_EQ(DtVector64(0, 0, 0), vectorFromString(""));
}

TEST(SettingsValueTypes, SimpleValueIsTheValueAttributeOfTheRoot) {
  DtEnvironment env("speed");
  DtVarType<double>::convertToEnvironmentValue(env, 2.5);
  EXPECT_EQ("<speed value=\"2.5\"/>", xmlOf(env));
  EXPECT_EQ(2.5, DtVarType<double>::convertFromEnvironmentValue(env));

  DtEnvironment flag("flag");
  simpleValueToEnvironment<bool>(flag, true);
  EXPECT_EQ("<flag value=\"true\"/>", xmlOf(flag));
  EXPECT_TRUE(simpleValueFromEnvironment<bool>(flag));
}

TEST(SettingsValueTypes, EveryTypeComesBackFromTheTree) {
  auto roundTrip = [](auto value) {
    using T = decltype(value);
    DtEnvironment env("v");
    DtVarType<T>::convertToEnvironmentValue(env, value);
    return DtVarType<T>::convertFromEnvironmentValue(env) == value;
  };
  EXPECT_TRUE(roundTrip(DtString("some text")));
  EXPECT_TRUE(roundTrip(std::string("more text")));
  EXPECT_TRUE(roundTrip(-17));
  EXPECT_TRUE(roundTrip(17u));
  EXPECT_TRUE(roundTrip(0.1));
  EXPECT_TRUE(roundTrip(0.1f));
  EXPECT_TRUE(roundTrip(false));
  EXPECT_TRUE(roundTrip(DtVector64(1.5, -2, 1e-3)));
  EXPECT_TRUE(roundTrip(DtTaitBryan(0.25, 0.5, 0.75)));
}

TEST(SettingsValueTypes, SimpleValueIsSearchedDepthFirstBelowTheRoot) {
  DtEnvironment env("outer");
  DtEnvValueSP inner = env.addObject("inner");
  env.addAttribute("value", "12", inner);
  EXPECT_EQ(12, simpleValueFromEnvironment<int>(env));
}

TEST(SettingsValueTypes, SimpleValueWithoutAttributeIsCorruptedState) {
  DtEnvironment env("speed");
  EXPECT_EQ("DtCorruptedState: Unable to find value attribute.",
            thrownMessage<DtCorruptedState>([&] { simpleValueFromEnvironment<double>(env); }));
  EXPECT_EQ("DtCorruptedState: Unable to find value attribute.",
            thrownMessage<DtCorruptedState>(
                [&] { DtVarType<DtString>::convertFromEnvironmentValue(env); }));
}

TEST(SettingsValueTypes, ObjectValueIsItsValueAttribute) {
  DtEnvironment env("x");
  env.addAttribute("value", "3.5");
  EXPECT_EQ("3.5", getObjectValue(env.root()));
}

TEST(SettingsValueTypes, ObjectValueFailures) {
  EXPECT_EQ("DtInvalidInput: Object of wrong type",
            thrownMessage<DtInvalidInput>([] { getObjectValue(DtEnvValueSP()); }));
  DtEnvironment env("x");
  EXPECT_EQ("DtInvalidInput: Object does not have value attribute",
            thrownMessage<DtInvalidInput>([&] { getObjectValue(env.root()); }));
  // A node that is no object passes the handle test and has no attribute to give.
  DtEnvValueSP comment = env.addComment("note");
  EXPECT_EQ("DtInvalidInput: Object does not have value attribute",
            thrownMessage<DtInvalidInput>([&] { getObjectValue(comment); }));
}

TEST(SettingsValueTypes, SetObjectValueAddsOrChangesTheAttribute) {
  DtEnvironment env("x");
  setObjectValue(env.root(), "1");
  EXPECT_EQ("<x value=\"1\"/>", xmlOf(env));
  setObjectValue(env.root(), "2");
  EXPECT_EQ("<x value=\"2\"/>", xmlOf(env));
  EXPECT_EQ("DtInvalidInput: Object of wrong type",
            thrownMessage<DtInvalidInput>([] { setObjectValue(DtEnvValueSP(), "3"); }));
}

TEST(SettingsValueTypes, VectorIsThreeObjectsXYZ) {
  DtEnvironment env("position");
  vectorToEnvironment(env, DtVector64(1, 2.5, -3));
  EXPECT_EQ("<position><x value=\"1\"/><y value=\"2.5\"/><z value=\"-3\"/></position>", xmlOf(env));
  EXPECT_EQ(DtVector64(1, 2.5, -3), vectorFromEnvironment(env));
}

TEST(SettingsValueTypes, AnglesAreHeadingPitchAndRollElements) {
  // psi, theta and phi are only the accessors' names.
  DtEnvironment env("attitude");
  taitBryanToEnvironment(env, DtTaitBryan(10, 20, 30));
  EXPECT_EQ("<attitude><heading value=\"10\"/><pitch value=\"20\"/><roll value=\"30\"/></attitude>",
            xmlOf(env));
  DtTaitBryan back = taitBryanFromEnvironment(env);
  EXPECT_EQ(10, back.psi());
  EXPECT_EQ(20, back.theta());
  EXPECT_EQ(30, back.phi());
  std::list<DtEnvValueSP> found;
  env.getObjectsByName("psi", found);
  env.getObjectsByName("theta", found);
  env.getObjectsByName("phi", found);
  EXPECT_TRUE(found.empty());
}

TEST(SettingsValueTypes, VectorWithABadYIsCorruptedStateY) {
  DtEnvironment env("position");
  vectorToEnvironment(env, DtVector64(1, 2, 3));
  setObjectValue(env.getObject("y", "y"), "abc");
  EXPECT_EQ("DtCorruptedState: Unable to Parse Y",
            thrownMessage<DtCorruptedState>([&] { vectorFromEnvironment(env); }));
  setObjectValue(env.getObject("y", "y"), "2");
  setObjectValue(env.getObject("x", "x"), "");
  EXPECT_EQ("DtCorruptedState: Unable to Parse X",
            thrownMessage<DtCorruptedState>([&] { vectorFromEnvironment(env); }));
  setObjectValue(env.getObject("x", "x"), "1");
  setObjectValue(env.getObject("z", "z"), "3 4");
  EXPECT_EQ("DtCorruptedState: Unable to Parse Z",
            thrownMessage<DtCorruptedState>([&] { vectorFromEnvironment(env); }));
}

TEST(SettingsValueTypes, VectorWithoutZIsInvalidInputBeforeAnyParse) {
  // x is broken too, but the missing z is found first: no number is read.
  DtEnvironment env("position");
  env.addAttribute("value", "abc", env.addObject("x", "x"));
  env.addAttribute("value", "2", env.addObject("y", "y"));
  EXPECT_EQ("DtInvalidInput: Object does not have X,Y,Z",
            thrownMessage<DtInvalidInput>([&] { vectorFromEnvironment(env); }));
}

TEST(SettingsValueTypes, VectorComponentWithoutValueIsInvalidInput) {
  DtEnvironment env("position");
  env.addObject("x", "x");
  env.addObject("y", "y");
  env.addObject("z", "z");
  EXPECT_EQ("DtInvalidInput: Object does not have value attribute",
            thrownMessage<DtInvalidInput>([&] { vectorFromEnvironment(env); }));
}

TEST(SettingsValueTypes, AngleFailures) {
  DtEnvironment env("attitude");
  taitBryanToEnvironment(env, DtTaitBryan(1, 2, 3));
  setObjectValue(env.getObject("heading", "heading"), "north");
  EXPECT_EQ("DtCorruptedState: Unable to Parse heading",
            thrownMessage<DtCorruptedState>([&] { taitBryanFromEnvironment(env); }));
  setObjectValue(env.getObject("heading", "heading"), "1");
  setObjectValue(env.getObject("pitch", "pitch"), "up");
  EXPECT_EQ("DtCorruptedState: Unable to Parse pitch",
            thrownMessage<DtCorruptedState>([&] { taitBryanFromEnvironment(env); }));
  setObjectValue(env.getObject("pitch", "pitch"), "2");
  setObjectValue(env.getObject("roll", "roll"), "left");
  EXPECT_EQ("DtCorruptedState: Unable to Parse roll",
            thrownMessage<DtCorruptedState>([&] { taitBryanFromEnvironment(env); }));

  DtEnvironment partial("attitude");
  partial.addAttribute("value", "1", partial.addObject("heading", "heading"));
  EXPECT_EQ("DtInvalidInput: Object does not have heading,pitch,roll",
            thrownMessage<DtInvalidInput>([&] { taitBryanFromEnvironment(partial); }));
}

TEST(SettingsValueTypes, ComponentsAreFoundAnywhereBelowTheRoot) {
  // The search is depth first, so components one level down serve as well.
  DtEnvironment env("outer");
  DtEnvironment inner(env.addObject("position"));
  vectorToEnvironment(inner, DtVector64(7, 8, 9));
  EXPECT_EQ(DtVector64(7, 8, 9), vectorFromEnvironment(env));
}
