#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/LxString.h"

namespace {

std::string pascalBody(const unsigned char* p)
{
    return std::string(reinterpret_cast<const char*>(p + 1), p[0]);
}

TEST(LxStringPascal, LongTextIsCutAt255Bytes)
{
    std::string text(300, 'x');
    for (size_t i = 0; i < text.size(); ++i) text[i] = char('a' + i % 26);
    LxString s(text);
    const unsigned char* p = s.GetPascalString();
    EXPECT_EQ(p[0], 255);
    EXPECT_EQ(pascalBody(p), text.substr(0, 255));

    unsigned char out[256];
    std::memset(out, 0xAA, sizeof out);
    s.GetPascalString(out);
    EXPECT_EQ(out[0], 255);
    EXPECT_EQ(pascalBody(out), text.substr(0, 255));
}

TEST(LxStringPascal, CutIgnoresUTF8SequencesAndWritesNoTerminator)
{
    LxString s(std::string(254, 'a') + "\xC3\xA9");  // 256 bytes, "é" straddles the cut
    unsigned char out[257];
    std::memset(out, 0xAA, sizeof out);
    s.GetPascalString(out);
    EXPECT_EQ(out[0], 255);
    EXPECT_EQ(out[255], 0xC3);
    EXPECT_EQ(out[256], 0xAA);

    LxString shortText("Helvetica");
    std::memset(out, 0xAA, sizeof out);
    shortText.GetPascalString(out);
    EXPECT_EQ(pascalBody(out), "Helvetica");
    EXPECT_EQ(out[10], 0xAA);
}

TEST(LxStringPascal, BufferIsKeptAndRefilledFromCurrentText)
{
    LxString s("Times");
    unsigned char* first = s.GetPascalString();
    s.str() = "Courier";
    unsigned char* second = s.GetPascalString();
    EXPECT_EQ(first, second);
    EXPECT_EQ(pascalBody(second), "Courier");
    s.clear();
    EXPECT_EQ(s.GetPascalString()[0], 0);
}

// The buffer pointer stays valid across assignment, which lets the tests see
// whether its bytes were copied without refilling it.
TEST(LxStringAssignment, PascalBufferCopiedOnlyWhenBothHaveOne)
{
    LxString source("stale");
    source.GetPascalString();
    source.str() = "fresh";  // the source's buffer still holds "stale"

    LxString target("old");
    unsigned char* buffer = target.GetPascalString();
    target = source;
    EXPECT_EQ(target.str(), "fresh");
    EXPECT_EQ(pascalBody(buffer), "stale");
    EXPECT_EQ(target.GetPascalString(), buffer);
}

TEST(LxStringAssignment, SourceWithoutBufferLeavesTargetBufferAlone)
{
    LxString source("new");
    LxString target("old");
    unsigned char* buffer = target.GetPascalString();
    target = source;
    EXPECT_EQ(target.str(), "new");
    EXPECT_EQ(pascalBody(buffer), "old");
}

TEST(LxStringAssignment, SelfAssignmentDoesNothing)
{
    LxString s("Palatino");
    unsigned char* buffer = s.GetPascalString();
    s.str() = "Optima";  // the buffer still holds "Palatino"
    LxString& alias = s;
    s = alias;
    EXPECT_EQ(s.str(), "Optima");
    EXPECT_EQ(pascalBody(buffer), "Palatino");
}

struct OrderCase {
    const char* a;
    const char* b;
    int sign;  // of a compared with b, ignoring ASCII case
};

TEST(LxString, ComparisonsIgnoreAsciiCase)
{
    const OrderCase cases[] = {
        {"Arial", "ARIAL", 0}, {"a", "B", -1},  {"B", "a", 1},
        {"", "", 0},           {"", "a", -1},   {"Times", "TIMES NEW", -1},
        {"_", "a", -1},  // '_' < 'a' once lowered
        {"\xC3\x89", "\xC3\xA9", -1},  // only ASCII letters fold: É and é differ
    };
    for (const OrderCase& c : cases) {
        SCOPED_TRACE(std::string(c.a) + " vs " + c.b);
        const LxString a(c.a);
        const std::string b(c.b);
        const LxString bx(c.b);
        EXPECT_EQ(a == b, c.sign == 0);
        EXPECT_EQ(a == c.b, c.sign == 0);
        EXPECT_EQ(a == bx, c.sign == 0);
        EXPECT_EQ(a != bx, c.sign != 0);
        EXPECT_EQ(a < b, c.sign < 0);
        EXPECT_EQ(a < c.b, c.sign < 0);
        EXPECT_EQ(a < bx, c.sign < 0);
        EXPECT_EQ(a <= bx, c.sign <= 0);
        EXPECT_EQ(a > bx, c.sign > 0);
        EXPECT_EQ(a >= c.b, c.sign >= 0);
        const int raw = LxString::CompareNoCase(c.a, c.b);
        EXPECT_EQ((raw > 0) - (raw < 0), c.sign);
    }
}

struct TrimCase {
    const char* in;
    const char* out;
    bool removed;
};

TEST(LxString, TrimWhitespaceFromEndRemovesOnlySpacesAndTabs)
{
    const TrimCase cases[] = {
        {"Bold \t", "Bold", true}, {"Bold\n", "Bold\n", false}, {"   ", "", true},
        {"\t", "", true},          {"", "", false},             {"a b", "a b", false},
        {"x \n ", "x \n", true},
    };
    for (const TrimCase& c : cases) {
        LxString s(c.in);
        EXPECT_EQ(s.TrimWhitespaceFromEnd(), c.removed) << '"' << c.in << '"';
        EXPECT_EQ(s.str(), c.out) << '"' << c.in << '"';
    }
}

TEST(LxString, ReplaceAllNeverSearchesInsertedText)
{
    LxString s("aaa");
    EXPECT_EQ(ReplaceAll(&s, "a", "aa"), 3);
    EXPECT_EQ(s.str(), "aaaaaa");

    LxString t("abcabc");
    EXPECT_EQ(ReplaceAll(&t, "bc", ""), 2);
    EXPECT_EQ(t.str(), "aa");

    LxString u("a-b");
    EXPECT_EQ(ReplaceAll(&u, "x", "y"), 0);
    EXPECT_EQ(u.str(), "a-b");

    LxString v("a/b/c");
    EXPECT_EQ(ReplaceAll(&v, '/', ':'), 2);
    EXPECT_EQ(v.str(), "a:b:c");
}

TEST(LxString, StrncpyNULLTerminateAlwaysTerminates)
{
    char dst[8];
    std::memset(dst, 'Z', sizeof dst);
    EXPECT_EQ(strncpyNULLTerminate(dst, "abcdef", 4), dst);
    EXPECT_STREQ(dst, "abc");
    EXPECT_EQ(dst[4], 'Z');

    std::memset(dst, 'Z', sizeof dst);
    strncpyNULLTerminate(dst, "ab", sizeof dst);
    EXPECT_STREQ(dst, "ab");
    EXPECT_EQ(dst[6], '\0');  // strncpy zero fill

    strncpyNULLTerminate(dst, "abc", 1);
    EXPECT_STREQ(dst, "");
}

TEST(LxStringConversion, SetFromEncodedBytes)
{
    LxString s("old");
    EXPECT_TRUE(s.Set("caf\x8E", kCFStringEncodingMacRoman));
    EXPECT_EQ(s.str(), "caf\xC3\xA9");
    EXPECT_TRUE(s.Set("\x80", kCFStringEncodingInvalidId));  // system encoding: Mac Roman
    EXPECT_EQ(s.str(), "\xC3\x84");
    EXPECT_TRUE(s.Set("\x93\xFA\x96\x7B", kCFStringEncodingMacJapanese));
    EXPECT_EQ(s.str(), "\xE6\x97\xA5\xE6\x9C\xAC");  // 日本

    s = LxString("keep");
    EXPECT_FALSE(s.Set("\xC3", kCFStringEncodingUTF8));
    EXPECT_EQ(s.str(), "keep");
    EXPECT_FALSE(s.Set("x", 0x7777));
    EXPECT_EQ(s.str(), "keep");
}

TEST(LxStringConversion, SetFromPlatformString)
{
    LxString s;
    EXPECT_TRUE(s.Set(PlatformString(u"Gr\u00FC\u00DF \U0001F600")));
    EXPECT_EQ(s.str(), "Gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80");

    PlatformString lone(1, char16_t(0xD800));
    s = LxString("full");
    EXPECT_FALSE(s.Set(lone));
    EXPECT_TRUE(s.empty());
    s = PlatformString(u"x");
    EXPECT_EQ(s.str(), "x");
    EXPECT_EQ(LxString(PlatformString(u"\u00E9")).str(), "\xC3\xA9");
}

TEST(LxStringConversion, GetCFStringReadsTheTextInAnEncoding)
{
    LxString s("\xC3\xA9");
    EXPECT_EQ(s.GetCFString(kCFStringEncodingUTF8), PlatformString(u"\u00E9"));
    // The same two bytes read as Mac Roman are two characters.
    EXPECT_EQ(s.GetCFString(kCFStringEncodingInvalidId), PlatformString(u"\u221A\u00A9"));
    EXPECT_FALSE(LxString("\xFF").GetCFString(kCFStringEncodingUTF8).has_value());
    EXPECT_FALSE(LxString("\xC3\xA9").GetCFString(kCFStringEncodingASCII).has_value());
    EXPECT_EQ(LxString("").GetCFString(kCFStringEncodingUTF8), PlatformString());
}

TEST(LxStringWide, UTF8ToWideKeepsSurrogatePairsAsTwoElements)
{
    const std::wstring wide = UTF8ToWide(LxString("a\xC3\xA9\xF0\x9F\x98\x80"));
    ASSERT_EQ(wide.size(), 4u);
    EXPECT_EQ(wide[0], L'a');
    EXPECT_EQ(wide[1], wchar_t(0xE9));
    EXPECT_EQ(wide[2], wchar_t(0xD83D));
    EXPECT_EQ(wide[3], wchar_t(0xDE00));

    LxString s("\xF0\x9F\x98\x80");
    const wchar_t* cached = s;
    EXPECT_EQ(std::wstring(cached), std::wstring({wchar_t(0xD83D), wchar_t(0xDE00)}));
}

TEST(LxStringWide, InvalidUTF8GivesEmptyWide)
{
    EXPECT_TRUE(UTF8ToWide(LxString("ok\xFF")).empty());
    EXPECT_TRUE(UTF8ToWide(LxString("\xC0\x80")).empty());      // overlong
    EXPECT_TRUE(UTF8ToWide(LxString("\xED\xA0\x80")).empty());  // encoded surrogate
    LxString s("\xE2\x82");
    EXPECT_STREQ(static_cast<const wchar_t*>(s), L"");
}

TEST(LxStringWide, WideToUTF8NarrowsTo16Bits)
{
    std::string out = "untouched";
    // U+1F600 keeps only 0xF600, a private-use character.
    EXPECT_EQ(WideToUTF8(std::wstring(1, wchar_t(0x1F600)), &out), 3u);
    EXPECT_EQ(out, "\xEF\x98\x80");
    EXPECT_EQ(WideToUTF8(std::wstring(L"caf\u00E9")).str(), "caf\xC3\xA9");

    // A widened surrogate pair comes back as the one character.
    const std::wstring pair = {wchar_t(0xD83D), wchar_t(0xDE00)};
    EXPECT_EQ(WideToUTF8(pair).str(), "\xF0\x9F\x98\x80");
    EXPECT_EQ(WideToUTF8(UTF8ToWide(LxString("Z\xC3\xBCrich"))).str(), "Z\xC3\xBCrich");
}

TEST(LxStringWide, WideToUTF8StopsAtZeroAndRejectsLoneSurrogates)
{
    std::string out;
    EXPECT_EQ(WideToUTF8(std::wstring(L"ab\0cd", 5), &out), 2u);
    EXPECT_EQ(out, "ab");

    out = "untouched";
    EXPECT_EQ(WideToUTF8(std::wstring(1, wchar_t(0xDC00)), &out), 0u);
    EXPECT_EQ(out, "untouched");
    EXPECT_EQ(WideToUTF8(std::wstring(1, wchar_t(0x1D800)), &out), 0u);  // narrows to 0xD800
}

TEST(LxStringWide, PlatformAndUnitBuffersWidenUnitByUnit)
{
    const unsigned short units[] = {0x41, 0xD83D, 0xDE00, 0, 0x42};
    EXPECT_EQ(UniCharBufToWide(units), std::wstring({L'A', wchar_t(0xD83D), wchar_t(0xDE00)}));
    EXPECT_TRUE(UniCharBufToWide(nullptr).empty());
    EXPECT_EQ(CFStringToWide(PlatformString(u"\U0001F600")).size(), 2u);
    const std::wstring wide = {L'a', wchar_t(0x10041), wchar_t(-1)};
    EXPECT_EQ(CFStringCreateWithWString(wide), PlatformString({u'a', u'A', char16_t(0xFFFF)}));
}

}  // namespace
