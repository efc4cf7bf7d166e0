// The XML Schema that the settings generate for their configuration files: its document, its
// building blocks, the kept oddities of vectors and angles, and xmllint's verdict on saved
// configurations against it.
#include <gtest/gtest.h>
#include <ktl/applicationSettings.h>
#include <ktl/baseConfigVariable.h>
#include <ktl/configVariable.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <ktl/variableGroup.h>
#include <support/capture.h>
#include <support/files.h>
#include <support/process.h>
#include <unistd.h>

#include <list>
#include <set>
#include <string>

#include "support/settings_support.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::fileText;
using ktltest::TempDir;
using ktltest::xmlOf;

namespace {

const char theXmllint[] = "/usr/bin/xmllint";

const std::string declaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

// The schema file of settings, as generateConfigFileSchema writes it.
std::string schemaOf(const DtApplicationSettings& settings) {
  TempDir dir;
  std::string file = dir.file("schema.xsd");
  auto output = captureOutput([&] { settings.generateConfigFileSchema(file.c_str()); });
  EXPECT_EQ("", output.err);
  return fileText(file);
}

// Saves settings with their schema into dir and has xmllint validate the file against it.
ktltest::Outcome validate(DtApplicationSettings& settings, const TempDir& dir) {
  std::string file = dir.file("config.xml");
  std::string schema = dir.file("config.xsd");
  EXPECT_TRUE(settings.saveConfigFile(file.c_str(), schema.c_str(), true));
  return ktltest::runProgram(theXmllint, {"--noout", "--schema", schema, file});
}

#define NEEDS_XMLLINT() \
  if (access(theXmllint, X_OK) != 0) GTEST_SKIP() << "no xmllint (Debian package libxml2-utils)"

// The spec's own small case: an application "My App" whose group "net" has an optional rate.
class NetSettings : public DtApplicationSettings {
 public:
  NetSettings()
      : DtApplicationSettings("My App", "1", "net"),
        rate(this, "rate", 2.5, "Packets per second", DtAllScopes, false, "r") {}
  DtConfigVariable<double> rate;
};

}  // namespace

TEST(SettingsSchema, DocumentOfOneGroupWithAnOptionalDouble) {
  NetSettings settings;
  // The "minOccurs" on the type node "double" follows its child elements and is left out; the
  // application's name is taken as it stands.
  EXPECT_EQ(declaration +
                "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
                "elementFormDefault=\"qualified\">\n"
                "  <xs:complexType name=\"net\">\n"
                "    <xs:all>\n"
                "      <xs:element name=\"rate\" type=\"double\" minOccurs=\"0\"/>\n"
                "    </xs:all>\n"
                "    <xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/>\n"
                "  </xs:complexType>\n"
                "  <xs:complexType name=\"double\">\n"
                "    <xs:attribute name=\"value\" type=\"xs:double\" use=\"required\"/>\n"
                "    <xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/>\n"
                "  </xs:complexType>\n"
                "  <xs:element name=\"My App\">\n"
                "    <xs:complexType>\n"
                "      <xs:all>\n"
                "        <xs:element name=\"net\" type=\"net\"/>\n"
                "      </xs:all>\n"
                "    </xs:complexType>\n"
                "  </xs:element>\n"
                "</xs:schema>\n",
            schemaOf(settings));
}

TEST(SettingsSchema, MinOccursOnATypeNodeIsInTheTreeButNotTheFile) {
  NetSettings settings;
  DtEnvironment env("xs:schema");
  std::set<DtString> seen;
  settings.getEnvironmentSchemaType(env, seen);
  DtEnvObject* type = DtEnvObject::castToObject(env.getObject("double", "xs:complexType"));
  ASSERT_NE(nullptr, type);
  EXPECT_EQ("0", type->attributeValue("minOccurs"));
  EXPECT_NE(std::string::npos, schemaOf(settings).find("  <xs:complexType name=\"double\">\n"));
}

