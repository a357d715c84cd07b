#include "files/FileCopy.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

#include "support/FileDescriptor.h"
#include "support/MacErrors.h"

namespace {

short lastError()
{
    return MacError::FromErrno(errno);
}

short copyData(int from, const FileDescriptor& to)
{
    std::vector<char> buffer(1 << 16);
    for (;;) {
        ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return lastError();
        if (got == 0) return 0;
        if (!to.write(ByteView(buffer.data(), size_t(got)))) return lastError();
    }
}

// Reads a list or value whose size the call reports; false on failure.
template <typename Call>
bool readSized(Call call, std::vector<char>& out)
{
    for (int attempt = 0; attempt < 4; ++attempt) {
        ssize_t size = call(nullptr, 0);
        if (size < 0) return false;
        out.resize(size_t(size));
        if (size == 0) return true;
        ssize_t got = call(out.data(), out.size());
        if (got >= 0) {
            out.resize(size_t(got));
            return true;
        }
        if (errno != ERANGE) return false;
    }
    return false;
}

short copyAttributes(int from, int to)
{
    std::vector<char> names;
    if (!readSized([&](char* b, size_t n) { return flistxattr(from, b, n); }, names))
        return (errno == ENOTSUP) ? 0 : lastError();
    for (size_t at = 0; at < names.size(); at += std::strlen(names.data() + at) + 1) {
        const char* name = names.data() + at;
        if (std::strncmp(name, "user.", 5) != 0) continue;
        std::vector<char> value;
        if (!readSized([&](char* b, size_t n) { return fgetxattr(from, name, b, n); }, value))
            return lastError();
        if (fsetxattr(to, name, value.data(), value.size(), 0) != 0) return lastError();
    }
    return 0;
}

short copyOpenFile(int from, const FileDescriptor& to, const struct stat& status)
{
    if (short error = copyData(from, to)) return error;
    if (short error = copyAttributes(from, to.get())) return error;
    const struct timespec times[2] = {status.st_atim, status.st_mtim};
    if (futimens(to.get(), times) != 0) return lastError();
    if (fchmod(to.get(), status.st_mode & 07777) != 0) return lastError();
    return 0;
}

struct DirCloser {
    void operator()(DIR* dir) const { closedir(dir); }
};

short copyLink(const std::string& from, const std::string& to)
{
    std::vector<char> target(4096);
    ssize_t length = readlink(from.c_str(), target.data(), target.size() - 1);
    if (length < 0) return lastError();
    target[size_t(length)] = '\0';
    return symlink(target.data(), to.c_str()) == 0 ? 0 : lastError();
}

short copyChild(const std::string& from, const std::string& to)
{
    struct stat status;
    if (lstat(from.c_str(), &status) != 0) return lastError();
    if (S_ISDIR(status.st_mode)) return FileCopy::CopyTree(from, to);
    if (S_ISREG(status.st_mode)) return FileCopy::CopyEntry(from, to);
    if (S_ISLNK(status.st_mode)) return copyLink(from, to);
    return 0;
}

}  // namespace

namespace FileCopy {

short CopyEntry(const std::string& from, const std::string& to)
{
    FileDescriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    if (source.get() < 0) return lastError();
    struct stat status;
    if (fstat(source.get(), &status) != 0) return lastError();
    if (!S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? MacError::notAFileErr : MacError::paramErr;
    FileDescriptor target(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (target.get() < 0) return lastError();
    short error = copyOpenFile(source.get(), target, status);
    if (!target.close() && !error) error = lastError();
    if (error) ::unlink(to.c_str());
    return error;
}

short CopyTree(const std::string& from, const std::string& to)
{
    struct stat status;
    if (stat(from.c_str(), &status) != 0) return lastError();
    if (!S_ISDIR(status.st_mode)) return MacError::dirNFErr;
    std::unique_ptr<DIR, DirCloser> dir(opendir(from.c_str()));
    if (!dir) return lastError();
    if (mkdir(to.c_str(), 0700) != 0) return lastError();
    while (const dirent* entry = readdir(dir.get())) {
        std::string name = entry->d_name;
        if (name == "." || name == "..") continue;
        if (short error = copyChild(from + "/" + name, to + "/" + name)) return error;
    }
    const struct timespec times[2] = {status.st_atim, status.st_mtim};
    utimensat(AT_FDCWD, to.c_str(), times, 0);
    return chmod(to.c_str(), status.st_mode & 07777) == 0 ? 0 : lastError();
}

std::string CompanionPath(const std::string& path)
{
    size_t slash = path.rfind('/');
    if (slash == std::string::npos) return "._" + path;
    return path.substr(0, slash + 1) + "._" + path.substr(slash + 1);
}

}  // namespace FileCopy
