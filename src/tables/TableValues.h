// Small readers shared by the knowledge tables: text of property-list
// strings within a fixed buffer, and ownership of a loaded list.
#pragma once

#include <plist/plist.h>

#include <cstddef>
#include <memory>
#include <string>

struct PlistRelease {
    void operator()(plist_t node) const
    {
        if (node) plist_free(node);
    }
};
using PlistHolder = std::unique_ptr<void, PlistRelease>;

// The UTF-8 text of a string node when it fits, with its terminating zero,
// in `bufferSize` bytes; false (and `out` untouched) for any other node.
bool TableString(plist_t node, size_t bufferSize, std::string& out);

// The UTF-8 text of a string node, whatever its length.
bool TableString(plist_t node, std::string& out);

// Number of elements of an array node; 0 for anything else.
uint32_t TableArraySize(plist_t array);
