// The fomdump program: the model of a FED file as text and as JSON, the readers' verbose lines
// with -v, the module data of the later XML formats and the standard MIM from the library's
// copy, and its messages and exit statuses on bad input.
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <string>
#include <vector>

#include "support/capture.h"
#include "support/files.h"
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
  // What was read before the fault is printed before the reason.
  EXPECT_EQ(outcome.out, "FOM file: " + path +
                             "\nFormat: 1.3\nRouting spaces: 0\nObject classes: 1\n"
                             "  class ObjectRoot\nInteraction classes: 0\n");
  // The reader's message, then the check's, at the line of the attribute.
  EXPECT_EQ(outcome.err, "fomdump: " + path + ": Invalid OrderType for Attribute: a\n" + path +
                             ":1: order \"soon\" of attribute \"a\" is not receive or timestamp\n");
}

TEST(ToolFomdump, SilentFailureStillGetsAMessage) {
  ktltest::Outcome outcome = fomdump({theCorpus + "/openrti_fdd-1.fed"});
  EXPECT_EQ(outcome.status, 2);
  // The reader says nothing; the check says why.
  EXPECT_EQ(outcome.err, "fomdump: " + theCorpus +
                             "/openrti_fdd-1.fed: the file does not have the form of a FED "
                             "file\n" +
                             theCorpus +
                             "/openrti_fdd-1.fed:4: there is no (spaces ...) before this list: "
                             "--fix adds an empty (spaces)\n");
}

const std::string the1516Corpus = std::string(KTL_TEST_DATA_DIR) + "/fom/ieee1516-2000";

const char* const theSmall1516 =
    "<?xml version=\"1.0\"?>\n"
    "<objectModel DTDversion=\"1516.2\" name=\"Small\">\n"
    "  <objects>\n"
    "    <objectClass name=\"HLAobjectRoot\">\n"
    "      <objectClass name=\"Ship\">\n"
    "        <attribute name=\"pos\" transportation=\"HLAbestEffort\" order=\"Receive\"\n"
    "                   dimensions=\"Zone\"/>\n"
    "      </objectClass>\n"
    "    </objectClass>\n"
    "  </objects>\n"
    "  <interactions>\n"
    "    <interactionClass name=\"HLAinteractionRoot\" transportation=\"HLAreliable\"\n"
    "                      order=\"TimeStamp\" dimensions=\"NA\">\n"
    "      <interactionClass name=\"Hail\" transportation=\"HLAreliable\" order=\"Receive\"\n"
    "                        dimensions=\"Zone\">\n"
    "        <parameter name=\"text\"/>\n"
    "      </interactionClass>\n"
    "    </interactionClass>\n"
    "  </interactions>\n"
    "  <dimensions>\n"
    "    <dimension name=\"Zone\" upperBound=\"10\" value=\"[2..7)\" normalization=\"linear\"/>\n"
    "  </dimensions>\n"
    "  <time><timeStamp dataType=\"HLAfloat64BE\"/></time>\n"
    "  <tags><sendReceiveTag dataType=\"HLAopaqueData\"/></tags>\n"
    "  <synchronizations>\n"
    "    <synchronization label=\"Ready\" capability=\"RegisterAchieve\"/>\n"
    "  </synchronizations>\n"
    "  <transportations>\n"
    "    <transportation name=\"HLAreliable\" description=\"TCP\"/>\n"
    "  </transportations>\n"
    "  <switches autoProvide=\"Enabled\"/>\n"
    "  <dataTypes>\n"
    "    <basicDataRepresentations>\n"
    "      <basicData name=\"Octet\" size=\"8\" endian=\"Big\" encoding=\"8 bits\"/>\n"
    "    </basicDataRepresentations>\n"
    "    <simpleDataTypes><simpleData name=\"Knots\" representation=\"Octet\" units=\"kn\"/>\n"
    "    </simpleDataTypes>\n"
    "    <enumeratedDataTypes>\n"
    "      <enumeratedData name=\"Flag\" representation=\"Octet\">\n"
    "        <enumerator name=\"Up\" values=\"1\"/><enumerator name=\"Down\" values=\"0\"/>\n"
    "      </enumeratedData>\n"
    "    </enumeratedDataTypes>\n"
    "    <arrayDataTypes>\n"
    "      <arrayData name=\"Name\" dataType=\"Octet\" cardinality=\"Dynamic\"/>\n"
    "    </arrayDataTypes>\n"
    "    <fixedRecordDataTypes>\n"
    "      <fixedRecordData name=\"Fix\"><field name=\"b\" dataType=\"Octet\"/>\n"
    "        <field name=\"a\" dataType=\"Knots\"/></fixedRecordData>\n"
    "    </fixedRecordDataTypes>\n"
    "    <variantRecordDataTypes>\n"
    "      <variantRecordData name=\"Var\" discriminant=\"f\" dataType=\"Flag\">\n"
    "        <alternative enumerator=\"Up\" name=\"u\" dataType=\"Octet\"/>\n"
    "      </variantRecordData>\n"
    "    </variantRecordDataTypes>\n"
    "  </dataTypes>\n"
    "  <notes><note name=\"n1\" semantics=\"A note\"/></notes>\n"
    "</objectModel>\n";

