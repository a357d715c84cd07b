// One identified font face: its names, kind, version, checksums, sizes, Mac
// resource numbers and file codes, plus the attribute bits that were asked
// for when it was made.
#pragma once

#include <cstdint>

#include "support/LxString.h"

class TP_FontSpecifier {
public:
    TP_FontSpecifier();
    TP_FontSpecifier(const TP_FontSpecifier& other);
    TP_FontSpecifier& operator=(const TP_FontSpecifier& other);
    ~TP_FontSpecifier();

    // Attributes valid in both records whose values are equal; names compare
    // case-blind, numbers match only when non-zero.
    unsigned long MatchingAttributes(const TP_FontSpecifier& other) const;
    // Attributes valid in both records, non-empty (non-zero) on both sides and
    // different; names compare byte for byte.
    unsigned long DifferingAttributes(const TP_FontSpecifier& other) const;

    LxString kindName;
    LxString familyName;
    LxString postScriptName;
    LxString fullName;
    LxString displayName;
    LxString foundryName;
    LxString version;
    LxString printerFontName;
    LxString platform;
    // What held the face in its file, and the Mac container its bytes came
    // through ("" for an ordinary file); always set, never compared.
    LxString wrapper;
    LxString container;
    uint32_t kerningChecksum = 0;
    uint32_t typeprobeChecksum = 0;
    uint32_t legacyTypeprobeChecksum = 0;
    uint32_t outlineFileSize = 0;
    int32_t fondStyle = -1;
    int32_t firstResourceID = -1;
    int32_t fondResourceID = -1;
    uint32_t fileCreator = 0;
    uint32_t fileType = 0;
    uint32_t outlineFileCreator = 0;
    uint32_t outlineFileType = 0;
    uint32_t validAttributes = 0;
};
