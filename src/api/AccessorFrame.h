// The frame every per-face accessor shares: null checks, a copy of the face,
// the attribute's valid bit, then delivery of the value.
#pragma once

#include <cstdint>

#include "api/CopyOut.h"
#include "api/FontArray.h"
#include "typeprobe/typeprobe.h"

// Calls deliver(face) when the handle and the output are non-null and the
// face was made with `bit`. The index is not checked: an index past the end
// throws std::out_of_range out of the exported function, as intended.
template <typename Deliver>
unsigned long AccessFace(TP_FontArray* array, unsigned long index, const void* output,
                         uint32_t bit, Deliver deliver)
{
    if (!array || !output) return kTP_NullArgumentOrNotFound;
    const TP_FontSpecifier face = array->at(index);
    if (!(face.validAttributes & bit)) return kTP_AttributeNotRequested;
    deliver(face);
    return kTP_Success;
}

// A text field, by the copy-out rule.
inline unsigned long AccessText(TP_FontArray* array, unsigned long index, uint32_t bit,
                                LxString TP_FontSpecifier::*field, char* buffer,
                                int bufferLength)
{
    return AccessFace(array, index, buffer, bit, [&](const TP_FontSpecifier& face) {
        CopyOut((face.*field).str(), buffer, bufferLength);
    });
}

// A number field, stored through `value`.
inline unsigned long AccessNumber(TP_FontArray* array, unsigned long index, uint32_t bit,
                                  uint32_t TP_FontSpecifier::*field, unsigned long* value)
{
    return AccessFace(array, index, value, bit,
                      [&](const TP_FontSpecifier& face) { *value = face.*field; });
}
