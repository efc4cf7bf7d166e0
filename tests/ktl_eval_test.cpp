// The evaluator and its special forms.
#include <gtest/gtest.h>

#include <pthread.h>

#include <string>

#include <ktl/ktl.h>

#include "support/capture.h"
#include "support/language.h"
#include "support/language_test.h"

using namespace KORRti;
using ktltest::captureOutput;
using ktltest::evalText;
using ktltest::haltMessage;
using ktltest::initialMessage;
using ktltest::printed;

namespace {

using EvalTest = ktltest::LanguageTest;

// A compiled function that records what it was given.
DtlObjPtr recordedArgs;
DtlObjPtr recordedEnv;
DtlObjPtr recordCall(DtlObjPtr const& args, DtlObjPtr const& env) {
  recordedArgs = args;
  recordedEnv = env;
  return DtlObjPtr(99);
}

}  // namespace

TEST_F(EvalTest, SelfEvaluatingObjects) {
  EXPECT_EQ(show("5"), "5");
  EXPECT_EQ(show("2.5"), "2.500000");
  EXPECT_EQ(show("\"s\""), "\"s\"");
  EXPECT_EQ(eval("()"), DtlObjPtr::nil());
  DtlObjPtr frame(DtlFrameTag);
  EXPECT_EQ(DtcEval(frame, root), frame);
  DtlObjPtr locative = DtcPtrToNode(DtlLocativeTag, &recordedArgs);
  EXPECT_EQ(DtcEval(locative, root), locative);
}

TEST_F(EvalTest, OnlyNilIsFalse) {
  EXPECT_EQ(eval("(if nil 1)"), DtlObjPtr::nil());
  EXPECT_EQ(show("(if 0 1 2)"), "1");
  EXPECT_EQ(show("(if \"\" 1 2)"), "1");
  EXPECT_EQ(show("(if nil 1 2)"), "2");
  EXPECT_EQ(show("(if () 1 2)"), "2");
}

TEST_F(EvalTest, IfCountsItsArguments) {
  EXPECT_EQ(error("(if 1)"), haltMessage("Wrong number of args to if"));
  EXPECT_EQ(error("(if 1 2 3 4)"), haltMessage("Wrong number of args to if"));
}

TEST_F(EvalTest, DefineYieldsTheSymbol) {
  DtlObjPtr result = eval("(define x 1)");
  EXPECT_EQ(result->tag(), DtlSymbolTag);
  EXPECT_EQ(printed(result), "x");
  EXPECT_EQ(show("x"), "1");
  EXPECT_EQ(printed(eval("(setq y 2)")), "y");
}

TEST_F(EvalTest, FunctionsCannotBeDefinedTwiceInAFrame) {
  eval("(define (f) 1)");
  EXPECT_EQ(show("(f)"), "1");
  EXPECT_EQ(error("(define (f) 2)"), haltMessage("Variable is already bound"));
  EXPECT_EQ(printed(eval("(define f 3)")), "f");
  EXPECT_EQ(show("f"), "3");
  eval("(define (g a b) (cons b a))");
  EXPECT_EQ(show("(g 1 2)"), "(2 . 1)");
}

TEST_F(EvalTest, DefineCountsItsArgumentsAndExplainsOnStandardError) {
  std::string message;
  auto output = captureOutput([&] { message = error("(setq x 1 2)"); });
  EXPECT_EQ(message, haltMessage("Wrong number of args to define"));
  EXPECT_EQ(output.err, "Lisp Error: Got 3 args, expected 2\nARGS: (x 1 2)");
  DtNotifyLevel = -1;
  output = captureOutput([&] { message = error("(define x)"); });
  EXPECT_EQ(message, haltMessage("Wrong number of args to define"));
  EXPECT_EQ(output.err, "");
}

TEST_F(EvalTest, SetqMakesALocalWhileSetBangReachesOut) {
  eval("(define x 1)");
  eval("((lambda () (setq x 2)))");
  EXPECT_EQ(show("x"), "1");
  eval("((lambda () (set! x 2)))");
  EXPECT_EQ(show("x"), "2");
  eval("((lambda () (setqb x 3)))");
  EXPECT_EQ(show("x"), "3");
}

