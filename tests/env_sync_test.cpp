// Binding application objects to tree objects: bind, unbind, generateObject, the attribute
// syncs a derived class keeps, and the calls that reach a bound sync.
#include <gtest/gtest.h>
#include <ktl/envObjectSync.h>
#include <ktl/environment.h>

#include <string>
#include <vector>

using namespace KORRti;

namespace {

// An application object with one number, kept in the node's value.
class NumberSync : public DtEnvObjectSync {
 public:
  explicit NumberSync(std::vector<std::string>* log = nullptr, const char* label = "n")
      : log_(log), label_(label) {}
  void syncIn(DtEnvObject* object) override {
    note("syncIn");
    lastIn = object;
    number = object->value().toInt();
  }
  void syncOut(DtEnvObject* object) override {
    note("syncOut");
    object->setValue(DtString(std::to_string(number).c_str()));
  }
  DtString objectType() const override { return "Number"; }
  void unboundAttributeSyncInCB(DtEnvValue* child) override {
    note("child");
    children.push_back(child);
  }
  void attributeAddedCB(DtEnvValueSP node) override {
    note("added");
    added.push_back(node);
  }
  void attributeRemovedCB(DtEnvValueSP node) override {
    note("removed");
    removed.push_back(node);
  }

  int number = 0;
  DtEnvObject* lastIn = nullptr;
  std::vector<DtEnvValue*> children;
  std::vector<DtEnvValueSP> added;
  std::vector<DtEnvValueSP> removed;

 private:
  void note(const char* what) {
    if (log_) log_->push_back(label_ + ":" + what);
  }
  std::vector<std::string>* log_;
  std::string label_;
};

// A sync that keeps the syncs of its attributes, as a derived class does to use them.
class ParentSync : public NumberSync {
 public:
  using NumberSync::NumberSync;
  void addAttributeSync(const DtString& name, DtEnvObjectSync* sync) override {
    removeAttributeSync(name);
    attributeSyncs[name] = sync;
  }
  DtEnvObjectSync* attributeSync(const DtString& name) override {
    auto it = attributeSyncs.find(name);
    return it == attributeSyncs.end() ? nullptr : it->second;
  }
  DtString objectType() const override { return "Parent"; }
};

DtEnvObject* object(const DtEnvValueSP& node) {
  return DtEnvObject::castToObject(node);
}

}  // namespace

TEST(EnvSync, BindSetsTheSyncWhichTakesTheNodesDataBeforeBindReturns) {
  DtEnvironment env;
  DtEnvValueSP node = env.addObject("n", "Number");
  node->setValue("42");
  std::vector<std::string> log;
  NumberSync sync(&log);
  sync.bind(node, false);
  EXPECT_EQ(&sync, object(node)->sync());
  EXPECT_EQ(node, sync.binding());
  EXPECT_EQ(42, sync.number);
  EXPECT_EQ((std::vector<std::string>{"n:syncIn"}), log);
}

TEST(EnvSync, BindOnANamedListThatIsNoObjectStoresTheBindingAndSetsNoSync) {
  DtEnvironment env;
  DtEnvValueSP list = env.addAttribute("speed", "3");
  NumberSync sync;
  sync.bind(list, true);
  EXPECT_EQ(list, sync.binding());
  EXPECT_EQ(nullptr, sync.lastIn);
  EXPECT_EQ(0, sync.number);
  sync.unbind();
  EXPECT_FALSE(sync.binding());
}

TEST(EnvSync, UnbindOnAnUnboundSyncDoesNothing) {
  NumberSync sync;
  sync.unbind();
  EXPECT_FALSE(sync.binding());
  EXPECT_EQ(nullptr, sync.lastIn);
}

TEST(EnvSync, UnbindClearsTheNodesSync) {
  DtEnvironment env;
  DtEnvValueSP node = env.addObject("n", "Number");
  NumberSync sync;
  sync.bind(node, false);
  sync.unbind();
  EXPECT_EQ(nullptr, object(node)->sync());
  EXPECT_FALSE(sync.binding());
}

TEST(EnvSync, AddAttributeSyncKeepsNothing) {
  NumberSync sync;
  NumberSync other;
  sync.addAttributeSync("a", &other);
  EXPECT_EQ(nullptr, sync.attributeSync("a"));
  sync.removeAttributeSync("a");
  sync.removeAllAttributeSyncs();
  EXPECT_EQ(nullptr, sync.attributeSync("a"));
}

TEST(EnvSync, AValueChangeReachesSyncInAndAChildChangeReachesTheCallback) {
  DtEnvironment env;
  DtEnvValueSP parent = env.addObject("holder");
  DtEnvValueSP node = env.addObject("n", "Number", parent);
  DtEnvValueSP child = env.addAttribute("unit", "m", node);
  DtEnvValueSP grandchild = env.addAttribute("scale", "1", child);
  std::vector<std::string> log;
  NumberSync sync(&log);
  NumberSync above;
  object(parent)->setSync(&above);
  above.children.clear();
  sync.bind(node, false);
  log.clear();

  node->setValue("7");
  EXPECT_EQ(7, sync.number);
  EXPECT_EQ(object(node), sync.lastIn);
  child->setValue("km");
  grandchild->setValue("1000");
  EXPECT_EQ((std::vector<std::string>{"n:syncIn", "n:child", "n:child"}), log);
  ASSERT_EQ(2u, sync.children.size());
  EXPECT_EQ(child.get(), sync.children[0]);
  EXPECT_EQ(child.get(), sync.children[1]);  // always the direct child
  EXPECT_TRUE(above.children.empty());       // the change stops at the bound object
  object(parent)->setSync(nullptr);
}

