// The XML reader, TP_CreateSpecifierFromXML, with the round trip of what it
// made through both written forms.
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "Representations.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const std::string text(reinterpret_cast<const char*>(data), size);  // zero-terminated
    TP_FontArray* array = nullptr;
    const unsigned long result = TP_CreateSpecifierFromXML(text.c_str(), &array);
    FUZZ_CHECK(result == kTP_Success || result == kTP_IndexOutOfRange);
    if (result != kTP_Success) {
        FUZZ_CHECK(array == nullptr);
        return 0;
    }
    fuzzsupport::CheckRoundTrip(array, TP_GetXMLRepresentation, TP_CreateSpecifierFromXML);
    fuzzsupport::CheckRoundTrip(array, TP_GetPropertyListRepresentation,
                                TP_CreateSpecifierFromPropertyList);
    TP_SpecifierFree(array);
    return 0;
}
