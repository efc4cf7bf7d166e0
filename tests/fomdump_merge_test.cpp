// fomdump's merge of a federation: the published federations (RPR FOM 2.0, NETN v3.0 with RPR,
// NETN v4.0 with the 2010 RPR, the 2025 restaurant with its extension) merge with no conflict
// and no unresolved data type on top of their standard MIMs; each conflicting pair of the
// OpenRTI merge modules is reported with both files, and each module merges cleanly with the
// scaffolding of its base; and rule by rule on small modules: scaffolding, extension by a
// 1516-2025 module, unspecified contents, kinds, switches and unresolved names.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <ktl/fedReader.h>

#include "fomdump/federation.h"
#include "fomdump/merge.h"
#include "support/capture.h"
#include "support/files.h"

using namespace KORRti;
using fomdump::Conflict;
using fomdump::Federation;
using fomdump::MergedModel;
using fomdump::Unresolved;

namespace {

const std::string theData = std::string(KTL_TEST_DATA_DIR) + "/fom";

std::vector<std::string> modulesIn(const std::string& directory) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(theData + "/" + directory)) {
    if (entry.path().extension() == ".xml") files.push_back(entry.path().string());
  }
  std::sort(files.rbegin(), files.rend());
  return files;
}

// The files as a federation on the held MIM of edition (none for unknown), arranged and merged.
struct Merged {
  Federation federation;
  MergedModel merged;
};
std::unique_ptr<Merged> mergeOf(const std::vector<std::string>& files, DtFomType edition) {
  auto result = std::make_unique<Merged>();
  ktltest::captureOutput([&] {
    if (edition != DtFomTypeUnknown) {
      result->federation.modules.push_back(fomdump::readHeldMim(edition, false));
    }
    for (const std::string& file : files) {
      result->federation.modules.push_back(fomdump::readModule(file, false, false));
    }
    result->federation.arrange();
    fomdump::merge(result->federation, result->merged);
  });
  return result;
}

std::vector<std::string> conflictsOf(const MergedModel& merged) {
  std::vector<std::string> lines;
  for (const Conflict& conflict : merged.conflicts) {
    lines.push_back(conflict.second + ": " + conflict.message + " (" + conflict.first + ")");
  }
  return lines;
}

std::vector<std::string> unresolvedOf(const MergedModel& merged) {
  std::vector<std::string> lines;
  for (const Unresolved& unresolved : merged.unresolved) {
    lines.push_back(unresolved.file + ": " + unresolved.name + " named by " + unresolved.namedBy);
  }
  return lines;
}

void expectClean(const Merged& run) {
  for (const fomdump::Module& module : run.federation.modules) {
    EXPECT_EQ(module.result, 0) << module.file << ": " << module.error;
  }
  for (const fomdump::Resolution& resolution : run.federation.resolutions) {
    EXPECT_TRUE(resolution.resolved) << resolution.reference;
  }
  EXPECT_EQ(conflictsOf(run.merged), std::vector<std::string>());
  EXPECT_EQ(unresolvedOf(run.merged), std::vector<std::string>());
}

// ---------------------------------------------------------------------------------------------
// The published federations

TEST(FomdumpMerge, TheRprModulesOnThe2010Mim) {
  auto run = mergeOf(modulesIn("ieee1516-2010/rpr-fom-v2.0"), DtFomTypeEvolved);
  expectClean(*run);
  // The MIM's 4 object classes and 85 interactions and the RPR modules' 64 and 79 share a root
  // each; the classes they both declare merge.
  EXPECT_EQ(run->merged.model.objects.size(), 67u);
  EXPECT_EQ(run->merged.model.interactions.size(), 163u);
  EXPECT_EQ(run->merged.model.dataTypes.size(), 339u);
}

