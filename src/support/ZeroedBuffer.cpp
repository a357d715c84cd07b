#include "support/ZeroedBuffer.h"

#include <sys/mman.h>

ZeroedBuffer::ZeroedBuffer(size_t size)
{
    if (size == 0) return;
    void* start = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (start == MAP_FAILED) return;
    data_ = static_cast<uint8_t*>(start);
    size_ = size;
}

ZeroedBuffer::~ZeroedBuffer()
{
    if (data_) ::munmap(data_, size_);
}
