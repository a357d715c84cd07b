// Where classic Mac files keep their resource forks and Finder info on other
// disks, seen from a folder listing: these entries belong to another file
// and are never fonts of their own.
//   dir/._name                          AppleDouble sidecar of dir/name
//   dir/.AppleDouble/name               netatalk sidecar of dir/name
//   top/__MACOSX/sub/._name             unzip's copy of the sidecar of top/sub/name
#pragma once

#include <optional>
#include <string>

namespace tpcli {

// A folder that holds only sidecars (".AppleDouble", "__MACOSX").
bool IsSidecarFolderName(const std::string& name);

// A "._name" file.
bool IsSidecarFileName(const std::string& name);

// Whether `path` lies in a sidecar place (either of the above, anywhere on
// the path).
bool IsSidecarPath(const std::string& path);

// The file a sidecar belongs to; nothing when `path` is not a sidecar or its
// owner cannot be named (a non-"._" file inside "__MACOSX").
std::optional<std::string> SidecarOwner(const std::string& path);

}  // namespace tpcli
