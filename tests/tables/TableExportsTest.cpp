#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "tables/CClassificationMappings.h"
#include "typeprobe/typeprobe.h"

namespace {

struct StyleBuffers {
    explicit StyleBuffers(size_t count, size_t length = 64)
        : storage(count, std::string(length, '#')), pointers(count)
    {
        for (size_t i = 0; i < count; ++i) pointers[i] = storage[i].data();
    }
    std::string text(size_t i) const { return storage[i].c_str(); }
    std::vector<std::string> storage;
    std::vector<char*> pointers;
};

TEST(GetStyles, NullPointersAndANullFirstBufferAreRefused)
{
    StyleBuffers buffers(2);
    unsigned long count = 99;
    EXPECT_EQ(TP_GetStyles(nullptr, "A", 2, 64, &count, buffers.pointers.data()), 1u);
    EXPECT_EQ(TP_GetStyles("A-Bold", nullptr, 2, 64, &count, buffers.pointers.data()), 1u);
    EXPECT_EQ(TP_GetStyles("A-Bold", "A", 2, 64, nullptr, buffers.pointers.data()), 1u);
    EXPECT_EQ(TP_GetStyles("A-Bold", "A", 2, 64, &count, nullptr), 1u);
    buffers.pointers[0] = nullptr;
    EXPECT_EQ(TP_GetStyles("A-Bold", "A", 2, 64, &count, buffers.pointers.data()), 1u);
    EXPECT_EQ(count, 99u);
}

TEST(GetStyles, DeliversStyleNamesByTheCopyOutRule)
{
    StyleBuffers buffers(4);
    unsigned long count = 99;
    ASSERT_EQ(TP_GetStyles("Arial-BoldItalic", "Arial Bold Italic", 4, 64, &count, buffers.pointers.data()), 0u);
    ASSERT_EQ(count, 1u);
    EXPECT_EQ(buffers.text(0), "Bold Italic");
    EXPECT_EQ(buffers.storage[1], std::string(64, '#'));
    // Truncated silently to the buffer length.
    ASSERT_EQ(TP_GetStyles("Arial-BoldItalic", "", 4, 5, &count, buffers.pointers.data()), 0u);
    EXPECT_EQ(buffers.text(0), "Bold");
}

TEST(GetStyles, NothingFoundLeavesCountAndBuffersAlone)
{
    StyleBuffers buffers(1);
    unsigned long count = 99;
    EXPECT_EQ(TP_GetStyles("Georgia", "Georgia", 1, 64, &count, buffers.pointers.data()), 0u);
    EXPECT_EQ(count, 99u);
    EXPECT_EQ(buffers.storage[0], std::string(64, '#'));
}

TEST(GetStyles, CountIsCappedAndNullEntriesAreSkipped)
{
    StyleBuffers buffers(3);
    unsigned long count = 99;
    ASSERT_EQ(TP_GetStyles("PlayfairDisplay-BoldItalic", "", 0, 64, &count, buffers.pointers.data()), 0u);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(buffers.storage[0], std::string(64, '#'));
    buffers.pointers[1] = nullptr;
    ASSERT_EQ(TP_GetStyles("PlayfairDisplay-BoldItalic", "", 3, 64, &count, buffers.pointers.data()), 0u);
    ASSERT_EQ(count, 3u);
    EXPECT_EQ(buffers.text(0), "Bold");
    EXPECT_EQ(buffers.storage[1], std::string(64, '#'));
    EXPECT_EQ(buffers.text(2), "Bold Italic");
}

TEST(GetStyles, FirstUseFromManyThreadsGivesTheSameAnswers)
{
    std::vector<std::string> answers(8);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < answers.size(); ++i)
        threads.emplace_back([&answers, i] {
            StyleBuffers buffers(1);
            unsigned long count = 0;
            TP_GetStyles("Helvetica-BoldOblique", "Helvetica Bold Oblique", 1, 64, &count,
                         buffers.pointers.data());
            answers[i] = count == 1 ? buffers.text(0) : "";
        });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& answer : answers) EXPECT_EQ(answer, "Bold Oblique");
}

TEST(GetClassificationFromFamily, NullFamilyOrBufferIsRefused)
{
    char buffer[8] = "keep";
    EXPECT_EQ(TP_GetClassificationFromFamily(nullptr, "Times", buffer, 8), 1u);
    EXPECT_EQ(TP_GetClassificationFromFamily("Times", "Times", nullptr, 8), 1u);
    EXPECT_STREQ(buffer, "keep");
    EXPECT_EQ(TP_GetClassificationFromFamily("Times", nullptr, buffer, 0), 0u);
    EXPECT_STREQ(buffer, "keep");
}

TEST(GetClassificationFromFamily, TheAlternateIsAskedOnlyWhenTheFamilyIsUnknown)
{
    char buffer[256];
    if (!CClassificationMappings::GetSharedClassificationMappings()->IsLoaded()) {
        // Without a table the text is empty.
        ASSERT_EQ(TP_GetClassificationFromFamily("Times", "Times", buffer, sizeof buffer), 0u);
        EXPECT_STREQ(buffer, "");
        return;
    }
    ASSERT_EQ(TP_GetClassificationFromFamily("No Such Family 1", nullptr, buffer, sizeof buffer), 0u);
    EXPECT_STREQ(buffer, "--");
    ASSERT_EQ(TP_GetClassificationFromFamily("No Such Family 1", "No Such Family 2", buffer, sizeof buffer),
              0u);
    EXPECT_STREQ(buffer, "--");
    std::string times =
        CClassificationMappings::GetSharedClassificationMappings()->GetClassNameFromFontFamily("Times").str();
    ASSERT_NE(times, "--");
    ASSERT_EQ(TP_GetClassificationFromFamily("No Such Family", "TIMES", buffer, sizeof buffer), 0u);
    EXPECT_EQ(times, buffer);
    ASSERT_EQ(TP_GetClassificationFromFamily("Times", "No Such Family", buffer, sizeof buffer), 0u);
    EXPECT_EQ(times, buffer);
}

}  // namespace
