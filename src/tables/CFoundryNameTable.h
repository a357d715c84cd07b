// Turns what a font file says about its maker (a Mac creator code, or a
// notice, manufacturer, family or PostScript name) into one canonical
// foundry name, from FoundryNameTable.plist in the resource folder.
#pragma once

#include <plist/plist.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/LxString.h"
#include "tables/TableValues.h"

class CFoundryNameTable {
public:
    // The process-wide table, created and loaded on the first call (safe
    // when several threads make it at once) and kept for good.
    static CFoundryNameTable* GetSharedFoundryNameTable();

    CFoundryNameTable() = default;
    CFoundryNameTable(const CFoundryNameTable&) = delete;
    CFoundryNameTable& operator=(const CFoundryNameTable&) = delete;

    // Loads FoundryNameTable.plist and QuestionableCreatorCodes.plist from
    // the resource folder. A missing or unreadable table stays null.
    void LoadTable();
    // The same from explicit files.
    void LoadTableFromFiles(const std::string& tablePath, const std::string& questionableCodesPath);

    // Codes that font tools stamp on the files they write; the comparison
    // is on the whole 32-bit code, so letter case matters.
    bool IsQuestionableCreatorCode(uint32_t creatorCode) const;
    // True, with the foundry in `foundry`, when an entry lists the code
    // (compared ignoring case). A non-empty `foundry` gives false at once.
    bool IsKnownCreatorCode(uint32_t creatorCode, LxString& foundry) const;
    // True, with the foundry in `foundry`, when an entry's lower-case
    // pattern occurs in the lower-cased name; the first such entry wins.
    // Fallback entries (empty pattern) met on the way go to `fallback`.
    bool ContainsKnownFoundryName(const LxString& name, LxString* foundry, LxString* fallback) const;
    // Creator code, then name, then the fallback entry; "--" if unknown.
    LxString GetCanonicalFoundryName(uint32_t creatorCode, const LxString& name) const;

private:
    // A table entry with a name pattern, in table order, read once at load
    // time: name lookups run for every face identified.
    struct NamePattern {
        std::string pattern;       // empty for a fallback entry
        bool hasFoundry = false;
        LxString foundry;
    };

    PlistHolder table_;
    std::vector<NamePattern> patterns_;
    std::vector<uint32_t> questionableCodes_;
};