TEST(SettingsSchema, TwoDoublesGiveOneDoubleType) {
  DtApplicationSettings settings("app", "1", "top");
  DtConfigVariable<double> a(&settings, "a", 0, "", DtAllScopes, false, "");
  DtConfigVariable<double> b(&settings, "b", 0, "", DtAllScopes, false, "");
  std::string schema = schemaOf(settings);
  EXPECT_NE(std::string::npos, schema.find("<xs:complexType name=\"double\">"));
  EXPECT_EQ(schema.find("<xs:complexType name=\"double\">"),
            schema.rfind("<xs:complexType name=\"double\">"));
  EXPECT_NE(std::string::npos, schema.find("<xs:element name=\"a\" type=\"double\""));
  EXPECT_NE(std::string::npos, schema.find("<xs:element name=\"b\" type=\"double\""));
}

TEST(SettingsSchema, RequiredSettingsElementHasNoMinOccurs) {
  DtApplicationSettings settings("app", "1", "top");
  DtConfigVariable<int> count(&settings, "count", 0, "", DtAllScopes, true, "");
  EXPECT_NE(std::string::npos,
            schemaOf(settings).find("      <xs:element name=\"count\" type=\"int\"/>\n"));
}

TEST(SettingsSchema, CommandLineOnlySettingAddsNeitherElementNorType) {
  DtApplicationSettings settings("app", "1", "top");
  DtConfigVariable<int> count(&settings, "count", 0, "", DtCommandLineScope, false, "");
  DtConfigVariable<double> rate(&settings, "rate", 0, "", DtConfigFileScope, false, "");
  std::string schema = schemaOf(settings);
  EXPECT_EQ(std::string::npos, schema.find("count"));
  EXPECT_EQ(std::string::npos, schema.find("\"int\""));
  EXPECT_NE(std::string::npos, schema.find("<xs:element name=\"rate\""));
}

TEST(SettingsSchema, MemberGroupIsAnElementNamedAndTypedByTheGroupsType) {
  DtApplicationSettings settings("app", "1", "top");
  DtVariableGroup left(&settings, "left", "side", "");
  DtVariableGroup right(&settings, "right", "side", "");
  std::string schema = schemaOf(settings);
  EXPECT_NE(std::string::npos, schema.find("      <xs:element name=\"side\" type=\"side\"/>\n"
                                           "      <xs:element name=\"side\" type=\"side\"/>\n"));
  EXPECT_EQ(std::string::npos, schema.find("left"));
}

TEST(SettingsSchema, TaitBryanSettingGivesATypeNamedDtVector) {
  DtApplicationSettings settings("app", "1", "top");
  DtConfigVariable<DtTaitBryan> attitude(&settings, "attitude", DtTaitBryan(), "", DtAllScopes,
                                         false, "");
  std::string schema = schemaOf(settings);
  EXPECT_NE(std::string::npos,
            schema.find("  <xs:complexType name=\"DtVector\">\n"
                        "    <xs:sequence>\n"
                        "      <xs:element name=\"heading\" type=\"double\"/>\n"
                        "      <xs:element name=\"pitch\" type=\"double\"/>\n"
                        "      <xs:element name=\"roll\" type=\"double\"/>\n"
                        "    </xs:sequence>\n"
                        "    <xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/>\n"
                        "  </xs:complexType>\n"))
      << schema;
  // The element names the type by the setting's type, which nothing declares.
  EXPECT_NE(std::string::npos, schema.find("<xs:element name=\"attitude\" type=\"DtTaitBryan\""));
  EXPECT_EQ(std::string::npos, schema.find("name=\"DtTaitBryan\""));
}

