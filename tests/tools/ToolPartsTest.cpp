// The tool's own rules, checked in process: sidecar owners, attribute
// names, duplicate grouping, terminal text.
#include <gtest/gtest.h>

#include "Attributes.h"
#include "DuplicateGroups.h"
#include "MacSidecars.h"
#include "Terminal.h"
#include "TextWrap.h"

namespace {

using namespace tpcli;

TEST(MacSidecars, OwnersOfEverySidecarPlace)
{
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {"dir/._Font", "dir/Font"},
        {"._Font", "Font"},
        {"dir/.AppleDouble/Font", "dir/Font"},
        {"top/__MACOSX/sub/._Font", "top/sub/Font"},
        {"__MACOSX/._Font", "Font"},
        {"a/__MACOSX/b/__MACOSX/._F", "a/__MACOSX/b/F"},  // the nearest one is unzip's
        {"top/__MACOSX/sub/Font", std::nullopt},           // not a "._" file
        {"dir/.AppleDouble/sub/Font", std::nullopt},
        {"dir/Font", std::nullopt},
        {"dir/._", std::nullopt},
        {"dir/.hidden", std::nullopt},
    };
    for (const auto& [path, owner] : cases) EXPECT_EQ(SidecarOwner(path), owner) << path;
    EXPECT_TRUE(IsSidecarPath("x/__MACOSX/y/Font"));
    EXPECT_FALSE(IsSidecarPath("x/__MACOSX2/Font"));
}

TEST(Attributes, MasksByNameNumberOrAll)
{
    const std::pair<std::string, std::optional<unsigned long>> cases[] = {
        {"postscript-name", 0x1},
        {"Kind, FAMILY", 0x1002},
        {"full_name,display-name", 0x18000},
        {"checksum,legacy-checksum,kerning-checksum", 0x24010},
        {"0x4001", 0x4001},
        {"16", 0x10},
        {"0", 0},
        {"all", 0xFF03F},
        {"kind,,", 0x2},
        {"0x40", std::nullopt},  // undefined bit
        {"weight", std::nullopt},
        {"", std::nullopt},
        {" , ", std::nullopt},
        {"0x1z", std::nullopt},
    };
    for (const auto& [text, mask] : cases) {
        std::string error;
        EXPECT_EQ(ParseAttributeMask(text, error), mask) << text;
        EXPECT_EQ(error.empty(), mask.has_value()) << text;
    }
    EXPECT_EQ(AttributeNames(0x4001), (std::vector<std::string>{"postscript-name", "checksum"}));
}

FaceAt At(const std::string& path, const std::string& name, unsigned long checksum)
{
    FaceAt at{path, 1, {}};
    at.face.mask = kTP_AttrPostScriptName | kTP_AttrTypeprobeChecksum;
    at.face.texts[kTP_AttrPostScriptName] = name;
    at.face.numbers[kTP_AttrTypeprobeChecksum] = checksum;
    return at;
}

TEST(DuplicateGroups, SameChecksumsAndNamesUnderSeveralChecksums)
{
    const auto groups = GroupDuplicates({At("a", "Sans", 1), At("b", "Serif", 2), At("c", "sans", 3),
                                         At("d", "Sans", 1), At("e", "", 4), At("f", "", 5)});
    ASSERT_EQ(groups.sameRelease.size(), 1u);
    ASSERT_EQ(groups.sameRelease[0].faces.size(), 2u);
    EXPECT_EQ(groups.sameRelease[0].faces[1].path, "d");
    // Letter case aside; faces without a name are no conflict.
    ASSERT_EQ(groups.conflicts.size(), 1u);
    ASSERT_EQ(groups.conflicts[0].releases.size(), 2u);
    EXPECT_EQ(groups.conflicts[0].releases[1].faces[0].path, "c");
}

TEST(Terminal, WidthsAndPrintableText)
{
    const std::pair<std::string, size_t> widths[] = {
        {"Sans", 4}, {"Caf\xC3\xA9", 4}, {"e\xCC\x81", 1}, {"\xE6\x98\x8E\xE6\x9C\x9D", 4}};
    for (const auto& [text, width] : widths) EXPECT_EQ(DisplayWidth(text), width) << text;
    const std::pair<std::string, std::string> printable[] = {
        {"Sans\x1B[31m", "Sans\xEF\xBF\xBD[31m"},  // no escape reaches the terminal
        {"a\xFF" "b", "a\xEF\xBF\xBD" "b"},
        {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},  // overlong form
        {"Caf\xC3\xA9", "Caf\xC3\xA9"},
    };
    for (const auto& [text, shown] : printable) EXPECT_EQ(Printable(text), shown) << text;
    EXPECT_EQ(Wrapped("one two three four", 9), "one two\nthree\nfour");
    EXPECT_EQ(Wrapped("first\n\nsecond", 20), "first\n\nsecond");
    EXPECT_EQ(Wrapped("unbreakable-word x", 5), "unbreakable-word\nx");
}

}  // namespace