TEST_F(EvalTest, SetBangYieldsTheSymbol) {
  eval("(define x 1)");
  EXPECT_EQ(printed(eval("(set! x 5)")), "x");
  EXPECT_EQ(show("x"), "5");
}

TEST_F(EvalTest, SetBangOfAnUnboundNameWarnsAndSkipsTheValue) {
  eval("(define count 0)");
  DtlObjPtr result;
  auto output = captureOutput([&] { result = eval("(set! nosuch (set! count 1))"); });
  EXPECT_EQ(result, DtlObjPtr::nil());
  EXPECT_EQ(output.err, "Lisp Warning: can't set unbound variable: nosuch\n");
  EXPECT_EQ(show("count"), "0");
  EXPECT_EQ(error("(set! x)"), haltMessage("Wrong number of args to setq"));
  EXPECT_EQ(error("(set! 1 2)"), haltMessage("non-symbol to boundp"));
}

TEST_F(EvalTest, LetBindsInWrittenOrderAndRunsItsBody) {
  EXPECT_EQ(show("(let ((a 1) (b 2)) b a)"), "1");
  EXPECT_EQ(show("(let ((a 1) (b 2)) (cons a b))"), "(1 . 2)");
  EXPECT_EQ(show("(let () 1)"), "1");
  EXPECT_EQ(error("(let nil 1)"), haltMessage("car of non-cons"));
  EXPECT_EQ(error("(let ((x)) 1)"), haltMessage("car of non-cons"));
  EXPECT_EQ(error("(let ((x 1)))"), haltMessage("Wrong number of args to let"));
}

TEST_F(EvalTest, LetValuesSeeTheOuterScopeAndRunInOrder) {
  eval("(define a 10)");
  EXPECT_EQ(show("(let ((a 1) (b a)) b)"), "10");
  eval("(define trail nil)");
  eval("(let ((x (set! trail (cons 1 trail))) (y (set! trail (cons 2 trail)))) x)");
  EXPECT_EQ(show("trail"), "(2 1)");
}

TEST_F(EvalTest, ArgumentsAreEvaluatedLastFirst) {
  eval("(define trail nil)");
  eval(
      "(list (set! trail (cons 1 trail)) (set! trail (cons 2 trail)) (set! trail (cons 3 trail)))");
  EXPECT_EQ(show("trail"), "(1 2 3)");
}

TEST_F(EvalTest, ProcedureApplicationChecksArguments) {
  EXPECT_EQ(error("((lambda (x) x))"),
            haltMessage("Wrong number of args for function application"));
  EXPECT_EQ(error("((lambda (1) 1) 2)"),
            haltMessage("Non-symbol in function parameter list for apply"));
  EXPECT_EQ(show("((lambda (x) x) 7)"), "7");
  EXPECT_EQ(show("((lambda (x x) x) 1 2)"), "2");  // a parameter named twice: the later value
}

TEST_F(EvalTest, TheWordNilIsASymbol) {
  EXPECT_EQ(error("((lambda nil 1))"), haltMessage("DtcLength of non-cons"));
  EXPECT_EQ(show("((lambda () 1))"), "1");
}

TEST_F(EvalTest, LambdaNeedsABody) {
  EXPECT_EQ(error("(lambda (x))"), haltMessage("Wrong number of args to lambda"));
  DtlObjPtr procedure = eval("(lambda (x) x)");
  EXPECT_EQ(procedure->tag(), DtlProcedureTag);
  EXPECT_EQ(procedure->procEnv(), root);
  EXPECT_EQ(printed(procedure->procParams()), "(x)");
  EXPECT_EQ(printed(procedure->procBody()), "(x)");
}

TEST_F(EvalTest, ClosuresKeepTheirFrame) {
  eval("(define (adder n) (lambda (x) (cons n x)))");
  eval("(define add1 (adder 1))");
  eval("(define add2 (adder 2))");
  EXPECT_EQ(show("(add1 5)"), "(1 . 5)");
  EXPECT_EQ(show("(add2 5)"), "(2 . 5)");
}