TEST(SettingsSchema, VectorAndAnglesGiveTwoTypesNamedDtVector) {
  DtApplicationSettings settings("app", "1", "top");
  DtConfigVariable<DtVector64> position(&settings, "position", DtVector64(), "", DtAllScopes, false,
                                        "");
  DtConfigVariable<DtTaitBryan> attitude(&settings, "attitude", DtTaitBryan(), "", DtAllScopes,
                                         false, "");
  std::string schema = schemaOf(settings);
  size_t first = schema.find("<xs:complexType name=\"DtVector\">");
  ASSERT_NE(std::string::npos, first);
  EXPECT_NE(std::string::npos, schema.find("<xs:complexType name=\"DtVector\">", first + 1));
  // Neither declares the "double" its elements name.
  EXPECT_EQ(std::string::npos, schema.find("<xs:complexType name=\"double\">"));
}

TEST(SettingsSchema, VectorSchemaIsASequenceOfThreeDoubles) {
  DtEnvironment env("xs:schema");
  DtEnvValueSP type = createVectorSchema(env);
  ASSERT_TRUE(type);
  EXPECT_EQ("DtVector", DtEnvObject::castToObject(type)->name());
  EXPECT_EQ(
      "<xs:schema><xs:complexType name=\"DtVector\"><xs:sequence>"
      "<xs:element name=\"x\" type=\"double\"/><xs:element name=\"y\" type=\"double\"/>"
      "<xs:element name=\"z\" type=\"double\"/></xs:sequence>"
      "<xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/></xs:complexType>"
      "</xs:schema>",
      xmlOf(env));
  DtEnvironment angles("xs:schema");
  DtEnvValueSP angleType = createTaitBryanSchema(angles);
  EXPECT_EQ("DtVector", DtEnvObject::castToObject(angleType)->name());
  EXPECT_NE(std::string::npos, xmlOf(angles).find("<xs:element name=\"heading\" type=\"double\"/>"
                                                  "<xs:element name=\"pitch\" type=\"double\"/>"
                                                  "<xs:element name=\"roll\" type=\"double\"/>"));
}

TEST(SettingsSchema, SimpleSchemaTypeAttributesInNameTypeUseOrder) {
  DtEnvironment env("xs:schema");
  DtEnvValueSP type = DtBaseConfigVariable::createSimpleSchemaType(env, "speed", "xs:float");
  ASSERT_TRUE(type);
  EXPECT_EQ("xs:complexType", DtEnvObject::castToObject(type)->type());
  EXPECT_EQ(
      "<xs:schema><xs:complexType name=\"speed\">"
      "<xs:attribute name=\"value\" type=\"xs:float\" use=\"required\"/>"
      "<xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/>"
      "</xs:complexType></xs:schema>",
      xmlOf(env));
}

TEST(SettingsSchema, ComplexSchemaTypeElementsInNameTypeMinOccursOrder) {
  DtEnvironment env("xs:schema");
  DtConfigVariable<int> required(nullptr, "required", 0, "", DtAllScopes, true, "");
  DtConfigVariable<int> optional(nullptr, "optional", 0, "", DtConfigFileScope, false, "");
  DtConfigVariable<int> hidden(nullptr, "hidden", 0, "", DtCommandLineScope, false, "");
  std::list<DtBaseConfigVariable*> members = {&required, &optional, &hidden};
  DtBaseConfigVariable::createComplexSchemaType(env, "all", false, members);
  DtBaseConfigVariable::createComplexSchemaType(env, "sequence", true, members);
  EXPECT_EQ(
      "<xs:schema><xs:complexType name=\"all\"><xs:all>"
      "<xs:element name=\"required\" type=\"int\"/>"
      "<xs:element name=\"optional\" type=\"int\" minOccurs=\"0\"/></xs:all>"
      "<xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/></xs:complexType>"
      "<xs:complexType name=\"sequence\"><xs:sequence>"
      "<xs:element name=\"required\" type=\"int\"/>"
      "<xs:element name=\"optional\" type=\"int\" minOccurs=\"0\"/></xs:sequence>"
      "<xs:attribute name=\"name\" type=\"xs:string\" use=\"optional\"/></xs:complexType>"
      "</xs:schema>",
      xmlOf(env));
}

