// The Macintosh resource file format, written: the layout the Resource
// Manager itself produces (header, 240 reserved bytes, data area, map with
// type list, reference lists and name list), so that any reader, ours or
// another, takes it back.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "resourcefork/ResourceMap.h"

namespace ResourceMapWriter {

// A resource file holding `records`: types in order of first appearance,
// each type's resources in the order given. Nothing when the resources do
// not fit the format's 24-bit data offsets or 16-bit map offsets.
std::optional<std::vector<uint8_t>> Write(const std::vector<ResourceRecord>& records,
                                          uint16_t mapAttributes = 0);

// The same for a whole map.
std::optional<std::vector<uint8_t>> Write(const ResourceMap& map);

}  // namespace ResourceMapWriter
