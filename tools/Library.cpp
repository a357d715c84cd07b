#include "Library.h"

#include <dlfcn.h>

#include <string>

namespace tpcli {

namespace {

void* Symbol(void* handle, const char* name)
{
    void* found = dlsym(handle, name);
    if (!found) throw LibraryUnavailable(std::string("the typeprobe library lacks ") + name);
    return found;
}

// The one on the tool's run path (beside it once installed), else the
// system's.
void* OpenLibrary()
{
    if (void* handle = dlopen(TYPEPROBE_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL)) return handle;
    throw LibraryUnavailable(std::string("cannot load the typeprobe library: ") + dlerror());
}

LibraryFunctions Load()
{
    void* handle = OpenLibrary();
    LibraryFunctions library;
#define TYPEPROBE_TOOL_LIBRARY_RESOLVE(name) \
    library.name = reinterpret_cast<decltype(library.name)>(Symbol(handle, #name));
    TYPEPROBE_TOOL_LIBRARY_FUNCTIONS(TYPEPROBE_TOOL_LIBRARY_RESOLVE)
    // Found among the library's own dependencies.
    TYPEPROBE_TOOL_PLIST_FUNCTIONS(TYPEPROBE_TOOL_LIBRARY_RESOLVE)
#undef TYPEPROBE_TOOL_LIBRARY_RESOLVE
    library.pathKey = *static_cast<const char* const*>(Symbol(handle, "kTP_PathKey"));
    return library;
}

}  // namespace

const LibraryFunctions& Library()
{
    // A failed load throws out of the initialisation, so the next call tries
    // again and throws the same.
    static const LibraryFunctions library = Load();
    return library;
}

}  // namespace tpcli