TEST(EnvSync, AppendAndRemoveReachTheCallbacks) {
  DtEnvironment env;
  DtEnvValueSP node = env.addObject("n", "Number");
  NumberSync sync;
  sync.bind(node, false);
  DtEnvValueSP a = env.addAttribute("a", "1", node);
  DtEnvValueSP comment = env.addComment("c", node);
  ASSERT_EQ(2u, sync.added.size());
  EXPECT_EQ(a, sync.added[0]);
  EXPECT_EQ(comment, sync.added[1]);
  env.remove(a);
  ASSERT_EQ(1u, sync.removed.size());
  EXPECT_EQ(a, sync.removed[0]);
}

TEST(EnvSync, EnvironmentSyncPushesTheApplicationsStateIntoTheTree) {
  DtEnvironment env;
  DtEnvValueSP node = env.addObject("n", "Number");
  NumberSync sync;
  sync.bind(node, false);
  sync.number = 99;
  env.sync();
  // syncOut's setValue comes back through syncIn, which reads the same number.
  EXPECT_STREQ("99", node->value().c_str());
  EXPECT_EQ(99, sync.number);
}

TEST(EnvSync, GenerateObjectMakesFillsAndSetsButDoesNotBind) {
  DtEnvironment env;
  std::vector<std::string> log;
  NumberSync sync(&log);
  sync.number = 5;
  sync.generateObject(env, "made");
  DtEnvValueSP node = env.getObject("made", "Number");
  ASSERT_TRUE(node);
  EXPECT_EQ(env.root(), node->parent());
  EXPECT_STREQ("5", node->value().c_str());
  EXPECT_EQ(&sync, object(node)->sync());
  EXPECT_FALSE(sync.binding());
  EXPECT_EQ((std::vector<std::string>{"n:syncOut", "n:syncIn"}), log);
  // A later unbind leaves the generated node's sync alone.
  sync.unbind();
  EXPECT_EQ(&sync, object(node)->sync());
}

TEST(EnvSync, AGeneratedObjectKeepsNoPointerToASyncThatIsGone) {
  DtEnvironment env;
  {
    NumberSync sync;
    sync.generateObject(env, "made");
  }
  DtEnvValueSP node = env.getObject("made", "Number");
  ASSERT_TRUE(node);
  EXPECT_EQ(nullptr, object(node)->sync());
  node->setValue("1");  // reaches no sync
}

TEST(EnvSync, DestroyingABoundSyncLeavesNoStalePointer) {
  DtEnvironment env;
  DtEnvValueSP node = env.addObject("n", "Number");
  {
    NumberSync sync;
    sync.bind(node, false);
    EXPECT_EQ(&sync, object(node)->sync());
  }
  EXPECT_EQ(nullptr, object(node)->sync());
  node->setValue("3");
}

TEST(EnvSync, ANodeThatDiesFirstLeavesTheBindingExpired) {
  NumberSync sync;
  {
    DtEnvironment env;
    sync.bind(env.addObject("n", "Number"), false);
    EXPECT_TRUE(sync.binding());
  }
  EXPECT_FALSE(sync.binding());
  sync.unbind();
}

TEST(EnvSync, BindHandsAttributeSyncsTheirAttributesInKeyOrder) {
  DtEnvironment env;
  DtEnvValueSP node = env.addObject("p", "Parent");
  DtEnvValueSP b = env.addObject("b", "Number", node);
  DtEnvValueSP a = env.addObject("a", "Number", node);
  std::vector<std::string> log;
  // The attribute syncs outlive the parent, which keeps bare pointers to them.
  NumberSync syncA(&log, "a"), syncB(&log, "b");
  ParentSync parent(&log, "p");
  parent.addAttributeSync("b", &syncB);
  parent.addAttributeSync("a", &syncA);
  EXPECT_EQ(&syncA, parent.attributeSync("a"));
  parent.bind(node, false);
  EXPECT_EQ((std::vector<std::string>{"p:syncIn", "a:syncIn", "b:syncIn"}), log);
  EXPECT_EQ(a, syncA.binding());
  EXPECT_EQ(b, syncB.binding());

  // Unbinding the parent unbinds the attribute syncs.
  parent.unbind();
  EXPECT_FALSE(syncA.binding());
  EXPECT_EQ(nullptr, object(a)->sync());
  EXPECT_EQ(nullptr, object(b)->sync());
}

TEST(EnvSync, BindWithGenerateMakesMissingAttributeObjects) {
  DtEnvironment env;
  DtEnvValueSP node = env.addObject("p", "Parent");
  ParentSync parent;
  NumberSync child;
  child.number = 8;
  parent.addAttributeSync("wheel", &child);
  parent.bind(node, false);
  EXPECT_FALSE(env.getObject("wheel", "Number"));
  parent.bind(node, true);
  DtEnvValueSP made = env.getObject("wheel", "Number", node);
  ASSERT_TRUE(made);
  EXPECT_EQ(node, made->parent());
  EXPECT_STREQ("8", made->value().c_str());
  EXPECT_EQ(&child, object(made)->sync());
  parent.removeAttributeSync("wheel");
  EXPECT_EQ(nullptr, parent.attributeSync("wheel"));
}

TEST(EnvSync, GenerateObjectGeneratesTheAttributeSyncsObjectsBelowIt) {
  DtEnvironment env;
  ParentSync parent;
  NumberSync child;
  parent.addAttributeSync("wheel", &child);
  parent.generateObject(env, "car");
  DtEnvValueSP car = env.getObject("car", "Parent");
  ASSERT_TRUE(car);
  DtEnvValueSP wheel = env.getObject("wheel", "Number", car);
  ASSERT_TRUE(wheel);
  EXPECT_EQ(car, wheel->parent());
  parent.removeAllAttributeSyncs();
  EXPECT_EQ(nullptr, parent.attributeSync("wheel"));
}