TEST(ToolFomdump, Prints1516DocumentAsText) {
  std::string path = ktltest::writeTempFile(theSmall1516, ".xml");
  ktltest::Outcome outcome = fomdump({path});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out,
            "FOM file: " + path +
                "\n"
                "Format: 1516\n"
                "Routing spaces: 0\n"
                "Dimensions: 1\n"
                "  dimension Zone  upperBound 10  range [2, 7)  normalization linear\n"
                "Transportations: 1\n"
                "  transportation HLAreliable  reliable\n"
                "Switches: 1\n"
                "  switch autoProvide  Enabled\n"
                "Time: 1\n"
                "  timeStamp  dataType HLAfloat64BE\n"
                "Tags: 1\n"
                "  sendReceiveTag  dataType HLAopaqueData\n"
                "Synchronization points: 1\n"
                "  Ready  capability RegisterAchieve\n"
                "Object classes: 2\n"
                "  class HLAobjectRoot\n"
                "    class HLAobjectRoot.Ship\n"
                "      attribute pos  transport best_effort  order receive  dimensions Zone\n"
                "Interaction classes: 2\n"
                "  class HLAinteractionRoot  transport reliable  order timestamp\n"
                "    class HLAinteractionRoot.Hail  transport reliable  order receive  "
                "dimensions Zone\n"
                "      parameter text\n"
                "Data types: 6\n"
                "  basic: 1\n"
                "    Octet  size 8  endian Big  encoding 8 bits\n"
                "  simple: 1\n"
                "    Knots  representation Octet  units kn\n"
                "  enumerated: 1\n"
                "    Flag  representation Octet\n"
                "      enumerator Down = 0\n"
                "      enumerator Up = 1\n"
                "  array: 1\n"
                "    Name  dataType Octet  cardinality Dynamic\n"
                "  fixedRecord: 1\n"
                "    Fix\n"
                "      field a  dataType Knots\n"
                "      field b  dataType Octet\n"
                "  variantRecord: 1\n"
                "    Var  discriminant f  dataType Flag\n"
                "      alternative u  enumerator Up  dataType Octet\n"
                "Notes: 1\n"
                "  note n1  semantics A note\n");
}

// A strict reader of JSON text: true when the whole text is one JSON value.
class JsonChecker {
 public:
  explicit JsonChecker(const std::string& text) : text_(text) {}
  bool valid() {
    at_ = 0;
    return value() && (blanks(), at_ == text_.size());
  }

 private:
  void blanks() {
    while (at_ < text_.size() && std::string(" \t\n\r").find(text_[at_]) != std::string::npos) {
      ++at_;
    }
  }
  bool literal(const char* word) {
    std::string w(word);
    if (text_.compare(at_, w.size(), w) != 0) return false;
    at_ += w.size();
    return true;
  }
  bool string() {
    if (text_[at_] != '"') return false;
    for (++at_; at_ < text_.size(); ++at_) {
      unsigned char c = static_cast<unsigned char>(text_[at_]);
      if (c == '"') return ++at_, true;
      if (c < 0x20) return false;
      if (c == '\\') {
        ++at_;
        if (at_ >= text_.size()) return false;
        if (text_[at_] == 'u') {
          for (int i = 0; i < 4; ++i) {
            if (++at_ >= text_.size() || !std::isxdigit(static_cast<unsigned char>(text_[at_])))
              return false;
          }
        } else if (std::string("\"\\/bfnrt").find(text_[at_]) == std::string::npos) {
          return false;
        }
      }
    }
    return false;
  }
  // -? digits (. digits)? ([eE] [+-]? digits)?
  bool number() {
    if (text_[at_] == '-') ++at_;
    if (!digits()) return false;
    if (at_ < text_.size() && text_[at_] == '.' && (++at_, !digits())) return false;
    if (at_ < text_.size() && (text_[at_] == 'e' || text_[at_] == 'E')) {
      ++at_;
      if (at_ < text_.size() && (text_[at_] == '+' || text_[at_] == '-')) ++at_;
      if (!digits()) return false;
    }
    return true;
  }
  bool digits() {
    size_t start = at_;
    while (at_ < text_.size() && std::isdigit(static_cast<unsigned char>(text_[at_]))) ++at_;
    return at_ > start;
  }
  template <typename Element>
  bool sequence(char close, Element element) {
    ++at_;
    blanks();
    if (at_ < text_.size() && text_[at_] == close) return ++at_, true;
    for (;;) {
      if (!element()) return false;
      blanks();
      if (at_ >= text_.size()) return false;
      if (text_[at_] == close) return ++at_, true;
      if (text_[at_] != ',') return false;
      ++at_;
    }
  }
  bool value() {
    blanks();
    if (at_ >= text_.size()) return false;
    switch (text_[at_]) {
      case '{':
        return sequence('}', [&] {
          blanks();
          if (at_ >= text_.size() || !string()) return false;
          blanks();
          if (at_ >= text_.size() || text_[at_] != ':') return false;
          ++at_;
          return value();
        });
      case '[':
        return sequence(']', [&] { return value(); });
      case '"':
        return string();
      case 't':
        return literal("true");
      case 'f':
        return literal("false");
      case 'n':
        return literal("null");
      default:
        return number();
    }
  }
  const std::string& text_;
  size_t at_ = 0;
};

TEST(ToolFomdump, JsonCheckerTellsValidFromInvalid) {
  EXPECT_TRUE(JsonChecker("{\"a\": [1, -2, \"x\\n\\u00e9\", true, null, {}]}").valid());
  EXPECT_FALSE(JsonChecker("{\"a\": [1, 2,]}").valid());
  EXPECT_FALSE(JsonChecker("{\"a\" 1}").valid());
  EXPECT_FALSE(JsonChecker("\"tab\there\"").valid());
  EXPECT_FALSE(JsonChecker("{} {}").valid());
  EXPECT_TRUE(JsonChecker("[0.5, -1.25e+3, 2E-7, 18446744073709551615]").valid());
  EXPECT_FALSE(JsonChecker("[1.]").valid());
  EXPECT_FALSE(JsonChecker("[1e]").valid());
  EXPECT_FALSE(JsonChecker("[-]").valid());
}

