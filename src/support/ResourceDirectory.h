// Where the library's data files (the knowledge tables) live.
#pragma once

#include <string>

namespace ResourceDirectory {

// TYPEPROBE_RESOURCE_DIR when set and non-empty; otherwise share/typeprobe
// beside the folder of the loaded library file (lib/../share/typeprobe),
// which holds in the build tree and in an installed prefix alike. Ends
// without a "/". Empty when nothing can be found.
std::string Path();

// Path() + "/" + name, or empty when there is no resource folder.
std::string FilePath(const std::string& name);

}  // namespace ResourceDirectory
