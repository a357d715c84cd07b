// Names, version and kind of a PostScript font family kept in resource
// files: the family's FOND in its suitcase and the POST resources of the
// printer font (LWFN) beside it. The outputs follow the Type 1 gatherer's
// slot order: kind, foundry, family, version, PostScript name, display name,
// full name; each may be null.
#pragma once

#include <cstdint>

#include "resourcefork/ResourceHandle.h"
#include "support/LxString.h"

class TypeprobeResourceFile;

// Runs the Type 1 gatherer over a resource's data. 0 when the data names a
// PostScript name, -1 otherwise (also for a null or empty handle).
int GatherMetaDataFromHandle(const ResourceHandle* handle, LxString* kind, LxString* foundry,
                             LxString* family, LxString* version, LxString* postScriptName,
                             LxString* displayName, LxString* fullName);

// Gathers from the sfnt resources of a style, ascending by ID, up to the
// first that names a PostScript name; its status, else the last one, else
// -1 (no resources, null file).
int Collect_sfnt_MetaDataFromPrinterInfo(const TypeprobeResourceFile* file,
                                         const ResourceHandle* fond, int16_t style,
                                         LxString* kind, LxString* foundry, LxString* family,
                                         LxString* version, LxString* postScriptName,
                                         LxString* displayName, LxString* fullName);

// The metadata of one style of a PostScript family. `path` is the suitcase;
// the printer font is looked for beside it under its 5+3+3 name, which goes
// to *printerFontName as formed (the logical Mac file name: the file layer
// finds it in a container such as "NAME.bin"). 0 when the printer font's
// POST data was read; -1 for a null file or FOND, a style with an outline in
// the suitcase, or a printer font without POST 501; 6 when no printer-font
// name can be formed or the printer font cannot be opened as a resource file.
int CollectPSMetaDataMac(const TypeprobeResourceFile* file, const LxString& path,
                         const ResourceHandle* fond, int16_t style, LxString* printerFontName,
                         LxString* kind, LxString* foundry, LxString* family, LxString* version,
                         LxString* postScriptName, LxString* displayName, LxString* fullName);
