// A web font in a file's data fork, decoded: the sfnt (or, from WOFF2, the
// collection) that its WOFF or WOFF2 wrapping holds.
#pragma once

#include <optional>
#include <string>

#include "support/ByteView.h"
#include "support/SharedBytes.h"

namespace WebFont {

// "WOFF" or "WOFF2" for bytes that start with that format's signature; null
// otherwise.
const char* FormatName(ByteView head);

// The font the web font in the data fork of the logical file at `path`
// wraps; nothing (after a reason, when the bytes claim to be a web font)
// when there is none. Inside a ReadScope each file is decoded once, so the
// readers and the checksums share one decoding.
std::optional<SharedBytes> DecodeDataFork(const std::string& path);

}  // namespace WebFont
