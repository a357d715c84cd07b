// Runs the built typeprobe binary (or another program) and captures its
// exit status, standard output and standard error.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

extern char** environ;

namespace tooltest {

using Strings = std::vector<std::string>;

inline Strings Lines(const std::string& text)
{
    Strings lines;
    size_t start = 0;
    for (size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(text.substr(start, end - start));
    if (start < text.size()) lines.push_back(text.substr(start));
    return lines;
}

struct Outcome {
    int status = -1;  // -1 when the program did not exit normally
    std::string out, err;
    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

inline std::string Slurp(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// Output goes through two scratch files, so a large output cannot block.
inline Outcome RunProgram(const std::string& program, const Strings& args, const std::string& cwd = "")
{
    const std::string base = std::filesystem::temp_directory_path() / "typeprobe-run-XXXXXX";
    std::string outPath = base, errPath = base;
    const int outFd = ::mkstemp(outPath.data()), errFd = ::mkstemp(errPath.data());
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, outFd, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errFd, STDERR_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (!cwd.empty()) posix_spawn_file_actions_addchdir_np(&actions, cwd.c_str());
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    Outcome run;
    pid_t pid = 0;
    if (::posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ) == 0) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        if (WIFEXITED(status)) run.status = WEXITSTATUS(status);
    }
    posix_spawn_file_actions_destroy(&actions);
    const auto collect = [](int fd, const std::string& path) {
        ::close(fd);
        std::string text = Slurp(path);
        std::filesystem::remove(path);
        return text;
    };
    run.out = collect(outFd, outPath);
    run.err = collect(errFd, errPath);
    return run;
}

inline Outcome Typeprobe(const Strings& args, const std::string& cwd = "")
{
    return RunProgram(TYPEPROBE_CLI, args, cwd);
}

// Fonts that scripts/setup.sh installs (fonts-dejavu-core, fonts-liberation2).
inline const std::string kDejaVuDir = "/usr/share/fonts/truetype/dejavu";
inline const std::string kLiberationDir = "/usr/share/fonts/truetype/liberation2";
inline const std::string kSans = kDejaVuDir + "/DejaVuSans.ttf";
inline const std::string kSansBold = kDejaVuDir + "/DejaVuSans-Bold.ttf";

inline std::string MacCorpus(const std::string& relative)
{
    return std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/" + relative;
}

// Every "@" in `texts` replaced by `folder`, so that tables can name files
// in a scratch folder.
inline Strings At(Strings texts, const std::string& folder)
{
    for (std::string& text : texts)
        for (size_t at = 0; (at = text.find('@', at)) != std::string::npos; at += folder.size())
            text.replace(at, 1, folder);
    return texts;
}
inline std::string At(const std::string& text, const std::string& folder) { return At(Strings{text}, folder)[0]; }

}  // namespace tooltest
