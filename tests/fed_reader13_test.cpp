// The HLA 1.3 FED reader: what reaches the target and in which order, every check of the form
// with its message, the silent failures, the transport warning, root replacement and skipping,
// and the verbose lines.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <ktl/fedReader13.h>
#include <ktl/ktlEnvironment.h>
#include <ktl/lstream.h>
#include <ktl/read.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fed_recorder.h"

using namespace KORRti;
using ktltest::FedRecorder;

namespace {

using ReadOutcome = ktltest::FedReadOutcome;

ReadOutcome readText(DtFedReader& reader, const std::string& text, DtFedTarget* target,
                     int level = 1) {
  return ktltest::readFedText(reader, text, target, level);
}

// A whole file around the given spaces, objects and interactions texts.
std::string fed(const std::string& spaces, const std::string& objects,
                const std::string& interactions) {
  return "(FED (Federation f) (FEDversion v1.3)\n (spaces " + spaces + ")\n (objects " + objects +
         ")\n (interactions " + interactions + "))\n";
}

const char* const theExample =
    "(FED\n"
    "  (Federation Example)\n"
    "  (FEDversion v1.3)\n"
    "  (spaces\n"
    "    (space S\n"
    "      (dimension D)))\n"
    "  (objects\n"
    "    (class ObjectRoot\n"
    "      (class Ship\n"
    "        (attribute a reliable timestamp))))\n"
    "  (interactions\n"
    "    (class InteractionRoot best_effort receive\n"
    "      (class I reliable receive\n"
    "        (parameter p)))))\n";

TEST(FedReader13, ExampleReachesTheTargetCallByCall) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, theExample, &target);
  EXPECT_EQ(outcome.result, 0);
  std::vector<std::string> expected = {
      "setFomType(1)",
      "addSpace(S)",
      "addSpaceDimension(S, D)",
      "addObjectClass(ObjectRoot, null)",
      "addObjectClass(ObjectRoot.Ship, ObjectRoot)",
      "addSpaceAttribute(ObjectRoot.Ship, a, 1, 1, null)",
      "addInteractionClass(InteractionRoot, null, 0, 0, null)",
      "addInteractionClass(InteractionRoot.I, InteractionRoot, 1, 0, null)",
      "addParameter(InteractionRoot.I, p)"};
  ASSERT_EQ(target.calls.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(target.calls[i], expected[i]) << i;
  EXPECT_EQ(target.fomType(), DtFomType13);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "");
}

TEST(FedReader13, VerboseLinesOfTheExample) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, theExample, &target, 3);
  EXPECT_EQ(outcome.result, 0);
  std::string tail =
      "Space: S\n"
      "Dimension: D\n"
      "Class: ObjectRoot, Base: none \n"
      "Class: ObjectRoot.Ship, Base: ObjectRoot \n"
      "Attribute: a, transport: reliable, order: timestamp\n"
      "Class: InteractionRoot, base: none, transport: best_effort, order: receive\n"
      "Class: InteractionRoot.I, base: InteractionRoot, transport: reliable, order: receive\n"
      "Parameter: p\n";
  ASSERT_GE(outcome.out.size(), tail.size());
  EXPECT_EQ(outcome.out.substr(outcome.out.size() - tail.size()), tail);
  EXPECT_EQ(outcome.out.find("Reading FED file: "), 0u);
}

TEST(FedReader13, SpacesOnAttributesAndInteractions) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome =
      readText(reader,
               fed("(space Geo (dimension X) (dimension Y)) (space Other)",
                   "(class ObjectRoot (class A (attribute pos best_effort receive Geo)))",
                   "(class InteractionRoot reliable timestamp (class Fire best_effort receive Geo "
                   "(parameter target) (parameter \"quoted name\")))"),
               &target, 3);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.callsOf("addSpace"),
            (std::vector<std::string>{"addSpace(Geo)", "addSpace(Other)"}));
  EXPECT_EQ(target.callsOf("addSpaceDimension"),
            (std::vector<std::string>{"addSpaceDimension(Geo, X)", "addSpaceDimension(Geo, Y)"}));
  EXPECT_EQ(target.callsOf("addSpaceAttribute"),
            (std::vector<std::string>{"addSpaceAttribute(ObjectRoot.A, pos, 0, 0, Geo)"}));
  EXPECT_EQ(target.callsOf("addInteractionClass")[1],
            "addInteractionClass(InteractionRoot.Fire, InteractionRoot, 0, 0, Geo)");
  EXPECT_EQ(target.callsOf("addParameter")[1], "addParameter(InteractionRoot.Fire, quoted name)");
  EXPECT_NE(outcome.out.find("Attribute: pos, transport: best_effort, order: receive, space: "
                             "Geo\n"),
            std::string::npos);
  EXPECT_NE(outcome.out.find("Class: InteractionRoot.Fire, base: InteractionRoot, transport: "
                             "best_effort, order: receive, space: Geo\n"),
            std::string::npos);
}

