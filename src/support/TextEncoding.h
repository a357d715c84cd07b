// Text encodings by their Core Foundation numbers, converted with ICU.
// The platform string is UTF-16 text; the system and application encodings
// are Mac Roman, and Shift-JIS stands in for Mac Japanese.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

using PlatformString = std::u16string;

constexpr uint32_t kCFStringEncodingMacRoman = 0;
constexpr uint32_t kCFStringEncodingMacJapanese = 1;
constexpr uint32_t kCFStringEncodingUnicode = 0x0100;  // UTF-16, host order
constexpr uint32_t kCFStringEncodingISOLatin1 = 0x0201;
constexpr uint32_t kCFStringEncodingWindowsLatin1 = 0x0500;
constexpr uint32_t kCFStringEncodingASCII = 0x0600;
constexpr uint32_t kCFStringEncodingShiftJIS = 0x0A01;
constexpr uint32_t kCFStringEncodingUTF8 = 0x08000100;
constexpr uint32_t kCFStringEncodingUTF16BE = 0x10000100;
constexpr uint32_t kCFStringEncodingUTF16LE = 0x14000100;
constexpr uint32_t kCFStringEncodingInvalidId = 0xFFFFFFFF;  // the system encoding

namespace TextEncoding {

constexpr uint32_t kSystemEncoding = kCFStringEncodingMacRoman;
constexpr uint32_t kApplicationEncoding = kCFStringEncodingMacRoman;

// kCFStringEncodingInvalidId becomes the system encoding; others unchanged.
uint32_t Resolve(uint32_t encoding);

// Bytes in an encoding to UTF-16; nothing when the bytes are invalid in it
// or the encoding is not supported.
std::optional<PlatformString> Decode(std::string_view bytes, uint32_t encoding);

// UTF-16 to bytes in an encoding; nothing when a character cannot be
// represented (no substitution) or the text holds an unpaired surrogate.
std::optional<std::string> Encode(const PlatformString& text, uint32_t encoding);

// Shorthands for the conversions between the library's UTF-8 and UTF-16.
std::optional<PlatformString> UTF8ToUTF16(std::string_view utf8);
std::optional<std::string> UTF16ToUTF8(const PlatformString& utf16);

// Bytes in an encoding straight to UTF-8.
std::optional<std::string> ToUTF8(std::string_view bytes, uint32_t encoding);

}  // namespace TextEncoding
