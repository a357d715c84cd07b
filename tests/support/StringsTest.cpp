// The string class, the string toolbox, the bounded C-string functions and
// the text encodings: one table per rule.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/GStringUtils.h"
#include "support/LxString.h"
#include "support/StringSafe.h"
#include "support/TextEncoding.h"

namespace {

using namespace GStringUtils;

std::string pascalBody(const unsigned char* p)
{
    return std::string(reinterpret_cast<const char*>(p + 1), p[0]);
}

// Cut at 255 bytes whatever the UTF-8 sequences, with no terminator.
TEST(LxString, PascalFormIsCutAt255Bytes)
{
    LxString s(std::string(254, 'a') + "\xC3\xA9" + std::string(44, 'b'));
    unsigned char out[258];
    std::memset(out, 0xAA, sizeof out);
    s.GetPascalString(out);
    EXPECT_EQ(pascalBody(out), std::string(254, 'a') + "\xC3");
    EXPECT_EQ(out[256], 0xAA);
    unsigned char* own = s.GetPascalString();
    EXPECT_EQ(pascalBody(own), pascalBody(out));
    s.str() = "Courier";  // the buffer is kept and refilled from the current text
    EXPECT_EQ(s.GetPascalString(), own);
    EXPECT_EQ(pascalBody(own), "Courier");
    std::memset(out, 0xAA, sizeof out);
    LxString("Helvetica").GetPascalString(out);
    EXPECT_EQ(out[10], 0xAA);
}

// Assignment copies the Pascal buffer's bytes only when both strings have
// one; self-assignment does nothing. Kept as it is.
TEST(LxString, AssignmentCopiesThePascalBufferOnlyBetweenTwoBuffers)
{
    LxString source("stale");
    source.GetPascalString();
    source.str() = "fresh";
    LxString target("old");
    unsigned char* buffer = target.GetPascalString();
    target = source;
    EXPECT_EQ(target.str(), "fresh");
    EXPECT_EQ(pascalBody(buffer), "stale");
    target = LxString("new");  // a source without a buffer leaves the target's alone
    EXPECT_EQ(pascalBody(buffer), "stale");
    target.str() = "changed";
    LxString& alias = target;
    target = alias;
    EXPECT_EQ(target.str(), "changed");
    EXPECT_EQ(pascalBody(buffer), "stale");
}

TEST(LxString, ComparisonsIgnoreAsciiCaseOnly)
{
    const struct {
        const char* a;
        const char* b;
        int sign;
    } cases[] = {
        {"Arial", "ARIAL", 0}, {"a", "B", -1}, {"B", "a", 1}, {"", "", 0}, {"Times", "TIMES NEW", -1},
        {"_", "a", -1},                // '_' < 'a' once lowered
        {"\xC3\x89", "\xC3\xA9", -1},  // É and é differ
    };
    for (const auto& c : cases) {
        const LxString a(c.a), b(c.b);
        EXPECT_EQ(a == std::string(c.b), c.sign == 0) << c.a << " " << c.b;
        EXPECT_EQ(a != b, c.sign != 0) << c.a << " " << c.b;
        EXPECT_EQ(a < b, c.sign < 0) << c.a << " " << c.b;
        EXPECT_EQ(a <= b, c.sign <= 0) << c.a << " " << c.b;
        EXPECT_EQ(a > b, c.sign > 0) << c.a << " " << c.b;
        EXPECT_EQ(a >= c.b, c.sign >= 0) << c.a << " " << c.b;
    }
}

TEST(LxString, EditingRules)
{
    const struct {
        const char* in;
        const char* out;
        bool removed;
    } trims[] = {{"Bold \t", "Bold", true}, {"Bold\n", "Bold\n", false}, {"   ", "", true},
                 {"", "", false},           {"x \n ", "x \n", true}};
    for (const auto& c : trims) {
        LxString s(c.in);
        EXPECT_EQ(s.TrimWhitespaceFromEnd(), c.removed) << c.in;
        EXPECT_EQ(s.str(), c.out);
    }
    LxString s("aaa");
    EXPECT_EQ(ReplaceAll(&s, "a", "aa"), 3);  // inserted text is never searched
    EXPECT_EQ(s.str(), "aaaaaa");
    LxString t("abcabc");
    EXPECT_EQ(ReplaceAll(&t, "bc", ""), 2);
    EXPECT_EQ(t.str(), "aa");
    LxString v("a/b/c");
    EXPECT_EQ(ReplaceAll(&v, '/', ':'), 2);
    EXPECT_EQ(v.str(), "a:b:c");

    char dst[8];
    std::memset(dst, 'Z', sizeof dst);
    EXPECT_EQ(strncpyNULLTerminate(dst, "abcdef", 4), dst);
    EXPECT_STREQ(dst, "abc");
    EXPECT_EQ(dst[4], 'Z');
    strncpyNULLTerminate(dst, "ab", sizeof dst);
    EXPECT_EQ(dst[6], '\0');  // strncpy zero fill
}

// The wide form is widened UTF-16: a pair stays two elements, and each
// element is narrowed to 16 bits on the way back. Both placeholders give
// nothing.
TEST(LxString, WideFormsAreWidenedUTF16)
{
    EXPECT_EQ(UTF8ToWide(LxString("a\xC3\xA9\xF0\x9F\x98\x80")),
              std::wstring({L'a', wchar_t(0xE9), wchar_t(0xD83D), wchar_t(0xDE00)}));
    EXPECT_TRUE(UTF8ToWide(LxString("ok\xFF")).empty());
    EXPECT_TRUE(UTF8ToWide(LxString("\xED\xA0\x80")).empty());  // encoded surrogate
    EXPECT_STREQ(static_cast<const wchar_t*>(LxString("\xE2\x82")), L"");
    std::string out = "untouched";
    EXPECT_EQ(WideToUTF8(std::wstring(1, wchar_t(0x1F600)), &out), 3u);
    EXPECT_EQ(out, "\xEF\x98\x80");
    EXPECT_EQ(WideToUTF8(std::wstring({wchar_t(0xD83D), wchar_t(0xDE00)})).str(), "\xF0\x9F\x98\x80");
    EXPECT_EQ(WideToUTF8(std::wstring(L"ab\0cd", 5), &out), 2u);
    out = "untouched";
    EXPECT_EQ(WideToUTF8(std::wstring(1, wchar_t(0x1DC00)), &out), 0u);  // a lone surrogate
    EXPECT_EQ(out, "untouched");
    const unsigned short units[] = {0x41, 0xD83D, 0xDE00, 0, 0x42};
    EXPECT_EQ(UniCharBufToWide(units), std::wstring({L'A', wchar_t(0xD83D), wchar_t(0xDE00)}));
    EXPECT_EQ(CFStringCreateWithWString(std::wstring({L'a', wchar_t(0x10041)})), PlatformString(u"aA"));
    EXPECT_TRUE(DecomposedToPrecomposed(L"e\u0301").empty());
    EXPECT_TRUE(PrecomposedToDecomposed(L"\u00E9").empty());
}

TEST(LxString, EncodedBytesInAndOut)
{
    LxString s("old");
    EXPECT_TRUE(s.Set("caf\x8E", kCFStringEncodingMacRoman));
    EXPECT_EQ(s.str(), "caf\xC3\xA9");
    EXPECT_TRUE(s.Set("\x80", kCFStringEncodingInvalidId));  // the system encoding: Mac Roman
    EXPECT_EQ(s.str(), "\xC3\x84");
    EXPECT_FALSE(s.Set("\xC3", kCFStringEncodingUTF8));
    EXPECT_EQ(s.str(), "\xC3\x84");
    EXPECT_FALSE(s.Set(PlatformString(1, char16_t(0xD800))));
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(LxString("\xC3\xA9").GetCFString(kCFStringEncodingInvalidId), PlatformString(u"\u221A\u00A9"));
    EXPECT_FALSE(LxString("\xFF").GetCFString(kCFStringEncodingUTF8).has_value());
}

TEST(TextEncoding, LegacyEncodingsBothWays)
{
    const struct {
        const char* bytes;
        uint32_t encoding;
        const char16_t* text;
    } cases[] = {
        {"Caf\x8E", kCFStringEncodingMacRoman, u"Caf\u00E9"},
        {"\xA5\xD0\xCA", kCFStringEncodingMacRoman, u"\u2022\u2013\u00A0"},
        {"\xDE\xDF", kCFStringEncodingMacRoman, u"\uFB01\uFB02"},
        {"\x8E", kCFStringEncodingInvalidId, u"\u00E9"},
        {"\x93\xFA\x96\x7B", kCFStringEncodingMacJapanese, u"\u65E5\u672C"},
        {"\x82\xA0\xB1", kCFStringEncodingShiftJIS, u"\u3042\uFF71"},
        {"", kCFStringEncodingShiftJIS, u""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(TextEncoding::Decode(c.bytes, c.encoding), PlatformString(c.text)) << c.bytes;
        EXPECT_EQ(TextEncoding::Encode(c.text, c.encoding), std::string(c.bytes)) << c.bytes;
    }
    std::string all;
    for (int b = 0; b < 256; ++b) all += char(b);
    auto roman = TextEncoding::Decode(all, kCFStringEncodingMacRoman);
    ASSERT_TRUE(roman && roman->size() == 256u);
    EXPECT_EQ(TextEncoding::Encode(*roman, kCFStringEncodingMacRoman), all);
    EXPECT_EQ(TextEncoding::Decode(std::string("\x00\x41\xD8\x3D\xDE\x00", 6), kCFStringEncodingUTF16BE),
              PlatformString(u"A\U0001F600"));
}

TEST(TextEncoding, InvalidOrUnrepresentableTextGivesNothing)
{
    const std::pair<std::string, uint32_t> bytes[] = {
        {"\x93", kCFStringEncodingShiftJIS}, {"\x80", kCFStringEncodingASCII},
        {"\xC3", kCFStringEncodingUTF8},     {"\xC0\xAF", kCFStringEncodingUTF8},
        {"\xED\xA0\x80", kCFStringEncodingUTF8}, {std::string("a\0b", 3), kCFStringEncodingUTF16BE},
        {"abc", 0x7777},
    };
    for (const auto& [text, encoding] : bytes) EXPECT_FALSE(TextEncoding::Decode(text, encoding)) << text;
    EXPECT_FALSE(TextEncoding::Encode(u"\u00E9", kCFStringEncodingASCII));
    EXPECT_FALSE(TextEncoding::Encode(u"\u65E5", kCFStringEncodingMacRoman));
    EXPECT_FALSE(TextEncoding::UTF16ToUTF8(PlatformString(u"a") + char16_t(0xD800)));
}

// StringCbPrintfA reports a result of exactly size - 1 characters as
// success although its last one is cut: kept deliberately.
TEST(StringSafe, BoundedFunctionsAndTheirCodes)
{
    char buf[8];
    EXPECT_EQ(StringCbPrintfA(buf, 4, "%s", "abc"), S_OK);
    EXPECT_STREQ(buf, "ab");
    EXPECT_EQ(StringCbPrintfA(buf, 4, "%s", "abcd"), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(buf, "ab");
    EXPECT_EQ(StringCbPrintfA(buf, 4, "%d", 7), S_OK);
    EXPECT_STREQ(buf, "7");
    EXPECT_EQ(StringCbPrintfA(buf, 0, "x"), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(StringCbPrintfA(buf, static_cast<unsigned long>(-1), "x"), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(StringCbPrintfA(buf, 1, "x"), STRSAFE_E_INSUFFICIENT_BUFFER);

    char cat[6] = "ab";
    EXPECT_EQ(StringCatWorkerA(cat, sizeof cat, "cde"), S_OK);  // exactly fills it
    EXPECT_STREQ(cat, "abcde");
    std::strcpy(cat, "ab");
    EXPECT_EQ(StringCatWorkerA(cat, sizeof cat, "cdefgh"), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(cat, "abcde");  // truncated, not rolled back
    char unterminated[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(StringCatWorkerA(unterminated, sizeof unterminated, "x"), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(unterminated[3], 'd');

    unsigned long length = 99;
    EXPECT_EQ(StringCbLengthW(L"abc", 16, &length), S_OK);
    EXPECT_EQ(length, 12u);
    EXPECT_EQ(StringCbLengthW(L"abc", 15, &length), STRSAFE_E_INVALID_PARAMETER);  // 3 elements
    EXPECT_EQ(StringCbLengthW(nullptr, 16, &length), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(length, 12u);
}

TEST(GStringUtils, SplittingStrippingAndReplacing)
{
    using Tokens = std::vector<std::string>;
    EXPECT_EQ(TokenizeString(",,a , b,,", ", "), (Tokens{"a", "b"}));
    EXPECT_EQ(OSTokenizeString("a,b,,c", ","), (Tokens{"a", "b", "c"}));
    EXPECT_EQ(TokenizeString("", ","), Tokens{});
    EXPECT_EQ(EnstringTokens({"a", "b", "c"}, ", "), "a, b, c");
    EXPECT_FALSE(EndsWith("ttf", ".ttf"));
    std::string path = "/Fonts";
    EnsureEndsWith(path, "/");
    EnsureEndsWith(path, "/");
    EXPECT_EQ(path, "/Fonts/");
    // Whitespace is non-graphic ASCII; bytes of 0x80 and above stop it.
    EXPECT_EQ(StripWhitespace(" \t\r\n\x7F" "Bold \n"), "Bold");
    EXPECT_EQ(StripPrecedingWhitespace(std::string(" \0a ", 4)), "a ");
    EXPECT_EQ(StripTrailingWhitespace("\xC2\xA0x\xC2\xA0"), "\xC2\xA0x\xC2\xA0");
    EXPECT_EQ(StripPrecedingString("ababX", "ab"), "X");
    EXPECT_EQ(StripTrailingString("X..", "."), "X");
    EXPECT_EQ(StripTrailingString("abc", ""), "abc");
    EXPECT_EQ(StringReplace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(StringReplace("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(StringFindNoCase("Times New Roman", "NEW"), 6u);
    EXPECT_LT(CompareStringsNoCase("_", "A"), 0);  // lowered first
    EXPECT_EQ(HexadecimalString("\x0A\x1B\x00\xFF", 4), "0A1B00FF");
}

// Ampersands are escaped first and unescaped last, so "&amp;lt;" stays "&lt;".
TEST(GStringUtils, XmlEntities)
{
    EXPECT_EQ(EscapeRequiredXMLEntities("a<b & 'c'"), "a&lt;b &amp; &apos;c&apos;");
    EXPECT_EQ(EscapeRequiredXMLEntities("\"x\" > &lt;"), "&quot;x&quot; &gt; &amp;lt;");
    EXPECT_EQ(UnescapeRequiredXMLEntities("&amp;lt;"), "&lt;");
    EXPECT_EQ(UnescapeRequiredXMLEntities("&lt;&gt;&apos;&quot;&amp;"), "<>'\"&");
    EXPECT_EQ(UnescapeRequiredXMLEntities("&#60;&nbsp;&LT;"), "&#60;&nbsp;&LT;");
}

// Numbers are read by stream extraction after stripping; nothing fails
// visibly. IsNumber is deliberately loose.
TEST(GStringUtils, NumberParsing)
{
    const std::pair<const char*, int32_t> signed32[] = {
        {" 42 ", 42}, {"x1", 0}, {"12abc", 12}, {"-17", -17}, {"0x10", 0}, {"- 5", 0}, {"3.9", 3}};
    for (const auto& [text, value] : signed32) EXPECT_EQ(UTF8StringToSInt32(text), value) << text;
    EXPECT_EQ(UTF8StringToSInt16("70000"), 4464);  // low 16 bits of the 32-bit value
    EXPECT_EQ(UTF8StringToUInt32("4000000000"), 4000000000u);
    EXPECT_EQ(UTF8StringToUInt64("18446744073709551615"), UINT64_MAX);
    EXPECT_DOUBLE_EQ(UTF8StringToTFloat64(" 1.5e3x"), 1500.0);
    const std::pair<const char*, bool> bools[] = {{" YES ", true}, {"True", true}, {"1x", true},
                                                  {"2", false},    {"yes!", false}, {"on", false}};
    for (const auto& [text, value] : bools) EXPECT_EQ(UTF8StringToBool(text), value) << text;
    const std::pair<const char*, bool> numbers[] = {
        {"0", true},  {"-0", true},   {"12", true},  {"00x", true}, {"-0z", true}, {" 5", true},
        {"12a", false}, {"abc", false}, {"", false}, {"5 ", false}, {"+0", false}};
    for (const auto& [text, value] : numbers) EXPECT_EQ(IsNumber(text), value) << '"' << text << '"';
}

// Encoding 2 breaks a case-only tie in favour of the upper-case string
// (kept deliberately) and hands any other difference to Unicode collation.
TEST(GStringUtils, CompareNoCaseByEncoding)
{
    const struct {
        EStringEncoding encoding;
        const char* a;
        const char* b;
        int expected;
    } cases[] = {
        {kStringEncodingASCII, "abc", "ABCDE", -2}, {kStringEncodingASCII, "abcd", "a", 3},
        {kStringEncoding8Bit, "Abc", "abc", 32},    {kStringEncoding8Bit, "abc", "Abc", -32},
        {kStringEncoding8Bit, "aBc", "abC", 32},    {kStringEncoding8Bit, "Abc", "abd", 'C' - 'D'},
        {kStringEncoding8Bit, "abcde", "ABC", 2},   {kStringEncoding8Bit, "a1", "a9", -1},
        {kStringEncoding8Bit, "", "abc", -1},       {kStringEncoding8Bit, "x\xC3\xA9", "X\xC3\x89", 0},
        {kStringEncodingUnicode, "\xCE\xB1\xCE\xB2", "\xCE\x91\xCE\x92", 0},
        {kStringEncodingUnicode, "e", "\xC3\xA9", -1},
        {kStringEncodingUnicode, "Zebra", "apple", 1},
        {kStringEncodingUnicode, "a", nullptr, 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(OSCompareStringsNoCase(c.encoding, c.a, c.b), c.expected) << c.a << " vs " << (c.b ? c.b : "null");
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingASCII, "abX", 2, "ABY", 2), 0);
}

}  // namespace
