// AppleSingle and AppleDouble containers: the entries found, every hostile
// or cut table refused, and entries replaced without disturbing the rest.
#include "containers/AppleDouble.h"

#include <gtest/gtest.h>

#include "common/MacFixtures.h"
#include "support/Refusal.h"

namespace {

using namespace macfixtures;

const MacParts kParts{"Example", fourCC("FFIL"), fourCC("DMOV"), Text("data fork"),
                      ResourceFile({{"FOND", 128, "Example", Text("family")}})};

std::optional<AppleDouble::Container> Parse(const Bytes& file, uint32_t magic = AppleDouble::kAppleDoubleMagic)
{
    return AppleDouble::Parse(ByteView(file), file.size(), magic);
}

Bytes EntryBytes(const Bytes& file, uint32_t id, uint32_t magic = AppleDouble::kAppleDoubleMagic)
{
    auto container = Parse(file, magic);
    const AppleDouble::Entry* entry = container ? container->find(id) : nullptr;
    return entry ? Slice(file, entry->offset, entry->length) : Text("(none)");
}

TEST(AppleDouble, WrongMagicOrVersionHostileOrCutTablesAreRefused)
{
    Bytes single = AppleSingleFile(kParts), sidecar = PlainAppleDouble(kParts);
    RefusalLog otherFormat;  // the other magic is no claim
    EXPECT_TRUE(AppleDouble::TableLength(ByteView(single), AppleDouble::kAppleSingleMagic));
    EXPECT_FALSE(AppleDouble::TableLength(ByteView(single), AppleDouble::kAppleDoubleMagic));
    EXPECT_FALSE(AppleDouble::TableLength(ByteView(sidecar), AppleDouble::kAppleSingleMagic));
    EXPECT_EQ(otherFormat.text(), "");
    for (auto [version, reason] : {std::pair<uint8_t, const char*>{3, "AppleDouble: unknown version number 0x30000"}, {1, ""}, {0, "0x0"}}) {
        sidecar[5] = version;  // version 1 uses the same layout as 2
        RefusalLog log;
        EXPECT_EQ(bool(AppleDouble::TableLength(ByteView(sidecar), AppleDouble::kAppleDoubleMagic)), !*reason) << int(version);
        EXPECT_NE(log.text().find(reason), std::string::npos) << log.text();
    }
    for (size_t length = 0; length < single.size(); ++length) {
        RefusalLog log;  // once the magic is there, a cut file says why
        EXPECT_FALSE(Parse(Slice(single, 0, length), AppleDouble::kAppleSingleMagic)) << "length " << length;
        EXPECT_EQ(log.reasons().size(), length < 4 ? 0u : 1u) << "length " << length;
    }
    const Bytes empty = AppleContainer(AppleDouble::kAppleDoubleMagic, "", {});  // a table the container cannot hold
    EXPECT_EQ(bool(AppleDouble::Parse(ByteView(empty), 25, AppleDouble::kAppleDoubleMagic)), false);
    EXPECT_EQ(bool(AppleDouble::Parse(ByteView(empty), 26, AppleDouble::kAppleDoubleMagic)), true);
    const struct { const char* what; size_t at; uint32_t value; const char* reason; } cases[] = {
        {"entry count past the file", 24, 0xFFFF0000, "AppleDouble: 65535 entry descriptors need 786446 bytes, the file holds"},
        {"offset past the file", 26 + 4, 0xFFFFFF00, "AppleDouble: entry 0 (ID 9, offset 4294967040, length 32) runs past the end"},
        {"length past the file", 26 + 8, 0x00100000, "AppleDouble: entry 0 (ID 9, offset 50, length 1048576) runs past the end"},
        {"offset plus length wraps", 26 + 12 + 8, 0xFFFFFFFF, "AppleDouble: entry 1 (ID 2, offset 82, length 4294967295)"},
    };
    for (const auto& c : cases) {
        ByteWriter damaged;
        damaged.bytes(ByteView(PlainAppleDouble(kParts))).putU32(c.at, c.value);
        RefusalLog log;
        EXPECT_FALSE(Parse(damaged.data())) << c.what;
        EXPECT_NE(log.text().find(c.reason), std::string::npos) << c.what << ": " << log.text();
    }
}

TEST(AppleDouble, ReplacingAnEntryKeepsTheOthers)
{
    // The last entry: everything before it, the Finder info with its
    // absolute attribute offsets, stays byte for byte.
    const Bytes sidecar = MacOSXDotUnderscore(kParts), fork = Bytes(1000, 7);
    auto replaced = AppleDouble::ReplaceEntry(ByteView(sidecar), AppleDouble::kAppleDoubleMagic,
                                              AppleDouble::kResourceForkID, ByteView(fork));
    ASSERT_TRUE(replaced);
    EXPECT_EQ(Slice(*replaced, 0, 46), Slice(sidecar, 0, 46));  // up to the fork's length
    EXPECT_EQ(Slice(*replaced, 50, 3760), Slice(sidecar, 50, 3760));
    EXPECT_EQ(Slice(*replaced, 3810, replaced->size() - 3810), fork);

    // An earlier entry: the later ones move.
    const Bytes single = AppleSingleFile(kParts), data = Text("a much longer data fork than before");
    replaced = AppleDouble::ReplaceEntry(ByteView(single), AppleDouble::kAppleSingleMagic, AppleDouble::kDataForkID, ByteView(data));
    ASSERT_TRUE(replaced);
    EXPECT_EQ(EntryBytes(*replaced, AppleDouble::kDataForkID, AppleDouble::kAppleSingleMagic), data);
    EXPECT_EQ(EntryBytes(*replaced, AppleDouble::kResourceForkID, AppleDouble::kAppleSingleMagic), kParts.resource);
    EXPECT_EQ(EntryBytes(*replaced, 3, AppleDouble::kAppleSingleMagic), Text("Example"));

    // A missing entry, or one that overlaps another.
    Bytes sidecarPlain = PlainAppleDouble(kParts);
    EXPECT_FALSE(AppleDouble::ReplaceEntry(ByteView(sidecarPlain), AppleDouble::kAppleDoubleMagic, AppleDouble::kDataForkID, ByteView(data)));
    sidecarPlain[26 + 12 + 4 + 3] -= 4;  // the resource fork starts inside the Finder info
    EXPECT_FALSE(AppleDouble::ReplaceEntry(ByteView(sidecarPlain), AppleDouble::kAppleDoubleMagic, AppleDouble::kResourceForkID, ByteView(data)));
}

}  // namespace
