#include "containers/MacForks.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "containers/AppleDouble.h"
#include "containers/ExtendedAttributes.h"
#include "containers/FileBytes.h"
#include "containers/MacBinary.h"
#include "containers/ReadScope.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kBinarySuffix = ".bin";

// What one place holds: a resource fork, Finder info, or neither.
struct Found {
    ForkLocation resourceFork;
    MacContainer resourceContainer = MacContainer::None;
    bool hasFinderInfo = false;
    uint32_t fileType = 0;
    uint32_t fileCreator = 0;

    bool hasResourceFork() const { return resourceFork.kind != ForkLocation::Kind::Missing; }
    bool complete() const { return hasResourceFork() && hasFinderInfo; }

    // All-zero Finder info is what macOS writes for "none".
    void setFinderInfo(uint32_t type, uint32_t creator)
    {
        if (type == 0 && creator == 0) return;
        hasFinderInfo = true;
        fileType = type;
        fileCreator = creator;
    }

    // Fills what is still missing from a later place.
    void merge(const Found& later)
    {
        if (!hasResourceFork() && later.hasResourceFork()) {
            resourceFork = later.resourceFork;
            resourceContainer = later.resourceContainer;
        }
        if (!hasFinderInfo && later.hasFinderInfo)
            setFinderInfo(later.fileType, later.fileCreator);
    }
};

ForkLocation fileRange(const std::string& file, uint64_t offset, uint64_t length)
{
    ForkLocation fork;
    fork.kind = ForkLocation::Kind::FileRange;
    fork.file = file;
    fork.offset = offset;
    fork.length = length;
    return fork;
}

void readFinderInfo(ByteView finderInfo, Found& found)
{
    uint32_t type = 0, creator = 0;
    if (AppleDouble::ReadTypeAndCreator(finderInfo, type, creator))
        found.setFinderInfo(type, creator);
}

// ---------------------------------------------------------------- places ---

#ifdef __APPLE__
Found nativeFork(const std::string& path)
{
    Found found;
    std::string fork = path + "/..namedfork/rsrc";
    auto size = FileBytes::RegularFileSize(fork);
    if (size && *size > 0) {
        found.resourceFork = fileRange(fork, 0, *size);
        found.resourceFork.kind = ForkLocation::Kind::NamedFork;
        found.resourceContainer = MacContainer::NativeFork;
    }
    if (auto info = ExtendedAttributes::Read(path, "com.apple.FinderInfo"))
        readFinderInfo(ByteView(*info), found);
    return found;
}
#endif

Found attributeFork(const std::string& path, const char* name)
{
    Found found;
    auto size = ExtendedAttributes::Size(path, name);
    if (size && *size > 0) {
        found.resourceFork.kind = ForkLocation::Kind::Attribute;
        found.resourceFork.file = path;
        found.resourceFork.attribute = name;
        found.resourceFork.length = *size;
        found.resourceContainer = MacContainer::ExtendedAttribute;
    }
    return found;
}

Found appleAttributes(const std::string& path)
{
    Found found = attributeFork(path, ExtendedAttributes::kResourceFork);
    if (auto info = ExtendedAttributes::Read(path, ExtendedAttributes::kFinderInfo))
        readFinderInfo(ByteView(*info), found);
    return found;
}

Found netatalkAttributes(const std::string& path)
{
    Found found = attributeFork(path, ExtendedAttributes::kNetatalkResourceFork);
    auto metadata = ExtendedAttributes::Read(path, ExtendedAttributes::kNetatalkMetadata);
    if (!metadata) return found;
    ByteView bytes(*metadata);
    auto container = AppleDouble::Parse(bytes, bytes.size(), AppleDouble::kAppleDoubleMagic);
    const AppleDouble::Entry* entry =
        container ? container->find(AppleDouble::kFinderInfoID) : nullptr;
    if (entry) {
        if (auto info = bytes.sub(entry->offset, entry->length)) readFinderInfo(*info, found);
    }
    return found;
}

std::optional<AppleDouble::Container> readContainer(const std::string& path, uint64_t size,
                                                    uint32_t magic)
{
    std::vector<uint8_t> prefix, table;
    if (!FileBytes::ReadPrefix(path, AppleDouble::Header::size, prefix)) return std::nullopt;
    auto length = AppleDouble::TableLength(ByteView(prefix), magic);
    if (!length || *length > size || !FileBytes::ReadRange(path, 0, *length, table))
        return std::nullopt;
    return AppleDouble::Parse(ByteView(table), size, magic);
}

