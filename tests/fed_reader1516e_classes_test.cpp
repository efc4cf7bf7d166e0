// The IEEE 1516-2010 reader's class trees and dimensions: the getters that read child elements,
// named transportations (known, queued, or taken as best effort), the roots and the root
// replacement that tolerates no refusal, the children each walk passes over, the dimension lists
// of object classes, attributes and interactions with every message, and the dimensions section
// with its whole-range defaults. The 2025 reader shares all of it; one test shows that.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"

using namespace KORRti;
using namespace ktltest;

namespace {

using EvolvedRun = std::unique_ptr<FddRunOf<DtFedReader1516e>>;

// The elements of the 2010 form, each with its name as a child element.
std::string objectClass(const std::string& name, const std::string& inner = "") {
  return "<objectClass><name>" + name + "</name>" + inner + "</objectClass>\n";
}
std::string attribute(const std::string& name, const std::string& inner = "") {
  return "<attribute><name>" + name + "</name>" + inner + "</attribute>\n";
}
std::string interactionClass(const std::string& name, const std::string& inner = "") {
  return "<interactionClass><name>" + name + "</name>" + inner + "</interactionClass>\n";
}
std::string parameter(const std::string& name) {
  return "<parameter><name>" + name + "</name></parameter>\n";
}
std::string element(const std::string& name, const std::string& text) {
  return "<" + name + ">" + text + "</" + name + ">";
}
std::string dimensionList(const std::vector<std::string>& names) {
  std::string list = "<dimensions>";
  for (const std::string& name : names) list += element("dimension", name);
  return list + "</dimensions>";
}

// The top-level sections in more, with an empty dimensions table if more has none: the
// dimension lists of the classes would otherwise hide its absence from completeFdd2010.
std::string withDimensionsTable(const std::string& more) {
  return more.find("<dimensions") == std::string::npos ? more + "<dimensions/>\n" : more;
}

// A whole document whose objects section holds rootInner under HLAobjectRoot.
std::string withObjects(const std::string& rootInner, const std::string& more = "") {
  return completeFdd2010(withDimensionsTable(more) + "<objects>\n" +
                         objectClass("HLAobjectRoot", rootInner) + "</objects>\n");
}
// A whole document whose interactions section holds rootInner under HLAinteractionRoot.
std::string withInteractions(const std::string& rootInner, const std::string& more = "") {
  return completeFdd2010(withDimensionsTable(more) + "<interactions>\n" +
                         interactionClass("HLAinteractionRoot", rootInner) + "</interactions>\n");
}
// A whole document whose dimensions section holds these dimension elements.
std::string withDimensions(const std::string& dimensions) {
  return completeFdd2010("<dimensions>\n" + dimensions + "</dimensions>\n");
}
std::string dimension(const std::string& inner) {
  return "<dimension>" + inner + "</dimension>\n";
}

// The calls that deliver classes, attributes, parameters, dimensions and unresolved names.
Calls modelCalls(const FddRecorder& target) {
  Calls found;
  for (const std::string& call : target.calls) {
    for (const char* operation :
         {"addObjectClass(", "addAttribute(", "addAttributeDimension(", "addInteractionClass(",
          "addParameter(", "addInteractionDimension(", "addDimension(", "addObjectClassDimension(",
          "addUnresolvedAttributeTransportation(", "addUnresolvedInteractionTransportation("}) {
      if (call.rfind(operation, 0) == 0) found.push_back(call);
    }
  }
  return found;
}

EvolvedRun read(const std::string& document, const FddReadOptions& options = FddReadOptions(),
                const FddSetUp& setUp = FddSetUp()) {
  return runFdd<DtFedReader1516e>(document, options, setUp);
}

const char kAll[] = "18446744073709551615";

// ---------------------------------------------------------------------------------------------
// A small document, call by call

TEST(FedReader1516eClasses, ASmallDocumentCallByCall) {
  const std::string document = completeFdd2010(
      "<objects>\n" +
      objectClass(
          "HLAobjectRoot",
          attribute("HLAprivilegeToDeleteObject",
                    element("transportation", "HLAreliable") + element("order", "TimeStamp")) +
              objectClass(
                  "Base",
                  element("semantics", "b") + dimensionList({"D1"}) + objectClass("Leaf") +
                      attribute("x",
                                element("dataType", "T") + element("updateType", "Periodic") +
                                    element("updateCondition", "1 Hz") +
                                    element("ownership", "Divest") + element("sharing", "Publish") +
                                    dimensionList({"D1", "D2"}) +
                                    element("transportation", "HLAbestEffort") +
                                    element("order", "Receive") + element("semantics", "pos")))) +
      "</objects>\n<interactions>\n" +
      interactionClass(
          "HLAinteractionRoot",
          element("transportation", "HLAreliable") + element("order", "Receive") +
              interactionClass(
                  "Fire", dimensionList({"D1"}) + element("transportation", "HLAbestEffort") +
                              element("order", "TimeStamp") + parameter("p1") + parameter("p2"))) +
      "</interactions>\n<dimensions>\n" +
      dimension("<name>D1</name><upperBound>10</upperBound><value>[2..5)</value>") +
      dimension("<name>D2</name><upperBound>4</upperBound><normalization>linear</normalization>") +
      "</dimensions>\n");
  EvolvedRun run = read(document, strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->outcome.error, "");
  EXPECT_EQ(modelCalls(run->target),
            (Calls{"addDimension(D1, 10, 2, 5, false, )",
                   "addDimension(D2, 4, 0, " + std::string(kAll) + ", false, linear)",
                   "addObjectClass(HLAobjectRoot, null)",
                   "addAttribute(HLAobjectRoot, HLAprivilegeToDeleteObject, 1, 1, 0, 3, , 3, , 0)",
                   "addObjectClass(HLAobjectRoot.Base, HLAobjectRoot)",
                   "addObjectClassDimension(HLAobjectRoot.Base, D1)",
                   "addObjectClass(HLAobjectRoot.Base.Leaf, HLAobjectRoot.Base)",
                   "addAttribute(HLAobjectRoot.Base, x, 0, 0, 1, 1, 1 Hz, 0, pos, 0)",
                   "addAttributeDimension(HLAobjectRoot.Base, x, D1)",
                   "addAttributeDimension(HLAobjectRoot.Base, x, D2)",
                   "addInteractionClass(HLAinteractionRoot, null, 1, 0, null)",
                   "addInteractionClass(HLAinteractionRoot.Fire, HLAinteractionRoot, 0, 1, null)",
                   "addInteractionDimension(HLAinteractionRoot.Fire, D1)",
                   "addParameter(HLAinteractionRoot.Fire, p1)",
                   "addParameter(HLAinteractionRoot.Fire, p2)"}));
}

TEST(FedReader1516eClasses, The2025ReaderWalksClassesTheSameWay) {
  const std::string body =
      "<objects>\n" + objectClass("HLAobjectRoot", attribute("a", dimensionList({"D"}))) +
      "</objects>\n<interactions>\n" + interactionClass("HLAinteractionRoot", parameter("p")) +
      "</interactions>\n";
  auto evolved = runFdd<DtFedReader1516e>(completeFdd2010(body), strict(1));
  auto hla4 = runFdd<DtFedReader1516_4>(completeFdd2010(body, "IEEE1516-2025"), strict(1));
  EXPECT_EQ(hla4->outcome.result, 0) << hla4->outcome.error;
  EXPECT_EQ(modelCalls(hla4->target), modelCalls(evolved->target));
  EXPECT_EQ(modelCalls(hla4->target).size(), 5u);
}

// ---------------------------------------------------------------------------------------------
// Attribute columns

TEST(FedReader1516eAttributes, AnAttributeWithOnlyANameTakesTheDefaults) {
  EvolvedRun run = read(withObjects(attribute("a")), strict(1));
  EXPECT_EQ(run->outcome.result, 0);
  // No transportation and no order read as "not given"; the rest take their defaults.
  EXPECT_EQ(modelCalls(run->target),
            (Calls{"addObjectClass(HLAobjectRoot, null)",
                   "addAttribute(HLAobjectRoot, a, -1, -1, 0, 3, , 3, , 0)"}));
}

TEST(FedReader1516eAttributes, EveryValueOfEveryColumn) {
  struct Case {
    const char* element;
    const char* text;
    const char* delivered;
  };
  const Case cases[] = {
      {"transportation", "HLAbestEffort", "0, -1, 0, 3, , 3, , 0"},
      {"transportation", "HLAreliable", "1, -1, 0, 3, , 3, , 0"},
      {"order", "Receive", "-1, 0, 0, 3, , 3, , 0"},
      {"order", "TimeStamp", "-1, 1, 0, 3, , 3, , 0"},
      {"sharing", "PublishSubscribe", "-1, -1, 0, 3, , 3, , 0"},
      {"sharing", "Publish", "-1, -1, 1, 3, , 3, , 0"},
      {"sharing", "Subscribe", "-1, -1, 2, 3, , 3, , 0"},
      {"sharing", "Neither", "-1, -1, 3, 3, , 3, , 0"},
      {"ownership", "Divest", "-1, -1, 0, 3, , 0, , 0"},
      {"ownership", "Acquire", "-1, -1, 0, 3, , 1, , 0"},
      {"ownership", "DivestAcquire", "-1, -1, 0, 3, , 2, , 0"},
      {"ownership", "NoTransfer", "-1, -1, 0, 3, , 3, , 0"},
      {"ownership", "Whatever", "-1, -1, 0, 3, , 3, , 0"},
      {"updateType", "Static", "-1, -1, 0, 0, , 3, , 0"},
      {"updateType", "Periodic", "-1, -1, 0, 1, , 3, , 0"},
      {"updateType", "Conditional", "-1, -1, 0, 2, , 3, , 0"},
      {"updateType", "NA", "-1, -1, 0, 3, , 3, , 0"},
      {"updateType", "Sometimes", "-1, -1, 0, 3, , 3, , 0"},
      {"updateCondition", "on change", "-1, -1, 0, 3, on change, 3, , 0"},
      {"semantics", "where it is", "-1, -1, 0, 3, , 3, where it is, 0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.element) + " " + c.text);
    EvolvedRun run = read(withObjects(attribute("a", element(c.element, c.text))), strict(1));
    EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
    EXPECT_TRUE(
        run->target.called("addAttribute(HLAobjectRoot, a, " + std::string(c.delivered) + ")"))
        << modelCalls(run->target).back();
  }
}

TEST(FedReader1516eAttributes, AnUnknownOrderIsReportedAndFatalOnlyWhenStrict) {
  const std::string document =
      withObjects(objectClass("A", attribute("x", element("order", "Soon"))));
  const std::string text = "Unknown delivery order found in FDD file.\n\tOrder = Soon\nattribute *";
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(document, text);
  // Without the bit the order reads as receive.
  EXPECT_TRUE(runs.lax->target.called("addAttribute(HLAobjectRoot.A, x, -1, 0, 0, 3, , 3, , 0)"));
  EXPECT_TRUE(runs.strict->target.callsOf("addAttribute").empty());
}

TEST(FedReader1516eAttributes, ThePrivilegeToDeleteOfTheRootIsTimeStampedWhateverItsOrderSays) {
  const std::string document =
      withObjects(attribute("HLAprivilegeToDelete", element("order", "Soon")) +
                  objectClass("A", attribute("HLAprivilegeToDelete", element("order", "Soon"))));
  EvolvedRun run = read(document);
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_TRUE(run->target.called(
      "addAttribute(HLAobjectRoot, HLAprivilegeToDelete, -1, 1, 0, 3, , 3, , 0)"));
  // Only the root's attribute of that name.
  EXPECT_TRUE(run->target.called(
      "addAttribute(HLAobjectRoot.A, HLAprivilegeToDelete, -1, 0, 0, 3, , 3, , 0)"));
}

TEST(FedReader1516eAttributes, AnUnknownSharingIsFatalUnderStrictBit1WithNoText) {
  const std::string document =
      withObjects(objectClass("A", attribute("x", element("sharing", "Everyone"))));
  EvolvedRun lax = read(document);
  EXPECT_EQ(lax->outcome.result, 0);
  EXPECT_EQ(lax->outcome.error, "");
  EXPECT_TRUE(lax->target.called("addAttribute(HLAobjectRoot.A, x, -1, -1, 0, 3, , 3, , 0)"));
  EvolvedRun strictRun = read(document, strict(1));
  EXPECT_EQ(strictRun->outcome.result, 2);
  EXPECT_EQ(strictRun->outcome.error, "");
  EXPECT_TRUE(strictRun->target.callsOf("addAttribute").empty());
}

TEST(FedReader1516eAttributes, TheSharingGetterGivesFourAndAFaultUnderStrictBit1) {
  ParsedXml xml(fddDocument2010(attribute("x", element("sharing", "Everyone"))));
  xmlNode* node = childElement(xml.root(), "attribute");
  ASSERT_NE(node, nullptr);
  struct Probe : DtFedReader1516e {
    using DtFedReader1516e::getSharingType;
    void setMask(unsigned int mask) { strictCheckingMask = mask; }
  } reader;
  DtSharingType_enum sharing = DtSharingPublish;
  reader.setMask(1);
  EXPECT_EQ(reader.getSharingType(node, sharing), 2);
  EXPECT_EQ(sharing, 4);
  reader.setMask(0);
  EXPECT_EQ(reader.getSharingType(node, sharing), 0);
  EXPECT_EQ(sharing, 0);
}

TEST(FedReader1516eAttributes, AnAttributeWithNoName) {
  EvolvedRun run = read(withObjects(
      objectClass("A", "<attribute><order>Receive</order></attribute>" + attribute("later"))));
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "Attribute of HLAobjectRoot.A has no name in FDD file.");
  EXPECT_TRUE(run->target.callsOf("addAttribute").empty());
}

TEST(FedReader1516eAttributes, TheVerboseLineOfAnAttribute) {
  EvolvedRun run = read(withObjects(attribute("a", element("transportation", "HLAreliable") +
                                                       element("order", "TimeStamp"))),
                        atLevel(3));
  EXPECT_TRUE(
      contains(run->outcome.out, "\tAttribute: a, transport: HLAreliable, order: TimeStamp\n"))
      << run->outcome.out;
}

// ---------------------------------------------------------------------------------------------
// Named transportations

// A target that knows the transportation "Fast" once it is declared, and answers 1 for it.
void knowsDeclaredTransportations(FddRecorder& target) {
  target.duplicatesByName = true;
  target.transportAnswers["Fast"] = 1;
}

const char kFast[] =
    "<transportations><transportation><name>Fast</name><reliable>Yes</reliable>"
    "</transportation></transportations>\n";

TEST(FedReader1516eTransport, ADeclaredNameTakesTheTargetsType) {
  const std::string document = completeFdd2010(
      std::string(kFast) + "<objects>" +
      objectClass("HLAobjectRoot", attribute("a", element("transportation", "Fast"))) +
      "</objects>\n<interactions>" +
      interactionClass("HLAinteractionRoot", element("transportation", "Fast")) +
      "</interactions>\n");
  for (unsigned int mask : {0u, 1u}) {
    SCOPED_TRACE(mask);
    EvolvedRun run = read(document, strict(mask), knowsDeclaredTransportations);
    EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
    EXPECT_TRUE(run->target.called("addAttribute(HLAobjectRoot, a, 1, -1, 0, 3, , 3, , 0)"));
    EXPECT_TRUE(run->target.called("addInteractionClass(HLAinteractionRoot, null, 1, -1, null)"));
    EXPECT_EQ(run->target.callsOf("transportationType"),
              (Calls{"transportationType(Fast)", "transportationType(Fast)"}));
    EXPECT_TRUE(run->target.callsOf("addUnresolvedAttributeTransportation").empty());
  }
}

TEST(FedReader1516eTransport, AnUndeclaredNameUnderStrictBit1IsQueuedAndTheDefaultStands) {
  const std::string document = completeFdd2010(
      "<objects>" +
      objectClass("HLAobjectRoot",
                  objectClass("A", attribute("x", element("transportation", "Later")))) +
      "</objects>\n<interactions>" +
      interactionClass("HLAinteractionRoot",
                       interactionClass("I", element("transportation", "Later"))) +
      "</interactions>\n");
  EvolvedRun run = read(document, strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->outcome.error, "");
  EXPECT_EQ(modelCalls(run->target),
            (Calls{"addObjectClass(HLAobjectRoot, null)",
                   "addObjectClass(HLAobjectRoot.A, HLAobjectRoot)",
                   "addUnresolvedAttributeTransportation(Later, HLAobjectRoot.A, x)",
                   "addAttribute(HLAobjectRoot.A, x, 0, -1, 0, 3, , 3, , 0)",
                   "addInteractionClass(HLAinteractionRoot, null, -1, -1, null)",
                   "addUnresolvedInteractionTransportation(Later, HLAinteractionRoot.I)",
                   "addInteractionClass(HLAinteractionRoot.I, HLAinteractionRoot, 1, -1, null)"}));
  EXPECT_TRUE(run->target.callsOf("transportationType").empty());
}

TEST(FedReader1516eTransport, AnUndeclaredNameWithNoStrictBitIsBestEffort) {
  const std::string document = completeFdd2010(
      "<objects>" +
      objectClass("HLAobjectRoot", attribute("x", element("transportation", "Later"))) +
      "</objects>\n<interactions>" +
      interactionClass("HLAinteractionRoot",
                       interactionClass("I", element("transportation", "Later"))) +
      "</interactions>\n");
  EvolvedRun run = read(document);
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_TRUE(run->target.called("addAttribute(HLAobjectRoot, x, 0, -1, 0, 3, , 3, , 0)"));
  EXPECT_TRUE(run->target.called(
      "addInteractionClass(HLAinteractionRoot.I, HLAinteractionRoot, 0, -1, null)"));
  EXPECT_TRUE(run->target.callsOf("addUnresolvedAttributeTransportation").empty());
  EXPECT_TRUE(run->target.callsOf("addUnresolvedInteractionTransportation").empty());
}

TEST(FedReader1516eTransport, TheGetterAsksTheTargetWithTheName) {
  EvolvedRun run = read(withObjects(attribute("x", element("transportation", "Later"))), strict(1));
  EXPECT_TRUE(run->target.called("hasTransportation(Later)"));
  // The two standard names are read without a question.
  run = read(withObjects(attribute("x", element("transportation", "HLAbestEffort"))), strict(1));
  EXPECT_TRUE(run->target.callsOf("hasTransportation").empty());
}

// ---------------------------------------------------------------------------------------------
// Object class trees

TEST(FedReader1516eObjects, TheRootMustBeHLAobjectRoot) {
  const std::string text = "Object class root is not HLAobjectRoot in FDD file.";
  expectRead<DtFedReader1516e>(
      completeFdd2010("<objects>" + objectClass("ObjectRoot") + "</objects>\n"), 2, text);
  // A root with no name has the same text.
  expectRead<DtFedReader1516e>(
      completeFdd2010("<objects><objectClass><semantics>s</semantics></objectClass></objects>\n"),
      2, text);
  // An empty section is no fault.
  expectRead<DtFedReader1516e>(completeFdd2010("<objects/>\n"), 0, "", strict(1));
}

TEST(FedReader1516eObjects, OnlyTheFirstRootIsWalked) {
  EvolvedRun run =
      read(completeFdd2010("<objects>" + objectClass("HLAobjectRoot") +
                           objectClass("HLAobjectRoot", objectClass("Second")) + "</objects>\n"));
  EXPECT_EQ(modelCalls(run->target), Calls{"addObjectClass(HLAobjectRoot, null)"});
}

TEST(FedReader1516eObjects, AClassWithNoNameNamesItsParent) {
  auto run = expectRead<DtFedReader1516e>(
      withObjects(objectClass("A", "<objectClass><semantics>s</semantics></objectClass>")), 2,
      "Object class, a child of HLAobjectRoot.A, with no name found in FDD file.\n");
  EXPECT_EQ(run->target.callsOf("addObjectClass").size(), 2u);
}

TEST(FedReader1516eObjects, OtherChildrenPassSilentlyEvenUnderStrictBit1) {
  EvolvedRun run =
      read(withObjects(objectClass("A", "<bogus/><!-- c --><semantics>s</semantics>" +
                                            element("sharing", "Neither") + attribute("x"))),
           strict(1));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->outcome.error, "");
  EXPECT_TRUE(run->target.called("addAttribute(HLAobjectRoot.A, x, -1, -1, 0, 3, , 3, , 0)"));
}

