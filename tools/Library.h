// The identification library, opened the first time a command needs it.
// Questions the catalog answers alone, and help, start without loading the
// library and everything it depends on (ICU, the decompressors), which costs
// more than such a question does.
#pragma once

#include <stdexcept>

#include <plist/plist.h>

#include "typeprobe/typeprobe.h"

#define TYPEPROBE_TOOL_LIBRARY_FUNCTIONS(X)                                                \
    X(TP_CreateSpecifierWithOptions) X(TP_SpecifierFree) X(TP_GetFontCount)                 \
    X(TP_GetPostScriptName) X(TP_GetKindName) X(TP_GetFamilyName) X(TP_GetFullName)         \
    X(TP_GetDisplayName) X(TP_GetVersion) X(TP_GetPlatform) X(TP_GetPrinterFont)            \
    X(TP_GetWindowsMMFile) X(TP_GetFoundryName) X(TP_GetLegacyFoundryName) X(TP_GetWrapper) \
    X(TP_GetContainer) X(TP_GetTypeprobeChecksum) X(TP_GetLegacyTypeprobeChecksum)          \
    X(TP_GetKerningChecksum) X(TP_GetOutlineFileSize) X(TP_GetClassificationFromFamily)     \
    X(TP_GetStyles) X(TP_ExplainRefusalsWithOptions) X(TP_GetXMLRepresentation)             \
    X(TP_GetPropertyListRepresentation) X(TP_Match) X(TP_SeparateTTCFonts)                  \
    X(TP_GetTypeprobeVersion)

// The property-list functions of "plist" output, taken from the libplist
// that the library loads: the tool starts without it.
#define TYPEPROBE_TOOL_PLIST_FUNCTIONS(X)                                                   \
    X(plist_new_array) X(plist_free) X(plist_from_xml) X(plist_to_xml) X(plist_to_xml_free) \
    X(plist_get_node_type) X(plist_copy) X(plist_array_get_size) X(plist_array_get_item)    \
    X(plist_array_append_item) X(plist_dict_set_item) X(plist_new_string)

namespace tpcli {

// The library could not be opened, or lacks a function the tool calls.
class LibraryUnavailable : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct LibraryFunctions {
#define TYPEPROBE_TOOL_LIBRARY_MEMBER(name) decltype(&::name) name = nullptr;
    TYPEPROBE_TOOL_LIBRARY_FUNCTIONS(TYPEPROBE_TOOL_LIBRARY_MEMBER)
    TYPEPROBE_TOOL_PLIST_FUNCTIONS(TYPEPROBE_TOOL_LIBRARY_MEMBER)
#undef TYPEPROBE_TOOL_LIBRARY_MEMBER
    const char* pathKey = nullptr;  // kTP_PathKey
};

// The library's functions, loaded once per process (the tool's tests link
// the library and define this themselves). Throws LibraryUnavailable.
const LibraryFunctions& Library();

}  // namespace tpcli
