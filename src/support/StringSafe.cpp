#include "support/StringSafe.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

uint32_t StringCbPrintfA(char* dst, unsigned long size, const char* format, ...)
{
    if (static_cast<long>(size) < 0 || size == 0 || !dst || !format)
        return STRSAFE_E_INVALID_PARAMETER;
    const unsigned long limit = size - 1;
    va_list args;
    va_start(args, format);
    // Limited to size - 1, so at most size - 2 characters land; intended.
    const int needed = std::vsnprintf(dst, limit, format, args);
    va_end(args);
    if (needed < 0 || static_cast<unsigned long>(needed) > limit) {
        dst[limit] = '\0';
        return STRSAFE_E_INSUFFICIENT_BUFFER;
    }
    return S_OK;
}

uint32_t StringCatWorkerA(char* dst, unsigned long size, const char* src)
{
    if (!dst) return STRSAFE_E_INVALID_PARAMETER;
    const void* end = std::memchr(dst, '\0', size);
    if (!end) return STRSAFE_E_INVALID_PARAMETER;
    unsigned long at = static_cast<unsigned long>(static_cast<const char*>(end) - dst);
    for (; src && *src && at < size; ++at, ++src) dst[at] = *src;
    if (at == size) {
        dst[size - 1] = '\0';
        return STRSAFE_E_INSUFFICIENT_BUFFER;
    }
    dst[at] = '\0';
    return S_OK;
}

uint32_t StringCbLengthW(const wchar_t* s, unsigned long sizeInBytes, unsigned long* lengthInBytes)
{
    if (!s) return STRSAFE_E_INVALID_PARAMETER;
    const unsigned long maxElements = sizeInBytes / sizeof(wchar_t);
    unsigned long length = 0;
    while (length < maxElements && s[length] != L'\0') ++length;
    if (length == maxElements) return STRSAFE_E_INVALID_PARAMETER;
    if (lengthInBytes) *lengthInBytes = length * sizeof(wchar_t);
    return S_OK;
}
