// The XML and property-list forms of a font array, written and read back:
// whatever a reader made, its writers must deliver a document of the length
// they announce that the readers take back.
#pragma once

#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "typeprobe/typeprobe.h"

namespace fuzzsupport {

using Writer = unsigned long (*)(TP_FontArray*, char*, unsigned long*);
using Reader = unsigned long (*)(const char*, TP_FontArray**);

// The whole document of a writer: asked once for its length, then written.
inline std::string Written(TP_FontArray* array, Writer write)
{
    char probe = 'x';
    unsigned long length = 0;
    FUZZ_CHECK(write(array, &probe, &length) == 4 && probe == 'x' && length > 0);
    std::vector<char> buffer(length);
    unsigned long capacity = length;
    FUZZ_CHECK(write(array, buffer.data(), &capacity) == kTP_Success && capacity == length);
    FUZZ_CHECK(buffer[length - 1] == '\0');
    return std::string(buffer.data(), length - 1);
}

// The document read back must give faces. Not always as many: the XML form
// does not escape its values (deliberately), so a value holding
// "<FontData>" reads back as more faces, and the property-list form cannot
// hold a name that is not UTF-8, which the readers take verbatim.
inline void CheckRoundTrip(TP_FontArray* array, Writer write, Reader read)
{
    const std::string document = Written(array, write);
    TP_FontArray* reread = nullptr;
    FUZZ_CHECK(read(document.c_str(), &reread) == kTP_Success && reread);
    unsigned long count = 0;
    FUZZ_CHECK(TP_GetFontCount(reread, &count) == kTP_Success && count > 0);
    TP_SpecifierFree(reread);
}

}  // namespace fuzzsupport
