// How every exported function hands text to its caller.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

// Nothing is written for a length below 1; otherwise at most length - 1
// bytes and a terminating zero. Truncation is silent.
inline void CopyOut(std::string_view text, char* buffer, int bufferLength)
{
    if (!buffer || bufferLength < 1) return;
    size_t count = std::min(text.size(), size_t(bufferLength) - 1);
    // The text may hold a zero byte: copying stops there, as a C copy would.
    size_t zero = text.substr(0, count).find('\0');
    if (zero != std::string_view::npos) count = zero;
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
}
