#include "resourcefork/ResourceFileAccess.h"

#include <algorithm>

#include "resourcefork/FONDRecord.h"
#include "resourcefork/PascalStrings.h"

namespace {

constexpr uint32_t kMagicTrueType = 0x00010000;
constexpr uint32_t kMagicTrue = 0x74727565;  // "true"
constexpr uint32_t kMagicOTTO = 0x4F54544F;  // "OTTO"
constexpr uint32_t kMagicTyp1 = 0x74797031;  // "typ1"
constexpr int16_t kFirstPOSTResource = 501;

// The first four bytes of a resource as a big-endian value; 0 when it has
// fewer than four.
uint32_t magicOf(const ResourceHandle* handle)
{
    uint32_t magic = 0;
    if (handle) handle->view().u32(0, magic);
    return magic;
}

ResourceHandlePtr faceSfnt(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                           int16_t style)
{
    return getHandleOfTypeAndResID(file, kTypeSfnt,
                                   getFirstResourceIDFromHandleAndStyle(file, fond, style));
}

// Japanese CID families keep Type 1 data behind a "true" sfnt tag.
bool hasCIDName(const ResourceHandle* fond)
{
    const std::string& name = fond->name;
    const std::string suffix = "CID-B";
    return name.rfind("A-CID", 0) == 0 ||
           (name.size() >= suffix.size() &&
            name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0);
}

}  // namespace

ResourceFilePtr AllocateResourceFile(const std::string& path, bool readOnly)
{
    return TypeprobeResourceFile::initWithFile(path, readOnly);
}

void FreeResourceFile(ResourceFilePtr& file)
{
    file.reset();
}

int32_t countResType(const TypeprobeResourceFile* file, uint32_t type)
{
    return file ? file->countResType(type) : 0;
}

ResourceHandlePtr getHandleOfTypeAndIndex(const TypeprobeResourceFile* file, uint32_t type,
                                          int16_t index)
{
    return file ? file->getResourceHandleViaGet1IndResource(type, index) : nullptr;
}

ResourceHandlePtr getHandleOfTypeAndResID(const TypeprobeResourceFile* file, uint32_t type,
                                          int16_t id)
{
    return file ? file->getResourceHandleForType(type, id) : nullptr;
}

std::vector<int16_t> getSortedResIDsForType(const TypeprobeResourceFile* file, uint32_t type)
{
    return file ? file->getSortedResIDsForType(type) : std::vector<int16_t>();
}

std::vector<LxString> getPrinterFiles(const TypeprobeResourceFile* file)
{
    return file ? file->getPrinterFiles() : std::vector<LxString>();
}

int16_t getCountOfUniqueStyles(const TypeprobeResourceFile* file, const ResourceHandle* fond)
{
    if (!file || !fond) return 0;
    return int16_t(file->getSortedStylesForFOND(fond).size());
}

int16_t getStyleFromStyleIndex(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                               int index)
{
    if (!file || !fond || index < 0) return -1;
    const std::vector<int16_t> styles = file->getSortedStylesForFOND(fond);
    return size_t(index) < styles.size() ? styles[size_t(index)] : int16_t(-1);
}

int16_t getFirstResourceIDFromHandleAndStyle(const TypeprobeResourceFile* file,
                                             const ResourceHandle* fond, int16_t style)
{
    // The wanted style is taken as unsigned, so a negative one never matches.
    if (!file || !fond || fond->size() < FOND::kEntries || style < 0) return -1;
    const int wanted = style;
    for (const FOND::AssociationEntry& entry : FOND::Entries(fond->view()))
        if (entry.style == wanted) return entry.id;
    return -1;
}

std::vector<int16_t> getSortedResIDsForStyle(const TypeprobeResourceFile* file,
                                             const ResourceHandle* fond, int16_t style)
{
    if (!file || !fond) return {};
    if (style != -1) return file->getSortedNFNTsForFOND(fond, style);
    // Every style's IDs joined: the IDs of every entry, in one walk.
    std::vector<int16_t> ids;
    if (fond->size() >= FOND::kEntries)
        for (const FOND::AssociationEntry& entry : FOND::Entries(fond->view())) ids.push_back(entry.id);
    std::sort(ids.begin(), ids.end());
    return ids;
}

bool has_ttc_true_Flag(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                       int16_t style)
{
    ResourceHandlePtr sfnt = faceSfnt(file, fond, style);
    const uint32_t magic = magicOf(sfnt.get());
    return magic == kMagicTrueType || (magic == kMagicTrue && !hasCIDName(fond));
}

bool has_OTTO_Flag_inResource(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                              int16_t style)
{
    ResourceHandlePtr sfnt = faceSfnt(file, fond, style);
    return magicOf(sfnt.get()) == kMagicOTTO;
}

bool is_psfont(const TypeprobeResourceFile* file)
{
    return countResType(file, kTypeNFNT) > 0;
}

bool is_psprinterfont(const TypeprobeResourceFile* file)
{
    return getHandleOfTypeAndResID(file, kTypePOST, kFirstPOSTResource) != nullptr;
}

bool FileHasFONDsInResourceFork(const TypeprobeResourceFile* file)
{
    return countResType(file, kTypeFOND) > 0;
}

bool FileHasPOSTsInResourceFork(const TypeprobeResourceFile* file)
{
    return countResType(file, kTypePOST) > 0;
}

bool hasValidResourcePSHeader(const TypeprobeResourceFile* file)
{
    ResourceHandlePtr first = getHandleOfTypeAndIndex(file, kTypeSfnt, 1);
    return magicOf(first.get()) == kMagicTyp1;
}
