// Property lists: hostile bytes in either form, the file functions' failures,
// and the typed puts and lookups.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/TempFolder.h"
#include "support/ByteWriter.h"
#include "support/XCFUtils.h"

using namespace XCFUtils;

namespace {

using Plist = std::unique_ptr<void, decltype([](void* node) { plist_free(node); })>;

bool parses(const std::string& bytes) { return Plist(XCFCreateCFPropertyListFromBytes(bytes)) != nullptr; }

std::string repeat(const std::string& text, size_t count)
{
    std::string out;
    while (count--) out += text;
    return out;
}

// A binary list whose objects are arrays (of four-byte references, so that
// long chains fit) or, with no references, empty strings. Fifteen or more
// references take the extended count.
std::string binary(const std::vector<std::vector<uint32_t>>& objects, uint32_t top = 0)
{
    ByteWriter w;
    w.bytes("bplist00");
    std::vector<uint32_t> offsets;
    for (const auto& refs : objects) {
        offsets.push_back(uint32_t(w.size()));
        if (refs.size() < 15) w.u8(refs.empty() ? 0x50 : uint8_t(0xA0 | refs.size()));
        else w.u8(0xAF).u8(0x10).u8(uint8_t(refs.size()));
        for (uint32_t ref : refs) w.u32(ref);
    }
    const uint32_t table = uint32_t(w.size());
    for (uint32_t offset : offsets) w.u32(offset);
    w.zeros(6).u8(4).u8(4).u32(0).u32(uint32_t(objects.size())).u32(0).u32(top).u32(0).u32(table);
    return std::string(w.data().begin(), w.data().end());
}

// Object i holds `fanOut` references to object i + 1; the last is a string.
std::string chain(size_t length, size_t fanOut = 1, uint32_t top = 0)
{
    std::vector<std::vector<uint32_t>> objects;
    for (size_t i = 0; i + 1 < length; ++i) objects.emplace_back(fanOut, uint32_t(i + 1));
    objects.emplace_back();
    return binary(objects, top);
}

TEST(XCFUtilsParse, TruncatedListsNeverCrash)
{
    const std::string xml = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "PropertyList-1.0.dtd">
<plist version="1.0"><!-- <array> in a comment -->
<dict><key>s</key><string>héllo &amp; 'x'</string><key>n</key><integer>-70000</integer><key>r</key><real>2.5</real>
<key>d</key><data>AQJ4eXo=</data><key>t</key><date>2001-01-01T00:16:40Z</date>
<key>a</key><array><true/><dict/><array></array></array></dict></plist>
)";
    const Plist list(XCFCreateCFPropertyListFromBytes(xml));
    char* bin = nullptr;
    uint32_t length = 0;
    plist_to_bin(list.get(), &bin, &length);
    const std::string binaryForm(bin, length);
    plist_to_bin_free(bin);
    for (const std::string& whole : {xml, binaryForm}) {
        ASSERT_TRUE(parses(whole));
        for (size_t cut = 0; cut < whole.size(); ++cut) parses(whole.substr(0, cut));
    }
}

TEST(XCFUtilsParse, NestingIsBoundedInBothForms)
{
    const size_t limit = kMaxPropertyListDepth;
    // The plist element counts as one level of the XML form.
    auto nestedXml = [](size_t depth) { return "<plist>" + repeat("<array>", depth) + repeat("</array>", depth) + "</plist>"; };
    EXPECT_TRUE(parses(nestedXml(limit - 1)));
    EXPECT_FALSE(parses(nestedXml(limit)));
    EXPECT_TRUE(parses(chain(limit)));
    EXPECT_FALSE(parses(chain(limit + 1)));
    // Depths that would overflow libplist's stack, some of them behind end
    // tags that libplist does not take as such.
    const std::string deep[] = {nestedXml(200000), chain(200000), "<plist>" + repeat("<dict><key>k</key>", 200000),
        "<plist>" + repeat("<array><!-- </array> -->", 200000), "<plist>" + repeat("<array a=\"x></array>\">", 200000),
        "<plist>" + repeat("<array><?x </array> ?>", 200000), "<plist>" + repeat("<array><!DOCTYPE x [ a> </array> ]>", 200000)};
    for (const std::string& text : deep) EXPECT_FALSE(parses(text)) << text.substr(0, 40);
    // Empty elements and closed ones do not add up.
    EXPECT_TRUE(parses("<plist><array>" + repeat("<array/><true /><array></array >", 2000) + "</array></plist>"));
}

