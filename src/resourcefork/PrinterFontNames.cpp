#include "resourcefork/PrinterFontNames.h"

#include <string>
#include <string_view>

#include "resourcefork/PascalStrings.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "containers/MacForks.h"

namespace {

constexpr size_t kFileNameLimit = 255;
constexpr int kFirstPartQuota = 4;  // characters after the first one
constexpr int kLaterPartQuota = 2;

// C-locale classes, whatever the process locale.
bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}
bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string trimmedName(std::string_view name)
{
    std::string work(name);
    if (work.rfind("ITC-", 0) == 0) work.erase(0, 4);
    // The last character is never examined (intended).
    for (size_t i = 0; i + 1 < work.size(); ++i) {
        if (work[i] == '_') {
            work.resize(i);
            break;
        }
    }
    return work;
}

std::string abbreviate(const std::string& name)
{
    const size_t n = name.size();
    bool afterHyphen = false;
    int quota = 0;
    std::string result;
    for (size_t i = 1; i <= n; ++i) {
        const char c = name[i - 1];
        // The digit rules are intended: a trailing two-digit number keeps both digits.
        const bool startsPart = afterHyphen || isUpper(c) ||
                                (i == 1 && (isDigit(c) || isLower(c))) ||
                                (i == n && i > 1 && isDigit(c) && isDigit(name[i - 2]));
        if (startsPart) {
            if (result.empty())
                quota = kFirstPartQuota;
            else if (i + 1 >= n)
                quota = kLaterPartQuota;
            else
                quota = isDigit(c) ? 0 : kLaterPartQuota;
            result += c;
            afterHyphen = false;
        } else if (c == '-') {
            afterHyphen = true;
            quota = 0;
        } else {
            afterHyphen = false;
            if (quota > 0) {
                result += c;
                --quota;
            }
        }
    }
    return result;
}

}  // namespace

void GetPostScriptFontFileName(const unsigned char* psName, unsigned char* dst)
{
    if (!dst) return;
    unsigned char result[kPascalBufferSize];
    SetPascalText(abbreviate(trimmedName(PascalText(psName))), result, sizeof result);
    CopyPascalStringAsciiLimit(result, dst, kFileNameLimit);
}

std::optional<LxString> CreatePrinterPath(const TypeprobeResourceFile* file,
                                          const ResourceHandle* fond, int style)
{
    if (!file || !file->shouldHavePrinterFile(fond, int16_t(style))) return std::nullopt;
    const LxString name = file->getPSPrinterNameForFOND(fond, int16_t(style));
    if (name.empty()) return std::nullopt;
    const std::string path = file->folder() + "/" + name.str();
    const MacFile found = MacForks::Resolve(path);
    if (!found.exists || found.dataFork.kind == ForkLocation::Kind::Missing) return std::nullopt;
    return LxString(path);
}