TEST(FedReader13, FileOrderIsKeptWithMixedAttributesAndClasses) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome =
      readText(reader,
               fed("",
                   "(class ObjectRoot (attribute r reliable receive) (class B (class C)) "
                   "(attribute s reliable receive))",
                   "(class InteractionRoot reliable receive)"),
               &target);
  EXPECT_EQ(outcome.result, 0);
  std::vector<std::string> expected = {"setFomType(1)",
                                       "addObjectClass(ObjectRoot, null)",
                                       "addSpaceAttribute(ObjectRoot, r, 1, 0, null)",
                                       "addObjectClass(ObjectRoot.B, ObjectRoot)",
                                       "addObjectClass(ObjectRoot.B.C, ObjectRoot.B)",
                                       "addSpaceAttribute(ObjectRoot, s, 1, 0, null)",
                                       "addInteractionClass(InteractionRoot, null, 1, 0, null)"};
  EXPECT_EQ(target.calls, expected);
}

TEST(FedReader13, OnlyCommentsFindNoFed) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, ";; nothing here\n;; nor here\n", &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Unable to find FED in fedfile");
  EXPECT_EQ(target.calls, (std::vector<std::string>{"setFomType(1)"}));
}

TEST(FedReader13, RootNamesCompareWithoutCaseButReachTheTargetAsWritten) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader,
                                 "(FED (Federation x) (FEDversion y) (spaces) (objects (class "
                                 "objectROOT)) (interactions (class INTERACTIONROOT reliable "
                                 "receive)))",
                                 &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.calls,
            (std::vector<std::string>{"setFomType(1)", "addObjectClass(objectROOT, null)",
                                      "addInteractionClass(INTERACTIONROOT, null, 1, 0, null)"}));
}

TEST(FedReader13, SecondTopLevelFormIsIgnored) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome =
      readText(reader, std::string(theExample) + "(this is not (looked at)) )))) \"", &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.calls.size(), 9u);
}

TEST(FedReader13, KeywordValuesIgnoreCase) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(
      reader,
      fed("",
          "(class ObjectRoot (attribute a BEST_EFFORT RECEIVE) (attribute b Reliable TimeStamp))",
          "(class InteractionRoot Best_Effort TIMESTAMP)"),
      &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.callsOf("addSpaceAttribute"),
            (std::vector<std::string>{"addSpaceAttribute(ObjectRoot, a, 0, 0, null)",
                                      "addSpaceAttribute(ObjectRoot, b, 1, 1, null)"}));
  EXPECT_EQ(target.callsOf("addInteractionClass"),
            (std::vector<std::string>{"addInteractionClass(InteractionRoot, null, 0, 1, null)"}));
}

TEST(FedReader13, BadAttributeTransportWarnsAndDeliversMinusOne) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader,
                                 fed("", "(class ObjectRoot (attribute a fast receive))",
                                     "(class InteractionRoot reliable receive)"),
                                 &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.err, "Invalid TransportType for Attribute: a");
  EXPECT_EQ(target.callsOf("addSpaceAttribute"),
            (std::vector<std::string>{"addSpaceAttribute(ObjectRoot, a, -1, 0, null)"}));
}

TEST(FedReader13, BadInteractionTransportWarnsAndDeliversMinusOne) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome =
      readText(reader,
               fed("", "(class ObjectRoot)",
                   "(class InteractionRoot reliable receive (class Shot lossy receive))"),
               &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.err, "Invalid TransportType for Interaction: Shot");
  EXPECT_EQ(target.callsOf("addInteractionClass")[1],
            "addInteractionClass(InteractionRoot.Shot, InteractionRoot, -1, 0, null)");
}

