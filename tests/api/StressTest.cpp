// Hostile files through the whole library: thousands of truncated and
// byte-flipped variants of the test fonts, in every container they reach a
// disk in, identified with every attribute and read back through every
// accessor. The sanitizer build turns any bad read, leak or undefined
// behaviour into a failure; here the results only have to be well-formed.
// The variants come from a fixed seed, so a failure always reproduces.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "common/MacFixtures.h"
#include "resourcefork/ResourceMap.h"
#include "support/ByteWriter.h"
#include "typeprobe/typeprobe.h"

namespace {

using namespace macfixtures;

constexpr int kVariantsPerCase = 250;

// One base file and where it lies: `mutated` is the file whose bytes are
// damaged, `open` the path identified, `companions` files placed unchanged.
// With `attribute`, the damaged bytes are that extended attribute of
// `mutated` instead, and `attributes` are set on it unchanged.
struct StressCase {
    StressCase(std::string name, std::string open, std::string mutated, Bytes bytes,
               std::vector<std::pair<std::string, Bytes>> companions)
        : name(std::move(name)), open(std::move(open)), mutated(std::move(mutated)),
          bytes(std::move(bytes)), companions(std::move(companions))
    {
    }

    std::string name;
    std::string open;
    std::string mutated;
    Bytes bytes;
    std::vector<std::pair<std::string, Bytes>> companions;
    std::string attribute;
    std::vector<std::pair<std::string, Bytes>> attributes;
};

Bytes ResourceData(const Bytes& fork, const char (&type)[5])
{
    auto map = ResourceMap::Parse(fork);
    if (!map) return {};
    const ResourceRecord* record = map->indexed(fourCC(type), 0);
    return record ? Bytes(record->data.span().begin(), record->data.span().end()) : Bytes();
}

// Two standalone sfnts as one collection, each face's table offsets moved
// to where the face now lies.
Bytes Collection(const std::vector<Bytes>& faces)
{
    ByteWriter out;
    out.tag("ttcf").u32(0x00010000).u32(uint32_t(faces.size()));
    uint32_t start = 12 + 4 * uint32_t(faces.size());
    std::vector<uint32_t> starts;
    for (const Bytes& face : faces) {
        starts.push_back(start);
        start += uint32_t((face.size() + 3) & ~size_t(3));
    }
    for (uint32_t at : starts) out.u32(at);
    for (size_t f = 0; f < faces.size(); ++f) {
        const size_t first = out.size();
        out.bytes(ByteView(faces[f])).pad(4);
        uint16_t tables = 0;
        ByteView(faces[f]).u16(4, tables);
        for (size_t t = 0; t < tables; ++t) {
            uint32_t offset = 0;
            ByteView(faces[f]).u32(12 + 16 * t + 8, offset);
            out.putU32(first + 12 + 16 * t + 8, offset + starts[f]);
        }
    }
    return out.take();
}

std::vector<StressCase> MakeCases()
{
    const Bytes dfont = ReadFile(CorpusPath("dfont/DejaVuSans.dfont"));
    const Bytes otfDfont = ReadFile(CorpusPath("otf-dfont/DejaVuSans.otf.dfont"));
    const Bytes suitcase = ReadFile(CorpusPath("tt-family/DejaVuSans.suit"));
    const MacParts suitcaseParts = PartsOfMacBinary(suitcase);
    const Bytes ttf = ResourceData(dfont, "sfnt"), otf = ResourceData(otfDfont, "sfnt");

    std::vector<std::pair<std::string, Bytes>> psFamily;
    for (const char* file : {"DejaVuSerif", "DejaVuSer", "DejaVuSerBol", "DejaVuSerIta", "DejaVuSerBolIta"})
        psFamily.emplace_back(file, ReadFile(CorpusPath(std::string("ps-family/") + file + ".bin")));
    auto without = [&](const std::string& name) {
        std::vector<std::pair<std::string, Bytes>> rest;
        for (const auto& file : psFamily)
            if (file.first != name) rest.push_back(file);
        return rest;
    };
    // The printer font's clear text, without its chunk header.
    const Bytes post = ResourceData(PartsOfMacBinary(psFamily[2].second).resource, "POST");
    const Bytes type1Text(post.begin() + std::min<size_t>(2, post.size()), post.end());

    const std::string name = suitcaseParts.name;
    std::vector<StressCase> cases = {
        {"dfont", "DejaVuSans.dfont", "DejaVuSans.dfont", dfont, {}},
        {"OpenTypeDfont", "DejaVuSans.otf.dfont", "DejaVuSans.otf.dfont", otfDfont, {}},
        {"TrueType", "DejaVuSans.ttf", "DejaVuSans.ttf", ttf, {}},
        {"OpenType", "DejaVuSans.otf", "DejaVuSans.otf", otf, {}},
        {"Collection", "DejaVuSans.ttc", "DejaVuSans.ttc", Collection({ttf, otf}), {}},
        {"Type1Text", "DejaVuSerif-Bold.ps", "DejaVuSerif-Bold.ps", type1Text, {}},
        {"MacBinaryIII", name, name, suitcase, {}},
        {"MacBinaryI", name, name, MacBinaryFile(suitcaseParts, 1), {}},
        {"AppleSingle", name, name, AppleSingleFile(suitcaseParts), {}},
        {"AppleDoubleSidecar", name, "._" + name, PlainAppleDouble(suitcaseParts),
         {{name, suitcaseParts.data}}},
        {"MacOSXSidecar", name, "._" + name, MacOSXDotUnderscore(suitcaseParts),
         {{name, suitcaseParts.data}}},
        {"PostScriptSuitcase", "DejaVuSerif", "DejaVuSerif", psFamily[0].second, without("DejaVuSerif")},
        {"PrinterFont", "DejaVuSerif", "DejaVuSerBol", psFamily[2].second, without("DejaVuSerBol")},
    };
    // Linux keeps attributes up to 64 KiB: the family suitcase, beside its
    // printer fonts, fits.
    const MacParts family = PartsOfMacBinary(psFamily[0].second);
    StressCase attributes{"ExtendedAttributes", family.name, family.name, family.resource,
                          without("DejaVuSerif")};
    attributes.companions.emplace_back(family.name, family.data);
    attributes.attribute = "user.com.apple.ResourceFork";
    attributes.attributes = {{"user.com.apple.FinderInfo", family.finderInfo()}};
    cases.push_back(std::move(attributes));
    return cases;
}

const std::vector<StressCase>& Cases()
{
    static const std::vector<StressCase> cases = MakeCases();
    return cases;
}

// Offsets near the ends, where headers, directories and resource maps lie,
// are damaged more often than the glyph data between them.
size_t Position(std::mt19937& random, size_t size)
{
    const size_t pick = random() % 4;
    const size_t span = std::min<size_t>(size, 512);
    if (pick == 0) return random() % span;
    if (pick == 1) return size - 1 - random() % span;
    return random() % size;
}

Bytes Variant(const Bytes& base, int index, std::mt19937& random)
{
    Bytes bytes = base;
    if (bytes.empty()) return bytes;
    switch (index % 3) {
    case 0:  // truncated
        bytes.resize(random() % bytes.size());
        break;
    case 1:  // a few bytes flipped
        for (int flips = 1 + int(random() % 8); flips > 0; --flips)
            bytes[Position(random, bytes.size())] ^= uint8_t(1 + random() % 255);
        break;
    default: {  // a length, offset or count field set to an extreme
        static const uint32_t kValues[] = {0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0x8000, 0xFFFF,
                                           0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        uint32_t value = kValues[random() % std::size(kValues)];
        if (random() % 4 == 0) value = uint32_t(bytes.size() + random() % 3);
        const size_t width = random() % 2 ? 4 : 2;
        size_t at = Position(random, bytes.size()) & ~(width - 1);
        for (size_t i = 0; i < width && at + i < bytes.size(); ++i)
            bytes[at + i] = uint8_t(value >> (8 * (width - 1 - i)));
        break;
    }
    }
    return bytes;
}

// Identifies the file and reads every face back; the result must be 0 with
// faces or 1 with nothing.
void Identify(const std::string& path)
{
    TP_FontArray* array = nullptr;
    const unsigned long result = TP_CreateSpecifier(path.c_str(), 0, kTP_AllAttributes, &array);
    ASSERT_TRUE(result == 0 || result == 1) << result;
    if (result != 0) {
        ASSERT_EQ(array, nullptr);
        return;
    }
    unsigned long count = 0;
    ASSERT_EQ(TP_GetFontCount(array, &count), 0u);
    EXPECT_GT(count, 0u);
    char text[256];
    unsigned long value = 0;
    for (unsigned long face = 0; face < count; ++face) {
        using Text = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);
        for (Text accessor : {TP_GetKindName, TP_GetFamilyName, TP_GetPostScriptName, TP_GetFullName,
                              TP_GetDisplayName, TP_GetPrinterFont, TP_GetPlatform, TP_GetFoundryName,
                              TP_GetLegacyFoundryName, TP_GetVersion, TP_GetWindowsMMFile}) {
            const unsigned long read = accessor(array, face, text, sizeof text);
            EXPECT_TRUE(read == 0 || read == 1) << read;
        }
        EXPECT_EQ(TP_GetTypeprobeChecksum(array, face, &value), 0u);
        unsigned long matching = 0, differing = 0;
        EXPECT_EQ(TP_Match(array, face, array, face, &matching, &differing), 0u);
        EXPECT_EQ(differing, 0u);
    }
    TP_SpecifierFree(array);
}

class Stress : public ::testing::TestWithParam<size_t> {};

TEST_P(Stress, DamagedVariantsIdentifyOrAreRefused)
{
    const StressCase& base = Cases()[GetParam()];
    ASSERT_FALSE(base.bytes.empty()) << base.name;
    std::string folder;
    if (!base.attribute.empty()) {
        folder = AttributeFolder(base.bytes.size());
        if (folder.empty()) GTEST_SKIP() << "no file system here keeps attributes that large";
    }
    TempDir dir(folder);
    ASSERT_TRUE(dir.valid());
    for (const auto& [name, bytes] : base.companions) WriteFile(dir / name, bytes);
    for (const auto& [name, bytes] : base.attributes) ASSERT_TRUE(SetAttribute(dir / base.mutated, name, bytes));
    const auto damage = [&](const Bytes& bytes) {
        if (base.attribute.empty()) WriteFile(dir / base.mutated, bytes);
        else ASSERT_TRUE(SetAttribute(dir / base.mutated, base.attribute, bytes));
    };
    // The undamaged file identifies.
    damage(base.bytes);
    TP_FontArray* array = nullptr;
    ASSERT_EQ(TP_CreateSpecifier((dir / base.open).c_str(), 0, kTP_AllAttributes, &array), 0u);
    TP_SpecifierFree(array);

    std::mt19937 random(0x5EED0000u + unsigned(GetParam()));
    for (int index = 0; index < kVariantsPerCase; ++index) {
        damage(Variant(base.bytes, index, random));
        if (HasFatalFailure()) return;
        SCOPED_TRACE(base.name + " variant " + std::to_string(index));
        Identify(dir / base.open);
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, Stress, ::testing::Range<size_t>(0, Cases().size()),
                         [](const ::testing::TestParamInfo<size_t>& info) {
                             return Cases()[info.param].name;
                         });

}  // namespace