// Resource fork and Finder info of an AppleDouble or AppleSingle file.
Found containerEntries(const std::string& path, const AppleDouble::Container& container,
                       MacContainer kind)
{
    Found found;
    const AppleDouble::Entry* fork = container.find(AppleDouble::kResourceForkID);
    if (fork && fork->length > 0) {
        found.resourceFork = fileRange(path, fork->offset, fork->length);
        found.resourceContainer = kind;
    }
    const AppleDouble::Entry* info = container.find(AppleDouble::kFinderInfoID);
    // Type and creator are all that is read of it.
    const size_t wanted = AppleDouble::FinderInfo::fdCreator.end();
    std::vector<uint8_t> bytes;
    if (info && info->length >= wanted && FileBytes::ReadRange(path, info->offset, wanted, bytes))
        readFinderInfo(ByteView(bytes), found);
    return found;
}

Found sidecar(const std::string& path)
{
    auto size = FileBytes::RegularFileSize(path);
    if (!size) return {};
    auto container = readContainer(path, *size, AppleDouble::kAppleDoubleMagic);
    if (!container) return {};
    return containerEntries(path, *container, MacContainer::AppleDouble);
}

// `folder` + "/" + `rest`, where `folder` may be the root.
std::string joined(const std::string& folder, const std::string& rest)
{
    return folder == "/" ? "/" + rest : folder + "/" + rest;
}

// Built with plain string operations on the path normalized once: this runs
// for every file identified.
std::vector<std::string> sidecarPaths(const std::string& path)
{
    std::error_code error;
    const fs::path normal = fs::absolute(fs::path(path), error).lexically_normal();
    if (error || !normal.has_filename()) return {};
    const std::string full = normal.string();
    const size_t slash = full.rfind('/');
    if (slash == std::string::npos) return {};
    const std::string dotName = "._" + full.substr(slash + 1);
    const std::string folder = slash == 0 ? "/" : full.substr(0, slash);
    std::vector<std::string> paths = {joined(folder, dotName),
                                      joined(folder, ".AppleDouble/" + full.substr(slash + 1))};
    // __MACOSX in the folder and in every folder above it, holding the path
    // from there down.
    for (size_t end = folder.size();;) {
        const std::string ancestor = end == 0 ? "/" : folder.substr(0, end);
        const std::string below = end >= folder.size() ? "" : folder.substr(end + 1) + "/";
        paths.push_back(joined(ancestor, "__MACOSX/" + below + dotName));
        if (end == 0 || ancestor == "/") break;
        end = folder.rfind('/', end - 1);
    }
    return paths;
}

// Places 1 to 3, in order, until both pieces are found.
Found metadataPlaces(const std::string& path)
{
    Found found;
#ifdef __APPLE__
    found.merge(nativeFork(path));
#endif
    if (!found.complete() && ExtendedAttributes::HasAny(path)) {
        found.merge(appleAttributes(path));
        if (!found.complete()) found.merge(netatalkAttributes(path));
    }
    if (found.complete()) return found;
    for (const std::string& candidate : sidecarPaths(path)) {
        found.merge(sidecar(candidate));
        if (found.complete()) break;
    }
    return found;
}

// Place 4: the file itself as AppleSingle or MacBinary.
bool readAsContainer(const std::string& path, uint64_t size, MacFile& file)
{
    if (auto single = readContainer(path, size, AppleDouble::kAppleSingleMagic)) {
        Found found = containerEntries(path, *single, MacContainer::AppleSingle);
        const AppleDouble::Entry* data = single->find(AppleDouble::kDataForkID);
        file.dataFork = data ? fileRange(path, data->offset, data->length) : fileRange(path, 0, 0);
        file.dataContainer = MacContainer::AppleSingle;
        file.resourceFork = found.resourceFork;
        file.resourceContainer = found.resourceContainer;
        if (found.hasFinderInfo) {
            file.hasFinderInfo = true;
            file.fileType = found.fileType;
            file.fileCreator = found.fileCreator;
        }
        return true;
    }
    std::vector<uint8_t> header;
    if (!FileBytes::ReadPrefix(path, MacBinary::HeaderFields::size, header)) return false;
    auto binary = MacBinary::Parse(ByteView(header), size);
    if (!binary) return false;
    file.dataFork = fileRange(path, binary->dataOffset, binary->dataLength);
    file.dataContainer = MacContainer::MacBinary;
    file.resourceFork = {};
    file.resourceContainer = MacContainer::None;
    if (binary->resourceLength > 0) {
        file.resourceFork = fileRange(path, binary->resourceOffset, binary->resourceLength);
        file.resourceContainer = MacContainer::MacBinary;
    }
    Found info;
    info.setFinderInfo(binary->fileType, binary->fileCreator);
    if (info.hasFinderInfo) {
        file.hasFinderInfo = true;
        file.fileType = info.fileType;
        file.fileCreator = info.fileCreator;
    }
    return true;
}

