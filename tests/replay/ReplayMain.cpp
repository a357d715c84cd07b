// Runs a fuzz target's entry once on every file of the folders given (its
// seed corpus), as a test: a crash, a sanitizer report or a failed check of
// the target fails it. In the AddressSanitizer build a single allocation of
// 64 MB or more fails it too, as it does under the fuzzer.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "common/LargestAllocation.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    constexpr size_t kAllocationLimit = size_t(64) << 20;
    std::vector<std::filesystem::path> inputs;
    for (int i = 1; i < argc; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
            if (entry.is_regular_file()) inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    int failures = 0;
    for (const auto& path : inputs) {
        std::ifstream in(path, std::ios::binary);
        std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        std::printf("%s\n", path.filename().c_str());
        std::fflush(stdout);
        const uint8_t none = 0;
        LargestAllocation largest;
        LLVMFuzzerTestOneInput(bytes.empty() ? &none : bytes.data(), bytes.size());
        if (LargestAllocation::Available() && largest.bytes() >= kAllocationLimit) {
            std::printf("  allocated %zu bytes at once\n", largest.bytes());
            ++failures;
        }
    }
    std::printf("%zu inputs, %d failed\n", inputs.size(), failures);
    return inputs.empty() || failures ? 1 : 0;
}
