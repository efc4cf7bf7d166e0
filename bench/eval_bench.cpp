// Speed of the KTL evaluator on procedure calls, reported as calls per second: a doubly recursive
// fib and a tail-recursive countdown of a million steps. Two C++ baselines do the same work so
// that the evaluator's speed can be quoted as a ratio: fib as a plain recursive C++ function,
// and the countdown as a loop that calls a std::function on every step.
#include <benchmark/benchmark.h>

#include <functional>
#include <string>

#include <ktl/ktl.h>

#include "support/language.h"

namespace {

using KORRti::DtlObjPtr;

const char* const kFibDefinition =
    "(define (fib n) (if (< n 2) n (+ (fib (- n 1)) (fib (- n 2)))))";
const char* const kLoopDefinition = "(define (loop n) (if (= n 0) 0 (loop (- n 1))))";

const int kFibArgument = 25;
const int kFibResult = 75025;
// Calls of fib that (fib 25) makes: fib(n) makes 2 * fib(n + 1) - 1 calls.
const int64_t kFibCalls = 242785;

const int kLoopArgument = 1000000;
// Calls of loop that (loop 1000000) makes: one per value of n from 1000000 down to 0.
const int64_t kLoopCalls = 1000001;

// The first form of text, read in frame.
DtlObjPtr readForm(const std::string& text, const DtlObjPtr& frame) {
  KORRti::DtlStringInputStream stream(text.c_str());
  return KORRti::DtcRead(&stream, frame);
}

// Evaluates (name argument) in a language frame that holds definition, once per iteration,
// and reports the procedure calls it makes as a rate.
void runKtl(benchmark::State& state, const char* definition, const char* name, int argument,
            int expected, int64_t callsPerRun) {
  using namespace KORRti;
  int level = DtNotifyLevel;
  DtNotifyLevel = 0;
  DtlObjPtr frame = ktltest::makeLanguageFrame();
  {
    ktltest::evalText(definition, frame);
    DtlObjPtr call =
        readForm("(" + std::string(name) + " " + std::to_string(argument) + ")", frame);
    DtlObjPtr result = DtcEval(call, frame);
    if (result.isNull() || result->tag() != DtlFixnumTag || result->fixnum() != expected) {
      state.SkipWithError("wrong result");
    } else {
      for (auto _ : state) {
        result = DtcEval(call, frame);
        benchmark::DoNotOptimize(result.get());
      }
    }
    // Every handle goes before the root frame does.
  }
  ktltest::destroyLanguageFrame(frame);
  DtNotifyLevel = level;
  state.counters["calls"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(callsPerRun),
                         benchmark::Counter::kIsRate);
}

// (fib 25) in KTL.
void BM_KtlFib(benchmark::State& state) {
  runKtl(state, kFibDefinition, "fib", kFibArgument, kFibResult, kFibCalls);
}
BENCHMARK(BM_KtlFib)->Unit(benchmark::kMillisecond);

// (loop 1000000) in KTL: a million tail calls.
void BM_KtlLoop(benchmark::State& state) {
  runKtl(state, kLoopDefinition, "loop", kLoopArgument, 0, kLoopCalls);
}
BENCHMARK(BM_KtlLoop)->Unit(benchmark::kMillisecond);

// Baseline: the same fib as a plain recursive C++ function.
__attribute__((noinline)) int fib(int n) {
  return n < 2 ? n : fib(n - 1) + fib(n - 2);
}

void BM_CppFib(benchmark::State& state) {
  for (auto _ : state) {
    int n = kFibArgument;
    benchmark::DoNotOptimize(n);  // the compiler must not know the argument
    int result = fib(n);
    benchmark::DoNotOptimize(result);
    if (result != kFibResult) state.SkipWithError("wrong result");
  }
  state.counters["calls"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(kFibCalls),
                         benchmark::Counter::kIsRate);
}
BENCHMARK(BM_CppFib)->Unit(benchmark::kMillisecond);

// Baseline: the countdown as a C++ loop that makes one call through a std::function per step,
// as many as loop makes in KTL, each testing and decrementing a volatile counter, so that
// neither the calls nor the loop can be folded away.
void BM_CppLoopFunction(benchmark::State& state) {
  std::function<bool(volatile int&)> step = [](volatile int& n) {
    if (n == 0) return false;
    n = n - 1;
    return true;
  };
  benchmark::DoNotOptimize(step);
  for (auto _ : state) {
    volatile int n = kLoopArgument;
    int64_t calls = 1;
    while (step(n)) ++calls;
    benchmark::DoNotOptimize(calls);
    if (calls != kLoopCalls) state.SkipWithError("wrong number of steps");
  }
  state.counters["calls"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(kLoopCalls),
                         benchmark::Counter::kIsRate);
}
BENCHMARK(BM_CppLoopFunction)->Unit(benchmark::kMillisecond);

}  // namespace
