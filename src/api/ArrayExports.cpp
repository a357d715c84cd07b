// Exported functions over a whole array: count, lookup, comparison, release.
#include "api/FontArray.h"
#include "typeprobe/typeprobe.h"

extern "C" {

TP_API unsigned long TP_GetFontCount(TP_FontArray* array, unsigned long* count)
{
    if (!array || !count) return kTP_NullArgumentOrNotFound;
    *count = array->size();
    return kTP_Success;
}

TP_API unsigned long TP_GetFontIndexForFONDResourceID(TP_FontArray* array, short fondResourceID,
                                                      short style, unsigned long* index)
{
    if (!index) return kTP_NullArgumentOrNotFound;
    *index = 0;
    if (!array) return kTP_NullArgumentOrNotFound;
    unsigned int found = 0;
    if (!array->FindIndexForFondResourceID(fondResourceID, style, found))
        return kTP_NullArgumentOrNotFound;
    *index = found;
    return kTP_Success;
}

TP_API unsigned long TP_Match(TP_FontArray* arrayA, unsigned long indexA, TP_FontArray* arrayB,
                              unsigned long indexB, unsigned long* matching,
                              unsigned long* differing)
{
    if (!arrayA || !arrayB || !matching || !differing) return kTP_NullArgumentOrNotFound;
    *matching = 0;
    *differing = 0;
    if (indexA >= arrayA->size() || indexB >= arrayB->size()) return kTP_IndexOutOfRange;
    const TP_FontSpecifier a = arrayA->at(indexA);
    const TP_FontSpecifier b = arrayB->at(indexB);
    *matching = a.MatchingAttributes(b);
    *differing = a.DifferingAttributes(b);
    return kTP_Success;
}

TP_API unsigned long TP_SpecifierFree(TP_FontArray* array)
{
    if (!array) return kTP_NullArgumentOrNotFound;
    delete array;
    return kTP_Success;
}

}  // extern "C"
