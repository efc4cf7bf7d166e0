// The reader base: format detection by extension and content with its messages and defaults,
// opening through RTI_CONFIG, readFed and the standard MIM names, reading a file into memory.
#include <gtest/gtest.h>

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include <libxml/tree.h>

#include <ktl/fedReader.h>
#include <ktl/fedReader13.h>
#include <ktl/xmlFedReader.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fed_recorder.h"
#include "support/files.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FED_TEST_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define FED_TEST_ASAN 1
#endif
#ifdef FED_TEST_ASAN
#include <cstddef>
extern "C" size_t __sanitizer_get_allocated_size(const volatile void* p);
#endif

using namespace KORRti;
using ktltest::Captured;
using ktltest::captureOutput;
using ktltest::FedRecorder;

using ktltest::TempDir;

namespace {

// Sets the notify level for the life of the object.
class NotifyLevel {
 public:
  explicit NotifyLevel(int level) : saved_(DtNotifyLevel) { DtNotifyLevel = level; }
  ~NotifyLevel() { DtNotifyLevel = saved_; }

 private:
  int saved_;
};

struct Detection {
  DtFomType type = DtFomTypeUnknown;
  Captured output;
};

Detection detect(const std::string& path, int level) {
  NotifyLevel notify(level);
  Detection detection;
  detection.output =
      captureOutput([&] { detection.type = DtFedReader::checkFomType(path.c_str()); });
  return detection;
}

const char* const theSmallFed =
    "(FED (Federation f) (FEDversion v) (spaces) (objects (class ObjectRoot)) (interactions "
    "(class InteractionRoot reliable receive)))";

TEST(FedReaderNames, FomTypeNames) {
  EXPECT_STREQ(DtFomTypeName(DtFomTypeUnknown), "Unknown");
  EXPECT_STREQ(DtFomTypeName(DtFomType13), "1.3");
  EXPECT_STREQ(DtFomTypeName(DtFomType1516), "1516");
  EXPECT_STREQ(DtFomTypeName(DtFomTypeEvolved), "HLA Evolved");
  EXPECT_STREQ(DtFomTypeName(DtFomType2025), "HLA 4");
  EXPECT_STREQ(DtFomTypeName(static_cast<DtFomType>(5)), "Unknown");
}

TEST(FedReaderDetection, UpperCaseFedExtensionIsOnePointThree) {
  TempDir dir;
  std::string path = dir.write("model.FED", theSmallFed);
  Detection detection = detect(path, 3);
  EXPECT_EQ(detection.type, DtFomType13);
  EXPECT_EQ(detection.output.out, "Reading FED file: " + path + "\n" +
                                      "Found 1.3 format FED file: " + path + ".\n" +
                                      "Reading file as 1.3 format.\n");
  EXPECT_EQ(detection.output.err, "");
}

TEST(FedReaderDetection, KtlAndOmtCountAsOnePointThree) {
  TempDir dir;
  EXPECT_EQ(detect(dir.write("a.ktl", "x"), 1).type, DtFomType13);
  EXPECT_EQ(detect(dir.write("a.Omt", "x"), 1).type, DtFomType13);
}

TEST(FedReaderDetection, NoExtensionIsEvolvedWithOneWarningAndNoReadingLine) {
  TempDir dir;
  std::string path = dir.write("model", theSmallFed);
  Detection detection = detect(path, 4);
  EXPECT_EQ(detection.type, DtFomTypeEvolved);
  EXPECT_EQ(detection.output.err,
            "FED file has no extension: " + path + "\n\tDefaulting to HLA 1516 Evolved format\n");
  EXPECT_EQ(detection.output.out.find("Reading file as "), std::string::npos);
}

TEST(FedReaderDetection, UnknownExtensionIsHla4) {
  TempDir dir;
  std::string path = dir.write("model.txt", theSmallFed);
  Detection detection = detect(path, 3);
  EXPECT_EQ(detection.type, DtFomType2025);
  EXPECT_EQ(detection.output.err, "FED file has unrecognized extension: " + path +
                                      "\n\tDefaulting to HLA 1516 2025 format\n");
  EXPECT_NE(detection.output.out.find("Reading file as HLA 4 format.\n"), std::string::npos);
}

TEST(FedReaderDetection, MissingFileIsUnknownAndSilent) {
  Detection detection = detect("/nonexistent/dir/model.fed", 1);
  EXPECT_EQ(detection.type, DtFomTypeUnknown);
  EXPECT_EQ(detection.output.err, "");
  EXPECT_EQ(detection.output.out, "");
}

TEST(FedReaderDetection, XmlOfNoKnownStandardDefaultsToHla4) {
  TempDir dir;
  std::string path = dir.write(
      "model.xml", "<objectModel xmlns=\"http://example.org/other\"><objects/></objectModel>");
  FILE* file = fopen(path.c_str(), "rt");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(DtXmlFedReader::fomType(file), DtFomTypeUnknown);
  EXPECT_EQ(ftell(file), 0);  // rewound
  fclose(file);
  Detection detection = detect(path, 3);
  EXPECT_EQ(detection.type, DtFomType2025);
  EXPECT_EQ(detection.output.err,
            "FED file format is unrecognized: " + path + "\n\tDefaulting to HLA 1516 2025\n");
  EXPECT_NE(detection.output.out.find("Reading file as HLA 4 format.\n"), std::string::npos);
}

TEST(FedReaderDetection, NamespaceMarksAreSubstrings) {
  TempDir dir;
  std::string evolved = dir.write("a.xml", "<objectModel xmlns=\"urn:IEEE1516-2010:x\"/>");
  Detection detection = detect(evolved, 3);
  EXPECT_EQ(detection.type, DtFomTypeEvolved);
  EXPECT_EQ(detection.output.out, "Reading FED file: " + evolved + "\n" +
                                      "Found HLA 1516 Evolved XML File: " + evolved + ".\n" +
                                      "Reading file as HLA Evolved format.\n");
  std::string draft =
      dir.write("b.fdd", "<objectModel xmlns=\"http://www.sisostds.org/schemas/IEEE1516-2009\"/>");
  EXPECT_EQ(detect(draft, 1).type, DtFomTypeEvolved);
  std::string hla4 =
      dir.write("c.XML", "<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-2025\"/>");
  detection = detect(hla4, 3);
  EXPECT_EQ(detection.type, DtFomType2025);
  EXPECT_NE(detection.output.out.find("Found HLA 1516_2025 XML File: " + hla4 + ".\n"),
            std::string::npos);
}

TEST(FedReaderDetection, Ieee1516By2000RootAttributes) {
  TempDir dir;
  std::string path = dir.write(
      "old.xml", "<objectModel DTDversion=\"1516.2\" name=\"x\"><objects/></objectModel>");
  Detection detection = detect(path, 3);
  EXPECT_EQ(detection.type, DtFomType1516);
  EXPECT_EQ(detection.output.out, "Reading FED file: " + path + "\n" + "Found HLA 1516 XML File: " +
                                      path + ".\n" + "Reading file as 1516 format.\n");
  // Other attributes of the root say nothing.
  std::string other = dir.write("other.xml", "<objectModel colour=\"red\"/>");
  EXPECT_EQ(detect(other, 1).type, DtFomType2025);
}

TEST(FedReaderDetection, Ieee1516ByTransportationAttributes) {
  TempDir dir;
  // A namespace of no known standard skips the root's attributes and goes to the transport.
  std::string path = dir.write("t.xml",
                               "<objectModel xmlns=\"urn:other\" name=\"ignored\">"
                               "<transportations><transportation name=\"HLAreliable\"/>"
                               "</transportations></objectModel>");
  EXPECT_EQ(detect(path, 1).type, DtFomType1516);
  std::string plain = dir.write("u.xml",
                                "<objectModel xmlns=\"urn:other\" name=\"ignored\">"
                                "<transportations><transportation reliable=\"yes\"/>"
                                "</transportations></objectModel>");
  EXPECT_EQ(detect(plain, 1).type, DtFomType2025);
}

TEST(FedReaderDetection, RootTestOnNodes) {
  EXPECT_EQ(DtXmlFedReader::fomType(static_cast<xmlNode*>(nullptr)), DtFomTypeUnknown);
  xmlDocPtr doc = xmlReadMemory("<a><b/><transportations/></a>", 29, nullptr, nullptr, 0);
  ASSERT_NE(doc, nullptr);
  xmlNode* root = xmlDocGetRootElement(doc);
  xmlNode* found = DtXmlFedReader::getNodeByName(root, BAD_CAST "transportations");
  ASSERT_NE(found, nullptr);
  EXPECT_STREQ(reinterpret_cast<const char*>(found->name), "transportations");
  EXPECT_EQ(DtXmlFedReader::getNodeByName(root, BAD_CAST "c"), nullptr);
  EXPECT_EQ(DtXmlFedReader::fomType(root), DtFomTypeUnknown);
  xmlFreeDoc(doc);
}

TEST(FedReaderDetection, BrokenXmlIsUnrecognised) {
  TempDir dir;
  std::string path = dir.write("broken.xml", "<objectModel DTDversion=\"1516.2\"><unclosed>");
  Detection detection = detect(path, 1);
  EXPECT_EQ(detection.type, DtFomType2025);
  // libxml2's own report of the broken document stays off standard error.
  EXPECT_EQ(detection.output.err,
            "FED file format is unrecognized: " + path + "\n\tDefaulting to HLA 1516 2025\n");
}

TEST(FedReaderDetection, OpenFileFormDecidesByExtensionAlone) {
  // A .fed name with no file behind it is still 1.3.
  NotifyLevel notify(1);
  EXPECT_EQ(DtFedReader::checkFomType("nothing.fed", nullptr), DtFomType13);
}

TEST(FedReaderOpen, MissingFileWithErrCheck) {
  DtFedReader13 reader;
  FILE* file = reader.openFedFileWithErrCheck("/nonexistent/none.fed", false);
  EXPECT_EQ(file, nullptr);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "No such FED file: /nonexistent/none.fed");
}

