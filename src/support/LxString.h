// The library's one string class: UTF-8 bytes, with cached wide and Pascal
// forms and conversions to the platform string (UTF-16) and legacy
// encodings. Equality and ordering ignore ASCII letter case, deliberately:
// names of fonts, files and keys are compared that way everywhere.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "support/TextEncoding.h"

class LxString {
public:
    LxString();
    LxString(const LxString& other);
    LxString(const std::string& text);
    LxString(const char* text);
    LxString(const PlatformString& text);
    LxString(long value);
    LxString(unsigned long value);
    // Entry `index` of string-list resource `listID`; empty on this platform.
    LxString(short listID, short index);
    virtual ~LxString();

    LxString& operator=(const LxString& other);

    operator const char*() const { return text_.c_str(); }
    // Converts anew on every call; the pointer lives until the next call.
    operator const wchar_t*() const;

    // UTF-16 to UTF-8; empty text and false when the text is ill-formed.
    bool Set(const PlatformString& text);
    // Zero-terminated bytes in an encoding; false (text unchanged) when they
    // are not valid in it.
    bool Set(const char* bytes, unsigned long encoding);
    LxString& operator=(const PlatformString& text);
    // The text becomes the pascal[0] bytes after the length byte.
    void setPStr(const unsigned char* pascal);

    // The text read in `encoding` (kCFStringEncodingInvalidId: the system
    // encoding); nothing when the bytes are invalid in it.
    std::optional<PlatformString> GetCFString(unsigned long encoding) const;

    // Length byte and the first min(length, 255) bytes, no terminator, in a
    // 256-byte buffer the string owns.
    unsigned char* GetPascalString() const;
    void GetPascalString(unsigned char* out) const;

    void MakeValueString(long value);
    void MakeValueString(unsigned long value);

    static int CompareNoCase(const std::string& a, const std::string& b);
    int CompareNoCase(const std::string& other) const;

    bool operator<(const std::string& other) const { return CompareNoCase(other) < 0; }
    bool operator<=(const std::string& other) const { return CompareNoCase(other) <= 0; }
    bool operator==(const std::string& other) const { return CompareNoCase(other) == 0; }
    bool operator>=(const std::string& other) const { return CompareNoCase(other) >= 0; }
    bool operator>(const std::string& other) const { return CompareNoCase(other) > 0; }
    bool operator<(const LxString& other) const { return *this < other.text_; }
    bool operator<=(const LxString& other) const { return *this <= other.text_; }
    bool operator==(const LxString& other) const { return *this == other.text_; }
    bool operator>=(const LxString& other) const { return *this >= other.text_; }
    bool operator>(const LxString& other) const { return *this > other.text_; }
    // C-string forms, so that comparing with a literal is not ambiguous
    // between the conversions above; a null pointer reads as "".
    bool operator<(const char* other) const { return compareNoCase(other) < 0; }
    bool operator<=(const char* other) const { return compareNoCase(other) <= 0; }
    bool operator==(const char* other) const { return compareNoCase(other) == 0; }
    bool operator>=(const char* other) const { return compareNoCase(other) >= 0; }
    bool operator>(const char* other) const { return compareNoCase(other) > 0; }

    // Removes trailing spaces and tabs (not line ends); true if any went.
    bool TrimWhitespaceFromEnd();
    LxString& ToUpper();
    LxString& ToLower();
    void LoadResource(short listID, short index);

    // Plain access to the UTF-8 bytes.
    const std::string& str() const { return text_; }
    std::string& str() { return text_; }
    const char* c_str() const { return text_.c_str(); }
    size_t length() const { return text_.size(); }
    bool empty() const { return text_.empty(); }
    void clear() { text_.clear(); }
    LxString& operator+=(const std::string& more)
    {
        text_ += more;
        return *this;
    }

private:
    int compareNoCase(const char* other) const;

    std::string text_;
    mutable std::wstring wide_;
    mutable std::unique_ptr<unsigned char[]> pascal_;
};

// Replaces every occurrence of `find` (not empty), left to right; the
// inserted text is never searched again. Returns the number of replacements.
int ReplaceAll(LxString* s, const char* find, const char* replace);
int ReplaceAll(LxString* s, char find, char replace);

// strncpy of at most size - 1 bytes, always terminated at dst[size - 1].
char* strncpyNULLTerminate(char* dst, const char* src, unsigned long size);

// The wide form is widened UTF-16: one wchar_t per UTF-16 unit, surrogate
// pairs stay two elements.
std::wstring UTF8ToWide(const LxString& text);
unsigned long WideToUTF8(const std::wstring& in, std::string* out);
LxString WideToUTF8(const std::wstring& in);
std::wstring UniCharBufToWide(const unsigned short* units);
std::wstring CFStringToWide(const PlatformString& text);
PlatformString CFStringCreateWithWString(const std::wstring& text);
// Placeholders: both always return an empty string.
std::wstring DecomposedToPrecomposed(const std::wstring& text);
std::wstring PrecomposedToDecomposed(const std::wstring& text);
