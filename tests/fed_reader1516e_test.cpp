// The IEEE 1516-2010 and 1516-2025 readers at the document level: the steps of a read, the
// standard MIM answered from the library's copy, schema validation, the order of the top-level
// sections and the report of missing ones, the model identification, the switches, and the four
// small sections (update rates, synchronization points, transportations, time), and the check of
// a document parsed by the caller.
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"
#include "support/files.h"

using namespace KORRti;
using namespace ktltest;

namespace {

using EvolvedRun = std::unique_ptr<FddRunOf<DtFedReader1516e>>;

const char* const theRootClass =
    "<objects><objectClass><name>HLAobjectRoot</name></objectClass></objects>\n";

// A 2010 reader whose protected state a test can see and set.
class Probe1516e : public DtFedReader1516e {
 public:
  using DtFedReader1516e::lookaheadTag;
  using DtFedReader1516e::replacedInteractionRoot;
  using DtFedReader1516e::replacedObjectRoot;
  using DtFedReader1516e::schemaValidationEnabled;
  using DtFedReader1516e::standardMimSize;
  using DtFedReader1516e::standardMimText;
  using DtFedReader1516e::timeStampTag;
  void setTarget(DtFedTarget* to) { target = to; }
  void setMask(unsigned int mask) { strictCheckingMask = mask; }
  void setSkipSwitches(bool skip) { skipSwitches = skip; }
  const DtFilename& readFileName() const { return fileName; }
};

class Probe1516_4 : public DtFedReader1516_4 {
 public:
  using DtFedReader1516_4::lookaheadTag;
  using DtFedReader1516_4::standardMimSize;
  using DtFedReader1516_4::standardMimText;
  using DtFedReader1516_4::timeStampTag;
};

std::string text(const xmlChar* value) {
  return value ? reinterpret_cast<const char*>(value) : "<null>";
}

// The root's schema reference, for a document naming the schema in file.
std::string schemaAttributes(const std::string& file) {
  return " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
         " xsi:schemaLocation=\"http://standards.ieee.org/IEEE1516-2010 " +
         file + "\"";
}

// A complete 2010 document whose root names the schema in file.
std::string documentNaming(const std::string& file, const std::string& body = theRootClass) {
  std::string document = completeFdd2010(body);
  size_t at = document.find("\">\n", document.find("<objectModel"));
  return document.substr(0, at + 1) + schemaAttributes(file) + document.substr(at + 1);
}

// A schema for objectModel in the 2010 namespace: with content "any", every document passes;
// with only "objects" allowed, a document with any other section fails.
std::string schema(bool anyContent) {
  std::string content = anyContent ? "<xs:any processContents=\"skip\" minOccurs=\"0\" "
                                     "maxOccurs=\"unbounded\"/>"
                                   : "<xs:element name=\"objects\" minOccurs=\"0\"/>";
  return "<?xml version=\"1.0\"?>\n"
         "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
         "targetNamespace=\"http://standards.ieee.org/IEEE1516-2010\" "
         "xmlns=\"http://standards.ieee.org/IEEE1516-2010\" elementFormDefault=\"qualified\">\n"
         "  <xs:element name=\"objectModel\"><xs:complexType><xs:sequence>" +
         content +
         "</xs:sequence></xs:complexType></xs:element>\n"
         "</xs:schema>\n";
}

FddReadOptions validating() {
  FddReadOptions options;
  options.validate = true;
  return options;
}

FddSetUp noSetUp() {
  return FddSetUp();
}

// Reads the document by a 2010 reader with schema validation switched on.
EvolvedRun runValidating(const std::string& document, unsigned int mask = 0) {
  auto run = std::make_unique<FddRunOf<DtFedReader1516e>>();
  run->reader.setSchemaValidationEnabled(true);
  run->outcome = readFddText(run->reader, document, &run->target, strict(mask));
  return run;
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

// Changes the working directory for the life of the object.
class InDirectory {
 public:
  explicit InDirectory(const std::string& path) {
    char buffer[PATH_MAX];
    if (::getcwd(buffer, sizeof buffer)) saved_ = buffer;
    EXPECT_EQ(::chdir(path.c_str()), 0);
  }
  ~InDirectory() {
    if (!saved_.empty()) static_cast<void>(::chdir(saved_.c_str()));
  }
  InDirectory(const InDirectory&) = delete;
  InDirectory& operator=(const InDirectory&) = delete;

 private:
  std::string saved_;
};

// ---------------------------------------------------------------------------------------------
// Construction

TEST(FedReader1516eConstruction, TheStartingState) {
  Probe1516e reader;
  EXPECT_EQ(reader.expectedFomType(), DtFomTypeEvolved);
  EXPECT_FALSE(reader.schemaValidationEnabled);
  EXPECT_FALSE(reader.replacedObjectRoot);
  EXPECT_FALSE(reader.replacedInteractionRoot);
  EXPECT_EQ(reader.standardMimText, theHLAeStandardMIM_xml);
  EXPECT_EQ(reader.standardMimSize, theHLAeStandardMIM_xml_len);
  EXPECT_EQ(text(reader.timeStampTag), "timeStamp");
  EXPECT_EQ(text(reader.lookaheadTag), "lookahead");
}

TEST(FedReader1516eConstruction, The2025ReaderDiffersInFourPoints) {
  Probe1516_4 reader;
  EXPECT_EQ(reader.expectedFomType(), DtFomType2025);
  EXPECT_EQ(reader.standardMimText, theHLA4StandardMIM_xml);
  EXPECT_EQ(reader.standardMimSize, theHLA4StandardMIM_xml_len);
  EXPECT_EQ(text(reader.timeStampTag), "logicalTime");
  EXPECT_EQ(text(reader.lookaheadTag), "logicalTimeInterval");
}

// ---------------------------------------------------------------------------------------------
// readFedFilePtr

TEST(FedReader1516eRead, TellsTheTargetItsFormatFirstAndStoresTheMask) {
  Probe1516e reader;
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, completeFdd2010(theRootClass), &target, strict(1));
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  ASSERT_FALSE(target.calls.empty());
  EXPECT_EQ(target.calls[0], "setFomType(3)");
  EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)"));
  EXPECT_EQ(reader.setStrictChecking(0), 1u);
  EXPECT_NE(std::string(reader.readFileName().c_str()).find(".xml"), std::string::npos);
}

TEST(FedReader1516eRead, The2025ReaderTellsFormat4) {
  auto run = runFdd<DtFedReader1516_4>(completeFdd2010(theRootClass, "IEEE1516-2025"));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_FALSE(run->target.calls.empty());
  EXPECT_EQ(run->target.calls[0], "setFomType(4)");
  EXPECT_EQ(run->target.fomType(), DtFomType2025);
}

