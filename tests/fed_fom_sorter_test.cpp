// The FOM module sorter: ranks by dependency, ties in the order the ranking meets the modules,
// unknown and circular dependencies, duplicate model names, clear that keeps the duplicates,
// and every message it writes.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include <ktl/fomSorter.h>
#include <util/notify.h>

#include "support/capture.h"

using namespace KORRti;

namespace {

using Names = std::vector<std::string>;

// The sorter with its tables open to the tests.
class OpenSorter : public DtFomSorter {
 public:
  using DtFomSorter::duplicateFiles;
  using DtFomSorter::fomToFile;
  using DtFomSorter::fomToRank;
  using DtFomSorter::mappingValid;
  using DtFomSorter::rankToFom;

  int rankOf(const std::string& fomName) const {
    auto found = fomToRank.find(DtString(fomName.c_str()));
    return found == fomToRank.end() ? -1 : found->second;
  }
};

std::vector<DtString> refs(const Names& names) {
  std::vector<DtString> out;
  for (const std::string& name : names) out.emplace_back(name.c_str());
  return out;
}

Names texts(const std::vector<DtString>& names) {
  Names out;
  for (const DtString& name : names) out.emplace_back(name.c_str());
  return out;
}

// Sorts at the verbose level and gives the file names and what was written.
struct Sorted {
  Names files;
  std::string out;
};

Sorted sort(DtFomSorter& sorter) {
  Sorted sorted;
  std::vector<DtString> names{DtString("left over")};
  int saved = DtNotifyLevel;
  DtNotifyLevel = 3;
  sorted.out = ktltest::captureOutput([&] { sorter.getSortedFomFileNames(names); }).out;
  DtNotifyLevel = saved;
  sorted.files = texts(names);
  return sorted;
}

std::string addVerbose(DtFomSorter& sorter, const char* file, const char* fom,
                       const Names& references = {}) {
  int saved = DtNotifyLevel;
  DtNotifyLevel = 3;
  std::string out = ktltest::captureOutput([&] { sorter.addFom(file, fom, refs(references)); }).out;
  DtNotifyLevel = saved;
  return out;
}

TEST(FomSorter, WithoutModulesTheListIsEmptyAndNothingIsWritten) {
  DtFomSorter sorter;
  Sorted sorted = sort(sorter);
  EXPECT_TRUE(sorted.files.empty());
  EXPECT_EQ(sorted.out, "");
}

TEST(FomSorter, ADependencyComesFirst) {
  OpenSorter sorter;
  sorter.addFom("app.xml", "App", refs({"Base"}));
  sorter.addFom("base.xml", "Base", {});
  EXPECT_FALSE(sorter.mappingValid);
  Sorted sorted = sort(sorter);
  EXPECT_EQ(sorted.files, (Names{"base.xml", "app.xml"}));
  EXPECT_EQ(sorted.out, "");
  EXPECT_EQ(sorter.rankOf("Base"), 0);
  EXPECT_EQ(sorter.rankOf("App"), 1);
  EXPECT_TRUE(sorter.mappingValid);
}

TEST(FomSorter, ModulesWithoutReferencesComeInFileNameOrder) {
  DtFomSorter sorter;
  sorter.addFom("c.xml", "C", {});
  sorter.addFom("a.xml", "A", {});
  sorter.addFom("b.xml", "B", {});
  EXPECT_EQ(sort(sorter).files, (Names{"a.xml", "b.xml", "c.xml"}));
}

TEST(FomSorter, TiesKeepTheOrderTheWalkMetThem) {
  // "z.xml" is met through "a.xml", which depends on it, before "m.xml": rank 0 lists Z first.
  DtFomSorter sorter;
  sorter.addFom("a.xml", "A", refs({"Z"}));
  sorter.addFom("m.xml", "M", {});
  sorter.addFom("z.xml", "Z", {});
  EXPECT_EQ(sort(sorter).files, (Names{"z.xml", "m.xml", "a.xml"}));
}

TEST(FomSorter, ACycleOfTwoIsCutWhereItComesBack) {
  OpenSorter sorter;
  sorter.addFom("a.xml", "A", refs({"B"}));
  sorter.addFom("b.xml", "B", refs({"A"}));
  Sorted sorted = sort(sorter);
  EXPECT_EQ(sorted.files, (Names{"b.xml", "a.xml"}));
  EXPECT_EQ(sorted.out,
            "FOM dependency mapping discarding circular dependency from a.xml(A) to a.xml(A)\n");
  EXPECT_EQ(sorter.rankOf("B"), 1);
  EXPECT_EQ(sorter.rankOf("A"), 2);
}

TEST(FomSorter, AModuleThatDependsOnItselfGetsRankOne) {
  OpenSorter sorter;
  sorter.addFom("self.xml", "Self", refs({"Self"}));
  Sorted sorted = sort(sorter);
  EXPECT_EQ(sorted.files, (Names{"self.xml"}));
  EXPECT_EQ(sorted.out,
            "FOM dependency mapping discarding circular dependency from self.xml(Self) to "
            "self.xml(Self)\n");
  EXPECT_EQ(sorter.rankOf("Self"), 1);
}

TEST(FomSorter, ADiamondIsNoCycle) {
  OpenSorter sorter;
  sorter.addFom("top.xml", "top", refs({"left", "right"}));
  sorter.addFom("left.xml", "left", refs({"base"}));
  sorter.addFom("right.xml", "right", refs({"base"}));
  sorter.addFom("base.xml", "base", {});
  Sorted sorted = sort(sorter);
  EXPECT_EQ(sorted.out, "");
  EXPECT_EQ(sorter.rankOf("base"), 0);
  EXPECT_EQ(sorter.rankOf("left"), 1);
  EXPECT_EQ(sorter.rankOf("right"), 1);
  EXPECT_EQ(sorter.rankOf("top"), 2);
  EXPECT_EQ(sorted.files, (Names{"base.xml", "left.xml", "right.xml", "top.xml"}));
}

TEST(FomSorter, AnUnknownDependencyIsReportedAndCountsZero) {
  OpenSorter sorter;
  sorter.addFom("app.xml", "App", refs({"Missing"}));
  Sorted sorted = sort(sorter);
  EXPECT_EQ(sorted.files, (Names{"app.xml"}));
  EXPECT_EQ(sorted.out,
            "Unknown dependency Missing referenced in FOM file app.xml\n"
            "FOM sorting may be affected.\n");
  // The list was not empty: rank 1, not 0.
  EXPECT_EQ(sorter.rankOf("App"), 1);
}

TEST(FomSorter, TheSameFileTwiceGivesOneMessageAndNoChange) {
  OpenSorter sorter;
  sorter.addFom("a.xml", "A", {});
  sort(sorter);
  ASSERT_TRUE(sorter.mappingValid);
  EXPECT_EQ(addVerbose(sorter, "a.xml", "Other", {"X"}),
            "Ignored adding a FOM file to sort that was already added a.xml Model ID: Other\n");
  EXPECT_TRUE(sorter.mappingValid);
  EXPECT_EQ(sorter.fomNameFromFileName("a.xml"), "A");
  EXPECT_EQ(sort(sorter).files, (Names{"a.xml"}));
}

TEST(FomSorter, TwoFilesWithOneModelNameBothComeBack) {
  OpenSorter sorter;
  sorter.addFom("first.xml", "Model", {});
  EXPECT_EQ(addVerbose(sorter, "second.xml", "Model"),
            "Added a FOM file to be sorted whose identification is already mapped to another "
            "file second.xml Model ID: Model existing file first.xml\n");
  Sorted sorted = sort(sorter);
  EXPECT_EQ(sorted.files, (Names{"first.xml", "second.xml"}));
  // The first holds rank 0 under the model name, the second rank 0 under its file name.
  EXPECT_EQ(sorter.rankOf("Model"), 0);
  EXPECT_EQ(sorter.rankOf("second.xml"), 0);
  EXPECT_EQ(sorter.fileNameFromFomName("Model"), "first.xml");
  EXPECT_EQ(sorter.fileNameFromFomName("second.xml"), "second.xml");
}

TEST(FomSorter, ADuplicateIsRankedBehindItsKnownReferencesWithoutRecursing) {
  OpenSorter sorter;
  sorter.addFom("base.xml", "Base", {});
  sorter.addFom("mid.xml", "Mid", refs({"Base"}));
  sorter.addFom("other.xml", "Base", refs({"Mid", "Nowhere"}));
  Sorted sorted = sort(sorter);
  // Nothing is written for the duplicate's unknown reference.
  EXPECT_EQ(sorted.out, "");
  EXPECT_EQ(sorter.rankOf("other.xml"), 2);
  EXPECT_EQ(sorted.files, (Names{"base.xml", "mid.xml", "other.xml"}));
}

TEST(FomSorter, ADuplicateWhoseFileNameIsATakenModelNameIsMadeUnique) {
  OpenSorter sorter;
  sorter.addFom("b.xml", "a.xml", {});
  sorter.addFom("a.xml", "a.xml", {});
  Sorted sorted = sort(sorter);
  EXPECT_EQ(sorter.rankOf("a.xml###@@@***"), 0);
  EXPECT_EQ(sorter.fileNameFromFomName("a.xml###@@@***"), "a.xml");
  EXPECT_EQ(sorted.files, (Names{"b.xml", "a.xml"}));
}

TEST(FomSorter, MakeUniqueAppendsOnce) {
  OpenSorter sorter;
  sorter.fomToFile[DtString("M")] = DtString("m.xml");
  sorter.fomToFile[DtString("M###@@@***")] = DtString("n.xml");
  DtString name("M");
  sorter.makeUniqueFomName(name);
  EXPECT_EQ(name, "M###@@@***");
  DtString free("Free");
  sorter.makeUniqueFomName(free);
  EXPECT_EQ(free, "Free");
}

TEST(FomSorter, AnExistingRankStaysAndTheTableGainsARow) {
  OpenSorter sorter;
  sorter.addFomDependencyMapping(0, "A");
  sorter.addFomDependencyMapping(3, "A");
  EXPECT_EQ(sorter.rankOf("A"), 0);
  EXPECT_EQ(sorter.rankToFom.size(), 2u);
}

TEST(FomSorter, LookUpsOfUnknownNamesAnswerEmpty) {
  DtFomSorter sorter;
  sorter.addFom("a.xml", "A", {});
  EXPECT_EQ(sorter.fileNameFromFomName("A"), "a.xml");
  EXPECT_EQ(sorter.fomNameFromFileName("a.xml"), "A");
  EXPECT_EQ(sorter.fileNameFromFomName("B"), "");
  EXPECT_EQ(sorter.fomNameFromFileName("b.xml"), "");
}

TEST(FomSorter, ASecondSortWithoutAddingDoesNoWork) {
  OpenSorter sorter;
  sorter.addFom("app.xml", "App", refs({"Missing"}));
  Sorted first = sort(sorter);
  EXPECT_NE(first.out, "");
  Sorted second = sort(sorter);
  EXPECT_EQ(second.files, first.files);
  EXPECT_EQ(second.out, "");
}

TEST(FomSorter, ClearKeepsTheDuplicates) {
  OpenSorter sorter;
  sorter.addFom("first.xml", "Model", {});
  sorter.addFom("second.xml", "Model", {});
  sorter.clear();
  EXPECT_TRUE(sorter.mappingValid);
  EXPECT_TRUE(sorter.fomToFile.empty());
  EXPECT_EQ(sorter.duplicateFiles.size(), 1u);
  // The mapping is valid and empty: nothing comes back until another module is added.
  EXPECT_TRUE(sort(sorter).files.empty());
  sorter.addFom("third.xml", "Third", {});
  EXPECT_EQ(sort(sorter).files, (Names{"third.xml", "second.xml"}));
}

TEST(FomSorter, ADuplicateAddedAgainReplacesItsRow) {
  OpenSorter sorter;
  sorter.addFom("first.xml", "Model", {});
  sorter.addFom("second.xml", "Model", {});
  std::string out = addVerbose(sorter, "second.xml", "Model", {"First"});
  EXPECT_EQ(out,
            "Added a FOM file to be sorted whose identification is already mapped to another "
            "file second.xml Model ID: Model existing file first.xml\n");
  ASSERT_EQ(sorter.duplicateFiles.size(), 1u);
  EXPECT_EQ(sorter.duplicateFiles.begin()->second.second.size(), 1u);
}

TEST(FomSorter, RankingOneModuleDirectly) {
  OpenSorter sorter;
  sorter.addFom("a.xml", "A", refs({"B"}));
  sorter.addFom("b.xml", "B", {});
  std::set<DtString> visited;
  EXPECT_EQ(sorter.mapFomDepedency("A", visited), 1);
  EXPECT_EQ(visited.size(), 1u);
  // A ranked module answers its rank at once.
  std::set<DtString> again;
  EXPECT_EQ(sorter.mapFomDepedency("A", again), 1);
  EXPECT_TRUE(again.empty());
  // A name no file declares has nothing to depend on, and no file is made for it.
  std::set<DtString> unknown;
  EXPECT_EQ(sorter.mapFomDepedency("Ghost", unknown), 0);
  EXPECT_EQ(sorter.fomNameFromFileName(""), "");
}

}  // namespace
