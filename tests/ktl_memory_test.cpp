// Lisp object records, counted handles, release rules and the object printer.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include <ktl/ktl.h>

#include "support/capture.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::haltMessage;
using ktltest::initialMessage;

namespace {

// Renders an object with DtcObjFprint into a string.
std::string printed(DtlObjPtr const& x) {
  FILE* file = std::tmpfile();
  x->DtcObjFprint(file);
  std::rewind(file);
  std::string text;
  for (int c; (c = std::fgetc(file)) != EOF;) text += static_cast<char>(c);
  std::fclose(file);
  return text;
}

std::string hex(void const* address) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%lx", reinterpret_cast<unsigned long>(address));
  return buffer;
}

DtlObjPtr list2(DtlObjPtr const& a, DtlObjPtr const& b) {
  return DtcCons(a, DtcCons(b, DtlObjPtr::nil()));
}

// A host parameter whose destruction is observable: it tells when its frame is destroyed.
class Sentinel : public DtcParam {
 public:
  Sentinel(DtlObjPtr const& env, int* destroyed)
      : DtcParam("sentinel", env), destroyed_(destroyed) {}
  ~Sentinel() override { ++*destroyed_; }
  DtlObjPtr newValObj() override { return DtlObjPtr(0); }
  void c2lisp() override {}
  void lisp2c() override {}
  char* eval2str() override {
    char* text = new char[1];
    text[0] = '\0';
    return text;
  }

 private:
  int* destroyed_;
};

// A closure over frame, bound in frame under name; body is the closure's body list.
DtlObjPtr bindSelfClosure(DtlObjPtr const& frame, char const* name, DtlObjPtr const& body) {
  DtlObjPtr procedure(DtlProcedureTag);
  procedure->setProcParams(DtlObjPtr::nil());
  procedure->setProcBody(body);
  procedure->setProcEnv(frame);
  DtcSet(DtcIntern(name, frame), procedure, frame);
  return DtcIntern(name, frame);
}

class NotifyLevel : public ::testing::Test {
 protected:
  void SetUp() override { saved_ = DtNotifyLevel; }
  void TearDown() override { DtNotifyLevel = saved_; }
  int saved_ = 1;
};

}  // namespace

TEST(DtlObjPtrTest, DefaultHandleIsNullAndNotNil) {
  DtlObjPtr p;
  EXPECT_TRUE(p.isNull());
  EXPECT_EQ(static_cast<void*>(p), nullptr);
  EXPECT_TRUE(DtcNull(p));
  DtlObjPtr nil = DtlObjPtr::nil();
  EXPECT_FALSE(nil.isNull());
  EXPECT_NE(static_cast<void*>(nil), nullptr);  // nil is a real object: "true" to the pointer test
  EXPECT_TRUE(DtcNull(nil));
  EXPECT_EQ(nil->tag(), DtlNilTag);
}

TEST(DtlObjPtrTest, SelfAssignmentLeavesTheCountUnchanged) {
  DtlObjPtr p(42);
  ASSERT_EQ(p->refcnt(), 1);
  DtlObjPtr& same = p;
  p = same;
  EXPECT_EQ(p->refcnt(), 1);
  EXPECT_EQ(p->fixnum(), 42);
}

TEST(DtlObjPtrTest, CopiesCountAndReleasesUncount) {
  DtlObjPtr p(DtlConsTag);
  EXPECT_EQ(p->refcnt(), 1);
  {
    DtlObjPtr q(p);
    EXPECT_EQ(p->refcnt(), 2);
    DtlObjPtr r;
    r = q;
    EXPECT_EQ(p->refcnt(), 3);
  }
  EXPECT_EQ(p->refcnt(), 1);
}

TEST(DtlObjPtrTest, AssigningAListToItsOwnTailIsSafe) {
  DtlObjPtr list =
      DtcCons(DtlObjPtr(1), DtcCons(DtlObjPtr(2), DtcCons(DtlObjPtr(3), DtlObjPtr::nil())));
  list = list->cdr();
  EXPECT_EQ(list->refcnt(), 1);
  EXPECT_EQ(printed(list), "(2 3)");
  list = list->cdr()->cdr();
  EXPECT_EQ(list, DtlObjPtr::nil());
}