TEST(FedReader1516eRead, TheSevenArgumentReadTakesTheTypeItIsGiven) {
  DtFedReader1516e reader;
  FddRecorder target;
  std::string path = writeTempFile(completeFdd2010(theRootClass), ".xml");
  FILE* file = std::fopen(path.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  FedReadOutcome outcome = captureFedRead(reader, 1, [&] {
    return reader.readFedFilePtr(file, &target, DtFilename(path.c_str()), DtFomType2025, 0, false,
                                 false);
  });
  std::fclose(file);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_EQ(target.calls[0], "setFomType(4)");
}

TEST(FedReader1516eRead, ThroughReadFed) {
  DtFedReader1516e reader;
  FddRecorder target;
  target.setFomType(DtFomTypeEvolved);
  target.calls.clear();
  FedReadOutcome outcome = readFddThroughReadFed(reader, completeFdd2010(theRootClass), &target);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  ASSERT_GE(target.calls.size(), 2u);
  EXPECT_EQ(target.calls[0], "fomType()");
  EXPECT_EQ(target.calls[1], "setFomType(3)");
  EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516eRead, AnUnparsableBodyHasNoRoot) {
  for (const std::string& body : {std::string("<?xml version=\"1.0\"?>\n<objectModel><objects>"),
                                  std::string(""), std::string("no markup at all")}) {
    DtFedReader1516e reader;
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, body, &target);
    EXPECT_EQ(outcome.result, 2) << body;
    EXPECT_EQ(outcome.error, "Bad FDD File. Could not find Document Root in FDD File.");
    EXPECT_EQ(target.calls, Calls{"setFomType(3)"});
  }
}

TEST(FedReader1516eRead, TheValidateArgumentIsNotRead) {
  // A schema that does not exist goes unnoticed: validation hangs on the reader's own switch.
  auto run = runFdd<DtFedReader1516e>(documentNaming("/nonexistent/absent.xsd"), validating());
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->outcome.error, "");
}

TEST(FedReader1516eRead, AnExceptionFromTheTargetFailsTheRead) {
  for (const char* operation : {"addObjectClass", "setFomName", "addDimension", "hasUpdateRate"}) {
    FddSetUp setUp = [&](FddRecorder& target) { target.throwOn = operation; };
    expectRead<DtFedReader1516e>(
        completeFdd2010(std::string(theRootClass) +
                        "<modelIdentification><name>M</name></modelIdentification>\n"
                        "<dimensions><dimension><name>HLAd</name></dimension></dimensions>\n"
                        "<updateRates><updateRate><name>R</name></updateRate></updateRates>\n"),
        2, "Unexpected problem reading fed file.", FddReadOptions(), setUp);
  }
}

TEST(FedReader1516eRead, ANullTargetReadsTheDocumentAndDeliversNothing) {
  DtFedReader1516e reader;
  FedReadOutcome outcome = readFddText(
      reader,
      completeFdd2010(std::string(theRootClass) +
                      "<switches><autoProvide isEnabled=\"true\"/></switches>\n"
                      "<updateRates><updateRate><name>R</name></updateRate></updateRates>\n"),
      nullptr);
  EXPECT_EQ(outcome.result, 0) << outcome.error;
}

TEST(FedReader1516eRead, AReaderReadsManyFilesInTurn) {
  DtFedReader1516e reader;
  for (int round = 0; round < 3; ++round) {
    FddRecorder target;
    FedReadOutcome outcome = readFddText(reader, completeFdd2010(theRootClass), &target);
    EXPECT_EQ(outcome.result, 0) << outcome.error;
    EXPECT_TRUE(target.called("addObjectClass(HLAobjectRoot, null)"));
  }
}

// ---------------------------------------------------------------------------------------------
// The standard MIM from the library's copy

TEST(FedReader1516eStandardMim, ANullFileWithAnotherNameAnswersOne) {
  DtFedReader1516e reader;
  FddRecorder target;
  FedReadOutcome outcome = captureFedRead(reader, 1, [&] {
    return reader.readFedFilePtr(nullptr, &target, DtFilename("model.xml"), 0, false, false);
  });
  EXPECT_EQ(outcome.result, 1);
  EXPECT_TRUE(target.calls.empty());
}

TEST(FedReader1516eStandardMim, ANullFileWithTheStandardNameReadsTheHeldDocument) {
  for (const char* name :
       {"HLAstandardMIM.xml", "HLASTANDARDMIM.XML", "/some/dir/HLAstandardMIM.xml"}) {
    DtFedReader1516e reader;
    FddRecorder target;
    FedReadOutcome outcome = captureFedRead(reader, 1, [&] {
      return reader.readFedFilePtr(nullptr, &target, DtFilename(name), 0, false, false);
    });
    EXPECT_EQ(outcome.result, 0) << name << ": " << outcome.error;
    EXPECT_EQ(outcome.error, "") << name;
    EXPECT_EQ(target.calls[0], "setFomType(3)") << name;
    EXPECT_TRUE(
        target.called("setFomName(Standard MOM and Initialization Module (MIM) for HLA "
                      "IEEE 1516-2010)"))
        << name;
    // Nothing was read from a file, so there is nothing to hand over.
    EXPECT_EQ(reader.takeCurrFddData(), nullptr);
  }
}

TEST(FedReader1516eStandardMim, TheNameOfTheOtherEditionAnswersOne) {
  DtFedReader1516_4 four;
  FddRecorder target;
  FedReadOutcome outcome = captureFedRead(four, 1, [&] {
    return four.readFedFilePtr(nullptr, &target, DtFilename("HLAstandardMIM.xml"), 0, false, false);
  });
  EXPECT_EQ(outcome.result, 1);
  EXPECT_TRUE(target.calls.empty());

  DtFedReader1516e evolved;
  outcome = captureFedRead(evolved, 1, [&] {
    return evolved.readFedFilePtr(nullptr, &target, DtFilename("HLAstandardMIM-2025.xml"), 0, false,
                                  false);
  });
  EXPECT_EQ(outcome.result, 1);
  EXPECT_TRUE(target.calls.empty());
}

// The classes a read of a standard MIM delivers, counted by kind of call.
struct MimCounts {
  size_t objectClasses, attributes, interactionClasses, parameters, dataTypes;
};

MimCounts countsOf(const FddRecorder& target) {
  return {target.callsOf("addObjectClass").size(), target.callsOf("addAttribute").size(),
          target.callsOf("addInteractionClass").size(), target.callsOf("addParameter").size(),
          target.basicData.size() + target.simpleData.size() + target.enumeratedData.size() +
              target.arrayData.size() + target.fixedRecordData.size() +
              target.variantRecordData.size()};
}

// The same counts taken from the document's elements.
MimCounts countsIn(const unsigned char* bytes, unsigned int size) {
  ParsedXml parsed(std::string(reinterpret_cast<const char*>(bytes), size));
  MimCounts counts{0, 0, 0, 0, 0};
  std::vector<xmlNode*> pending{parsed.root()};
  while (!pending.empty()) {
    xmlNode* node = pending.back();
    pending.pop_back();
    for (xmlNode* child = node->children; child; child = child->next) {
      if (child->type != XML_ELEMENT_NODE) continue;
      std::string name = reinterpret_cast<const char*>(child->name);
      if (name == "objectClass") ++counts.objectClasses;
      if (name == "attribute") ++counts.attributes;
      if (name == "interactionClass") ++counts.interactionClasses;
      if (name == "parameter") ++counts.parameters;
      if (name == "basicData" || name == "simpleData" || name == "enumeratedData" ||
          name == "arrayData" || name == "fixedRecordData" || name == "variantRecordData") {
        ++counts.dataTypes;
      }
      pending.push_back(child);
    }
  }
  return counts;
}

