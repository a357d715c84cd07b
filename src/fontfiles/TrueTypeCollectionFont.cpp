#include "fontfiles/TrueTypeCollectionFont.h"

#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <memory>

#include "fontfiles/SfntDirectory.h"
#include "support/ByteView.h"
#include "support/ByteWriter.h"

namespace {

constexpr size_t kMinimumCollectionSize = 13;
constexpr int kMaxWriteAttempts = 100;

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};

uint64_t paddedLength(uint32_t length)
{
    return (uint64_t(length) + 3) & ~uint64_t(3);
}

bool pathExists(const std::string& path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0;
}

// Sum of the big-endian words of a table padded with zeros to 4 bytes.
uint32_t paddedTableChecksum(ByteView table)
{
    uint32_t sum = 0;
    for (size_t at = 0; at < table.size(); at += 4) {
        uint32_t word = 0;
        for (size_t i = 0; i < 4; ++i) {
            uint8_t byte = 0;
            table.u8(at + i, byte);  // past the end reads as padding
            word = (word << 8) | byte;
        }
        sum += word;
    }
    return sum;
}

}  // namespace

TrueTypeCollectionFont::TrueTypeCollectionFont(const std::string& path) : path(path)
{
    ReadIntoMemory();
}

TrueTypeCollectionFont::TrueTypeCollectionFont(std::vector<char> bytes) : data(std::move(bytes))
{
    CheckHeader();
}

int TrueTypeCollectionFont::ReadIntoMemory()
{
    data.clear();
    std::unique_ptr<FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    struct stat info;
    if (!file || fstat(fileno(file.get()), &info) != 0) return 4;
    if (info.st_size <= 0) return 3;
    if (uint64_t(info.st_size) > UINT32_MAX) return 4;
    data.resize(size_t(info.st_size));
    if (std::fread(data.data(), 1, data.size(), file.get()) != data.size()) {
        data.clear();
        return 4;
    }
    return CheckHeader();
}

int TrueTypeCollectionFont::CheckHeader()
{
    ByteView view(data.data(), data.size());
    uint32_t tag = 0, version = 0;
    int result = 0;
    if (!view.tag(0, tag) || tag != kCollectionTag)
        result = 2;
    else if (data.size() < kMinimumCollectionSize)
        result = 5;
    else if (!view.u32(4, version) || (version != 0x00010000 && version != 0x00020000))
        result = 3;
    if (result != 0) data.clear();
    return result;
}

unsigned long TrueTypeCollectionFont::faceCount() const
{
    uint32_t numFonts = 0;
    if (data.size() < kMinimumCollectionSize) return 0;
    ByteView(data.data(), data.size()).u32(8, numFonts);
    return numFonts;
}

int TrueTypeCollectionFont::GetDataPtrForFace(unsigned long face, std::vector<char>& out) const
{
    out.clear();
    const ByteView collection(data.data(), data.size());
    const uint64_t size = collection.size();
    if (face >= faceCount()) return 1;
    uint32_t start = 0;
    if (!(12 + 4 * uint64_t(face) + 4 < size) || !collection.u32(12 + 4 * size_t(face), start))
        return 5;
    uint16_t numTables = 0;
    if (!(uint64_t(start) + 12 < size) || !collection.u16(size_t(start) + 4, numTables)) return 5;
    const uint64_t headerSize = kSfntHeaderSize + kDirectoryEntrySize * uint64_t(numTables);
    auto header = collection.sub(start, size_t(headerSize));
    if (!header) return 5;

    uint64_t total = headerSize;
    for (uint16_t i = 0; i < numTables; ++i) {
        uint32_t length = 0;
        header->u32(kSfntHeaderSize + kDirectoryEntrySize * i + 12, length);
        total += paddedLength(length);
    }
    // Deliberately strict: a standalone face is always smaller than the
    // collection that holds it.
    if (total >= size) return 1;

    ByteWriter rebuilt;
    rebuilt.bytes(*header);
    for (uint16_t i = 0; i < numTables; ++i) {
        const size_t entry = kSfntHeaderSize + kDirectoryEntrySize * i;
        uint32_t offset = 0, length = 0;
        header->u32(entry + 8, offset);
        header->u32(entry + 12, length);
        auto padded = collection.sub(offset, size_t(paddedLength(length)));
        if (!padded) {
            out.clear();
            return 5;
        }
        const uint32_t newOffset = uint32_t(rebuilt.size());
        ByteView table = *padded->sub(0, length);
        rebuilt.bytes(table).pad(4);
        // The head table is summed as it stands; its adjustment is kept.
        rebuilt.putU32(entry + 4, paddedTableChecksum(table));
        rebuilt.putU32(entry + 8, newOffset);
    }
    out.assign(rebuilt.data().begin(), rebuilt.data().end());
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
        if (code == 5 && 12 + 4 * uint64_t(index) + 4 >= collection.bytes().size()) break;
    }
    return result;
}
