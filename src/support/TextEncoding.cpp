#include "support/TextEncoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/ustring.h>

#include <climits>
#include <map>
#include <memory>

namespace {

const char* converterName(uint32_t encoding)
{
    switch (encoding) {
    case kCFStringEncodingMacRoman: return "macintosh";
    case kCFStringEncodingMacJapanese:
    case kCFStringEncodingShiftJIS: return "Shift_JIS";
    case kCFStringEncodingISOLatin1: return "ISO-8859-1";
    case kCFStringEncodingWindowsLatin1: return "windows-1252";
    case kCFStringEncodingASCII: return "US-ASCII";
    case kCFStringEncodingUTF8: return "UTF-8";
    case kCFStringEncodingUTF16BE: return "UTF-16BE";
    case kCFStringEncodingUTF16LE: return "UTF-16LE";
    case kCFStringEncodingUnicode:
        return (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__) ? "UTF-16BE" : "UTF-16LE";
    default: return nullptr;
    }
}

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};

// Opening a converter is not free, and converters are not thread-safe:
// keep one per encoding per thread, set to stop at the first bad character.
UConverter* converterFor(uint32_t encoding)
{
    thread_local std::map<uint32_t, std::unique_ptr<UConverter, ConverterCloser>> cache;
    auto found = cache.find(encoding);
    if (found != cache.end()) return found->second.get();
    const char* name = converterName(encoding);
    if (!name) return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(name, &status);
    if (U_FAILURE(status)) return nullptr;
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    if (U_FAILURE(status)) {
        ucnv_close(converter);
        return nullptr;
    }
    cache.emplace(encoding, converter);
    return converter;
}

}  // namespace

namespace TextEncoding {

uint32_t Resolve(uint32_t encoding)
{
    return encoding == kCFStringEncodingInvalidId ? kSystemEncoding : encoding;
}

std::optional<PlatformString> UTF8ToUTF16(std::string_view utf8)
{
    if (utf8.size() > INT32_MAX) return std::nullopt;
    PlatformString out(utf8.size(), u'\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(reinterpret_cast<UChar*>(out.data()), int32_t(out.size()), &length, utf8.data(),
                  int32_t(utf8.size()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    out.resize(size_t(length));
    return out;
}

std::optional<std::string> UTF16ToUTF8(const PlatformString& utf16)
{
    if (utf16.size() > INT32_MAX / 3) return std::nullopt;
    std::string out(utf16.size() * 3, '\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(out.data(), int32_t(out.size()), &length,
                reinterpret_cast<const UChar*>(utf16.data()), int32_t(utf16.size()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    out.resize(size_t(length));
    return out;
}

std::optional<PlatformString> Decode(std::string_view bytes, uint32_t encoding)
{
    encoding = Resolve(encoding);
    if (encoding == kCFStringEncodingUTF8) return UTF8ToUTF16(bytes);
    UConverter* converter = converterFor(encoding);
    if (!converter || bytes.size() > INT32_MAX / 2) return std::nullopt;
    ucnv_reset(converter);
    // No supported encoding yields more than two UTF-16 units per byte.
    PlatformString out(bytes.size() * 2 + 1, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = ucnv_toUChars(converter, reinterpret_cast<UChar*>(out.data()),
                                   int32_t(out.size()), bytes.data(), int32_t(bytes.size()),
                                   &status);
    if (U_FAILURE(status)) return std::nullopt;
    out.resize(size_t(length));
    return out;
}

std::optional<std::string> Encode(const PlatformString& text, uint32_t encoding)
{
    encoding = Resolve(encoding);
    if (encoding == kCFStringEncodingUTF8) return UTF16ToUTF8(text);
    UConverter* converter = converterFor(encoding);
    if (!converter || text.size() > INT32_MAX / 4) return std::nullopt;
    ucnv_reset(converter);
    std::string out(text.size() * 4 + 4, '\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length =
        ucnv_fromUChars(converter, out.data(), int32_t(out.size()),
                        reinterpret_cast<const UChar*>(text.data()), int32_t(text.size()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    out.resize(size_t(length));
    return out;
}

std::optional<std::string> ToUTF8(std::string_view bytes, uint32_t encoding)
{
    if (Resolve(encoding) == kCFStringEncodingUTF8) {
        // Validate only: the bytes already are the answer.
        if (!UTF8ToUTF16(bytes)) return std::nullopt;
        return std::string(bytes);
    }
    auto utf16 = Decode(bytes, encoding);
    if (!utf16) return std::nullopt;
    return UTF16ToUTF8(*utf16);
}

}  // namespace TextEncoding