TEST(FedReader13, BadAttributeOrderFails) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader,
                                 fed("", "(class ObjectRoot (attribute a reliable slow))",
                                     "(class InteractionRoot reliable receive)"),
                                 &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Invalid OrderType for Attribute: a");
  EXPECT_TRUE(target.callsOf("addSpaceAttribute").empty());
  EXPECT_TRUE(target.callsOf("addInteractionClass").empty());
}

TEST(FedReader13, BadInteractionOrderFails) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(
      reader, fed("", "(class ObjectRoot)", "(class InteractionRoot reliable sometime)"), &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Invalid OrderType for Interaction: InteractionRoot");
  EXPECT_TRUE(target.callsOf("addInteractionClass").empty());
}

// Each wrong form, the message it leaves and the calls made before it.
struct FormCase {
  const char* what;
  std::string text;
  const char* message;
};

class FedReader13Forms : public ::testing::TestWithParam<FormCase> {};

TEST_P(FedReader13Forms, FailsWithItsMessage) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, GetParam().text, &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, GetParam().message);
}

const std::string theObjects = "(class ObjectRoot)";
const std::string theInteractions = "(class InteractionRoot reliable receive)";

INSTANTIATE_TEST_SUITE_P(
    Messages, FedReader13Forms,
    ::testing::Values(
        FormCase{"fed in lower case",
                 "(fed (Federation x) (FEDversion y) (spaces) (objects (class ObjectRoot)) "
                 "(interactions (class InteractionRoot reliable receive)))",
                 "Symbol \"FED\" not found"},
        FormCase{"no Federation",
                 "(FED (federation x) (FEDversion y) (spaces) (objects (class ObjectRoot)) "
                 "(interactions (class InteractionRoot reliable receive)))",
                 "Symbol \"Federation\" not found"},
        FormCase{"no FEDversion",
                 "(FED (Federation x) (version y) (spaces) (objects (class ObjectRoot)) "
                 "(interactions (class InteractionRoot reliable receive)))",
                 "Symbol \"FEDversion\" not found"},
        FormCase{"no spaces",
                 "(FED (Federation x) (FEDversion y) (routing) (objects (class ObjectRoot)) "
                 "(interactions (class InteractionRoot reliable receive)))",
                 "Symbol \"spaces\" not found"},
        FormCase{"no space", fed("(spice S)", theObjects, theInteractions),
                 "Symbol \"space\" not found"},
        FormCase{"space without name", fed("(space)", theObjects, theInteractions),
                 "A string must follow symbol \"space\""},
        FormCase{"space with a list for a name", fed("(space (S))", theObjects, theInteractions),
                 "A string must follow symbol \"space\""},
        FormCase{"no dimension", fed("(space S (dim D))", theObjects, theInteractions),
                 "Symbol \"dimension\" not found"},
        FormCase{"dimension without name",
                 fed("(space S (dimension 7))", theObjects, theInteractions),
                 "A string must follow symbol \"dimension\""},
        FormCase{"no objects",
                 "(FED (Federation x) (FEDversion y) (spaces) (things (class ObjectRoot)) "
                 "(interactions (class InteractionRoot reliable receive)))",
                 "Symbol \"objects\" not found"},
        FormCase{"other object root", fed("", "(class Root)", theInteractions),
                 "\"ObjectRoot\" not found"},
        FormCase{"object class not a class", fed("", "(klass ObjectRoot)", theInteractions),
                 "Symbol \"class\" not found"},
        FormCase{"subclass not a class",
                 fed("", "(class ObjectRoot (class A (attribute a reliable receive)) (klass B))",
                     theInteractions),
                 "Unexpected symbol found"},
        FormCase{"object class without name",
                 fed("", "(class ObjectRoot (class (A)))", theInteractions),
                 "A string must follow symbol \"class\""},
        FormCase{"bare word in a class", fed("", "(class ObjectRoot RANDOM)", theInteractions),
                 "Unexpected symbol found"},
        FormCase{"attribute spelled otherwise",
                 fed("", "(class ObjectRoot (Attribute a reliable receive))", theInteractions),
                 "Unexpected symbol found"},
        FormCase{"no interactions",
                 "(FED (Federation x) (FEDversion y) (spaces) (objects (class ObjectRoot)) "
                 "(messages (class InteractionRoot reliable receive)))",
                 "Symbol \"interactions\" not found"},
        FormCase{"other interaction root", fed("", theObjects, "(class Root reliable receive)"),
                 "\"InteractionRoot\" not found"},
        FormCase{"interaction class not a class",
                 fed("", theObjects,
                     "(class InteractionRoot reliable receive (klass B reliable receive))"),
                 "Unexpected symbol found"},
        FormCase{"interaction class with a list for a name",
                 fed("", theObjects,
                     "(class InteractionRoot reliable receive (class (B) reliable receive))"),
                 "A string must follow class"},
        FormCase{"parameter with two names",
                 fed("", theObjects, "(class InteractionRoot reliable receive (parameter a b))"),
                 "parameter must be followed by a single string"},
        FormCase{"parameter alone",
                 fed("", theObjects, "(class InteractionRoot reliable receive (parameter))"),
                 "parameter must be followed by a single string"},
        FormCase{"parameter with a list for a name",
                 fed("", theObjects, "(class InteractionRoot reliable receive (parameter (a)))"),
                 "A string must follow parameter"},
        FormCase{"parse error", "(FED (Federation x", "Unexpected problem reading fed file"}));

