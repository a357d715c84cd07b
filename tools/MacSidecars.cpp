#include "MacSidecars.h"

#include <vector>

namespace tpcli {

namespace {

std::vector<std::string> Components(const std::string& path)
{
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= path.size()) {
        size_t slash = path.find('/', start);
        if (slash == std::string::npos) slash = path.size();
        parts.push_back(path.substr(start, slash - start));
        start = slash + 1;
    }
    return parts;
}

std::string Joined(const std::vector<std::string>& parts)
{
    std::string path;
    for (size_t i = 0; i < parts.size(); ++i) path += (i ? "/" : "") + parts[i];
    return path;
}

}  // namespace

bool IsSidecarFolderName(const std::string& name)
{
    return name == ".AppleDouble" || name == "__MACOSX";
}

bool IsSidecarFileName(const std::string& name)
{
    return name.size() > 2 && name.compare(0, 2, "._") == 0;
}

bool IsSidecarPath(const std::string& path)
{
    const auto parts = Components(path);
    if (parts.empty()) return false;
    if (IsSidecarFileName(parts.back())) return true;
    for (size_t i = 0; i + 1 < parts.size(); ++i)
        if (IsSidecarFolderName(parts[i])) return true;
    return false;
}

std::optional<std::string> SidecarOwner(const std::string& path)
{
    auto parts = Components(path);
    if (parts.empty() || !IsSidecarPath(path)) return std::nullopt;
    // unzip's copy: drop the nearest "__MACOSX" and the "._" of the name.
    for (size_t i = parts.size() - 1; i-- > 0;) {
        if (parts[i] != "__MACOSX") continue;
        if (!IsSidecarFileName(parts.back())) return std::nullopt;
        parts.back().erase(0, 2);
        parts.erase(parts.begin() + long(i));
        return Joined(parts);
    }
    if (parts.size() >= 2 && parts[parts.size() - 2] == ".AppleDouble") {
        parts.erase(parts.end() - 2);
        return Joined(parts);
    }
    if (IsSidecarFileName(parts.back())) {
        parts.back().erase(0, 2);
        return Joined(parts);
    }
    return std::nullopt;
}

}  // namespace tpcli