TEST(DtlObjPtrTest, EqualityIsIdentity) {
  DtlObjPtr a(1);
  DtlObjPtr b(1);
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(a != b);
  DtlObjPtr c(a);
  EXPECT_TRUE(a == c);
  DtlObjPtr s1("x");
  DtlObjPtr s2("x");
  EXPECT_FALSE(s1 == s2);
}

TEST(DtlObjPtrTest, ValueConstructors) {
  DtlObjPtr i(-7);
  EXPECT_EQ(i->tag(), DtlFixnumTag);
  EXPECT_EQ(i->fixnum(), -7);
  DtlObjPtr d(2.5);
  EXPECT_EQ(d->tag(), DtlFlonumTag);
  EXPECT_DOUBLE_EQ(d->flonum(), 2.5);
  char text[] = "hello";
  DtlObjPtr s(static_cast<char const*>(text));
  text[0] = 'j';  // the object holds its own copy
  EXPECT_EQ(s->tag(), DtlStringTag);
  EXPECT_STREQ(s->string(), "hello");
  EXPECT_EQ(s->refcnt(), 1);
  EXPECT_EQ(s->gone(), 0);
}

TEST(DtlObjPtrTest, SingletonsAreFixedPerThreadAndNotInterned) {
  EXPECT_EQ(DtlObjPtr::nil(), DtlObjPtr::nil());
  EXPECT_EQ(DtlObjPtr::t(), DtlObjPtr::t());
  EXPECT_EQ(DtlObjPtr::unbound(), DtlObjPtr::unbound());
  EXPECT_EQ(DtlObjPtr::t()->tag(), DtlSymbolTag);
  EXPECT_STREQ(DtlObjPtr::t()->pname(), "t");
  EXPECT_STREQ(DtlObjPtr::unbound()->pname(), "*unbound*");
  EXPECT_EQ(theNilPtr, &DtlObjPtr::nil());
  DtlObjPtr frame(DtlFrameTag);
  DtlObjPtr t = DtcIntern("t", frame);
  EXPECT_FALSE(t == DtlObjPtr::t());

  DtlObj* mainNil = DtlObjPtr::nil().get();
  DtlObj* otherNil = nullptr;
  int otherTag = -1;
  std::thread other([&] {
    otherNil = DtlObjPtr::nil().get();
    otherTag = DtlObjPtr::nil()->tag();
  });
  other.join();
  EXPECT_NE(mainNil, otherNil);
  EXPECT_EQ(otherTag, DtlNilTag);
}

TEST(DtlObjTest, ConstructorsByTag) {
  for (int tag = DtlNilTag; tag <= DtlFrameTag; ++tag) {
    DtlObjPtr p(static_cast<DtlTagType>(tag));
    ASSERT_FALSE(p.isNull());
    EXPECT_EQ(p->tag(), tag);
    EXPECT_EQ(p->refcnt(), 1);
    EXPECT_EQ(p->gone(), 0);
    EXPECT_TRUE(p->car().isNull());
    EXPECT_TRUE(p->cdr().isNull());
    EXPECT_TRUE(p->procEnv().isNull());
  }
  DtlObjPtr symbol(DtlSymbolTag);
  EXPECT_EQ(symbol->pname(), nullptr);
  DtlObjPtr string(DtlStringTag);
  EXPECT_EQ(string->string(), nullptr);
  DtlObjPtr frame(DtlFrameTag);
  EXPECT_NE(frame->frameBindings(), nullptr);
}

TEST(DtlObjTest, UnknownTagHalts) {
  EXPECT_EQ(initialMessage([] { DtlObjPtr p(static_cast<DtlTagType>(11)); }),
            haltMessage("unknown tag request to DtlObj::DtlObj(DtlTagType)"));
}

