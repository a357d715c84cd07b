#include "resourcefork/ResourceMap.h"

#include <algorithm>

#include "support/Refusal.h"

namespace {

struct Layout {
    ByteView data;       // the data area
    ByteView map;
    ByteView typeList;   // from the type count to the end of the map
    ByteView nameList;   // from the first name to the end of the map
};

std::optional<Layout> readLayout(ByteView fork, uint16_t& attributes)
{
    auto ranges = ResourceMap::ReadHeader(fork, fork.size());
    if (!ranges) return std::nullopt;
    auto data = fork.sub(ranges->dataOffset, ranges->dataLength);
    auto map = fork.sub(ranges->mapOffset, ranges->mapLength);
    if (!data || !map) return std::nullopt;  // ReadHeader has checked both
    uint16_t typeListOffset = 0, nameListOffset = 0;
    if (!map->read(0, ResourceMapHeader::attributes, attributes) ||
        !map->read(0, ResourceMapHeader::typeListOffset, typeListOffset) ||
        !map->read(0, ResourceMapHeader::nameListOffset, nameListOffset))
        return Refuse("resource map: ", map->size(), " bytes, shorter than its ",
                      ResourceMapHeader::size, "-byte header");
    if (typeListOffset < ResourceMapHeader::size)
        return Refuse("resource map: type list offset ", typeListOffset,
                      " lies inside the map header");
    if (!map->contains(typeListOffset, TypeList::size))
        return Refuse("resource map: type list offset ", typeListOffset,
                      " leaves no room for the type count (map of ", map->size(), " bytes)");
    if (nameListOffset > map->size())
        return Refuse("resource map: name list offset ", nameListOffset,
                      " past the end of the map (", map->size(), " bytes)");
    return Layout{*data, *map, map->tail(typeListOffset), map->tail(nameListOffset)};
}

bool readName(const Layout& layout, uint16_t nameOffset, size_t index, ResourceRecord& record)
{
    if (nameOffset == ReferenceListEntry::kNoName) return true;
    uint8_t length = 0;
    if (!layout.nameList.u8(nameOffset, length) || !layout.nameList.contains(nameOffset + 1u, length))
        return Refuse("resource map: reference ", index, " of '", fourCCString(record.type),
                      "' name at offset ", nameOffset, " runs past the name list (",
                      layout.nameList.size(), " bytes)");
    record.hasName = true;
    record.name = std::string(layout.nameList.chars(nameOffset + 1u, length));
    return true;
}

bool readData(const Layout& layout, uint32_t dataOffset, size_t index, ResourceRecord& record)
{
    uint32_t length = 0;
    if (!layout.data.read(dataOffset, ResourceData::length, length))
        return Refuse("resource map: reference ", index, " of '", fourCCString(record.type),
                      "' data offset ", dataOffset, " past the data area (", layout.data.size(),
                      " bytes)");
    auto bytes = layout.data.sub(size_t(dataOffset) + ResourceData::size, length);
    if (!bytes)
        return Refuse("resource map: reference ", index, " of '", fourCCString(record.type),
                      "' data length ", length, " at offset ", dataOffset,
                      " runs past the data area (", layout.data.size(), " bytes)");
    record.data = *bytes;
    return true;
}

// Reference `index` of the record's type, at `at` from the type list.
bool readReference(const Layout& layout, size_t at, size_t index, ResourceRecord& record)
{
    uint16_t nameOffset = 0;
    uint32_t dataOffset = 0;
    const ByteView list = layout.typeList;
    if (!list.contains(at, ReferenceListEntry::size) ||
        !list.read(at, ReferenceListEntry::id, record.id) ||
        !list.read(at, ReferenceListEntry::nameOffset, nameOffset) ||
        !list.read(at, ReferenceListEntry::attributes, record.attributes) ||
        !list.read(at, ReferenceListEntry::dataOffset, dataOffset))
        return Refuse("resource map: reference ", index, " of '", fourCCString(record.type),
                      "' at type list offset ", at, " runs past the end of the map");
    return readName(layout, nameOffset, index, record) &&
           readData(layout, dataOffset, index, record);
}

}  // namespace

std::optional<ResourceForkRanges> ResourceMap::ReadHeader(ByteView header, uint64_t forkLength)
{
    ResourceForkRanges ranges;
    if (!header.read(0, ResourceHeader::dataOffset, ranges.dataOffset) ||
        !header.read(0, ResourceHeader::mapOffset, ranges.mapOffset) ||
        !header.read(0, ResourceHeader::dataLength, ranges.dataLength) ||
        !header.read(0, ResourceHeader::mapLength, ranges.mapLength))
        return Refuse("resource header: ", header.size(), " bytes, shorter than the header (",
                      ResourceHeader::size, " bytes)");
    if (uint64_t(ranges.dataOffset) + ranges.dataLength > forkLength)
        return Refuse("resource header: data area (offset ", ranges.dataOffset, ", length ",
                      ranges.dataLength, ") runs past the end of the fork (", forkLength,
                      " bytes)");
    if (uint64_t(ranges.mapOffset) + ranges.mapLength > forkLength)
        return Refuse("resource header: map (offset ", ranges.mapOffset, ", length ",
                      ranges.mapLength, ") runs past the end of the fork (", forkLength,
                      " bytes)");
    return ranges;
}

std::optional<ResourceMap> ResourceMap::Parse(std::vector<uint8_t> fork)
{
    return Parse(SharedBytes(std::move(fork)));
}

std::optional<ResourceMap> ResourceMap::Parse(SharedBytes fork)
{
    ResourceMap result;
    result.fork_ = std::move(fork);
    auto layout = readLayout(result.fork_.view(), result.attributes_);
    if (!layout) return std::nullopt;
    int16_t lastType = 0;
    if (!layout->typeList.read(0, TypeList::typeCountMinusOne, lastType) || lastType < -1)
        return Refuse("resource map: negative type count (", lastType + 1, ")");

    // Reference lists may overlap; a map cannot name more resources than
    // its bytes could list apart, which keeps hostile counts from
    // multiplying.
    const size_t maxReferences = layout->map.size() / ReferenceListEntry::size;
    const size_t typeCount = size_t(lastType + 1);
    for (size_t t = 0; t < typeCount; ++t) {
        const size_t at = TypeList::size + t * TypeListEntry::size;
        uint32_t type = 0;
        uint16_t lastIndex = 0, listOffset = 0;
        if (!layout->typeList.read(at, TypeListEntry::type, type) ||
            !layout->typeList.read(at, TypeListEntry::countMinusOne, lastIndex) ||
            !layout->typeList.read(at, TypeListEntry::referenceListOffset, listOffset))
            return Refuse("resource map: type list entry ", t, " of ", typeCount,
                          " runs past the end of the map (", layout->map.size(), " bytes)");
        const size_t references = result.records_.size() + lastIndex + 1u;
        if (references > maxReferences)
            return Refuse("resource map: type '", fourCCString(type), "' brings the references to ",
                          references, ", more than the map's ", layout->map.size(),
                          " bytes can list (", maxReferences, ")");
        for (size_t r = 0; r <= lastIndex; ++r) {
            ResourceRecord record;
            record.type = type;
            if (!readReference(*layout, listOffset + r * ReferenceListEntry::size, r, record))
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
