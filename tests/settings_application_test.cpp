// The settings object (DtApplicationSettings): loading configuration files by their extension,
// in both forms, saving them, the order of precedence between the command line and files with
// changeOnce on and off, and the failures that answer false or reach the caller.
#include <gtest/gtest.h>
#include <ktl/applicationSettings.h>
#include <ktl/configVariable.h>
#include <ktl/envKtlReader.h>
#include <ktl/envKtlWriter.h>
#include <ktl/envXmlReader.h>
#include <ktl/variableGroup.h>
#include <support/capture.h>
#include <support/files.h>

#include <initializer_list>
#include <list>
#include <string>
#include <vector>

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::fileText;
using ktltest::TempDir;

namespace {

// An application "My App" whose group "net" holds a rate and a count.
class NetSettings : public DtApplicationSettings {
 public:
  NetSettings()
      : DtApplicationSettings("My App", "2.0", "app"),
        net(this, "net", "", ""),
        rate(&net, "rate", 1, "Packets per second", DtAllScopes, false, "r"),
        count(&net, "count", 10, "", DtAllScopes, false, "c") {}
  DtVariableGroup net;
  DtConfigVariable<double> rate;
  DtConfigVariable<int> count;
};

const char netXml[] =
    "<?xml version=\"1.0\"?>\n"
    "<My-App><app><net><rate value=\"7\"/><count value=\"70\"/></net></app></My-App>\n";
const char netKtl[] = "(My-App (app (net (rate (value \"7\")) (count (value \"70\")))))";

// Parses args after a program name through parseCommandLine; a wrong command line would end
// the test program, so only right ones are given here.
void parse(DtApplicationSettings& settings, std::initializer_list<std::string> args) {
  std::vector<std::string> words = {"program"};
  words.insert(words.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(&word[0]);
  argv.push_back(nullptr);
  settings.parseCommandLine(static_cast<int>(words.size()), argv.data(), false);
}

// A reader that answers as it is told.
class ScriptedReader : public DtEnvReader {
 public:
  enum What { NotRead, InvalidInput, CorruptedState };
  explicit ScriptedReader(What what) : what_(what) {}
  DtEnvironment readFile(const DtString& file, bool& ok) override {
    ok = false;
    if (what_ == InvalidInput)
      throw DtInvalidInput("DtInvalidInput: scripted", "f", "r", 1, nullptr);
    if (what_ == CorruptedState) {
      throw DtCorruptedState("DtCorruptedState: scripted", "f", "r", 1, nullptr);
    }
    return DtEnvironment(file);
  }

 private:
  What what_;
};

// A member whose tree form can't be made.
class FailingMember : public DtConfigVariable<int> {
 public:
  explicit FailingMember(DtVariableGroup* group)
      : DtConfigVariable<int>(group, "failing", 0, "", DtAllScopes, false, "") {}
  DtEnvValueSP getEnvironmentValue(DtEnvironment) override {
    throw DtCorruptedState("DtCorruptedState: no tree form", "f", "r", 1, nullptr);
  }
};

}  // namespace

TEST(SettingsApplication, ConstructionNamesTheGroupAfterGroupName) {
  NetSettings settings;
  EXPECT_EQ("My App", settings.applicationName());
  EXPECT_EQ("2.0", settings.applicationVersion());
  EXPECT_EQ("app", settings.groupName());
  EXPECT_EQ("app", settings.groupType());
  EXPECT_EQ("app", settings.name());
  EXPECT_EQ("", settings.description());
  EXPECT_EQ(nullptr, settings.parent());
  EXPECT_FALSE(settings.changeOnce());
  settings.setChangeOnce(true);
  EXPECT_TRUE(settings.changeOnce());
  EXPECT_TRUE(settings.net.changeOnce());
}

TEST(SettingsApplication, AddBaseVarAppendsAMember) {
  DtApplicationSettings settings("a", "1", "g");
  DtConfigVariable<int> loose(nullptr, "loose", 0, "", DtAllScopes, false, "");
  settings.addBaseVar(&loose);
  ASSERT_EQ(1u, settings.variables().size());
  EXPECT_EQ(&loose, settings.variables().front());
}

TEST(SettingsApplication, CopiesTakeNameVersionChangeOnceAndMembers) {
  NetSettings settings;
  settings.setChangeOnce(true);
  DtApplicationSettings copy(settings);
  EXPECT_EQ("My App", copy.applicationName());
  EXPECT_EQ("2.0", copy.applicationVersion());
  EXPECT_TRUE(copy.changeOnce());
  EXPECT_EQ(settings.variables(), copy.variables());
  DtApplicationSettings other("other", "9", "g");
  other = settings;
  EXPECT_EQ("My App", other.applicationName());
  EXPECT_EQ("2.0", other.applicationVersion());
  EXPECT_TRUE(other.changeOnce());
  EXPECT_EQ(settings.variables(), other.variables());
}

TEST(SettingsApplication, LoadsTheXmlForm) {
  TempDir dir;
  NetSettings settings;
  EXPECT_TRUE(settings.loadConfigFile(dir.write("net.xml", netXml).c_str()));
  EXPECT_EQ(7, settings.rate.value());
  EXPECT_EQ(70, settings.count.value());
  EXPECT_FALSE(settings.rate.isSet());
}

TEST(SettingsApplication, LoadsTheKtlForm) {
  TempDir dir;
  NetSettings settings;
  EXPECT_TRUE(settings.loadConfigFile(dir.write("net.ktl", netKtl).c_str()));
  EXPECT_EQ(7, settings.rate.value());
  EXPECT_EQ(70, settings.count.value());
}

TEST(SettingsApplication, UnknownExtensionGivesFalseAndReadsNothing) {
  TempDir dir;
  NetSettings settings;
  // The content would do, the name does not.
  EXPECT_FALSE(settings.loadConfigFile(dir.write("settings.txt", netXml).c_str()));
  EXPECT_FALSE(settings.loadConfigFile(dir.write("net.XML", netXml).c_str()));
  EXPECT_FALSE(settings.loadConfigFile(dir.write("net", netXml).c_str()));
  EXPECT_EQ(1, settings.rate.value());
}

TEST(SettingsApplication, MissingFileGivesFalseWithoutException) {
  TempDir dir;
  NetSettings settings;
  bool loaded = true;
  EXPECT_NO_THROW(loaded = settings.loadConfigFile(dir.file("a.xml").c_str()));
  EXPECT_FALSE(loaded);
  EXPECT_NO_THROW(loaded = settings.loadConfigFile(dir.file("a.ktl").c_str()));
  EXPECT_FALSE(loaded);
  EXPECT_NO_THROW(loaded = settings.loadXmlFile(dir.file("b.xml").c_str()));
  EXPECT_FALSE(loaded);
}

TEST(SettingsApplication, BrokenXmlReachesTheCaller) {
  TempDir dir;
  NetSettings settings;
  std::string file = dir.write("net.xml", "<My-App><app></net></My-App>");
  EXPECT_THROW(settings.loadConfigFile(file.c_str()), DtCorruptedState);
}

TEST(SettingsApplication, BrokenKtlReachesTheCaller) {
  TempDir dir;
  NetSettings settings;
  std::string file = dir.write("net.ktl", "(My-App (app (net (rate (value \"7\"");
  EXPECT_THROW(settings.loadConfigFile(file.c_str()), DtException);
}

TEST(SettingsApplication, MissingGroupElementFailsTheWholeFile) {
  TempDir dir;
  NetSettings settings;
  std::string file = dir.write("net.xml", "<My-App><app><rate value=\"7\"/></app></My-App>");
  try {
    settings.loadConfigFile(file.c_str());
    FAIL() << "no exception";
  } catch (const DtCorruptedState& e) {
    EXPECT_STREQ("DtCorruptedState: Unable to find group:net:net", e.message());
  }
  EXPECT_EQ(1, settings.rate.value());
}

TEST(SettingsApplication, UnknownElementIsIgnored) {
  TempDir dir;
  NetSettings settings;
  std::string file = dir.write(
      "net.xml", "<My-App><app><net><speed value=\"3\"/><rate value=\"7\"/></net></app></My-App>");
  auto output = captureOutput([&] { EXPECT_TRUE(settings.loadConfigFile(file.c_str())); });
  EXPECT_EQ(7, settings.rate.value());
  EXPECT_EQ(10, settings.count.value());
  EXPECT_EQ("", output.out);
  EXPECT_EQ("", output.err);
}

TEST(SettingsApplication, KtlAndXmlFormsOfOneConfigurationLoadTheSameValues) {
  // Every type, in a nested group; the XML file is saved by the settings and the KTL one is
  // its conversion by the tree's writer.
  class Every : public DtApplicationSettings {
   public:
    Every()
        : DtApplicationSettings("every", "1", "top"),
          outer(this, "outer", "", "The outer group"),
          inner(&outer, "inner", "innerType", "The inner group"),
          text(&outer, "text", "", "", DtAllScopes, false, ""),
          stdText(&outer, "stdText", "", "", DtAllScopes, false, ""),
          count(&outer, "count", 0, "", DtAllScopes, false, ""),
          size(&inner, "size", 0, "", DtAllScopes, false, ""),
          rate(&inner, "rate", 0, "", DtAllScopes, false, ""),
          ratio(&inner, "ratio", 0, "", DtAllScopes, false, ""),
          flag(&inner, "flag", false, "", DtAllScopes, false, ""),
          position(&inner, "position", DtVector64(), "", DtAllScopes, false, ""),
          attitude(&outer, "attitude", DtTaitBryan(), "", DtAllScopes, false, "") {}
    DtVariableGroup outer;
    DtVariableGroup inner;
    DtConfigVariable<DtString> text;
    DtConfigVariable<std::string> stdText;
    DtConfigVariable<int> count;
    DtConfigVariable<unsigned int> size;
    DtConfigVariable<double> rate;
    DtConfigVariable<float> ratio;
    DtConfigVariable<bool> flag;
    DtConfigVariable<DtVector64> position;
    DtConfigVariable<DtTaitBryan> attitude;
  };
  TempDir dir;
  Every saved;
  saved.text.setValue("some text");
  saved.stdText.setValue("std text");
  saved.count.setValue(-5);
  saved.size.setValue(4000000000u);
  saved.rate.setValue(0.1);
  saved.ratio.setValue(2.75f);
  saved.flag.setValue(true);
  saved.position.setValue(DtVector64(1.5, -2, 3e8));
  saved.attitude.setValue(DtTaitBryan(0.5, 1, -1.5));
  std::string xml = dir.file("every.xml");
  ASSERT_TRUE(saved.saveConfigFile(xml.c_str(), "every.xsd", false));
  bool ok = false;
  DtEnvironment tree = DtEnvXMLReader(false).readFile(xml.c_str(), ok);
  ASSERT_TRUE(ok);
  std::string ktl = dir.file("every.ktl");
  ASSERT_TRUE(DtEnvKTLWriter().writeFile(tree, ktl.c_str()));

  Every fromXml;
  Every fromKtl;
  ASSERT_TRUE(fromXml.loadConfigFile(xml.c_str()));
  ASSERT_TRUE(fromKtl.loadConfigFile(ktl.c_str()));
  for (Every* loaded : {&fromXml, &fromKtl}) {
    EXPECT_EQ("some text", loaded->text.value());
    EXPECT_EQ("std text", loaded->stdText.value());
    EXPECT_EQ(-5, loaded->count.value());
    EXPECT_EQ(4000000000u, loaded->size.value());
    EXPECT_EQ(0.1, loaded->rate.value());
    EXPECT_EQ(2.75f, loaded->ratio.value());
    EXPECT_TRUE(loaded->flag.value());
    EXPECT_EQ(DtVector64(1.5, -2, 3e8), loaded->position.value());
    EXPECT_EQ(DtTaitBryan(0.5, 1, -1.5), loaded->attitude.value());
  }
}

TEST(SettingsApplication, SavedDocument) {
  TempDir dir;
  NetSettings settings;
  settings.rate.setValue(2.5);
  std::string file = dir.file("net.xml");
  EXPECT_TRUE(settings.saveConfigFile(file.c_str(), "schema.xsd", false));
  // libxml2 puts the namespace declaration before the other attribute.
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
      "<My-App xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
      "xsi:noNamespaceSchemaLocation=\"schema.xsd\">\n"
      "   <app>\n"
      "      <net>\n"
      "         <!--Packets per second-->\n"
      "         <rate value=\"2.5\"/>\n"
      "         <count value=\"10\"/>\n"
      "      </net>\n"
      "   </app>\n"
      "</My-App>\n",
      fileText(file));
  // Without generateSchema no schema is written.
  EXPECT_EQ("<missing>", fileText(dir.file("schema.xsd")));
}

