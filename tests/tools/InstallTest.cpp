// cmake --install puts the tool, its manual page and the library in a prefix
// where the tool runs as it is.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/TempFolder.h"

namespace {

TEST(Install, TheInstalledToolRunsFromItsPrefix)
{
    TempFolder prefix;
    const auto install =
        tooltest::RunProgram("/usr/bin/env", {"cmake", "--install", TYPEPROBE_BUILD_DIR, "--prefix", prefix.path()});
    ASSERT_EQ(install.status, 0) << install.out << install.err;
    EXPECT_TRUE(std::filesystem::exists(prefix / "share/man/man1/typeprobe.1"));
    const auto identify = tooltest::RunProgram(
        prefix / "bin/typeprobe", {"identify", "-f", "jsonl", tooltest::MacCorpus("dfont/DejaVuSans.dfont")});
    EXPECT_EQ(identify.status, 0) << identify.err;
    EXPECT_EQ(identify.json()["postScriptName"], "DejaVuSans");
}

}  // namespace
