#include "api/CollectionSpecifiers.h"

#include <algorithm>
#include <vector>

#include "api/FontArray.h"
#include "checksum/CChecksum.h"
#include "fontfiles/FontKind.h"
#include "fontfiles/NamingTable.h"
#include "fontfiles/SfntPlatform.h"
#include "fontfiles/TrueTypeCollectionFont.h"
#include "typeprobe/typeprobe.h"

namespace {

LxString* wanted(unsigned long mask, unsigned long bit, LxString& field)
{
    return (mask & bit) ? &field : nullptr;
}

}  // namespace

void AppendCollectionFaces(const char* path, unsigned long attributeMask, TP_FontArray& array)
{
    TrueTypeCollectionFont collection(path);
    std::vector<char> bytes;
    const unsigned long count = std::min(collection.faceCount(), kMaxFacesPerFile);
    for (unsigned long index = 0; index < count; ++index) {
        const int rebuilt = collection.GetDataPtrForFace(index, bytes);
        // A face whose offset entry lies past the end means every later one
        // does too.
        if (rebuilt == 5 && 12 + 4 * uint64_t(index) + 4 >= collection.bytes().size()) break;
        if (rebuilt != 0) continue;
        const ByteView font(bytes.data(), bytes.size());
        TP_FontSpecifier face;
        face.kindName = kKindCollection;
        if (!getMetaDataFromNamesTable(
                font, nullptr, nullptr, 0, wanted(attributeMask, kTP_AttrFoundryName, face.foundryName),
                wanted(attributeMask, kTP_AttrFamilyName, face.familyName),
                wanted(attributeMask, kTP_AttrVersion, face.version),
                wanted(attributeMask, kTP_AttrPostScriptName, face.postScriptName),
                wanted(attributeMask, kTP_AttrDisplayName, face.displayName),
                wanted(attributeMask, kTP_AttrFullName, face.fullName)))
            continue;
        if (attributeMask & kTP_AttrKerningChecksum)
            GetTrueTypeKerningTableChecksum(font, &face.kerningChecksum);
        if (!GetPlatformTTF(font, &face.platform)) continue;
        // The legacy checksum is still 0 here: the plain CRC-32 of the face.
        face.typeprobeChecksum = uint32_t(CChecksum::icrc(
            font.data(), font.size(), face.legacyTypeprobeChecksum));
        face.validAttributes = uint32_t(attributeMask);
        array.Append(face);
    }
}
