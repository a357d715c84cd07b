// One font file opened through the library: an owned TP_FontArray and the
// faces read out of it with the public accessors.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Library.h"

namespace tpcli {

// The requested attributes of one face. Text attributes hold UTF-8 text,
// checksums and sizes their number.
struct Face {
    unsigned long index = 0;
    unsigned long mask = 0;  // the attributes read
    std::map<unsigned long, std::string> texts;
    std::map<unsigned long, unsigned long> numbers;
    std::optional<std::string> legacyFoundry;  // read with the foundry
    // What held the face, and the Mac container it came through ("" for
    // none); every face has both.
    std::string wrapper;
    std::string container;

    bool has(unsigned long bit) const { return (mask & bit) != 0; }
    std::string text(unsigned long bit) const;
    unsigned long number(unsigned long bit) const;
    // The value as shown: text as is, checksums "%08X", sizes in decimal;
    // empty when the attribute was not read.
    std::string display(unsigned long bit) const;
};

struct ArrayRelease {
    void operator()(TP_FontArray* array) const { Library().TP_SpecifierFree(array); }
};
using FontArrayPtr = std::unique_ptr<TP_FontArray, ArrayRelease>;

class FontFile {
public:
    // Identifies the file (TP_CreateSpecifierWithOptions); nothing when the
    // library found no face.
    static std::optional<FontFile> Open(const std::string& path, unsigned long mask,
                                        unsigned long options);

    unsigned long faceCount() const;
    Face face(unsigned long index) const;
    std::vector<Face> faces() const;
    TP_FontArray* array() const { return array_.get(); }

private:
    FontFile(FontArrayPtr array, unsigned long mask) : array_(std::move(array)), mask_(mask) {}
    FontArrayPtr array_;
    unsigned long mask_;
};

// "%08X" of a checksum.
std::string HexChecksum(unsigned long value);

}  // namespace tpcli
