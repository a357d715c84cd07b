// Pascal strings (a length byte and up to 255 characters) in caller
// buffers. Every limit counts the length byte: a buffer of `limit` bytes is
// never written past.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "support/ByteView.h"

// The size of the buffers the FOND name code uses: 255 characters, the
// length byte and a spare byte.
inline constexpr size_t kPascalBufferSize = 257;

// Copies min(length + 1, limit) bytes; a null source gives an empty string.
// A cut string gets the length of what was copied.
void CopyPascalString(const unsigned char* src, unsigned char* dst, size_t limit);

// As CopyPascalString, with every character outside 0x20-0x7E replaced by
// "?". `src` and `dst` may be the same buffer.
void CopyPascalStringAsciiLimit(const unsigned char* src, unsigned char* dst, size_t limit);

// Appends src; when the sum would exceed limit - 1 characters, only
// limit - 1 - (current length) characters; never beyond 255 characters.
void AppendPascalString(unsigned char* dst, const unsigned char* src, size_t limit);

// The n-th (1-based) Pascal string of a packed list, cut to the limit; an
// empty string when the list holds no such string.
void GetIndStyleName(ByteView list, int n, unsigned char* dst, size_t limit);

// The characters of a Pascal string.
std::string_view PascalText(const unsigned char* pascal);
// A Pascal string from text, cut at 255 characters.
void SetPascalText(std::string_view text, unsigned char* dst, size_t limit);
