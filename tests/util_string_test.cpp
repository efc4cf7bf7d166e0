// DtString: construction, value semantics, searching, snipping, conversions and ordering.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <util/util.h>

using KORRti::DtFilename;
using KORRti::DtReplaceAllSubstrings;
using KORRti::DtString;

namespace {

// ---------------------------------------------------------------------------------------------
// Construction and text access

TEST(DtStringTest, DefaultCStrIsEmptyTextNotNull) {
  DtString s;
  ASSERT_NE(s.c_str(), nullptr);
  EXPECT_STREQ(s.c_str(), "");
  ASSERT_NE(static_cast<const char*>(s), nullptr);
  EXPECT_STREQ(static_cast<const char*>(s), "");
  ASSERT_NE(s.string(), nullptr);
  EXPECT_STREQ(s.string(), "");
  EXPECT_TRUE(s.isEmpty());
  EXPECT_EQ(s.size(), 0);
}

TEST(DtStringTest, NullTextGivesEmptyString) {
  DtString s(static_cast<const char*>(nullptr));
  ASSERT_NE(s.c_str(), nullptr);
  EXPECT_STREQ(s.c_str(), "");
  DtString t("x");
  t = static_cast<const char*>(nullptr);
  ASSERT_NE(t.c_str(), nullptr);
  EXPECT_STREQ(t.c_str(), "");
}

TEST(DtStringTest, ConstructFromTextCopiesIt) {
  char buffer[] = "ObjectRoot";
  DtString s(buffer);
  buffer[0] = 'X';
  EXPECT_STREQ(s.c_str(), "ObjectRoot");
  EXPECT_EQ(s.size(), 10);
  EXPECT_FALSE(s.isEmpty());
}

TEST(DtStringTest, CopyConstructorIsIndependent) {
  DtString a("alpha");
  DtString b(a);
  EXPECT_STREQ(b.c_str(), "alpha");
  b += "beta";
  EXPECT_STREQ(a.c_str(), "alpha");
  EXPECT_STREQ(b.c_str(), "alphabeta");
}

TEST(DtStringTest, ConstructFromStdString) {
  std::string text("from std");
  DtString s(text);
  EXPECT_STREQ(s.c_str(), "from std");
  text[0] = 'X';
  EXPECT_STREQ(s.c_str(), "from std");
}

TEST(DtStringTest, NumberConstructorsGiveDecimalText) {
  EXPECT_STREQ(DtString(0).c_str(), "0");
  EXPECT_STREQ(DtString(42).c_str(), "42");
  EXPECT_STREQ(DtString(-17).c_str(), "-17");
  EXPECT_STREQ(DtString(2147483647).c_str(), "2147483647");
  EXPECT_STREQ(DtString(4000000000u).c_str(), "4000000000");
  EXPECT_STREQ(DtString(0u).c_str(), "0");
  EXPECT_STREQ(DtString(18446744073709551615ul).c_str(), "18446744073709551615");
  EXPECT_STREQ(DtString(1.5).c_str(), "1.5");
  EXPECT_STREQ(DtString(-2.25).c_str(), "-2.25");
  EXPECT_STREQ(DtString(3.0).c_str(), "3");
  EXPECT_STREQ(DtString(0.0).c_str(), "0");
  EXPECT_STREQ(DtString(0.1).c_str(), "0.1");
}

TEST(DtStringTest, DoubleTextReadsBackToTheSameValue) {
  for (double value :
       {1.0 / 3.0, 2.0 / 3.0, 3.141592653589793, -1e-300, 6.02214076e23, 0.1 + 0.2}) {
    DtString text(value);
    bool ok = false;
    EXPECT_EQ(text.toDouble(&ok), value) << text;
    EXPECT_TRUE(ok) << text;
  }
}

TEST(DtStringTest, AssignmentReplacesText) {
  DtString s("old");
  s = "new text";
  EXPECT_STREQ(s.c_str(), "new text");
  DtString other("other");
  s = other;
  EXPECT_STREQ(s.c_str(), "other");
  other = "changed";
  EXPECT_STREQ(s.c_str(), "other");
  s = s;  // self-assignment keeps the text
  EXPECT_STREQ(s.c_str(), "other");
}

TEST(DtStringTest, AppendOperators) {
  DtString s("Object");
  s += "Root";
  EXPECT_STREQ(s.c_str(), "ObjectRoot");
  s += DtString(".HLA");
  EXPECT_STREQ(s.c_str(), "ObjectRoot.HLA");
  s += static_cast<const char*>(nullptr);
  EXPECT_STREQ(s.c_str(), "ObjectRoot.HLA");
  s += "";
  EXPECT_STREQ(s.c_str(), "ObjectRoot.HLA");
  DtString self("ab");
  self += self;
  EXPECT_STREQ(self.c_str(), "abab");
}

TEST(DtStringTest, TextAccessorsAgree) {
  DtString s("some text");
  EXPECT_STREQ(s.c_str(), "some text");
  EXPECT_STREQ(s.string(), "some text");
  EXPECT_STREQ(static_cast<const char*>(s), "some text");
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "[%s]", s.string());
  EXPECT_STREQ(buffer, "[some text]");
  EXPECT_EQ(std::strlen(s), 9u);  // converts implicitly for const char* parameters
}

