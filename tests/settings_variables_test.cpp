// Typed settings (DtConfigVariable<T>): construction and the "&" flag rule, scopes, their
// command-line arguments, their form in the configuration tree, and how they take their value
// from a tree.
#include <gtest/gtest.h>
#include <ktl/cmdLine.h>
#include <ktl/configVariable.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <ktl/variableGroup.h>
#include <support/capture.h>

#include <initializer_list>
#include <list>
#include <set>
#include <string>
#include <vector>

#include "support/settings_support.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::parse;
using ktltest::xmlOf;

namespace {

// A tree as a file for a group "net" holding the settings gives it.
DtEnvironment netTree() {
  DtEnvironment file("app");
  file.addObject("net");
  return file;
}

// Exposes the last step of updateFromEnvironment().
class OpenDouble : public DtConfigVariable<double> {
 public:
  using DtConfigVariable<double>::DtConfigVariable;
  using DtConfigVariable<double>::updateFromObjects;
};

}  // namespace

TEST(SettingsVariables, ScopeValuesAndWhereTheyApply) {
  EXPECT_EQ(1, DtConfigFileScope);
  EXPECT_EQ(2, DtCommandLineScope);
  EXPECT_EQ(3, DtAllScopes);
  DtConfigVariable<int> file(nullptr, "a", 0, "", DtConfigFileScope, false, "");
  DtConfigVariable<int> line(nullptr, "b", 0, "", DtCommandLineScope, false, "");
  DtConfigVariable<int> all(nullptr, "c", 0, "", DtAllScopes, false, "");
  EXPECT_TRUE(file.inConfigFile());
  EXPECT_FALSE(file.inCommandLine());
  EXPECT_FALSE(line.inConfigFile());
  EXPECT_TRUE(line.inCommandLine());
  EXPECT_TRUE(all.inConfigFile());
  EXPECT_TRUE(all.inCommandLine());
  EXPECT_EQ(DtCommandLineScope, line.scope());
}

TEST(SettingsVariables, ConstructionStoresEverythingAndJoinsTheGroup) {
  DtVariableGroup net(nullptr, "net", "", "");
  DtConfigVariable<double> rate(&net, "rate", 2.5, "Packets per second", DtAllScopes, true, "r");
  EXPECT_EQ("rate", rate.name());
  EXPECT_EQ("r", rate.flag());
  EXPECT_EQ("Packets per second", rate.description());
  EXPECT_TRUE(rate.isRequired());
  EXPECT_EQ(&net, rate.group());
  EXPECT_EQ(2.5, rate.defaultValue());
  EXPECT_EQ(2.5, rate.value());
  EXPECT_FALSE(rate.isSet());
  EXPECT_EQ("double", rate.type());
  ASSERT_EQ(1u, net.variables().size());
  EXPECT_EQ(&rate, net.variables().front());
}

TEST(SettingsVariables, TypeIsTheNativeNameOfEveryType) {
  EXPECT_EQ("DtString",
            (DtConfigVariable<DtString>(nullptr, "a", "", "", DtAllScopes, 0, "")).type());
  EXPECT_EQ("std::string",
            (DtConfigVariable<std::string>(nullptr, "a", "", "", DtAllScopes, 0, "")).type());
  EXPECT_EQ("int", (DtConfigVariable<int>(nullptr, "a", 0, "", DtAllScopes, 0, "")).type());
  EXPECT_EQ("unsigned int",
            (DtConfigVariable<unsigned int>(nullptr, "a", 0, "", DtAllScopes, 0, "")).type());
  EXPECT_EQ("float", (DtConfigVariable<float>(nullptr, "a", 0, "", DtAllScopes, 0, "")).type());
  EXPECT_EQ("bool", (DtConfigVariable<bool>(nullptr, "a", 0, "", DtAllScopes, 0, "")).type());
  EXPECT_EQ(
      "DtVector",
      (DtConfigVariable<DtVector64>(nullptr, "a", DtVector64(), "", DtAllScopes, 0, "")).type());
  EXPECT_EQ(
      "DtTaitBryan",
      (DtConfigVariable<DtTaitBryan>(nullptr, "a", DtTaitBryan(), "", DtAllScopes, 0, "")).type());
}

