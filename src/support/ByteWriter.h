// Builds big-endian binary data: rebuilt fonts, written resource files and
// the byte-built fixtures of the tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "support/ByteView.h"

class ByteWriter {
public:
    ByteWriter& u8(uint8_t value);
    ByteWriter& u16(uint16_t value);
    ByteWriter& u24(uint32_t value);
    ByteWriter& u32(uint32_t value);
    ByteWriter& tag(const char (&code)[5]) { return u32(fourCC(code)); }
    ByteWriter& bytes(std::string_view text);
    ByteWriter& bytes(ByteView view);
    ByteWriter& zeros(size_t count);
    // A length byte and at most 255 bytes of text.
    ByteWriter& pascal(std::string_view text);
    // Zero bytes up to the next multiple of alignment.
    ByteWriter& pad(size_t alignment);

    // Overwrite already written bytes; false when the range was not written.
    bool putU16(size_t offset, uint16_t value);
    bool putU32(size_t offset, uint32_t value);

    size_t size() const { return bytes_.size(); }
    const std::vector<uint8_t>& data() const { return bytes_; }
    std::vector<uint8_t>&& take() { return std::move(bytes_); }
    ByteView view() const { return ByteView(bytes_.data(), bytes_.size()); }

private:
    std::vector<uint8_t> bytes_;
};
