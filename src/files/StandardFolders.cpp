// The standard folders of LxFileSystemParser, mapped onto the home and XDG
// folders of a Linux user.
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <vector>

#include "files/FileSystemWrappers.h"
#include "files/LxFileSystemParser.h"
#include "support/MacErrors.h"
#include "files/PathUtilities.h"
#include "files/SpecificationHelpers.h"

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string homeFolder()
{
    std::string home = environment("HOME");
    if (!home.empty()) return home;
    struct passwd entry;
    struct passwd* found = nullptr;
    std::vector<char> buffer(16384);
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found)
        return found->pw_dir ? found->pw_dir : "";
    return "";
}

// An XDG base folder: the variable when it holds an absolute path, else the
// fallback below the home folder.
std::string xdgFolder(const char* variable, const char* fallback)
{
    std::string value = environment(variable);
    if (!value.empty() && value[0] == '/') return value;
    std::string home = homeFolder();
    return home.empty() ? "" : home + "/" + fallback;
}

// A user folder from user-dirs.dirs (lines like XDG_DESKTOP_DIR="$HOME/Desktop"),
// else the folder of that name in the home folder.
std::string userFolder(const std::string& key, const char* fallback)
{
    std::string home = homeFolder();
    std::ifstream dirs(xdgFolder("XDG_CONFIG_HOME", ".config") + "/user-dirs.dirs");
    std::string line;
    while (std::getline(dirs, line)) {
        std::string prefix = key + "=\"";
        if (line.compare(0, prefix.size(), prefix) != 0 || line.back() != '"') continue;
        std::string value = line.substr(prefix.size(), line.size() - prefix.size() - 1);
        if (value.compare(0, 5, "$HOME") == 0) value = home + value.substr(5);
        if (!value.empty() && value[0] == '/') return value;
    }
    return home.empty() ? "" : home + "/" + fallback;
}

std::string folderFor(short domain, unsigned long folderType)
{
    using P = LxFileSystemParser;
    bool user = domain == P::kUserDomain;
    switch (folderType) {
    case P::kTemporaryFolderType: {
        std::string temp = environment("TMPDIR");
        return temp.empty() ? "/tmp" : temp;
    }
    case P::kPreferencesFolderType:
        return user ? xdgFolder("XDG_CONFIG_HOME", ".config") : "/etc/xdg";
    case P::kApplicationSupportFolderType:
        if (user) return xdgFolder("XDG_DATA_HOME", ".local/share");
        return domain == P::kLocalDomain ? "/usr/local/share" : "/usr/share";
    case P::kDocumentsFolderType: return user ? userFolder("XDG_DOCUMENTS_DIR", "Documents") : "";
    case P::kDesktopFolderType: return user ? userFolder("XDG_DESKTOP_DIR", "Desktop") : "";
    default: return "";
    }
}

bool knownDomain(short domain)
{
    return domain == LxFileSystemParser::kUserDomain ||
           domain == LxFileSystemParser::kLocalDomain ||
           domain == LxFileSystemParser::kSystemDomain;
}

std::string withDelimiter(std::string folder)
{
    if (!LxFileSystemParser::EndsWithDelimiter(folder)) folder += '/';
    return folder;
}

// A fixed folder that must exist (or be made, with `create`).
int provideFolder(const std::string& folder, LxString& out, bool create)
{
    if (folder.empty()) return MacError::fnfErr;
    LxString path(withDelimiter(folder));
    if (!OSPathExists(path)) {
        if (!create) return MacError::fnfErr;
        if (int error = MakeFullPath(path)) return error;
    }
    out = path;
    return 0;
}

LxString byValue(int (*get)(LxString&, bool), bool create)
{
    LxString out;
    return get(out, create) == 0 ? out : LxString();
}

std::string programFolder()
{
    std::vector<char> buffer(4096);
    ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size() - 1);
    if (length <= 0) return "";
    std::string program(buffer.data(), size_t(length));
    return LxFileSystemParser::GetPathDeletingLastPathComponent(LxString(program)).str();
}

}  // namespace

int LxFileSystemParser::MacGetStandardFolder(short domain, unsigned long folderType, LxString& out,
                                             bool create)
{
    if (!knownDomain(domain)) return MacError::fnfErr;
    return provideFolder(folderFor(domain, folderType), out, create);
}

int LxFileSystemParser::GetTempDirectory(LxString& out, bool create)
{
    return MacGetStandardFolder(kUserDomain, kTemporaryFolderType, out, create);
}

int LxFileSystemParser::GetApplicationDirectory(LxString& out, bool create)
{
    return provideFolder(programFolder(), out, create);
}

int LxFileSystemParser::GetWorkingDirectory(LxString& out, bool create)
{
    return provideFolder(SpecificationHelpers::CurrentFolder(), out, create);
}

int LxFileSystemParser::CreateWorkingDirectoryURL(LxString& out, bool create)
{
    LxString folder;
    if (int error = GetWorkingDirectory(folder, create)) return error;
    auto url = SpecificationHelpers::FileURL(folder.str());
    if (!url) return MacError::coreFoundationUnknownErr;
    out = *url;
    return 0;
}

int LxFileSystemParser::GetUserPreferencesDirectory(LxString& out, bool create)
{
    return MacGetStandardFolder(kUserDomain, kPreferencesFolderType, out, create);
}

int LxFileSystemParser::GetUserAppDataDirectory(LxString& out, bool create)
{
    return MacGetStandardFolder(kUserDomain, kApplicationSupportFolderType, out, create);
}

int LxFileSystemParser::GetUserDocumentsDirectory(LxString& out, bool create)
{
    return MacGetStandardFolder(kUserDomain, kDocumentsFolderType, out, create);
}

int LxFileSystemParser::GetUserDesktopDirectory(LxString& out, bool create)
{
    return MacGetStandardFolder(kUserDomain, kDesktopFolderType, out, create);
}

LxString LxFileSystemParser::GetTempDirectory(bool create)
{
    return byValue(&LxFileSystemParser::GetTempDirectory, create);
}

LxString LxFileSystemParser::GetApplicationDirectory(bool create)
{
    return byValue(&LxFileSystemParser::GetApplicationDirectory, create);
}

LxString LxFileSystemParser::GetWorkingDirectory(bool create)
{
    return byValue(&LxFileSystemParser::GetWorkingDirectory, create);
}

LxString LxFileSystemParser::CreateWorkingDirectoryURL(bool create)
{
    return byValue(&LxFileSystemParser::CreateWorkingDirectoryURL, create);
}

LxString LxFileSystemParser::GetUserPreferencesDirectory(bool create)
{
    return byValue(&LxFileSystemParser::GetUserPreferencesDirectory, create);
}

LxString LxFileSystemParser::GetUserAppDataDirectory(bool create)
{
    return byValue(&LxFileSystemParser::GetUserAppDataDirectory, create);
}

LxString LxFileSystemParser::GetUserDocumentsDirectory(bool create)
{
    return byValue(&LxFileSystemParser::GetUserDocumentsDirectory, create);
}

LxString LxFileSystemParser::GetUserDesktopDirectory(bool create)
{
    return byValue(&LxFileSystemParser::GetUserDesktopDirectory, create);
}
