// MacBinary I, II and III: strict detection, the forks found, and forks
// replaced with the header kept valid.
#include "containers/MacBinary.h"

#include <gtest/gtest.h>

#include <functional>

#include "common/MacFixtures.h"
#include "support/Refusal.h"

namespace {

using namespace macfixtures;

const MacParts kParts{"Example", fourCC("LWFN"), fourCC("GWp1"), Text("some data fork bytes"),
                      ResourceFile({{"POST", 501, std::nullopt, Text("%!PS-AdobeFont-1.0")}})};

std::optional<MacBinary::Header> Parse(const Bytes& file) { return MacBinary::Parse(ByteView(file), file.size()); }

TEST(MacBinary, ReadsAllThreeVersions)
{
    EXPECT_EQ(MacBinary::Crc16(ByteView(std::string_view("123456789"))), 0x31C3);
    for (int version : {1, 2, 3}) {
        const Bytes file = MacBinaryFile(kParts, version);
        auto header = Parse(file);
        ASSERT_TRUE(header) << version;
        EXPECT_EQ(header->version, version);
        EXPECT_EQ(header->name + fourCCString(header->fileType) + fourCCString(header->fileCreator), "ExampleLWFNGWp1");
        EXPECT_EQ(Slice(file, header->dataOffset, header->dataLength), kParts.data);
        EXPECT_EQ(Slice(file, header->resourceOffset, header->resourceLength), kParts.resource);
    }
    // A secondary header, padded to 128 bytes, moves the forks.
    Bytes file = MacBinaryFile(kParts, 2);
    file[121] = 10;
    SetMacBinaryCrc(file);
    file.insert(file.begin() + 128, 128, 0xEE);
    auto header = Parse(file);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->dataOffset, 256u);
    EXPECT_EQ(Slice(file, header->dataOffset, header->dataLength), kParts.data);
}

TEST(MacBinary, DetectionIsStrict)
{
    // Each change made to a file of the version given; version 2's CRC is recomputed after it. Only
    // a file that claims to be MacBinary (its III signature, its II CRC, or I's rules) says why not.
    const struct { const char* what; int version; std::function<void(Bytes&)> change; const char* reason; } cases[] = {
        {"byte 0 not zero", 2, [](Bytes& b) { b[0] = 1; }, ""},
        {"empty name", 2, [](Bytes& b) { b[1] = 0; }, ""},
        {"name longer than 63", 2, [](Bytes& b) { b[1] = 64; }, ""},
        {"byte 74 not zero", 2, [](Bytes& b) { b[74] = 1; }, ""},
        {"byte 82 not zero", 2, [](Bytes& b) { b[82] = 1; }, ""},
        {"byte 74 not zero, signed", 3, [](Bytes& b) { b[74] = 1; }, "MacBinary III: byte 74 is 1, not zero"},
        {"name longer than 63, signed", 3, [](Bytes& b) { b[1] = 64; }, "MacBinary III: name length 64 outside 1 to 63"},
        {"resource fork past the end", 2, [](Bytes& b) { b[88] = 0x7F; }, "MacBinary II: resource fork (offset 256, length 8323400) runs past the end of the file (640 bytes)"},
        {"data fork past the end", 3, [](Bytes& b) { b[83] = 0x01; }, "MacBinary III: data fork (offset 128, length 16777236) runs past"},
        {"bad CRC, and bytes 122 and 123 rule out MacBinary I", 3, [](Bytes& b) { std::fill_n(b.begin() + 102, 4, 0); b[125] ^= 1; }, ""},
        {"MacBinary I with a non-zero byte 99", 1, [](Bytes& b) { b[99] = 1; }, ""},
        {"MacBinary I with a non-zero byte 127", 1, [](Bytes& b) { b[127] = 1; }, ""},
        {"MacBinary I with trailing bytes", 1, [](Bytes& b) { b.resize(b.size() + 129, 0); }, "MacBinary I: 129 bytes follow the padded forks"},
        {"MacBinary I fork over 8 MiB", 1, [](Bytes& b) { b[84] = 0x80; b.resize(b.size() + 0x800000, 0); }, ""},
        {"a resource file: byte 1 is zero", 0, [](Bytes& b) { b = kParts.resource; }, ""},
        {"a data-fork resource file", 0, [](Bytes& b) { b = ReadFile(CorpusPath("dfont/DejaVuSans.dfont")); }, ""},
        {"zeros", 0, [](Bytes& b) { b.assign(512, 0); }, ""},
    };
    for (const auto& c : cases) {
        Bytes file = MacBinaryFile(kParts, std::max(c.version, 1));
        c.change(file);
        if (c.version == 2) SetMacBinaryCrc(file);
        RefusalLog log;
        EXPECT_FALSE(Parse(file)) << c.what;
        EXPECT_EQ(log.text().substr(0, std::string(c.reason).size()), c.reason) << c.what;
        EXPECT_EQ(log.text().empty(), !*c.reason) << c.what << ": " << log.text();
    }
    Bytes third = MacBinaryFile(kParts, 3);
    third[125] ^= 1;  // the signature is enough
    EXPECT_TRUE(Parse(third));

    const Bytes full = MacBinaryFile(kParts, 3);
    auto header = Parse(full);
    ASSERT_TRUE(header);
    const size_t end = size_t(header->resourceOffset + header->resourceLength);
    for (size_t length = 0; length < end; ++length) {
        RefusalLog log;  // a whole header claims the forks that are cut
        EXPECT_FALSE(Parse(Slice(full, 0, length))) << "length " << length;
        EXPECT_EQ(log.reasons().size(), length < 128 ? 0u : 1u) << "length " << length;
    }
    EXPECT_TRUE(Parse(Slice(full, 0, end)));
}

TEST(MacBinary, ReplacingAForkRewritesLengthsAndCrcAndKeepsTheComment)
{
    // Every version's write-back is walked in ContainerEquivalenceTest; here
    // what it does not see: a Finder comment after the resource fork, and
    // the CRC checked independently.
    const Bytes fork = ResourceFile({{"POST", 501, std::nullopt, Bytes(300, 1)}, {"POST", 502, std::nullopt, Bytes(5, 2)}});
    Bytes file = MacBinaryFile(kParts, 2);
    file[100] = 7;
    SetMacBinaryCrc(file);
    file.insert(file.end(), {'c', 'o', 'm', 'm', 'e', 'n', 't'});
    file.resize(file.size() + 121, 0);
    auto replaced = MacBinary::ReplaceForks(ByteView(file), std::nullopt, ByteView(fork));
    ASSERT_TRUE(replaced);
    auto header = Parse(*replaced);
    ASSERT_TRUE(header);
    EXPECT_EQ(Slice(*replaced, header->dataOffset, header->dataLength), kParts.data);
    EXPECT_EQ(Slice(*replaced, header->resourceOffset, header->resourceLength), fork);
    EXPECT_EQ(XmodemCrc(replaced->data(), 124), ((*replaced)[124] << 8) | (*replaced)[125]);
    EXPECT_EQ(Slice(*replaced, size_t(header->resourceOffset + (header->resourceLength + 127) / 128 * 128), 7), Text("comment"));
    EXPECT_EQ(replaced->size() % 128, 0u);
    EXPECT_FALSE(MacBinary::ReplaceForks(ByteView(kParts.resource), std::nullopt, ByteView(fork)));
}

}  // namespace