TEST(ToolFomdump, RprFom1516AsValidJson) {
  ktltest::Outcome outcome = fomdump({"--json", the1516Corpus + "/RPR_FOM_v2.0_1516-2000.xml"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(JsonChecker(outcome.out).valid());
  for (const char* key : {"\"objectClasses\": [", "\"interactionClasses\": [", "\"dimensions\": [",
                          "\"transportations\": [", "\"switches\": [", "\"time\": [", "\"tags\": [",
                          "\"synchronizations\": []", "\"notes\": [", "\"dataTypes\": {",
                          "\"basic\": [", "\"simple\": [", "\"enumerated\": [", "\"array\": [",
                          "\"fixedRecord\": [", "\"variantRecord\": ["}) {
    EXPECT_NE(outcome.out.find(key), std::string::npos) << key;
  }
  EXPECT_NE(outcome.out.find("{\"name\": \"HLAobjectRoot.BaseEntity.PhysicalEntity\", \"parent\": "
                             "\"HLAobjectRoot.BaseEntity\", \"attributes\": [{\"name\": "
                             "\"AcousticSignatureIndex\""),
            std::string::npos);
  std::string small = ktltest::writeTempFile(theSmall1516, ".xml");
  outcome = fomdump({"--json", small});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(JsonChecker(outcome.out).valid());
  EXPECT_NE(outcome.out.find("\"enumerators\": [{\"name\": \"Down\", \"values\": \"0\"}, "
                             "{\"name\": \"Up\", \"values\": \"1\"}]"),
            std::string::npos);
}

TEST(ToolFomdump, RprFom1516PrintsTheWholeModel) {
  ktltest::Outcome outcome = fomdump({the1516Corpus + "/RPR_FOM_v2.0_1516-2000.xml"});
  EXPECT_EQ(outcome.status, 0);
  for (const char* line :
       {"Format: 1516\n", "Object classes: 67\n", "Interaction classes: 154\n", "Data types: 333\n",
        "  basic: 17\n", "  simple: 49\n", "  enumerated: 101\n", "  array: 73\n",
        "  fixedRecord: 84\n", "  variantRecord: 9\n", "Dimensions: 2\n", "Transportations: 2\n",
        "Switches: 7\n", "Time: 2\n", "Tags: 7\n"}) {
    EXPECT_NE(outcome.out.find(line), std::string::npos) << line;
  }
}

TEST(ToolFomdump, Failed1516ReadPrintsWhatCameBeforeTheFault) {
  std::string path = ktltest::writeTempFile(
      "<objectModel DTDversion=\"1516.2\"><objects><objectClass name=\"HLAobjectRoot\">"
      "<attribute transportation=\"HLAreliable\"/></objectClass></objects></objectModel>",
      ".xml");
  ktltest::Outcome outcome = fomdump({path});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.out.find("Object classes: 1\n  class HLAobjectRoot\n"), std::string::npos);
  EXPECT_EQ(outcome.err,
            "fomdump: " + path + ": Attribute of HLAobjectRoot has no name in FDD file.\n");
}

TEST(ToolFomdump, AReadThatLeavesAWarningSaysSo) {
  ktltest::Outcome outcome = fomdump({the1516Corpus + "/RPR_FOM_v2.0_1516-2000.xml"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "fomdump: " + the1516Corpus +
                             "/RPR_FOM_v2.0_1516-2000.xml: warning: Missing or invalid Sync "
                             "Points\n");
}

TEST(ToolFomdump, StrictCheckingFailsOnUnexpectedContent) {
  std::string path = ktltest::writeTempFile(
      "<objectModel DTDversion=\"1516.2\"><objects><objectClass name=\"HLAobjectRoot\"/>"
      "</objects><extra/></objectModel>",
      ".xml");
  ktltest::Outcome lax = fomdump({path});
  EXPECT_EQ(lax.status, 0);
  EXPECT_NE(lax.err.find("warning: "), std::string::npos);
  ktltest::Outcome strict = fomdump({"--strict", path});
  EXPECT_EQ(strict.status, 2);
  EXPECT_EQ(strict.err, "fomdump: " + path + ": Unrecognized top-level tag: extra\n");
}

TEST(ToolFomdump, ValidateChecksTheDtdTheDocumentNames) {
  ktltest::TempDir dir;
  std::string rpr =
      dir.write("RPR.xml", ktltest::fileText(the1516Corpus + "/RPR_FOM_v2.0_1516-2000.xml"));
  // Without the DTD beside it the document fails validation, which only warns without strict:
  // the read goes on, and its last warning is the one left.
  ktltest::Outcome missing = fomdump({"--validate", rpr});
  EXPECT_EQ(missing.status, 0);
  EXPECT_NE(missing.out.find("Object classes: 67\n"), std::string::npos);
  EXPECT_EQ(missing.err, "fomdump: " + rpr + ": warning: Missing or invalid Sync Points\n");
  ktltest::Outcome strictMissing = fomdump({"--validate", "--strict", rpr});
  EXPECT_EQ(strictMissing.status, 2);
  EXPECT_EQ(strictMissing.err, "fomdump: " + rpr + ": FDD failed DTD validation.\n");
  dir.write("hla.dtd", ktltest::fileText(the1516Corpus + "/HLA.dtd"));
  ktltest::Outcome valid = fomdump({"--validate", "--strict", rpr});
  EXPECT_EQ(valid.status, 0);
  EXPECT_NE(valid.out.find("Object classes: 67\n"), std::string::npos);
}

TEST(ToolFomdump, CommandLineErrors) {
  ktltest::Outcome outcome = fomdump({});
  EXPECT_EQ(outcome.status, 64);
  EXPECT_EQ(outcome.err,
            "fomdump: Required argument missing: file\n"
            "Usage: fomdump [-v] [--json] [--strict] [--validate] [--check] [--no-mim] [--mim "
            "FILE] [--graph modules|classes] FILE... or fomdump --fix FILE.fed (see fomdump "
            "--help)\n");
  outcome = fomdump({"--bogus", theExample});
  EXPECT_EQ(outcome.status, 64);
  EXPECT_EQ(outcome.err.find("fomdump: Couldn't find match for argument"), 0u) << outcome.err;
  outcome = fomdump({theExample, "--mim"});
  EXPECT_EQ(outcome.status, 64);
  outcome = fomdump({"--help"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("--json"), std::string::npos);
}

// A module of the later XML formats with what only they have: a model name, dependencies,
// update rates and object class dimensions.
std::string theSmallModule(const std::string& ns, const std::string& timeStamp) {
  return "<objectModel xmlns=\"http://standards.ieee.org/" + ns +
         "\">\n"
         "<modelIdentification><name>Harbour</name>\n"
         "  <reference><type>Dependency</type><identification>Base</identification></reference>\n"
         "  <reference><type>Dependency</type><identification>MIM</identification></reference>\n"
         "</modelIdentification>\n"
         "<objects><objectClass><name>HLAobjectRoot</name>\n"
         "  <objectClass><name>Vessel</name><dimensions><dimension>Area</dimension></dimensions>\n"
         "    <attribute><name>Position</name><transportation>HLAreliable</transportation>\n"
         "      <order>TimeStamp</order><dimensions><dimension>Area</dimension></dimensions>\n"
         "    </attribute></objectClass></objectClass></objects>\n"
         "<interactions><interactionClass><name>HLAinteractionRoot</name>\n"
         "  <interactionClass><name>Hail</name><transportation>HLAbestEffort</transportation>\n"
         "    <order>Receive</order><parameter><name>Text</name></parameter>\n"
         "  </interactionClass></interactionClass></interactions>\n"
         "<dimensions><dimension><name>Area</name><upperBound>10</upperBound></dimension>"
         "</dimensions>\n"
         "<time><" +
         timeStamp + "><dataType>HLAfloat64Time</dataType></" + timeStamp +
         "></time>\n"
         "<transportations/><switches/>\n"
         "<updateRates><updateRate><name>Slow</name><rate>0.5</rate></updateRate></updateRates>\n"
         "</objectModel>\n";
}

TEST(ToolFomdump, Prints2010ModuleWithItsNameDependenciesAndUpdateRates) {
  std::string path = ktltest::writeTempFile(theSmallModule("IEEE1516-2010", "timeStamp"), ".xml");
  ktltest::Outcome outcome = fomdump({path});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.substr(0, outcome.out.find("Transportations:")),
            "FOM file: " + path +
                "\n"
                "Format: HLA Evolved\n"
                "Routing spaces: 0\n"
                "Model: Harbour\n"
                "Dependencies: 2\n"
                "  dependency Base\n"
                "  dependency MIM\n"
                "Dimensions: 1\n"
                "  dimension Area  upperBound 10  range [0, 18446744073709551615)\n");
  for (const char* line :
       {"Update rates: 1\n  rate Slow  0.5\n", "Time: 1\n  timeStamp  dataType HLAfloat64Time\n",
        "Object classes: 2\n  class HLAobjectRoot\n"
        "    class HLAobjectRoot.Vessel  dimensions Area\n"
        "      attribute Position  transport reliable  order timestamp  "
        "dimensions Area\n",
        "    class HLAinteractionRoot.Hail  transport best_effort  order "
        "receive\n      parameter Text\n"}) {
    EXPECT_NE(outcome.out.find(line), std::string::npos) << line;
  }
}

TEST(ToolFomdump, Prints2010ModuleAsJsonWithItsOwnKeys) {
  std::string path = ktltest::writeTempFile(theSmallModule("IEEE1516-2010", "timeStamp"), ".xml");
  ktltest::Outcome outcome = fomdump({"--json", path});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(JsonChecker(outcome.out).valid()) << outcome.out;
  for (const char* key :
       {"  \"format\": \"HLA Evolved\",\n  \"modelName\": \"Harbour\",\n"
        "  \"dependencies\": [\"Base\", \"MIM\"],\n",
        "  \"updateRates\": [\n    {\"name\": \"Slow\", \"rate\": 0.5, \"semantics\": \"\"}\n  ]",
        "{\"name\": \"HLAobjectRoot.Vessel\", \"parent\": \"HLAobjectRoot\", \"dimensions\": "
        "[\"Area\"], \"attributes\": [{\"name\": \"Position\""}) {
    EXPECT_NE(outcome.out.find(key), std::string::npos) << key;
  }
}

TEST(ToolFomdump, The2000FormatHasNoModuleKeys) {
  ktltest::Outcome outcome = fomdump({"--json", ktltest::writeTempFile(theSmall1516, ".xml")});
  EXPECT_EQ(outcome.status, 0);
  for (const char* key : {"\"modelName\"", "\"dependencies\"", "\"updateRates\""}) {
    EXPECT_EQ(outcome.out.find(key), std::string::npos) << key;
  }
}

TEST(ToolFomdump, Prints2025Module) {
  std::string path = ktltest::writeTempFile(theSmallModule("IEEE1516-2025", "logicalTime"), ".xml");
  ktltest::Outcome outcome = fomdump({path});
  EXPECT_EQ(outcome.status, 0);
  for (const char* line : {"Format: HLA 4\n", "Model: Harbour\n", "Dependencies: 2\n",
                           "Update rates: 1\n", "Time: 1\n  logicalTime  dataType "}) {
    EXPECT_NE(outcome.out.find(line), std::string::npos) << line;
  }
}

TEST(ToolFomdump, AnUnrecognizedExtensionIsReadAs2025) {
  std::string other = ktltest::writeTempFile("whatever", ".txt");
  ktltest::Outcome outcome = fomdump({other});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err.find("FED file has unrecognized extension: " + other +
                             "\n\tDefaulting to HLA 1516 2025 format\n"),
            0u);
  EXPECT_NE(outcome.out.find("Format: HLA 4\n"), std::string::npos);
}

TEST(ToolFomdump, TheStandardMimWithNoFileIsReadFromTheLibrarysCopy) {
  ktltest::TempDir empty;
  std::string evolved = empty.file("HLAstandardMIM.xml");
  ktltest::Outcome outcome = fomdump({evolved});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err.find("fomdump: " + evolved +
                             ": no such file; reading the library's own copy of the IEEE "
                             "1516-2010 standard MIM\n"),
            0u);
  for (const char* line :
       {"Format: HLA Evolved\n",
        "Model: Standard MOM and Initialization Module (MIM) for HLA IEEE 1516-2010\n",
        "Object classes: 4\n", "Interaction classes: 85\n"}) {
    EXPECT_NE(outcome.out.find(line), std::string::npos) << line;
  }
  // The 2025 name, in another case, names the 2025 copy.
  std::string hla4 = empty.file("hlastandardmim-2025.XML");
  outcome = fomdump({"--json", hla4});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err.find("fomdump: " + hla4 +
                             ": no such file; reading the library's own copy of the IEEE "
                             "1516-2025 standard MIM\n"),
            0u);
  EXPECT_TRUE(JsonChecker(outcome.out).valid());
  EXPECT_NE(outcome.out.find("\"format\": \"HLA 4\""), std::string::npos);
}

