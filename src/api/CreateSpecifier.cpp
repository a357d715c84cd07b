#include <memory>

#include "api/CollectionSpecifiers.h"
#include "api/ResourceFileSpecifiers.h"
#include "fontfiles/FontKind.h"
#include "containers/MacForks.h"
#include "containers/ReadScope.h"
#include "typeprobe/typeprobe.h"

extern "C" {

TP_API unsigned long TP_CreateSpecifier(const char* path, unsigned long /*reserved*/,
                                        unsigned long attributeMask, TP_FontArray** result)
{
    if (!path || !result) return kTP_NullArgumentOrNotFound;
    // The metadata readers and the checksums share one read of each fork,
    // and every face of the file one whole-file checksum.
    ReadScope readOnce;
    // A missing file has no faces, whatever its name says it holds.
    if (!MacForks::Describe(path).exists) return kTP_NullArgumentOrNotFound;
    auto array = std::make_unique<TP_FontArray>();
    if (fontTypeFromExtension(path) == kExtensionTTC)
        AppendCollectionFaces(path, attributeMask, *array);
    else
        AppendResourceFileFaces(path, attributeMask, *array);
    if (array->size() == 0) return kTP_NullArgumentOrNotFound;
    array->RemoveDups();
    *result = array.release();
    return kTP_Success;
}

}  // extern "C"
