// The fomdump program: the model of a FED file as text and as JSON, the readers' verbose lines
// with -v, the formats it doesn't read yet, and its messages and exit statuses on bad input.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/capture.h"
#include "support/process.h"

namespace {

const std::string theProgram = std::string(KTL_BINARY_DIR) + "/tools/fomdump";
const std::string theExample = std::string(KTL_SOURCE_DIR) + "/examples/harbour.fed";
const std::string theCorpus = std::string(KTL_TEST_DATA_DIR) + "/fom/hla13";

ktltest::Outcome fomdump(std::vector<std::string> const& args) {
  return ktltest::runProgram(theProgram, args);
}

const char* const theSmall =
    ";; one of each\n"
    "(FED (Federation F) (FEDversion v1.3)\n"
    "  (spaces (space S (dimension D)))\n"
    "  (objects (class ObjectRoot (class Ship (attribute a reliable timestamp S)\n"
    "    (class Boat (attribute b best_effort receive)))))\n"
    "  (interactions (class InteractionRoot best_effort receive\n"
    "    (class I reliable receive S (parameter p) (parameter \"q r\")))))\n";

TEST(ToolFomdump, PrintsTheModelAsIndentedText) {
  std::string path = ktltest::writeTempFile(theSmall, ".fed");
  ktltest::Outcome outcome = fomdump({path});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out,
            "FOM file: " + path +
                "\n"
                "Format: 1.3\n"
                "Routing spaces: 1\n"
                "  space S\n"
                "    dimension D\n"
                "Object classes: 3\n"
                "  class ObjectRoot\n"
                "    class ObjectRoot.Ship\n"
                "      attribute a  transport reliable  order timestamp  space S\n"
                "      class ObjectRoot.Ship.Boat\n"
                "        attribute b  transport best_effort  order receive\n"
                "Interaction classes: 2\n"
                "  class InteractionRoot  transport best_effort  order receive\n"
                "    class InteractionRoot.I  transport reliable  order receive  space S\n"
                "      parameter p\n"
                "      parameter q r\n");
}

TEST(ToolFomdump, PrintsTheModelAsJson) {
  std::string path = ktltest::writeTempFile(theSmall, ".fed");
  ktltest::Outcome outcome = fomdump({"--json", path});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "{\n  \"file\": \"" + path +
                "\",\n"
                "  \"format\": \"1.3\",\n"
                "  \"spaces\": [\n"
                "    {\"name\": \"S\", \"dimensions\": [\"D\"]}\n"
                "  ],\n"
                "  \"objectClasses\": [\n"
                "    {\"name\": \"ObjectRoot\", \"parent\": null, \"attributes\": []},\n"
                "    {\"name\": \"ObjectRoot.Ship\", \"parent\": \"ObjectRoot\", \"attributes\": "
                "[{\"name\": \"a\", \"transport\": \"reliable\", \"order\": \"timestamp\", "
                "\"space\": \"S\"}]},\n"
                "    {\"name\": \"ObjectRoot.Ship.Boat\", \"parent\": \"ObjectRoot.Ship\", "
                "\"attributes\": [{\"name\": \"b\", \"transport\": \"best_effort\", \"order\": "
                "\"receive\", \"space\": null}]}\n"
                "  ],\n"
                "  \"interactionClasses\": [\n"
                "    {\"name\": \"InteractionRoot\", \"parent\": null, \"transport\": "
                "\"best_effort\", \"order\": \"receive\", \"space\": null, \"parameters\": []},\n"
                "    {\"name\": \"InteractionRoot.I\", \"parent\": \"InteractionRoot\", "
                "\"transport\": \"reliable\", \"order\": \"receive\", \"space\": \"S\", "
                "\"parameters\": [\"p\", \"q r\"]}\n"
                "  ]\n"
                "}\n");
}