TEST_F(EvalTest, HeadMayBeAnyExpression) {
  EXPECT_EQ(show("((lambda (x) x) 1)"), "1");
  EXPECT_EQ(show("((if t car cdr) '(1 2))"), "1");
}

TEST_F(EvalTest, NonFunctionsCannotBeApplied) {
  EXPECT_EQ(error("(1 2)"), haltMessage("Cannot apply a non-function"));
  EXPECT_EQ(error("(\"f\")"), haltMessage("Cannot apply a non-function"));
}

TEST_F(EvalTest, FunctionObjectsDoNotEvaluateToThemselves) {
  std::string message;
  auto output = captureOutput([&] { message = error("(eval car)"); });
  EXPECT_EQ(message, haltMessage("unknown expression type in eval"));
  EXPECT_EQ(output.err, "unknown expression type in eval: ");
  EXPECT_EQ(output.out, "#<primitive-function car>");
  EXPECT_EQ(printed(eval("car")), "#<primitive-function car>");
}

TEST_F(EvalTest, ImproperArgumentListsHalt) {
  DtlObjPtr form = DtcCons(DtcIntern("list", root), DtcCons(DtlObjPtr(1), DtlObjPtr(2)));
  EXPECT_EQ(initialMessage([&] { DtcEval(form, root); }),
            haltMessage("function arguments are not a list"));
}

TEST_F(EvalTest, UnboundNamesHalt) {
  EXPECT_EQ(error("nosuch"), haltMessage("Unbound symbol nosuch"));
  EXPECT_EQ(error("*unbound*"), haltMessage("Unbound symbol *unbound*"));
}

TEST_F(EvalTest, CondClauses) {
  EXPECT_EQ(eval("(cond (nil 1))"), DtlObjPtr::nil());
  EXPECT_EQ(show("(cond (t 1 2))"), "2");
  EXPECT_EQ(show("(cond (nil 1) (t 3))"), "3");
  EXPECT_EQ(error("(cond)"), haltMessage("No clauses to cond"));
}

TEST_F(EvalTest, OneElementCondClauseRunsTheValueAsForms) {
  EXPECT_EQ(error("(cond (t))"), haltMessage("cdr of non-cons"));
  EXPECT_EQ(show("(cond ((list 1 2)))"), "2");
  EXPECT_EQ(error("(cond (else 1))"), haltMessage("Unbound symbol else"));
}

TEST_F(EvalTest, QuoteCountsItsArguments) {
  EXPECT_EQ(error("(quote)"), haltMessage("Wrong number of args to quote"));
  EXPECT_EQ(error("(quote a b)"), haltMessage("Wrong number of args to quote"));
  EXPECT_EQ(show("'x"), "x");
  EXPECT_EQ(show("'(a \"b\" 1)"), "(a \"b\" 1)");
}

TEST_F(EvalTest, SequenceRunsInOrderAndYieldsTheLast) {
  eval("(define trail nil)");
  EXPECT_EQ(show("(sequence (set! trail (cons 1 trail)) (set! trail (cons 2 trail)) 3)"), "3");
  EXPECT_EQ(show("trail"), "(2 1)");
  EXPECT_EQ(show("(sequence 4)"), "4");
  EXPECT_EQ(error("(sequence)"), haltMessage("Wrong number of args to sequence"));
}

TEST_F(EvalTest, EvalTakesAnOptionalFrame) {
  EXPECT_EQ(show("(eval '(cons 1 2))"), "(1 . 2)");
  EXPECT_EQ(show("(eval '(car '(5)) (the-frame))"), "5");
  eval("(define f (make-frame (the-frame)))");
  eval("(eval '(define local 9) f)");
  EXPECT_EQ(show("(eval 'local f)"), "9");
  EXPECT_EQ(error("local"), haltMessage("Unbound symbol local"));
  EXPECT_EQ(show("(eval 1 2 3)"), "1");
  EXPECT_EQ(error("(eval)"), haltMessage("car of non-cons"));
}

