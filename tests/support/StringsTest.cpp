// The string class, the string toolbox, the bounded C-string functions and
// the text encodings: one table per rule.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
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

// Cut at 255 bytes whatever the UTF-8 sequences, with no terminator; the own
// buffer is kept and refilled from the current text.
TEST(LxString, PascalFormIsCutAt255Bytes)
{
    LxString s(std::string(254, 'a') + "\xC3\xA9" + std::string(44, 'b'));
    unsigned char out[258] = {};
    out[256] = 0xAA;
    s.GetPascalString(out);
    EXPECT_EQ(pascalBody(out), std::string(254, 'a') + "\xC3");
    EXPECT_EQ(out[256], 0xAA);
    unsigned char* own = s.GetPascalString();
    s.str() = "Courier";
    EXPECT_EQ(s.GetPascalString(), own);
    EXPECT_EQ(pascalBody(own), "Courier");
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
    LxString& alias = target;
    target = alias;
    EXPECT_EQ(target.str(), "new");
}

TEST(LxString, ComparisonsIgnoreAsciiCaseOnly)
{
    const struct { const char *a, *b; int sign; } cases[] = {
        {"Arial", "ARIAL", 0}, {"a", "B", -1}, {"B", "a", 1}, {"Times", "TIMES NEW", -1}, {"_", "a", -1} /* lowered first */, {"\xC3\x89", "\xC3\xA9", -1}};
    for (const auto& c : cases) {
        const LxString a(c.a), b(c.b);
        EXPECT_EQ(std::make_tuple(a == std::string(c.b), a < b, a >= c.b), std::make_tuple(c.sign == 0, c.sign < 0, c.sign >= 0)) << c.a << " " << c.b;
    }
}

// The wide form is widened UTF-16: a pair stays two elements, and each
// element is narrowed to 16 bits on the way back. Both placeholders give
// nothing.
TEST(LxString, WideFormsAreWidenedUTF16)
{
    EXPECT_EQ(UTF8ToWide(LxString("a\xF0\x9F\x98\x80")), std::wstring({L'a', wchar_t(0xD83D), wchar_t(0xDE00)}));
    EXPECT_TRUE(UTF8ToWide(LxString("ok\xFF")).empty());
    std::string out;
    EXPECT_EQ(WideToUTF8(std::wstring(1, wchar_t(0x1F600)), &out), 3u);
    EXPECT_EQ(out, "\xEF\x98\x80");
    EXPECT_TRUE(DecomposedToPrecomposed(L"e\u0301").empty());
    EXPECT_TRUE(PrecomposedToDecomposed(L"\u00E9").empty());
}

// The invalid encoding means the system one, Mac Roman; a failed set keeps
// the text unless the source was a platform string.
TEST(LxString, EncodedBytesInAndOut)
{
    LxString s("old");
    EXPECT_TRUE(s.Set("\x80", kCFStringEncodingInvalidId));
    EXPECT_EQ(s.str(), "\xC3\x84");
    EXPECT_FALSE(s.Set("\xC3", kCFStringEncodingUTF8));
    EXPECT_EQ(s.str(), "\xC3\x84");
    EXPECT_FALSE(s.Set(PlatformString(1, char16_t(0xD800))));
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(LxString("\xC3\xA9").GetCFString(kCFStringEncodingInvalidId), PlatformString(u"\u221A\u00A9"));
}

TEST(TextEncoding, LegacyEncodingsAndFailures)
{
    const struct { const char* bytes; uint32_t encoding; const char16_t* text; } cases[] = {
        {"Caf\x8E\xDE", kCFStringEncodingMacRoman, u"Caf\u00E9\uFB01"}, {"\x93\xFA\x96\x7B", kCFStringEncodingMacJapanese, u"\u65E5\u672C"},
        {"\x82\xA0\xB1", kCFStringEncodingShiftJIS, u"\u3042\uFF71"}};
    for (const auto& c : cases) EXPECT_EQ(TextEncoding::Decode(c.bytes, c.encoding), PlatformString(c.text)) << c.bytes;
    const std::pair<std::string, uint32_t> invalid[] = {{"\x93", kCFStringEncodingShiftJIS}, {"\x80", kCFStringEncodingASCII},
        {"\xED\xA0\x80", kCFStringEncodingUTF8}, {std::string("a\0b", 3), kCFStringEncodingUTF16BE}, {"abc", 0x7777}};
    for (const auto& [text, encoding] : invalid) EXPECT_FALSE(TextEncoding::Decode(text, encoding)) << text;
}

