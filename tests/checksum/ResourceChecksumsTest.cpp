#include <gtest/gtest.h>

#include <array>

#include "checksum/FondKerning.h"
#include "checksum/ResourceChecksums.h"
#include "common/Oracle.h"
#include "common/MacFixtures.h"
#include "resourcefork/ResourceFileAccess.h"

namespace {

using namespace macfixtures;

// Reads a MacBinary suitcase with fontTools and prints the CRC-32 of the
// style's kerning pairs ("kern"), then of the face ("face"): continued over
// POST 501, 502, ... of a printer font, or over the sfnt resource of each of
// the style's association entries, ascending by ID.
const char* kFaceCrcScript = R"PY(
import io, struct, sys, zlib
from fontTools.misc.macRes import ResourceReader
def rsrc(path):
    data = open(path, "rb").read()
    dl, rl = struct.unpack(">II", data[83:91]); sec, = struct.unpack(">H", data[120:122])
    start = 128 + (sec + 127) // 128 * 128 + (dl + 127) // 128 * 128
    return ResourceReader(io.BytesIO(data[start:start + rl]))
suit = rsrc(sys.argv[1]); style = int(sys.argv[2]); mode = sys.argv[3]
fond = suit["FOND"][0].data
crc = 0
kern, = struct.unpack(">I", fond[20:24])
if kern:
    n, = struct.unpack(">h", fond[kern:kern + 2]); at = kern + 2
    for i in range(n + 1):
        s, c = struct.unpack(">hh", fond[at:at + 4])
        if s == style and c > 0: crc = zlib.crc32(fond[at + 4:at + 4 + 4 * c], crc)
        at += 4 + 4 * c
print("%d" % crc)
if mode == "printer":
    chunks = {r.id: r.data for r in rsrc(sys.argv[4])["POST"]}
    i = 501
    while chunks.get(i):
        crc = zlib.crc32(chunks[i], crc); i += 1
else:
    count, = struct.unpack(">h", fond[52:54])
    entries = [struct.unpack(">HhH", fond[54 + 6 * k:60 + 6 * k]) for k in range(count + 1)]
    sfnts = {r.id: r.data for r in suit["sfnt"]}
    for i in sorted(e[2] for e in entries if e[1] == style):
        if i in sfnts: crc = zlib.crc32(sfnts[i], crc)
print("%d" % crc)
)PY";

struct OracleCrc {
    unsigned long kern = 0;
    unsigned long face = 0;
};

std::optional<OracleCrc> FaceCrc(const std::string& suitcase, int style, const std::string& mode,
                                 const std::string& printer = "")
{
    const std::vector<std::string> out = oracle::python(
        std::string(kFaceCrcScript),
        ShellQuote(suitcase) + " " + std::to_string(style) + " " + mode + " " +
            ShellQuote(printer));
    if (out.size() != 2) return std::nullopt;
    return OracleCrc{std::stoul(out[0]), std::stoul(out[1])};
}

const char* kPrinterFonts[] = {"DejaVuSer", "DejaVuSerBol", "DejaVuSerIta", "DejaVuSerBolIta"};
const char* kFamilyFiles[] = {"DejaVuSerif", "DejaVuSer", "DejaVuSerBol", "DejaVuSerIta",
                              "DejaVuSerBolIta"};

struct Face {
    ResourceFilePtr file;
    ResourceHandlePtr fond;
};

Face Open(const std::string& path)
{
    Face face;
    face.file = AllocateResourceFile(path, true);
    face.fond = getHandleOfTypeAndIndex(face.file.get(), kTypeFOND, 1);
    return face;
}

unsigned long Vantor(const std::string& path, int16_t style, bool crossPlatform,
                     unsigned long& legacy)
{
    Face face = Open(path);
    return GetVantorChecksum(LxString(path), face.file.get(), face.fond.get(), style, crossPlatform,
                             legacy);
}

Bytes Concat(std::initializer_list<Bytes> parts)
{
    ByteWriter w;
    for (const Bytes& part : parts) w.bytes(ByteView(part));
    return w.take();
}

Bytes SimpleFond(std::initializer_list<std::array<int, 3>> entries)
{
    ByteWriter w;
    w.u16(0).u16(128).zeros(12).u32(0).u32(0).u32(0).zeros(18).u16(0).u16(0).u16(2);
    w.u16(uint16_t(entries.size() - 1));
    for (const auto& e : entries) w.u16(uint16_t(e[0])).u16(uint16_t(e[1])).u16(uint16_t(e[2]));
    return w.take();
}

// ---------------------------------------------------------------- corpus ---

