// TP_CreateSpecifier on files the recorded corpus does not hold: what is
// refused, hostile lengths and counts, and collections whose names point
// outside their naming table.
#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "api/CollectionSpecifiers.h"
#include "api/FontArray.h"
#include "api/ResourceFileSpecifiers.h"
#include "common/FaceArrays.h"
#include "common/LargestAllocation.h"
#include "common/MacFixtures.h"
#include "common/SfntBuilder.h"
#include "fontfiles/SfntPlatform.h"
#include "fontfiles/TrueTypeCollectionFont.h"
#include "typeprobe/typeprobe.h"

namespace {

using namespace macfixtures;

using namespace facearrays;

const std::string kType1 = "%!PS-AdobeFont-1.0: Synth-Bold 001.000\n/FontName /Synth-Bold def\n";

// 1 and nothing allocated for the caller, unless a face was identified.
// Small files claiming gigabytes are refused without allocating what they
// claim (measured in the AddressSanitizer build).
TEST(TP_CreateSpecifier, WhatIsIdentified)
{
    std::string headed = "\x80\x01....(c) Copyright URW /FontName /Headed def";
    headed.resize(200, ' ');
    headed[2] = 0, headed[3] = 0, headed[4] = 0, headed[5] = char(200);  // the file's length
    ByteWriter sfnt, ttc, header, map, single, sidecar, macBinary;
    sfnt.u32(0x00010000).u16(2).u16(0).u16(0).u16(0).tag("glyf").u32(0).u32(44).u32(0xFFFFFFF0)
        .tag("name").u32(0).u32(0).u32(0xFFFFFFFF);
    ttc.tag("ttcf").u32(0x00010000).u32(0xFFFFFFFF).u32(16).u32(0x00010000).u16(0xFFFF).u16(0).u16(0).u16(0)
        .tag("glyf").u32(0).u32(0).u32(0xFFFFFFFF);
    header.u32(256).u32(0xFFFFFF00).u32(0xFFFFFFFF).u32(0xFFFFFFFF);
    map.u32(16).u32(20).u32(4).u32(50).u32(0xFFFFFFFF).zeros(16).u32(0).u16(0).u16(0).u16(28).u16(50)
        .u16(0x7FFF).tag("FOND").u16(0xFFFF).u16(10).u16(0).u16(0xFFFF).u8(0).u24(0).u32(0);
    single.u32(0x00051600).u32(0x00020000).zeros(16).u16(0xFFFF).u32(2).u32(38).u32(0xFFFFFFF0).u32(1).u32(38).u32(0xFFFFFFFF);
    sidecar.u32(0x00051607).u32(0x00020000).zeros(16).u16(1).u32(2).u32(38).u32(0xFFFFFFF0);
    macBinary.u8(0).u8(5).bytes("claim").zeros(58).tag("FFIL").tag("DMOV").zeros(10).u32(0x7FFFFFFF)
        .u32(0xFFFFFFFF).zeros(11).tag("mBIN").zeros(16).u8(130).u8(129).zeros(76);  // 200 bytes
    const auto padded = [](ByteWriter& w) { return w.zeros(w.size() < 100 ? 100 - w.size() : 0).take(); };
    const struct { const char* name; Bytes bytes; const char* postScriptName = nullptr; /* null: refused */ const char* open = nullptr; } cases[] = {
        {"notes.txt", Text("just text")}, {"font.pfb", Text("\x80\x01 no face")}, {"Synth.ps", Text(kType1), "Synth-Bold"},
        {"Synth.t1", Text(kType1)}, {"Headed", Text(headed), "Headed"}, {"claim.ttf", padded(sfnt)}, {"claim.ttc", padded(ttc)},
        {"claim.dfont", padded(header)}, {"map.dfont", padded(map)}, {"single", padded(single)}, {"._claim", padded(sidecar), nullptr, "claim"},
        {"claim.bin", padded(macBinary)}};
    TempDir dir;
    WriteFile(dir / "claim", {});
    Identify(dir / "claim");  // loads the library's tables before anything is measured
    for (const auto& c : cases) {
        WriteFile(dir / c.name, c.bytes);
        TP_FontArray* array = reinterpret_cast<TP_FontArray*>(0x1);
        LargestAllocation largest;
        EXPECT_EQ(TP_CreateSpecifier((dir / (c.open ? c.open : c.name)).c_str(), 0, kTP_AllAttributes, &array), c.postScriptName ? 0u : 1u) << c.name;
        if (LargestAllocation::Available()) {
            EXPECT_LT(largest.bytes(), size_t(1) << 20) << c.name;
        }
        if (!c.postScriptName) {
            EXPECT_EQ(array, reinterpret_cast<TP_FontArray*>(0x1)) << c.name;
        } else {
            EXPECT_EQ(Array(array)->at(0).postScriptName.str(), c.postScriptName);
        }
    }
    TP_FontArray* array = nullptr;  // a null path or output, and a missing file: 1 each
    EXPECT_EQ(TP_CreateSpecifier(nullptr, 0, kTP_AllAttributes, &array), 1u);
    EXPECT_EQ(TP_CreateSpecifier((dir / "Synth.ps").c_str(), 0, kTP_AllAttributes, nullptr), 1u);
    EXPECT_EQ(TP_CreateSpecifier((dir / "missing.ps").c_str(), 0, kTP_AllAttributes, &array), 1u);
    // A mask of 0 still yields the face, with nothing readable.
    char buffer[16];
    EXPECT_EQ(TP_GetPostScriptName(Identify(dir / "Synth.ps", 0).get(), 0, buffer, sizeof buffer), 5u);
}

// Nothing read for one call is kept for the next, nor shared by threads.
TEST(TP_CreateSpecifier, EachCallReadsAfreshAndThreadsAgree)
{
    const std::string fonts = "/usr/share/fonts/truetype/dejavu/";
    const Bytes sans = ReadFile(fonts + "DejaVuSans.ttf"), mono = ReadFile(fonts + "DejaVuSansMono.ttf");
    ASSERT_FALSE(sans.empty() || mono.empty());
    TempDir dir;
    for (const Bytes* bytes : {&sans, &mono, &sans}) {
        WriteFile(dir / "font.ttf", *bytes);
        EXPECT_EQ(Identify(dir / "font.ttf")->at(0).typeprobeChecksum, Crc32(*bytes));
    }
    const std::vector<std::string> paths = {fonts + "DejaVuSans.ttf", fonts + "DejaVuSerif.ttf",
                                            CorpusPath("tt-family/DejaVuSans.suit"), CorpusPath("ps-family/DejaVuSerif.bin")};
    const auto signature = [](const std::string& path) {
        Array array = Identify(path);
        std::string text;
        for (const TP_FontSpecifier& f : array ? array->faces() : std::vector<TP_FontSpecifier>())
            text += f.postScriptName.str() + std::to_string(f.typeprobeChecksum) + std::to_string(f.legacyTypeprobeChecksum) + ";";
        return text;
    };
    std::vector<std::string> serial;
    for (const auto& path : paths) serial.push_back(signature(path));
    std::vector<int> mismatches(4);
    std::vector<std::thread> threads;
    for (size_t t = 0; t < 4; ++t)
        threads.emplace_back([&, t] { for (size_t i = t; i < t + 12; ++i) mismatches[t] += signature(paths[i % 4]) != serial[i % 4]; });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mismatches, std::vector<int>(4));
}