TEST(FedReaderOpen, FoundThroughRtiConfig) {
  TempDir dir;
  std::string path = dir.write("config-only.fed", theSmallFed);
  const char* saved = getenv("RTI_CONFIG");
  std::string savedText = saved ? saved : "";
  setenv("RTI_CONFIG", dir.path().c_str(), 1);
  NotifyLevel notify(3);
  FILE* file = nullptr;
  Captured output =
      captureOutput([&] { file = DtFedReader::openFedFile("config-only.fed", false); });
  EXPECT_NE(file, nullptr);
  if (file) fclose(file);
  EXPECT_EQ(output.out, "Reading FED file: " + path + "\n");
  // A read by the bare name works the same way.
  DtFedReader13 reader;
  FedRecorder target;
  int result = -1;
  captureOutput([&] { result = reader.readFed("config-only.fed", &target, 0, false, false); });
  EXPECT_EQ(result, 0);
  if (saved) {
    setenv("RTI_CONFIG", savedText.c_str(), 1);
  } else {
    unsetenv("RTI_CONFIG");
  }
}

TEST(FedReaderOpen, FailedOpenStillWritesTheVerboseLine) {
  NotifyLevel notify(3);
  FILE* file = nullptr;
  Captured output =
      captureOutput([&] { file = DtFedReader::openFedFile("/nonexistent/none.fed", true); });
  EXPECT_EQ(file, nullptr);
  EXPECT_EQ(output.out, "Reading FED file: /nonexistent/none.fed\n");
}