TEST(FedReader1516eObjects, AClassSharingIsCheckedOnlyUnderStrictBit1) {
  const std::string document =
      withObjects(objectClass("A", element("sharing", "Everyone") + attribute("x")));
  EvolvedRun lax = read(document);
  EXPECT_EQ(lax->outcome.result, 0);
  EXPECT_TRUE(lax->target.called("addAttribute(HLAobjectRoot.A, x, -1, -1, 0, 3, , 3, , 0)"));
  auto strictRun = expectRead<DtFedReader1516e>(document, 2, "", strict(1));
  EXPECT_TRUE(strictRun->target.callsOf("addAttribute").empty());
}

TEST(FedReader1516eObjects, ARefusedClassEndsTheReadWhateverItsName) {
  // Each of these is passed over by the 1516-2000 reader; here every refusal is fatal.
  for (const char* refused : {"HLAobjectRoot.HLAmanager", "HLAobjectRoot.A"}) {
    SCOPED_TRACE(refused);
    auto run = expectRead<DtFedReader1516e>(
        withObjects(objectClass("HLAmanager") + objectClass("A") + objectClass("B")), 2, "",
        FddReadOptions(), [&](FddRecorder& target) { target.refusedObjects = {refused}; });
    EXPECT_FALSE(run->target.called("addObjectClass(HLAobjectRoot.B, HLAobjectRoot)"));
  }
}

