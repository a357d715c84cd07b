// Exported per-face accessors that deliver one field as it is stored.
#include "api/AccessorFrame.h"

extern "C" {

TP_API unsigned long TP_GetKindName(TP_FontArray* array, unsigned long index, char* buffer,
                                    int bufferLength)
{
    return AccessText(array, index, kTP_AttrKindName, &TP_FontSpecifier::kindName, buffer,
                      bufferLength);
}

TP_API unsigned long TP_GetFamilyName(TP_FontArray* array, unsigned long index, char* buffer,
                                      int bufferLength)
{
    return AccessText(array, index, kTP_AttrFamilyName, &TP_FontSpecifier::familyName, buffer,
                      bufferLength);
}

TP_API unsigned long TP_GetPostScriptName(TP_FontArray* array, unsigned long index, char* buffer,
                                          int bufferLength)
{
    return AccessText(array, index, kTP_AttrPostScriptName, &TP_FontSpecifier::postScriptName,
                      buffer, bufferLength);
}

TP_API unsigned long TP_GetFullName(TP_FontArray* array, unsigned long index, char* buffer,
                                    int bufferLength)
{
    return AccessText(array, index, kTP_AttrFullName, &TP_FontSpecifier::fullName, buffer,
                      bufferLength);
}

TP_API unsigned long TP_GetDisplayName(TP_FontArray* array, unsigned long index, char* buffer,
                                       int bufferLength)
{
    return AccessText(array, index, kTP_AttrDisplayName, &TP_FontSpecifier::displayName, buffer,
                      bufferLength);
}

TP_API unsigned long TP_GetPrinterFont(TP_FontArray* array, unsigned long index, char* buffer,
                                       int bufferLength)
{
    return AccessText(array, index, kTP_AttrPrinterFontName, &TP_FontSpecifier::printerFontName,
                      buffer, bufferLength);
}

TP_API unsigned long TP_GetPlatform(TP_FontArray* array, unsigned long index, char* buffer,
                                    int bufferLength)
{
    return AccessText(array, index, kTP_AttrPlatform, &TP_FontSpecifier::platform, buffer,
                      bufferLength);
}

TP_API unsigned long TP_GetKerningChecksum(TP_FontArray* array, unsigned long index,
                                           unsigned long* value)
{
    return AccessNumber(array, index, kTP_AttrKerningChecksum, &TP_FontSpecifier::kerningChecksum,
                        value);
}

TP_API unsigned long TP_GetTypeprobeChecksum(TP_FontArray* array, unsigned long index,
                                             unsigned long* value)
{
    return AccessNumber(array, index, kTP_AttrTypeprobeChecksum,
                        &TP_FontSpecifier::typeprobeChecksum, value);
}

TP_API unsigned long TP_GetLegacyTypeprobeChecksum(TP_FontArray* array, unsigned long index,
                                                   unsigned long* value)
{
    return AccessNumber(array, index, kTP_AttrLegacyTypeprobeChecksum,
                        &TP_FontSpecifier::legacyTypeprobeChecksum, value);
}

TP_API unsigned long TP_GetOutlineFileSize(TP_FontArray* array, unsigned long index,
                                           unsigned long* value)
{
    return AccessNumber(array, index, kTP_AttrOutlineFileSize, &TP_FontSpecifier::outlineFileSize,
                        value);
}

}  // extern "C"