TEST(DtlObjTest, HaltCarriesBothPrefixesAndItsPlace) {
  try {
    DtcHaltAndCatchFire("something broke");
    FAIL() << "no halt";
  } catch (DtException const& e) {
    EXPECT_STREQ(e.message(), "DtException: KTL Error: something broke");
    EXPECT_STREQ(e.what(), e.message());
    EXPECT_EQ(e.previous(), nullptr);
    EXPECT_EQ(e.initialException(), &e);
    EXPECT_STREQ(e.file(), "io");
    EXPECT_NE(std::string(e.function()).find("DtcHaltAndCatchFire"), std::string::npos);
  }
}

TEST(DtlObjTest, SetPnameCopiesAndKeepsTheOldText) {
  DtlObjPtr symbol(DtlSymbolTag);
  char name[] = "first";
  symbol->setPname(name);
  name[0] = 'X';
  char* old = symbol->pname();
  EXPECT_STREQ(old, "first");
  symbol->setPname("second");
  EXPECT_STREQ(symbol->pname(), "second");
  EXPECT_STREQ(old, "first");  // not freed by the second set
  delete[] old;
  char* second = symbol->pname();
  symbol->setPname(nullptr);  // stores null, and frees nothing either
  EXPECT_EQ(symbol->pname(), nullptr);
  delete[] second;
}

TEST(DtlObjTest, SetFcnPnameCopies) {
  DtlObjPtr fn(DtlCompiledCTag);
  fn->setFcnPname("car");
  EXPECT_STREQ(fn->fcnPname(), "car");
  char* held = fn->fcnPname();
  fn->setFcnPname(nullptr);
  EXPECT_EQ(fn->fcnPname(), nullptr);
  delete[] held;
}

TEST(DtlObjTest, SetStringReplacesTheOldText) {
  DtlObjPtr string("one");
  string->setString("two");
  EXPECT_STREQ(string->string(), "two");
  char* held = string->string();
  string->setString(nullptr);  // stores null without freeing
  EXPECT_EQ(string->string(), nullptr);
  string->setString(held);
  delete[] held;
  EXPECT_STREQ(string->string(), "two");
}

TEST(DtlObjTest, FieldAccessors) {
  DtlObjPtr cell(DtlConsTag);
  DtlObjPtr one(1);
  cell->setCar(one);
  cell->setCdr(DtlObjPtr::nil());
  EXPECT_EQ(cell->car(), one);
  EXPECT_EQ(one->refcnt(), 2);  // the handle and the slot
  EXPECT_EQ(cell->cdr(), DtlObjPtr::nil());

  DtlObjPtr number(DtlFixnumTag);
  number->setFixnum(9);
  EXPECT_EQ(number->fixnum(), 9);
  number->setTag(DtlFlonumTag);
  number->setFlonum(0.25);
  EXPECT_EQ(number->tag(), DtlFlonumTag);
  EXPECT_DOUBLE_EQ(number->flonum(), 0.25);

  int host = 0;
  DtlObjPtr locative(DtlLocativeTag);
  locative->setNodeptr(&host);
  EXPECT_EQ(locative->nodeptr(), &host);

  DtlObjPtr procedure(DtlProcedureTag);
  DtlObjPtr frame(DtlFrameTag);
  procedure->setProcParams(one);
  procedure->setProcBody(cell);
  procedure->setProcEnv(frame);
  EXPECT_EQ(procedure->procParams(), one);
  EXPECT_EQ(procedure->procBody(), cell);
  EXPECT_EQ(procedure->procEnv(), frame);
  DtlObjPtr child(DtlFrameTag);
  child->setFrameParent(frame);
  EXPECT_EQ(child->frameParent(), frame);

  DtlObjPtr fn(DtlCompiledCTag);
  fn->setFcnCode(DtlMem);
  EXPECT_EQ(fn->fcnCode(), &DtlMem);
  number->setRefcnt(number->refcnt());
  EXPECT_EQ(number->refcnt(), 1);
}

TEST(DtlObjTest, ParamsExistOnlyForFrames) {
  DtlObjPtr cons(DtlConsTag);
  EXPECT_EQ(cons->params(), nullptr);
  DtlObjPtr frame(DtlFrameTag);
  DtList* params = frame->params();
  ASSERT_NE(params, nullptr);
  EXPECT_EQ(frame->params(), params);
  EXPECT_EQ(params->first(), nullptr);
}