TEST(FedReader1516eObjects, AReplacedRootCarriesTheClassesAndSkipsTheManager) {
  EvolvedRun run =
      read(withObjects(
               attribute("a") +
               objectClass("HLAmanager", objectClass("HLAfederate") + "<bogus/>" + attribute("m")) +
               objectClass("Base", attribute("b"))),
           strict(1, 3), [](FddRecorder& target) { target.refusedObjects = {"HLAobjectRoot"}; });
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(modelCalls(run->target),
            (Calls{"addObjectClass(HLAobjectRoot, null)", "addObjectClass(ObjectRoot, null)",
                   "addAttribute(ObjectRoot, a, -1, -1, 0, 3, , 3, , 0)",
                   "addObjectClass(ObjectRoot.Base, ObjectRoot)",
                   "addAttribute(ObjectRoot.Base, b, -1, -1, 0, 3, , 3, , 0)"}));
  EXPECT_TRUE(contains(run->outcome.out,
                       "Replacing HLobjectRoot with ObjectRoot to match Federation FOM.\n"
                       "Attributes and subclasses will be attempted with replacement root.\n"))
      << run->outcome.out;
  EXPECT_TRUE(contains(run->outcome.out,
                       "Skip Class: ObjectRoot.HLAmanager, Base: ObjectRoot \n"
                       "All subclasses and attributes will also be skipped\n"));
}

