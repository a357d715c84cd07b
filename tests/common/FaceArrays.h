// An owning handle for the library's face arrays, for the tests of the C
// interface.
#pragma once

#include <memory>
#include <string>

#include "typeprobe/typeprobe.h"

namespace facearrays {

struct ArrayFree {
    void operator()(TP_FontArray* array) const { TP_SpecifierFree(array); }
};
using Array = std::unique_ptr<TP_FontArray, ArrayFree>;

// Every face of `path`, or null when the library finds none.
inline Array Identify(const std::string& path, unsigned long mask = kTP_AllAttributes)
{
    TP_FontArray* array = nullptr;
    return Array(TP_CreateSpecifier(path.c_str(), 0, mask, &array) == 0 ? array : nullptr);
}

}  // namespace facearrays
