#include <gtest/gtest.h>

#include <string>

#include "support/TextEncoding.h"

namespace {

using namespace TextEncoding;

struct CharCase {
    const char* bytes;  // in the legacy encoding
    const char16_t* text;
};

TEST(TextEncoding, MacRomanHighBytesBothWays)
{
    const CharCase cases[] = {
        {"\x8E", u"\u00E9"},            // é
        {"\x80", u"\u00C4"},            // Ä
        {"\xA5", u"\u2022"},            // bullet
        {"\xD0", u"\u2013"},            // en dash
        {"\xCA", u"\u00A0"},            // no-break space
        {"\xDE\xDF", u"\uFB01\uFB02"},  // fi, fl ligatures
        {"Caf\x8E", u"Caf\u00E9"},
    };
    for (const CharCase& c : cases) {
        EXPECT_EQ(Decode(c.bytes, kCFStringEncodingMacRoman), PlatformString(c.text)) << c.bytes;
        EXPECT_EQ(Encode(c.text, kCFStringEncodingMacRoman), std::string(c.bytes)) << c.bytes;
    }
    EXPECT_EQ(ToUTF8("\x8E", kCFStringEncodingMacRoman), std::string("\xC3\xA9"));
}

TEST(TextEncoding, EveryMacRomanByteRoundTrips)
{
    std::string all;
    for (int b = 0; b < 256; ++b) all += char(b);
    auto text = Decode(all, kCFStringEncodingMacRoman);
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->size(), 256u);
    EXPECT_EQ(Encode(*text, kCFStringEncodingMacRoman), all);
}

TEST(TextEncoding, SystemEncodingIsMacRoman)
{
    EXPECT_EQ(Resolve(kCFStringEncodingInvalidId), kCFStringEncodingMacRoman);
    EXPECT_EQ(Resolve(kCFStringEncodingUTF8), kCFStringEncodingUTF8);
    EXPECT_EQ(Decode("\x8E", kCFStringEncodingInvalidId), PlatformString(u"\u00E9"));
}

TEST(TextEncoding, ShiftJISBothWays)
{
    const CharCase cases[] = {
        {"\x93\xFA\x96\x7B", u"\u65E5\u672C"},  // 日本
        {"\x82\xA0", u"\u3042"},                // あ
        {"\xB1", u"\uFF71"},                    // half-width ｱ
        {"ABC", u"ABC"},
    };
    for (uint32_t encoding : {kCFStringEncodingShiftJIS, kCFStringEncodingMacJapanese}) {
        for (const CharCase& c : cases) {
            EXPECT_EQ(Decode(c.bytes, encoding), PlatformString(c.text)) << c.bytes;
            EXPECT_EQ(Encode(c.text, encoding), std::string(c.bytes)) << c.bytes;
        }
    }
    EXPECT_EQ(ToUTF8("\x93\xFA", kCFStringEncodingShiftJIS), std::string("\xE6\x97\xA5"));
}

TEST(TextEncoding, InvalidBytesGiveNothing)
{
    EXPECT_FALSE(Decode("\x93", kCFStringEncodingShiftJIS));      // lead byte alone
    EXPECT_FALSE(Decode("\x80", kCFStringEncodingASCII));
    EXPECT_FALSE(Decode("\xC3", kCFStringEncodingUTF8));          // truncated
    EXPECT_FALSE(Decode("\xC0\xAF", kCFStringEncodingUTF8));      // overlong
    EXPECT_FALSE(Decode("\xED\xA0\x80", kCFStringEncodingUTF8));  // encoded surrogate
    EXPECT_FALSE(Decode(std::string("a\0b", 3), kCFStringEncodingUTF16BE));  // odd length
    EXPECT_FALSE(ToUTF8("\xFF", kCFStringEncodingUTF8));
    EXPECT_FALSE(Decode("abc", 0x7777));  // unsupported encoding
}

TEST(TextEncoding, UnrepresentableTextGivesNothing)
{
    EXPECT_FALSE(Encode(u"\u00E9", kCFStringEncodingASCII));
    EXPECT_FALSE(Encode(u"\u65E5", kCFStringEncodingMacRoman));
    EXPECT_FALSE(Encode(PlatformString(1, char16_t(0xDC00)), kCFStringEncodingUTF8));
    EXPECT_FALSE(UTF16ToUTF8(PlatformString(u"a") + char16_t(0xD800)));
}

TEST(TextEncoding, UTF8AndUTF16)
{
    EXPECT_EQ(UTF8ToUTF16("\xF0\x9F\x98\x80"), PlatformString(u"\U0001F600"));
    EXPECT_EQ(UTF16ToUTF8(u"\U0001F600\u00E9"), std::string("\xF0\x9F\x98\x80\xC3\xA9"));
    EXPECT_EQ(Decode(std::string("\x00\x41\xD8\x3D\xDE\x00", 6), kCFStringEncodingUTF16BE),
              PlatformString(u"A\U0001F600"));
    EXPECT_EQ(Decode(std::string("\x41\x00", 2), kCFStringEncodingUTF16LE), PlatformString(u"A"));
    EXPECT_EQ(ToUTF8(std::string("a\0b", 3), kCFStringEncodingUTF8), std::string("a\0b", 3));
}

TEST(TextEncoding, EmptyInputIsEmptyNotFailure)
{
    for (uint32_t encoding : {kCFStringEncodingUTF8, kCFStringEncodingMacRoman,
                              kCFStringEncodingShiftJIS, kCFStringEncodingUTF16BE}) {
        EXPECT_EQ(Decode("", encoding), PlatformString()) << encoding;
        EXPECT_EQ(Encode(u"", encoding), std::string()) << encoding;
    }
}

}  // namespace
