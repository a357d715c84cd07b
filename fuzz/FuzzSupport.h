// Shared by the fuzz targets: a scratch folder for targets that read files,
// whole-file writes, and the checks that turn a broken invariant into a
// crash the fuzzer reports.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/Refusal.h"

namespace fuzzsupport {

// Every target listens for the readers' refusals while it runs one input,
// so that their reasons are put together under the sanitizers too, and a
// finding names the rules the input broke on its way.
class HeardRefusals {
public:
    HeardRefusals() { current() = &log_; }
    ~HeardRefusals() { current() = nullptr; }
    static RefusalLog*& current()
    {
        static thread_local RefusalLog* log = nullptr;
        return log;
    }

private:
    RefusalLog log_;
};

inline void ReportRefusals()
{
    if (RefusalLog* log = HeardRefusals::current(); log && !log->reasons().empty())
        std::fprintf(stderr, "refusals heard: %s\n", log->text().c_str());
}

}  // namespace fuzzsupport

// Aborts (a finding) when an invariant of the code under test breaks.
#define FUZZ_CHECK(condition)                                                        \
    do {                                                                             \
        if (!(condition)) {                                                          \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__,    \
                         #condition);                                                \
            fuzzsupport::ReportRefusals();                                           \
            std::abort();                                                            \
        }                                                                            \
    } while (0)

namespace fuzzsupport {

// A folder of this process's own, removed when the process ends.
inline const std::string& ScratchFolder()
{
    // Never destroyed, so that the exit handler below can still read it.
    static const std::string* folder = [] {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base && *base ? base : "/tmp") + "/typeprobe-fuzz-XXXXXX";
        if (!mkdtemp(pattern.data())) std::abort();
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all(ScratchFolder(), ignored);
        });
        return new std::string(pattern);
    }();
    return *folder;
}

// A fresh, empty folder inside the scratch folder, the same one each call.
inline std::string EmptyFolder(const std::string& name)
{
    const std::string path = ScratchFolder() + "/" + name;
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
    std::filesystem::create_directories(path, ignored);
    return path;
}

inline void WriteFile(const std::string& path, const uint8_t* data, size_t size)
{
    int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0) std::abort();
    while (size > 0) {
        ssize_t written = ::write(fd, data, size);
        if (written <= 0) std::abort();
        data += written;
        size -= size_t(written);
    }
    ::close(fd);
}

// True when the text is well-formed UTF-8 (no overlong forms, surrogates or
// values past U+10FFFF): what every name leaving the library must be.
inline bool IsUTF8(std::string_view text)
{
    size_t i = 0;
    while (i < text.size()) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        size_t extra = 0;
        uint32_t value = 0;
        if (c < 0x80) {
            ++i;
            continue;
        } else if (c >= 0xC2 && c <= 0xDF) {
            extra = 1, value = c & 0x1F;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2, value = c & 0x0F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3, value = c & 0x07;
        } else {
            return false;
        }
        if (text.size() - i <= extra) return false;
        for (size_t k = 1; k <= extra; ++k) {
            const unsigned char next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) return false;
            value = (value << 6) | (next & 0x3F);
        }
        if ((extra == 2 && (value < 0x800 || (value >= 0xD800 && value <= 0xDFFF))) ||
            (extra == 3 && (value < 0x10000 || value > 0x10FFFF)))
            return false;
        i += extra + 1;
    }
    return true;
}

}  // namespace fuzzsupport
