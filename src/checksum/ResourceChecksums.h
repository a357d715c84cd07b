// Identity checksums of a face kept in resource files: its outline or bitmap
// resources, its printer font, and the two Typeprobe checksums built on
// them with the whole file as the last resort.
#pragma once

#include <cstdint>

#include "resourcefork/ResourceHandle.h"
#include "support/LxString.h"

class TypeprobeResourceFile;

// CRC continued over the style's sfnt resources, in ascending ID order;
// only when that leaves 0, over its NFNT and then FONT resources of each ID.
unsigned long ChecksumNFNTsfntFONT(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                                   int16_t style, unsigned long crc);

// CRC continued over the POST resources 501, 502, ... of the style's
// printer font. A printer font that is no resource file gives its
// whole-file CRC from 0 instead. `crc` unchanged without a printer font.
unsigned long ChecksumPrinterFile(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                                  int16_t style, unsigned long crc);

// The Typeprobe checksum of a resource-file face; `legacyChecksum` receives
// the legacy one. Both start from the CRC of the style's kerning pairs and
// go on over the printer font, else the face's resources, else the whole
// file at `fontFilePath` (its data fork alone for a cross-platform face).
unsigned long GetVantorChecksum(const LxString& fontFilePath, const TypeprobeResourceFile* file,
                                const ResourceHandle* fond, int16_t style, bool crossPlatform,
                                unsigned long& legacyChecksum);

// The kerning byte sum of a style; 0 for a null handle.
unsigned long GetVaultlineChecksum(const ResourceHandle* fond, int16_t style);
