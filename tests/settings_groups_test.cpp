// Groups of settings (DtVariableGroup): names and types, the tree of groups, how each operation
// is passed on to the members, the changeOnce rule, and the search for a group's object.
#include <gtest/gtest.h>
#include <ktl/cmdLine.h>
#include <ktl/configVariable.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <ktl/variableGroup.h>

#include <initializer_list>
#include <list>
#include <set>
#include <string>
#include <vector>

#include "support/settings_support.h"

using namespace KORRti;
using ktltest::parse;
using ktltest::xmlOf;

namespace {

// The top of a tree of groups with a changeOnce flag of its own, as the settings object has.
class TopGroup : public DtVariableGroup {
 public:
  explicit TopGroup(bool once) : DtVariableGroup(nullptr, "top", "", ""), once_(once) {}
  bool changeOnce() const override { return once_; }

 private:
  bool once_;
};

// A file's tree with the objects of the groups top and net, and count's value 7 in net.
DtEnvironment fileWithCount(const char* count) {
  DtEnvironment file("app");
  DtEnvValueSP top = file.addObject("top");
  DtEnvValueSP net = file.addObject("net", top);
  file.addAttribute("value", count, file.addObject("count", net));
  return file;
}

std::vector<std::string> complexTypeNames(const DtEnvironment& schema) {
  std::list<DtEnvValueSP> types;
  schema.getObjectsByType("xs:complexType", types);
  std::vector<std::string> names;
  for (const DtEnvValueSP& type : types) {
    names.push_back(DtEnvObject::castToObject(type)->name().c_str());
  }
  return names;
}

}  // namespace

TEST(SettingsGroups, EmptyTypeMakesTheTypeTheName) {
  DtVariableGroup net(nullptr, "net", "", "");
  EXPECT_EQ("net", net.type());
  EXPECT_EQ("net", net.name());
  EXPECT_EQ("net", net.groupName());
  EXPECT_EQ("net", net.groupType());
}

TEST(SettingsGroups, NameIsTheTypeAndTheNameGoesToTheNameAttribute) {
  DtVariableGroup group(nullptr, "a", "b", "");
  EXPECT_EQ("b", group.name());
  EXPECT_EQ("b", group.type());
  EXPECT_EQ("a", group.groupName());
  DtEnvironment env("doc");
  DtEnvValueSP node = group.getEnvironmentValue(env);
  ASSERT_TRUE(node);
  EXPECT_EQ("<doc><b name=\"a\"/></doc>", xmlOf(env));
}

TEST(SettingsGroups, GroupIsRequiredInAllScopesAndJoinsItsParent) {
  DtVariableGroup top(nullptr, "top", "", "");
  DtVariableGroup net(&top, "net", "", "");
  EXPECT_TRUE(net.isRequired());
  EXPECT_EQ(DtAllScopes, net.scope());
  EXPECT_EQ(&top, net.parent());
  EXPECT_EQ(nullptr, top.parent());
  ASSERT_EQ(1u, top.variables().size());
  EXPECT_EQ(&net, top.variables().front());
}

TEST(SettingsGroups, MembersAreKeptInOrderOfRegistration) {
  DtVariableGroup net(nullptr, "net", "", "");
  DtConfigVariable<int> b(&net, "b", 0, "", DtAllScopes, false, "");
  DtConfigVariable<int> a(&net, "a", 0, "", DtAllScopes, false, "");
  DtConfigVariable<int> loose(nullptr, "loose", 0, "", DtAllScopes, false, "");
  net.addBaseVariable(&loose);
  std::list<DtBaseConfigVariable*> expected = {&b, &a, &loose};
  EXPECT_EQ(expected, net.variables());
}

TEST(SettingsGroups, ChangeOnceIsTheTopsOrFalse) {
  DtVariableGroup alone(nullptr, "alone", "", "");
  EXPECT_FALSE(alone.changeOnce());
  TopGroup top(true);
  DtVariableGroup net(&top, "net", "", "");
  DtVariableGroup inner(&net, "inner", "", "");
  EXPECT_TRUE(inner.changeOnce());
}

