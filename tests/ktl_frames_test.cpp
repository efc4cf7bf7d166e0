// Symbols, binding tables, frames and the frame primitives.
#include <gtest/gtest.h>

#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::list;

namespace {

DtlObjPtr childOf(DtlObjPtr const& parent) {
  DtlObjPtr child(DtlFrameTag);
  child->setFrameParent(parent);
  return child;
}

class FramesTest : public ::testing::Test {
 protected:
  void SetUp() override { saved_ = DtNotifyLevel; }
  void TearDown() override { DtNotifyLevel = saved_; }
  DtlObjPtr root{DtlFrameTag};
  int saved_ = 1;
};

}  // namespace

TEST(BucketTest, ByteSumModulo256) {
  EXPECT_EQ(bucket_number(""), 0);
  EXPECT_EQ(bucket_number("a"), 97);
  EXPECT_EQ(bucket_number("ab"), 195);
  EXPECT_EQ(bucket_number("ba"), 195);
  EXPECT_EQ(bucket_number("abc"), (97 + 98 + 99) % 256);
  EXPECT_EQ(bucket_number("\xff"), 255);  // signedness washes out modulo 256
  EXPECT_EQ(bucket_number("\x80\x80"), 0);
}

TEST_F(FramesTest, AnagramsShareABucketAndTheNewestComesFirst) {
  DtcSet(DtcIntern("ab", root), DtlObjPtr(1), root);
  DtcSet(DtcIntern("ba", root), DtlObjPtr(2), root);
  DtlHashTable* table = root->frameBindings();
  EXPECT_EQ(table->lookup("ab")->fixnum(), 1);
  EXPECT_EQ(table->lookup("ba")->fixnum(), 2);
  EXPECT_STREQ(table->bucket(195)->symbol->pname(), "ba");
  EXPECT_STREQ(table->bucket(195)->next->symbol->pname(), "ab");
  DtNotifyLevel = 2;
  auto output = captureOutput([&] { table->dump(); });
  EXPECT_EQ(output.out, "[195]: ba -> 2\n ab -> 1\n");
}

TEST_F(FramesTest, DumpGoesBucketByBucket) {
  DtcSet(DtcIntern("b", root), DtlObjPtr("x"), root);
  DtcSet(DtcIntern("a", root), DtlObjPtr(1.5), root);
  DtNotifyLevel = 2;
  DtlObjPtr result;
  auto output = captureOutput([&] { result = DtlEnvDump(DtlObjPtr::nil(), root); });
  EXPECT_EQ(output.out, "[97]: a -> 1.500000\n[98]: b -> \"x\"\n");
  EXPECT_EQ(result, DtlObjPtr::nil());
}

TEST_F(FramesTest, LookupAndFindsymAnswerNullWhenAbsent) {
  DtlHashTable* table = root->frameBindings();
  EXPECT_TRUE(table->lookup("nosuch").isNull());
  EXPECT_TRUE(table->findsym("nosuch").isNull());
  DtlObjPtr symbol = DtcIntern("x", root);
  EXPECT_EQ(table->findsym("x"), symbol);
  EXPECT_EQ(table->lookup("x"), DtlObjPtr::unbound());
}

TEST_F(FramesTest, InsertOfADuplicateHalts) {
  DtlHashTable* table = root->frameBindings();
  DtlObjPtr symbol = DtcMakeSymbol("x");
  EXPECT_EQ(table->insert(symbol, DtlObjPtr(1), root), symbol);
  EXPECT_EQ(initialMessage([&] { table->insert(DtcMakeSymbol("x"), DtlObjPtr(2), root); }),
            haltMessage("cannot insert binding with duplicate key"));
}

TEST_F(FramesTest, RebindOfAMissingNameHalts) {
  DtlHashTable* table = root->frameBindings();
  EXPECT_EQ(initialMessage([&] { table->rebind(DtcMakeSymbol("x"), DtlObjPtr(1), root); }),
            haltMessage("symbol was not found in DtlHashTable::rebind"));
  DtlObjPtr symbol = DtcIntern("y", root);
  DtlObjPtr value(3);
  EXPECT_EQ(table->rebind(symbol, value, root), value);
  EXPECT_EQ(table->lookup("y"), value);
}

TEST_F(FramesTest, NonSymbolInATableHaltsTheWalk) {
  DtlHashTable* table = root->frameBindings();
  table->insert(DtlObjPtr(5), DtlObjPtr(1), root);  // a number has no name: it files under ""
  EXPECT_EQ(initialMessage([&] { table->lookup(""); }), haltMessage("non-symbol in environment"));
}

