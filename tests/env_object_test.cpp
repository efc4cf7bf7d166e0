// Objects: name and type holders, the attribute index, the calls on a sync, clone; and native
// values.
#include <gtest/gtest.h>
#include <ktl/ktl.h>

#include <memory>
#include <vector>

using namespace KORRti;

namespace {

// What an object asked of its sync.
enum class DtEnvSyncCall { SyncIn, UnboundAttributeSyncIn, AttributeAdded, AttributeRemoved };

struct SyncCall {
  DtEnvObjectSync* sync;
  DtEnvSyncCall call;
  DtEnvObject* object;
  DtEnvValue* child;
  DtEnvValueSP node;
};

// Stands in for an application's sync: notes every call an object makes on it.
class RecordingSync : public DtEnvObjectSync {
 public:
  explicit RecordingSync(std::vector<SyncCall>& calls) : calls_(calls) {}
  DtEnvObjectSync* sync() { return this; }
  void syncIn(DtEnvObject* object) override {
    calls_.push_back({this, DtEnvSyncCall::SyncIn, object, nullptr, DtEnvValueSP()});
  }
  void syncOut(DtEnvObject*) override {}
  DtString objectType() const override { return "T"; }
  void unboundAttributeSyncInCB(DtEnvValue* child) override {
    calls_.push_back({this, DtEnvSyncCall::UnboundAttributeSyncIn, nullptr, child, DtEnvValueSP()});
  }
  void attributeAddedCB(DtEnvValueSP node) override {
    calls_.push_back({this, DtEnvSyncCall::AttributeAdded, nullptr, nullptr, node});
  }
  void attributeRemovedCB(DtEnvValueSP node) override {
    calls_.push_back({this, DtEnvSyncCall::AttributeRemoved, nullptr, nullptr, node});
  }

 private:
  std::vector<SyncCall>& calls_;
};

class EnvObjectTest : public ::testing::Test {
 protected:
  std::vector<SyncCall> calls;
  RecordingSync fake{calls};
};

class Watch : public DtEnvNamedList {
 public:
  using DtEnvNamedList::DtEnvNamedList;
  void childChanged(DtEnvValue* child) override {
    seen.push_back(child);
    DtEnvNamedList::childChanged(child);
  }
  std::vector<DtEnvValue*> seen;
};

TEST_F(EnvObjectTest, NameTypeAndValue) {
  DtEnvObject o("car", "Vehicle", "3");
  EXPECT_STREQ("car", o.name().c_str());
  EXPECT_STREQ("Vehicle", o.type().c_str());
  EXPECT_STREQ("3", o.value().c_str());
  o.setName("bike");
  o.setType("Cycle");
  EXPECT_STREQ("bike", o.name().c_str());
  EXPECT_STREQ("Cycle", o.type().c_str());
  EXPECT_STREQ("3", o.value().c_str());
  EXPECT_EQ(nullptr, o.sync());
}

TEST_F(EnvObjectTest, IterationHidesNameAndTypeHolders) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  EXPECT_FALSE(o->first());
  DtEnvValueSP typeHolder = o->last();
  ASSERT_TRUE(typeHolder);
  EXPECT_STREQ("T", typeHolder->value().c_str());
  EXPECT_FALSE(typeHolder->parent());
  EXPECT_EQ(0u, typeHolder->format());

  auto a = std::make_shared<DtEnvNamedList>("a", "1");
  auto c = std::make_shared<DtEnvValue>("comment");
  o->append(a);
  o->append(c);
  std::vector<DtEnvValueSP> got;
  for (DtEnvValueSP x = o->first(); x; x = o->next(x)) got.push_back(x);
  ASSERT_EQ(2u, got.size());
  EXPECT_EQ(a, got[0]);
  EXPECT_EQ(c, got[1]);
  EXPECT_EQ(a, o->next(typeHolder));
}

TEST_F(EnvObjectTest, HoldersAreNeverRemoved) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  DtEnvValueSP typeHolder = o->last();
  o->remove(typeHolder);
  EXPECT_STREQ("o", o->name().c_str());
  EXPECT_STREQ("T", o->type().c_str());
  EXPECT_EQ(typeHolder, o->last());
}