TEST_F(EvalTest, FailuresAreWrappedOncePerLevel) {
  try {
    eval("(car (car nosuch))");
    FAIL() << "no halt";
  } catch (DtException const& e) {
    EXPECT_STREQ(e.message(), "Propagating DtException.");
    EXPECT_STREQ(e.file(), "eval");
    EXPECT_NE(std::string(e.function()).find("DtcEval"), std::string::npos);
    int links = 0;
    for (DtException const* link = &e; link; link = link->previous()) ++links;
    EXPECT_EQ(links, 4);  // three evaluation levels and the halt
    EXPECT_STREQ(e.initialException()->message(), "DtException: KTL Error: Unbound symbol nosuch");
  }
}

TEST_F(EvalTest, ForeignExceptionsAreConverted) {
  DtcInternCompiledC(
      "throw-std",
      [](DtlObjPtr const&, DtlObjPtr const&) -> DtlObjPtr { throw std::runtime_error("boom"); },
      root);
  DtcInternCompiledC(
      "throw-int", [](DtlObjPtr const&, DtlObjPtr const&) -> DtlObjPtr { throw 7; }, root);
  try {
    eval("(throw-std)");
    FAIL() << "no exception";
  } catch (DtException const& e) {
    EXPECT_STREQ(e.message(), "std::exception boom");
  }
  try {
    eval("(throw-int)");
    FAIL() << "no exception";
  } catch (DtTemplatedException<DtUnknownExceptionNumber> const& e) {
    EXPECT_STREQ(e.message(), "Caught Unknown Exception.");
  }
}

TEST_F(EvalTest, CompiledFunctionsGetValuesAndTheCallingFrame) {
  DtcInternCompiledC("record", recordCall, root);
  eval("(define x 5)");
  EXPECT_EQ(show("(record x '(a) \"s\")"), "99");
  EXPECT_EQ(printed(recordedArgs), "(5 (a) \"s\")");
  EXPECT_EQ(recordedEnv, root);
  eval("(define (inner) (record 1))");
  eval("(inner)");
  EXPECT_FALSE(recordedEnv == root);
  EXPECT_EQ(recordedEnv->frameParent(), root);
  recordedArgs = DtlObjPtr();
  recordedEnv = DtlObjPtr();
}

TEST_F(EvalTest, SpecialFormsGetTheirArgumentsAsWritten) {
  DtcInternSpecialForm("raw", recordCall, root);
  eval("(raw (car nosuch) x)");
  EXPECT_EQ(printed(recordedArgs), "((car nosuch) x)");
  recordedArgs = DtlObjPtr();
  recordedEnv = DtlObjPtr();
}

TEST_F(EvalTest, TailCallsThroughIfRunInConstantStack) {
  eval("(define (loop n) (if (= n 0) 'done (loop (- n 1))))");
  EXPECT_EQ(show("(loop 1000000)"), "done");
  // The same through a list walk.
  eval("(define (walk l) (if (null? l) 'done (walk (cdr l))))");
  DtlObjPtr list = DtlObjPtr::nil();
  for (int i = 0; i < 1000000; ++i) list = DtcCons(DtlObjPtr::nil(), list);
  DtcSet(DtcIntern("million", root), list, root);
  list = DtlObjPtr();
  EXPECT_EQ(show("(walk million)"), "done");
}

TEST_F(EvalTest, RunawayRecursionHaltsBeforeTheStackOverflows) {
  eval("(define (deep n) (+ 1 (deep n)))");
  EXPECT_EQ(error("(deep 1)"), haltMessage("Evaluation nested too deep"));
  // Moderate recursion is untouched.
  eval("(define (count n) (if (= n 0) 0 (+ 1 (count (- n 1)))))");
  EXPECT_EQ(show("(count 500)"), "500");
}

TEST_F(EvalTest, RunawayRecursionOnASmallThreadStackHaltsToo) {
  struct Job {
    DtlObjPtr root;
    std::string message;
  } job;
  job.root = root;
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 1024 * 1024);
  pthread_t thread;
  auto body = [](void* data) -> void* {
    auto* work = static_cast<Job*>(data);
    work->message = initialMessage([&] { evalText("(deep 1)", work->root); });
    return nullptr;
  };
  eval("(define (deep n) (+ 1 (deep n)))");
  ASSERT_EQ(pthread_create(&thread, &attributes, body, &job), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  EXPECT_EQ(job.message, haltMessage("Evaluation nested too deep"));
}

