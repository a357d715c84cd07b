#include <gtest/gtest.h>

#include "fontfiles/FontKind.h"

namespace {

TEST(FontTypeFromExtension, TableOfPaths)
{
    const struct {
        const char* path;
        short kind;
    } cases[] = {
        {"font.ttf", kExtensionTTF},      {"Font.TTF", kExtensionTTF},
        {"/a/b.otf", kExtensionOTF},      {"x.ps", kExtensionPS},
        {"x.dfont", kExtensionDFont},     {"x.DFONT", kExtensionDFont},
        {"x.ttc", kExtensionTTC},         {"x.fot", kExtensionFOT},
        {"x.fnt", kExtensionFNT},         {"x.fon", kExtensionFON},
        {"x.pfm", kExtensionPFM},         {"x.pfb", kExtensionPFB},
        {"x.mmm", kExtensionMMM},         {"x.inf", kExtensionINF},
        {"font.ttf6", kExtensionUnknown}, {"archive.backup", kExtensionUnknown},
        {"a.b/font", kExtensionUnknown},  {"font", kExtensionUnknown},
        {"", kExtensionUnknown},          {"font.", kExtensionUnknown},
        {"a.ttf/b.ps", kExtensionPS},     {"dir.x/y.ttf", kExtensionTTF},
    };
    for (const auto& c : cases) EXPECT_EQ(fontTypeFromExtension(c.path), c.kind) << c.path;
    EXPECT_EQ(fontTypeFromExtension(nullptr), kExtensionUnknown);
}

}  // namespace
