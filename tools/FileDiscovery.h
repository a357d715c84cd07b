// Turns the paths of a command line into the list of files to identify:
// folders are walked recursively in name order, Mac sidecars are left out
// (a sidecar named directly stands for the file it belongs to), and each
// file on disk is listed once, under the first name it was reached by.
//
// A logical Mac file NAME kept as a MacBinary NAME.bin can be named either
// way; both mean the file NAME.bin, which is what a folder walk lists. When
// NAME and NAME.bin both exist they are two files.
//
// Walks follow symbolic links to files but not to folders, so a link cycle
// cannot trap them; a folder named directly is walked even through a link.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

namespace tpcli {

struct FileTask {
    std::string path;       // as reported: given, or the walk's path
    bool named = false;     // given on the command line (so a non-font is an error)
    // What the walk learned of a regular file that is no link, so that a
    // rescan need not ask again.
    std::optional<struct stat> status;
};

struct PathProblem {
    std::string path;
    std::string message;    // "No such file or directory", ...
};

struct Discovery {
    std::vector<FileTask> files;
    std::vector<PathProblem> problems;  // paths that could not be used, in command-line order
};

Discovery DiscoverFiles(const std::vector<std::string>& paths);

}  // namespace tpcli