TEST(SettingsVariables, AmpersandMakesTheFlagAndLeavesTheName) {
  DtConfigVariable<double> step(nullptr, "time&Step", 0.1, "", DtAllScopes, false, "t");
  EXPECT_EQ("timeStep", step.name());
  EXPECT_EQ("S", step.flag());
  DtConfigVariable<int> first(nullptr, "&count", 0, "", DtAllScopes, false, "");
  EXPECT_EQ("count", first.name());
  EXPECT_EQ("c", first.flag());
  // Only the first "&" counts; a later one stays in the name.
  DtConfigVariable<int> two(nullptr, "a&b&c", 0, "", DtAllScopes, false, "");
  EXPECT_EQ("ab&c", two.name());
  EXPECT_EQ("b", two.flag());
  // Nothing behind it: no flag.
  DtConfigVariable<int> last(nullptr, "tail&", 0, "", DtAllScopes, false, "x");
  EXPECT_EQ("tail", last.name());
  EXPECT_EQ("", last.flag());
}

TEST(SettingsVariables, NameWithoutAmpersandKeepsTheFlagAsGiven) {
  DtConfigVariable<double> rate(nullptr, "rate", 1, "", DtAllScopes, false, "q");
  EXPECT_EQ("rate", rate.name());
  EXPECT_EQ("q", rate.flag());
}

TEST(SettingsVariables, SetValueDoesNotCountAsSet) {
  DtConfigVariable<int> count(nullptr, "count", 1, "", DtAllScopes, false, "");
  count.setValue(5);
  EXPECT_EQ(5, count.value());
  EXPECT_EQ(1, count.defaultValue());
  EXPECT_FALSE(count.isSet());
}

TEST(SettingsVariables, FileScopeGetsNoCommandLineArgument) {
  DtConfigVariable<double> rate(nullptr, "rate", 1, "", DtConfigFileScope, false, "r");
  DtCmdLine::CmdLine cmd("test", ' ', "1", false);
  size_t before = cmd.getArgList().size();
  rate.getCommandLineArg(cmd);
  EXPECT_EQ(before, cmd.getArgList().size());
  // And nothing to take from one.
  rate.updateFromCommandLineArg();
  EXPECT_EQ(1, rate.value());
  EXPECT_FALSE(rate.isSet());
}

TEST(SettingsVariables, ValueArgumentStartsFromTheCurrentValue) {
  DtConfigVariable<double> rate(nullptr, "rate", 1, "Packets per second", DtAllScopes, true, "r");
  rate.setValue(4.5);
  DtCmdLine::CmdLine cmd("test", ' ', "1", false);
  rate.getCommandLineArg(cmd);
  DtCmdLine::Arg* arg = cmd.getArgList().front();
  auto* value = dynamic_cast<DtCmdLine::ValueArg<double>*>(arg);
  ASSERT_NE(nullptr, value);
  EXPECT_EQ(4.5, value->getValue());
  EXPECT_TRUE(arg->isRequired());
  EXPECT_EQ("-r <double>,  --rate <double>", arg->longID());
  EXPECT_EQ("(required)  Packets per second", arg->getDescription());
}

TEST(SettingsVariables, ArgumentLabelIsTheArgName) {
  DtConfigVariable<DtVector64> position(nullptr, "position", DtVector64(), "", DtAllScopes, false,
                                        "p");
  DtConfigVariable<unsigned int> berth(nullptr, "berth", 0, "", DtAllScopes, false, "");
  DtCmdLine::CmdLine cmd("test", ' ', "1", false);
  position.getCommandLineArg(cmd);
  berth.getCommandLineArg(cmd);
  EXPECT_EQ("--berth <unsigned int>", cmd.getArgList().front()->longID());
  EXPECT_EQ("-p <string>,  --position <string>", (*++cmd.getArgList().begin())->longID());
  EXPECT_NE(nullptr, dynamic_cast<DtCmdLine::ValueArg<DtString>*>(*++cmd.getArgList().begin()));
}

TEST(SettingsVariables, ArgumentIsMadeOnceAndAddedToEachCommandLine) {
  DtConfigVariable<int> count(nullptr, "count", 1, "", DtAllScopes, false, "c");
  DtCmdLine::CmdLine first("test", ' ', "1", false);
  count.getCommandLineArg(first);
  DtCmdLine::CmdLine second("test", ' ', "1", false);
  count.setValue(9);
  count.getCommandLineArg(second);
  EXPECT_EQ(first.getArgList().front(), second.getArgList().front());
  // Still the value it was made with.
  EXPECT_EQ(1, dynamic_cast<DtCmdLine::ValueArg<int>*>(second.getArgList().front())->getValue());
}