TEST(DtStringTest, IndexOperatorGivesWritableReference) {
  DtString s("hla");
  EXPECT_EQ(s[0], 'h');
  EXPECT_EQ(s[2], 'a');
  s[0] = 'H';
  s[1] = 'L';
  s[2] = 'A';
  EXPECT_STREQ(s.c_str(), "HLA");
}

TEST(DtStringTest, SizeIsSigned) {
  static_assert(std::is_signed<decltype(DtString().size())>::value, "size() must be signed");
  EXPECT_EQ(DtString("abc").size(), 3);
  EXPECT_EQ(DtString("").size(), 0);
}

TEST(DtStringTest, IsEmptyTestsFirstCharacter) {
  EXPECT_TRUE(DtString("").isEmpty());
  EXPECT_FALSE(DtString(" ").isEmpty());
  DtString s("x");
  s[0] = '\0';  // a terminator in front makes the text empty
  EXPECT_TRUE(s.isEmpty());
  EXPECT_STREQ(s.c_str(), "");
}

TEST(DtStringTest, NullStringIsSharedAndEmpty) {
  const DtString& a = DtString::nullString();
  const DtString& b = DtString::nullString();
  EXPECT_EQ(&a, &b);
  EXPECT_TRUE(a.isEmpty());
  EXPECT_STREQ(a.c_str(), "");
}

TEST(DtStringTest, ToLowerInPlace) {
  DtString s("ObjectRoot.HLAprivilegeToDeleteObject 42_X");
  s.toLower();
  EXPECT_STREQ(s.c_str(), "objectroot.hlaprivilegetodeleteobject 42_x");
  DtString empty;
  empty.toLower();
  EXPECT_STREQ(empty.c_str(), "");
}

// ---------------------------------------------------------------------------------------------
// Comparison

TEST(DtStringTest, CaseCompareObjectRoot) {
  DtString s("ObjectRoot");
  EXPECT_TRUE(s.caseCompare("objectroot"));
  EXPECT_TRUE(s.caseCompare("OBJECTROOT"));
  EXPECT_TRUE(s.caseCompare("ObjectRoot"));
  EXPECT_TRUE(s.caseCompare(DtString("objectROOT")));
  EXPECT_FALSE(s.caseCompare("objectroots"));
  EXPECT_FALSE(s.caseCompare("object"));
  EXPECT_FALSE(s.caseCompare(DtString("interactionroot")));
  EXPECT_FALSE(s.caseCompare(static_cast<const char*>(nullptr)));
  EXPECT_TRUE(DtString().caseCompare(""));
}

