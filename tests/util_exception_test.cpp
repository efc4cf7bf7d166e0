// DtException and DtTemplatedException<N>: texts, chains of causes and the distinct kinds.

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

#include <util/util.h>

using KORRti::DtCorruptedStateNumber;
using KORRti::DtException;
using KORRti::DtFilename;
using KORRti::DtInvalidInputNumber;
using KORRti::DtTemplatedException;
using KORRti::DtUnknownExceptionNumber;

namespace {

typedef DtTemplatedException<DtInvalidInputNumber> InvalidInput;
typedef DtTemplatedException<DtUnknownExceptionNumber> UnknownException;
typedef DtTemplatedException<DtCorruptedStateNumber> CorruptedState;

const char* const kFunction = "int KORRti::DtFedReader::readFed(const char*)";

TEST(DtExceptionTest, NumberConstants) {
  EXPECT_EQ(DtInvalidInputNumber, -1);
  EXPECT_EQ(DtUnknownExceptionNumber, -2);
  EXPECT_EQ(DtCorruptedStateNumber, -3);
  static_assert(std::is_same<decltype(DtInvalidInputNumber), const int>::value, "const int");
  static_assert(std::is_same<decltype(DtUnknownExceptionNumber), const int>::value, "const int");
  static_assert(std::is_same<decltype(DtCorruptedStateNumber), const int>::value, "const int");
}

TEST(DtExceptionTest, LibraryAliasesUseTheConstants) {
  static_assert(std::is_same<KORRti::DtInvalidInput, InvalidInput>::value, "DtInvalidInput");
  static_assert(std::is_same<KORRti::DtCorruptedState, CorruptedState>::value, "DtCorruptedState");
  try {
    throw KORRti::DtInvalidInput("DtInvalidInput: Unable to open:f.xml", "f", "x.cpp", 1, nullptr);
  } catch (const InvalidInput& e) {
    EXPECT_STREQ(e.message(), "DtInvalidInput: Unable to open:f.xml");
    return;
  } catch (...) {
  }
  FAIL() << "DtInvalidInput not caught as DtTemplatedException<-1>";
}

TEST(DtExceptionTest, MessageAndWhatAreTheMessageAsPassed) {
  DtException e("DtException: KTL Error: Unbound symbol x", kFunction, "fedReader.cpp", 42,
                nullptr);
  EXPECT_STREQ(e.message(), "DtException: KTL Error: Unbound symbol x");
  EXPECT_STREQ(e.what(), "DtException: KTL Error: Unbound symbol x");
}

TEST(DtExceptionTest, TemplatedMessageIsKeptToTheCharacter) {
  InvalidInput e("DtInvalidInput: Unable to open:f.xml", kFunction, "fedReader.cpp", 7, nullptr);
  EXPECT_STREQ(e.message(), "DtInvalidInput: Unable to open:f.xml");
  EXPECT_STREQ(e.what(), "DtInvalidInput: Unable to open:f.xml");
}

TEST(DtExceptionTest, WhereIsFunctionFileAndLine) {
  DtException e("DtException: boom", kFunction, "fedReader.cpp", 42, nullptr);
  EXPECT_STREQ(e.where(), "int KORRti::DtFedReader::readFed(const char*) (fedReader.cpp:42)");
}

TEST(DtExceptionTest, WhereWithStrippedSourceFile) {
  DtFilename file = DtFilename::stripPath(DtFilename("/src/libsrc/ktl/eval.cpp"));
  DtException e("DtException: x", "DtcEval", file.c_str(), 1234, nullptr);
  EXPECT_STREQ(e.where(), "DtcEval (eval.cpp:1234)");
}

TEST(DtExceptionTest, TextsAreNeverNull) {
  DtException e(nullptr, nullptr, nullptr, 0, nullptr);
  ASSERT_NE(e.message(), nullptr);
  ASSERT_NE(e.what(), nullptr);
  ASSERT_NE(e.where(), nullptr);
  EXPECT_STREQ(e.message(), "");
  EXPECT_STREQ(e.what(), "");
}

TEST(DtExceptionTest, SingleExceptionIsItsOwnChain) {
  DtException e("DtException: alone", kFunction, "a.cpp", 1, nullptr);
  EXPECT_EQ(e.lastException(), &e);
  EXPECT_EQ(e.initialException(), &e);
}

TEST(DtExceptionTest, ChainLastIsItselfInitialIsFirstCause) {
  DtException first("DtException: first", "f1", "one.cpp", 1, nullptr);
  DtException second("Propagating DtException.", "f2", "two.cpp", 2, &first);
  DtException third("Propagating DtException.", "f3", "three.cpp", 3, &second);

  EXPECT_EQ(third.lastException(), &third);
  ASSERT_NE(third.initialException(), nullptr);
  EXPECT_NE(third.initialException(), &third);
  EXPECT_STREQ(third.initialException()->message(), "DtException: first");
  EXPECT_STREQ(third.initialException()->where(), "f1 (one.cpp:1)");
  EXPECT_STREQ(third.message(), "Propagating DtException.");

  EXPECT_EQ(second.lastException(), &second);
  EXPECT_STREQ(second.initialException()->message(), "DtException: first");
  EXPECT_EQ(first.initialException(), &first);
}

TEST(DtExceptionTest, ChainOutlivesTheCause) {
  std::unique_ptr<DtException> outer;
  {
    InvalidInput cause("DtInvalidInput: Unable to open:f.xml", "open", "io.cpp", 9, nullptr);
    outer.reset(new DtException("Propagating DtException.", "load", "load.cpp", 10, &cause));
  }
  EXPECT_STREQ(outer->initialException()->message(), "DtInvalidInput: Unable to open:f.xml");
  EXPECT_STREQ(outer->initialException()->where(), "open (io.cpp:9)");
}

TEST(DtExceptionTest, ThrownChainKeepsCausesAfterUnwinding) {
  try {
    try {
      throw CorruptedState("DtCorruptedState: Unable to Parse X", "parse", "p.cpp", 5, nullptr);
    } catch (const DtException& inner) {
      throw DtException("Propagating DtException.", "DtcRead", "read.cpp", 77, &inner);
    }
  } catch (const DtException& e) {
    EXPECT_STREQ(e.message(), "Propagating DtException.");
    EXPECT_EQ(e.lastException(), &e);
    EXPECT_STREQ(e.initialException()->message(), "DtCorruptedState: Unable to Parse X");
    return;
  }
  FAIL() << "nothing was caught";
}

TEST(DtExceptionTest, CopyKeepsTextsAndChain) {
  DtException cause("DtException: cause", "c", "c.cpp", 3, nullptr);
  DtException e("DtException: effect", "e", "e.cpp", 4, &cause);
  DtException copy(e);
  EXPECT_STREQ(copy.message(), "DtException: effect");
  EXPECT_STREQ(copy.where(), "e (e.cpp:4)");
  EXPECT_EQ(copy.lastException(), &copy);
  EXPECT_STREQ(copy.initialException()->message(), "DtException: cause");

  DtException assigned("DtException: other", "o", "o.cpp", 1, nullptr);
  assigned = e;
  EXPECT_STREQ(assigned.message(), "DtException: effect");
  EXPECT_EQ(assigned.lastException(), &assigned);
  EXPECT_STREQ(assigned.initialException()->message(), "DtException: cause");
}

TEST(DtExceptionTest, LongChainIsReleasedWithoutTrouble) {
  std::unique_ptr<DtException> head(new DtException("DtException: root", "r", "r.cpp", 1, nullptr));
  for (int i = 0; i < 20000; ++i) {
    head.reset(new DtException("Propagating DtException.", "p", "p.cpp", 2, head.get()));
  }
  EXPECT_STREQ(head->initialException()->message(), "DtException: root");
  head.reset();
  EXPECT_FALSE(head);
}

TEST(DtExceptionTest, StreamOperatorWritesMessage) {
  DtException e("DtException: KTL Error: Unbound symbol x", kFunction, "eval.cpp", 12, nullptr);
  std::ostringstream out;
  out << e;
  EXPECT_NE(out.str().find("DtException: KTL Error: Unbound symbol x"), std::string::npos)
      << out.str();
}

TEST(DtExceptionTest, StreamOperatorWorksThroughBaseReference) {
  InvalidInput e("DtInvalidInput: Unable to open:f.xml", kFunction, "fedReader.cpp", 3, nullptr);
  const DtException& base = e;
  std::ostringstream out;
  out << base;
  EXPECT_NE(out.str().find("DtInvalidInput: Unable to open:f.xml"), std::string::npos) << out.str();
}

TEST(DtExceptionTest, StreamOperatorShowsCauses) {
  DtException cause("DtException: the first cause", "c", "c.cpp", 1, nullptr);
  DtException e("Propagating DtException.", "e", "e.cpp", 2, &cause);
  std::ostringstream out;
  out << e;
  EXPECT_NE(out.str().find("Propagating DtException."), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("DtException: the first cause"), std::string::npos) << out.str();
}

TEST(DtExceptionTest, TemplatedKindsAreDistinctTypes) {
  static_assert(!std::is_same<InvalidInput, CorruptedState>::value, "distinct");
  static_assert(!std::is_same<InvalidInput, UnknownException>::value, "distinct");
  static_assert(!std::is_same<UnknownException, CorruptedState>::value, "distinct");
  static_assert(std::is_base_of<DtException, InvalidInput>::value, "derives");
  static_assert(std::is_base_of<DtException, UnknownException>::value, "derives");
  static_assert(std::is_base_of<DtException, CorruptedState>::value, "derives");
  static_assert(std::has_virtual_destructor<DtException>::value, "polymorphic");
  static_assert(std::is_polymorphic<InvalidInput>::value, "polymorphic");
  EXPECT_NE(typeid(InvalidInput), typeid(CorruptedState));
  EXPECT_NE(typeid(InvalidInput), typeid(UnknownException));
  EXPECT_NE(typeid(UnknownException), typeid(CorruptedState));
  EXPECT_NE(typeid(InvalidInput), typeid(DtException));
}

TEST(DtExceptionTest, TemplatedCaughtAsDtException) {
  try {
    throw UnknownException("Caught Unknown Exception.", "DtcEval", "eval.cpp", 99, nullptr);
  } catch (const DtException& e) {
    EXPECT_STREQ(e.message(), "Caught Unknown Exception.");
    EXPECT_STREQ(e.where(), "DtcEval (eval.cpp:99)");
    EXPECT_NE(dynamic_cast<const UnknownException*>(&e), nullptr);
    EXPECT_EQ(dynamic_cast<const InvalidInput*>(&e), nullptr);
    return;
  }
  FAIL() << "not caught as DtException";
}

// Returns which handler caught the exception thrown by fn: 1 invalid input, 3 corrupted
// state, 0 the base.
template <typename Fn>
int caughtBy(Fn fn) {
  try {
    fn();
  } catch (const InvalidInput&) {
    return 1;
  } catch (const CorruptedState&) {
    return 3;
  } catch (const DtException&) {
    return 0;
  }
  return -100;
}

TEST(DtExceptionTest, HandlersSelectByKind) {
  EXPECT_EQ(caughtBy([] { throw InvalidInput("DtInvalidInput: a", "f", "x.cpp", 1, nullptr); }), 1);
  EXPECT_EQ(caughtBy([] { throw CorruptedState("DtCorruptedState: b", "f", "x.cpp", 2, nullptr); }),
            3);
  EXPECT_EQ(caughtBy([] {
              throw UnknownException("Caught Unknown Exception.", "f", "x.cpp", 3, nullptr);
            }),
            0);
  EXPECT_EQ(caughtBy([] { throw DtException("DtException: c", "f", "x.cpp", 4, nullptr); }), 0);
}

TEST(DtExceptionTest, TemplatedForwardsAllArgumentsIncludingCause) {
  InvalidInput cause("DtInvalidInput: Unable to open:a.fed", "open", "a.cpp", 1, nullptr);
  CorruptedState e("DtCorruptedState: Unable to Parse Y", "parse", "b.cpp", 2, &cause);
  EXPECT_STREQ(e.message(), "DtCorruptedState: Unable to Parse Y");
  EXPECT_STREQ(e.where(), "parse (b.cpp:2)");
  EXPECT_EQ(e.lastException(), &e);
  EXPECT_STREQ(e.initialException()->message(), "DtInvalidInput: Unable to open:a.fed");
  EXPECT_STREQ(e.initialException()->where(), "open (a.cpp:1)");
}

TEST(DtExceptionTest, VirtualsDispatchThroughBase) {
  CorruptedState e("DtCorruptedState: Unable to Parse Z", "fn", "z.cpp", 8, nullptr);
  const DtException& base = e;
  EXPECT_STREQ(base.message(), "DtCorruptedState: Unable to Parse Z");
  EXPECT_STREQ(base.what(), "DtCorruptedState: Unable to Parse Z");
  EXPECT_STREQ(base.where(), "fn (z.cpp:8)");
  EXPECT_EQ(base.lastException(), &base);
  EXPECT_EQ(base.initialException(), &base);
}

TEST(DtExceptionTest, SourceNameDropsDirectoriesAndExtension) {
  EXPECT_EQ(KORRti::DtSourceName("/work/libsrc/ktl/fedReader.cpp"), "fedReader");
  EXPECT_EQ(KORRti::DtSourceName("eval.cpp"), "eval");
  EXPECT_EQ(KORRti::DtSourceName("noext"), "noext");
}

}  // namespace
