// The IEEE 1516-2000 reader at the document level: the steps of a read, DTD validation, the
// order of the top-level sections and the report of missing ones, the switches, the four small
// sections (tags, synchronization points, transportations, time), the check of a document
// parsed by the caller, and what a failing target does to a read.
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader1516.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"
#include "support/files.h"

using namespace KORRti;
using namespace ktltest;

namespace {

// A document with a DOCTYPE line: the XML declaration, the DOCTYPE, then the root around body.
std::string withDoctype(const std::string& doctype, const std::string& body) {
  std::string document = completeFdd(body);
  size_t rootAt = document.find("<objectModel");
  return document.substr(0, rootAt) + doctype + "\n" + document.substr(rootAt);
}

// A DTD that declares every section of a document, with any content.
const char* const theSmallDtd =
    "<!ELEMENT objectModel ANY>\n"
    "<!ATTLIST objectModel name CDATA #IMPLIED>\n"
    "<!ELEMENT objects ANY>\n"
    "<!ELEMENT interactions ANY>\n"
    "<!ELEMENT dimensions ANY>\n"
    "<!ELEMENT transportations ANY>\n"
    "<!ELEMENT switches ANY>\n"
    "<!ELEMENT dataTypes ANY>\n"
    "<!ELEMENT notes ANY>\n"
    "<!ELEMENT time ANY>\n"
    "<!ELEMENT synchronizations ANY>\n"
    "<!ELEMENT objectClass ANY>\n"
    "<!ATTLIST objectClass name CDATA #REQUIRED>\n";

const char* const theRootClass = "<objects><objectClass name=\"HLAobjectRoot\"/></objects>\n";
const char* const theBadRootClass =
    "<objects><objectClass name=\"HLAobjectRoot\" undeclared=\"1\"/></objects>\n";

// Options that validate, with this strict checking mask and notify level.
FddReadOptions validating(unsigned int mask, int level = 1) {
  FddReadOptions options = strict(mask, level);
  options.validate = true;
  return options;
}

// ---------------------------------------------------------------------------------------------
// readFedFilePtr

TEST(FedReader1516Read, ANullFileAnswersOneAndStoresNothing) {
  DtFedReader1516 reader;
  FddRecorder target;
  reader.setStrictChecking(5);
  FedReadOutcome outcome = captureFedRead(reader, 4, [&] {
    return reader.readFedFilePtr(nullptr, &target, DtFilename("x.xml"), 1, true, true);
  });
  EXPECT_EQ(outcome.result, 1);
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(target.calls.empty());
  EXPECT_EQ(reader.setStrictChecking(0), 5u);
  EXPECT_EQ(reader.takeCurrFddData(), nullptr);
}

TEST(FedReader1516Read, TellsTheTargetItsFormatFirstAndStoresTheMask) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, completeFdd(theRootClass), &target, strict(3));
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  ASSERT_FALSE(target.calls.empty());
  EXPECT_EQ(target.calls[0], "setFomType(2)");
  EXPECT_EQ(target.fomType(), DtFomType1516);
  EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)"));
  EXPECT_EQ(reader.setStrictChecking(0), 3u);
}

TEST(FedReader1516Read, ThroughReadFed) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddThroughReadFed(reader, completeFdd(theRootClass), &target);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  ASSERT_GE(target.calls.size(), 2u);
  EXPECT_EQ(target.calls[0], "fomType()");
  EXPECT_EQ(target.calls[1], "setFomType(2)");
  EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516Read, AnUnparsableBodyHasNoRoot) {
  for (const std::string& text :
       {std::string("<?xml version=\"1.0\"?>\n<objectModel name=\"x\"><objects>"), std::string(""),
        std::string("no markup at all")}) {
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, text, &target);
    EXPECT_EQ(outcome.result, 2) << text;
    EXPECT_EQ(outcome.error, "Bad FDD File. Could not find Document Root in FDD File.");
    EXPECT_EQ(target.calls, Calls{"setFomType(2)"});
  }
}

TEST(FedReader1516Read, AWrongDocumentTypeWithValidateEndsWithMissingDtd) {
  for (unsigned int mask : {0u, 1u}) {
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome =
        readFddText(reader, withDoctype("<!DOCTYPE other SYSTEM \"other.dtd\">", theRootClass),
                    &target, validating(mask));
    EXPECT_EQ(outcome.result, 2);
    EXPECT_EQ(outcome.error, "FDD missing DTD.");
    EXPECT_EQ(target.calls, Calls{"setFomType(2)"});
  }
}

// A validation fault is reported and read past without strict checking; with it the read ends
// before anything reaches the target.
void expectValidationFatalOnlyWhenStrict(const FddFile& file, const std::string& error) {
  LaxAndStrict runs =
      expectFatalOnlyWhenStrict(file, error, FddSetUp(), validating(0), validating(1));
  EXPECT_TRUE(runs.lax->target.called("addObjectClass(HLAobjectRoot, null)"));
  EXPECT_EQ(runs.strict->target.calls, Calls{"setFomType(2)"});
}

TEST(FedReader1516Read, NoDtdWithValidateFailsOnlyUnderStrictChecking) {
  expectValidationFatalOnlyWhenStrict(FddFile{writeTempFile(completeFdd(theRootClass), ".xml")},
                                      "FDD missing DTD.");
}

