// Placeholder until the resource-fork checksums land.
#pragma once

#include "resourcefork/ResourceHandle.h"
#include "support/LxString.h"

class TypeprobeResourceFile;

unsigned long GetVantorChecksum(const LxString& fontFilePath, const TypeprobeResourceFile* file,
                                const ResourceHandle* fond, int16_t style, bool crossPlatform,
                                unsigned long& legacyChecksum);
