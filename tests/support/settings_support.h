#ifndef TESTS_SUPPORT_SETTINGS_SUPPORT_H
#define TESTS_SUPPORT_SETTINGS_SUPPORT_H

// Steps the settings suites share: the XML form of a tree on one line, and a command line
// parsed into a group's settings.
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <ktl/cmdLine.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <ktl/variableGroup.h>

namespace ktltest {

// The tree under env's root in the XML form, without the declaration and on one line.
inline std::string xmlOf(KORRti::DtEnvironment env) {
  KORRti::DtEnvXMLWriter writer("root");
  KORRti::DtString text;
  EXPECT_TRUE(writer.writeString(env, text));
  std::string xml = text.c_str();
  xml = xml.substr(xml.find('\n') + 1);
  while (!xml.empty() && xml.back() == '\n') xml.pop_back();
  return xml;
}

// Parses args (after a program name) into what the settings of group added, failing by an
// exception rather than by the end of the process.
inline void parse(KORRti::DtVariableGroup& group, std::initializer_list<std::string> args) {
  KORRti::DtCmdLine::CmdLine cmd("test", ' ', "1", false);
  group.getCommandLineArg(cmd);
  std::vector<std::string> words = {"program"};
  words.insert(words.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(&word[0]);
  cmd.parse(static_cast<int>(argv.size()), argv.data(), false);
  group.updateFromCommandLineArg();
}

}  // namespace ktltest

#endif
