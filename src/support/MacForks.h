// A logical Mac file on a disk without resource forks: its data fork, its
// resource fork and its Finder type and creator, wherever they are kept.
// Everything that reads a fork or the Finder info goes through here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct MacForkInfo {
    bool exists = false;            // the logical file was found
    uint64_t dataForkLength = 0;
    uint64_t resourceForkLength = 0;
    bool hasFinderInfo = false;     // type and creator below are real
    uint32_t fileType = 0;
    uint32_t fileCreator = 0;
};

namespace MacForks {

// Resolves the logical file at `path`. Plain files answer "data fork only".
MacForkInfo Describe(const std::string& path);

// Read a whole fork; false when the fork is missing or unreadable.
bool ReadDataFork(const std::string& path, std::vector<uint8_t>& out);
bool ReadResourceFork(const std::string& path, std::vector<uint8_t>& out);

}  // namespace MacForks
