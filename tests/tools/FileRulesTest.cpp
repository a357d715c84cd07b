// Which files are reported: a sidecar is never a font of its own, a logical
// Mac file and its MacBinary copy are one file, and every file is reported
// once however it is reached.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/MacFixtures.h"
#include "common/TempFolder.h"

namespace {

using namespace tooltest;
namespace fs = std::filesystem;

TEST(FileRules, WhichFilesAreReported)
{
    TempFolder dir;
    // The corpus suitcase as it lands on a FAT disk: an empty data fork and
    // its resource fork in "._Sans", and netatalk's and unzip's copies.
    const auto parts = macfixtures::PartsOfMacBinary(macfixtures::ReadFile(MacCorpus("tt-family/DejaVuSans.suit")));
    macfixtures::WriteFile(dir / "mac/Sans", parts.data);
    macfixtures::WriteFile(dir / "mac/._Sans", macfixtures::MacOSXDotUnderscore(parts));
    macfixtures::WriteFile(dir / "mac/.AppleDouble/Sans", macfixtures::PlainAppleDouble(parts));
    macfixtures::WriteFile(dir / "mac/__MACOSX/._Sans", macfixtures::MacOSXDotUnderscore(parts));
    const std::string serif = Slurp(MacCorpus("ps-family/DejaVuSerif.bin")), sans = Slurp(MacCorpus("dfont/DejaVuSans.dfont"));
    // A sidecar is skipped even when its bytes would read as a font.
    dir.file("mac/._Stray.dfont", sans);
    dir.file("bin/DejaVuSerif.bin", serif);
    dir.file("both/DejaVuSerif.bin", serif);
    dir.file("both/DejaVuSerif", sans);
    dir.file("fonts/Sans.dfont", sans);
    fs::create_symlink(dir / "fonts/Sans.dfont", dir / "link.dfont");
    fs::create_directory_symlink(dir / "fonts", dir / "fonts/loop");
    // Type 1 known by its bytes; its metrics file is neither a font nor an error.
    dir.folder("type1");
    for (const char* name : {"NimbusSans-Regular.t1", "NimbusSans-Regular.afm"})
        fs::create_symlink(std::string("/usr/share/fonts/type1/urw-base35/") + name, dir / ("type1/" + std::string(name)));

    const struct {
        Strings args;
        Strings reported;  // the files' paths, in order
        size_t faces;      // in all
    } cases[] = {
        {{"@/mac"}, {"@/mac/Sans"}, 4},  // read through its sidecar
        {{"@/mac/._Sans", "@/mac/Sans", "@/mac/__MACOSX/._Sans", "@/mac/.AppleDouble/Sans"}, {"@/mac/Sans"}, 4},
        {{"@/bin/DejaVuSerif", "@/bin/DejaVuSerif.bin", "@/bin"}, {"@/bin/DejaVuSerif"}, 4},
        {{"@/bin"}, {"@/bin/DejaVuSerif.bin"}, 4},
        {{"@/both/DejaVuSerif", "@/both/DejaVuSerif.bin"}, {"@/both/DejaVuSerif", "@/both/DejaVuSerif.bin"}, 5},
        {{"@/both"}, {"@/both/DejaVuSerif", "@/both/DejaVuSerif.bin"}, 5},
        {{"@/fonts", "@/fonts/Sans.dfont", "@/fonts/../fonts", "@/link.dfont"}, {"@/fonts/Sans.dfont"}, 1},
        {{"@/type1"}, {"@/type1/NimbusSans-Regular.t1"}, 1},
        {{"--classic", "@/type1"}, {}, 0},
    };
    for (const auto& c : cases) {
        Strings args{"identify", "-f", "json"};
        for (const std::string& arg : At(c.args, dir.path())) args.push_back(arg);
        const Outcome run = Typeprobe(args);
        ASSERT_EQ(run.status, 0) << testing::PrintToString(c.args) << run.err;
        Strings reported;
        size_t faces = 0;
        const auto json = run.json();
        for (const auto& file : json["files"]) {
            reported.push_back(file["path"]);
            faces += file["faces"].size();
        }
        EXPECT_EQ(reported, At(c.reported, dir.path())) << testing::PrintToString(c.args);
        EXPECT_EQ(faces, c.faces) << testing::PrintToString(c.args);
    }

    const Outcome stray = Typeprobe({"identify", dir / "mac/._Stray.dfont"});
    EXPECT_EQ(stray.status, 1);
    EXPECT_EQ(Lines(stray.err).at(0),
              "typeprobe: " + (dir / "mac/._Stray.dfont") + ": a Mac sidecar without its file, not a font of its own");
}

}  // namespace
