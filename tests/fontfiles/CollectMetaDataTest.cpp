// The collector on whole files: what it says when no reader takes a file.
#include "fontfiles/CollectMetaData.h"

#include <gtest/gtest.h>

#include "common/FileIO.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "support/Refusal.h"

namespace {

// A PFB segment header giving `length`, then the text.
std::string PFB(uint32_t length, const std::string& text)
{
    return std::string("\x80\x01", 2) + char(length >> 24) + char(length >> 16) + char(length >> 8) + char(length) + text;
}

TEST(CollectMetaData, SaysWhyNoReaderTookTheFile)
{
    const auto real = testfiles::readFile("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    ASSERT_GT(real.size(), 5000u);
    const std::string dejaVu(real.begin(), real.end()), text = "%!PS-AdobeFont-1.0: Foo 001.000\n" + std::string(200, ' ');
    const auto ttc = testfonts::collection({{{"name", "n"}}});
    const std::string notice = "(c) Copyright URW /FontName /Headed def" + std::string(100, ' ');
    const struct { const char* name; std::string bytes; const char* reason; } cases[] = {  // reason null: read
        {"DejaVuSans.ttf", dejaVu, nullptr},
        {"Cut.ttf", dejaVu.substr(0, 5000), "sfnt: table 'name' (offset 680660, length 15624) runs past the end of the font (5000 bytes)"},
        {"notes.ttf", "Hello, world\n", "no font signature: the file starts with \"Hello, w\"; not an sfnt, a collection, PostScript Type 1"},
        {"notes", "\x1F\x8B\"\\abcde", "no font signature: the file starts with \"\\x1F\\x8B\\x22\\x5Cabcd\";"},
        {"empty.otf", "", "no font signature: the file is empty"},
        {"DejaVuSans", dejaVu, "kind: an sfnt other than \"OTTO\" is read only from a file named .ttf, .otf or .dfont"},
        {"font.fon", "MZ" + std::string(200, '\0'), "kind: no reader takes a file named \".fon\" on its own"},
        {"Collection", std::string(ttc.begin(), ttc.end()), "collection: the file is one, but only a file named .ttc"},
        {"Text", text, "Type 1 header: the segment length at byte 2 reads 1347628353, not the file's length 232 (a \"%!\" text"},
        {"Short", PFB(56, std::string(50, ' ')), "Type 1 header: the file has 56 bytes, fewer than the 117 its check reads"},
        {"NoNotice", PFB(200, std::string(194, ' ')), "Type 1 header: no \"copyright\" in the 60 bytes after the segment header"},
        {"Headed", PFB(uint32_t(notice.size() + 6), notice), nullptr},
    };
    TempFolder dir;
    for (const auto& c : cases) {
        testfiles::writeFile(dir / c.name, c.bytes);
        RefusalLog log;
        LxString printer, kind, platform, postScriptName;
        const int result = CollectMetaData(nullptr, LxString(dir / c.name), nullptr, 0, &printer, &kind, &platform, nullptr,
                                           nullptr, nullptr, &postScriptName, nullptr, nullptr, nullptr, ReadOptions{});
        EXPECT_EQ(result == 0, !c.reason) << c.name << ": " << result;
        EXPECT_TRUE(c.reason ? log.text().find(c.reason) == 0 : log.text().empty()) << c.name << ": " << log.text();
    }
}

}  // namespace