void expectSameCounts(const MimCounts& got, const MimCounts& expected) {
  EXPECT_EQ(got.objectClasses, expected.objectClasses);
  EXPECT_EQ(got.attributes, expected.attributes);
  EXPECT_EQ(got.interactionClasses, expected.interactionClasses);
  EXPECT_EQ(got.parameters, expected.parameters);
  EXPECT_EQ(got.dataTypes, expected.dataTypes);
}

TEST(FedReader1516eStandardMim, ReadFedDeliversThe2010MimWithNoFileOnDisk) {
  TempDir empty;
  InDirectory inEmpty(empty.path());
  DtFedReader1516e reader;
  FddRecorder target;
  target.setFomType(DtFomTypeEvolved);
  FedReadOutcome outcome = captureFedRead(
      reader, 1, [&] { return reader.readFed("HLAstandardMIM.xml", &target, 0, false, false); });
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  MimCounts counts = countsOf(target);
  EXPECT_EQ(counts.objectClasses, 4u);
  EXPECT_EQ(counts.interactionClasses, 85u);
  expectSameCounts(counts, countsIn(theHLAeStandardMIM_xml, theHLAeStandardMIM_xml_len));
}

TEST(FedReader1516eStandardMim, ReadFedDeliversThe2025MimWithNoFileOnDisk) {
  TempDir empty;
  InDirectory inEmpty(empty.path());
  DtFedReader1516_4 reader;
  FddRecorder target;
  target.setFomType(DtFomType2025);
  FedReadOutcome outcome = captureFedRead(reader, 1, [&] {
    return reader.readFed("HLAstandardMIM-2025.xml", &target, 0, false, false);
  });
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_TRUE(target.called("setFomType(4)"));
  MimCounts counts = countsOf(target);
  EXPECT_EQ(counts.objectClasses, 4u);
  EXPECT_EQ(counts.interactionClasses, 93u);
  expectSameCounts(counts, countsIn(theHLA4StandardMIM_xml, theHLA4StandardMIM_xml_len));
}

TEST(FedReader1516eStandardMim, AFileOfTheStandardNameOnDiskIsReadInstead) {
  TempDir dir;
  dir.write("HLAstandardMIM.xml",
            completeFdd2010("<modelIdentification><name>Local</name></modelIdentification>\n"));
  InDirectory inDir(dir.path());
  DtFedReader1516e reader;
  FddRecorder target;
  target.setFomType(DtFomTypeEvolved);
  FedReadOutcome outcome = captureFedRead(
      reader, 1, [&] { return reader.readFed("HLAstandardMIM.xml", &target, 0, false, false); });
  EXPECT_EQ(outcome.result, 0) << outcome.error;
  EXPECT_TRUE(target.called("setFomName(Local)"));
}

TEST(FedReader1516eStandardMim, ATargetOfAnotherEditionGetsNoDocument) {
  TempDir empty;
  InDirectory inEmpty(empty.path());
  DtFedReader1516_4 reader;
  FddRecorder target;
  // The target's format picks the name that readFed lets through; the reader's own edition
  // then refuses it.
  target.setFomType(DtFomTypeEvolved);
  FedReadOutcome outcome = captureFedRead(
      reader, 1, [&] { return reader.readFed("HLAstandardMIM.xml", &target, 0, false, false); });
  EXPECT_EQ(outcome.result, 1);
  EXPECT_FALSE(target.called("setFomType(4)"));
}

TEST(FedReader1516eStandardMim, TheHeldDocumentIsValidatedLikeAFile) {
  // The held document names its schema by a URL, which is never fetched.
  DtFedReader1516e reader;
  reader.setSchemaValidationEnabled(true);
  FddRecorder target;
  FedReadOutcome outcome = captureFedRead(reader, 1, [&] {
    return reader.readFedFilePtr(nullptr, &target, DtFilename("HLAstandardMIM.xml"), 0, false,
                                 false);
  });
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error,
            "Could not open schema file "
            "http://standards.ieee.org/downloads/1516/1516.2-2010/IEEE1516-DIF-2010.xsd");
}

// ---------------------------------------------------------------------------------------------
// Schema validation

TEST(FedReader1516eSchema, WithValidationOffAMissingSchemaIsNotNoticed) {
  auto run = runFdd<DtFedReader1516e>(documentNaming("/nonexistent/absent.xsd"));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->outcome.error, "");
}

TEST(FedReader1516eSchema, SwitchingItOffSwitchesItOn) {
  Probe1516e reader;
  reader.setSchemaValidationEnabled(false);
  EXPECT_TRUE(reader.schemaValidationEnabled);
  FddRecorder target;
  FedReadOutcome outcome = readFddText(reader, documentNaming("/nonexistent/absent.xsd"), &target);
  EXPECT_EQ(outcome.result, 2);
  EXPECT_EQ(outcome.error, "Could not open schema file /nonexistent/absent.xsd");
  EXPECT_EQ(target.calls, Calls{"setFomType(3)"});
}

TEST(FedReader1516eSchema, AMissingSchemaIsFatalWithNoStrictBit) {
  EvolvedRun run = runValidating(documentNaming("absent-here.xsd"));
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "Could not open schema file absent-here.xsd");
}

TEST(FedReader1516eSchema, ASchemaNamedByAUrlIsAFileThatDoesNotExist) {
  Listener listener;
  ASSERT_GT(listener.port(), 0);
  std::string url =
      "http://127.0.0.1:" + std::to_string(listener.port()) + "/IEEE1516-DIF-2010.xsd";
  EvolvedRun run = runValidating(documentNaming(url));
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "Could not open schema file " + url);
  EXPECT_FALSE(listener.connected());
}

TEST(FedReader1516eSchema, AValidDocumentIsRead) {
  TempDir dir;
  std::string xsd = dir.write("any.xsd", schema(true));
  EvolvedRun run = runValidating(documentNaming(xsd));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_TRUE(run->target.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516eSchema, AnInvalidDocumentFailsWithNoStrictBit) {
  TempDir dir;
  std::string xsd = dir.write("objects-only.xsd", schema(false));
  EvolvedRun run = runValidating(documentNaming(xsd));
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "FDD file did not pass validation against schema " + xsd);
  EXPECT_EQ(run->target.calls, Calls{"setFomType(3)"});
}

TEST(FedReader1516eSchema, TheSchemaLocationIsTakenAfterItsLastBlank) {
  TempDir dir;
  std::string xsd = dir.write("any.xsd", schema(true));
  std::string document = completeFdd2010(theRootClass);
  size_t at = document.find("\">\n", document.find("<objectModel"));
  document = document.substr(0, at + 1) +
             " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
             "xsi:schemaLocation=\"a b c " +
             xsd + "\"" + document.substr(at + 1);
  EvolvedRun run = runValidating(document);
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
}

TEST(FedReader1516eSchema, ARelativeSchemaIsLookedForInTheWorkingDirectory) {
  TempDir dir;
  dir.write("any.xsd", schema(true));
  {
    InDirectory inDir(dir.path());
    EvolvedRun run = runValidating(documentNaming("any.xsd"));
    EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  }
  EvolvedRun elsewhere = runValidating(documentNaming("any.xsd"));
  EXPECT_EQ(elsewhere.get()->outcome.error, "Could not open schema file any.xsd");
}

