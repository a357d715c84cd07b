#include <gtest/gtest.h>

#include "resourcefork/AppleDouble.h"
#include "common/MacFixtures.h"

namespace {

using namespace macfixtures;

MacParts SmallParts()
{
    MacParts parts;
    parts.name = "Example";
    parts.type = fourCC("FFIL");
    parts.creator = fourCC("DMOV");
    parts.data = Text("data fork");
    parts.resource = ResourceFile({{"FOND", 128, "Example", Text("family")}});
    return parts;
}

ByteView EntryBytes(const Bytes& file, const AppleDouble::Entry& entry)
{
    return *ByteView(file).sub(entry.offset, entry.length);
}

TEST(AppleDouble, ReadsBothSidecarLayouts)
{
    const MacParts parts = SmallParts();
    for (const Bytes& file : {PlainAppleDouble(parts), MacOSXDotUnderscore(parts)}) {
        auto container = AppleDouble::Parse(ByteView(file), file.size(), AppleDouble::kAppleDoubleMagic);
        ASSERT_TRUE(container);
        const AppleDouble::Entry* fork = container->find(AppleDouble::kResourceForkID);
        const AppleDouble::Entry* info = container->find(AppleDouble::kFinderInfoID);
        ASSERT_TRUE(fork && info);
        EXPECT_EQ(EntryBytes(file, *fork).chars(), ByteView(parts.resource).chars());
        uint32_t type = 0, creator = 0;
        EXPECT_TRUE(AppleDouble::ReadTypeAndCreator(EntryBytes(file, *info), type, creator));
        EXPECT_EQ(type, fourCC("FFIL"));
        EXPECT_EQ(creator, fourCC("DMOV"));
        EXPECT_FALSE(container->find(AppleDouble::kDataForkID));
    }
    EXPECT_EQ(MacOSXDotUnderscore(parts).size(), 50 + 3760 + parts.resource.size());
}

TEST(AppleDouble, MagicAndVersionMustMatch)
{
    const MacParts parts = SmallParts();
    Bytes single = AppleSingleFile(parts);
    Bytes sidecar = PlainAppleDouble(parts);
    EXPECT_TRUE(AppleDouble::TableLength(ByteView(single), AppleDouble::kAppleSingleMagic));
    EXPECT_FALSE(AppleDouble::TableLength(ByteView(single), AppleDouble::kAppleDoubleMagic));
    EXPECT_FALSE(AppleDouble::TableLength(ByteView(sidecar), AppleDouble::kAppleSingleMagic));
    sidecar[5] = 3;  // version 0x00030000
    EXPECT_FALSE(AppleDouble::TableLength(ByteView(sidecar), AppleDouble::kAppleDoubleMagic));
    sidecar[5] = 1;  // version 1 uses the same layout
    EXPECT_TRUE(AppleDouble::TableLength(ByteView(sidecar), AppleDouble::kAppleDoubleMagic));
}

TEST(AppleDouble, EveryTruncationIsRefused)
{
    const Bytes full = AppleSingleFile(SmallParts());
    for (size_t length = 0; length < full.size(); ++length) {
        Bytes cut = Slice(full, 0, length);
        EXPECT_FALSE(AppleDouble::Parse(ByteView(cut), cut.size(), AppleDouble::kAppleSingleMagic))
            << "length " << length;
    }
    EXPECT_TRUE(AppleDouble::Parse(ByteView(full), full.size(), AppleDouble::kAppleSingleMagic));
}

TEST(AppleDouble, HostileEntriesAreRefused)
{
    const Bytes base = PlainAppleDouble(SmallParts());
    struct Case {
        const char* what;
        size_t at;
        uint32_t value;
    };
    const Case cases[] = {
        {"entry count past the file", 24, 0xFFFF0000},
        {"offset past the file", 26 + 4, 0xFFFFFF00},
        {"length past the file", 26 + 8, 0x00100000},
        {"offset plus length wraps", 26 + 12 + 8, 0xFFFFFFFF},
    };
    for (const Case& c : cases) {
        Bytes damaged = base;
        for (int i = 0; i < 4; ++i) damaged[c.at + i] = uint8_t(c.value >> (24 - 8 * i));
        EXPECT_FALSE(AppleDouble::Parse(ByteView(damaged), damaged.size(), AppleDouble::kAppleDoubleMagic))
            << c.what;
    }
}

TEST(AppleDouble, ReplacingTheLastEntryKeepsEverythingBeforeIt)
{
    const MacParts parts = SmallParts();
    const Bytes file = MacOSXDotUnderscore(parts);
    const Bytes fork = ResourceFile({{"NFNT", 1, std::nullopt, Bytes(1000, 7)}});
    auto replaced = AppleDouble::ReplaceEntry(ByteView(file), AppleDouble::kAppleDoubleMagic,
                                              AppleDouble::kResourceForkID, ByteView(fork));
    ASSERT_TRUE(replaced);
    // The Finder info entry with its absolute attribute offsets is untouched.
    for (size_t i = 0; i < 3810; ++i) {
        const bool forkLength = i >= 26 + 12 + 8 && i < 26 + 24;
        if (!forkLength) {
            ASSERT_EQ((*replaced)[i], file[i]) << i;
        }
    }
    auto container = AppleDouble::Parse(ByteView(*replaced), replaced->size(), AppleDouble::kAppleDoubleMagic);
    ASSERT_TRUE(container);
    const AppleDouble::Entry* entry = container->find(AppleDouble::kResourceForkID);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->offset, 3810u);
    EXPECT_EQ(Slice(*replaced, entry->offset, entry->length), fork);
}

TEST(AppleDouble, ReplacingAnEarlierEntryMovesTheLaterOnes)
{
    const MacParts parts = SmallParts();
    const Bytes file = AppleSingleFile(parts);  // name, Finder info, data, resource
    const Bytes data = Text("a much longer data fork than before");
    auto replaced = AppleDouble::ReplaceEntry(ByteView(file), AppleDouble::kAppleSingleMagic,
                                              AppleDouble::kDataForkID, ByteView(data));
    ASSERT_TRUE(replaced);
    auto container = AppleDouble::Parse(ByteView(*replaced), replaced->size(), AppleDouble::kAppleSingleMagic);
    ASSERT_TRUE(container);
    EXPECT_EQ(EntryBytes(*replaced, *container->find(AppleDouble::kDataForkID)).chars(),
              ByteView(data).chars());
    EXPECT_EQ(EntryBytes(*replaced, *container->find(AppleDouble::kResourceForkID)).chars(),
              ByteView(parts.resource).chars());
    EXPECT_EQ(EntryBytes(*replaced, *container->find(3)).chars(), "Example");
}

TEST(AppleDouble, ReplacingRefusesMissingAndOverlappingEntries)
{
    const MacParts parts = SmallParts();
    const Bytes sidecar = PlainAppleDouble(parts);
    const Bytes fork = Text("x");
    EXPECT_FALSE(AppleDouble::ReplaceEntry(ByteView(sidecar), AppleDouble::kAppleDoubleMagic,
                                           AppleDouble::kDataForkID, ByteView(fork)));
    Bytes overlapping = sidecar;
    overlapping[26 + 12 + 4 + 3] -= 4;  // the resource fork starts inside the Finder info
    EXPECT_FALSE(AppleDouble::ReplaceEntry(ByteView(overlapping), AppleDouble::kAppleDoubleMagic,
                                           AppleDouble::kResourceForkID, ByteView(fork)));
}

}  // namespace
