#include <cctype>
#include <cstring>
#include <string>

#include "fontfiles/FontKind.h"

short fontTypeFromExtension(const char* path)
{
    static const char* const kExtensions[] = {"ttf", "otf", "ps",  "dfont", "ttc", "fot",
                                              "fnt", "fon", "pfm", "pfb",   "mmm", "inf"};
    if (!path || !*path) return kExtensionUnknown;
    const char* dot = std::strrchr(path, '.');
    // The whole path is searched, so "a.b/font" has the suffix ".b/font",
    // which is too long to count.
    if (!dot || std::strlen(dot) >= 7) return kExtensionUnknown;
    std::string extension(dot + 1);
    for (char& c : extension) c = char(std::tolower(static_cast<unsigned char>(c)));
    for (short kind = 0; kind < short(std::size(kExtensions)); ++kind)
        if (extension == kExtensions[kind]) return kind;
    return kExtensionUnknown;
}
