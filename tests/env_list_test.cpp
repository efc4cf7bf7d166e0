// Lists and named lists: iteration, hidden name holder, append and remove, casts, clone.
#include <gtest/gtest.h>
#include <ktl/ktl.h>

#include <memory>
#include <vector>

using namespace KORRti;

namespace {

std::vector<DtEnvValueSP> children(const DtEnvValueSP& node) {
  std::vector<DtEnvValueSP> out;
  DtEnvList* list = DtEnvList::castToList(node);
  if (!list) return out;
  for (DtEnvValueSP c = list->first(); c; c = list->next(c)) out.push_back(c);
  return out;
}

TEST(EnvListTest, BareListWithoutChildrenHasNoFirstOrLast) {
  DtEnvList list("v");
  EXPECT_FALSE(list.first());
  EXPECT_FALSE(list.last());
  EXPECT_STREQ("v", list.value().c_str());
}

TEST(EnvListTest, IterationFollowsInsertionOrder) {
  auto list = std::make_shared<DtEnvList>("");
  auto a = std::make_shared<DtEnvValue>("a");
  auto b = std::make_shared<DtEnvNamedList>("b", "1");
  auto c = DtNativeValue::create("int", nullptr);
  list->append(a);
  list->append(b);
  list->append(c);
  std::vector<DtEnvValueSP> got = children(list);
  ASSERT_EQ(3u, got.size());
  EXPECT_EQ(a, got[0]);
  EXPECT_EQ(b, got[1]);
  EXPECT_EQ(c, got[2]);
  EXPECT_EQ(a, list->first());
  EXPECT_EQ(c, list->last());
}

TEST(EnvListTest, NextOfEmptyForeignOrLastChildIsEmpty) {
  DtEnvList list("");
  auto a = std::make_shared<DtEnvValue>("a");
  auto b = std::make_shared<DtEnvValue>("b");
  list.append(a);
  list.append(b);
  EXPECT_EQ(b, list.next(a));
  EXPECT_FALSE(list.next(b));
  EXPECT_FALSE(list.next(DtEnvValueSP()));
  EXPECT_FALSE(list.next(std::make_shared<DtEnvValue>("a")));
}

TEST(EnvListTest, RemoveErasesFirstEqualEntryOnly) {
  DtEnvList list("");
  auto a = std::make_shared<DtEnvValue>("a");
  auto b = std::make_shared<DtEnvValue>("b");
  list.append(a);
  list.append(b);
  list.append(a);
  list.remove(a);
  EXPECT_EQ(b, list.first());
  EXPECT_EQ(a, list.next(b));
  list.remove(a);
  EXPECT_EQ(b, list.first());
  EXPECT_EQ(b, list.last());
  list.remove(b);
  EXPECT_FALSE(list.first());
}

TEST(EnvListTest, RemoveOfForeignChildIsSilent) {
  DtEnvList list("");
  auto a = std::make_shared<DtEnvValue>("a");
  list.append(a);
  list.remove(std::make_shared<DtEnvValue>("a"));
  list.remove(DtEnvValueSP());
  EXPECT_EQ(a, list.first());
  EXPECT_EQ(a, list.last());
}

TEST(EnvListTest, RemoveReleasesTheChild) {
  DtEnvList list("");
  auto a = std::make_shared<DtEnvValue>("a");
  std::weak_ptr<DtEnvValue> watch = a;
  list.append(a);
  a.reset();
  EXPECT_FALSE(watch.expired());
  list.remove(watch.lock());
  EXPECT_TRUE(watch.expired());
}

TEST(EnvListTest, AppendOfEmptyHandleOrItselfIsIgnored) {
  auto list = std::make_shared<DtEnvList>("");
  list->append(DtEnvValueSP());
  list->append(list);
  EXPECT_FALSE(list->first());
  EXPECT_EQ(1, list.use_count());
}

TEST(EnvListTest, IsListAndCastToList) {
  EXPECT_FALSE(DtEnvList::isList(DtEnvValueSP()));
  EXPECT_EQ(nullptr, DtEnvList::castToList(DtEnvValueSP()));
  DtEnvValueSP value = std::make_shared<DtEnvValue>("v");
  EXPECT_FALSE(DtEnvList::isList(value));
  EXPECT_EQ(nullptr, DtEnvList::castToList(value));
  EXPECT_FALSE(DtEnvList::isList(DtNativeValue::create("t", nullptr)));
  DtEnvValueSP list = std::make_shared<DtEnvList>("l");
  DtEnvValueSP named = std::make_shared<DtEnvNamedList>("n", "");
  DtEnvValueSP object = std::make_shared<DtEnvObject>("o", "t", "");
  EXPECT_TRUE(DtEnvList::isList(list));
  EXPECT_TRUE(DtEnvList::isList(named));
  EXPECT_TRUE(DtEnvList::isList(object));
  EXPECT_EQ(list.get(), DtEnvList::castToList(list));
  EXPECT_EQ(static_cast<DtEnvList*>(static_cast<DtEnvObject*>(object.get())),
            DtEnvList::castToList(object));
}

TEST(EnvListTest, CastRefusesAFlagWithoutTheClass) {
  DtEnvValueSP value = std::make_shared<DtEnvValue>("v");
  value->addFormat(DtEnvListFormat);
  value->addFormat(DtEnvNamedFormat);
  value->addFormat(DtEnvObjectFormat);
  value->addFormat(DtEnvNativeFormat);
  EXPECT_TRUE(DtEnvList::isList(value));
  EXPECT_EQ(nullptr, DtEnvList::castToList(value));
  EXPECT_EQ(nullptr, DtEnvNamedList::castToNamedList(value));
  EXPECT_EQ(nullptr, DtEnvObject::castToObject(value));
  EXPECT_EQ(nullptr, DtNativeValue::castToNativeValue(value));
  EXPECT_FALSE(DtEnvObject::isObject(value, "t"));
}

TEST(EnvListTest, IsNamedListAndCastToNamedList) {
  EXPECT_FALSE(DtEnvNamedList::isNamedList(DtEnvValueSP()));
  EXPECT_EQ(nullptr, DtEnvNamedList::castToNamedList(DtEnvValueSP()));
  EXPECT_FALSE(DtEnvNamedList::isNamedList(std::make_shared<DtEnvList>("")));
  EXPECT_FALSE(DtEnvNamedList::isNamedList(std::make_shared<DtEnvValue>("")));
  DtEnvValueSP named = std::make_shared<DtEnvNamedList>("n", "");
  DtEnvValueSP object = std::make_shared<DtEnvObject>("o", "t", "");
  EXPECT_TRUE(DtEnvNamedList::isNamedList(named));
  EXPECT_TRUE(DtEnvNamedList::isNamedList(object));
  ASSERT_NE(nullptr, DtEnvNamedList::castToNamedList(named));
  EXPECT_STREQ("n", DtEnvNamedList::castToNamedList(named)->name().c_str());
  EXPECT_STREQ("o", DtEnvNamedList::castToNamedList(object)->name().c_str());
  EXPECT_EQ(nullptr, DtEnvNamedList::castToNamedList(std::make_shared<DtEnvList>("")));
}

TEST(EnvNamedListTest, NameAndValue) {
  DtEnvNamedList n("size", "12");
  EXPECT_STREQ("size", n.name().c_str());
  EXPECT_STREQ("12", n.value().c_str());
  n.setName("width");
  EXPECT_STREQ("width", n.name().c_str());
  EXPECT_STREQ("12", n.value().c_str());
}

TEST(EnvNamedListTest, FirstIsEmptyWhileLastGivesTheNameHolder) {
  DtEnvNamedList n("size", "12");
  EXPECT_FALSE(n.first());
  DtEnvValueSP holder = n.last();
  ASSERT_TRUE(holder);
  EXPECT_EQ(0u, holder->format());
  EXPECT_STREQ("size", holder->value().c_str());
  EXPECT_FALSE(holder->parent());
  EXPECT_FALSE(n.next(holder));
}

TEST(EnvNamedListTest, IterationHidesTheNameHolder) {
  auto n = std::make_shared<DtEnvNamedList>("n", "");
  auto a = std::make_shared<DtEnvValue>("a");
  auto b = std::make_shared<DtEnvValue>("b");
  n->append(a);
  n->append(b);
  std::vector<DtEnvValueSP> got = children(n);
  ASSERT_EQ(2u, got.size());
  EXPECT_EQ(a, got[0]);
  EXPECT_EQ(b, got[1]);
  EXPECT_EQ(b, n->last());
  EXPECT_EQ(a, n->first());
}

TEST(EnvNamedListTest, RenamingSendsNoNotification) {
  struct Watch : DtEnvNamedList {
    using DtEnvNamedList::DtEnvNamedList;
    void childChanged(DtEnvValue* c) override {
      ++calls;
      DtEnvNamedList::childChanged(c);
    }
    int calls = 0;
  };
  auto parent = std::make_shared<Watch>("p", "");
  auto n = std::make_shared<DtEnvNamedList>("n", "");
  n->setParent(parent);
  parent->append(n);
  n->setName("m");
  EXPECT_EQ(0, parent->calls);
  n->setValue("v");
  EXPECT_EQ(1, parent->calls);
}

TEST(EnvNamedListTest, NameHolderIsNeverRemoved) {
  DtEnvNamedList n("size", "");
  DtEnvValueSP holder = n.last();
  n.remove(holder);
  EXPECT_STREQ("size", n.name().c_str());
  EXPECT_EQ(holder, n.last());
  auto a = std::make_shared<DtEnvValue>("a");
  n.append(a);
  n.remove(a);
  EXPECT_FALSE(n.first());
  EXPECT_EQ(holder, n.last());
}

TEST(EnvCloneTest, ListCloneIsDeepAndDetached) {
  auto parent = std::make_shared<DtEnvList>("top");
  auto list = std::make_shared<DtEnvList>("l");
  list->setParent(parent);
  parent->append(list);
  auto inner = std::make_shared<DtEnvNamedList>("inner", "iv");
  inner->setParent(list);
  list->append(inner);
  auto comment = std::make_shared<DtEnvValue>("c");
  inner->append(comment);

  DtEnvValueSP copy(list->clone());
  ASSERT_TRUE(copy);
  EXPECT_EQ(1u, copy->format());
  EXPECT_STREQ("l", copy->value().c_str());
  EXPECT_FALSE(copy->parent());
  std::vector<DtEnvValueSP> top = children(copy);
  ASSERT_EQ(1u, top.size());
  EXPECT_NE(inner, top[0]);
  EXPECT_FALSE(top[0]->parent());
  ASSERT_TRUE(DtEnvNamedList::isNamedList(top[0]));
  EXPECT_STREQ("inner", DtEnvNamedList::castToNamedList(top[0])->name().c_str());
  EXPECT_STREQ("iv", top[0]->value().c_str());
  std::vector<DtEnvValueSP> below = children(top[0]);
  ASSERT_EQ(1u, below.size());
  EXPECT_NE(comment, below[0]);
  EXPECT_STREQ("c", below[0]->value().c_str());

  // The copy owns its own nodes.
  below[0]->setValue("changed");
  EXPECT_STREQ("c", comment->value().c_str());
  EXPECT_EQ(1, copy.use_count());
}

TEST(EnvCloneTest, NamedListCloneHasOneNameHolder) {
  setenv("KTL_ENV_CLONE", "expanded", 1);
  DtEnvNamedList n("$(KTL_ENV_CLONE)", "v$(KTL_ENV_CLONE)");
  n.append(std::make_shared<DtEnvValue>("a"));
  std::unique_ptr<DtEnvValue> copy(n.clone());
  auto* named = dynamic_cast<DtEnvNamedList*>(copy.get());
  ASSERT_NE(nullptr, named);
  EXPECT_EQ(3u, named->format());
  EXPECT_STREQ("expanded", named->name().c_str());
  EXPECT_STREQ("vexpanded", named->value().c_str());
  EXPECT_STREQ("vexpanded", named->unmodifiedValue().c_str());
  DtEnvValueSP first = named->first();
  ASSERT_TRUE(first);
  EXPECT_STREQ("a", first->value().c_str());
  EXPECT_EQ(first, named->last());
  EXPECT_FALSE(named->next(first));
  unsetenv("KTL_ENV_CLONE");
}

TEST(EnvCloneTest, CloneChildrenAppendsThroughTheTarget) {
  DtEnvNamedList source("s", "");
  source.append(std::make_shared<DtEnvNamedList>("a", "1"));
  source.append(std::make_shared<DtEnvValue>("comment"));
  DtEnvObject target("t", "T", "");
  source.cloneChildren(&target);
  ASSERT_TRUE(target.attribute("a"));
  EXPECT_STREQ("1", target.attributeValue("a").c_str());
  ASSERT_TRUE(target.last());
  EXPECT_STREQ("comment", target.last()->value().c_str());
  source.cloneChildren(nullptr);  // harmless
}

TEST(EnvListTest, DeepTreeIsReleasedWithoutRecursion) {
  std::weak_ptr<DtEnvValue> leaf;
  {
    auto top = std::make_shared<DtEnvNamedList>("n", "");
    DtEnvValueSP at = top;
    for (int i = 0; i < 200000; ++i) {
      auto child = std::make_shared<DtEnvNamedList>("n", "");
      child->setParent(at);
      DtEnvList::castToList(at)->append(child);
      at = child;
    }
    leaf = at;
  }
  EXPECT_TRUE(leaf.expired());
}

TEST(EnvListTest, ReleasingASubtreeLeavesOtherOwnersAlone) {
  auto kept = std::make_shared<DtEnvNamedList>("kept", "");
  auto grandchild = std::make_shared<DtEnvValue>("g");
  kept->append(grandchild);
  {
    auto top = std::make_shared<DtEnvList>("");
    top->append(kept);
  }
  EXPECT_STREQ("kept", kept->name().c_str());
  EXPECT_EQ(grandchild, kept->first());
}

}  // namespace
