#include "fontfiles/Type1MetaData.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "containers/MacForks.h"

namespace {

constexpr size_t kMaxValueLength = 3999;
constexpr size_t kType1ReadLimit = 6000;
const char* const kHeaderKey = "%!PS-AdobeFont-";

bool isBlank(char c)
{
    return c == ' ';
}

// The end of a group opened just before `start`: the closing character that
// brings the nesting below zero, or the end of the text.
size_t groupEnd(std::string_view text, size_t start, char open, char close)
{
    int depth = 0;
    for (size_t at = start; at < text.size(); ++at) {
        if (text[at] == open) ++depth;
        if (text[at] == close && --depth < 0) return at;
    }
    return text.size();
}

size_t wordEnd(std::string_view text, size_t start)
{
    size_t at = start;
    while (at < text.size() && !isBlank(text[at])) ++at;
    return at;
}

// Bytes as a C string would see them: up to the first NUL.
LxString cString(std::string_view bytes)
{
    return LxString(std::string(bytes.substr(0, bytes.find('\0'))));
}

bool setIfFound(const Type1Text& text, const char* token, LxString* value)
{
    return value && findBlobForToken(text, token, value);
}

void readHeaderName(const Type1Text& text, const char* delimiters, LxString* value)
{
    // The header is looked for past a POST chunk's header, whatever the
    // text came from.
    if (text.verbatim.size() > POSTChunkHeader::size)
        GetDelimitedKeyValue(text.verbatim.substr(POSTChunkHeader::size), kHeaderKey, delimiters,
                             value);
}

bool hasWindowsExtension(const LxString& name, const char* const* extensions, size_t count)
{
    const std::string& text = name.str();
    if (text.size() < 6 || text[text.size() - 4] != '.') return false;
    std::string extension = text.substr(text.size() - 3);
    for (char& c : extension) c = char(std::tolower(static_cast<unsigned char>(c)));
    for (size_t i = 0; i < count; ++i)
        if (extension == extensions[i]) return true;
    return false;
}

LxString withExtension(const LxString& name, const char* extension)
{
    return LxString(name.str().substr(0, name.length() - 3) + extension);
}

}  // namespace

Type1Text MakeType1Text(std::string_view verbatim, std::string& storage)
{
    storage.assign(verbatim);
    for (char& c : storage) c = (c == '\0') ? '_' : char(std::tolower(static_cast<unsigned char>(c)));
    return {storage, verbatim};
}

bool findBlobForToken(const Type1Text& text, const char* token, LxString* value)
{
    const std::string_view search = text.searchCopy;
    size_t at = search.find(token);
    if (at == std::string_view::npos || !value) return false;
    at += std::strlen(token);
    while (at < search.size() && (isBlank(search[at]) || search[at] == '\n')) ++at;
    size_t start = at, end = at;
    const char opener = at < search.size() ? search[at] : '\0';
    switch (opener) {
    case '(': start = at + 1; end = groupEnd(search, start, '(', ')'); break;
    case '[': start = at + 1; end = groupEnd(search, start, '[', ']'); break;
    case '{': start = at + 1; end = groupEnd(search, start, '{', '}'); break;
    // Only a blank ends a name or a bare word, not a line end: intended.
    case '/': start = at + 1; end = wordEnd(search, start); break;
    default: end = wordEnd(search, start); break;
    }
    const size_t length = std::min(end - std::min(start, end), kMaxValueLength);
    *value = cString(text.verbatim.substr(std::min(start, text.verbatim.size()), length));
    return true;
}

bool GetDelimitedKeyValue(std::string_view text, const LxString& key, const char* delimiters,
                          LxString* value)
{
    const std::string_view delims(delimiters ? delimiters : "");
    size_t at = text.find(key.str());
    if (at == std::string_view::npos || !value) return false;
    at = text.find_first_of(delims, at + key.length());
    if (at == std::string_view::npos) return false;
    ++at;
    while (at < text.size() && isBlank(text[at])) ++at;
    size_t end = text.find_first_of(delims, at);
    if (end == std::string_view::npos) end = text.size();
    *value = cString(text.substr(at, end - at));
    return true;
}

void GatherPostScriptMetaDataFromData(const Type1Text& text, LxString* kind, LxString* foundry,
                                      LxString* family, LxString* version,
                                      LxString* postScriptName, LxString* displayName,
                                      LxString* fullName)
{
    if (kind && text.searchCopy.find("/weightvector") != std::string_view::npos)
        *kind = "PostScript - MM";
    if (version && !setIfFound(text, "/cidfontversion", version) && version->empty())
        setIfFound(text, "/version", version);
    if (family) {
        setIfFound(text, "/familyname", family);
        if (family->empty()) readHeaderName(text, ":- \r\n%", family);
        if (family->empty()) setIfFound(text, "/fullname", family);
    }
    if (postScriptName) {
        if (!setIfFound(text, "/cidfontname", postScriptName))
            setIfFound(text, "/fontname", postScriptName);
        if (postScriptName->empty()) setIfFound(text, "/fullname", postScriptName);
        if (postScriptName->empty()) readHeaderName(text, ": \r\n%", postScriptName);
        if (displayName) *displayName = *postScriptName;
        if (fullName) *fullName = *postScriptName;
    }
    if (foundry) {
        LxString notice;
        if (setIfFound(text, "/notice", &notice) ||
            (foundry->empty() && setIfFound(text, "/copyright", &notice))) {
            // Only a notice that names a known foundry, or a text that does
            // somewhere, counts.
            if (KnownFoundryNamedIn(notice.str()) || KnownFoundryNamedIn(text.searchCopy))
                *foundry = notice;
        }
    }
    if (kind && kind->empty()) *kind = "PostScript";
}

int CollectPSMetaDataFromFile(const LxString& path, LxString* printerFontName, LxString* kind,
                              LxString* foundry, LxString* family, LxString* version,
                              LxString* postScriptName, LxString* displayName,
                              LxString* fullName)
{
    const LxString file =
        (printerFontName && !printerFontName->empty()) ? *printerFontName : path;
    if (printerFontName) *printerFontName = file;
    if (file.empty()) return -1;
    // The font's own data fork, not the container it may travel in.
    const std::optional<SharedBytes> fork = MacForks::DataForkBytes(file.str());
    if (!fork) return 6;
    const ByteView head = fork->view().head(kType1ReadLimit);
    if (!head.empty()) {
        std::string storage;
        GatherPostScriptMetaDataFromData(MakeType1Text(head.chars(), storage), kind, foundry,
                                         family, version, postScriptName, displayName, fullName);
    }
    return 0;
}

bool GetWindowsPSPrinterFontNameFromFontName(const LxString& name, LxString* printerName)
{
    static const char* const kMetrics[] = {"pfm", "mmm"};
    if (!printerName || !hasWindowsExtension(name, kMetrics, 2)) return false;
    *printerName = withExtension(name, "pfb");
    return true;
}

bool GetWindowsMMMFontNameFromPrinterFontName(const LxString& name, LxString* mmmName)
{
    static const char* const kOutline[] = {"pfb"};
    if (!mmmName || !hasWindowsExtension(name, kOutline, 1)) return false;
    *mmmName = withExtension(name, "mmm");
    return true;
}