TEST(SettingsVariables, CommandLineSetsTheValueAndMarksItSet) {
  DtVariableGroup top(nullptr, "top", "", "");
  DtConfigVariable<double> rate(&top, "rate", 1, "", DtAllScopes, false, "r");
  DtConfigVariable<DtString> site(&top, "site", "lab", "", DtAllScopes, false, "");
  DtConfigVariable<std::string> host(&top, "host", "here", "", DtAllScopes, false, "");
  DtConfigVariable<DtVector64> position(&top, "position", DtVector64(), "", DtAllScopes, false, "");
  DtConfigVariable<DtTaitBryan> attitude(&top, "attitude", DtTaitBryan(), "", DtAllScopes, false,
                                         "");
  DtConfigVariable<unsigned int> berth(&top, "berth", 3, "", DtAllScopes, false, "");
  DtConfigVariable<float> draught(&top, "draught", 1, "", DtAllScopes, false, "");
  parse(top, {"-r", "7.5", "--site", "sea side", "--host", "there", "--position", "1,2,3",
              "--attitude", "4 5 6", "--draught", "2.25"});
  EXPECT_EQ(7.5, rate.value());
  EXPECT_TRUE(rate.isSet());
  EXPECT_EQ("sea side", site.value());
  EXPECT_EQ("there", host.value());
  EXPECT_EQ(DtVector64(1, 2, 3), position.value());
  EXPECT_EQ(DtTaitBryan(4, 5, 6), attitude.value());
  EXPECT_EQ(2.25f, draught.value());
  EXPECT_TRUE(attitude.isSet());
  // Not on the command line: unchanged and not set.
  EXPECT_EQ(3u, berth.value());
  EXPECT_FALSE(berth.isSet());
}

TEST(SettingsVariables, BoolIsASwitchThatIsNeverRequired) {
  DtConfigVariable<bool> verbose(nullptr, "verbose", false, "Talk more", DtAllScopes, true, "V");
  DtCmdLine::CmdLine cmd("test", ' ', "1", false);
  verbose.getCommandLineArg(cmd);
  DtCmdLine::Arg* arg = cmd.getArgList().front();
  EXPECT_NE(nullptr, dynamic_cast<DtCmdLine::SwitchArg*>(arg));
  EXPECT_FALSE(arg->isRequired());
  EXPECT_EQ("-V,  --verbose", arg->longID());
}

TEST(SettingsVariables, BoolDefaultTrueWithoutTheSwitchStaysTrue) {
  DtVariableGroup top(nullptr, "top", "", "");
  DtConfigVariable<bool> on(&top, "on", true, "", DtAllScopes, false, "o");
  DtConfigVariable<bool> off(&top, "off", false, "", DtAllScopes, false, "f");
  parse(top, {});
  EXPECT_TRUE(on.value());
  EXPECT_FALSE(on.isSet());
  EXPECT_FALSE(off.value());
}

TEST(SettingsVariables, SwitchGivenTurnsTheDefaultOver) {
  DtVariableGroup top(nullptr, "top", "", "");
  DtConfigVariable<bool> on(&top, "on", true, "", DtAllScopes, false, "o");
  DtConfigVariable<bool> off(&top, "off", false, "", DtAllScopes, false, "f");
  parse(top, {"-o", "--off"});
  EXPECT_FALSE(on.value());
  EXPECT_TRUE(on.isSet());
  EXPECT_TRUE(off.value());
}

TEST(SettingsVariables, SwitchStartsFromTheDefaultNotTheValue) {
  DtVariableGroup top(nullptr, "top", "", "");
  DtConfigVariable<bool> flag(&top, "flag", false, "", DtAllScopes, false, "");
  flag.setValue(true);
  parse(top, {"--flag"});
  // The switch turns the default (false) over.
  EXPECT_TRUE(flag.value());
}

