// Small pieces shared by the file and folder specifications.
#pragma once

#include <optional>
#include <string>

#include "files/PlatformFileRefs.h"
#include "support/LxString.h"
#include "support/MacErrors.h"

class LxFileSpecification;
class LxDirectorySpecification;

namespace SpecificationHelpers {

std::string PathOf(const LxFileSpecification& file);
std::string PathOf(const LxDirectorySpecification& folder);

// `name` inside `folder`, with one "/" between them when `folder` lacks it.
LxString Join(const std::string& folder, const std::string& name);
// Whether the path names something: a directory entry, or a logical Mac
// file whose pieces are kept beside it.
bool LogicalFileExists(const std::string& path);
// Copies `text` zero-terminated into the buffer, cut to fit; -50 for a
// missing buffer.
int CopyToBuffer(const std::string& text, unsigned char* buffer, unsigned long size);
// UTF-16 of `text` into the counted name; -37 when it is not UTF-8 or is
// longer than 255 units.
int CopyToUniStr(const std::string& text, HFSUniStr255& out);
// The process's current folder; empty when it cannot be had.
std::string CurrentFolder();
// "file://" and the absolute path, percent-escaped; nothing for empty text.
std::optional<LxString> FileURL(const std::string& path);

// A specification's FSRef or FSSpec: made from its path once the item is
// found to exist, then kept; fnfErr while it does not exist.
template <typename Record>
int CachedRecord(const std::string& path, bool exists, Record& cache, bool& valid, Record& out)
{
    if (!valid) {
        if (!exists) return MacError::fnfErr;
        cache.path = path;
        valid = true;
    }
    out = cache;
    return 0;
}

}  // namespace SpecificationHelpers
