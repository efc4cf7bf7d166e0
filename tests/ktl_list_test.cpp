// List, predicate and association primitives.
#include <gtest/gtest.h>

#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"
#include "support/language_test.h"

using namespace KORRti;
using ktltest::evalText;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::printed;

namespace {

using ListTest = ktltest::LanguageTest;

}  // namespace

TEST_F(ListTest, CarAndCdr) {
  EXPECT_EQ(error("(car nil)"), haltMessage("car of non-cons"));
  EXPECT_EQ(eval("(cdr '(1))"), DtlObjPtr::nil());
  EXPECT_EQ(show("(car '(1 2))"), "1");
  EXPECT_EQ(show("(cdr '(1 2))"), "(2)");
  EXPECT_EQ(error("(cdr 5)"), haltMessage("cdr of non-cons"));
  EXPECT_EQ(error("(car)"), haltMessage("Wrong number of args to car"));
  EXPECT_EQ(error("(cdr 1 2)"), haltMessage("Wrong number of args to cdr"));
}

TEST_F(ListTest, Cons) {
  EXPECT_EQ(show("(cons 1 2)"), "(1 . 2)");
  EXPECT_EQ(show("(cons 1 nil)"), "(1)");
  EXPECT_EQ(error("(cons 1)"), haltMessage("Wrong number of args to cons"));
}

TEST_F(ListTest, Length) {
  EXPECT_EQ(show("(length nil)"), "0");
  EXPECT_EQ(show("(length '(a b c))"), "3");
  EXPECT_EQ(error("(length 5)"), haltMessage("DtcLength of non-cons"));
  EXPECT_EQ(error("(length)"), haltMessage("Wrong number of args to length"));
}

TEST_F(ListTest, ListReturnsItsArguments) {
  EXPECT_EQ(eval("(list)"), DtlObjPtr::nil());
  EXPECT_EQ(show("(list 1 \"a\" 'b)"), "(1 \"a\" b)");
}

TEST_F(ListTest, Append) {
  EXPECT_EQ(eval("(append nil nil)"), DtlObjPtr::nil());
  EXPECT_EQ(error("(append '(1) 2)"), haltMessage("Non list in append"));
  EXPECT_EQ(error("(append 1 '(2))"), haltMessage("Non list in append"));
  EXPECT_EQ(show("(append '(1 2) '(3))"), "(1 2 3)");
  EXPECT_EQ(error("(append '(1))"), haltMessage("Wrong number of args to append"));
}

TEST_F(ListTest, AppendCopiesTheFirstAndSharesTheSecond) {
  DtlObjPtr a = eval("(define a '(1 2))");
  DtlObjPtr b = eval("(define b '(3))");
  DtlObjPtr joined = eval("(append a b)");
  EXPECT_FALSE(joined == eval("a"));
  EXPECT_EQ(DtcCdr(DtcCdr(joined)), eval("b"));
  EXPECT_EQ(eval("(append a nil)"), eval("a"));
  EXPECT_EQ(eval("(append nil b)"), eval("b"));
}

TEST_F(ListTest, Reverse) {
  EXPECT_EQ(eval("(reverse nil)"), DtlObjPtr::nil());
  EXPECT_EQ(show("(reverse '(1 2 3))"), "(3 2 1)");
  EXPECT_EQ(error("(reverse 1)"), haltMessage("Non list in reverse"));
  DtlObjPtr dotted = DtcCons(DtlObjPtr(1), DtlObjPtr(2));
  EXPECT_EQ(initialMessage([&] { DtcReverse(dotted); }), haltMessage("Non list in reverse"));
  EXPECT_EQ(error("(reverse)"), haltMessage("Wrong number of args to reverse"));
}

TEST_F(ListTest, AssociationLists) {
  EXPECT_EQ(show("(assq 'b '((a 1) (b 2)))"), "(b 2)");
  EXPECT_EQ(eval("(assq 'c '((a 1) (b 2)))"), DtlObjPtr::nil());
  EXPECT_EQ(error("(assv 1 '((a 1)))"), haltMessage("Wrong type to DtcEqualSign"));
  EXPECT_EQ(show("(assv 2 '((1 a) (2 b)))"), "(2 b)");
  EXPECT_EQ(show("(assoc \"x\" '((\"x\" 1)))"), "(\"x\" 1)");
  EXPECT_EQ(show("(assoc '(k) '((j 0) ((k) 1)))"), "((k) 1)");
  EXPECT_EQ(eval("(assq \"x\" '((\"x\" 1)))"), DtlObjPtr::nil());
  EXPECT_EQ(error("(assq 'a '(1))"), haltMessage("car of non-cons"));
  EXPECT_EQ(error("(assoc 'a)"), haltMessage("Wrong number of args to assoc"));
  EXPECT_EQ(error("(assq 'a)"), haltMessage("Wrong number of args to assq"));
  EXPECT_EQ(error("(assv 'a)"), haltMessage("Wrong number of args to assv"));
}

