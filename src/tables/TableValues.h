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

// The property list in the file at `path` when its root is of `rootType`;
// nothing for an empty path, a broken file or a table of the wrong shape
// (as unreadable as a broken file).
PlistHolder LoadTableFile(const std::string& path, plist_type rootType, int options);

// The process-wide instance of a table, made and loaded by the first caller
// (safe when several threads ask at once) and never destroyed, so that it
// outlives everything that may still look names up at exit.
template <typename Table, typename Load>
Table* ProcessWideTable(Load load)
{
    static Table* const shared = [&] {
        auto* table = new Table();
        load(*table);
        return table;
    }();
    return shared;
}