TEST_F(EnvObjectTest, IsObjectAndCastToObject) {
  DtEnvValueSP o = std::make_shared<DtEnvObject>("car", "Vehicle", "");
  DtEnvValueSP n = std::make_shared<DtEnvNamedList>("car", "");
  EXPECT_FALSE(DtEnvObject::isObject(DtEnvValueSP()));
  EXPECT_FALSE(DtEnvObject::isObject(DtEnvValueSP(), "Vehicle"));
  EXPECT_FALSE(DtEnvObject::isObject(DtEnvValueSP(), "car", "Vehicle"));
  EXPECT_TRUE(DtEnvObject::isObject(o));
  EXPECT_FALSE(DtEnvObject::isObject(n));
  EXPECT_FALSE(DtEnvObject::isObject(std::make_shared<DtEnvList>("")));
  EXPECT_TRUE(DtEnvObject::isObject(o, "Vehicle"));
  EXPECT_FALSE(DtEnvObject::isObject(o, "car"));
  EXPECT_TRUE(DtEnvObject::isObject(o, "car", "Vehicle"));
  EXPECT_FALSE(DtEnvObject::isObject(o, "Vehicle", "car"));
  EXPECT_FALSE(DtEnvObject::isObject(o, "bike", "Vehicle"));
  EXPECT_FALSE(DtEnvObject::isObject(n, "car", "car"));
  EXPECT_EQ(o.get(), static_cast<DtEnvValue*>(DtEnvObject::castToObject(o)));
  EXPECT_EQ(nullptr, DtEnvObject::castToObject(n));
  EXPECT_EQ(nullptr, DtEnvObject::castToObject(DtEnvValueSP()));
}

TEST_F(EnvObjectTest, AttributeFindsAppendedNamedList) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto a = std::make_shared<DtEnvNamedList>("a", "42");
  o->append(a);
  EXPECT_EQ(a, o->attribute("a"));
  EXPECT_STREQ("42", o->attributeValue("a").c_str());
  EXPECT_FALSE(o->attribute("b"));
  EXPECT_STREQ("", o->attributeValue("b").c_str());
}

TEST_F(EnvObjectTest, AttributeIsEmptyAfterTheChildIsGone) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto a = std::make_shared<DtEnvNamedList>("a", "42");
  std::weak_ptr<DtEnvValue> watch = a;
  o->append(a);
  // Drop the child from the children alone, bypassing the index.
  o->DtEnvList::remove(a);
  EXPECT_EQ(a, o->attribute("a"));
  a.reset();
  EXPECT_TRUE(watch.expired());
  EXPECT_FALSE(o->attribute("a"));
  EXPECT_STREQ("", o->attributeValue("a").c_str());
}

TEST_F(EnvObjectTest, LaterNamesakeReplacesIndexEntryAndBothStay) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto a = std::make_shared<DtEnvNamedList>("a", "first");
  auto b = std::make_shared<DtEnvObject>("a", "Other", "second");
  o->append(a);
  o->append(b);
  EXPECT_EQ(b, o->attribute("a"));
  EXPECT_STREQ("second", o->attributeValue("a").c_str());
  EXPECT_EQ(a, o->first());
  EXPECT_EQ(b, o->next(a));
  EXPECT_EQ(b, o->last());
}

TEST_F(EnvObjectTest, SetNameOnChildDoesNotRenameIndexEntry) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto a = std::make_shared<DtEnvNamedList>("a", "1");
  o->append(a);
  a->setName("renamed");
  EXPECT_EQ(a, o->attribute("a"));
  EXPECT_FALSE(o->attribute("renamed"));
}

TEST_F(EnvObjectTest, OnlyNamedChildrenWithANameAreIndexed) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto comment = std::make_shared<DtEnvValue>("c");
  auto unnamed = std::make_shared<DtEnvNamedList>("", "v");
  auto list = std::make_shared<DtEnvList>("l");
  o->append(comment);
  o->append(unnamed);
  o->append(list);
  EXPECT_FALSE(o->attribute("c"));
  EXPECT_FALSE(o->attribute(""));
  EXPECT_FALSE(o->attribute("l"));
  EXPECT_EQ(list, o->last());
}

TEST_F(EnvObjectTest, RemoveErasesIndexEntryByName) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto a = std::make_shared<DtEnvNamedList>("a", "1");
  auto b = std::make_shared<DtEnvNamedList>("b", "2");
  o->append(a);
  o->append(b);
  o->remove(a);
  EXPECT_FALSE(o->attribute("a"));
  EXPECT_EQ(b, o->attribute("b"));
  EXPECT_EQ(b, o->first());
  EXPECT_FALSE(o->next(b));
}

TEST_F(EnvObjectTest, RemovingANodeRemovesTheEntryOfAYoungerNamesake) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto older = std::make_shared<DtEnvNamedList>("a", "1");
  auto younger = std::make_shared<DtEnvNamedList>("a", "2");
  o->append(older);
  o->append(younger);
  o->remove(older);
  EXPECT_FALSE(o->attribute("a"));
  EXPECT_EQ(younger, o->first());
}

