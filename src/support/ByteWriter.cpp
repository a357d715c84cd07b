#include "support/ByteWriter.h"

#include <algorithm>

ByteWriter& ByteWriter::u8(uint8_t value)
{
    bytes_.push_back(value);
    return *this;
}

ByteWriter& ByteWriter::u16(uint16_t value)
{
    return u8(uint8_t(value >> 8)).u8(uint8_t(value));
}

ByteWriter& ByteWriter::u24(uint32_t value)
{
    return u8(uint8_t(value >> 16)).u8(uint8_t(value >> 8)).u8(uint8_t(value));
}

ByteWriter& ByteWriter::u32(uint32_t value)
{
    return u16(uint16_t(value >> 16)).u16(uint16_t(value));
}

ByteWriter& ByteWriter::bytes(std::string_view text)
{
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return *this;
}

ByteWriter& ByteWriter::bytes(ByteView view)
{
    bytes_.insert(bytes_.end(), view.span().begin(), view.span().end());
    return *this;
}

ByteWriter& ByteWriter::zeros(size_t count)
{
    bytes_.insert(bytes_.end(), count, 0);
    return *this;
}

ByteWriter& ByteWriter::pascal(std::string_view text)
{
    text = text.substr(0, std::min<size_t>(text.size(), 255));
    u8(uint8_t(text.size()));
    return bytes(text);
}

ByteWriter& ByteWriter::pad(size_t alignment)
{
    if (alignment > 1 && bytes_.size() % alignment) zeros(alignment - bytes_.size() % alignment);
    return *this;
}

bool ByteWriter::putU16(size_t offset, uint16_t value)
{
    if (offset > bytes_.size() || bytes_.size() - offset < 2) return false;
    bytes_[offset] = uint8_t(value >> 8);
    bytes_[offset + 1] = uint8_t(value);
    return true;
}

bool ByteWriter::putU32(size_t offset, uint32_t value)
{
    if (offset > bytes_.size() || bytes_.size() - offset < 4) return false;
    return putU16(offset, uint16_t(value >> 16)) && putU16(offset + 2, uint16_t(value));
}
