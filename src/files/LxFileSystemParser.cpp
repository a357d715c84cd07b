#include "files/LxFileSystemParser.h"

#include <sys/stat.h>

#include <cstring>

#include "support/BundleEndings.h"
#include "files/FileSystemWrappers.h"
#include "files/LxDirectorySpecification.h"
#include "support/MacErrors.h"

int LxFileSystemParser::ReplaceIllegalFilenameChars(LxString* name)
{
    if (!name) return 0;
    std::string& text = name->str();
    for (size_t i = 0; i < text.size(); ++i) {
        bool illegal = text[i] != '\0' && std::strchr(kIllegalFilenameChars, text[i]) != nullptr;
        if (illegal || (i == 0 && text[i] == kExtensionDelimiter)) text[i] = kUnderscore;
    }
    return 0;
}

bool LxFileSystemParser::HasExtension(const LxString& path, unsigned long& dotPosition)
{
    const std::string& text = path.str();
    size_t slash = text.rfind(kPathDelimiter);
    dotPosition = text.find(kExtensionDelimiter, slash == std::string::npos ? 0 : slash);
    return dotPosition != std::string::npos;
}

char* LxFileSystemParser::FindFileName(char* path)
{
    if (!path) return nullptr;
    char* slash = std::strrchr(path, kPathDelimiter);
    return slash ? slash + 1 : path;
}

bool LxFileSystemParser::IsPathAMacBundle(LxString& path, long& error)
{
    error = -1;
    LxDirectorySpecification folder(path);
    FSRef ref;
    struct stat status;
    if (folder.MacGetFSRef(ref) != 0 || stat(ref.path.c_str(), &status) != 0) return false;
    // Folders carry no has-bundle Finder flag here, so the name decides.
    error = 0;
    const auto& endings = BundleEndings::Get();
    if (endings.empty()) return false;
    std::string text = path.str();
    if (EndsWithDelimiter(text)) text.pop_back();
    unsigned long dot = 0;
    if (!HasExtension(LxString(text), dot)) return false;
    return endings.count(text.substr(dot)) != 0;
}

bool LxFileSystemParser::IsPathOnBootVolume(LxString& path, long& error)
{
    static const std::string kVolumes = "/Volumes/";
    error = 0;
    const std::string& text = path.str();
    if (text.compare(0, kVolumes.size(), kVolumes) != 0) return true;
    return text == kVolumes;
}

bool LxFileSystemParser::PathExists(const LxString& path)
{
    return OSPathExists(path);
}

void LxFileSystemParser::ChangeExtension(const LxString& path, const LxString& ext, LxString& out)
{
    std::string text = path.str();
    size_t slash = text.rfind(kPathDelimiter);
    size_t nameStart = slash == std::string::npos ? 0 : slash + 1;
    size_t dot = text.rfind(kExtensionDelimiter);
    if (dot != std::string::npos && dot > nameStart) text.erase(dot);
    if (!ext.empty()) {
        if (ext.str()[0] != kExtensionDelimiter) text += kExtensionDelimiter;
        text += ext.str();
    }
    out = LxString(text);
}

namespace {

std::string withoutTrailingDelimiters(std::string text)
{
    while (text.size() > 1 && text.back() == LxFileSystemParser::kPathDelimiter) text.pop_back();
    return text;
}

}  // namespace

LxString LxFileSystemParser::GetPathDeletingLastPathComponent(const LxString& path)
{
    std::string text = withoutTrailingDelimiters(path.str());
    size_t slash = text.rfind(kPathDelimiter);
    if (slash == std::string::npos) return LxString();
    if (slash == 0) return LxString(kPathDelimiterString);
    return LxString(withoutTrailingDelimiters(text.substr(0, slash)));
}

bool LxFileSystemParser::GetFileName(const LxString& path, LxString& name)
{
    std::string text = withoutTrailingDelimiters(path.str());
    size_t slash = text.rfind(kPathDelimiter);
    std::string last = slash == std::string::npos ? text : text.substr(slash + 1);
    if (last.empty()) return false;
    name = LxString(last);
    return true;
}

bool LxFileSystemParser::EndsWithDelimiter(const std::string& path)
{
    return !path.empty() && path.back() == kPathDelimiter;
}

int LxFileSystemParser::MacGenerateDirectory(short, long, LxDirectorySpecification&)
{
    return MacError::fnfErr;
}
