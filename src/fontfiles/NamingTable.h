// Names of an sfnt font from its "name" table: one value per output chosen
// among the many platform and language records a font carries.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "support/ByteView.h"
#include "support/LxString.h"

// The naming table's header; count name records follow it. This reader
// takes the count, and each record's nameID, length and stringOffset, as
// signed, as it always has: a value from 0x8000 up is negative.
struct NamingTableHeader {
    static constexpr Field<uint16_t> version{0};
    static constexpr Field<int16_t> count{2};
    static constexpr Field<uint16_t> storageOffset{4};
    static constexpr size_t size = 6;
};

// One name record: which name, in which platform, encoding and language,
// and where its text lies from the start of the string storage.
struct NameRecord {
    static constexpr Field<uint16_t> platformID{0}, encodingID{2}, languageID{4};
    static constexpr Field<int16_t> nameID{6}, length{8}, stringOffset{10};
    static constexpr size_t size = 12;
};

// The header's size under the name the other layers use.
constexpr size_t kNameHeaderSize = NamingTableHeader::size;

// Assigns value when the target is empty or `force` is set.
void AssignConditionally(LxString* target, const LxString& value, bool force);

// Every output may be null (not wanted). The resource file, family handle
// and style identify the face of a resource-fork font; the names come from
// the sfnt bytes alone. Returns 1 when at least one name record was
// visited, 0 when the table is missing, invalid or empty.
int getMetaDataFromNamesTable(ByteView font, const void* resourceFile, const void* fondHandle,
                              short style, LxString* foundry, LxString* family,
                              LxString* version, LxString* postScriptName,
                              LxString* displayName, LxString* fullName);

// The bytes [first, end) of `font` that the reading above can look at for
// a naming table at `tableOffset`: its records and texts at the furthest
// signed offsets from its string storage, as its header gives their count
// and storage. Needs only the table's first 6 bytes.
std::pair<uint64_t, uint64_t> NamingTableReach(ByteView font, uint64_t tableOffset);

// The same reading with only the PostScript name wanted.
int getPostScriptNameFromNamesTable(ByteView font, const void* resourceFile, const void* fondHandle,
                                    short style, std::string& name);
