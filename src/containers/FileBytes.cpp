#include "containers/FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

#include "containers/ReadScope.h"
#include "support/FileDescriptor.h"

namespace {

bool regularSize(int fd, uint64_t& size)
{
    struct stat status;
    if (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) return false;
    size = uint64_t(status.st_size);
    return true;
}

std::optional<uint64_t> statRegularSize(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return uint64_t(status.st_size);
}

// Only paths known to be regular files are opened, so that probing a path
// never blocks on a pipe or touches a device.
std::optional<SharedBytes> mapKnownRegularFile(const std::string& path)
{
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    uint64_t size = 0;
    if (!file.valid() || !regularSize(file.get(), size)) return std::nullopt;
    if (auto mapped = SharedBytes::MapFile(file.get(), size)) return mapped;
    // A file system that cannot map (some network and FUSE ones): read it.
    if (size > SIZE_MAX) return std::nullopt;
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    if (!file.readAt(0, bytes)) return std::nullopt;
    return SharedBytes(std::move(bytes));
}

ReadScope::FileState* scopedFile(const std::string& path)
{
    ReadScope::Memory* memory = ReadScope::Active();
    if (!memory) return nullptr;
    auto [entry, added] = memory->files.try_emplace(path);
    if (added) entry->second.regularSize = statRegularSize(path);
    return &entry->second;
}

std::optional<SharedBytes> scopedMap(ReadScope::FileState& file, const std::string& path)
{
    if (!file.mapTried && file.regularSize) file.bytes = mapKnownRegularFile(path);
    file.mapTried = true;
    return file.bytes;
}

}  // namespace

namespace FileBytes {

std::optional<uint64_t> RegularFileSize(const std::string& path)
{
    if (ReadScope::FileState* file = scopedFile(path)) return file->regularSize;
    return statRegularSize(path);
}

std::optional<SharedBytes> Map(const std::string& path)
{
    if (ReadScope::FileState* file = scopedFile(path)) return scopedMap(*file, path);
    if (!statRegularSize(path)) return std::nullopt;
    return mapKnownRegularFile(path);
}

bool ReadRange(const std::string& path, uint64_t offset, uint64_t length,
               std::vector<uint8_t>& out)
{
    if (ReadScope::FileState* scoped = scopedFile(path)) {
        auto whole = scopedMap(*scoped, path);
        auto range = whole ? whole->slice(offset, length) : std::nullopt;
        if (!range) return false;
        out.assign(range->view().span().begin(), range->view().span().end());
        return true;
    }
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    uint64_t size = 0;
    if (!file.valid() || !regularSize(file.get(), size)) return false;
    if (offset > size || length > size - offset) return false;
    std::vector<uint8_t> bytes(static_cast<size_t>(length));
    if (!file.readAt(offset, bytes)) return false;
    out = std::move(bytes);
    return true;
}

bool ReadPrefix(const std::string& path, uint64_t length, std::vector<uint8_t>& out)
{
    auto size = RegularFileSize(path);
    if (!size) return false;
    return ReadRange(path, 0, std::min(*size, length), out);
}

bool ReadAll(const std::string& path, std::vector<uint8_t>& out)
{
    auto size = RegularFileSize(path);
    return size && ReadRange(path, 0, *size, out);
}

bool Rewrite(const std::string& path, ByteView bytes)
{
    ReadScope::Forget();
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    uint64_t size = 0;
    return file.valid() && regularSize(file.get(), size) && ::ftruncate(file.get(), 0) == 0 &&
           file.write(bytes);
}

}  // namespace FileBytes
