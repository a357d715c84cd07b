// The Macintosh resource file format, read: a 16-byte header (data offset,
// map offset, data length, map length), a data area where each resource is
// a 32-bit length and its bytes, and a map with a type list (per type: code,
// count minus one, offset of its reference list), 12-byte references (ID,
// name offset or 0xFFFF, attributes, 24-bit data offset, reserved handle)
// and a name list of Pascal strings. Every offset and length is checked when
// the map is parsed: a malformed map is no resource file at all. Resources
// keep their map order, which indexed access follows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "support/ByteView.h"
#include "support/SharedBytes.h"

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
