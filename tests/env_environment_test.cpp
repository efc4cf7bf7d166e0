// The tree handle: construction, the cursor, adding, the searches, copy, remove, reparent,
// contains and level, and printing.
#include <gtest/gtest.h>
#include <ktl/envObjectSync.h>
#include <ktl/environment.h>

#include <cstdlib>
#include <list>
#include <sstream>
#include <string>
#include <vector>

using namespace KORRti;

namespace {

std::string printed(const DtEnvironment& env, DtEnvValueSP node, const char* indent,
                    bool showComments) {
  std::ostringstream out;
  env.print(out, std::move(node), indent, showComments);
  return out.str();
}

std::vector<std::string> names(const std::list<DtEnvValueSP>& nodes) {
  std::vector<std::string> result;
  for (const DtEnvValueSP& node : nodes) {
    DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node);
    result.push_back(named ? named->name().c_str() : "?");
  }
  return result;
}

// Notes what the tree asks of it and, on syncOut, writes a counter into the object's value.
class CountingSync : public DtEnvObjectSync {
 public:
  void syncIn(DtEnvObject*) override { ++syncIns; }
  void syncOut(DtEnvObject* object) override {
    ++syncOuts;
    order.push_back(object->name().c_str());
  }
  DtString objectType() const override { return "Counter"; }
  int syncIns = 0;
  int syncOuts = 0;
  std::vector<std::string> order;
};

}  // namespace

TEST(EnvEnvironment, DefaultRootIsAnObjectNamedAndTypedRoot) {
  DtEnvironment env;
  DtEnvObject* root = DtEnvObject::castToObject(env.root());
  ASSERT_NE(nullptr, root);
  EXPECT_STREQ("root", root->name().c_str());
  EXPECT_STREQ("root", root->type().c_str());
  EXPECT_TRUE(root->value().isEmpty());
  EXPECT_EQ(7u, root->format());
}

TEST(EnvEnvironment, NamedRootAndHandleOnANode) {
  DtEnvironment env("config");
  DtEnvObject* root = DtEnvObject::castToObject(env.root());
  ASSERT_NE(nullptr, root);
  EXPECT_STREQ("config", root->name().c_str());
  EXPECT_STREQ("config", root->type().c_str());

  DtEnvValueSP child = env.addObject("child");
  DtEnvironment onChild(child);
  EXPECT_EQ(child, onChild.root());
}

TEST(EnvEnvironment, CopiesShareTheTreeAndMoveTheirOwnCursor) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvironment copy = env;
  copy.setRoot(a);
  copy.addAttribute("x", "1");
  EXPECT_EQ(env.root(), a->parent());
  EXPECT_TRUE(env.getAttribute("x"));  // added through the copy, found from the original
  copy.rootToParent();
  EXPECT_EQ(env.root(), copy.root());
  copy.rootToParent();  // the top has no parent: nothing happens
  EXPECT_EQ(env.root(), copy.root());
}

TEST(EnvEnvironment, AHandleKeepsTheNodeItStandsOnAlive) {
  DtEnvironment cursor;
  std::weak_ptr<DtEnvValue> top;
  {
    DtEnvironment env;
    top = env.root();
    cursor.setRoot(env.addObject("a"));
  }
  EXPECT_TRUE(top.expired());
  ASSERT_TRUE(cursor.root());
  EXPECT_FALSE(cursor.root()->parent());
}

TEST(EnvEnvironment, GetTopParent) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP b = env.addObject("b", a);
  EXPECT_EQ(env.root(), env.getTopParent(b));
  EXPECT_EQ(env.root(), env.getTopParent());
  DtEnvironment onB(b);
  EXPECT_EQ(env.root(), onB.getTopParent());
  EXPECT_FALSE(env.getTopParent(DtEnvValueSP()));
  // A node without parent is its own top.
  auto lone = std::make_shared<DtEnvValue>("x");
  EXPECT_EQ(lone, env.getTopParent(lone));
}