TEST(FedReader1516Read, WithoutValidateTheDoctypeIsNotLookedAt) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader, withDoctype("<!DOCTYPE other SYSTEM \"/nowhere/other.dtd\">", theRootClass), &target,
      strict(1, 2));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out, "");
  EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516Read, ARelativeDtdIsFoundBesideTheDocument) {
  TempDir dir;
  dir.write("small.dtd", theSmallDtd);
  std::string path = dir.write(
      "model.xml", withDoctype("<!DOCTYPE objectModel SYSTEM \"small.dtd\">", theRootClass));
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddFile(reader, path, &target, validating(1, 2));
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out, "Checking path relative to FED file directory for small.dtd\n");
  EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)"));

  // Below the info level the line is not written.
  DtFedReader1516 quiet;
  FddRecorder quietTarget;
  outcome = readFddFile(quiet, path, &quietTarget, validating(1, 1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.out, "");
}

TEST(FedReader1516Read, AnAbsoluteDtdIsTakenAsItStands) {
  TempDir dir;
  std::string dtd = dir.write("dtd/small.dtd", theSmallDtd);
  std::string path = dir.write(
      "model.xml", withDoctype("<!DOCTYPE objectModel SYSTEM \"" + dtd + "\">", theRootClass));
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddFile(reader, path, &target, validating(1, 2));
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out, "");
}

TEST(FedReader1516Read, AFailedValidationIsFatalOnlyUnderStrictChecking) {
  TempDir dir;
  dir.write("small.dtd", theSmallDtd);
  std::string path = dir.write(
      "model.xml", withDoctype("<!DOCTYPE objectModel SYSTEM \"small.dtd\">", theBadRootClass));
  expectValidationFatalOnlyWhenStrict(FddFile{path}, "FDD failed DTD validation.");
}

TEST(FedReader1516Read, AMissingDtdFileFailsValidation) {
  TempDir dir;
  std::string path = dir.write(
      "model.xml", withDoctype("<!DOCTYPE objectModel SYSTEM \"absent.dtd\">", theRootClass));
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddFile(reader, path, &target, validating(1));
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "FDD failed DTD validation.");
}

// A listening socket on 127.0.0.1 with a port of the system's choice.
class Listener {
 public:
  Listener() {
    fd_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    if (fd_ < 0 || ::bind(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(fd_, 4) != 0) {
      return;
    }
    socklen_t size = sizeof address;
    if (::getsockname(fd_, reinterpret_cast<sockaddr*>(&address), &size) == 0) {
      port_ = ntohs(address.sin_port);
    }
    ::fcntl(fd_, F_SETFL, ::fcntl(fd_, F_GETFL) | O_NONBLOCK);
  }
  ~Listener() {
    if (fd_ >= 0) ::close(fd_);
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  int port() const { return port_; }
  // Whether anybody connected: a connection waiting shows in poll and in accept.
  bool connected() const {
    pollfd waiting{fd_, POLLIN, 0};
    bool readable = ::poll(&waiting, 1, 200) > 0 && (waiting.revents & POLLIN);
    int accepted = ::accept(fd_, nullptr, nullptr);
    if (accepted >= 0) ::close(accepted);
    return readable || accepted >= 0;
  }

 private:
  int fd_ = -1;
  int port_ = 0;
};

TEST(FedReader1516Read, ADtdNamedByAUrlIsNeverFetched) {
  Listener listener;
  ASSERT_GT(listener.port(), 0);
  std::string url = "http://127.0.0.1:" + std::to_string(listener.port()) + "/x.dtd";
  for (unsigned int mask : {0u, 1u}) {
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(
        reader, withDoctype("<!DOCTYPE objectModel SYSTEM \"" + url + "\">", theRootClass), &target,
        validating(mask));
    EXPECT_EQ(outcome.result, mask ? 2 : 0);
    EXPECT_EQ(outcome.error, "FDD failed DTD validation.");
  }
  EXPECT_FALSE(listener.connected());
}

TEST(FedReader1516Read, AnExceptionFromTheTargetFailsTheRead) {
  for (const char* operation : {"addObjectClass", "hasTime", "addDimension", "setAutoProvide"}) {
    DtFedReader1516 reader;
    FddRecorder target;
    target.throwOn = operation;
    FedReadOutcome outcome = readFddText(
        reader,
        completeFdd(std::string(theRootClass) +
                    "<time><timeStamp dataType=\"T\"/></time>\n"
                    "<dimensions><dimension name=\"D\" upperBound=\"4\"/></dimensions>\n"),
        &target);
    EXPECT_EQ(outcome.result, 2) << operation;
    EXPECT_EQ(outcome.error, "Unexpected problem reading FDD.") << operation;
  }
}

TEST(FedReader1516Read, LastErrorKeepsAWarningOverSuccessfulReads) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, fddDocument(theRootClass), &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "Missing or invalid Sync Points");
  FddRecorder second;
  outcome = readFddText(reader, completeFdd(theRootClass), &second);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "Missing or invalid Sync Points");
}

// ---------------------------------------------------------------------------------------------
// processFed: order and missing sections

TEST(FedReader1516ProcessFed, DimensionsAndTransportationsComeFirstWhereverTheyStand) {
  const std::string text = completeFdd(
      "<objects><objectClass name=\"HLAobjectRoot\">\n"
      "<attribute name=\"a\" transportation=\"Fast\" dimensions=\"D\"/>\n"
      "</objectClass></objects>\n"
      "<interactions><interactionClass name=\"HLAinteractionRoot\" dimensions=\"NA\"/>"
      "</interactions>\n"
      "<transportations><transportation name=\"Fast\"/></transportations>\n"
      "<dimensions><dimension name=\"D\" upperBound=\"10\"/></dimensions>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  Calls expected = {"setFomType(2)",
                    "addDimension(D, 10, 0, 1, false, )",
                    "addTransportation(Fast)",
                    "addObjectClass(HLAobjectRoot, null)",
                    "addAttribute(HLAobjectRoot, a, -1, -1, 0, 3, , 3, , 0)",
                    "addAttributeDimension(HLAobjectRoot, a, D)",
                    "addInteractionClass(HLAinteractionRoot, null, -1, -1, null)"};
  Calls delivered = target.deliveries();
  // The switches section adds its seven setters at its place, after the interactions.
  ASSERT_GE(delivered.size(), expected.size());
  EXPECT_EQ(Calls(delivered.begin(), delivered.begin() + expected.size()), expected);
}