TEST(SettingsSchema, DeclarationWithoutTypeHasNoTypeAttribute) {
  DtEnvironment env("xs:schema");
  DtBaseConfigVariable::createSchemaDeclaration(env, "plain", "");
  DtBaseConfigVariable::createSchemaDeclaration(env, "typed", "int");
  EXPECT_EQ(
      "<xs:schema><xs:element name=\"plain\"/><xs:element name=\"typed\" type=\"int\"/>"
      "</xs:schema>",
      xmlOf(env));
}

TEST(SettingsSchema, EveryTypesSchemaType) {
  auto declared = [](DtEnvValueSP (*create)(DtEnvironment), const char* name, const char* xs) {
    DtEnvironment env("s");
    DtEnvValueSP type = create(env);
    std::string expected = std::string("<s><xs:complexType name=\"") + name +
                           "\"><xs:attribute name=\"value\" type=\"" + xs + "\" use=\"required\"/>";
    EXPECT_EQ(0u, xmlOf(env).find(expected)) << name;
    return type != nullptr;
  };
  EXPECT_TRUE(declared(&DtVarType<DtString>::createSchemaType, "DtString", "xs:string"));
  EXPECT_TRUE(declared(&DtVarType<std::string>::createSchemaType, "std::string", "xs:string"));
  EXPECT_TRUE(declared(&DtVarType<int>::createSchemaType, "int", "xs:integer"));
  EXPECT_TRUE(
      declared(&DtVarType<unsigned int>::createSchemaType, "unsigned int", "xs:unsignedInt"));
  EXPECT_TRUE(declared(&DtVarType<double>::createSchemaType, "double", "xs:double"));
  EXPECT_TRUE(declared(&simpleValueTypeSchema<float>, "float", "xs:float"));
  EXPECT_TRUE(declared(&DtVarType<bool>::createSchemaType, "bool", "xs:boolean"));
  DtEnvironment env("s");
  DtVarType<DtVector64>::createSchemaType(env);
  DtVarType<DtTaitBryan>::createSchemaType(env);
  std::list<DtEnvValueSP> types;
  env.getObjectsByName("DtVector", types);
  EXPECT_EQ(2u, types.size());
}

TEST(SettingsSchema, SchemaThatCannotBeWrittenIsOnlyReported) {
  NetSettings settings;
  TempDir dir;
  std::string file = dir.file("net.xml");
  bool saved = false;
  auto output = captureOutput([&] {
    saved = settings.saveConfigFile(file.c_str(), dir.file("no/dir/net.xsd").c_str(), true);
  });
  EXPECT_TRUE(saved);
  EXPECT_EQ("testXmlwriterDoc: Error at xmlSaveFormatFileEnc\n", output.err);
  EXPECT_NE("<missing>", fileText(file));
}

// xmllint against saved configurations.

class Plain : public DtApplicationSettings {
 public:
  Plain()
      : DtApplicationSettings("plain", "1", "top"),
        net(this, "net", "network", "The network"),
        engine(&net, "engine", "", "The engine"),
        host(&net, "host", "harbour", "Host name", DtAllScopes, true, "h"),
        port(&net, "port", 8080, "Port", DtAllScopes, false, "p"),
        rate(&engine, "rate", 2.5, "Rate", DtAllScopes, false, "r"),
        ratio(&engine, "ratio", 0.75f, "Ratio", DtConfigFileScope, true, ""),
        running(&engine, "running", true, "Running", DtAllScopes, false, ""),
        hidden(&engine, "hidden", 1, "", DtCommandLineScope, false, "") {}
  DtVariableGroup net;
  DtVariableGroup engine;
  DtConfigVariable<DtString> host;
  DtConfigVariable<int> port;
  DtConfigVariable<double> rate;
  DtConfigVariable<float> ratio;
  DtConfigVariable<bool> running;
  DtConfigVariable<unsigned int> hidden;
};

