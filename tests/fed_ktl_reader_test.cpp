// The older reader of the 1.3 text form: the same walk and checks as DtFedReader13, without
// root replacement or skipping, without telling the target the format, and without keeping the
// text.
#include <gtest/gtest.h>

#include <cstdio>
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

using ReadOutcome = ktltest::FedReadOutcome;

ReadOutcome readText(DtFedReader& reader, const std::string& text, DtFedTarget* target,
                     int level = 1) {
  return ktltest::readFedTextFromFile(reader, text, target, level);
}

const char* const theExample =
    "(FED (Federation Example) (FEDversion v1.3)\n"
    "  (spaces (space S (dimension D)))\n"
    "  (objects (class ObjectRoot (class Ship (attribute a reliable timestamp))))\n"
    "  (interactions (class InteractionRoot best_effort receive\n"
    "    (class I reliable receive (parameter p)))))\n";

const char* const theManaged =
    "(FED (Federation x) (FEDversion y) (spaces (space S))\n"
    "  (objects (class ObjectRoot (class Manager (class Federate (attribute h reliable "
    "receive))) (class RTIprivate) (class Ship)))\n"
    "  (interactions (class InteractionRoot reliable receive S\n"
    "    (class Manager reliable receive (parameter q)) (class Fire best_effort timestamp))))\n";

TEST(KtlFedReader, ExampleReachesTheTargetWithoutTheFormat) {
  DtKtlFedReader reader;
  FedRecorder target;
  target.setFomType(DtFomType2025);
  target.calls.clear();
  ReadOutcome outcome = readText(reader, theExample, &target);
  EXPECT_EQ(outcome.result, 0);
  std::vector<std::string> expected = {
      "addSpace(S)",
      "addSpaceDimension(S, D)",
      "addObjectClass(ObjectRoot, null)",
      "addObjectClass(ObjectRoot.Ship, ObjectRoot)",
      "addSpaceAttribute(ObjectRoot.Ship, a, 1, 1, null)",
      "addInteractionClass(InteractionRoot, null, 0, 0, null)",
      "addInteractionClass(InteractionRoot.I, InteractionRoot, 1, 0, null)",
      "addParameter(InteractionRoot.I, p)"};
  EXPECT_EQ(target.calls, expected);
  // The target's format is not changed by a read.
  EXPECT_EQ(target.fomType(), DtFomType2025);
  EXPECT_EQ(reader.expectedFomType(), DtFomType13);
}

TEST(KtlFedReader, RefusedRootIsStillOfferedItsClasses) {
  DtKtlFedReader reader;
  FedRecorder target;
  target.refuseAll = true;
  ReadOutcome outcome = readText(reader, theManaged, &target);
  EXPECT_EQ(outcome.result, 0);
  std::vector<std::string> expected = {
      "addSpace(S)",
      "addObjectClass(ObjectRoot, null)",
      "addObjectClass(ObjectRoot.Manager, ObjectRoot)",
      "addObjectClass(ObjectRoot.Manager.Federate, ObjectRoot.Manager)",
      "addSpaceAttribute(ObjectRoot.Manager.Federate, h, 1, 0, null)",
      "addObjectClass(ObjectRoot.RTIprivate, ObjectRoot)",
      "addObjectClass(ObjectRoot.Ship, ObjectRoot)",
      "addInteractionClass(InteractionRoot, null, 1, 0, S)",
      "addInteractionClass(InteractionRoot.Manager, InteractionRoot, 1, 0, null)",
      "addParameter(InteractionRoot.Manager, q)",
      "addInteractionClass(InteractionRoot.Fire, InteractionRoot, 0, 1, null)"};
  EXPECT_EQ(target.calls, expected);
}

TEST(KtlFedReader, ManagerClassesReachTheTarget) {
  DtKtlFedReader reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, theManaged, &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.callsOf("addObjectClass")[1], "addObjectClass(ObjectRoot.Manager, ObjectRoot)");
}

TEST(KtlFedReader, VerboseLines) {
  DtKtlFedReader reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, theManaged, &target, 3);
  EXPECT_EQ(outcome.result, 0);
  std::string expected =
      "Space: S\n"
      "Class: ObjectRoot, Base: none \n"
      "Class: ObjectRoot.Manager, Base: ObjectRoot \n"
      "Class: ObjectRoot.Manager.Federate, Base: ObjectRoot.Manager \n"
      "Attribute: h, transport: reliable, order: receive\n"
      "Class: ObjectRoot.RTIprivate, Base: ObjectRoot \n"
      "Class: ObjectRoot.Ship, Base: ObjectRoot \n"
      "Class: InteractionRoot, base: none, transport: reliable, order: receive, space: S\n"
      "Class: InteractionRoot.Manager, base: InteractionRoot, transport: reliable, order: "
      "receive\n"
      "Parameter: q\n"
      "Class: InteractionRoot.Fire, base: InteractionRoot, transport: best_effort, order: "
      "timestamp\n";
  EXPECT_EQ(outcome.out, expected);
}

