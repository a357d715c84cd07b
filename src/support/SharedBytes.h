// Immutable bytes that views may point into for as long as any copy of the
// holder lives: a read-only mapping of a file, or a vector handed over.
// Copies share the storage; the last one releases it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "support/ByteView.h"

class SharedBytes {
public:
    SharedBytes() = default;
    explicit SharedBytes(std::vector<uint8_t> bytes);

    // The first `size` bytes of the file open on `fd`, mapped read-only;
    // nothing when they cannot be mapped. The descriptor may be closed
    // afterwards. A mapping shows the file as it is: a file cut short while
    // mapped faults on access, so writers never rewrite a file that is
    // mapped (see ReadScope).
    static std::optional<SharedBytes> MapFile(int fd, uint64_t size);

    ByteView view() const { return view_; }
    size_t size() const { return view_.size(); }
    bool empty() const { return view_.empty(); }

    // The same storage narrowed to [offset, offset + length); nothing when
    // that is out of range.
    std::optional<SharedBytes> slice(uint64_t offset, uint64_t length) const;

private:
    std::shared_ptr<const void> owner_;
    ByteView view_;
};