TEST_F(FramesTest, BindingsOfAnEmptyFrameIsNil) {
  EXPECT_EQ(root->frameBindings()->bindings(), DtlObjPtr::nil());
}

TEST_F(FramesTest, BindingsOfTwoBindingsHasLengthThreeAndEndsInAnEmptyCell) {
  DtcSet(DtcIntern("a", root), DtlObjPtr(1), root);
  DtcSet(DtcIntern("b", root), DtlObjPtr(2), root);
  DtlObjPtr bindings = root->frameBindings()->bindings();
  EXPECT_EQ(DtcLength(bindings), 3);
  // Last visited first: bucket 98 (b) after bucket 97 (a).
  EXPECT_STREQ(DtcCar(DtcCar(bindings))->pname(), "b");
  EXPECT_EQ(DtcCadr(DtcCar(bindings))->fixnum(), 2);
  EXPECT_STREQ(DtcCar(DtcCadr(bindings))->pname(), "a");
  DtlObjPtr last = DtcCdr(DtcCdr(bindings));
  EXPECT_TRUE(last->car().isNull());
  EXPECT_TRUE(last->cdr().isNull());
}

TEST_F(FramesTest, InternMakesOneSymbolPerChain) {
  DtlObjPtr a = DtcIntern("x", root);
  DtlObjPtr b = DtcIntern("x", root);
  EXPECT_EQ(a, b);
  EXPECT_STREQ(a->pname(), "x");
  DtlObjPtr child = childOf(root);
  EXPECT_EQ(DtcIntern("x", child), a);
  EXPECT_TRUE(child->frameBindings()->findsym("x").isNull());  // nothing added to the child
  EXPECT_FALSE(DtcIntern("Foo", root) == DtcIntern("foo", root));
}

TEST_F(FramesTest, InternInAChildFirstMakesADifferentSymbol) {
  DtlObjPtr child = childOf(root);
  DtlObjPtr inChild = DtcIntern("x", child);
  DtlObjPtr inRoot = DtcIntern("x", root);
  EXPECT_FALSE(inChild == inRoot);
}

TEST_F(FramesTest, UnboundInAChildHidesTheParentsBinding) {
  DtlObjPtr child = childOf(root);
  DtlObjPtr x = DtcIntern("x", child);
  DtcSet(x, DtlObjPtr(1), root);
  EXPECT_EQ(initialMessage([&] { DtcSymeval(x, child); }), haltMessage("Unbound symbol x"));
  EXPECT_EQ(DtcSymeval(x, root)->fixnum(), 1);
}

TEST_F(FramesTest, SymevalSearchesUpTheChain) {
  DtlObjPtr x = DtcIntern("x", root);
  DtcSet(x, DtlObjPtr(7), root);
  DtlObjPtr grandchild = childOf(childOf(root));
  EXPECT_EQ(DtcSymeval(x, grandchild)->fixnum(), 7);
  EXPECT_EQ(initialMessage([&] { DtcSymeval(DtcMakeSymbol("nowhere"), grandchild); }),
            haltMessage("Unbound symbol nowhere"));
  EXPECT_EQ(initialMessage([&] { DtcSymeval(x, DtlObjPtr()); }), haltMessage("Unbound symbol x"));
  EXPECT_EQ(initialMessage([&] { DtcSymeval(DtlObjPtr(1), root); }),
            haltMessage("Non-symbol to DtcSymeval"));
}

TEST_F(FramesTest, LongNamesInMessagesAreHeldWhole) {
  std::string name(100000, 'n');
  EXPECT_EQ(initialMessage([&] { DtcSymeval(DtcMakeSymbol(name.c_str()), root); }),
            haltMessage("Unbound symbol " + name));
}

TEST_F(FramesTest, BoundpLooksAtThisFrameAlone) {
  DtlObjPtr child = childOf(root);
  DtlObjPtr x = DtcIntern("x", root);
  DtcSet(x, DtlObjPtr(1), root);
  EXPECT_EQ(DtcBoundp(x, root), 1);
  EXPECT_EQ(DtcBoundp(x, child), 0);
  EXPECT_EQ(DtcBoundp(DtcIntern("y", root), root), 0);  // interned but unset
  EXPECT_EQ(initialMessage([&] { DtcBoundp(DtlObjPtr(1), root); }),
            haltMessage("non-symbol to boundp"));
}

