// DtFilename: extensions, directory parts, joining and searching a list of directories.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <util/util.h>

using KORRti::DtFilename;
using KORRti::DtString;

namespace {

// A fresh directory under /tmp, removed with its files at the end of the test.
class TempDir {
 public:
  TempDir() {
    char name[] = "/tmp/ktl-filename-XXXXXX";
    const char* made = mkdtemp(name);
    if (made) path_ = made;
  }
  ~TempDir() {
    for (const std::string& file : files_) unlink(file.c_str());
    for (auto dir = dirs_.rbegin(); dir != dirs_.rend(); ++dir) rmdir(dir->c_str());
    if (!path_.empty()) rmdir(path_.c_str());
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }

  // Creates a file (with any sub-directories) below this directory; returns its full path.
  std::string touch(const std::string& relative) {
    std::string full = path_ + "/" + relative;
    for (size_t slash = relative.find('/'); slash != std::string::npos;
         slash = relative.find('/', slash + 1)) {
      std::string dir = path_ + "/" + relative.substr(0, slash);
      if (mkdir(dir.c_str(), 0700) == 0) dirs_.push_back(dir);
    }
    FILE* file = std::fopen(full.c_str(), "w");
    if (file) {
      std::fputs("x\n", file);
      std::fclose(file);
      files_.push_back(full);
    }
    return full;
  }

