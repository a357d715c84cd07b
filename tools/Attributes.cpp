#include "Attributes.h"

#include <cctype>
#include <cstdlib>

#include <typeprobe/typeprobe.h>

namespace tpcli {

const std::vector<Attribute>& AllAttributes()
{
    static const std::vector<Attribute> attributes = {
        {kTP_AttrPostScriptName, "postscript-name", "postScriptName", "POSTSCRIPT NAME",
         ValueKind::Text},
        {kTP_AttrKindName, "kind", "kind", "KIND", ValueKind::Text},
        {kTP_AttrFamilyName, "family", "family", "FAMILY", ValueKind::Text},
        {kTP_AttrFullName, "full-name", "fullName", "FULL NAME", ValueKind::Text},
        {kTP_AttrDisplayName, "display-name", "displayName", "DISPLAY NAME", ValueKind::Text},
        {kTP_AttrFoundryName, "foundry", "foundry", "FOUNDRY", ValueKind::Text},
        {kTP_AttrVersion, "version", "version", "VERSION", ValueKind::Text},
        {kTP_AttrPlatform, "platform", "platform", "PLATFORM", ValueKind::Text},
        {kTP_AttrTypeprobeChecksum, "checksum", "checksum", "CHECKSUM", ValueKind::Checksum},
        {kTP_AttrLegacyTypeprobeChecksum, "legacy-checksum", "legacyChecksum", "LEGACY",
         ValueKind::Checksum},
        {kTP_AttrKerningChecksum, "kerning-checksum", "kerningChecksum", "KERNING",
         ValueKind::Checksum},
        {kTP_AttrOutlineFileSize, "outline-size", "outlineFileSize", "SIZE", ValueKind::Size},
        {kTP_AttrPrinterFontName, "printer-font", "printerFont", "PRINTER FONT",
         ValueKind::Text},
        {kTP_AttrWindowsMMFile, "windows-mm-file", "windowsMMFile", "MM FILE", ValueKind::Text},
    };
    return attributes;
}

const Attribute* AttributeForBit(unsigned long bit)
{
    for (const Attribute& attribute : AllAttributes())
        if (attribute.bit == bit) return &attribute;
    return nullptr;
}

unsigned long FullMask()
{
    unsigned long mask = 0;
    for (const Attribute& attribute : AllAttributes()) mask |= attribute.bit;
    return mask;
}

unsigned long DefaultTableMask()
{
    return kTP_AttrPostScriptName | kTP_AttrKindName | kTP_AttrFamilyName | kTP_AttrFoundryName |
           kTP_AttrVersion | kTP_AttrPlatform | kTP_AttrTypeprobeChecksum;
}

namespace {

std::string Lowered(std::string_view text)
{
    std::string out;
    for (char c : text) {
        if (c == '_') c = '-';
        out.push_back(char(std::tolower(static_cast<unsigned char>(c))));
    }
    return out;
}

std::string_view Trimmed(std::string_view text)
{
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
        text.remove_suffix(1);
    return text;
}

std::optional<unsigned long> ParseNumber(const std::string& word)
{
    if (word.empty() || !std::isdigit(static_cast<unsigned char>(word[0]))) return std::nullopt;
    char* end = nullptr;
    unsigned long value = std::strtoul(word.c_str(), &end, 0);
    if (*end != '\0') return std::nullopt;
    return value;
}

std::optional<unsigned long> ParseWord(const std::string& word, std::string& error)
{
    if (word == "all") return FullMask();
    for (const Attribute& attribute : AllAttributes())
        if (word == attribute.name) return attribute.bit;
    if (auto number = ParseNumber(word)) {
        if (*number & ~FullMask()) {
            error = "attribute mask " + word + " holds undefined bits";
            return std::nullopt;
        }
        return number;
    }
    error = "unknown attribute \"" + word + "\" (known: all";
    for (const Attribute& attribute : AllAttributes()) error += std::string(", ") + attribute.name;
    error += ")";
    return std::nullopt;
}

}  // namespace

std::optional<unsigned long> ParseAttributeMask(std::string_view text, std::string& error)
{
    unsigned long mask = 0;
    bool any = false;
    while (true) {
        size_t comma = text.find(',');
        std::string word = Lowered(Trimmed(text.substr(0, comma)));
        if (!word.empty()) {
            auto bits = ParseWord(word, error);
            if (!bits) return std::nullopt;
            mask |= *bits;
            any = true;
        }
        if (comma == std::string_view::npos) break;
        text.remove_prefix(comma + 1);
    }
    if (!any) {
        error = "no attribute named";
        return std::nullopt;
    }
    return mask;
}

std::vector<std::string> AttributeNames(unsigned long mask)
{
    std::vector<std::string> names;
    for (const Attribute& attribute : AllAttributes())
        if (mask & attribute.bit) names.push_back(attribute.name);
    return names;
}

}  // namespace tpcli
