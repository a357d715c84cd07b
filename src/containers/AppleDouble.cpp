#include "containers/AppleDouble.h"

#include <limits>

#include "support/ByteWriter.h"

namespace AppleDouble {

namespace {

constexpr size_t kVersionOffset = 4;
constexpr size_t kCountOffset = 24;

bool knownVersion(uint32_t version)
{
    return version == kVersion1 || version == kVersion2;
}

uint64_t entryEnd(const Entry& entry)
{
    return uint64_t(entry.offset) + entry.length;
}

}  // namespace

const Entry* Container::find(uint32_t id) const
{
    for (const Entry& entry : entries)
        if (entry.id == id) return &entry;
    return nullptr;
}

std::optional<size_t> TableLength(ByteView prefix, uint32_t magic)
{
    uint32_t foundMagic = 0, version = 0;
    uint16_t count = 0;
    if (!prefix.u32(0, foundMagic) || !prefix.u32(kVersionOffset, version) ||
        !prefix.u16(kCountOffset, count))
        return std::nullopt;
    if (foundMagic != magic || !knownVersion(version)) return std::nullopt;
    return kHeaderSize + size_t(count) * kEntrySize;
}

std::optional<Container> Parse(ByteView table, uint64_t containerSize, uint32_t magic)
{
    auto length = TableLength(table, magic);
    if (!length || *length > containerSize) return std::nullopt;
    Container container;
    container.magic = magic;
    ByteReader reader(table, kHeaderSize);
    size_t count = (*length - kHeaderSize) / kEntrySize;
    container.entries.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        Entry entry;
        if (!reader.u32(entry.id) || !reader.u32(entry.offset) || !reader.u32(entry.length))
            return std::nullopt;
        if (entryEnd(entry) > containerSize) return std::nullopt;
        container.entries.push_back(entry);
    }
    return container;
}

bool ReadTypeAndCreator(ByteView finderInfo, uint32_t& type, uint32_t& creator)
{
    uint32_t foundType = 0, foundCreator = 0;
    if (!finderInfo.tag(0, foundType) || !finderInfo.tag(4, foundCreator)) return false;
    type = foundType;
    creator = foundCreator;
    return true;
}

std::optional<std::vector<uint8_t>> ReplaceEntry(ByteView container, uint32_t magic,
                                                 uint32_t id, ByteView bytes)
{
    auto parsed = Parse(container, container.size(), magic);
    if (!parsed) return std::nullopt;
    const Entry* target = parsed->find(id);
    if (!target || bytes.size() > std::numeric_limits<uint32_t>::max()) return std::nullopt;
    size_t tableEnd = kHeaderSize + parsed->entries.size() * kEntrySize;
    if (target->offset < tableEnd) return std::nullopt;

    const size_t targetIndex = size_t(target - parsed->entries.data());
    const uint64_t oldEnd = entryEnd(*target);
    const int64_t delta = int64_t(bytes.size()) - int64_t(target->length);
    std::vector<Entry> moved = parsed->entries;
    for (size_t i = 0; i < moved.size(); ++i) {
        Entry& entry = moved[i];
        if (i == targetIndex) {
            entry.length = uint32_t(bytes.size());
        } else if (entryEnd(entry) <= target->offset) {
            continue;  // before the replaced bytes: stays where it is
        } else if (entry.offset >= oldEnd) {
            int64_t offset = int64_t(entry.offset) + delta;
            if (offset + int64_t(entry.length) > int64_t(std::numeric_limits<uint32_t>::max()))
                return std::nullopt;
            entry.offset = uint32_t(offset);
        } else {
            return std::nullopt;
        }
    }

    auto head = container.sub(0, target->offset);
    if (!head) return std::nullopt;
    ByteWriter out;
    out.bytes(*head).bytes(bytes).bytes(container.tail(size_t(oldEnd)));
    for (size_t i = 0; i < moved.size(); ++i) {
        size_t at = kHeaderSize + i * kEntrySize;
        out.putU32(at + 4, moved[i].offset);
        out.putU32(at + 8, moved[i].length);
    }
    return out.take();
}

}  // namespace AppleDouble
