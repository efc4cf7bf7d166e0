#ifndef KTL_APPLICATIONSETTINGS_H
#define KTL_APPLICATIONSETTINGS_H

#include <ktl/configVariable.h>
#include <ktl/envXmlReader.h>
#include <ktl/environment.h>
#include <ktl/variableGroup.h>
#include <util/dtString.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// The top group of an application's settings and their outward face: it holds the application's
/// name and version, parses the command line, loads configuration files in their XML and KTL
/// forms, saves the settings as an XML file, and generates that file's XML Schema.
///
/// A setting's value starts as its default; after that, the command line and configuration files
/// apply in the order the application calls them, the later winning for each setting it names.
/// With changeOnce, a setting that the command line has set keeps that value whatever follows.
class DtApplicationSettings : public DtVariableGroup {
 public:
  /// The group has no parent and groupName as both name and type.
  DtApplicationSettings(const DtString& applicationName, const DtString& applicationVersion,
                        const DtString& groupName);
  /// Copies share the members: the list of pointers is copied.
  DtApplicationSettings(const DtApplicationSettings& other) = default;
  DtApplicationSettings& operator=(const DtApplicationSettings& other) = default;
  ~DtApplicationSettings() override;

  /// The one changeOnce flag of the whole tree; false at construction.
  bool changeOnce() const override;
  void setChangeOnce(bool changeOnce);

  /// Parses the command line into the settings that take part in it. Help and version print and
  /// end the process with 0, a wrong command line is reported on standard error and ends it with
  /// 1; with pause each waits for a key first.
  void parseCommandLine(int argc, char** argv, bool pause);
  /// Writes the settings in files as an XML document whose element is the application's name
  /// (blanks made "-"), naming schemaFile as its schema, and with generateSchema writes that
  /// schema too. False when the file could not be written or an exception was caught.
  bool saveConfigFile(const DtString& file, const DtString& schemaFile, bool generateSchema);

  /// Loads a configuration file by its extension: "xml" or "ktl", exactly. False for another
  /// extension and for a file that can't be read; a broken file throws DtCorruptedState (XML),
  /// or the interpreter's DtException (KTL), as does a file that lacks a group's element.
  virtual bool loadConfigFile(const DtString& file);
  virtual bool loadKtlFile(const DtString& file);
  /// Reads without DTD validation.
  virtual bool loadXmlFile(const DtString& file);
  /// Writes the XML Schema of the configuration files to file; a failure is only reported by the
  /// writer on standard error.
  virtual void generateConfigFileSchema(const DtString& file) const;
  /// Declares the document element, named by the application's name as it stands, holding the
  /// top group's element.
  virtual void generateElements(DtEnvironment env) const;
  /// Appends a member, as addBaseVariable() does.
  virtual void addBaseVar(DtBaseConfigVariable* variable);
  virtual const DtString& applicationName() const;
  virtual const DtString& applicationVersion() const;
  /// Reads file with reader and takes the settings from it; false when it was not read. Only
  /// DtInvalidInput is caught.
  virtual bool readFileIntoEnvironment(const DtString& file, DtEnvReader& reader);

 private:
  DtString applicationName_;
  DtString applicationVersion_;
  bool changeOnce_ = false;
};

}  // namespace KORRti

KTL_API_END

#endif