TEST(FedReader1516ProcessFed, DimensionsComeBeforeTransportations) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd("<transportations><transportation name=\"HLAreliable\"/></transportations>\n"
                  "<dimensions><dimension name=\"D\" upperBound=\"10\"/></dimensions>\n"),
      &target);
  EXPECT_EQ(outcome.result, 0);
  int dimension = target.indexOf("addDimension(D, 10, 0, 1, false, )");
  int transportation = target.indexOf("addTransportation(HLAreliable)");
  ASSERT_GE(dimension, 0);
  ASSERT_GE(transportation, 0);
  EXPECT_LT(dimension, transportation);
}

TEST(FedReader1516ProcessFed, AFailedDimensionStopsTheWholeRead) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd("<transportations><transportation name=\"HLAreliable\"/></transportations>\n"
                  "<dimensions><dimension name=\"D\"/></dimensions>\n" +
                  std::string(theRootClass)),
      &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Dimension \"D\" missing upper bound in FDD file.\nname= D\n");
  EXPECT_EQ(target.calls, Calls{"setFomType(2)"});
}

TEST(FedReader1516ProcessFed, ASecondDimensionsOrTransportationsSectionIsPassedOver) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome =
      readFddText(reader,
                  completeFdd("<dimensions><dimension name=\"A\" upperBound=\"2\"/></dimensions>\n"
                              "<transportations><transportation name=\"T1\"/></transportations>\n"
                              "<dimensions><dimension name=\"B\" upperBound=\"2\"/></dimensions>\n"
                              "<transportations><transportation name=\"T2\"/></transportations>\n"),
                  &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(target.callsOf("addDimension"), Calls{"addDimension(A, 2, 0, 1, false, )"});
  EXPECT_EQ(target.callsOf("addTransportation"), Calls{"addTransportation(T1)"});
}

TEST(FedReader1516ProcessFed, ANullRootIsAnInvalidNode) {
  DtFedReader1516 reader;
  EXPECT_EQ(reader.processFed(nullptr), 2);
  EXPECT_EQ(str(reader.lastError()), "Invalid node");
}

TEST(FedReader1516ProcessFed, EverySectionPresentLeavesNoText) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, completeFdd(""), &target, strict(3));
  EXPECT_EQ(outcome.result, 0);
  // There is no update rates section in this form, and none is reported missing.
  EXPECT_EQ(outcome.error, "");
}

struct MissingCase {
  const char* section;
  const char* text;
  int strictResult;
};

const MissingCase theMissingCases[] = {
    {"objects", "Missing or invalid objects table", 2},
    {"interactions", "Missing or invalid interactions table", 0},
    {"dimensions", "Missing or invalid dimensions table", 0},
    {"transportations", "Missing or invalid transportations table", 0},
    {"switches", "Missing or invalid switches table", 0},
    {"dataTypes", "Missing or invalid Data Types", 0},
    {"notes", "Missing or invalid Notes", 0},
    {"time", "Missing or invalid Time", 0},
    {"synchronizations", "Missing or invalid Sync Points", 0},
};

// Every section but the one named, each empty.
std::string allBut(const std::string& missing) {
  std::string body;
  for (const MissingCase& c : theMissingCases) {
    if (missing != c.section) body += std::string("<") + c.section + "/>\n";
  }
  return fddDocument(body);
}

TEST(FedReader1516ProcessFed, EachMissingSectionHasItsText) {
  for (const MissingCase& c : theMissingCases) {
    DtFedReader1516 reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, allBut(c.section), &target);
    EXPECT_EQ(outcome.result, 0) << c.section;
    EXPECT_EQ(outcome.error, c.text);

    DtFedReader1516 strictReader;
    FddRecorder strictTarget;
    outcome = readFddText(strictReader, allBut(c.section), &strictTarget, strict(3));
    EXPECT_EQ(outcome.result, c.strictResult) << c.section;
    EXPECT_EQ(outcome.error, c.text);
  }
}

TEST(FedReader1516ProcessFed, TheLastMissingSectionIsTheOneLeft) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader, fddDocument("<interactions/><time/><synchronizations/>\n"), &target, strict(1));
  // Objects missing is fatal, and the tests go on to the end all the same.
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Missing or invalid Notes");

  DtFedReader1516 other;
  FddRecorder otherTarget;
  outcome = readFddText(other, fddDocument("<objects/>\n"), &otherTarget);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "Missing or invalid Sync Points");
}

TEST(FedReader1516ProcessFed, UnrecognizedTopLevelTag) {
  LaxAndStrict runs = expectFatalOnlyWhenStrict(
      completeFdd("<bogus/>\n" + std::string(theRootClass)), "Unrecognized top-level tag: bogus");
  EXPECT_TRUE(runs.lax->target.called("addObjectClass(HLAobjectRoot, null)"));
  EXPECT_FALSE(runs.strict->target.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516ProcessFed, TagsAreNotASectionThatCanBeMissing) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, completeFdd("<tags/>\n"), &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
}