// Reads one form of text in env.
DtlObjPtr readForm(DtKtlEnvironment& env, const char* text) {
  DtlStringInputStream stream(text);
  return DtcRead(&stream, env.env());
}

TEST(FedReader13, FormsThatTheWalkersNeverPassOnAreCheckedInTheirSlots) {
  // The class walks only hand on forms that begin with their keyword, so these checks show
  // when a slot is called directly, as a subclass may do.
  DtKtlEnvironment env;
  DtFedReader13 reader;
  auto error = [&] { return std::string(reader.lastError().c_str()); };
  EXPECT_EQ(reader.processAttribute(readForm(env, "(attr a reliable receive)"), "C"), 2);
  EXPECT_EQ(error(), "Symbol \"attribute\" expected");
  EXPECT_EQ(reader.processParameter(readForm(env, "(param p)"), "C"), 2);
  EXPECT_EQ(error(), "Symbol \"parameter\" expected");
  EXPECT_EQ(reader.processObjClass(readForm(env, "(klass A)"), "ObjectRoot"), 2);
  EXPECT_EQ(error(), "Symbol \"class\" not found");
  EXPECT_EQ(reader.processIntClass(readForm(env, "(klass A reliable receive)"), "R"), 2);
  EXPECT_EQ(error(), "Symbol \"class\" not found");
  EXPECT_EQ(reader.processAttribute(readForm(env, "(attribute (a) reliable receive)"), "C"), 2);
  EXPECT_EQ(error(), "A string must follow attribute");
  EXPECT_EQ(reader.processDimension(readForm(env, "(dimension X)"), "S"), 0);
  EXPECT_EQ(reader.processAttribute(readForm(env, "(attribute a reliable receive)"), "C"), 0);
}

// Silent failures: result 2 and lastError() left as the earlier failure made it.
class FedReader13Silent : public ::testing::TestWithParam<FormCase> {};

