#include <memory>
#include <optional>
#include <utility>

#include "api/CollectionSpecifiers.h"
#include "api/ResourceFileSpecifiers.h"
#include "fontfiles/FontKind.h"
#include "fontfiles/TFontData.h"
#include "containers/MacForks.h"
#include "containers/ReadScope.h"
#include "containers/WebFont.h"
#include "typeprobe/typeprobe.h"

namespace {

ReadOptions readOptions(unsigned long options)
{
    ReadOptions read;
    read.allFormats = (options & kTP_AllFormats) != 0;
    return read;
}

// The classic rules know a collection by its name; every format by its
// "ttcf" tag, whatever the name.
bool isCollection(const char* path, const ReadOptions& options)
{
    if (options.allFormats) return DataForkSignature(path) == Signature::Collection;
    return fontTypeFromExtension(path) == kExtensionTTC;
}

// The collection a WOFF2 wraps, decoded; nothing for any other file.
std::optional<SharedBytes> webFontCollection(const char* path, const ReadOptions& options)
{
    if (!options.allFormats || DataForkSignature(path) != Signature::WebFont) return std::nullopt;
    std::optional<SharedBytes> font = WebFont::DecodeDataFork(path);
    if (!font || SignatureOf(font->view()) != Signature::Collection) return std::nullopt;
    return font;
}

}  // namespace

extern "C" {

TP_API unsigned long TP_CreateSpecifierWithOptions(const char* path, unsigned long options,
                                                   unsigned long attributeMask,
                                                   TP_FontArray** result)
{
    if (!path || !result) return kTP_NullArgumentOrNotFound;
    const ReadOptions read = readOptions(options);
    // The metadata readers and the checksums share one read of each fork,
    // and every face of the file one whole-file checksum.
    ReadScope readOnce;
    // A missing file has no faces, whatever its name says it holds.
    if (!MacForks::Describe(path).exists) return kTP_NullArgumentOrNotFound;
    auto array = std::make_unique<TP_FontArray>();
    if (isCollection(path, read))
        AppendCollectionFaces(path, attributeMask, read, *array);
    else if (std::optional<SharedBytes> collection = webFontCollection(path, read))
        AppendCollectionFaces(TrueTypeCollectionFont(std::move(*collection)), path, attributeMask,
                              read, *array);
    else
        AppendResourceFileFaces(path, attributeMask, read, *array);
    if (array->size() == 0) return kTP_NullArgumentOrNotFound;
    array->RemoveDups();
    *result = array.release();
    return kTP_Success;
}

TP_API unsigned long TP_CreateSpecifier(const char* path, unsigned long /*reserved*/,
                                        unsigned long attributeMask, TP_FontArray** result)
{
    return TP_CreateSpecifierWithOptions(path, 0, attributeMask, result);
}

}  // extern "C"
