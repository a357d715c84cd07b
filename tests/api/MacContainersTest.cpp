// A classic Mac font must identify the same in every container it can reach
// a Linux disk in: the same faces, names, resource numbers and checksums.
#include <gtest/gtest.h>

#include <memory>

#include "api/FontArray.h"
#include "common/MacFixtures.h"
#include "typeprobe/typeprobe.h"

namespace {

using namespace macfixtures;

struct ArrayDeleter {
    void operator()(TP_FontArray* array) const { TP_SpecifierFree(array); }
};

std::string baseName(const std::string& path)
{
    return path.substr(path.find_last_of('/') + 1);
}

// Every field, the printer font by its file name only (folders differ).
std::string describe(const std::string& path)
{
    TP_FontArray* raw = nullptr;
    if (TP_CreateSpecifier(path.c_str(), 0, kTP_AllAttributes, &raw) != 0) return "no faces";
    std::unique_ptr<TP_FontArray, ArrayDeleter> fonts(raw);
    std::ostringstream out;
    for (const TP_FontSpecifier& f : fonts->faces()) {
        out << f.kindName.str() << "|" << f.familyName.str() << "|" << f.postScriptName.str()
            << "|" << f.fullName.str() << "|" << f.displayName.str() << "|"
            << f.foundryName.str() << "|" << f.version.str() << "|"
            << baseName(f.printerFontName.str()) << "|" << f.platform.str() << "|" << std::hex
            << f.kerningChecksum << "|" << f.typeprobeChecksum << "|"
            << f.legacyTypeprobeChecksum << "|" << std::dec << f.outlineFileSize << "|"
            << f.fondStyle << "|" << f.firstResourceID << "|" << f.fondResourceID << "|"
            << fourCCString(f.fileType) << fourCCString(f.fileCreator) << "|"
            << fourCCString(f.outlineFileType) << fourCCString(f.outlineFileCreator) << "\n";
    }
    return out.str();
}

// Places the files (MacBinary, as FontForge wrote them) in the layout and
// describes the first.
std::string describeIn(Layout layout, const std::vector<std::string>& corpusFiles)
{
    size_t largest = 0;
    for (const auto& file : corpusFiles) largest = std::max(largest, ReadFile(CorpusPath(file)).size());
    const std::string base = UsesAttributes(layout) ? AttributeFolder(largest) : std::string();
    if (UsesAttributes(layout) && base.empty()) return "skipped";
    TempDir dir(base);
    std::filesystem::create_directories(dir / "fonts");
    std::string first;
    for (const auto& file : corpusFiles) {
        const Bytes original = ReadFile(CorpusPath(file));
        const std::string path = Place(layout, PartsOfMacBinary(original), original, dir);
        if (first.empty()) first = path;
    }
    return describe(first);
}

TEST(MacContainers, APostScriptFamilyIdentifiesTheSameEverywhere)
{
    const std::vector<std::string> family = {"ps-family/DejaVuSerif.bin", "ps-family/DejaVuSer.bin",
                                             "ps-family/DejaVuSerBol.bin", "ps-family/DejaVuSerIta.bin",
                                             "ps-family/DejaVuSerBolIta.bin"};
    const std::string reference = describeIn(Layout::MacBinaryIII, family);
    ASSERT_NE(reference, "no faces");
    EXPECT_NE(reference.find("PostScript|DejaVu Serif|DejaVuSerif-BoldItalic|"), std::string::npos)
        << reference;
    EXPECT_NE(reference.find("|DejaVuSerBolIta|mac|"), std::string::npos) << reference;
    size_t compared = 0;
    for (Layout layout : kLayouts) {
        const std::string other = describeIn(layout, family);
        if (other == "skipped") continue;
        EXPECT_EQ(other, reference) << LayoutName(layout);
        ++compared;
    }
    EXPECT_GE(compared, std::size(kLayouts) - 2);
}

TEST(MacContainers, ATrueTypeSuitcaseIdentifiesTheSameEverywhere)
{
    const std::vector<std::string> suitcase = {"tt-family/DejaVuSans.suit"};
    const std::string reference = describeIn(Layout::MacBinaryIII, suitcase);
    ASSERT_NE(reference, "no faces");
    EXPECT_NE(reference.find("TrueType|DejaVu Sans|DejaVuSans-BoldOblique|"), std::string::npos)
        << reference;
    size_t compared = 0;
    for (Layout layout : kLayouts) {
        const std::string other = describeIn(layout, suitcase);
        if (other == "skipped") continue;
        EXPECT_EQ(other, reference) << LayoutName(layout);
        ++compared;
    }
    // Attributes cannot hold the 187 KB suitcase on Linux file systems.
    EXPECT_GE(compared, std::size(kLayouts) - 2);
}

TEST(MacContainers, SuitcaseFacesReportTheirStylesAndResources)
{
    TP_FontArray* raw = nullptr;
    ASSERT_EQ(TP_CreateSpecifier(CorpusPath("ps-family/DejaVuSerif.bin").c_str(), 0,
                                 kTP_AllAttributes, &raw),
              0u);
    std::unique_ptr<TP_FontArray, ArrayDeleter> fonts(raw);
    ASSERT_EQ(fonts->size(), 4u);
    const char* printers[] = {"DejaVuSer", "DejaVuSerBol", "DejaVuSerIta", "DejaVuSerBolIta"};
    const int16_t firstIDs[] = {1096, 1098, 1100, 1102};
    for (unsigned long i = 0; i < 4; ++i) {
        const TP_FontSpecifier f = fonts->at(i);
        EXPECT_EQ(f.fondStyle, int32_t(i));
        EXPECT_EQ(f.firstResourceID, firstIDs[i]);
        EXPECT_EQ(f.fondResourceID, 1096);
        EXPECT_EQ(baseName(f.printerFontName.str()), printers[i]);
        EXPECT_EQ(fourCCString(f.fileType), "FFIL");
        EXPECT_EQ(fourCCString(f.fileCreator), "DMOV");
        EXPECT_EQ(fourCCString(f.outlineFileType), "LWFN");
        EXPECT_EQ(fourCCString(f.outlineFileCreator), "GWp1");
        EXPECT_NE(f.kerningChecksum, 0u);
    }
    unsigned long index = 99;
    EXPECT_EQ(TP_GetFontIndexForFONDResourceID(fonts.get(), 1096, 3, &index), 0u);
    EXPECT_EQ(index, 3u);
}

}  // namespace
