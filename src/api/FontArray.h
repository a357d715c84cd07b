// The ordered faces identified in one font file; the opaque handle that the
// exported functions hand to callers. Face indexes are positions from 0.
#pragma once

#include <vector>

#include "api/FontSpecifier.h"

// The most faces looked for in one file, more than any real suitcase or
// collection holds. A hostile file can list tens of thousands (a family
// record with a style per entry, a collection whose offsets all name one
// face), and every face costs a pass over its data.
inline constexpr unsigned long kMaxFacesPerFile = 512;
// Every face of a suitcase walks its family's association table a few
// times, so the entries those walks cover are bounded per file too (512
// faces of 256 entries, where real families have a few dozen): a family of
// thousands of entries, each a style of its own, would otherwise cost their
// square.
inline constexpr unsigned long kMaxEntryWalksPerFile = 512 * 256;

struct TP_FontArray {
    // A copy of the face; an index at or past the end throws
    // std::out_of_range, which the exported accessors let escape.
    TP_FontSpecifier at(unsigned long index) const { return faces_.at(index); }
    unsigned long size() const { return faces_.size(); }
    const std::vector<TP_FontSpecifier>& faces() const { return faces_; }

    // Appends a copy at the end.
    void Append(const TP_FontSpecifier& face) { faces_.push_back(face); }

    // First face of this font family resource number and style; `index` is
    // left alone when there is none.
    bool FindIndexForFondResourceID(short fondResourceID, short style, unsigned int& index) const;

    // Keeps one face per PostScript name, in order of first appearance.
    void RemoveDups();

private:
    std::vector<TP_FontSpecifier> faces_;
};
