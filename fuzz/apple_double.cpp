// AppleSingle and AppleDouble headers: a hostile container either parses
// into entries that lie inside it, or is refused; replacing an entry gives a
// container that parses again and holds the new bytes.
#include <algorithm>
#include <cstdint>

#include "FuzzSupport.h"
#include "containers/AppleDouble.h"

namespace {

void checkContainer(ByteView file, uint32_t magic)
{
    auto length = AppleDouble::TableLength(file, magic);
    if (!length) return;
    // The header is read from a prefix, the entries from the table's bytes.
    auto container = AppleDouble::Parse(file.sub(0, std::min(*length, file.size())).value_or(ByteView()),
                                        file.size(), magic);
    FUZZ_CHECK(!container || *length <= file.size());
    if (!container) return;
    for (const AppleDouble::Entry& entry : container->entries)
        FUZZ_CHECK(file.contains(entry.offset, entry.length));
    if (const AppleDouble::Entry* info = container->find(AppleDouble::kFinderInfoID)) {
        uint32_t type = 0, creator = 0;
        AppleDouble::ReadTypeAndCreator(*file.sub(info->offset, info->length), type, creator);
    }

    const uint8_t replacement[] = {0, 0, 1, 0, 'f', 'o', 'r', 'k'};
    for (uint32_t id : {AppleDouble::kResourceForkID, AppleDouble::kDataForkID}) {
        auto replaced = AppleDouble::ReplaceEntry(file, magic, id, ByteView(replacement, sizeof replacement));
        if (!replaced) continue;
        const ByteView result(*replaced);
        auto reread = AppleDouble::Parse(result, result.size(), magic);
        FUZZ_CHECK(reread && reread->entries.size() == container->entries.size());
        const AppleDouble::Entry* entry = reread->find(id);
        FUZZ_CHECK(entry && result.chars(entry->offset, entry->length) ==
                                ByteView(replacement, sizeof replacement).chars());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const ByteView file(data, size);
    checkContainer(file, AppleDouble::kAppleSingleMagic);
    checkContainer(file, AppleDouble::kAppleDoubleMagic);
    return 0;
}
