// WOFF2: a hostile WOFF2 is either decoded into a font no larger than the
// ceiling, or refused; the decoder never allocates for a claim it cannot keep.
#include <cstdint>

#include "FuzzSupport.h"
#include "containers/Woff2.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const ByteView woff2(data, size);
    auto font = Woff2::DecodeToSfnt(woff2);
    FUZZ_CHECK(!font || Woff2::Claims(woff2));
    if (!font) return 0;
    FUZZ_CHECK(font->size() >= 12 && font->size() <= Woff2::kLargestSfnt);
    return 0;
}
