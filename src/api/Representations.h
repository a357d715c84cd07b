// What the XML and property-list forms of an array share: the nine
// attributes they carry, how the writers read them (through the exported
// accessors) and format numbers, how the readers turn text back into
// numbers, and how a written document reaches the caller.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "api/CopyOut.h"
#include "api/FontArray.h"
#include "typeprobe/typeprobe.h"

namespace representation {

// A carried text attribute: its element name (also its property-list key),
// field and bit.
struct TextAttribute {
    const char* name;
    LxString TP_FontSpecifier::*field;
    uint32_t bit;
};

// A carried number attribute, written in `base` 16 ("%08X") or 10 ("%d").
struct NumberAttribute {
    const char* name;
    int base;
    uint32_t TP_FontSpecifier::*field;
    uint32_t bit;
};

inline constexpr TextAttribute kTextAttributes[] = {
    {"FontKind", &TP_FontSpecifier::kindName, kTP_AttrKindName},
    {"Family", &TP_FontSpecifier::familyName, kTP_AttrFamilyName},
    {"PostScriptName", &TP_FontSpecifier::postScriptName, kTP_AttrPostScriptName},
    {"Foundry", &TP_FontSpecifier::foundryName, kTP_AttrFoundryName},
    {"Version", &TP_FontSpecifier::version, kTP_AttrVersion},
    {"OutlineFileName", &TP_FontSpecifier::printerFontName, kTP_AttrPrinterFontName},
};

inline constexpr NumberAttribute kNumberAttributes[] = {
    {"KerningChecksum", 16, &TP_FontSpecifier::kerningChecksum, kTP_AttrKerningChecksum},
    {"Checksum", 16, &TP_FontSpecifier::typeprobeChecksum, kTP_AttrTypeprobeChecksum},
    {"OutlineFileSize", 10, &TP_FontSpecifier::outlineFileSize, kTP_AttrOutlineFileSize},
};

using TextAccessor = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);
using NumberAccessor = unsigned long (*)(TP_FontArray*, unsigned long, unsigned long*);

// The writers' work buffer: longer values lose their tail.
constexpr int kWorkBufferSize = 512;

// A text attribute as its accessor delivers it. The result code is ignored
// on purpose: an attribute that is not valid is written as "".
inline std::string AccessorText(TextAccessor get, TP_FontArray* array, unsigned long index)
{
    char work[kWorkBufferSize] = {};
    get(array, index, work, kWorkBufferSize);
    return work;
}

inline std::string FormatChecksum(unsigned long value)
{
    char text[24];
    std::snprintf(text, sizeof text, "%08lX", value);
    return text;
}

// "%d" of a 32-bit value: sizes from 2^31 up are written negative, as intended.
inline std::string FormatFileSize(unsigned long value)
{
    char text[24];
    std::snprintf(text, sizeof text, "%d", int(int32_t(uint32_t(value))));
    return text;
}

// C's strtol with a 32-bit long: leading white space skipped, parsing stops
// at the first invalid character, "" gives 0, values beyond the signed
// 32-bit range saturate. So a checksum whose top bit is set reads back as
// 2147483647; that asymmetry is intended.
inline uint32_t ParseLong32(const char* text, int base)
{
    long long value = std::strtoll(text, nullptr, base);
    value = std::clamp<long long>(value, INT32_MIN, INT32_MAX);
    return uint32_t(int32_t(value));
}

// A face rebuilt from a stored form: nothing valid yet, and resource
// numbers and codes 0 rather than the -1 of a new specifier (intended).
inline TP_FontSpecifier NewStoredFace()
{
    TP_FontSpecifier face;
    face.validAttributes = 0;
    face.fondStyle = face.firstResourceID = face.fondResourceID = 0;
    face.fileCreator = face.fileType = face.outlineFileCreator = face.outlineFileType = 0;
    return face;
}

// Hands a document to the caller. `length` holds the capacity on entry and
// the size needed with the terminator on return. The capacity is compared
// unsigned, but a capacity below 1 taken as signed writes nothing.
inline unsigned long DeliverDocument(const std::string& document, bool hasFaces, char* buffer,
                                     unsigned long* length)
{
    const unsigned long capacity = *length;
    const long signedCapacity = long(capacity);
    if (signedCapacity >= 1) CopyOut(document, buffer, int(std::min<long>(signedCapacity, INT_MAX)));
    *length = document.size() + 1;
    if (document.size() >= capacity) return kTP_IndexOutOfRange;
    return hasFaces ? kTP_Success : kTP_NullArgumentOrNotFound;
}

}  // namespace representation