TEST(ToolFomdump, AStandardMimFileOnDiskIsReadInstead) {
  ktltest::TempDir dir;
  std::string path = dir.write("HLAstandardMIM.xml", theSmallModule("IEEE1516-2010", "timeStamp"));
  ktltest::Outcome outcome = fomdump({path});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err.find("library's own copy"), std::string::npos);
  EXPECT_NE(outcome.out.find("Model: Harbour\n"), std::string::npos);
}

TEST(ToolFomdump, ValidateChecksTheSchemaA2010DocumentNames) {
  ktltest::TempDir dir;
  std::string path =
      dir.write("module.xml",
                "<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-2010\" "
                "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                "xsi:schemaLocation=\"http://standards.ieee.org/IEEE1516-2010 "
                "http://standards.ieee.org/downloads/1516/1516.2-2010/IEEE1516-DIF-2010.xsd\">"
                "<modelIdentification><name>M</name></modelIdentification></objectModel>");
  // Without --validate the schema is not looked at.
  EXPECT_EQ(fomdump({path}).status, 0);
  // A schema named by a URL is never fetched: it is a file that does not exist.
  ktltest::Outcome outcome = fomdump({"--validate", path});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("Could not open schema file "), std::string::npos) << outcome.err;
}

// ---------------------------------------------------------------------------------------------
// Several files: a federation

