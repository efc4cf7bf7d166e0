// Plain values: formats, setValue and the "$(NAME)" expansion, parent links and change
// propagation, clone of a value.
#include <gtest/gtest.h>
#include <ktl/ktl.h>

#include <cstdlib>
#include <memory>
#include <vector>

using namespace KORRti;

namespace {

// A named list that records every childChanged it receives before passing it on.
class Watch : public DtEnvNamedList {
 public:
  using DtEnvNamedList::DtEnvNamedList;
  void childChanged(DtEnvValue* child) override {
    seen.push_back(child);
    DtEnvNamedList::childChanged(child);
  }
  std::vector<DtEnvValue*> seen;
};

DtString expand(const char* text) {
  DtString result("untouched");
  Modifiers(result, DtString(text));
  return result;
}

class EnvValueTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("KTL_ENV_A", "alpha", 1);
    setenv("KTL_ENV_B", "beta", 1);
    setenv("KTL_ENV_REF", "$(KTL_ENV_A)", 1);
    unsetenv("KTL_ENV_UNSET");
  }
  void TearDown() override {
    unsetenv("KTL_ENV_A");
    unsetenv("KTL_ENV_B");
    unsetenv("KTL_ENV_REF");
  }
};

TEST_F(EnvValueTest, FormatOfEachClass) {
  EXPECT_EQ(0u, DtEnvValue("v").format());
  EXPECT_EQ(1u, DtEnvList("v").format());
  EXPECT_EQ(3u, DtEnvNamedList("n", "v").format());
  EXPECT_EQ(7u, DtEnvObject("n", "t", "v").format());
  EXPECT_EQ(8u, DtNativeValue("int", nullptr).format());
  EXPECT_EQ(1u, DtEnvListFormat);
  EXPECT_EQ(2u, DtEnvNamedFormat);
  EXPECT_EQ(4u, DtEnvObjectFormat);
  EXPECT_EQ(8u, DtEnvNativeFormat);
}

TEST_F(EnvValueTest, AddFormatOrsFlagsIn) {
  DtEnvValue v("x");
  v.addFormat(DtEnvNamedFormat);
  EXPECT_EQ(2u, v.format());
  v.addFormat(DtEnvNativeFormat);
  EXPECT_EQ(10u, v.format());
  v.addFormat(DtEnvNamedFormat);
  EXPECT_EQ(10u, v.format());
}

TEST_F(EnvValueTest, ConstructedWithEmptyTextHasBothFieldsEmpty) {
  DtEnvValue v("");
  EXPECT_STREQ("", v.value().c_str());
  EXPECT_STREQ("", v.unmodifiedValue().c_str());
  DtEnvObject o("", "", "");
  EXPECT_STREQ("", o.value().c_str());
  EXPECT_STREQ("", o.name().c_str());
  EXPECT_STREQ("", o.type().c_str());
}

TEST_F(EnvValueTest, SetValueStoresTextAndExpansion) {
  DtEnvValue v("plain");
  EXPECT_STREQ("plain", v.value().c_str());
  EXPECT_STREQ("plain", v.unmodifiedValue().c_str());
  v.setValue("x$(KTL_ENV_A)y");
  EXPECT_STREQ("xalphay", v.value().c_str());
  EXPECT_STREQ("x$(KTL_ENV_A)y", v.unmodifiedValue().c_str());
  v.setValue("other");
  EXPECT_STREQ("other", v.value().c_str());
  EXPECT_STREQ("other", v.unmodifiedValue().c_str());
}

TEST_F(EnvValueTest, ConstructorsExpandToo) {
  DtEnvObject o("$(KTL_ENV_A)", "$(KTL_ENV_B)", "$(KTL_ENV_A)!");
  EXPECT_STREQ("alpha", o.name().c_str());
  EXPECT_STREQ("beta", o.type().c_str());
  EXPECT_STREQ("alpha!", o.value().c_str());
  EXPECT_STREQ("$(KTL_ENV_A)!", o.unmodifiedValue().c_str());
  DtEnvNamedList n("$(KTL_ENV_B)", "v");
  EXPECT_STREQ("beta", n.name().c_str());
}

TEST_F(EnvValueTest, SameUnmodifiedValueSendsNoNotificationEvenIfEnvironmentChanged) {
  auto parent = std::make_shared<Watch>("p", "");
  auto child = std::make_shared<DtEnvValue>("");
  child->setParent(parent);
  parent->append(child);

  child->setValue("$(KTL_ENV_A)");
  ASSERT_EQ(1u, parent->seen.size());
  EXPECT_STREQ("alpha", child->value().c_str());

  setenv("KTL_ENV_A", "changed", 1);
  child->setValue("$(KTL_ENV_A)");
  EXPECT_EQ(1u, parent->seen.size());
  EXPECT_STREQ("alpha", child->value().c_str());

  child->setValue(child->unmodifiedValue());
  EXPECT_EQ(1u, parent->seen.size());
}