TEST(FedReader1516eObjects, ARootRefusedUnderBothNamesEndsTheRead) {
  auto run = expectRead<DtFedReader1516e>(withObjects(objectClass("A")), 2, "", FddReadOptions(),
                                          [](FddRecorder& target) {
                                            target.refusedObjects = {"HLAobjectRoot", "ObjectRoot"};
                                          });
  EXPECT_EQ(run->target.callsOf("addObjectClass"),
            (Calls{"addObjectClass(HLAobjectRoot, null)", "addObjectClass(ObjectRoot, null)"}));
}

// ---------------------------------------------------------------------------------------------
// Dimension lists of object classes

TEST(FedReader1516eObjectDimensions, EachNamedDimensionIsAddedTrimmed) {
  EvolvedRun run = read(
      withObjects(objectClass("A",
                              "<dimensions><dimension> D1 </dimension><dimension>NA</dimension>"
                              "<dimension></dimension><dimension>\tD2\n</dimension></dimensions>")),
      atLevel(3));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->target.callsOf("addObjectClassDimension"),
            (Calls{"addObjectClassDimension(HLAobjectRoot.A, D1)",
                   "addObjectClassDimension(HLAobjectRoot.A, D2)"}));
  EXPECT_TRUE(contains(run->outcome.out, "\tDimensions: D1, D2\n")) << run->outcome.out;
}

