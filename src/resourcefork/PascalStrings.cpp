#include "resourcefork/PascalStrings.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t kMaxLength = 255;

bool printableAscii(unsigned char c)
{
    return c >= 0x20 && c <= 0x7E;
}

}  // namespace

void CopyPascalString(const unsigned char* src, unsigned char* dst, size_t limit)
{
    if (!dst || limit == 0) return;
    if (!src) {
        dst[0] = 0;
        return;
    }
    const size_t count = std::min<size_t>(size_t(src[0]) + 1, limit);
    std::memmove(dst, src, count);
    dst[0] = static_cast<unsigned char>(count - 1);
}

void CopyPascalStringAsciiLimit(const unsigned char* src, unsigned char* dst, size_t limit)
{
    CopyPascalString(src, dst, limit);
    if (!dst || limit == 0) return;
    for (size_t i = 1; i <= dst[0]; ++i)
        if (!printableAscii(dst[i])) dst[i] = '?';
}

void AppendPascalString(unsigned char* dst, const unsigned char* src, size_t limit)
{
    if (!dst || !src || limit == 0) return;
    const size_t current = dst[0];
    size_t count = src[0];
    if (current + count > limit - 1) count = limit - 1 > current ? limit - 1 - current : 0;
    // A 257-byte buffer has room for 256 characters, a length byte for 255.
    count = std::min(count, kMaxLength - std::min(current, kMaxLength));
    std::memmove(dst + 1 + current, src + 1, count);
    dst[0] = static_cast<unsigned char>(current + count);
}

void GetIndStyleName(ByteView list, int n, unsigned char* dst, size_t limit)
{
    if (!dst || limit == 0) return;
    dst[0] = 0;
    size_t at = 0;
    for (int i = 1; i < n; ++i) {
        uint8_t length = 0;
        if (!list.u8(at, length)) return;
        at += size_t(length) + 1;
    }
    uint8_t length = 0;
    unsigned char text[kMaxLength + 1];
    if (n < 1 || !list.u8(at, length) || !list.copy(at, size_t(length) + 1, text)) return;
    CopyPascalString(text, dst, limit);
}

std::string_view PascalText(const unsigned char* pascal)
{
    if (!pascal) return {};
    return std::string_view(reinterpret_cast<const char*>(pascal + 1), pascal[0]);
}

void SetPascalText(std::string_view text, unsigned char* dst, size_t limit)
{
    if (!dst || limit == 0) return;
    const size_t count = std::min({text.size(), kMaxLength, limit - 1});
    dst[0] = static_cast<unsigned char>(count);
    std::memcpy(dst + 1, text.data(), count);
}
