#include "api/ResourceFileSpecifiers.h"

#include <algorithm>
#include <vector>

#include "api/FaceWrapper.h"
#include "api/FontArray.h"
#include "checksum/FondKerning.h"
#include "checksum/ResourceChecksums.h"
#include "fontfiles/CollectMetaData.h"
#include "resourcefork/FONDRecord.h"
#include "resourcefork/ResourceFileAccess.h"
#include "files/LxFileSpecification.h"
#include "files/LxFileSystem.h"
#include "typeprobe/typeprobe.h"

namespace {

struct FileCodes {
    unsigned long type = 0, creator = 0;
};

template <typename Field>
Field* wanted(unsigned long mask, unsigned long bit, Field& field)
{
    return (mask & bit) ? &field : nullptr;
}

// Size, type and creator of the outline: the printer font when the face has
// one, else the font file itself.
void setOutlineFile(TP_FontSpecifier& face, const LxString& path)
{
    face.outlineFileSize = 0;
    if (!face.printerFontName.empty()) {
        LxFileSpecification printer(face.printerFontName);
        if (!LxFileSystem::IsValidFile(printer)) return;
        face.outlineFileSize = uint32_t(LxFileSystem::GetFileSize(printer));
        unsigned long type = 0, creator = 0;
        printer.MacGetTypeAndCreator(type, creator);
        face.outlineFileType = uint32_t(type);
        face.outlineFileCreator = uint32_t(creator);
        return;
    }
    LxFileSpecification font(path);
    if (LxFileSystem::IsValidFile(font)) face.outlineFileSize = uint32_t(LxFileSystem::GetFileSize(font));
}

void appendFace(const TypeprobeResourceFile* file, const LxString& path, const FileCodes& codes,
                const ResourceHandle* fond, int16_t style, int16_t firstResourceID,
                unsigned long mask, const ReadOptions& options, TP_FontArray& array)
{
    const bool hasFond = fond && fond->size() > 0;
    const unsigned long kerningSum = hasFond ? GetVaultlineChecksum(fond->view(), style) : 0;
    TP_FontSpecifier face;
    face.fileCreator = uint32_t(codes.creator);
    face.fileType = uint32_t(codes.type);
    face.fondResourceID = -1;
    const int status = CollectMetaData(
        file, path, fond, style, &face.printerFontName, wanted(mask, kTP_AttrKindName, face.kindName),
        wanted(mask, kTP_AttrPlatform, face.platform), wanted(mask, kTP_AttrFoundryName, face.foundryName),
        wanted(mask, kTP_AttrFamilyName, face.familyName), wanted(mask, kTP_AttrVersion, face.version),
        wanted(mask, kTP_AttrPostScriptName, face.postScriptName),
        wanted(mask, kTP_AttrDisplayName, face.displayName), wanted(mask, kTP_AttrFullName, face.fullName),
        wanted(mask, kTP_AttrKerningChecksum, face.kerningChecksum), options);
    if (status != 0 && status != 6) return;
    // The family's own kerning sum replaces whatever the font data gave.
    face.kerningChecksum = uint32_t(kerningSum);
    face.fondStyle = style;
    face.firstResourceID = firstResourceID;
    const bool crossPlatform = face.platform == "crossplatform";
    unsigned long legacy = 0;
    face.typeprobeChecksum =
        uint32_t(GetVantorChecksum(path, file, fond, style, crossPlatform, legacy));
    face.legacyTypeprobeChecksum = uint32_t(legacy);
    SetFaceWrapper(face, path.str(), file);
    // A web font is the same face as the font it wraps: both checksums are
    // the decoded font's.
    if (options.allFormats && WrappedAsWebFont(face))
        face.typeprobeChecksum = face.legacyTypeprobeChecksum =
            uint32_t(DecodedWebFontCRC(path.str()));
    if (hasFond) face.fondResourceID = fond->id;
    setOutlineFile(face, path);
    face.validAttributes = uint32_t(mask);
    array.Append(face);
}

}  // namespace

void AppendResourceFileFaces(const char* path, unsigned long attributeMask,
                             const ReadOptions& options, TP_FontArray& array)
{
    const LxString fontPath(path);
    FileCodes codes;
    LxFileSpecification(fontPath).MacGetTypeAndCreator(codes.type, codes.creator);
    ResourceFilePtr file = AllocateResourceFile(fontPath.str(), true);
    const int32_t fondCount = countResType(file.get(), kTypeFOND);
    unsigned long passes = 0, walks = 0;
    // A file without font families makes exactly one pass, with no family.
    for (int32_t family = 1; family <= fondCount || (fondCount == 0 && family == 1); ++family) {
        ResourceHandlePtr fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, int16_t(family));
        const int16_t styleCount = getCountOfUniqueStyles(file.get(), fond.get());
        // getStyleFromStyleIndex for every index, with the list made once.
        const std::vector<int16_t> styles =
            file && fond ? file->getSortedStylesForFOND(fond.get()) : std::vector<int16_t>();
        const unsigned long entries = fond ? FOND::Entries(fond->view()).size() : 0;
        for (int16_t index = 0; index < styleCount || (styleCount == 0 && index == 0); ++index) {
            walks += std::max(entries, 1ul);
            if (passes++ == kMaxFacesPerFile || walks > kMaxEntryWalksPerFile) return;
            int16_t style = 0, firstResourceID = -1;
            if (fond && fond->size() > 0) {
                style = size_t(index) < styles.size() ? styles[size_t(index)] : int16_t(-1);
                firstResourceID = getFirstResourceIDFromHandleAndStyle(file.get(), fond.get(), style);
            }
            appendFace(file.get(), fontPath, codes, fond.get(), style, firstResourceID,
                       attributeMask, options, array);
        }
    }
}
