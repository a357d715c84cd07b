#include "fontfiles/NamingTable.h"

#include <algorithm>
#include <optional>

#include "fontfiles/SfntDirectory.h"
#include "support/Refusal.h"

namespace {

constexpr int16_t kMaxNameLength = 1023;
constexpr uint16_t kLanguageJapanese = 11;
constexpr uint16_t kLanguageUSEnglish = 0x409;

// One name record, as read.
struct Record {
    uint16_t platformID = 0, encodingID = 0, languageID = 0;
    int16_t nameID = 0, length = 0, offset = 0;
};

struct NameSlots {
    LxString postScriptName, copyright, family, subfamily, fullName, manufacturer, version,
        preferredFamily, preferredSubfamily;
};

// State that runs across the records of one table.
struct ScanState {
    bool sawMacEnglish = false;
    uint32_t textEncoding = kCFStringEncodingMacRoman;
};

bool IsDoubleBytePlatform(const Record& r)
{
    switch (r.platformID) {
    case 0: return r.encodingID >= 1 && r.encodingID <= 4;
    case 1: return r.languageID == kLanguageJapanese;
    case 3: return r.encodingID >= 1 && r.encodingID <= 10;
    case 4: return true;
    default: return false;
    }
}

std::optional<Record> readRecord(ByteView font, size_t at)
{
    Record r;
    if (!(font.read(at, NameRecord::platformID, r.platformID) &&
          font.read(at, NameRecord::encodingID, r.encodingID) &&
          font.read(at, NameRecord::languageID, r.languageID) &&
          font.read(at, NameRecord::nameID, r.nameID) &&
          font.read(at, NameRecord::length, r.length) &&
          font.read(at, NameRecord::stringOffset, r.offset)))
        return std::nullopt;
    return r;
}

LxString decodeDoubleByte(ByteView text, const Record& r, ScanState& state)
{
    PlatformString units;
    for (size_t at = 0; at + 1 < text.size(); at += 2) {
        uint16_t unit = 0;
        text.u16(at, unit);
        if (unit == 0) break;
        units.push_back(char16_t(unit));
    }
    if (r.languageID == kLanguageJapanese) state.textEncoding = kCFStringEncodingShiftJIS;
    LxString value;
    value.Set(units);
    return value;
}

LxString decodeSingleByte(ByteView text, const Record& r, ScanState& state)
{
    std::string bytes(text.chars());
    bytes = bytes.substr(0, bytes.find('\0'));
    LxString value;
    if (!bytes.empty() &&
        (r.languageID == kLanguageJapanese || state.textEncoding == kCFStringEncodingShiftJIS)) {
        value.Set(bytes.c_str(), kCFStringEncodingShiftJIS);
        state.textEncoding = kCFStringEncodingShiftJIS;
    }
    if (value.empty()) {
        if (state.textEncoding == kCFStringEncodingMacRoman) {
            // Deliberate: controls and every byte from 0x80 up become "?", so
            // Mac Roman names come out as plain ASCII.
            for (char& c : bytes)
                if (static_cast<signed char>(c) <= 31) c = '?';
        }
        value.Set(bytes.c_str(), state.textEncoding);
    }
    return value;
}

// The first Macintosh record in language 0 ends all overwriting; before it,
// records in encoding 0, in language 0 or in Windows US English overwrite.
bool isPreferred(const Record& r, ScanState& state)
{
    if (state.sawMacEnglish) return false;
    if (r.encodingID == 0) {
        if (r.languageID == 0 && r.platformID == 1) state.sawMacEnglish = true;
        return true;
    }
    if (r.languageID == 0) {
        if (r.platformID == 1) state.sawMacEnglish = true;
        return true;
    }
    return r.languageID == kLanguageUSEnglish && r.platformID == 3;
}

bool isSevenBitASCII(const LxString& value)
{
    for (unsigned char c : value.str())
        if (c >= 0x80) return false;
    return true;
}

void store(NameSlots& slots, const Record& r, const LxString& value, bool preferred)
{
    switch (r.nameID) {
    case 0: AssignConditionally(&slots.copyright, value, preferred); break;
    case 1:
        AssignConditionally(&slots.family, value, preferred);
        if (preferred) slots.preferredFamily = value;
        break;
    case 2:
        AssignConditionally(&slots.subfamily, value, preferred);
        if (preferred) slots.preferredSubfamily = value;
        break;
    case 4: AssignConditionally(&slots.fullName, value, preferred); break;
    case 5: AssignConditionally(&slots.version, value, preferred); break;
    case 6:
        if (isSevenBitASCII(value)) AssignConditionally(&slots.postScriptName, value, preferred);
        break;
    case 8: AssignConditionally(&slots.manufacturer, value, preferred); break;
    case 16: AssignConditionally(&slots.preferredFamily, value, preferred); break;
    case 17: AssignConditionally(&slots.preferredSubfamily, value, preferred); break;
    default: break;
    }
}

// The text of record `index`, or an empty view when it is empty or lies
// outside the font.
ByteView recordText(ByteView font, size_t storage, const Record& r, int index)
{
    int length = r.length > kMaxNameLength ? kMaxNameLength : r.length;
    if (length <= 0) return {};
    // A negative offset reads from before the string storage, deliberately;
    // the text must still lie inside the font.
    const long long start = (long long)storage + r.offset;
    if (start < 0) {
        Refuse("name: record ", index, " starts ", -start, " bytes before the font");
        return {};
    }
    auto text = font.sub(size_t(start), size_t(length));
    if (!text)
        Refuse("name: record ", index, " runs past the string storage (", length, " bytes at ",
               start, ", the font has ", font.size(), ")");
    return text ? *text : ByteView();
}

// Returns whether any record was visited.
bool readSlots(ByteView font, NameSlots& slots)
{
    auto entry = FindRequiredTable(font, "name");
    if (!entry) return false;
    const size_t table = entry->offset;
    if (table == 0) return Refuse("name: the table at offset 0 overlaps the offset table");
    if (table >= font.size())
        return Refuse("name: header at ", table, " lies past the end of the font (", font.size(),
                      " bytes)");
    int16_t count = 0;
    uint16_t storageOffset = 0;
    if (!font.read(table, NamingTableHeader::count, count) ||
        !font.read(table, NamingTableHeader::storageOffset, storageOffset))
        return Refuse("name: header at ", table, " needs ", NamingTableHeader::size,
                      " bytes, the font has ", font.size());
    const size_t storage = table + storageOffset;
    ScanState state;
    int visited = 0;
    for (int i = 0; i < count; ++i) {
        const size_t at = table + NamingTableHeader::size + NameRecord::size * size_t(i);
        auto record = readRecord(font, at);
        if (!record) {
            Refuse("name: record ", i, " of ", count, " runs past the end of the font (at ", at,
                   ", the font has ", font.size(), " bytes)");
            break;
        }
        ++visited;
        ByteView text = recordText(font, storage, *record, i);
        LxString value = IsDoubleBytePlatform(*record) ? decodeDoubleByte(text, *record, state)
                                                       : decodeSingleByte(text, *record, state);
        if (value.empty()) continue;
        bool preferred = isPreferred(*record, state);
        store(slots, *record, value, preferred);
    }
    if (visited == 0 && count <= 0) return Refuse("name: no usable record, count is ", count);
    return visited > 0;
}

const LxString& firstNonEmpty(const LxString& a, const LxString& b)
{
    return a.empty() ? b : a;
}

}  // namespace

