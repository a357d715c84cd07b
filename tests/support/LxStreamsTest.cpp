#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/LxStreams.h"
#include "common/TempFolder.h"

namespace {

TEST(LxStreams, ReadWholeFileOfAnEmptyFileGivesOneZeroByte)
{
    TempFolder temp;
    void* buffer = nullptr;
    unsigned long size = 99;
    ASSERT_EQ(LxStreams::ReadWholeFile(LxString(temp.file("empty")), &buffer, &size), 0);
    EXPECT_EQ(size, 0u);
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(static_cast<unsigned char*>(buffer)[0], 0);
    std::free(buffer);
}

TEST(LxStreams, ReadWholeFileTerminatesTheBytes)
{
    TempFolder temp;
    void* buffer = nullptr;
    unsigned long size = 0;
    ASSERT_EQ(LxStreams::ReadWholeFile(LxString(temp.file("f", "abc")), &buffer, &size), 0);
    EXPECT_EQ(size, 3u);
    EXPECT_STREQ(static_cast<char*>(buffer), "abc");
    std::free(buffer);
}

TEST(LxStreams, UnreadablePathsFail)
{
    TempFolder temp;
    void* buffer = nullptr;
    unsigned long size = 0;
    EXPECT_EQ(LxStreams::ReadWholeFile(LxString(temp / "missing"), &buffer, &size), -1);
    EXPECT_EQ(LxStreams::ReadWholeFile(LxString(temp.path()), &buffer, &size), -1);
    EXPECT_EQ(buffer, nullptr);
    LxString text("kept");
    EXPECT_EQ(LxStreams::ReadWholeUTF8File(LxString(temp / "missing"), &text), -1);
    EXPECT_EQ(text.str(), "kept");
    EXPECT_EQ(LxStreams::WriteWholeUTF8File(LxString(temp / "no/such/file"), "x"), -1);
}

TEST(LxStreams, ReadWholeUTF8FileStopsAtTheFirstZeroByte)
{
    TempFolder temp;
    LxString text;
    std::string bytes("\xEF\xBB\xBF" "ab\0cd", 7);
    ASSERT_EQ(LxStreams::ReadWholeUTF8File(LxString(temp.file("f", bytes)), &text), 0);
    // No byte-order mark handling: the mark stays.
    EXPECT_EQ(text.str(), "\xEF\xBB\xBF" "ab");
}

TEST(LxStreams, WriteWholeUTF8FileReplacesTheFile)
{
    TempFolder temp;
    std::string path = temp.file("f", "a much longer old content");
    ASSERT_EQ(LxStreams::WriteWholeUTF8File(LxString(path), "new"), 0);
    LxString text;
    ASSERT_EQ(LxStreams::ReadWholeUTF8File(LxString(path), &text), 0);
    EXPECT_EQ(text.str(), "new");
    ASSERT_EQ(LxStreams::WriteWholeUTF8File(LxString(temp / "fresh"), ""), 0);
    ASSERT_EQ(LxStreams::ReadWholeUTF8File(LxString(temp / "fresh"), &text), 0);
    EXPECT_EQ(text.str(), "");
}

}  // namespace