TEST(DtStringTest, EqualityIsCaseSensitive) {
  DtString s("Fed");
  EXPECT_TRUE(s == "Fed");
  EXPECT_FALSE(s == "fed");
  EXPECT_TRUE(s != "fed");
  EXPECT_FALSE(s != "Fed");
  EXPECT_TRUE(s == DtString("Fed"));
  EXPECT_FALSE(s == DtString("FED"));
  EXPECT_TRUE(s != DtString("FED"));
  EXPECT_FALSE(s != DtString("Fed"));
  EXPECT_TRUE("Fed" == s);
  EXPECT_TRUE("fed" != s);
  EXPECT_FALSE(s == "Fe");
  EXPECT_FALSE(s == "Feds");
  EXPECT_TRUE(DtString() == "");
}

TEST(DtStringTest, LessThanOrdersBytes) {
  EXPECT_TRUE(DtString("a") < DtString("b"));
  EXPECT_FALSE(DtString("b") < DtString("a"));
  EXPECT_TRUE(DtString("A") < DtString("a"));  // case-sensitive: upper case bytes come first
  EXPECT_TRUE(DtString("ab") < DtString("abc"));
  EXPECT_FALSE(DtString("abc") < DtString("ab"));
  EXPECT_TRUE(DtString("") < DtString("a"));
  EXPECT_FALSE(DtString("same") < DtString("same"));
}

TEST(DtStringTest, LessThanIsStrictWeakOrder) {
  std::vector<DtString> values = {"",  "a",  "A", "ab",   "abc",        "b",
                                  "B", "Z",  "z", "\x7f", "\xc3\xa9",   "\xff",
                                  " ", "10", "9", "a b",  "ObjectRoot", "objectroot"};
  for (const DtString& a : values) {
    EXPECT_FALSE(a < a) << a;
    for (const DtString& b : values) {
      if (a < b) {
        EXPECT_FALSE(b < a) << a << " / " << b;
      }
      // Incomparable means equal: the order is total on distinct texts.
      EXPECT_EQ(!(a < b) && !(b < a), a == b) << a << " / " << b;
      for (const DtString& c : values) {
        if (a < b && b < c) {
          EXPECT_TRUE(a < c) << a << " / " << b << " / " << c;
        }
      }
    }
  }
}

TEST(DtStringTest, KeysOfStdMapAndSet) {
  std::map<DtString, int> map;
  map["ObjectRoot"] = 1;
  map["objectroot"] = 2;
  map["InteractionRoot"] = 3;
  map[DtString("ObjectRoot")] += 10;
  ASSERT_EQ(map.size(), 3u);
  EXPECT_EQ(map["ObjectRoot"], 11);
  EXPECT_EQ(map["objectroot"], 2);
  EXPECT_EQ(map.count("Missing"), 0u);
  EXPECT_EQ(map.find(DtString("InteractionRoot"))->second, 3);

  std::set<DtString> set = {"gamma", "alpha", "beta", "alpha", "Beta"};
  ASSERT_EQ(set.size(), 4u);
  std::vector<std::string> order;
  for (const DtString& s : set) order.push_back(s.c_str());
  EXPECT_EQ(order, (std::vector<std::string>{"Beta", "alpha", "beta", "gamma"}));
  EXPECT_TRUE(set.count("beta"));
  EXPECT_FALSE(set.count("delta"));
}

// ---------------------------------------------------------------------------------------------
// Concatenation and output

TEST(DtStringTest, PlusOperators) {
  DtString a("Object");
  DtString b = a + "Root";
  EXPECT_STREQ(b.c_str(), "ObjectRoot");
  EXPECT_STREQ(a.c_str(), "Object");
  DtString c = "HLA" + a;
  EXPECT_STREQ(c.c_str(), "HLAObject");
  DtString d = a + DtString(".Class");
  EXPECT_STREQ(d.c_str(), "Object.Class");
  DtString e = DtString() + DtString();
  EXPECT_STREQ(e.c_str(), "");
  EXPECT_STREQ((a + "").c_str(), "Object");
}