TEST(FedReader1516ProcessFed, TheVerboseLogOfTheTopLevel) {
  const std::string text = fddDocument(
      "<!-- c -->\n<tags/>\n<transportations/>\n<dimensions/>\n<objects/>\n"
      "<interactions/>\n<dataTypes/>\n<notes/>\n<time/>\n<synchronizations/>\n<switches/>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target, atLevel(3));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.out,
            "Federation Properties:\n"
            "name= test\n \n\n"
            "\nTop-level Tag: dimensions\n"
            "\nTop-level Tag: transportations\n"
            "\nTop-level Tag: comment\n"
            "\nTop-level Tag: tags\n"
            "\nTop-level Tag: transportations\n"
            "\nTop-level Tag: dimensions\n"
            "\nTop-level Tag: objects\n"
            "\nTop-level Tag: interactions\n"
            "\nTop-level Tag: dataTypes\n"
            " \n\n"
            "\nTop-level Tag: notes\n"
            "\nTop-level Tag: time\n"
            "\nTop-level Tag: synchronizations\n"
            "\nTop-level Tag: switches\n");
}

// ---------------------------------------------------------------------------------------------
// Switches

TEST(FedReader1516Switches, EnabledAndDisabledThenTheSevenSettersInOrder) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd("<switches autoProvide=\"Enabled\" serviceReporting=\"Disabled\" "
                  "attributeScopeAdvisory=\"Enabled\" conveyProducingFederate=\"Enabled\"/>\n"),
      &target);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  Calls expected = {"setFomType(2)",
                    "isKnownSwitch(autoProvide)",
                    "hasSwitch(autoProvide)",
                    "setSwitch(autoProvide, true)",
                    "isKnownSwitch(serviceReporting)",
                    "hasSwitch(serviceReporting)",
                    "setSwitch(serviceReporting, false)",
                    "isKnownSwitch(attributeScopeAdvisory)",
                    "hasSwitch(attributeScopeAdvisory)",
                    "setSwitch(attributeScopeAdvisory, true)",
                    "isKnownSwitch(conveyProducingFederate)",
                    "hasSwitch(conveyProducingFederate)",
                    "setSwitch(conveyProducingFederate, true)"};
  // Then the seven setters, true for the two switches enabled.
  const Calls pushes = switchPushes({"autoProvide", "attributeScopeAdvisory"});
  expected.insert(expected.end(), pushes.begin(), pushes.end());
  EXPECT_EQ(target.calls, expected);
  EXPECT_TRUE(target.switchValue("conveyProducingFederate"));
}