TEST(FedReader1516eSchema, ARootWithNoSchemaLocationIsNotValidated) {
  EvolvedRun run = runValidating(completeFdd2010(theRootClass));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->outcome.error, "");
}

TEST(FedReader1516eSchema, ASchemaThatDoesNotCompileFailsValidation) {
  TempDir dir;
  std::string xsd = dir.write("broken.xsd", "<xs:schema xmlns:xs=\"nothing\"/>");
  EvolvedRun run = runValidating(documentNaming(xsd));
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "FDD file did not pass validation against schema " + xsd);
}

TEST(FedReader1516eSchema, AChangedSchemaFileIsCompiledAgain) {
  TempDir dir;
  std::string xsd = dir.write("model.xsd", schema(true));
  std::string document = documentNaming(xsd);
  EXPECT_EQ(runValidating(document)->outcome.result, 0);
  EXPECT_EQ(runValidating(document)->outcome.result, 0);
  dir.write("model.xsd", schema(false));
  EvolvedRun run = runValidating(document);
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "FDD file did not pass validation against schema " + xsd);
  dir.write("model.xsd", schema(true) + "\n");
  EXPECT_EQ(runValidating(document)->outcome.result, 0);
}

TEST(FedReader1516eSchema, SchemaValidateAnswersFalseForNullsAndUrls) {
  DtFedReader1516e reader;
  ParsedXml parsed(completeFdd2010(""));
  EXPECT_FALSE(reader.schemaValidate(nullptr, "x.xsd"));
  EXPECT_FALSE(reader.schemaValidate(parsed.doc(), nullptr));
  EXPECT_FALSE(reader.schemaValidate(parsed.doc(), "http://127.0.0.1:1/x.xsd"));
  EXPECT_FALSE(reader.schemaValidate(parsed.doc(), "/dev/zero"));
  TempDir dir;
  EXPECT_TRUE(reader.schemaValidate(parsed.doc(), dir.write("any.xsd", schema(true)).c_str()));
}

TEST(FedReader1516eSchema, AnImportByUrlInTheSchemaIsNeverFetched) {
  Listener listener;
  ASSERT_GT(listener.port(), 0);
  TempDir dir;
  std::string xsd = dir.write(
      "importing.xsd",
      "<?xml version=\"1.0\"?>\n"
      "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
      "targetNamespace=\"http://standards.ieee.org/IEEE1516-2010\" "
      "xmlns=\"http://standards.ieee.org/IEEE1516-2010\" elementFormDefault=\"qualified\">\n"
      "  <xs:import namespace=\"urn:other\" schemaLocation=\"http://127.0.0.1:" +
          std::to_string(listener.port()) +
          "/other.xsd\"/>\n"
          "  <xs:element name=\"objectModel\"><xs:complexType><xs:sequence><xs:any "
          "processContents=\"skip\" minOccurs=\"0\" maxOccurs=\"unbounded\"/></xs:sequence>"
          "</xs:complexType></xs:element>\n"
          "</xs:schema>\n");
  EvolvedRun run = runValidating(documentNaming(xsd));
  // The import can't be loaded, so the schema does not compile and the document fails.
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "FDD file did not pass validation against schema " + xsd);
  EXPECT_FALSE(listener.connected());
}

// ---------------------------------------------------------------------------------------------
// processFed: order and missing sections

TEST(FedReader1516eProcessFed, DimensionsAndTransportationsComeFirstWhereverTheyStand) {
  auto run = runFdd<DtFedReader1516e>(completeFdd2010(
      "<modelIdentification><name>M</name></modelIdentification>\n" + std::string(theRootClass) +
      "<transportations><transportation><name>T</name></transportation></transportations>\n"
      "<dimensions><dimension><name>HLAd</name></dimension></dimensions>\n"));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->target.deliveries(), (Calls{"setFomType(3)",
                                             "addDimension(HLAd, 18446744073709551615, 0, "
                                             "18446744073709551615, false, )",
                                             "addTransportation(T)", "setFomName(M)",
                                             "addObjectClass(HLAobjectRoot, null)"}));
}

TEST(FedReader1516eProcessFed, ANullRootIsAnInvalidNode) {
  DtFedReader1516e reader;
  EXPECT_EQ(reader.processFed(nullptr), 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "Invalid node");
}

TEST(FedReader1516eProcessFed, EverySectionPresentLeavesNoText) {
  auto run = runFdd<DtFedReader1516e>(completeFdd2010(theRootClass), strict(3));
  EXPECT_EQ(run->outcome.result, 2);
  EXPECT_EQ(run->outcome.error, "Missing or invalid switches table");
  run = runFdd<DtFedReader1516e>(completeFdd2010(std::string(theRootClass) + "<switches/>\n"),
                                 strict(3));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->outcome.error, "");
}

TEST(FedReader1516eProcessFed, EachMissingSectionHasItsText) {
  struct Case {
    const char* left;
    const char* text;
  };
  const Case cases[] = {{"objects", "Missing or invalid objects table"},
                        {"interactions", "Missing or invalid interactions table"},
                        {"dimensions", "Missing or invalid dimensions table"},
                        {"transportations", "Missing or invalid transportations table"},
                        {"dataTypes", "Missing or invalid Data Types"}};
  for (const Case& missing : cases) {
    std::string body;
    for (const char* section :
         {"objects", "interactions", "dimensions", "transportations", "dataTypes"}) {
      if (std::string(section) != missing.left) body += std::string("<") + section + "/>\n";
    }
    SCOPED_TRACE(missing.left);
    const bool table = std::string(missing.left) != "dataTypes";
    // Without strict bit 2 a missing table is only reported; under it the four tables are
    // fatal and the data types are not. Strict bit 1 does not change it.
    expectRead<DtFedReader1516e>(fddDocument2010(body), 0, missing.text, strict(1));
    expectRead<DtFedReader1516e>(fddDocument2010(body + "<switches/>\n"), table ? 2 : 0,
                                 missing.text, strict(2));
  }
}

TEST(FedReader1516eProcessFed, TheLastMissingSectionIsTheOneLeft) {
  // Objects come first in the order of the reports and the data types last of these.
  expectRead<DtFedReader1516e>(fddDocument2010(""), 0, "Missing or invalid Data Types");
  expectRead<DtFedReader1516e>(fddDocument2010("<dataTypes/>\n"), 0,
                               "Missing or invalid transportations table");
}

TEST(FedReader1516eProcessFed, NoSwitchesIsAcceptedWithoutStrictBit2) {
  expectRead<DtFedReader1516e>(completeFdd2010(theRootClass), 0, "", strict(1));
  auto run = expectRead<DtFedReader1516e>(completeFdd2010(theRootClass), 2,
                                          "Missing or invalid switches table", strict(2));
  // The walk ran before the report.
  EXPECT_TRUE(run->target.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516eProcessFed, UnrecognizedTopLevelTag) {
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      completeFdd2010("<bogus/>\n" + std::string(theRootClass)),
      "Unrecognized top-level tag: bogus");
  EXPECT_TRUE(runs.lax->target.called("addObjectClass(HLAobjectRoot, null)"));
  EXPECT_FALSE(runs.strict->target.called("addObjectClass(HLAobjectRoot, null)"));
}

