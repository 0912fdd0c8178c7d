#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/Capitals.h"
#include "core/Globals.h"

namespace zolmara {
namespace {

TEST(Trim, TakesBlanksAlone) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(LTrim("  a "), "a ");
    EXPECT_EQ(RTrim(" a  "), " a");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim(" \ta\n "), "\ta\n");
}

TEST(UCase, KnowsLettersOfAllScripts) {
    EXPECT_EQ(UCase("Salaries & Wages 4.01"), "SALARIES & WAGES 4.01");
    EXPECT_EQ(UCase("café"), "CAFÉ");
    EXPECT_EQ(LCase("ÀÉÎÕÜ Ω Ж"), "àéîõü ω ж");
    EXPECT_EQ(UCase(""), "");
}

TEST(UCase, KeepsBytesThatAreNoText) { EXPECT_EQ(UCase("a\xFF\xC3"), "A\xFF\xC3"); }

TEST(CompareText, IsBlindToCase) {
    EXPECT_TRUE(SameText("Worksheets", "WORKSHEETS"));
    EXPECT_TRUE(SameText("Café", "CAFÉ"));
    EXPECT_FALSE(SameText("A", "A "));
    EXPECT_LT(CompareText("apple", "Banana"), 0);
    EXPECT_GT(CompareText("b", "A"), 0);
    EXPECT_LT(CompareText("a", "aa"), 0);
    EXPECT_LT(CompareText("", "a"), 0);
    EXPECT_EQ(CompareText("", ""), 0);
}

RC_GTEST_PROP(CompareText, OrdersBothWays, (const std::string& a, const std::string& b)) {
    RC_ASSERT(CompareText(a, b) == -CompareText(b, a));
    RC_ASSERT(CompareText(a, a) == 0);
}

RC_GTEST_PROP(CompareText, AgreesWithUCaseOnPlainText, ()) {
    const auto a = *rc::gen::string<std::string>();
    RC_ASSERT(SameText(a, UCase(a)));
    RC_ASSERT(SameText(a, LCase(a)));
}

TEST(TextLength, CountsCharacters) {
    EXPECT_EQ(TextLength("abc"), 3u);
    EXPECT_EQ(TextLength("é€"), 2u);
    EXPECT_EQ(TextLength(""), 0u);
}

TEST(LeftText, CutsBetweenCharacters) {
    EXPECT_EQ(LeftText("é€x", 2), "é€");
    EXPECT_EQ(LeftText("ab", 5), "ab");
    EXPECT_EQ(LeftText("ab", 0), "");
}

TEST(MidText, CountsFromOne) {
    EXPECT_EQ(MidText("abcdef", 3), "cdef");
    EXPECT_EQ(MidText("abcdef", 3, 2), "cd");
    EXPECT_EQ(MidText("é€x", 2, 1), "€");
    EXPECT_EQ(MidText("abc", 9), "");
    EXPECT_EQ(MidText("abc", 1, 0), "");
}

TEST(Replace, ReplacesEveryOccurrence) {
    EXPECT_EQ(Replace("12-34-56", "-", ""), "123456");
    EXPECT_EQ(Replace("say \"x\"", "\"", "\"\""), "say \"\"x\"\"");
    EXPECT_EQ(Replace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(Replace("abc", "", "x"), "abc");
}

TEST(IsValidUtf8, RefusesWhatIsNone) {
    EXPECT_TRUE(IsValidUtf8("plain, é, €, \xF0\x9F\x98\x80"));
    EXPECT_FALSE(IsValidUtf8("\xE9"));              // an é of code page 1252
    EXPECT_FALSE(IsValidUtf8("\xC3"));              // cut off
    EXPECT_FALSE(IsValidUtf8("\x80"));              // a part without its beginning
    EXPECT_FALSE(IsValidUtf8("\xC0\xAF"));          // two bytes for "/"
    EXPECT_FALSE(IsValidUtf8("\xED\xA0\x80"));      // a surrogate
    EXPECT_FALSE(IsValidUtf8("\xF4\x90\x80\x80"));  // above the last character
}

TEST(CodePage1252, ReadsItsOwnSigns) {
    EXPECT_EQ(FromCodePage1252("caf\xE9 \x80 \x93q\x94 \x99"), "café € “q” ™");
    EXPECT_EQ(ToCodePage1252("café € “q” ™"), "caf\xE9 \x80 \x93q\x94 \x99");
}

TEST(CodePage1252, ALetterWhoseCapitalItLacksStaysAsItIs) {
    EXPECT_EQ(UCaseIn1252("5 µg ƒ café ÿ œ ß"), "5 µG ƒ CAFÉ Ÿ Œ ß");
    EXPECT_EQ(ToCodePage1252(UCaseIn1252("µƒ")), "\xB5\x83");
    EXPECT_EQ(UCaseIn1252("what?"), "WHAT?");
}

TEST(CodePage1252, PutsAQuestionMarkForWhatItLacks) {
    EXPECT_EQ(ToCodePage1252("Ω-x"), "?-x");
    EXPECT_EQ(ToCodePage1252("\xF0\x9F\x98\x80"), "?");
    EXPECT_EQ(ToCodePage1252("a\xFF"), "a?");
}

RC_GTEST_PROP(CodePage1252, KeepsEveryByte, (const std::string& bytes)) {
    const std::string text = FromCodePage1252(bytes);
    RC_ASSERT(IsValidUtf8(text));
    RC_ASSERT(ToCodePage1252(text) == bytes);
}

TEST(CodePage1252, KeepsTheFiveUndefinedBytes) {
    const std::string bytes = "\x81\x8D\x8F\x90\x9D";
    EXPECT_EQ(ToCodePage1252(FromCodePage1252(bytes)), bytes);
}

}  // namespace
}  // namespace zolmara
