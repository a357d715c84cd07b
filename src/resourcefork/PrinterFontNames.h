// File names of PostScript printer fonts (LWFN files): the classic 5+3+3
// abbreviation of a PostScript name, and the path where a family's printer
// font is expected beside its suitcase.
#pragma once

#include <optional>

#include "resourcefork/ResourceHandle.h"
#include "support/LxString.h"

class TypeprobeResourceFile;

// The 5+3+3 printer-font file name of the PostScript name `psName` (a
// Pascal string) into `dst` (at least 255 bytes): the first part keeps up
// to 5 characters, each later part up to 3; "ITC-" goes first and
// everything from the first "_" (short of the last character) after it.
void GetPostScriptFontFileName(const unsigned char* psName, unsigned char* dst);

// The printer font of a FOND style beside the resource file: nothing when
// the style has an outline in the file, has no printer name, or no regular
// file of that name (or a MacBinary "name.bin") exists.
std::optional<LxString> CreatePrinterPath(const TypeprobeResourceFile* file,
                                          const ResourceHandle* fond, int style);
