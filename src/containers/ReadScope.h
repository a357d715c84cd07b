// Read once: while a ReadScope lives on a thread, each file that is read on
// that thread is opened and mapped at most once, each logical Mac file's
// forks are looked up once, and every later read of the same bytes is served
// from memory (FileBytes, ExtendedAttributes and MacForks consult it).
// Identification opens one per call, so that the metadata readers and the
// checksums share one read of each fork.
//
// Scopes nest: an inner scope shares the outermost one's memory, which is
// released when the outermost ends. Nothing is kept from one scope to the
// next, so a file changed between two calls is read afresh. A write through
// the library inside a scope makes it forget everything it knew.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

#include "containers/MacForks.h"
#include "support/SharedBytes.h"

class ReadScope {
public:
    ReadScope();
    ~ReadScope();
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

    // What the active scope knows about one file.
    struct FileState {
        std::optional<uint64_t> regularSize;  // nothing: missing or not a regular file
        bool mapTried = false;
        std::optional<SharedBytes> bytes;     // the whole file, once mapped
    };

    // The CRC-32s of a logical file's forks, once the whole-file checksum
    // has read them: every face of a font file may fall back to it.
    struct FileCRCs {
        unsigned long total = 0;  // data fork, then resource fork
        bool resourceForkRead = false;
        bool hasDataFork = false;  // opened and not empty
        unsigned long dataFork = 0;
    };

    struct Memory {
        std::unordered_map<std::string, FileState> files;
        std::unordered_map<std::string, MacFile> resolved;
        std::map<std::pair<std::string, std::string>, std::optional<SharedBytes>> attributes;
        std::unordered_map<std::string, FileCRCs> crcs;
        // Web fonts decoded, by logical path; nothing for one that is not.
        std::unordered_map<std::string, std::optional<SharedBytes>> webFonts;
    };

    // This thread's memory, or null when no scope is active.
    static Memory* Active();
    // Drops everything the active scope knows (after a write).
    static void Forget();
};
