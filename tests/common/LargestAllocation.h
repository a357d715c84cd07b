// The largest single allocation made while an object of this class lives,
// seen through the sanitizer allocator's hooks: available in the
// AddressSanitizer build only (elsewhere Available() is false and tests that
// need it skip).
#pragma once

#include <atomic>
#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define TYPEPROBE_TESTS_HAVE_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TYPEPROBE_TESTS_HAVE_ASAN 1
#endif
#endif

#ifdef TYPEPROBE_TESTS_HAVE_ASAN
#include <sanitizer/allocator_interface.h>
#endif

class LargestAllocation {
public:
    LargestAllocation()
    {
        largest.store(0);
        recording.store(Available());
    }
    ~LargestAllocation() { recording.store(false); }
    LargestAllocation(const LargestAllocation&) = delete;
    LargestAllocation& operator=(const LargestAllocation&) = delete;

    size_t bytes() const { return largest.load(); }

    static bool Available()
    {
#ifdef TYPEPROBE_TESTS_HAVE_ASAN
        static const bool installed = __sanitizer_install_malloc_and_free_hooks(&onMalloc, &onFree) != 0;
        return installed;
#else
        return false;
#endif
    }

private:
    static inline std::atomic<size_t> largest{0};
    static inline std::atomic<bool> recording{false};

    static void onMalloc(const volatile void*, size_t size)
    {
        if (!recording.load()) return;
        for (size_t seen = largest.load(); size > seen && !largest.compare_exchange_weak(seen, size);) {
        }
    }
    static void onFree(const volatile void*) {}
};