TEST(SettingsApplication, SavedDocumentElementHasEachBlankMadeADash) {
  TempDir dir;
  DtApplicationSettings settings("My  App", "1", "app");
  std::string file = dir.file("out.xml");
  EXPECT_TRUE(settings.saveConfigFile(file.c_str(), "s.xsd", false));
  EXPECT_NE(std::string::npos, fileText(file).find("<My--App "));
}

TEST(SettingsApplication, SaveWithSchemaWritesBoth) {
  TempDir dir;
  NetSettings settings;
  std::string file = dir.file("net.xml");
  std::string schema = dir.file("net.xsd");
  EXPECT_TRUE(settings.saveConfigFile(file.c_str(), schema.c_str(), true));
  EXPECT_NE(std::string::npos, fileText(file).find("xsi:noNamespaceSchemaLocation=\"" + schema));
  EXPECT_EQ(0u, fileText(schema).find("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<xs:schema "));
}

TEST(SettingsApplication, SaveThatCannotWriteGivesFalse) {
  TempDir dir;
  NetSettings settings;
  bool saved = true;
  auto output = captureOutput([&] {
    saved = settings.saveConfigFile(dir.file("no/such/dir/net.xml").c_str(), "s.xsd", false);
  });
  EXPECT_FALSE(saved);
  EXPECT_EQ("testXmlwriterDoc: Error at xmlSaveFormatFileEnc\n", output.err);
}