TEST(GetVantorChecksum, PrinterFontFaceIsKerningPairsThenPOSTChunks)
{
    const std::string suitcase = CorpusPath("ps-family/DejaVuSerif.bin");
    const Bytes resourceFork = PartsOfMacBinary(ReadFile(suitcase)).resource;
    for (int16_t style = 0; style < 4; ++style) {
        const std::string printer = CorpusPath("ps-family/") + kPrinterFonts[style] + ".bin";
        auto expected = FaceCrc(suitcase, style, "printer", printer);
        if (!expected) GTEST_SKIP() << "fontTools is not available";
        ASSERT_NE(expected->kern, 0u) << "the style has kerning pairs";

        unsigned long legacy = 1;
        EXPECT_EQ(Vantor(suitcase, style, false, legacy), expected->face) << style;
        EXPECT_EQ(legacy, expected->face);

        // Cross-platform: the data fork alone, which is empty here; the
        // legacy checksum is the whole file's.
        EXPECT_EQ(Vantor(suitcase, style, true, legacy), 0u);
        EXPECT_EQ(legacy, Crc32(resourceFork));

        Face face = Open(suitcase);
        EXPECT_EQ(ChecksumPrinterFile(face.file.get(), face.fond.get(), style, expected->kern),
                  expected->face);
        EXPECT_EQ(GetVaultlineChecksum(face.fond.get(), style),
                  GetVaultlineChecksum(face.fond->view(), style));
    }
}

TEST(GetVantorChecksum, TrueTypeFaceIsItsSfntResources)
{
    const std::string suitcase = CorpusPath("tt-family/DejaVuSans.suit");
    for (int16_t style = 0; style < 4; ++style) {
        auto expected = FaceCrc(suitcase, style, "sfnt");
        if (!expected) GTEST_SKIP() << "fontTools is not available";
        unsigned long legacy = 0;
        EXPECT_EQ(Vantor(suitcase, style, false, legacy), expected->face) << style;
        EXPECT_EQ(legacy, expected->face);
        Face face = Open(suitcase);
        EXPECT_EQ(ChecksumPrinterFile(face.file.get(), face.fond.get(), style, 7), 7u);
    }
}

TEST(GetVantorChecksum, SameFaceInEveryContainer)
{
    TempDir macBinary, appleSingle, sidecar;
    for (const char* name : kFamilyFiles) {
        const std::string original = CorpusPath("ps-family/") + name + ".bin";
        const MacParts parts = PartsOfMacBinary(ReadFile(original));
        WriteFile(macBinary / (std::string(name) + ".bin"), ReadFile(original));
        WriteFile(appleSingle / name, AppleSingleFile(parts));
        WriteFile(sidecar / name, parts.data);
        WriteFile(sidecar / ("._" + std::string(name)), MacOSXDotUnderscore(parts));
    }
    const std::string paths[] = {macBinary / "DejaVuSerif.bin", appleSingle / "DejaVuSerif",
                                 sidecar / "DejaVuSerif"};
    for (int16_t style = 0; style < 4; ++style) {
        std::vector<std::pair<unsigned long, unsigned long>> results;  // (checksum, legacy)
        for (const std::string& path : paths) {
            for (bool crossPlatform : {false, true}) {
                unsigned long legacy = 0;
                const unsigned long checksum = Vantor(path, style, crossPlatform, legacy);
                results.push_back({checksum, legacy});
            }
        }
        for (size_t i = 2; i < results.size(); ++i)
            EXPECT_EQ(results[i], results[i % 2]) << "style " << style << " container " << i / 2;
        EXPECT_NE(results[0].first, 0u);
    }
}

// ------------------------------------------------------- byte-built faces ---

TEST(ChecksumNFNTsfntFONT, OutlinesWinOverBitmaps)
{
    const Bytes sfnt300 = Text("outline 300"), sfnt301 = Text("outline 301");
    const Bytes nfnt300 = Text("strike 300"), font300 = Text("old strike 300");
    const Bytes nfnt301 = Text("strike 301");
    const struct {
        const char* what;
        std::vector<TestResource> resources;
        unsigned long incoming;
        Bytes covered;  // what the CRC runs over; empty: incoming unchanged
    } cases[] = {
        {"sfnt and NFNT: sfnt only",
         {{"NFNT", 300, std::nullopt, nfnt300}, {"sfnt", 301, std::nullopt, sfnt301},
          {"NFNT", 301, std::nullopt, nfnt301}},
         0, sfnt301},
        {"bitmaps: NFNT then FONT per ID",
         {{"NFNT", 301, std::nullopt, nfnt301}, {"FONT", 300, std::nullopt, font300},
          {"NFNT", 300, std::nullopt, nfnt300}},
         0, Concat({nfnt300, font300, nfnt301})},
        {"bitmaps after a running value: none", {{"NFNT", 300, std::nullopt, nfnt300}}, 0x1234, {}},
        {"outline after a running value",
         {{"sfnt", 300, std::nullopt, sfnt300}}, 0x1234, sfnt300},
        {"nothing", {}, 0, {}},
    };
    TempDir dir;
    for (const auto& c : cases) {
        std::vector<TestResource> resources = c.resources;
        resources.push_back({"FOND", 128, std::string("Face"),
                             SimpleFond({{12, 0, 301}, {0, 0, 300}, {12, 1, 302}})});
        WriteFile(dir / "face.dfont", ResourceFile(resources));
        Face face = Open(dir / "face.dfont");
        ASSERT_TRUE(face.fond) << c.what;
        const unsigned long expected =
            c.covered.empty()
                ? c.incoming
                : uint32_t(crc32(c.incoming, c.covered.data(), uInt(c.covered.size())));
        EXPECT_EQ(ChecksumNFNTsfntFONT(face.file.get(), face.fond.get(), 0, c.incoming), expected)
            << c.what;
    }
}