MacFile resolveRegularFile(const std::string& path, uint64_t size)
{
    MacFile file;
    file.exists = true;
    file.path = path;
    file.dataFork = fileRange(path, 0, size);
    file.dataContainer = MacContainer::PlainFile;
    Found found = metadataPlaces(path);
    file.resourceFork = found.resourceFork;
    file.resourceContainer = found.resourceContainer;
    file.hasFinderInfo = found.hasFinderInfo;
    file.fileType = found.fileType;
    file.fileCreator = found.fileCreator;
    if (!found.hasResourceFork()) readAsContainer(path, size, file);
    return file;
}

bool pathExists(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

// --------------------------------------------------------------- writing ---

bool rewriteAppleDouble(const ForkLocation& fork, uint32_t magic, uint32_t id, ByteView bytes)
{
    std::vector<uint8_t> container;
    if (!FileBytes::ReadAll(fork.file, container)) return false;
    auto rebuilt = AppleDouble::ReplaceEntry(ByteView(container), magic, id, bytes);
    return rebuilt && FileBytes::Rewrite(fork.file, ByteView(*rebuilt));
}

bool rewriteMacBinary(const ForkLocation& fork, std::optional<ByteView> data,
                      std::optional<ByteView> resource)
{
    std::vector<uint8_t> container;
    if (!FileBytes::ReadAll(fork.file, container)) return false;
    auto rebuilt = MacBinary::ReplaceForks(ByteView(container), data, resource);
    return rebuilt && FileBytes::Rewrite(fork.file, ByteView(*rebuilt));
}

MacFile resolveFile(const std::string& path)
{
    if (auto size = FileBytes::RegularFileSize(path)) return resolveRegularFile(path, *size);
    MacFile file;
    file.path = path;
    if (pathExists(path)) {
        file.exists = true;  // a folder or device: no forks
        return file;
    }
    const std::string binary = path + kBinarySuffix;
    auto size = FileBytes::RegularFileSize(binary);
    if (!size || !readAsContainer(binary, *size, file)) return file;
    file.exists = true;
    return file;
}

std::optional<SharedBytes> readAttribute(const ForkLocation& fork)
{
    auto value = ExtendedAttributes::Read(fork.file, fork.attribute.c_str());
    if (!value || value->size() != fork.length) return std::nullopt;
    return SharedBytes(std::move(*value));
}

// An attribute fork, read once per ReadScope.
std::optional<SharedBytes> attributeBytes(const ForkLocation& fork)
{
    ReadScope::Memory* memory = ReadScope::Active();
    if (!memory) return readAttribute(fork);
    auto [entry, added] = memory->attributes.try_emplace({fork.file, fork.attribute});
    if (added) entry->second = readAttribute(fork);
    return entry->second;
}

}  // namespace

MacForkInfo MacFile::info() const
{
    MacForkInfo result;
    result.exists = exists;
    if (dataFork.kind != ForkLocation::Kind::Missing) result.dataForkLength = dataFork.length;
    if (resourceFork.kind != ForkLocation::Kind::Missing)
        result.resourceForkLength = resourceFork.length;
    result.hasFinderInfo = hasFinderInfo;
    result.fileType = fileType;
    result.fileCreator = fileCreator;
    return result;
}