// StringCbPrintfA reports a result of exactly size - 1 characters as
// success although its last one is cut: kept deliberately.
TEST(StringSafe, BoundedFunctionsAndTheirCodes)
{
    char buf[8];
    EXPECT_EQ(StringCbPrintfA(buf, 4, "%s", "abc"), S_OK);
    EXPECT_STREQ(buf, "ab");
    char cat[6] = "ab";
    EXPECT_EQ(StringCatWorkerA(cat, sizeof cat, "cdefgh"), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(cat, "abcde");  // truncated, not rolled back
}

TEST(GStringUtils, EditingSplittingStrippingAndEscaping)
{
    LxString s("x \n ");
    EXPECT_TRUE(s.TrimWhitespaceFromEnd());
    EXPECT_EQ(s.str(), "x \n");  // a line end is not trimmed
    EXPECT_EQ(ReplaceAll(&s, "x", "xx"), 1);  // inserted text is never searched
    char dst[8] = "ZZZZZZZ";
    EXPECT_STREQ(strncpyNULLTerminate(dst, "abcdef", 4), "abc");
    EXPECT_EQ(dst[4], 'Z');
    EXPECT_EQ(TokenizeString(",,a , b,,", ", "), (std::vector<std::string>{"a", "b"}));
    // Whitespace is non-graphic ASCII.
    EXPECT_EQ(StripWhitespace(" \t\r\n\x7F" "Bold \n"), "Bold");
    EXPECT_EQ(StripPrecedingString("ababX", "ab"), "X");
    EXPECT_EQ(StringFindNoCase("Times New Roman", "NEW"), 6u);
    EXPECT_EQ(HexadecimalString("\x0A\x1B\x00\xFF", 4), "0A1B00FF");
    // Ampersands are escaped first and unescaped last, so "&amp;lt;" stays "&lt;".
    EXPECT_EQ(EscapeRequiredXMLEntities("\"x\" > &lt;'"), "&quot;x&quot; &gt; &amp;lt;&apos;");
    EXPECT_EQ(UnescapeRequiredXMLEntities("&amp;lt;&gt;&#60;&LT;"), "&lt;>&#60;&LT;");
}

// Numbers are read by stream extraction after stripping; nothing fails
// visibly. IsNumber is deliberately loose.
TEST(GStringUtils, NumberParsing)
{
    const std::pair<const char*, int32_t> signed32[] = {{" 42 ", 42}, {"x1", 0}, {"12abc", 12}, {"0x10", 0}, {"3.9", 3}};
    for (const auto& [text, value] : signed32) EXPECT_EQ(UTF8StringToSInt32(text), value) << text;
    const std::pair<const char*, bool> bools[] = {{" YES ", true}, {"1x", true}, {"2", false}, {"on", false}};
    for (const auto& [text, value] : bools) EXPECT_EQ(UTF8StringToBool(text), value) << text;
    const std::pair<const char*, bool> numbers[] = {{"-0", true}, {"00x", true}, {"-0z", true}, {" 5", true}, {"12a", false}, {"", false}, {"5 ", false}, {"+0", false}};
    for (const auto& [text, value] : numbers) EXPECT_EQ(IsNumber(text), value) << '"' << text << '"';
}

// Encoding 2 breaks a case-only tie in favour of the upper-case string
// (kept deliberately) and hands any other difference to Unicode collation.
TEST(GStringUtils, CompareNoCaseByEncoding)
{
    const struct { EStringEncoding encoding; const char *a, *b; int expected; } cases[] = {
        {kStringEncodingASCII, "abc", "ABCDE", -2}, {kStringEncoding8Bit, "Abc", "abc", 32}, {kStringEncoding8Bit, "aBc", "abC", 32},
        {kStringEncoding8Bit, "Abc", "abd", 'C' - 'D'}, {kStringEncoding8Bit, "abcde", "ABC", 2}, {kStringEncoding8Bit, "", "abc", -1},
        {kStringEncoding8Bit, "x\xC3\xA9", "X\xC3\x89", 0}, {kStringEncodingUnicode, "a", nullptr, 1}};
    for (const auto& c : cases)
        EXPECT_EQ(OSCompareStringsNoCase(c.encoding, c.a, c.b), c.expected) << c.a << " vs " << (c.b ? c.b : "null");
    EXPECT_EQ(OSCompareStringsNoCase(kStringEncodingASCII, "abX", 2, "ABY", 2), 0);
}

}  // namespace
