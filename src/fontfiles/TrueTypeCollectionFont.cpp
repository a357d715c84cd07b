#include "fontfiles/TrueTypeCollectionFont.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>

#include "checksum/CChecksum.h"
#include "fontfiles/SfntDirectory.h"
#include "containers/MacForks.h"
#include "support/ByteWriter.h"
#include "support/Refusal.h"

namespace {

// Deliberately a byte more than the header.
constexpr size_t kMinimumCollectionSize = TTCHeader::size + 1;
constexpr int kMaxWriteAttempts = 100;
constexpr size_t kSumBlock = 4096;

using SumBlock = std::array<uint32_t, kSumBlock / 4>;

// The sum of a block's big-endian words. A block of fixed size lets the
// compiler vectorize the loop where the CPU can swap bytes in vectors.
__attribute__((target_clones("avx2", "default"))) uint32_t wordSum(const SumBlock& words)
{
    uint32_t sum = 0;
    for (uint32_t word : words) {
        if constexpr (std::endian::native == std::endian::little) word = __builtin_bswap32(word);
        sum += word;
    }
    return sum;
}

bool pathExists(const std::string& path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0;
}

}  // namespace

TrueTypeCollectionFont::TrueTypeCollectionFont(const std::string& path) : path(path)
{
    ReadIntoMemory();
}

TrueTypeCollectionFont::TrueTypeCollectionFont(std::vector<uint8_t> bytes)
    : TrueTypeCollectionFont(SharedBytes(std::move(bytes)))
{
}

TrueTypeCollectionFont::TrueTypeCollectionFont(SharedBytes bytes)
{
    Adopt(std::move(bytes));
}

int TrueTypeCollectionFont::ReadIntoMemory()
{
    data = SharedBytes();
    tableSums.clear();
    // The collection's own data fork, wherever its container keeps it.
    std::optional<SharedBytes> file = MacForks::DataForkBytes(path);
    if (!file) return 4;
    if (file->empty()) {
        Refuse("collection: the file is empty");
        return 3;
    }
    if (file->size() > UINT32_MAX) {
        Refuse("collection: ", file->size(), " bytes is more than a collection's offsets reach");
        return 4;
    }
    return Adopt(std::move(*file));
}

int TrueTypeCollectionFont::Adopt(SharedBytes bytes)
{
    const ByteView view = bytes.view();
    uint32_t tag = 0;
    uint16_t major = 0, minor = 0;
    if (!view.read(0, TTCHeader::ttcTag, tag) || tag != kCollectionTag) {
        Refuse("collection: the file starts with \"", view.head(TTCHeader::ttcTag.end()).chars(),
               "\", not \"ttcf\"");
        return 2;
    }
    if (view.size() < kMinimumCollectionSize) {
        Refuse("collection: the header needs ", kMinimumCollectionSize, " bytes, the file has ",
               view.size());
        return 5;
    }
    view.read(0, TTCHeader::majorVersion, major);
    view.read(0, TTCHeader::minorVersion, minor);
    if ((major != 1 && major != 2) || minor != 0) {
        Refuse("collection: version ", major, ".", minor, " is neither 1.0 nor 2.0");
        return 3;
    }
    data = std::move(bytes);
    return 0;
}

unsigned long TrueTypeCollectionFont::faceCount() const
{
    uint32_t numFonts = 0;
    if (data.size() < kMinimumCollectionSize) return 0;
    data.view().read(0, TTCHeader::numFonts, numFonts);
    if (numFonts == 0) Refuse("collection: numFonts is 0, no face to read");
    return numFonts;
}

// The word sum (the padded table checksum) and the CRC-32 of the padded
// table in one pass, a block at a time.
const TrueTypeCollectionFont::TableSums& TrueTypeCollectionFont::sumsOf(uint32_t offset,
                                                                         uint32_t length) const
{
    auto [entry, added] = tableSums.try_emplace({offset, length});
    if (!added) return entry->second;
    const ByteView table = data.view().sub(offset, length).value_or(ByteView());
    SumBlock words;
    uint32_t sum = 0;
    unsigned long crc = 0;
    for (size_t at = 0; at < table.size(); at += kSumBlock) {
        const ByteView block = *table.sub(at, std::min(kSumBlock, table.size() - at));
        crc = CChecksum::icrc(block.data(), block.size(), crc);
        // A short last block is padded with zeros, as the table is.
        if (block.size() < kSumBlock) words.fill(0);
        block.copy(0, block.size(), words.data());
        // The head table is summed as it stands; its adjustment is kept.
        sum += wordSum(words);
    }
    const uint8_t padding[3] = {};
    crc = CChecksum::icrc(padding, PaddedTableLength(table.size()) - table.size(), crc);
    entry->second = TableSums{sum, uint32_t(crc)};
    return entry->second;
}

bool TrueTypeCollectionFont::offsetEntryPastEnd(unsigned long face) const
{
    return TTCHeader::tableDirectoryOffsets.at(face).end() >= data.size();
}