TEST_F(EvalTest, AStepLimitBoundsEndlessScripts) {
  eval("(define (forever) (forever))");
  DtlEvalStepLimit = 10000;
  std::string message = error("(forever)");
  std::string fine = printed(eval("(car '(1 2))"));  // each outermost evaluation counts anew
  DtlEvalStepLimit = 0;
  EXPECT_EQ(message, haltMessage("Evaluation step limit reached"));
  EXPECT_EQ(fine, "1");
}

TEST_F(EvalTest, TailCallsThroughCondRunInConstantStack) {
  eval("(define (walk l) (cond ((null? l) 'done) (t (walk (cdr l)))))");
  DtlObjPtr list = DtlObjPtr::nil();
  for (int i = 0; i < 1000000; ++i) list = DtcCons(DtlObjPtr::nil(), list);
  DtcSet(DtcIntern("million", root), list, root);
  list = DtlObjPtr();
  EXPECT_EQ(show("(walk million)"), "done");
}

TEST_F(EvalTest, LocalFramesAreReleasedAfterTheCall) {
  DtlObjPtr held = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  DtcSet(DtcIntern("held", root), held, root);
  ASSERT_EQ(held->refcnt(), 2);
  eval("(define (keep x) (define y x) 'done)");
  EXPECT_EQ(show("(keep held)"), "done");
  EXPECT_EQ(held->refcnt(), 2);  // the call's frame, with its bindings x and y, is gone
}

TEST_F(EvalTest, ClosureReturnedFromACallKeepsItsFrameAlive) {
  DtlObjPtr held = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  DtcSet(DtcIntern("held", root), held, root);
  eval("(define (capture x) (lambda () x))");
  eval("(define getter (capture held))");
  EXPECT_EQ(held->refcnt(), 3);
  EXPECT_EQ(show("(getter)"), "(1)");
  eval("(define getter nil)");
  EXPECT_EQ(held->refcnt(), 2);
}

TEST_F(EvalTest, ReturnedInnerClosureIsFreedWithItsFrame) {
  // The call's frame binds a closure over itself and hands it out; when the caller drops it,
  // frame and closure only hold each other and both go.
  DtlObjPtr held = DtcCons(DtlObjPtr(1), DtlObjPtr::nil());
  DtcSet(DtcIntern("held", root), held, root);
  eval("(define (mk) (define keep held) (define g (lambda () keep)) g)");
  EXPECT_EQ(show("((mk))"), "(1)");
  EXPECT_EQ(held->refcnt(), 2);
  eval("(define made (mk))");
  EXPECT_EQ(held->refcnt(), 3);
  eval("(define made nil)");
  EXPECT_EQ(held->refcnt(), 2);
}

TEST_F(EvalTest, TracesWhenDebugging) {
  DtLispDebugOn = 1;
  DtNotifyLevel = 2;
  auto output = captureOutput([&] { eval("'x"); });
  EXPECT_EQ(output.out, "EVALing (quote x)\nEVALing quote\nQUOTE(x)\n");
  output = captureOutput([&] { eval("(setq x 1)"); });
  EXPECT_EQ(output.out, "EVALing (setq x 1)\nEVALing setq\nSETQ(x 1)\nEVALing 1\n");
  output = captureOutput([&] { eval("(set! x 2)"); });
  EXPECT_EQ(output.out, "EVALing (set! x 2)\nEVALing set!\n(setq-variable x\nEVALing 2\n");
  output = captureOutput([&] { eval("(cond (t 1))"); });
  EXPECT_EQ(output.out,
            "EVALing (cond (t 1))\nEVALing cond\nEVALing t\nclause (t 1)\nPredicate t\n"
            "Predicate result t\nEVALing 1\n");
  DtNotifyLevel = 1;  // tracing needs a level above 1
  output = captureOutput([&] { eval("'x"); });
  EXPECT_EQ(output.out, "");
}
