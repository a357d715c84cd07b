// classify, styles, version, help and the manual page.
#include <gtest/gtest.h>

#include <array>

#include "ToolRun.h"
#include "typeprobe/typeprobe.h"

namespace {

using tooltest::Typeprobe;

const std::vector<std::string> kCommands = {"identify", "split",    "match", "duplicates",
                                            "classify", "styles",   "version", "help"};

std::string LibraryClassification(const char* family, const char* alternate)
{
    char buffer[256] = "";
    TP_GetClassificationFromFamily(family, alternate, buffer, sizeof buffer);
    return buffer;
}

TEST(Classify, PrintsTheLibrarysAnswer)
{
    for (const char* family : {"Helvetica", "Times", "DejaVu Sans", "No Such Family"}) {
        const auto run = Typeprobe({"classify", family});
        EXPECT_EQ(run.status, 0) << family;
        EXPECT_EQ(run.out, LibraryClassification(family, nullptr) + "\n") << family;
    }
    const auto run = Typeprobe({"classify", "-f", "json", "No Such Family", "Times"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.json(), nlohmann::json({{"family", "No Such Family"},
                                          {"alternate", "Times"},
                                          {"classification",
                                           LibraryClassification("No Such Family", "Times")}}));
    EXPECT_NE(run.json()["classification"], "--");
}

TEST(Styles, OneStylePerLineAsTheLibraryFindsThem)
{
    const auto run = Typeprobe({"styles", "-f", "json", "Helvetica-CondensedBlackItalic"});
    ASSERT_EQ(run.status, 0) << run.err;
    std::vector<char*> buffers;
    std::vector<std::array<char, 128>> storage(16);
    for (auto& entry : storage) buffers.push_back(entry.data());
    unsigned long count = 0;
    ASSERT_EQ(TP_GetStyles("Helvetica-CondensedBlackItalic", "", 16, 128, &count, buffers.data()), 0u);
    const std::vector<std::string> expected(buffers.begin(), buffers.begin() + long(count));
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(run.json(), nlohmann::json(expected));

    const auto plain = Typeprobe({"styles", "Helvetica-CondensedBlackItalic"});
    std::string lines;
    for (const std::string& style : expected) lines += style + "\n";
    EXPECT_EQ(plain.out, lines);
    EXPECT_EQ(Typeprobe({"styles", "Plain"}).out, "");
}

TEST(Version, NamesTheToolAndTheLibrary)
{
    unsigned long major = 0, minor = 0;
    TP_GetTypeprobeVersion(&major, &minor);
    const auto run = Typeprobe({"version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "typeprobe 1.2.0 (library " + std::to_string(major) + "." +
                           std::to_string(minor) + ")\n");
    EXPECT_EQ(Typeprobe({"--version"}).out, "typeprobe 1.2.0\n");
}

TEST(Help, EveryCommandHasHelpAndAManualEntry)
{
    const auto main = Typeprobe({"--help"});
    EXPECT_EQ(main.status, 0);
    const auto man = Typeprobe({"help", "--man"});
    ASSERT_EQ(man.status, 0);
    EXPECT_EQ(man.out.rfind(".TH TYPEPROBE 1 ", 0), 0u);
    for (const std::string& command : kCommands) {
        EXPECT_NE(main.out.find("  " + command + " "), std::string::npos) << command;
        const auto help = Typeprobe({command, "--help"});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_NE(help.out.find("Usage: typeprobe " + command), std::string::npos) << command;
        EXPECT_EQ(Typeprobe({"help", command}).out, help.out) << command;
        EXPECT_NE(man.out.find(".SS \"" + command + "\""), std::string::npos) << command;
    }
    for (const char* section : {".SH NAME", ".SH SYNOPSIS", ".SH COMMANDS", ".SH \"EXIT STATUS\"",
                                ".SH \"MAC FILES\""})
        EXPECT_NE(man.out.find(section), std::string::npos) << section;
    // The page the build installs is the one the tool prints.
    EXPECT_EQ(tooltest::Slurp(TYPEPROBE_MAN_PAGE), man.out);
}

}  // namespace