TEST(FedReader1516Switches, ANonStandardSwitchIsIgnoredAndNeverFatal) {
  const std::string text = completeFdd("<switches madeUp=\"Enabled\" autoProvide=\"Enabled\"/>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, text, &target, strict(1, 3));
  EXPECT_EQ(outcome.result, 0);
  const std::string message = "Ignoring non standard switch madeUp with value Enabled\nswitches *" +
                              atNode(text, "switches", "<switches");
  EXPECT_EQ(outcome.error, message);
  EXPECT_NE(outcome.out.find(message), std::string::npos) << outcome.out;
  EXPECT_FALSE(target.called("hasSwitch(madeUp)"));
  EXPECT_FALSE(target.called("setSwitch(madeUp, true)"));
  EXPECT_TRUE(target.called("setSwitch(autoProvide, true)"));
  EXPECT_TRUE(target.called("setAutoProvide(true)"));
}

TEST(FedReader1516Switches, ADuplicateComesFromAnEarlierReadIntoTheSameTarget) {
  FddRecorder target;
  DtFedReader1516 first;
  FedReadOutcome outcome =
      readFddText(first, completeFdd("<switches autoProvide=\"Enabled\"/>\n"), &target);
  EXPECT_EQ(outcome.result, 0);
  target.calls.clear();

  const std::string text = completeFdd("<switches autoProvide=\"Disabled\"/>\n");
  DtFedReader1516 second;
  outcome = readFddText(second, text, &target, strict(1, 3));
  EXPECT_EQ(outcome.result, 0);
  const std::string message =
      "Ignoring Unexpected duplicate switch autoProvide with value Disabled\nswitches *" +
      atNode(text, "switches", "<switches");
  EXPECT_EQ(outcome.error, message);
  EXPECT_NE(outcome.out.find(message), std::string::npos);
  EXPECT_FALSE(target.called("setSwitch(autoProvide, false)"));
  EXPECT_TRUE(target.called("setAutoProvide(true)"));
}

TEST(FedReader1516Switches, AnInvalidValue) {
  const std::string text = completeFdd(
      "<switches autoProvide=\"Yes\" serviceReporting=\"Enabled\"/>\n" + std::string(theRootClass));
  const std::string message =
      "Invalid value, Yes, found for switch autoProvide" + atNode(text, "switches", "<switches");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(text, message, FddSetUp(), atLevel(3));
  const std::string& out = runs.lax->outcome.out;
  EXPECT_NE(out.find("\tautoProvide                   : Yes Invalid!\n"), std::string::npos) << out;
  const FddRecorder& target = runs.lax->target;
  EXPECT_FALSE(target.called("setSwitch(autoProvide, true)"));
  EXPECT_FALSE(target.called("setSwitch(autoProvide, false)"));
  EXPECT_TRUE(target.called("setAutoProvide(false)"));
  EXPECT_TRUE(target.called("setServiceReporting(true)"));

  // Under strict checking the loop still goes on, but no setter is called and the read ends.
  const FddRecorder& strictTarget = runs.strict->target;
  EXPECT_TRUE(strictTarget.called("setSwitch(serviceReporting, true)"));
  EXPECT_TRUE(strictTarget.callsOf("setAutoProvide").empty());
  EXPECT_TRUE(strictTarget.callsOf("setServiceReporting").empty());
  EXPECT_TRUE(strictTarget.callsOf("switchValue").empty());
  EXPECT_FALSE(strictTarget.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516Switches, SkipSwitchesIgnoresTheSectionEvenABadValue) {
  DtFedReader1516 reader;
  FddRecorder target;
  FddReadOptions options = strict(1);
  options.skipSwitches = true;
  FedReadOutcome outcome = readFddText(
      reader, completeFdd("<switches autoProvide=\"Nonsense\" madeUp=\"x\"/>\n"), &target, options);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(target.calls, Calls{"setFomType(2)"});
}

TEST(FedReader1516Switches, NoTargetNoWalk) {
  Probe1516 reader;
  reader.setMask(1);
  ParsedXml doc("<switches autoProvide=\"Nonsense\"/>");
  EXPECT_EQ(reader.parseSwitches(doc.root()), 0);
  EXPECT_EQ(str(reader.lastError()), "");
}

// ---------------------------------------------------------------------------------------------
// Tags

TEST(FedReader1516Tags, EveryChildIsATagACommentToo) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome =
      readFddText(reader,
                  completeFdd("<tags>\n<!-- about tags -->\n"
                              "<updateReflectTag dataType=\"HLAopaqueData\" semantics=\"s\" "
                              "dataTypeNotes=\"n1\" semanticsNotes=\"n2\"/>\n"
                              "<sendReceiveTag dataType=\"T\"/>\n</tags>\n"),
                  &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  Calls expected = {"setFomType(2)",
                    "hasUserSuppliedTag(comment)",
                    "addUserSuppliedTag(comment)",
                    "hasUserSuppliedTag(updateReflectTag)",
                    "addUserSuppliedTag(updateReflectTag)",
                    "hasUserSuppliedTag(sendReceiveTag)",
                    "addUserSuppliedTag(sendReceiveTag)"};
  EXPECT_EQ(Calls(target.calls.begin(), target.calls.begin() + expected.size()), expected);
  ASSERT_EQ(target.tags.size(), 3u);
  EXPECT_EQ(str(target.tags[0]->name), "comment");
  EXPECT_EQ(str(target.tags[0]->dataType), "");
  EXPECT_EQ(str(target.tags[1]->name), "updateReflectTag");
  EXPECT_EQ(str(target.tags[1]->dataType), "HLAopaqueData");
  EXPECT_EQ(str(target.tags[1]->semantics), "s");
  EXPECT_EQ(str(target.tags[2]->dataType), "T");
}

TEST(FedReader1516Tags, AnyAnnotationIsPassedOverInTheSmallSections) {
  // Not only the annotation of a taken attribute: every name ending in "Notes" is accepted.
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd("<tags>\n<updateReflectTag dataType=\"D\" labelNotes=\"n\" otherNotes=\"n\"/>\n"
                  "</tags>\n<time>\n<timeStamp dataType=\"T\" nameNotes=\"n\"/>\n</time>\n"),
      &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  ASSERT_EQ(target.tags.size(), 1u);
  EXPECT_EQ(str(target.tags[0]->dataType), "D");
  // A name that is only "Notes" is no annotation.
  DtFedReader1516 other;
  FddRecorder otherTarget;
  outcome = readFddText(other, completeFdd("<tags>\n<t Notes=\"n\"/>\n</tags>\n"), &otherTarget,
                        strict(1));
  EXPECT_EQ(outcome.result, 2);
}

TEST(FedReader1516Tags, AWrongAttribute) {
  const std::string text = completeFdd(
      "<tags>\n<first bogus=\"1\" dataType=\"D\"/>\n<second dataType=\"E\"/>\n</tags>\n");
  const std::string message =
      "Unexpected attribute in a User Supplied Tag for FDD file.\n\tAttribute = bogus" +
      atNode(text, "first", "<first");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(text, message);
  const auto& tags = runs.lax->target.tags;
  ASSERT_EQ(tags.size(), 2u);
  EXPECT_EQ(str(tags[0]->dataType), "D");

  // Under strict checking the filling stops at the fault, the record is still delivered, and
  // the walk ends after it.
  const auto& strictTags = runs.strict->target.tags;
  ASSERT_EQ(strictTags.size(), 1u);
  EXPECT_EQ(str(strictTags[0]->name), "first");
  EXPECT_EQ(str(strictTags[0]->dataType), "");
}

TEST(FedReader1516Tags, AnyTextInTheSectionIsATagToo) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, completeFdd("<tags>words<t/></tags>\n"), &target);
  EXPECT_EQ(outcome.result, 0);
  ASSERT_EQ(target.tags.size(), 2u);
  EXPECT_EQ(str(target.tags[0]->name), "text");
  EXPECT_EQ(str(target.tags[1]->name), "t");
}

// ---------------------------------------------------------------------------------------------
// Synchronization points