TEST_F(EnvObjectTest, RemoveOfForeignChildLeavesChildrenAlone) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto a = std::make_shared<DtEnvNamedList>("a", "1");
  o->append(a);
  o->remove(std::make_shared<DtEnvValue>("x"));
  o->remove(DtEnvValueSP());
  EXPECT_EQ(a, o->first());
  EXPECT_EQ(a, o->attribute("a"));
}

TEST_F(EnvObjectTest, SetSyncCallsSyncInAtOnce) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  o->setSync(fake.sync());
  EXPECT_EQ(fake.sync(), o->sync());
  ASSERT_EQ(1u, calls.size());
  EXPECT_EQ(DtEnvSyncCall::SyncIn, calls[0].call);
  EXPECT_EQ(fake.sync(), calls[0].sync);
  EXPECT_EQ(o.get(), calls[0].object);
  o->setSync(nullptr);
  EXPECT_EQ(nullptr, o->sync());
  EXPECT_EQ(1u, calls.size());
}

TEST_F(EnvObjectTest, OwnValueChangeGoesToSyncAndStops) {
  auto parent = std::make_shared<Watch>("p", "");
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  o->setParent(parent);
  parent->append(o);
  o->setValue("1");
  ASSERT_EQ(1u, parent->seen.size());  // no sync yet: behaves as a value
  EXPECT_EQ(o.get(), parent->seen[0]);

  o->setSync(fake.sync());
  calls.clear();
  o->setValue("2");
  ASSERT_EQ(1u, calls.size());
  EXPECT_EQ(DtEnvSyncCall::SyncIn, calls[0].call);
  EXPECT_EQ(o.get(), calls[0].object);
  EXPECT_EQ(1u, parent->seen.size());
}

TEST_F(EnvObjectTest, ChangeBelowSyncedObjectReachesSyncWithDirectChildOnly) {
  auto top = std::make_shared<Watch>("top", "");
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  o->setParent(top);
  top->append(o);
  auto child = std::make_shared<DtEnvNamedList>("a", "");
  child->setParent(o);
  o->append(child);
  auto grandchild = std::make_shared<DtEnvNamedList>("b", "");
  grandchild->setParent(child);
  child->append(grandchild);

  o->setSync(fake.sync());
  calls.clear();
  grandchild->setValue("changed");
  ASSERT_EQ(1u, calls.size());
  EXPECT_EQ(DtEnvSyncCall::UnboundAttributeSyncIn, calls[0].call);
  EXPECT_EQ(child.get(), calls[0].child);
  EXPECT_TRUE(top->seen.empty());

  calls.clear();
  child->setValue("direct");
  ASSERT_EQ(1u, calls.size());
  EXPECT_EQ(child.get(), calls[0].child);
  EXPECT_TRUE(top->seen.empty());

  // Without the sync the change travels on to the object's parent.
  o->setSync(nullptr);
  calls.clear();
  grandchild->setValue("again");
  EXPECT_TRUE(calls.empty());
  ASSERT_EQ(1u, top->seen.size());
  EXPECT_EQ(o.get(), top->seen[0]);
}

TEST_F(EnvObjectTest, AppendAndRemoveTellTheSync) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  auto a = std::make_shared<DtEnvNamedList>("a", "1");
  o->append(a);
  EXPECT_TRUE(calls.empty());  // no sync yet
  o->setSync(fake.sync());
  calls.clear();
  auto b = std::make_shared<DtEnvValue>("comment");
  o->append(b);
  ASSERT_EQ(1u, calls.size());
  EXPECT_EQ(DtEnvSyncCall::AttributeAdded, calls[0].call);
  EXPECT_EQ(b, calls[0].node);
  o->remove(a);
  ASSERT_EQ(2u, calls.size());
  EXPECT_EQ(DtEnvSyncCall::AttributeRemoved, calls[1].call);
  EXPECT_EQ(a, calls[1].node);
}

TEST_F(EnvObjectTest, RenamingASyncedObjectSendsNothing) {
  auto o = std::make_shared<DtEnvObject>("o", "T", "");
  o->setSync(fake.sync());
  calls.clear();
  o->setName("p");
  o->setType("U");
  EXPECT_TRUE(calls.empty());
}

