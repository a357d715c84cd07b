// The resource map reader: a hostile resource fork either parses into
// resources that lie inside it, or is refused; what parses is written back
// by the map writer and reads back the same.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "FuzzSupport.h"
#include "resourcefork/ResourceMap.h"
#include "resourcefork/ResourceMapWriter.h"

namespace {

// The records of one type, in map order: what the writer keeps (it groups a
// type listed twice into one list).
std::vector<const ResourceRecord*> ofType(const ResourceMap& map, uint32_t type)
{
    std::vector<const ResourceRecord*> result;
    for (const ResourceRecord& record : map.records())
        if (record.type == type) result.push_back(&record);
    return result;
}

bool sameResource(const ResourceRecord& a, const ResourceRecord& b)
{
    return a.type == b.type && a.id == b.id && a.hasName == b.hasName && a.name == b.name &&
           (a.attributes & ~0x02) == (b.attributes & ~0x02) && a.data.size() == b.data.size() &&
           std::equal(a.data.span().begin(), a.data.span().end(), b.data.span().begin());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    auto map = ResourceMap::Parse(std::vector<uint8_t>(data, data + size));
    if (!map) return 0;
    const ByteView fork(data, size);
    size_t total = 0;
    for (const ResourceRecord& record : map->records()) {
        FUZZ_CHECK(record.data.size() <= size && record.name.size() <= 255);
        total += map->count(record.type) > 0;
        FUZZ_CHECK(map->find(record.type, record.id) != nullptr);
    }
    FUZZ_CHECK(total == map->records().size());
    for (uint32_t type : map->types()) {
        const size_t count = map->count(type);
        FUZZ_CHECK(count > 0 && map->indexed(type, count - 1) && !map->indexed(type, count));
    }

    auto written = ResourceMapWriter::Write(*map);
    if (!written) return 0;
    auto reread = ResourceMap::Parse(*written);
    FUZZ_CHECK(reread.has_value());
    FUZZ_CHECK(reread->records().size() == map->records().size());
    FUZZ_CHECK(reread->attributes() == map->attributes());
    for (uint32_t type : map->types()) {
        const auto before = ofType(*map, type), after = ofType(*reread, type);
        FUZZ_CHECK(before.size() == after.size());
        for (size_t i = 0; i < before.size(); ++i) FUZZ_CHECK(sameResource(*before[i], *after[i]));
    }
    return 0;
}
