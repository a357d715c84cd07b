#include "containers/WebFont.h"

#include <utility>
#include <vector>

#include "containers/MacForks.h"
#include "containers/ReadScope.h"
#include "containers/Woff.h"
#include "containers/Woff2.h"

namespace WebFont {

namespace {

std::optional<SharedBytes> decode(const std::string& path)
{
    const std::optional<SharedBytes> file = MacForks::DataForkBytes(path);
    if (!file) return std::nullopt;
    std::optional<std::vector<uint8_t>> sfnt;
    if (Woff::Claims(file->view()))
        sfnt = Woff::DecodeToSfnt(file->view());
    else if (Woff2::Claims(file->view()))
        sfnt = Woff2::DecodeToSfnt(file->view());
    if (!sfnt) return std::nullopt;
    return SharedBytes(std::move(*sfnt));
}

}  // namespace

const char* FormatName(ByteView head)
{
    if (Woff::Claims(head)) return "WOFF";
    if (Woff2::Claims(head)) return "WOFF2";
    return nullptr;
}

std::optional<SharedBytes> DecodeDataFork(const std::string& path)
{
    ReadScope::Memory* memory = ReadScope::Active();
    if (!memory) return decode(path);
    auto known = memory->webFonts.find(path);
    if (known == memory->webFonts.end()) known = memory->webFonts.emplace(path, decode(path)).first;
    return known->second;
}

}  // namespace WebFont
