// The working record of one font file during analysis: where its data fork
// is, what kind it is, and its sfnt bytes once loaded (from the data fork or
// from an sfnt resource).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fontfiles/FontKind.h"
#include "fontfiles/ReadOptions.h"
#include "resourcefork/ResourceHandle.h"
#include "support/ByteView.h"
#include "support/LxString.h"
#include "containers/MacForks.h"
#include "support/SharedBytes.h"

class TypeprobeResourceFile;

struct TFontData {
    char path[1024] = {};
    LxString pathString;
    // The data fork, when it could be opened; `file` says whether it is.
    MacFile dataFile;
    bool file = false;
    short extensionKind = kExtensionUnknown;
    short fontType = kFontTypeUnknown;
    // The whole sfnt: the detached sfnt resource or the data fork's bytes.
    ByteView data;
    uint32_t dataSize = 0;
    bool isResourceFont = false;
    // A "typ1" sfnt: PostScript outlines read through the sfnt readers.
    bool sfntHoldsType1 = false;
    ResourceHandlePtr sfntHandle;
    bool ownsData = false;
    SharedBytes ownedData;  // the data fork in place, when data shows it
    const TypeprobeResourceFile* resourceFile = nullptr;

    // The first bytes of the data fork, read once and kept.
    ByteView dataForkPrefix(size_t length);
    std::vector<uint8_t> prefix;
};

void initializeAndConstructFontInfo(TFontData& font, const TypeprobeResourceFile* resourceFile,
                                    const LxString& path);
void freeFontInfo(TFontData& font);

// Loads the sfnt bytes for TrueType and OpenType kinds; nothing for the
// others. Success shows in font.data.
int loadFontDataIntoMemory(TFontData& font, const ResourceHandle* fond, int16_t style);
int loadTTFontData(TFontData& font, const ResourceHandle* fond, int16_t style);

// Magic numbers at the start of the data fork; false for a file whose
// resource fork holds font families, or whose data fork is not open.
bool has_otf_OTTO_Flag(TFontData& font);
bool has_ttc_ttcf_Flag(TFontData& font);
bool has_otf_TrueType_Flag(TFontData& font);
// A Type 1 file: a length word at byte 2 equal to the file's length and
// "copyright" near the start; or a "typ1" sfnt resource.
bool hasValidPSHeader(TFontData& font);

// Says why no reader recognised the file, once kind detection and the
// readers it chose found no face: what its first bytes are, or which rule
// its name or signature broke. Nothing for a resource-fork font, whose
// readers speak for themselves.
void RefuseUnrecognised(TFontData& font, bool hasResourceFork);

// What the first bytes of a data fork say it holds.
enum class Signature {
    None,
    Sfnt,        // 0x00010000 or "true"
    SfntOTTO,    // PostScript outlines in an sfnt
    SfntType1,   // "typ1": a Type 1 font in an sfnt wrapper
    Collection,  // "ttcf"
    Type1,       // a PFB's first segment or Type 1 text
    Metrics,     // AFM text: widths and kerning, no outlines
    WebFont,     // "wOFF" or "wOF2"
};
Signature SignatureOf(ByteView head);
// The signature of the data fork of the logical file at `path`.
Signature DataForkSignature(const std::string& path);
// What holds the font in that data fork: "sfnt", "collection", "PFB",
// "PFA", "WOFF" or "WOFF2"; null when its first bytes show none of these.
const char* DataForkWrapper(const std::string& path);

// Sets fontType (and extensionKind when the extension is consulted) and the
// kind name, when one is found. With every format, the bytes decide first.
void getMetaData_FontType(TFontData& font, const ResourceHandle* fond, int16_t style,
                          LxString* kind, const ReadOptions& options);