TEST(FedReader1516eObjectDimensions, ARefusedDimensionIsFatalOnlyUnderStrictBit1) {
  const std::string document = withObjects(objectClass("A", dimensionList({"D1", "D2"})));
  auto refuseD1 = [](FddRecorder& target) { target.refusedDimensions = {"D1"}; };
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      document, "Error adding dimension D1 for object class HLAobjectRoot.A", refuseD1);
  EXPECT_EQ(runs.lax->target.callsOf("addObjectClassDimension").size(), 2u);
  EXPECT_EQ(runs.strict->target.callsOf("addObjectClassDimension").size(), 1u);
}

TEST(FedReader1516eObjectDimensions, AnyOtherChildIsUnexpectedUnderStrictBit1) {
  // A comment is not passed over in this list.
  for (const char* other : {"<bogus>D2</bogus>", "<!-- D2 -->", "D2"}) {
    SCOPED_TRACE(other);
    const std::string document =
        withObjects(objectClass("A", "<dimensions><dimension>D1</dimension>" + std::string(other) +
                                         "<dimension>D3</dimension></dimensions>"));
    EvolvedRun lax = read(document);
    EXPECT_EQ(lax->outcome.result, 0);
    EXPECT_EQ(lax->target.callsOf("addObjectClassDimension").size(), 2u);
    auto strictRun = expectRead<DtFedReader1516e>(
        document, 2, "Unexpected tag in dimension list for object class HLAobjectRoot.A",
        strict(1));
    EXPECT_EQ(strictRun->target.callsOf("addObjectClassDimension"),
              Calls{"addObjectClassDimension(HLAobjectRoot.A, D1)"});
  }
}

TEST(FedReader1516eObjectDimensions, ANullNodeOrTargetAnswersZero) {
  struct Probe : DtFedReader1516e {
    using DtFedReader1516e::parseObjectDimensions;
    void setTarget(DtFedTarget* to) { target = to; }
  } reader;
  ParsedXml xml(fddDocument2010(dimensionList({"D"})));
  FddRecorder recorder;
  EXPECT_EQ(reader.parseObjectDimensions(childElement(xml.root(), "dimensions"), "A"), 0);
  reader.setTarget(&recorder);
  EXPECT_EQ(reader.parseObjectDimensions(nullptr, "A"), 0);
  EXPECT_TRUE(recorder.calls.empty());
  EXPECT_EQ(reader.parseObjectDimensions(childElement(xml.root(), "dimensions"), "A"), 0);
  EXPECT_EQ(recorder.calls, Calls{"addObjectClassDimension(A, D)"});
}

// ---------------------------------------------------------------------------------------------
// Dimension lists of attributes

std::string attributeWith(const std::string& dimensions) {
  return withObjects(objectClass("A", attribute("x", dimensions)));
}

TEST(FedReader1516eAttributeDimensions, TheTextNAIsNoDimension) {
  for (unsigned int mask : {0u, 1u}) {
    EvolvedRun run = read(attributeWith("<dimensions>NA</dimensions>"), strict(mask));
    EXPECT_EQ(run->outcome.result, 0);
    EXPECT_EQ(run->outcome.error, "");
    EXPECT_TRUE(run->target.callsOf("addAttributeDimension").empty());
  }
}

