#include <gtest/gtest.h>

#include <memory>

#include "api/FontArray.h"
#include "support/ByteView.h"
#include "typeprobe/typeprobe.h"

namespace {

// One face with the foundry text, platform and creator codes given; the
// shipped foundry table decides.
std::string resolve(unsigned long (*accessor)(TP_FontArray*, unsigned long, char*, int),
                    const char* foundry, const char* platform, uint32_t fileCreator = 0,
                    uint32_t outlineCreator = 0)
{
    TP_FontArray array;
    TP_FontSpecifier face;
    face.foundryName = foundry;
    face.platform = platform;
    face.fileCreator = fileCreator;
    face.outlineFileCreator = outlineCreator;
    face.validAttributes = kTP_AllAttributes;
    array.Append(face);
    char buffer[128] = "untouched";
    EXPECT_EQ(accessor(&array, 0, buffer, sizeof buffer), 0u);
    return buffer;
}

TEST(TP_GetFoundryName, ResolvesTheFontsOwnTextThroughTheTable)
{
    EXPECT_EQ(resolve(TP_GetFoundryName, "Copyright (c) 2003 by Bitstream, Inc. DejaVu changes",
                      "crossplatform"),
              "DejaVu");
    EXPECT_EQ(resolve(TP_GetFoundryName, "(URW)++ Design & Development", "crossplatform"), "URW");
    EXPECT_EQ(resolve(TP_GetFoundryName, "Nobody in particular", "crossplatform"), "--");
    EXPECT_EQ(resolve(TP_GetFoundryName, "", "crossplatform"), "--");
}

TEST(TP_GetFoundryName, MacFacesTakeTheLegacyPath)
{
    // The legacy path falls back to the table's entry for unknown makers,
    // while the cross-platform path answers "--".
    const std::string legacy = resolve(TP_GetLegacyFoundryName, "Nobody in particular", "mac");
    EXPECT_EQ(resolve(TP_GetFoundryName, "Nobody in particular", "MAC"), legacy);
    EXPECT_EQ(resolve(TP_GetFoundryName, "(URW)++ Design", "mac"), "URW");
}

TEST(TP_GetLegacyFoundryName, CreatorCodesComeFirstUnlessQuestionable)
{
    // A questionable code on the file: only the font's own text counts.
    EXPECT_EQ(resolve(TP_GetLegacyFoundryName, "(URW)++ Design", "mac", fourCC("DMOV")), "URW");
    // A known code wins over the text.
    EXPECT_EQ(resolve(TP_GetLegacyFoundryName, "(URW)++ Design", "mac", 0, fourCC("ASPF")), "URW");
    EXPECT_EQ(resolve(TP_GetLegacyFoundryName, "", "mac", 0, 0), resolve(TP_GetLegacyFoundryName, "zzz", "mac"));
}

TEST(TP_GetFoundryName, NeedsTheFoundryBit)
{
    TP_FontArray array;
    TP_FontSpecifier face;
    face.validAttributes = kTP_AttrPostScriptName;
    array.Append(face);
    char buffer[8];
    EXPECT_EQ(TP_GetFoundryName(&array, 0, buffer, sizeof buffer), 5u);
    EXPECT_EQ(TP_GetLegacyFoundryName(&array, 0, buffer, sizeof buffer), 5u);
    EXPECT_EQ(TP_GetFoundryName(nullptr, 0, buffer, sizeof buffer), 1u);
}

}  // namespace
