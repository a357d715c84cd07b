// A classic Mac font must identify the same in every container it can reach
// a Linux disk in: every field of every face. Fonts: a PostScript family with
// its printer fonts, a TrueType suitcase, a bitmap-only suitcase (whose
// display name comes from its family resource) and a Type 1 font in a data
// fork; the last two reach the reader of the font's own data fork.
#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "api/FontArray.h"
#include "common/FaceArrays.h"
#include "common/FondBuilder.h"
#include "common/MacFixtures.h"
#include "typeprobe/typeprobe.h"

namespace {

using namespace macfixtures;

std::vector<MacParts> corpusFiles(std::initializer_list<const char*> names)
{
    std::vector<MacParts> files;
    for (const char* name : names) files.push_back(PartsOfMacBinary(ReadFile(CorpusPath(name))));
    return files;
}

// One FOND named "Fixed" with a 12-point strike and the strike: no outline,
// no printer font.
std::vector<MacParts> bitmapSuitcase()
{
    fondbuilder::FondRecipe recipe;
    recipe.entries = {{12, 0, 128}};
    MacParts parts{"Fixed", fourCC("FFIL"), fourCC("DMOV"), {}, {}};
    parts.resource = ResourceFile({{"FOND", 128, "Fixed", fondbuilder::BuildFond(recipe)},
                                   {"NFNT", 128, std::nullopt, Text("a 12-point strike")}});
    return {parts};
}

// A Type 1 font as the file-kind test knows it in a data fork: a segment
// header whose length is the whole file's, and a copyright line at the top;
// no Finder type, as for a font copied from a PC.
std::vector<MacParts> type1Text()
{
    const std::string text =
        "%!PS-AdobeFont-1.0: Sample-Regular 001.002\n%Copyright: none\n"
        "/FontName /Sample-Regular def\n/FamilyName (Sample) readonly def\n"
        "/version (001.002) readonly def\ncurrentfile eexec\n";
    ByteWriter font;
    font.u8(0x80).u8(1).u32(uint32_t(6 + text.size())).bytes(text);
    return {MacParts{"Sample", 0, 0, font.take(), {}}};
}

struct Sample {
    const char* name;
    std::function<std::vector<MacParts>()> files;
    const char* expected;  // a line every container must give
    const char* wrapper;
    bool dataForkOnly = false;
    bool fitsAttributes = true;  // Linux keeps at most 64 KiB in one attribute
};

const Sample kSamples[] = {
    {"PostScriptFamily",
     [] {
         return corpusFiles({"ps-family/DejaVuSerif.bin", "ps-family/DejaVuSer.bin",
                             "ps-family/DejaVuSerBol.bin", "ps-family/DejaVuSerIta.bin",
                             "ps-family/DejaVuSerBolIta.bin"});
     },
     "PostScript|DejaVu Serif|DejaVuSerif-BoldItalic|", "resource fork"},
    {"TrueTypeSuitcase", [] { return corpusFiles({"tt-family/DejaVuSans.suit"}); },
     "TrueType|DejaVu Sans|DejaVuSans-BoldOblique|", "resource fork", false, false},
    {"BitmapSuitcase", bitmapSuitcase, "||||Fixed|", "resource fork"},
    {"Type1DataFork", type1Text, "PostScript|Sample|Sample-Regular|Sample-Regular|Sample-Regular|",
     "PFB", true},
};

// Every layout, plus the data fork alone for a font that has no resource
// fork, and a MacBinary file asked for by its own ".bin" name.
enum class Extra { None, Plain, BinAsked };
struct Container {
    Layout layout;
    Extra extra = Extra::None;
};

using Case = std::tuple<Sample, Container>;

std::vector<Case> cases()
{
    std::vector<Case> all;
    for (const Sample& sample : kSamples) {
        if (sample.dataForkOnly) all.push_back({sample, {Layout::DotUnderscore, Extra::Plain}});
        all.push_back({sample, {Layout::BinSibling, Extra::BinAsked}});
        for (Layout layout : kLayouts)
            if (sample.fitsAttributes || !UsesAttributes(layout)) all.push_back({sample, {layout}});
    }
    return all;
}

// What every face says held it: the sample's wrapper, and the container
// the face's own fork came through.
std::string expectedWrapping(const Sample& sample, const Container& c)
{
    std::string container;
    if (c.extra != Extra::Plain) {
        switch (c.layout) {
        case Layout::AppleSingle: container = "AppleSingle"; break;
        case Layout::AppleAttributes:
        case Layout::NetatalkAttributes: container = sample.dataForkOnly ? "" : "extended attributes"; break;
        case Layout::DotUnderscore:
        case Layout::MacOSXDotUnderscore:
        case Layout::NetatalkFolder:
        case Layout::MacOSXZipFolder: container = sample.dataForkOnly ? "" : "AppleDouble sidecar"; break;
        default: container = "MacBinary";
        }
    }
    return std::string(sample.wrapper) + "/" + container;
}

std::string wrapping(const std::string& path)
{
    const facearrays::Array fonts = facearrays::Identify(path);
    char wrapper[32] = "", container[32] = "";
    if (fonts) TP_GetWrapper(fonts.get(), 0, wrapper, sizeof wrapper);
    if (fonts) TP_GetContainer(fonts.get(), 0, container, sizeof container);
    return std::string(wrapper) + "/" + container;
}

std::string containerName(const Container& c)
{
    if (c.extra == Extra::Plain) return "plain";
    if (c.extra == Extra::BinAsked) return "bin asked by name";
    return LayoutName(c.layout);
}

// Places every file of the sample and describes the first, then its
// wrapping on a line of its own; empty when no file system here keeps
// attributes of that size.
std::string describeIn(const Sample& sample, const Container& container)
{
    const std::vector<MacParts> files = sample.files();
    size_t largest = 0;
    for (const MacParts& f : files) largest = std::max(largest, f.resource.size());
    std::string base;
    if (UsesAttributes(container.layout)) {
        base = AttributeFolder(std::max<size_t>(largest, 1));
        if (base.empty()) return {};
    }
    TempDir dir(base);
    std::string first;
    for (const MacParts& parts : files) {
        std::string path;
        if (container.extra == Extra::Plain) {
            path = dir / ("fonts/" + parts.name);
            WriteFile(path, parts.data);
        } else {
            path = Place(container.layout, parts, MacBinaryFile(parts, 3), dir);
            if (container.extra == Extra::BinAsked) path += ".bin";
        }
        if (first.empty()) first = path;
    }
    return facearrays::Describe(first) + wrapping(first);
}

class EveryContainer : public testing::TestWithParam<Case> {};

TEST_P(EveryContainer, IdentifiesEveryFieldAlike)
{
    const auto& [sample, container] = GetParam();
    static std::map<std::string, std::string> references;
    std::string& reference = references[sample.name];
    if (reference.empty()) reference = describeIn(sample, {Layout::MacBinaryIII});
    ASSERT_NE(reference.find(sample.expected), std::string::npos) << reference;

    const std::string found = describeIn(sample, container);
    if (found.empty()) GTEST_SKIP() << "no file system here keeps extended attributes";
    const size_t wrapping = found.rfind('\n') + 1;
    EXPECT_EQ(found.substr(0, wrapping), reference.substr(0, reference.rfind('\n') + 1));
    EXPECT_EQ(found.substr(wrapping), expectedWrapping(sample, container));
}

INSTANTIATE_TEST_SUITE_P(
    MacFonts, EveryContainer, testing::ValuesIn(cases()),
    [](const testing::TestParamInfo<EveryContainer::ParamType>& info) {
        std::string name = std::string(std::get<0>(info.param).name) + "_" +
                           containerName(std::get<1>(info.param));
        for (char& c : name)
            if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
        return name;
    });

}  // namespace
