#include "files/SpecificationHelpers.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "containers/FileBytes.h"
#include "files/LxDirectorySpecification.h"
#include "files/LxFileSpecification.h"
#include "support/MacErrors.h"
#include "containers/MacForks.h"

namespace SpecificationHelpers {

std::string PathOf(const LxFileSpecification& file)
{
    LxString path;
    file.GetFullPath(path);
    return path.str();
}

std::string PathOf(const LxDirectorySpecification& folder)
{
    LxString path;
    folder.GetFullPath(path);
    return path.str();
}

LxString Join(const std::string& folder, const std::string& name)
{
    if (folder.empty() || folder.back() == '/') return LxString(folder + name);
    return LxString(folder + "/" + name);
}

bool LogicalFileExists(const std::string& path)
{
    if (path.empty()) return false;
    // A regular file already looked at during this identification exists.
    if (FileBytes::RegularFileSize(path)) return true;
    struct stat status;
    return stat(path.c_str(), &status) == 0 || MacForks::Describe(path).exists;
}

int CopyToBuffer(const std::string& text, unsigned char* buffer, unsigned long size)
{
    if (!buffer || size == 0) return MacError::paramErr;
    strncpyNULLTerminate(reinterpret_cast<char*>(buffer), text.c_str(), size);
    return 0;
}

int CopyToUniStr(const std::string& text, HFSUniStr255& out)
{
    auto units = TextEncoding::UTF8ToUTF16(text);
    if (!units || units->size() > 255) return MacError::bdNamErr;
    out.length = uint16_t(units->size());
    for (size_t i = 0; i < units->size(); ++i) out.unicode[i] = (*units)[i];
    return 0;
}

std::optional<LxString> FileURL(const std::string& path)
{
    if (path.empty()) return std::nullopt;
    std::string absolute = path;
    if (absolute[0] != '/') {
        char cwd[4096];
        if (!getcwd(cwd, sizeof cwd)) return std::nullopt;
        absolute = std::string(cwd) + (std::strcmp(cwd, "/") == 0 ? "" : "/") + path;
    }
    std::string url = "file://";
    for (unsigned char c : absolute) {
        bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                     std::strchr("/-._~!$&'()*+,;=:@", c) != nullptr;
        if (plain && c != 0) {
            url += char(c);
        } else {
            char escaped[4];
            std::snprintf(escaped, sizeof escaped, "%%%02X", c);
            url += escaped;
        }
    }
    return LxString(url);
}

std::string CurrentFolder()
{
    std::vector<char> buffer(4096);
    while (!getcwd(buffer.data(), buffer.size())) {
        if (errno != ERANGE || buffer.size() > (1u << 20)) return "";
        buffer.resize(buffer.size() * 2);
    }
    return buffer.data();
}

}  // namespace SpecificationHelpers
