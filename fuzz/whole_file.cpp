// TP_CreateSpecifier on a whole hostile file, under a name that picks its
// path through the library (by extension, none, or as the AppleDouble
// sidecar of a file), then every accessor on every face; and the same with
// every format recognised by its bytes.
//
// Input: a byte choosing the name, then the file's bytes.
#include <cstdint>
#include <iterator>
#include <string>

#include "FuzzSupport.h"
#include "typeprobe/typeprobe.h"

namespace {

using TextAccessor = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);
using NumberAccessor = unsigned long (*)(TP_FontArray*, unsigned long, unsigned long*);

void readFace(TP_FontArray* array, unsigned long index)
{
    char buffer[512];
    for (TextAccessor text : {TP_GetKindName, TP_GetFamilyName, TP_GetPostScriptName,
                              TP_GetFullName, TP_GetDisplayName, TP_GetPrinterFont,
                              TP_GetPlatform, TP_GetFoundryName, TP_GetLegacyFoundryName,
                              TP_GetVersion, TP_GetWindowsMMFile, TP_GetWrapper,
                              TP_GetContainer}) {
        const unsigned long result = text(array, index, buffer, sizeof buffer);
        FUZZ_CHECK(result == kTP_Success || result == kTP_NullArgumentOrNotFound);
        if (result == kTP_Success) FUZZ_CHECK(std::string(buffer).size() < sizeof buffer);
    }
    unsigned long value = 0;
    for (NumberAccessor number : {TP_GetKerningChecksum, TP_GetTypeprobeChecksum,
                                  TP_GetLegacyTypeprobeChecksum, TP_GetOutlineFileSize})
        FUZZ_CHECK(number(array, index, &value) == kTP_Success);
    unsigned long matching = 0, differing = 0;
    FUZZ_CHECK(TP_Match(array, index, array, index, &matching, &differing) == kTP_Success);
    FUZZ_CHECK(differing == 0);
}

void identify(const std::string& path, unsigned long options)
{
    TP_FontArray* array = nullptr;
    if (TP_CreateSpecifierWithOptions(path.c_str(), options, kTP_AllAttributes, &array) != kTP_Success) {
        FUZZ_CHECK(array == nullptr);
        return;
    }
    unsigned long count = 0;
    FUZZ_CHECK(array && TP_GetFontCount(array, &count) == kTP_Success && count > 0);
    for (unsigned long index = 0; index < count; ++index) readFace(array, index);
    unsigned long index = 0;
    TP_GetFontIndexForFONDResourceID(array, -1, 0, &index);
    TP_SpecifierFree(array);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    // The first byte picks the name, the rest is the file.
    static const char* const kNames[] = {"font.ttf", "font.otf", "font.ttc", "font.dfont",
                                         "font.ps",  "font",     "._font",   "font.pfb"};
    if (size == 0) return 0;
    const std::string folder = fuzzsupport::EmptyFolder("create");
    const std::string name = kNames[data[0] % std::size(kNames)];
    fuzzsupport::WriteFile(folder + "/" + name, data + 1, size - 1);
    if (name == "._font") {
        // The sidecar that carries the resource fork of an empty data fork.
        fuzzsupport::WriteFile(folder + "/font", nullptr, 0);
    }
    const std::string path = folder + (name == "._font" ? "/font" : "/" + name);
    for (unsigned long options : {0ul, static_cast<unsigned long>(kTP_AllFormats)}) identify(path, options);
    return 0;
}