TEST(FedReader1516Synchronizations, CapabilitiesAndFields) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd("<synchronizations>\n"
                  "<synchronization label=\"A\" capability=\"Register\" dataType=\"D\" "
                  "semantics=\"s\" labelNotes=\"n\" capabilityNotes=\"n\" dataTypeNotes=\"n\" "
                  "semanticsNotes=\"n\"/>\n"
                  "<!-- between -->\n"
                  "<synchronization label=\"B\" capability=\"Achieve\"/>\n"
                  "<synchronization label=\"C\" capability=\"RegisterAchieve\"/>\n"
                  "<synchronization label=\"D\" capability=\"NoSynch\"/>\n"
                  "<synchronization label=\"E\" capability=\"NA\"/>\n"
                  "<synchronization label=\"F\"/>\n"
                  "</synchronizations>\n"),
      &target, strict(1, 3));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  ASSERT_EQ(target.synchronizationPoints.size(), 6u);
  const char* labels[] = {"A", "B", "C", "D", "E", "F"};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(str(target.synchronizationPoints[i]->label), labels[i]);
    EXPECT_EQ(target.synchronizationPoints[i]->capability, i < 5 ? i + 1 : 0) << labels[i];
    EXPECT_TRUE(target.called(std::string("hasSynchronizationPoint(") + labels[i] + ")"));
  }
  EXPECT_EQ(str(target.synchronizationPoints[0]->dataType), "D");
  EXPECT_EQ(str(target.synchronizationPoints[0]->semantics), "s");
  EXPECT_LT(target.indexOf("hasSynchronizationPoint(A)"),
            target.indexOf("addSynchronizationPoint(A)"));
  EXPECT_NE(outcome.out.find("\tA"), std::string::npos);
  EXPECT_NE(outcome.out.find("\tF"), std::string::npos);
}

TEST(FedReader1516Synchronizations, ABadCapability) {
  const std::string text = completeFdd(
      "<synchronizations>\n<synchronization label=\"A\" capability=\"Sometimes\" "
      "dataType=\"D\"/>\n<synchronization label=\"B\"/>\n</synchronizations>\n");
  const std::string message =
      "Unexpected attribute value for Capability in a Synchronization Point Tag for FDD "
      "file.\n\tValue = Sometimes" +
      atNode(text, "synchronization", "<synchronization ");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(text, message);
  EXPECT_EQ(runs.lax->target.synchronizationPoints.size(), 2u);
  const auto& strictPoints = runs.strict->target.synchronizationPoints;
  ASSERT_EQ(strictPoints.size(), 1u);
  EXPECT_EQ(str(strictPoints[0]->label), "A");
}

TEST(FedReader1516Synchronizations, AWrongChildAndAWrongAttribute) {
  const std::string wrongChild = completeFdd(
      "<synchronizations>\n<sync label=\"X\"/>\n<synchronization label=\"A\"/>\n"
      "</synchronizations>\n");
  const std::string childMessage =
      "Unexpected tag in Synchronization Points list for FDD file.\n\tSynchronization Point "
      "Tag = sync *" +
      atNode(wrongChild, "sync", "<sync ");
  LaxAndStrict runs = expectFatalOnlyWhenStrict(wrongChild, childMessage);
  EXPECT_EQ(runs.lax->target.synchronizationPoints.size(), 1u);
  EXPECT_TRUE(runs.strict->target.synchronizationPoints.empty());

  const std::string wrongAttribute = completeFdd(
      "<synchronizations>\n<synchronization label=\"A\" when=\"now\"/>\n</synchronizations>\n");
  DtFedReader1516 other;
  FddRecorder otherTarget;
  FedReadOutcome outcome = readFddText(other, wrongAttribute, &otherTarget);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error,
            "Unexpected attribute in a Synchronization Point Tag for FDD file.\n\tAttribute = "
            "when" +
                atNode(wrongAttribute, "synchronization", "<synchronization "));
}

// ---------------------------------------------------------------------------------------------
// Transportations

TEST(FedReader1516Transportations, ReliabilityIsReadFromTheName) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd("<transportations>\n"
                  "<transportation name=\"HLAreliable\" description=\"TCP\" nameNotes=\"n\" "
                  "descriptionNotes=\"n\"/>\n"
                  "<transportation name=\"HLAbestEffort\" description=\"UDP\"/>\n"
                  "<transportation name=\"unreliable\"/>\n"
                  "<transportation name=\"Fast\"/>\n"
                  "<transportation name=\"MyRELIABLEone\"/>\n"
                  "</transportations>\n"),
      &target, strict(1, 2));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  ASSERT_EQ(target.transportations.size(), 5u);
  EXPECT_TRUE(target.transportations[0]->reliable);
  EXPECT_EQ(str(target.transportations[0]->semantics), "TCP");
  EXPECT_EQ(str(target.transportations[0]->description), "TCP");
  EXPECT_FALSE(target.transportations[1]->reliable);
  EXPECT_EQ(str(target.transportations[1]->description), "UDP");
  EXPECT_TRUE(target.transportations[2]->reliable);
  EXPECT_FALSE(target.transportations[3]->reliable);
  EXPECT_TRUE(target.transportations[4]->reliable);
  EXPECT_EQ(str(target.transportations[4]->name), "MyRELIABLEone");
  // Only the names that are neither of the two standard ones are reported, at the info level.
  size_t unreliable = outcome.out.find("Adding transportation type unreliable as HLAreliable");
  size_t fast = outcome.out.find("Adding transportation type Fast as HLAbestEffort");
  size_t mixed = outcome.out.find("Adding transportation type MyRELIABLEone as HLAreliable");
  EXPECT_NE(unreliable, std::string::npos) << outcome.out;
  EXPECT_NE(fast, std::string::npos) << outcome.out;
  EXPECT_NE(mixed, std::string::npos) << outcome.out;
  EXPECT_LT(unreliable, fast);
  EXPECT_LT(fast, mixed);
  EXPECT_EQ(outcome.out.find("HLAreliable as"), std::string::npos) << outcome.out;
  EXPECT_EQ(outcome.out.find("HLAbestEffort as"), std::string::npos) << outcome.out;
  EXPECT_EQ(outcome.out.find("Adding", mixed + 1), std::string::npos) << outcome.out;

  // Below the info level nothing is written.
  DtFedReader1516 quiet;
  FddRecorder quietTarget;
  outcome = readFddText(quiet,
                        completeFdd("<transportations><transportation name=\"Fast\"/>"
                                    "</transportations>\n"),
                        &quietTarget, strict(1, 1));
  EXPECT_EQ(outcome.out, "");
}

