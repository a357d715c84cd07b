#include "checksum/CChecksum.h"

#include <zlib.h>

#include <cstdint>
#include <vector>

#include "support/ByteView.h"
#include "support/MacForks.h"

namespace {

// One buffer per thread, reused across files; it only ever grows, so that
// concurrent identifications neither share nor reallocate it per file.
std::vector<uint8_t>& forkBuffer()
{
    thread_local std::vector<uint8_t> buffer;
    return buffer;
}

}  // namespace

unsigned long CChecksum::icrc(const unsigned char* data, unsigned long length, unsigned long crc)
{
    if (!data) return crc;
    // zlib takes at most 4 GB per call.
    while (length > 0) {
        const uInt chunk = length > 0x40000000UL ? 0x40000000U : uInt(length);
        crc = crc32(crc, data, chunk);
        data += chunk;
        length -= chunk;
    }
    return crc;
}

bool CChecksum::CalculateFileChecksum(const std::string& path, unsigned long* total,
                                      unsigned long* dataForkOnly)
{
    if (!total) return true;
    // The entry value only serves to tell whether anything was read: the
    // whole-file CRC always starts from 0.
    const unsigned long entryValue = *total;
    *total = 0;
    std::vector<uint8_t>& buffer = forkBuffer();
    bool resourceForkRead = false;
    for (int fork = 0; fork < 2; ++fork) {
        const bool isDataFork = fork == 0;
        const bool opened = isDataFork ? MacForks::ReadDataFork(path, buffer)
                                       : MacForks::ReadResourceFork(path, buffer);
        if (!opened) continue;
        if (!isDataFork) resourceForkRead = true;
        if (buffer.empty()) continue;
        *total = icrc(buffer.data(), buffer.size(), *total);
        if (isDataFork && dataForkOnly) *dataForkOnly = icrc(buffer.data(), buffer.size(), 0);
    }
    return resourceForkRead || *total != entryValue;
}

unsigned long ChecksumLongAlignedData(unsigned long sum, const void* data, unsigned long length)
{
    const unsigned long words = (length + 3) / 4;
    // The last word is read whole, as padded sfnt tables require.
    ByteView bytes(static_cast<const uint8_t*>(data), words * 4);
    uint32_t total = uint32_t(sum);
    for (unsigned long i = 0; i < words; ++i) {
        uint32_t word = 0;
        bytes.u32(i * 4, word);
        total += word;
    }
    return total;
}
