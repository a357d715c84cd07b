#include "FontFile.h"

#include <cstdio>

#include "Attributes.h"
#include "Library.h"

namespace tpcli {

namespace {

// Longer than any path the system accepts; names are far shorter.
constexpr int kTextCapacity = 8192;

using TextAccessor = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);
using NumberAccessor = unsigned long (*)(TP_FontArray*, unsigned long, unsigned long*);

TextAccessor TextAccessorFor(unsigned long bit)
{
    const LibraryFunctions& library = Library();
    switch (bit) {
    case kTP_AttrPostScriptName: return library.TP_GetPostScriptName;
    case kTP_AttrKindName: return library.TP_GetKindName;
    case kTP_AttrFamilyName: return library.TP_GetFamilyName;
    case kTP_AttrFullName: return library.TP_GetFullName;
    case kTP_AttrDisplayName: return library.TP_GetDisplayName;
    case kTP_AttrVersion: return library.TP_GetVersion;
    case kTP_AttrPlatform: return library.TP_GetPlatform;
    case kTP_AttrPrinterFontName: return library.TP_GetPrinterFont;
    case kTP_AttrWindowsMMFile: return library.TP_GetWindowsMMFile;
    case kTP_AttrFoundryName: return library.TP_GetFoundryName;
    default: return nullptr;
    }
}

NumberAccessor NumberAccessorFor(unsigned long bit)
{
    const LibraryFunctions& library = Library();
    switch (bit) {
    case kTP_AttrTypeprobeChecksum: return library.TP_GetTypeprobeChecksum;
    case kTP_AttrLegacyTypeprobeChecksum: return library.TP_GetLegacyTypeprobeChecksum;
    case kTP_AttrKerningChecksum: return library.TP_GetKerningChecksum;
    case kTP_AttrOutlineFileSize: return library.TP_GetOutlineFileSize;
    default: return nullptr;
    }
}

std::optional<std::string> ReadText(TextAccessor accessor, TP_FontArray* array,
                                    unsigned long index)
{
    std::string buffer(kTextCapacity, '\0');
    const unsigned long result = accessor(array, index, buffer.data(), kTextCapacity);
    if (result == kTP_AttributeNotRequested) return std::nullopt;
    // The multiple-master file answers 1 when the face has none.
    if (result != kTP_Success) return std::string();
    buffer.resize(buffer.find('\0'));
    return buffer;
}

}  // namespace

std::string HexChecksum(unsigned long value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08lX", value & 0xFFFFFFFFUL);
    return text;
}

std::string Face::text(unsigned long bit) const
{
    auto found = texts.find(bit);
    return found == texts.end() ? std::string() : found->second;
}

unsigned long Face::number(unsigned long bit) const
{
    auto found = numbers.find(bit);
    return found == numbers.end() ? 0 : found->second;
}

std::string Face::display(unsigned long bit) const
{
    if (!has(bit)) return {};
    const Attribute* attribute = AttributeForBit(bit);
    if (!attribute) return {};
    switch (attribute->kind) {
    case ValueKind::Text: return text(bit);
    case ValueKind::Checksum: return HexChecksum(number(bit));
    case ValueKind::Size: return std::to_string(number(bit));
    }
    return {};
}

std::optional<FontFile> FontFile::Open(const std::string& path, unsigned long mask,
                                       unsigned long options)
{
    TP_FontArray* array = nullptr;
    const unsigned long result =
        Library().TP_CreateSpecifierWithOptions(path.c_str(), options, mask, &array);
    if (result != kTP_Success || !array)
        return std::nullopt;
    return FontFile(FontArrayPtr(array), mask);
}

unsigned long FontFile::faceCount() const
{
    unsigned long count = 0;
    Library().TP_GetFontCount(array_.get(), &count);
    return count;
}

Face FontFile::face(unsigned long index) const
{
    Face face;
    face.index = index;
    for (const Attribute& attribute : AllAttributes()) {
        if (!(mask_ & attribute.bit)) continue;
        if (TextAccessor accessor = TextAccessorFor(attribute.bit)) {
            if (auto value = ReadText(accessor, array_.get(), index)) {
                face.texts[attribute.bit] = *value;
                face.mask |= attribute.bit;
            }
        } else if (NumberAccessor accessor = NumberAccessorFor(attribute.bit)) {
            unsigned long value = 0;
            if (accessor(array_.get(), index, &value) == kTP_Success) {
                face.numbers[attribute.bit] = value;
                face.mask |= attribute.bit;
            }
        }
    }
    if (face.has(kTP_AttrFoundryName))
        face.legacyFoundry = ReadText(Library().TP_GetLegacyFoundryName, array_.get(), index);
    face.wrapper = ReadText(Library().TP_GetWrapper, array_.get(), index).value_or("");
    face.container = ReadText(Library().TP_GetContainer, array_.get(), index).value_or("");
    return face;
}

std::vector<Face> FontFile::faces() const
{
    std::vector<Face> out;
    const unsigned long count = faceCount();
    for (unsigned long index = 0; index < count; ++index) out.push_back(face(index));
    return out;
}

}  // namespace tpcli
