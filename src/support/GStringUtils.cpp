#include "support/GStringUtils.h"

#include <strings.h>
#include <unicode/ucol.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <memory>
#include <sstream>

namespace {

unsigned char byteAt(const char* p, unsigned long i)
{
    return static_cast<unsigned char>(p[i]);
}

char mapByte(char c, int (*map)(int))
{
    return static_cast<char>(map(static_cast<unsigned char>(c)));
}

std::string mapBytes(std::string s, int (*map)(int))
{
    for (char& c : s) c = mapByte(c, map);
    return s;
}

// The C library's atoi, spelled so that out-of-range text is defined.
int atoiOf(const std::string& s)
{
    return static_cast<int>(std::strtol(s.c_str(), nullptr, 10));
}

bool isStrippable(char c)
{
    auto byte = static_cast<unsigned char>(c);
    return byte < 0x80 && !std::isgraph(byte);
}

bool isAsciiLetter(unsigned char byte)
{
    return byte < 0x80 && std::isalpha(byte);
}

// ---- Unicode comparison ----------------------------------------------------

struct CollatorCloser {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};

// Opening a collator is costly and one collator must not be used by two
// threads at once, so each thread keeps its own.
UCollator* caseInsensitiveCollator()
{
    thread_local std::unique_ptr<UCollator, CollatorCloser> collator;
    thread_local bool tried = false;
    if (!tried) {
        tried = true;
        UErrorCode status = U_ZERO_ERROR;
        UCollator* opened = ucol_open("", &status);
        if (U_SUCCESS(status)) {
            // Secondary strength: accents count, letter case does not.
            ucol_setStrength(opened, UCOL_SECONDARY);
            collator.reset(opened);
        } else {
            ucol_close(opened);
        }
    }
    return collator.get();
}

// Ill-formed sequences become U+FFFD so that any bytes can be compared.
std::u16string utf16FromBytes(const char* bytes, unsigned long length)
{
    if (length == 0 || length > INT32_MAX) return {};
    std::u16string out(length, u'\0');
    int32_t produced = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(out.data()), int32_t(out.size()), &produced,
                         bytes, int32_t(length), 0xFFFD, nullptr, &status);
    if (U_FAILURE(status)) return {};
    out.resize(size_t(produced));
    return out;
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

int compareUnicodeNoCase(const char* a, unsigned long lengthA, const char* b,
                         unsigned long lengthB)
{
    const std::u16string left = utf16FromBytes(a, lengthA);
    const std::u16string right = utf16FromBytes(b, lengthB);
    const auto* l = reinterpret_cast<const UChar*>(left.data());
    const auto* r = reinterpret_cast<const UChar*>(right.data());
    if (UCollator* collator = caseInsensitiveCollator())
        return sign(ucol_strcoll(collator, l, int32_t(left.size()), r, int32_t(right.size())));
    // Without collation data, fall back to case folding in code point order.
    UErrorCode status = U_ZERO_ERROR;
    return sign(u_strCaseCompare(l, int32_t(left.size()), r, int32_t(right.size()),
                                 U_FOLD_CASE_DEFAULT | U_COMPARE_CODE_POINT_ORDER, &status));
}

int compareAsciiNoCase(const char* a, unsigned long lengthA, const char* b, unsigned long lengthB)
{
    int result = strncasecmp(a, b, std::min(lengthA, lengthB));
    if (result != 0) return result;
    return static_cast<int>(static_cast<long>(lengthA) - static_cast<long>(lengthB));
}

int compare8BitNoCase(const char* a, unsigned long lengthA, const char* b, unsigned long lengthB)
{
    if (lengthA == 0 || lengthB == 0) return compareUnicodeNoCase(a, lengthA, b, lengthB);
    int tieBreak = 0;
    unsigned long i = 0;
    for (; i < lengthA && i < lengthB; ++i) {
        const unsigned char x = byteAt(a, i);
        const unsigned char y = byteAt(b, i);
        if (x == y) continue;
        if (!isAsciiLetter(x) || !isAsciiLetter(y))
            return compareUnicodeNoCase(a, lengthA, b, lengthB);
        const int upperX = std::toupper(x);
        const int upperY = std::toupper(y);
        if (upperX != upperY) return upperX - upperY;
        // Reversed on purpose: the string with the upper-case letter sorts
        // after its lower-case twin. Intended.
        if (tieBreak == 0) tieBreak = int(y) - int(x);
    }
    if (i == lengthA && i == lengthB) return tieBreak;
    return static_cast<int>(static_cast<long>(lengthA - i) - static_cast<long>(lengthB - i));
}

template <typename T>
T extractNumber(const std::string& s)
{
    std::istringstream in(GStringUtils::StripWhitespace(s));
    in.imbue(std::locale::classic());
    T value = 0;
    in >> value;
    return value;
}

}  // namespace

