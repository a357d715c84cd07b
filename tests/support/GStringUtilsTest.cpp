#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/GStringUtils.h"

namespace {

using namespace GStringUtils;
using Tokens = std::vector<std::string>;

int sign(int v)
{
    return (v > 0) - (v < 0);
}

TEST(GStringUtils, TokenizingFollowsStrtokRules)
{
    struct Case {
        const char* text;
        const char* delimiters;
        Tokens tokens;
    };
    const Case cases[] = {
        {"a,b,,c", ",", {"a", "b", "c"}},
        {",,a , b,,", ", ", {"a", "b"}},
        {"", ",", {}},
        {",,,", ",", {}},
        {"one two", "", {"one two"}},
        {"Bold-Italic Oblique", " -", {"Bold", "Italic", "Oblique"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(OSTokenizeString(c.text, c.delimiters), c.tokens) << c.text;
        EXPECT_EQ(TokenizeString(c.text, c.delimiters), c.tokens) << c.text;
    }
    EXPECT_EQ(EnstringTokens({"a", "b", "c"}, ", "), "a, b, c");
    EXPECT_EQ(EnstringTokens({"a"}, "-"), "a");
    EXPECT_EQ(EnstringTokens({}, "-"), "");
}

TEST(GStringUtils, SuffixLongerThanTextIsNoMatch)
{
    EXPECT_TRUE(EndsWith("font.ttf", ".ttf"));
    EXPECT_FALSE(EndsWith("ttf", ".ttf"));
    std::string path = "/Fonts";
    EnsureEndsWith(path, "/");
    EnsureEndsWith(path, "/");
    EXPECT_EQ(path, "/Fonts/");
}

TEST(GStringUtils, WhitespaceIsNonGraphicAsciiOnly)
{
    struct Case {
        std::string in, leading, trailing, both;
    };
    const Case cases[] = {
        {" \t\r\nBold \n", "Bold \n", " \t\r\nBold", "Bold"},
        {"", "", "", ""},
        {" \x7F\x01 ", "", "", ""},
        // Bytes of 0x80 and above stop the stripping, even a no-break space.
        {"\xC2\xA0x\xC2\xA0", "\xC2\xA0x\xC2\xA0", "\xC2\xA0x\xC2\xA0", "\xC2\xA0x\xC2\xA0"},
        {std::string(" \0a\0 ", 5), std::string("a\0 ", 3), std::string(" \0a", 3), "a"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(StripPrecedingWhitespace(c.in), c.leading);
        EXPECT_EQ(StripTrailingWhitespace(c.in), c.trailing);
        EXPECT_EQ(StripWhitespace(c.in), c.both);
    }
}

TEST(GStringUtils, StripStringRepeats)
{
    EXPECT_EQ(StripPrecedingString("ababX", "ab"), "X");
    EXPECT_EQ(StripPrecedingString("abab", "ab"), "");
    EXPECT_EQ(StripPrecedingString("aXab", "ab"), "aXab");
    EXPECT_EQ(StripPrecedingString("abc", ""), "abc");
    EXPECT_EQ(StripTrailingString("X..", "."), "X");
    EXPECT_EQ(StripTrailingString("abab", "ab"), "");
    EXPECT_EQ(StripTrailingString("abc", ""), "abc");
    EXPECT_EQ(StripTrailingString("", "a"), "");
}

TEST(GStringUtils, StringReplaceIsNonOverlappingLeftToRight)
{
    EXPECT_EQ(StringReplace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(StringReplace("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(StringReplace("a.b.c", ".", ""), "abc");
    EXPECT_EQ(StringReplace("abc", "x", "y"), "abc");
    EXPECT_EQ(StringReplace("abc", "", "y"), "abc");
}

TEST(GStringUtils, CaseInsensitiveSearchAndCompare)
{
    EXPECT_EQ(StringFindNoCase("Times New Roman", "NEW"), 6u);
    EXPECT_EQ(StringFindNoCase("Times", "x"), std::string::npos);
    EXPECT_EQ(OSToUpperCase("bold\xC3\xA9"), "BOLD\xC3\xA9");
    EXPECT_EQ(OSToLowerCase("BOLD"), "bold");

    EXPECT_EQ(CompareStringsNoCase(std::string("ABC"), std::string("abc")), 0);
    EXPECT_LT(CompareStringsNoCase("a", "B"), 0);
    EXPECT_GT(CompareStringsNoCase(std::string("b"), "A"), 0);
    EXPECT_LT(CompareStringsNoCase("ab", std::string("ABC")), 0);
    // Lowered first, so '_' (0x5F) sorts before 'a' although it is after 'A'.
    EXPECT_LT(CompareStringsNoCase("_", "A"), 0);
}

TEST(GStringUtils, XmlEntitiesAreEscapedAmpersandFirst)
{
    EXPECT_EQ(EscapeRequiredXMLEntities("a<b & 'c'"), "a&lt;b &amp; &apos;c&apos;");
    EXPECT_EQ(EscapeRequiredXMLEntities("\"x\" > &lt;"), "&quot;x&quot; &gt; &amp;lt;");
    EXPECT_EQ(UnescapeRequiredXMLEntities("&amp;lt;"), "&lt;");
    EXPECT_EQ(UnescapeRequiredXMLEntities("&lt;&gt;&apos;&quot;&amp;"), "<>'\"&");
    // Nothing else is an entity.
    EXPECT_EQ(UnescapeRequiredXMLEntities("&#60;&nbsp;&LT;"), "&#60;&nbsp;&LT;");
    for (const char* text : {"", "plain", "a<b & 'c' \"d\" >", "&amp;&&;"})
        EXPECT_EQ(UnescapeRequiredXMLEntities(EscapeRequiredXMLEntities(text)), text);

    const auto table = GetCharactersAndXmlEquivalents();
    ASSERT_EQ(table.size(), 5u);
    EXPECT_EQ(table.front().first, "&");
}

TEST(GStringUtils, SignedNumbersAreReadByStreamExtraction)
{
    struct Case {
        const char* text;
        int32_t value;
    };
    const Case cases[] = {
        {" 42 ", 42},   {"x1", 0},   {"12abc", 12}, {"-17", -17}, {"+8", 8},
        {"\n\t7\r", 7}, {"", 0},     {"0x10", 0},   {"010", 10},  {"- 5", 0},
        {"3.9", 3},
    };
    for (const Case& c : cases) EXPECT_EQ(UTF8StringToSInt32(c.text), c.value) << c.text;

    EXPECT_EQ(UTF8StringToSInt16("70000"), 4464);  // low 16 bits of the 32-bit value
    EXPECT_EQ(UTF8StringToSInt16("40000"), -25536);
    EXPECT_EQ(UTF8StringToSInt16("-5"), -5);
}

TEST(GStringUtils, UnsignedAndFloatingNumbers)
{
    EXPECT_EQ(UTF8StringToUInt16(" 65535"), 65535);
    EXPECT_EQ(UTF8StringToUInt32("4000000000"), 4000000000u);
    EXPECT_EQ(UTF8StringToUInt64("18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(UTF8StringToUInt32("abc"), 0u);
    EXPECT_DOUBLE_EQ(UTF8StringToTFloat64(" 1.5e3x"), 1500.0);
    EXPECT_DOUBLE_EQ(UTF8StringToTFloat64("-0.25"), -0.25);
    EXPECT_DOUBLE_EQ(UTF8StringToTFloat64("nope"), 0.0);
}

TEST(GStringUtils, BoolIsTrueYesOrNumericOne)
{
    struct Case {
        const char* text;
        bool value;
    };
    const Case cases[] = {
        {"true", true}, {" YES ", true}, {"True", true}, {"1", true},   {"1x", true},
        {"0", false},   {"2", false},    {"-1", false},  {"no", false}, {"", false},
        {"yes!", false}, {"on", false},
    };
    for (const Case& c : cases) EXPECT_EQ(UTF8StringToBool(c.text), c.value) << c.text;
}

TEST(GStringUtils, IsNumberIsLoose)
{
    struct Case {
        const char* text;
        bool number;
    };
    const Case cases[] = {
        {"0", true},   {"-0", true},  {"12", true},   {"7", true},    {"-3", true},
        {"00x", true}, {"-0z", true}, {"12a", false}, {"abc", false}, {"", false},
        {"-", false},  {" 5", true},  {"5 ", false},  {"x0", false},  {"+0", false},
    };
    for (const Case& c : cases) EXPECT_EQ(IsNumber(c.text), c.number) << '"' << c.text << '"';
    EXPECT_EQ(NumberFromString(" -12x"), -12);
    EXPECT_EQ(NumberFromString("x"), 0);
}

TEST(GStringUtils, HexadecimalStringTakesBytesAsUnsigned)
{
    EXPECT_EQ(HexadecimalString("\x01\xff", 2), "01FF");
    EXPECT_EQ(HexadecimalString("\x0A\x1B\x00\x80", 4), "0A1B0080");
    EXPECT_EQ(HexadecimalString("", 0), "");
}

// ---- OSCompareStringsNoCase -------------------------------------------------

struct CompareCase {
    const char* a;
    const char* b;
    int expected;  // exact for ASCII and 8-bit, a sign for Unicode
};

TEST(OSCompareStringsNoCase, AsciiComparesTheCommonPartThenLengths)
{
    const CompareCase cases[] = {
        {"abc", "ABC", 0}, {"abc", "ABCDE", -2}, {"abcd", "a", 3}, {"", "", 0},
    };
    for (const CompareCase& c : cases)
        EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingASCII, c.a, c.b), c.expected) << c.a;
    EXPECT_LT(OSCompareStringsNoCase(kStringEncodingASCII, "abc", "abd"), 0);
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingASCII, "abX", 2, "ABY", 2), 0);
}

TEST(OSCompareStringsNoCase, EightBitTieBreakFavoursUpperCase)
{
    const CompareCase cases[] = {
        {"abc", "abc", 0},
        {"Abc", "abc", 32},  // 'a' - 'A': the upper-case one is greater
        {"abc", "Abc", -32},
        {"aBc", "abC", 32},  // the first case-only pair decides
        {"abc", "abd", 'C' - 'D'},
        {"Abc", "abd", 'C' - 'D'},  // a real difference beats the tie-break
        {"abcde", "ABC", 2},
        {"ab", "abcd", -2},
    };
    for (const CompareCase& c : cases)
        EXPECT_EQ(OSCompareStringsNoCase(kStringEncoding8Bit, c.a, c.b), c.expected)
            << c.a << " vs " << c.b;
}

TEST(OSCompareStringsNoCase, EightBitHandsNonLettersToUnicode)
{
    // Digits and punctuation that differ are collated, not subtracted.
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncoding8Bit, "a1", "a9"), -1);
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncoding8Bit, "x\xC3\xA9", "X\xC3\x89"), 0);
    // An empty side goes to Unicode as well: -1, not the length difference.
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncoding8Bit, "", "abc"), -1);
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncoding8Bit, nullptr, 0, "abc", 3), -1);
}

