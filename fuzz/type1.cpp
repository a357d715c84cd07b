// The Type 1 text gatherer: the clear text of an outline file, as read from
// a file's first bytes or a POST resource.
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "fontfiles/Type1MetaData.h"
#include "fontfiles/PostScriptResources.h"
#include "resourcefork/ResourceHandle.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const std::string_view verbatim(reinterpret_cast<const char*>(data), size);
    std::string storage;
    const Type1Text text = MakeType1Text(verbatim, storage);
    FUZZ_CHECK(text.searchCopy.size() == size && text.searchCopy.find('\0') == std::string_view::npos);

    LxString kind, foundry, family, version, postScriptName, displayName, fullName;
    GatherPostScriptMetaDataFromData(text, &kind, &foundry, &family, &version, &postScriptName,
                                     &displayName, &fullName);
    FUZZ_CHECK(!kind.empty());
    FUZZ_CHECK(displayName.str() == postScriptName.str() && fullName.str() == postScriptName.str());
    for (const LxString* value : {&family, &version, &postScriptName, &foundry})
        FUZZ_CHECK(value->length() <= 3999);
    GatherPostScriptMetaDataFromData(text, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr);

    LxString value;
    for (const char* token : {"(", "[", "{", "/", "/fontname", "%!"})
        findBlobForToken(text, token, &value);
    for (const char* delimiters : {":- \r\n%", ": \r\n%", "", "-"})
        GetDelimitedKeyValue(verbatim, LxString("%!PS-AdobeFont-"), delimiters, &value);

    // The same bytes as a POST resource of a printer font.
    ResourceHandle post;
    post.data.assign(data, data + size);
    LxString postKind, postFamily, postName;
    const int status = GatherMetaDataFromHandle(&post, &postKind, nullptr, &postFamily, nullptr,
                                                &postName, nullptr, nullptr);
    FUZZ_CHECK(status == 0 || status == -1);

    // Windows companion names from the text taken as a file name.
    const LxString name(std::string(verbatim.substr(0, verbatim.find('\0'))));
    LxString companion;
    GetWindowsPSPrinterFontNameFromFontName(name, &companion);
    GetWindowsMMMFontNameFromPrinterFontName(name, &companion);
    return 0;
}