namespace GStringUtils {

int OSvsnprintf(char* dst, unsigned long size, const char* format, va_list args)
{
    return std::vsnprintf(dst, size, format, args);
}

std::string OSToUpperCase(std::string s)
{
    return mapBytes(std::move(s), std::toupper);
}

std::string OSToLowerCase(std::string s)
{
    return mapBytes(std::move(s), std::tolower);
}

std::vector<std::string> OSTokenizeString(const std::string& s, const std::string& delimiters)
{
    // Both are read as C strings, as strtok_r would.
    const std::string_view text(s.c_str());
    const char* delims = delimiters.c_str();
    std::vector<std::string> tokens;
    size_t start = text.find_first_not_of(delims);
    while (start != std::string_view::npos) {
        size_t end = text.find_first_of(delims, start);
        tokens.emplace_back(text.substr(start, end - start));
        if (end == std::string_view::npos) break;
        start = text.find_first_not_of(delims, end);
    }
    return tokens;
}

std::vector<std::string> TokenizeString(const std::string& s, const std::string& delimiters)
{
    return OSTokenizeString(s, delimiters);
}

std::string EnstringTokens(const std::vector<std::string>& tokens, const std::string& separator)
{
    std::string joined;
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (i > 0) joined += separator;
        joined += tokens[i];
    }
    return joined;
}

bool BeginsWith(const std::string& s, const std::string& prefix)
{
    return s.rfind(prefix, 0) == 0;
}

bool Contains(const std::string& s, const std::string& part)
{
    return s.find(part) != std::string::npos;
}

bool EndsWith(const std::string& s, const std::string& suffix)
{
    if (suffix.size() > s.size()) return false;
    return s.compare(s.size() - suffix.size(), suffix.size(), suffix) == 0;
}

void EnsureEndsWith(std::string& s, const std::string& suffix)
{
    if (!EndsWith(s, suffix)) s += suffix;
}

std::string StripPrecedingWhitespace(std::string s)
{
    auto first = std::find_if_not(s.begin(), s.end(), isStrippable);
    s.erase(s.begin(), first);
    return s;
}

std::string StripTrailingWhitespace(std::string s)
{
    auto last = std::find_if_not(s.rbegin(), s.rend(), isStrippable);
    s.erase(last.base(), s.end());
    return s;
}

std::string StripWhitespace(std::string s)
{
    return StripTrailingWhitespace(StripPrecedingWhitespace(std::move(s)));
}

std::string StripPrecedingString(std::string s, const std::string& prefix)
{
    if (prefix.empty()) return s;
    while (BeginsWith(s, prefix)) s.erase(0, prefix.size());
    return s;
}

std::string StripTrailingString(std::string s, const std::string& suffix)
{
    if (suffix.empty()) return s;
    while (!s.empty() && EndsWith(s, suffix)) s.erase(s.size() - suffix.size());
    return s;
}

std::string StringReplace(const std::string& s, const std::string& find, const std::string& replace)
{
    if (find.empty()) return s;
    std::string out;
    size_t from = 0;
    for (size_t at = s.find(find); at != std::string::npos; at = s.find(find, from)) {
        out.append(s, from, at - from);
        out += replace;
        from = at + find.size();
    }
    out.append(s, from, std::string::npos);
    return out;
}

std::string::size_type StringFindNoCase(const std::string& haystack, const std::string& needle)
{
    return OSToUpperCase(haystack).find(OSToUpperCase(needle));
}

int CompareStringsNoCase(const std::string& a, const std::string& b)
{
    return std::strcmp(OSToLowerCase(a).c_str(), OSToLowerCase(b).c_str());
}

int CompareStringsNoCase(const char* a, const char* b)
{
    return CompareStringsNoCase(std::string(a ? a : ""), std::string(b ? b : ""));
}

int CompareStringsNoCase(const std::string& a, const char* b)
{
    return CompareStringsNoCase(a, std::string(b ? b : ""));
}

