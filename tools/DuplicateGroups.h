// Grouping identified faces for "duplicates": faces with the same identity
// checksum are the same release; faces that share a PostScript name (letter
// case aside) under different checksums are conflicting releases.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "FontFile.h"

namespace tpcli {

struct FaceAt {
    std::string path;
    size_t facesInFile = 1;
    Face face;
};

struct SameRelease {
    unsigned long checksum = 0;
    std::vector<FaceAt> faces;  // two or more, in input order
};

struct Release {
    unsigned long checksum = 0;
    std::vector<FaceAt> faces;
};

struct Conflict {
    std::string postScriptName;     // as first met
    std::vector<Release> releases;  // two or more, in order of first appearance
};

struct DuplicateGroups {
    std::vector<SameRelease> sameRelease;
    std::vector<Conflict> conflicts;
};

// Groups keep the order in which their first face appears.
DuplicateGroups GroupDuplicates(const std::vector<FaceAt>& faces);

}  // namespace tpcli