TEST(FedReader1516eProcessFed, AnUnhandledTagIsLoggedWithTheFileName) {
  std::string path = writeTempFile(completeFdd2010("<bogus/>\n"), ".xml");
  auto run = runFdd<DtFedReader1516e>(FddFile{path}, atLevel(3));
  EXPECT_TRUE(contains(run->outcome.out,
                       "Unhandled top-level tag: bogus encountered when processing " + path))
      << run->outcome.out;
  auto quiet = runFdd<DtFedReader1516e>(FddFile{path}, strict(1, 3));
  EXPECT_FALSE(contains(quiet->outcome.out, "Unhandled top-level tag"));
}

TEST(FedReader1516eProcessFed, TheVerboseLogOfTheTopLevel) {
  auto run = runFdd<DtFedReader1516e>(
      fddDocument2010("<!-- c -->\n<modelIdentification/>\n<transportations/>\n<dimensions/>\n"
                      "<objects/>\n<interactions/>\n<switches/>\n<updateRates/>\n<dataTypes/>\n"
                      "<notes/>\n<tags/>\n<time/>\n<synchronizations/>\n"),
      atLevel(3));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->outcome.out,
            "Federation Properties:\n"
            " \n\n"
            "Dimensions:"
            "Transportations:"
            "\nTop-level Tag: comment\n"
            "\nTop-level Tag: modelIdentification\n"
            "\nTop-level Tag: transportations\n"
            "\nTop-level Tag: dimensions\n"
            "\nTop-level Tag: objects\n"
            "\nTop-level Tag: interactions\n"
            "\nTop-level Tag: switches\n"
            "\nTop-level Tag: updateRates\n"
            "\nTop-level Tag: dataTypes\n"
            "\nTop-level Tag: notes\n"
            "\nTop-level Tag: tags\n"
            "\nTop-level Tag: time\n"
            "\nTop-level Tag: synchronizations\n");
}

// ---------------------------------------------------------------------------------------------
// Model identification

TEST(FedReader1516eModelIdentification, TheNameAndTheDependencies) {
  auto run = runFdd<DtFedReader1516e>(
      completeFdd2010("<modelIdentification>\n"
                      "  <!-- the module -->\n"
                      "  <name>Module A</name>\n"
                      "  <type>FOM</type>\n"
                      "  <reference><type>Dependency</type><identification>Base</identification>"
                      "</reference>\n"
                      "  <reference><type>Standalone</type><identification>Other</identification>"
                      "</reference>\n"
                      "  <reference><type>Dependency</type><identification>Second</identification>"
                      "</reference>\n"
                      "</modelIdentification>\n"),
      atLevel(3));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->target.deliveries(),
            (Calls{"setFomType(3)", "setFomName(Module A)", "setFomDependencies(Base, Second)"}));
  EXPECT_TRUE(contains(run->outcome.out, "Name: Module A")) << run->outcome.out;
}

TEST(FedReader1516eModelIdentification, OneDependencyGivesOneEntry) {
  auto run = runFdd<DtFedReader1516e>(
      completeFdd2010("<modelIdentification><reference><type>Dependency</type>"
                      "<identification>Base</identification></reference></modelIdentification>\n"));
  EXPECT_EQ(run->target.callsOf("setFomDependencies"), Calls{"setFomDependencies(Base)"});
}

TEST(FedReader1516eModelIdentification, AnotherTypeOfReferenceGivesNone) {
  auto run = runFdd<DtFedReader1516e>(
      completeFdd2010("<modelIdentification><name>M</name><reference><type>Standalone</type>"
                      "<identification>Base</identification></reference></modelIdentification>\n"));
  EXPECT_TRUE(run->target.callsOf("setFomDependencies").empty());
  EXPECT_TRUE(run->target.called("setFomName(M)"));
}

TEST(FedReader1516eModelIdentification, NoDependencyNoCall) {
  auto run = runFdd<DtFedReader1516e>(
      completeFdd2010("<modelIdentification><name>M</name></modelIdentification>\n"));
  EXPECT_TRUE(run->target.callsOf("setFomDependencies").empty());
  auto none = runFdd<DtFedReader1516e>(completeFdd2010(""));
  EXPECT_TRUE(none->target.callsOf("setFomDependencies").empty());
  EXPECT_TRUE(none->target.callsOf("setFomName").empty());
}

TEST(FedReader1516eModelIdentification, TheTypeMustStandBeforeTheIdentification) {
  auto run = runFdd<DtFedReader1516e>(
      completeFdd2010("<modelIdentification><reference><identification>Base</identification>"
                      "<type>Dependency</type></reference></modelIdentification>\n"));
  EXPECT_TRUE(run->target.callsOf("setFomDependencies").empty());
}

TEST(FedReader1516eModelIdentification, ADependencyWithNoIdentificationCarriesOver) {
  auto run = runFdd<DtFedReader1516e>(completeFdd2010(
      "<modelIdentification>"
      "<reference><type>Dependency</type></reference>"
      "<reference><type>Standalone</type><identification>Next</identification></reference>"
      "</modelIdentification>\n"));
  EXPECT_EQ(run->target.callsOf("setFomDependencies"), Calls{"setFomDependencies(Next)"});
}

// ---------------------------------------------------------------------------------------------
// Switches

std::string switches(const std::string& body) {
  return completeFdd2010("<switches>\n" + body + "</switches>\n");
}

TEST(FedReader1516eSwitches, ElementsWithIsEnabledReachSetSwitchAlone) {
  auto run =
      runFdd<DtFedReader1516e>(switches("<!-- c -->\n<autoProvide isEnabled=\"true\"/>\n"
                                        "<serviceReporting isEnabled=\"false\"/>\n"));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  EXPECT_EQ(run->target.deliveries(), (Calls{"setFomType(3)", "setSwitch(autoProvide, true)",
                                             "setSwitch(serviceReporting, false)"}));
}

TEST(FedReader1516eSwitches, TheResignActionValues) {
  const char* const actions[] = {"UnconditionallyDivestAttributes",    "DeleteObjects",
                                 "CancelPendingOwnershipAcquisitions", "DeleteObjectsThenDivest",
                                 "CancelThenDeleteThenDivest",         "NoAction"};
  for (int value = 0; value < 6; ++value) {
    auto run = runFdd<DtFedReader1516e>(switches(
        std::string("<automaticResignAction resignAction=\"") + actions[value] + "\"/>\n"));
    EXPECT_EQ(run->outcome.result, 0);
    EXPECT_EQ(run->target.callsOf("setAutomaticResignAction"),
              Calls{"setAutomaticResignAction(" + std::to_string(value) + ")"});
  }
}

