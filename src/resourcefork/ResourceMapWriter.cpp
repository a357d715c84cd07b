#include "resourcefork/ResourceMapWriter.h"

#include <algorithm>

#include "support/ByteWriter.h"

namespace {

constexpr size_t kDataStart = 256;  // header and the reserved system and application bytes
// The type list follows the map header directly.
constexpr uint16_t kTypeListOffset = ResourceMapHeader::size;
constexpr uint32_t kMaxDataOffset = 0xFFFFFF;
constexpr uint8_t kChangedAttribute = 0x02;  // meaningful in memory only

struct TypeGroup {
    uint32_t type = 0;
    std::vector<const ResourceRecord*> records;
};

std::vector<TypeGroup> groupByType(const std::vector<ResourceRecord>& records)
{
    std::vector<TypeGroup> groups;
    for (const ResourceRecord& record : records) {
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&](const TypeGroup& g) { return g.type == record.type; });
        if (group == groups.end()) group = groups.insert(groups.end(), TypeGroup{record.type, {}});
        group->records.push_back(&record);
    }
    return groups;
}

}  // namespace

namespace ResourceMapWriter {

std::optional<std::vector<uint8_t>> Write(const std::vector<ResourceRecord>& records,
                                          uint16_t mapAttributes)
{
    const std::vector<TypeGroup> groups = groupByType(records);

    // The data area, and each resource's offset in it.
    ByteWriter data;
    std::vector<uint32_t> dataOffsets;
    for (const TypeGroup& group : groups) {
        for (const ResourceRecord* record : group.records) {
            if (data.size() > kMaxDataOffset || record->data.size() > UINT32_MAX)
                return std::nullopt;
            dataOffsets.push_back(uint32_t(data.size()));
            data.u32(uint32_t(record->data.size())).bytes(record->data);
        }
    }
    if (data.size() > UINT32_MAX - kDataStart) return std::nullopt;

    // The map after its fixed part: type list, reference lists, names.
    const size_t referencesStart = TypeList::size + groups.size() * TypeListEntry::size;
    const size_t nameListOffset =
        kTypeListOffset + referencesStart + records.size() * ReferenceListEntry::size;
    if (nameListOffset > UINT16_MAX) return std::nullopt;
    ByteWriter typeList, references, names;
    typeList.u16(uint16_t(groups.size() - 1));  // count minus one; 0xFFFF for none
    size_t index = 0;
    for (const TypeGroup& group : groups) {
        const size_t listOffset = referencesStart + references.size();
        typeList.u32(group.type).u16(uint16_t(group.records.size() - 1)).u16(uint16_t(listOffset));
        for (const ResourceRecord* record : group.records) {
            uint16_t nameOffset = ReferenceListEntry::kNoName;
            if (record->hasName) {
                if (names.size() >= ReferenceListEntry::kNoName) return std::nullopt;
                nameOffset = uint16_t(names.size());
                names.pascal(record->name);
            }
            references.u16(uint16_t(record->id))
                .u16(nameOffset)
                .u8(uint8_t(record->attributes & ~kChangedAttribute))
                .u24(dataOffsets[index++])
                .u32(0);
        }
    }

    const uint32_t dataLength = uint32_t(data.size());
    const uint32_t mapOffset = uint32_t(kDataStart + dataLength);
    const size_t mapLength = nameListOffset + names.size();
    if (mapLength > UINT32_MAX - mapOffset) return std::nullopt;

    ByteWriter header;
    header.u32(kDataStart).u32(mapOffset).u32(dataLength).u32(uint32_t(mapLength));
    ByteWriter file;
    file.bytes(header.view()).zeros(kDataStart - ResourceHeader::size).bytes(data.view());
    file.bytes(header.view())  // the map starts with a copy of the header
        .u32(0)                // next map handle
        .u16(0)                // file reference number
        .u16(mapAttributes)
        .u16(kTypeListOffset)
        .u16(uint16_t(nameListOffset))
        .bytes(typeList.view())
        .bytes(references.view())
        .bytes(names.view());
    return file.take();
}

std::optional<std::vector<uint8_t>> Write(const ResourceMap& map)
{
    return Write(map.records(), map.attributes());
}

}  // namespace ResourceMapWriter
