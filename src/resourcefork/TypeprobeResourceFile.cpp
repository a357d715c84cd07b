#include "resourcefork/TypeprobeResourceFile.h"

#include <algorithm>

#include "resourcefork/ResourceMapWriter.h"
#include "support/GStringUtils.h"
#include "support/Refusal.h"

namespace {

// The header alone tells whether a fork can hold a resource map, so that a
// large font's data fork is not read whole only to be refused. An empty
// fork claims to be nothing. A data fork is only asked whether it is a
// resource file (most are fonts of other kinds, whose header is no refusal)
// unless its name says it is one.
bool headerFits(const ForkLocation& fork, bool probe)
{
    std::vector<uint8_t> bytes;
    if (fork.length == 0 || !MacForks::ReadForkPrefix(fork, ResourceHeader::size, bytes))
        return false;
    std::optional<UnheardRefusals> unheard;
    if (probe) unheard.emplace();
    return ResourceMap::ReadHeader(ByteView(bytes), fork.length).has_value();
}

}  // namespace

TypeprobeResourceFile::TypeprobeResourceFile(std::string path, bool readOnly)
    : _kzFile(std::move(path)), _kzReadOnly(readOnly)
{
}

TypeprobeResourceFile::~TypeprobeResourceFile()
{
    updateResFile();
}

std::unique_ptr<TypeprobeResourceFile> TypeprobeResourceFile::initWithFile(const std::string& path,
                                                                           bool readOnly)
{
    std::unique_ptr<TypeprobeResourceFile> file(new TypeprobeResourceFile(path, readOnly));
    if (!file->openFileForResourceAccess()) return nullptr;
    return file;
}

bool TypeprobeResourceFile::openFileForResourceAccess()
{
    macFile_ = MacForks::Resolve(_kzFile);
    if (!macFile_.exists) return false;
    if (openMap(macFile_.resourceFork)) return true;
    // Set even when the data fork holds no map either (intended: it records
    // that the data fork was tried).
    _kzIsDataFork = true;
    return openMap(macFile_.dataFork);
}

bool TypeprobeResourceFile::openMap(const ForkLocation& fork)
{
    const bool probe = _kzIsDataFork && !GStringUtils::EndsWith(GStringUtils::OSToLowerCase(_kzFile), ".dfont");
    if (!headerFits(fork, probe)) return false;
    std::optional<SharedBytes> bytes = MacForks::ForkBytes(fork);
    if (!bytes) return false;
    // A file open for editing keeps its own copy: writing it back rewrites
    // the file under any mapping of it.
    if (!_kzReadOnly) bytes = SharedBytes(std::vector<uint8_t>(bytes->view().span().begin(),
                                                               bytes->view().span().end()));
    auto map = ResourceMap::Parse(std::move(*bytes));
    if (!map) return false;
    map_ = std::move(*map);
    return true;
}

ResourceHandlePtr TypeprobeResourceFile::makeHandle(const ResourceRecord* record) const
{
    if (!record) return nullptr;
    auto handle = std::make_unique<ResourceHandle>();
    handle->type = record->type;
    handle->id = record->id;
    handle->hasName = record->hasName;
    handle->name = record->name;
    handle->data.assign(record->data.span().begin(), record->data.span().end());
    handle->key = record->key;
    return handle;
}

int32_t TypeprobeResourceFile::countResType(uint32_t type) const
{
    return int32_t(map_.count(type));
}

int32_t TypeprobeResourceFile::count1ResTypes() const
{
    return int32_t(map_.types().size());
}

std::vector<int16_t> TypeprobeResourceFile::getSortedResIDsForType(uint32_t type) const
{
    std::vector<int16_t> ids;
    for (const ResourceRecord& record : map_.records())
        if (record.type == type && std::find(ids.begin(), ids.end(), record.id) == ids.end())
            ids.push_back(record.id);
    std::sort(ids.begin(), ids.end());
    return ids;
}

ResourceHandlePtr TypeprobeResourceFile::getResourceHandleForType(uint32_t type,
                                                                  int16_t resID) const
{
    return makeHandle(map_.find(type, resID));
}

void TypeprobeResourceFile::getResourceTypeViaGet1IndType(uint32_t* type, int16_t resIndex) const
{
    if (!type) return;
    std::vector<uint32_t> types = map_.types();
    *type = resIndex >= 1 && size_t(resIndex) <= types.size() ? types[size_t(resIndex) - 1] : 0;
}

ResourceHandlePtr TypeprobeResourceFile::getResourceHandleViaGet1IndResource(uint32_t type,
                                                                             int16_t resIndex) const
{
    if (resIndex < 1) return nullptr;
    return makeHandle(map_.indexed(type, size_t(resIndex) - 1));
}

bool TypeprobeResourceFile::GetResInfo(const ResourceHandle* handle, int16_t* id, uint32_t* type,
                                       std::string* name)
{
    if (!handle) return false;
    if (id) *id = handle->id;
    if (type) *type = handle->type;
    if (name) *name = handle->name.substr(0, 255);
    return true;
}

bool TypeprobeResourceFile::purgeResource(uint32_t type, int16_t resID)
{
    const ResourceRecord* record = map_.find(type, resID);
    if (!editable() || !record) return false;
    map_.remove(record->key);
    changed_ = true;
    return true;
}

bool TypeprobeResourceFile::purgeAllBut(const std::vector<int16_t>& keepIDs, uint32_t type)
{
    if (!editable()) return false;
    std::vector<int16_t> pending = keepIDs;
    std::vector<uint32_t> doomed;
    for (const ResourceRecord& record : map_.records()) {
        if (record.type != type) continue;
        auto kept = std::find(pending.begin(), pending.end(), record.id);
        if (kept != pending.end())
            pending.erase(kept);
        else
            doomed.push_back(record.key);
    }
    for (uint32_t key : doomed) map_.remove(key);
    changed_ = changed_ || !doomed.empty();
    return !doomed.empty();
}

bool TypeprobeResourceFile::changedResource(const ResourceHandle& handle)
{
    if (!editable() || !map_.setData(handle.key, handle.data)) return false;
    changed_ = true;
    return true;
}

bool TypeprobeResourceFile::setResInfo(const ResourceHandle& handle, int16_t id,
                                       const std::string& name)
{
    if (!editable() || !map_.setInfo(handle.key, id, name)) return false;
    changed_ = true;
    return true;
}

bool TypeprobeResourceFile::updateResFile()
{
    if (!changed_) return true;
    if (!editable()) return false;
    auto bytes = ResourceMapWriter::Write(map_);
    if (!bytes) return false;
    const bool written = _kzIsDataFork ? MacForks::WriteDataFork(macFile_, ByteView(*bytes))
                                       : MacForks::WriteResourceFork(macFile_, ByteView(*bytes));
    if (!written) return false;
    changed_ = false;
    macFile_ = MacForks::Resolve(_kzFile);
    return true;
}
