// The commands of the tool. Each takes the options its command line filled
// in and returns the exit status.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "FileRun.h"

namespace tpcli {

struct IdentifyOptions {
    std::vector<std::string> paths;
    std::string format = "table";
    std::vector<std::string> attributes;  // names; empty means every attribute
    RunOptions run;
    bool quiet = false;                   // no summary line
    bool explain = false;                 // why a file is not a font
    bool classic = false;                 // the classic rules, not every format
};
int RunIdentify(const IdentifyOptions& options);

struct SplitOptions {
    std::string collection;
    std::string directory;
    std::string format = "table";
};
int RunSplit(const SplitOptions& options);

struct MatchOptions {
    std::string a, b;
    unsigned long faceA = 0, faceB = 0;
    std::string format = "table";
};
int RunMatch(const MatchOptions& options);

struct DuplicatesOptions {
    std::vector<std::string> paths;
    std::string format = "table";
    RunOptions run;
    bool quiet = false;
    bool classic = false;  // the classic rules, not every format
    std::optional<std::string> catalog;  // answer from this catalog ("" the default one)
};
int RunDuplicates(const DuplicatesOptions& options);

struct ClassifyOptions {
    std::string family;
    std::string alternate;  // empty: none
    std::string format = "table";
};
int RunClassify(const ClassifyOptions& options);

struct StylesOptions {
    std::string first;
    std::string second;
    std::string format = "table";
};
int RunStyles(const StylesOptions& options);

struct CatalogOptions {
    std::string action;  // "scan", "find", "list", "stats"
    std::string file;    // the catalog; empty: the default one
    std::vector<std::string> paths;
    std::string format = "table";
    RunOptions run;
    bool quiet = false;
    std::string postScriptName, family, foundry, kind, checksum;  // what "find" looks for
    bool ignoreCase = false;
};
int RunCatalog(const CatalogOptions& options);

int RunVersion(const std::string& format);

// The tool's own version ("1.2.0").
const char* ToolVersion();

}  // namespace tpcli