TEST(EnvEnvironment, GetTopParentFindsACircleOfParentLinks) {
  auto a = std::make_shared<DtEnvNamedList>("a", "");
  auto b = std::make_shared<DtEnvNamedList>("b", "");
  auto c = std::make_shared<DtEnvNamedList>("c", "");
  a->setParent(b);
  b->setParent(a);
  DtEnvironment env;
  EXPECT_FALSE(env.getTopParent(a));
  // A circle above the starting node, not through it, ends the walk too.
  c->setParent(a);
  EXPECT_FALSE(env.getTopParent(c));
  EXPECT_FALSE(env.contains(c));
  EXPECT_EQ(-1, env.level(c));
}

TEST(EnvEnvironment, AddObjectUnderAValueRootGivesAnEmptyHandle) {
  DtEnvironment env(std::make_shared<DtEnvValue>("plain"));
  EXPECT_FALSE(env.addObject("a"));
  EXPECT_FALSE(env.addObject("a", "T"));
  EXPECT_FALSE(env.addNamedList("n"));
  EXPECT_FALSE(env.addAttribute("n", "v"));
  EXPECT_FALSE(env.addComment("c"));
  EXPECT_FALSE(env.addNativeValue(DtNativeValue::create("int", nullptr), env.root()));
}

TEST(EnvEnvironment, AddCommentUnderACommentGivesAnEmptyHandle) {
  DtEnvironment env;
  DtEnvValueSP comment = env.addComment("first");
  ASSERT_TRUE(comment);
  EXPECT_FALSE(env.addComment("second", comment));
  EXPECT_FALSE(env.addComment("third", DtEnvValueSP()));
}

TEST(EnvEnvironment, EmptyParentsGiveEmptyHandles) {
  DtEnvironment env;
  EXPECT_FALSE(env.addObject("a", "T", DtEnvValueSP()));
  EXPECT_FALSE(env.addObject("a", DtEnvValueSP()));
  EXPECT_FALSE(env.addNamedList("n", DtEnvValueSP()));
  EXPECT_FALSE(env.addNativeValue(DtNativeValue::create("int", nullptr), DtEnvValueSP()));
  EXPECT_FALSE(env.getNativeValue(DtEnvValueSP()));
  EXPECT_FALSE(env.addNativeValue(std::shared_ptr<DtNativeValue>(), env.root()));
}

TEST(EnvEnvironment, AddedNodesAndTheirParentLinks) {
  DtEnvironment env;
  DtEnvValueSP object = env.addObject("car", "Vehicle");
  DtEnvValueSP same = env.addObject("bike");
  DtEnvValueSP list = env.addNamedList("list");
  DtEnvValueSP attribute = env.addAttribute("speed", "3", object);
  DtEnvValueSP comment = env.addComment("note", object);
  int payload = 7;
  auto native = DtNativeValue::create("int", &payload);
  DtEnvValueSP nativeNode = env.addNativeValue(native, object);

  DtEnvObject* car = DtEnvObject::castToObject(object);
  ASSERT_NE(nullptr, car);
  EXPECT_STREQ("Vehicle", car->type().c_str());
  EXPECT_STREQ("bike", DtEnvObject::castToObject(same)->type().c_str());
  EXPECT_EQ(3u, list->format());
  EXPECT_TRUE(list->value().isEmpty());
  EXPECT_STREQ("3", attribute->value().c_str());
  EXPECT_EQ(native, nativeNode);

  EXPECT_EQ(env.root(), object->parent());
  EXPECT_EQ(object, attribute->parent());
  // Comments and native values get no parent link.
  EXPECT_FALSE(comment->parent());
  EXPECT_FALSE(nativeNode->parent());

  // Children in insertion order; the attribute is indexed.
  EXPECT_EQ(attribute, car->first());
  EXPECT_EQ(comment, car->next(attribute));
  EXPECT_EQ(nativeNode, car->next(comment));
  EXPECT_EQ(attribute, car->attribute("speed"));
  EXPECT_EQ(nativeNode, env.getNativeValue(object));
}

