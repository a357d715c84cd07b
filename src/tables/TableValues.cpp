#include "tables/TableValues.h"

#include <cstdint>

#include "support/XCFUtils.h"

bool TableString(plist_t node, size_t bufferSize, std::string& out)
{
    if (!node || plist_get_node_type(node) != PLIST_STRING) return false;
    uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    if (!text || length >= bufferSize) return false;
    out.assign(text, size_t(length));
    return true;
}

bool TableString(plist_t node, std::string& out)
{
    return TableString(node, SIZE_MAX, out);
}

uint32_t TableArraySize(plist_t array)
{
    if (!array || plist_get_node_type(array) != PLIST_ARRAY) return 0;
    return plist_array_get_size(array);
}

PlistHolder LoadTableFile(const std::string& path, plist_type rootType, int options)
{
    if (path.empty()) return nullptr;
    PlistHolder table(XCFUtils::XCFCreateCFPropertyListFromPath(path.c_str(), options));
    if (table && plist_get_node_type(table.get()) != rootType) table.reset();
    return table;
}