// Files listing thousands of faces: only the first kMaxFacesPerFile are
// looked for, fewer when each walks a huge family record.
TEST(TP_CreateSpecifier, FaceLimit)
{
    const auto family = [](int styles) {
        ByteWriter fond;
        fond.zeros(52).u16(uint16_t(styles - 1));
        for (int style = 0; style < styles; ++style) fond.u16(12).u16(uint16_t(style)).u16(300);
        return fond.take();
    };
    const TestResource strike = {"NFNT", 300, std::nullopt, Text("strike")};
    std::vector<TestResource> families = {strike};
    for (int16_t id = 1; id <= 2000; ++id) families.push_back({"FOND", id, "F", family(1)});
    auto tables = testfonts::requiredTables();
    tables[6].bytes = testfonts::nameTable({{3, 1, 0x409, 6, testfonts::utf16be(u"Same")}});
    const struct { const char* name; Bytes bytes; unsigned long faces; } cases[] = {
        {"few.dfont", ResourceFile({{"FOND", 128, "Few", family(3)}, strike}), 3},
        {"huge.dfont", ResourceFile({{"FOND", 128, "Huge", family(8000)}, strike}), kMaxEntryWalksPerFile / 8000},
        {"families.dfont", ResourceFile(families), kMaxFacesPerFile},
        {"same.ttc", testfonts::collection(std::vector(3000, tables)), kMaxFacesPerFile},
    };
    TempDir dir;
    for (const auto& c : cases) {
        WriteFile(dir / c.name, c.bytes);
        TP_FontArray array;  // before duplicates are removed
        if (std::string(c.name).ends_with(".ttc")) AppendCollectionFaces((dir / c.name).c_str(), kTP_AllAttributes, ReadOptions{}, array);
        else AppendResourceFileFaces((dir / c.name).c_str(), kTP_AllAttributes, ReadOptions{}, array);
        EXPECT_EQ(array.size(), c.faces) << c.name;
    }
    EXPECT_EQ(Identify(dir / "same.ttc")->size(), 1u);

    // A family record too short for any entry still names its face: its
    // number, and style -1 for "no entry".
    WriteFile(dir / "stub.dfont", ResourceFile({{"FOND", 300, "Stub", Bytes{0}}, strike}));
    TP_FontArray stub;
    AppendResourceFileFaces((dir / "stub.dfont").c_str(), kTP_AllAttributes, ReadOptions{}, stub);
    ASSERT_EQ(stub.size(), 1u);
    EXPECT_EQ(std::make_pair(stub.at(0).fondResourceID, stub.at(0).fondStyle), std::make_pair(300, -1));
}