TEST(ChecksumNFNTsfntFONT, OneIDPerAssociationEntry)
{
    // A strike and an outline under one ID: the outline is taken twice.
    TempDir dir;
    const Bytes outline = Text("shared outline");
    WriteFile(dir / "face.dfont",
              ResourceFile({{"sfnt", 300, std::nullopt, outline},
                            {"NFNT", 300, std::nullopt, Text("strike")},
                            {"FOND", 128, std::string("Face"),
                             SimpleFond({{12, 0, 300}, {0, 0, 300}})}}));
    Face face = Open(dir / "face.dfont");
    EXPECT_EQ(ChecksumNFNTsfntFONT(face.file.get(), face.fond.get(), 0, 0),
              Crc32(Concat({outline, outline})));
    EXPECT_EQ(ChecksumNFNTsfntFONT(face.file.get(), nullptr, 0, 5), 5u);
    ResourceHandle empty;
    EXPECT_EQ(ChecksumNFNTsfntFONT(face.file.get(), &empty, 0, 5), 5u);
    EXPECT_EQ(ChecksumNFNTsfntFONT(nullptr, face.fond.get(), 0, 5), 5u);
}

TEST(ChecksumPrinterFile, DataForkPrinterFontStartsFromZero)
{
    TempDir dir;
    const std::string suitcase = dir / "DejaVuSerif.bin";
    WriteFile(suitcase, ReadFile(CorpusPath("ps-family/DejaVuSerif.bin")));
    const Bytes outline =
        Text("%!PS-AdobeFont-1.0: DejaVuSerif-Bold 2.37\n/FontName /DejaVuSerif-Bold def\n");
    WriteFile(dir / "DejaVuSerBol", outline);
    Face face = Open(suitcase);
    ASSERT_NE(KerningPairsCRC(face.fond->view(), 1), 0u);
    EXPECT_EQ(ChecksumPrinterFile(face.file.get(), face.fond.get(), 1, 0x1234), Crc32(outline));
    unsigned long legacy = 0;
    EXPECT_EQ(Vantor(suitcase, 1, false, legacy), Crc32(outline));
    EXPECT_EQ(legacy, Crc32(outline));
    // No printer font for the italic: the running value comes back.
    EXPECT_EQ(ChecksumPrinterFile(face.file.get(), face.fond.get(), 2, 0x1234), 0x1234u);
    EXPECT_EQ(ChecksumPrinterFile(nullptr, face.fond.get(), 1, 0x1234), 0x1234u);
}

TEST(GetVantorChecksum, FaceWithNothingOfItsOwnFallsThroughToTheFile)
{
    // A style whose strike is missing and whose printer font is absent.
    TempDir dir;
    const Bytes file =
        ResourceFile({{"FOND", 128, std::string("Face"), SimpleFond({{12, 0, 300}})}});
    WriteFile(dir / "face.dfont", file);
    unsigned long legacy = 0;
    EXPECT_EQ(Vantor(dir / "face.dfont", 0, false, legacy), Crc32(file));
    EXPECT_EQ(legacy, Crc32(file));
    EXPECT_EQ(Vantor(dir / "face.dfont", 0, true, legacy), Crc32(file));  // the data fork
    EXPECT_EQ(legacy, Crc32(file));

    // Nothing readable at all: the running value, 0.
    legacy = 9;
    EXPECT_EQ(GetVantorChecksum(LxString(dir / "missing"), nullptr, nullptr, 0, false, legacy), 0u);
    EXPECT_EQ(legacy, 0u);
    EXPECT_EQ(GetVaultlineChecksum(static_cast<const ResourceHandle*>(nullptr), 0), 0u);
}

}  // namespace
