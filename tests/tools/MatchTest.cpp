// match: the attributes two faces share and those that differ.
#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#include "ToolRun.h"

namespace {

using tooltest::Typeprobe;
using Names = std::vector<std::string>;

Names Words(const std::string& line)
{
    std::istringstream in(line);
    return Names(std::istream_iterator<std::string>(in), {});
}

TEST(Match, TwoWeightsOfOneFamily)
{
    REQUIRE_SYSTEM_FONTS();
    const auto run = Typeprobe({"match", "-f", "json", tooltest::kSans, tooltest::kSansBold});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    EXPECT_EQ(json["a"]["path"], tooltest::kSans);
    EXPECT_EQ(json["b"]["face"]["postScriptName"], "DejaVuSans-Bold");
    // Two empty printer fonts match, two zero kerning checksums do not; the
    // foundry is compared as read from the fonts.
    Names matching = json["matching"];
    std::erase(matching, "foundry");
    EXPECT_EQ(matching, (Names{"kind", "family", "version", "printer-font"}));
    EXPECT_EQ(json["differing"], (Names{"postscript-name", "outline-size"}));
    EXPECT_EQ(json["sameChecksum"], false);
}

TEST(Match, AFaceWithItselfIsTheSameRelease)
{
    const std::string suitcase = tooltest::MacCorpus("tt-family/DejaVuSans.suit");
    const auto run = Typeprobe({"match", "--face-a", "1", "--face-b", "1", suitcase, suitcase});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = run.outLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), "Same identity checksum: the same release of the same face.");
    EXPECT_EQ(Words(lines.at(0)), (Names{"ATTRIBUTE", "A", "B", "RESULT"}));
    EXPECT_EQ(Words(lines.at(1)), (Names{"postscript-name", "DejaVuSans-Bold", "DejaVuSans-Bold", "same"}));
    EXPECT_EQ(Words(lines.at(4)), (Names{"full-name", "DejaVu", "Sans", "Bold", "DejaVu", "Sans",
                                         "Bold", "not", "compared"}));
    // Columns line up under their headings.
    EXPECT_EQ(lines.at(1).find("DejaVuSans-Bold"), lines.at(0).find(" A ") + 1);
}

TEST(Match, AFaceNumberPastTheEndIsAnError)
{
    const std::string dfont = tooltest::MacCorpus("dfont/DejaVuSans.dfont");
    const auto run = Typeprobe({"match", "--face-b", "3", dfont, dfont});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errLines(), Names{"typeprobe: " + dfont + ": no face 3 (the file has 1)"});
    EXPECT_EQ(run.out, "");
}

TEST(Match, BothFilesAreCheckedBeforeAnythingIsCompared)
{
    const auto run = Typeprobe({"match", "/nonexistent/a.ttf", tooltest::MacCorpus("README.md")});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errLines(),
              (Names{"typeprobe: /nonexistent/a.ttf: No such file or directory",
                     "typeprobe: " + tooltest::MacCorpus("README.md") + ": not a font"}));
}

}  // namespace