TEST(EnvEnvironment, AddAttributeReportsItsValueUpward) {
  DtEnvironment env;
  DtEnvValueSP object = env.addObject("o");
  struct Below : CountingSync {
    std::vector<DtEnvValue*> children;
    void unboundAttributeSyncInCB(DtEnvValue* child) override { children.push_back(child); }
  } below;
  DtEnvObject::castToObject(object)->setSync(&below);
  DtEnvValueSP a = env.addAttribute("a", "1", object);
  ASSERT_EQ(1u, below.children.size());
  EXPECT_EQ(a.get(), below.children[0]);
  DtEnvObject::castToObject(object)->setSync(nullptr);
}

TEST(EnvEnvironment, GetNamedListIsDepthFirstPreOrderAndMatchesObjects) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP x1 = env.addAttribute("x", "first", a);
  DtEnvValueSP x2 = env.addAttribute("x", "second");
  EXPECT_EQ(x1, env.getNamedList("x"));
  EXPECT_EQ(a, env.getNamedList("a"));  // an object is a named list
  EXPECT_EQ(x2, env.getNamedList("x", x2));
  EXPECT_FALSE(env.getNamedList("missing"));
  EXPECT_FALSE(env.getNamedList("x", DtEnvValueSP()));
  // No path syntax: "a/x" is a plain name.
  EXPECT_FALSE(env.getNamedList("a/x"));
  DtEnvValueSP slash = env.addAttribute("a/x", "s");
  EXPECT_EQ(slash, env.getNamedList("a/x"));
}

TEST(EnvEnvironment, GetNamedListFindsTheHandlesOwnRoot) {
  DtEnvironment env;
  EXPECT_EQ(env.root(), env.getNamedList("root"));
  DtEnvValueSP a = env.addObject("a");
  DtEnvironment onA(a);
  EXPECT_EQ(a, onA.getNamedList("a"));
  EXPECT_FALSE(onA.getNamedList("root"));  // the search runs downward only
}

TEST(EnvEnvironment, GetAttributeFindsAnAttributeBelowAChildAtAnyDepth) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP b = env.addObject("b", a);
  DtEnvValueSP deep = env.addAttribute("speed", "9", b);
  EXPECT_EQ(deep, env.getAttribute("speed"));
  EXPECT_EQ(deep, env.getAttribute("speed", a));
  EXPECT_FALSE(env.getAttribute("speed", env.addObject("c")));
}

TEST(EnvEnvironment, GetNamedListSearchesNoComment) {
  DtEnvironment env;
  env.addComment("x");
  EXPECT_FALSE(env.getNamedList("x"));
  EXPECT_FALSE(env.getNamedList("x", env.addComment("x")));
}

TEST(EnvEnvironment, GetObjectWithOtherTypeKeepsSearchingAndFindsALaterNamesake) {
  DtEnvironment env;
  DtEnvValueSP first = env.addObject("car", "Boat");
  DtEnvValueSP inner = env.addObject("car", "Plane", first);
  DtEnvValueSP later = env.addObject("car", "Vehicle");
  EXPECT_EQ(later, env.getObject("car", "Vehicle"));
  EXPECT_EQ(inner, env.getObject("car", "Plane"));
  EXPECT_EQ(first, env.getObject("car", "Boat"));
  EXPECT_FALSE(env.getObject("car", "Ship"));
  EXPECT_FALSE(env.getObject("car", "Plane", later));
  // Named lists are no objects.
  env.addAttribute("speed", "1");
  EXPECT_FALSE(env.getObject("speed", "speed"));
}

TEST(EnvEnvironment, GetNativeValueSearchesOnlyDirectChildren) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  int payload = 1;
  env.addNativeValue(DtNativeValue::create("int", &payload), a);
  EXPECT_FALSE(env.getNativeValue(env.root()));
  DtEnvValueSP found = env.getNativeValue(a);
  ASSERT_TRUE(found);
  EXPECT_EQ(&payload, DtNativeValue::castToNativeValue(found)->nativeValue());
  EXPECT_FALSE(env.getNativeValue(env.addComment("c")));
}

