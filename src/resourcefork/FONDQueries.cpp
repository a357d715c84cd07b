// The font family (FOND) questions of TypeprobeResourceFile: styles,
// association entries, family and PostScript names, printer fonts.
#include <algorithm>

#include "resourcefork/FONDRecord.h"
#include "resourcefork/FONDStyleNames.h"
#include "resourcefork/PascalStrings.h"
#include "resourcefork/PrinterFontNames.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "support/TextEncoding.h"

namespace {

ByteView viewOf(const ResourceHandle* fond)
{
    return fond ? fond->view() : ByteView();
}

bool hasTable(const ResourceHandle* fond)
{
    return fond && fond->size() >= FOND::kEntries;
}

// Sorted once when complete: a hostile table has thousands of entries.
std::vector<int16_t> sorted(std::vector<int16_t> list, bool distinct)
{
    std::sort(list.begin(), list.end());
    if (distinct) list.erase(std::unique(list.begin(), list.end()), list.end());
    return list;
}

LxString decodeName(const std::string& bytes, bool japanese)
{
    if (japanese) {
        if (auto text = TextEncoding::ToUTF8(bytes, kCFStringEncodingMacJapanese)) return *text;
    }
    return TextEncoding::ToUTF8(bytes, kCFStringEncodingMacRoman).value_or(std::string());
}

bool contains(const std::vector<std::string>& list, const std::string& value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

bool endsWith(const std::string& text, const std::string& suffix)
{
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

bool TypeprobeResourceFile::resourceExists(uint32_t type, int16_t id) const
{
    return map_.find(type, id) != nullptr;
}

std::string TypeprobeResourceFile::folder() const
{
    const size_t slash = _kzFile.rfind('/');
    if (slash == std::string::npos) return ".";
    return _kzFile.substr(0, slash);
}

bool TypeprobeResourceFile::styleExists(int16_t style, const ResourceHandle* fond) const
{
    if (!hasTable(fond)) return false;
    for (const FOND::AssociationEntry& entry : FOND::Entries(fond->view()))
        if (entry.style == style) return true;
    return false;
}

std::vector<int16_t> TypeprobeResourceFile::getSortedStylesForFOND(const ResourceHandle* fond) const
{
    std::vector<int16_t> styles;
    if (!hasTable(fond)) return styles;
    for (const FOND::AssociationEntry& entry : FOND::Entries(fond->view()))
        styles.push_back(entry.style);
    return sorted(std::move(styles), true);
}

std::vector<int16_t> TypeprobeResourceFile::getSortedStyles() const
{
    std::vector<int16_t> styles;
    const std::vector<int16_t> ids = getSortedResIDsForType(fourCC("FOND"));
    for (size_t k = 0; k < ids.size(); ++k) {
        ResourceHandlePtr fond = getResourceHandleForType(fourCC("FOND"), ids[k]);
        if (!hasTable(fond.get())) continue;
        const ByteView bytes = fond->view();
        // Tied to the FOND's position in the file, not the entries' (intended).
        if (!bytes.contains(0, FOND::EntryOffset(k + 1))) continue;
        for (const FOND::AssociationEntry& entry : FOND::Entries(bytes)) styles.push_back(entry.style);
    }
    return sorted(std::move(styles), true);
}

int16_t TypeprobeResourceFile::getResIDForFOND(const ResourceHandle* fond, int index) const
{
    if (!hasTable(fond) || index < 0 || index >= FOND::EntryCount(fond->view())) return -1;
    auto entry = FOND::EntryAt(fond->view(), size_t(index));
    return entry ? entry->id : int16_t(-1);
}

std::vector<int16_t> TypeprobeResourceFile::getSortedNFNTsForFOND(const ResourceHandle* fond,
                                                                  int16_t style) const
{
    std::vector<int16_t> ids;
    if (!hasTable(fond)) return ids;
    for (const FOND::AssociationEntry& entry : FOND::Entries(fond->view()))
        if (entry.style == style) ids.push_back(entry.id);
    return sorted(std::move(ids), false);
}

bool TypeprobeResourceFile::shouldHavePrinterFile(const ResourceHandle* fond, int16_t style) const
{
    if (!hasTable(fond)) return true;
    for (const FOND::AssociationEntry& entry : FOND::Entries(fond->view()))
        if (entry.style == style && entry.size == 0) return false;
    return true;
}

bool TypeprobeResourceFile::isDoubleByteFOND(const ResourceHandle* fond) const
{
    const ByteView bytes = viewOf(fond);
    uint16_t international = 0;
    int16_t familyID = 0;
    if (bytes.size() < FOND::kHeaderSize ||
        !bytes.read(0, FOND::Header::ffIntl.at(1), international) ||
        !bytes.read(0, FOND::Header::ffFamID, familyID))
        return false;
    return international != 0 ||
           (familyID >= FOND::kDoubleByteFirstID && familyID <= FOND::kDoubleByteLastID);
}

uint32_t TypeprobeResourceFile::getStyleOffsetFromFOND(const ResourceHandle* fond) const
{
    return FOND::StyleMappingOffset(viewOf(fond));
}

LxString TypeprobeResourceFile::getResourceNameFromFOND(const ResourceHandle* fond) const
{
    if (!fond) return LxString();
    const std::string& name = fond->name;
    if (!isDoubleByteFOND(fond)) return decodeName(name, false);

    bool japanese = getStyleOffsetFromFOND(fond) != 0;
    const ByteView bytes = fond->view();
    uint16_t firstSize = 0;
    if (bytes.size() >= FOND::kEntries &&
        bytes.read(FOND::EntryOffset(0), FOND::AsscEntry::fontSize, firstSize)) {
        const int count = FOND::EntryCount(bytes);
        for (int i = 0; i < count; ++i) {
            auto entry = FOND::EntryAt(bytes, size_t(i));
            if (!entry) continue;
            // The first entry's size decides every step (intended).
            if (firstSize != 0) {
                if (resourceExists(fourCC("FONT"), entry->id)) return decodeName(name, false);
                continue;
            }
            ResourceHandlePtr outline = getResourceHandleForType(fourCC("sfnt"), entry->id);
            if (!outline) return decodeName(name, false);
            if (outline->size() > 4)
                japanese = outline->view().startsWith("typ1") || name.rfind("A-CID", 0) == 0 ||
                           endsWith(name, "CID-B");
            break;
        }
    }
    return decodeName(name, japanese);
}

LxString TypeprobeResourceFile::getPostScriptNameForFOND(const ResourceHandle* fond,
                                                         int16_t style) const
{
    if (!fond) return LxString();
    unsigned char name[kPascalBufferSize];
    GetPrinterFontNameFromResource(fond, style & 0xFF, name, sizeof name);
    return LxString(std::string(PascalText(name)));
}

LxString TypeprobeResourceFile::getPSPrinterNameForFOND(const ResourceHandle* fond,
                                                        int16_t style) const
{
    if (!fond) return LxString();
    unsigned char name[kPascalBufferSize];
    GetPrinterFontNameFromResource(fond, style & 0xFF, name, sizeof name);
    std::string fileName;
    if (isDoubleByteFOND(fond) && getStyleOffsetFromFOND(fond) != 0) {
        const std::string text(PascalText(name));
        const size_t first = text.find('-');
        const size_t second = first == std::string::npos ? first : text.find('-', first + 1);
        if (second != std::string::npos) fileName = text.substr(0, second);
    } else {
        unsigned char abbreviated[kPascalBufferSize];
        GetPostScriptFontFileName(name, abbreviated);
        fileName = PascalText(abbreviated);
    }
    // A Mac file name may hold "/", which a POSIX disk keeps as ":"; left as
    // it is, a family's names would reach files outside its folder.
    std::replace(fileName.begin(), fileName.end(), '/', ':');
    return LxString(fileName);
}

std::vector<LxString> TypeprobeResourceFile::getPrinterFiles() const
{
    std::vector<std::string> result, withFile, seen;
    const std::vector<int16_t> ids = getSortedResIDsForType(fourCC("FOND"));
    const std::string base = folder();
    for (int16_t style : getSortedStyles()) {
        for (int16_t id : ids) {
            ResourceHandlePtr fond = getResourceHandleForType(fourCC("FOND"), id);
            if (!fond || !styleExists(style, fond.get())) continue;
            const std::string name = getPSPrinterNameForFOND(fond.get(), style).str();
            if (name.empty()) continue;  // a folder is never a printer font
            const std::string path = base + "/" + name;
            if (shouldHavePrinterFile(fond.get(), style)) {
                if (contains(result, path) || contains(seen, name)) continue;
                result.push_back(path);
                withFile.push_back(name);
                seen.push_back(name);
            } else {
                if (!contains(seen, name)) seen.push_back(name);
                if (contains(withFile, name))
                    result.erase(std::remove(result.begin(), result.end(), path), result.end());
            }
        }
    }
    return std::vector<LxString>(result.begin(), result.end());
}

LxString TypeprobeResourceFile::normalizePostScriptName(const LxString& name,
                                                        const ResourceHandle* fond,
                                                        bool* isMM) const
{
    if (!fond || !isMM) return name;
    std::string p = name.str();
    if (size_t marker = p.find("%M"); marker != std::string::npos) {
        *isMM = true;
        p = p.substr(marker + 2);
    }
    if (size_t mm = p.find("MM"); mm != std::string::npos) {
        *isMM = true;
        const std::string prefix = p.substr(0, mm);
        const std::string rest = p.substr(mm + 2);
        const size_t underscore = rest.find('_');
        return LxString(underscore == std::string::npos ? prefix : prefix + rest.substr(0, underscore));
    }
    return *isMM ? LxString(p) : name;
}