TEST(DtStringTest, StreamOperatorWritesText) {
  std::ostringstream out;
  out << DtString("alpha") << '|' << DtString() << '|' << DtString(7);
  EXPECT_EQ(out.str(), "alpha||7");
}

// ---------------------------------------------------------------------------------------------
// Searching

TEST(DtStringTest, FindStringWholeTextIsZero) {
  DtString s("HLAobjectRoot");
  EXPECT_EQ(s.findString(DtString("HLAobjectRoot")), 0);
  EXPECT_EQ(s.findString("HLAobjectRoot"), 0);
}

TEST(DtStringTest, FindStringMissingIsNegative) {
  DtString s("HLAobjectRoot");
  EXPECT_LT(s.findString("interaction"), 0);
  EXPECT_LT(s.findString("HLAobjectRootX"), 0);
  EXPECT_LT(s.findString("hla"), 0);  // case-sensitive
  EXPECT_LT(DtString().findString("x"), 0);
}

TEST(DtStringTest, FindStringBeginsWithAndContains) {
  DtString s("HLAobjectRoot.HLAmanager");
  EXPECT_EQ(s.findString("HLA"), 0);  // begins with
  EXPECT_EQ(s.findString("object"), 3);
  EXPECT_GE(s.findString("manager"), 0);  // contains
  EXPECT_NE(s.findString("manager"), 0);  // ... but does not begin with it
  EXPECT_EQ(s.findString(".HLA"), 13);    // first occurrence
  EXPECT_EQ(s.findString("Root.HLAm"), 9);
}

// ---------------------------------------------------------------------------------------------
// Snipping and chomping

TEST(DtStringTest, SnipFrontThroughFirstOccurrence) {
  DtString s("a.b.c");
  s.snipFront('.', false);
  EXPECT_STREQ(s.c_str(), "b.c");
}

TEST(DtStringTest, SnipFrontGreedyThroughLastOccurrence) {
  DtString s("a.b.c");
  s.snipFront('.', true);
  EXPECT_STREQ(s.c_str(), "c");
}

TEST(DtStringTest, SnipFrontWithoutOccurrenceKeepsText) {
  DtString s("abc");
  s.snipFront('.', false);
  EXPECT_STREQ(s.c_str(), "abc");
  s.snipFront('.', true);
  EXPECT_STREQ(s.c_str(), "abc");
  DtString empty;
  empty.snipFront('.', true);
  EXPECT_STREQ(empty.c_str(), "");
}

TEST(DtStringTest, SnipFrontAtEdges) {
  DtString s(".abc");
  s.snipFront('.', false);
  EXPECT_STREQ(s.c_str(), "abc");
  DtString t("abc.");
  t.snipFront('.', false);
  EXPECT_STREQ(t.c_str(), "");
}

TEST(DtStringTest, SnipBackFromLastOccurrence) {
  DtString s("a.b.c");
  s.snipBack('.', false);
  EXPECT_STREQ(s.c_str(), "a.b");
}

TEST(DtStringTest, SnipBackGreedyFromFirstOccurrence) {
  DtString s("a.b.c");
  s.snipBack('.', true);
  EXPECT_STREQ(s.c_str(), "a");
}

TEST(DtStringTest, SnipBackGreedyOfOneWordLeavesIt) {
  DtString s("one");
  s.snipBack(' ', true);
  EXPECT_STREQ(s.c_str(), "one");
}

TEST(DtStringTest, SnipBackWithoutOccurrenceKeepsText) {
  DtString s("abc");
  s.snipBack('.', false);
  EXPECT_STREQ(s.c_str(), "abc");
  DtString empty;
  empty.snipBack('.', false);
  EXPECT_STREQ(empty.c_str(), "");
}

