// settingsdemo: the settings of a small vessel program, declared once as typed settings in two
// nested groups, which give it its command line, its configuration files in XML and KTL form,
// and the XML Schema of those files. It prints the values it ends up with.
//
//   settingsdemo [--load FILE] [--save FILE [--schema FILE]] [SETTING...]
//
// The command line is parsed first and a loaded file second; a setting given on the command line
// keeps that value (changeOnce). Exit status: 0 done, 1 a wrong command line, 2 a configuration
// file that could not be loaded or saved.
#include <ktl/applicationSettings.h>
#include <ktl/configVariable.h>
#include <ktl/variableGroup.h>
#include <matrix/taitBryan.h>
#include <matrix/vector.h>
#include <util/dtException.h>

#include <cstdio>
#include <iostream>
#include <string>

using namespace KORRti;

namespace {

// The settings in files are of the types whose schema names an XML Schema accepts. std::string,
// unsigned int and DtTaitBryan settings would make the generated schema one that xmllint
// refuses ("std::string" and "unsigned int" are no XML names, and no type "DtTaitBryan" is
// declared), so this program has them on the command line only.
class DemoSettings : public DtApplicationSettings {
 public:
  DemoSettings()
      : DtApplicationSettings("settingsdemo", "1.0", "harbour"),
        vessel(this, "vessel", "", "The vessel"),
        callSign(&vessel, "callSign", "PH-7", "Radio call sign", DtAllScopes, false, "c"),
        crew(&vessel, "crew", 12, "People on board", DtAllScopes, false, "n"),
        speed(&vessel, "&speed", 12.5, "Speed in knots", DtAllScopes, false, ""),
        draught(&vessel, "draught", 6.25f, "Draught in metres", DtAllScopes, false, "d"),
        position(&vessel, "position", DtVector64(4.5, 51.9, 0), "Position x y z in km", DtAllScopes,
                 false, "p"),
        port(&vessel, "port", "Rotterdam", "Port of departure", DtCommandLineScope, false, "P"),
        attitude(&vessel, "&attitude", DtTaitBryan(90, 0, 0), "Heading pitch roll in degrees",
                 DtCommandLineScope, false, ""),
        engine(&vessel, "engine", "", "The main engine"),
        running(&engine, "running", false, "Start with the engine running", DtAllScopes, false,
                "r"),
        temperature(&engine, "temperature", 80, "Oil temperature in degrees", DtAllScopes, false,
                    "t"),
        rpm(&engine, "rpm", 900, "Revolutions per minute", DtCommandLineScope, false, "R"),
        load(this, "load", "", "Load this configuration file (.xml or .ktl)", DtCommandLineScope,
             false, "l"),
        save(this, "save", "", "Save the configuration as this XML file", DtCommandLineScope, false,
             "w"),
        schema(this, "schema", "settingsdemo.xsd", "The schema file that a saved file names",
               DtCommandLineScope, false, "") {
    setChangeOnce(true);
  }

  DtVariableGroup vessel;
  DtConfigVariable<DtString> callSign;
  DtConfigVariable<int> crew;
  DtConfigVariable<double> speed;
  DtConfigVariable<float> draught;
  DtConfigVariable<DtVector64> position;
  DtConfigVariable<std::string> port;
  DtConfigVariable<DtTaitBryan> attitude;
  DtVariableGroup engine;
  DtConfigVariable<bool> running;
  DtConfigVariable<double> temperature;
  DtConfigVariable<unsigned int> rpm;
  DtConfigVariable<DtString> load;
  DtConfigVariable<DtString> save;
  DtConfigVariable<DtString> schema;
};

template <typename T>
void show(const char* path, const DtConfigVariable<T>& setting) {
  std::printf("%-26s %-12s %s\n", path, setting.type().c_str(),
              DtVarType<T>::convertToString(setting.value()).c_str());
}

void showAll(const DemoSettings& settings) {
  show("vessel/callSign", settings.callSign);
  show("vessel/crew", settings.crew);
  show("vessel/speed", settings.speed);
  show("vessel/draught", settings.draught);
  show("vessel/position", settings.position);
  show("vessel/port", settings.port);
  show("vessel/attitude", settings.attitude);
  show("vessel/engine/running", settings.running);
  show("vessel/engine/temperature", settings.temperature);
  show("vessel/engine/rpm", settings.rpm);
}

int fileFailure(const DtString& file, const std::string& why) {
  std::cerr << "settingsdemo: " << file << ": " << why << std::endl;
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  DemoSettings settings;
  settings.parseCommandLine(argc, argv, false);

  const DtString loadFile = settings.load.value();
  if (!loadFile.isEmpty()) {
    try {
      if (!settings.loadConfigFile(loadFile)) {
        return fileFailure(loadFile, "cannot load (a missing file, or not .xml or .ktl)");
      }
    } catch (const DtException& e) {
      std::string message = e.message();
      while (!message.empty() && message.back() == '\n') message.pop_back();
      return fileFailure(loadFile, message);
    }
  }

  const DtString saveFile = settings.save.value();
  if (!saveFile.isEmpty() && !settings.saveConfigFile(saveFile, settings.schema.value(), true)) {
    return fileFailure(saveFile, "cannot save");
  }

  showAll(settings);
  return 0;
}
