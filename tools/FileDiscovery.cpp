#include "FileDiscovery.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>

#include "MacSidecars.h"

namespace tpcli {

namespace {

class Walker {
public:
    Discovery result;

    void addNamed(const std::string& given)
    {
        std::string path = given;
        if (IsSidecarPath(path)) {
            auto owner = SidecarOwner(path);
            if (!owner || !exists(*owner)) {
                problem(given, "a Mac sidecar without its file, not a font of its own");
                return;
            }
            path = *owner;
        }
        struct stat info {};
        if (::stat(path.c_str(), &info) != 0) {
            const int error = errno;
            // A logical Mac file stands for its MacBinary copy.
            if (error == ENOENT && isRegularFile(path + ".bin")) {
                addFile(path, path + ".bin", true);
                return;
            }
            problem(given, std::strerror(error));
            return;
        }
        if (S_ISDIR(info.st_mode)) {
            walk(path);
        } else if (S_ISREG(info.st_mode)) {
            addFile(path, path, true);
        } else {
            problem(given, "not a regular file");
        }
    }

private:
    std::set<std::string> seen_;

    static bool exists(const std::string& path)
    {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0;
    }

    static bool isRegularFile(const std::string& path)
    {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
    }

    std::map<std::string, std::string> canonicalFolders_;

    static std::string resolved(const std::string& path)
    {
        char buffer[PATH_MAX];
        return ::realpath(path.c_str(), buffer) ? std::string(buffer) : path;
    }

    // The folder resolved once and the name appended: what realpath() gives
    // unless the name is itself a link or a dot entry, at one look-up per
    // file instead of one per path component.
    std::string canonical(const std::string& path, const struct stat* known = nullptr)
    {
        const size_t slash = path.rfind('/');
        const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
        struct stat link {};
        if (known) link = *known;
        if (name.empty() || name == "." || name == ".." || (!known && ::lstat(path.c_str(), &link) != 0) ||
            S_ISLNK(link.st_mode))
            return resolved(path);
        const std::string folder = slash == std::string::npos ? "." : path.substr(0, std::max<size_t>(slash, 1));
        auto [entry, added] = canonicalFolders_.try_emplace(folder);
        if (added) entry->second = resolved(folder);
        return entry->second + (entry->second.back() == '/' ? "" : "/") + name;
    }

    void problem(const std::string& path, const std::string& message)
    {
        result.problems.push_back({path, message});
    }

    void addFile(const std::string& reported, const std::string& onDisk, bool named,
                 const struct stat* status = nullptr)
    {
        if (!seen_.insert(canonical(onDisk, status)).second) return;
        result.files.push_back({reported, named, {}});
        if (status) result.files.back().status = *status;
    }

    // Inside a sidecar folder that was named directly, every file stands
    // for its owner. `status` is the file's own, when it is no link.
    void addWalked(const std::string& path, const struct stat* status)
    {
        if (!IsSidecarPath(path)) {
            addFile(path, path, false, status);
        } else if (auto owner = SidecarOwner(path); owner && isRegularFile(*owner)) {
            addFile(*owner, *owner, false);
        }
    }

    // Entry names of a folder, sorted byte-wise; false when it cannot be read.
    static bool listFolder(const std::string& folder, std::vector<std::string>& names, int& error)
    {
        DIR* dir = ::opendir(folder.c_str());
        if (!dir) {
            error = errno;
            return false;
        }
        while (const dirent* entry = ::readdir(dir)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..") names.push_back(name);
        }
        ::closedir(dir);
        std::sort(names.begin(), names.end());
        return true;
    }

    void walk(const std::string& folder)
    {
        if (!seen_.insert(canonical(folder) + "/").second) return;
        std::vector<std::string> names;
        int error = 0;
        if (!listFolder(folder, names, error)) {
            problem(folder, std::strerror(error));
            return;
        }
        const std::string prefix = folder.empty() || folder.back() == '/' ? folder : folder + "/";
        for (const std::string& name : names) {
            if (IsSidecarFileName(name) || IsSidecarFolderName(name)) continue;
            const std::string path = prefix + name;
            struct stat link {};
            if (::lstat(path.c_str(), &link) != 0) continue;  // vanished meanwhile
            if (S_ISDIR(link.st_mode)) {
                walk(path);
            } else if (S_ISREG(link.st_mode)) {
                addWalked(path, &link);
            } else if (isRegularFile(path)) {
                addWalked(path, nullptr);  // a link to a file
            }
        }
    }
};

}  // namespace

Discovery DiscoverFiles(const std::vector<std::string>& paths)
{
    Walker walker;
    for (const std::string& path : paths) walker.addNamed(path);
    return std::move(walker.result);
}

}  // namespace tpcli
