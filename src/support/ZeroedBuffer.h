// A writable buffer that reads as zeros wherever nothing was written: an
// anonymous mapping, so pages never touched cost nothing. For large images
// of which only parts are filled in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "support/ByteView.h"

class ZeroedBuffer {
public:
    // Empty when the memory cannot be had.
    explicit ZeroedBuffer(size_t size);
    ~ZeroedBuffer();
    ZeroedBuffer(const ZeroedBuffer&) = delete;
    ZeroedBuffer& operator=(const ZeroedBuffer&) = delete;

    std::span<uint8_t> span() { return {data_, size_}; }
    ByteView view() const { return ByteView(data_, size_); }
    size_t size() const { return size_; }

private:
    uint8_t* data_ = nullptr;
    size_t size_ = 0;
};