TEST(SettingsGroups, EnvironmentValueIsTheGroupElementWithItsFileMembers) {
  TopGroup top(false);
  DtVariableGroup net(&top, "net", "", "The network");
  DtConfigVariable<double> rate(&net, "rate", 2.5, "Packets per second", DtAllScopes, false, "");
  DtConfigVariable<int> port(&net, "port", 80, "", DtCommandLineScope, false, "");
  DtConfigVariable<int> retries(&net, "retries", 3, "", DtConfigFileScope, false, "");
  DtEnvironment env("doc");
  DtEnvValueSP node = top.getEnvironmentValue(env);
  ASSERT_TRUE(node);
  EXPECT_EQ("top", DtEnvObject::castToObject(node)->name());
  EXPECT_EQ(
      "<doc><top><!--The network--><net><!--Packets per second--><rate value=\"2.5\"/>"
      "<retries value=\"3\"/></net></top></doc>",
      xmlOf(env));
}

TEST(SettingsGroups, SchemaTypeListsFileMembersAndDeclaresTheirTypes) {
  TopGroup top(false);
  DtVariableGroup net(&top, "net", "netType", "");
  DtConfigVariable<double> rate(&net, "rate", 2.5, "", DtAllScopes, false, "");
  DtConfigVariable<int> port(&net, "port", 80, "", DtCommandLineScope, false, "");
  DtConfigVariable<int> retries(&net, "retries", 3, "", DtConfigFileScope, true, "");
  DtEnvironment schema("xs:schema");
  std::set<DtString> seen;
  top.getEnvironmentSchemaType(schema, seen);
  // The group's type first, then its members' in order of first use.
  EXPECT_EQ(std::vector<std::string>({"top", "netType", "double", "int"}),
            complexTypeNames(schema));
  std::string xml = xmlOf(schema);
  EXPECT_NE(std::string::npos,
            xml.find("<xs:complexType name=\"top\"><xs:all>"
                     "<xs:element name=\"netType\" type=\"netType\"/></xs:all>"
                     "<xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/>"
                     "</xs:complexType>"))
      << xml;
  EXPECT_NE(std::string::npos,
            xml.find("<xs:complexType name=\"netType\"><xs:all>"
                     "<xs:element name=\"rate\" type=\"double\" minOccurs=\"0\"/>"
                     "<xs:element name=\"retries\" type=\"int\"/></xs:all>"))
      << xml;
  EXPECT_EQ(std::string::npos, xml.find("port")) << xml;
}

TEST(SettingsGroups, SiblingsOfOneTypeAddOneTypeAndBothMembersAreVisited) {
  TopGroup top(false);
  DtVariableGroup left(&top, "left", "side", "");
  DtVariableGroup right(&top, "right", "side", "");
  DtConfigVariable<int> count(&left, "count", 0, "", DtAllScopes, false, "");
  DtConfigVariable<double> rate(&right, "rate", 0, "", DtAllScopes, false, "");
  DtEnvironment schema("xs:schema");
  std::set<DtString> seen;
  top.getEnvironmentSchemaType(schema, seen);
  EXPECT_EQ(std::vector<std::string>({"top", "side", "int", "double"}), complexTypeNames(schema));
  // The type lists the members of the first sibling that declared it.
  EXPECT_NE(std::string::npos, xmlOf(schema).find("<xs:complexType name=\"side\"><xs:all>"
                                                  "<xs:element name=\"count\""));
}

TEST(SettingsGroups, GroupObjectIsSearchedBelowTheParentsObject) {
  TopGroup top(false);
  DtVariableGroup net(&top, "net", "", "");
  DtEnvironment file("app");
  // A "net" outside "top" comes first in the walk, and is not the one.
  DtEnvValueSP stray = file.addObject("net");
  DtEnvValueSP topNode = file.addObject("top");
  DtEnvValueSP netNode = file.addObject("net", topNode);
  EXPECT_EQ(netNode, net.getGroupValue(file));
  EXPECT_NE(stray, net.getGroupValue(file));
}

TEST(SettingsGroups, GroupObjectMustMatchNameAndType) {
  DtVariableGroup group(nullptr, "a", "b", "");
  DtEnvironment file("app");
  file.addObject("a", "a");
  DtEnvValueSP right = file.addObject("a", "b");
  EXPECT_EQ(right, group.getGroupValue(file));
}

