// Small files whose lengths, counts and offsets claim gigabytes: every
// container and parser must refuse or bound them by the bytes really there,
// never allocate what they claim. The largest single allocation is measured
// under AddressSanitizer; elsewhere the files only have to be refused.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/LargestAllocation.h"
#include "common/TempFolder.h"
#include "support/ByteWriter.h"
#include "typeprobe/typeprobe.h"

namespace {

// Far below anything a claim would make, far above what a 200-byte file and
// the library's own tables need.
constexpr size_t kAllocationLimit = 1 << 20;

std::string padded(ByteWriter&& writer, size_t size)
{
    writer.zeros(size > writer.size() ? size - writer.size() : 0);
    const std::vector<uint8_t> bytes = writer.take();
    return std::string(bytes.begin(), bytes.end());
}

struct Claim {
    const char* what;
    const char* file;     // the name given to the bytes
    const char* open;     // the path identified (the file itself when empty)
    std::string bytes;
};

std::vector<Claim> claims()
{
    std::vector<Claim> list;
    {
        ByteWriter w;  // two tables of 4 GB in a 100-byte font
        w.u32(0x00010000).u16(2).u16(0).u16(0).u16(0);
        w.tag("glyf").u32(0).u32(44).u32(0xFFFFFFF0);
        w.tag("name").u32(0).u32(0).u32(0xFFFFFFFF);
        list.push_back({"sfnt tables", "claim.ttf", "", padded(std::move(w), 100)});
    }
    {
        ByteWriter w;  // 4 billion faces, one of 65535 tables of 4 GB
        w.tag("ttcf").u32(0x00010000).u32(0xFFFFFFFF).u32(16);
        w.u32(0x00010000).u16(0xFFFF).u16(0).u16(0).u16(0);
        w.tag("glyf").u32(0).u32(0).u32(0xFFFFFFFF);
        list.push_back({"collection faces and tables", "claim.ttc", "", padded(std::move(w), 100)});
    }
    {
        ByteWriter w;  // a resource header whose data and map are 4 GB
        w.u32(256).u32(0xFFFFFF00).u32(0xFFFFFFFF).u32(0xFFFFFFFF);
        list.push_back({"resource header", "claim.dfont", "", padded(std::move(w), 100)});
    }
    {
        ByteWriter w;  // a map that fits, listing 32768 types of 65536 resources of 4 GB
        w.u32(16).u32(20).u32(4).u32(50).u32(0xFFFFFFFF);
        w.zeros(16).u32(0).u16(0).u16(0).u16(28).u16(50);
        w.u16(0x7FFF).tag("FOND").u16(0xFFFF).u16(10).u16(0).u16(0xFFFF).u8(0).u24(0).u32(0);
        list.push_back({"resource map counts", "claim-map.dfont", "", padded(std::move(w), 100)});
    }
    {
        ByteWriter w;  // an AppleSingle file with 65535 entries, its forks 4 GB
        w.u32(0x00051600).u32(0x00020000).zeros(16).u16(0xFFFF);
        w.u32(2).u32(38).u32(0xFFFFFFF0).u32(1).u32(38).u32(0xFFFFFFFF);
        list.push_back({"AppleSingle entries", "claim-single", "", padded(std::move(w), 100)});
    }
    {
        ByteWriter w;  // a sidecar whose resource fork is 4 GB
        w.u32(0x00051607).u32(0x00020000).zeros(16).u16(1).u32(2).u32(38).u32(0xFFFFFFF0);
        list.push_back({"AppleDouble sidecar", "._claim", "claim", padded(std::move(w), 100)});
    }
    {
        ByteWriter w;  // MacBinary III with forks of 2 and 4 GB
        w.u8(0).u8(5).bytes("claim").zeros(58).tag("FFIL").tag("DMOV").zeros(10);
        w.u32(0x7FFFFFFF).u32(0xFFFFFFFF).zeros(11).tag("mBIN").zeros(16).u8(130).u8(129);
        list.push_back({"MacBinary forks", "claim.bin", "", padded(std::move(w), 200)});
    }
    return list;
}

TEST(ClaimedLengths, FilesClaimingGigabytesAllocateOnlyWhatTheyHold)
{
    TempFolder folder;
    ASSERT_FALSE(folder.path().empty());
    // Loads the library's tables before anything is measured.
    TP_FontArray* array = nullptr;
    TP_CreateSpecifier(folder.file("warm.ttf", "not a font").c_str(), 0, kTP_AllAttributes, &array);
    if (array) TP_SpecifierFree(array);

    for (const Claim& claim : claims()) {
        SCOPED_TRACE(claim.what);
        folder.file(claim.file, claim.bytes);
        if (*claim.open) folder.file(claim.open);
        const std::string path = folder / (*claim.open ? claim.open : claim.file);
        LargestAllocation largest;
        EXPECT_EQ(TP_CreateSpecifier(path.c_str(), 0, kTP_AllAttributes, &array), 1u);
        if (LargestAllocation::Available()) {
            EXPECT_LT(largest.bytes(), kAllocationLimit);
        }
    }
    if (!LargestAllocation::Available())
        GTEST_SKIP() << "allocation sizes are measured in the AddressSanitizer build";
}

}  // namespace
