// The platform verdict and the kerning-table checksum of an sfnt.
#include <cstdint>

#include "FuzzSupport.h"
#include "fontfiles/SfntPlatform.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const ByteView font(data, size);
    LxString platform;
    const int decided = GetPlatformTTF(font, &platform);
    FUZZ_CHECK(decided == (size > 4 ? 1 : 0));
    FUZZ_CHECK(decided == 0 ? platform.empty()
                            : (platform.str() == "mac" || platform.str() == "crossplatform"));
    FUZZ_CHECK(GetPlatformTTF(font, nullptr) == 0);

    uint32_t checksum = 0xDEADBEEF;
    if (!GetTrueTypeKerningTableChecksum(font, &checksum)) FUZZ_CHECK(checksum == 0xDEADBEEF);
    FUZZ_CHECK(GetTrueTypeKerningTableChecksum(font, nullptr) == 0);
    return 0;
}
