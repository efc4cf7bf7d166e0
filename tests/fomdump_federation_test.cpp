// fomdump's federation: reading modules of every format, the rules that resolve a module's
// references to loaded modules (each shown on the published modules whose references it
// resolves), ambiguous and unresolvable references, the edition of the standard MIM, and the
// load order of the RPR FOM 2.0, NETN v3.0 and NETN v4.0 federations.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <ktl/fedReader.h>

#include "fomdump/federation.h"
#include "support/capture.h"

using namespace KORRti;
using fomdump::Federation;
using fomdump::Module;
using fomdump::Resolution;
using fomdump::Rule;

namespace {

const std::string theData = std::string(KTL_TEST_DATA_DIR) + "/fom";
const std::string theRpr = theData + "/ieee1516-2010/rpr-fom-v2.0";
const std::string theNetn3 = theData + "/ieee1516-2010/netn-fom-v3.0";
const std::string theNetn4 = theData + "/ieee1516-2025/netn-fom-v4.0-hla4";

// The .xml files of a directory, in reverse name order, so that no order comes for free.
std::vector<std::string> modulesIn(const std::string& directory) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    if (entry.path().extension() == ".xml") files.push_back(entry.path().string());
  }
  std::sort(files.rbegin(), files.rend());
  return files;
}

// A federation of these files on top of the held MIM of edition (none for unknown), arranged.
Federation federationOf(const std::vector<std::string>& files, DtFomType edition) {
  Federation federation;
  ktltest::captureOutput([&] {
    if (edition != DtFomTypeUnknown) {
      federation.modules.push_back(fomdump::readHeldMim(edition, false));
    }
    for (const std::string& file : files) {
      federation.modules.push_back(fomdump::readModule(file, false, false));
    }
    federation.arrange();
  });
  return federation;
}

size_t indexOf(const Federation& federation, const std::string& fileEnd) {
  for (size_t i = 0; i < federation.modules.size(); ++i) {
    const std::string& file = federation.modules[i].file;
    if (file.size() >= fileEnd.size() &&
        file.compare(file.size() - fileEnd.size(), fileEnd.size(), fileEnd) == 0) {
      return i;
    }
  }
  return federation.modules.size();
}

// The resolution of a module's reference, found by the module's file name and the reference.
const Resolution* resolutionOf(const Federation& federation, const std::string& fileEnd,
                               const std::string& reference) {
  size_t module = indexOf(federation, fileEnd);
  for (const Resolution& resolution : federation.resolutions) {
    if (resolution.module == module && resolution.reference == reference) return &resolution;
  }
  return nullptr;
}

// Every module is read, every reference resolves, and each module stands in the order after
// every module its references resolved to, with the standard MIM first.
void expectOrdered(const Federation& federation) {
  ASSERT_EQ(federation.order.size(), federation.modules.size());
  std::map<size_t, size_t> position;
  for (size_t at = 0; at < federation.order.size(); ++at) position[federation.order[at]] = at;
  EXPECT_EQ(position.size(), federation.modules.size());
  for (const Module& module : federation.modules) {
    EXPECT_EQ(module.result, 0) << module.file << ": " << module.error;
  }
  for (const Resolution& resolution : federation.resolutions) {
    SCOPED_TRACE(federation.modules[resolution.module].file + ": " + resolution.reference);
    ASSERT_TRUE(resolution.resolved);
    EXPECT_LT(position[resolution.target], position[resolution.module]);
  }
  EXPECT_TRUE(federation.modules[federation.order.front()].standardMim);
}