int TrueTypeCollectionFont::LayoutFace(unsigned long face, Face& out) const
{
    out = Face();
    const ByteView collection = data.view();
    const uint64_t size = collection.size();
    if (face >= faceCount()) return 1;
    const Field<uint32_t> entry = TTCHeader::tableDirectoryOffsets.at(face);
    uint32_t start = 0;
    if (offsetEntryPastEnd(face) || !collection.read(0, entry, start)) {
        Refuse("collection: numFonts ", faceCount(), " claims offset entry ", face,
               ", which ends at ", entry.end(), ", not before the end (", size, " bytes)");
        return 5;
    }
    uint16_t numTables = 0;
    if (!(uint64_t(start) + OffsetTable::size < size) ||
        !collection.read(start, OffsetTable::numTables, numTables)) {
        if (start >= size)
            Refuse("collection: offset entry ", face, " points past the end (", start, " of ", size,
                   " bytes)");
        else
            Refuse("collection: face ", face, "'s offset table at ", start,
                   " runs past the end (", size, " bytes)");
        return 5;
    }
    const uint64_t headerSize = OffsetTable::size + TableRecord::size * uint64_t(numTables);
    auto header = collection.sub(start, size_t(headerSize));
    if (!header) {
        Refuse("collection: face ", face, "'s table directory of ", numTables, " entries at ",
               start, " needs ", headerSize, " bytes, past the end (", size, " bytes)");
        return 5;
    }

    auto recordAt = [](uint16_t i) { return OffsetTable::size + TableRecord::size * size_t(i); };
    uint64_t total = headerSize;
    for (uint16_t i = 0; i < numTables; ++i) {
        uint32_t length = 0;
        header->read(recordAt(i), TableRecord::length, length);
        total += PaddedTableLength(length);
    }
    // Deliberately strict: a standalone face is always smaller than the
    // collection that holds it.
    if (total >= size) {
        Refuse("collection: face ", face, " rebuilds to ", total, " bytes, not fewer than the ",
               size, " of the collection");
        return 1;
    }

    Face layout;
    ByteWriter rebuilt;
    rebuilt.bytes(*header);
    uint64_t at = headerSize;
    for (uint16_t i = 0; i < numTables; ++i) {
        const size_t record = recordAt(i);
        uint32_t tag = 0, offset = 0, length = 0;
        header->read(record, TableRecord::offset, offset);
        header->read(record, TableRecord::length, length);
        const uint64_t padded = PaddedTableLength(length);
        if (!collection.contains(offset, size_t(padded))) {
            header->read(record, TableRecord::tableTag, tag);
            Refuse("collection: face ", face, "'s table '", fourCCString(tag), "' (offset ", offset,
                   ", padded length ", padded, ") runs past the end (", size, " bytes)");
            return 5;
        }
        const TableSums& sums = sumsOf(offset, length);
        layout.tables.push_back({*collection.sub(offset, length), at, padded, sums.paddedCRC});
        rebuilt.putU32(record + TableRecord::checksum.offset, sums.checkSum);
        rebuilt.putU32(record + TableRecord::offset.offset, uint32_t(at));
        at += padded;
    }
    layout.header = rebuilt.take();
    layout.size = at;
    out = std::move(layout);
    return 0;
}

void TrueTypeCollectionFont::Face::copyRange(uint64_t from, uint64_t to,
                                             std::span<uint8_t> image) const
{
    to = std::min<uint64_t>({to, size, image.size()});
    auto copyPiece = [&](ByteView piece, uint64_t pieceAt) {
        const uint64_t first = std::max(from, pieceAt);
        const uint64_t end = std::min(to, pieceAt + piece.size());
        if (first < end)
            piece.copy(size_t(first - pieceAt), size_t(end - first), image.data() + first);
    };
    copyPiece(ByteView(header.data(), header.size()), 0);
    // Padding is left alone: the image reads as zeros there.
    for (const Table& table : tables) copyPiece(table.bytes, table.at);
}

int TrueTypeCollectionFont::GetDataPtrForFace(unsigned long face, std::vector<char>& out) const
{
    out.clear();
    Face layout;
    const int result = LayoutFace(face, layout);
    if (result != 0) return result;
    out.assign(size_t(layout.size), 0);
    layout.copyRange(0, layout.size,
                     std::span<uint8_t>(reinterpret_cast<uint8_t*>(out.data()), out.size()));
    return 0;
}

int TrueTypeCollectionFont::WriteTTF(const std::vector<char>& bytes, unsigned long number,
                                     const std::string& directory, std::string& writtenPath)
{
    writtenPath.clear();
    if (bytes.empty()) return 1;
    // A separator only when the directory has a "/" anywhere, even at its end.
    const std::string prefix = directory + (directory.find('/') != std::string::npos ? "/" : "");
    std::string name;
    for (int attempt = 0; attempt < kMaxWriteAttempts; ++attempt) {
        name = prefix + std::to_string(number + attempt) + ".ttf";
        if (!pathExists(name)) break;  // the last try is used even if it exists
    }
    FILE* file = std::fopen(name.c_str(), "wb");
    if (!file) return 4;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (std::fclose(file) != 0 || !written) return 4;
    writtenPath = name;
    return 0;
}

int TrueTypeCollectionFont::SeparateTTCFonts(const std::string& collectionPath,
                                             const std::string& directory,
                                             std::vector<std::string>& writtenPaths)
{
    TrueTypeCollectionFont collection(collectionPath);
    int result = 0;
    std::vector<char> face;
    const unsigned long count = collection.faceCount();
    for (unsigned long index = 0; index < count; ++index) {
        int code = collection.GetDataPtrForFace(index, face);
        if (code == 0) {
            std::string written;
            code = WriteTTF(face, index, directory, written);
            if (code == 0) writtenPaths.push_back(written);
        }
        if (code != 0) result = code;
        // A face whose offset entry lies past the end means every later one
        // does too: stop instead of walking a hostile count to its end.
        if (code == 5 && collection.offsetEntryPastEnd(index)) break;
    }
    return result;
}