TEST(DtStringTest, SnipBackAtEdges) {
  DtString s("abc.");
  s.snipBack('.', false);
  EXPECT_STREQ(s.c_str(), "abc");
  DtString t(".abc");
  t.snipBack('.', true);
  EXPECT_STREQ(t.c_str(), "");
}

// Splits a white-space separated list the way the XML readers do.
std::vector<std::string> splitWords(const DtString& text) {
  std::vector<std::string> words;
  DtString rest(text);
  for (;;) {
    while (!rest.isEmpty() && rest[0] == ' ') rest.snipFront(' ', false);
    if (rest.isEmpty()) break;
    DtString word(rest);
    word.snipBack(' ', true);
    words.push_back(word.c_str());
    if (rest.findString(" ") < 0) break;  // that was the last word
    rest.snipFront(' ', false);
  }
  return words;
}

TEST(DtStringTest, SnipSplitsWhiteSpaceSeparatedList) {
  EXPECT_EQ(splitWords("   alpha  beta gamma"),
            (std::vector<std::string>{"alpha", "beta", "gamma"}));
  EXPECT_EQ(splitWords("HLAreliable HLAbestEffort "),
            (std::vector<std::string>{"HLAreliable", "HLAbestEffort"}));
  EXPECT_EQ(splitWords("one"), (std::vector<std::string>{"one"}));
  EXPECT_TRUE(splitWords("    ").empty());
  EXPECT_TRUE(splitWords("").empty());
}

TEST(DtStringTest, SnipFrontGreedyTakesLocationOfNamespacePair) {
  DtString pair("http://standards.ieee.org/IEEE1516-2010 http://example.org/IEEE1516-DIF-2010.xsd");
  pair.snipFront(' ', true);
  EXPECT_STREQ(pair.c_str(), "http://example.org/IEEE1516-DIF-2010.xsd");
}

TEST(DtStringTest, ChompFrontRemovesLeadingWhiteSpace) {
  DtString s(" \t\n\r value \t ");
  s.chompFront();
  EXPECT_STREQ(s.c_str(), "value \t ");
  DtString none("value");
  none.chompFront();
  EXPECT_STREQ(none.c_str(), "value");
  DtString blank("  \t\n ");
  blank.chompFront();
  EXPECT_STREQ(blank.c_str(), "");
}

TEST(DtStringTest, ChompBackRemovesTrailingWhiteSpace) {
  DtString s(" \t value \n\r\t ");
  s.chompBack();
  EXPECT_STREQ(s.c_str(), " \t value");
  DtString none("value");
  none.chompBack();
  EXPECT_STREQ(none.c_str(), "value");
  DtString blank(" \n\t ");
  blank.chompBack();
  EXPECT_STREQ(blank.c_str(), "");
  DtString inner("a  b");
  inner.chompFront();
  inner.chompBack();
  EXPECT_STREQ(inner.c_str(), "a  b");
}

// ---------------------------------------------------------------------------------------------
// Numeric and boolean conversions

TEST(DtStringTest, ToDoubleReadsNumbers) {
  bool ok = false;
  EXPECT_DOUBLE_EQ(DtString("3.25").toDouble(&ok), 3.25);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_DOUBLE_EQ(DtString("-0.5").toDouble(&ok), -0.5);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_DOUBLE_EQ(DtString("1e3").toDouble(&ok), 1000.0);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_DOUBLE_EQ(DtString("  2.5 \t").toDouble(&ok), 2.5);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_DOUBLE_EQ(DtString("42").toDouble(&ok), 42.0);
  EXPECT_TRUE(ok);
  EXPECT_DOUBLE_EQ(DtString("7.75").toDouble(), 7.75);  // the flag is optional
  EXPECT_DOUBLE_EQ(DtString("7.75").toDouble(nullptr), 7.75);
}