TEST(FomdumpMerge, TheNetn3ModulesWithRprOnThe2010Mim) {
  std::vector<std::string> files = modulesIn("ieee1516-2010/netn-fom-v3.0");
  for (const std::string& file : modulesIn("ieee1516-2010/rpr-fom-v2.0")) files.push_back(file);
  auto run = mergeOf(files, DtFomTypeEvolved);
  expectClean(*run);
  EXPECT_EQ(run->federation.modules.size(), 27u);
  // RPR-Base and NETN-TMR both declare the four ownership and update tags; where one gives the
  // data type "NA" the other's stands.
  const std::map<std::string, std::string> expected = {{"updateReflectTag", "RPRUserDefinedTag"},
                                                       {"sendReceiveTag", "RPRUserDefinedTag"},
                                                       {"divestitureRequestTag", "TransactionId"},
                                                       {"acquisitionRequestTag", "TransactionId"}};
  std::map<std::string, std::string> found;
  for (const auto& tag : run->merged.model.tags) {
    if (expected.count(tag->name.c_str())) found[tag->name.c_str()] = tag->dataType.c_str();
  }
  EXPECT_EQ(found, expected);
}

TEST(FomdumpMerge, TheNetn4ModulesWithThe2010RprOnThe2025Mim) {
  std::vector<std::string> files = modulesIn("ieee1516-2025/netn-fom-v4.0-hla4");
  for (const std::string& file : modulesIn("ieee1516-2010/rpr-fom-v2.0")) files.push_back(file);
  auto run = mergeOf(files, DtFomType2025);
  expectClean(*run);
  EXPECT_EQ(run->federation.modules.size(), 29u);
}

TEST(FomdumpMerge, TheRestaurantWithItsExtensionOnThe2025Mim) {
  const std::string dir = theData + "/ieee1516-2025/restaurant-2025/";
  auto run =
      mergeOf({dir + "RestaurantExtensionFOMmodule-2025.xml", dir + "RestaurantFOMmodule-2025.xml"},
              DtFomType2025);
  expectClean(*run);
  // The extension adds an enumerator to DrinkType without restating its representation.
  bool found = false;
  for (const auto& type : run->merged.model.dataTypes.enumerated) {
    if (std::string(type->name.c_str()) != "DrinkType") continue;
    found = true;
    std::set<std::string> names;
    for (const auto& e : type->enumerators) names.insert(e->name.c_str());
    EXPECT_EQ(names, (std::set<std::string>{"DryMartini", "IrishCoffee", "Margarita"}));
    EXPECT_EQ(std::string(type->representation.c_str()), "HLAinteger32BE");
  }
  EXPECT_TRUE(found);
  // The MIM's reference data types, which the reader passes over, are known by name.
  const auto& references = run->federation.modules[0].model->referenceDataTypes;
  auto reference = std::find_if(references.begin(), references.end(), [](const auto& type) {
    return type.name == "HLAfederateReference";
  });
  ASSERT_NE(reference, references.end());
  EXPECT_GT(reference->line, 0);
}

TEST(FomdumpMerge, EachOpenRtiPairConflictsAndEachModuleMergesWithItsBase) {
  const std::string dir = theData + "/ieee1516-2010/openrti-modules/";
  struct Pair {
    const char* name;
    const char* message;
    bool hasBase;
  };
  const Pair pairs[] = {
      {"Dimension1", "dimension Dimension1 is declared again with other bounds", false},
      {"Dimension2", "dimension Dimension2 is declared again with other bounds", false},
      {"InteractionClass1",
       "interaction class HLAinteractionRoot.InteractionClass1 is declared again with other "
       "parameters",
       true},
      {"InteractionClass2",
       "interaction class HLAinteractionRoot.InteractionClass1.InteractionClass2 is declared "
       "again with other parameters",
       true},
      {"InteractionClass3",
       "interaction class HLAinteractionRoot.InteractionClass3 is declared again with other "
       "parameters",
       true},
      {"ObjectClass1",
       "object class HLAobjectRoot.ObjectClass1 is declared again with other attributes", true},
      {"ObjectClass2",
       "object class HLAobjectRoot.ObjectClass1.ObjectClass2 is declared again with other "
       "attributes",
       true},
      {"ObjectClass3",
       "object class HLAobjectRoot.ObjectClass3 is declared again with other attributes", true},
      {"UpdateRate1", "update rate UpdateRate1 is declared again with other contents", false},
      {"UpdateRate2", "update rate UpdateRate2 is declared again with other contents", false},
  };
  for (const Pair& pair : pairs) {
    SCOPED_TRACE(pair.name);
    const std::string first = dir + pair.name + "-1.xml";
    const std::string second = dir + pair.name + "-2.xml";
    auto run = mergeOf({first, second}, DtFomTypeEvolved);
    EXPECT_EQ(conflictsOf(run->merged),
              std::vector<std::string>{second + ": " + pair.message + " (" + first + ")"});
    if (!pair.hasBase) continue;
    for (const std::string& module : {first, second}) {
      auto withBase = mergeOf({dir + pair.name + ".xml", module}, DtFomTypeEvolved);
      EXPECT_EQ(conflictsOf(withBase->merged), std::vector<std::string>()) << module;
    }
  }
}

