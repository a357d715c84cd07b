#include "support/ResourceDirectory.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cstdlib>

namespace {

bool isDirectory(const std::string& path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

#ifndef TYPEPROBE_LIB_TO_DATA
#define TYPEPROBE_LIB_TO_DATA "../share/typeprobe"
#endif

std::string parentOf(const std::string& path)
{
    size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The file this code was loaded from: the shared library, or the program
// that linked the library statically.
std::string loadedFilePath()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&ResourceDirectory::Path), &info) || !info.dli_fname)
        return {};
    char* resolved = realpath(info.dli_fname, nullptr);
    if (!resolved) return info.dli_fname;
    std::string path = resolved;
    std::free(resolved);
    return path;
}

}  // namespace

namespace ResourceDirectory {

std::string Path()
{
    const char* configured = std::getenv("TYPEPROBE_RESOURCE_DIR");
    if (configured && *configured) {
        std::string path = configured;
        while (path.size() > 1 && path.back() == '/') path.pop_back();
        return path;
    }
    std::string loaded = loadedFilePath();
    if (loaded.empty()) return {};
    // The installed layout first, then the build tree's (bin/ or lib/ beside
    // share/typeprobe).
    const std::string folder = parentOf(loaded);
    for (const char* relative : {TYPEPROBE_LIB_TO_DATA, "../share/typeprobe"}) {
        std::string candidate = folder + "/" + relative;
        char* resolved = realpath(candidate.c_str(), nullptr);
        if (!resolved) continue;
        candidate = resolved;
        std::free(resolved);
        if (isDirectory(candidate)) return candidate;
    }
    return {};
}

std::string FilePath(const std::string& name)
{
    std::string folder = Path();
    return folder.empty() ? std::string() : folder + "/" + name;
}

}  // namespace ResourceDirectory
