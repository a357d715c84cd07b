// MacBinary detection: a hostile file either is taken as MacBinary with both
// forks inside it, or is not; replacing its forks gives a file that is
// detected again with the new forks.
#include <cstdint>

#include "FuzzSupport.h"
#include "containers/MacBinary.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const ByteView file(data, size);
    MacBinary::Crc16(file);
    auto header = MacBinary::Parse(file, size);
    if (!header) return 0;
    FUZZ_CHECK(header->version >= 1 && header->version <= 3 && header->name.size() <= 63);
    FUZZ_CHECK(file.contains(header->dataOffset, header->dataLength));
    FUZZ_CHECK(file.contains(header->resourceOffset, header->resourceLength));

    const uint8_t fork[] = {'n', 'e', 'w', ' ', 'f', 'o', 'r', 'k'};
    const ByteView replacement(fork, sizeof fork);
    auto replaced = MacBinary::ReplaceForks(file, std::nullopt, replacement);
    FUZZ_CHECK(replaced.has_value());
    const ByteView result(*replaced);
    auto reread = MacBinary::Parse(result, result.size());
    FUZZ_CHECK(reread.has_value());
    FUZZ_CHECK(reread->dataLength == header->dataLength &&
               result.chars(reread->resourceOffset, reread->resourceLength) == replacement.chars());
    return 0;
}