TEST(SettingsVariables, EnvironmentValueIsCommentThenElement) {
  DtEnvironment env("net");
  DtConfigVariable<double> rate(nullptr, "rate", 2.5, "Packets per second", DtAllScopes, false, "");
  DtEnvValueSP node = rate.getEnvironmentValue(env);
  ASSERT_TRUE(node);
  EXPECT_EQ("rate", DtEnvObject::castToObject(node)->name());
  EXPECT_EQ("rate", DtEnvObject::castToObject(node)->type());
  EXPECT_EQ("<net><!--Packets per second--><rate value=\"2.5\"/></net>", xmlOf(env));
}

TEST(SettingsVariables, EnvironmentValueWithoutDescriptionHasNoComment) {
  DtEnvironment env("net");
  DtConfigVariable<DtVector64> position(nullptr, "position", DtVector64(1, 2, 3), "", DtAllScopes,
                                        false, "");
  position.getEnvironmentValue(env);
  EXPECT_EQ("<net><position><x value=\"1\"/><y value=\"2\"/><z value=\"3\"/></position></net>",
            xmlOf(env));
}

TEST(SettingsVariables, EnvironmentValueIsTheCurrentValue) {
  DtEnvironment env("net");
  DtConfigVariable<bool> flag(nullptr, "flag", false, "", DtAllScopes, false, "");
  flag.setValue(true);
  flag.getEnvironmentValue(env);
  EXPECT_EQ("<net><flag value=\"true\"/></net>", xmlOf(env));
}

TEST(SettingsVariables, ValueComesFromTheObjectBelowTheGroup) {
  DtVariableGroup net(nullptr, "net", "", "");
  DtConfigVariable<double> rate(&net, "rate", 1, "", DtAllScopes, false, "");
  DtEnvironment file = netTree();
  file.addAttribute("value", "7", file.addObject("rate", file.getObject("net", "net")));
  rate.updateFromEnvironment(file);
  EXPECT_EQ(7, rate.value());
}

TEST(SettingsVariables, ValueReadFromAFileIsNotSet) {
  DtVariableGroup net(nullptr, "net", "", "");
  DtConfigVariable<int> count(&net, "count", 1, "", DtAllScopes, false, "");
  DtEnvironment file = netTree();
  file.addAttribute("value", "3", file.addObject("count", file.getObject("net", "net")));
  net.updateFromEnvironment(file);
  EXPECT_EQ(3, count.value());
  EXPECT_FALSE(count.isSet());
}

TEST(SettingsVariables, RequiredSettingMissingFromAFileKeepsItsValueSilently) {
  DtVariableGroup net(nullptr, "net", "", "");
  DtConfigVariable<double> rate(&net, "rate", 1, "", DtAllScopes, true, "");
  rate.setValue(4);
  DtEnvironment file = netTree();
  auto output = captureOutput([&] { rate.updateFromEnvironment(file); });
  EXPECT_EQ(4, rate.value());
  EXPECT_EQ("", output.out);
  EXPECT_EQ("", output.err);
}

TEST(SettingsVariables, TwoObjectsOfTheNameAreNotUnique) {
  DtVariableGroup net(nullptr, "net", "", "");
  DtConfigVariable<double> rate(&net, "rate", 1, "", DtAllScopes, false, "");
  DtEnvironment file = netTree();
  DtEnvValueSP group = file.getObject("net", "net");
  // In two different subtrees of the group's object.
  file.addAttribute("value", "5", file.addObject("rate", file.addObject("left", group)));
  file.addAttribute("value", "6", file.addObject("rate", file.addObject("right", group)));
  auto output = captureOutput([&] { rate.updateFromEnvironment(file); });
  EXPECT_EQ(1, rate.value());
  EXPECT_EQ("Unable to get from Environment, Object not unique: rate\n", output.out);
  EXPECT_EQ("", output.err);
}

TEST(SettingsVariables, FoundNodeThatIsNoObjectIsTheWrongType) {
  // The search gives objects only; the last step still guards against anything else.
  OpenDouble rate(nullptr, "rate", 1, "", DtAllScopes, false, "");
  DtEnvironment env("net");
  DtEnvValueSP attribute = env.addAttribute("rate", "9");
  auto output = captureOutput([&] { rate.updateFromObjects({attribute}); });
  EXPECT_EQ(1, rate.value());
  EXPECT_EQ("Environment Object wrong type.\n", output.out);
}