TEST(FedReader1516eSwitches, AResignActionGivenTwiceIsSetTwice) {
  auto run = runFdd<DtFedReader1516e>(
      switches("<automaticResignAction resignAction=\"NoAction\"/>\n"
               "<automaticResignAction resignAction=\"DeleteObjects\"/>\n"),
      atLevel(3));
  EXPECT_EQ(run->outcome.result, 0);
  EXPECT_EQ(run->target.callsOf("setAutomaticResignAction"),
            (Calls{"setAutomaticResignAction(5)", "setAutomaticResignAction(1)"}));
  EXPECT_TRUE(contains(run->outcome.out, "\tautomaticResignAction         : NoAction\n"));
}

TEST(FedReader1516eSwitches, AnUnknownResignAction) {
  const std::string text = switches(
      "<automaticResignAction resignAction=\"Explode\"/>\n<autoProvide isEnabled=\"true\"/>\n");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text, "Unrecognized value, Explode, for switch automaticResignAction", noSetUp(), atLevel(3),
      strict(1, 3));
  // The loop goes on after a fault, strict or not.
  EXPECT_TRUE(runs.strict->target.called("setSwitch(autoProvide, true)"));
  EXPECT_TRUE(runs.lax->target.callsOf("setAutomaticResignAction").empty());
  EXPECT_TRUE(contains(runs.lax->outcome.out,
                       "\tautomaticResignAction         : Explode value not recognized!\n"))
      << runs.lax->outcome.out;
}

TEST(FedReader1516eSwitches, AValueNotDefined) {
  for (const char* element : {"automaticResignAction", "autoProvide"}) {
    SCOPED_TRACE(element);
    std::string name(element);
    auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
        switches("<" + name + " enabled=\"true\"/>\n<serviceReporting isEnabled=\"true\"/>\n"),
        "Value not defined for switch " + name, noSetUp(), atLevel(3), strict(1, 3));
    EXPECT_TRUE(runs.strict->target.called("setSwitch(serviceReporting, true)"));
    char line[80];
    std::snprintf(line, sizeof line, "\t%-30s: value not defined!\n", element);
    EXPECT_TRUE(contains(runs.lax->outcome.out, line)) << runs.lax->outcome.out;
  }
}

TEST(FedReader1516eSwitches, AnUnrecognizedValue) {
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      switches("<autoProvide isEnabled=\"yes\"/>\n"),
      "Unrecognized value for switch autoProvide with value yes", noSetUp(), atLevel(3),
      strict(1, 3));
  EXPECT_TRUE(runs.lax->target.callsOf("setSwitch").empty());
  EXPECT_TRUE(contains(runs.lax->outcome.out,
                       "\tautoProvide                   : yes unrecognized value!\n"));
}

TEST(FedReader1516eSwitches, ANonStandardSwitchIsIgnoredAndNeverFatal) {
  const std::string text = switches("<mySwitch isEnabled=\"true\"/>\n");
  const std::string message =
      "Ignored non standard switch mySwitch\nmySwitch *" + atNode(text, "mySwitch", "<mySwitch");
  auto run = expectRead<DtFedReader1516e>(text, 0, message, strict(1, 3));
  EXPECT_TRUE(run->target.callsOf("setSwitch").empty());
  EXPECT_TRUE(contains(run->outcome.out, message));
}

TEST(FedReader1516eSwitches, ADuplicateFromAnEarlierReadIsIgnored) {
  DtFedReader1516e reader;
  FddRecorder target;
  const std::string text = switches("<autoProvide isEnabled=\"false\"/>\n");
  FedReadOutcome outcome = readFddText(reader, text, &target);
  EXPECT_EQ(outcome.result, 0);
  target.calls.clear();
  outcome = readFddText(reader, text, &target, strict(1, 3));
  EXPECT_EQ(outcome.result, 0);
  const std::string message =
      "Ignored duplicate switch autoProvide with value false\nautoProvide *" +
      atNode(text, "autoProvide", "<autoProvide");
  EXPECT_EQ(outcome.error, message);
  EXPECT_TRUE(target.callsOf("setSwitch").empty());
  EXPECT_TRUE(
      contains(outcome.out, "\tautoProvide                   : false duplicate ignored!\n"));
  EXPECT_TRUE(contains(outcome.out, message));
}

TEST(FedReader1516eSwitches, SkipSwitchesAndNoTargetIgnoreTheSection) {
  FddReadOptions skipping = strict(1);
  skipping.skipSwitches = true;
  auto run =
      expectRead<DtFedReader1516e>(switches("<autoProvide isEnabled=\"bad\"/>\n"), 0, "", skipping);
  EXPECT_TRUE(run->target.callsOf("setSwitch").empty());
  EXPECT_TRUE(run->target.callsOf("isKnownSwitch").empty());
  Probe1516e reader;
  ParsedXml parsed("<switches><autoProvide isEnabled=\"bad\"/></switches>");
  reader.setMask(1);
  EXPECT_EQ(reader.parseSwitches(parsed.root()), 0);
}

// ---------------------------------------------------------------------------------------------
// Update rates

std::string rates(const std::string& body) {
  return completeFdd2010("<updateRates>\n" + body + "</updateRates>\n");
}

TEST(FedReader1516eUpdateRates, NameRateAndSemantics) {
  auto run = runFdd<DtFedReader1516e>(
      rates("<!-- c -->\n<updateRate><name>Fast</name><rate>12.5</rate><semantics>S</semantics>"
            "</updateRate>\n<updateRate><name>Empty</name><rate/></updateRate>\n"));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.updateRates.size(), 2u);
  EXPECT_EQ(str(run->target.updateRates[0]->name), "Fast");
  EXPECT_FLOAT_EQ(run->target.updateRates[0]->rate, 12.5f);
  EXPECT_EQ(str(run->target.updateRates[0]->semantics), "S");
  EXPECT_FLOAT_EQ(run->target.updateRates[1]->rate, 0.0f);
  EXPECT_EQ(run->target.callsOf("hasUpdateRate"),
            (Calls{"hasUpdateRate(Fast)", "hasUpdateRate(Empty)"}));
}

TEST(FedReader1516eUpdateRates, ARateThatIsNotANumberIsZeroWithNoMessage) {
  auto run = expectRead<DtFedReader1516e>(
      rates("<updateRate><name>R</name><rate>abc</rate></updateRate>\n"), 0, "", strict(1));
  ASSERT_EQ(run->target.updateRates.size(), 1u);
  EXPECT_FLOAT_EQ(run->target.updateRates[0]->rate, 0.0f);
}

TEST(FedReader1516eUpdateRates, AWrongChildAndAWrongInnerElement) {
  std::string text = rates("<rate>1</rate>\n<updateRate><name>R</name></updateRate>\n");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text, "Unexpected tag in Update Rates tree for FDD file.\n\tUpdate Rates Tag = rate *" +
                atNode(text, "rate", "<rate>1"));
  EXPECT_EQ(runs.lax->target.updateRates.size(), 1u);
  EXPECT_TRUE(runs.strict->target.updateRates.empty());

  text = rates("<updateRate><name>R</name><speed>1</speed></updateRate>\n");
  runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text, "Unexpected tag in Update Rate tree for FDD file.\n\tUpdate Rate Tag = speed *" +
                atNode(text, "speed", "<speed>"));
  // The record is delivered as far as it was filled, then the walk ends.
  EXPECT_EQ(runs.strict->target.updateRates.size(), 1u);
}

