// fomdump's check of HLA 1.3 FED files and its rewrite into the strict form: every refused file
// of the corpus with its deviations at their lines (checked by hand against each file) and what
// --fix makes of it; every file that reads, rewritten to the same bytes and model; and each
// deviation on a small text.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include <ktl/fedReader13.h>

#include "fomdump/fedCheck.h"
#include "fomdump/model.h"
#include "support/capture.h"
#include "support/files.h"

using namespace KORRti;
using fomdump::FedCheck;
using fomdump::FedDeviation;
using fomdump::ModelRecorder;

namespace {

const std::string theData = std::string(KTL_TEST_DATA_DIR) + "/fom/hla13/";

char kindLetter(FedDeviation::Kind kind) {
  switch (kind) {
    case FedDeviation::Kind::kMendable:
      return 'M';
    case FedDeviation::Kind::kUnmendable:
      return 'U';
    case FedDeviation::Kind::kWarned:
      return 'W';
  }
  return '?';
}

// Each deviation as "LINE K message", K being M (mendable), U (unmendable) or W (warned).
std::vector<std::string> described(const FedCheck& check) {
  std::vector<std::string> lines;
  for (const FedDeviation& deviation : check.deviations) {
    lines.push_back(std::to_string(deviation.line) + " " + kindLetter(deviation.kind) + " " +
                    deviation.message);
  }
  return lines;
}

std::unique_ptr<FedCheck> checkFile(const std::string& file) {
  auto check = std::make_unique<FedCheck>();
  ktltest::captureOutput([&] { fomdump::checkFed(file, *check); });
  return check;
}

std::unique_ptr<FedCheck> checkText(const std::string& text) {
  ktltest::TempDir dir;
  return checkFile(dir.write("model.fed", text));
}

// The library's reading of a text, as a file.
struct Read {
  int result = -1;
  std::string error;
  ModelRecorder model;
};
std::unique_ptr<Read> readFed(const std::string& text) {
  ktltest::TempDir dir;
  const std::string file = dir.write("model.fed", text);
  auto read = std::make_unique<Read>();
  ktltest::captureOutput([&] {
    DtFedReader13 reader;
    read->result = reader.readFed(file.c_str(), &read->model, 0, false, false);
    read->error = reader.lastError().c_str();
  });
  return read;
}

// Two models element by element, in order: spaces with their dimensions, object classes with
// their parents and attributes (transport, order, space), interaction classes with theirs and
// their parameters.
void expectSameModel(const ModelRecorder& a, const ModelRecorder& b) {
  ASSERT_EQ(a.spaces.size(), b.spaces.size());
  for (size_t i = 0; i < a.spaces.size(); ++i) {
    EXPECT_EQ(a.spaces[i].name, b.spaces[i].name);
    EXPECT_EQ(a.spaces[i].dimensions, b.spaces[i].dimensions);
  }
  ASSERT_EQ(a.objects.size(), b.objects.size());
  for (size_t i = 0; i < a.objects.size(); ++i) {
    const auto& x = a.objects[i];
    const auto& y = b.objects[i];
    EXPECT_EQ(x.name, y.name);
    EXPECT_EQ(x.parent, y.parent);
    ASSERT_EQ(x.attributes.size(), y.attributes.size()) << x.name;
    for (size_t j = 0; j < x.attributes.size(); ++j) {
      EXPECT_EQ(x.attributes[j].name, y.attributes[j].name);
      EXPECT_EQ(x.attributes[j].transport, y.attributes[j].transport);
      EXPECT_EQ(x.attributes[j].order, y.attributes[j].order);
      EXPECT_EQ(x.attributes[j].space, y.attributes[j].space);
    }
  }
  ASSERT_EQ(a.interactions.size(), b.interactions.size());
  for (size_t i = 0; i < a.interactions.size(); ++i) {
    const auto& x = a.interactions[i];
    const auto& y = b.interactions[i];
    EXPECT_EQ(x.name, y.name);
    EXPECT_EQ(x.parent, y.parent);
    EXPECT_EQ(x.transport, y.transport);
    EXPECT_EQ(x.order, y.order);
    EXPECT_EQ(x.space, y.space);
    EXPECT_EQ(x.parameters, y.parameters);
  }
}

// How many lists of a kind the text opens, whatever the keyword's case, outside comments.
size_t listsOf(const std::string& text, const std::string& keyword) {
  std::string plain;
  bool comment = false;
  for (char c : text) {
    if (c == ';') comment = true;
    if (c == '\n') comment = false;
    if (!comment) plain += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  size_t count = 0;
  const std::string opening = "(" + keyword;
  for (size_t at = plain.find(opening); at != std::string::npos; at = plain.find(opening, at + 1)) {
    const char next = at + opening.size() < plain.size() ? plain[at + opening.size()] : ' ';
    if (std::isspace(static_cast<unsigned char>(next))) ++count;
  }
  return count;
}

// ---------------------------------------------------------------------------------------------
// The corpus

struct Refused {
  const char* file;
  const char* first;  // the first deviation, "LINE K message"
  size_t deviations;
  long stop;  // the line --fix stops at; 0 where it mends the file
};

const Refused theRefused[] = {
    {"ccerti_Federation.fed", "3 M \"Fed\" must be written \"FED\": keywords compare with case", 24,
     0},
    {"certi_Billard_Test.fed", "3 M \"Fed\" must be written \"FED\": keywords compare with case",
     24, 0},
    {"certi_testFederation.fed", "4 M \"Fed\" must be written \"FED\": keywords compare with case",
     16, 0},
    {"certi_Interactive_Federation.fed",
     "2 M \"Fed\" must be written \"FED\": keywords compare with case", 12, 18},
    {"hla-pathbuilder_RestaurantFOM.fed",
     "1 U the list starts with \"fom\", not FED: this is not an HLA 1.3 FED file", 1, 1},
    {"jcerti_uav.fed",
     "17 U (interactions ...) must hold one class, InteractionRoot, and holds 0 entries", 1, 17},
    {"openrti_fdd-1.fed",
     "4 M there is no (spaces ...) before this list: --fix adds an empty (spaces)", 1, 0},
    {"openrti_fdd-2.fed",
     "4 M there is no (spaces ...) before this list: --fix adds an empty (spaces)", 3, 4},
    {"portico_testfom-nospaces.fed",
     "6 M there is no (spaces ...) before this list: --fix adds an empty (spaces)", 1, 0},
    {"negative/portico_cpptest_1516e_testfom-invalid.fed",
     "6 U the list that opens here is not closed: the text ends inside 5 lists (a \")\" is "
     "missing, or a \"(\" is one too many)",
     1, 6},
    {"negative/portico_cpptest_hla13_testfom-invalid.fed",
     "6 U the list that opens here is not closed: the text ends inside 5 lists (a \")\" is "
     "missing, or a \"(\" is one too many)",
     1, 6},
    {"negative/portico_testfom-randomtext.fed",
     "9 M \"RANDOM\" stands outside any section: a FED file holds only lists; --fix leaves it out",
     1, 0},
    {"negative/portico_testfom-unbalanced.fed",
     "6 U the list that opens here is not closed: the text ends inside 5 lists (a \")\" is "
     "missing, or a \"(\" is one too many)",
     1, 6},
    {"negative/portico_testfom-undefinedAttributeOrder.fed",
     "14 U order \"NoSuchOrder\" of attribute \"aa\" is not receive or timestamp", 1, 14},
    {"negative/portico_testfom-undefinedInteractionOrder.fed",
     "18 U order \"NoSuchOrder\" of interaction class \"InteractionRoot.X\" is not receive or "
     "timestamp",
     1, 18},
};

class RefusedFile : public ::testing::TestWithParam<Refused> {};

TEST_P(RefusedFile, IsToldAtItsLinesAndMendedOrRefused) {
  const Refused& refused = GetParam();
  const std::string file = theData + refused.file;
  // The library refuses it.
  auto check = checkFile(file);
  ASSERT_TRUE(check->opened);
  EXPECT_NE(readFed(check->text)->result, DtFedOk);
  EXPECT_TRUE(check->refused());
  std::vector<std::string> lines = described(*check);
  ASSERT_EQ(lines.size(), refused.deviations) << ::testing::PrintToString(lines);
  EXPECT_EQ(lines.front(), refused.first);
  // Deviations come in the order of the text.
  EXPECT_TRUE(
      std::is_sorted(check->deviations.begin(), check->deviations.end(),
                     [](const FedDeviation& a, const FedDeviation& b) { return a.line < b.line; }));
  std::string mended;
  FedDeviation stop;
  const bool done = fomdump::mendFed(*check, mended, stop);
  if (refused.stop) {
    EXPECT_FALSE(done);
    EXPECT_EQ(stop.line, refused.stop);
    EXPECT_EQ(stop.kind, FedDeviation::Kind::kUnmendable);
    return;
  }
  ASSERT_TRUE(done) << stop.message;
  // The mended text reads, and delivers what the file declares, in order.
  auto read = readFed(mended);
  ASSERT_EQ(read->result, DtFedOk) << read->error;
  expectSameModel(read->model, check->declared);
  size_t attributes = 0;
  for (const auto& item : read->model.objects) attributes += item.attributes.size();
  size_t parameters = 0;
  for (const auto& item : read->model.interactions) parameters += item.parameters.size();
  EXPECT_EQ(read->model.objects.size() + read->model.interactions.size(),
            listsOf(check->text, "class"));
  EXPECT_EQ(attributes, listsOf(check->text, "attribute"));
  EXPECT_EQ(parameters, listsOf(check->text, "parameter"));
  // What is checked again is found in the strict form.
  ktltest::TempDir dir;
  auto again = checkFile(dir.write("mended.fed", mended));
  EXPECT_FALSE(again->refused()) << ::testing::PrintToString(described(*again));
}

INSTANTIATE_TEST_SUITE_P(Corpus, RefusedFile, ::testing::ValuesIn(theRefused),
                         [](const ::testing::TestParamInfo<Refused>& info) {
                           std::string name = info.param.file;
                           name = name.substr(name.rfind('/') + 1);
                           name = name.substr(0, name.rfind('.'));
                           for (char& c : name) {
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           }
                           return name;
                         });

TEST(FomdumpFedCheck, EveryFileThatReadsIsKeptByteForByte) {
  const char* const readable[] = {"OpenEaagles_RPR-FOM.fed",
                                  "RPR_FOM_v2.0_1.3.fed",
                                  "hla-pathbuilder_WrightFlyer.fed",
                                  "portico_HLAstandardMIM.fed",
                                  "portico_example_testfom.fed",
                                  "portico_testfom-pitch.fed",
                                  "portico_testfom.fed",
                                  "negative/portico_testfom-badcomment.fed",
                                  "negative/portico_testfom-undefinedAttributeSpace.fed",
                                  "negative/portico_testfom-undefinedAttributeTransport.fed",
                                  "negative/portico_testfom-undefinedInteractionSpace.fed",
                                  "negative/portico_testfom-undefinedInteractionTransport.fed"};
  for (const char* name : readable) {
    SCOPED_TRACE(name);
    auto check = checkFile(theData + name);
    auto original = readFed(check->text);
    ASSERT_EQ(original->result, DtFedOk);
    EXPECT_FALSE(check->refused());
    std::string mended;
    FedDeviation stop;
    ASSERT_TRUE(fomdump::mendFed(*check, mended, stop)) << stop.message;
    EXPECT_EQ(mended, check->text);
    // The check's walk delivers what the library's reader delivers.
    expectSameModel(check->declared, original->model);
  }
  // An unknown transport is read with a warning, and told with its line.
  auto transport = checkFile(theData + "negative/portico_testfom-undefinedAttributeTransport.fed");
  EXPECT_EQ(described(*transport),
            std::vector<std::string>{
                "14 W transport \"noSuchTransport\" of attribute \"aa\" is not reliable or "
                "best_effort: the reader warns and delivers it as -1"});
}

// ---------------------------------------------------------------------------------------------
// Each deviation on a small text

// A FED text in the strict form, with a body for each section.
std::string fed(const std::string& objects = "(class ObjectRoot (attribute a reliable receive))",
                const std::string& interactions = "(class InteractionRoot reliable receive)",
                const std::string& spaces = "(spaces)") {
  return "(FED\n(Federation f)\n(FEDversion v1.3)\n" + spaces + "\n(objects\n" + objects +
         ")\n(interactions\n" + interactions + "))\n";
}

TEST(FomdumpFedCheck, TheStrictFormHasNoDeviation) {
  auto check = checkText(fed());
  EXPECT_TRUE(check->deviations.empty()) << ::testing::PrintToString(described(*check));
  EXPECT_TRUE(check->edits.empty());
  EXPECT_EQ(readFed(fed())->result, DtFedOk);
}

TEST(FomdumpFedCheck, KeywordsInAnotherCaseAreMended) {
  const std::string text =
      "(Fed\n(FEDERATION f)\n(FedVersion v1.3)\n(Spaces (Space S (Dimension D)))\n(Objects\n"
      "(Class ObjectRoot (Attribute a reliable receive S)\n(CLASS Sub)))\n(Interactions\n"
      "(Class InteractionRoot reliable receive (Parameter p))))\n";
  auto check = checkText(text);
  EXPECT_EQ(described(*check).size(), 13u);
  EXPECT_EQ(described(*check)[0],
            "1 M \"Fed\" must be written \"FED\": keywords compare with case");
  EXPECT_EQ(described(*check)[4],
            "4 M \"Space\" must be written \"space\": keywords compare with case");
  std::string mended;
  FedDeviation stop;
  ASSERT_TRUE(fomdump::mendFed(*check, mended, stop)) << stop.message;
  EXPECT_EQ(mended,
            "(FED\n(Federation f)\n(FEDversion v1.3)\n(spaces (space S (dimension D)))\n(objects\n"
            "(class ObjectRoot (attribute a reliable receive S)\n(class Sub)))\n(interactions\n"
            "(class InteractionRoot reliable receive (parameter p))))\n");
}

TEST(FomdumpFedCheck, EntriesWithNoPlaceAreLeftOutWithTheirLine) {
  const std::string text =
      "; model\n(FED\n  (Federation f)\n  (FEDversion v1.3)\n  (Federate \"fed\" \"Public\")\n"
      "  (spaces)\n  STRAY words ; a comment kept\n  (objects\n"
      "    (class ObjectRoot (attribute a reliable receive)))\n  (interactions\n"
      "    (class InteractionRoot reliable receive\n      (Sec_Level \"Public\")\n"
      "      (parameter p))))\n";
  auto check = checkText(text);
  EXPECT_EQ(described(*check),
            (std::vector<std::string>{
                "5 M (Federate ...) has no place in a FED file: --fix leaves it out",
                "7 M \"STRAY\" stands outside any section: a FED file holds only lists; --fix "
                "leaves it out",
                "12 M (Sec_Level ...) has no place in a FED file: --fix leaves it out"}));
  std::string mended;
  FedDeviation stop;
  ASSERT_TRUE(fomdump::mendFed(*check, mended, stop)) << stop.message;
  EXPECT_EQ(mended,
            "; model\n(FED\n  (Federation f)\n  (FEDversion v1.3)\n  (spaces)\n"
            "  ; a comment kept\n  (objects\n"
            "    (class ObjectRoot (attribute a reliable receive)))\n  (interactions\n"
            "    (class InteractionRoot reliable receive\n      (parameter p))))\n");
}

TEST(FomdumpFedCheck, AMissingSpacesSectionIsAdded) {
  const std::string text =
      "(FED\n  (Federation f)\n  (FEDversion v1.3)\n  (objects\n"
      "    (class ObjectRoot))\n  (interactions\n    (class InteractionRoot reliable receive)))\n";
  auto check = checkText(text);
  EXPECT_EQ(described(*check),
            std::vector<std::string>{
                "4 M there is no (spaces ...) before this list: --fix adds an empty (spaces)"});
  std::string mended;
  FedDeviation stop;
  ASSERT_TRUE(fomdump::mendFed(*check, mended, stop)) << stop.message;
  EXPECT_EQ(mended,
            "(FED\n  (Federation f)\n  (FEDversion v1.3)\n  (spaces)\n  (objects\n"
            "    (class ObjectRoot))\n  (interactions\n    (class InteractionRoot reliable "
            "receive)))\n");
}

TEST(FomdumpFedCheck, SectionsMissingTwiceOrOutOfOrderAreNotMended) {
  auto missing = checkText(
      "(FED\n(spaces)\n(objects (class ObjectRoot))\n"
      "(interactions (class InteractionRoot reliable receive)))\n");
  EXPECT_EQ(described(*missing),
            (std::vector<std::string>{"1 U there is no (Federation ...) in the FED list",
                                      "1 U there is no (FEDversion ...) in the FED list"}));
  auto twice = checkText(fed() + "");
  auto second = checkText(
      "(FED\n(Federation f)\n(FEDversion v1.3)\n(spaces)\n(spaces)\n"
      "(objects (class ObjectRoot))\n"
      "(interactions (class InteractionRoot reliable receive)))\n");
  EXPECT_EQ(described(*second),
            std::vector<std::string>{"5 U a second (spaces ...): a FED file has one"});
  auto order = checkText(
      "(FED\n(Federation f)\n(FEDversion v1.3)\n"
      "(objects (class ObjectRoot))\n(spaces)\n"
      "(interactions (class InteractionRoot reliable receive)))\n");
  EXPECT_EQ(described(*order),
            std::vector<std::string>{
                "5 U (spaces ...) comes after (objects ...): a FED file has Federation, "
                "FEDversion, spaces, objects and interactions in that order"});
  auto nothing = checkText("(FED\n(Federation f)\n(FEDversion v1.3)\n(spaces))\n");
  EXPECT_EQ(described(*nothing),
            (std::vector<std::string>{
                "1 U there is no (objects (class ObjectRoot ...)) in the FED list",
                "1 U there is no (interactions (class InteractionRoot ...)) in the FED list"}));
  std::string mended;
  FedDeviation stop;
  EXPECT_FALSE(fomdump::mendFed(*order, mended, stop));
  EXPECT_EQ(stop.line, 5);
}

TEST(FomdumpFedCheck, ClassesAndMembersOfTheWrongShape) {
  auto roots = checkText(fed("(class Root)", "(class IRoot reliable receive)"));
  EXPECT_EQ(described(*roots),
            (std::vector<std::string>{"6 U the root class is \"Root\", not ObjectRoot",
                                      "8 U the root class is \"IRoot\", not InteractionRoot"}));
  auto two = checkText(fed("(class ObjectRoot)\n(class Other)"));
  EXPECT_EQ(described(*two),
            std::vector<std::string>{
                "5 U (objects ...) must hold one class, ObjectRoot, and holds 2 entries: its "
                "classes belong under ObjectRoot"});
  auto members =
      checkText(fed("(class ObjectRoot\n(attribute a reliable)\n(attribute b fast timestamp)\n"
                    "(attribute c reliable later)\n(attribute d reliable receive (S))\n(note x))",
                    "(class InteractionRoot reliable receive\n(class I reliable)\n(parameter p q)\n"
                    "(class J reliable receive 7))"));
  EXPECT_EQ(described(*members),
            (std::vector<std::string>{
                "7 U attribute \"a\" of \"ObjectRoot\" has 2 elements after the keyword: a name, a "
                "transport, an order and an optional space",
                "8 W transport \"fast\" of attribute \"b\" is not reliable or best_effort: the "
                "reader warns and delivers it as -1",
                "9 U order \"later\" of attribute \"c\" is not receive or timestamp",
                "10 U the space of attribute \"d\" must be a name",
                "11 U (note ...) in class \"ObjectRoot\": a class holds only (attribute ...) and "
                "(class ...)",
                "14 U an interaction class is (class NAME TRANSPORT ORDER [SPACE] ...): class "
                "\"I\" has no transport or order",
                "15 U a parameter is (parameter NAME): one name, nothing more",
                "16 U the space of interaction class \"InteractionRoot.J\" must be a name"}));
  auto nameless = checkText(fed("(class ObjectRoot (class (x)))"));
  EXPECT_EQ(described(*nameless),
            std::vector<std::string>{"6 U a class needs a name: (class NAME ...)"});
  auto spaces = checkText(fed("(class ObjectRoot)", "(class InteractionRoot reliable receive)",
                              "(spaces\n(space S (dimension))\n(space)\n(region R))"));
  EXPECT_EQ(
      described(*spaces),
      (std::vector<std::string>{
          "5 U a dimension is (dimension NAME): one name, nothing more", "6 U a space needs a name",
          "7 U spaces holds only (space NAME (dimension NAME) ...) entries"}));
}

TEST(FomdumpFedCheck, TextThatDoesNotReadIsToldWhereItFails) {
  auto unclosed = checkText("(FED\n(Federation f)\n(FEDversion v1.3\n(spaces)\n");
  EXPECT_EQ(described(*unclosed),
            std::vector<std::string>{
                "3 U the list that opens here is not closed: the text ends inside 2 lists (a "
                "\")\" is missing, or a \"(\" is one too many)"});
  auto string = checkText("(FED\n(Federation \"f)\n");
  EXPECT_EQ(described(*string),
            std::vector<std::string>{
                "2 U a string in the list that opens here is not closed by a double quote"});
  auto stray = checkText("\n\n) (FED)");
  EXPECT_EQ(described(*stray),
            std::vector<std::string>{"3 U the text does not read: Unexpected \")\" at line 3"});
  auto empty = checkText("; nothing but a comment\n");
  EXPECT_EQ(
      described(*empty),
      std::vector<std::string>{"1 U the file holds no list: a FED file is one list, (FED ...)"});
  auto word = checkText("FED\n");
  EXPECT_EQ(described(*word),
            std::vector<std::string>{
                "1 U the file does not start with a list: a FED file is one list, (FED ...)"});
  auto after = checkText(fed() + "\n(more)\n");
  EXPECT_EQ(described(*after),
            std::vector<std::string>{
                "8 W the FED list ends on this line and the text after it is not read (a \")\" "
                "too many before it?)"});
  auto closedEarly = checkText(fed() + ")\n");
  EXPECT_EQ(described(*closedEarly),
            std::vector<std::string>{
                "8 W the FED list ends on this line and the text after it does not read (a "
                "\")\" too many before it?)"});
  FedCheck none;
  ktltest::captureOutput([&] { fomdump::checkFed("/no/such/file.fed", none); });
  EXPECT_FALSE(none.opened);
  std::string mended;
  FedDeviation stop;
  EXPECT_FALSE(fomdump::mendFed(none, mended, stop));
}

TEST(FomdumpFedCheck, ANewlineInAStringCountsAsALine) {
  auto check = checkText(
      "(FED\n(Federation \"two\nlines\")\n(FEDversion v1.3)\n(spaces)\n"
      "(objects (class ObjectRoot (attribute a reliable never))))\n");
  auto order = std::find_if(check->deviations.begin(), check->deviations.end(),
                            [](const FedDeviation& d) { return d.message.find("order") == 0; });
  ASSERT_NE(order, check->deviations.end());
  EXPECT_EQ(order->line, 6);
}

}  // namespace
