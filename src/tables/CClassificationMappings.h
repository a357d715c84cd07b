// Assigns a font family its typographic classification by the whole family
// name, from DefaultClassifications.plist in the resource folder, and lists
// the classifications that the table defines.
#pragma once

#include <plist/plist.h>

#include <string>
#include <vector>

#include "support/LxString.h"
#include "tables/TableValues.h"
#include "support/TextEncoding.h"

class CClassificationMappings {
public:
    // The process-wide table, created and loaded on the first call (safe
    // when several threads make it at once) and kept for good.
    static CClassificationMappings* GetSharedClassificationMappings();

    CClassificationMappings() = default;
    CClassificationMappings(const CClassificationMappings&) = delete;
    CClassificationMappings& operator=(const CClassificationMappings&) = delete;

    // Reads the table from the resource folder, then lists the table's own
    // "None" as the unknown classification.
    void LoadMappings();
    // The same from an explicit file.
    void LoadMappingsFromFile(const std::string& path);
    bool IsLoaded() const { return table_ != nullptr; }

    // Replaces, in the list of built-in classifications, every name equal
    // (case-sensitively) to `oldName`; returns how many were replaced.
    long ReplaceDefaultClassification(const PlatformString& oldName, const PlatformString& newName);
    // Classification of the whole family name, ignoring case; "--" when the
    // family is not in the table.
    LxString GetClassNameFromFontFamily(const LxString& family) const;
    void GetListOfBuiltinClasses(std::vector<LxString>& list) const;
    static LxString GetUnknownClassificationName();

private:
    PlistHolder table_;
};
