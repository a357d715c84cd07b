// A TrueType collection read whole into memory: its face count, any face
// rebuilt as a standalone sfnt, and each face written out as its own file.
#pragma once

#include <string>
#include <vector>

class TrueTypeCollectionFont {
public:
    explicit TrueTypeCollectionFont(const std::string& path);
    // A collection already in memory: the checks of ReadIntoMemory apply
    // (the bytes are dropped when they fail); no file is read.
    explicit TrueTypeCollectionFont(std::vector<char> bytes);
    virtual ~TrueTypeCollectionFont() = default;

    // 0 success, 2 not a collection, 3 empty file or unknown version,
    // 4 cannot open, size unknown or short read, 5 shorter than 13 bytes.
    int ReadIntoMemory();

    // numFonts as stored; 0 when fewer than 13 bytes are held.
    unsigned long faceCount() const;

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

    const std::vector<char>& bytes() const { return data; }

private:
    // The header checks of ReadIntoMemory on `data`; empties it on failure.
    int CheckHeader();

    std::string path;
    std::vector<char> data;
};
