#include <ktl/applicationSettings.h>
#include <ktl/cmdLine.h>
#include <ktl/envKtlReader.h>
#include <ktl/envXmlWriter.h>
#include <util/dtException.h>
#include <util/dtFilename.h>

#include <set>

namespace KORRti {

namespace {

const char xmlSchemaNamespace[] = "http://www.w3.org/2001/XMLSchema";
const char xmlSchemaInstanceNamespace[] = "http://www.w3.org/2001/XMLSchema-instance";

}  // namespace

DtApplicationSettings::DtApplicationSettings(const DtString& applicationName,
                                             const DtString& applicationVersion,
                                             const DtString& groupName)
    : DtVariableGroup(nullptr, groupName, "", ""),
      applicationName_(applicationName),
      applicationVersion_(applicationVersion) {}

DtApplicationSettings::~DtApplicationSettings() = default;

bool DtApplicationSettings::changeOnce() const {
  return changeOnce_;
}

void DtApplicationSettings::setChangeOnce(bool changeOnce) {
  changeOnce_ = changeOnce;
}

void DtApplicationSettings::parseCommandLine(int argc, char** argv, bool pause) {
  DtCmdLine::CmdLine cmd(applicationName_.stdString(), ' ', applicationVersion_.stdString(), pause);
  for (DtBaseConfigVariable* variable : variables_) variable->getCommandLineArg(cmd);
  cmd.parse(argc, argv, true);
  updateFromCommandLineArg();
}

bool DtApplicationSettings::saveConfigFile(const DtString& file, const DtString& schemaFile,
                                           bool generateSchema) {
  try {
    if (generateSchema) generateConfigFileSchema(schemaFile);
    DtEnvironment env(DtReplaceAllSubstrings(applicationName_, " ", "-"));
    env.addAttribute("xsi:noNamespaceSchemaLocation", schemaFile);
    env.addAttribute("xmlns:xsi", xmlSchemaInstanceNamespace);
    getEnvironmentValue(env);
    DtEnvXMLWriter writer("");
    writer.setIndentation("   ");
    return writer.writeFile(env, file);
  } catch (const DtException&) {
    return false;
  }
}

bool DtApplicationSettings::loadConfigFile(const DtString& file) {
  try {
    DtString extension = DtFilename(file.c_str()).extension();
    if (extension == "xml") return loadXmlFile(file);
    if (extension == "ktl") return loadKtlFile(file);
    return false;
  } catch (const DtInvalidInput&) {
    return false;
  }
}

bool DtApplicationSettings::loadKtlFile(const DtString& file) {
  DtEnvKTLReader reader;
  return readFileIntoEnvironment(file, reader);
}

bool DtApplicationSettings::loadXmlFile(const DtString& file) {
  DtEnvXMLReader reader(false);
  return readFileIntoEnvironment(file, reader);
}

void DtApplicationSettings::generateConfigFileSchema(const DtString& file) const {
  DtEnvironment env("xs:schema");
  env.addAttribute("xmlns:xs", xmlSchemaNamespace);
  env.addAttribute("elementFormDefault", "qualified");
  std::set<DtString> seenTypes;
  getEnvironmentSchemaType(env, seenTypes);
  generateElements(env);
  DtEnvXMLWriter writer("");
  writer.writeFile(env, file);
}

void DtApplicationSettings::generateElements(DtEnvironment env) const {
  env.setRoot(createSchemaDeclaration(env, applicationName(), ""));
  env.setRoot(env.addObject("xs:complexType"));
  env.setRoot(env.addObject("xs:all"));
  if (inConfigFile()) createSchemaDeclaration(env, name(), type());
}

void DtApplicationSettings::addBaseVar(DtBaseConfigVariable* variable) {
  variables_.push_back(variable);
}

const DtString& DtApplicationSettings::applicationName() const {
  return applicationName_;
}

const DtString& DtApplicationSettings::applicationVersion() const {
  return applicationVersion_;
}

bool DtApplicationSettings::readFileIntoEnvironment(const DtString& file, DtEnvReader& reader) {
  try {
    bool ok = false;
    DtEnvironment env = reader.readFile(file, ok);
    if (!ok) return false;
    updateFromEnvironment(env);
    return true;
  } catch (const DtInvalidInput&) {
    return false;
  }
}

}  // namespace KORRti