 private:
  std::string path_;
  std::vector<std::string> files_;
  std::vector<std::string> dirs_;
};

// ---------------------------------------------------------------------------------------------
// Construction: every DtString operation applies to the path text

TEST(DtFilenameTest, ConstructionAndAssignment) {
  DtFilename empty;
  EXPECT_STREQ(empty.c_str(), "");
  EXPECT_TRUE(empty.isEmpty());
  DtFilename name("dir/file.fed");
  EXPECT_STREQ(name.c_str(), "dir/file.fed");
  DtFilename copy(name);
  EXPECT_STREQ(copy.c_str(), "dir/file.fed");
  copy = "other.xml";
  EXPECT_STREQ(copy.c_str(), "other.xml");
  EXPECT_STREQ(name.c_str(), "dir/file.fed");
  copy = name;
  EXPECT_STREQ(copy.c_str(), "dir/file.fed");
  name = "changed";
  EXPECT_STREQ(copy.c_str(), "dir/file.fed");
}

TEST(DtFilenameTest, StringOperationsApply) {
  DtFilename name("Dir/File.FED");
  EXPECT_EQ(name.size(), 12);
  EXPECT_TRUE(name == "Dir/File.FED");
  EXPECT_TRUE(name.caseCompare("dir/file.fed"));
  EXPECT_EQ(name.findString("File"), 4);
  name.toLower();
  EXPECT_STREQ(name.c_str(), "dir/file.fed");
  name += ".bak";
  EXPECT_STREQ(name.c_str(), "dir/file.fed.bak");
}

// ---------------------------------------------------------------------------------------------
// extension()

TEST(DtFilenameTest, ExtensionOfDotInDirectoryIsEmpty) {
  EXPECT_STREQ(DtFilename("dir.d/file").extension().c_str(), "");
  EXPECT_TRUE(DtFilename("dir.d/file").extension().isEmpty());
}

TEST(DtFilenameTest, ExtensionOfTrailingDotIsEmpty) {
  EXPECT_STREQ(DtFilename("file.").extension().c_str(), "");
  EXPECT_TRUE(DtFilename("file.").extension().isEmpty());
}

TEST(DtFilenameTest, ExtensionKeepsCaseAndTakesLastDot) {
  EXPECT_STREQ(DtFilename("a.b.FED").extension().c_str(), "FED");
}

TEST(DtFilenameTest, ExtensionOtherForms) {
  EXPECT_STREQ(DtFilename("RPR-FOM.xml").extension().c_str(), "xml");
  EXPECT_STREQ(DtFilename("/opt/fom/HLAstandardMIM.xml").extension().c_str(), "xml");
  EXPECT_STREQ(DtFilename("some.dir/sub/model.fdd").extension().c_str(), "fdd");
  EXPECT_STREQ(DtFilename("noextension").extension().c_str(), "");
  EXPECT_STREQ(DtFilename("").extension().c_str(), "");
  EXPECT_STREQ(DtFilename("config.ktl").extension().c_str(), "ktl");
}

// ---------------------------------------------------------------------------------------------
// stripPath(), stripFilename()

TEST(DtFilenameTest, StripPathInPlace) {
  DtFilename name("a/b/c.fed");
  name.stripPath();
  EXPECT_STREQ(name.c_str(), "c.fed");
  DtFilename absolute("/usr/share/fom/model.xml");
  absolute.stripPath();
  EXPECT_STREQ(absolute.c_str(), "model.xml");
  DtFilename bare("c.fed");
  bare.stripPath();
  EXPECT_STREQ(bare.c_str(), "c.fed");
}

TEST(DtFilenameTest, StaticStripPathWorksOnCopy) {
  DtFilename name("/home/user/src/fedReader.cpp");
  DtFilename stripped = DtFilename::stripPath(name);
  EXPECT_STREQ(stripped.c_str(), "fedReader.cpp");
  EXPECT_STREQ(name.c_str(), "/home/user/src/fedReader.cpp");
  EXPECT_STREQ(DtFilename::stripPath(DtFilename("plain.cpp")).c_str(), "plain.cpp");
  EXPECT_STREQ(DtFilename::stripPath(DtFilename(__FILE__)).c_str(), "util_filename_test.cpp");
}

TEST(DtFilenameTest, StripFilenameKeepsTrailingSlash) {
  EXPECT_STREQ(DtFilename::stripFilename(DtFilename("a/b/c.fed")).c_str(), "a/b/");
  EXPECT_STREQ(DtFilename::stripFilename(DtFilename("/abs/dir/file.xml")).c_str(), "/abs/dir/");
  EXPECT_STREQ(DtFilename::stripFilename(DtFilename("/file.xml")).c_str(), "/");
}

TEST(DtFilenameTest, StripFilenameOfBareNameIsEmpty) {
  EXPECT_STREQ(DtFilename::stripFilename(DtFilename("c.fed")).c_str(), "");
  EXPECT_TRUE(DtFilename::stripFilename(DtFilename("c.fed")).isEmpty());
}

TEST(DtFilenameTest, StripFilenameAcceptsRelativeNameWithPlusEquals) {
  DtFilename source("fom/modules/base.xml");
  DtFilename dir = DtFilename::stripFilename(source);
  dir += "include.xml";
  EXPECT_STREQ(dir.c_str(), "fom/modules/include.xml");
  EXPECT_STREQ(source.c_str(), "fom/modules/base.xml");

  DtFilename bare = DtFilename::stripFilename(DtFilename("base.xml"));
  bare += "include.xml";
  EXPECT_STREQ(bare.c_str(), "include.xml");
}

// ---------------------------------------------------------------------------------------------
// relative(), exists()

TEST(DtFilenameTest, Relative) {
  EXPECT_TRUE(DtFilename("file.fed").relative());
  EXPECT_TRUE(DtFilename("dir/file.fed").relative());
  EXPECT_TRUE(DtFilename("./file.fed").relative());
  EXPECT_TRUE(DtFilename("../file.fed").relative());
  EXPECT_FALSE(DtFilename("/file.fed").relative());
  EXPECT_FALSE(DtFilename("/usr/share/file.fed").relative());
}

TEST(DtFilenameTest, Exists) {
  TempDir dir;
  ASSERT_FALSE(dir.path().empty());
  std::string file = dir.touch("present.fed");
  EXPECT_TRUE(DtFilename(file.c_str()).exists());
  EXPECT_FALSE(DtFilename((dir.path() + "/absent.fed").c_str()).exists());
  EXPECT_FALSE(DtFilename("").exists());
  EXPECT_TRUE(DtFilename(__FILE__).exists());
}

// ---------------------------------------------------------------------------------------------
// append()

TEST(DtFilenameTest, AppendJoinsDirectoryAndName) {
  DtFilename dir("/usr/share/ktl");
  dir.append(DtFilename("init.ktl"));
  EXPECT_STREQ(dir.c_str(), "/usr/share/ktl/init.ktl");

  DtFilename slashed("/usr/share/ktl/");
  slashed.append(DtFilename("init.ktl"));
  EXPECT_STREQ(slashed.c_str(), "/usr/share/ktl/init.ktl");

  DtFilename relative("lib");
  relative.append(DtFilename("sub/file.ktl"));
  EXPECT_STREQ(relative.c_str(), "lib/sub/file.ktl");
}

TEST(DtFilenameTest, AppendReturnsThis) {
  DtFilename dir("a");
  DtFilename& result = dir.append(DtFilename("b"));
  EXPECT_EQ(&result, &dir);
  dir.append(DtFilename("c"));
  EXPECT_STREQ(dir.c_str(), "a/b/c");
}

TEST(DtFilenameTest, AppendFindsExistingFileInDirectory) {
  TempDir dir;
  ASSERT_FALSE(dir.path().empty());
  dir.touch("loaded.ktl");
  DtFilename path(dir.path().c_str());
  path.append(DtFilename("loaded.ktl"));
  EXPECT_TRUE(path.exists());
  EXPECT_EQ(std::string(path.c_str()), dir.path() + "/loaded.ktl");
}

// ---------------------------------------------------------------------------------------------
// searchAlternatePath()

TEST(DtFilenameTest, SearchAlternatePathNullChangesNothing) {
  DtFilename name("model.fed");
  name.searchAlternatePath(nullptr);
  EXPECT_STREQ(name.c_str(), "model.fed");
  DtFilename nested("sub/model.fed");
  EXPECT_FALSE(nested.searchAlternatePath(nullptr));
  EXPECT_STREQ(nested.c_str(), "sub/model.fed");
}

TEST(DtFilenameTest, SearchAlternatePathFindsInSecondDirectory) {
  TempDir first;
  TempDir second;
  ASSERT_FALSE(first.path().empty());
  ASSERT_FALSE(second.path().empty());
  second.touch("model.fed");
  std::string list = first.path() + ":" + second.path();
  DtFilename name("model.fed");
  EXPECT_TRUE(name.searchAlternatePath(list.c_str()));
  EXPECT_EQ(std::string(name.c_str()), second.path() + "/model.fed");
  EXPECT_TRUE(name.exists());
}

TEST(DtFilenameTest, SearchAlternatePathTakesFirstMatch) {
  TempDir first;
  TempDir second;
  ASSERT_FALSE(first.path().empty());
  ASSERT_FALSE(second.path().empty());
  first.touch("model.fed");
  second.touch("model.fed");
  std::string list = first.path() + ":" + second.path();
  DtFilename name("model.fed");
  EXPECT_TRUE(name.searchAlternatePath(list.c_str()));
  EXPECT_EQ(std::string(name.c_str()), first.path() + "/model.fed");
}

TEST(DtFilenameTest, SearchAlternatePathSingleDirectoryAndTrailingSlash) {
  TempDir dir;
  ASSERT_FALSE(dir.path().empty());
  dir.touch("sub/config.xml");
  DtFilename name("sub/config.xml");
  EXPECT_TRUE(name.searchAlternatePath(dir.path().c_str()));
  EXPECT_EQ(std::string(name.c_str()), dir.path() + "/sub/config.xml");

  DtFilename again("sub/config.xml");
  std::string slashed = dir.path() + "/";
  EXPECT_TRUE(again.searchAlternatePath(slashed.c_str()));
  EXPECT_EQ(std::string(again.c_str()), dir.path() + "/sub/config.xml");
}

TEST(DtFilenameTest, SearchAlternatePathSkipsEmptyEntries) {
  TempDir dir;
  ASSERT_FALSE(dir.path().empty());
  dir.touch("model.xml");
  std::string list = "::" + dir.path() + ":";
  DtFilename name("model.xml");
  EXPECT_TRUE(name.searchAlternatePath(list.c_str()));
  EXPECT_EQ(std::string(name.c_str()), dir.path() + "/model.xml");
}

TEST(DtFilenameTest, SearchAlternatePathNotFoundChangesNothing) {
  TempDir first;
  TempDir second;
  ASSERT_FALSE(first.path().empty());
  ASSERT_FALSE(second.path().empty());
  first.touch("other.fed");
  std::string list = first.path() + ":" + second.path();
  DtFilename name("model.fed");
  EXPECT_FALSE(name.searchAlternatePath(list.c_str()));
  EXPECT_STREQ(name.c_str(), "model.fed");
  EXPECT_FALSE(name.searchAlternatePath(""));
  EXPECT_STREQ(name.c_str(), "model.fed");
  EXPECT_FALSE(name.searchAlternatePath("/nonexistent-ktl-dir-1:/nonexistent-ktl-dir-2"));
  EXPECT_STREQ(name.c_str(), "model.fed");
}

}  // namespace
