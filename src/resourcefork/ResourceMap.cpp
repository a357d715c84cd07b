#include "resourcefork/ResourceMap.h"

#include <algorithm>

namespace {

// The map, from its start: a copy of the header, the next map's handle and
// the file reference (all reserved), then these fields.
constexpr size_t kMapAttributes = 22;
constexpr size_t kTypeListOffset = 24;
constexpr size_t kNameListOffset = 26;
constexpr size_t kMapFixedSize = 28;
// The type list, from its start: count minus one, then 8-byte types.
constexpr size_t kTypeSize = 8;
constexpr size_t kReferenceSize = 12;
constexpr uint16_t kNoName = 0xFFFF;

struct Layout {
    ByteView data;       // the data area
    ByteView map;
    ByteView typeList;   // from the type count to the end of the map
    ByteView nameList;   // from the first name to the end of the map
};

std::optional<Layout> readLayout(ByteView fork, uint16_t& attributes)
{
    uint32_t dataOffset = 0, mapOffset = 0, dataLength = 0, mapLength = 0;
    if (!fork.u32(0, dataOffset) || !fork.u32(4, mapOffset) || !fork.u32(8, dataLength) ||
        !fork.u32(12, mapLength))
        return std::nullopt;
    auto data = fork.sub(dataOffset, dataLength);
    auto map = fork.sub(mapOffset, mapLength);
    uint16_t typeListOffset = 0, nameListOffset = 0;
    if (!data || !map || !map->u16(kMapAttributes, attributes) ||
        !map->u16(kTypeListOffset, typeListOffset) || !map->u16(kNameListOffset, nameListOffset))
        return std::nullopt;
    if (typeListOffset < kMapFixedSize || !map->contains(typeListOffset, 2) ||
        nameListOffset > map->size())
        return std::nullopt;
    return Layout{*data, *map, map->tail(typeListOffset), map->tail(nameListOffset)};
}

bool readName(const Layout& layout, uint16_t nameOffset, ResourceRecord& record)
{
    if (nameOffset == kNoName) return true;
    uint8_t length = 0;
    if (!layout.nameList.u8(nameOffset, length) || !layout.nameList.contains(nameOffset + 1u, length))
        return false;
    record.hasName = true;
    record.name = std::string(layout.nameList.chars(nameOffset + 1u, length));
    return true;
}

bool readData(const Layout& layout, uint32_t dataOffset, ResourceRecord& record)
{
    uint32_t length = 0;
    if (!layout.data.u32(dataOffset, length)) return false;
    auto bytes = layout.data.sub(size_t(dataOffset) + 4, length);
    if (!bytes) return false;
    record.data = *bytes;
    return true;
}

bool readReference(const Layout& layout, size_t at, uint32_t type, ResourceRecord& record)
{
    uint16_t nameOffset = 0;
    uint32_t dataOffset = 0;
    record.type = type;
    return layout.typeList.contains(at, kReferenceSize) && layout.typeList.i16(at, record.id) &&
           layout.typeList.u16(at + 2, nameOffset) &&
           layout.typeList.u8(at + 4, record.attributes) &&
           layout.typeList.u24(at + 5, dataOffset) &&
           readName(layout, nameOffset, record) && readData(layout, dataOffset, record);
}

}  // namespace

std::optional<ResourceMap> ResourceMap::Parse(std::vector<uint8_t> fork)
{
    return Parse(SharedBytes(std::move(fork)));
}

std::optional<ResourceMap> ResourceMap::Parse(SharedBytes fork)
{
    ResourceMap result;
    result.fork_ = std::move(fork);
    ByteView bytes = result.fork_.view();
    auto layout = readLayout(bytes, result.attributes_);
    int16_t lastType = 0;
    if (!layout || !layout->typeList.i16(0, lastType) || lastType < -1) return std::nullopt;

    // Reference lists may overlap; a map cannot name more resources than
    // its bytes could list apart, which keeps hostile counts from
    // multiplying.
    const size_t maxReferences = layout->map.size() / kReferenceSize;
    for (size_t t = 0; t < size_t(lastType + 1); ++t) {
        const size_t at = 2 + t * kTypeSize;
        uint32_t type = 0;
        uint16_t lastIndex = 0, listOffset = 0;
        if (!layout->typeList.tag(at, type) || !layout->typeList.u16(at + 4, lastIndex) ||
            !layout->typeList.u16(at + 6, listOffset))
            return std::nullopt;
        if (result.records_.size() + lastIndex + 1u > maxReferences) return std::nullopt;
        for (size_t r = 0; r <= lastIndex; ++r) {
            ResourceRecord record;
            if (!readReference(*layout, listOffset + r * kReferenceSize, type, record))
                return std::nullopt;
            record.key = result.nextKey_++;
            result.records_.push_back(std::move(record));
        }
    }
    return result;
}

std::vector<uint32_t> ResourceMap::types() const
{
    std::vector<uint32_t> result;
    for (const ResourceRecord& record : records_)
        if (std::find(result.begin(), result.end(), record.type) == result.end())
            result.push_back(record.type);
    return result;
}

size_t ResourceMap::count(uint32_t type) const
{
    return size_t(std::count_if(records_.begin(), records_.end(),
                                [type](const ResourceRecord& r) { return r.type == type; }));
}

const ResourceRecord* ResourceMap::indexed(uint32_t type, size_t index) const
{
    for (const ResourceRecord& record : records_)
        if (record.type == type && index-- == 0) return &record;
    return nullptr;
}

const ResourceRecord* ResourceMap::find(uint32_t type, int16_t id) const
{
    for (const ResourceRecord& record : records_)
        if (record.type == type && record.id == id) return &record;
    return nullptr;
}

const ResourceRecord* ResourceMap::findKey(uint32_t key) const
{
    for (const ResourceRecord& record : records_)
        if (record.key == key) return &record;
    return nullptr;
}

ResourceRecord* ResourceMap::mutableKey(uint32_t key)
{
    return const_cast<ResourceRecord*>(findKey(key));
}

bool ResourceMap::remove(uint32_t key)
{
    auto found = std::find_if(records_.begin(), records_.end(),
                              [key](const ResourceRecord& r) { return r.key == key; });
    if (found == records_.end()) return false;
    records_.erase(found);
    return true;
}

bool ResourceMap::setData(uint32_t key, std::vector<uint8_t> data)
{
    ResourceRecord* record = mutableKey(key);
    if (!record) return false;
    added_.push_back(std::move(data));
    record->data = ByteView(added_.back());
    return true;
}

bool ResourceMap::setInfo(uint32_t key, int16_t id, std::optional<std::string> name)
{
    ResourceRecord* record = mutableKey(key);
    if (!record) return false;
    record->id = id;
    record->hasName = name.has_value();
    record->name = name ? name->substr(0, 255) : std::string();
    return true;
}

uint32_t ResourceMap::add(uint32_t type, int16_t id, std::optional<std::string> name,
                          std::vector<uint8_t> data, uint8_t attributes)
{
    ResourceRecord record;
    record.type = type;
    record.id = id;
    record.attributes = attributes;
    record.hasName = name.has_value();
    record.name = name ? name->substr(0, 255) : std::string();
    added_.push_back(std::move(data));
    record.data = ByteView(added_.back());
    const uint32_t key = record.key = nextKey_++;
    auto lastOfType = std::find_if(records_.rbegin(), records_.rend(),
                                   [type](const ResourceRecord& r) { return r.type == type; });
    records_.insert(lastOfType == records_.rend() ? records_.end() : lastOfType.base(),
                    std::move(record));
    return key;
}