TEST(SettingsGroups, MissingGroupObjectIsCorruptedState) {
  TopGroup top(false);
  DtVariableGroup net(&top, "net", "netType", "");
  DtEnvironment file("app");
  file.addObject("top");
  try {
    net.getGroupValue(file);
    FAIL() << "no exception";
  } catch (const DtCorruptedState& e) {
    EXPECT_STREQ("DtCorruptedState: Unable to find group:net:netType", e.message());
  }
  // The parent's object is looked for first.
  DtEnvironment empty("app");
  try {
    net.getGroupValue(empty);
    FAIL() << "no exception";
  } catch (const DtCorruptedState& e) {
    EXPECT_STREQ("DtCorruptedState: Unable to find group:top:top", e.message());
  }
}

TEST(SettingsGroups, FileReachesMembersInFilesOnly) {
  TopGroup top(false);
  DtVariableGroup net(&top, "net", "", "");
  DtConfigVariable<int> count(&net, "count", 1, "", DtCommandLineScope, false, "");
  // The command-line-only member is not even looked for: a file without any group object
  // passes.
  DtEnvironment file("app");
  EXPECT_NO_THROW(net.updateFromEnvironment(file));
  net.updateFromEnvironment(fileWithCount("7"));
  EXPECT_EQ(1, count.value());
}

TEST(SettingsGroups, CommandLineReachesMembersOnTheCommandLineOnly) {
  TopGroup top(false);
  DtConfigVariable<int> fileOnly(&top, "fileOnly", 1, "", DtConfigFileScope, false, "");
  DtConfigVariable<int> both(&top, "both", 1, "", DtAllScopes, false, "");
  DtCmdLine::CmdLine cmd("test", ' ', "1", false);
  top.getCommandLineArg(cmd);
  std::set<std::string> names;
  for (DtCmdLine::Arg* arg : cmd.getArgList()) names.insert(arg->getName());
  EXPECT_EQ(0u, names.count("fileOnly"));
  EXPECT_EQ(1u, names.count("both"));
}

TEST(SettingsGroups, GroupIsNeverSetSoChangeOnceNeverSkipsAGroup) {
  TopGroup top(true);
  DtVariableGroup net(&top, "net", "", "");
  DtConfigVariable<int> count(&net, "count", 1, "", DtAllScopes, false, "");
  DtConfigVariable<int> other(&net, "other", 1, "", DtAllScopes, false, "");
  parse(top, {"--count", "5"});
  EXPECT_TRUE(count.isSet());
  EXPECT_FALSE(net.isSet());
  EXPECT_FALSE(top.isSet());
  DtEnvironment file = fileWithCount("7");
  file.addAttribute("value", "8", file.addObject("other", file.getObject("net", "net")));
  top.updateFromEnvironment(file);
  // The group was visited: its unset member took the file's value.
  EXPECT_EQ(8, other.value());
  EXPECT_EQ(5, count.value());
}

TEST(SettingsGroups, ChangeOnceKeepsACommandLineValueAgainstAFile) {
  TopGroup top(true);
  DtVariableGroup net(&top, "net", "", "");
  DtConfigVariable<int> count(&net, "count", 1, "", DtAllScopes, false, "");
  parse(top, {"--count", "5"});
  top.updateFromEnvironment(fileWithCount("7"));
  EXPECT_EQ(5, count.value());
}

TEST(SettingsGroups, WithoutChangeOnceTheFileWins) {
  TopGroup top(false);
  DtVariableGroup net(&top, "net", "", "");
  DtConfigVariable<int> count(&net, "count", 1, "", DtAllScopes, false, "");
  parse(top, {"--count", "5"});
  top.updateFromEnvironment(fileWithCount("7"));
  EXPECT_EQ(7, count.value());
  EXPECT_TRUE(count.isSet());
}

TEST(SettingsGroups, ChangeOnceKeepsACommandLineValueAgainstASecondCommandLine) {
  // A second parse reuses the argument, which still holds the first command line's value.
  TopGroup top(true);
  DtConfigVariable<int> count(&top, "count", 1, "", DtAllScopes, false, "");
  parse(top, {"--count", "5"});
  count.setValue(8);
  parse(top, {});
  EXPECT_EQ(8, count.value());
}

TEST(SettingsGroups, WithoutChangeOnceASecondCommandLineAppliesItsArgumentsAgain) {
  TopGroup top(false);
  DtConfigVariable<int> count(&top, "count", 1, "", DtAllScopes, false, "");
  parse(top, {"--count", "5"});
  count.setValue(8);
  parse(top, {});
  EXPECT_EQ(5, count.value());
}
