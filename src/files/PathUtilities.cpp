#include "files/PathUtilities.h"

#include <dirent.h>
#include <strings.h>

#include <memory>

#include "files/FileSystemWrappers.h"
#include "files/LxFileSystemParser.h"

namespace {

bool isDelimiter(char c)
{
    return c == '/' || c == '\\';
}

}  // namespace

LxString GetFileExtension(const LxString& path)
{
    const std::string& text = path.str();
    // Byte 0 is never examined, so ".profile" has no extension (intended).
    for (size_t i = text.size(); i-- > 1;) {
        if (text[i] == '.') return LxString(text.substr(i + 1));
        if (isDelimiter(text[i])) break;
    }
    return LxString();
}

void SetFileExtension(LxString* path, const LxString& ext)
{
    std::string& text = path->str();
    if (!text.empty()) {
        // Starts at the next-to-last byte and stops before byte 0; for a
        // one-byte path the start lies before the text and at() throws
        // std::out_of_range. Both are intended.
        for (size_t i = text.size() - 2; i > 0; --i) {
            char c = text.at(i);
            if (c == '.') {
                text.erase(i);
                break;
            }
            if (isDelimiter(c)) break;
        }
    }
    if (ext.empty()) return;
    if (ext.str()[0] != '.') text += '.';
    text += ext.str();
}

bool ExtractFileNamePart(const LxString& path, LxString* name)
{
    size_t slash = path.str().rfind('/');
    if (slash == std::string::npos || slash == 0) return false;
    *name = LxString(path.str().substr(slash + 1));
    return true;
}

LxString GetFileNamePart(const LxString& path)
{
    LxString name;
    ExtractFileNamePart(path, &name);
    return name;
}

LxString ReplaceLastPathComponent(const LxString& path, const LxString& newName)
{
    const std::string& text = path.str();
    if (text.size() < 2) return path;
    size_t searchFrom = text.back() == '/' ? text.size() - 2 : text.size() - 1;
    size_t slash = text.rfind('/', searchFrom);
    if (slash == std::string::npos || slash == 0) return path;
    return LxString(text.substr(0, slash + 1) + newName.str());
}

void ReplaceFileNamePart(LxString* path, const LxString& newName)
{
    *path = ReplaceLastPathComponent(*path, newName);
}

bool FileIsDescendantOfFolder(const LxString& file, const LxString& folder)
{
    const std::string& folderText = folder.str();
    if (folderText.empty() || folderText.back() != '/' || folderText.size() >= file.length())
        return false;
    return strncasecmp(file.c_str(), folderText.c_str(), folderText.size()) == 0;
}

int MakeFullPath(const LxString& path)
{
    const std::string& text = path.str();
    for (size_t i = 1; i < text.size(); ++i) {
        if (!isDelimiter(text[i])) continue;
        LxString prefix(text.substr(0, i));
        if (OSPathExists(prefix)) continue;
        if (int error = OSCreateDir(prefix)) return error;
    }
    return 0;
}

namespace {

struct DirCloser {
    void operator()(DIR* dir) const { closedir(dir); }
};

bool isDots(const char* name)
{
    return std::string(name) == "." || std::string(name) == "..";
}

}  // namespace

bool FolderIsEmpty(const LxString& folder, bool ignoreDotFiles)
{
    std::unique_ptr<DIR, DirCloser> dir(opendir(folder.c_str()));
    if (!dir) return false;
    while (const dirent* entry = readdir(dir.get())) {
        if (isDots(entry->d_name)) continue;
        if (ignoreDotFiles && entry->d_name[0] == '.') continue;
        return false;
    }
    return true;
}

bool DeleteIfEmpty(const LxString& folder)
{
    return FolderIsEmpty(folder, false) && OSRemoveDir(folder) == 0;
}

int DeleteEmptyParentFolders(const LxString& path, const LxString& stopAt)
{
    // ".." could lead out of `stopAt` behind a prefix that looks inside it.
    if (stopAt.empty() || (path.str() + "/").find("/../") != std::string::npos) return 0;
    std::string limit = stopAt.str();
    if (!LxFileSystemParser::EndsWithDelimiter(limit)) limit += '/';
    int removed = 0;
    LxString folder = LxFileSystemParser::GetPathDeletingLastPathComponent(path);
    // Exact bytes here, not the case-blind descendant test: on a
    // case-sensitive disk that could reach outside `stopAt`.
    while (folder.length() > limit.size() && folder.str().compare(0, limit.size(), limit) == 0 &&
           DeleteIfEmpty(folder)) {
        ++removed;
        folder = LxFileSystemParser::GetPathDeletingLastPathComponent(folder);
    }
    return removed;
}