TEST(DtStringTest, ToDoubleRejectsNonNumbers) {
  for (const char* text : {"", "   ", "abc", "1.5x", "x1.5", "1.5 2", "--1", "."}) {
    bool ok = true;
    EXPECT_EQ(DtString(text).toDouble(&ok), 0.0) << '"' << text << '"';
    EXPECT_FALSE(ok) << '"' << text << '"';
  }
  EXPECT_EQ(DtString("abc").toDouble(), 0.0);
}

TEST(DtStringTest, ToFloat) {
  bool ok = false;
  EXPECT_FLOAT_EQ(DtString("0.25").toFloat(&ok), 0.25f);
  EXPECT_TRUE(ok);
  ok = true;
  EXPECT_EQ(DtString("quarter").toFloat(&ok), 0.0f);
  EXPECT_FALSE(ok);
  EXPECT_FLOAT_EQ(DtString(" -1.5 ").toFloat(), -1.5f);
}

TEST(DtStringTest, ToInt) {
  bool ok = false;
  EXPECT_EQ(DtString("-17").toInt(&ok), -17);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_EQ(DtString(" 42 ").toInt(&ok), 42);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_EQ(DtString("2147483647").toInt(&ok), 2147483647);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_EQ(DtString("-2147483648").toInt(&ok), -2147483647 - 1);
  EXPECT_TRUE(ok);
  for (const char* text : {"2147483648", "-2147483649", "12.5", "", "x", "4 2", "0x10"}) {
    ok = true;
    EXPECT_EQ(DtString(text).toInt(&ok), 0) << '"' << text << '"';
    EXPECT_FALSE(ok) << '"' << text << '"';
  }
  EXPECT_EQ(DtString("9").toInt(), 9);
}

TEST(DtStringTest, ToUInt) {
  bool ok = false;
  EXPECT_EQ(DtString("4294967295").toUInt(&ok), 4294967295u);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_EQ(DtString(" 0 ").toUInt(&ok), 0u);
  EXPECT_TRUE(ok);
  for (const char* text : {"4294967296", "-1", " -1", "1.0", "", "many"}) {
    ok = true;
    EXPECT_EQ(DtString(text).toUInt(&ok), 0u) << '"' << text << '"';
    EXPECT_FALSE(ok) << '"' << text << '"';
  }
  EXPECT_EQ(DtString("12").toUInt(), 12u);
}

TEST(DtStringTest, ToLong) {
  bool ok = false;
  EXPECT_EQ(DtString("-9223372036854775808").toLong(&ok), -9223372036854775807L - 1);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_EQ(DtString("9223372036854775807").toLong(&ok), 9223372036854775807L);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_EQ(DtString("\t-5\n").toLong(&ok), -5L);
  EXPECT_TRUE(ok);
  for (const char* text : {"9223372036854775808", "-9223372036854775809", "5L", "", "1e3"}) {
    ok = true;
    EXPECT_EQ(DtString(text).toLong(&ok), 0L) << '"' << text << '"';
    EXPECT_FALSE(ok) << '"' << text << '"';
  }
  EXPECT_EQ(DtString("123456789012").toLong(), 123456789012L);
}

TEST(DtStringTest, ToULong) {
  bool ok = false;
  EXPECT_EQ(DtString("18446744073709551615").toULong(&ok), 18446744073709551615ul);
  EXPECT_TRUE(ok);
  ok = false;
  EXPECT_EQ(DtString(" 7 ").toULong(&ok), 7ul);
  EXPECT_TRUE(ok);
  for (const char* text : {"18446744073709551616", "-5", "  -5", "", "five", "5 5"}) {
    ok = true;
    EXPECT_EQ(DtString(text).toULong(&ok), 0ul) << '"' << text << '"';
    EXPECT_FALSE(ok) << '"' << text << '"';
  }
  EXPECT_EQ(DtString("99").toULong(), 99ul);
}