TEST(SettingsApplication, SaveCatchesEveryDtException) {
  TempDir dir;
  NetSettings settings;
  FailingMember failing(&settings.net);
  std::string file = dir.file("net.xml");
  bool saved = true;
  EXPECT_NO_THROW(saved = settings.saveConfigFile(file.c_str(), "s.xsd", false));
  EXPECT_FALSE(saved);
  EXPECT_EQ("<missing>", fileText(file));
}

TEST(SettingsApplication, ReadFileIntoEnvironmentAnswers) {
  NetSettings settings;
  ScriptedReader notRead(ScriptedReader::NotRead);
  EXPECT_FALSE(settings.readFileIntoEnvironment("x", notRead));
  ScriptedReader invalid(ScriptedReader::InvalidInput);
  EXPECT_FALSE(settings.readFileIntoEnvironment("x", invalid));
  ScriptedReader corrupted(ScriptedReader::CorruptedState);
  EXPECT_THROW(settings.readFileIntoEnvironment("x", corrupted), DtCorruptedState);
}

TEST(SettingsApplication, ParseCommandLineSetsTheSettings) {
  NetSettings settings;
  parse(settings, {"-r", "3.5", "--count", "4"});
  EXPECT_EQ(3.5, settings.rate.value());
  EXPECT_EQ(4, settings.count.value());
  EXPECT_TRUE(settings.rate.isSet());
}