// ---------------------------------------------------------------------------------------------
// The rules, on small modules

// A module document of the given namespace with this body.
std::string moduleText(const std::string& name, const std::string& body,
                       const std::string& nameSpace = "IEEE1516-2010") {
  return "<?xml version=\"1.0\"?>\n<objectModel xmlns=\"http://standards.ieee.org/" + nameSpace +
         "\">\n<modelIdentification><name>" + name + "</name></modelIdentification>\n" + body +
         "</objectModel>\n";
}

std::string objects(const std::string& classes) {
  return "<objects><objectClass><name>HLAobjectRoot</name>" + classes +
         "</objectClass></objects>\n";
}

std::string objectClass(const std::string& name, const std::vector<std::string>& attributes,
                        const std::string& inner = "") {
  std::string text = "<objectClass><name>" + name + "</name>";
  for (const std::string& attribute : attributes) {
    text += "<attribute><name>" + attribute +
            "</name><transportation>HLAreliable</transportation><order>Receive</order>"
            "</attribute>";
  }
  return text + inner + "</objectClass>";
}

// Merges these module texts, in this order (none depends on another), with no MIM.
std::unique_ptr<Merged> mergeTexts(const std::vector<std::string>& texts) {
  ktltest::TempDir dir;
  std::vector<std::string> files;
  for (size_t i = 0; i < texts.size(); ++i) {
    files.push_back(dir.write("m" + std::to_string(i) + ".xml", texts[i]));
  }
  return mergeOf(files, DtFomTypeUnknown);
}

TEST(FomdumpMergeRules, AScaffoldingDeclarationMergesEitherWay) {
  auto run =
      mergeTexts({moduleText("A", objects(objectClass("Base", {"x", "y"}))),
                  moduleText("B", objects(objectClass("Base", {}, objectClass("Sub", {"z"})))),
                  moduleText("C", objects(objectClass("Base", {"x", "y"})))});
  EXPECT_EQ(conflictsOf(run->merged), std::vector<std::string>());
  ASSERT_EQ(run->merged.model.objects.size(), 3u);
  EXPECT_EQ(run->merged.model.objects[1].attributes.size(), 2u);
  // The scaffolding first, the contents later: the class takes them.
  auto later = mergeTexts({moduleText("B", objects(objectClass("Base", {}))),
                           moduleText("A", objects(objectClass("Base", {"x"})))});
  EXPECT_EQ(conflictsOf(later->merged), std::vector<std::string>());
  EXPECT_EQ(later->merged.model.objects[1].attributes.size(), 1u);
}

TEST(FomdumpMergeRules, Only2025ModulesMayAddAttributes) {
  const std::string base = moduleText("A", objects(objectClass("Base", {"x"})));
  auto evolved = mergeTexts({base, moduleText("B", objects(objectClass("Base", {"x", "y"})))});
  ASSERT_EQ(evolved->merged.conflicts.size(), 1u);
  EXPECT_EQ(evolved->merged.conflicts[0].message,
            "object class HLAobjectRoot.Base is declared again with other attributes");
  auto hla4 = mergeTexts(
      {base, moduleText("B", objects(objectClass("Base", {"x", "y"})), "IEEE1516-2025")});
  EXPECT_EQ(conflictsOf(hla4->merged), std::vector<std::string>());
  EXPECT_EQ(hla4->merged.model.objects[1].attributes.size(), 2u);
  // A member both declare must still agree.
  auto disagree = mergeTexts(
      {base, moduleText("B",
                        objects("<objectClass><name>Base</name><attribute><name>x</name>"
                                "<transportation>HLAbestEffort</transportation></attribute>"
                                "</objectClass>"),
                        "IEEE1516-2025")});
  EXPECT_EQ(disagree->merged.conflicts.size(), 1u);
}

