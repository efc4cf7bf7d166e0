// DtList and DtListItem: a doubly linked list of untyped pointers that never owns its data.

#include <gtest/gtest.h>

#include <vector>

#include <util/util.h>

using KORRti::DtList;
using KORRti::DtListItem;

namespace {

// The data pointers in list order, by the usual forward walk.
std::vector<void*> forward(const DtList& list) {
  std::vector<void*> data;
  for (DtListItem* item = list.first(); item; item = item->next()) data.push_back(item->data());
  return data;
}

// The data pointers from the last item back to the first.
std::vector<void*> backward(const DtList& list) {
  std::vector<void*> data;
  for (DtListItem* item = list.last(); item; item = item->previous()) data.push_back(item->data());
  return data;
}

TEST(DtListTest, NewListIsEmpty) {
  DtList list;
  EXPECT_EQ(list.first(), nullptr);
  EXPECT_EQ(list.last(), nullptr);
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(forward(list).empty());
}

TEST(DtListTest, AddAppendsAtTheEnd) {
  int a = 1, b = 2, c = 3;
  DtList list;
  DtListItem* first = list.add(&a);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(list.first(), first);
  EXPECT_EQ(list.last(), first);
  EXPECT_EQ(first->data(), &a);
  EXPECT_EQ(first->next(), nullptr);
  EXPECT_EQ(first->previous(), nullptr);

  DtListItem* second = list.add(&b);
  DtListItem* third = list.add(&c);
  EXPECT_EQ(list.first(), first);
  EXPECT_EQ(list.last(), third);
  EXPECT_EQ(first->next(), second);
  EXPECT_EQ(second->next(), third);
  EXPECT_EQ(third->next(), nullptr);
  EXPECT_EQ(third->previous(), second);
  EXPECT_EQ(second->previous(), first);
  EXPECT_EQ(forward(list), (std::vector<void*>{&a, &b, &c}));
  EXPECT_EQ(backward(list), (std::vector<void*>{&c, &b, &a}));
  EXPECT_EQ(list.count(), 3);
}

TEST(DtListTest, DataIsKeptAsGivenIncludingNull) {
  DtList list;
  DtListItem* item = list.add(nullptr);
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->data(), nullptr);
  EXPECT_EQ(list.first(), item);
  int value = 5;
  list.add(&value);
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.first()->next()->data(), &value);
}

TEST(DtListTest, AddAfterNullOnEmptyListMakesHead) {
  int a = 1;
  DtList list;
  DtListItem* item = list.addAfter(&a, nullptr);
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(list.first(), item);
  EXPECT_EQ(list.last(), item);
  EXPECT_EQ(item->data(), &a);
  EXPECT_EQ(item->next(), nullptr);
  EXPECT_EQ(item->previous(), nullptr);
}

TEST(DtListTest, AddAfterNullOnFilledListPrepends) {
  int a = 1, b = 2, c = 3;
  DtList list;
  list.add(&b);
  list.add(&c);
  DtListItem* head = list.addAfter(&a, nullptr);
  EXPECT_EQ(list.first(), head);
  EXPECT_EQ(head->previous(), nullptr);
  EXPECT_EQ(head->next()->data(), &b);
  EXPECT_EQ(head->next()->previous(), head);
  EXPECT_EQ(list.last()->data(), &c);
  EXPECT_EQ(forward(list), (std::vector<void*>{&a, &b, &c}));
  EXPECT_EQ(backward(list), (std::vector<void*>{&c, &b, &a}));
}

TEST(DtListTest, AddAfterInTheMiddle) {
  int a = 1, b = 2, c = 3;
  DtList list;
  DtListItem* first = list.add(&a);
  list.add(&c);
  DtListItem* middle = list.addAfter(&b, first);
  EXPECT_EQ(middle->previous(), first);
  EXPECT_EQ(first->next(), middle);
  EXPECT_EQ(middle->next(), list.last());
  EXPECT_EQ(list.last()->previous(), middle);
  EXPECT_EQ(forward(list), (std::vector<void*>{&a, &b, &c}));
  EXPECT_EQ(backward(list), (std::vector<void*>{&c, &b, &a}));
}

TEST(DtListTest, AddAfterLastMovesTheEnd) {
  int a = 1, b = 2, c = 3;
  DtList list;
  DtListItem* first = list.add(&a);
  DtListItem* tail = list.addAfter(&b, first);
  EXPECT_EQ(list.last(), tail);
  list.add(&c);  // add is addAfter(data, last)
  EXPECT_EQ(forward(list), (std::vector<void*>{&a, &b, &c}));
  EXPECT_EQ(list.last()->data(), &c);
  EXPECT_EQ(list.last()->previous(), tail);
}