TEST(KtlFedReader, TextIsNotKept) {
  DtKtlFedReader reader;
  FedRecorder target;
  ASSERT_EQ(readText(reader, theExample, &target).result, 0);
  EXPECT_EQ(reader.takeCurrFddData(), nullptr);
}

TEST(KtlFedReader, NullTargetParsesAndDeliversNothing) {
  DtKtlFedReader reader;
  EXPECT_EQ(readText(reader, theExample, nullptr).result, 0);
  ReadOutcome bad = readText(reader,
                             "(FED (Federation x) (FEDversion y) (spaces) (objects "
                             "(class ObjectRoot (attribute a reliable never))) "
                             "(interactions (class InteractionRoot reliable receive)))",
                             nullptr);
  EXPECT_EQ(bad.result, 2);
  EXPECT_EQ(bad.error, "Invalid OrderType for Attribute: a");
}

TEST(KtlFedReader, ReadFedWithNullTargetFailsInTheBase) {
  DtKtlFedReader reader;
  std::string path = ktltest::writeTempFile(theExample, ".fed");
  EXPECT_EQ(reader.readFed(path.c_str(), nullptr, 0, false, false), 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "No FED target given");
}

TEST(KtlFedReader, ReadFedFindsTheFile) {
  DtKtlFedReader reader;
  FedRecorder target;
  std::string path = ktltest::writeTempFile(theExample, ".fed");
  int result = -1;
  ktltest::captureOutput([&] { result = reader.readFed(path.c_str(), &target, 0, false, false); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(target.calls.size(), 8u);
}

TEST(KtlFedReader, NullFileWarnsAndFindsNoFed) {
  // There is no "No Fed File Given" here: the empty read finds no form.
  DtKtlFedReader reader;
  FedRecorder target;
  int result = -1;
  ktltest::Captured output = ktltest::captureOutput([&] {
    result = reader.readFedFilePtr(nullptr, &target, DtFilename("x.fed"), 0, false, false);
  });
  EXPECT_EQ(result, 2);
  EXPECT_EQ(output.err, "DtFedReader::readFileIntoBuffer: FileHandle not initialized\n");
  EXPECT_EQ(std::string(reader.lastError().c_str()), "Unable to find FED in fedfile");
  EXPECT_TRUE(target.calls.empty());
}

TEST(KtlFedReader, SameChecksAndMessages) {
  DtKtlFedReader reader;
  FedRecorder target;
  ReadOutcome outcome = readText(reader, ";; only a comment", &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Unable to find FED in fedfile");
  outcome = readText(reader,
                     "(fed (Federation x) (FEDversion y) (spaces) (objects (class "
                     "ObjectRoot)) (interactions (class InteractionRoot reliable receive)))",
                     &target);
  EXPECT_EQ(outcome.error, "Symbol \"FED\" not found");
  outcome = readText(reader,
                     "(FED (Federation x) (FEDversion y) (spaces) (objects (class "
                     "ObjectRoot (attribute a fast receive))) (interactions (class "
                     "InteractionRoot lossy receive (parameter)))) ",
                     &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.err,
            "Invalid TransportType for Attribute: aInvalid TransportType for Interaction: "
            "InteractionRoot");
  EXPECT_EQ(outcome.error, "parameter must be followed by a single string");
  outcome = readText(reader, "(FED (Federation x", &target);
  EXPECT_EQ(outcome.error, "Unexpected problem reading fed file");
  outcome = readText(reader,
                     "(FED (Federation x) (FEDversion y) (spaces) (objects (class "
                     "ObjectRoot junk)) (interactions (class InteractionRoot reliable "
                     "receive)))",
                     &target);
  EXPECT_EQ(outcome.error, "Unexpected symbol found");
}

TEST(KtlFedReader, SilentFailureKeepsLastError) {
  DtKtlFedReader reader;
  FedRecorder target;
  readText(reader, ";;", &target);
  ReadOutcome outcome = readText(reader, "(FED (Federation x))", &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Unable to find FED in fedfile");
}

TEST(KtlFedReader, EarlierBufferIsNotTouched) {
  // A reader that never keeps text has nothing to hand over after any number of reads.
  DtKtlFedReader reader;
  FedRecorder target;
  readText(reader, theExample, &target);
  readText(reader, theExample, &target);
  EXPECT_EQ(reader.takeCurrFddData(), nullptr);
}

}  // namespace