// Precedence. rate is on the command line (5) and in the file (7); count only in the file (70).

TEST(SettingsApplication, CommandLineThenFileWithChangeOnceKeepsTheCommandLine) {
  TempDir dir;
  NetSettings settings;
  settings.setChangeOnce(true);
  parse(settings, {"--rate", "5"});
  ASSERT_TRUE(settings.loadConfigFile(dir.write("net.xml", netXml).c_str()));
  EXPECT_EQ(5, settings.rate.value());
  EXPECT_EQ(70, settings.count.value());
}

TEST(SettingsApplication, CommandLineThenFileWithoutChangeOnceTakesTheFile) {
  TempDir dir;
  NetSettings settings;
  parse(settings, {"--rate", "5"});
  ASSERT_TRUE(settings.loadConfigFile(dir.write("net.xml", netXml).c_str()));
  EXPECT_EQ(7, settings.rate.value());
  EXPECT_EQ(70, settings.count.value());
}

TEST(SettingsApplication, FileThenCommandLineWithChangeOnceTakesTheCommandLine) {
  TempDir dir;
  NetSettings settings;
  settings.setChangeOnce(true);
  ASSERT_TRUE(settings.loadConfigFile(dir.write("net.xml", netXml).c_str()));
  parse(settings, {"--rate", "5"});
  EXPECT_EQ(5, settings.rate.value());
  EXPECT_EQ(70, settings.count.value());
}

TEST(SettingsApplication, FileThenCommandLineWithoutChangeOnceTakesTheCommandLine) {
  TempDir dir;
  NetSettings settings;
  ASSERT_TRUE(settings.loadConfigFile(dir.write("net.xml", netXml).c_str()));
  parse(settings, {"--rate", "5"});
  EXPECT_EQ(5, settings.rate.value());
  EXPECT_EQ(70, settings.count.value());
}

TEST(SettingsApplication, NeitherSourceResetsToTheDefault) {
  TempDir dir;
  NetSettings settings;
  settings.rate.setValue(3);
  parse(settings, {"--count", "4"});
  EXPECT_EQ(3, settings.rate.value());
  ASSERT_TRUE(settings.loadConfigFile(
      dir.write("rate.xml", "<My-App><app><net><rate value=\"8\"/></net></app></My-App>").c_str()));
  EXPECT_EQ(8, settings.rate.value());
  EXPECT_EQ(4, settings.count.value());
}
