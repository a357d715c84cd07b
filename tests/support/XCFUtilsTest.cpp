#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "support/TextEncoding.h"
#include "support/XCFUtils.h"

using namespace XCFUtils;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

struct PlistFree {
    void operator()(void* node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, PlistFree>;

std::string xmlOf(plist_t node)
{
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(node, &xml, &length);
    std::string text(xml, length);
    plist_to_xml_free(xml);
    return text;
}

int64_t integerOf(plist_t node)
{
    uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    return static_cast<int64_t>(bits);
}

std::string stringOf(plist_t node)
{
    uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return std::string(text, length);
}

class XCFUtilsFiles : public testing::Test {
protected:
    void SetUp() override
    {
        dir_ = std::filesystem::temp_directory_path() /
               ("xcfutils-" + std::to_string(getpid()) + "-" +
                testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    std::string path(const std::string& name, const char* contents = nullptr) const
    {
        std::string file = (dir_ / name).string();
        if (contents) std::ofstream(file, std::ios::binary) << contents;
        return file;
    }

    std::filesystem::path dir_;
};

TEST_F(XCFUtilsFiles, EachFailurePrintsItsLine)
{
    const std::string empty = path("empty", ""), missing = path("missing"),
                      garbage = path("garbage", "<plist><dict><key>a</key>"), out = path("out"),
                      unwritable = path("no/such/folder.plist");
    Plist data(plist_new_data("abc", 3));
    Plist text(plist_new_string("abc"));
    const std::string length =
        "XCFUtils::XCFCreateCFDataRefFromPath:  error getting file length & rewinding file ";
    const std::string writer = "*** XCFUtils::XCFWriteCFDataRefToXMLFile:  ";
    const struct {
        std::function<bool()> fails;
        std::string line;
    } cases[] = {
        {[&] { return !XCFCreateCFDataRefFromPath(empty.c_str()); }, length},
        {[&] { return !XCFCreateCFPropertyListFromPath(empty.c_str(), 0); }, length},
        {[&] { return !XCFCreateCFPropertyListFromPath(missing.c_str(), 0); }, length},
        {[&] { return !XCFCreateCFPropertyListFromPath(garbage.c_str(), 0); },
         "XCFUtils::XCFCreateCFPropertyListFromPath:  error returned. cannot parse property list"},
        {[&] { return !XCFWriteCFDataRefToXMLFile(data.get(), unwritable.c_str()); },
         writer + "Error opening file for writing."},
        {[&] { return !XCFWriteCFPropertyListToXMLFile(text.get(), unwritable.c_str()); },
         writer + "Error opening file for writing."},
        {[&] { return !XCFWriteCFDataRefToXMLFile(text.get(), out.c_str()); },
         writer + "Failed to create buffer from CFDataRef."},
        {[&] { return !XCFWriteCFDataRefToXMLFile(data.get(), "/dev/full"); },
         writer + "Error writing to file."},
        {[&] { return !XCFWriteCFPropertyListToXMLFile(nullptr, out.c_str()); },
         "*** XCFUtils::XCFWriteCFPropertyListToXMLFile:  Failed to create XML CFData from "
         "property list for writing."},
        // Null and empty paths are refused silently.
        {[&] { return !XCFCreateCFDataRefFromPath(nullptr); }, ""},
        {[&] { return !XCFCreateCFPropertyListFromPath("", 0); }, ""},
        {[&] { return !XCFWriteCFPropertyListToXMLFile(text.get(), nullptr); }, ""},
        {[&] { return !XCFWriteCFDataRefToXMLFile(data.get(), ""); }, ""},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        CaptureStdout();
        bool failed = cases[i].fails();
        std::string printed = GetCapturedStdout();
        EXPECT_TRUE(failed) << "case " << i;
        EXPECT_EQ(printed, cases[i].line.empty() ? "" : cases[i].line + "\n") << "case " << i;
    }
}

TEST_F(XCFUtilsFiles, WrittenListsReadBackEqual)
{
    Plist dict(plist_new_dict());
    plist_t list = plist_new_array();
    plist_dict_set_item(dict.get(), "list", list);
    plist_dict_set_item(dict.get(), "real", plist_new_real(0.1));
    ASSERT_TRUE(AppendULongOntoArray(list, 4294967295ul) &&
                AppendUTF8NullTermCharPtrOntoArray(list, "a<b & \"c\" ]]>") &&
                AppendBoolOntoArray(list, false) &&
                PutUTF8NullTermCharPtrIntoDict(dict.get(), "name", "Zapf \u00e9\u65e5\U0001F600") &&
                PutShortIntoDict(dict.get(), "short", -300));
    const std::string file = path("round.plist");
    // The second write replaces the first, longer file.
    Plist longer(plist_new_string(std::string(5000, 'x').c_str()));
    ASSERT_TRUE(XCFWriteCFPropertyListToXMLFile(longer.get(), file.c_str()));
    ASSERT_TRUE(XCFWriteCFPropertyListToXMLFile(dict.get(), file.c_str()));
    Plist back(XCFCreateCFPropertyListFromPath(file.c_str(), kPropertyListMutableContainers));
    ASSERT_TRUE(back);
    EXPECT_EQ(xmlOf(back.get()), xmlOf(dict.get()));

    char* bytes = nullptr;
    uint32_t size = 0;
    plist_to_bin(dict.get(), &bytes, &size);
    std::ofstream(path("binary.plist"), std::ios::binary).write(bytes, size);
    plist_to_bin_free(bytes);
    Plist binary(XCFCreateCFPropertyListFromPath(path("binary.plist").c_str(), 0));
    ASSERT_TRUE(binary);
    EXPECT_EQ(xmlOf(binary.get()), xmlOf(dict.get()));

    Plist data(XCFCreateCFDataRefFromPath(path("five", "abcde").c_str()));
    uint64_t length = 0;
    ASSERT_TRUE(data);
    EXPECT_EQ(std::string(plist_get_data_ptr(data.get(), &length), 5), "abcde");
    EXPECT_EQ(length, 5u);
}

TEST_F(XCFUtilsFiles, LengthIsTakenAndTheFileRewound)
{
    unsigned long length = 0;
    EXPECT_EQ(GetFileLengthAndRewind(nullptr, &length), -1);
    FILE* file = std::fopen(path("five", "abcde").c_str(), "rb");
    ASSERT_NE(file, nullptr);
    std::fgetc(file);
    EXPECT_EQ(GetFileLengthAndRewind(file, &length), 0);
    EXPECT_EQ(length, 5u);
    EXPECT_EQ(std::fgetc(file), 'a');
    std::fclose(file);
}

TEST(XCFUtilsValues, UnsignedLongsAreStoredAsSigned32BitNumbers)
{
    const struct {
        unsigned long put;
        int64_t stored;
    } cases[] = {{4294967295ul, -1}, {2147483648ul, -2147483648LL}, {2147483647ul, 2147483647},
                 {4294967296ul + 7, 7}};
    for (const auto& c : cases) {
        Plist dict(plist_new_dict());
        ASSERT_TRUE(PutULongIntoDict(dict.get(), "k", c.put));
        plist_t stored = plist_dict_get_item(dict.get(), "k");
        long back = 0;
        EXPECT_EQ(integerOf(stored), c.stored) << c.put;
        EXPECT_TRUE(GetLongFromCFValue(stored, back));
        EXPECT_EQ(back, c.stored);
    }
    Plist dict(plist_new_dict());
    PutULongIntoDict(dict.get(), "k", 4294967295ul);
    EXPECT_NE(xmlOf(dict.get()).find("<integer>-1</integer>"), std::string::npos);
}

TEST(XCFUtilsValues, NumberConversionsReportLossAsFalse)
{
    const struct {
        bool isReal;
        double value;
        long type;
        bool exact;
        double expected;  // what is stored, lossy or not
    } cases[] = {
        {false, 100, kNumberChar, true, 100},
        {false, 300, kNumberChar, false, 44},
        {false, -129, kNumberChar, false, 127},
        {false, -32768, kNumberShort, true, -32768},
        {false, 40000, kNumberShort, false, -25536},
        {false, 2147483648.0, kNumberLong, false, -2147483648.0},
        {false, -2147483648.0, kNumberLongLong, true, -2147483648.0},
        {false, 16777217, kNumberFloat, false, 16777216},
        {false, -12, kNumberDouble, true, -12},
        {true, 2.0, kNumberShort, true, 2},
        {true, -2.5, kNumberShort, false, -2},
        {true, 1e20, kNumberLong, false, 2147483647},
        {true, std::nan(""), kNumberLong, false, 0},
        {true, 0.5, kNumberFloat, true, 0.5},
        {true, 0.1, kNumberFloat, false, double(0.1f)},
        {true, 1e300, kNumberFloat, false, INFINITY},
        {true, 0.1, kNumberDouble, true, 0.1},
        {false, 5, 9, false, -1},  // not a type code: nothing stored
    };
    for (const auto& c : cases) {
        Plist node(c.isReal ? plist_new_real(c.value) : plist_new_uint(uint64_t(int64_t(c.value))));
        union {
            int8_t c;
            int16_t s;
            int32_t l;
            int64_t ll;
            float f;
            double d;
        } out;
        std::memset(&out, 0xFF, sizeof out);
        EXPECT_EQ(GetNumberFromCFValue(node.get(), c.type, &out), c.exact) << c.value;
        double got = c.type == kNumberChar     ? out.c
                     : c.type == kNumberShort  ? out.s
                     : c.type == kNumberLong   ? out.l
                     : c.type == kNumberFloat  ? out.f
                     : c.type == kNumberDouble ? out.d
                                               : double(out.ll);
        EXPECT_EQ(got, c.expected) << c.value << " as type " << c.type;
    }
    Plist number(plist_new_uint(uint64_t(-1)));
    Plist flag(plist_new_bool(1));
    unsigned long long all = 0;
    double unchanged = 7;
    EXPECT_FALSE(GetNumberFromCFValue(number.get(), kNumberDouble, nullptr));
    EXPECT_FALSE(GetDoubleFromCFValue(flag.get(), unchanged));
    EXPECT_EQ(unchanged, 7);
    EXPECT_TRUE(GetLongLongFromCFValue(number.get(), all));
    EXPECT_EQ(all, ~0ull);
}

TEST(XCFUtilsValues, TypedLookupsRequireTheExactType)
{
    Plist dict(plist_new_dict());
    plist_t d = dict.get();
    plist_dict_set_item(d, "n", plist_new_uint(5));
    plist_dict_set_item(d, "r", plist_new_real(2.5));
    plist_dict_set_item(d, "s", plist_new_string("x"));
    plist_dict_set_item(d, "b", plist_new_bool(0));
    plist_dict_set_item(d, "a", plist_new_array());
    EXPECT_EQ(GetCFStringFromDict(d, "n"), nullptr);
    EXPECT_EQ(XCFGetCFStringFromDictionary(d, "s"), plist_dict_get_item(d, "s"));
    EXPECT_EQ(GetCFNumberFromDict(d, "r"), plist_dict_get_item(d, "r"));
    EXPECT_EQ(GetCFNumberFromDict(d, "b"), nullptr);
    EXPECT_EQ(GetCFBooleanFromDict(d, "n"), nullptr);
    EXPECT_EQ(GetCFArrayFromDict(d, "a"), plist_dict_get_item(d, "a"));
    EXPECT_EQ(GetCFArrayFromDict(d, "missing"), nullptr);
    EXPECT_EQ(GetCFStringFromDict(plist_dict_get_item(d, "a"), "s"), nullptr);  // not a dict

    bool flag = true;
    short s = 9;
    char c = 9;
    double real = 9;
    EXPECT_TRUE(GetBoolFromDict(d, "b", flag));
    EXPECT_FALSE(flag);
    EXPECT_FALSE(GetShortFromDict(d, "s", s) || GetCharFromDict(d, "b", c) ||
                 GetDoubleFromDict(d, "missing", real));
    EXPECT_EQ(s + c + real, 27);  // all untouched
    EXPECT_TRUE(GetDoubleFromDict(d, "n", real));
    EXPECT_EQ(real, 5);
    EXPECT_FALSE(GetShortFromDict(d, "r", s));  // a lossy conversion stores its approximation
    EXPECT_EQ(s, 2);
}

TEST(XCFUtilsValues, UniStringCopiesFollowTheCapacity)
{
    Plist dict(plist_new_dict());
    plist_dict_set_item(dict.get(), "five", plist_new_string("h\u00e9llo"));
    plist_dict_set_item(dict.get(), "pair", plist_new_string("\U0001F600"));
    plist_dict_set_item(dict.get(), "number", plist_new_uint(1));
    const struct {
        const char* key;
        long capacity;
        bool terminate;
        long result;
        long written;  // units changed in the buffer
    } cases[] = {
        {"five", 4, false, -5, 0}, {"five", 4, true, -5, 0},  {"five", 5, false, 5, 5},
        {"five", 5, true, 5, 5},   {"five", 6, false, 5, 5},  {"five", 6, true, 5, 6},
        {"pair", 2, true, 2, 2},   {"missing", 8, true, 0, 0}, {"number", 8, true, 0, 0},
    };
    for (const auto& c : cases) {
        unsigned short buffer[8];
        std::fill(std::begin(buffer), std::end(buffer), 0xAAAA);
        long result = c.terminate ? XCFGetUniStringNullTermFromDictionary(dict.get(), c.key,
                                                                          buffer, c.capacity)
                                  : XCFGetUniStringFromDictionary(dict.get(), c.key, buffer,
                                                                  c.capacity);
        EXPECT_EQ(result, c.result) << c.key << " " << c.capacity;
        EXPECT_EQ(std::find(std::begin(buffer), std::end(buffer), 0xAAAA) - buffer, c.written)
            << c.key << " " << c.capacity << " " << c.terminate;
    }
    EXPECT_EQ(XCFGetUniStringFromDictionary(dict.get(), "five", nullptr, 8), -5);

    unsigned short* copy = nullptr;
    ASSERT_TRUE(GetStringFromCFValue(plist_dict_get_item(dict.get(), "five"), copy));
    EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(copy)), u"h\u00e9llo");
    std::free(copy);
    copy = nullptr;
    EXPECT_FALSE(GetStringFromCFValue(plist_dict_get_item(dict.get(), "number"), copy));
    EXPECT_EQ(copy, nullptr);
}

TEST(XCFUtilsValues, PutsReplaceAndInvalidTextChangesNothing)
{
    Plist dict(plist_new_dict());
    Plist array(plist_new_array());
    plist_t d = dict.get();
    ASSERT_TRUE(PutLongIntoDict(d, "k", 1) && PutUTF8NullTermCharPtrIntoDict(d, "k", "text"));
    EXPECT_FALSE(PutUTF8NullTermCharPtrIntoDict(d, "k", "bad \xC3("));
    EXPECT_FALSE(PutNullTermCharPtrIntoDict(d, "k", "\x80", kCFStringEncodingASCII));
    EXPECT_FALSE(PutNullTermCharPtrIntoDict(d, "k", "x", 0x7777));  // unknown encoding
    EXPECT_FALSE(AppendUTF8NullTermCharPtrOntoArray(array.get(), "\xED\xA0\x80"));  // surrogate
    EXPECT_FALSE(PutBoolIntoDict(array.get(), "k", true) || AppendBoolOntoArray(d, true));
    EXPECT_EQ(stringOf(plist_dict_get_item(d, "k")), "text");
    EXPECT_EQ(plist_dict_get_size(d), 1u);
    EXPECT_EQ(plist_array_get_size(array.get()), 0u);

    const struct {
        const char* bytes;
        unsigned long encoding;
        const char* utf8;
    } encoded[] = {{"\x8E", kCFStringEncodingMacRoman, "\u00e9"},
                   {"\x93\xFA", kCFStringEncodingMacJapanese, "\u65e5"},
                   {"caf\xE9", kCFStringEncodingISOLatin1, "caf\u00e9"}};
    for (const auto& e : encoded) {
        ASSERT_TRUE(PutNullTermCharPtrIntoDict(d, "k", e.bytes, e.encoding));
        EXPECT_EQ(stringOf(plist_dict_get_item(d, "k")), e.utf8);
    }
    ASSERT_TRUE(PutCharIntoDict(d, "c", char(-5)) && PutLongIntoDict(d, "l", -70000) &&
                AppendLongOntoArray(array.get(), 1L << 32));
    EXPECT_EQ(integerOf(plist_dict_get_item(d, "c")), -5);
    EXPECT_EQ(integerOf(plist_dict_get_item(d, "l")), -70000);
    EXPECT_EQ(integerOf(plist_array_get_item(array.get(), 0)), 0);  // wraps at 32 bits
}

}  // namespace