TEST(DtListTest, RemoveHeadMiddleAndTailLeavesData) {
  int a = 1, b = 2, c = 3, d = 4;
  DtList list;
  DtListItem* ia = list.add(&a);
  DtListItem* ib = list.add(&b);
  DtListItem* ic = list.add(&c);
  DtListItem* id = list.add(&d);

  list.remove(ib);  // middle
  EXPECT_EQ(forward(list), (std::vector<void*>{&a, &c, &d}));
  EXPECT_EQ(backward(list), (std::vector<void*>{&d, &c, &a}));
  EXPECT_EQ(ia->next(), ic);
  EXPECT_EQ(ic->previous(), ia);

  list.remove(ia);  // head
  EXPECT_EQ(list.first(), ic);
  EXPECT_EQ(ic->previous(), nullptr);
  EXPECT_EQ(forward(list), (std::vector<void*>{&c, &d}));

  list.remove(id);  // tail
  EXPECT_EQ(list.last(), ic);
  EXPECT_EQ(ic->next(), nullptr);
  EXPECT_EQ(forward(list), (std::vector<void*>{&c}));

  list.remove(ic);  // only item
  EXPECT_EQ(list.first(), nullptr);
  EXPECT_EQ(list.last(), nullptr);
  EXPECT_EQ(list.count(), 0);

  // The data was never touched.
  EXPECT_EQ(a, 1);
  EXPECT_EQ(b, 2);
  EXPECT_EQ(c, 3);
  EXPECT_EQ(d, 4);
}

TEST(DtListTest, RemoveNullIsHarmless) {
  int a = 1;
  DtList list;
  list.add(&a);
  list.remove(nullptr);
  EXPECT_EQ(list.count(), 1);
  EXPECT_EQ(list.first()->data(), &a);
}

TEST(DtListTest, ListIsUsableAfterEmptying) {
  int a = 1, b = 2;
  DtList list;
  list.remove(list.add(&a));
  EXPECT_EQ(list.first(), nullptr);
  list.add(&b);
  EXPECT_EQ(forward(list), (std::vector<void*>{&b}));
  EXPECT_EQ(list.last(), list.first());
}

TEST(DtListTest, EmptyingWalkReadsNextBeforeRemove) {
  std::vector<int> values = {10, 20, 30, 40, 50};
  DtList list;
  for (int& value : values) list.add(&value);
  ASSERT_EQ(list.count(), 5);

  std::vector<int> seen;
  DtListItem* next = nullptr;
  for (DtListItem* item = list.first(); item; item = next) {
    next = item->next();
    seen.push_back(*static_cast<int*>(item->data()));
    list.remove(item);
  }
  EXPECT_EQ(seen, (std::vector<int>{10, 20, 30, 40, 50}));
  EXPECT_EQ(list.first(), nullptr);
  EXPECT_EQ(list.last(), nullptr);
  EXPECT_EQ(list.count(), 0);
  EXPECT_EQ(values, (std::vector<int>{10, 20, 30, 40, 50}));
}

TEST(DtListTest, SelectiveRemovalDuringWalk) {
  std::vector<int> values = {1, 2, 3, 4, 5, 6};
  DtList list;
  for (int& value : values) list.add(&value);
  DtListItem* next = nullptr;
  for (DtListItem* item = list.first(); item; item = next) {
    next = item->next();
    if (*static_cast<int*>(item->data()) % 2 == 0) list.remove(item);
  }
  std::vector<int> left;
  for (DtListItem* item = list.first(); item; item = item->next())
    left.push_back(*static_cast<int*>(item->data()));
  EXPECT_EQ(left, (std::vector<int>{1, 3, 5}));
  EXPECT_EQ(*static_cast<int*>(list.last()->data()), 5);
}

TEST(DtListTest, DestructorFreesItemsButNotData) {
  int* owned = new int(7);
  {
    DtList list;
    list.add(owned);
    list.add(owned);
    EXPECT_EQ(list.count(), 2);
  }
  // The data is still ours: reading and freeing it is fine under the address sanitizer.
  EXPECT_EQ(*owned, 7);
  delete owned;
}

TEST(DtListTest, ManyItems) {
  std::vector<int> values(1000);
  DtList list;
  for (int i = 0; i < 1000; ++i) {
    values[static_cast<size_t>(i)] = i;
    list.add(&values[static_cast<size_t>(i)]);
  }
  EXPECT_EQ(list.count(), 1000);
  int expected = 0;
  bool inOrder = true;
  for (DtListItem* item = list.first(); item; item = item->next())
    inOrder = inOrder && *static_cast<int*>(item->data()) == expected++;
  EXPECT_TRUE(inOrder);
  EXPECT_EQ(expected, 1000);
}

}  // namespace
