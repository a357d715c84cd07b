#include "fontfiles/TFontData.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

#include "fontfiles/SfntDirectory.h"
#include "fontfiles/Type1MetaData.h"
#include "resourcefork/ResourceFileAccess.h"
#include "containers/WebFont.h"
#include "support/Refusal.h"

namespace {

constexpr size_t kPSHeaderProbeLength = 117;
constexpr size_t kCopyrightSearchLength = 60;
constexpr size_t kQuotedLength = 8;
// Enough for the longest signature, a PFB segment header and Type 1 text.
constexpr size_t kSignatureLength = 48;

bool dataForkMagic(TFontData& font, uint32_t wanted)
{
    if (FileHasFONDsInResourceFork(font.resourceFile) || !font.file) return false;
    uint32_t magic = 0;
    const ByteView head = font.dataForkPrefix(OffsetTable::sfntVersion.end());
    return head.read(0, OffsetTable::sfntVersion, magic) && magic == wanted;
}

// A PFB segment marker or a "%!" comment: bytes that claim to be Type 1.
bool claimsType1(ByteView head)
{
    uint8_t marker = 0;
    return (head.read(0, PFBSegmentHeader::marker, marker) && marker == kPFBMarker) ||
           head.startsWith("%!");
}

// Bytes as a reason quotes them: printable ASCII as it is, others as \xNN.
std::string quoted(ByteView bytes)
{
    std::string text = "\"";
    for (size_t at = 0; at < bytes.size(); ++at) {
        uint8_t c = 0;
        bytes.u8(at, c);
        char escaped[5];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", c);
        const bool plain = c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
        text += plain ? std::string(1, char(c)) : std::string(escaped);
    }
    return text + "\"";
}

void openDataFork(TFontData& font)
{
    font.dataFile = MacForks::Resolve(font.pathString.str());
    font.file = font.dataFile.dataFork.kind != ForkLocation::Kind::Missing;
}

// The tables whose presence makes a ".ttf" an OpenType font.
bool hasOpenTypeTables(ByteView data)
{
    for (const char* tag : {"DSIG", "GDEF", "GSUB", "GPOS", "JSTF", "BASE"})
        if (FindSpecifiedTable(data, tag)) return true;
    return false;
}

}  // namespace

ByteView TFontData::dataForkPrefix(size_t length)
{
    if (file && prefix.size() < length && !ownsData) {
        if (!MacForks::ReadForkPrefix(dataFile.dataFork, length, prefix)) prefix.clear();
    }
    const ByteView bytes = ownsData ? data : ByteView(prefix.data(), prefix.size());
    return bytes.head(length);
}

void initializeAndConstructFontInfo(TFontData& font, const TypeprobeResourceFile* resourceFile,
                                    const LxString& path)
{
    freeFontInfo(font);
    font.isResourceFont = false;
    font.dataFile = MacFile();
    font.file = false;
    font.prefix.clear();
    strncpy(font.path, path.c_str(), sizeof font.path - 1);
    font.path[sizeof font.path - 1] = '\0';
    font.pathString = path;
    font.resourceFile = resourceFile;
    if (resourceFile &&
        (FileHasFONDsInResourceFork(resourceFile) || FileHasPOSTsInResourceFork(resourceFile))) {
        font.isResourceFont = true;
        return;
    }
    font.resourceFile = nullptr;
    openDataFork(font);
}

void freeFontInfo(TFontData& font)
{
    font.extensionKind = kExtensionUnknown;
    font.fontType = kFontTypeUnknown;
    font.sfntHandle.reset();
    font.ownedData = SharedBytes();
    font.data = ByteView();
    font.dataSize = 0;
    font.ownsData = false;
    font.sfntHoldsType1 = false;
}

int loadFontDataIntoMemory(TFontData& font, const ResourceHandle* fond, int16_t style)
{
    if (font.fontType != kFontTypeTrueType &&
        (font.fontType < kFontTypeOpenTypeTT || font.fontType > kFontTypeOpenTypePS))
        return 0;
    return loadTTFontData(font, fond, style);
}

