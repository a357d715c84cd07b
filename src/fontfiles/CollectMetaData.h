// Identifies one face of a font file from end to end: kind, names from the
// naming table or from Type 1 text, platform and kerning checksum.
#pragma once

#include <cstdint>

#include "fontfiles/ReadOptions.h"
#include "resourcefork/ResourceHandle.h"
#include "support/LxString.h"

class TypeprobeResourceFile;

// The PostScript metadata of a face: from the resource files (the FOND's
// printer font) first; when they do not give it, from the outline file's
// text (*printerFontName when set, else `path`). 0 when either read it;
// otherwise the text reader's result.
int CollectPSMetaData(const TypeprobeResourceFile* file, const LxString& path,
                      const ResourceHandle* fond, int16_t style, LxString* printerFontName,
                      LxString* kind, LxString* foundry, LxString* family, LxString* version,
                      LxString* postScriptName, LxString* displayName, LxString* fullName);

// Every output may be null (not wanted). `printerFontName` is handed to the
// PostScript reader only, which may read it as the file to read and sets it
// to the file it read. Returns 0 on success, 3 when there are no usable sfnt
// data or name records, -1 when the platform could not be computed, else the
// PostScript reader's code (6 also counts as success). `options` chooses
// how the kind is recognised.
int CollectMetaData(const TypeprobeResourceFile* resourceFile, const LxString& path,
                    const ResourceHandle* fond, int16_t style, LxString* printerFontName,
                    LxString* kind, LxString* platform, LxString* foundry, LxString* family,
                    LxString* version, LxString* postScriptName, LxString* displayName,
                    LxString* fullName, uint32_t* kerningChecksum, const ReadOptions& options);