// A naming table with one Macintosh PostScript-name record whose text lies
// at `offset` from the string storage.
std::vector<testfonts::Table> NamesAt(int16_t offset, uint16_t length, uint16_t count = 1, const std::string& kern = "")
{
    ByteWriter names;
    names.u16(0).u16(count).u16(18).u16(1).u16(0).u16(0).u16(6).u16(length).u16(uint16_t(offset)).bytes("Own-Name");
    std::vector<testfonts::Table> tables = testfonts::requiredTables();  // OS/2 cmap head hhea hmtx maxp name post
    tables[5].bytes = "Maxp-Text-Before!", tables[6].bytes = std::string(names.data().begin(), names.data().end()), tables[7].bytes = "Post-Text-After!";
    tables.insert(tables.begin() + 5, {"glyf", std::string(100000, 'g')});
    if (!kern.empty()) tables.push_back({"kern", kern});
    tables.push_back({"loca", std::string(100000, 'l')});
    return tables;
}

// Collection faces are read from their tables in place; what they yield
// must be what the face's rebuilt standalone bytes yield, even when a name
// points into a neighbouring table. With a mask of 0 the kind is still set.
TEST(TP_CreateSpecifier, CollectionFacesAgreeWithTheirRebuiltBytes)
{
    const std::vector<std::vector<testfonts::Table>> faces = {
        NamesAt(0, 8), NamesAt(-18 - 20, 8), NamesAt(10, 8), NamesAt(-32768, 1023), NamesAt(32767, 1023),
        NamesAt(0, 8, 32767), NamesAt(0, 8, 1, "kerning"), NamesAt(0, 8, 1, "kernings")};
    TempDir dir;
    WriteFile(dir / "hostile.ttc", testfonts::collection(faces));
    TP_FontArray array, reference;
    AppendCollectionFaces((dir / "hostile.ttc").c_str(), kTP_AllAttributes, ReadOptions{}, array);
    std::vector<std::string> standalone;  // each face split off and identified as a font of its own
    ASSERT_EQ(TrueTypeCollectionFont::SeparateTTCFonts(dir / "hostile.ttc", dir.path(), standalone), 0);
    for (const std::string& path : standalone) {
        const Array font = Identify(path);
        ASSERT_TRUE(font) << path;
        TP_FontSpecifier face = font->at(0);
        face.kindName = "TrueType Collection";
        GetTrueTypeKerningTableChecksum(ByteView(ReadFile(path)), &face.kerningChecksum);  // a lone font carries none
        reference.Append(face);
    }
    EXPECT_EQ(reference.at(1).postScriptName.str() + reference.at(2).postScriptName.str(), "Maxp-TexPost-Tex");
    const auto signatures = [](TP_FontArray& faces) {
        faces.RemoveDups();
        std::vector<std::string> all;
        for (const TP_FontSpecifier& f : faces.faces())
            all.push_back(f.kindName.str() + "|" + f.postScriptName.str() + "|" + f.fullName.str() + "|" + f.platform.str() + "|" +
                          std::to_string(f.kerningChecksum) + "|" + std::to_string(f.typeprobeChecksum));
        return all;
    };
    EXPECT_EQ(signatures(array), signatures(reference));
    TP_FontArray bare;
    AppendCollectionFaces((dir / "hostile.ttc").c_str(), 0, ReadOptions{}, bare);
    EXPECT_EQ(bare.at(0).kindName.str(), "TrueType Collection");
    EXPECT_EQ(bare.at(0).postScriptName.str(), "");
}

}  // namespace
