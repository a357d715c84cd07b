// The faces of a TrueType collection, each read from its rebuilt
// standalone sfnt.
#pragma once

#include "api/FontArray.h"

// Appends one face per readable face of the collection at `path`; faces
// without names or a platform verdict are skipped.
void AppendCollectionFaces(const char* path, unsigned long attributeMask, TP_FontArray& array);
