// Stand-ins for the Mac's file references on a system that has none. A
// reference is the path it was resolved from; resolving only proves that the
// logical file exists. Code that needs the file's bytes opens the path.
#pragma once

#include <cstdint>
#include <string>

struct FSRef {
    std::string path;
};

struct FSSpec {
    std::string path;
};

// A file name as counted UTF-16.
struct HFSUniStr255 {
    uint16_t length = 0;
    uint16_t unicode[255] = {};
};

// Path styles of the string forms of a path. Only the POSIX style exists here.
enum : long {
    kCFURLPOSIXPathStyle = 0,
    kCFURLHFSPathStyle = 1,
    kCFURLWindowsPathStyle = 2,
};
