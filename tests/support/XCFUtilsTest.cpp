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
    const std::string length = "XCFUtils::XCFCreateCFDataRefFromPath:  error getting file length & rewinding file ";
    const std::string writer = "*** XCFUtils::XCFWriteCFDataRefToXMLFile:  ";
    const struct { std::function<bool()> fails; std::string line; } cases[] = {
        {[&] { return !XCFCreateCFDataRefFromPath(empty.c_str()); }, length},
        {[&] { return !XCFCreateCFPropertyListFromPath(garbage.c_str(), 0); }, "XCFUtils::XCFCreateCFPropertyListFromPath:  error returned. cannot parse property list"},
        {[&] { return !XCFWriteCFPropertyListToXMLFile(text.get(), unwritable.c_str()); }, writer + "Error opening file for writing."},
        {[&] { return !XCFWriteCFDataRefToXMLFile(text.get(), (temp / "out").c_str()); }, writer + "Failed to create buffer from CFDataRef."},
        {[&] { return !XCFWriteCFDataRefToXMLFile(data.get(), "/dev/full"); }, writer + "Error writing to file."},
        {[&] { return !XCFWriteCFPropertyListToXMLFile(nullptr, (temp / "out").c_str()); },
         "*** XCFUtils::XCFWriteCFPropertyListToXMLFile:  Failed to create XML CFData from property list for writing."},
    };
    for (const auto& c : cases) {
        testing::internal::CaptureStdout();
        const bool failed = c.fails();
        EXPECT_EQ(std::make_pair(failed, testing::internal::GetCapturedStdout()), std::make_pair(true, c.line + "\n"));
    }
    // A written list reads back, replacing a longer file.
    Plist longer(plist_new_string(std::string(5000, 'x').c_str()));
    ASSERT_TRUE(XCFWriteCFPropertyListToXMLFile(longer.get(), (temp / "round").c_str()));
    ASSERT_TRUE(XCFWriteCFPropertyListToXMLFile(text.get(), (temp / "round").c_str()));
    Plist back(XCFCreateCFPropertyListFromPath((temp / "round").c_str(), kPropertyListMutableContainers));
    ASSERT_TRUE(back);
    EXPECT_STREQ(plist_get_string_ptr(back.get(), nullptr), "abc");
}

// Unsigned longs are stored as signed 32-bit numbers: kept.
TEST(XCFUtilsValues, PutsAndTypedLookups)
{
    Plist dict(plist_new_dict());
    plist_t d = dict.get();
    ASSERT_TRUE(PutULongIntoDict(d, "u", 4294967295ul) && PutLongIntoDict(d, "l", -70000) &&
                PutUTF8NullTermCharPtrIntoDict(d, "s", "h\u00e9llo") && PutBoolIntoDict(d, "b", false));
    EXPECT_EQ(integerOf(plist_dict_get_item(d, "u")), -1);
    EXPECT_EQ(integerOf(plist_dict_get_item(d, "l")), -70000);
    EXPECT_EQ(GetCFStringFromDict(d, "u"), nullptr);  // the type must match exactly
    bool flag = true;
    EXPECT_TRUE(GetBoolFromDict(d, "b", flag));
    EXPECT_FALSE(flag);
    // Invalid text makes the put fail and leaves the dictionary alone.
    EXPECT_FALSE(PutUTF8NullTermCharPtrIntoDict(d, "s", "bad \xC3("));
    EXPECT_EQ(plist_dict_get_size(d), 4u);

    // A five-unit string: too small a capacity gives the negated length; an
    // exact fit is left unterminated.
    const struct { long capacity; bool terminate; long result, written; } copies[] = {{4, false, -5, 0}, {5, true, 5, 5}, {6, false, 5, 5}, {6, true, 5, 6}};
    for (const auto& c : copies) {
        unsigned short buffer[8];
        std::fill(std::begin(buffer), std::end(buffer), 0xAAAA);
        const long result = c.terminate ? XCFGetUniStringNullTermFromDictionary(d, "s", buffer, c.capacity)
                                        : XCFGetUniStringFromDictionary(d, "s", buffer, c.capacity);
        EXPECT_EQ(result, c.result) << c.capacity;
        EXPECT_EQ(std::find(std::begin(buffer), std::end(buffer), 0xAAAA) - buffer, c.written) << c.capacity;
    }
    EXPECT_EQ(XCFGetUniStringFromDictionary(d, "missing", nullptr, 8), 0);
}

template <typename T>
std::pair<bool, double> convert(plist_t node, long type)
{
    T out = T(-1);  // shows an untouched output
    const bool exact = GetNumberFromCFValue(node, type, &out);
    plist_free(node);
    return {exact, double(out)};
}

// A lossy conversion answers false but stores its approximation.
TEST(XCFUtilsValues, NumberConversionsReportLoss)
{
    const std::pair<std::pair<bool, double>, double> cases[] = {
        {convert<int8_t>(plist_new_uint(300), kNumberChar), 44}, {convert<int16_t>(plist_new_uint(40000), kNumberShort), -25536},
        {convert<int32_t>(plist_new_uint(2147483648ull), kNumberLong), -2147483648.0}, {convert<int16_t>(plist_new_real(-2.5), kNumberShort), -2},
        {convert<float>(plist_new_real(0.1), kNumberFloat), double(0.1f)}, {convert<double>(plist_new_bool(1), kNumberDouble), -1}};
    for (const auto& [got, expected] : cases) EXPECT_EQ(got, std::make_pair(false, expected));
    EXPECT_EQ(convert<double>(plist_new_real(0.1), kNumberDouble), std::make_pair(true, 0.1));
}

}  // namespace
