// Family (FOND) resources built from a recipe, for the tests of the readers:
// the header, the association table, then (when there are strings) a
// style-mapping table whose string 1 is the base PostScript name, then (when
// there are kerning entries) a kerning table and one byte more, as the last
// entry must end before the record does.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/ByteWriter.h"

namespace fondbuilder {

struct Assoc { uint16_t size; int16_t style; int16_t id; };  // size 0: an outline

struct FondRecipe {
    int16_t familyID = 128;
    uint16_t international = 0;
    std::vector<Assoc> entries = {};
    std::vector<int8_t> nameCodes = std::vector<int8_t>(48, 0);
    std::vector<std::string> strings = {};
    std::vector<std::pair<int16_t, std::vector<uint8_t>>> kerning = {};  // (style, pair bytes)
};

inline std::vector<uint8_t> BuildFond(const FondRecipe& recipe)
{
    const size_t tableAt = 54 + 6 * recipe.entries.size();
    ByteWriter w;
    w.u16(0).u16(uint16_t(recipe.familyID)).zeros(12);                   // flags .. widMax
    w.u32(0).u32(0).u32(recipe.strings.empty() ? 0 : uint32_t(tableAt));  // width, kerning, style
    w.zeros(18).u16(0).u16(recipe.international).u16(2);                 // properties, intl, version
    w.u16(uint16_t(recipe.entries.size() - 1));
    for (const Assoc& a : recipe.entries) w.u16(a.size).u16(uint16_t(a.style)).u16(uint16_t(a.id));
    if (!recipe.strings.empty()) {
        w.u16(0).u32(0).u32(0);
        for (int8_t code : recipe.nameCodes) w.u8(uint8_t(code));
        w.u16(uint16_t(recipe.strings.size()));
        for (const std::string& s : recipe.strings) w.pascal(s);
    }
    if (!recipe.kerning.empty()) {
        w.putU32(20, uint32_t(w.size()));
        w.u16(uint16_t(recipe.kerning.size() - 1));
        for (const auto& [style, pairs] : recipe.kerning) w.u16(uint16_t(style)).u16(uint16_t(pairs.size() / 4)).bytes(ByteView(pairs));
        w.u8(0);
    }
    return w.take();
}

}  // namespace fondbuilder
