// The tool's tests link the library: the tool's parts call it directly
// instead of opening the shared library.
#include "Library.h"

namespace tpcli {

const LibraryFunctions& Library()
{
    static const LibraryFunctions library = [] {
        LibraryFunctions linked;
#define TYPEPROBE_TOOL_LIBRARY_LINK(name) linked.name = &::name;
        TYPEPROBE_TOOL_LIBRARY_FUNCTIONS(TYPEPROBE_TOOL_LIBRARY_LINK)
        TYPEPROBE_TOOL_PLIST_FUNCTIONS(TYPEPROBE_TOOL_LIBRARY_LINK)
#undef TYPEPROBE_TOOL_LIBRARY_LINK
        linked.pathKey = kTP_PathKey;
        return linked;
    }();
    return library;
}

}  // namespace tpcli
