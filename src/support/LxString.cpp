#include "support/LxString.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {
constexpr size_t kPascalBufferSize = 256;
}

LxString::LxString() = default;

LxString::LxString(const LxString& other) : text_(other.text_), wide_(other.wide_) {}

LxString::LxString(const std::string& text) : text_(text) {}

LxString::LxString(const char* text) : text_(text ? text : "") {}

LxString::LxString(const PlatformString& text)
{
    Set(text);
}

LxString::LxString(long value)
{
    MakeValueString(value);
}

LxString::LxString(unsigned long value)
{
    MakeValueString(value);
}

LxString::LxString(short listID, short index)
{
    LoadResource(listID, index);
}

LxString::~LxString() = default;

LxString& LxString::operator=(const LxString& other)
{
    if (this == &other) return *this;
    text_ = other.text_;
    wide_ = other.wide_;
    // Kept as it always was: the Pascal buffer is copied only when both
    // strings already have one.
    if (pascal_ && other.pascal_)
        std::memcpy(pascal_.get(), other.pascal_.get(), kPascalBufferSize);
    return *this;
}

LxString::operator const wchar_t*() const
{
    wide_ = UTF8ToWide(*this);
    return wide_.c_str();
}

bool LxString::Set(const PlatformString& text)
{
    auto utf8 = TextEncoding::UTF16ToUTF8(text);
    if (!utf8) {
        text_.clear();
        return false;
    }
    text_ = std::move(*utf8);
    return true;
}

bool LxString::Set(const char* bytes, unsigned long encoding)
{
    if (!bytes) return false;
    auto utf16 = TextEncoding::Decode(bytes, uint32_t(encoding));
    if (!utf16) return false;
    return Set(*utf16);
}

LxString& LxString::operator=(const PlatformString& text)
{
    Set(text);
    return *this;
}

void LxString::setPStr(const unsigned char* pascal)
{
    if (!pascal) return;
    text_.assign(reinterpret_cast<const char*>(pascal + 1), pascal[0]);
}

std::optional<PlatformString> LxString::GetCFString(unsigned long encoding) const
{
    return TextEncoding::Decode(text_, uint32_t(encoding));
}

unsigned char* LxString::GetPascalString() const
{
    if (!pascal_) pascal_ = std::make_unique<unsigned char[]>(kPascalBufferSize);
    GetPascalString(pascal_.get());
    return pascal_.get();
}

void LxString::GetPascalString(unsigned char* out) const
{
    if (!out) return;
    // Cut at 255 bytes, without regard for UTF-8 sequences.
    size_t length = std::min<size_t>(text_.size(), 255);
    out[0] = static_cast<unsigned char>(length);
    std::memcpy(out + 1, text_.data(), length);
}

void LxString::MakeValueString(long value)
{
    text_ = std::to_string(value);
}

void LxString::MakeValueString(unsigned long value)
{
    text_ = std::to_string(value);
}

int LxString::CompareNoCase(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str());
}

int LxString::CompareNoCase(const std::string& other) const
{
    return CompareNoCase(text_, other);
}

int LxString::compareNoCase(const char* other) const
{
    return strcasecmp(text_.c_str(), other ? other : "");
}

bool LxString::TrimWhitespaceFromEnd()
{
    size_t end = text_.find_last_not_of(" \t");
    size_t keep = (end == std::string::npos) ? 0 : end + 1;
    if (keep == text_.size()) return false;
    text_.erase(keep);
    return true;
}

LxString& LxString::ToUpper()
{
    for (char& c : text_) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return *this;
}

LxString& LxString::ToLower()
{
    for (char& c : text_) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return *this;
}

void LxString::LoadResource(short, short)
{
    // String-list resources exist only in a Mac application's own resource
    // fork; here every entry is missing.
    text_.clear();
}

int ReplaceAll(LxString* s, const char* find, const char* replace)
{
    if (!s || !find || !*find) return 0;
    const std::string with = replace ? replace : "";
    const size_t findLength = std::strlen(find);
    std::string& text = s->str();
    int count = 0;
    for (size_t at = text.find(find); at != std::string::npos; at = text.find(find, at)) {
        text.replace(at, findLength, with);
        at += with.size();
        ++count;
    }
    return count;
}

int ReplaceAll(LxString* s, char find, char replace)
{
    if (!s) return 0;
    int count = 0;
    for (char& c : s->str()) {
        if (c == find) {
            c = replace;
            ++count;
        }
    }
    return count;
}

char* strncpyNULLTerminate(char* dst, const char* src, unsigned long size)
{
    if (!dst || size == 0) return dst;
    std::strncpy(dst, src ? src : "", size - 1);
    dst[size - 1] = '\0';
    return dst;
}

std::wstring UTF8ToWide(const LxString& text)
{
    auto utf16 = TextEncoding::UTF8ToUTF16(text.str());
    if (!utf16) return {};
    return CFStringToWide(*utf16);
}

unsigned long WideToUTF8(const std::wstring& in, std::string* out)
{
    auto utf8 = TextEncoding::UTF16ToUTF8(CFStringCreateWithWString(in));
    if (!utf8 || !out) return 0;
    // The converted bytes are taken as a C string, so an embedded U+0000
    // ends the result.
    *out = utf8->c_str();
    return out->size();
}

LxString WideToUTF8(const std::wstring& in)
{
    std::string out;
    WideToUTF8(in, &out);
    return LxString(out);
}

std::wstring UniCharBufToWide(const unsigned short* units)
{
    std::wstring out;
    for (; units && *units; ++units) out.push_back(static_cast<wchar_t>(*units));
    return out;
}

std::wstring CFStringToWide(const PlatformString& text)
{
    return std::wstring(text.begin(), text.end());
}

PlatformString CFStringCreateWithWString(const std::wstring& text)
{
    PlatformString out;
    out.reserve(text.size());
    for (wchar_t c : text) out.push_back(static_cast<char16_t>(static_cast<uint32_t>(c) & 0xFFFF));
    return out;
}

std::wstring DecomposedToPrecomposed(const std::wstring&)
{
    return {};
}

std::wstring PrecomposedToDecomposed(const std::wstring&)
{
    return {};
}
