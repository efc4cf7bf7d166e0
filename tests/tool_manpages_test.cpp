// The manual pages of the programs in tools/: every program has one, and its page and its
// --help name the same options (and, where the help gives them, the same exit statuses), so
// that the two cannot drift apart. Where groff is installed, each page renders without warnings.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace {

const std::string theTools = std::string(KTL_SOURCE_DIR) + "/tools";
const std::string thePrograms = std::string(KTL_BINARY_DIR) + "/tools";

std::vector<std::string> programs() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(theTools)) {
    if (entry.path().extension() == ".cpp") names.push_back(entry.path().stem().string());
  }
  return names;
}

// The options a text names: "-x" and "--name", where they stand as words of their own.
std::set<std::string> optionsIn(const std::string& text) {
  std::set<std::string> options;
  static const std::regex option("(^|[\\s\\[|,(])(--?[A-Za-z][A-Za-z_-]*)");
  for (std::sregex_iterator it(text.begin(), text.end(), option), end; it != end; ++it) {
    options.insert((*it)[2].str());
  }
  return options;
}

// A section of a page's source, from its .SH line to the next, with roff's "\-" as "-".
std::string section(const std::string& page, const std::string& name) {
  size_t start = page.find(".SH " + name + "\n");
  if (start == std::string::npos) return "";
  size_t end = page.find("\n.SH ", start + 1);
  std::string text = page.substr(start, end == std::string::npos ? std::string::npos : end - start);
  return std::regex_replace(text, std::regex("\\\\-"), "-");
}

// The exit statuses a page's EXIT STATUS section lists.
std::set<std::string> statusesIn(const std::string& exitSection) {
  std::set<std::string> statuses;
  static const std::regex status("\\n\\.B ([0-9]+)\\n");
  for (std::sregex_iterator it(exitSection.begin(), exitSection.end(), status), end; it != end;
       ++it) {
    statuses.insert((*it)[1].str());
  }
  return statuses;
}

TEST(ToolManpages, EveryProgramHasAPageNamedForIt) {
  std::vector<std::string> names = programs();
  EXPECT_GE(names.size(), 4u);
  for (const std::string& name : names) {
    std::string page = ktltest::fileText(theTools + "/man/" + name + ".1");
    ASSERT_NE(page, "<missing>") << name;
    std::string title = name;
    for (char& c : title) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(page.compare(0, 5 + title.size(), ".TH " + title + " "), 0) << name;
    EXPECT_NE(page.find(".SH NAME\n" + name + " \\- "), std::string::npos) << name;
  }
}

TEST(ToolManpages, PageAndHelpNameTheSameOptions) {
  for (const std::string& name : programs()) {
    ktltest::Outcome help = ktltest::runProgram(thePrograms + "/" + name, {"--help"});
    ASSERT_EQ(help.status, 0) << name;
    std::string page = ktltest::fileText(theTools + "/man/" + name + ".1");
    std::set<std::string> fromHelp = optionsIn(help.out);
    std::set<std::string> fromPage = optionsIn(section(page, "OPTIONS"));
    EXPECT_FALSE(fromPage.empty()) << name;
    EXPECT_EQ(fromPage, fromHelp) << name;
  }
}

TEST(ToolManpages, PageListsTheExitStatusesTheHelpGives) {
  for (const std::string& name : programs()) {
    ktltest::Outcome help = ktltest::runProgram(thePrograms + "/" + name, {"--help"});
    std::string page = ktltest::fileText(theTools + "/man/" + name + ".1");
    std::set<std::string> statuses = statusesIn(section(page, "EXIT STATUS"));
    EXPECT_TRUE(statuses.count("0")) << name;
    size_t at = help.out.find("xit status");
    if (at == std::string::npos) at = help.out.find("EXIT STATUS");
    if (at == std::string::npos) continue;  // this help gives no statuses to compare with
    std::set<std::string> inHelp;
    static const std::regex number("\\b([0-9]+)\\b");
    std::string rest = help.out.substr(at);
    for (std::sregex_iterator it(rest.begin(), rest.end(), number), end; it != end; ++it) {
      inHelp.insert((*it)[1].str());
    }
    for (const std::string& status : statuses)
      EXPECT_TRUE(inHelp.count(status)) << name << " " << status;
  }
}

TEST(ToolManpages, PagesRenderWithoutWarnings) {
  if (std::system("command -v groff >/dev/null 2>&1") != 0) GTEST_SKIP() << "no groff here";
  for (const std::string& name : programs()) {
    ktltest::Outcome render = ktltest::runProgram(
        "/bin/sh", {"-c", "groff -man -Tutf8 -ww -z '" + theTools + "/man/" + name + ".1'"});
    EXPECT_EQ(render.status, 0) << name;
    EXPECT_EQ(render.err, "") << name;
  }
}

}  // namespace
