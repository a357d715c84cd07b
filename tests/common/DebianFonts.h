// The font files of the Debian packages the integration tests run on.
#pragma once

#include <string>
#include <vector>

#include "common/Oracle.h"

namespace debianfonts {

inline const std::vector<std::string>& packages()
{
    static const std::vector<std::string> names = {"fonts-dejavu-core", "fonts-liberation2", "fonts-urw-base35",
                                                   "fonts-texgyre", "fonts-noto-cjk"};
    return names;
}

// Installed files of the packages whose names end in one of `suffixes`.
inline std::vector<std::string> files(const std::vector<std::string>& suffixes)
{
    std::vector<std::string> out;
    for (const std::string& package : packages())
        for (const std::string& path : oracle::lines("dpkg -L " + package + " 2>/dev/null"))
            for (const std::string& suffix : suffixes)
                if (path.starts_with("/usr/share/fonts/") && path.ends_with(suffix)) {
                    out.push_back(path);
                    break;
                }
    return out;
}

}  // namespace debianfonts