int loadTTFontData(TFontData& font, const ResourceHandle* fond, int16_t style)
{
    if (font.isResourceFont || font.extensionKind == kExtensionDFont) {
        const int16_t id = getFirstResourceIDFromHandleAndStyle(font.resourceFile, fond, style);
        font.sfntHandle = getHandleOfTypeAndResID(font.resourceFile, kTypeSfnt, id);
        if (font.sfntHandle) {
            font.data = font.sfntHandle->view();
            font.dataSize = uint32_t(font.data.size());
        }
    }
    if (font.data.empty() && font.file && font.dataFile.dataFork.length < UINT32_MAX) {
        if (auto bytes = MacForks::ForkBytes(font.dataFile.dataFork)) {
            font.ownsData = true;
            font.ownedData = std::move(*bytes);
            font.data = font.ownedData.view();
            font.dataSize = uint32_t(font.data.size());
        }
    }
    // A ".ttf" data-fork font with OpenType layout or a signature is
    // reported as OpenType; the same bytes in a resource stay TrueType.
    if (!font.isResourceFont && !font.sfntHoldsType1 && font.fontType == kFontTypeTrueType &&
        !font.data.empty() && hasOpenTypeTables(font.data))
        font.fontType = kFontTypeOpenTypeTT;
    return 0;
}

bool has_otf_OTTO_Flag(TFontData& font)
{
    return dataForkMagic(font, kSfntVersionOTTO);
}

bool has_ttc_ttcf_Flag(TFontData& font)
{
    return dataForkMagic(font, kCollectionTag);
}

bool has_otf_TrueType_Flag(TFontData& font)
{
    return dataForkMagic(font, kSfntVersionTrueType);
}

bool hasValidPSHeader(TFontData& font)
{
    if (hasValidResourcePSHeader(font.resourceFile)) return true;
    if (!font.file) return false;
    ByteView head = font.dataForkPrefix(kPSHeaderProbeLength);
    uint32_t length = 0;
    const uint64_t fileSize = font.dataFile.dataFork.length;
    if (head.size() < kPSHeaderProbeLength || !head.read(0, PFBSegmentHeader::length, length)) {
        if (!claimsType1(head)) return false;
        return Refuse("Type 1 header: the file has ", head.size(), " bytes, fewer than the ",
                      kPSHeaderProbeLength, " its check reads");
    }
    // Deliberately narrow: a segment length, read most significant byte
    // first, that equals the whole file's length, and the word "copyright"
    // near the start.
    if (fileSize > UINT32_MAX || length != fileSize) {
        if (!claimsType1(head)) return false;
        return Refuse("Type 1 header: the segment length at byte ", PFBSegmentHeader::length.offset,
                      " reads ", length, ", not the file's length ", fileSize,
                      head.startsWith("%!")
                          ? " (a \"%!\" text font is known only by a .ps or .pfm name)"
                          : "");
    }
    std::string text(head.chars(PFBSegmentHeader::size, kCopyrightSearchLength));
    for (char& c : text) c = char(std::tolower(static_cast<unsigned char>(c)));
    if (text.find("copyright") != std::string::npos) return true;
    return Refuse("Type 1 header: no \"copyright\" in the ", kCopyrightSearchLength,
                  " bytes after the segment header");
}

void RefuseUnrecognised(TFontData& font, bool hasResourceFork)
{
    if (font.isResourceFont || !RefusalLog::Listening()) return;
    const bool noKind = font.fontType == kFontTypeUnknown;
    const ByteView head = font.dataForkPrefix(kSignatureLength);
    const Signature signature = SignatureOf(head);
    const bool metrics = signature == Signature::Metrics || font.extensionKind == kExtensionPFM ||
                         font.extensionKind == kExtensionMMM;
    if (noKind && metrics) {
        Refuse("metrics: a font metrics file holds widths and kerning, no outlines");
    } else if (noKind && font.extensionKind != kExtensionUnknown) {
        const char* dot = std::strrchr(font.path, '.');
        Refuse("kind: no reader takes a file named \"", dot ? dot : "", "\" on its own");
    } else if (signature == Signature::Collection) {
        Refuse("collection: the file is one, but only a file named .ttc is read as a collection");
    } else if (signature == Signature::Sfnt || signature == Signature::SfntOTTO ||
               signature == Signature::SfntType1) {
        // With a font extension the sfnt readers said why; without one only
        // an "OTTO" font is known by its bytes.
        if (noKind)
            Refuse("kind: an sfnt other than \"OTTO\" is read only from a file named .ttf, .otf "
                   "or .dfont");
    } else if (noKind && claimsType1(head)) {
        // The Type 1 header check said why.
    } else if (head.empty()) {
        Refuse("no font signature: the file is empty");
    } else if (!RefusalLog::Heard()) {
        Refuse("no font signature: the ", hasResourceFork ? "data fork" : "file", " starts with ",
               quoted(head.head(kQuotedLength)), "; not an sfnt, a collection, PostScript Type 1 or a resource file",
               hasResourceFork ? " with font families" : "");
    }
}

