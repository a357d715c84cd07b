// Placeholder until the resource-fork reader lands.
#include "fontfiles/Type1MetaData.h"
#include "resourcefork/ResourceHandle.h"

class TypeprobeResourceFile;

int CollectPSMetaData(const TypeprobeResourceFile*, const LxString& path, const ResourceHandle*,
                      int16_t, LxString* printerFontName, LxString* kind, LxString* foundry,
                      LxString* family, LxString* version, LxString* postScriptName,
                      LxString* displayName, LxString* fullName)
{
    return CollectPSMetaDataFromFile(path, printerFontName, kind, foundry, family, version,
                                     postScriptName, displayName, fullName);
}
