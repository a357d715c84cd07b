// The attributes of a face as the tool names them: the bit of the library's
// mask, the name used on the command line, the JSON key and the table heading.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tpcli {

enum class ValueKind { Text, Checksum, Size };

struct Attribute {
    unsigned long bit;
    const char* name;     // command-line name: "postscript-name"
    const char* jsonKey;  // "postScriptName"
    const char* heading;  // "POSTSCRIPT NAME"
    ValueKind kind;
};

// Every attribute, in output order.
const std::vector<Attribute>& AllAttributes();

// The attribute with this bit; null for an undefined bit.
const Attribute* AttributeForBit(unsigned long bit);

// Every defined bit.
unsigned long FullMask();

// The attributes the table shows when none were chosen.
unsigned long DefaultTableMask();

// Parses a comma-separated list of attribute names (case blind), "all", or
// numbers ("0x4001", "16385"). Returns nothing and sets `error` for an
// unknown name or a number holding undefined bits.
std::optional<unsigned long> ParseAttributeMask(std::string_view text, std::string& error);

// The names of the bits set in `mask`, in output order.
std::vector<std::string> AttributeNames(unsigned long mask);

}  // namespace tpcli
