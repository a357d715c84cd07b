// An owning handle for the library's face arrays, and every field of every
// face as text, for the tests of the C interface.
#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "api/FontArray.h"
#include "support/ByteView.h"
#include "typeprobe/typeprobe.h"

namespace facearrays {

struct ArrayFree {
    void operator()(TP_FontArray* array) const { TP_SpecifierFree(array); }
};
using Array = std::unique_ptr<TP_FontArray, ArrayFree>;

// The classic entry, TP_CreateSpecifier, rather than options.
inline constexpr long kClassicEntry = -1;

// Every face of `path`, or null when the library finds none.
inline Array Identify(const std::string& path, unsigned long mask = kTP_AllAttributes, long options = kClassicEntry)
{
    TP_FontArray* array = nullptr;
    const unsigned long result = options == kClassicEntry
                                     ? TP_CreateSpecifier(path.c_str(), 0, mask, &array)
                                     : TP_CreateSpecifierWithOptions(path.c_str(), options, mask, &array);
    return Array(result == kTP_Success ? array : nullptr);
}

// Every field of every face but what held it, one line each; the printer
// font by its file name alone, since its folder differs from place to place.
inline std::string Describe(const std::string& path, long options = kClassicEntry)
{
    const Array fonts = Identify(path, kTP_AllAttributes, options);
    if (!fonts) return "no faces";
    std::ostringstream out;
    for (const TP_FontSpecifier& f : fonts->faces()) {
        std::string printer = f.printerFontName.str().substr(f.printerFontName.str().find_last_of('/') + 1);
        if (printer.ends_with(".bin")) printer.resize(printer.size() - 4);
        out << f.kindName.str() << "|" << f.familyName.str() << "|" << f.postScriptName.str() << "|"
            << f.fullName.str() << "|" << f.displayName.str() << "|" << f.foundryName.str() << "|"
            << f.version.str() << "|" << printer << "|" << f.platform.str() << "|"
            << std::hex << f.kerningChecksum << "|" << f.typeprobeChecksum << "|" << f.legacyTypeprobeChecksum
            << "|" << std::dec << f.outlineFileSize << "|" << f.fondStyle << "|" << f.firstResourceID << "|"
            << f.fondResourceID << "|" << fourCCString(f.fileType) << fourCCString(f.fileCreator) << "|"
            << fourCCString(f.outlineFileType) << fourCCString(f.outlineFileCreator) << "|" << f.validAttributes
            << "\n";
    }
    return out.str();
}

}  // namespace facearrays
