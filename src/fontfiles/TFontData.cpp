#include "fontfiles/TFontData.h"

#include <cctype>
#include <cstring>

#include "fontfiles/SfntDirectory.h"
#include "resourcefork/ResourceFileAccess.h"

namespace {

constexpr size_t kPSHeaderProbeLength = 117;

bool dataForkMagic(TFontData& font, uint32_t wanted)
{
    if (FileHasFONDsInResourceFork(font.resourceFile) || !font.file) return false;
    uint32_t magic = 0;
    return font.dataForkPrefix(4).u32(0, magic) && magic == wanted;
}

void openDataFork(TFontData& font)
{
    font.dataFile = MacForks::Resolve(font.pathString.str());
    font.file = font.dataFile.dataFork.kind != ForkLocation::Kind::Missing;
}

// The tables whose presence makes a ".ttf" an OpenType font.
bool hasOpenTypeTables(ByteView data)
{
    for (const char* tag : {"DSIG", "GDEF", "GSUB", "GPOS", "JSTF", "BASE"})
        if (FindSpecifiedTable(data, tag)) return true;
    return false;
}

}  // namespace

ByteView TFontData::dataForkPrefix(size_t length)
{
    if (file && prefix.size() < length && !ownsData) {
        if (!MacForks::ReadForkPrefix(dataFile.dataFork, length, prefix)) prefix.clear();
    }
    const ByteView bytes = ownsData ? data : ByteView(prefix.data(), prefix.size());
    return bytes.head(length);
}

void initializeAndConstructFontInfo(TFontData& font, const TypeprobeResourceFile* resourceFile,
                                    const LxString& path)
{
    freeFontInfo(font);
    font.isResourceFont = false;
    font.dataFile = MacFile();
    font.file = false;
    font.prefix.clear();
    strncpy(font.path, path.c_str(), sizeof font.path - 1);
    font.path[sizeof font.path - 1] = '\0';
    font.pathString = path;
    font.resourceFile = resourceFile;
    if (resourceFile &&
        (FileHasFONDsInResourceFork(resourceFile) || FileHasPOSTsInResourceFork(resourceFile))) {
        font.isResourceFont = true;
        return;
    }
    font.resourceFile = nullptr;
    openDataFork(font);
}

void freeFontInfo(TFontData& font)
{
    font.extensionKind = kExtensionUnknown;
    font.fontType = kFontTypeUnknown;
    font.sfntHandle.reset();
    font.ownedData = SharedBytes();
    font.data = ByteView();
    font.dataSize = 0;
    font.ownsData = false;
}

int loadFontDataIntoMemory(TFontData& font, const ResourceHandle* fond, int16_t style)
{
    if (font.fontType != kFontTypeTrueType &&
        (font.fontType < kFontTypeOpenTypeTT || font.fontType > kFontTypeOpenTypePS))
        return 0;
    return loadTTFontData(font, fond, style);
}

int loadTTFontData(TFontData& font, const ResourceHandle* fond, int16_t style)
{
    if (font.isResourceFont || font.extensionKind == kExtensionDFont) {
        const int16_t id = getFirstResourceIDFromHandleAndStyle(font.resourceFile, fond, style);
        font.sfntHandle = getHandleOfTypeAndResID(font.resourceFile, kTypeSfnt, id);
        if (font.sfntHandle) {
            font.data = font.sfntHandle->view();
            font.dataSize = uint32_t(font.data.size());
        }
    }
    if (font.data.empty() && font.file && font.dataFile.dataFork.length < UINT32_MAX) {
        if (auto bytes = MacForks::ForkBytes(font.dataFile.dataFork)) {
            font.ownsData = true;
            font.ownedData = std::move(*bytes);
            font.data = font.ownedData.view();
            font.dataSize = uint32_t(font.data.size());
        }
    }
    // A ".ttf" data-fork font with OpenType layout or a signature is
    // reported as OpenType; the same bytes in a resource stay TrueType.
    if (!font.isResourceFont && font.fontType == kFontTypeTrueType && !font.data.empty() &&
        hasOpenTypeTables(font.data))
        font.fontType = kFontTypeOpenTypeTT;
    return 0;
}

bool has_otf_OTTO_Flag(TFontData& font)
{
    return dataForkMagic(font, kSfntVersionOTTO);
}

bool has_ttc_ttcf_Flag(TFontData& font)
{
    return dataForkMagic(font, kCollectionTag);
}

bool has_otf_TrueType_Flag(TFontData& font)
{
    return dataForkMagic(font, kSfntVersionTrueType);
}

bool hasValidPSHeader(TFontData& font)
{
    if (hasValidResourcePSHeader(font.resourceFile)) return true;
    if (!font.file) return false;
    ByteView head = font.dataForkPrefix(kPSHeaderProbeLength);
    uint32_t length = 0;
    const uint64_t fileSize = font.dataFile.dataFork.length;
    if (head.size() < kPSHeaderProbeLength || !head.u32(2, length)) return false;
    // Deliberately narrow: a length word that equals the whole file's length
    // and the word "copyright" near the start.
    if (fileSize > UINT32_MAX || length != fileSize) return false;
    std::string text(head.chars(6, 60));
    for (char& c : text) c = char(std::tolower(static_cast<unsigned char>(c)));
    return text.find("copyright") != std::string::npos;
}

void getMetaData_FontType(TFontData& font, const ResourceHandle* fond, int16_t style,
                          LxString* kind)
{
    auto found = [&](short type, const char* name) {
        font.fontType = type;
        if (kind) *kind = name;
    };
    if (font.isResourceFont) {
        if (has_ttc_true_Flag(font.resourceFile, fond, style))
            found(kFontTypeTrueType, kKindTrueType);
        else if (has_OTTO_Flag_inResource(font.resourceFile, fond, style))
            found(kFontTypeOpenTypePS, kKindOpenTypePS);
        else if (is_psfont(font.resourceFile))
            found(kFontTypePostScript, kKindPostScript);
    }
    if (font.fontType != kFontTypeUnknown) return;
    font.extensionKind = fontTypeFromExtension(font.path);
    switch (font.extensionKind) {
    case kExtensionTTF:
    case kExtensionDFont: found(kFontTypeTrueType, kKindTrueType); break;
    case kExtensionOTF:
        if (has_otf_OTTO_Flag(font))
            found(kFontTypeOpenTypePS, kKindOpenTypePS);
        else
            found(kFontTypeOpenTypeTT, kKindOpenTypeTT);
        break;
    case kExtensionPS:
    case kExtensionPFM: found(kFontTypePostScript, kKindPostScript); break;
    case kExtensionTTC: found(kFontTypeCollection, kKindCollection); break;
    case kExtensionMMM: found(kFontTypeMultipleMaster, kKindMultipleMaster); break;
    case kExtensionUnknown:
        // Every test runs and the last that holds wins. A collection known
        // only by its magic is plain "TrueType", deliberately.
        if (hasValidPSHeader(font)) found(kFontTypePostScript, kKindPostScript);
        if (has_ttc_ttcf_Flag(font)) found(kFontTypeTrueType, kKindTrueType);
        if (has_otf_OTTO_Flag(font)) found(kFontTypeOpenTypePS, kKindOpenTypePS);
        break;
    default: break;  // fot, fnt, fon, pfb, inf: no kind
    }
}