TEST(FedReader1516Transportations, ADuplicateIsDroppedBeforeItsReliabilityIsSet) {
  const std::string text =
      completeFdd("<transportations>\n<transportation name=\"Fast\"/>\n</transportations>\n");
  DtFedReader1516 reader;
  FddRecorder target;
  target.answerHas.insert("hasTransportation(Fast)");
  FedReadOutcome outcome = readFddText(reader, text, &target, strict(1, 3));
  EXPECT_EQ(outcome.result, 0);
  const std::string message =
      "Ignoring Unexpected duplicate transport type ( Fast ) for FDD file.\n\tTransport Tag = "
      "transportation *";
  EXPECT_EQ(outcome.error, message);
  EXPECT_NE(outcome.out.find(message), std::string::npos);
  EXPECT_EQ(outcome.out.find("Adding transportation type"), std::string::npos);
  EXPECT_TRUE(target.transportations.empty());
  EXPECT_TRUE(target.called("hasTransportation(Fast)"));
}

TEST(FedReader1516Transportations, AWrongChildAndAWrongAttribute) {
  const std::string text = completeFdd(
      "<transportations>\n<transport name=\"X\"/>\n"
      "<transportation name=\"HLAreliable\" reliable=\"Yes\"/>\n</transportations>\n");
  // Without strict checking the last fault is left; with it the first ends the read.
  LaxAndStrict runs = expectLaxAndStrict(
      text,
      "Unexpected attribute in a Transport Tag for FDD file.\n\tAttribute = reliable" +
          atNode(text, "transportation", "<transportation "),
      "Unexpected tag in transports list for FDD file.\n\tTransport Tag = transport *" +
          atNode(text, "transport", "<transport "));
  EXPECT_EQ(runs.lax->target.transportations.size(), 1u);
  EXPECT_TRUE(runs.strict->target.transportations.empty());
}

// ---------------------------------------------------------------------------------------------
// Time

TEST(FedReader1516Time, BothEntries) {
  DtFedReader1516 reader;
  FddRecorder target;
  FedReadOutcome outcome =
      readFddText(reader,
                  completeFdd("<time>\n<timeStamp dataType=\"HLAfloat64Time\" semantics=\"s\" "
                              "dataTypeNotes=\"n\" semanticsNotes=\"n\"/>\n"
                              "<lookahead dataType=\"HLAfloat64Interval\"/>\n</time>\n"),
                  &target, strict(1));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "");
  ASSERT_EQ(target.times.size(), 2u);
  EXPECT_EQ(str(target.times[0]->name), "timeStamp");
  EXPECT_EQ(str(target.times[0]->dataType), "HLAfloat64Time");
  EXPECT_EQ(str(target.times[0]->semantics), "s");
  EXPECT_EQ(str(target.times[1]->name), "lookahead");
  EXPECT_EQ(str(target.times[1]->dataType), "HLAfloat64Interval");
  EXPECT_LT(target.indexOf("hasTime(timeStamp)"), target.indexOf("addTime(timeStamp)"));
}

TEST(FedReader1516Time, AWrongChildAndAWrongAttribute) {
  const std::string text = completeFdd(
      "<time>\n<timeStamp dataType=\"T\" units=\"s\"/>\n<clock/>\n<lookahead/>\n</time>\n");
  // Without strict checking the last fault is left; with it the first ends the read.
  LaxAndStrict runs =
      expectLaxAndStrict(text,
                         "Unexpected tag in times list for FDD file.\n\tTime Tag = clock *" +
                             atNode(text, "clock", "<clock"),
                         "Unexpected attribute in a Time Tag for FDD file.\n\tAttribute = units" +
                             atNode(text, "timeStamp", "<timeStamp"));
  EXPECT_EQ(runs.lax->target.times.size(), 2u);
  ASSERT_EQ(runs.strict->target.times.size(), 1u);
  EXPECT_EQ(str(runs.strict->target.times[0]->dataType), "T");
}

// ---------------------------------------------------------------------------------------------
// Duplicates of the small sections: reported, dropped, never fatal

struct DuplicateCase {
  const char* body;
  const char* has;
  const char* message;
};

const DuplicateCase theDuplicates[] = {
    {"<tags><t1 dataType=\"D\"/></tags>", "hasUserSuppliedTag",
     "Ignoring Unexpected duplicate User Supplied Tag ( t1 ) for FDD file.\n\tUser Supplied Tag "
     "= t1 *"},
    {"<synchronizations><synchronization label=\"A\"/></synchronizations>",
     "hasSynchronizationPoint",
     "Ignoring Unexpected duplicate Synchronization Point Tag ( A ) for FDD file.\n"
     "\tSynchronization Point Tag = synchronization *"},
    {"<transportations><transportation name=\"HLAreliable\"/></transportations>",
     "hasTransportation",
     "Ignoring Unexpected duplicate transport type ( HLAreliable ) for FDD file.\n\tTransport "
     "Tag = transportation *"},
    {"<time><timeStamp dataType=\"T\"/></time>", "hasTime",
     "Ignoring Unexpected duplicate time type ( timeStamp ) for FDD file.\n\ttime Tag = "
     "timeStamp *"},
};