Signature SignatureOf(ByteView head)
{
    uint32_t magic = 0;
    head.read(0, OffsetTable::sfntVersion, magic);
    switch (magic) {
    case kSfntVersionTrueType:
    case kSfntVersionTrue: return Signature::Sfnt;
    case kSfntVersionOTTO: return Signature::SfntOTTO;
    case kSfntVersionTyp1: return Signature::SfntType1;
    case kCollectionTag: return Signature::Collection;
    case fourCC("wOFF"):
    case fourCC("wOF2"): return Signature::WebFont;
    default: break;
    }
    uint8_t marker = 0, segmentType = 0;
    const bool segmented = head.read(0, PFBSegmentHeader::marker, marker) && marker == kPFBMarker;
    // A PFB opens with its clear-text segment.
    if (segmented && (!head.read(0, PFBSegmentHeader::segmentType, segmentType) ||
                      segmentType != kPFBSegmentText))
        return Signature::None;
    const ByteView text = segmented ? head.tail(PFBSegmentHeader::size) : head;
    for (const char* start : {"%!PS-AdobeFont", "%!FontType1", "%!PS-Adobe-3.0 Resource-CIDFont",
                              "%!PS-Adobe-3.0 Resource-Font"})
        if (text.startsWith(start)) return Signature::Type1;
    if (!segmented && head.startsWith("StartFontMetrics")) return Signature::Metrics;
    return Signature::None;
}

namespace {

std::vector<uint8_t> dataForkHead(const std::string& path)
{
    const MacFile file = MacForks::Resolve(path);
    std::vector<uint8_t> head;
    if (file.dataFork.kind == ForkLocation::Kind::Missing ||
        !MacForks::ReadForkPrefix(file.dataFork, kSignatureLength, head))
        head.clear();
    return head;
}

}  // namespace

Signature DataForkSignature(const std::string& path)
{
    const std::vector<uint8_t> head = dataForkHead(path);
    return SignatureOf(ByteView(head.data(), head.size()));
}

const char* DataForkWrapper(const std::string& path)
{
    const std::vector<uint8_t> bytes = dataForkHead(path);
    const ByteView head(bytes.data(), bytes.size());
    switch (SignatureOf(head)) {
    case Signature::Sfnt:
    case Signature::SfntOTTO:
    case Signature::SfntType1: return "sfnt";
    case Signature::Collection: return "collection";
    case Signature::WebFont: return WebFont::FormatName(head);
    default: break;
    }
    // Type 1 by its first bytes alone, as the classic header check knows it
    // too: segments or text.
    uint8_t marker = 0;
    if (head.read(0, PFBSegmentHeader::marker, marker) && marker == kPFBMarker) return "PFB";
    if (head.startsWith("%!")) return "PFA";
    return nullptr;
}