TEST_F(EnvValueTest, ModifiersWithoutDollarCopiesText) {
  EXPECT_STREQ("no reference", expand("no reference").c_str());
  EXPECT_STREQ("", expand("").c_str());
}

TEST_F(EnvValueTest, ModifiersUnclosedReferenceStays) {
  EXPECT_STREQ("$(HOME", expand("$(HOME").c_str());
  EXPECT_STREQ("a$(KTL_ENV_A", expand("a$(KTL_ENV_A").c_str());
}

TEST_F(EnvValueTest, ModifiersOnlyFirstDollarCounts) {
  EXPECT_STREQ("a$b$(HOME)", expand("a$b$(HOME)").c_str());
  EXPECT_STREQ("$x$(KTL_ENV_A)", expand("$x$(KTL_ENV_A)").c_str());
}

TEST_F(EnvValueTest, ModifiersUnsetVariableExpandsToNothing) {
  EXPECT_STREQ("xy", expand("x$(KTL_ENV_UNSET)y").c_str());
  EXPECT_STREQ("xy", expand("x$(UNSET)y").c_str());
}

TEST_F(EnvValueTest, ModifiersExpandsOnlyTheFirstReference) {
  EXPECT_STREQ("alpha$(KTL_ENV_B)", expand("$(KTL_ENV_A)$(KTL_ENV_B)").c_str());
  // The inserted value is not looked at again.
  EXPECT_STREQ("<$(KTL_ENV_A)>", expand("<$(KTL_ENV_REF)>").c_str());
}

TEST_F(EnvValueTest, ModifiersLengthRule) {
  EXPECT_STREQ("$()", expand("$()").c_str());
  EXPECT_STREQ("a$(", expand("a$(").c_str());
  setenv("A", "one", 1);
  EXPECT_STREQ("one", expand("$(A)").c_str());
  unsetenv("A");
  EXPECT_STREQ("", expand("$(A)").c_str());
}

TEST_F(EnvValueTest, ModifiersMayWriteOverItsOwnText) {
  DtString text("[$(KTL_ENV_B)]");
  Modifiers(text, text);
  EXPECT_STREQ("[beta]", text.c_str());
}

TEST_F(EnvValueTest, ParentLinkIsWeak) {
  auto child = std::make_shared<DtEnvValue>("c");
  EXPECT_FALSE(child->parent());
  std::weak_ptr<DtEnvValue> watch;
  {
    auto parent = std::make_shared<DtEnvList>("p");
    watch = parent;
    child->setParent(parent);
    parent->append(child);
    EXPECT_EQ(parent, child->parent());
    EXPECT_EQ(1, parent.use_count());  // the child's link does not own it
  }
  EXPECT_TRUE(watch.expired());
  EXPECT_FALSE(child->parent());
  // A change on an orphan goes nowhere and is harmless.
  child->setValue("d");
  EXPECT_STREQ("d", child->value().c_str());
}

TEST_F(EnvValueTest, ChangeTravelsUpWithEachLevelSeeingItsDirectChild) {
  auto top = std::make_shared<Watch>("top", "");
  auto mid = std::make_shared<Watch>("mid", "");
  auto leaf = std::make_shared<DtEnvValue>("");
  mid->setParent(top);
  top->append(mid);
  leaf->setParent(mid);
  mid->append(leaf);

  leaf->setValue("changed");
  ASSERT_EQ(1u, mid->seen.size());
  EXPECT_EQ(leaf.get(), mid->seen[0]);
  ASSERT_EQ(1u, top->seen.size());
  EXPECT_EQ(mid.get(), top->seen[0]);

  mid->setValue("mine");
  ASSERT_EQ(2u, top->seen.size());
  EXPECT_EQ(mid.get(), top->seen[1]);
  EXPECT_EQ(1u, mid->seen.size());
}

TEST_F(EnvValueTest, AppendDoesNotSetParent) {
  auto parent = std::make_shared<Watch>("p", "");
  auto child = std::make_shared<DtEnvValue>("c");
  parent->append(child);
  EXPECT_FALSE(child->parent());
  child->setValue("d");
  EXPECT_TRUE(parent->seen.empty());
}

TEST_F(EnvValueTest, CloneOfValueUsesExpandedText) {
  DtEnvValue v("x$(KTL_ENV_A)");
  auto parent = std::make_shared<DtEnvList>("p");
  v.setParent(parent);
  std::unique_ptr<DtEnvValue> copy(v.clone());
  ASSERT_TRUE(copy);
  EXPECT_NE(&v, copy.get());
  EXPECT_EQ(0u, copy->format());
  EXPECT_STREQ("xalpha", copy->value().c_str());
  EXPECT_STREQ("xalpha", copy->unmodifiedValue().c_str());
  EXPECT_FALSE(copy->parent());
  copy->setValue("other");
  EXPECT_STREQ("xalpha", v.value().c_str());
}

}  // namespace
