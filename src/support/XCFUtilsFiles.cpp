// Reading and writing property-list files, with one line on standard output
// for every failure.
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "support/XCFUtils.h"

namespace XCFUtils {
namespace {

constexpr const char* kLengthFailed =
    "XCFUtils::XCFCreateCFDataRefFromPath:  error getting file length & rewinding file ";
constexpr const char* kBufferFailed =
    "XCFUtils::XCFCreateCFDataRefFromPath:  failed to create buffer.";
constexpr const char* kReadFailed = "XCFUtils::XCFCreateCFDataRefFromPath: error reading file ";
constexpr const char* kParseFailed = "XCFUtils::XCFCreateCFPropertyListFromPath:  error returned.";
// libplist reports no reason; this stands in for the parser's error text.
constexpr const char* kParseReason = "cannot parse property list";
constexpr const char* kXMLFailed =
    "*** XCFUtils::XCFWriteCFPropertyListToXMLFile:  Failed to create XML CFData from property "
    "list for writing.";
constexpr const char* kOpenFailed =
    "*** XCFUtils::XCFWriteCFDataRefToXMLFile:  Error opening file for writing.";
constexpr const char* kNoBytes =
    "*** XCFUtils::XCFWriteCFDataRefToXMLFile:  Failed to create buffer from CFDataRef.";
constexpr const char* kWriteFailed =
    "*** XCFUtils::XCFWriteCFDataRefToXMLFile:  Error writing to file.";

// libplist parses at most 4 GiB; a larger "file" (a directory reports
// LLONG_MAX) is not worth a buffer.
constexpr unsigned long kMaxFileLength = std::numeric_limits<uint32_t>::max();

void report(const char* line)
{
    std::puts(line);
    std::fflush(stdout);
}

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

bool isEmpty(const char* path)
{
    return !path || !*path;
}

bool makeBuffer(std::string& buffer, unsigned long length)
{
    if (length > kMaxFileLength) return false;
    try {
        buffer.resize(length);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

// The whole file, or nothing after reporting why.
std::optional<std::string> readWholeFile(const char* path)
{
    File file(std::fopen(path, "rb"));
    unsigned long length = 0;
    // An empty file counts as a failure too: that is intended.
    if (GetFileLengthAndRewind(file.get(), &length) != 0 || length == 0) {
        report(kLengthFailed);
        return std::nullopt;
    }
    std::string bytes;
    if (!makeBuffer(bytes, length)) {
        report(kBufferFailed);
        return std::nullopt;
    }
    if (std::fread(bytes.data(), 1, length, file.get()) != length) {
        report(kReadFailed);
        return std::nullopt;
    }
    return bytes;
}

}  // namespace

int GetFileLengthAndRewind(FILE* file, unsigned long* length)
{
    if (!file || !length) return -1;
    if (std::fseek(file, 0, SEEK_END) != 0) return errno ? errno : -1;
    long end = std::ftell(file);
    if (end < 0) return errno ? errno : -1;
    if (std::fseek(file, 0, SEEK_SET) != 0) return errno ? errno : -1;
    *length = static_cast<unsigned long>(end);
    return 0;
}

plist_t XCFCreateCFDataRefFromPath(const char* path)
{
    if (!path) return nullptr;
    std::optional<std::string> bytes = readWholeFile(path);
    if (!bytes) return nullptr;
    return plist_new_data(bytes->data(), bytes->size());
}

plist_t XCFCreateCFPropertyListFromPath(const char* path, unsigned long /*mutability*/)
{
    if (isEmpty(path)) return nullptr;
    std::optional<std::string> bytes = readWholeFile(path);
    if (!bytes) return nullptr;
    plist_t list = XCFCreateCFPropertyListFromBytes(*bytes);
    if (!list) {
        std::printf("%s %s\n", kParseFailed, kParseReason);
        std::fflush(stdout);
    }
    return list;
}

bool XCFWriteCFPropertyListToXMLFile(plist_t list, const char* path)
{
    if (isEmpty(path)) return false;
    char* xml = nullptr;
    uint32_t length = 0;
    if (list) plist_to_xml(list, &xml, &length);
    if (!xml) {
        report(kXMLFailed);
        return false;
    }
    plist_t data = plist_new_data(xml, length);
    plist_to_xml_free(xml);
    bool written = XCFWriteCFDataRefToXMLFile(data, path);
    plist_free(data);
    return written;
}

bool XCFWriteCFDataRefToXMLFile(plist_t data, const char* path)
{
    if (isEmpty(path)) return false;
    File file(std::fopen(path, "wb"));
    if (!file) {
        report(kOpenFailed);
        return false;
    }
    uint64_t length = 0;
    const char* bytes = nullptr;
    if (data && plist_get_node_type(data) == PLIST_DATA) {
        bytes = plist_get_data_ptr(data, &length);
        if (!bytes && length == 0) bytes = "";  // libplist keeps no buffer for empty data
    }
    if (!bytes) {
        report(kNoBytes);
        return false;
    }
    bool written = std::fwrite(bytes, 1, length, file.get()) == length;
    // Buffered bytes reach the disk on close; a failure there is a short write.
    written = (std::fclose(file.release()) == 0) && written;
    if (!written) report(kWriteFailed);
    return written;
}

void CFShowX(plist_t value)
{
    char* xml = nullptr;
    uint32_t length = 0;
    if (value) plist_to_xml(value, &xml, &length);
    if (!xml) {
        std::puts("(null)");
    } else {
        std::fwrite(xml, 1, length, stdout);
        plist_to_xml_free(xml);
    }
    std::fflush(stdout);
}

}  // namespace XCFUtils
