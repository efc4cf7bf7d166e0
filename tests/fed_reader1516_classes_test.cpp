// The IEEE 1516-2000 reader's class trees and dimensions: what reaches the target and in which
// order, the attribute and interaction defaults, the getters' tables, the root replacement with
// its skip rules, the dimension lists of attributes and interactions, and every check of a
// dimension with its message.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader1516.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"

using namespace KORRti;
using namespace ktltest;

namespace {

// A whole document whose objects section holds the given object classes.
std::string withObjects(const std::string& classes, const std::string& more = "") {
  return completeFdd(more + "<objects>\n" + classes + "</objects>\n");
}

// A whole document whose interactions section holds the given interaction classes.
std::string withInteractions(const std::string& classes, const std::string& more = "") {
  return completeFdd(more + "<interactions>\n" + classes + "</interactions>\n");
}

// The calls that deliver classes, attributes, parameters and dimensions.
Calls modelCalls(const FddRecorder& target) {
  Calls found;
  for (const std::string& call : target.calls) {
    for (const char* operation :
         {"addObjectClass(", "addAttribute(", "addAttributeDimension(", "addInteractionClass(",
          "addParameter(", "addInteractionDimension(", "addDimension("}) {
      if (call.rfind(operation, 0) == 0) found.push_back(call);
    }
  }
  return found;
}

// Reads text, which holds a "bogus" top-level tag before its classes, into a recorder that
// refuses what refuse says. A refusal fails the read but leaves no text of its own: the error is
// still the tag's.
std::unique_ptr<FddRun> expectRefusalFails(const std::string& text, const FddSetUp& refuse) {
  return expectRead(text, 2, "Unrecognized top-level tag: bogus", FddReadOptions(), refuse);
}

// A member (attribute or parameter, delivered by operation) with no name fails the read before
// any member of its class, even a later one with a name, is delivered.
void expectNamelessMemberFails(const std::string& text, const std::string& error,
                               const std::string& operation) {
  EXPECT_TRUE(expectRead(text, 2, error)->target.callsOf(operation).empty());
}

// ---------------------------------------------------------------------------------------------
// A small document, call by call

TEST(FedReader1516Classes, ASmallDocumentCallByCall) {
  const std::string text = fddDocument(
      "<objects>\n"
      "<objectClass name=\"HLAobjectRoot\">\n"
      "  <attribute name=\"HLAprivilegeToDelete\" transportation=\"HLAreliable\" "
      "order=\"TimeStamp\"/>\n"
      "  <objectClass name=\"Base\" semantics=\"b\">\n"
      "    <objectClass name=\"Leaf\"/>\n"
      "    <attribute name=\"x\" transportation=\"HLAbestEffort\" order=\"Receive\" "
      "sharing=\"Publish\" updateType=\"Periodic\" updateCondition=\"1 Hz\" ownership=\"Divest\" "
      "semantics=\"pos\" dimensions=\"D1 Federate\"/>\n"
      "  </objectClass>\n"
      "</objectClass>\n"
      "</objects>\n"
      "<interactions>\n"
      "<interactionClass name=\"HLAinteractionRoot\" transportation=\"HLAreliable\" "
      "order=\"Receive\" dimensions=\"NA\">\n"
      "  <interactionClass name=\"Fire\" transportation=\"HLAbestEffort\" order=\"TimeStamp\" "
      "dimensions=\"D1\">\n"
      "    <parameter name=\"p1\"/>\n"
      "    <parameter name=\"p2\"/>\n"
      "  </interactionClass>\n"
      "</interactionClass>\n"
      "</interactions>\n"
      "<switches/>\n"
      "<transportations><transportation name=\"HLAreliable\"/></transportations>\n"
      "<dimensions>\n"
      "<dimension name=\"D1\" upperBound=\"10\" value=\"[2..5)\"/>\n"
      "<dimension name=\"Federate\" normalization=\"linear\"/>\n"
      "</dimensions>\n"
      "<dataTypes/><notes/><time/><synchronizations/>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target, strict(1));
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_EQ(outcome.error, "");
  Calls expected = {
      "setFomType(2)",
      "addDimension(D1, 10, 2, 5, false, )",
      "addDimension(Federate, 18446744073709551615, 0, 1, false, linear)",
      "hasTransportation(HLAreliable)",
      "addTransportation(HLAreliable)",
      "addObjectClass(HLAobjectRoot, null)",
      "addAttribute(HLAobjectRoot, HLAprivilegeToDelete, 1, 1, 0, 3, , 3, , 0)",
      "addObjectClass(HLAobjectRoot.Base, HLAobjectRoot)",
      "addObjectClass(HLAobjectRoot.Base.Leaf, HLAobjectRoot.Base)",
      "addAttribute(HLAobjectRoot.Base, x, 0, 0, 1, 1, 1 Hz, 0, pos, 0)",
      "addAttributeDimension(HLAobjectRoot.Base, x, D1)",
      "addAttributeDimension(HLAobjectRoot.Base, x, Federate)",
      "addInteractionClass(HLAinteractionRoot, null, 1, 0, null)",
      "addInteractionClass(HLAinteractionRoot.Fire, HLAinteractionRoot, 0, 1, null)",
      "addInteractionDimension(HLAinteractionRoot.Fire, D1)",
      "addParameter(HLAinteractionRoot.Fire, p1)",
      "addParameter(HLAinteractionRoot.Fire, p2)",
  };
  // An empty switches section still calls the seven setters.
  const Calls pushes = switchPushes();
  expected.insert(expected.end(), pushes.begin(), pushes.end());
  EXPECT_EQ(target.calls, expected);
}

TEST(FedReader1516Classes, AttributeDefaults) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome =
      readFddText(reader,
                  withObjects("<objectClass name=\"HLAobjectRoot\"><attribute name=\"a\"/>"
                              "</objectClass>\n"),
                  &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  // Absent transportation and order read as "not given"; the other columns take their defaults.
  EXPECT_EQ(modelCalls(target), (Calls{"addObjectClass(HLAobjectRoot, null)",
                                       "addAttribute(HLAobjectRoot, a, -1, -1, 0, 3, , 3, , 0)"}));
}

TEST(FedReader1516Classes, AttributeColumns) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      withObjects("<objectClass name=\"HLAobjectRoot\">\n"
                  "<attribute name=\"a\" sharing=\"Subscribe\" ownership=\"DivestAcquire\" "
                  "updateType=\"Conditional\" updateCondition=\"on change\"/>\n"
                  "<attribute name=\"b\" sharing=\"Neither\" ownership=\"Acquire\" "
                  "updateType=\"Static\"/>\n"
                  "<attribute name=\"c\" sharing=\"PublishSubscribe\" ownership=\"NoTransfer\" "
                  "updateType=\"NA\"/>\n"
                  "<attribute name=\"d\" sharing=\"Both\" ownership=\"Keep\" updateType=\"Often\" "
                  "transportation=\"Carrier\"/>\n"
                  "</objectClass>\n"),
      &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(modelCalls(target),
            (Calls{"addObjectClass(HLAobjectRoot, null)",
                   "addAttribute(HLAobjectRoot, a, -1, -1, 2, 2, on change, 2, , 0)",
                   "addAttribute(HLAobjectRoot, b, -1, -1, 3, 0, , 1, , 0)",
                   "addAttribute(HLAobjectRoot, c, -1, -1, 0, 3, , 3, , 0)",
                   "addAttribute(HLAobjectRoot, d, -1, -1, 0, 3, , 3, , 0)"}));
  EXPECT_TRUE(contains(outcome.err, "Invalid TransportType: Carrier")) << outcome.err;
}

TEST(FedReader1516Classes, AnInvalidTransportTypeIsAWarning) {
  const std::string text = withObjects(
      "<objectClass name=\"HLAobjectRoot\"><attribute name=\"a\" "
      "transportation=\"Carrier\"/></objectClass>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(contains(outcome.err, "Invalid TransportType: Carrier")) << outcome.err;
  EXPECT_TRUE(target.called("addAttribute(HLAobjectRoot, a, -1, -1, 0, 3, , 3, , 0)"));
  // DtWarn is silent below level 1.
  DtFedReader1516 quiet;
  FddRecorder quietTarget;
  FddReadOptions options = strict(1, 0);
  outcome = readFddText(quiet, text, &quietTarget, options);
  EXPECT_EQ(outcome.err, "");
}

// ---------------------------------------------------------------------------------------------
// The getters

struct GetterCase {
  const char* attributes;
  int value;
};

template <typename Value, typename Get>
void checkGetter(const char* name, const std::vector<GetterCase>& cases, Value start, Get get) {
  for (const GetterCase& c : cases) {
    Probe1516 reader;
    ParsedXml doc(std::string("<e ") + c.attributes + "/>");
    Value value = start;
    int status = -1;
    captureOutput([&] { status = (reader.*get)(doc.root(), value); });
    EXPECT_EQ(status, 0) << name << " " << c.attributes;
    EXPECT_EQ(static_cast<int>(value), c.value) << name << " " << c.attributes;
  }
}

TEST(FedReader1516Getters, TheirTables) {
  checkGetter<DtTransportType>("transport",
                               {{"", -1},
                                {"transportation=\"HLAbestEffort\"", 0},
                                {"transportation=\"HLAreliable\"", 1},
                                {"transportation=\"Carrier\"", -1}},
                               7, &DtFedReader1516::getTransportType);
  checkGetter<DtOrderType>("order",
                           {{"", -1}, {"order=\"Receive\"", 0}, {"order=\"TimeStamp\"", 1}}, 7,
                           &DtFedReader1516::getOrderType);
  checkGetter<DtSharingType_enum>("sharing",
                                  {{"", 0},
                                   {"sharing=\"PublishSubscribe\"", 0},
                                   {"sharing=\"Publish\"", 1},
                                   {"sharing=\"Subscribe\"", 2},
                                   {"sharing=\"Neither\"", 3},
                                   {"sharing=\"publish\"", 0}},
                                  DtSharingInvalid, &DtFedReader1516::getSharingType);
  checkGetter<DtOwnershipType_enum>("ownership",
                                    {{"", 3},
                                     {"ownership=\"Divest\"", 0},
                                     {"ownership=\"Acquire\"", 1},
                                     {"ownership=\"DivestAcquire\"", 2},
                                     {"ownership=\"NoTransfer\"", 3},
                                     {"ownership=\"Keep\"", 3}},
                                    DtOwnershipDivest, &DtFedReader1516::getOwnershipType);
  checkGetter<DtFomUpdateType_enum>("updateType",
                                    {{"", 3},
                                     {"updateType=\"Static\"", 0},
                                     {"updateType=\"Periodic\"", 1},
                                     {"updateType=\"Conditional\"", 2},
                                     {"updateType=\"NA\"", 3},
                                     {"updateType=\"Often\"", 3}},
                                    DtFomUpdateStatic, &DtFedReader1516::getUpdateType);
}

TEST(FedReader1516Getters, TextGetters) {
  Probe1516 reader;
  ParsedXml full("<e semantics=\"s\" updateCondition=\"u\" notes=\"n\"/>");
  ParsedXml none("<e/>");
  DtString value("old");
  EXPECT_EQ(reader.getSemantics(full.root(), value), 0);
  EXPECT_EQ(str(value), "s");
  EXPECT_EQ(reader.getSemantics(none.root(), value), 0);
  EXPECT_EQ(str(value), "");
  value = "old";
  EXPECT_EQ(reader.getUpdateCondition(full.root(), value), 0);
  EXPECT_EQ(str(value), "u");
  EXPECT_EQ(reader.getUpdateCondition(none.root(), value), 0);
  EXPECT_EQ(str(value), "");
  value = "old";
  EXPECT_EQ(reader.getNotes(full.root(), value), 0);
  EXPECT_EQ(str(value), "n");
  EXPECT_EQ(reader.getNotes(none.root(), value), 0);
  EXPECT_EQ(str(value), "");
}

TEST(FedReader1516Getters, AnUnknownTransportWarnsAndAnUnknownOrderFails) {
  Probe1516 reader;
  ParsedXml doc("<e name=\"a\" transportation=\"Carrier\" order=\"Sometimes\"/>");
  DtTransportType transport = 5;
  FedReadOutcome outcome =
      captureWalk(reader, 1, [&] { return reader.getTransportType(doc.root(), transport); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(transport, -1);
  EXPECT_TRUE(contains(outcome.err, "Invalid TransportType: Carrier")) << outcome.err;
  EXPECT_EQ(outcome.error, "");

  DtOrderType order = 5;
  outcome = captureWalk(reader, 1, [&] { return reader.getOrderType(doc.root(), order); });
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error,
            "Unknown delivery order found in FDD file.\n\tOrder = Sometimes\n"
            "name= a\ntransportation= Carrier\norder= Sometimes\n");
}

// ---------------------------------------------------------------------------------------------
// Unknown order in a read

TEST(FedReader1516Classes, AnUnknownOrderOfAnAttribute) {
  const std::string text = withObjects(
      "<objectClass name=\"HLAobjectRoot\">\n"
      "<attribute name=\"a\" transportation=\"HLAreliable\" order=\"Sometimes\"/>\n"
      "<attribute name=\"b\"/>\n</objectClass>\n");
  const std::string message =
      "Unknown delivery order found in FDD file.\n\tOrder = Sometimes\n"
      "name= a\ntransportation= HLAreliable\norder= Sometimes\n";
  LaxAndStrict runs = expectFatalOnlyWhenStrict(text, message);
  EXPECT_TRUE(runs.lax->target.called("addAttribute(HLAobjectRoot, a, 1, 0, 0, 3, , 3, , 0)"));
  EXPECT_TRUE(runs.lax->target.called("addAttribute(HLAobjectRoot, b, -1, -1, 0, 3, , 3, , 0)"));
  EXPECT_TRUE(runs.strict->target.callsOf("addAttribute").empty());
}

TEST(FedReader1516Classes, AnUnknownOrderOfAnInteraction) {
  const std::string text = withInteractions(
      "<interactionClass name=\"HLAinteractionRoot\" order=\"Sometimes\" dimensions=\"NA\">"
      "<parameter name=\"p\"/></interactionClass>\n");
  LaxAndStrict runs =
      expectFatalOnlyWhenStrict(text,
                                "Unknown delivery order found in FDD file.\n\tOrder = Sometimes\n"
                                "name= HLAinteractionRoot\norder= Sometimes\ndimensions= NA\n");
  EXPECT_TRUE(
      runs.lax->target.called("addInteractionClass(HLAinteractionRoot, null, -1, 0, null)"));
  EXPECT_TRUE(runs.lax->target.called("addParameter(HLAinteractionRoot, p)"));
  EXPECT_TRUE(runs.strict->target.callsOf("addInteractionClass").empty());
  EXPECT_TRUE(runs.strict->target.callsOf("addParameter").empty());
}

TEST(FedReader1516Classes, ThePrivilegeToDeleteOfTheRootIsTimeStamped) {
  const std::string text = withObjects(
      "<objectClass name=\"HLAobjectRoot\">\n"
      "<attribute name=\"HLAprivilegeToDelete\" transportation=\"Carrier\" "
      "order=\"Sometimes\"/>\n"
      "<objectClass name=\"Sub\"><attribute name=\"HLAprivilegeToDelete\" "
      "order=\"Sometimes\"/></objectClass>\n"
      "</objectClass>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target, atLevel(3));
  EXPECT_EQ(outcome.result, 0);
  // Only the order getter can fail, so only the order is forced.
  EXPECT_TRUE(
      target.called("addAttribute(HLAobjectRoot, HLAprivilegeToDelete, -1, 1, 0, 3, , 3, , 0)"));
  EXPECT_TRUE(target.called(
      "addAttribute(HLAobjectRoot.Sub, HLAprivilegeToDelete, -1, 0, 0, 3, , 3, , 0)"));
  EXPECT_TRUE(contains(outcome.out,
                       "\tAttribute: HLAprivilegeToDelete, transport: Carrier, order: TimeStamp\n"))
      << outcome.out;
  EXPECT_TRUE(
      contains(outcome.out, "\tAttribute: HLAprivilegeToDelete, transport: , order: Receive\n"))
      << outcome.out;
}

// ---------------------------------------------------------------------------------------------
// Verbose lines

// Reads text at this notify level and expects a good read whose output holds lines.
std::unique_ptr<FddRun> expectVerboseLines(const std::string& text, int level,
                                           const std::string& lines) {
  auto run = runFdd(text, atLevel(level));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_TRUE(contains(run->outcome.out, lines)) << run->outcome.out;
  return run;
}

TEST(FedReader1516Classes, TheVerboseLinesOfObjectClasses) {
  const std::string text = withObjects(
      "<objectClass name=\"HLAobjectRoot\">\n"
      "<attribute name=\"a\" transportation=\"HLAreliable\" order=\"TimeStamp\"/>\n"
      "<attribute name=\"b\"/>\n"
      "<objectClass name=\"Sub\"/>\n"
      "</objectClass>\n");
  expectVerboseLines(text, 3,
                     "Class: HLAobjectRoot, Base:  \n"
                     "\tAttribute: a, transport: HLAreliable, order: TimeStamp\n"
                     "\tAttribute: b, transport: , order: \n"
                     "Class: HLAobjectRoot.Sub, Base: HLAobjectRoot \n");
  // At level 2 no verbose line is written, and the attribute texts are not fetched.
  EXPECT_EQ(runFdd(text, atLevel(2))->outcome.out, "");
}

TEST(FedReader1516Classes, TheVerboseLinesOfInteractionClasses) {
  const std::string text = withInteractions(
      "<interactionClass name=\"HLAinteractionRoot\" transportation=\"HLAbestEffort\" "
      "order=\"TimeStamp\" dimensions=\"NA\">\n"
      "<interactionClass name=\"I\" dimensions=\"NA\"><parameter name=\"p\"/></interactionClass>\n"
      "</interactionClass>\n");
  expectVerboseLines(text, 3,
                     "Class: HLAinteractionRoot, base: , transport: HLAbestEffort, order: "
                     "TimeStamp\n"
                     "Class: HLAinteractionRoot.I, base: HLAinteractionRoot, transport: , "
                     "order: \n"
                     "\tParameter: p\n");
  // The texts are fetched only at level 3 exactly; above it the defaults are shown.
  auto debug = expectVerboseLines(
      text, 4, "Class: HLAinteractionRoot, base: , transport: HLAreliable, order: Receive\n");
  EXPECT_TRUE(debug->target.called("addInteractionClass(HLAinteractionRoot, null, 0, 1, null)"));
}

// ---------------------------------------------------------------------------------------------
// Object trees

TEST(FedReader1516Objects, TheRootMustBeHLAobjectRoot) {
  for (const char* classes : {"<objectClass name=\"Root\"/>", "<objectClass semantics=\"s\"/>"}) {
    SCOPED_TRACE(classes);
    auto run =
        expectRead(withObjects(classes), 2, "Object class root is not HLAobjectRoot in FDD file.");
    EXPECT_TRUE(run->target.callsOf("addObjectClass").empty());
  }
}

TEST(FedReader1516Objects, OnlyTheFirstRootIsRead) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      withObjects("<!-- c --><objectClass name=\"HLAobjectRoot\"/><objectClass name=\"Other\"/>"
                  "<objectClass name=\"HLAobjectRoot\"><objectClass name=\"B\"/></objectClass>"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.callsOf("addObjectClass"), Calls{"addObjectClass(HLAobjectRoot, null)"});
}

TEST(FedReader1516Objects, AClassOrAttributeWithNoName) {
  expectRead(withObjects("<objectClass name=\"HLAobjectRoot\"><objectClass semantics=\"s\" "
                         "sharing=\"Publish\"/></objectClass>"),
             2, "Object class with no name found in FDD file.\nsemantics= s\nsharing= Publish\n");

  expectNamelessMemberFails(
      withObjects("<objectClass name=\"HLAobjectRoot\"><objectClass name=\"A\">"
                  "<attribute order=\"Receive\"/><attribute name=\"later\"/>"
                  "</objectClass></objectClass>"),
      "Attribute of HLAobjectRoot.A has no name in FDD file.", "addAttribute");
}

TEST(FedReader1516Objects, AnUnexpectedTag) {
  const std::string text = withObjects(
      "<objectClass name=\"HLAobjectRoot\"><parameter name=\"p\"/><attribute name=\"a\"/>"
      "</objectClass>");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(
      text, "Unexpected tag in objects tree for FDD file.\n\tObjects Tag = parameter *");
  EXPECT_EQ(runs.lax->target.callsOf("addAttribute").size(), 1u);
  EXPECT_TRUE(runs.strict->target.callsOf("addAttribute").empty());
}

TEST(FedReader1516Objects, ASubclassBeforeAnAttributeIsDeliveredFirst) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      withObjects("<objectClass name=\"HLAobjectRoot\"><objectClass name=\"Base\">"
                  "<objectClass name=\"Sub\"><attribute name=\"s\"/></objectClass>"
                  "<attribute name=\"x\" dimensions=\"d\"/></objectClass></objectClass>"),
      &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(modelCalls(target),
            (Calls{"addObjectClass(HLAobjectRoot, null)",
                   "addObjectClass(HLAobjectRoot.Base, HLAobjectRoot)",
                   "addObjectClass(HLAobjectRoot.Base.Sub, HLAobjectRoot.Base)",
                   "addAttribute(HLAobjectRoot.Base.Sub, s, -1, -1, 0, 3, , 3, , 0)",
                   "addAttribute(HLAobjectRoot.Base, x, -1, -1, 0, 3, , 3, , 0)",
                   "addAttributeDimension(HLAobjectRoot.Base, x, d)"}));
}

TEST(FedReader1516Objects, NoTargetNoCallsAndNoDimensions) {
  Probe1516 reader;
  ParsedXml doc(
      "<objectClass name=\"HLAobjectRoot\"><attribute name=\"a\" dimensions=\"D\"/>"
      "<objectClass name=\"B\"/></objectClass>");
  reader.setMask(1);
  FedReadOutcome outcome = captureWalk(
      reader, 3, [&] { return reader.parseObjectTree(doc.root(), DtString::nullString()); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(contains(outcome.out, "Class: HLAobjectRoot.B, Base: HLAobjectRoot \n"));
}

// A document with the management classes below the object root.
const char* const theManagedObjects =
    "<objectClass name=\"HLAobjectRoot\">\n"
    "<attribute name=\"HLAprivilegeToDelete\"/>\n"
    "<objectClass name=\"HLAmanager\"><objectClass name=\"HLAfederate\"/></objectClass>\n"
    "<objectClass name=\"Base\"><attribute name=\"x\"/></objectClass>\n"
    "</objectClass>\n";

TEST(FedReader1516Objects, ARefusedRootIsReplacedByObjectRoot) {
  Probe1516 reader;
  FddRecorder target;
  target.refusedObjects = {"HLAobjectRoot"};
  FedReadOutcome outcome = readFddText(reader, withObjects(theManagedObjects), &target, atLevel(3));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(reader.replacedObjectRoot);
  EXPECT_FALSE(reader.replacedInteractionRoot);
  EXPECT_EQ(modelCalls(target),
            (Calls{"addObjectClass(HLAobjectRoot, null)", "addObjectClass(ObjectRoot, null)",
                   "addAttribute(ObjectRoot, HLAprivilegeToDelete, -1, -1, 0, 3, , 3, , 0)",
                   "addObjectClass(ObjectRoot.Base, ObjectRoot)",
                   "addAttribute(ObjectRoot.Base, x, -1, -1, 0, 3, , 3, , 0)"}));
  // The skipped class's child is unexpected.
  EXPECT_EQ(outcome.error,
            "Unexpected tag in objects tree for FDD file.\n\tObjects Tag = objectClass *");
  EXPECT_TRUE(contains(outcome.out,
                       "Replacing HLobjectRoot with ObjectRoot to match Federation FOM.\n"
                       "Attributes and subclasses will be attempted with replacement root.\n"))
      << outcome.out;
  EXPECT_TRUE(contains(outcome.out,
                       "Skip Class: ObjectRoot.HLAmanager, Base: ObjectRoot \n"
                       "All subclasses and attributes will also be skipped\n"))
      << outcome.out;
}

TEST(FedReader1516Objects, UnderStrictCheckingASkippedClassWithChildrenFails) {
  Probe1516 reader;
  FddRecorder target;
  target.refusedObjects = {"HLAobjectRoot"};
  FedReadOutcome outcome = readFddText(reader, withObjects(theManagedObjects), &target, strict(1));
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error,
            "Unexpected tag in objects tree for FDD file.\n\tObjects Tag = objectClass *");
  EXPECT_FALSE(target.called("addObjectClass(ObjectRoot.Base, ObjectRoot)"));

  // A skipped class with no children passes.
  Probe1516 other;
  FddRecorder otherTarget;
  otherTarget.refusedObjects = {"HLAobjectRoot"};
  outcome = readFddText(other,
                        withObjects("<objectClass name=\"HLAobjectRoot\"><objectClass "
                                    "name=\"HLAmanager\"/><objectClass name=\"B\"/>"
                                    "</objectClass>"),
                        &otherTarget, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(otherTarget.callsOf("addObjectClass"),
            (Calls{"addObjectClass(HLAobjectRoot, null)", "addObjectClass(ObjectRoot, null)",
                   "addObjectClass(ObjectRoot.B, ObjectRoot)"}));
}

TEST(FedReader1516Objects, TheReplacementOutlivesTheRead) {
  Probe1516 reader;
  FddRecorder first;
  first.refusedObjects = {"HLAobjectRoot"};
  readFddText(reader, withObjects("<objectClass name=\"HLAobjectRoot\"/>"), &first);
  ASSERT_TRUE(reader.replacedObjectRoot);
  FddRecorder second;
  FedReadOutcome outcome = readFddText(
      reader,
      withObjects("<objectClass name=\"HLAobjectRoot\"><objectClass name=\"HLAmanager\"/>"
                  "<objectClass name=\"B\"/></objectClass>"),
      &second, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(second.callsOf("addObjectClass"),
            (Calls{"addObjectClass(HLAobjectRoot, null)",
                   "addObjectClass(HLAobjectRoot.B, HLAobjectRoot)"}));
  EXPECT_TRUE(reader.replacedObjectRoot);
}

TEST(FedReader1516Objects, RefusedManagementClassesAreSkipped) {
  // Without replacement: the management class is refused by its full name.
  Probe1516 reader;
  FddRecorder target;
  target.refusedObjects = {"HLAobjectRoot.HLAmanager"};
  FedReadOutcome outcome = readFddText(
      reader,
      withObjects("<objectClass name=\"HLAobjectRoot\"><objectClass name=\"HLAmanager\"/>"
                  "<objectClass name=\"B\"/></objectClass>"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_FALSE(reader.replacedObjectRoot);
  EXPECT_EQ(target.callsOf("addObjectClass"),
            (Calls{"addObjectClass(HLAobjectRoot, null)",
                   "addObjectClass(HLAobjectRoot.HLAmanager, HLAobjectRoot)",
                   "addObjectClass(HLAobjectRoot.B, HLAobjectRoot)"}));

  // With replacement: "ObjectRoot.Manager" and "ObjectRoot.RTIprivate" may be refused.
  Probe1516 replaced;
  FddRecorder replacedTarget;
  replacedTarget.refusedObjects = {"HLAobjectRoot", "ObjectRoot.Manager", "ObjectRoot.RTIprivate"};
  outcome = readFddText(replaced,
                        withObjects("<objectClass name=\"HLAobjectRoot\">"
                                    "<objectClass name=\"Manager\"/>"
                                    "<objectClass name=\"RTIprivate\"/>"
                                    "<objectClass name=\"B\"/></objectClass>"),
                        &replacedTarget, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(replacedTarget.called("addObjectClass(ObjectRoot.B, ObjectRoot)"));
}

TEST(FedReader1516Objects, AnyOtherRefusalFailsWithoutAText) {
  const std::string text = withObjects(
      "<objectClass name=\"HLAobjectRoot\"><objectClass name=\"Base\"/>"
      "<objectClass name=\"Later\"/></objectClass>",
      "<bogus/>\n");
  auto run =
      expectRefusalFails(text, [](FddRecorder& t) { t.refusedObjects = {"HLAobjectRoot.Base"}; });
  EXPECT_FALSE(run->target.called("addObjectClass(HLAobjectRoot.Later, HLAobjectRoot)"));

  auto both = expectRefusalFails(text, [](FddRecorder& t) {
    t.refusedObjects = {"HLAobjectRoot", "ObjectRoot"};
  });
  EXPECT_EQ(both->target.callsOf("addObjectClass"),
            (Calls{"addObjectClass(HLAobjectRoot, null)", "addObjectClass(ObjectRoot, null)"}));
}

// ---------------------------------------------------------------------------------------------
// Interaction trees

TEST(FedReader1516Interactions, TheRootMustBeHLAinteractionRoot) {
  for (const char* classes :
       {"<interactionClass name=\"Root\"/>", "<interactionClass dimensions=\"NA\"/>"}) {
    SCOPED_TRACE(classes);
    auto run = expectRead(withInteractions(classes), 2,
                          "Interaction class with no root found in FDD file.");
    EXPECT_TRUE(run->target.callsOf("addInteractionClass").empty());
  }
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      withInteractions("<interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\"/>"
                       "<interactionClass name=\"Other\"/>"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.callsOf("addInteractionClass").size(), 1u);
}

TEST(FedReader1516Interactions, AClassOrParameterWithNoName) {
  expectRead(withInteractions("<interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\">"
                              "<interactionClass dimensions=\"NA\"/></interactionClass>"),
             2, "Interaction class with no name found in FDD file.dimensions= NA\n");

  expectNamelessMemberFails(
      withInteractions("<interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\">"
                       "<parameter semantics=\"s\"/><parameter name=\"later\"/>"
                       "</interactionClass>"),
      "Parameter with no name found in FDD file.\nsemantics= s\n", "addParameter");
}

TEST(FedReader1516Interactions, AnUnexpectedTag) {
  const std::string text = withInteractions(
      "<interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\"><attribute name=\"a\"/>"
      "<parameter name=\"p\"/></interactionClass>");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(
      text, "Unexpected tag in interactions tree for FDD file.\n\tInteractions Tag = attribute *");
  EXPECT_TRUE(runs.lax->target.called("addParameter(HLAinteractionRoot, p)"));
  EXPECT_TRUE(runs.strict->target.callsOf("addParameter").empty());
}

TEST(FedReader1516Interactions, NoDimensionsList) {
  const std::string text = withInteractions(
      "<interactionClass name=\"HLAinteractionRoot\"><parameter name=\"p\"/>"
      "</interactionClass>");
  LaxAndStrict runs =
      expectFatalOnlyWhenStrict(text, "Interaction HLAinteractionRoot has no dimensions list.");
  EXPECT_TRUE(runs.lax->target.called("addParameter(HLAinteractionRoot, p)"));
  const FddRecorder& strictTarget = runs.strict->target;
  EXPECT_TRUE(strictTarget.called("addInteractionClass(HLAinteractionRoot, null, -1, -1, null)"));
  EXPECT_TRUE(strictTarget.callsOf("addParameter").empty());
}

TEST(FedReader1516Interactions, NoTargetHasNoDimensionsList) {
  Probe1516 reader;
  ParsedXml doc("<interactionClass name=\"HLAinteractionRoot\" dimensions=\"A\"/>");
  EXPECT_EQ(reader.parseInteractionDimensions(doc.root(), "HLAinteractionRoot"), 0);
  EXPECT_EQ(str(reader.lastError()), "Interaction HLAinteractionRoot has no dimensions list.");
  reader.setMask(1);
  EXPECT_EQ(reader.parseInteractionDimensions(doc.root(), "HLAinteractionRoot"), 2);
}

// The management interactions below the interaction root.
const char* const theManagedInteractions =
    "<interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\">\n"
    "<interactionClass name=\"HLAmanager\" dimensions=\"D\">\n"
    "  <interactionClass name=\"HLAfederate\" dimensions=\"D\"/>\n"
    "  <parameter name=\"m\"/>\n"
    "</interactionClass>\n"
    "<interactionClass name=\"Fire\" dimensions=\"NA\"><parameter name=\"p\"/>"
    "</interactionClass>\n"
    "</interactionClass>\n";

TEST(FedReader1516Interactions, ARefusedRootIsReplacedByInteractionRoot) {
  Probe1516 reader;
  FddRecorder target;
  target.refusedInteractions = {"HLAinteractionRoot"};
  FedReadOutcome outcome =
      readFddText(reader, withInteractions(theManagedInteractions), &target, strict(1, 3));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(reader.replacedInteractionRoot);
  EXPECT_FALSE(reader.replacedObjectRoot);
  // The skipped management class has neither its dimensions offered nor its children walked.
  EXPECT_EQ(modelCalls(target),
            (Calls{"addInteractionClass(HLAinteractionRoot, null, -1, -1, null)",
                   "addInteractionClass(InteractionRoot, null, -1, -1, null)",
                   "addInteractionClass(InteractionRoot.Fire, InteractionRoot, -1, -1, null)",
                   "addParameter(InteractionRoot.Fire, p)"}));
  EXPECT_TRUE(contains(outcome.out,
                       "Replacing HLAinteractionRoot with InteractionRoot to match Federation "
                       "FOM.\nParameters and subclasses will be attempted with replacement "
                       "root.\n"))
      << outcome.out;
  EXPECT_TRUE(contains(outcome.out,
                       "Skip Class: InteractionRoot.HLAmanager, base: InteractionRoot, "
                       "transport: , order: \n"
                       "All subclasses and parameters will also be skipped.\n"))
      << outcome.out;
}

TEST(FedReader1516Interactions, TheFourOptionalInteractionsMayBeRefused) {
  for (const char* name :
       {"HLArequestSynchronizationPoint", "HLAreportSynchronizationPoint",
        "HLAchangeAttributeTransportationType", "HLAchangeInteractionTransportationType"}) {
    const std::string path = std::string("HLAinteractionRoot.HLAmanager.") + name;
    Probe1516 reader;
    FddRecorder target;
    target.refusedInteractions = {path};
    FedReadOutcome outcome = readFddText(
        reader,
        withInteractions(std::string("<interactionClass name=\"HLAinteractionRoot\" "
                                     "dimensions=\"NA\"><interactionClass name=\"HLAmanager\" "
                                     "dimensions=\"NA\"><interactionClass name=\"") +
                         name +
                         "\" dimensions=\"D\"><parameter name=\"q\"/><bogus/></interactionClass>"
                         "<interactionClass name=\"After\" dimensions=\"NA\"/>"
                         "</interactionClass></interactionClass>"),
        &target, strict(1, 3));
    EXPECT_EQ(outcome.result, 0) << name;
    EXPECT_EQ(outcome.error, "") << name;
    // The omitted class still has its dimensions offered; its children are passed over.
    EXPECT_TRUE(target.called("addInteractionDimension(" + path + ", D)")) << name;
    EXPECT_TRUE(target.callsOf("addParameter").empty()) << name;
    EXPECT_TRUE(target.called(
        "addInteractionClass(HLAinteractionRoot.HLAmanager.After, HLAinteractionRoot.HLAmanager, "
        "-1, -1, null)"))
        << name;
    EXPECT_TRUE(contains(outcome.out, "Federation FOM does not have interaction class " + path +
                                          " omitting it from DtFom representation.\n"))
        << outcome.out;
  }
}

TEST(FedReader1516Interactions, OptionalNamesAlsoUnderTheReplacementRoot) {
  Probe1516 reader;
  FddRecorder target;
  target.refusedInteractions = {"HLAinteractionRoot",
                                "InteractionRoot.HLArequestSynchronizationPoint"};
  FedReadOutcome outcome = readFddText(
      reader,
      withInteractions("<interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\">"
                       "<interactionClass name=\"HLArequestSynchronizationPoint\" "
                       "dimensions=\"NA\"/></interactionClass>"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(reader.replacedInteractionRoot);
}

TEST(FedReader1516Interactions, AnyOtherRefusalFailsWithoutAText) {
  const std::string text = withInteractions(
      "<interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\">"
      "<interactionClass name=\"Fire\" dimensions=\"D\"><parameter name=\"p\"/>"
      "</interactionClass></interactionClass>",
      "<bogus/>\n");
  auto run = expectRefusalFails(
      text, [](FddRecorder& t) { t.refusedInteractions = {"HLAinteractionRoot.Fire"}; });
  EXPECT_TRUE(run->target.callsOf("addInteractionDimension").empty());
  EXPECT_TRUE(run->target.callsOf("addParameter").empty());

  auto both = expectRefusalFails(text, [](FddRecorder& t) {
    t.refusedInteractions = {"HLAinteractionRoot", "InteractionRoot"};
  });
  EXPECT_EQ(both->target.callsOf("addInteractionClass").size(), 2u);
}

// ---------------------------------------------------------------------------------------------
// Dimension lists of attributes and interactions

TEST(FedReader1516DimensionLists, NaAndBlankSeparatedNames) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd("<objects><objectClass name=\"HLAobjectRoot\">"
                  "<attribute name=\"na\" dimensions=\"NA\"/>"
                  "<attribute name=\"two\" dimensions=\"  A   B \"/>"
                  "<attribute name=\"mixed\" dimensions=\"A NA B\"/>"
                  "<attribute name=\"empty\" dimensions=\"\"/>"
                  "<attribute name=\"one\" dimensions=\"C\"/>"
                  "</objectClass></objects>\n"
                  "<interactions><interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\">"
                  "<interactionClass name=\"I\" dimensions=\"  A   B \"/>"
                  "<interactionClass name=\"J\" dimensions=\"\"/>"
                  "</interactionClass></interactions>\n"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(target.callsOf("addAttributeDimension"),
            (Calls{"addAttributeDimension(HLAobjectRoot, two, A)",
                   "addAttributeDimension(HLAobjectRoot, two, B)",
                   "addAttributeDimension(HLAobjectRoot, mixed, A)",
                   "addAttributeDimension(HLAobjectRoot, mixed, B)",
                   "addAttributeDimension(HLAobjectRoot, one, C)"}));
  EXPECT_EQ(target.callsOf("addInteractionDimension"),
            (Calls{"addInteractionDimension(HLAinteractionRoot.I, A)",
                   "addInteractionDimension(HLAinteractionRoot.I, B)"}));
}

TEST(FedReader1516DimensionLists, ARefusedDimensionIsFatalOnlyUnderStrictChecking) {
  const std::string text = completeFdd(
      "<objects><objectClass name=\"HLAobjectRoot\">"
      "<attribute name=\"a\" dimensions=\"A B\"/><attribute name=\"b\"/>"
      "</objectClass></objects>\n"
      "<interactions><interactionClass name=\"HLAinteractionRoot\" dimensions=\"A B\">"
      "<parameter name=\"p\"/></interactionClass></interactions>\n");
  // A refusal leaves no text of its own.
  LaxAndStrict runs =
      expectFatalOnlyWhenStrict(text, "", [](FddRecorder& t) { t.refusedDimensions = {"A"}; });
  const FddRecorder& target = runs.lax->target;
  EXPECT_EQ(target.callsOf("addAttributeDimension"),
            (Calls{"addAttributeDimension(HLAobjectRoot, a, A)",
                   "addAttributeDimension(HLAobjectRoot, a, B)"}));
  EXPECT_EQ(target.callsOf("addInteractionDimension"),
            (Calls{"addInteractionDimension(HLAinteractionRoot, A)",
                   "addInteractionDimension(HLAinteractionRoot, B)"}));
  EXPECT_TRUE(target.called("addParameter(HLAinteractionRoot, p)"));
  const FddRecorder& strictTarget = runs.strict->target;
  EXPECT_EQ(strictTarget.callsOf("addAttributeDimension"),
            Calls{"addAttributeDimension(HLAobjectRoot, a, A)"});
  EXPECT_EQ(strictTarget.callsOf("addAttribute").size(), 1u);

  auto interaction =
      runFdd(completeFdd("<interactions><interactionClass "
                         "name=\"HLAinteractionRoot\" dimensions=\"A B C\">"
                         "<parameter name=\"p\"/></interactionClass></interactions>\n"),
             strict(1), [](FddRecorder& t) { t.refusedDimensions = {"B"}; });
  EXPECT_EQ(interaction->outcome.result, 2);
  EXPECT_EQ(interaction->target.callsOf("addInteractionDimension"),
            (Calls{"addInteractionDimension(HLAinteractionRoot, A)",
                   "addInteractionDimension(HLAinteractionRoot, B)"}));
  EXPECT_TRUE(interaction->target.callsOf("addParameter").empty());
}

// ---------------------------------------------------------------------------------------------
// Dimensions

struct DimensionRun {
  int result;
  std::string error;
  Calls calls;
};

DimensionRun runDimension(const std::string& element, unsigned int mask = 0) {
  Probe1516 reader;
  FddRecorder target;
  reader.setTarget(&target);
  reader.setMask(mask);
  ParsedXml doc(element);
  DimensionRun run;
  run.result = reader.parseDimension(doc.root());
  run.error = reader.lastError().c_str();
  run.calls = target.calls;
  return run;
}

// The element is taken: the one call it makes to the target is this addDimension.
void expectDimensionAdded(const std::string& element, const std::string& call) {
  DimensionRun run = runDimension(element);
  EXPECT_EQ(run.result, 0) << run.error;
  EXPECT_EQ(run.calls, Calls{call});
}

// The element fails with this text, before anything reaches the target.
void expectDimensionFails(const std::string& element, const std::string& error) {
  DimensionRun run = runDimension(element);
  EXPECT_EQ(run.result, 2);
  EXPECT_EQ(run.error, error);
  EXPECT_TRUE(run.calls.empty());
}

TEST(FedReader1516Dimensions, FederateNeedsANormalizationAndMayLackABound) {
  expectDimensionAdded("<dimension name=\"Federate\" normalization=\"linear\"/>",
                       "addDimension(Federate, 18446744073709551615, 0, 1, false, linear)");
  expectDimensionFails("<dimension name=\"Federate\" upperBound=\"5\"/>",
                       "Dimension \"Federate\" missing normalization in FDD file.\nname= Federate\n"
                       "upperBound= 5\n");
}

TEST(FedReader1516Dimensions, OtherDimensionsNeedABoundAndMayLackANormalization) {
  expectDimensionAdded("<dimension name=\"X\" upperBound=\"10\"/>",
                       "addDimension(X, 10, 0, 1, false, )");
  expectDimensionFails(
      "<dimension name=\"X\" normalization=\"linear\"/>",
      "Dimension \"X\" missing upper bound in FDD file.\nname= X\nnormalization= linear\n");
  expectDimensionAdded("<dimension name=\"X\" upperBound=\"7\" normalization=\"n\"/>",
                       "addDimension(X, 7, 0, 1, false, n)");
}

TEST(FedReader1516Dimensions, ADimensionWithNoName) {
  expectDimensionFails("<dimension upperBound=\"5\"/>",
                       "Dimension with no name found in FDD file.\nupperBound= 5\n");
}

TEST(FedReader1516Dimensions, TheUpperBound) {
  expectDimensionAdded("<dimension name=\"X\" upperBound=\"   10\"/>",
                       "addDimension(X, 10, 0, 1, false, )");
  expectDimensionAdded("<dimension name=\"X\" upperBound=\"18446744073709551615\"/>",
                       "addDimension(X, 18446744073709551615, 0, 1, false, )");
  for (const char* bound : {"10a", "-1", "+5", "", "1.5", "10 ", "18446744073709551616"}) {
    SCOPED_TRACE(bound);
    expectDimensionFails(std::string("<dimension name=\"X\" upperBound=\"") + bound + "\"/>",
                         std::string("Dimension \"X\" upper bound is invalid in FDD file.\n"
                                     "name= X\nupperBound= ") +
                             bound + "\n");
  }
}

struct ValueCase {
  const char* bound;
  const char* value;
  bool ok;
  unsigned long lower;
  unsigned long upper;
  bool excluded;
};

const ValueCase theValueCases[] = {
    {"5", "[5)", false, 0, 0, false},         {"6", "[5)", true, 5, 6, false},
    {"1", "[0)", true, 0, 1, false},          {"0", "[0)", false, 0, 0, false},
    {"10", "[2..7)", true, 2, 7, false},      {"10", "[2..2)", false, 0, 0, false},
    {"10", "[3..2)", false, 0, 0, false},     {"10", "[2..10)", true, 2, 10, false},
    {"10", "[2..11)", false, 0, 0, false},    {"10", "EXCLUDED", true, 0, 1, true},
    {"10", "excluded", true, 0, 1, true},     {"10", "  Excluded", true, 0, 1, true},
    {"10", "excluded ", false, 0, 0, false},  {"10", "exclude", false, 0, 0, false},
    {"10", "[5", false, 0, 0, false},         {"10", "", false, 0, 0, false},
    {"10", "   ", false, 0, 0, false},        {"10", "[)", false, 0, 0, false},
    {"10", "[", false, 0, 0, false},          {"10", "5", false, 0, 0, false},
    {"10", "[ 2 . . 7 )", true, 2, 7, false}, {"10", "  [2..7)   ", true, 2, 7, false},
    {"10", "[2..7) x", false, 0, 0, false},   {"10", "[2..7)x", false, 0, 0, false},
    {"10", "[5) x", false, 0, 0, false},      {"10", "[5)  ", true, 5, 6, false},
    {"10", "[2.7)", false, 0, 0, false},      {"10", "[2..7", false, 0, 0, false},
    {"10", "[2..)", false, 0, 0, false},      {"10", "[a..7)", false, 0, 0, false},
    {"10", "[2..7]", false, 0, 0, false},     {"10", "[2...7)", false, 0, 0, false},
};

TEST(FedReader1516Dimensions, TheValueGrammar) {
  for (const ValueCase& c : theValueCases) {
    SCOPED_TRACE(std::string(c.value) + " / " + c.bound);
    const std::string element = std::string("<dimension name=\"X\" upperBound=\"") + c.bound +
                                "\" value=\"" + c.value + "\"/>";
    if (c.ok) {
      expectDimensionAdded(element, std::string("addDimension(X, ") + c.bound + ", " +
                                        std::to_string(c.lower) + ", " + std::to_string(c.upper) +
                                        ", " + (c.excluded ? "true" : "false") + ", )");
    } else {
      expectDimensionFails(element, std::string("Dimension \"X\" value is invalid in FDD file.\n"
                                                "name= X\nupperBound= ") +
                                        c.bound + "\nvalue= " + c.value + "\n");
    }
  }
}

TEST(FedReader1516Dimensions, EveryFaultIsFatalWhateverTheStrictBits) {
  for (unsigned int mask : {0u, 1u, 2u}) {
    DimensionRun run = runDimension("<dimension name=\"X\" upperBound=\"5\" value=\"[9)\"/>", mask);
    EXPECT_EQ(run.result, 2) << mask;
  }
}

TEST(FedReader1516Dimensions, NoTargetNoCall) {
  Probe1516 reader;
  ParsedXml doc("<dimension name=\"X\" upperBound=\"5\"/>");
  EXPECT_EQ(reader.parseDimension(doc.root()), 0);
}

TEST(FedReader1516Dimensions, TheListTakesOnlyDimensions) {
  const std::string text = completeFdd(
      "<dimensions>\n<!-- c -->\n<dim name=\"Q\"/>\n"
      "<dimension name=\"X\" upperBound=\"5\"/>\n</dimensions>\n");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(
      text, "Unexpected tag in dimension list for FDD file.\n\tDimensions Tag = dim *");
  EXPECT_EQ(runs.lax->target.callsOf("addDimension"), Calls{"addDimension(X, 5, 0, 1, false, )"});
  EXPECT_EQ(runs.strict->target.calls, Calls{"setFomType(2)"});
}

TEST(FedReader1516Dimensions, ARefusedDimensionDoesNotMatter) {
  DtFedReader1516 reader;
  FddRecorder target;
  target.refuseAllDimensions = true;
  FedReadOutcome outcome =
      readFddText(reader,
                  completeFdd("<dimensions><dimension name=\"X\" upperBound=\"5\"/>"
                              "<dimension name=\"Y\" upperBound=\"5\"/></dimensions>\n"),
                  &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(target.callsOf("addDimension").size(), 2u);
}

}  // namespace
