#include "support/ByteView.h"

#include <cstring>

namespace {

template <size_t N>
bool readBigEndian(const ByteView& view, size_t offset, uint32_t& out)
{
    uint8_t bytes[N];
    if (!view.copy(offset, N, bytes)) return false;
    uint32_t value = 0;
    for (size_t i = 0; i < N; ++i) value = (value << 8) | bytes[i];
    out = value;
    return true;
}

}  // namespace

bool ByteView::u8(size_t offset, uint8_t& out) const
{
    if (!contains(offset, 1)) return false;
    out = data_[offset];
    return true;
}

bool ByteView::i8(size_t offset, int8_t& out) const
{
    uint8_t value;
    if (!u8(offset, value)) return false;
    out = static_cast<int8_t>(value);
    return true;
}

bool ByteView::u16(size_t offset, uint16_t& out) const
{
    uint32_t value;
    if (!readBigEndian<2>(*this, offset, value)) return false;
    out = static_cast<uint16_t>(value);
    return true;
}

bool ByteView::i16(size_t offset, int16_t& out) const
{
    uint16_t value;
    if (!u16(offset, value)) return false;
    out = static_cast<int16_t>(value);
    return true;
}

bool ByteView::u24(size_t offset, uint32_t& out) const
{
    return readBigEndian<3>(*this, offset, out);
}

bool ByteView::u32(size_t offset, uint32_t& out) const
{
    return readBigEndian<4>(*this, offset, out);
}

bool ByteView::i32(size_t offset, int32_t& out) const
{
    uint32_t value;
    if (!u32(offset, value)) return false;
    out = static_cast<int32_t>(value);
    return true;
}

std::optional<ByteView> ByteView::sub(size_t offset, size_t length) const
{
    if (!contains(offset, length)) return std::nullopt;
    return ByteView(data_ + offset, length);
}

ByteView ByteView::tail(size_t offset) const
{
    if (offset >= size_) return ByteView();
    return ByteView(data_ + offset, size_ - offset);
}

bool ByteView::copy(size_t offset, size_t length, void* out) const
{
    if (!contains(offset, length)) return false;
    if (length) std::memcpy(out, data_ + offset, length);
    return true;
}

std::string_view ByteView::chars(size_t offset, size_t length) const
{
    if (!contains(offset, length) || length == 0) return {};
    return {reinterpret_cast<const char*>(data_ + offset), length};
}

bool ByteView::startsWith(std::string_view prefix) const
{
    return contains(0, prefix.size()) && chars(0, prefix.size()) == prefix;
}

bool ByteReader::seek(size_t offset)
{
    if (offset > view_.size()) return false;
    offset_ = offset;
    return true;
}

bool ByteReader::bytes(size_t count, ByteView& out)
{
    auto part = view_.sub(offset_, count);
    if (!part) return false;
    out = *part;
    offset_ += count;
    return true;
}

std::string fourCCString(uint32_t code)
{
    std::string text(4, '\0');
    for (int i = 0; i < 4; ++i) text[i] = static_cast<char>((code >> (24 - 8 * i)) & 0xFF);
    return text;
}
