// PostScript names of a family's styles, from the FOND's style-mapping
// table: a base name (string 1) and, per style, a suffix descriptor whose
// bytes number the strings to append.
#pragma once

#include <cstddef>
#include <cstdint>

#include "resourcefork/ResourceHandle.h"

// Index 0-47 into the name-code index table: bold adds 1, italic 2,
// outline 4, shadow 8; then condense adds 16, or else extend 32 (condense
// wins when both are set; underline is ignored).
int GetStyleIndex(int style);

// The style's PostScript name into `dst` (a Pascal string of at most
// `limit` bytes, length byte included); empty when the FOND has no usable
// style-mapping table. Characters outside 0x20-0x7E become "?".
void GetPrinterFontNameFromResource(const ResourceHandle* fond, int style, unsigned char* dst,
                                    size_t limit);
