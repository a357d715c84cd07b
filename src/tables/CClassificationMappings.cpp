#include "tables/CClassificationMappings.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <optional>

#include "support/ResourceDirectory.h"
#include "support/XCFUtils.h"
#include "tables/TableValues.h"

namespace {

constexpr const char* kUnknownClassification = "--";
// Classification names are read through a buffer of this size.
constexpr size_t kClassNameBufferSize = 1024;

// Locale-independent lower-casing of the whole text; nothing for text that
// is not UTF-8.
std::optional<std::string> lowerCased(const std::string& utf8)
{
    auto utf16 = TextEncoding::UTF8ToUTF16(utf8);
    if (!utf16) return std::nullopt;
    icu::UnicodeString text(reinterpret_cast<const UChar*>(utf16->data()), int32_t(utf16->size()));
    text.toLower(icu::Locale::getRoot());
    std::string lowered;
    text.toUTF8String(lowered);
    return lowered;
}

}  // namespace

CClassificationMappings* CClassificationMappings::GetSharedClassificationMappings()
{
    return ProcessWideTable<CClassificationMappings>(
        [](CClassificationMappings& mappings) { mappings.LoadMappings(); });
}

void CClassificationMappings::LoadMappings()
{
    LoadMappingsFromFile(ResourceDirectory::FilePath("DefaultClassifications.plist"));
}

void CClassificationMappings::LoadMappingsFromFile(const std::string& path)
{
    table_ = LoadTableFile(path, PLIST_DICT, XCFUtils::kPropertyListMutableContainersAndLeaves);
    if (!table_) return;
    ReplaceDefaultClassification(u"None", u"--");
}

long CClassificationMappings::ReplaceDefaultClassification(const PlatformString& oldName,
                                                           const PlatformString& newName)
{
    if (!table_) return 0;
    auto oldText = TextEncoding::UTF16ToUTF8(oldName);
    auto newText = TextEncoding::UTF16ToUTF8(newName);
    if (!oldText || !newText) return 0;
    plist_t list = XCFUtils::GetCFArrayFromDict(table_.get(), "Default Classifications");
    long replaced = 0;
    uint32_t count = TableArraySize(list);
    for (uint32_t i = 0; i < count; ++i) {
        plist_t item = plist_array_get_item(list, i);
        std::string text;
        if (!TableString(item, text) || text != *oldText) continue;
        // The array is edited in place, so nothing needs storing back.
        plist_set_string_val(item, newText->c_str());
        ++replaced;
    }
    return replaced;
}

LxString CClassificationMappings::GetClassNameFromFontFamily(const LxString& family) const
{
    LxString result(kUnknownClassification);
    if (!table_) return result;
    auto key = lowerCased(family.str());
    if (!key) return result;
    plist_t mappings = nullptr;
    if (!XCFUtils::GetCFTypeFromDict(table_.get(), "Mappings", PLIST_DICT, mappings)) return result;
    std::string name;
    if (TableString(plist_dict_get_item(mappings, key->c_str()), kClassNameBufferSize, name))
        result = LxString(name);
    return result;
}

void CClassificationMappings::GetListOfBuiltinClasses(std::vector<LxString>& list) const
{
    list.clear();
    if (!table_) return;
    plist_t classes = XCFUtils::GetCFArrayFromDict(table_.get(), "Default Classifications");
    uint32_t count = TableArraySize(classes);
    for (uint32_t i = 0; i < count; ++i) {
        std::string name;
        if (TableString(plist_array_get_item(classes, i), kClassNameBufferSize, name))
            list.emplace_back(name);
    }
}

LxString CClassificationMappings::GetUnknownClassificationName()
{
    return LxString(kUnknownClassification);
}