TEST_F(FramesTest, SetActsOnTheGivenFrameOnly) {
  DtlObjPtr child = childOf(root);
  DtlObjPtr x = DtcIntern("x", root);
  DtcSet(x, DtlObjPtr(1), root);
  EXPECT_EQ(DtcSet(x, DtlObjPtr(2), child), x);
  EXPECT_EQ(DtcSymeval(x, root)->fixnum(), 1);
  EXPECT_EQ(DtcSymeval(x, child)->fixnum(), 2);
  EXPECT_EQ(initialMessage([&] { DtcSet(DtlObjPtr(1), DtlObjPtr(1), root); }),
            haltMessage("Non-symbol to set1env"));
}

TEST_F(FramesTest, SetAnswersTheSymbolAlreadyInTheBinding) {
  DtlObjPtr first = DtcMakeSymbol("x");
  DtlObjPtr second = DtcMakeSymbol("x");
  EXPECT_EQ(DtcSet(first, DtlObjPtr(1), root), first);
  EXPECT_EQ(DtcSet(second, DtlObjPtr(2), root), first);
  EXPECT_EQ(DtcSymeval(second, root)->fixnum(), 2);
}

TEST_F(FramesTest, SetToUnboundLeavesTheNameUnbound) {
  DtlObjPtr x = DtcIntern("x", root);
  DtcSet(x, DtlObjPtr(1), root);
  DtcSet(x, DtlObjPtr::unbound(), root);
  EXPECT_EQ(DtcBoundp(x, root), 0);
  EXPECT_EQ(initialMessage([&] { DtcSymeval(x, root); }), haltMessage("Unbound symbol x"));
}

TEST_F(FramesTest, MakeSymbolIsUninterned) {
  DtlObjPtr symbol = DtcMakeSymbol("fresh");
  EXPECT_EQ(symbol->tag(), DtlSymbolTag);
  EXPECT_STREQ(symbol->pname(), "fresh");
  EXPECT_TRUE(root->frameBindings()->findsym("fresh").isNull());
}

TEST_F(FramesTest, InternPtrAndFunctionsBindInEnv) {
  DtlObjPtr value(5);
  DtlObjPtr symbol = DtcInternPtr("five", value, root);
  EXPECT_STREQ(symbol->pname(), "five");
  EXPECT_EQ(DtcSymeval(symbol, root), value);

  DtlObjPtr special = DtcInternSpecialForm("sf", DtlTheFrame, root);
  DtlObjPtr fn = DtcSymeval(special, root);
  EXPECT_EQ(fn->tag(), DtlSpecialFormTag);
  EXPECT_STREQ(fn->fcnPname(), "sf");
  EXPECT_EQ(fn->fcnCode(), &DtlTheFrame);

  DtlObjPtr compiled = DtcInternCompiledC("cc", DtlEnvDump, root);
  fn = DtcSymeval(compiled, root);
  EXPECT_EQ(fn->tag(), DtlCompiledCTag);
  EXPECT_STREQ(fn->fcnPname(), "cc");
  EXPECT_EQ(fn->fcnCode(), &DtlEnvDump);
}

// ---- frame primitives ------------------------------------------------------------------

TEST_F(FramesTest, TheFrameAnswersEnv) {
  EXPECT_EQ(DtlTheFrame(DtlObjPtr::nil(), root), root);
  EXPECT_EQ(DtlTheFrame(list({DtlObjPtr(1)}), root), root);
}

TEST_F(FramesTest, BindingsOfANewFrameIsNil) {
  // (frame-bindings (make-frame (the-frame)))
  DtlObjPtr frame = DtlNewFrame(list({DtlTheFrame(DtlObjPtr::nil(), root)}), root);
  EXPECT_EQ(frame->tag(), DtlFrameTag);
  EXPECT_EQ(frame->frameParent(), root);
  EXPECT_EQ(DtlFrameBindings(list({frame}), root), DtlObjPtr::nil());
}

TEST_F(FramesTest, MakeFrameChecksItsArguments) {
  EXPECT_EQ(initialMessage([&] { DtlNewFrame(DtlObjPtr::nil(), root); }),
            haltMessage("wrong number of args to new-frame"));
  EXPECT_EQ(initialMessage([&] {
              DtlNewFrame(list({root, root}), root);
            }),
            haltMessage("wrong number of args to new-frame"));
  EXPECT_EQ(initialMessage([&] { DtlNewFrame(list({DtlObjPtr(1)}), root); }),
            haltMessage("non-frame to new-frame"));
}

TEST_F(FramesTest, FrameBindingsChecksItsArguments) {
  EXPECT_EQ(initialMessage([&] { DtlFrameBindings(DtlObjPtr::nil(), root); }),
            haltMessage("wrong number of args to frame-bindings"));
  EXPECT_EQ(initialMessage([&] { DtlFrameBindings(list({DtlObjPtr(1)}), root); }),
            haltMessage("non-frame to frame-bindings"));
  DtcSet(DtcIntern("a", root), DtlObjPtr(1), root);
  EXPECT_EQ(DtcLength(DtlFrameBindings(list({root}), root)), 2);
}