TEST(DtStringTest, ToBoolReadsWordsInAnyCase) {
  for (const char* text : {"true", "TRUE", "True", "yes", "YES", "on", "On", "1", " true "}) {
    bool ok = false;
    EXPECT_TRUE(DtString(text).toBool(&ok)) << '"' << text << '"';
    EXPECT_TRUE(ok) << '"' << text << '"';
  }
  for (const char* text : {"false", "FALSE", "no", "No", "off", "OFF", "0", "\tfalse\n"}) {
    bool ok = false;
    EXPECT_FALSE(DtString(text).toBool(&ok)) << '"' << text << '"';
    EXPECT_TRUE(ok) << '"' << text << '"';
  }
}

TEST(DtStringTest, ToBoolRejectsOtherText) {
  for (const char* text : {"", "maybe", "2", "truthy", "y", "n", "t r u e"}) {
    bool ok = true;
    EXPECT_FALSE(DtString(text).toBool(&ok)) << '"' << text << '"';
    EXPECT_FALSE(ok) << '"' << text << '"';
  }
  EXPECT_TRUE(DtString("yes").toBool());
}

// ---------------------------------------------------------------------------------------------
// Replacing substrings

TEST(DtStringTest, ReplaceAllSubstrings) {
  EXPECT_STREQ(DtReplaceAllSubstrings("a.b.c", ".", "::").c_str(), "a::b::c");
  EXPECT_STREQ(DtReplaceAllSubstrings("$(HOME)/x/$(HOME)", "$(HOME)", "/home/u").c_str(),
               "/home/u/x//home/u");
  EXPECT_STREQ(DtReplaceAllSubstrings("nothing here", "xyz", "abc").c_str(), "nothing here");
  EXPECT_STREQ(DtReplaceAllSubstrings("remove me", " me", "").c_str(), "remove");
  EXPECT_STREQ(DtReplaceAllSubstrings("", "a", "b").c_str(), "");
}

TEST(DtStringTest, ReplaceAllSubstringsDoesNotRescanReplacement) {
  EXPECT_STREQ(DtReplaceAllSubstrings("ab", "a", "aa").c_str(), "aab");
  EXPECT_STREQ(DtReplaceAllSubstrings("aaa", "aa", "b").c_str(), "ba");
  EXPECT_STREQ(DtReplaceAllSubstrings("xx", "x", "xx").c_str(), "xxxx");
}

TEST(DtStringTest, ReplaceAllSubstringsLeavesArgumentAlone) {
  DtString text("one two one");
  DtString result = DtReplaceAllSubstrings(text, "one", "1");
  EXPECT_STREQ(result.c_str(), "1 two 1");
  EXPECT_STREQ(text.c_str(), "one two one");
  EXPECT_STREQ(DtReplaceAllSubstrings(text, "", "x").c_str(), "one two one");
}

// ---------------------------------------------------------------------------------------------
// Polymorphism: DtFilename reached through references to DtString

TEST(DtStringTest, HasVirtualDestructor) {
  static_assert(std::has_virtual_destructor<DtString>::value, "DtString must be polymorphic");
  static_assert(std::is_base_of<DtString, DtFilename>::value, "DtFilename derives from DtString");
  DtString* s = new DtFilename("dir/file.fed");
  EXPECT_STREQ(s->c_str(), "dir/file.fed");
  delete s;  // through the base: must reach the derived destructor cleanly
}

TEST(DtStringTest, OperationsThroughBaseReferenceReachFilename) {
  DtFilename name("dir/file");
  DtString& base = name;
  base += ".fed";
  EXPECT_STREQ(name.c_str(), "dir/file.fed");
  base += DtString(".bak");
  EXPECT_STREQ(name.c_str(), "dir/file.fed.bak");
  base = DtString("other/thing.xml");
  EXPECT_STREQ(name.c_str(), "other/thing.xml");
  EXPECT_STREQ(static_cast<const char*>(base), "other/thing.xml");
  EXPECT_STREQ(name.extension().c_str(), "xml");
}

}  // namespace
