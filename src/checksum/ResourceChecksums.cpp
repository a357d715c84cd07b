// Placeholder until the resource-fork checksums land: the whole-file step.
#include "checksum/ResourceChecksums.h"

#include "checksum/CChecksum.h"

unsigned long GetVantorChecksum(const LxString& fontFilePath, const TypeprobeResourceFile*,
                                const ResourceHandle*, int16_t, bool crossPlatform,
                                unsigned long& legacyChecksum)
{
    legacyChecksum = 0;
    unsigned long total = 0, dataFork = 0;
    if (!CChecksum::CalculateFileChecksum(fontFilePath.str(), &total,
                                          crossPlatform ? &dataFork : nullptr))
        return 0;
    legacyChecksum = total;
    return crossPlatform ? dataFork : total;
}
