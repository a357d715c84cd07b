#include "files/LxStreams.h"

#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "files/FileSystemWrappers.h"

namespace {

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

// The length by seeking to the end, the file rewound; -1 when it has none.
long seekLength(FILE* file)
{
    struct stat status;
    if (fstat(fileno(file), &status) != 0 || S_ISDIR(status.st_mode)) return -1;
    if (std::fseek(file, 0, SEEK_END) != 0) return -1;
    long length = std::ftell(file);
    std::rewind(file);
    return length;
}

}  // namespace

FILE* LxStreams::fopen(const LxString& path, const LxString& mode)
{
    return std::fopen(path.c_str(), mode.c_str());
}

int LxStreams::ReadWholeFile(const LxString& path, void** buffer, unsigned long* size)
{
    FilePtr file(fopen(path, "rb"));
    if (!file) return -1;
    long length = seekLength(file.get());
    if (length < 0) return -1;
    *size = (unsigned long)length;
    void* bytes = std::malloc(size_t(length) + 1);
    if (!bytes) return -1;
    std::memset(bytes, 0, size_t(length) + 1);
    *buffer = bytes;
    if (std::fread(bytes, 1, size_t(length), file.get()) == size_t(length)) return 0;
    std::free(bytes);
    *buffer = nullptr;
    return -1;
}

int LxStreams::ReadWholeUTF8File(const LxString& path, LxString* text)
{
    void* buffer = nullptr;
    unsigned long size = 0;
    int result = ReadWholeFile(path, &buffer, &size);
    if (result == 0) *text = LxString(static_cast<const char*>(buffer));
    std::free(buffer);
    return result;
}

int LxStreams::WriteWholeUTF8File(const LxString& path, const LxString& text)
{
    OSRemoveFile(path, false);
    FILE* file = fopen(path, "wb");
    if (!file) return -1;
    bool written = std::fwrite(text.c_str(), 1, text.length(), file) == text.length();
    bool closed = std::fclose(file) == 0;
    return written && closed ? 0 : -1;
}