namespace MacForks {

MacFile Resolve(const std::string& path)
{
    ReadScope::Memory* memory = ReadScope::Active();
    if (!memory) return resolveFile(path);
    if (auto known = memory->resolved.find(path); known != memory->resolved.end())
        return known->second;
    MacFile file = resolveFile(path);
    memory->resolved.emplace(path, file);
    return file;
}

std::optional<SharedBytes> ForkBytes(const ForkLocation& fork)
{
    switch (fork.kind) {
    case ForkLocation::Kind::Missing:
        return std::nullopt;
    case ForkLocation::Kind::FileRange:
    case ForkLocation::Kind::NamedFork: {
        auto file = FileBytes::Map(fork.file);
        return file ? file->slice(fork.offset, fork.length) : std::nullopt;
    }
    case ForkLocation::Kind::Attribute:
        return attributeBytes(fork);
    }
    return std::nullopt;
}

std::optional<SharedBytes> DataForkBytes(const std::string& path)
{
    const MacFile file = Resolve(path);
    if (!file.exists) return std::nullopt;
    if (file.dataFork.kind == ForkLocation::Kind::Missing) return SharedBytes();
    return ForkBytes(file.dataFork);
}

bool ReadFork(const ForkLocation& fork, std::vector<uint8_t>& out)
{
    auto bytes = ForkBytes(fork);
    if (!bytes) return false;
    out.assign(bytes->view().span().begin(), bytes->view().span().end());
    return true;
}

bool ReadForkPrefix(const ForkLocation& fork, uint64_t length, std::vector<uint8_t>& out)
{
    length = std::min(length, fork.length);
    switch (fork.kind) {
    case ForkLocation::Kind::Missing:
        return false;
    case ForkLocation::Kind::FileRange:
    case ForkLocation::Kind::NamedFork:
        return FileBytes::ReadRange(fork.file, fork.offset, length, out);
    case ForkLocation::Kind::Attribute: {
        auto value = attributeBytes(fork);
        if (!value) return false;
        const ByteView prefix = value->view().sub(0, size_t(length)).value_or(ByteView());
        out.assign(prefix.span().begin(), prefix.span().end());
        return true;
    }
    }
    return false;
}

bool WriteDataFork(const MacFile& file, ByteView bytes)
{
    switch (file.dataContainer) {
    case MacContainer::PlainFile:
        return FileBytes::Rewrite(file.dataFork.file, bytes);
    case MacContainer::AppleSingle:
        return rewriteAppleDouble(file.dataFork, AppleDouble::kAppleSingleMagic,
                                  AppleDouble::kDataForkID, bytes);
    case MacContainer::MacBinary:
        return rewriteMacBinary(file.dataFork, bytes, std::nullopt);
    default:
        return false;
    }
}

bool WriteResourceFork(const MacFile& file, ByteView bytes)
{
    const ForkLocation& fork = file.resourceFork;
    switch (file.resourceContainer) {
    case MacContainer::NativeFork:
        return FileBytes::Rewrite(fork.file, bytes);
    case MacContainer::ExtendedAttribute:
        return ExtendedAttributes::Write(fork.file, fork.attribute.c_str(), bytes);
    case MacContainer::AppleDouble:
        return rewriteAppleDouble(fork, AppleDouble::kAppleDoubleMagic,
                                  AppleDouble::kResourceForkID, bytes);
    case MacContainer::AppleSingle:
        return rewriteAppleDouble(fork, AppleDouble::kAppleSingleMagic,
                                  AppleDouble::kResourceForkID, bytes);
    case MacContainer::MacBinary:
        return rewriteMacBinary(fork, std::nullopt, bytes);
    default:
        return false;
    }
}

MacForkInfo Describe(const std::string& path)
{
    return Resolve(path).info();
}

bool ReadDataFork(const std::string& path, std::vector<uint8_t>& out)
{
    return ReadFork(Resolve(path).dataFork, out);
}

bool ReadResourceFork(const std::string& path, std::vector<uint8_t>& out)
{
    MacFile file = Resolve(path);
    if (ReadFork(file.resourceFork, out)) return true;
    out.clear();
    return false;
}

}  // namespace MacForks

const char* ContainerName(MacContainer container)
{
    switch (container) {
    case MacContainer::NativeFork: return "native resource fork";
    case MacContainer::ExtendedAttribute: return "extended attributes";
    case MacContainer::AppleDouble: return "AppleDouble sidecar";
    case MacContainer::AppleSingle: return "AppleSingle";
    case MacContainer::MacBinary: return "MacBinary";
    case MacContainer::None:
    case MacContainer::PlainFile: break;
    }
    return "";
}
