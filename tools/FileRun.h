// A run over the files of a command line, shared by "identify" and
// "duplicates": discovery, parallel identification, error lines, progress
// and the summary.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "FileIdentification.h"
#include "Summary.h"

namespace tpcli {

struct RunOptions {
    unsigned jobs = 0;      // worker threads; 0 means one per core
    bool noProgress = false;  // no progress bar even on a terminal
};

// Hands each file's report to `deliver` in discovery order, after its
// error line (if any) went to standard error. Unusable command-line paths
// are reported first and counted as errors.
Summary RunFiles(const std::vector<std::string>& paths, const IdentifyRequest& request,
                 const RunOptions& options, const std::function<void(const FileReport&)>& deliver);

}  // namespace tpcli