TEST(FomdumpMergeRules, AnotherKindAndAnotherSwitch) {
  const std::string basic =
      "<dataTypes><basicDataRepresentations><basicData><name>T</name><size>8</size>"
      "</basicData></basicDataRepresentations></dataTypes>\n";
  const std::string simple =
      "<dataTypes><simpleDataTypes><simpleData><name>T</name><representation>T2</representation>"
      "</simpleData></simpleDataTypes></dataTypes>\n";
  auto kind = mergeTexts({moduleText("A", basic), moduleText("B", simple)});
  ASSERT_EQ(kind->merged.conflicts.size(), 1u);
  EXPECT_EQ(kind->merged.conflicts[0].message,
            "data type T is declared again as a simple data type (it is a basic data "
            "representation)");
  auto switches =
      mergeTexts({moduleText("A", "<switches><autoProvide isEnabled=\"true\"/></switches>\n"),
                  moduleText("B", "<switches><autoProvide isEnabled=\"false\"/></switches>\n")});
  ASSERT_EQ(switches->merged.conflicts.size(), 1u);
  EXPECT_EQ(switches->merged.conflicts[0].message, "switch autoProvide is set to another value");
}

TEST(FomdumpMergeRules, UnresolvedNamesAreReportedOnceWithTheFirstUser) {
  auto run = mergeTexts(
      {moduleText("A",
                  "<dataTypes><arrayDataTypes><arrayData><name>List</name><dataType>Missing"
                  "</dataType></arrayData><arrayData><name>Other</name><dataType>Missing"
                  "</dataType></arrayData><arrayData><name>Fine</name><dataType>List"
                  "</dataType></arrayData></arrayDataTypes></dataTypes>\n")});
  ASSERT_EQ(run->merged.unresolved.size(), 1u);
  EXPECT_EQ(run->merged.unresolved[0].name, "Missing");
  EXPECT_EQ(run->merged.unresolved[0].namedBy, "array data type List");
  EXPECT_EQ(run->merged.unresolved[0].file, run->federation.modules[0].file);
}

TEST(FomdumpMergeRules, AConflictGivesTheLinesOfBothDeclarations) {
  // Lines 1 to 3 of a module are its prologue and identification; its body starts on line 4.
  auto conflictAt = [](const std::string& first, const std::string& second) {
    auto run = mergeTexts({moduleText("A", first), moduleText("B", second)});
    EXPECT_EQ(run->merged.conflicts.size(), 1u);
    if (run->merged.conflicts.size() != 1) return std::string();
    const Conflict& conflict = run->merged.conflicts[0];
    return std::to_string(conflict.firstLine) + " " + std::to_string(conflict.secondLine) + " " +
           conflict.message;
  };
  EXPECT_EQ(conflictAt(objects("\n" + objectClass("C", {"x"})),
                       "\n\n" + objects("\n\n" + objectClass("C", {"y"}))),
            "5 8 object class HLAobjectRoot.C is declared again with other attributes");
  auto interactions = [](const std::string& parameter) {
    return "<interactions><interactionClass><name>HLAinteractionRoot</name>\n"
           "<interactionClass><name>I</name><parameter><name>" +
           parameter + "</name></parameter></interactionClass></interactionClass></interactions>\n";
  };
  EXPECT_EQ(conflictAt(interactions("p"), "\n" + interactions("q")),
            "5 6 interaction class HLAinteractionRoot.I is declared again with other parameters");
  auto dimension = [](const std::string& bound) {
    return "<dimensions>\n<dimension><name>D</name><upperBound>" + bound +
           "</upperBound></dimension></dimensions>\n";
  };
  EXPECT_EQ(conflictAt(dimension("10"), "\n" + dimension("20")),
            "5 6 dimension D is declared again with other bounds");
  auto transportation = [](const std::string& reliable) {
    return "<transportations>\n\n<transportation><name>T</name><reliable>" + reliable +
           "</reliable></transportation></transportations>\n";
  };
  EXPECT_EQ(conflictAt(transportation("Yes"), transportation("No")),
            "6 6 transportation T is declared again with other contents");
  auto rate = [](const std::string& value) {
    return "<updateRates><updateRate><name>U1</name><rate>1</rate></updateRate>\n<updateRate>"
           "<name>U</name><rate>" +
           value + "</rate></updateRate></updateRates>\n";
  };
  EXPECT_EQ(conflictAt(rate("1"), "\n\n" + rate("2")),
            "5 7 update rate U is declared again with other contents");
  EXPECT_EQ(conflictAt("<switches><autoProvide isEnabled=\"true\"/></switches>\n",
                       "\n<switches><autoProvide isEnabled=\"false\"/></switches>\n"),
            "4 5 switch autoProvide is set to another value");
  auto array = [](const std::string& cardinality) {
    return "<dataTypes><arrayDataTypes>\n<arrayData><name>A</name><dataType>A</dataType>"
           "<cardinality>" +
           cardinality + "</cardinality></arrayData></arrayDataTypes></dataTypes>\n";
  };
  EXPECT_EQ(conflictAt(array("1"), "\n" + array("2")),
            "5 6 array data type A is declared again with other contents");
}

