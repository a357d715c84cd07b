#include "support/FileDescriptor.h"

#include <unistd.h>

#include <cerrno>

FileDescriptor::~FileDescriptor()
{
    if (fd_ >= 0) ::close(fd_);
}

bool FileDescriptor::close()
{
    const int fd = fd_;
    fd_ = -1;
    return fd >= 0 && ::close(fd) == 0;
}

bool FileDescriptor::readAt(uint64_t offset, std::span<uint8_t> out) const
{
    size_t done = 0;
    while (done < out.size()) {
        const ssize_t got = ::pread(fd_, out.data() + done, out.size() - done, off_t(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        done += size_t(got);
    }
    return true;
}

bool FileDescriptor::write(ByteView bytes) const
{
    size_t done = 0;
    while (done < bytes.size()) {
        const ByteView rest = bytes.tail(done);
        const ssize_t put = ::write(fd_, rest.data(), rest.size());
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) return false;
        done += size_t(put);
    }
    return true;
}
