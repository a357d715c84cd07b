// A logical Mac file on a disk without resource forks: its data fork, its
// resource fork and its Finder type and creator, wherever they are kept.
// Everything that reads a fork or the Finder info goes through here.
//
// Resolve(path) tries these places, in this order:
//  1. macOS only: the native resource fork (path/..namedfork/rsrc) and the
//     com.apple.FinderInfo attribute.
//  2. Extended attributes user.com.apple.ResourceFork and
//     user.com.apple.FinderInfo, then netatalk's user.org.netatalk.ResourceFork
//     and user.org.netatalk.Metadata (an AppleDouble header).
//  3. AppleDouble sidecars: dir/._name (macOS on SMB, FAT, exFAT and in zip
//     files), netatalk's dir/.AppleDouble/name, then
//     ancestor/__MACOSX/<path below ancestor>/._name for each ancestor folder,
//     nearest first (what unzip leaves of a zip made on a Mac).
//  4. The file itself as AppleSingle, then as MacBinary I, II or III.
// Places 1 to 3 leave the data fork in the file itself. The resource fork is
// the first non-empty one found in 1 to 3, and the Finder info the first one
// found there whose type or creator is not zero (each looked up on its own:
// an attribute can hold one without the other). Only when 1 to 3 give no
// resource fork is the file read as a container (4); a container then gives
// both forks, and its Finder info wins over that of 1 to 3, which describes
// the envelope. When `path` does not exist, `path.bin` stands in for it if
// that is a container, so a printer font named "NimbuSanReg" by its suitcase
// is found as "NimbuSanReg.bin". A path that is not a regular file (a folder)
// exists but has no forks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/ByteView.h"
#include "support/SharedBytes.h"

struct MacForkInfo {
    bool exists = false;            // the logical file was found
    uint64_t dataForkLength = 0;
    uint64_t resourceForkLength = 0;
    bool hasFinderInfo = false;     // type and creator below are real
    uint32_t fileType = 0;
    uint32_t fileCreator = 0;
};

// Where one fork's bytes are.
struct ForkLocation {
    enum class Kind : uint8_t {
        Missing,    // no such fork
        FileRange,  // bytes [offset, offset + length) of `file` (a whole file too)
        Attribute,  // the value of the extended attribute `attribute` of `file`
        NamedFork,  // macOS: file/..namedfork/rsrc
    };
    Kind kind = Kind::Missing;
    std::string file;
    std::string attribute;
    uint64_t offset = 0;
    uint64_t length = 0;
};

// The format that holds a fork; it decides how the fork is written back.
enum class MacContainer : uint8_t {
    None,
    PlainFile,          // the data fork of an ordinary file
    NativeFork,         // macOS resource fork
    ExtendedAttribute,  // an attribute holding the fork raw
    AppleDouble,        // a sidecar file
    AppleSingle,        // the file itself
    MacBinary,          // the file itself
};

// How a container is named to users: "" for an ordinary file,
// "MacBinary", "AppleSingle", "AppleDouble sidecar", "extended attributes"
// or "native resource fork".
const char* ContainerName(MacContainer container);

struct MacFile {
    bool exists = false;
    std::string path;  // the logical path asked for
    ForkLocation dataFork;
    MacContainer dataContainer = MacContainer::None;
    ForkLocation resourceFork;
    MacContainer resourceContainer = MacContainer::None;
    bool hasFinderInfo = false;
    uint32_t fileType = 0;
    uint32_t fileCreator = 0;

    MacForkInfo info() const;
};

namespace MacForks {

// Finds the forks and Finder info of the logical file at `path`; inside a
// ReadScope, once per path.
MacFile Resolve(const std::string& path);

// A whole fork, in place: a view of the mapped file for a fork kept in a
// file, else the attribute's value; nothing when it is missing or unreadable
// (a fork that changed length since Resolve is unreadable). Inside a
// ReadScope each fork is read once.
std::optional<SharedBytes> ForkBytes(const ForkLocation& fork);
// The data fork of the logical file at `path`, wherever its container keeps
// it: no bytes when the file has no data fork, nothing when the file is
// missing or its data fork cannot be read. Readers of a font's own bytes use
// this, never the file on disk, which may be a container.
std::optional<SharedBytes> DataForkBytes(const std::string& path);

// A copy of a whole fork; false as above.
bool ReadFork(const ForkLocation& fork, std::vector<uint8_t>& out);
// At most `length` bytes from the start of a fork.
bool ReadForkPrefix(const ForkLocation& fork, uint64_t length, std::vector<uint8_t>& out);

// Replace a fork inside the container it came from (the file, a sidecar, an
// attribute, an AppleSingle or MacBinary file); false when the fork is
// missing or the container cannot be rewritten. Used by editing only.
bool WriteDataFork(const MacFile& file, ByteView bytes);
bool WriteResourceFork(const MacFile& file, ByteView bytes);

// Resolves the logical file at `path`. Plain files answer "data fork only".
MacForkInfo Describe(const std::string& path);

// Read a whole fork; false when the fork is missing or unreadable.
bool ReadDataFork(const std::string& path, std::vector<uint8_t>& out);
bool ReadResourceFork(const std::string& path, std::vector<uint8_t>& out);

}  // namespace MacForks