TEST(ToolFomdump, VerboseShowsTheReadersLines) {
  std::string path = ktltest::writeTempFile(theSmall, ".fed");
  ktltest::Outcome outcome = fomdump({"-v", path});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.find("Reading FED file: " + path + "\nFound 1.3 format FED file: " + path +
                             ".\nReading file as 1.3 format.\n"),
            0u);
  EXPECT_NE(outcome.out.find("Space: S\nDimension: D\nClass: ObjectRoot, Base: none \n"),
            std::string::npos);
  EXPECT_NE(outcome.out.find("Parameter: q r\nFOM file: "), std::string::npos);
  // Without -v none of them.
  EXPECT_EQ(fomdump({path}).out.find("Space: S"), std::string::npos);
}

TEST(ToolFomdump, ReadsTheShippedExample) {
  ktltest::Outcome outcome = fomdump({theExample});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("Object classes: 5\n"), std::string::npos);
  EXPECT_NE(outcome.out.find("      class ObjectRoot.Vessel.Tug\n"), std::string::npos);
  EXPECT_NE(outcome.out.find("Interaction classes: 4\n"), std::string::npos);
}

TEST(ToolFomdump, ReadsTheLargestCorpusFile) {
  ktltest::Outcome outcome = fomdump({"--json", theCorpus + "/RPR_FOM_v2.0_1.3.fed"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("\"ObjectRoot.BaseEntity.PhysicalEntity.Platform\""),
            std::string::npos);
}

TEST(ToolFomdump, XmlFormatsAreNotReadYet) {
  std::string evolved = ktltest::writeTempFile(
      "<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-2010\"/>", ".xml");
  ktltest::Outcome outcome = fomdump({evolved});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "fomdump: " + evolved +
                             ": IEEE 1516-2010 (HLA Evolved) XML format, which this version "
                             "cannot read yet; only HLA 1.3 FED files are read\n");
  std::string old = ktltest::writeTempFile("<objectModel DTDversion=\"1516.2\"/>", ".xml");
  outcome = fomdump({old});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.err.find(": IEEE 1516-2000 XML format, which"), std::string::npos);
  std::string other = ktltest::writeTempFile("whatever", ".txt");
  outcome = fomdump({other});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "FED file has unrecognized extension: " + other +
                             "\n\tDefaulting to HLA 1516 2025 format\n"
                             "fomdump: " +
                             other +
                             ": IEEE 1516-2025 (HLA 4) XML format, which this version cannot "
                             "read yet; only HLA 1.3 FED files are read\n");
}

TEST(ToolFomdump, MissingFile) {
  ktltest::Outcome outcome = fomdump({"/nonexistent/model.fed"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "fomdump: cannot open FOM file: /nonexistent/model.fed\n");
}

TEST(ToolFomdump, WrongFileSaysWhy) {
  std::string path = ktltest::writeTempFile(
      "(FED (Federation x) (FEDversion y) (spaces) (objects (class ObjectRoot (attribute a "
      "reliable soon))) (interactions (class InteractionRoot reliable receive)))",
      ".fed");
  ktltest::Outcome outcome = fomdump({path});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "fomdump: " + path + ": Invalid OrderType for Attribute: a\n");
}

TEST(ToolFomdump, SilentFailureStillGetsAMessage) {
  ktltest::Outcome outcome = fomdump({theCorpus + "/openrti_fdd-1.fed"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "fomdump: " + theCorpus +
                             "/openrti_fdd-1.fed: the file does not have the form of a FED "
                             "file\n");
}

TEST(ToolFomdump, CommandLineErrors) {
  ktltest::Outcome outcome = fomdump({});
  EXPECT_EQ(outcome.status, 64);
  EXPECT_EQ(outcome.err,
            "fomdump: Required argument missing: file\n"
            "Usage: fomdump [-v] [--json] FILE (see fomdump --help)\n");
  outcome = fomdump({"--bogus", theExample});
  EXPECT_EQ(outcome.status, 64);
  EXPECT_EQ(outcome.err.find("fomdump: "), 0u);
  outcome = fomdump({"--help"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("--json"), std::string::npos);
}

}  // namespace
