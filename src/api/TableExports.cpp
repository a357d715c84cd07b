// Exported queries of the knowledge tables that need no font array.
#include <algorithm>
#include <string>
#include <vector>

#include "api/CopyOut.h"
#include "tables/CClassificationMappings.h"
#include "tables/LxFontStyleScan.h"
#include "typeprobe/typeprobe.h"

extern "C" {

TP_API unsigned long TP_GetClassificationFromFamily(const char* family, const char* alternateFamily,
                                                    char* buffer, int bufferLength)
{
    if (!family || !buffer) return kTP_NullArgumentOrNotFound;
    std::string text;
    CClassificationMappings* mappings = CClassificationMappings::GetSharedClassificationMappings();
    if (mappings && mappings->IsLoaded()) {
        text = mappings->GetClassNameFromFontFamily(family).str();
        if (text == "--" && alternateFamily)
            text = mappings->GetClassNameFromFontFamily(alternateFamily).str();
    }
    CopyOut(text, buffer, bufferLength);
    return kTP_Success;
}

TP_API unsigned long TP_GetStyles(const char* firstName, const char* secondName,
                                  unsigned long maxStyles, int bufferLength,
                                  unsigned long* styleCount, char** styleBuffers)
{
    if (!firstName || !secondName || !styleCount || !styleBuffers || !styleBuffers[0])
        return kTP_NullArgumentOrNotFound;
    LxFontStyleScan::Initialize();
    std::vector<SBuiltinStyle> styles;
    if (LxFontStyleScan::ScanFontForBuiltinStyles(firstName, secondName, styles) == 0)
        return kTP_Success;
    *styleCount = std::min<unsigned long>(styles.size(), maxStyles);
    for (unsigned long i = 0; i < *styleCount; ++i)
        if (styleBuffers[i]) CopyOut(styles[i].display, styleBuffers[i], bufferLength);
    return kTP_Success;
}

}  // extern "C"