TEST(FedReader1516eUpdateRates, ADuplicateIsNeverFatal) {
  const std::string text = rates("<updateRate><name>R</name></updateRate>\n");
  FddSetUp has = [](FddRecorder& target) { target.answerHas.insert("hasUpdateRate"); };
  const std::string message =
      "Ignoring Unexpected duplicate Update Rate type ( R ) for FDD file.\n\tUpdate Rate Tag = "
      "updateRate *" +
      atNode(text, "updateRate", "<updateRate>");
  auto run = expectRead<DtFedReader1516e>(text, 0, message, strict(1, 3), has);
  EXPECT_TRUE(run->target.updateRates.empty());
  EXPECT_TRUE(contains(run->outcome.out, message + "\n"));
}

// ---------------------------------------------------------------------------------------------
// Synchronization points

std::string synchronizations(const std::string& body) {
  return completeFdd2010("<synchronizations>\n" + body + "</synchronizations>\n");
}

TEST(FedReader1516eSynchronizations, CapabilitiesAndFields) {
  auto run = runFdd<DtFedReader1516e>(
      synchronizations("<synchronizationPoint><label>A</label><dataType>D</dataType>"
                       "<capability>Register</capability><semantics>S</semantics>"
                       "</synchronizationPoint>\n"
                       "<synchronizationPoint><label>B</label><capability>Achieve</capability>"
                       "</synchronizationPoint>\n"
                       "<synchronizationPoint><label>C</label><capability>RegisterAchieve"
                       "</capability></synchronizationPoint>\n"
                       "<synchronizationPoint><label>D</label><capability>NoSynch</capability>"
                       "</synchronizationPoint>\n"
                       "<synchronizationPoint><label>E</label><capability>NA</capability>"
                       "</synchronizationPoint>\n"
                       "<synchronizationPoint><label>F</label><capability/>"
                       "</synchronizationPoint>\n"
                       "<synchronizationPoint><label>G</label></synchronizationPoint>\n"),
      atLevel(3));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  const auto& points = run->target.synchronizationPoints;
  ASSERT_EQ(points.size(), 7u);
  EXPECT_EQ(str(points[0]->label), "A");
  EXPECT_EQ(str(points[0]->dataType), "D");
  EXPECT_EQ(str(points[0]->semantics), "S");
  std::vector<int> capabilities;
  for (const auto& point : points) capabilities.push_back(point->capability);
  // An empty capability is NA; a missing one is not given.
  EXPECT_EQ(capabilities, (std::vector<int>{1, 2, 3, 4, 5, 5, 0}));
  EXPECT_TRUE(contains(run->outcome.out, "\tA\tB")) << run->outcome.out;
}

TEST(FedReader1516eSynchronizations, AnUnknownCapability) {
  const std::string text = synchronizations(
      "<synchronizationPoint><label>A</label><capability>Sometimes</capability>"
      "</synchronizationPoint>\n");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text,
      "Unexpected Capability for Synchronization Point for FDD file.\n\tCapability = "
      "Sometimes" +
          atNode(text, "capability", "<capability>"));
  ASSERT_EQ(runs.lax->target.synchronizationPoints.size(), 1u);
  EXPECT_EQ(runs.lax->target.synchronizationPoints[0]->capability, 0);
}

TEST(FedReader1516eSynchronizations, The2000ElementNameIsAWrongChild) {
  const std::string text =
      synchronizations("<synchronization><label>A</label></synchronization>\n");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text,
      "Unexpected tag in Synchronization Points tree for FDD file.\n\tSynchronization Points Tag = "
      "synchronization *" +
          atNode(text, "synchronization", "<synchronization>"));
  EXPECT_TRUE(runs.lax->target.synchronizationPoints.empty());
}

TEST(FedReader1516eSynchronizations, AWrongInnerElementAndADuplicate) {
  std::string text = synchronizations(
      "<synchronizationPoint><label>A</label><when>now</when></synchronizationPoint>\n");
  expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text,
      "Unexpected tag in Synchronization Point tree for FDD file.\n\tSynchronization Point Tag = "
      "when *" +
          atNode(text, "when", "<when>"));
  text = synchronizations("<synchronizationPoint><label>A</label></synchronizationPoint>\n");
  FddSetUp has = [](FddRecorder& target) { target.answerHas.insert("hasSynchronizationPoint"); };
  expectRead<DtFedReader1516e>(text, 0,
                               "Ignoring Unexpected duplicate Synchronization Point type ( A ) for "
                               "FDD file.\n\tSynchronization Point Tag = synchronizationPoint *" +
                                   atNode(text, "synchronizationPoint", "<synchronizationPoint>"),
                               strict(1), has);
}

// ---------------------------------------------------------------------------------------------
// Transportations

std::string transportations(const std::string& body) {
  return completeFdd2010("<transportations>\n" + body + "</transportations>\n");
}

TEST(FedReader1516eTransportations, ReliableIsReadFromItsElementNotFromTheName) {
  auto run = runFdd<DtFedReader1516e>(
      transportations("<transportation><name>HLAreliable</name><reliable>No</reliable>"
                      "<semantics>S</semantics></transportation>\n"
                      "<transportation><name>Lossy</name><reliable>Yes</reliable>"
                      "</transportation>\n"
                      "<transportation><name>Plain</name><reliable/></transportation>\n"),
      atLevel(3));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  const auto& records = run->target.transportations;
  ASSERT_EQ(records.size(), 3u);
  EXPECT_FALSE(records[0]->reliable);
  EXPECT_EQ(str(records[0]->semantics), "S");
  EXPECT_EQ(str(records[0]->description), "S");
  EXPECT_TRUE(records[1]->reliable);
  EXPECT_FALSE(records[2]->reliable);
  EXPECT_TRUE(contains(run->outcome.out,
                       "Transportations:\tname: HLAreliable semantics: S\tname: Lossy semantics: "))
      << run->outcome.out;
}

TEST(FedReader1516eTransportations, AnUnexpectedReliableValue) {
  const std::string text = transportations(
      "<transportation><name>T</name><reliable>Maybe</reliable></transportation>\n");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text, "Unexpected value in Reliable tag for FDD file.\n\tReliable = Maybe" +
                atNode(text, "reliable", "<reliable>"));
  ASSERT_EQ(runs.lax->target.transportations.size(), 1u);
  EXPECT_FALSE(runs.lax->target.transportations[0]->reliable);
}

TEST(FedReader1516eTransportations, AWrongChildAWrongInnerElementAndADuplicate) {
  std::string text = transportations("<transport><name>T</name></transport>\n");
  expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text,
      "Unexpected tag in Transportation Lists tree for FDD file.\n\tTransportation Lists Tag = "
      "transport *" +
          atNode(text, "transport", "<transport>"));
  text = transportations("<transportation><name>T</name><speed/></transportation>\n");
  expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text, "Unexpected tag in Transport tree for FDD file.\n\tTransport Tag = speed *" +
                atNode(text, "speed", "<speed/>"));
  text = transportations("<transportation><name>T</name></transportation>\n");
  FddSetUp has = [](FddRecorder& target) { target.answerHas.insert("hasTransportation"); };
  expectRead<DtFedReader1516e>(text, 0,
                               "Ignoring Unexpected duplicate Transportation type ( T ) for FDD "
                               "file.\n\tTransportation Tag = transportation *" +
                                   atNode(text, "transportation", "<transportation>"),
                               strict(1), has);
}

