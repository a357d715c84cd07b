#include "fontfiles/PostScriptResources.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

#include "fontfiles/Type1MetaData.h"
#include "resourcefork/FONDRecord.h"
#include "resourcefork/ResourceFileAccess.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "files/LxFileSystemParser.h"
#include "support/Refusal.h"

namespace {

constexpr int16_t kFirstPOSTChunk = 501;
constexpr int16_t kLastHeaderChunk = 502;  // the font dictionary lies in these two
constexpr size_t kFullChunkSize = 2048;

// The seven gatherer outputs, in its slot order.
struct Outputs {
    LxString* kind;
    LxString* foundry;
    LxString* family;
    LxString* version;
    LxString* postScriptName;
    LxString* displayName;
    LxString* fullName;
};

// How the family's outline is kept, as the kind names it.
struct OutlineKind {
    bool doubleByte = false;
    bool isCID = false;
};

int gather(const ResourceHandle* handle, const Outputs& out)
{
    return GatherMetaDataFromHandle(handle, out.kind, out.foundry, out.family, out.version,
                                    out.postScriptName, out.displayName, out.fullName);
}

// The FOND's resource name as a C string sees it.
std::string resourceName(const ResourceHandle& fond)
{
    return fond.name.substr(0, fond.name.find('\0'));
}

bool endsWith(std::string_view text, std::string_view suffix)
{
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

// "MM" followed, somewhere after it, by "_": an instance of a multiple master.
bool isMultipleMasterName(const std::string& name)
{
    const size_t mm = name.find("MM");
    return mm != std::string::npos && name.find('_', mm + 2) != std::string::npos;
}

OutlineKind classifyOutline(const TypeprobeResourceFile& file, const ResourceHandle& fond,
                            int16_t style, bool isMM)
{
    OutlineKind outline;
    if (isMM || fond.size() < FOND::kHeaderSize) return outline;
    outline.doubleByte = file.isDoubleByteFOND(&fond);
    if (!outline.doubleByte) return outline;
    for (const FOND::AssociationEntry& entry : FOND::Entries(fond.view())) {
        if (entry.style != style || entry.size != 0) continue;
        // The outline resource may live in any open resource file; only this
        // one is open here.
        ResourceHandlePtr sfnt = getHandleOfTypeAndResID(&file, kTypeSfnt, entry.id);
        if (!sfnt) break;
        const std::string name = resourceName(fond);
        outline.isCID = sfnt->view().startsWith("typ1") || name.rfind("A-CID", 0) == 0 ||
                        endsWith(name, "CID-B");
        // A double-byte family with an outline resource is not reported as OCF.
        outline.doubleByte = false;
        break;
    }
    return outline;
}

LxString joinPath(const LxString& folder, const LxString& name)
{
    if (folder.empty()) return name;
    if (LxFileSystemParser::EndsWithDelimiter(folder.str()))
        return LxString(folder.str() + name.str());
    return LxString(folder.str() + "/" + name.str());
}

// Gathers from POST 501 and 502. A full-sized chunk other than the first
// ends the walk, as does a missing or empty one; later chunks are fetched
// but not read (intended: the header keys lie at the start of the text).
int readPOSTChunks(const TypeprobeResourceFile& printer, const Outputs& out)
{
    int status = -1;
    for (int id = kFirstPOSTChunk; id <= std::numeric_limits<int16_t>::max(); ++id) {
        ResourceHandlePtr chunk = getHandleOfTypeAndResID(&printer, kTypePOST, int16_t(id));
        const bool fullSizedLater =
            chunk && chunk->size() == kFullChunkSize && id != kFirstPOSTChunk;
        if (!chunk || chunk->size() == 0 || fullSizedLater) break;
        if (id <= kLastHeaderChunk) {
            gather(chunk.get(), out);
            status = 0;
        }
    }
    return status;
}

// The printer font of the style beside `path`: its path goes to
// *printerFontName as formed, whether or not it exists.
int readPrinterFont(const TypeprobeResourceFile& file, const LxString& path,
                    const ResourceHandle* fond, int16_t style, LxString* printerFontName,
                    const Outputs& out)
{
    const LxString name = file.getPSPrinterNameForFOND(fond, style);
    if (name.empty()) return 6;
    const LxString printerPath =
        joinPath(LxFileSystemParser::GetPathDeletingLastPathComponent(path), name);
    if (printerFontName) *printerFontName = printerPath;
    ResourceFilePtr printer = AllocateResourceFile(printerPath.str(), true);
    if (!printer) return 6;
    const int status = readPOSTChunks(*printer, out);
    FreeResourceFile(printer);
    if (status != 0)
        Refuse("printer font: ", printerPath.str(), " has no text in POST ", kFirstPOSTChunk,
               " (missing or empty)");
    return status;
}

// The family name for the display slot; a multiple master's "%M" name loses
// its marker and everything from its first "_".
LxString displayFamilyName(const LxString& familyName, bool isMM)
{
    const std::string& name = familyName.str();
    if (!isMM || name.rfind("%M", 0) != 0) return familyName;
    const size_t underscore = name.find('_');
    if (underscore == 2) return familyName;
    const size_t length = underscore == std::string::npos ? std::string::npos : underscore - 2;
    return LxString(name.substr(2, length));
}

}  // namespace

int GatherMetaDataFromHandle(const ResourceHandle* handle, LxString* kind, LxString* foundry,
                             LxString* family, LxString* version, LxString* postScriptName,
                             LxString* displayName, LxString* fullName)
{
    if (!handle || handle->size() == 0) return -1;
    std::string verbatim(handle->view().chars(0, handle->size()));
    std::replace(verbatim.begin(), verbatim.end(), '\0', '_');
    std::string searchCopy;
    const Type1Text text = MakeType1Text(verbatim, searchCopy);
    // Whether a PostScript name is there, asked apart so that the wanted
    // outputs see exactly one gathering.
    LxString found;
    GatherPostScriptMetaDataFromData(text, nullptr, nullptr, nullptr, nullptr, &found, nullptr,
                                     nullptr);
    GatherPostScriptMetaDataFromData(text, kind, foundry, family, version, postScriptName,
                                     displayName, fullName);
    return found.empty() ? -1 : 0;
}

int Collect_sfnt_MetaDataFromPrinterInfo(const TypeprobeResourceFile* file,
                                         const ResourceHandle* fond, int16_t style,
                                         LxString* kind, LxString* foundry, LxString* family,
                                         LxString* version, LxString* postScriptName,
                                         LxString* displayName, LxString* fullName)
{
    if (!file) return -1;
    const Outputs out{kind, foundry, family, version, postScriptName, displayName, fullName};
    int status = -1;
    for (int16_t id : file->getSortedNFNTsForFOND(fond, style)) {
        ResourceHandlePtr sfnt = getHandleOfTypeAndResID(file, kTypeSfnt, id);
        status = gather(sfnt.get(), out);
        if (status == 0) break;
    }
    return status;
}

int CollectPSMetaDataMac(const TypeprobeResourceFile* file, const LxString& path,
                         const ResourceHandle* fond, int16_t style, LxString* printerFontName,
                         LxString* kind, LxString* foundry, LxString* family, LxString* version,
                         LxString* postScriptName, LxString* displayName, LxString* fullName)
{
    if (!file || !fond || fond->size() == 0) return -1;
    const Outputs out{kind, foundry, family, version, postScriptName, displayName, fullName};
    bool isMM = isMultipleMasterName(resourceName(*fond));
    const OutlineKind outline = classifyOutline(*file, *fond, style, isMM);

    int status = -1;
    if (file->shouldHavePrinterFile(fond, style)) {
        status = readPrinterFont(*file, path, fond, style, printerFontName, out);
        if (postScriptName && postScriptName->empty())
            *postScriptName = file->normalizePostScriptName(
                file->getPostScriptNameForFOND(fond, style), fond, &isMM);
    }

    const LxString familyName = file->getResourceNameFromFOND(fond);
    if (displayName && !familyName.empty()) *displayName = displayFamilyName(familyName, isMM);
    if (status == 0 && family && family->empty())
        LxFileSystemParser::GetFileName(file->file(), *family);

    if (kind) {
        if (isMM)
            *kind = "PostScript - MM";
        else if (outline.isCID)
            *kind = "CID";
        else if (outline.doubleByte)
            *kind = "OCF";
    }
    return status;
}