TEST(OSCompareStringsNoCase, UnicodeIgnoresCaseButNotAccents)
{
    const CompareCase cases[] = {
        {"\xC3\xA9", "\xC3\x89", 0},                        // é, É
        {"\xC3\x80" "B", "\xC3\xA0" "b", 0},                 // ÀB, àb
        {"\xCE\xB1\xCE\xB2", "\xCE\x91\xCE\x92", 0},        // αβ, ΑΒ
        {"e", "\xC3\xA9", -1},                              // e before é
        {"\xC3\xA9", "f", -1},
        {"Zebra", "apple", 1},
        {"", "", 0},
        {"a", "", 1},
    };
    for (const CompareCase& c : cases) {
        EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingUnicode, c.a, c.b), c.expected)
            << c.a << " vs " << c.b;
        EXPECT_EQ(OSCompareStringsNoCase(EStringEncoding(0x0100), c.a, c.b), c.expected);
    }
}

TEST(OSCompareStringsNoCase, NullAndBadBytesAreSafe)
{
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingUnicode, nullptr, nullptr), 0);
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingASCII, nullptr, 5, "", 0), 0);
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingUnicode, "a", nullptr), 1);
    // Ill-formed UTF-8 still compares, consistently.
    const int forward = OSCompareStringsNoCase(kStringEncodingUnicode, "\xFF", "a");
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingUnicode, "a", "\xFF"), -forward);
    EXPECT_EQ(sign(OSCompareStringsNoCase(kStringEncodingUnicode, "\xC3", "\xC3")), 0);
}

}  // namespace