TEST(DtlObjTest, RegisterValOnANonFrameWarnsAndReturnsZero) {
  DtlObjPtr frame(DtlFrameTag);
  DtlObjPtr cons(DtlConsTag);
  int destroyed = 0;
  Sentinel* param = new Sentinel(frame, &destroyed);
  int result = -1;
  auto output = captureOutput([&] { result = cons->registerVal(param); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(output.err, "Can't register a parameter with a non-frame DtlObj.\n");
  EXPECT_EQ(frame->registerVal(param), 1);  // the frame takes it over and destroys it
  EXPECT_EQ(frame->params()->first()->data(), param);
  frame = DtlObjPtr();
  EXPECT_EQ(destroyed, 1);
}

TEST(DtlObjTest, DoubleDeleteWarnsAndFreesNothingMore) {
  DtlObjPtr number(5);
  number->setGone(1);
  auto output = captureOutput([&] { number = DtlObjPtr(); });
  EXPECT_EQ(output.err, "Lisp Error: Attempt to deleted already-deleted object\n");
}

TEST(DtlObjTest, MemIsNotBuiltIn) {
  DtNotifyLevel = 2;
  DtlObjPtr result;
  auto output = captureOutput([&] { result = DtlMem(DtlObjPtr::nil(), DtlObjPtr()); });
  DtNotifyLevel = 1;
  EXPECT_EQ(output.out, "Must compile with -DMEMCHK=1 to use mem or DtlMem.\n");
  EXPECT_EQ(result, DtlObjPtr::nil());
}

// ---- release rules ---------------------------------------------------------------------

TEST(FrameReleaseTest, FrameWithOnlyItsOwnClosureIsFreedAtOnce) {
  int destroyed = 0;
  DtlObjPtr bodyA = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  DtlObjPtr bodyB = DtcCons(DtlObjPtr(2), DtlObjPtr::nil());
  {
    DtlObjPtr frame(DtlFrameTag);
    frame->registerVal(new Sentinel(frame, &destroyed));
    bindSelfClosure(frame, "f", bodyA);
    bindSelfClosure(frame, "g", bodyB);
    EXPECT_EQ(frame->refcnt(), 3);
    EXPECT_EQ(EnvLocalProcRefcnt(frame), 2);
    EXPECT_EQ(bodyA->refcnt(), 2);
    auto output = captureOutput([&] { frame = DtlObjPtr(); });
    EXPECT_EQ(output.err, "");
    EXPECT_EQ(output.out, "");
  }
  EXPECT_EQ(destroyed, 1);        // the frame went, with its parameter list
  EXPECT_EQ(bodyA->refcnt(), 1);  // each closure went once, releasing its body
  EXPECT_EQ(bodyB->refcnt(), 1);
}

TEST(FrameReleaseTest, OutsideHandleKeepsTheFrameUntilItGoes) {
  int destroyed = 0;
  DtlObjPtr body = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  DtlObjPtr outside;
  {
    DtlObjPtr frame(DtlFrameTag);
    frame->registerVal(new Sentinel(frame, &destroyed));
    bindSelfClosure(frame, "self", body);
    outside = frame;
  }
  // Still held from outside: the handle and the closure's procEnv.
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(outside->refcnt(), 2);
  EXPECT_EQ(EnvLocalProcRefcnt(outside), 1);
  outside = DtlObjPtr();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(body->refcnt(), 1);
}

TEST(FrameReleaseTest, ClosureHeldElsewhereTakesItsFrameAlongWhenItGoes) {
  int destroyed = 0;
  DtlObjPtr body = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  DtlObjPtr frame(DtlFrameTag);
  frame->registerVal(new Sentinel(frame, &destroyed));
  bindSelfClosure(frame, "f", body);
  DtlObjPtr closure = frame->frameBindings()->lookup("f");
  EXPECT_EQ(EnvLocalProcRefcnt(frame), 0);  // the closure has two owners
  frame = DtlObjPtr();
  EXPECT_EQ(destroyed, 0);  // held through the closure
  closure = DtlObjPtr();    // the closure's last outside holder: the pair is unreachable
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(body->refcnt(), 1);
}

TEST(FrameReleaseTest, ClosureSharedByTwoBindingsIsNotDetected) {
  int destroyed = 0;
  DtlObjPtr body = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  DtlObjPtr frame(DtlFrameTag);
  DtlObj* raw = frame.get();
  frame->registerVal(new Sentinel(frame, &destroyed));
  DtlObjPtr name = bindSelfClosure(frame, "f", body);
  DtcSet(DtcIntern("g", frame), frame->frameBindings()->lookup("f"), frame);
  frame = DtlObjPtr();
  // The frame and its closure (count 2) only hold each other, and nothing releases either of
  // them again: the pair stays allocated. The test breaks the cycle by hand.
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(raw->refcnt(), 1);
  DtlObjPtr revived(raw);
  DtcSet(DtcIntern("g", revived), DtlObjPtr::nil(), revived);
  DtcSet(name, DtlObjPtr::nil(), revived);
  EXPECT_EQ(destroyed, 0);
  revived = DtlObjPtr();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(body->refcnt(), 1);
}

TEST(FrameReleaseTest, EnvLocalProcRefcntOfANonFrameHalts) {
  DtlObjPtr cons(DtlConsTag);
  EXPECT_EQ(initialMessage([&] { EnvLocalProcRefcnt(cons); }),
            haltMessage("non-frame to EnvLocalProcRefcnt"));
}

TEST(FrameReleaseTest, FrameWithoutClosuresIsFreedWhenItsCountReachesZero) {
  int destroyed = 0;
  DtlObjPtr parent(DtlFrameTag);
  {
    DtlObjPtr child(DtlFrameTag);
    child->setFrameParent(parent);
    child->registerVal(new Sentinel(child, &destroyed));
    DtcSet(DtcIntern("x", child), DtlObjPtr(1), child);
    EXPECT_EQ(parent->refcnt(), 2);
  }
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(parent->refcnt(), 1);
}

// ---- printer ---------------------------------------------------------------------------

TEST(PrinterTest, SymbolWithoutNameAndWithName) {
  DtlObjPtr symbol(DtlSymbolTag);
  EXPECT_EQ(printed(symbol), "(unbound symbol name)");
  symbol->setPname("abc");
  EXPECT_EQ(printed(symbol), "abc");
}

TEST(PrinterTest, ConsPairsListsAndNil) {
  EXPECT_EQ(printed(DtcCons(DtlObjPtr(1), DtlObjPtr(2))), "(1 . 2)");
  EXPECT_EQ(printed(list2(DtlObjPtr(1), DtlObjPtr(2))), "(1 2)");
  EXPECT_EQ(printed(DtlObjPtr::nil()), "nil");
  DtlObjPtr nested = list2(list2(DtlObjPtr(1), DtlObjPtr::nil()), DtlObjPtr("s"));
  EXPECT_EQ(printed(nested), "((1 nil) \"s\")");
}

TEST_F(NotifyLevel, ListEndingInANullHandlePrintsAQuestionMarkOnInfo) {
  DtNotifyLevel = 2;
  DtlObjPtr list = DtcCons(DtlObjPtr(1), DtcCons(DtlObjPtr(2), DtlObjPtr()));
  std::string text;
  auto output = captureOutput([&] { text = printed(list); });
  EXPECT_EQ(text, "(1 2)");
  EXPECT_EQ(output.out, " ?");
  DtlObjPtr holey = DtcCons(DtlObjPtr(), DtlObjPtr::nil());
  output = captureOutput([&] { text = printed(holey); });
  EXPECT_EQ(text, "()");
  EXPECT_EQ(output.out, "?");
}

TEST_F(NotifyLevel, NestedListsWithHolesAndDottedTails) {
  DtNotifyLevel = 2;
  DtlObjPtr four = DtcCons(DtlObjPtr(4), DtlObjPtr());
  DtlObjPtr list =
      DtcCons(DtlObjPtr(1), DtcCons(DtcCons(DtlObjPtr(2), DtlObjPtr(3)),
                                    DtcCons(DtlObjPtr(), DtcCons(four, DtlObjPtr::nil()))));
  std::string text;
  auto output = captureOutput([&] { text = printed(list); });
  EXPECT_EQ(text, "(1 (2 . 3)  (4))");
  EXPECT_EQ(output.out, "? ?");
  FILE* file = std::tmpfile();
  list->DtcPrintList(file);  // the inside only
  long size = std::ftell(file);
  std::fclose(file);
  EXPECT_EQ(size, static_cast<long>(std::string("1 (2 . 3)  (4)").size()));
}

TEST(PrinterTest, NumbersAndStrings) {
  EXPECT_EQ(printed(DtlObjPtr(-12)), "-12");
  EXPECT_EQ(printed(DtlObjPtr(1.5)), "1.500000");
  EXPECT_EQ(printed(DtlObjPtr(100000.0)), "100000.000000");
  EXPECT_EQ(printed(DtlObjPtr("a\"b")), "\"a\"b\"");  // no escaping
  EXPECT_EQ(printed(DtlObjPtr(DtlStringTag)), "(unbound string)");
}

TEST(PrinterTest, FunctionsProceduresFramesAndLocatives) {
  DtlObjPtr special = alloc_compiled_c(DtlSpecialFormTag, "quote", DtlMem);
  EXPECT_EQ(printed(special), "#<special-form " + hex(special.get()) + ">");
  DtlObjPtr compiled = alloc_compiled_c(DtlCompiledCTag, "car", DtlMem);
  EXPECT_EQ(printed(compiled), "#<primitive-function car>");
  DtlObjPtr procedure(DtlProcedureTag);
  EXPECT_EQ(printed(procedure), "#<procedure " + hex(procedure.get()) + ">");
  DtlObjPtr frame(DtlFrameTag);
  EXPECT_EQ(printed(frame), "#<environment-frame " + hex(frame.get()) + ">");
  DtlObjPtr locative(DtlLocativeTag);
  locative->setNodeptr(reinterpret_cast<void*>(static_cast<uintptr_t>(1234)));
  EXPECT_EQ(printed(locative), "1234");
}

TEST(PrinterTest, DeletedObjectsAreMarked) {
  DtlObjPtr number(7);
  number->setGone(1);
  EXPECT_EQ(printed(number), "#deleted# 7");
  number->setGone(0);
}

TEST(PrinterTest, UnknownTagHalts) {
  DtlObjPtr number(7);
  number->setTag(static_cast<DtlTagType>(11));
  std::string message = initialMessage([&] { printed(number); });
  number->setTag(DtlFixnumTag);
  EXPECT_EQ(message, haltMessage("unknown tag in DtlObj::DtcObjFprint"));
}

TEST(PrinterTest, PrintListOfANonConsHalts) {
  DtlObjPtr number(7);
  EXPECT_EQ(initialMessage([&] { number->DtcPrintList(stdout); }),
            haltMessage("Non-cons passed to DtlObj::DtcPrintList"));
}

TEST_F(NotifyLevel, PrintWritesStdoutAndEndsTheLineOnInfo) {
  DtlObjPtr list = list2(DtlObjPtr(1), DtlObjPtr("a"));
  DtlObjPtr result;
  auto output = captureOutput([&] { result = DtcPrint(list); });
  EXPECT_EQ(result, list);
  EXPECT_EQ(output.out, "(1 \"a\")");  // at the default level the newline on DtInfo is filtered
  DtNotifyLevel = 2;
  output = captureOutput([&] { list->print(); });
  EXPECT_EQ(output.out, "(1 \"a\")\n");
}

TEST(PrinterTest, ErrPrintWritesStandardErrorWithoutNewline) {
  DtlObjPtr list = list2(DtlObjPtr(1), DtlObjPtr(2));
  DtlObjPtr result;
  auto output = captureOutput([&] { result = DtcErrPrint(list); });
  EXPECT_EQ(result, list);
  EXPECT_EQ(output.err, "(1 2)");
  EXPECT_EQ(output.out, "");
}