const std::string theRprModules =
    std::string(KTL_TEST_DATA_DIR) + "/fom/ieee1516-2010/rpr-fom-v2.0";
const std::string theNetn3Modules =
    std::string(KTL_TEST_DATA_DIR) + "/fom/ieee1516-2010/netn-fom-v3.0";

// The RPR FOM 2.0 modules in reverse name order.
std::vector<std::string> rprModules() {
  std::vector<std::string> files;
  for (const char* name :
       {"RPR-Warfare_v2.0.xml", "RPR-UA_v2.0.xml", "RPR-Switches_v2.0.xml", "RPR-SIMAN_v2.0.xml",
        "RPR-SE_v2.0.xml", "RPR-Physical_v2.0.xml", "RPR-Minefield_v2.0.xml",
        "RPR-Logistics_v2.0.xml", "RPR-Foundation_v2.0.xml", "RPR-Enumerations_v2.0.xml",
        "RPR-DER_v2.0.xml", "RPR-Communication_v2.0.xml", "RPR-Base_v2.0.xml",
        "RPR-Aggregate_v2.0.xml"}) {
    files.push_back(theRprModules + "/" + name);
  }
  return files;
}

TEST(ToolFomdump, SeveralModulesLoadAsAFederationOnTheLibrarysMim) {
  ktltest::Outcome outcome = fomdump(rprModules());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out.find("Modules: 15\n  module HLAstandardMIM.xml  format HLA Evolved  (the "
                             "library's copy)  model Standard MOM and Initialization Module (MIM) "
                             "for HLA IEEE 1516-2010\n"),
            0u)
      << outcome.out;
  // The order: the MIM, then every module after what it depends on.
  for (const std::string& line :
       {std::string("Order: 15\n  1 HLAstandardMIM.xml\n  2 ") + theRprModules +
            "/RPR-Foundation_v2.0.xml\n",
        "  15 " + theRprModules + "/RPR-Minefield_v2.0.xml\nReferences: 14\n",
        "  " + theRprModules +
            "/RPR-Physical_v2.0.xml: \"Real-time Platform Reference Base FOM Module\" -> " +
            theRprModules + "/RPR-Base_v2.0.xml (by model name after its \" - \" prefix)\n",
        "  " + theRprModules +
            "/RPR-Foundation_v2.0.xml: \"MIM\" -> HLAstandardMIM.xml (by "
            "standard MIM)\n"}) {
    EXPECT_NE(outcome.out.find(line), std::string::npos) << line;
  }
  // --check agrees.
  std::vector<std::string> checked = rprModules();
  checked.insert(checked.begin(), "--check");
  EXPECT_EQ(fomdump(checked).status, 0);
}