TEST(FomdumpMergeRules, TheTypesOfAttributesAndParametersAreChecked) {
  const std::string declared =
      "<dataTypes><simpleDataTypes><simpleData><name>Known</name></simpleData>"
      "</simpleDataTypes></dataTypes>\n";
  const std::string classes =
      "<objects><objectClass><name>HLAobjectRoot</name><objectClass><name>C</name>\n"
      "<attribute><name>a</name><dataType>Known</dataType></attribute>\n"
      "<attribute><name>b</name><dataType>Missing</dataType></attribute>\n"
      "<attribute><name>c</name><dataType>NA</dataType></attribute></objectClass></objectClass>"
      "</objects>\n<interactions><interactionClass><name>HLAinteractionRoot</name>\n"
      "<interactionClass><name>I</name><parameter><name>p</name><dataType>Gone</dataType>"
      "</parameter>\n<parameter><name>q</name><dataType>Missing</dataType></parameter>"
      "</interactionClass></interactionClass></interactions>\n";
  // The types may be declared by a later module: the check comes after all are merged.
  auto run = mergeTexts({moduleText("A", classes), moduleText("B", declared)});
  ASSERT_EQ(run->merged.unresolved.size(), 2u);
  const std::string file = run->federation.modules[0].file;
  EXPECT_EQ(run->merged.unresolved[0].name, "Missing");
  EXPECT_EQ(run->merged.unresolved[0].namedBy, "attribute b of object class HLAobjectRoot.C");
  EXPECT_EQ(run->merged.unresolved[0].file, file);
  EXPECT_EQ(run->merged.unresolved[0].line, 6);
  EXPECT_EQ(run->merged.unresolved[1].name, "Gone");
  EXPECT_EQ(run->merged.unresolved[1].namedBy,
            "parameter p of interaction class HLAinteractionRoot.I");
  EXPECT_EQ(run->merged.unresolved[1].line, 9);
  // An IEEE 1516-2000 document names the type as an attribute of the element.
  const std::string text2000 =
      "<?xml version=\"1.0\"?>\n<objectModel name=\"M\" DTDversion=\"1516.2\">\n<objects>"
      "<objectClass name=\"HLAobjectRoot\">\n<objectClass name=\"C\">\n"
      "<attribute name=\"a\" dataType=\"Absent\"/></objectClass></objectClass></objects>\n"
      "</objectModel>\n";
  auto old = mergeTexts({text2000});
  ASSERT_EQ(old->merged.unresolved.size(), 1u);
  EXPECT_EQ(old->merged.unresolved[0].name, "Absent");
  EXPECT_EQ(old->merged.unresolved[0].namedBy, "attribute a of object class HLAobjectRoot.C");
  EXPECT_EQ(old->merged.unresolved[0].line, 5);
}

}  // namespace
