#include "LibraryExtras.h"

#include "Library.h"

namespace tpcli {

namespace {

// Enough for any style list the scanner can produce.
constexpr unsigned long kMaxStyles = 64;
constexpr int kStyleCapacity = 256;
constexpr int kNameCapacity = 1024;
constexpr int kReasonCapacity = 4096;

// Calls a representation writer, growing the buffer once to the size it
// reports when the first try was truncated.
template <typename Writer>
std::optional<std::string> WholeDocument(Writer writer, TP_FontArray* array)
{
    std::string buffer(64 * 1024, '\0');
    for (int attempt = 0; attempt < 2; ++attempt) {
        unsigned long length = buffer.size();
        const unsigned long result = writer(array, buffer.data(), &length);
        if (result == kTP_IndexOutOfRange && attempt == 0 && length > buffer.size()) {
            buffer.assign(length, '\0');
            continue;
        }
        // 1 also means "no face"; the document is still delivered then.
        if (result != kTP_Success && result != kTP_NullArgumentOrNotFound) return std::nullopt;
        buffer.resize(buffer.find('\0'));
        return buffer;
    }
    return std::nullopt;
}

// Text a call copies into a buffer of `capacity` bytes; nothing when the
// call fails.
template <typename Call>
std::optional<std::string> CopiedText(int capacity, Call call)
{
    std::string buffer(size_t(capacity), '\0');
    if (call(buffer.data(), capacity) != kTP_Success) return std::nullopt;
    buffer.resize(buffer.find('\0'));
    return buffer;
}

}  // namespace

std::optional<std::string> Classification(const std::string& family,
                                          const std::optional<std::string>& alternate)
{
    return CopiedText(kNameCapacity, [&](char* buffer, int capacity) {
        return Library().TP_GetClassificationFromFamily(
            family.c_str(), alternate ? alternate->c_str() : nullptr, buffer, capacity);
    });
}

std::optional<std::vector<std::string>> Styles(const std::string& first,
                                               const std::string& second)
{
    std::vector<std::string> storage(kMaxStyles, std::string(kStyleCapacity, '\0'));
    std::vector<char*> buffers;
    for (std::string& entry : storage) buffers.push_back(entry.data());
    unsigned long count = 0;
    if (Library().TP_GetStyles(first.c_str(), second.c_str(), kMaxStyles, kStyleCapacity,
                               &count, buffers.data()) != kTP_Success)
        return std::nullopt;
    storage.resize(count);
    for (std::string& entry : storage) entry.resize(entry.find('\0'));
    return storage;
}

std::string RefusalReasons(const std::string& path, unsigned long options)
{
    return CopiedText(kReasonCapacity, [&](char* buffer, int capacity) {
               return Library().TP_ExplainRefusalsWithOptions(path.c_str(), options, buffer,
                                                              capacity);
           }).value_or("");
}

std::optional<std::string> XmlRepresentation(TP_FontArray* array)
{
    return WholeDocument(Library().TP_GetXMLRepresentation, array);
}

std::optional<std::string> PropertyListRepresentation(TP_FontArray* array)
{
    return WholeDocument(Library().TP_GetPropertyListRepresentation, array);
}

}  // namespace tpcli
