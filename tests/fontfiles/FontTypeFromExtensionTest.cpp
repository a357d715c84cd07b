#include <gtest/gtest.h>

#include "fontfiles/FontKind.h"

namespace {

TEST(FontTypeFromExtension, TableOfPaths)
{
    const std::pair<const char*, short> cases[] = {
        {"font.ttf", kExtensionTTF}, {"Font.TTF", kExtensionTTF}, {"/a/b.otf", kExtensionOTF}, {"x.ps", kExtensionPS},
        {"x.dfont", kExtensionDFont}, {"x.ttc", kExtensionTTC}, {"x.fot", kExtensionFOT}, {"x.fnt", kExtensionFNT},
        {"x.fon", kExtensionFON}, {"x.pfm", kExtensionPFM}, {"x.pfb", kExtensionPFB}, {"x.mmm", kExtensionMMM},
        {"x.inf", kExtensionINF}, {"font.ttf6", kExtensionUnknown}, {"archive.backup", kExtensionUnknown},
        {"a.b/font", kExtensionUnknown}, {"", kExtensionUnknown}, {"font.", kExtensionUnknown}, {"a.ttf/b.ps", kExtensionPS},
    };
    for (auto [path, kind] : cases) EXPECT_EQ(fontTypeFromExtension(path), kind) << path;
    EXPECT_EQ(fontTypeFromExtension(nullptr), kExtensionUnknown);
}

}  // namespace
