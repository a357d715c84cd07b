// The faces of a TrueType collection, each read from its rebuilt
// standalone sfnt.
#pragma once

#include "api/FontArray.h"
#include "fontfiles/ReadOptions.h"
#include "fontfiles/TrueTypeCollectionFont.h"

// Appends one face per readable face of the collection at `path`; faces
// without a platform verdict are skipped, and so are faces without names
// unless every format is read.
void AppendCollectionFaces(const char* path, unsigned long attributeMask,
                           const ReadOptions& options, TP_FontArray& array);
// The same for a collection already read, such as one a WOFF2 at `path`
// wraps.
void AppendCollectionFaces(const TrueTypeCollectionFont& collection, const char* path,
                           unsigned long attributeMask, const ReadOptions& options,
                           TP_FontArray& array);
