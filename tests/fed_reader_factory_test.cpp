// The reader factory: a reader per format, and the format of an open file told by its name and
// content, with the target told the format before any read.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include <ktl/fedReader13.h>
#include <ktl/fedReader1516.h>
#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <ktl/fedReaderFactory.h>
#include <ktl/ktlFedReader.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/fdd_recorder.h"
#include "support/files.h"

using namespace KORRti;
using namespace ktltest;

namespace {

// What the factory makes for an open file, with what it wrote, at notify level 1.
struct Made {
  std::unique_ptr<DtFedReader> reader;
  Captured output;
};

Made makeFor(const std::string& path, DtFedTarget* target, const std::string& name = "") {
  Made made;
  FILE* file = path.empty() ? nullptr : std::fopen(path.c_str(), "rb");
  if (!path.empty()) {
    EXPECT_NE(file, nullptr) << path;
  }
  made.output = captureOutput([&] {
    made.reader.reset(DtFedReaderFactory().makeFedReader(
        file, target, DtFilename((name.empty() ? path : name).c_str())));
  });
  if (file) std::fclose(file);
  return made;
}

template <typename Reader>
bool isA(const std::unique_ptr<DtFedReader>& reader) {
  return reader && typeid(*reader) == typeid(Reader);
}

TEST(FedReaderFactory, AReaderPerFormat) {
  DtFedReaderFactory factory;
  std::unique_ptr<DtFedReader> reader(factory.makeFedReader(DtFomType13));
  EXPECT_TRUE(isA<DtFedReader13>(reader));
  reader.reset(factory.makeFedReader(DtFomType1516));
  EXPECT_TRUE(isA<DtFedReader1516>(reader));
  reader.reset(factory.makeFedReader(DtFomTypeEvolved));
  EXPECT_TRUE(isA<DtFedReader1516e>(reader));
  reader.reset(factory.makeFedReader(DtFomType2025));
  EXPECT_TRUE(isA<DtFedReader1516_4>(reader));
  EXPECT_EQ(reader->expectedFomType(), DtFomType2025);
}

TEST(FedReaderFactory, AnUnknownFormatGivesNullAndWritesNothing) {
  for (int type : {0, 5, -1}) {
    DtFedReader* reader = reinterpret_cast<DtFedReader*>(1);
    Captured output = captureOutput(
        [&] { reader = DtFedReaderFactory().makeFedReader(static_cast<DtFomType>(type)); });
    EXPECT_EQ(reader, nullptr) << type;
    EXPECT_EQ(output.out, "");
    EXPECT_EQ(output.err, "");
  }
}

TEST(FedReaderFactory, KtlTextIsReadByThe13Reader) {
  TempDir dir;
  FddRecorder target;
  Made made = makeFor(dir.write("model.ktl", "(fed)"), &target);
  EXPECT_TRUE(isA<DtFedReader13>(made.reader));
  EXPECT_FALSE(isA<DtKtlFedReader>(made.reader));
  EXPECT_EQ(target.calls, Calls{"setFomType(1)"});
}

TEST(FedReaderFactory, AnOmtFileGivesThe13ReaderAndSetsTheTargetTo1) {
  TempDir dir;
  FddRecorder target;
  Made made = makeFor(dir.write("model.omt", "anything"), &target);
  EXPECT_TRUE(isA<DtFedReader13>(made.reader));
  EXPECT_EQ(target.calls, Calls{"setFomType(1)"});
  EXPECT_EQ(target.fomType(), DtFomType13);
}

TEST(FedReaderFactory, EachXmlDialectByItsContent) {
  TempDir dir;
  struct Case {
    std::string text;
    DtFomType type;
  };
  const Case cases[] = {{completeFdd("<objects/>"), DtFomType1516},
                        {completeFdd2010("<objects/>"), DtFomTypeEvolved},
                        {completeFdd2010("<objects/>", "IEEE1516-2025"), DtFomType2025}};
  for (const Case& given : cases) {
    FddRecorder target;
    std::string path = dir.write("model.xml", given.text);
    FILE* file = std::fopen(path.c_str(), "rb");
    ASSERT_NE(file, nullptr);
    std::unique_ptr<DtFedReader> reader;
    captureOutput([&] {
      reader.reset(DtFedReaderFactory().makeFedReader(file, &target, DtFilename(path.c_str())));
    });
    EXPECT_EQ(reader->expectedFomType(), given.type);
    EXPECT_EQ(target.calls, Calls{"setFomType(" + std::to_string(given.type) + ")"});
    // The sniff leaves the file rewound, ready for the read.
    EXPECT_EQ(std::ftell(file), 0L);
    int result = -1;
    captureOutput([&] {
      result = reader->readFedFilePtr(file, &target, DtFilename(path.c_str()), 0, false, false);
    });
    EXPECT_EQ(result, 0) << reader->lastError().c_str();
    std::fclose(file);
  }
}

TEST(FedReaderFactory, ANullTargetGivesAReaderAndNoCall) {
  TempDir dir;
  Made made = makeFor(dir.write("model.fed", "(fed)"), nullptr);
  EXPECT_TRUE(isA<DtFedReader13>(made.reader));
}

TEST(FedReaderFactory, ANullFileWithAFedNameGivesThe13Reader) {
  FddRecorder target;
  Made made = makeFor("", &target, "/nonexistent/model.fed");
  EXPECT_TRUE(isA<DtFedReader13>(made.reader));
  EXPECT_EQ(target.calls, Calls{"setFomType(1)"});
  EXPECT_EQ(made.output.err, "");
}

TEST(FedReaderFactory, ANullFileWithAnXmlNameGivesThe2025ReaderWithWarnings) {
  FddRecorder target;
  Made made = makeFor("", &target, "model.xml");
  EXPECT_TRUE(isA<DtFedReader1516_4>(made.reader));
  EXPECT_EQ(target.calls, Calls{"setFomType(4)"});
  EXPECT_EQ(made.output.out + made.output.err,
            "DtFedReader::readFileIntoBuffer: FileHandle not initialized\n"
            "FED file format is unrecognized: model.xml\n\tDefaulting to HLA 1516 2025\n");
}

TEST(FedReaderFactory, AFileWithNoExtensionGivesThe2010Reader) {
  TempDir dir;
  FddRecorder target;
  Made made = makeFor(dir.write("model", "<objectModel/>"), &target);
  EXPECT_TRUE(isA<DtFedReader1516e>(made.reader));
  EXPECT_EQ(target.calls, Calls{"setFomType(3)"});
}

}  // namespace
