#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/ByteWriter.h"
#include "support/XCFUtils.h"

using namespace XCFUtils;

namespace {

struct PlistFree {
    void operator()(void* node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, PlistFree>;

Plist parse(const std::string& bytes)
{
    return Plist(XCFCreateCFPropertyListFromBytes(bytes));
}

std::string repeat(const std::string& text, size_t count)
{
    std::string out;
    for (size_t i = 0; i < count; ++i) out += text;
    return out;
}

// A binary list whose objects are containers or empty strings; references
// are four bytes wide so that long chains fit.
struct Binary {
    std::vector<std::vector<uint32_t>> arrays;  // references of each object; none: a string

    std::string bytes(uint64_t top = 0) const
    {
        ByteWriter w;
        w.bytes("bplist00");
        std::vector<uint32_t> offsets;
        for (const auto& refs : arrays) {
            offsets.push_back(uint32_t(w.size()));
            w.u8(refs.empty() ? 0x50 : uint8_t(0xA0 | refs.size()));
            for (uint32_t ref : refs) w.u32(ref);
        }
        uint32_t table = uint32_t(w.size());
        for (uint32_t offset : offsets) w.u32(offset);
        w.zeros(6).u8(4).u8(4);
        w.u32(0).u32(uint32_t(arrays.size())).u32(uint32_t(top >> 32)).u32(uint32_t(top));
        w.u32(0).u32(table);
        return std::string(w.data().begin(), w.data().end());
    }
};

// Object i holds `fanOut` references to object i + 1; the last is a string.
Binary chain(size_t length, size_t fanOut = 1)
{
    Binary b;
    for (size_t i = 0; i + 1 < length; ++i)
        b.arrays.push_back(std::vector<uint32_t>(fanOut, uint32_t(i + 1)));
    b.arrays.push_back({});
    return b;
}

const std::string kSampleXml = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "PropertyList-1.0.dtd">
<plist version="1.0"><!-- <array> in a comment -->
<dict><key>s</key><string>héllo &amp; 'x'</string><key>n</key><integer>-70000</integer><key>r</key><real>2.5</real>
<key>d</key><data>AQJ4eXo=</data><key>t</key><date>2001-01-01T00:16:40Z</date>
<key>a</key><array><true/><dict/><array></array></array></dict></plist>
)";

std::string sampleBinary()
{
    Plist list(XCFCreateCFPropertyListFromBytes(kSampleXml));
    char* bin = nullptr;
    uint32_t length = 0;
    plist_to_bin(list.get(), &bin, &length);
    std::string bytes(bin, length);
    plist_to_bin_free(bin);
    return bytes;
}

TEST(XCFUtilsParse, TruncatedListsNeverCrash)
{
    for (const std::string& whole : {kSampleXml, sampleBinary()}) {
        ASSERT_TRUE(parse(whole));
        for (size_t length = 0; length < whole.size(); ++length) parse(whole.substr(0, length));
    }
}

TEST(XCFUtilsParse, NestingIsBoundedInBothForms)
{
    const size_t limit = kMaxPropertyListDepth;
    // The plist element counts as one level of the XML form.
    auto nestedXml = [](size_t depth) {
        return "<plist>" + repeat("<array>", depth) + repeat("</array>", depth) + "</plist>";
    };
    EXPECT_TRUE(parse(nestedXml(limit - 1)));
    EXPECT_FALSE(parse(nestedXml(limit)));
    EXPECT_TRUE(parse(chain(limit).bytes()));
    EXPECT_FALSE(parse(chain(limit + 1).bytes()));

    // Depths that would overflow libplist's stack, some of them behind end
    // tags that libplist does not take as such.
    const std::string deep[] = {
        nestedXml(200000),
        "<plist>" + repeat("<dict><key>k</key>", 200000),
        "<plist>" + repeat("<array><!-- </array> -->", 200000),
        "<plist>" + repeat("<array a=\"x></array>\">", 200000),
        "<plist>" + repeat("<array><?x </array> ?>", 200000),
        "<plist>" + repeat("<array><!DOCTYPE x [ a> </array> ]>", 200000),
    };
    for (const std::string& text : deep) EXPECT_FALSE(parse(text)) << text.substr(0, 40);
    EXPECT_FALSE(parse(chain(200000).bytes()));
    // Empty elements and closed ones do not add up.
    EXPECT_TRUE(parse("<plist><array>" + repeat("<array/><true /><array></array >", 2000) +
                      "</array></plist>"));
}

TEST(XCFUtilsParse, BinaryGraphsMustBeFiniteAndInRange)
{
    // Forty levels of two references each would expand to 2^40 nodes.
    EXPECT_FALSE(parse(chain(40, 2).bytes()));
    EXPECT_TRUE(parse(chain(5, 2).bytes()));  // shared, but no larger than the input
    EXPECT_FALSE(parse(Binary{{{1}, {0}}}.bytes()));  // a cycle
    EXPECT_FALSE(parse(Binary{{{5}}}.bytes()));       // a reference past the table
    EXPECT_FALSE(parse(chain(3).bytes(3)));  // top object past the table
}

}  // namespace