namespace {

using KindFound = std::function<void(short, const char*)>;

bool kindFromContent(TFontData& font, const KindFound& found);

// A web font is read as the sfnt it wraps: decoded, that sfnt stands in for
// the data fork and its own first bytes decide its kind. A decoded
// collection is read by the collection path, never from here.
bool kindOfWebFont(TFontData& font, const KindFound& found)
{
    std::optional<SharedBytes> sfnt = WebFont::DecodeDataFork(font.pathString.str());
    if (!sfnt) return true;
    font.ownsData = true;
    font.ownedData = std::move(*sfnt);
    font.data = font.ownedData.view();
    font.dataSize = uint32_t(font.data.size());
    const Signature inner = SignatureOf(font.dataForkPrefix(kSignatureLength));
    if (inner == Signature::Sfnt || inner == Signature::SfntOTTO || inner == Signature::SfntType1)
        return kindFromContent(font, found);
    Refuse("web font: the decoded font is no sfnt (it starts with ",
           quoted(font.data.head(kQuotedLength)), ")");
    return true;
}

// Every format by its bytes. True when they decided, even that the file
// holds no outline font (a metrics file, a malformed web font).
bool kindFromContent(TFontData& font, const KindFound& found)
{
    if (!font.file) return false;
    switch (SignatureOf(font.dataForkPrefix(kSignatureLength))) {
    case Signature::Sfnt:
        // As a ".otf" names it; elsewhere "TrueType" until its tables say
        // OpenType, as for a ".ttf".
        if (font.extensionKind == kExtensionOTF)
            found(kFontTypeOpenTypeTT, kKindOpenTypeTT);
        else
            found(kFontTypeTrueType, kKindTrueType);
        return true;
    case Signature::SfntOTTO: found(kFontTypeOpenTypePS, kKindOpenTypePS); return true;
    case Signature::SfntType1:
        font.sfntHoldsType1 = true;
        found(kFontTypeTrueType, kKindPostScript);
        return true;
    case Signature::Collection: found(kFontTypeCollection, kKindCollection); return true;
    case Signature::Type1: found(kFontTypePostScript, kKindPostScript); return true;
    case Signature::WebFont: return kindOfWebFont(font, found);
    case Signature::Metrics: return true;
    case Signature::None: break;
    }
    return false;
}

// With every format, a name whose format has a signature counts only with
// it, which the bytes did not show: a ".ps" must be Type 1 text, a ".ttc"
// start with its tag, and ".pfm" and ".mmm" metrics are never outlines.
bool extensionNeedsContent(short extensionKind)
{
    return extensionKind == kExtensionPS || extensionKind == kExtensionPFM ||
           extensionKind == kExtensionMMM || extensionKind == kExtensionTTC;
}

}  // namespace

void getMetaData_FontType(TFontData& font, const ResourceHandle* fond, int16_t style,
                          LxString* kind, const ReadOptions& options)
{
    auto found = [&](short type, const char* name) {
        font.fontType = type;
        if (kind) *kind = name;
    };
    if (font.isResourceFont) {
        if (has_ttc_true_Flag(font.resourceFile, fond, style))
            found(kFontTypeTrueType, kKindTrueType);
        else if (has_OTTO_Flag_inResource(font.resourceFile, fond, style))
            found(kFontTypeOpenTypePS, kKindOpenTypePS);
        else if (is_psfont(font.resourceFile))
            found(kFontTypePostScript, kKindPostScript);
    }
    if (font.fontType != kFontTypeUnknown) return;
    font.extensionKind = fontTypeFromExtension(font.path);
    if (options.allFormats && !font.isResourceFont &&
        (kindFromContent(font, found) || extensionNeedsContent(font.extensionKind)))
        return;
    switch (font.extensionKind) {
    case kExtensionTTF:
    case kExtensionDFont: found(kFontTypeTrueType, kKindTrueType); break;
    case kExtensionOTF:
        if (has_otf_OTTO_Flag(font))
            found(kFontTypeOpenTypePS, kKindOpenTypePS);
        else
            found(kFontTypeOpenTypeTT, kKindOpenTypeTT);
        break;
    case kExtensionPS:
    case kExtensionPFM: found(kFontTypePostScript, kKindPostScript); break;
    case kExtensionTTC: found(kFontTypeCollection, kKindCollection); break;
    case kExtensionMMM: found(kFontTypeMultipleMaster, kKindMultipleMaster); break;
    case kExtensionUnknown:
        // Every test runs and the last that holds wins. A collection known
        // only by its magic is plain "TrueType", deliberately.
        if (hasValidPSHeader(font)) found(kFontTypePostScript, kKindPostScript);
        if (has_ttc_ttcf_Flag(font)) found(kFontTypeTrueType, kKindTrueType);
        if (has_otf_OTTO_Flag(font)) found(kFontTypeOpenTypePS, kKindOpenTypePS);
        break;
    default: break;  // fot, fnt, fon, pfb, inf: no kind
    }
}
