#include "containers/AppleDouble.h"

#include <limits>

#include "support/ByteWriter.h"
#include "support/Refusal.h"

namespace AppleDouble {

namespace {

bool knownVersion(uint32_t version)
{
    return version == kVersion1 || version == kVersion2;
}

const char* formatName(uint32_t magic)
{
    return magic == kAppleSingleMagic ? "AppleSingle" : "AppleDouble";
}

size_t descriptorAt(size_t index)
{
    return Header::size + index * EntryDescriptor::size;
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
    if (!prefix.read(0, Header::magicNumber, foundMagic) || foundMagic != magic)
        return std::nullopt;
    if (!prefix.read(0, Header::versionNumber, version) ||
        !prefix.read(0, Header::numberOfEntries, count))
        return Refuse(formatName(magic), ": header cut short (", prefix.size(), " of ",
                      Header::size, " bytes)");
    if (!knownVersion(version))
        return Refuse(formatName(magic), ": unknown version number 0x", std::hex, version);
    return descriptorAt(count);
}

std::optional<Container> Parse(ByteView table, uint64_t containerSize, uint32_t magic)
{
    auto length = TableLength(table, magic);
    if (!length) return std::nullopt;
    const size_t count = (*length - Header::size) / EntryDescriptor::size;
    if (*length > containerSize)
        return Refuse(formatName(magic), ": ", count, " entry descriptors need ", *length,
                      " bytes, the file holds ", containerSize);
    Container container;
    container.magic = magic;
    container.entries.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        Entry entry;
        const size_t at = descriptorAt(i);
        if (!table.read(at, EntryDescriptor::entryID, entry.id) ||
            !table.read(at, EntryDescriptor::entryOffset, entry.offset) ||
            !table.read(at, EntryDescriptor::entryLength, entry.length))
            return Refuse(formatName(magic), ": entry descriptor ", i, " cut short");
        if (entryEnd(entry) > containerSize)
            return Refuse(formatName(magic), ": entry ", i, " (ID ", entry.id, ", offset ",
                          entry.offset, ", length ", entry.length,
                          ") runs past the end of the file (", containerSize, " bytes)");
        container.entries.push_back(entry);
    }
    return container;
}

bool ReadTypeAndCreator(ByteView finderInfo, uint32_t& type, uint32_t& creator)
{
    uint32_t foundType = 0, foundCreator = 0;
    if (!finderInfo.read(0, FinderInfo::fdType, foundType) ||
        !finderInfo.read(0, FinderInfo::fdCreator, foundCreator))
        return false;
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
    const size_t tableEnd = descriptorAt(parsed->entries.size());
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
        const size_t at = descriptorAt(i);
        out.putU32(at + EntryDescriptor::entryOffset.offset, moved[i].offset);
        out.putU32(at + EntryDescriptor::entryLength.offset, moved[i].length);
    }
    return out.take();
}

}  // namespace AppleDouble
