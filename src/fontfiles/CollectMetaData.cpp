#include "fontfiles/CollectMetaData.h"

#include "fontfiles/NamingTable.h"
#include "fontfiles/PostScriptResources.h"
#include "fontfiles/SfntDirectory.h"
#include "fontfiles/SfntPlatform.h"
#include "fontfiles/TFontData.h"
#include "fontfiles/Type1MetaData.h"
#include "resourcefork/ResourceFileAccess.h"
#include "support/Refusal.h"

namespace {

bool isSfntWithHead(ByteView data)
{
    return ClaimsSfnt(data) && FindValidTable(data, "head");
}

// Data-fork fonts only: a resource-fork face stays "mac".
int readSfnt(TFontData& font, const ResourceHandle* fond, int16_t style, const ReadOptions& options,
             LxString& localKind, LxString* platform, LxString* foundry, LxString* family, LxString* version,
             LxString* postScriptName, LxString* displayName, LxString* fullName,
             uint32_t* kerningChecksum)
{
    loadFontDataIntoMemory(font, fond, style);
    if (font.data.empty()) return 3;
    if (font.fontType == kFontTypeOpenTypeTT) localKind = kKindOpenTypeTT;
    int result = getMetaDataFromNamesTable(font.data, font.resourceFile,
                                           fond, style, foundry, family, version, postScriptName,
                                           displayName, fullName)
                     ? 0
                     : 3;
    // Every format: a real sfnt without a readable naming table is still a
    // face, its names left empty.
    if (result == 3 && options.allFormats && isSfntWithHead(font.data)) result = 0;
    if (platform && !font.isResourceFont && result == 0 && !GetPlatformTTF(font.data, platform))
        result = -1;
    if (kerningChecksum) GetTrueTypeKerningTableChecksum(font.data, kerningChecksum);
    return result;
}

// A resource file whose faces are not its own to give.
void refuseFamilyless(const TypeprobeResourceFile* file)
{
    if (countResType(file, kTypePOST) > 0)
        Refuse("resource file: a PostScript printer font ('POST' resources) without a font "
               "family; its faces come from the suitcase whose 'FOND' names it");
    else
        Refuse("resource file: no font family ('FOND') and no font data of its own");
}

void trimTrailingSpaces(LxString& text)
{
    std::string& bytes = text.str();
    bytes.erase(bytes.find_last_not_of(' ') + 1);
}

}  // namespace

int CollectPSMetaData(const TypeprobeResourceFile* file, const LxString& path,
                      const ResourceHandle* fond, int16_t style, LxString* printerFontName,
                      LxString* kind, LxString* foundry, LxString* family, LxString* version,
                      LxString* postScriptName, LxString* displayName, LxString* fullName)
{
    if (CollectPSMetaDataMac(file, path, fond, style, printerFontName, kind, foundry, family,
                             version, postScriptName, displayName, fullName) == 0)
        return 0;
    return CollectPSMetaDataFromFile(path, printerFontName, kind, foundry, family, version,
                                     postScriptName, displayName, fullName);
}

int CollectMetaData(const TypeprobeResourceFile* resourceFile, const LxString& path,
                    const ResourceHandle* fond, int16_t style, LxString* printerFontName,
                    LxString* kind, LxString* platform, LxString* foundry, LxString* family,
                    LxString* version, LxString* postScriptName, LxString* displayName,
                    LxString* fullName, uint32_t* kerningChecksum, const ReadOptions& options)
{
    TFontData font;
    initializeAndConstructFontInfo(font, resourceFile, path);
    LxString localKind;
    getMetaData_FontType(font, fond, style, &localKind, options);
    if (platform) *platform = "mac";
    int result = 0;
    bool readAsSfnt = true;
    if (font.fontType == kFontTypePostScript) {
        result = CollectPSMetaData(resourceFile, path, fond, style, printerFontName, &localKind,
                                   foundry, family, version, postScriptName, displayName,
                                   fullName);
        readAsSfnt = result != 0 && result != 6;
        // Not Type 1 after all: try the file as an sfnt.
        if (readAsSfnt) font.fontType = kFontTypeTrueType;
    }
    if (readAsSfnt)
        result = readSfnt(font, fond, style, options, localKind, platform, foundry, family, version,
                          postScriptName, displayName, fullName, kerningChecksum);
    if (family) trimTrailingSpaces(*family);
    if (kind) *kind = localKind;
    if (result != 0 && result != 6) {
        RefuseUnrecognised(font, resourceFile != nullptr);
        if (font.isResourceFont && !fond) refuseFamilyless(resourceFile);
    }
    freeFontInfo(font);
    return result;
}