TEST(SettingsSchema, SavedConfigurationValidatesAgainstItsSchema) {
  NEEDS_XMLLINT();
  TempDir dir;
  Plain settings;
  settings.port.setValue(-3);
  settings.rate.setValue(1e-7);
  settings.ratio.setValue(3.1f);
  auto run = validate(settings, dir);
  EXPECT_EQ(0, run.status) << run.err;
  EXPECT_EQ(dir.file("config.xml") + " validates\n", run.err);
}

TEST(SettingsSchema, VectorValidatesOnlyWhenADoubleSettingDeclaresDouble) {
  NEEDS_XMLLINT();
  {
    TempDir dir;
    Plain settings;
    DtConfigVariable<DtVector64> position(&settings.net, "position", DtVector64(1, 2, 3), "",
                                          DtAllScopes, false, "");
    auto run = validate(settings, dir);
    EXPECT_EQ(0, run.status) << run.err;
  }
  TempDir dir;
  DtApplicationSettings settings("alone", "1", "top");
  DtConfigVariable<DtVector64> position(&settings, "position", DtVector64(1, 2, 3), "", DtAllScopes,
                                        false, "");
  auto run = validate(settings, dir);
  EXPECT_NE(0, run.status);
  EXPECT_NE(std::string::npos,
            run.err.find("The QName value 'double' does not resolve to a(n) type definition."))
      << run.err;
}

TEST(SettingsSchema, AnglesNameATypeThatIsNotDeclared) {
  NEEDS_XMLLINT();
  TempDir dir;
  Plain settings;
  DtConfigVariable<DtTaitBryan> attitude(&settings.net, "attitude", DtTaitBryan(1, 2, 3), "",
                                         DtAllScopes, false, "");
  auto run = validate(settings, dir);
  EXPECT_NE(0, run.status);
  EXPECT_NE(std::string::npos,
            run.err.find("The QName value 'DtTaitBryan' does not resolve to a(n) type definition."))
      << run.err;
}

TEST(SettingsSchema, VectorAndAnglesDeclareDtVectorTwice) {
  NEEDS_XMLLINT();
  TempDir dir;
  Plain settings;
  DtConfigVariable<DtVector64> position(&settings.net, "position", DtVector64(1, 2, 3), "",
                                        DtAllScopes, false, "");
  DtConfigVariable<DtTaitBryan> attitude(&settings.net, "attitude", DtTaitBryan(1, 2, 3), "",
                                         DtAllScopes, false, "");
  auto run = validate(settings, dir);
  EXPECT_NE(0, run.status);
  EXPECT_NE(std::string::npos,
            run.err.find("A global complex type definition 'DtVector' does already exist."))
      << run.err;
}

TEST(SettingsSchema, StdStringAndUnsignedIntTypeNamesAreNoXmlNames) {
  NEEDS_XMLLINT();
  TempDir dir;
  Plain settings;
  DtConfigVariable<std::string> text(&settings.net, "text", "t", "", DtAllScopes, false, "");
  DtConfigVariable<unsigned int> size(&settings.net, "size", 1, "", DtAllScopes, false, "");
  auto run = validate(settings, dir);
  EXPECT_NE(0, run.status);
  EXPECT_NE(std::string::npos,
            run.err.find("'std::string' is not a valid value of the atomic type 'xs:NCName'"))
      << run.err;
  EXPECT_NE(std::string::npos,
            run.err.find("'unsigned int' is not a valid value of the atomic type 'xs:NCName'"))
      << run.err;
}

TEST(SettingsSchema, ApplicationNameWithABlankGivesASchemaThatDisagrees) {
  NEEDS_XMLLINT();
  TempDir dir;
  NetSettings settings;
  auto run = validate(settings, dir);
  EXPECT_NE(0, run.status);
  EXPECT_NE(std::string::npos,
            run.err.find("'My App' is not a valid value of the atomic type 'xs:NCName'"))
      << run.err;
}