TEST(FedReader1516eAttributeDimensions, AnyOtherTextIsInvalidWithNoStrictBit) {
  auto run =
      expectRead<DtFedReader1516e>(attributeWith("<dimensions>D1 D2</dimensions>"), 2,
                                   "\"D1 D2\" is an invalid value for the symbol \"dimensions\"");
  // The attribute was delivered before its dimensions were read.
  EXPECT_TRUE(run->target.called("addAttribute(HLAobjectRoot.A, x, -1, -1, 0, 3, , 3, , 0)"));
  expectRead<DtFedReader1516e>(attributeWith("<dimensions>na</dimensions>"), 2,
                               "\"na\" is an invalid value for the symbol \"dimensions\"");
}

TEST(FedReader1516eAttributeDimensions, AnEmptyListOrOneThatOpensWithACommentGivesNothing) {
  for (const char* list : {"<dimensions/>",
                           "<dimensions><!-- c --><dimension>D</dimension>"
                           "</dimensions>"}) {
    SCOPED_TRACE(list);
    EvolvedRun run = read(attributeWith(list), strict(1));
    EXPECT_EQ(run->outcome.result, 0);
    EXPECT_TRUE(run->target.callsOf("addAttributeDimension").empty());
  }
}

TEST(FedReader1516eAttributeDimensions, NamesAreTrimmedAndNAInAnyCaseIsLeftOut) {
  EvolvedRun run =
      read(attributeWith("<dimensions><dimension> D1\t</dimension><dimension>na</dimension>"
                         "<dimension>Na</dimension><dimension>D2</dimension></dimensions>"),
           strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->target.callsOf("addAttributeDimension"),
            (Calls{"addAttributeDimension(HLAobjectRoot.A, x, D1)",
                   "addAttributeDimension(HLAobjectRoot.A, x, D2)"}));
}

TEST(FedReader1516eAttributeDimensions, AnEmptyDimension) {
  const std::string document =
      attributeWith("<dimensions><dimension/><dimension>D2</dimension></dimensions>");
  auto strictRun = expectRead<DtFedReader1516e>(
      document, 2, "Empty or invalid dimension in attribute x of object class HLAobjectRoot.A",
      strict(1));
  EXPECT_TRUE(strictRun->target.callsOf("addAttributeDimension").empty());
  // Without the bit the empty name goes to the target as it is.
  EvolvedRun lax = read(document);
  EXPECT_EQ(lax->outcome.result, 0);
  EXPECT_EQ(lax->target.callsOf("addAttributeDimension"),
            (Calls{"addAttributeDimension(HLAobjectRoot.A, x, )",
                   "addAttributeDimension(HLAobjectRoot.A, x, D2)"}));
}

TEST(FedReader1516eAttributeDimensions, ARefusedDimensionIsFatalOnlyUnderStrictBit1) {
  auto runs = expectLaxAndStrict<DtFedReader1516e>(
      attributeWith(dimensionList({"D1", "D2"})), "",
      "Error adding dimension D1 for attribute x of object class HLAobjectRoot.A",
      [](FddRecorder& target) { target.refusedDimensions = {"D1"}; });
  EXPECT_EQ(runs.lax->target.callsOf("addAttributeDimension").size(), 2u);
  EXPECT_EQ(runs.strict->target.callsOf("addAttributeDimension").size(), 1u);
}

TEST(FedReader1516eAttributeDimensions, AnotherChildIsUnexpectedUnderStrictBit1) {
  const std::string document = attributeWith(
      "<dimensions><dimension>D1</dimension><bogus/><dimension>D2</dimension></dimensions>");
  auto runs = expectLaxAndStrict<DtFedReader1516e>(
      document, "",
      "Unexpected tag in dimension list for attribute x of object class HLAobjectRoot.A");
  EXPECT_EQ(runs.lax->target.callsOf("addAttributeDimension").size(), 2u);
  EXPECT_EQ(runs.strict->target.callsOf("addAttributeDimension").size(), 1u);
}

// ---------------------------------------------------------------------------------------------
// Interaction class trees

TEST(FedReader1516eInteractions, TheRootMustBeHLAinteractionRoot) {
  const std::string text = "Interaction class with no root found in FDD file.";
  expectRead<DtFedReader1516e>(
      completeFdd2010("<interactions>" + interactionClass("InteractionRoot") + "</interactions>\n"),
      2, text);
  expectRead<DtFedReader1516e>(
      completeFdd2010("<interactions><interactionClass/></interactions>\n"), 2, text);
}

TEST(FedReader1516eInteractions, AClassWithNoNameNamesItsParent) {
  expectRead<DtFedReader1516e>(
      withInteractions("<interactionClass><order>Receive</order></interactionClass>"), 2,
      "Interaction class, a child of HLAinteractionRoot, with no name found in FDD file.\n");
}

TEST(FedReader1516eInteractions, AParameterWithNoName) {
  auto run = expectRead<DtFedReader1516e>(
      withInteractions(interactionClass(
          "I", "<parameter><semantics>s</semantics></parameter>" + parameter("later"))),
      2, "Parameter of HLAinteractionRoot.I has no name in FDD file.\n");
  EXPECT_TRUE(run->target.callsOf("addParameter").empty());
}

TEST(FedReader1516eInteractions, ItsOwnElementsPassAndAnyOtherIsUnexpected) {
  EvolvedRun run = read(
      withInteractions(interactionClass(
          "I", element("name", "again") + element("transportation", "HLAreliable") +
                   element("order", "Receive") + "<dimensions/>" + element("sharing", "Publish") +
                   element("semantics", "s") + "<!-- c -->" + parameter("p"))),
      strict(1));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->outcome.error, "");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      withInteractions(interactionClass("I", "<bogus/>" + parameter("p"))),
      "Unexpected tag in interactions tree for FDD file.\n\tInteractions Tag = bogus *");
  EXPECT_TRUE(runs.lax->target.called("addParameter(HLAinteractionRoot.I, p)"));
  EXPECT_FALSE(runs.strict->target.called("addParameter(HLAinteractionRoot.I, p)"));
}

