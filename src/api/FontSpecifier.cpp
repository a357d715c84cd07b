#include "api/FontSpecifier.h"

#include "typeprobe/typeprobe.h"

namespace {

struct TextAttribute {
    uint32_t bit;
    LxString TP_FontSpecifier::*field;
};

struct NumberAttribute {
    uint32_t bit;
    uint32_t TP_FontSpecifier::*field;
};

// The compared names; full name, display name and
// platform are never compared.
constexpr TextAttribute kComparedNames[] = {
    {kTP_AttrKindName, &TP_FontSpecifier::kindName},
    {kTP_AttrFamilyName, &TP_FontSpecifier::familyName},
    {kTP_AttrPostScriptName, &TP_FontSpecifier::postScriptName},
    {kTP_AttrFoundryName, &TP_FontSpecifier::foundryName},
    {kTP_AttrVersion, &TP_FontSpecifier::version},
    {kTP_AttrPrinterFontName, &TP_FontSpecifier::printerFontName},
};

// The compared numbers; the two identity checksums are never compared.
constexpr NumberAttribute kComparedNumbers[] = {
    {kTP_AttrKerningChecksum, &TP_FontSpecifier::kerningChecksum},
    {kTP_AttrOutlineFileSize, &TP_FontSpecifier::outlineFileSize},
};

}  // namespace

TP_FontSpecifier::TP_FontSpecifier() = default;
TP_FontSpecifier::TP_FontSpecifier(const TP_FontSpecifier& other) = default;
TP_FontSpecifier& TP_FontSpecifier::operator=(const TP_FontSpecifier& other) = default;
TP_FontSpecifier::~TP_FontSpecifier() = default;

unsigned long TP_FontSpecifier::MatchingAttributes(const TP_FontSpecifier& other) const
{
    const uint32_t both = validAttributes & other.validAttributes;
    unsigned long result = 0;
    for (const TextAttribute& a : kComparedNames) {
        // Case-blind, and two empty names match: intended.
        if ((both & a.bit) && this->*a.field == other.*a.field) result |= a.bit;
    }
    for (const NumberAttribute& a : kComparedNumbers) {
        const uint32_t mine = this->*a.field;
        if ((both & a.bit) && mine != 0 && mine == other.*a.field) result |= a.bit;
    }
    return result;
}

unsigned long TP_FontSpecifier::DifferingAttributes(const TP_FontSpecifier& other) const
{
    const uint32_t both = validAttributes & other.validAttributes;
    unsigned long result = 0;
    for (const TextAttribute& a : kComparedNames) {
        const std::string& mine = (this->*a.field).str();
        const std::string& theirs = (other.*a.field).str();
        // Byte exact, so a case-only difference both matches and differs: intended.
        if ((both & a.bit) && !mine.empty() && !theirs.empty() && mine != theirs) result |= a.bit;
    }
    for (const NumberAttribute& a : kComparedNumbers) {
        const uint32_t mine = this->*a.field;
        const uint32_t theirs = other.*a.field;
        if ((both & a.bit) && mine != 0 && theirs != 0 && mine != theirs) result |= a.bit;
    }
    return result;
}
