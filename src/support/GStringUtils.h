// General string toolbox: trimming, tokenising, case-insensitive comparison,
// XML entity escaping, number parsing and formatting. Strings are UTF-8
// bytes; "whitespace" and case mapping are ASCII-only, so multi-byte
// sequences are never split or altered.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace GStringUtils {

// The encodings OSCompareStringsNoCase knows. Any value other than 1 and 2
// means Unicode (the bytes are read as UTF-8).
enum EStringEncoding : int {
    kStringEncodingASCII = 1,
    kStringEncoding8Bit = 2,  // ASCII-compatible 8-bit encoding
    kStringEncodingUnicode = 3,
};

using TFloat64 = double;

int OSvsnprintf(char* dst, unsigned long size, const char* format, va_list args);

std::string OSToUpperCase(std::string s);
std::string OSToLowerCase(std::string s);

// Tokens split at any byte of `delimiters`, with strtok_r rules: runs of
// delimiters count as one and there are no empty tokens.
std::vector<std::string> OSTokenizeString(const std::string& s, const std::string& delimiters);
std::vector<std::string> TokenizeString(const std::string& s, const std::string& delimiters);
std::string EnstringTokens(const std::vector<std::string>& tokens, const std::string& separator);

bool BeginsWith(const std::string& s, const std::string& prefix);
bool Contains(const std::string& s, const std::string& part);
bool EndsWith(const std::string& s, const std::string& suffix);
void EnsureEndsWith(std::string& s, const std::string& suffix);

// Whitespace here is any ASCII byte that is not graphic (controls, space,
// DEL); bytes of 0x80 and above always stay.
std::string StripPrecedingWhitespace(std::string s);
std::string StripTrailingWhitespace(std::string s);
std::string StripWhitespace(std::string s);
// Removes the prefix (suffix) again and again while it is there.
std::string StripPrecedingString(std::string s, const std::string& prefix);
std::string StripTrailingString(std::string s, const std::string& suffix);

// Every non-overlapping occurrence of `find` (not empty), left to right.
std::string StringReplace(const std::string& s, const std::string& find,
                          const std::string& replace);
std::string::size_type StringFindNoCase(const std::string& haystack, const std::string& needle);

// Both sides lowered, then strcmp: negative, zero or positive.
int CompareStringsNoCase(const std::string& a, const std::string& b);
int CompareStringsNoCase(const char* a, const char* b);
int CompareStringsNoCase(const std::string& a, const char* b);
int CompareStringsNoCase(const char* a, const std::string& b);

// Case-insensitive comparison by encoding; a null pointer reads as "".
int OSCompareStringsNoCase(EStringEncoding encoding, const char* a, unsigned long lengthA,
                           const char* b, unsigned long lengthB);
int OSCompareStringsNoCase(EStringEncoding encoding, const char* a, const char* b);

bool IsValidHexChar(char c);
// Deliberately loose: see the definition.
bool IsNumber(const std::string& s);
int NumberFromString(const std::string& s);

// Stream extraction in decimal after StripWhitespace; 0 (false) when the
// text does not begin with a number. Never reports an error.
int16_t UTF8StringToSInt16(const std::string& s);
uint16_t UTF8StringToUInt16(const std::string& s);
int32_t UTF8StringToSInt32(const std::string& s);
uint32_t UTF8StringToUInt32(const std::string& s);
uint64_t UTF8StringToUInt64(const std::string& s);
TFloat64 UTF8StringToTFloat64(const std::string& s);
bool UTF8StringToBool(const std::string& s);

std::string AsciiStringFromNumber(long value);
std::string AsciiStringFromUnsignedNumber(unsigned long value);
// Two upper-case hexadecimal digits per byte, no separators.
std::string HexadecimalString(const char* bytes, unsigned long count);
std::vector<unsigned char> StringToByteVector(const std::string& s);

// The five characters XML requires escaping, paired with their entities,
// ampersand first.
std::vector<std::pair<std::string, std::string>> GetCharactersAndXmlEquivalents();
std::string EscapeRequiredXMLEntities(const std::string& s);
std::string UnescapeRequiredXMLEntities(const std::string& s);

}  // namespace GStringUtils
