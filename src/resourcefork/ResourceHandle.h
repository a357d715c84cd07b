// One resource's data handed to a caller: an owned copy of the bytes with
// the resource's type, ID and name. The requester owns it; dropping the
// pointer releases it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/ByteView.h"

struct ResourceHandle {
    uint32_t type = 0;
    int16_t id = 0;
    bool hasName = false;
    std::string name;           // Pascal string bytes, at most 255
    std::vector<uint8_t> data;
    uint32_t key = 0;           // which resource of the open file it came from

    size_t size() const { return data.size(); }
    ByteView view() const { return ByteView(data.data(), data.size()); }
};

using ResourceHandlePtr = std::unique_ptr<ResourceHandle>;
