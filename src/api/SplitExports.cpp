// Exported splitting of a TrueType collection into standalone files.
#include <algorithm>
#include <string>
#include <vector>

#include "api/CopyOut.h"
#include "fontfiles/TrueTypeCollectionFont.h"
#include "typeprobe/typeprobe.h"

namespace {

// The writer adds a "/" only when the folder name holds one; give every
// folder exactly one separator: "out" and "out/" both name "out/N.ttf".
std::string FolderPrefix(std::string directory)
{
    while (directory.size() > 1 && directory.back() == '/') directory.pop_back();
    if (directory.find('/') == std::string::npos) directory = "./" + directory;
    return directory;
}

}  // namespace

extern "C" {

TP_API unsigned long TP_SeparateTTCFonts(const char* collectionPath, const char* directory,
                                         char* buffer, unsigned long* length,
                                         unsigned long* count)
{
    if (!collectionPath || !directory || !buffer || !length || !count)
        return kTP_NullArgumentOrNotFound;
    std::vector<std::string> written;
    const int result = TrueTypeCollectionFont::SeparateTTCFonts(
        collectionPath, FolderPrefix(directory), written);
    std::string list;
    for (const std::string& path : written) list += path + "\n";
    const unsigned long capacity = *length;
    *length = list.size() + 1;
    *count = written.size();
    // The copy-out rule takes an int length: larger buffers are used up to its range.
    CopyOut(list, buffer, int(std::min<unsigned long>(capacity, 0x7FFFFFFF)));
    if (result != 0) return static_cast<unsigned long>(result);
    return written.empty() ? kTP_NullArgumentOrNotFound : kTP_Success;
}

}  // extern "C"
