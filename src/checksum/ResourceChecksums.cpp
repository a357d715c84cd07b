#include "checksum/ResourceChecksums.h"

#include <zlib.h>

#include <limits>
#include <optional>
#include <vector>

#include "checksum/CChecksum.h"
#include "checksum/FondKerning.h"
#include "resourcefork/PrinterFontNames.h"
#include "resourcefork/ResourceFileAccess.h"

namespace {

constexpr int kFirstPOSTChunk = 501;

ByteView viewOf(const ResourceHandle* handle)
{
    return handle ? handle->view() : ByteView();
}

unsigned long continueOver(const ResourceHandle* resource, unsigned long crc)
{
    if (!resource) return crc;
    return CChecksum::icrc(resource->view().data(), resource->size(), crc);
}

// A resource's CRC from 0 and its length; both 0 when it is missing.
struct Block {
    unsigned long crc = 0;
    uint64_t length = 0;
};

Block blockOf(const TypeprobeResourceFile* file, uint32_t type, int16_t id)
{
    ResourceHandlePtr resource = getHandleOfTypeAndResID(file, type, id);
    if (!resource) return {};
    return {CChecksum::icrc(resource->view().data(), resource->size(), 0), resource->size()};
}

Block joined(Block first, Block second)
{
    return {crc32_combine64(first.crc, second.crc, z_off64_t(second.length)),
            first.length + second.length};
}

// Calls visit(id, repeats) for each run of one ID in a sorted list.
template <typename Visit>
void forEachRun(const std::vector<int16_t>& ids, Visit visit)
{
    for (size_t at = 0; at < ids.size();) {
        size_t end = at;
        while (end < ids.size() && ids[end] == ids[at]) ++end;
        visit(ids[at], uint64_t(end - at));
        at = end;
    }
}

unsigned long continueOverPOSTChunks(const TypeprobeResourceFile& printer, unsigned long crc)
{
    for (int id = kFirstPOSTChunk; id <= std::numeric_limits<int16_t>::max(); ++id) {
        ResourceHandlePtr chunk = getHandleOfTypeAndResID(&printer, kTypePOST, int16_t(id));
        if (!chunk || chunk->size() == 0) break;
        crc = continueOver(chunk.get(), crc);
    }
    return crc;
}

}  // namespace

unsigned long ChecksumNFNTsfntFONT(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                                   int16_t style, unsigned long crc)
{
    if (!fond || fond->size() == 0) return crc;
    // One ID per association entry: an ID shared by a strike and an outline
    // is taken twice (intended).
    // A repeated ID is read once and counted as often as it is listed.
    const std::vector<int16_t> ids = getSortedResIDsForStyle(file, fond, style);
    forEachRun(ids, [&](int16_t id, uint64_t repeats) {
        const Block outline = blockOf(file, kTypeSfnt, id);
        crc = CChecksum::icrcRepeated(crc, outline.crc, outline.length, repeats);
    });
    // Bitmaps count only when no outline did and the running value was 0
    // (intended).
    if (crc != 0) return crc;
    forEachRun(ids, [&](int16_t id, uint64_t repeats) {
        const Block strikes = joined(blockOf(file, kTypeNFNT, id), blockOf(file, kTypeFONT, id));
        crc = CChecksum::icrcRepeated(crc, strikes.crc, strikes.length, repeats);
    });
    return crc;
}

unsigned long ChecksumPrinterFile(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                                  int16_t style, unsigned long crc)
{
    const std::optional<LxString> path = CreatePrinterPath(file, fond, style);
    if (!path) return crc;
    if (ResourceFilePtr printer = AllocateResourceFile(path->str(), true)) {
        crc = continueOverPOSTChunks(*printer, crc);
        FreeResourceFile(printer);
        return crc;
    }
    // A printer font kept in the data fork: its whole-file CRC, from 0 and
    // not continued from `crc` (intended).
    unsigned long total = crc;
    return CChecksum::CalculateFileChecksum(path->str(), &total, nullptr) ? total : crc;
}

unsigned long GetVantorChecksum(const LxString& fontFilePath, const TypeprobeResourceFile* file,
                                const ResourceHandle* fond, int16_t style, bool crossPlatform,
                                unsigned long& legacyChecksum)
{
    legacyChecksum = 0;
    const unsigned long kernCrc = KerningPairsCRC(viewOf(fond), style);
    unsigned long result = ChecksumPrinterFile(file, fond, style, kernCrc);
    legacyChecksum = result;
    if (result == kernCrc) {
        result = ChecksumNFNTsfntFONT(file, fond, style, result);
        legacyChecksum = result;
    }
    if (result != kernCrc && !crossPlatform) return result;
    // Cross-platform faces, and faces to which neither a printer font nor
    // resources contributed, rest on the whole file.
    unsigned long total = kernCrc;
    unsigned long dataFork = 0;
    if (!CChecksum::CalculateFileChecksum(fontFilePath.str(), &total,
                                          crossPlatform ? &dataFork : nullptr))
        return result;
    legacyChecksum = total;
    return crossPlatform ? dataFork : total;
}

unsigned long GetVaultlineChecksum(const ResourceHandle* fond, int16_t style)
{
    return fond ? GetVaultlineChecksum(fond->view(), style) : 0;
}
