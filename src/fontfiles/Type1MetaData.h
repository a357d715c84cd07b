// Names of a PostScript Type 1 font (CID-keyed and Multiple Master
// included) from the clear text at the start of its outline, and the
// companion file names of Windows PostScript fonts.
#pragma once

#include <cstdint>
#include <string_view>

#include "support/ByteView.h"
#include "support/LxString.h"

// The six bytes before the text of a PFB segment: a 0x80 marker, the
// segment's type and its length.
struct PFBSegmentHeader {
    static constexpr Field<uint8_t> marker{0}, segmentType{1};
    static constexpr Field<uint32_t> length{2};
    static constexpr size_t size = 6;
};
constexpr uint8_t kPFBMarker = 0x80;
// The type of the first segment: clear text (the encrypted part follows).
constexpr uint8_t kPFBSegmentText = 1;

// The two bytes before the text of a POST resource: the chunk's type and a
// zero.
struct POSTChunkHeader {
    static constexpr Field<uint8_t> type{0}, reserved{1};
    static constexpr size_t size = 2;
};

// Type 1 text as the readers see it: the verbatim bytes and a search copy of
// the same length, lower-cased, with every NUL replaced by "_". Keys are
// searched in the search copy; values are taken verbatim.
struct Type1Text {
    std::string_view searchCopy;
    std::string_view verbatim;
};

// Builds the search copy of `verbatim` into `storage`.
Type1Text MakeType1Text(std::string_view verbatim, std::string& storage);

// The value after the first `token`: a (parenthesised), [bracketed] or
// {braced} group with nesting counted, a /name or a bare word up to the
// next blank. At most 3999 characters.
bool findBlobForToken(const Type1Text& text, const char* token, LxString* value);

// The value after `key` in a header comment: from the key, on to the first
// delimiter, past blanks, up to the next delimiter or the end.
bool GetDelimitedKeyValue(std::string_view text, const LxString& key, const char* delimiters,
                          LxString* value);

// Fills the wanted outputs (each may be null) from the font dictionary and
// the "%!PS-AdobeFont-" header.
void GatherPostScriptMetaDataFromData(const Type1Text& text, LxString* kind, LxString* foundry,
                                      LxString* family, LxString* version,
                                      LxString* postScriptName, LxString* displayName,
                                      LxString* fullName);

// Reads the first 6000 bytes of `path`, or of *printerFontName when that is
// given and not empty, and gathers from them. 0 when the file was read, 6
// when it is missing or cannot be opened, -1 for an empty path. Sets
// *printerFontName to the file read or tried.
int CollectPSMetaDataFromFile(const LxString& path, LxString* printerFontName, LxString* kind,
                              LxString* foundry, LxString* family, LxString* version,
                              LxString* postScriptName, LxString* displayName,
                              LxString* fullName);

// "NAME.pfm" or "NAME.mmm" (any case, at least 6 characters) to "NAME.pfb".
bool GetWindowsPSPrinterFontNameFromFontName(const LxString& name, LxString* printerName);
// "NAME.pfb" (any case, at least 6 characters) to "NAME.mmm".
bool GetWindowsMMMFontNameFromPrinterFontName(const LxString& name, LxString* mmmName);

// Whether the foundry table knows a foundry named in `text`.
bool KnownFoundryNamedIn(std::string_view text);