TEST(FedReaderBase, StrictCheckingBits) {
  DtFedReader13 reader;
  EXPECT_EQ(reader.setStrictChecking(1), 0u);
  EXPECT_TRUE(reader.strictChecking(3));
  EXPECT_TRUE(reader.strictChecking(1));
  EXPECT_FALSE(reader.strictChecking(2));
  EXPECT_EQ(reader.setStrictChecking(2), 1u);
  EXPECT_TRUE(reader.strictChecking(3));
  EXPECT_FALSE(reader.strictChecking(1));
  reader.setStrictChecking(0);
  EXPECT_FALSE(reader.strictChecking(3));
}

TEST(FedReaderBase, ExpectedAndLastType) {
  DtFedReader13 reader;
  reader.setExpectedFomType(DtFomType2025);
  EXPECT_EQ(reader.expectedFomType(), DtFomType2025);
  EXPECT_EQ(reader.lastFomType(), DtFomTypeUnknown);
}

TEST(FedReaderBase, StandardMimNames) {
  EXPECT_EQ(std::string(DtFedReader::theHlaEvolvedStandardMimFileName.c_str()),
            "HLAstandardMIM.xml");
  EXPECT_EQ(std::string(DtFedReader::theHla4StandardMimFileName.c_str()),
            "HLAstandardMIM-2025.xml");
  EXPECT_EQ(std::string(DtFedReader::theInvalidStandardMimFileName.c_str()),
            "HLAinvalidStandardMIM.xml");
  EXPECT_EQ(&DtFedReader::standardMimFileName(DtFomTypeEvolved),
            &DtFedReader::theHlaEvolvedStandardMimFileName);
  EXPECT_EQ(&DtFedReader::standardMimFileName(DtFomType2025),
            &DtFedReader::theHla4StandardMimFileName);
  for (int type : {0, 1, 2, 5}) {
    EXPECT_EQ(&DtFedReader::standardMimFileName(static_cast<DtFomType>(type)),
              &DtFedReader::theInvalidStandardMimFileName);
  }
  EXPECT_TRUE(DtFedReader::isStandardMimFileName("HLAstandardMIM.xml", DtFomTypeEvolved));
  EXPECT_FALSE(DtFedReader::isStandardMimFileName("hlastandardmim.xml", DtFomTypeEvolved));
  EXPECT_FALSE(DtFedReader::isStandardMimFileName("HLAstandardMIM.xml", DtFomType2025));
  EXPECT_TRUE(DtFedReader::isStandardMimFileName("HLAstandardMIM-2025.xml", DtFomType2025));
}

