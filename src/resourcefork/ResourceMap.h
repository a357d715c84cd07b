// The Macintosh resource file format, read: a header placing the data area
// (each resource a 32-bit length and its bytes) and the map, which holds a
// type list, a reference list per type and a name list of Pascal strings.
// Every offset and length is checked when the map is parsed: a malformed map
// is no resource file at all. Resources keep their map order, which indexed
// access follows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "support/ByteView.h"
#include "support/SharedBytes.h"

// The resource header, at the start of the fork: where the data area and
// the map lie. The map starts with a copy of it.
struct ResourceHeader {
    static constexpr Field<uint32_t> dataOffset{0}, mapOffset{4}, dataLength{8}, mapLength{12};
    static constexpr size_t size = 16;
};

// The resource map header, from the map's start; the rest of its first 22
// bytes are reserved for the Resource Manager.
struct ResourceMapHeader {
    static constexpr Field<uint32_t> nextResourceMap{16};
    static constexpr Field<uint16_t> fileReference{20}, attributes{22}, typeListOffset{24},
        nameListOffset{26};
    static constexpr size_t size = 28;
};

// The type list, at the type list offset: the number of types minus one,
// then an entry per type.
struct TypeList {
    static constexpr Field<int16_t> typeCountMinusOne{0};
    static constexpr size_t size = 2;
};

// A type list entry; its reference list offset counts from the type list.
struct TypeListEntry {
    static constexpr Field<uint32_t> type{0};
    static constexpr Field<uint16_t> countMinusOne{4}, referenceListOffset{6};
    static constexpr size_t size = 8;
};

// A reference list entry; the name offset counts from the name list, 0xFFFF
// for none, and the data offset from the data area.
struct ReferenceListEntry {
    static constexpr Field<int16_t> id{0};
    static constexpr Field<uint16_t> nameOffset{2};
    static constexpr Field<uint8_t> attributes{4};
    static constexpr Field<UInt24> dataOffset{5};
    static constexpr Field<uint32_t> handle{8};  // reserved
    static constexpr size_t size = 12;
    static constexpr uint16_t kNoName = 0xFFFF;
};

// A resource in the data area: its length, then its bytes.
struct ResourceData {
    static constexpr Field<uint32_t> length{0};
    static constexpr size_t size = 4;
};

// Where the header places the data area and the map.
struct ResourceForkRanges {
    uint32_t dataOffset = 0, dataLength = 0, mapOffset = 0, mapLength = 0;
};

struct ResourceRecord {
    uint32_t type = 0;
    int16_t id = 0;
    uint8_t attributes = 0;
    bool hasName = false;
    std::string name;   // the Pascal string's bytes, at most 255
    ByteView data;      // owned by the map
    uint32_t key = 0;   // stays with the resource while the map is edited
};

class ResourceMap {
public:
    // Takes the fork's bytes; nothing when they are not a valid resource file.
    static std::optional<ResourceMap> Parse(std::vector<uint8_t> fork);
    // The same over bytes the map shares (a mapped fork) instead of owning.
    static std::optional<ResourceMap> Parse(SharedBytes fork);
    // The header at the start of `header` (at least its first 16 bytes) of a
    // fork `forkLength` bytes long; nothing unless both ranges lie inside.
    static std::optional<ResourceForkRanges> ReadHeader(ByteView header, uint64_t forkLength);
    // An empty map, to build a resource file from nothing.
    ResourceMap() = default;

    ResourceMap(ResourceMap&&) = default;
    ResourceMap& operator=(ResourceMap&&) = default;
    ResourceMap(const ResourceMap&) = delete;
    ResourceMap& operator=(const ResourceMap&) = delete;

    uint16_t attributes() const { return attributes_; }
    // Every resource, grouped by type in type-list order, each type's
    // references in map order.
    const std::vector<ResourceRecord>& records() const { return records_; }
    // The distinct types, in map order.
    std::vector<uint32_t> types() const;
    size_t count(uint32_t type) const;
    // The resource at a 0-based index within its type, in map order.
    const ResourceRecord* indexed(uint32_t type, size_t index) const;
    // The first resource of the type with this ID.
    const ResourceRecord* find(uint32_t type, int16_t id) const;
    const ResourceRecord* findKey(uint32_t key) const;

    // Editing; false when no resource has the key.
    bool remove(uint32_t key);
    bool setData(uint32_t key, std::vector<uint8_t> data);
    bool setInfo(uint32_t key, int16_t id, std::optional<std::string> name);
    // Appends a resource (after the others of its type); returns its key.
    uint32_t add(uint32_t type, int16_t id, std::optional<std::string> name,
                 std::vector<uint8_t> data, uint8_t attributes = 0);

private:
    ResourceRecord* mutableKey(uint32_t key);

    SharedBytes fork_;                         // the parsed bytes
    std::deque<std::vector<uint8_t>> added_;   // data given by editing
    std::vector<ResourceRecord> records_;
    uint16_t attributes_ = 0;
    uint32_t nextKey_ = 0;
};
