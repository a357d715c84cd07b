// cmake --install puts the tool, its manual page and the library in a prefix
// where the tool runs as it is.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/TempFolder.h"

namespace {

namespace fs = std::filesystem;

TEST(Install, TheInstalledToolRunsFromItsPrefix)
{
    TempFolder prefix;
    const auto install = tooltest::RunProgram(
        "/usr/bin/env", {"cmake", "--install", TYPEPROBE_BUILD_DIR, "--prefix", prefix.path()});
    ASSERT_EQ(install.status, 0) << install.out << install.err;
    const std::string tool = prefix / "bin/typeprobe";
    ASSERT_TRUE(fs::exists(tool));
    EXPECT_TRUE(fs::exists(prefix / "share/man/man1/typeprobe.1"));

    const auto version = tooltest::RunProgram(tool, {"version"});
    EXPECT_EQ(version.status, 0) << version.err;
    EXPECT_EQ(version.out.rfind("typeprobe 1.2.0 (library ", 0), 0u) << version.out;
    const auto identify = tooltest::RunProgram(
        tool, {"identify", "-f", "jsonl", tooltest::MacCorpus("dfont/DejaVuSans.dfont")});
    EXPECT_EQ(identify.status, 0) << identify.err;
    EXPECT_EQ(nlohmann::json::parse(identify.out)["postScriptName"], "DejaVuSans");
}

}  // namespace
