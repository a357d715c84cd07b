// Bounded C-string functions with the Windows strsafe result codes, for code
// that formats and joins into fixed-size buffers.
#pragma once

#include <cstdint>

constexpr uint32_t S_OK = 0;
constexpr uint32_t STRSAFE_E_INVALID_PARAMETER = 0x80070057;
constexpr uint32_t STRSAFE_E_INSUFFICIENT_BUFFER = 0x8007007A;

// Formats into `dst` of `size` bytes. A result of exactly size - 1
// characters reports success although its last character was cut off.
uint32_t StringCbPrintfA(char* dst, unsigned long size, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// Appends `src` to the zero-terminated text in `dst` of `size` bytes; when
// the room runs out the text is truncated and terminated.
uint32_t StringCatWorkerA(char* dst, unsigned long size, const char* src);

// Length in bytes of the zero-terminated wide string `s`, which must end
// within `sizeInBytes`.
uint32_t StringCbLengthW(const wchar_t* s, unsigned long sizeInBytes, unsigned long* lengthInBytes);
