// The platform verdict and the kerning checksum of an sfnt in memory.
#pragma once

#include <cstdint>

#include <optional>

#include "fontfiles/SfntDirectory.h"
#include "support/ByteView.h"
#include "support/LxString.h"

// "crossplatform" when the font is TrueType or OpenType and carries every
// table a Windows system needs (all valid), else "mac". Returns 0 (output
// untouched) for a null output or a font of 4 bytes or fewer, else 1.
int GetPlatformTTF(ByteView font, LxString* platform);

// The table the kerning checksum sums: the first present of "kern", "GPOS"
// and "glyf", even if a later one would validate.
std::optional<TDirectoryEntry> KerningChecksumTable(ByteView font);

// Checksum of the "kern" table, else "GPOS", else "glyf". Returns 0 (output
// untouched) when the chosen table is missing or invalid, else 1.
int GetTrueTypeKerningTableChecksum(ByteView font, uint32_t* checksum);