// ---------------------------------------------------------------------------------------------
// Time

std::string timeSection(const std::string& body, const std::string& nameSpace = "IEEE1516-2010") {
  return completeFdd2010("<time>\n" + body + "</time>\n", nameSpace);
}

TEST(FedReader1516eTime, BothEntries) {
  auto run = runFdd<DtFedReader1516e>(timeSection(
      "<timeStamp><dataType>HLAfloat64Time</dataType><semantics>S</semantics>"
      "</timeStamp>\n<lookahead><dataType>HLAfloat64Interval</dataType></lookahead>\n"));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.times.size(), 2u);
  EXPECT_EQ(str(run->target.times[0]->name), "timeStamp");
  EXPECT_EQ(str(run->target.times[0]->dataType), "HLAfloat64Time");
  EXPECT_EQ(str(run->target.times[0]->semantics), "S");
  EXPECT_EQ(str(run->target.times[1]->name), "lookahead");
}

TEST(FedReader1516eTime, The2025ReaderTakesTheLogicalTimeNames) {
  auto run = runFdd<DtFedReader1516_4>(
      timeSection("<logicalTime><dataType>T</dataType></logicalTime>\n"
                  "<logicalTimeInterval><dataType>I</dataType></logicalTimeInterval>\n",
                  "IEEE1516-2025"));
  EXPECT_EQ(run->outcome.result, 0) << run->outcome.error;
  ASSERT_EQ(run->target.times.size(), 2u);
  EXPECT_EQ(str(run->target.times[0]->name), "logicalTime");
  EXPECT_EQ(str(run->target.times[1]->name), "logicalTimeInterval");
}

TEST(FedReader1516eTime, TheOtherEditionsNamesAreWrongChildren) {
  std::string text =
      timeSection("<timeStamp><dataType>T</dataType></timeStamp>\n", "IEEE1516-2025");
  auto runs = expectFatalOnlyWhenStrict<DtFedReader1516_4>(
      text, "Unexpected tag in times list for FDD file.\n\tTime Tag = timeStamp *" +
                atNode(text, "timeStamp", "<timeStamp>"));
  EXPECT_TRUE(runs.lax->target.times.empty());
  text = timeSection("<logicalTime><dataType>T</dataType></logicalTime>\n");
  expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text, "Unexpected tag in times list for FDD file.\n\tTime Tag = logicalTime *" +
                atNode(text, "logicalTime", "<logicalTime>"));
}

TEST(FedReader1516eTime, AWrongInnerElementAndADuplicate) {
  std::string text = timeSection("<timeStamp><size>8</size></timeStamp>\n");
  expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text, "Unexpected tag in Time Tree for FDD file.\n\tTime Tag = size *" +
                atNode(text, "size", "<size>"));
  text = timeSection("<timeStamp/>\n");
  FddSetUp has = [](FddRecorder& target) { target.answerHas.insert("hasTime"); };
  expectRead<DtFedReader1516e>(text, 0,
                               "Ignoring Unexpected duplicate time type ( timeStamp ) for FDD "
                               "file.\n\ttime Tag = timeStamp *" +
                                   atNode(text, "timeStamp", "<timeStamp/>"),
                               strict(1), has);
}

// ---------------------------------------------------------------------------------------------
// processXmlDocPtr

TEST(FedReader1516eProcessXmlDocPtr, ANullDocument) {
  DtFedReader1516e reader;
  EXPECT_EQ(reader.processXmlDocPtr(nullptr), 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "Error reading FDD");
}

TEST(FedReader1516eProcessXmlDocPtr, AGoodDocumentIsKeptByTheCaller) {
  DtFedReader1516e reader;
  ParsedXml parsed(completeFdd2010(theRootClass));
  EXPECT_EQ(reader.processXmlDocPtr(parsed.doc()), 0);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "");
}

TEST(FedReader1516eProcessXmlDocPtr, TheRootMustBeANonEmptyObjectModel) {
  DtFedReader1516e reader;
  ParsedXml wrong("<model><objects/></model>");
  EXPECT_EQ(reader.processXmlDocPtr(wrong.release()), 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()),
            "Root node is not Object Model.\n\tRoot Node Name: model");
  ParsedXml empty("<objectModel/>");
  EXPECT_EQ(reader.processXmlDocPtr(empty.release()), 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "Bad FDD File. Object Model is empty.");
}

TEST(FedReader1516eProcessXmlDocPtr, ADocumentWithNoRoot) {
  DtFedReader1516e reader;
  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  EXPECT_EQ(reader.processXmlDocPtr(doc), 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()),
            "Bad FDD File. Could not find Document Root in FDD File.");
}

TEST(FedReader1516eProcessXmlDocPtr, TheSchemaIsCheckedWhenValidationIsOn) {
  DtFedReader1516e reader;
  ParsedXml kept(documentNaming("/nonexistent/absent.xsd"));
  EXPECT_EQ(reader.processXmlDocPtr(kept.doc()), 0);
  reader.setSchemaValidationEnabled(true);
  ParsedXml freed(documentNaming("/nonexistent/absent.xsd"));
  EXPECT_EQ(reader.processXmlDocPtr(freed.release()), 2);
  EXPECT_EQ(std::string(reader.lastError().c_str()),
            "Could not open schema file /nonexistent/absent.xsd");
}

// ---------------------------------------------------------------------------------------------
// The 2025 reader's own data type section

TEST(FedReader1516_4DataTypes, AReferenceDataTypesSectionIsAcceptedUnread) {
  const std::string body =
      "<dataTypes><referenceDataTypes><referenceDataType><name>R</name></referenceDataType>"
      "</referenceDataTypes><simpleDataTypes><simpleData><name>S</name></simpleData>"
      "</simpleDataTypes></dataTypes>\n";
  for (unsigned int mask : {0u, 1u}) {
    auto run =
        expectRead<DtFedReader1516_4>(completeFdd2010(body, "IEEE1516-2025"), 0, "", strict(mask));
    EXPECT_EQ(run->target.deliveries(), (Calls{"setFomType(4)", "addSimpleDatatype(S)"}));
  }
}

TEST(FedReader1516_4DataTypes, The2010ReaderDoesNotKnowTheSection) {
  const std::string text = completeFdd2010("<dataTypes><referenceDataTypes/></dataTypes>\n");
  expectFatalOnlyWhenStrict<DtFedReader1516e>(
      text,
      "Unexpected tag in dataTypes tree for FDD file.\n\tDataType Tag = referenceDataTypes *" +
          atNode(text, "referenceDataTypes", "<referenceDataTypes"));
}

TEST(FedReader1516_4DataTypes, ParseReferenceDataTypesTreeAnswersZero) {
  DtFedReader1516_4 reader;
  ParsedXml parsed("<referenceDataTypes><bogus/></referenceDataTypes>");
  EXPECT_EQ(reader.parseReferenceDataTypesTree(parsed.root()), 0);
  EXPECT_EQ(reader.parseReferenceDataTypesTree(nullptr), 0);
}

}  // namespace
