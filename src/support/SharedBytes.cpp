#include "support/SharedBytes.h"

#include <sys/mman.h>

SharedBytes::SharedBytes(std::vector<uint8_t> bytes)
{
    auto owned = std::make_shared<const std::vector<uint8_t>>(std::move(bytes));
    view_ = ByteView(owned->data(), owned->size());
    owner_ = std::move(owned);
}

std::optional<SharedBytes> SharedBytes::MapFile(int fd, uint64_t size)
{
    SharedBytes bytes;
    if (size == 0) return bytes;  // nothing to map
    if (size > SIZE_MAX) return std::nullopt;
    void* start = ::mmap(nullptr, size_t(size), PROT_READ, MAP_PRIVATE, fd, 0);
    if (start == MAP_FAILED) return std::nullopt;
    bytes.owner_ = std::shared_ptr<const void>(start, [size](const void* at) {
        ::munmap(const_cast<void*>(at), size_t(size));
    });
    bytes.view_ = ByteView(static_cast<const uint8_t*>(start), size_t(size));
    return bytes;
}

std::optional<SharedBytes> SharedBytes::slice(uint64_t offset, uint64_t length) const
{
    if (offset > view_.size() || length > view_.size() - offset) return std::nullopt;
    SharedBytes part;
    part.owner_ = owner_;
    part.view_ = *view_.sub(size_t(offset), size_t(length));
    return part;
}
