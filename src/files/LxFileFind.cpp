#include "files/LxFileFind.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "files/SpecificationHelpers.h"

namespace {

constexpr unsigned kDirectoryBit = 0x4000;

}  // namespace

LxFileFind::LxFileFind() = default;

LxFileFind::~LxFileFind()
{
    Close();
}

bool LxFileFind::FindFile(const LxString& pattern)
{
    Close();
    pattern_ = pattern;
    const std::string& text = pattern.str();
    size_t slash = text.rfind('/');
    std::string folder = slash == std::string::npos ? "" : text.substr(0, slash + 1);
    namePart_ = LxString(slash == std::string::npos ? text : text.substr(slash + 1));
    bool absolute = (!text.empty() && text[0] == '/') || (text.size() > 1 && text[1] == ':');
    if (absolute) {
        root_ = folder;
    } else {
        std::string cwd = SpecificationHelpers::CurrentFolder();
        if (cwd.empty()) return false;
        root_ = cwd + (cwd == "/" ? "" : "/") + folder;
    }
    dir_ = opendir(root_.empty() ? "." : root_.c_str());
    if (!dir_) return false;
    while (const dirent* entry = readdir(dir_)) entries_.push_back(entry->d_name);
    std::sort(entries_.begin(), entries_.end());
    current_ = size_t(-1);
    return FindNextFile();
}

bool LxFileFind::FindNextFile()
{
    if (current_ == entries_.size()) return false;
    ++current_;
    return hasEntry();
}

LxString LxFileFind::GetFileName() const
{
    return hasEntry() ? LxString(entries_[current_]) : LxString();
}

LxString LxFileFind::GetFilePath() const
{
    return hasEntry() ? LxString(root_ + entries_[current_]) : LxString();
}

LxString LxFileFind::GetFileTitle() const
{
    std::string name = GetFileName().str();
    size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0 && name != "..") name.erase(dot);
    return LxString(name);
}

LxString LxFileFind::GetFileURL() const
{
    if (!hasEntry()) return LxString();
    auto url = SpecificationHelpers::FileURL(GetFilePath().str());
    return url ? *url : LxString();
}

LxString LxFileFind::GetRoot() const
{
    return LxString(root_);
}

unsigned long LxFileFind::GetLength() const
{
    struct stat status;
    if (!hasEntry() || stat(GetFilePath().c_str(), &status) != 0) return 0;
    return (unsigned long)status.st_size;
}

bool LxFileFind::IsDirectory() const
{
    struct stat status;
    if (!hasEntry() || stat(GetFilePath().c_str(), &status) != 0) return false;
    // A bit test, not the file-type field: kept as it always was.
    return (status.st_mode & kDirectoryBit) != 0;
}

bool LxFileFind::IsDots() const
{
    return IsDirectory() && entries_[current_][0] == '.';
}

bool LxFileFind::noTime(long* time)
{
    if (time) *time = 0;
    return false;
}

bool LxFileFind::GetLastWriteTime(long* time) const
{
    return noTime(time);
}

bool LxFileFind::GetLastAccessTime(long* time) const
{
    return noTime(time);
}

bool LxFileFind::GetCreationTime(long* time) const
{
    return noTime(time);
}

void LxFileFind::Close()
{
    if (dir_) closedir(dir_);
    dir_ = nullptr;
    entries_.clear();
    current_ = 0;
}
