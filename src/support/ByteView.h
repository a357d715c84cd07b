// The one reader of untrusted bytes. Fonts, resource maps, containers and
// property lists are hostile input: every parser reads them through a
// ByteView (random access by offset) or a ByteReader (a cursor), never by
// pointer arithmetic of its own. Each read either succeeds completely or
// reports failure and leaves its output untouched. Bounds are checked against
// the remaining length, so no offset + length sum can overflow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

// Binary records are declared once, as their format's documentation names
// them: a struct of Field constants (each an offset from the record's start
// and a type that fixes its size) and the record's size. Parsers read fields
// by name, never by a literal offset:
//
//   struct ResourceHeader {
//       static constexpr Field<uint32_t> dataOffset{0}, mapOffset{4};
//       static constexpr size_t size = 16;
//   };
//   fork.read(0, ResourceHeader::mapOffset, mapOffset);
struct UInt24 {};  // a 24-bit unsigned field, read into a uint32_t

template <typename T>
struct Field {
    using Value = std::conditional_t<std::is_same_v<T, UInt24>, uint32_t, T>;
    static constexpr size_t size = std::is_same_v<T, UInt24> ? 3 : sizeof(T);
    size_t offset;
    // The index-th of an array of such fields that starts here.
    constexpr Field at(size_t index) const { return {offset + index * size}; }
    constexpr size_t end() const { return offset + size; }
};

class ByteView {
public:
    constexpr ByteView() = default;
    constexpr ByteView(const uint8_t* data, size_t size) : data_(data), size_(data ? size : 0) {}
    ByteView(const char* data, size_t size)
        : ByteView(reinterpret_cast<const uint8_t*>(data), size) {}
    explicit ByteView(std::span<const uint8_t> bytes) : ByteView(bytes.data(), bytes.size()) {}
    explicit ByteView(std::string_view bytes) : ByteView(bytes.data(), bytes.size()) {}

    size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    // True when [offset, offset + length) lies inside the view.
    bool contains(size_t offset, size_t length) const
    {
        return offset <= size_ && length <= size_ - offset;
    }

    bool u8(size_t offset, uint8_t& out) const;
    bool i8(size_t offset, int8_t& out) const;
    bool u16(size_t offset, uint16_t& out) const;
    bool i16(size_t offset, int16_t& out) const;
    bool u24(size_t offset, uint32_t& out) const;
    bool u32(size_t offset, uint32_t& out) const;
    bool i32(size_t offset, int32_t& out) const;
    // A four-character code, most significant byte first.
    bool tag(size_t offset, uint32_t& out) const { return u32(offset, out); }

    // The field of the record that starts at `record`.
    template <typename T>
    bool read(size_t record, Field<T> field, typename Field<T>::Value& out) const
    {
        if (record > size_ || field.offset > size_ - record) return false;
        const size_t at = record + field.offset;
        if constexpr (std::is_same_v<T, UInt24>) return u24(at, out);
        else if constexpr (std::is_same_v<T, uint8_t>) return u8(at, out);
        else if constexpr (std::is_same_v<T, int8_t>) return i8(at, out);
        else if constexpr (std::is_same_v<T, uint16_t>) return u16(at, out);
        else if constexpr (std::is_same_v<T, int16_t>) return i16(at, out);
        else if constexpr (std::is_same_v<T, uint32_t>) return u32(at, out);
        else {
            static_assert(std::is_same_v<T, int32_t>, "no reader for this field type");
            return i32(at, out);
        }
    }

    // The bytes [offset, offset + length), or nothing when out of range.
    std::optional<ByteView> sub(size_t offset, size_t length) const;
    // The bytes from offset to the end; empty when offset is past the end.
    ByteView tail(size_t offset) const;
    // The first `length` bytes, or all of them when there are fewer.
    ByteView head(size_t length) const { return ByteView(data_, std::min(length, size_)); }
    // Copies length bytes to out; false (nothing copied) when out of range.
    bool copy(size_t offset, size_t length, void* out) const;
    // The bytes as text; empty when out of range.
    std::string_view chars(size_t offset, size_t length) const;
    std::string_view chars() const { return chars(0, size_); }
    // True when the view starts with these bytes.
    bool startsWith(std::string_view prefix) const;

    // The validated range as a pointer, for handing whole to a library
    // (zlib, ICU). Never index through it.
    const uint8_t* data() const { return data_; }
    std::span<const uint8_t> span() const { return {data_, size_}; }

private:
    const uint8_t* data_ = nullptr;
    size_t size_ = 0;
};

// A cursor over a ByteView: each read advances on success only.
class ByteReader {
public:
    explicit ByteReader(ByteView view, size_t offset = 0) : view_(view), offset_(offset) {}

    bool u8(uint8_t& out) { return advance(view_.u8(offset_, out), 1); }
    bool i8(int8_t& out) { return advance(view_.i8(offset_, out), 1); }
    bool u16(uint16_t& out) { return advance(view_.u16(offset_, out), 2); }
    bool i16(int16_t& out) { return advance(view_.i16(offset_, out), 2); }
    bool u24(uint32_t& out) { return advance(view_.u24(offset_, out), 3); }
    bool u32(uint32_t& out) { return advance(view_.u32(offset_, out), 4); }
    bool i32(int32_t& out) { return advance(view_.i32(offset_, out), 4); }
    bool tag(uint32_t& out) { return u32(out); }
    bool skip(size_t count) { return advance(view_.contains(offset_, count), count); }
    bool seek(size_t offset);
    // The next count bytes as a view.
    bool bytes(size_t count, ByteView& out);

    size_t offset() const { return offset_; }
    size_t remaining() const { return offset_ <= view_.size() ? view_.size() - offset_ : 0; }
    ByteView view() const { return view_; }

private:
    bool advance(bool ok, size_t count)
    {
        if (ok) offset_ += count;
        return ok;
    }

    ByteView view_;
    size_t offset_;
};

// Four-character code from a literal: fourCC("FOND").
constexpr uint32_t fourCC(const char (&code)[5])
{
    return (uint32_t(uint8_t(code[0])) << 24) | (uint32_t(uint8_t(code[1])) << 16) |
           (uint32_t(uint8_t(code[2])) << 8) | uint32_t(uint8_t(code[3]));
}

// The four characters of a code, most significant byte first.
std::string fourCCString(uint32_t code);