TEST_P(FedReader13Silent, FailWithoutTouchingLastError) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome before = readText(reader, ";; empty", &target);
  ASSERT_EQ(before.error, "Unable to find FED in fedfile");
  ReadOutcome outcome = readText(reader, GetParam().text, &target);
  EXPECT_EQ(outcome.result, 2) << GetParam().what;
  EXPECT_EQ(outcome.error, "Unable to find FED in fedfile") << GetParam().what;
  EXPECT_EQ(outcome.err, "") << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Forms, FedReader13Silent,
    ::testing::Values(
        FormCase{"top form an atom", "FED", nullptr},
        FormCase{"top list of five",
                 "(FED (Federation x) (FEDversion y) (spaces) (objects (class ObjectRoot)))",
                 nullptr},
        FormCase{"top list of seven",
                 "(FED (Federation x) (FEDversion y) (spaces) (objects (class ObjectRoot)) "
                 "(interactions (class InteractionRoot reliable receive)) (extra))",
                 nullptr},
        FormCase{"dimension of three",
                 fed("(space S (dimension D E))", theObjects, theInteractions), nullptr},
        FormCase{"objects of three", fed("", "(class ObjectRoot) (class Other)", theInteractions),
                 nullptr},
        FormCase{"objects of one", fed("", "", theInteractions), nullptr},
        FormCase{"object class of one", fed("", "(class ObjectRoot (class))", theInteractions),
                 nullptr},
        FormCase{"attribute of three",
                 fed("", "(class ObjectRoot (attribute a reliable))", theInteractions), nullptr},
        FormCase{"attribute of six",
                 fed("", "(class ObjectRoot (attribute a reliable receive S x))", theInteractions),
                 nullptr},
        FormCase{"interactions of three", fed("", theObjects, theInteractions + " (class X)"),
                 nullptr},
        FormCase{"interaction class of three",
                 fed("", theObjects, "(class InteractionRoot reliable)"), nullptr}));

TEST(FedReader13, TopFormThatIsNoListSaysSoOnVerbose) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, "\"just a string\"", &target, 3);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "");
  EXPECT_NE(outcome.out.find("File is not a fed file\n"), std::string::npos);
}

TEST(FedReader13, FailureKeepsWhatWasDelivered) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(
      reader,
      fed("(space S)", "(class ObjectRoot (class A) (class B (attribute x)))", theInteractions),
      &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(target.calls, (std::vector<std::string>{"setFomType(1)", "addSpace(S)",
                                                    "addObjectClass(ObjectRoot, null)",
                                                    "addObjectClass(ObjectRoot.A, ObjectRoot)",
                                                    "addObjectClass(ObjectRoot.B, ObjectRoot)"}));
}

TEST(FedReader13, NoFileGiven) {
  DtFedReader13 reader;
  FedRecorder target;
  int result = reader.readFedFilePtr(nullptr, &target, DtFilename("x.fed"), 0, false, false);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "No Fed File Given");
  EXPECT_EQ(target.calls, (std::vector<std::string>{"setFomType(1)"}));
}

TEST(FedReader13, UnreadableOpenFileFindsNoFedWithoutAWarning) {
  // A directory opens, and reading it gets nothing: an empty text with no form in it.
  char name[] = "/tmp/fed-dir-XXXXXX";
  ASSERT_NE(mkdtemp(name), nullptr);
  std::string path = std::string(name) + "/model.fed";
  ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
  DtFedReader13 reader;
  FedRecorder target;
  int result = -1;
  ktltest::Captured output = ktltest::captureOutput(
      [&] { result = reader.readFed(path.c_str(), &target, 0, false, false); });
  rmdir(path.c_str());
  rmdir(name);
  EXPECT_EQ(result, 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "Unable to find FED in fedfile");
  EXPECT_EQ(output.err, "");
  EXPECT_EQ(target.calls, (std::vector<std::string>{"setFomType(1)"}));
}

TEST(FedReader13, MissingFileGivesOneAndKeepsLastError) {
  DtFedReader13 reader;
  FedRecorder target;
  int result = reader.readFed("/nonexistent/dir/none.fed", &target, 0, false, false);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "");
  EXPECT_TRUE(target.calls.empty());
}

TEST(FedReader13, NullTargetIsRefusedWithoutCrashing) {
  // The reader tells the target the format before anything else; without one it can't read.
  DtFedReader13 reader;
  std::string path = ktltest::writeTempFile(theExample, ".fed");
  FILE* file = fopen(path.c_str(), "rt");
  ASSERT_NE(file, nullptr);
  int result = reader.readFedFilePtr(file, nullptr, DtFilename(path.c_str()), 0, false, false);
  fclose(file);
  EXPECT_EQ(result, 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "No FED target given");
  EXPECT_EQ(reader.readFed(path.c_str(), nullptr, 0, false, false), 2);
}