TEST(ToolFomdump, ADependencyThatNamesNoLoadedModuleFailsTheCheck) {
  const std::string com = theNetn3Modules + "/NETN-COM.xml";
  ktltest::Outcome outcome = fomdump({"--check", com});
  EXPECT_EQ(outcome.status, 4);
  // The dependency first, then the data types that the missing module would have declared, each
  // at the line where the reference, the array and the attribute open.
  EXPECT_EQ(outcome.err.find(com + ":41: dependency \"NETN-BASE\" names no loaded module\n"), 0u);
  EXPECT_NE(outcome.err.find(com + ":494: data type Text64, named by array data type "
                                   "CommunicationNetworkArray, is declared in no module\n"),
            std::string::npos);
  EXPECT_NE(outcome.err.find(com + ":131: data type WorldLocationStruct, named by attribute "
                                   "Location of object class "
                                   "HLAobjectRoot.COM_Root.CommunicationNode, is declared in no "
                                   "module\n"),
            std::string::npos);
  EXPECT_NE(outcome.out.find("  " + com + ": \"NETN-BASE\" names no loaded module\n"),
            std::string::npos);
  // Without --check it is reported and the federation still loads.
  ktltest::Outcome plain = fomdump({com, theNetn3Modules + "/NETN-ETR.xml"});
  EXPECT_EQ(plain.status, 0);
  EXPECT_EQ(plain.err.find(com + ":41: dependency \"NETN-BASE\" names no loaded module\n" +
                           theNetn3Modules +
                           "/NETN-ETR.xml:43: dependency \"NETN-BASE\" names no loaded module\n"),
            0u);
  // With -v the sorter's own report follows.
  ktltest::Outcome verbose = fomdump({"-v", "--check", com});
  EXPECT_NE(verbose.out.find("Unknown dependency NETN-BASE referenced in FOM file " + com +
                             "\nFOM sorting may be affected.\n"),
            std::string::npos)
      << verbose.out;
}

TEST(ToolFomdump, NoMimAndAnotherMim) {
  const std::string foundation = theRprModules + "/RPR-Foundation_v2.0.xml";
  ktltest::Outcome without = fomdump({"--no-mim", "--check", foundation});
  EXPECT_EQ(without.status, 4);
  // Without the MIM, its basic types are missing too.
  EXPECT_EQ(without.err, foundation + ":20: dependency \"MIM\" names no loaded module\n" +
                             foundation +
                             ":104: data type HLAASCIIchar, named by array data type RTIobjectId, "
                             "is declared in no module\n" +
                             foundation +
                             ":89: data type HLAoctet, named by enumerated data type RPRboolean, "
                             "is declared in no module\n");
  EXPECT_EQ(without.out.find("Modules: 1\n"), 0u);
  ktltest::Outcome json = fomdump({"--no-mim", "--json", foundation});
  EXPECT_NE(json.out.find("\n  \"unresolved\": [\n    {\"file\": \"" + foundation +
                          "\", \"line\": 104, \"dataType\": \"HLAASCIIchar\", \"namedBy\": "
                          "\"array data type RTIobjectId\"}"),
            std::string::npos)
      << json.out;
  const std::string mim = std::string(KTL_SOURCE_DIR) + "/data/mim/HLAstandardMIM.xml";
  ktltest::Outcome other = fomdump({"--mim", mim, "--check", foundation});
  EXPECT_EQ(other.status, 0) << other.err;
  EXPECT_EQ(other.out.find("Modules: 2\n  module " + mim + "  format HLA Evolved  model "), 0u)
      << other.out;
  EXPECT_NE(other.out.find("\"MIM\" -> " + mim + " (by standard MIM)"), std::string::npos);
  ktltest::Outcome missing = fomdump({"--mim", "/no/such/mim.xml", foundation});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, "fomdump: cannot open FOM file: /no/such/mim.xml\n");
}

