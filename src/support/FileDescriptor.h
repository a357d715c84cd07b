// The one owner of an open file descriptor, and whole reads and writes
// through one (a short count or an interrupted call is carried on, not
// taken as done).
#pragma once

#include <cstdint>
#include <span>

#include "support/ByteView.h"

class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    ~FileDescriptor();
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int get() const { return fd_; }
    bool valid() const { return fd_ >= 0; }
    // Closes now and reports whether what was written reached the file.
    bool close();

    // Exactly out.size() bytes from `offset`; false on an error or an early end.
    bool readAt(uint64_t offset, std::span<uint8_t> out) const;
    // All of `bytes` at the current position.
    bool write(ByteView bytes) const;

private:
    int fd_;
};
