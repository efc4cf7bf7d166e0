// Every HLA 1.3 FED file of the test corpus (tests/data/fom/hla13, public files kept as found)
// read by both 1.3 readers: the result and message each file gives, with the reason where the
// file is not of the form the readers take, and the number of spaces, classes, attributes and
// parameters delivered, checked against a count made by a separate scan of the text.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <ktl/fedReader13.h>
#include <ktl/ktlFedReader.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fed_recorder.h"

using namespace KORRti;
using ktltest::FedRecorder;

namespace {

const std::string theCorpus = std::string(KTL_TEST_DATA_DIR) + "/fom/hla13";

std::string slurp(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// How many forms of each keyword the text holds, counted by a scan of its own: comments
// (";" to the end of the line) and strings are passed over, and a keyword counts where it
// follows an opening parenthesis. Classes are counted apart for the objects and the
// interactions sections.
struct Counts {
  int spaces = 0;
  int dimensions = 0;
  int objectClasses = 0;
  int attributes = 0;
  int interactionClasses = 0;
  int parameters = 0;
};

Counts scan(const std::string& text) {
  Counts counts;
  bool inInteractions = false;
  bool afterParen = false;
  for (size_t i = 0; i < text.size();) {
    char c = text[i];
    if (c == ';') {
      while (i < text.size() && text[i] != '\n') ++i;
      continue;
    }
    if (c == '"') {
      for (++i; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\') ++i;
      }
      ++i;
      afterParen = false;
      continue;
    }
    if (c == '(') {
      afterParen = true;
      ++i;
      continue;
    }
    if (std::isspace(static_cast<unsigned char>(c))) {
      ++i;
      continue;
    }
    size_t end = i;
    while (end < text.size() && !std::isspace(static_cast<unsigned char>(text[end])) &&
           text[end] != '(' && text[end] != ')' && text[end] != ';' && text[end] != '"') {
      ++end;
    }
    if (end == i) {
      afterParen = false;
      ++i;
      continue;
    }
    std::string word = text.substr(i, end - i);
    if (afterParen) {
      if (word == "space") ++counts.spaces;
      if (word == "dimension") ++counts.dimensions;
      if (word == "interactions") inInteractions = true;
      if (word == "class") ++(inInteractions ? counts.interactionClasses : counts.objectClasses);
      if (word == "attribute") ++counts.attributes;
      if (word == "parameter") ++counts.parameters;
    }
    afterParen = false;
    i = end;
  }
  return counts;
}

Counts delivered(const FedRecorder& target) {
  Counts counts;
  counts.spaces = static_cast<int>(target.callsOf("addSpace").size());
  counts.dimensions = static_cast<int>(target.callsOf("addSpaceDimension").size());
  counts.objectClasses = static_cast<int>(target.callsOf("addObjectClass").size());
  counts.attributes = static_cast<int>(target.callsOf("addSpaceAttribute").size());
  counts.interactionClasses = static_cast<int>(target.callsOf("addInteractionClass").size());
  counts.parameters = static_cast<int>(target.callsOf("addParameter").size());
  return counts;
}

struct Expectation {
  int result;
  std::string message;  // lastError() of a fresh reader afterwards
  std::string warning;  // what goes to standard error
  const char* why;
};

// What each file gives, and why where it isn't a plain 0.
const std::map<std::string, Expectation>& expectations() {
  static const std::map<std::string, Expectation> table = {
      {"OpenEaagles_RPR-FOM.fed", {0, "", "", "a complete FED file with two routing spaces"}},
      {"RPR_FOM_v2.0_1.3.fed", {0, "", "", "the largest FED file of the corpus"}},
      {"hla-pathbuilder_WrightFlyer.fed", {0, "", "", "a complete FED file"}},
      {"portico_HLAstandardMIM.fed", {0, "", "", "the management classes as a FED file"}},
      {"portico_example_testfom.fed", {0, "", "", "a complete FED file"}},
      {"portico_testfom-pitch.fed", {0, "", "", "a complete FED file"}},
      {"portico_testfom.fed", {0, "", "", "a complete FED file with comments"}},
      {"ccerti_Federation.fed",
       {2, "", "",
        "the top list has seven elements, with a (Federate ...) form the 1.3 form has no place "
        "for: a silent failure"}},
      {"certi_Billard_Test.fed",
       {2, "", "", "the top list has seven elements, with a (Federate ...) form: silent"}},
      {"certi_Interactive_Federation.fed",
       {2, "Symbol \"FED\" not found", "", "keywords compare with case, and the file has Fed"}},
      {"certi_testFederation.fed",
       {2, "Symbol \"FED\" not found", "", "keywords compare with case, and the file has Fed"}},
      {"hla-pathbuilder_RestaurantFOM.fed",
       {2, "", "", "a list of another format, (fom ...), which is not six elements: silent"}},
      {"jcerti_uav.fed",
       {2, "", "",
        "(interactions) holds no root class, and the sixth element must have two: silent"}},
      {"openrti_fdd-1.fed",
       {2, "", "", "there is no (spaces) form, so the top list has five elements: silent"}},
      {"openrti_fdd-2.fed",
       {2, "", "", "there is no (spaces) form, so the top list has five elements: silent"}},
      {"portico_testfom-nospaces.fed",
       {2, "", "", "there is no (spaces) form, so the top list has five elements: silent"}},
      {"negative/portico_cpptest_1516e_testfom-invalid.fed",
       {2, "Unexpected problem reading fed file", "",
        "unbalanced parentheses: the Lisp reader fails"}},
      {"negative/portico_cpptest_hla13_testfom-invalid.fed",
       {2, "Unexpected problem reading fed file", "",
        "unbalanced parentheses: the Lisp reader fails"}},
      {"negative/portico_testfom-unbalanced.fed",
       {2, "Unexpected problem reading fed file", "",
        "unbalanced parentheses: the Lisp reader fails"}},
      {"negative/portico_testfom-badcomment.fed",
       {0, "", "", "a single ';' starts a comment in the Lisp syntax, so the file is fine here"}},
      {"negative/portico_testfom-randomtext.fed",
       {2, "", "", "bare words between the sections make the top list longer than six: silent"}},
      {"negative/portico_testfom-undefinedAttributeOrder.fed",
       {2, "Invalid OrderType for Attribute: aa", "", "an unknown order fails"}},
      {"negative/portico_testfom-undefinedInteractionOrder.fed",
       {2, "Invalid OrderType for Interaction: X", "", "an unknown order fails"}},
      {"negative/portico_testfom-undefinedAttributeTransport.fed",
       {0, "", "Invalid TransportType for Attribute: aa",
        "an unknown transport only warns and is delivered as -1"}},
      {"negative/portico_testfom-undefinedInteractionTransport.fed",
       {0, "", "Invalid TransportType for Interaction: X",
        "an unknown transport only warns and is delivered as -1"}},
      {"negative/portico_testfom-undefinedAttributeSpace.fed",
       {0, "", "", "the readers don't check that a space named by an attribute is declared"}},
      {"negative/portico_testfom-undefinedInteractionSpace.fed",
       {0, "", "", "the readers don't check that a space named by a class is declared"}},
  };
  return table;
}

std::vector<std::string> corpusFiles() {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(theCorpus)) {
    if (entry.path().extension() == ".fed") {
      files.push_back(std::filesystem::relative(entry.path(), theCorpus).string());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

struct Read {
  int result = -1;
  std::string error;
  std::string err;
};

Read readWith(DtFedReader& reader, const std::string& path, FedRecorder& target) {
  Read read;
  ktltest::Captured output = ktltest::captureOutput(
      [&] { read.result = reader.readFed(path.c_str(), &target, 0, false, false); });
  read.error = reader.lastError().c_str();
  read.err = output.err;
  return read;
}

TEST(FedCorpus, EveryFileHasAnExpectation) {
  std::vector<std::string> files = corpusFiles();
  EXPECT_EQ(files.size(), 27u);
  for (const std::string& file : files) {
    EXPECT_EQ(expectations().count(file), 1u) << file << " has no expected result";
  }
  for (const auto& entry : expectations()) {
    EXPECT_TRUE(std::filesystem::exists(theCorpus + "/" + entry.first)) << entry.first;
  }
}

TEST(FedCorpus, CopiesMatchTheSharedCorpusWhereItIsThere) {
  std::string shared = std::string(KTL_SOURCE_DIR) + "/../shared/fom-corpus/hla13";
  if (!std::filesystem::exists(shared)) GTEST_SKIP() << "no shared corpus beside the sources";
  for (const auto& entry : std::filesystem::recursive_directory_iterator(shared)) {
    if (entry.path().extension() != ".fed") continue;
    std::string name = std::filesystem::relative(entry.path(), shared).string();
    EXPECT_EQ(slurp(entry.path().string()), slurp(theCorpus + "/" + name)) << name;
  }
}

TEST(FedCorpus, EachFileGivesItsResultWithBothReaders) {
  for (const std::string& file : corpusFiles()) {
    auto found = expectations().find(file);
    if (found == expectations().end()) continue;
    const Expectation& expected = found->second;
    std::string path = theCorpus + "/" + file;
    SCOPED_TRACE(file + ": " + expected.why);
    DtFedReader13 reader13;
    FedRecorder target13;
    Read read13 = readWith(reader13, path, target13);
    EXPECT_EQ(read13.result, expected.result);
    EXPECT_EQ(read13.error, expected.message);
    EXPECT_EQ(read13.err, expected.warning);
    DtKtlFedReader readerKtl;
    FedRecorder targetKtl;
    Read readKtl = readWith(readerKtl, path, targetKtl);
    EXPECT_EQ(readKtl.result, expected.result);
    EXPECT_EQ(readKtl.error, expected.message);
    // Both deliver the same, but for the format the 1.3 reader tells first.
    ASSERT_FALSE(target13.calls.empty());
    EXPECT_EQ(target13.calls.front(), "setFomType(1)");
    EXPECT_EQ(std::vector<std::string>(target13.calls.begin() + 1, target13.calls.end()),
              targetKtl.calls);
  }
}

TEST(FedCorpus, ClassCountsOfTheFilesThatRead) {
  int filesRead = 0;
  for (const std::string& file : corpusFiles()) {
    auto found = expectations().find(file);
    if (found == expectations().end() || found->second.result != 0) continue;
    SCOPED_TRACE(file);
    std::string path = theCorpus + "/" + file;
    Counts expected = scan(slurp(path));
    DtFedReader13 reader;
    FedRecorder target;
    ASSERT_EQ(readWith(reader, path, target).result, 0);
    Counts got = delivered(target);
    EXPECT_GT(expected.objectClasses, 0);
    EXPECT_GT(expected.interactionClasses, 0);
    EXPECT_EQ(got.spaces, expected.spaces);
    EXPECT_EQ(got.dimensions, expected.dimensions);
    EXPECT_EQ(got.objectClasses, expected.objectClasses);
    EXPECT_EQ(got.attributes, expected.attributes);
    EXPECT_EQ(got.interactionClasses, expected.interactionClasses);
    EXPECT_EQ(got.parameters, expected.parameters);
    ++filesRead;
  }
  EXPECT_EQ(filesRead, 12);
}

TEST(FedCorpus, ParentsComeBeforeChildrenWithFullNames) {
  DtFedReader13 reader;
  FedRecorder target;
  ASSERT_EQ(readWith(reader, theCorpus + "/RPR_FOM_v2.0_1.3.fed", target).result, 0);
  std::map<std::string, bool> seen;
  for (const std::string& call : target.callsOf("addObjectClass")) {
    // addObjectClass(name, parent)
    std::string args = call.substr(15, call.size() - 16);
    std::string name = args.substr(0, args.find(", "));
    std::string parent = args.substr(args.find(", ") + 2);
    if (parent == "null") {
      EXPECT_EQ(name, "ObjectRoot");
    } else {
      EXPECT_TRUE(seen.count(parent)) << name;
      EXPECT_EQ(name.compare(0, parent.size() + 1, parent + "."), 0) << name;
    }
    seen[name] = true;
  }
  EXPECT_TRUE(seen.count("ObjectRoot.BaseEntity.PhysicalEntity.Platform"));
}

TEST(FedCorpus, ManagementClassesSkippedUnderAReplacedRoot) {
  // The management model of the corpus read into a target that only knows HLAobjectRoot and
  // HLAinteractionRoot: nothing of Manager reaches it.
  std::string path = theCorpus + "/portico_HLAstandardMIM.fed";
  Counts all = scan(slurp(path));
  DtFedReader13 reader;
  FedRecorder target;
  target.refusedObjects = {"ObjectRoot"};
  target.refusedInteractions = {"InteractionRoot"};
  ASSERT_EQ(readWith(reader, path, target).result, 0);
  std::vector<std::string> objects = target.callsOf("addObjectClass");
  std::vector<std::string> interactions = target.callsOf("addInteractionClass");
  for (const auto& call : objects) EXPECT_EQ(call.find("Manager"), std::string::npos) << call;
  for (const auto& call : interactions) {
    EXPECT_EQ(call.find("Manager"), std::string::npos) << call;
  }
  EXPECT_LT(objects.size(), static_cast<size_t>(all.objectClasses));
  EXPECT_LT(interactions.size(), static_cast<size_t>(all.interactionClasses));
  EXPECT_EQ(objects[1], "addObjectClass(HLAobjectRoot, null)");
}

}  // namespace