TEST(XCFUtilsParse, BinaryGraphsMustBeFiniteAndInRange)
{
    // Forty levels of two references each would expand to 2^40 nodes.
    EXPECT_FALSE(parses(chain(40, 2)));
    EXPECT_TRUE(parses(chain(5, 2)));  // shared, but no larger than the input
    EXPECT_TRUE(parses(chain(2, 15)));  // a count in the extended form
    EXPECT_FALSE(parses(binary({{1}, {0}})));  // a cycle
    EXPECT_FALSE(parses(binary({{5}})));       // a reference past the table
    EXPECT_FALSE(parses(chain(3, 1, 3)));      // top object past the table
}



int64_t integerOf(plist_t node)
{
    uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    return static_cast<int64_t>(bits);
}

// Every file failure is a null or false with its one line; an empty file
// counts as a failure, deliberately.
TEST(XCFUtilsFiles, EachFailurePrintsItsLine)
{
    TempFolder temp;
    const std::string empty = temp.file("empty"), garbage = temp.file("garbage", "<plist><dict><key>a</key>"), unwritable = temp / "no/such.plist";
    Plist data(plist_new_data("abc", 3)), text(plist_new_string("abc"));
    const struct { std::function<bool()> fails; std::string line; } cases[] = {
        {[&] { return !XCFCreateCFDataRefFromPath(empty.c_str()); }, "XCFUtils::XCFCreateCFDataRefFromPath:  error getting file length & rewinding file "},
        {[&] { return !XCFCreateCFPropertyListFromPath(garbage.c_str(), 0); }, "XCFUtils::XCFCreateCFPropertyListFromPath:  error returned. cannot parse property list"},
        {[&] { return !XCFWriteCFPropertyListToXMLFile(text.get(), unwritable.c_str()); }, "*** XCFUtils::XCFWriteCFDataRefToXMLFile:  Error opening file for writing."},
        {[&] { return !XCFWriteCFDataRefToXMLFile(data.get(), "/dev/full"); }, "*** XCFUtils::XCFWriteCFDataRefToXMLFile:  Error writing to file."},
    };
    for (const auto& c : cases) {
        testing::internal::CaptureStdout();
        const bool failed = c.fails();
        EXPECT_EQ(std::make_pair(failed, testing::internal::GetCapturedStdout()), std::make_pair(true, c.line + "\n"));
    }
}

// Unsigned longs are stored as signed 32-bit numbers: kept.
TEST(XCFUtilsValues, PutsAndTypedLookups)
{
    Plist dict(plist_new_dict());
    plist_t d = dict.get();
    ASSERT_TRUE(PutULongIntoDict(d, "u", 4294967295ul) && PutLongIntoDict(d, "l", -70000) &&
                PutUTF8NullTermCharPtrIntoDict(d, "s", "h\u00e9llo"));
    EXPECT_EQ(integerOf(plist_dict_get_item(d, "u")), -1);
    EXPECT_EQ(integerOf(plist_dict_get_item(d, "l")), -70000);
    EXPECT_EQ(GetCFStringFromDict(d, "u"), nullptr);  // the type must match exactly
    // Invalid text makes the put fail and leaves the dictionary alone.
    EXPECT_FALSE(PutUTF8NullTermCharPtrIntoDict(d, "s", "bad \xC3("));
    EXPECT_EQ(plist_dict_get_size(d), 3u);

    // A five-unit string: too small a capacity gives the negated length; an
    // exact fit is left unterminated.
    unsigned short buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), 0xAAAA);
    EXPECT_EQ(XCFGetUniStringFromDictionary(d, "s", buffer, 4), -5);
    EXPECT_EQ(XCFGetUniStringNullTermFromDictionary(d, "s", buffer, 5), 5);
    EXPECT_EQ(std::find(std::begin(buffer), std::end(buffer), 0xAAAA) - buffer, 5);
    EXPECT_EQ(XCFGetUniStringFromDictionary(d, "missing", nullptr, 8), 0);
}

// A lossy conversion answers false but stores its approximation.
TEST(XCFUtilsValues, NumberConversionsReportLoss)
{
    Plist small(plist_new_uint(300)), big(plist_new_uint(40000));
    int16_t out = 0;
    EXPECT_TRUE(GetNumberFromCFValue(small.get(), kNumberShort, &out));
    EXPECT_FALSE(GetNumberFromCFValue(big.get(), kNumberShort, &out));
    EXPECT_EQ(out, -25536);
}

}  // namespace
