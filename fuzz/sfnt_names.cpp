// The sfnt table directory and the naming table: every lookup bounded, every
// name that comes out well-formed UTF-8, the PostScript name plain ASCII.
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "fontfiles/NamingTable.h"
#include "fontfiles/SfntDirectory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const ByteView font(data, size);
    for (const char* tag : {"name", "OS/2", "cmap", "head", "kern", "GPOS", "glyf", "ab", ""}) {
        auto entry = FindSpecifiedTable(font, tag);
        if (!entry) continue;
        FUZZ_CHECK(font.contains(entry->entryOffset, kDirectoryEntrySize));
        if (ValidateDirectoryEntry(&*entry, font))
            FUZZ_CHECK(uint32_t(entry->offset + entry->length) <= size);
    }
    FUZZ_CHECK(!ValidateDirectoryEntry(nullptr, font));

    LxString foundry, family, version, postScriptName, displayName, fullName;
    const int found = getMetaDataFromNamesTable(font, nullptr, nullptr, 0, &foundry, &family,
                                                &version, &postScriptName, &displayName, &fullName);
    for (const LxString* name : {&foundry, &family, &version, &postScriptName, &displayName, &fullName}) {
        FUZZ_CHECK(fuzzsupport::IsUTF8(name->str()));
        FUZZ_CHECK(found || name->empty());
    }

    std::string alone;
    const int foundAlone = getPostScriptNameFromNamesTable(font, nullptr, nullptr, 0, alone);
    FUZZ_CHECK(foundAlone == found && alone == postScriptName.str());
    // Nothing wanted: the table is still read, and nothing is written.
    FUZZ_CHECK(getMetaDataFromNamesTable(font, nullptr, nullptr, 0, nullptr, nullptr, nullptr,
                                         nullptr, nullptr, nullptr) == found);
    return 0;
}
