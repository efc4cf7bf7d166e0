// The XML writer when libxml2 runs out of memory: every allocation of a write is made to fail
// in turn through libxml2's own allocator hooks, and each failure must give one of the writer's
// lines on standard error, the documented result, and no crash or leak.
#include <gtest/gtest.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <libxml/xmlmemory.h>
#include <support/capture.h>
#include <support/failing_xml_memory.h>
#include <support/files.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <string>

using namespace KORRti;
using ktltest::allocationFailed;
using ktltest::captureOutput;
using ktltest::FailingXmlMemory;
using ktltest::TempDir;

namespace {

// A tree with every kind of node the writer handles; with many wheels its text outgrows the
// 4000 bytes that libxml2's output buffer takes before it passes them on.
DtEnvironment sampleTree(int wheels = 40) {
  DtEnvironment env;
  env.addAttribute("version", "2");
  env.addComment("a comment long enough to need memory of its own");
  DtEnvValueSP car = env.addObject("car", "vehicle");
  env.addAttribute("speed", "3", car);
  env.addComment("inside", car);
  car->setValue("fast");
  for (int i = 0; i < wheels; ++i) env.addObject(DtString("wheel") + DtString(i).c_str(), car);
  return env;
}

struct Sweep {
  // Each distinct standard-error text, with the results it came with.
  std::map<std::string, std::set<bool>> seen;
  int runs = 0;
};

// Fails the first, second, ... allocation of write, one per run, until a run makes fewer
// allocations than that: once with only that allocation failing, once with every allocation
// from there on failing. A first write with all its memory does libxml2's lazy set-up.
//
// libxml2 2.9 loses memory on some of its own out-of-memory paths (in xmlTextWriterStartElement,
// xmlTextWriterStartComment, xmlTextWriterStartDTD), so leak checking is off for the runs with a
// failing allocation; the suites of the writer check its ordinary paths for leaks.
template <class Write>
Sweep sweep(Write write) {
  Sweep result;
  captureOutput([&] { write(); });
  for (bool persistent : {false, true}) {
    for (long allowed = 0; allowed < 100000; ++allowed) {
      bool ok = false;
      bool failed = false;
      auto captured = captureOutput([&] {
        KTL_LEAK_CHECK_PAUSE;
        FailingXmlMemory memory(allowed, persistent);
        ok = write();
        failed = allocationFailed;
      });
      ++result.runs;
      result.seen[captured.err].insert(ok);
      if (!failed) break;
    }
  }
  return result;
}

// Every text of the sweep is made of lines from lines, one or more.
void expectOnlyLines(const Sweep& sweep, const std::set<std::string>& lines) {
  for (const auto& entry : sweep.seen) {
    std::string rest = entry.first;
    while (!rest.empty()) {
      size_t end = rest.find('\n');
      ASSERT_NE(std::string::npos, end) << entry.first;
      std::string line = rest.substr(0, end + 1);
      EXPECT_TRUE(lines.count(line)) << "unexpected line: " << line;
      rest = rest.substr(end + 1);
    }
  }
}

bool sawLine(const Sweep& sweep, const std::string& line, bool result) {
  for (const auto& entry : sweep.seen) {
    if (entry.first.find(line) != std::string::npos && entry.second.count(result)) return true;
  }
  return false;
}

std::string listSeen(const Sweep& sweep) {
  std::string text;
  for (const auto& entry : sweep.seen) {
    text += "[" + entry.first + "]";
    for (bool ok : entry.second) text += ok ? " true" : " false";
    text += "\n";
  }
  return text;
}

}  // namespace

TEST(EnvXmlWriterFaultsTest, WriteStringOutOfMemory) {
  DtEnvironment env = sampleTree(300);
  Sweep result = sweep([&] {
    DtEnvXMLWriter writer("root", "root.dtd");
    DtString out;
    return writer.writeString(env, out);
  });
  EXPECT_GT(result.runs, 5);
  expectOnlyLines(result, {"DtEnvXMLWriter::writeString: Error creating the xml buffer\n",
                           "DtEnvXMLWriter::writeString: Error creating the xml writer\n",
                           "DtEnvXMLWriter::writeString: Error at xmlTextWriterStartDocument\n",
                           "DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n",
                           "DtEnvXMLWriter::writeString: Error at xmlTextWriterEndDocument\n",
                           "testXmlwriterDoc: Error at xmlTextWriterStartElement\n",
                           "testXmlwriterDoc: Error at xmlTextWriterEndElement\n",
                           "testXmlwriterDoc: Error at xmlTextWriterWriteComment\n"});
  // Each line with the result it comes with: the steps of the document give false, the
  // abandoned elements and the DTD leave the result true.
  EXPECT_TRUE(
      sawLine(result, "DtEnvXMLWriter::writeString: Error creating the xml buffer\n", false))
      << listSeen(result);
  EXPECT_TRUE(
      sawLine(result, "DtEnvXMLWriter::writeString: Error creating the xml writer\n", false));
  EXPECT_TRUE(
      sawLine(result, "DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n", true));
  EXPECT_TRUE(
      sawLine(result, "DtEnvXMLWriter::writeString: Error at xmlTextWriterEndDocument\n", false));
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlTextWriterStartElement\n", true));
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlTextWriterEndElement\n", true));
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlTextWriterWriteComment\n", true));
}

TEST(EnvXmlWriterFaultsTest, WriteFileOutOfMemory) {
  DtEnvironment env = sampleTree();
  TempDir dir;
  std::string path = dir.file("out.xml");
  Sweep result = sweep([&] {
    DtEnvXMLWriter writer("root", "root.dtd");
    writer.setIndentation("  ");
    return writer.writeFile(env, path.c_str());
  });
  EXPECT_GT(result.runs, 5);
  expectOnlyLines(result, {"testXmlwriterDoc: Error creating the xml writer\n",
                           "testXmlwriterDoc: Error at xmlTextWriterStartDocument\n",
                           "DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n",
                           "testXmlwriterDoc: Error at xmlTextWriterEndDocument\n",
                           "testXmlwriterDoc: Error at xmlSaveFormatFileEnc\n",
                           "testXmlwriterDoc: Error at xmlTextWriterStartElement\n",
                           "testXmlwriterDoc: Error at xmlTextWriterEndElement\n",
                           "testXmlwriterDoc: Error at xmlTextWriterWriteComment\n"});
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error creating the xml writer\n", false))
      << listSeen(result);
  EXPECT_TRUE(
      sawLine(result, "DtEnvXMLWriter::writeString: Error at xmlTextWriterWriteDTD\n", true));
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlTextWriterEndDocument\n", false));
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlSaveFormatFileEnc\n", false));
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlTextWriterStartElement\n", true));
  // In a document the output that fails to end an element fails the end of the document too.
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlTextWriterEndElement\n", false));
  EXPECT_TRUE(sawLine(result, "testXmlwriterDoc: Error at xmlTextWriterWriteComment\n", true));
}
