#include "containers/ExtendedAttributes.h"

#include <sys/types.h>
#include <sys/xattr.h>

#include <cerrno>

#include "containers/ReadScope.h"

namespace {

// The value may change between asking for its size and reading it.
constexpr int kReadAttempts = 3;

ssize_t getAttribute(const std::string& path, const char* name, void* buffer, size_t size)
{
#ifdef __APPLE__
    return getxattr(path.c_str(), name, buffer, size, 0, 0);
#else
    return getxattr(path.c_str(), name, buffer, size);
#endif
}

}  // namespace

namespace ExtendedAttributes {

bool HasAny(const std::string& path)
{
#ifdef __APPLE__
    return listxattr(path.c_str(), nullptr, 0, 0) > 0;
#else
    return listxattr(path.c_str(), nullptr, 0) > 0;
#endif
}

std::optional<uint64_t> Size(const std::string& path, const char* name)
{
    ssize_t size = getAttribute(path, name, nullptr, 0);
    if (size < 0) return std::nullopt;
    return uint64_t(size);
}

std::optional<std::vector<uint8_t>> Read(const std::string& path, const char* name)
{
    for (int attempt = 0; attempt < kReadAttempts; ++attempt) {
        auto size = Size(path, name);
        if (!size) return std::nullopt;
        std::vector<uint8_t> value(*size);
        ssize_t read = getAttribute(path, name, value.data(), value.size());
        if (read >= 0 && uint64_t(read) <= value.size()) {
            value.resize(size_t(read));
            return value;
        }
        if (errno != ERANGE) return std::nullopt;
    }
    return std::nullopt;
}

bool Write(const std::string& path, const char* name, ByteView value)
{
    ReadScope::Forget();
#ifdef __APPLE__
    return setxattr(path.c_str(), name, value.data(), value.size(), 0, 0) == 0;
#else
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
#endif
}

}  // namespace ExtendedAttributes