TEST(ToolFomdump, AFederationAsJson) {
  std::vector<std::string> args = rprModules();
  args.insert(args.begin(), "--json");
  ktltest::Outcome outcome = fomdump(args);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(JsonChecker(outcome.out).valid()) << outcome.out;
  // The merged model, with the federation's modules, references, conflicts and unresolved
  // names after it.
  EXPECT_EQ(outcome.out.find("{\n  \"file\": \"federation of 15 modules\",\n  \"format\": \"HLA "
                             "Evolved\",\n  \"modelName\": \"\",\n  \"dependencies\": [],\n"),
            0u)
      << outcome.out.substr(0, 300);
  EXPECT_NE(outcome.out.find("\n  \"modules\": [\n    {\"file\": \"HLAstandardMIM.xml\", \"name\": "
                             "\"Standard MOM and Initialization Module (MIM) for HLA IEEE "
                             "1516-2010\", \"format\": \"HLA Evolved\", \"dependencies\": [], "
                             "\"order\": 1}"),
            std::string::npos);
  EXPECT_NE(outcome.out.find("\n  ],\n  \"conflicts\": [],\n  \"unresolved\": []\n}\n"),
            std::string::npos);
  EXPECT_NE(outcome.out.find("{\"module\": \"" + theRprModules +
                             "/RPR-Foundation_v2.0.xml\", \"reference\": \"MIM\", \"resolvedTo\": "
                             "\"HLAstandardMIM.xml\", \"rule\": \"standard MIM\", \"ambiguous\": "
                             "false}"),
            std::string::npos);
}

TEST(ToolFomdump, AConflictNamesBothFilesAndFailsTheCheck) {
  const std::string dir = std::string(KTL_TEST_DATA_DIR) + "/fom/ieee1516-2010/openrti-modules/";
  const std::string first = dir + "ObjectClass1-1.xml";
  const std::string second = dir + "ObjectClass1-2.xml";
  ktltest::Outcome outcome = fomdump({"--check", first, second});
  EXPECT_EQ(outcome.status, 4);
  // Each declaration at the line where its objectClass element opens.
  EXPECT_EQ(outcome.err, second +
                             ":9: object class HLAobjectRoot.ObjectClass1 is declared again with "
                             "other attributes; first declared in " +
                             first + ":9\n");
  // The merged model keeps the first declaration; the summary closes the output.
  const std::string summary =
      "Summary: 3 modules, 5 object classes, 46 attributes, 85 interaction classes, 101 "
      "parameters, 53 data types, 1 conflicts, 0 unresolved references\n";
  ASSERT_GE(outcome.out.size(), summary.size());
  EXPECT_EQ(outcome.out.substr(outcome.out.size() - summary.size()), summary);
  EXPECT_NE(outcome.out.find("FOM file: federation of 3 modules\nFormat: HLA Evolved\n"),
            std::string::npos);
  // JSON gives both lines.
  ktltest::Outcome json = fomdump({"--json", first, second});
  EXPECT_NE(json.out.find("\n  \"conflicts\": [\n    {\"first\": \"" + first +
                          "\", \"firstLine\": 9, \"second\": \"" + second +
                          "\", \"secondLine\": 9, \"message\": \"object class "
                          "HLAobjectRoot.ObjectClass1 is declared again with other attributes\"}"),
            std::string::npos)
      << json.out;
  // With its base, each merges cleanly: the base declares the class with no attributes.
  EXPECT_EQ(fomdump({"--check", dir + "ObjectClass1.xml", second}).status, 0);
}

TEST(ToolFomdump, AModuleThatFailsNamesItsFileAndLine) {
  const std::string broken = ktltest::writeTempFile(
      "<?xml version=\"1.0\"?>\n"
      "<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-2010\">\n"
      "<modelIdentification><name>Broken</name></modelIdentification>\n"
      "<dataTypes>\n"
      "<bogusDataTypes/>\n"
      "</dataTypes>\n"
      "</objectModel>\n",
      ".xml");
  const std::string foundation = theRprModules + "/RPR-Foundation_v2.0.xml";
  ktltest::Outcome outcome = fomdump({"--strict", "--check", foundation, broken});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, broken +
                             ":5: Unexpected tag in dataTypes tree for FDD file.\n\tDataType Tag = "
                             "bogusDataTypes * at XML Node bogusDataTypes near line 5\n");
}

TEST(ToolFomdump, EveryCorpusFileAloneAndCheckedExitsAsDocumented) {
  // Every FOM file of the test corpus, of every dialect: printed alone it reads (0) or is wrong
  // (2); checked as a federation on its MIM it may also fail the check (4). Nothing else: no
  // crash, no sanitizer report, no hang (CTest's time limit).
  const std::string corpus = std::string(KTL_TEST_DATA_DIR) + "/fom";
  int files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".xml" && extension != ".fed") continue;
    const std::string path = entry.path().string();
    ++files;
    ktltest::Outcome alone = fomdump({path});
    EXPECT_TRUE(alone.status == 0 || alone.status == 2) << path << ": " << alone.status;
    ktltest::Outcome checked = fomdump({"--check", path});
    EXPECT_TRUE(checked.status == 0 || checked.status == 2 || checked.status == 4)
        << path << ": " << checked.status;
  }
  EXPECT_GT(files, 220);
}