TEST(FomdumpFederation, TheFileStemWithAndWithoutItsVersion) {
  EXPECT_EQ(fomdump::fileStem("a/b/RPR-Base_v2.0.xml", false), "RPR-Base_v2.0");
  EXPECT_EQ(fomdump::fileStem("a/b/RPR-Base_v2.0.xml", true), "RPR-Base");
  EXPECT_EQ(fomdump::fileStem("model-v1.fed", true), "model");
  EXPECT_EQ(fomdump::fileStem("Model_V3.1.2.xml", true), "Model");
  // Only a separator, a v and digits make a version.
  EXPECT_EQ(fomdump::fileStem("NETN-BASE.xml", true), "NETN-BASE");
  EXPECT_EQ(fomdump::fileStem("v2.xml", true), "v2");
  EXPECT_EQ(fomdump::fileStem("Base_v.xml", true), "Base_v");
  EXPECT_EQ(fomdump::fileStem("Base2.0.xml", true), "Base2.0");
  EXPECT_EQ(fomdump::fileStem("noextension", false), "noextension");
}

TEST(FomdumpFederation, EachRuleOnThePublishedModules) {
  Federation netn3 = federationOf(modulesIn(theRpr), DtFomTypeEvolved);
  for (const std::string& file : modulesIn(theNetn3)) {
    ktltest::captureOutput(
        [&] { netn3.modules.push_back(fomdump::readModule(file, false, false)); });
  }
  ktltest::captureOutput([&] { netn3.arrange(); });
  struct Case {
    const char* module;
    const char* reference;
    Rule rule;
    const char* resolvedTo;
  };
  const Case cases[] = {
      // NETN v3.0 names NETN-BASE by its model name.
      {"netn-fom-v3.0/NETN-COM.xml", "NETN-BASE", Rule::kModelName, "netn-fom-v3.0/NETN-BASE.xml"},
      // The RPR modules name each other by the model name less its "SISO-STD-... - " prefix.
      {"RPR-Physical_v2.0.xml", "Real-time Platform Reference Base FOM Module",
       Rule::kNameAfterPrefix, "RPR-Base_v2.0.xml"},
      // NETN v3.0 names an RPR module by its file stem, and another by the stem less "_v2.0".
      {"NETN-Physical.xml", "RPR-Physical_v2.0", Rule::kFileStem, "RPR-Physical_v2.0.xml"},
      {"netn-fom-v3.0/NETN-BASE.xml", "RPR-Base", Rule::kFileStemLessVersion, "RPR-Base_v2.0.xml"},
      // The RPR foundation module depends on the standard MIM by the word MIM.
      {"RPR-Foundation_v2.0.xml", "MIM", Rule::kStandardMim, "HLAstandardMIM.xml"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.module) + ": " + c.reference);
    const Resolution* resolution = resolutionOf(netn3, c.module, c.reference);
    ASSERT_NE(resolution, nullptr);
    ASSERT_TRUE(resolution->resolved);
    EXPECT_EQ(resolution->rule, c.rule);
    EXPECT_EQ(indexOf(netn3, c.resolvedTo), resolution->target);
    EXPECT_STRNE(fomdump::ruleName(c.rule), "");
  }
  expectOrdered(netn3);
}

TEST(FomdumpFederation, AnAmbiguousReferenceStopsAtTheFirstRuleThatMatchesSeveral) {
  std::vector<Module> modules;
  for (const char* file : {"a/RPR-Base_v2.0.xml", "b/RPR-Base_v1.0.xml", "c/NETN-BASE.xml"}) {
    Module module;
    module.file = file;
    module.model.reset(new fomdump::ModelRecorder());
    modules.push_back(std::move(module));
  }
  Resolution ambiguous = fomdump::resolve(2, "RPR-Base", modules);
  EXPECT_FALSE(ambiguous.resolved);
  EXPECT_TRUE(ambiguous.ambiguous);
  EXPECT_EQ(ambiguous.candidates, (std::vector<size_t>{0, 1}));
  // A rule before it that matches exactly one decides.
  Resolution exact = fomdump::resolve(2, "RPR-Base_v1.0", modules);
  EXPECT_TRUE(exact.resolved);
  EXPECT_EQ(exact.target, 1u);
  EXPECT_EQ(exact.rule, Rule::kFileStem);
}