TEST(FedReader13, StrictCheckingIsStoredAndChangesNothing) {
  DtFedReader13 reader;
  for (unsigned int mask : {0u, 1u, 2u, 3u}) {
    FedRecorder target;
    std::string path = ktltest::writeTempFile(theExample, ".fed");
    int result = 0;
    ktltest::captureOutput(
        [&] { result = reader.readFed(path.c_str(), &target, mask, true, true); });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(target.calls.size(), 9u);
    EXPECT_EQ(reader.setStrictChecking(0), mask);
  }
}

TEST(FedReader13, TextOfTheFileStaysForTakeCurrFddData) {
  DtFedReader13 reader;
  FedRecorder target;
  ASSERT_EQ(readText(reader, theExample, &target).result, 0);
  char* data = reader.takeCurrFddData();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(std::string(data), theExample);
  delete[] data;
  EXPECT_EQ(reader.takeCurrFddData(), nullptr);
}

const std::string theManagedFile =
    fed("",
        "(class ObjectRoot (attribute privilegeToDelete reliable timestamp)"
        " (class RTIprivate (class Deeper))"
        " (class Manager (class Federate (attribute FederateHandle reliable receive)))"
        " (class ManagerOfFleet)"
        " (class Ship (attribute pos best_effort receive) (class Boat)))",
        "(class InteractionRoot reliable receive"
        " (class RTIprivate reliable receive)"
        " (class Manager reliable receive (class Federate reliable receive (parameter p)))"
        " (class Fire reliable receive (parameter power)))");

TEST(FedReader13, ReplacedRootsSkipManagementClasses) {
  DtFedReader13 reader;
  FedRecorder target;
  target.refusedObjects = {"ObjectRoot"};
  target.refusedInteractions = {"InteractionRoot"};
  ReadOutcome outcome = readText(reader, theManagedFile, &target, 3);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  std::vector<std::string> expected = {
      "setFomType(1)",
      "addObjectClass(ObjectRoot, null)",
      "addObjectClass(HLAobjectRoot, null)",
      "addSpaceAttribute(HLAobjectRoot, privilegeToDelete, 1, 1, null)",
      "addObjectClass(HLAobjectRoot.Ship, HLAobjectRoot)",
      "addSpaceAttribute(HLAobjectRoot.Ship, pos, 0, 0, null)",
      "addObjectClass(HLAobjectRoot.Ship.Boat, HLAobjectRoot.Ship)",
      "addInteractionClass(InteractionRoot, null, 1, 0, null)",
      "addInteractionClass(HLAinteractionRoot, null, 1, 0, null)",
      "addInteractionClass(HLAinteractionRoot.Fire, HLAinteractionRoot, 1, 0, null)",
      "addParameter(HLAinteractionRoot.Fire, power)"};
  EXPECT_EQ(target.calls, expected);
  std::string objectLines =
      "Class: ObjectRoot, Base: none \n"
      "Replacing ObjectRoot with HLAobjectRoot to match Federation FOM.\n"
      "Attributes and subclasses will be attempted with replacement root.\n"
      "Attribute: privilegeToDelete, transport: reliable, order: timestamp\n"
      "Skip Class: HLAobjectRoot.RTIprivate, Base: HLAobjectRoot \n"
      "All subclasses and parameters will also be skipped.\n"
      "Skip Class: HLAobjectRoot.Manager, Base: HLAobjectRoot \n"
      "All subclasses and parameters will also be skipped.\n"
      "Skip Class: HLAobjectRoot.ManagerOfFleet, Base: HLAobjectRoot \n"
      "All subclasses and parameters will also be skipped.\n"
      "Class: HLAobjectRoot.Ship, Base: HLAobjectRoot \n";
  EXPECT_NE(outcome.out.find(objectLines), std::string::npos) << outcome.out;
  std::string interactionLines =
      "Class: InteractionRoot, base: none, transport: reliable, order: receive\n"
      "Replacing InteractionRoot with HLAinteractionRoot to match Federation FOM.\n"
      "Parameters and subclasses will be attempted with replacement root.\n"
      "Skip Class: HLAinteractionRoot.RTIprivate, base: HLAinteractionRoot, transport: "
      "reliable, order: receive\n"
      "All subclasses and parameters will also be skipped.\n";
  EXPECT_NE(outcome.out.find(interactionLines), std::string::npos) << outcome.out;
}

