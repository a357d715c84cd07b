#include "DuplicateGroups.h"

#include <cctype>
#include <functional>
#include <map>

namespace tpcli {

namespace {

std::string CaseBlind(const std::string& name)
{
    std::string key;
    for (char c : name) key.push_back(char(std::tolower(static_cast<unsigned char>(c))));
    return key;
}

// Positions of items grouped by key, groups in order of first appearance.
template <typename Key>
std::vector<std::vector<size_t>> GroupedBy(size_t count, const std::function<Key(size_t)>& key)
{
    std::map<Key, size_t> groupOf;
    std::vector<std::vector<size_t>> groups;
    for (size_t i = 0; i < count; ++i) {
        auto [found, added] = groupOf.try_emplace(key(i), groups.size());
        if (added) groups.emplace_back();
        groups[found->second].push_back(i);
    }
    return groups;
}

std::vector<SameRelease> SameReleases(const std::vector<FaceAt>& faces)
{
    std::vector<SameRelease> out;
    const auto groups = GroupedBy<unsigned long>(faces.size(), [&](size_t i) {
        return faces[i].face.number(kTP_AttrTypeprobeChecksum);
    });
    for (const auto& group : groups) {
        if (group.size() < 2) continue;
        SameRelease same{faces[group[0]].face.number(kTP_AttrTypeprobeChecksum), {}};
        for (size_t i : group) same.faces.push_back(faces[i]);
        out.push_back(std::move(same));
    }
    return out;
}

std::vector<Conflict> Conflicts(const std::vector<FaceAt>& faces)
{
    std::vector<FaceAt> named;
    for (const FaceAt& face : faces)
        if (!face.face.text(kTP_AttrPostScriptName).empty()) named.push_back(face);
    std::vector<Conflict> out;
    const auto byName = GroupedBy<std::string>(named.size(), [&](size_t i) {
        return CaseBlind(named[i].face.text(kTP_AttrPostScriptName));
    });
    for (const auto& group : byName) {
        const auto byChecksum = GroupedBy<unsigned long>(group.size(), [&](size_t i) {
            return named[group[i]].face.number(kTP_AttrTypeprobeChecksum);
        });
        if (byChecksum.size() < 2) continue;
        Conflict conflict{named[group[0]].face.text(kTP_AttrPostScriptName), {}};
        for (const auto& release : byChecksum) {
            Release entry{named[group[release[0]]].face.number(kTP_AttrTypeprobeChecksum), {}};
            for (size_t i : release) entry.faces.push_back(named[group[i]]);
            conflict.releases.push_back(std::move(entry));
        }
        out.push_back(std::move(conflict));
    }
    return out;
}

}  // namespace

DuplicateGroups GroupDuplicates(const std::vector<FaceAt>& faces)
{
    return {SameReleases(faces), Conflicts(faces)};
}

}  // namespace tpcli