TEST_F(ListTest, EqEqualAndNumericEquality) {
  EXPECT_EQ(eval("(eq 1 1)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(= 1 1)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(equal 1 1)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(eq 'a 'a)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(eq? 'a 'b)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(equal 1 1.0)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(= 1 1.0)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(= 1.5 1)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(equal? '(1 (2 \"x\")) '(1 (2 \"x\")))"), DtlObjPtr::t());
  EXPECT_EQ(eval("(equal '(1 2) '(1 3))"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(equal '(1 2) '(1))"), DtlObjPtr::nil());
  EXPECT_EQ(error("(eq 1)"), haltMessage("Wrong number of arguments to eq"));
  EXPECT_EQ(error("(equal 1)"), haltMessage("Wrong number of arguments to eq"));
  EXPECT_EQ(error("(= 1)"), haltMessage("Wrong number of args to ="));
  EXPECT_EQ(error("(= 'a 1)"), haltMessage("Wrong type to DtcEqualSign"));
}

TEST_F(ListTest, EqualOnFunctionsComparesIdentityOrHalts) {
  EXPECT_EQ(eval("(equal car car)"), DtlObjPtr::t());
  EXPECT_EQ(error("(equal car cdr)"), haltMessage("Unknown type passed to equal!"));
}

TEST_F(ListTest, EqualOnSymbolsComparesNames) {
  DtlObjPtr a = DtcMakeSymbol("same");
  DtlObjPtr b = DtcMakeSymbol("same");
  EXPECT_EQ(DtcEqual(a, b), 1);
  EXPECT_EQ(DtcEq(a, b), 0);
}

TEST_F(ListTest, EqualOnLocativesComparesAddresses) {
  int x = 0;
  int y = 0;
  DtlObjPtr a = DtcPtrToNode(DtlLocativeTag, &x);
  DtlObjPtr b = DtcPtrToNode(DtlLocativeTag, &x);
  DtlObjPtr c = DtcPtrToNode(DtlLocativeTag, &y);
  EXPECT_EQ(a->nodeptr(), &x);
  EXPECT_EQ(DtcEqual(a, b), 1);
  EXPECT_EQ(DtcEqualSign(a, b), 1);
  EXPECT_EQ(DtcEqual(a, c), 0);
  EXPECT_EQ(DtcLocativep(a), 1);
  DtcInternCompiledC("locative?", DtlLocativep, root);
  DtcSet(DtcIntern("here", root), a, root);
  EXPECT_EQ(eval("(locative? here)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(locative? 1)"), DtlObjPtr::nil());
  EXPECT_EQ(error("(locative?)"), haltMessage("Wrong number of args to locativep"));
}

TEST_F(ListTest, Order) {
  EXPECT_EQ(eval("(> 2 1)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(> 1 2)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(< 1 2.5)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(<= 2.0 2)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(>= 1.5 2.5)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(< -1 0)"), DtlObjPtr::t());
  EXPECT_EQ(error("(> 'a 1)"), haltMessage("Wrong type to DtcGreater"));
  EXPECT_EQ(error("(< 1 \"b\")"), haltMessage("Wrong type to DtcLess"));
  EXPECT_EQ(error("(<= nil 1)"), haltMessage("Wrong type to DtcLessEqual"));
  EXPECT_EQ(error("(>= 1 '(1))"), haltMessage("Wrong type to DtcGreaterEqual"));
  EXPECT_EQ(error("(>)"), haltMessage("Wrong number of args to >"));
  EXPECT_EQ(error("(>= 1)"), haltMessage("Wrong number of args to >="));
  EXPECT_EQ(error("(< 1 2 3)"), haltMessage("Wrong number of args to <"));
  EXPECT_EQ(error("(<= 1)"), haltMessage("Wrong number of args to <="));
}

TEST_F(ListTest, Predicates) {
  EXPECT_EQ(eval("(list? nil)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(list? '(1))"), DtlObjPtr::t());
  EXPECT_EQ(eval("(number? 1)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(number? 1.5)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(number? \"1\")"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(string? \"1\")"), DtlObjPtr::t());
  EXPECT_EQ(eval("(string? 'a)"), DtlObjPtr::nil());
  EXPECT_EQ(error("(number?)"), haltMessage("Wrong number of args to numberp"));
  EXPECT_EQ(error("(string? 1 2)"), haltMessage("Wrong number of args to stringp"));
  EXPECT_EQ(error("(list?)"), haltMessage("Wrong number of args to listp"));
}

TEST_F(ListTest, NotNullAndNullp) {
  EXPECT_EQ(eval("(not nil)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(null? ())"), DtlObjPtr::t());
  EXPECT_EQ(eval("(nullp 1)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(null? 'nil)"), DtlObjPtr::nil());  // the quoted word is a symbol
  EXPECT_EQ(error("(not)"), haltMessage("Wrong number of arguments to not/null"));
  // By identity: another object of the nil tag is not the empty list here.
  DtcSet(DtcIntern("othernil", root), DtlObjPtr(DtlNilTag), root);
  EXPECT_EQ(eval("(null? othernil)"), DtlObjPtr::nil());
}

TEST_F(ListTest, AndOrEvaluateTwiceWithoutShortCut) {
  EXPECT_EQ(eval("(and 1 2)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(and nil 1)"), DtlObjPtr::nil());
  EXPECT_EQ(eval("(or nil 1)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(or nil nil)"), DtlObjPtr::nil());
  EXPECT_EQ(error("(and 'x 1)"), haltMessage("Unbound symbol x"));
  EXPECT_EQ(error("(or 1 'x)"), haltMessage("Unbound symbol x"));
  EXPECT_EQ(error("(and 1)"), haltMessage("Wrong number of args to and"));
  EXPECT_EQ(error("(or 1 2 3)"), haltMessage("Wrong number of args to or"));
  // A value that is a list runs as an expression.
  EXPECT_EQ(eval("(and '(null? nil) t)"), DtlObjPtr::t());
  EXPECT_EQ(eval("(and '(null? 1) t)"), DtlObjPtr::nil());
  eval("(define y 'z)");
  EXPECT_EQ(error("(or y 1)"), haltMessage("Unbound symbol z"));
  EXPECT_EQ(error("(and car 1)"), haltMessage("unknown expression type in eval"));
}

TEST_F(ListTest, HostHelpers) {
  DtlObjPtr l = eval("'(1 2)");
  EXPECT_EQ(DtcNumberp(DtlObjPtr(1)), 1);
  EXPECT_EQ(DtcStringp(DtlObjPtr("s")), 1);
  EXPECT_EQ(DtcListp(l), 1);
  EXPECT_EQ(DtcListp(DtlObjPtr::nil()), 0);
  EXPECT_EQ(DtcGreater(DtlObjPtr(2), DtlObjPtr(1.5)), 1);
  EXPECT_EQ(DtcLess(DtlObjPtr(2.5), DtlObjPtr(3)), 1);
  EXPECT_EQ(DtcLessEqual(DtlObjPtr(3), DtlObjPtr(3)), 1);
  EXPECT_EQ(DtcGreaterEqual(DtlObjPtr(2), DtlObjPtr(3)), 0);
  EXPECT_EQ(printed(DtcAssq(DtcIntern("b", root), eval("'((a 1) (b 2))"))), "(b 2)");
  EXPECT_EQ(printed(DtcAssv(DtlObjPtr(2), eval("'((1 a) (2.0 b))"))), "(2.000000 b)");
  EXPECT_EQ(printed(DtcAssoc(DtlObjPtr("k"), eval("'((\"k\" v))"))), "(\"k\" v)");
}

// ---- long lists ------------------------------------------------------------------------

class LongListTest : public ListTest {
 protected:
  void SetUp() override {
    ListTest::SetUp();
    DtlObjPtr list = DtlObjPtr::nil();
    for (int i = kLength - 1; i >= 0; --i) list = DtcCons(DtlObjPtr(i), list);
    DtcSet(DtcIntern("big", root), list, root);
  }
  static const int kLength = 100000;
};

TEST_F(LongListTest, ReverseAppendLengthEqualAndPrint) {
  EXPECT_EQ(show("(length big)"), "100000");
  EXPECT_EQ(show("(car (reverse big))"), "99999");
  EXPECT_EQ(show("(length (append big big))"), "200000");
  EXPECT_EQ(eval("(equal big (reverse (reverse big)))"), DtlObjPtr::t());
  EXPECT_EQ(eval("(equal big (cdr big))"), DtlObjPtr::nil());
  std::string text = show("big");
  EXPECT_EQ(text.substr(0, 7), "(0 1 2 ");
  EXPECT_EQ(text.substr(text.size() - 7), " 99999)");
  EXPECT_EQ(show("(car (assv 99999 (list big '(99999 x))))"), "99999");
}
