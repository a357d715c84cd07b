// Standalone faces split out of a real collection must be fonts that other
// tools open, carrying the collection's tables byte for byte.
#include <gtest/gtest.h>

#include "common/DebianFonts.h"
#include "common/Oracle.h"
#include "common/TempFolder.h"
#include "fontfiles/TrueTypeCollectionFont.h"

namespace {

TEST(SeparateTTCFonts, FacesOpenInFontToolsAndFreeTypeWithIdenticalTables)
{
    const auto collections = debianfonts::files({".ttc"});
    if (collections.empty()) GTEST_SKIP() << "no collections installed";
    const std::string& path = collections.front();
    TempFolder dir;
    std::vector<std::string> written;
    ASSERT_EQ(TrueTypeCollectionFont::SeparateTTCFonts(path, dir.path() + "/", written), 0);
    ASSERT_GT(written.size(), 1u);

    std::string files;
    for (const auto& file : written) files += " " + file;
    // For each face: "same" when every table of the split file equals the
    // collection's, then the face's PostScript name.
    auto verdicts = oracle::python(
        "import sys\nfrom fontTools.ttLib import TTCollection, TTFont\n"
        "faces = TTCollection(sys.argv[1], lazy=True).fonts\n"
        "for i, p in enumerate(sys.argv[2:]):\n"
        " a, b = faces[i].reader, TTFont(p, lazy=True).reader\n"
        " same = sorted(a.keys()) == sorted(b.keys()) and all(a[t] == b[t] for t in a.keys())\n"
        " print((\"same\" if same else \"differ\") + \" \" + faces[i][\"name\"].getDebugName(6))",
        path + files);
    ASSERT_EQ(verdicts.size(), written.size()) << "fontTools did not run";
    for (size_t i = 0; i < written.size(); ++i) {
        EXPECT_EQ(verdicts[i].substr(0, 5), "same ") << written[i];
        // FreeType, through fontconfig, opens the file and finds the face.
        auto scanned = oracle::lines("fc-scan --format '%{postscriptname}\\n' '" + written[i] + "'");
        ASSERT_EQ(scanned.size(), 1u) << written[i];
        EXPECT_EQ(scanned[0], verdicts[i].substr(5)) << written[i];
    }
}

}  // namespace