TEST(SettingsVariables, WithoutAGroupTheSearchStartsAtTheRoot) {
  DtConfigVariable<DtString> site(nullptr, "site", "lab", "", DtAllScopes, false, "");
  DtEnvironment file("anything");
  file.addAttribute("value", "sea", file.addObject("site", file.addObject("deep")));
  site.updateFromEnvironment(file);
  EXPECT_EQ("sea", site.value());
}

TEST(SettingsVariables, MissingGroupObjectPassesTheExceptionOn) {
  DtVariableGroup net(nullptr, "net", "", "");
  DtConfigVariable<double> rate(&net, "rate", 1, "", DtAllScopes, false, "");
  DtEnvironment file("app");
  try {
    rate.updateFromEnvironment(file);
    FAIL() << "no exception";
  } catch (const DtCorruptedState& e) {
    EXPECT_STREQ("DtCorruptedState: Unable to find group:net:net", e.message());
  }
}

TEST(SettingsVariables, BrokenValuePassesTheConversionsExceptionOn) {
  DtConfigVariable<DtVector64> position(nullptr, "position", DtVector64(), "", DtAllScopes, false,
                                        "");
  DtEnvironment file("app");
  file.addObject("x", "x", file.addObject("position"));
  EXPECT_THROW(position.updateFromEnvironment(file), DtInvalidInput);
  DtConfigVariable<int> count(nullptr, "count", 1, "", DtAllScopes, false, "");
  file.addObject("count");
  EXPECT_THROW(count.updateFromEnvironment(file), DtCorruptedState);
}

TEST(SettingsVariables, SchemaTypeIsDeclaredOncePerType) {
  DtEnvironment schema("xs:schema");
  std::set<DtString> seen;
  DtConfigVariable<double> a(nullptr, "a", 0, "", DtAllScopes, true, "");
  DtConfigVariable<double> b(nullptr, "b", 0, "", DtAllScopes, true, "");
  a.getEnvironmentSchemaType(schema, seen);
  b.getEnvironmentSchemaType(schema, seen);
  std::list<DtEnvValueSP> types;
  schema.getObjectsByType("xs:complexType", types);
  EXPECT_EQ(1u, types.size());
  EXPECT_EQ(std::set<DtString>({"double"}), seen);
}

TEST(SettingsVariables, OptionalSettingPutsMinOccursOnItsTypeNodeInTheTree) {
  DtEnvironment schema("xs:schema");
  std::set<DtString> seen;
  DtConfigVariable<int> optional(nullptr, "a", 0, "", DtAllScopes, false, "");
  DtConfigVariable<double> required(nullptr, "b", 0, "", DtAllScopes, true, "");
  optional.getEnvironmentSchemaType(schema, seen);
  required.getEnvironmentSchemaType(schema, seen);
  DtEnvObject* intType = DtEnvObject::castToObject(schema.getObject("int", "xs:complexType"));
  DtEnvObject* doubleType = DtEnvObject::castToObject(schema.getObject("double", "xs:complexType"));
  ASSERT_TRUE(intType && doubleType);
  EXPECT_EQ("0", intType->attributeValue("minOccurs"));
  EXPECT_FALSE(doubleType->attribute("minOccurs"));
  // It stands after the type's elements, so the writer leaves it out.
  EXPECT_EQ(std::string::npos, xmlOf(schema).find("minOccurs"));
}

TEST(SettingsVariables, AssignmentCopiesScopeSetAndDescriptionButNotTheArgument) {
  DtVariableGroup top(nullptr, "top", "", "");
  DtConfigVariable<int> given(&top, "given", 1, "From the command line", DtCommandLineScope, false,
                              "");
  parse(top, {"--given", "4"});
  ASSERT_TRUE(given.isSet());
  DtConfigVariable<int> other(nullptr, "other", 2, "", DtConfigFileScope, false, "");
  other = given;
  EXPECT_TRUE(other.isSet());
  EXPECT_EQ(DtCommandLineScope, other.scope());
  EXPECT_EQ("From the command line", other.description());
  EXPECT_EQ(4, other.value());
  // The copy makes an argument of its own.
  DtConfigVariable<int> copy(given);
  DtCmdLine::CmdLine first("test", ' ', "1", false);
  DtCmdLine::CmdLine second("test", ' ', "1", false);
  given.getCommandLineArg(first);
  copy.getCommandLineArg(second);
  EXPECT_NE(first.getArgList().front(), second.getArgList().front());
}