TEST(FedReader13, ReplacementFlagsStayForTheNextRead) {
  DtFedReader13 reader;
  FedRecorder first;
  first.refusedObjects = {"ObjectRoot"};
  ASSERT_EQ(readText(reader, theManagedFile, &first).result, 0);
  // A target that takes ObjectRoot: the Manager classes are still skipped on this reader.
  FedRecorder second;
  ASSERT_EQ(readText(reader, theManagedFile, &second).result, 0);
  std::vector<std::string> objects = second.callsOf("addObjectClass");
  EXPECT_EQ(objects, (std::vector<std::string>{"addObjectClass(ObjectRoot, null)",
                                               "addObjectClass(ObjectRoot.Ship, ObjectRoot)",
                                               "addObjectClass(ObjectRoot.Ship.Boat, "
                                               "ObjectRoot.Ship)"}));
  // Interactions were not replaced on the first read: nothing of them is skipped.
  EXPECT_EQ(second.callsOf("addInteractionClass").size(), 5u);
}

TEST(FedReader13, TargetRefusingEverythingFailsAtTheRootWithoutText) {
  DtFedReader13 reader;
  FedRecorder target;
  target.refuseAll = true;
  ReadOutcome outcome = readText(reader, theExample, &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(target.callsOf("addObjectClass"),
            (std::vector<std::string>{"addObjectClass(ObjectRoot, null)",
                                      "addObjectClass(HLAobjectRoot, null)"}));
  EXPECT_TRUE(target.callsOf("addInteractionClass").empty());
}

TEST(FedReader13, RefusedManagementClassIsSkippedWithItsSubtree) {
  DtFedReader13 reader;
  FedRecorder target;
  target.refusedObjects = {"ObjectRoot.Manager.Federate"};
  target.refusedInteractions = {"InteractionRoot.Manager.Federate"};
  ReadOutcome outcome = readText(reader, theManagedFile, &target);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  for (const std::string& call : target.calls) {
    EXPECT_EQ(call.find("FederateHandle"), std::string::npos) << call;
    EXPECT_EQ(call.find("addParameter(InteractionRoot.Manager.Federate"), std::string::npos);
  }
  EXPECT_EQ(target.callsOf("addObjectClass").size(), 8u);
  EXPECT_EQ(target.callsOf("addInteractionClass").size(), 5u);
}

TEST(FedReader13, RefusedOrdinaryClassFailsWithoutText) {
  DtFedReader13 reader;
  FedRecorder target;
  target.refusedObjects = {"ObjectRoot.Ship"};
  ReadOutcome outcome = readText(reader, theExample, &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(target.callsOf("addSpaceAttribute").empty());
}

TEST(FedReader13, InteractionRootWithSpaceRetriesByTargetFormat) {
  const std::string text = fed("(space S)", theObjects,
                               "(class InteractionRoot reliable receive S (class A reliable "
                               "receive))");
  {
    DtFedReader13 reader;
    FedRecorder target;
    target.refusedInteractions = {"InteractionRoot"};
    ReadOutcome outcome = readText(reader, text, &target, 3);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(target.callsOf("addInteractionClass"),
              (std::vector<std::string>{
                  "addInteractionClass(InteractionRoot, null, 1, 0, S)",
                  "addInteractionClass(HLAinteractionRoot, null, 1, 0, S)",
                  "addInteractionClass(HLAinteractionRoot.A, HLAinteractionRoot, 1, 0, null)"}));
    // No flag and no lines with a space.
    EXPECT_EQ(outcome.out.find("Replacing InteractionRoot"), std::string::npos);
  }
  {
    DtFedReader13 reader;
    FedRecorder target;
    target.fomTypeAnswer = DtFomTypeEvolved;
    target.refusedInteractions = {"InteractionRoot"};
    ReadOutcome outcome = readText(reader, text, &target);
    EXPECT_EQ(outcome.result, 2);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(target.callsOf("addInteractionClass"),
              (std::vector<std::string>{"addInteractionClass(InteractionRoot, null, 1, 0, S)",
                                        "addInteractionClass(InteractionRoot, null, 1, 0, S)"}));
  }
}

TEST(FedReader13, SkippedInteractionWithSpaceSaysSoWithItsSpace) {
  DtFedReader13 reader;
  FedRecorder target;
  target.refusedInteractions = {"InteractionRoot"};
  ReadOutcome outcome =
      readText(reader,
               fed("(space S)", theObjects,
                   "(class InteractionRoot reliable receive (class Manager best_effort timestamp S "
                   "(parameter p)) (class Fire reliable receive S))"),
               &target, 3);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_EQ(target.callsOf("addInteractionClass"),
            (std::vector<std::string>{
                "addInteractionClass(InteractionRoot, null, 1, 0, null)",
                "addInteractionClass(HLAinteractionRoot, null, 1, 0, null)",
                "addInteractionClass(HLAinteractionRoot.Fire, HLAinteractionRoot, 1, 0, S)"}));
  EXPECT_TRUE(target.callsOf("addParameter").empty());
  EXPECT_NE(outcome.out.find("Skip Class: HLAinteractionRoot.Manager, base: HLAinteractionRoot, "
                             "transport: best_effort, order: timestamp, space: S\n"
                             "All subclasses and parameters will also be skipped.\n"
                             "Class: HLAinteractionRoot.Fire, base: HLAinteractionRoot, "
                             "transport: reliable, order: receive, space: S\n"),
            std::string::npos)
      << outcome.out;
}

TEST(FedReader13, RefusedManagementInteractionWithSpaceIsFatal) {
  DtFedReader13 reader;
  FedRecorder target;
  target.refusedInteractions = {"InteractionRoot.Manager"};
  ReadOutcome outcome =
      readText(reader,
               fed("(space S)", theObjects,
                   "(class InteractionRoot reliable receive (class Manager reliable receive S))"),
               &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "");
}

TEST(FedReader13, NumberWhereASpaceNameStandsFails) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome =
      readText(reader, fed("", theObjects, "(class InteractionRoot reliable receive 42)"), &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Invalid space for Interaction: InteractionRoot");
  outcome = readText(
      reader, fed("", "(class ObjectRoot (attribute a reliable receive 7))", theInteractions),
      &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Invalid space for Attribute: a");
}

// A chain of nested classes of this depth under ObjectRoot.
std::string nested(int depth) {
  std::string objects = "(class ObjectRoot ";
  for (int i = 0; i < depth; ++i) objects += "(class C" + std::to_string(i) + " ";
  objects += std::string(depth, ')') + ")";
  return fed("", objects, theInteractions);
}

TEST(FedReader13, DeeplyNestedClassesRead) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, nested(900), &target);
  EXPECT_EQ(outcome.result, 0);
  ASSERT_EQ(target.callsOf("addObjectClass").size(), 901u);
  std::string last = target.callsOf("addObjectClass").back();
  EXPECT_EQ(last.find("addObjectClass(ObjectRoot.C0.C1.C2."), 0u);
}

TEST(FedReader13, NestingBeyondTheLispReaderFailsCleanly) {
  DtFedReader13 reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, nested(5000), &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Unexpected problem reading fed file");
  EXPECT_EQ(target.calls, (std::vector<std::string>{"setFomType(1)"}));
}

// A subclass that replaces one form: the walkers reach it through the slot.
class CountingReader : public DtFedReader13 {
 public:
  int attributes = 0;
  int processAttribute(DtlObjPtr, const char*) override {
    ++attributes;
    return 0;
  }
};

TEST(FedReader13, SlotsCanBeReplaced) {
  CountingReader reader;
  FedRecorder target;
  ReadOutcome outcome = readText(
      reader,
      fed("", "(class ObjectRoot (attribute a reliable receive) (class B (attribute b x y)))",
          theInteractions),
      &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(reader.attributes, 2);
  EXPECT_TRUE(target.callsOf("addSpaceAttribute").empty());
}

TEST(FedReader13, ExpectedTypeIsOneAndLastTypeZero) {
  DtFedReader13 reader;
  EXPECT_EQ(reader.expectedFomType(), DtFomType13);
  EXPECT_EQ(reader.lastFomType(), DtFomTypeUnknown);
  FedRecorder target;
  readText(reader, theExample, &target);
  EXPECT_EQ(reader.lastFomType(), DtFomTypeUnknown);
}

}  // namespace