std::pair<uint64_t, uint64_t> NamingTableReach(ByteView font, uint64_t tableOffset)
{
    int16_t count = 0;
    uint16_t storageOffset = 0;
    font.read(size_t(tableOffset), NamingTableHeader::count, count);
    font.read(size_t(tableOffset), NamingTableHeader::storageOffset, storageOffset);
    const uint64_t recordsEnd = tableOffset + NamingTableHeader::size +
                                NameRecord::size * uint64_t(std::max<int16_t>(count, 0));
    const uint64_t storage = tableOffset + storageOffset;
    const uint64_t before = uint64_t(-int64_t(INT16_MIN));  // the most negative text offset
    const uint64_t textsFirst = storage > before ? storage - before : 0;
    const uint64_t textsEnd = storage + INT16_MAX + kMaxNameLength;
    return {std::min(tableOffset, textsFirst), std::max(recordsEnd, textsEnd)};
}

void AssignConditionally(LxString* target, const LxString& value, bool force)
{
    if (target && (target->empty() || force)) *target = value;
}

int getMetaDataFromNamesTable(ByteView font, const void*, const void*, short, LxString* foundry,
                              LxString* family, LxString* version, LxString* postScriptName,
                              LxString* displayName, LxString* fullName)
{
    NameSlots slots;
    if (!readSlots(font, slots)) return 0;
    if (foundry) *foundry = firstNonEmpty(slots.manufacturer, slots.copyright);
    if (family) *family = firstNonEmpty(slots.preferredFamily, slots.family);
    if (version) *version = slots.version;
    if (postScriptName) *postScriptName = firstNonEmpty(slots.postScriptName, slots.fullName);
    if (displayName && displayName->empty())
        *displayName = firstNonEmpty(slots.postScriptName, slots.fullName);
    if (fullName) *fullName = firstNonEmpty(slots.fullName, slots.postScriptName);
    return 1;
}

int getPostScriptNameFromNamesTable(ByteView font, const void* resourceFile, const void* fondHandle,
                                    short style, std::string& name)
{
    LxString postScriptName;
    int result = getMetaDataFromNamesTable(font, resourceFile, fondHandle, style, nullptr, nullptr,
                                           nullptr, &postScriptName, nullptr, nullptr);
    name = postScriptName.str();
    return result;
}