TEST(FedReader1516Duplicates, EachSmallSectionReportsAndGoesOn) {
  for (const DuplicateCase& c : theDuplicates) {
    DtFedReader1516 reader;
    FddRecorder target;
    target.answerHas.insert(c.has);
    FedReadOutcome outcome = readFddText(
        reader, completeFdd(std::string(c.body) + "\n" + theRootClass), &target, strict(1, 3));
    EXPECT_EQ(outcome.result, 0) << c.has;
    EXPECT_EQ(outcome.error, c.message);
    EXPECT_NE(outcome.out.find(c.message), std::string::npos) << c.has;
    EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)")) << c.has;
    EXPECT_TRUE(target.tags.empty() && target.synchronizationPoints.empty() &&
                target.transportations.empty() && target.times.empty())
        << c.has;
  }
}

// ---------------------------------------------------------------------------------------------
// processXmlDocPtr

// Hands doc to processXmlDocPtr and expects its answer and the error text it leaves.
void expectProcessed(DtFedReader1516& reader, xmlDoc* doc, int result, const std::string& error) {
  EXPECT_EQ(reader.processXmlDocPtr(doc), result);
  EXPECT_EQ(str(reader.lastError()), error);
}

TEST(FedReader1516ProcessXmlDocPtr, ANullDocument) {
  DtFedReader1516 reader;
  expectProcessed(reader, nullptr, 2, "Error reading FDD");
}

TEST(FedReader1516ProcessXmlDocPtr, NoDtdNodeIsFatalOnlyUnderStrictChecking) {
  DtFedReader1516 reader;
  ParsedXml doc("<objectModel name=\"t\"><objects/></objectModel>");
  expectProcessed(reader, doc.doc(), 0, "No DTD Node found.");

  // A failed check frees the document.
  DtFedReader1516 strictReader;
  strictReader.setStrictChecking(1);
  ParsedXml strictDoc("<objectModel name=\"t\"><objects/></objectModel>");
  expectProcessed(strictReader, strictDoc.release(), 2, "No DTD Node found.");
}

TEST(FedReader1516ProcessXmlDocPtr, TheRootMustBeANonEmptyObjectModel) {
  DtFedReader1516 reader;
  ParsedXml other("<other><x/></other>");
  expectProcessed(reader, other.release(), 2,
                  "Root node is not Object Model.\n\tRoot Node Name: other");

  ParsedXml empty("<objectModel name=\"t\"/>");
  expectProcessed(reader, empty.release(), 2, "Bad FDD File. Object Model is empty.");
}

TEST(FedReader1516ProcessXmlDocPtr, ADocumentWithNoRoot) {
  DtFedReader1516 reader;
  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  expectProcessed(reader, doc, 2, "No DTD Node found.");
  // With a DTD node and no root, the validation that follows fails, and its text is left.
  DtFedReader1516 second;
  TempDir dir;
  std::string dtd = dir.write("small.dtd", theSmallDtd);
  xmlDoc* rootless = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  xmlCreateIntSubset(rootless, reinterpret_cast<const xmlChar*>("objectModel"), nullptr,
                     reinterpret_cast<const xmlChar*>(dtd.c_str()));
  FedReadOutcome outcome =
      captureFedRead(second, 1, [&] { return second.processXmlDocPtr(rootless); });
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "FDD failed DTD validation.");
}

TEST(FedReader1516ProcessXmlDocPtr, TheDtdIsAlwaysValidatedAndTakenAsItStands) {
  TempDir dir;
  std::string dtd = dir.write("small.dtd", theSmallDtd);
  DtFedReader1516 reader;
  ParsedXml good(withDoctype("<!DOCTYPE objectModel SYSTEM \"" + dtd + "\">", theRootClass));
  expectProcessed(reader, good.doc(), 0, "");

  ParsedXml bad(withDoctype("<!DOCTYPE objectModel SYSTEM \"" + dtd + "\">", theBadRootClass));
  FedReadOutcome outcome =
      captureFedRead(reader, 1, [&] { return reader.processXmlDocPtr(bad.doc()); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, "FDD failed DTD validation.");

  // A relative name is not looked for beside anything: from here it is not found.
  DtFedReader1516 strictReader;
  strictReader.setStrictChecking(1);
  ParsedXml relative(withDoctype("<!DOCTYPE objectModel SYSTEM \"small.dtd\">", theRootClass));
  xmlDoc* given = relative.release();
  outcome = captureFedRead(strictReader, 1, [&] { return strictReader.processXmlDocPtr(given); });
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "FDD failed DTD validation.");
}

TEST(FedReader1516ProcessXmlDocPtr, AWrongDocumentTypeFails) {
  DtFedReader1516 reader;
  ParsedXml doc(withDoctype("<!DOCTYPE other SYSTEM \"other.dtd\">", theRootClass));
  // The walk goes on past the wrong type and finds no DTD, whose text is the one left.
  expectProcessed(reader, doc.release(), 2, "No DTD Node found.");
}

TEST(FedReader1516ProcessXmlDocPtr, ItsVerboseAndDebugLines) {
  DtFedReader1516 reader;
  ParsedXml doc("<!-- first --><objectModel name=\"t\"><objects/></objectModel>");
  FedReadOutcome outcome =
      captureFedRead(reader, 4, [&] { return reader.processXmlDocPtr(doc.doc()); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.out, "Reading FDD : \nFDD Comment:  first \n");
  outcome = captureFedRead(reader, 3, [&] { return reader.processXmlDocPtr(doc.doc()); });
  EXPECT_EQ(outcome.out, "Reading FDD : \n");
}

}  // namespace
