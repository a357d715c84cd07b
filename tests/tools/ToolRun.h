// Runs the built typeprobe binary (or another program) and captures its
// exit status, standard output and standard error.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

extern char** environ;

namespace tooltest {

struct Run {
    int status = -1;  // exit status; -1 when the program did not exit normally
    std::string out;
    std::string err;

    nlohmann::json json() const { return nlohmann::json::parse(out); }
    std::vector<std::string> errLines() const { return lines(err); }
    std::vector<std::string> outLines() const { return lines(out); }

    static std::vector<std::string> lines(const std::string& text)
    {
        std::vector<std::string> out;
        size_t start = 0;
        for (size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
            out.push_back(text.substr(start, end - start));
        if (start < text.size()) out.push_back(text.substr(start));
        return out;
    }
};

inline std::string Slurp(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// Runs `program` with `args`, output captured through two scratch files.
inline Run RunProgram(const std::string& program, const std::vector<std::string>& args)
{
    const std::string base = std::filesystem::temp_directory_path() / "typeprobe-run-XXXXXX";
    std::string outPath = base, errPath = base;
    const int outFd = ::mkstemp(outPath.data()), errFd = ::mkstemp(errPath.data());
    Run run;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, outFd, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errFd, STDERR_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (::posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ) == 0) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        if (WIFEXITED(status)) run.status = WEXITSTATUS(status);
    }
    posix_spawn_file_actions_destroy(&actions);
    ::close(outFd);
    ::close(errFd);
    run.out = Slurp(outPath);
    run.err = Slurp(errPath);
    std::filesystem::remove(outPath);
    std::filesystem::remove(errPath);
    return run;
}

inline Run Typeprobe(const std::vector<std::string>& args)
{
    return RunProgram(TYPEPROBE_CLI, args);
}

// Fonts the setup script installs.
inline const std::string kDejaVuDir = "/usr/share/fonts/truetype/dejavu";
inline const std::string kLiberationDir = "/usr/share/fonts/truetype/liberation2";
inline const std::string kSans = kDejaVuDir + "/DejaVuSans.ttf";
inline const std::string kSansBold = kDejaVuDir + "/DejaVuSans-Bold.ttf";
inline const std::string kLiberationSans = kLiberationDir + "/LiberationSans-Regular.ttf";

inline std::string MacCorpus(const std::string& relative)
{
    return std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/" + relative;
}

inline bool SystemFontsInstalled()
{
    return std::filesystem::exists(kSans) && std::filesystem::exists(kSansBold) &&
           std::filesystem::exists(kLiberationSans);
}

}  // namespace tooltest

#define REQUIRE_SYSTEM_FONTS()                                                     \
    if (!tooltest::SystemFontsInstalled())                                         \
    GTEST_SKIP() << "DejaVu and Liberation fonts are not installed (scripts/setup.sh)"
