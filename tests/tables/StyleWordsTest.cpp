#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tables/StyleWords.h"

namespace {

std::vector<std::string> words(const std::string& name, size_t start, bool multipleMaster)
{
    std::vector<std::string> out;
    size_t position = start;
    while (position != std::string::npos && position < name.size())
        out.push_back(local_styleSubstring(name, position, multipleMaster));
    return out;
}

TEST(StyleWords, CapitalsStartWordsAndOtherBytesEndThem)
{
    struct Case {
        const char* name;
        size_t start;
        bool multipleMaster;
        std::vector<std::string> words;
    } cases[] = {
        {"BoldItalic", 0, false, {"Bold", "Italic"}},
        {"XLight", 0, false, {"X", "Light"}},
        {"ExtraBold2", 0, false, {"Extra", "Bold"}},
        {"MM", 0, false, {"M", "M"}},
        // From the second byte, lower-case letters before a capital are dropped.
        {"Bold", 1, false, {""}},
        {"ArialBold", 1, false, {"Bold"}},
        {"Helvetica-BoldOblique", 1, false, {"", "Bold", "Oblique"}},
        {"Arial Black Italic", 1, false, {"", "Black", "Italic"}},
        {"C059-BdIta", 1, false, {"", "Bd", "Ita"}},
        // Instance suffixes of multiple-master names keep their capitals together.
        {"MyriadMM_400_XC", 1, true, {"M", "M", "XC"}},
        {"MyriadMM_400_XC", 1, false, {"M", "M", "X", "C"}},
        {"", 0, false, {}},
    };
    for (const Case& c : cases) EXPECT_EQ(words(c.name, c.start, c.multipleMaster), c.words) << c.name;
}

TEST(StyleWords, PositionMovesToTheNextCapitalOrTheEnd)
{
    std::string name = "Ab-cdEf";
    size_t position = 0;
    EXPECT_EQ(local_styleSubstring(name, position, false), "Ab");
    EXPECT_EQ(position, 5u);
    EXPECT_EQ(local_styleSubstring(name, position, false), "Ef");
    EXPECT_EQ(position, std::string::npos);
    position = 10;
    EXPECT_EQ(local_styleSubstring(name, position, false), "");
    EXPECT_EQ(position, std::string::npos);
}

TEST(StyleWords, MultipleMasterWordsTakeOneLetterAndTheCapitalsAfterIt)
{
    std::string name = "_400_XCab";
    size_t position = 0;
    EXPECT_EQ(local_MMSubstring(name, position), "XC");
    EXPECT_EQ(local_MMSubstring(name, position), "a");
    EXPECT_EQ(local_MMSubstring(name, position), "b");
    EXPECT_EQ(position, std::string::npos);
    position = 0;
    std::string digits = "_400";
    EXPECT_EQ(local_MMSubstring(digits, position), "");
    EXPECT_EQ(position, std::string::npos);
}

}  // namespace