TEST_F(FramesTest, FrameParent) {
  DtlObjPtr child = childOf(root);
  EXPECT_EQ(DtlFrameParent(list({child}), root), root);
  EXPECT_EQ(initialMessage([&] { DtlFrameParent(list({root}), root); }),
            haltMessage("frame-parent called on frame without parent"));
  EXPECT_EQ(initialMessage([&] { DtlFrameParent(DtlObjPtr::nil(), root); }),
            haltMessage("wrong number of args to frame-parent"));
  EXPECT_EQ(initialMessage([&] { DtlFrameParent(list({DtlObjPtr(1)}), root); }),
            haltMessage("non-frame to frame-Parent"));
}

TEST_F(FramesTest, FrameBound) {
  DtlObjPtr x = DtcIntern("x", root);
  EXPECT_EQ(DtlFrameBound(list({root, x}), root), DtlObjPtr::nil());
  DtcSet(x, DtlObjPtr(1), root);
  EXPECT_EQ(DtlFrameBound(list({root, x}), root), DtlObjPtr::t());
  EXPECT_EQ(DtlFrameBound(list({childOf(root), x}), root), DtlObjPtr::nil());
  EXPECT_EQ(initialMessage([&] { DtlFrameBound(list({root}), root); }),
            haltMessage("wrong number of args to frame-bound"));
  EXPECT_EQ(initialMessage([&] {
              DtlFrameBound(list({x, x}), root);
            }),
            haltMessage("non-frame to frame-bound"));
  EXPECT_EQ(initialMessage([&] {
              DtlFrameBound(list({root, DtlObjPtr(1)}), root);
            }),
            haltMessage("non-symbol to frame-bound"));
}

// ---- list and truth helpers used by the reader -----------------------------------------

TEST(ListHelpersTest, ConsCarCdrAndLength) {
  DtlObjPtr l = list({DtlObjPtr(1), DtlObjPtr(2), DtlObjPtr(3), DtlObjPtr(4), DtlObjPtr(5),
                      DtlObjPtr(6), DtlObjPtr(7)});
  EXPECT_EQ(DtcLength(l), 7);
  EXPECT_EQ(DtcCar(l)->fixnum(), 1);
  EXPECT_EQ(DtcCadr(l)->fixnum(), 2);
  EXPECT_EQ(DtcCaddr(l)->fixnum(), 3);
  EXPECT_EQ(DtcCadddr(l)->fixnum(), 4);
  EXPECT_EQ(DtcCaddddr(l)->fixnum(), 5);
  EXPECT_EQ(DtcCadddddr(l)->fixnum(), 6);
  EXPECT_EQ(DtcCaddddddr(l)->fixnum(), 7);
  EXPECT_EQ(DtcLength(DtlObjPtr::nil()), 0);
  EXPECT_EQ(DtcLength(DtlObjPtr()), 0);
  EXPECT_EQ(DtcLength(DtcCons(DtlObjPtr(1), DtlObjPtr())), 1);
  EXPECT_EQ(initialMessage([] { DtcLength(DtlObjPtr(5)); }), haltMessage("DtcLength of non-cons"));
  EXPECT_EQ(initialMessage([] { DtcLength(DtcCons(DtlObjPtr(1), DtlObjPtr(2))); }),
            haltMessage("DtcLength of non-cons"));
  EXPECT_EQ(initialMessage([] { DtcCar(DtlObjPtr::nil()); }), haltMessage("car of non-cons"));
  EXPECT_EQ(initialMessage([] { DtcCdr(DtlObjPtr(1)); }), haltMessage("cdr of non-cons"));
}

TEST(ListHelpersTest, NullEqAndBooleans) {
  EXPECT_EQ(DtcNull(DtlObjPtr()), 1);
  EXPECT_EQ(DtcNull(DtlObjPtr::nil()), 1);
  EXPECT_EQ(DtcNull(DtlObjPtr(DtlNilTag)), 1);  // by tag, not by identity
  EXPECT_EQ(DtcNull(DtlObjPtr(0)), 0);
  DtlObjPtr a(1);
  EXPECT_EQ(DtcEq(a, a), 1);
  EXPECT_EQ(DtcEq(a, DtlObjPtr(1)), 0);
  EXPECT_EQ(DtcCBooleanToLispBoolean(3), DtlObjPtr::t());
  EXPECT_EQ(DtcCBooleanToLispBoolean(0), DtlObjPtr::nil());
}
