// Mac files on other disks: sidecars are never fonts of their own, and a
// logical Mac file is reported once.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/TempFolder.h"
#include "common/MacFixtures.h"

namespace {

using tooltest::Typeprobe;
namespace fs = std::filesystem;

// The suitcase of the corpus as it lands on a FAT disk: an empty data fork
// "Sans" and its resource fork in "._Sans".
struct SidecarSuitcase {
    TempFolder dir;
    std::string file = dir / "Sans";
    std::string sidecar = dir / "._Sans";

    SidecarSuitcase()
    {
        const auto parts = macfixtures::PartsOfMacBinary(
            macfixtures::ReadFile(tooltest::MacCorpus("tt-family/DejaVuSans.suit")));
        macfixtures::WriteFile(file, parts.data);
        macfixtures::WriteFile(sidecar, macfixtures::MacOSXDotUnderscore(parts));
        // netatalk's and unzip's copies of the same sidecar.
        macfixtures::WriteFile(dir / ".AppleDouble/Sans", macfixtures::PlainAppleDouble(parts));
        macfixtures::WriteFile(dir / "__MACOSX/._Sans", macfixtures::MacOSXDotUnderscore(parts));
        // A sidecar is skipped even when its bytes would read as a font.
        fs::copy_file(tooltest::MacCorpus("dfont/DejaVuSans.dfont"), dir / "._Stray.dfont");
    }
};

std::vector<std::string> ReportedPaths(const tooltest::Run& run)
{
    std::vector<std::string> paths;
    const auto json = run.json();
    for (const auto& file : json["files"]) paths.push_back(file["path"]);
    return paths;
}

TEST(MacContainers, AWalkReportsTheFileAndNoneOfItsSidecars)
{
    SidecarSuitcase mac;
    const auto run = Typeprobe({"identify", "-f", "json", mac.dir.path()});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(ReportedPaths(run), std::vector<std::string>{mac.file});
    const auto json = run.json();
    EXPECT_EQ(json["files"][0]["faces"].size(), 4u);  // read through the sidecar
    EXPECT_EQ(json["summary"]["files"], 1);
}

TEST(MacContainers, ASidecarNamedDirectlyStandsForItsFile)
{
    SidecarSuitcase mac;
    const auto run = Typeprobe({"identify", "-f", "json", mac.sidecar, mac.file,
                                mac.dir / "__MACOSX/._Sans", mac.dir / ".AppleDouble/Sans"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(ReportedPaths(run), std::vector<std::string>{mac.file});
}

TEST(MacContainers, ASidecarWithoutItsFileIsAnError)
{
    SidecarSuitcase mac;
    const auto run = Typeprobe({"identify", mac.dir / "._Stray.dfont"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errLines().at(0), "typeprobe: " + (mac.dir / "._Stray.dfont") +
                                        ": a Mac sidecar without its file, not a font of its own");
}

TEST(MacContainers, ALogicalFileAndItsMacBinaryCopyAreOneFile)
{
    TempFolder dir;
    fs::copy_file(tooltest::MacCorpus("ps-family/DejaVuSerif.bin"), dir / "DejaVuSerif.bin");
    const auto run = Typeprobe(
        {"identify", "-f", "json", dir / "DejaVuSerif", dir / "DejaVuSerif.bin", dir.path()});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(ReportedPaths(run), std::vector<std::string>{dir / "DejaVuSerif"});
    EXPECT_EQ(run.json()["files"][0]["faces"][0]["platform"], "mac");

    const auto walked = Typeprobe({"identify", "-f", "json", dir.path()});
    EXPECT_EQ(ReportedPaths(walked), std::vector<std::string>{dir / "DejaVuSerif.bin"});
}

TEST(MacContainers, EveryFileIsReportedOnceHoweverItIsReached)
{
    TempFolder dir;
    dir.folder("fonts");
    fs::copy_file(tooltest::MacCorpus("dfont/DejaVuSans.dfont"), dir / "fonts/Sans.dfont");
    fs::create_symlink(dir / "fonts/Sans.dfont", dir / "link.dfont");
    fs::create_directory_symlink(dir / "fonts", dir / "fonts/loop");
    const auto run = Typeprobe({"identify", "-f", "json", dir / "fonts", dir / "fonts/Sans.dfont",
                                dir / "fonts/../fonts", dir / "link.dfont"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(ReportedPaths(run), std::vector<std::string>{dir / "fonts/Sans.dfont"});
}

}  // namespace
