// The guarded property-list parser: XML and binary property lists in memory.
#include <cstdint>
#include <string_view>

#include "FuzzSupport.h"
#include "support/XCFUtils.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (plist_t list = XCFUtils::XCFCreateCFPropertyListFromBytes(bytes)) plist_free(list);
    return 0;
}