TEST(EnvEnvironment, CollectingSearchesAppendInPreOrderAndDescendPastMatches) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("n", "T");
  env.addAttribute("n", "1", a);
  DtEnvValueSP b = env.addObject("m", "T", a);
  env.addObject("n", "U", b);
  env.addAttribute("n", "2");

  std::list<DtEnvValueSP> out;
  out.push_back(env.root());
  env.getNamedListsByName("n", out);
  ASSERT_EQ(5u, out.size());
  EXPECT_EQ(env.root(), out.front());  // earlier content stays
  out.pop_front();
  std::vector<std::string> values;
  for (const DtEnvValueSP& node : out) values.push_back(node->value().c_str());
  EXPECT_EQ((std::vector<std::string>{"", "1", "", "2"}), values);

  std::list<DtEnvValueSP> objects;
  env.getObjectsByName("n", objects);
  ASSERT_EQ(2u, objects.size());
  EXPECT_EQ(a, objects.front());
  EXPECT_STREQ("U", DtEnvObject::castToObject(objects.back())->type().c_str());

  std::list<DtEnvValueSP> typed;
  env.getObjectsByType("T", typed);
  EXPECT_EQ((std::vector<std::string>{"n", "m"}), names(typed));
  typed.clear();
  env.getObjectsByType("T", typed, b);
  EXPECT_EQ((std::vector<std::string>{"m"}), names(typed));
  typed.clear();
  env.getObjectsByName("n", typed, DtEnvValueSP());
  EXPECT_TRUE(typed.empty());
}

TEST(EnvEnvironment, SyncRunsSyncOutInPreOrderAndGetObjectSyncFindsIt) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a", "T");
  DtEnvValueSP b = env.addObject("b", "T", a);
  DtEnvValueSP c = env.addObject("c", "T");
  CountingSync sa, sb, sc;
  DtEnvObject::castToObject(b)->setSync(&sb);
  DtEnvObject::castToObject(a)->setSync(&sa);
  DtEnvObject::castToObject(c)->setSync(&sc);
  env.sync();
  EXPECT_EQ((std::vector<std::string>{"a"}), sa.order);
  EXPECT_EQ(1, sa.syncOuts);
  EXPECT_EQ(1, sb.syncOuts);
  EXPECT_EQ(1, sc.syncOuts);
  EXPECT_EQ(1, sa.syncIns);  // from setSync alone
  env.sync(a);
  EXPECT_EQ(2, sa.syncOuts);
  EXPECT_EQ(2, sb.syncOuts);
  EXPECT_EQ(1, sc.syncOuts);
  EXPECT_EQ(&sb, env.getObjectSync("b", "T"));
  EXPECT_EQ(nullptr, env.getObjectSync("b", "U"));
  EXPECT_EQ(nullptr, env.getObjectSync("c", "T", a));
  EXPECT_EQ(nullptr, env.getObjectSync("root", "root"));
  for (const DtEnvValueSP& node : {a, b, c}) DtEnvObject::castToObject(node)->setSync(nullptr);
}

TEST(EnvEnvironment, CopyClonesUnderTheRootWithoutParentLinks) {
  setenv("KTL_ENV_COPY", "expanded", 1);
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP x = env.addAttribute("x", "$(KTL_ENV_COPY)", a);
  DtEnvValueSP duplicate = env.copy(a);
  ASSERT_TRUE(duplicate);
  EXPECT_NE(a, duplicate);
  EXPECT_FALSE(duplicate->parent());
  DtEnvObject* copied = DtEnvObject::castToObject(duplicate);
  ASSERT_NE(nullptr, copied);
  DtEnvValueSP copiedX = copied->attribute("x");
  ASSERT_TRUE(copiedX);
  EXPECT_FALSE(copiedX->parent());
  EXPECT_STREQ("expanded", copiedX->unmodifiedValue().c_str());  // the reference is lost
  EXPECT_STREQ("$(KTL_ENV_COPY)", x->unmodifiedValue().c_str());
  // Appended to the root.
  DtEnvList* root = DtEnvList::castToList(env.root());
  EXPECT_EQ(duplicate, root->last());
  EXPECT_FALSE(env.copy(DtEnvValueSP()));
}