TEST(ToolFomdump, GraphsAreDotThatGraphvizDraws) {
  std::vector<std::string> args = rprModules();
  args.insert(args.begin(), {"--graph", "modules"});
  ktltest::Outcome modules = fomdump(args);
  EXPECT_EQ(modules.status, 0) << modules.err;
  EXPECT_EQ(modules.out.find("digraph modules {\n"), 0u);
  EXPECT_NE(modules.out.find("  \"" + theRprModules + "/RPR-Physical_v2.0.xml\" -> \"" +
                             theRprModules + "/RPR-Base_v2.0.xml\";\n"),
            std::string::npos)
      << modules.out;
  args[1] = "classes";
  ktltest::Outcome classes = fomdump(args);
  EXPECT_EQ(classes.status, 0);
  // Each class labelled with its short name and its module.
  EXPECT_NE(classes.out.find("  \"object:HLAobjectRoot.BaseEntity.PhysicalEntity\" [shape=box, "
                             "label=\"PhysicalEntity\\nRPR-Physical_v2.0.xml\"];\n"),
            std::string::npos)
      << classes.out.substr(0, 2000);
  ktltest::TempDir dir;
  for (const ktltest::Outcome* graph : {&modules, &classes}) {
    const std::string dot = dir.write("graph.dot", graph->out);
    ktltest::Outcome drawn =
        ktltest::runProgram("/usr/bin/dot", {"-Tsvg", "-o", dir.file("graph.svg"), dot});
    EXPECT_EQ(drawn.status, 0) << drawn.err;
    EXPECT_EQ(drawn.err, "");
  }
  // A missing dependency stands apart, dashed.
  ktltest::Outcome partial = fomdump({"--graph", "modules", theNetn3Modules + "/NETN-COM.xml"});
  EXPECT_NE(partial.out.find("  \"missing: NETN-BASE\" [style=dashed, label=\"NETN-BASE\"];\n"),
            std::string::npos)
      << partial.out;
  EXPECT_EQ(fomdump({"--graph", "pictures", theExample}).status, 64);
}

TEST(ToolFomdump, TheShippedRestaurantFederationChecksClean) {
  const std::string dir = std::string(KTL_SOURCE_DIR) + "/examples/restaurant/";
  std::vector<std::string> args = {"--check"};
  for (const char* module : {"RestaurantDrinks.xml", "RestaurantFood.xml",
                             "RestaurantProcesses.xml", "RestaurantSoup.xml"}) {
    args.push_back(dir + module);
  }
  ktltest::Outcome outcome = fomdump(args);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_NE(outcome.out.find("Order: 5\n  1 HLAstandardMIM.xml\n  2 " + dir +
                             "RestaurantProcesses.xml\n  3 " + dir + "RestaurantFood.xml\n"),
            std::string::npos);
  const std::string summary =
      "Summary: 5 modules, 42 object classes, 54 attributes, 99 interaction classes, 104 "
      "parameters, 69 data types, 0 conflicts, 0 unresolved references\n";
  ASSERT_GE(outcome.out.size(), summary.size());
  EXPECT_EQ(outcome.out.substr(outcome.out.size() - summary.size()), summary);
  // The shipped copies are the corpus's.
  for (size_t i = 1; i < args.size(); ++i) {
    const std::string name = args[i].substr(dir.size());
    EXPECT_EQ(ktltest::fileText(args[i]),
              ktltest::fileText(std::string(KTL_TEST_DATA_DIR) +
                                "/fom/ieee1516-2010/portico-restaurant/" + name));
  }
}

TEST(ToolFomdump, CheckTellsEachDeviationOfAFedFileAndExits4) {
  const std::string file = theCorpus + "/openrti_fdd-1.fed";
  ktltest::Outcome outcome = fomdump({"--check", file});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.err, file + ": the file does not have the form of a FED file\n" + file +
                             ":4: there is no (spaces ...) before this list: --fix adds an empty "
                             "(spaces)\n");
  // A file that reads with a warning fails the check too; one in the strict form passes.
  const std::string warned =
      theCorpus + "/negative/portico_testfom-undefinedAttributeTransport.fed";
  ktltest::Outcome transport = fomdump({"--check", warned});
  EXPECT_EQ(transport.status, 4);
  EXPECT_NE(transport.err.find(warned +
                               ":14: warning: transport \"noSuchTransport\" of attribute \"aa\" "
                               "is not reliable or best_effort: the reader warns and delivers it "
                               "as -1\n"),
            std::string::npos)
      << transport.err;
  EXPECT_EQ(fomdump({"--check", theCorpus + "/portico_testfom.fed"}).status, 0);
}

TEST(ToolFomdump, FixWritesTheStrictFormOrSaysWhyNot) {
  const std::string file = theCorpus + "/openrti_fdd-1.fed";
  ktltest::Outcome outcome = fomdump({"--fix", file});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(
      outcome.out.find("(FED\n  (Federation test)\n  (FEDversion v1.3)\n  (spaces)\n  (objects\n"),
      0u)
      << outcome.out;
  EXPECT_EQ(outcome.err, file +
                             ":4: there is no (spaces ...) before this list: --fix adds an empty "
                             "(spaces)\n");
  // What it writes reads.
  const std::string mended = ktltest::writeTempFile(outcome.out, ".fed");
  EXPECT_EQ(fomdump({mended}).status, 0);
  const std::string refused = theCorpus + "/jcerti_uav.fed";
  ktltest::Outcome no = fomdump({"--fix", refused});
  EXPECT_EQ(no.status, 2);
  EXPECT_EQ(no.out, "");
  EXPECT_EQ(no.err, refused +
                        ":17: (interactions ...) must hold one class, InteractionRoot, and holds 0 "
                        "entries\n" +
                        refused +
                        ":17: cannot be mended without a guess: (interactions ...) must hold one "
                        "class, InteractionRoot, and holds 0 entries\n");
  EXPECT_EQ(fomdump({"--fix", "/no/such/file.fed"}).status, 1);
  EXPECT_EQ(fomdump({"--fix", file, file}).status, 64);
  EXPECT_EQ(fomdump({"--fix", "--json", file}).status, 64);
  const std::string xml = the1516Corpus + "/RPR_FOM_v2.0_1516-2000.xml";
  ktltest::Outcome notFed = fomdump({"--fix", xml});
  EXPECT_EQ(notFed.status, 64);
  EXPECT_EQ(notFed.err,
            "fomdump: --fix rewrites HLA 1.3 FED files, and " + xml + " is an XML document\n");
}

}  // namespace
