// Font type codes, kind names and the kind a file name's extension implies.
#pragma once

// Font type codes of an analysed file.
enum FontTypeCode : short {
    kFontTypeTrueType = 0,
    kFontTypeOpenTypeTT = 1,
    kFontTypeOpenTypePS = 2,
    kFontTypePostScript = 3,
    kFontTypeMultipleMaster = 4,
    kFontTypeCollection = 5,
    kFontTypeUnknown = 6,
};

// Extension kinds, in the order of the extension table.
enum ExtensionKind : short {
    kExtensionTTF = 0,
    kExtensionOTF = 1,
    kExtensionPS = 2,
    kExtensionDFont = 3,
    kExtensionTTC = 4,
    kExtensionFOT = 5,
    kExtensionFNT = 6,
    kExtensionFON = 7,
    kExtensionPFM = 8,
    kExtensionPFB = 9,
    kExtensionMMM = 10,
    kExtensionINF = 11,
    kExtensionUnknown = 12,
};

// The kind names users see, indexed by font type code 0 to 5.
inline constexpr const char* kKindTrueType = "TrueType";
inline constexpr const char* kKindOpenTypeTT = "OpenType - TT";
inline constexpr const char* kKindOpenTypePS = "OpenType - PS";
inline constexpr const char* kKindPostScript = "PostScript";
inline constexpr const char* kKindMultipleMaster = "PostScript - MM";
inline constexpr const char* kKindCollection = "TrueType Collection";

// The extension kind of a path: the text after its last "." when that
// suffix (dot included) is shorter than 7 characters, lower-cased.
short fontTypeFromExtension(const char* path);