TEST(EnvEnvironment, CopyUnderACommentReturnsADetachedCopyAppendedNowhere) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP comment = env.addComment("c");
  DtEnvValueSP duplicate = env.copy(a, comment);
  ASSERT_TRUE(duplicate);
  EXPECT_STREQ("a", DtEnvObject::castToObject(duplicate)->name().c_str());
  DtEnvList* root = DtEnvList::castToList(env.root());
  EXPECT_EQ(comment, root->last());
  EXPECT_EQ(a, root->first());
  EXPECT_EQ(comment, root->next(a));
}

TEST(EnvEnvironment, CopyOfANativeValueIsAComment) {
  DtEnvironment env;
  int payload = 0;
  DtEnvValueSP native = env.addNativeValue(DtNativeValue::create("int", &payload), env.root());
  DtEnvValueSP duplicate = env.copy(native);
  EXPECT_EQ(0u, duplicate->format());
  EXPECT_STREQ("int", duplicate->value().c_str());
}

TEST(EnvEnvironment, RemoveTakesANodeOutOfItsParentAndKeepsItsParentLink) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP x = env.addAttribute("x", "1", a);
  env.remove(x);
  DtEnvObject* object = DtEnvObject::castToObject(a);
  EXPECT_FALSE(object->first());
  EXPECT_FALSE(object->attribute("x"));
  EXPECT_EQ(a, x->parent());
  env.remove(a);
  EXPECT_FALSE(DtEnvList::castToList(env.root())->first());
  env.remove(DtEnvValueSP());  // nothing happens
}

TEST(EnvEnvironment, RemoveOfAChildOfAChildLeavesTheRootsChildrenUntouched) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP b = env.addObject("b");
  DtEnvValueSP inner = env.addObject("inner", a);
  env.remove(inner);
  DtEnvList* root = DtEnvList::castToList(env.root());
  EXPECT_EQ(a, root->first());
  EXPECT_EQ(b, root->next(a));
  EXPECT_FALSE(root->next(b));
  EXPECT_FALSE(DtEnvList::castToList(a)->first());
}

TEST(EnvEnvironment, RemoveReachesACommentOnlyAsADirectChildOfTheRoot) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP inner = env.addComment("inner", a);
  DtEnvValueSP top = env.addComment("top");
  env.remove(inner);  // no parent link, and the root holds no such entry
  EXPECT_EQ(inner, DtEnvList::castToList(a)->first());
  env.remove(top);
  EXPECT_EQ(a, DtEnvList::castToList(env.root())->last());
}

TEST(EnvEnvironment, ReparentMovesANode) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP b = env.addObject("b");
  DtEnvValueSP x = env.addAttribute("x", "1", a);
  env.reparent(x, b);
  EXPECT_EQ(b, x->parent());
  EXPECT_FALSE(DtEnvObject::castToObject(a)->attribute("x"));
  EXPECT_EQ(x, DtEnvObject::castToObject(b)->attribute("x"));
  EXPECT_EQ(x, DtEnvList::castToList(b)->first());
  EXPECT_FALSE(DtEnvList::castToList(a)->first());
}

TEST(EnvEnvironment, ReparentRefusesNonListsEmptyHandlesOrphansAndCircles) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP b = env.addObject("b", a);
  DtEnvValueSP comment = env.addComment("c");
  env.reparent(a, comment);  // a comment can't hold children
  EXPECT_EQ(env.root(), a->parent());
  env.reparent(a, DtEnvValueSP());
  EXPECT_EQ(env.root(), a->parent());
  env.reparent(DtEnvValueSP(), a);
  env.reparent(comment, a);  // no parent link to move it from
  EXPECT_EQ(comment, DtEnvList::castToList(env.root())->last());
  EXPECT_EQ(b, DtEnvList::castToList(a)->last());
  env.reparent(a, b);  // below itself
  env.reparent(a, a);
  EXPECT_EQ(env.root(), a->parent());
  EXPECT_EQ(a, DtEnvList::castToList(env.root())->first());
}

