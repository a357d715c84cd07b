#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "common/TempFolder.h"
#include "support/TextEncoding.h"
#include "support/XCFUtils.h"

using namespace XCFUtils;

namespace {

using Plist = std::unique_ptr<void, decltype([](void* node) { plist_free(node); })>;

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
