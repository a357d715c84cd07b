// The collection rebuild: every face of a hostile collection rebuilt as a
// standalone sfnt (the walk the specifier builder makes), each smaller than
// the collection, with a directory whose tables lie inside it.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "FuzzSupport.h"
#include "checksum/CChecksum.h"
#include "fontfiles/NamingTable.h"
#include "fontfiles/SfntDirectory.h"
#include "fontfiles/TrueTypeCollectionFont.h"

namespace {

void checkRebuiltFace(const std::vector<char>& face, size_t collectionSize)
{
    FUZZ_CHECK(face.size() < collectionSize);
    const ByteView font(face.data(), face.size());
    uint16_t numTables = 0;
    FUZZ_CHECK(font.u16(4, numTables));
    for (size_t i = 0; i < numTables; ++i) {
        uint32_t offset = 0, length = 0;
        FUZZ_CHECK(font.u32(kSfntHeaderSize + kDirectoryEntrySize * i + 8, offset));
        FUZZ_CHECK(font.u32(kSfntHeaderSize + kDirectoryEntrySize * i + 12, length));
        FUZZ_CHECK(offset % 4 == 0 && font.contains(offset, length));
    }
    LxString postScriptName;
    getMetaDataFromNamesTable(font, nullptr, nullptr, 0, nullptr, nullptr, nullptr,
                              &postScriptName, nullptr, nullptr);
}

// The face described in pieces must be the face built whole: the same
// bytes, and the CRC joined from the pieces equal to the CRC of the bytes.
void checkLayoutMatches(const TrueTypeCollectionFont& collection, unsigned long index,
                        const std::vector<char>& face)
{
    TrueTypeCollectionFont::Face layout;
    FUZZ_CHECK(collection.LayoutFace(index, layout) == 0);
    FUZZ_CHECK(layout.size == face.size());
    std::vector<uint8_t> image(face.size());
    layout.copyRange(0, layout.size, image);
    FUZZ_CHECK(std::equal(image.begin(), image.end(), face.begin(),
                          [](uint8_t a, char b) { return a == uint8_t(b); }));
    unsigned long joined = CChecksum::icrc(layout.header.data(), layout.header.size(), 0);
    for (const auto& table : layout.tables)
        joined = CChecksum::combine(joined, table.paddedCRC, table.paddedLength);
    const auto* bytes = reinterpret_cast<const unsigned char*>(face.data());
    FUZZ_CHECK(joined == CChecksum::icrc(bytes, face.size(), 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const TrueTypeCollectionFont collection(std::vector<uint8_t>(data, data + size));
    const unsigned long count = collection.faceCount();
    FUZZ_CHECK(count == 0 || collection.bytes().size() == size);
    std::vector<char> face;
    for (unsigned long index = 0; index < count; ++index) {
        const int rebuilt = collection.GetDataPtrForFace(index, face);
        FUZZ_CHECK(rebuilt == 0 || rebuilt == 1 || rebuilt == 5);
        FUZZ_CHECK(rebuilt == 0 || face.empty());
        if (rebuilt == 0) {
            checkRebuiltFace(face, size);
            checkLayoutMatches(collection, index, face);
        }
        if (rebuilt == 5 && collection.offsetEntryPastEnd(index)) break;
    }
    FUZZ_CHECK(collection.GetDataPtrForFace(count, face) == 1 && face.empty());
    return 0;
}
