// Long and deep structures: nothing may recurse once per list element.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include <ktl/ktl.h>

using namespace KORRti;

namespace {

const int kElements = 1000000;

std::string numberList(int count) {
  std::string text = "(";
  for (int i = 0; i < count; ++i) {
    text += std::to_string(i);
    text += ' ';
  }
  text += ")";
  return text;
}

// The fixnum held by the last cell of a list.
int lastElement(DtlObjPtr const& list) {
  DtlObj* cell = list.get();
  while (cell->cdrObj()->tag() == DtlConsTag) cell = cell->cdrObj();
  return cell->carObj()->fixnum();
}

}  // namespace

TEST(LargeListTest, MillionElementListFromAStringReadsPrintsCountsAndReleases) {
  std::string text = numberList(kElements);
  DtlObjPtr frame(DtlFrameTag);
  DtlStringInputStream stream(text.c_str());
  DtlObjPtr list = DtcRead(&stream, frame);
  ASSERT_EQ(DtcLength(list), kElements);
  EXPECT_EQ(DtcCar(list)->fixnum(), 0);
  EXPECT_EQ(lastElement(list), kElements - 1);

  FILE* file = std::tmpfile();
  list->DtcObjFprint(file);
  long size = std::ftell(file);
  std::string expected = text.substr(0, text.size() - 2) + ")";  // no blank before ")"
  EXPECT_EQ(size, static_cast<long>(expected.size()));
  std::rewind(file);
  char head[8] = {};
  ASSERT_EQ(std::fread(head, 1, 7, file), 7u);
  EXPECT_STREQ(head, "(0 1 2 ");
  std::fseek(file, -8, SEEK_END);
  char tail[9] = {};
  ASSERT_EQ(std::fread(tail, 1, 8, file), 8u);
  EXPECT_STREQ(tail, " 999999)");
  std::fclose(file);

  list = DtlObjPtr();
  EXPECT_TRUE(list.isNull());
}

TEST(LargeListTest, MillionElementListFromAFile) {
  std::string text = numberList(kElements);
  FILE* file = std::tmpfile();
  std::fwrite(text.data(), 1, text.size(), file);
  std::rewind(file);
  DtlObjPtr frame(DtlFrameTag);
  DtlFileInputStream stream(file);
  DtlObjPtr list = DtcRead(&stream, frame);
  std::fclose(file);
  EXPECT_EQ(DtcLength(list), kElements);
  EXPECT_EQ(lastElement(list), kElements - 1);
}

TEST(LargeListTest, ListsBuiltByConsReleaseWithoutRecursion) {
  DtlObjPtr longList = DtlObjPtr::nil();
  for (int i = 0; i < kElements; ++i) longList = DtcCons(DtlObjPtr(i), longList);
  EXPECT_EQ(DtcLength(longList), kElements);
  longList = DtlObjPtr();

  // Nested through the car as deep as the list above is long.
  DtlObjPtr deep = DtlObjPtr::nil();
  for (int i = 0; i < kElements; ++i) deep = DtcCons(deep, DtlObjPtr::nil());
  EXPECT_EQ(DtcLength(deep), 1);
  deep = DtlObjPtr();
  EXPECT_TRUE(deep.isNull());
}

TEST(LargeListTest, DeeplyNestedListsPrintAndCompareWithoutRecursion) {
  DtlObjPtr deep = DtlObjPtr(1);
  DtlObjPtr twin = DtlObjPtr(1);
  for (int i = 0; i < kElements; ++i) {
    deep = DtcCons(deep, DtlObjPtr::nil());
    twin = DtcCons(twin, DtlObjPtr::nil());
  }
  EXPECT_EQ(DtcEqual(deep, twin), 1);
  EXPECT_EQ(DtcEqual(deep, DtcCar(twin)), 0);

  FILE* file = std::tmpfile();
  deep->DtcObjFprint(file);
  EXPECT_EQ(std::ftell(file), 2L * kElements + 1);  // "((((...1)...)))"
  std::rewind(file);
  char head[5] = {};
  ASSERT_EQ(std::fread(head, 1, 4, file), 4u);
  EXPECT_STREQ(head, "((((");
  std::fseek(file, kElements - 2, SEEK_SET);
  char middle[6] = {};
  ASSERT_EQ(std::fread(middle, 1, 5, file), 5u);
  EXPECT_STREQ(middle, "((1))");
  std::fclose(file);
}

TEST(LargeListTest, FrameBindingALongListIsReleased) {
  DtlObjPtr frame(DtlFrameTag);
  DtlObjPtr list = DtlObjPtr::nil();
  for (int i = 0; i < kElements; ++i) list = DtcCons(DtlObjPtr(i), list);
  DtcSet(DtcIntern("big", frame), list, frame);
  list = DtlObjPtr();
  frame = DtlObjPtr();
  EXPECT_TRUE(frame.isNull());
}

TEST(LargeListTest, ManyCommentLinesInARow) {
  std::string text;
  for (int i = 0; i < kElements; ++i) text += ";\n";
  text += "x";
  DtlObjPtr frame(DtlFrameTag);
  DtlStringInputStream stream(text.c_str());
  DtlObjPtr symbol = DtcRead(&stream, frame);
  EXPECT_STREQ(symbol->pname(), "x");
  EXPECT_EQ(stream.lineCount(), kElements + 1);
}

TEST(LargeListTest, LongCauseChainsAreFreedWithoutRecursion) {
  DtException chain("first", "f()", "here", 1, nullptr);
  for (int i = 0; i < kElements; ++i)
    chain = DtException("Propagating DtException.", "f()", "here", 2, &chain);
  EXPECT_STREQ(chain.initialException()->message(), "first");
}
