// A TrueType collection read whole into memory: its face count, any face
// rebuilt as a standalone sfnt, and each face written out as its own file.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "support/ByteView.h"
#include "support/SharedBytes.h"

class TrueTypeCollectionFont {
public:
    explicit TrueTypeCollectionFont(const std::string& path);
    // A collection already in memory: the checks of ReadIntoMemory apply
    // (the bytes are dropped when they fail); no file is read.
    explicit TrueTypeCollectionFont(std::vector<uint8_t> bytes);
    explicit TrueTypeCollectionFont(SharedBytes bytes);
    virtual ~TrueTypeCollectionFont() = default;

    // 0 success, 2 not a collection, 3 empty file or unknown version,
    // 4 cannot open, size unknown or short read, 5 shorter than 13 bytes.
    // The file is mapped, not copied.
    int ReadIntoMemory();

    // numFonts as stored; 0 when fewer than 13 bytes are held.
    unsigned long faceCount() const;
    // True when the face's offset entry does not lie wholly before the end:
    // neither it nor any later face can be read.
    bool offsetEntryPastEnd(unsigned long face) const;

    // One face as a standalone sfnt, described rather than built: the
    // rebuilt offset table and directory (new offsets, padded table
    // checksums), then each table's bytes, in directory order, back to back
    // and padded with zeros to 4 bytes. The tables are views of the
    // collection's bytes, valid while the collection object lives.
    struct Face {
        struct Table {
            ByteView bytes;         // in the collection
            uint64_t at = 0;        // where it starts in the standalone face
            uint64_t paddedLength = 0;
            uint32_t paddedCRC = 0;  // CRC-32 of the padded table, from 0
        };
        std::vector<uint8_t> header;
        std::vector<Table> tables;
        uint64_t size = 0;

        // Writes the face's bytes [from, to) into `image`, which holds the
        // whole face and reads as zeros where nothing is written.
        void copyRange(uint64_t from, uint64_t to, std::span<uint8_t> image) const;
    };

    // Lays out a face; 0, or the codes of GetDataPtrForFace. Each table's
    // checksum and CRC are computed once and shared by every face that
    // holds the table, so that describing all faces costs one pass over
    // the collection.
    int LayoutFace(unsigned long face, Face& out) const;

    // 0 with a standalone sfnt in `out`; 1 for a face out of range or a
    // rebuilt size not below the collection's; 5 for a face offset, header
    // or table outside the collection. `out` is emptied on failure.
    int GetDataPtrForFace(unsigned long face, std::vector<char>& out) const;

    // Writes bytes to `directory` + number + ".ttf"; 0, 1 (no bytes) or 4.
    static int WriteTTF(const std::vector<char>& bytes, unsigned long number,
                        const std::string& directory, std::string& writtenPath);

    // Writes every face; 0 when all were written, else the code of the last
    // face that failed.
    static int SeparateTTCFonts(const std::string& collectionPath, const std::string& directory,
                                std::vector<std::string>& writtenPaths);

    ByteView bytes() const { return data.view(); }

private:
    struct TableSums {
        uint32_t checkSum = 0;
        uint32_t paddedCRC = 0;
    };
    const TableSums& sumsOf(uint32_t offset, uint32_t length) const;
    // The header checks of ReadIntoMemory; `bytes` are kept when they pass.
    int Adopt(SharedBytes bytes);

    std::string path;
    SharedBytes data;
    // By (offset, length) in the collection.
    mutable std::map<std::pair<uint32_t, uint32_t>, TableSums> tableSums;
};
