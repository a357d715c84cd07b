#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "support/StringSafe.h"

namespace {

TEST(StringCbPrintfA, ResultOfSizeMinusOneIsCutButReportedAsSuccess)
{
    char buf[8];
    std::memset(buf, 'Z', sizeof buf);
    EXPECT_EQ(StringCbPrintfA(buf, 4, "%s", "abc"), S_OK);
    EXPECT_STREQ(buf, "ab");
    EXPECT_EQ(buf[3], 'Z');

    std::memset(buf, 'Z', sizeof buf);
    EXPECT_EQ(StringCbPrintfA(buf, 4, "%s", "abcd"), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(buf, "ab");
    EXPECT_EQ(buf[3], '\0');

    EXPECT_EQ(StringCbPrintfA(buf, 4, "%d", 7), S_OK);
    EXPECT_STREQ(buf, "7");
    EXPECT_EQ(StringCbPrintfA(buf, sizeof buf, "%s-%02X", "id", 10), S_OK);
    EXPECT_STREQ(buf, "id-0A");
}

TEST(StringCbPrintfA, BadSizesAreInvalid)
{
    char buf[4] = {'Z', 'Z', 'Z', 'Z'};
    EXPECT_EQ(StringCbPrintfA(buf, 0, "x"), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(StringCbPrintfA(buf, static_cast<unsigned long>(-1), "x"),
              STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(StringCbPrintfA(buf, static_cast<unsigned long>(LONG_MAX) + 1, "x"),
              STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(buf[0], 'Z');
    // One byte leaves no room at all: anything is too long.
    EXPECT_EQ(StringCbPrintfA(buf, 1, "x"), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_EQ(buf[0], '\0');
}

TEST(StringCatWorkerA, AppendsWithinTheBuffer)
{
    char buf[8] = "ab";
    EXPECT_EQ(StringCatWorkerA(buf, sizeof buf, "cde"), S_OK);
    EXPECT_STREQ(buf, "abcde");
    EXPECT_EQ(StringCatWorkerA(buf, sizeof buf, "fg"), S_OK);  // exactly fills it
    EXPECT_STREQ(buf, "abcdefg");
    EXPECT_EQ(StringCatWorkerA(buf, sizeof buf, ""), S_OK);
    EXPECT_STREQ(buf, "abcdefg");
}

TEST(StringCatWorkerA, OverflowTruncatesAndTerminates)
{
    char buf[6] = "ab";
    EXPECT_EQ(StringCatWorkerA(buf, sizeof buf, "cdefgh"), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(buf, "abcde");

    char full[4] = "abc";
    EXPECT_EQ(StringCatWorkerA(full, sizeof full, "d"), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(full, "abc");
}

TEST(StringCatWorkerA, UnterminatedDestinationIsInvalid)
{
    char buf[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(StringCatWorkerA(buf, sizeof buf, "x"), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(buf[3], 'd');
    EXPECT_EQ(StringCatWorkerA(buf, 0, "x"), STRSAFE_E_INVALID_PARAMETER);
}

TEST(StringCbLengthW, CountsBytesOfWideCharacters)
{
    const wchar_t text[] = L"abc";
    unsigned long length = 99;
    EXPECT_EQ(StringCbLengthW(text, sizeof text, &length), S_OK);
    EXPECT_EQ(length, 12u);
    EXPECT_EQ(StringCbLengthW(text, sizeof text, nullptr), S_OK);
    EXPECT_EQ(StringCbLengthW(L"", 4, &length), S_OK);
    EXPECT_EQ(length, 0u);
}

TEST(StringCbLengthW, TerminatorMustLieWithinTheSize)
{
    const wchar_t text[] = L"abc";
    unsigned long length = 99;
    EXPECT_EQ(StringCbLengthW(text, 12, &length), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(StringCbLengthW(text, 15, &length), STRSAFE_E_INVALID_PARAMETER);  // 3 elements
    EXPECT_EQ(StringCbLengthW(text, 0, &length), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(StringCbLengthW(nullptr, 16, &length), STRSAFE_E_INVALID_PARAMETER);
    EXPECT_EQ(length, 99u);
}

}  // namespace
