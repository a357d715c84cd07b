// Exported accessors of what held a face: every face has them, so they need
// no attribute bit, and being new they check the index.
#include "api/CopyOut.h"
#include "api/FontArray.h"
#include "typeprobe/typeprobe.h"

namespace {

unsigned long accessWrapping(TP_FontArray* array, unsigned long index,
                             LxString TP_FontSpecifier::*field, char* buffer, int bufferLength)
{
    if (!array || !buffer) return kTP_NullArgumentOrNotFound;
    if (index >= array->size()) return kTP_IndexOutOfRange;
    CopyOut((array->at(index).*field).str(), buffer, bufferLength);
    return kTP_Success;
}

}  // namespace

extern "C" {

TP_API unsigned long TP_GetWrapper(TP_FontArray* array, unsigned long index, char* buffer,
                                   int bufferLength)
{
    return accessWrapping(array, index, &TP_FontSpecifier::wrapper, buffer, bufferLength);
}

TP_API unsigned long TP_GetContainer(TP_FontArray* array, unsigned long index, char* buffer,
                                     int bufferLength)
{
    return accessWrapping(array, index, &TP_FontSpecifier::container, buffer, bufferLength);
}

}  // extern "C"