TEST_F(EnvObjectTest, ObjectCloneCopiesNameTypeValueChildrenAndIndexButNoSync) {
  setenv("KTL_ENV_OBJ", "car", 1);
  auto parent = std::make_shared<DtEnvList>("");
  auto o = std::make_shared<DtEnvObject>("$(KTL_ENV_OBJ)", "Vehicle", "3");
  o->setParent(parent);
  auto a = std::make_shared<DtEnvNamedList>("a", "1");
  a->setParent(o);
  o->append(a);
  auto inner = std::make_shared<DtEnvObject>("wheel", "Wheel", "4");
  inner->setParent(o);
  o->append(inner);
  o->setSync(fake.sync());
  calls.clear();

  DtEnvValueSP copy(o->clone());
  DtEnvObject* c = DtEnvObject::castToObject(copy);
  ASSERT_NE(nullptr, c);
  EXPECT_EQ(7u, c->format());
  EXPECT_STREQ("car", c->name().c_str());
  EXPECT_STREQ("Vehicle", c->type().c_str());
  EXPECT_STREQ("3", c->value().c_str());
  EXPECT_EQ(nullptr, c->sync());
  EXPECT_FALSE(c->parent());
  EXPECT_TRUE(calls.empty());

  DtEnvValueSP ca = c->attribute("a");
  ASSERT_TRUE(ca);
  EXPECT_NE(a, ca);
  EXPECT_STREQ("1", ca->value().c_str());
  EXPECT_FALSE(ca->parent());
  DtEnvValueSP cw = c->attribute("wheel");
  ASSERT_TRUE(DtEnvObject::isObject(cw, "wheel", "Wheel"));
  EXPECT_FALSE(cw->parent());
  EXPECT_EQ(ca, c->first());
  EXPECT_EQ(cw, c->next(ca));
  EXPECT_FALSE(c->next(cw));

  // A change inside the copy reaches neither the original's sync nor anything else.
  ca->setValue("2");
  EXPECT_TRUE(calls.empty());
  EXPECT_STREQ("1", a->value().c_str());
  unsetenv("KTL_ENV_OBJ");
}

TEST_F(EnvObjectTest, NativeValueCarriesPointerAndTypeName) {
  int host = 5;
  std::shared_ptr<DtNativeValue> n = DtNativeValue::create("int", &host);
  EXPECT_EQ(8u, n->format());
  EXPECT_EQ(&host, n->nativeValue());
  EXPECT_STREQ("int", n->nativeType().c_str());
  EXPECT_STREQ("int", n->value().c_str());
  DtEnvValueSP sp = n;
  EXPECT_TRUE(DtNativeValue::isNativeValue(sp));
  EXPECT_EQ(n.get(), DtNativeValue::castToNativeValue(sp));
  EXPECT_FALSE(DtEnvList::isList(sp));
  EXPECT_FALSE(DtEnvObject::isObject(sp));
  EXPECT_FALSE(DtNativeValue::isNativeValue(DtEnvValueSP()));
  EXPECT_EQ(nullptr, DtNativeValue::castToNativeValue(DtEnvValueSP()));
  DtEnvValueSP other = std::make_shared<DtEnvObject>("o", "T", "");
  EXPECT_FALSE(DtNativeValue::isNativeValue(other));
  EXPECT_EQ(nullptr, DtNativeValue::castToNativeValue(other));
  EXPECT_EQ(5, host);  // not owned, not touched
}

TEST_F(EnvObjectTest, NativeValueBehavesAsAValue) {
  auto parent = std::make_shared<Watch>("p", "");
  std::shared_ptr<DtNativeValue> n = DtNativeValue::create("double", nullptr);
  n->setParent(parent);
  parent->append(n);
  n->setValue("float");
  EXPECT_STREQ("float", n->nativeType().c_str());
  ASSERT_EQ(1u, parent->seen.size());
  EXPECT_EQ(n.get(), static_cast<DtNativeValue*>(parent->seen[0]));
  EXPECT_EQ(parent, n->parent());
}

TEST_F(EnvObjectTest, NativeValueCloneIsAPlainValueWithTheTypeName) {
  int host = 1;
  auto parent = std::make_shared<DtEnvObject>("o", "T", "");
  parent->append(DtNativeValue::create("Vehicle*", &host));
  std::unique_ptr<DtEnvValue> copy(parent->first()->clone());
  ASSERT_TRUE(copy);
  EXPECT_EQ(0u, copy->format());
  EXPECT_STREQ("Vehicle*", copy->value().c_str());
  EXPECT_EQ(nullptr, dynamic_cast<DtNativeValue*>(copy.get()));
  EXPECT_FALSE(DtNativeValue::isNativeValue(DtEnvValueSP(copy.release())));

  // Inside a tree copy it turns into a comment.
  DtEnvValueSP tree(parent->clone());
  DtEnvValueSP c = DtEnvObject::castToObject(tree)->first();
  ASSERT_TRUE(c);
  EXPECT_EQ(0u, c->format());
  EXPECT_STREQ("Vehicle*", c->value().c_str());
}

}  // namespace
