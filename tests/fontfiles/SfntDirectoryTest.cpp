// Table lookup in an sfnt directory, the platform verdict and the kerning
// checksum, each bounded by the buffer.
#include "fontfiles/SfntDirectory.h"

#include <gtest/gtest.h>

#include "common/SfntBuilder.h"
#include "fontfiles/SfntPlatform.h"
#include "support/Refusal.h"

namespace {

using Font = std::vector<uint8_t>;

// The font with `extra` zero bytes after it and a 32-bit value put at `at`.
Font Patched(Font font, size_t extra = 0, size_t at = 0, uint32_t value = 0)
{
    font.resize(font.size() + extra);
    for (size_t i = 0; at && i < 4; ++i) font[at + i] = uint8_t(value >> (24 - 8 * i));
    return font;
}

TEST(FindSpecifiedTable, ExactTagsAndEntriesInsideTheBuffer)
{
    const Font two = testfonts::sfnt(0x00010000, {{"OS/2", "abcd"}, {"name", "efgh"}});
    const Font bare = testfonts::sfnt(0x00010000, {{"kern", ""}});  // 28 bytes: nothing after the entry
    const Font head = testfonts::sfnt(0x00010000, {{"head", "1234"}}), huge = Patched(head, 0, 4, 0x7FFF0000);
    const Font tagAb = testfonts::sfnt(0x00010000, {{std::string("ab\0\0", 4), "data"}});
    const Font text = {'H', 'e', 'l', 'l', 'o', ',', ' ', 'w', 'o', 'r', 'l', 'd', '!', '!'};
    // Only a font that claims to be an sfnt is refused with a reason.
    const struct { const char* what; Font font; const char* tag; bool found; const char* reason = nullptr; } cases[] = {
        {"exact tag", two, "name", true},
        {"case matters", two, "NAME", false},
        {"case matters with a slash", two, "os/2", false},
        {"a tag with a NUL ends there", tagAb, "ab", true}, {"not past the NUL", tagAb, "ab\x01", false},
        {"the buffer must reach past the entry", bare, "kern", false, "sfnt: table directory of 1 entries fills the whole font (28 bytes)"},
        {"one byte past the entry", Patched(bare, 1), "kern", true},
        {"twelve bytes find nothing", Font(bare.begin(), bare.begin() + 12), "kern", false, "sfnt: the font has 12 bytes"},
        {"a negative count", Patched(head, 0, 4, 0x80000000), "head", false, "sfnt: numTables 32768 is 32768 or more"},
        {"a huge count is bounded by the buffer", huge, "head", true},
        {"and finds nothing else", huge, "glyf", false, "sfnt: table directory of 32767 entries needs 524284 bytes, the font has 32"},
        {"text is no sfnt", text, "name", false},
    };
    for (const auto& c : cases) {
        RefusalLog log;
        EXPECT_EQ(bool(FindSpecifiedTable(ByteView(c.font), c.tag)), c.found) << c.what;
        EXPECT_TRUE(c.reason ? log.text().find(c.reason) == 0 : log.text().empty()) << c.what << ": " << log.text();
    }

    // A valid entry must end within the buffer: "name" ends exactly at its end.
    auto name = FindSpecifiedTable(ByteView(two), "name");
    ASSERT_TRUE(name);
    EXPECT_TRUE(ValidateDirectoryEntry(&*name, ByteView(two)) && !ValidateDirectoryEntry(&*name, ByteView()));
    name->length += 1;
    RefusalLog log;
    EXPECT_FALSE(ValidateDirectoryEntry(&*name, ByteView(two)) || FindRequiredTable(ByteView(two), "post"));
    EXPECT_EQ(log.reasons(), (std::vector<std::string>{"sfnt: table 'name' (offset 48, length 5) runs past the end of the font (52 bytes)",
                                                        "sfnt: no 'post' table among the 2 in the directory"}));
}

TEST(GetPlatformTTF, CrossPlatformNeedsEveryRequiredTableValid)
{
    auto required = testfonts::requiredTables(), noHmtx = required, kern = required;
    noHmtx.erase(noHmtx.begin() + 4);
    kern.push_back({"kern", "kkkk"});
    const Font all = testfonts::sfnt(0x00010000, required), withKern = testfonts::sfnt(0x4F54544F, kern);
    const struct { const char* what; Font font; const char* platform; } cases[] = {
        {"every required table", all, "1:crossplatform"}, {"OpenType with a valid kern", withKern, "1:crossplatform"},
        {"no hmtx", testfonts::sfnt(0x00010000, noHmtx), "1:mac"},
        {"a Mac TrueType version", testfonts::sfnt(0x74727565, required), "1:mac"},
        {"a kern past the end", Patched(withKern, 0, 12 + 16 * 8 + 12, 0x1000), "1:mac"},
        {"an OS/2 past the end", Patched(all, 0, 12 + 12, 0x1000), "1:mac"},  // the first entry's length
        {"four bytes", Font{0, 1, 0, 0}, "0:unchanged"},
    };
    for (const auto& c : cases) {
        LxString platform("unchanged");
        const int result = GetPlatformTTF(ByteView(c.font), &platform);
        EXPECT_EQ(std::to_string(result) + ":" + platform.str(), c.platform) << c.what;
    }
    EXPECT_EQ(GetPlatformTTF(ByteView(all), nullptr), 0);
}

TEST(KerningChecksum, ChosenTableAndItsBoundaries)
{
    const std::string five("\0\0\0\5", 4);
    const struct { const char* what; Font font; int result; uint32_t checksum; } cases[] = {
        {"GPOS before glyf", testfonts::sfnt(0x00010000, {{"GPOS", std::string("\0\0\0\1\0\0\0\2", 8)}, {"glyf", five}}), 1, 3},
        {"kern before GPOS", Patched(testfonts::sfnt(0x00010000, {{"GPOS", five}, {"kern", std::string("\0\0\0\2", 4)}}), 1), 1, 2},
        // An unaligned length gives the stored checksum as it stands.
        {"unaligned length", Patched(testfonts::sfnt(0x00010000, {{"kern", "abcdef"}, {"glyf", "zzzz"}}), 0, 12 + 4, 0xDEADBEEF), 1, 0xDEADBEEF},
        // Intended: a table ending on the last byte, or starting at byte 0, sums to 0.
        {"ending on the last byte", testfonts::sfnt(0x00010000, {{"kern", five}}), 1, 0},
        {"ending before the last byte", Patched(testfonts::sfnt(0x00010000, {{"kern", five}}), 1), 1, 5},
        {"starting at byte 0", Patched(testfonts::sfnt(0x00010000, {{"kern", five}}), 1, 12 + 8, 0), 1, 0},
        {"no such table", testfonts::sfnt(0x00010000, {{"head", "1234"}}), 0, 99},
        {"the first present decides, even invalid", Patched(testfonts::sfnt(0x00010000, {{"kern", "1234"}, {"glyf", "5678"}}), 0, 12 + 8, 0x100000), 0, 99},
    };
    for (const auto& c : cases) {
        uint32_t checksum = 99;
        EXPECT_EQ(GetTrueTypeKerningTableChecksum(ByteView(c.font), &checksum), c.result) << c.what;
        EXPECT_EQ(checksum, c.checksum) << c.what;
    }
}

}  // namespace