// A reader that only writes down how readFedFilePtr was called.
class ProbeReader : public DtFedReader {
 public:
  int calls = 0;
  bool gotFile = false;
  std::string name;
  unsigned int mask = 0;
  bool validate = false;
  bool skip = false;
  int readFedFilePtr(FILE* file, DtFedTarget*, DtFilename fileName, unsigned int strictChecking,
                     bool validateIt, bool skipIt) override {
    ++calls;
    gotFile = file != nullptr;
    name = fileName.c_str();
    mask = strictChecking;
    validate = validateIt;
    skip = skipIt;
    return 0;
  }
};

TEST(FedReaderReadFed, MissingStandardMimStillReachesTheReader) {
  ProbeReader reader;
  DtFedTarget target;
  target.setFomType(DtFomTypeEvolved);
  const char* name = "/nonexistent/dir/hlastandardmim.xml";
  int result = reader.readFed(name, &target, 3, true, true);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(reader.calls, 1);
  EXPECT_FALSE(reader.gotFile);
  EXPECT_EQ(reader.name, name);
  EXPECT_EQ(reader.mask, 3u);
  EXPECT_TRUE(reader.validate);
  EXPECT_TRUE(reader.skip);
}

TEST(FedReaderReadFed, MissingFileOfAnotherNameGivesOne) {
  ProbeReader reader;
  DtFedTarget target;
  target.setFomType(DtFomType2025);
  EXPECT_EQ(reader.readFed("/nonexistent/dir/HLAstandardMIM.xml", &target, 0, false, false), 1);
  EXPECT_EQ(reader.calls, 0);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "");
  // For HLA 4 its own name passes.
  EXPECT_EQ(reader.readFed("/nonexistent/HLAstandardMIM-2025.xml", &target, 0, false, false), 0);
  EXPECT_EQ(reader.calls, 1);
}

TEST(FedReaderReadFed, ExistingFileReachesTheReaderOpen) {
  TempDir dir;
  std::string path = dir.write("x.fed", theSmallFed);
  ProbeReader reader;
  DtFedTarget target;
  EXPECT_EQ(reader.readFed(path.c_str(), &target, 0, false, false), 0);
  EXPECT_TRUE(reader.gotFile);
  EXPECT_EQ(reader.name, path);
}

TEST(FedReaderReadFed, NullTargetIsRefused) {
  ProbeReader reader;
  EXPECT_EQ(reader.readFed("x.fed", nullptr, 0, false, false), 2);
  EXPECT_EQ(reader.calls, 0);
  EXPECT_EQ(std::string(reader.lastError().c_str()), "No FED target given");
}

