#include "tables/CFoundryNameTable.h"

#include <algorithm>

#include "support/ResourceDirectory.h"
#include "support/TextEncoding.h"
#include "support/XCFUtils.h"
#include "tables/TableValues.h"

namespace {

constexpr const char* kUnknownFoundry = "--";

// The four characters of a code, most significant byte first, read as Mac
// Roman like every other classic Mac text.
std::string creatorCodeText(uint32_t code)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += char((code >> shift) & 0xFF);
    return TextEncoding::ToUTF8(bytes, kCFStringEncodingMacRoman).value_or(bytes);
}

// A four-character code from its text; false unless the text is exactly
// four Mac Roman characters.
bool creatorCodeValue(const std::string& text, uint32_t& code)
{
    auto utf16 = TextEncoding::UTF8ToUTF16(text);
    if (!utf16) return false;
    auto bytes = TextEncoding::Encode(*utf16, kCFStringEncodingMacRoman);
    if (!bytes || bytes->size() != 4) return false;
    code = 0;
    for (unsigned char byte : *bytes) code = (code << 8) | byte;
    return true;
}

std::vector<uint32_t> readCreatorCodes(const std::string& path)
{
    std::vector<uint32_t> codes;
    if (path.empty()) return codes;
    PlistHolder list(
        XCFUtils::XCFCreateCFPropertyListFromPath(path.c_str(), XCFUtils::kPropertyListImmutable));
    uint32_t count = TableArraySize(list.get());
    for (uint32_t i = 0; i < count; ++i) {
        std::string text;
        uint32_t code = 0;
        if (TableString(plist_array_get_item(list.get(), i), text) &&
            creatorCodeValue(text, code))
            codes.push_back(code);
    }
    return codes;
}

bool entryFoundryName(plist_t entry, LxString& out)
{
    std::string name;
    if (!TableString(XCFUtils::GetCFStringFromDict(entry, "FoundryName"), name))
        return false;
    out = LxString(name);
    return true;
}

}  // namespace

CFoundryNameTable* CFoundryNameTable::GetSharedFoundryNameTable()
{
    return ProcessWideTable<CFoundryNameTable>([](CFoundryNameTable& table) { table.LoadTable(); });
}

void CFoundryNameTable::LoadTable()
{
    LoadTableFromFiles(ResourceDirectory::FilePath("FoundryNameTable.plist"),
                       ResourceDirectory::FilePath("QuestionableCreatorCodes.plist"));
}

void CFoundryNameTable::LoadTableFromFiles(const std::string& tablePath,
                                           const std::string& questionableCodesPath)
{
    table_ = LoadTableFile(tablePath, PLIST_ARRAY, XCFUtils::kPropertyListImmutable);
    patterns_.clear();
    const uint32_t count = TableArraySize(table_.get());
    for (uint32_t i = 0; i < count; ++i) {
        plist_t entry = plist_array_get_item(table_.get(), i);
        NamePattern pattern;
        if (plist_get_node_type(entry) != PLIST_DICT ||
            !TableString(XCFUtils::GetCFStringFromDict(entry, "Pattern"), pattern.pattern))
            continue;
        pattern.hasFoundry = entryFoundryName(entry, pattern.foundry);
        patterns_.push_back(std::move(pattern));
    }
    questionableCodes_ = readCreatorCodes(questionableCodesPath);
}

bool CFoundryNameTable::IsQuestionableCreatorCode(uint32_t creatorCode) const
{
    return std::find(questionableCodes_.begin(), questionableCodes_.end(), creatorCode) !=
           questionableCodes_.end();
}

bool CFoundryNameTable::IsKnownCreatorCode(uint32_t creatorCode, LxString& foundry) const
{
    if (creatorCode == 0) return false;
    const LxString code(creatorCodeText(creatorCode));
    uint32_t count = TableArraySize(table_.get());
    for (uint32_t i = 0; i < count && foundry.empty(); ++i) {
        plist_t entry = plist_array_get_item(table_.get(), i);
        if (plist_get_node_type(entry) != PLIST_DICT) continue;
        plist_t codes = XCFUtils::GetCFArrayFromDict(entry, "CreatorCode");
        uint32_t codeCount = TableArraySize(codes);
        for (uint32_t k = 0; k < codeCount; ++k) {
            std::string text;
            if (!TableString(plist_array_get_item(codes, k), text) || text.empty())
                continue;
            if (code == text && entryFoundryName(entry, foundry)) return true;
        }
    }
    return false;
}

bool CFoundryNameTable::ContainsKnownFoundryName(const LxString& name, LxString* foundry,
                                                 LxString* fallback) const
{
    LxString lowered(name);
    lowered.ToLower();
    for (const NamePattern& entry : patterns_) {
        if (entry.pattern.empty()) {
            // Every fallback entry overwrites the one before: the last one wins.
            if (fallback && entry.hasFoundry) *fallback = entry.foundry;
            continue;
        }
        if (lowered.str().find(entry.pattern) == std::string::npos || !entry.hasFoundry) continue;
        if (foundry) *foundry = entry.foundry;
        return true;
    }
    return false;
}

LxString CFoundryNameTable::GetCanonicalFoundryName(uint32_t creatorCode, const LxString& name) const
{
    LxString result;
    if (IsKnownCreatorCode(creatorCode, result) || !result.empty()) return result;
    LxString fallback;
    if (ContainsKnownFoundryName(name, &result, &fallback)) return result;
    if (!fallback.empty()) return fallback;
    return LxString(kUnknownFoundry);
}
