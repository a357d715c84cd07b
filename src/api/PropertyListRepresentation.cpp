// The property-list form of an array: an array with one dictionary of
// strings per face, written as a standard XML property list.
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

#include "api/Representations.h"
#include "support/TextEncoding.h"
#include "support/XCFUtils.h"

using namespace representation;

// Exported through their declarations in the public header.
extern "C" {

const char* const kTP_KindKey = "FontKind";
const char* const kTP_PostScriptNameKey = "PostScriptName";
const char* const kTP_FoundryKey = "Foundry";
const char* const kTP_FamilyKey = "Family";
const char* const kTP_VersionKey = "Version";
const char* const kTP_KerningChecksumKey = "KerningChecksum";
const char* const kTP_ChecksumKey = "Checksum";
const char* const kTP_OutlineFileSizeKey = "OutlineFileSize";
const char* const kTP_OutlineFileNameKey = "OutlineFileName";
const char* const kTP_KeywordsKey = "Keywords";
const char* const kTP_PathKey = "Path";

}  // extern "C"

namespace {

struct PlistFree {
    void operator()(plist_t node) const { plist_free(node); }
};
using PlistHolder = std::unique_ptr<void, PlistFree>;

// A string value must be UTF-8. A value cut by the work buffer may end in
// part of a character, which is dropped; text that is still not UTF-8 is
// written as "".
std::string UTF8Value(std::string text)
{
    for (int dropped = 0; dropped <= 3 && !text.empty(); ++dropped) {
        if (TextEncoding::UTF8ToUTF16(text)) return text;
        text.pop_back();
    }
    return TextEncoding::UTF8ToUTF16(text) ? text : std::string();
}

void PutString(plist_t dict, const char* key, const std::string& value)
{
    XCFUtils::PutUTF8NullTermCharPtrIntoDict(dict, key, UTF8Value(value).c_str());
}

plist_t FaceDictionary(TP_FontArray* array, unsigned long index)
{
    plist_t dict = plist_new_dict();
    PutString(dict, kTP_KindKey, AccessorText(TP_GetKindName, array, index));
    PutString(dict, kTP_PostScriptNameKey, AccessorText(TP_GetPostScriptName, array, index));
    PutString(dict, kTP_FoundryKey, AccessorText(TP_GetFoundryName, array, index));
    PutString(dict, kTP_FamilyKey, AccessorText(TP_GetFamilyName, array, index));
    PutString(dict, kTP_VersionKey, AccessorText(TP_GetVersion, array, index));
    unsigned long number = 0;
    TP_GetKerningChecksum(array, index, &number);
    PutString(dict, kTP_KerningChecksumKey, FormatChecksum(number));
    // Not reset: a face without a valid Typeprobe checksum is written with
    // its kerning checksum's digits here. Intended.
    TP_GetTypeprobeChecksum(array, index, &number);
    PutString(dict, kTP_ChecksumKey, FormatChecksum(number));
    number = 0;
    TP_GetOutlineFileSize(array, index, &number);
    PutString(dict, kTP_OutlineFileSizeKey, FormatFileSize(number));
    PutString(dict, kTP_OutlineFileNameKey, AccessorText(TP_GetPrinterFont, array, index));
    PutString(dict, kTP_KeywordsKey, "");
    PutString(dict, kTP_PathKey, "");
    return dict;
}

std::string PropertyListDocument(TP_FontArray* array)
{
    PlistHolder list(plist_new_array());
    for (unsigned long index = 0; index < array->size(); ++index)
        plist_array_append_item(list.get(), FaceDictionary(array, index));
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(list.get(), &xml, &length);
    std::string document = xml ? std::string(xml, length) : std::string();
    plist_to_xml_free(xml);
    return document;
}

// Removing duplicates, for faces rebuilt from a stored form: they have no
// resource numbers, so of the faces that share a PostScript name (bytes
// compared exactly) only the first stays. Deciding while reading keeps
// hostile documents with many faces from costing quadratic time.
class FirstOfEachName {
public:
    // True when no earlier face had this face's PostScript name.
    bool operator()(const TP_FontSpecifier& face)
    {
        return names_.insert(face.postScriptName.str()).second;
    }

private:
    std::unordered_set<std::string> names_;
};

TP_FontSpecifier ReadFace(plist_t dict)
{
    TP_FontSpecifier face = NewStoredFace();
    for (const TextAttribute& attribute : kTextAttributes) {
        plist_t value = XCFUtils::GetCFStringFromDict(dict, attribute.name);
        if (!value) continue;
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(value, &length);
        face.*attribute.field = text ? std::string(text, size_t(length)) : std::string();
        face.validAttributes |= attribute.bit;
    }
    for (const NumberAttribute& attribute : kNumberAttributes) {
        plist_t value = XCFUtils::GetCFStringFromDict(dict, attribute.name);
        if (!value) continue;
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(value, &length);
        face.*attribute.field = ParseLong32(text ? text : "", attribute.base);
        face.validAttributes |= attribute.bit;
    }
    return face;
}

// The parsed list, or null. Only XML text is read: a binary list is not
// text (its first zero byte would end it anyway) and is refused whole.
PlistHolder ParseList(const char* plist)
{
    const std::string_view text(plist);
    if (text.size() >= 2147483647 || text.starts_with("bplist")) return nullptr;
    return PlistHolder(XCFUtils::XCFCreateCFPropertyListFromBytes(text));
}

}  // namespace

extern "C" {

TP_API unsigned long TP_GetPropertyListRepresentation(TP_FontArray* array, char* buffer,
                                                      unsigned long* length)
{
    if (!array || !buffer || !length) return kTP_NullArgumentOrNotFound;
    return DeliverDocument(PropertyListDocument(array), array->size() > 0, buffer, length);
}

// An element that is not a dictionary has no keys and gives a face with
// nothing valid, as an empty dictionary does.
TP_API unsigned long TP_CreateSpecifierFromPropertyList(const char* plist, TP_FontArray** result)
{
    if (!plist || !result) return kTP_NullArgumentOrNotFound;
    PlistHolder list = ParseList(plist);
    if (!list || plist_get_node_type(list.get()) != PLIST_ARRAY) return kTP_NullArgumentOrNotFound;
    const uint32_t count = plist_array_get_size(list.get());
    auto array = std::make_unique<TP_FontArray>();
    FirstOfEachName firstOfEachName;
    for (uint32_t i = 0; i < count; ++i) {
        plist_t element = plist_array_get_item(list.get(), i);
        if (!element) continue;
        TP_FontSpecifier face = ReadFace(element);
        if (firstOfEachName(face)) array->Append(face);
    }
    if (array->size() == 0) return kTP_NullArgumentOrNotFound;
    *result = array.release();
    return kTP_Success;
}

}  // extern "C"