// readFileIntoBuffer

struct Buffer {
  bool ok = false;
  char* data = nullptr;
  unsigned int size = 0;
  Captured output;
  ~Buffer() { delete[] data; }
};

void readInto(const std::string& path, Buffer& buffer) {
  FILE* file = fopen(path.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  buffer.output = captureOutput(
      [&] { buffer.ok = DtFedReader::readFileIntoBuffer(file, &buffer.data, &buffer.size); });
  fclose(file);
}

TEST(FedReaderBuffer, EmptyFile) {
  TempDir dir;
  Buffer buffer;
  readInto(dir.write("empty.fed", ""), buffer);
  EXPECT_TRUE(buffer.ok);
  EXPECT_EQ(buffer.size, 0u);
  ASSERT_NE(buffer.data, nullptr);
  EXPECT_EQ(buffer.data[0], '\0');
}

TEST(FedReaderBuffer, ExactlyOneBlockDoublesBeforeTheEnd) {
  TempDir dir;
  std::string text(1024, 'x');
  Buffer buffer;
  readInto(dir.write("block.fed", text), buffer);
  EXPECT_TRUE(buffer.ok);
  EXPECT_EQ(buffer.size, 1024u);
  ASSERT_NE(buffer.data, nullptr);
  EXPECT_EQ(std::string(buffer.data), text);  // terminated behind the text
#ifdef FED_TEST_ASAN
  EXPECT_EQ(__sanitizer_get_allocated_size(buffer.data), 2048u);
#endif
}

TEST(FedReaderBuffer, LargeFileIsReadWhole) {
  TempDir dir;
  std::string text;
  for (int i = 0; i < 5000; ++i) text += std::to_string(i) + " ";
  Buffer buffer;
  readInto(dir.write("large.fed", text), buffer);
  EXPECT_TRUE(buffer.ok);
  EXPECT_EQ(buffer.size, text.size());
  EXPECT_EQ(std::string(buffer.data, buffer.size), text);
  EXPECT_EQ(buffer.data[buffer.size], '\0');
}

TEST(FedReaderBuffer, ReadsFromTheStartWhateverWasReadBefore) {
  TempDir dir;
  std::string path = dir.write("start.fed", "abcdef");
  FILE* file = fopen(path.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  fgetc(file);
  fgetc(file);
  char* data = nullptr;
  unsigned int size = 0;
  EXPECT_TRUE(DtFedReader::readFileIntoBuffer(file, &data, &size));
  fclose(file);
  EXPECT_EQ(std::string(data, size), "abcdef");
  delete[] data;
}

TEST(FedReaderBuffer, NullFileWarnsAndLeavesTheOutputs) {
  char marker = 'm';
  char* data = &marker;
  unsigned int size = 77;
  bool ok = true;
  Captured output =
      captureOutput([&] { ok = DtFedReader::readFileIntoBuffer(nullptr, &data, &size); });
  EXPECT_FALSE(ok);
  EXPECT_EQ(data, &marker);
  EXPECT_EQ(size, 77u);
  EXPECT_EQ(output.err, "DtFedReader::readFileIntoBuffer: FileHandle not initialized\n");
}

TEST(FedReaderBuffer, ReadThatGetsNothingEndsTheTextEvenOnAnError) {
  // A directory opens but can't be read: the first fread gets 0 with the error flag set, and
  // that ends the text like the end of a file does.
  TempDir dir;
  FILE* file = fopen(dir.path().c_str(), "rb");
  ASSERT_NE(file, nullptr);
  char* data = nullptr;
  unsigned int size = 5;
  bool ok = false;
  Captured output =
      captureOutput([&] { ok = DtFedReader::readFileIntoBuffer(file, &data, &size); });
  EXPECT_TRUE(ferror(file));
  fclose(file);
  EXPECT_TRUE(ok);
  EXPECT_EQ(size, 0u);
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(data[0], '\0');
  EXPECT_EQ(output.err, "");
  delete[] data;
}

// A stream that gives its bytes in reads of at most `chunk` bytes and then fails every read.
struct FailingSource {
  std::string bytes;
  size_t chunk = 0;
  size_t at = 0;
};

ssize_t failingRead(void* cookie, char* buffer, size_t size) {
  auto* source = static_cast<FailingSource*>(cookie);
  if (source->at >= source->bytes.size()) {
    errno = EIO;
    return -1;
  }
  size_t count = std::min({size, source->chunk, source->bytes.size() - source->at});
  std::memcpy(buffer, source->bytes.data() + source->at, count);
  source->at += count;
  return static_cast<ssize_t>(count);
}

int failingSeek(void* cookie, off64_t* offset, int whence) {
  auto* source = static_cast<FailingSource*>(cookie);
  if (whence != SEEK_SET) return -1;
  source->at = static_cast<size_t>(*offset);
  return 0;
}

FILE* openFailing(FailingSource& source) {
  cookie_io_functions_t functions = {failingRead, nullptr, failingSeek, nullptr};
  FILE* file = fopencookie(&source, "r", functions);
  if (file) setvbuf(file, nullptr, _IONBF, 0);
  return file;
}

TEST(FedReaderBuffer, ReadErrorThatComesWithBytesIsReported) {
  FailingSource source{std::string(100, 'x'), 100};
  FILE* file = openFailing(source);
  ASSERT_NE(file, nullptr);
  char* data = nullptr;
  unsigned int size = 5;
  bool ok = true;
  Captured output =
      captureOutput([&] { ok = DtFedReader::readFileIntoBuffer(file, &data, &size); });
  fclose(file);
  EXPECT_FALSE(ok);
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(size, 0u);
  EXPECT_EQ(output.err, "DtFedFileTransport::readFile: Error reading file.\n");
}

TEST(FedReaderBuffer, ReadErrorAfterAWholeBlockEndsTheText) {
  // The first block is full, so the error comes with the next fread, which gets nothing.
  FailingSource source{std::string(1024, 'y'), 1024};
  FILE* file = openFailing(source);
  ASSERT_NE(file, nullptr);
  char* data = nullptr;
  unsigned int size = 0;
  bool ok = false;
  Captured output =
      captureOutput([&] { ok = DtFedReader::readFileIntoBuffer(file, &data, &size); });
  fclose(file);
  EXPECT_TRUE(ok);
  EXPECT_EQ(size, 1024u);
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(std::string(data), source.bytes);
  EXPECT_EQ(output.err, "");
  delete[] data;
}

TEST(FedReaderBase, AppendErrorLine) {
  DtFedReader13 reader;
  xmlNode* named = xmlNewNode(nullptr, BAD_CAST "objectClass");
  named->line = 42;
  DtString text("Bad class");
  reader.appendErrorLine(named, text);
  EXPECT_EQ(std::string(text.c_str()), "Bad class at XML Node objectClass near line 42");
  xmlNode* unnamed = xmlNewNode(nullptr, BAD_CAST "t");
  xmlFree(const_cast<xmlChar*>(unnamed->name));
  unnamed->name = nullptr;
  unnamed->line = 65535;
  DtString other;
  reader.appendErrorLine(unnamed, other);
  EXPECT_EQ(std::string(other.c_str()), " at XML Node * near line 65535");
  xmlFreeNode(named);
  xmlFreeNode(unnamed);
}

TEST(FedReaderBase, TakeCurrFddDataOfANewReaderIsNull) {
  DtFedReader13 reader;
  EXPECT_EQ(reader.takeCurrFddData(), nullptr);
}

TEST(FedReaderBase, LastErrorStaysOverASuccessfulRead) {
  TempDir dir;
  DtFedReader13 reader;
  FedRecorder target;
  std::string bad = dir.write("bad.fed", ";; nothing");
  std::string good = dir.write("good.fed", theSmallFed);
  captureOutput([&] { EXPECT_EQ(reader.readFed(bad.c_str(), &target, 0, false, false), 2); });
  captureOutput([&] { EXPECT_EQ(reader.readFed(good.c_str(), &target, 0, false, false), 0); });
  EXPECT_EQ(std::string(reader.lastError().c_str()), "Unable to find FED in fedfile");
}

}  // namespace
