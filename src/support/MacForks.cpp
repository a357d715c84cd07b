#include "support/MacForks.h"

#include <sys/stat.h>

#include <cstdio>
#include <memory>

namespace {

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};

bool readWholeFile(const std::string& path, std::vector<uint8_t>& out)
{
    std::unique_ptr<FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) return false;
    struct stat info;
    if (fstat(fileno(file.get()), &info) != 0 || !S_ISREG(info.st_mode)) return false;
    out.resize(size_t(info.st_size));
    return out.empty() || std::fread(out.data(), 1, out.size(), file.get()) == out.size();
}

}  // namespace

namespace MacForks {

MacForkInfo Describe(const std::string& path)
{
    MacForkInfo info;
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return info;
    info.exists = true;
    if (S_ISREG(status.st_mode)) info.dataForkLength = uint64_t(status.st_size);
    return info;
}

bool ReadDataFork(const std::string& path, std::vector<uint8_t>& out)
{
    return readWholeFile(path, out);
}

bool ReadResourceFork(const std::string&, std::vector<uint8_t>& out)
{
    out.clear();
    return false;
}

}  // namespace MacForks
