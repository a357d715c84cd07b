#include "api/CollectionSpecifiers.h"

#include <algorithm>

#include "api/FaceWrapper.h"
#include "api/FontArray.h"
#include "checksum/CChecksum.h"
#include "fontfiles/FontKind.h"
#include "fontfiles/NamingTable.h"
#include "fontfiles/SfntDirectory.h"
#include "fontfiles/SfntPlatform.h"
#include "fontfiles/TrueTypeCollectionFont.h"
#include "support/ZeroedBuffer.h"
#include "typeprobe/typeprobe.h"

namespace {

using Face = TrueTypeCollectionFont::Face;

LxString* wanted(unsigned long mask, unsigned long bit, LxString& field)
{
    return (mask & bit) ? &field : nullptr;
}

// The standalone face as its readers see it: only what they look at is
// filled in (the directory, the naming table with all that its records can
// reach, the table the kerning checksum sums), the rest reads as zeros. The
// outlines that faces share, most of a collection, are never copied.
void fillReaderImage(const Face& face, ZeroedBuffer& image)
{
    face.copyRange(0, face.header.size(), image.span());
    const ByteView font = image.view();
    if (auto name = FindSpecifiedTable(font, "name")) {
        face.copyRange(name->offset, uint64_t(name->offset) + kNameHeaderSize, image.span());
        const auto [first, end] = NamingTableReach(font, name->offset);
        face.copyRange(first, end, image.span());
    }
    if (auto kerning = KerningChecksumTable(font))
        face.copyRange(kerning->offset, uint64_t(kerning->offset) + kerning->length, image.span());
}

// The CRC-32 of the standalone face continued from `crc`: over its header,
// then each padded table's own CRC joined on.
unsigned long faceCRC(const Face& face, unsigned long crc)
{
    crc = CChecksum::icrc(face.header.data(), face.header.size(), crc);
    for (const Face::Table& table : face.tables)
        crc = CChecksum::combine(crc, table.paddedCRC, table.paddedLength);
    return crc;
}

}  // namespace

void AppendCollectionFaces(const char* path, unsigned long attributeMask,
                           const ReadOptions& options, TP_FontArray& array)
{
    AppendCollectionFaces(TrueTypeCollectionFont(path), path, attributeMask, options, array);
}

void AppendCollectionFaces(const TrueTypeCollectionFont& collection, const char* path,
                           unsigned long attributeMask, const ReadOptions& options,
                           TP_FontArray& array)
{
    const unsigned long count = std::min(collection.faceCount(), kMaxFacesPerFile);
    for (unsigned long index = 0; index < count; ++index) {
        Face layout;
        const int rebuilt = collection.LayoutFace(index, layout);
        // A face whose offset entry lies past the end means every later one
        // does too.
        if (rebuilt == 5 && collection.offsetEntryPastEnd(index)) break;
        if (rebuilt != 0) continue;
        ZeroedBuffer image(size_t(layout.size));
        fillReaderImage(layout, image);
        const ByteView font = image.view();
        TP_FontSpecifier face;
        face.kindName = kKindCollection;
        if (!getMetaDataFromNamesTable(
                font, nullptr, nullptr, 0, wanted(attributeMask, kTP_AttrFoundryName, face.foundryName),
                wanted(attributeMask, kTP_AttrFamilyName, face.familyName),
                wanted(attributeMask, kTP_AttrVersion, face.version),
                wanted(attributeMask, kTP_AttrPostScriptName, face.postScriptName),
                wanted(attributeMask, kTP_AttrDisplayName, face.displayName),
                wanted(attributeMask, kTP_AttrFullName, face.fullName)) &&
            !options.allFormats)
            continue;
        if (attributeMask & kTP_AttrKerningChecksum)
            GetTrueTypeKerningTableChecksum(font, &face.kerningChecksum);
        if (!GetPlatformTTF(font, &face.platform)) continue;
        // The legacy checksum is still 0 here: the plain CRC-32 of the face.
        face.typeprobeChecksum = uint32_t(faceCRC(layout, face.legacyTypeprobeChecksum));
        face.validAttributes = uint32_t(attributeMask);
        SetFaceWrapper(face, path, nullptr);
        array.Append(face);
    }
}