TEST(FomdumpFederation, AnUnresolvableReferenceAndOneToItself) {
  std::vector<Module> modules(1);
  modules[0].file = "NETN-BASE.xml";
  modules[0].model.reset(new fomdump::ModelRecorder());
  modules[0].model->modelName = "NETN-BASE";
  Resolution none = fomdump::resolve(0, "RPR-Base", modules);
  EXPECT_FALSE(none.resolved);
  EXPECT_FALSE(none.ambiguous);
  // A module is never resolved to itself.
  EXPECT_FALSE(fomdump::resolve(0, "NETN-BASE", modules).resolved);
  // "MIM" names only a module marked as the standard MIM.
  EXPECT_FALSE(fomdump::resolve(0, "MIM", modules).resolved);
}

TEST(FomdumpFederation, TheRprModulesInReverseOrder) {
  Federation rpr = federationOf(modulesIn(theRpr), DtFomTypeEvolved);
  EXPECT_EQ(rpr.modules.size(), 15u);
  EXPECT_EQ(rpr.resolutions.size(), 14u);
  expectOrdered(rpr);
  EXPECT_TRUE(rpr.sorterLines.empty());
}

TEST(FomdumpFederation, TheNetn4ModulesOnThe2025MimAndThe2010Rpr) {
  std::vector<std::string> files = modulesIn(theNetn4);
  for (const std::string& file : modulesIn(theRpr)) files.push_back(file);
  Federation netn4 = federationOf(files, DtFomType2025);
  EXPECT_EQ(netn4.modules.size(), 29u);
  expectOrdered(netn4);
  // NETN-ENTITY names the RPR modules by their file stems less the version, and the MIM.
  const Resolution* physical = resolutionOf(netn4, "NETN-ENTITY.xml", "RPR-Physical");
  ASSERT_NE(physical, nullptr);
  EXPECT_EQ(physical->rule, Rule::kFileStemLessVersion);
  const Resolution* mim = resolutionOf(netn4, "NETN-ENTITY.xml", "MIM");
  ASSERT_NE(mim, nullptr);
  EXPECT_EQ(mim->rule, Rule::kStandardMim);
  EXPECT_EQ(netn4.modules[mim->target].type, DtFomType2025);
}

TEST(FomdumpFederation, AnUnknownDependencyIsReportedByTheSorter) {
  Federation partial = federationOf({theNetn3 + "/NETN-COM.xml"}, DtFomTypeEvolved);
  ASSERT_EQ(partial.resolutions.size(), 1u);
  EXPECT_FALSE(partial.resolutions[0].resolved);
  EXPECT_EQ(partial.sorterLines,
            (std::vector<std::string>{
                "Unknown dependency NETN-BASE referenced in FOM file " + theNetn3 + "/NETN-COM.xml",
                "FOM sorting may be affected."}));
  EXPECT_EQ(partial.order.size(), 2u);
}

TEST(FomdumpFederation, TheEditionOfTheStandardMim) {
  auto of = [](std::vector<DtFomType> types) {
    std::vector<Module> modules(types.size());
    for (size_t i = 0; i < types.size(); ++i) modules[i].type = types[i];
    return fomdump::mimEdition(modules);
  };
  EXPECT_EQ(of({DtFomType13, DtFomType1516}), DtFomTypeUnknown);
  EXPECT_EQ(of({DtFomType1516, DtFomTypeEvolved}), DtFomTypeEvolved);
  EXPECT_EQ(of({DtFomTypeEvolved, DtFomType2025, DtFomTypeEvolved}), DtFomType2025);
}

TEST(FomdumpFederation, AMissingFileIsNotAModule) {
  Module missing;
  ktltest::captureOutput([&] { missing = fomdump::readModule("/no/such/file.xml", false, false); });
  EXPECT_EQ(missing.result, DtFedNoFile);
  EXPECT_EQ(missing.model, nullptr);
  // The standard MIM's name with no such file is the library's copy.
  Module held;
  ktltest::captureOutput(
      [&] { held = fomdump::readModule("/no/such/HLAstandardMIM.xml", false, false); });
  EXPECT_EQ(held.result, 0);
  EXPECT_TRUE(held.heldCopy);
  EXPECT_TRUE(held.standardMim);
  EXPECT_EQ(held.model->objects.size(), 4u);
}

}  // namespace
