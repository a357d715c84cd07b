// The property-list reader: the guarded parser on XML and binary lists, and
// TP_CreateSpecifierFromPropertyList with the round trip of what it made.
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "Representations.h"
#include "support/XCFUtils.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (plist_t list = XCFUtils::XCFCreateCFPropertyListFromBytes(bytes)) plist_free(list);

    const std::string text(bytes);  // zero-terminated
    TP_FontArray* array = nullptr;
    if (TP_CreateSpecifierFromPropertyList(text.c_str(), &array) != kTP_Success) {
        FUZZ_CHECK(array == nullptr);
        return 0;
    }
    fuzzsupport::CheckRoundTrip(array, TP_GetPropertyListRepresentation,
                                TP_CreateSpecifierFromPropertyList);
    fuzzsupport::CheckRoundTrip(array, TP_GetXMLRepresentation, TP_CreateSpecifierFromXML);
    TP_SpecifierFree(array);
    return 0;
}
