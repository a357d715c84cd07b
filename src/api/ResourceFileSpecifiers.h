// The faces of every file that is not a TrueType collection: one per style
// of each font family resource, or one for a file without any.
#pragma once

#include "api/FontArray.h"
#include "fontfiles/ReadOptions.h"

void AppendResourceFileFaces(const char* path, unsigned long attributeMask,
                             const ReadOptions& options, TP_FontArray& array);
