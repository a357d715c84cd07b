#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "api/FontArray.h"

namespace {

struct FaceData {
    const char* postScriptName;
    int32_t firstResourceID;
    int32_t fondStyle;
    const char* tag;  // tells the faces apart after RemoveDups
};

TP_FontArray Make(const std::vector<FaceData>& data)
{
    TP_FontArray array;
    for (const FaceData& d : data) {
        TP_FontSpecifier f;
        f.postScriptName = d.postScriptName;
        f.firstResourceID = d.firstResourceID;
        f.fondStyle = d.fondStyle;
        f.familyName = d.tag;
        array.Append(f);
    }
    return array;
}

std::vector<std::string> Tags(const TP_FontArray& array)
{
    std::vector<std::string> tags;
    for (const TP_FontSpecifier& f : array.faces()) tags.push_back(f.familyName.str());
    return tags;
}

TEST(FontArray, AtCopiesAndThrowsPastTheEnd)
{
    TP_FontArray array = Make({{"A", 0, 0, "a"}});
    TP_FontSpecifier copy = array.at(0);
    copy.familyName = "changed";
    EXPECT_EQ(array.at(0).familyName.str(), "a");
    EXPECT_THROW(array.at(1), std::out_of_range);
}

TEST(FontArray, RemoveDups)
{
    struct Case {
        const char* what;
        std::vector<FaceData> faces;
        std::vector<std::string> expected;
    } cases[] = {
        {"later face with a resource and smaller style takes the first's place",
         {{"A", 0, 3, "a1"}, {"B", 0, 0, "b"}, {"A", 5, 1, "a2"}},
         {"a2", "b"}},
        {"smaller style without a resource of its own does not replace",
         {{"A", 0, 3, "a1"}, {"A", 0, 1, "a2"}},
         {"a1"}},
        {"equal style does not replace",
         {{"A", 1, 3, "a1"}, {"A", 4, 3, "a2"}},
         {"a1"}},
        {"the best so far is the one to beat",
         {{"A", 0, 5, "a1"}, {"A", 1, 2, "a2"}, {"A", 1, 4, "a3"}},
         {"a2"}},
        {"empty names collapse to one face",
         {{"", 0, 0, "e1"}, {"", 0, 0, "e2"}, {"", 0, 0, "e3"}},
         {"e1"}},
        {"case forms keep their own entries and borrow across",
         {{"Abc", 0, 3, "upper"}, {"abc", 5, 2, "lower"}},
         {"lower", "lower"}},
        {"each case form keeps its own entry",
         {{"abc", 5, 2, "lower"}, {"Abc", 0, 3, "upper"}},
         {"lower", "upper"}},
        {"nothing to remove", {}, {}},
    };
    for (const Case& c : cases) {
        TP_FontArray array = Make(c.faces);
        array.RemoveDups();
        EXPECT_EQ(Tags(array), c.expected) << c.what;
    }
}

TEST(FontArray, FindIndexForFondResourceID)
{
    TP_FontArray array;
    TP_FontSpecifier f;
    f.fondResourceID = 128;
    f.fondStyle = 1;
    array.Append(f);
    f.fondResourceID = -2;  // matches a negative short, sign-extended
    f.fondStyle = -1;
    array.Append(f);
    f.fondResourceID = 65534;  // the same low 16 bits must not match
    f.fondStyle = 0;
    array.Append(f);
    f.fondResourceID = 128;  // a second face of the first family and style
    f.fondStyle = 1;
    array.Append(f);

    unsigned int index = 99;
    EXPECT_TRUE(array.FindIndexForFondResourceID(128, 1, index));
    EXPECT_EQ(index, 0u);
    EXPECT_TRUE(array.FindIndexForFondResourceID(-2, -1, index));
    EXPECT_EQ(index, 1u);
    index = 99;
    EXPECT_FALSE(array.FindIndexForFondResourceID(-2, 0, index));
    EXPECT_FALSE(array.FindIndexForFondResourceID(128, 2, index));
    EXPECT_EQ(index, 99u);
}

}  // namespace
