// WOFF and WOFF2 decoding (real fonts go through it in the identification
// tests): malformed and hostile wrappers are refused with their reasons,
// before any room is allocated for their claims.
#include <zlib.h>

#include <gtest/gtest.h>

#include "common/FileIO.h"
#include "common/LargestAllocation.h"
#include "common/Oracle.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "containers/Woff.h"
#include "containers/Woff2.h"
#include "support/ByteWriter.h"
#include "support/Refusal.h"

namespace {

using Bytes = std::vector<uint8_t>;

// fontTools keeps the font's table order and head's dates only when told to.
const char* kWrap =
    "import sys\nfrom fontTools.ttLib import TTFont\n"
    "f = TTFont(sys.argv[1], recalcTimestamp=False); f.flavor = sys.argv[3]\n"
    "f.save(sys.argv[2], reorderTables=False)";
const char* const kOtf = "/usr/share/fonts/opentype/urw-base35/C059-Bold.otf";

struct Stored {
    std::string tag, data;
    bool deflate = false;
    uint32_t claimed = 0;  // origLength when not the data's own
};

// A WOFF of these tables, data in the given order, directory as given.
Bytes Wrap(const std::vector<Stored>& tables)
{
    ByteWriter data, out;
    std::vector<uint32_t> offsets, lengths;
    uint32_t total = 12 + 16 * uint32_t(tables.size());
    const uint32_t start = Woff::WOFFHeader::size + Woff::TableDirectoryEntry::size * uint32_t(tables.size());
    for (const Stored& table : tables) {
        std::string stored = table.data;
        if (table.deflate) {
            uLongf size = compressBound(uLong(table.data.size()));
            stored.resize(size);
            compress(reinterpret_cast<Bytef*>(stored.data()), &size,
                     reinterpret_cast<const Bytef*>(table.data.data()), uLong(table.data.size()));
            stored.resize(size);
        }
        offsets.push_back(start + uint32_t(data.size()));
        lengths.push_back(uint32_t(stored.size()));
        data.bytes(stored).pad(4);
        total += ((table.claimed ? table.claimed : uint32_t(table.data.size())) + 3) & ~3u;
    }
    out.tag("wOFF").u32(0x00010000).u32(start + uint32_t(data.size())).u16(uint16_t(tables.size())).u16(0);
    out.u32(total).u16(1).u16(0).zeros(20);
    for (size_t i = 0; i < tables.size(); ++i) {
        const uint32_t length = tables[i].claimed ? tables[i].claimed : uint32_t(tables[i].data.size());
        out.u32(testfonts::tagValue(tables[i].tag)).u32(offsets[i]).u32(lengths[i]);
        out.u32(length).u32(0x12345678);
    }
    return out.bytes(data.view()).take();
}

const std::string kText(1200, 'x');

TEST(WebFonts, MalformedWrappersAreRefusedWithTheirReasons)
{
    using H = Woff::WOFFHeader;
    using E = Woff::TableDirectoryEntry;
    const Bytes good = Wrap({{"cmap", "abcdef"}, {"glyf", kText, true}});
    ASSERT_TRUE(Woff::DecodeToSfnt(ByteView(good)));
    const size_t entry = H::size;  // the first directory entry
    const struct { const char* what; Bytes woff; size_t at; uint32_t value; const char* reason; } cases[] = {
        {"cut header", Bytes(good.begin(), good.begin() + 30), 0, 0, "WOFF: header cut short (30 of 44 bytes)"},
        {"cut file", Bytes(good.begin(), good.end() - 4), 0, 0, "WOFF: header claims"},
        {"bomb", good, H::totalSfntSize.offset, 0xFFFFFFF0, "WOFF: header claims an sfnt of 4294967280 bytes"},
        {"wrong total", good, H::totalSfntSize.offset, 1300, "WOFF: tables rebuild an sfnt of 1252 bytes, the header claims 1300"},
        {"reserved", good, H::reserved.offset, 0x00010000, "WOFF: reserved header field is 1, not 0"},
        {"past the end", good, entry + E::offset.offset, 0x100000, "WOFF: table 'cmap' (offset 1048576, length 6) runs past the end"},
        {"inside the directory", good, entry + E::offset.offset, 20, "WOFF: table 'cmap' at offset 20 lies inside the table directory"},
        {"overlap", good, entry + E::size + E::offset.offset, 84, "WOFF: table 'glyf' overlaps table 'cmap'"},
        {"out of order", good, entry + E::size, fourCC("cmap"), "WOFF: table 'cmap' follows 'cmap' out of tag order"},
        {"stored longer", good, entry + E::origLength.offset, 5, "WOFF: table 'cmap' is stored in 6 bytes, more than its 5"},
        {"tiny claims huge", Wrap({{"cmap", "abcdef"}, {"glyf", kText, true, 200u << 20}}), 0, 0,
         "WOFF: table 'glyf' cannot inflate from"},
        {"inflates short", Wrap({{"cmap", "abcdef"}, {"glyf", kText, true, 5000}}), 0, 0,
         "WOFF: table 'glyf' decompresses to 1200 bytes, not the 5000 its entry claims"},
        {"inflates long", Wrap({{"cmap", "abcdef"}, {"glyf", kText, true, 1000}}), 0, 0,
         "WOFF: table 'glyf' decompresses to more than the 1000 bytes"},
        {"not zlib", Wrap({{"cmap", "abcdef"}, {"glyf", "not deflated", false, 20}}), 0, 0,
         "WOFF: table 'glyf' is not valid zlib data"},
    };
    for (const auto& c : cases) {
        ByteWriter woff;
        woff.bytes(ByteView(c.woff));
        if (c.at) woff.putU32(c.at, c.value);
        RefusalLog log;
        LargestAllocation largest;
        EXPECT_FALSE(Woff::DecodeToSfnt(woff.view())) << c.what;
        EXPECT_NE(log.text().find(c.reason), std::string::npos) << c.what << ": " << log.text();
        EXPECT_LT(largest.bytes(), 64u << 10) << c.what;
    }
}

TEST(WebFonts, MalformedWoff2IsRefusedBeforeTheDecoderAllocatesForIt)
{
    TempFolder folder;
    oracle::python(kWrap, std::string(kOtf) + " " + (folder / "font.woff2") + " woff2");
    const Bytes good = testfiles::readFile(folder / "font.woff2");
    ASSERT_GT(good.size(), 1000u);
    const struct { const char* what; size_t cut, at; uint32_t value; const char* reason; } cases[] = {
        {"cut header", 40, 0, 0, "WOFF2: header cut short (40 of 48 bytes)"},
        {"cut file", good.size() - 1, 0, 0, "WOFF2: header claims"},
        {"bomb", good.size(), Woff2::WOFF2Header::totalSfntSize.offset, 0xFFFFFFF0, "WOFF2: the font decodes to 4294967280 bytes"},
        {"broken stream", good.size(), 200, 0xDEADBEEF, "WOFF2: the decoder rejects the font's tables"},
    };
    for (const auto& c : cases) {
        ByteWriter woff2;
        woff2.bytes(ByteView(good.data(), c.cut));
        if (c.at) woff2.putU32(c.at, c.value);
        RefusalLog log;
        LargestAllocation largest;
        EXPECT_FALSE(Woff2::DecodeToSfnt(woff2.view())) << c.what;
        EXPECT_NE(log.text().find(c.reason), std::string::npos) << c.what << ": " << log.text();
        EXPECT_LT(largest.bytes(), 4u << 20) << c.what;
    }
    RefusalLog log;  // another format's signature is no claim
    EXPECT_FALSE(Woff::DecodeToSfnt(ByteView(good)) || Woff2::DecodeToSfnt(ByteView(testfiles::readFile(kOtf))));
    EXPECT_EQ(log.text(), "");
}

}  // namespace