TEST(FedReader1516eInteractions, AnUnknownOrder) {
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      withInteractions(interactionClass("I", element("order", "Soon"))),
      "Unknown delivery order found in FDD file.\n\tOrder = Soon\ninteractionClass *");
  EXPECT_TRUE(runs.lax->target.called(
      "addInteractionClass(HLAinteractionRoot.I, HLAinteractionRoot, -1, 0, null)"));
  EXPECT_TRUE(runs.strict->target.callsOf("addInteractionClass").size() == 1u);
}

TEST(FedReader1516eInteractions, AReplacedRootIsAWarning) {
  EvolvedRun run = read(
      withInteractions(interactionClass("HLAmanager", parameter("m")) +
                       interactionClass("I", parameter("p"))),
      atLevel(2), [](FddRecorder& target) { target.refusedInteractions = {"HLAinteractionRoot"}; });
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(modelCalls(run->target),
            (Calls{"addInteractionClass(HLAinteractionRoot, null, -1, -1, null)",
                   "addInteractionClass(InteractionRoot, null, -1, -1, null)",
                   "addInteractionClass(InteractionRoot.I, InteractionRoot, -1, -1, null)",
                   "addParameter(InteractionRoot.I, p)"}));
  EXPECT_TRUE(
      contains(run->outcome.out + run->outcome.err,
               "Replacing HLAinteractionRoot with InteractionRoot to match Federation "
               "FOM.\nParameters and subclasses will be attempted with replacement root.\n"))
      << run->outcome.out << run->outcome.err;
}

TEST(FedReader1516eInteractions, TheFourManagementClassesAreOmittedOnRefusal) {
  for (const char* name : {"HLArequestSynchronizationPoint", "HLAreportSynchronizationPoint",
                           "HLArequestAttributeTransportationTypeChange",
                           "HLArequestInteractionTransportationTypeChange"}) {
    SCOPED_TRACE(name);
    const std::string path = std::string("HLAinteractionRoot.") + name;
    EvolvedRun run =
        read(withInteractions(interactionClass(name, dimensionList({"D"}) + parameter("p") +
                                                         interactionClass("Sub")) +
                              interactionClass("After")),
             atLevel(2), [&](FddRecorder& target) { target.refusedInteractions = {path}; });
    EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
    EXPECT_TRUE(contains(run->outcome.out + run->outcome.err,
                         "Federation FOM does not have interaction class " + path +
                             " omitting it from DtFom representation.\n"));
    // Its dimensions are still offered; its parameters and subclasses are not.
    EXPECT_TRUE(run->target.called("addInteractionDimension(" + path + ", D)"));
    EXPECT_TRUE(run->target.callsOf("addParameter").empty());
    EXPECT_TRUE(run->target.called(
        "addInteractionClass(HLAinteractionRoot.After, HLAinteractionRoot, -1, -1, null)"));
  }
}

TEST(FedReader1516eInteractions, TheNamesOfTheOlderFormAreNotOmitted) {
  for (const char* name :
       {"HLAchangeAttributeTransportationType", "HLAchangeInteractionTransportationType"}) {
    SCOPED_TRACE(name);
    const std::string path = std::string("HLAinteractionRoot.") + name;
    auto run = expectRead<DtFedReader1516e>(
        withInteractions(interactionClass(name) + interactionClass("After")), 2, "",
        FddReadOptions(), [&](FddRecorder& target) { target.refusedInteractions = {path}; });
    EXPECT_FALSE(run->target.called(
        "addInteractionClass(HLAinteractionRoot.After, HLAinteractionRoot, -1, -1, null)"));
  }
}

TEST(FedReader1516eInteractions, TheManagerUnderAReplacedRootIsSkippedWithItsDimensions) {
  EvolvedRun run = read(
      withInteractions(
          interactionClass("HLAmanager", dimensionList({"D"}) + "<bogus/>" + parameter("m"))),
      strict(1), [](FddRecorder& target) { target.refusedInteractions = {"HLAinteractionRoot"}; });
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(modelCalls(run->target),
            (Calls{"addInteractionClass(HLAinteractionRoot, null, -1, -1, null)",
                   "addInteractionClass(InteractionRoot, null, -1, -1, null)"}));
}

// ---------------------------------------------------------------------------------------------
// Dimension lists of interactions

TEST(FedReader1516eInteractionDimensions, AMissingListIsNoFaultEvenUnderStrictBit1) {
  expectRead<DtFedReader1516e>(withInteractions(interactionClass("I")), 0, "", strict(1));
}

TEST(FedReader1516eInteractionDimensions, NamesAreTrimmedAndNAIsLeftOut) {
  EvolvedRun run = read(withInteractions(
      interactionClass("I",
                       "<dimensions><dimension> D1 </dimension><dimension>NA</dimension>"
                       "<dimension>D2</dimension></dimensions>")));
  EXPECT_EQ(run->target.callsOf("addInteractionDimension"),
            (Calls{"addInteractionDimension(HLAinteractionRoot.I, D1)",
                   "addInteractionDimension(HLAinteractionRoot.I, D2)"}));
}