int CompareStringsNoCase(const char* a, const std::string& b)
{
    return CompareStringsNoCase(std::string(a ? a : ""), b);
}

int OSCompareStringsNoCase(EStringEncoding encoding, const char* a, unsigned long lengthA,
                           const char* b, unsigned long lengthB)
{
    if (!a) {
        a = "";
        lengthA = 0;
    }
    if (!b) {
        b = "";
        lengthB = 0;
    }
    switch (encoding) {
    case kStringEncodingASCII: return compareAsciiNoCase(a, lengthA, b, lengthB);
    case kStringEncoding8Bit: return compare8BitNoCase(a, lengthA, b, lengthB);
    default: return compareUnicodeNoCase(a, lengthA, b, lengthB);
    }
}

int OSCompareStringsNoCase(EStringEncoding encoding, const char* a, const char* b)
{
    return OSCompareStringsNoCase(encoding, a, a ? std::strlen(a) : 0, b, b ? std::strlen(b) : 0);
}

bool IsValidHexChar(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsNumber(const std::string& s)
{
    // Loose on purpose ("00x" passes, "12a" does not); intended.
    if (s.empty()) return false;
    const int value = atoiOf(s);
    if (value != 0) return atoiOf(s.substr(0, s.size() - 1)) != value;
    return s[0] == '0' || (s.size() >= 2 && s[0] == '-' && s[1] == '0');
}

int NumberFromString(const std::string& s)
{
    return atoiOf(s);
}

int16_t UTF8StringToSInt16(const std::string& s)
{
    // Read as 32 bits and keep the low half ("70000" gives 4464); intended.
    return static_cast<int16_t>(extractNumber<int32_t>(s));
}

uint16_t UTF8StringToUInt16(const std::string& s)
{
    return extractNumber<uint16_t>(s);
}

int32_t UTF8StringToSInt32(const std::string& s)
{
    return extractNumber<int32_t>(s);
}

uint32_t UTF8StringToUInt32(const std::string& s)
{
    return extractNumber<uint32_t>(s);
}

uint64_t UTF8StringToUInt64(const std::string& s)
{
    return extractNumber<uint64_t>(s);
}

TFloat64 UTF8StringToTFloat64(const std::string& s)
{
    return extractNumber<TFloat64>(s);
}

bool UTF8StringToBool(const std::string& s)
{
    const std::string stripped = StripWhitespace(s);
    const std::string lowered = OSToLowerCase(stripped);
    if (lowered == "true" || lowered == "yes") return true;
    std::istringstream in(stripped);
    in.imbue(std::locale::classic());
    bool value = false;
    // Only a numeric 1 is true; anything else, "2" included, is false.
    if (!(in >> value)) return false;
    return value;
}

std::string AsciiStringFromNumber(long value)
{
    return std::to_string(value);
}

std::string AsciiStringFromUnsignedNumber(unsigned long value)
{
    return std::to_string(value);
}

std::string HexadecimalString(const char* bytes, unsigned long count)
{
    static const char kDigits[] = "0123456789ABCDEF";
    std::string out;
    if (!bytes) return out;
    out.reserve(count * 2);
    for (unsigned long i = 0; i < count; ++i) {
        const unsigned char byte = byteAt(bytes, i);
        out += kDigits[byte >> 4];
        out += kDigits[byte & 0x0F];
    }
    return out;
}

std::vector<unsigned char> StringToByteVector(const std::string& s)
{
    return std::vector<unsigned char>(s.begin(), s.end());
}

std::vector<std::pair<std::string, std::string>> GetCharactersAndXmlEquivalents()
{
    // Ampersand first: escaping must not touch the entities written later,
    // and unescaping (last to first) must undo "&amp;" last.
    return {{"&", "&amp;"}, {">", "&gt;"}, {"<", "&lt;"}, {"'", "&apos;"}, {"\"", "&quot;"}};
}

std::string EscapeRequiredXMLEntities(const std::string& s)
{
    std::string out = s;
    for (const auto& [character, entity] : GetCharactersAndXmlEquivalents())
        out = StringReplace(out, character, entity);
    return out;
}

std::string UnescapeRequiredXMLEntities(const std::string& s)
{
    const auto table = GetCharactersAndXmlEquivalents();
    std::string out = s;
    for (auto pair = table.rbegin(); pair != table.rend(); ++pair)
        out = StringReplace(out, pair->second, pair->first);
    return out;
}

}  // namespace GStringUtils
