// Exported accessors whose value is derived from a field rather than
// delivered as stored.
#include <cctype>

#include "api/AccessorFrame.h"
#include "fontfiles/NamingTable.h"
#include "fontfiles/Type1MetaData.h"

namespace {

// Drops everything before the first digit, then cuts at the first character
// that is neither a digit nor "-" nor ".": "Version 1.002;PS 001.002" gives
// "1.002".
std::string CleanVersion(const std::string& version)
{
    size_t start = 0;
    while (start < version.size() && !std::isdigit(static_cast<unsigned char>(version[start])))
        ++start;
    size_t end = start;
    while (end < version.size() &&
           (std::isdigit(static_cast<unsigned char>(version[end])) || version[end] == '-' ||
            version[end] == '.'))
        ++end;
    return version.substr(start, end - start);
}

}  // namespace

extern "C" {

TP_API unsigned long TP_GetVersion(TP_FontArray* array, unsigned long index, char* buffer,
                                   int bufferLength)
{
    return AccessFace(array, index, buffer, kTP_AttrVersion, [&](const TP_FontSpecifier& face) {
        CopyOut(CleanVersion(face.version.str()), buffer, bufferLength);
    });
}

TP_API unsigned long TP_GetWindowsMMFile(TP_FontArray* array, unsigned long index, char* buffer,
                                         int bufferLength)
{
    if (!buffer || !array || index >= array->size()) return kTP_NullArgumentOrNotFound;
    const TP_FontSpecifier face = array->at(index);
    if (!(face.validAttributes & kTP_AttrWindowsMMFile)) return kTP_AttributeNotRequested;
    if (!(face.validAttributes & kTP_AttrPrinterFontName)) return kTP_NullArgumentOrNotFound;
    LxString name;
    if (!GetWindowsMMMFontNameFromPrinterFontName(face.printerFontName, &name))
        return kTP_NullArgumentOrNotFound;
    CopyOut(name.str(), buffer, bufferLength);
    return kTP_Success;
}

TP_API void TP_GetPostScriptNameFromNamesTable(const char* fontData, unsigned long length,
                                               void* resourceFile, char** fondHandle, int style,
                                               char* buffer, int bufferLength)
{
    if (!fontData || !resourceFile || !fondHandle || !buffer) return;
    std::string name;
    getPostScriptNameFromNamesTable(ByteView(fontData, length), resourceFile, fondHandle,
                                    short(style), name);
    if (!name.empty()) CopyOut(name, buffer, bufferLength);
}

}  // extern "C"