TEST(FedReader1516eInteractionDimensions, ARefusedDimensionAndAWrongChild) {
  auto refused = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      withInteractions(interactionClass("I", dimensionList({"D1", "D2"}))),
      "Error adding dimension D1 for interaction class HLAinteractionRoot.I",
      [](FddRecorder& target) { target.refusedDimensions = {"D1"}; });
  EXPECT_EQ(refused.lax->target.callsOf("addInteractionDimension").size(), 2u);
  auto wrong = expectLaxAndStrict<DtFedReader1516e>(
      withInteractions(interactionClass("I",
                                        "<dimensions><bogus/><dimension>D</dimension>"
                                        "</dimensions>" +
                                            parameter("p"))),
      "", "Unexpected tag in dimension list for interaction class HLAinteractionRoot.I");
  EXPECT_TRUE(wrong.lax->target.called("addInteractionDimension(HLAinteractionRoot.I, D)"));
  EXPECT_FALSE(wrong.strict->target.called("addParameter(HLAinteractionRoot.I, p)"));
}

// ---------------------------------------------------------------------------------------------
// The dimensions section

std::string added(const std::string& name, const std::string& values) {
  return "addDimension(" + name + ", " + values + ")";
}

TEST(FedReader1516eDimensions, AStandardDimensionMayLeaveItsUpperBoundOut) {
  EvolvedRun run = read(withDimensions(dimension("<name>HLAfederate</name>")), strict(1));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->target.callsOf("addDimension"),
            Calls{added("HLAfederate", std::string(kAll) + ", 0, " + kAll + ", false, ")});
}

TEST(FedReader1516eDimensions, AnyOtherDimensionWithNoUpperBoundFails) {
  // There is no rule for "Federate" here: it is a dimension like any other.
  for (const char* name : {"X", "Federate", "hlaX"}) {
    SCOPED_TRACE(name);
    auto run = expectRead<DtFedReader1516e>(
        withDimensions(dimension(element("name", name) + "<normalization>n</normalization>")), 2,
        "Dimension \"" + std::string(name) + "\" missing upper bound in FDD file.");
    EXPECT_TRUE(run->target.callsOf("addDimension").empty());
  }
}

TEST(FedReader1516eDimensions, ADimensionWithNoValueCoversTheWholeRange) {
  EvolvedRun run = read(withDimensions(dimension("<name>X</name><upperBound>10</upperBound>")));
  EXPECT_EQ(run->target.callsOf("addDimension"),
            Calls{added("X", "10, 0, " + std::string(kAll) + ", false, ")});
}

TEST(FedReader1516eDimensions, TheValuesOfTheOlderForm) {
  struct Case {
    const char* bound;
    const char* value;
    const char* delivered;  // null: the value is invalid
  };
  const Case cases[] = {{"6", "[5)", "6, 5, 6, false, "},
                        {"5", "[5)", nullptr},
                        {"10", "[2..10)", "10, 2, 10, false, "},
                        {"10", "[2..2)", nullptr},
                        {"10", " [ 2 .. 7) ", "10, 2, 7, false, "},
                        {"10", "[2..11)", nullptr},
                        {"10", "EXCLUDED", "10, 0, 18446744073709551615, true, "},
                        {"10", "[5", nullptr},
                        {"10", "bounded", nullptr},
                        {"10", "[x)", nullptr}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.bound) + " " + c.value);
    const std::string document = withDimensions(
        dimension("<name>X</name>" + element("upperBound", c.bound) + element("value", c.value)));
    if (c.delivered) {
      EvolvedRun run = read(document);
      EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
      EXPECT_EQ(run->target.callsOf("addDimension"), Calls{added("X", c.delivered)});
    } else {
      expectRead<DtFedReader1516e>(document, 2, "Dimension \"X\" value is invalid in FDD file.");
    }
  }
}

TEST(FedReader1516eDimensions, AnInvalidUpperBoundAndNoName) {
  expectRead<DtFedReader1516e>(
      withDimensions(dimension("<name>X</name><upperBound>ten</upperBound>")), 2,
      "Dimension \"X\" upper bound is invalid in FDD file.");
  expectRead<DtFedReader1516e>(withDimensions(dimension("<upperBound>10</upperBound>")), 2,
                               "Dimension with no name found in FDD file.");
}

TEST(FedReader1516eDimensions, TheNormalizationIsPassedOnAndTheLineLogged) {
  EvolvedRun run = read(withDimensions(dimension("<name>X</name><upperBound>10</upperBound>"
                                                 "<normalization>linear</normalization>"
                                                 "<value>[2..5)</value>")),
                        atLevel(3));
  EXPECT_EQ(run->target.callsOf("addDimension"), Calls{added("X", "10, 2, 5, false, linear")});
  EXPECT_TRUE(contains(run->outcome.out, "Dimensions:")) << run->outcome.out;
  EXPECT_TRUE(contains(run->outcome.out, "\tX, 10, 2, 5, 0, linear")) << run->outcome.out;
}

TEST(FedReader1516eDimensions, AWrongChildOfTheSection) {
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      withDimensions("<bogus/>" + dimension("<name>HLAx</name>")),
      "Unexpected tag in dimension list for FDD file.\n\tDimensions Tag = bogus *");
  EXPECT_EQ(runs.lax->target.callsOf("addDimension").size(), 1u);
  EXPECT_TRUE(runs.strict->target.callsOf("addDimension").empty());
}

TEST(FedReader1516eDimensions, EveryBadDimensionEndsTheWalk) {
  auto run = expectRead<DtFedReader1516e>(
      withDimensions(dimension("<name>X</name>") + dimension("<name>HLAy</name>")), 2,
      "Dimension \"X\" missing upper bound in FDD file.");
  EXPECT_TRUE(run->target.callsOf("addDimension").empty());
}

}  // namespace