TEST(EnvEnvironment, ContainsStopsAtTheFirstEmptyValue) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP b = env.addObject("b", a);
  EXPECT_FALSE(env.contains(b));  // b's value is empty
  b->setValue("1");
  EXPECT_FALSE(env.contains(b));  // a's value is empty
  a->setValue("1");
  EXPECT_FALSE(env.contains(b));  // the root's value is empty too
  env.root()->setValue("1");
  EXPECT_TRUE(env.contains(b));
  EXPECT_TRUE(env.contains(env.root()));
  EXPECT_EQ(2, env.level(b));
  EXPECT_EQ(1, env.level(a));
  // A node of another tree never meets the root.
  DtEnvironment other;
  other.root()->setValue("1");
  DtEnvValueSP foreign = other.addAttribute("f", "1");
  EXPECT_FALSE(env.contains(foreign));
  EXPECT_EQ(-1, env.level(foreign));
  EXPECT_FALSE(env.contains(DtEnvValueSP()));
}

TEST(EnvEnvironment, LevelOfTheRootIsZeroWithAValueAndMinusOneWithout) {
  DtEnvironment env;
  EXPECT_EQ(-1, env.level(env.root()));
  EXPECT_FALSE(env.contains(env.root()));
  env.root()->setValue("set");
  EXPECT_EQ(0, env.level(env.root()));
}

TEST(EnvEnvironment, PrintFormat) {
  DtEnvironment env;
  DtEnvValueSP car = env.addObject("car", "Vehicle");
  car->setValue("3");
  env.addAttribute("speed", "fast", car);
  env.addComment("a note", car);
  env.addAttribute("top", "1");
  std::ostringstream out;
  out << env;
  EXPECT_EQ(
      "  class root root Value= \n"
      "     class Vehicle car Value= 3\n"
      "        speed Value= fast\n"
      "// comment Value= a note\n"
      "     top Value= 1\n",
      out.str());
}

TEST(EnvEnvironment, PrintWritesCommentsWithoutIndentation) {
  DtEnvironment env;
  DtEnvValueSP a = env.addObject("a");
  DtEnvValueSP b = env.addObject("b", a);
  env.addComment("deep", b);
  EXPECT_EQ(
      "class root root Value= \n"
      "   class a a Value= \n"
      "      class b b Value= \n"
      "// comment Value= deep\n",
      printed(env, env.root(), "", true));
  EXPECT_EQ(
      "class root root Value= \n"
      "   class a a Value= \n"
      "      class b b Value= \n",
      printed(env, env.root(), "", false));
}

TEST(EnvEnvironment, ThreeArgumentPrintAlwaysShowsComments) {
  DtEnvironment env;
  env.addComment("kept");
  std::ostringstream out;
  env.print(out, ">", false);
  EXPECT_EQ(">class root root Value= \n// comment Value= kept\n", out.str());
}

TEST(EnvEnvironment, PrintOfANativeValueIsAComment) {
  DtEnvironment env;
  int payload = 0;
  DtEnvValueSP native = env.addNativeValue(DtNativeValue::create("MyType", &payload), env.root());
  EXPECT_EQ(8u, native->format());
  EXPECT_EQ("// comment Value= MyType\n", printed(env, native, "  ", true));
  EXPECT_EQ("", printed(env, native, "  ", false));
  EXPECT_EQ("", printed(env, DtEnvValueSP(), "  ", true));
}

TEST(EnvEnvironment, PrintOfABareListWritesItAsACommentWithItsChildren) {
  DtEnvironment env;
  auto list = std::make_shared<DtEnvList>("L");
  list->append(std::make_shared<DtEnvNamedList>("n", "v"));
  EXPECT_EQ("// comment Value= L\n     n Value= v\n", printed(env, list, "  ", true));
}

TEST(EnvEnvironment, WideListsAreWalkedInOrder) {
  DtEnvironment env;
  for (int i = 0; i < 20000; ++i) env.addAttribute(DtString(std::to_string(i).c_str()), "v");
  std::list<DtEnvValueSP> out;
  env.getNamedListsByName("19999", out);
  ASSERT_EQ(1u, out.size());
  int count = 0;
  DtEnvList* root = DtEnvList::castToList(env.root());
  for (DtEnvValueSP c = root->first(); c; c = root->next(c)) {
    EXPECT_STREQ(std::to_string(count).c_str(), DtEnvNamedList::castToNamedList(c)->name().c_str());
    ++count;
  }
  EXPECT_EQ(20000, count);
}
