// Choosing the built-in styles that fit a list of scanned components best.
#include <algorithm>

#include "tables/LxFontStyleScan.h"

namespace {

struct SBuiltinStyleMatcher {
    SBuiltinStyle style;
    unsigned long matchCount = 0;
    bool isPure = false;
};

// Best counts and smallest component counts, one per kind of style.
struct PerKind {
    unsigned long weight = 0;
    unsigned long other = 0;
    unsigned long& of(const SBuiltinStyle& style) { return style.isWeight ? weight : other; }
};

unsigned long countMatches(const SBuiltinStyle& style, const std::vector<SStyleComponent>& components)
{
    unsigned long count = 0;
    for (int32_t constant : style.components)
        for (const SStyleComponent& component : components)
            if (component.styleConstant == constant) ++count;
    return count;
}

// Positions of modifiers that the style does not follow with the
// component that follows them in the scan; one entry per such occurrence.
std::vector<size_t> misplacedModifiers(const SBuiltinStyle& style,
                                       const std::vector<SStyleComponent>& components)
{
    std::vector<size_t> positions;
    const auto& constants = style.components;
    for (size_t a = 0; a + 1 < components.size(); ++a) {
        if (!components[a].isModifier) continue;
        for (size_t k = 0; k < constants.size(); ++k) {
            if (constants[k] != components[a].styleConstant) continue;
            if (k + 1 < constants.size() && constants[k + 1] == components[a + 1].styleConstant) break;
            positions.push_back(a);
        }
    }
    return positions;
}

bool isPureStyle(const SBuiltinStyle& style, unsigned long count)
{
    if (count != style.components.size()) return false;
    // A plain lookup: constants the table does not define do not compound.
    for (int32_t constant : style.components) {
        auto found = LxFontStyleScan::gStyleComponentMap.find(constant);
        if (found != LxFontStyleScan::gStyleComponentMap.end() && found->second.compounds) return false;
    }
    return true;
}

}  // namespace

unsigned long LxFontStyleScan::FindBuiltinMatchesForStyleComponents(std::vector<SStyleComponent> comps,
                                                                    std::vector<SBuiltinStyle>& styles)
{
    styles.clear();
    if (comps.empty()) return 0;
    PerKind best;
    std::vector<SBuiltinStyleMatcher> candidates;
    for (const SBuiltinStyle& style : gBuiltinStyles) {
        std::vector<SStyleComponent> working = comps;
        unsigned long count = countMatches(style, working);
        if (count == 0 || count < best.of(style)) continue;
        const unsigned long countBeforeRemovals = count;
        std::vector<size_t> removals = misplacedModifiers(style, working);
        for (auto position = removals.rbegin(); position != removals.rend(); ++position) {
            if (*position < working.size()) working.erase(working.begin() + long(*position));
            --count;
        }
        if (count == 0 || working.empty()) continue;
        if (removals.empty() && style.components.size() == comps.size() && count == comps.size()) {
            styles.assign(1, style);
            return 1;
        }
        candidates.push_back({style, count, isPureStyle(style, count)});
        best.of(style) = std::max(best.of(style), countBeforeRemovals);
    }

    PerKind smallest;
    PerKind haveSmallest;
    std::vector<SBuiltinStyleMatcher> kept;
    for (const SBuiltinStyleMatcher& candidate : candidates) {
        if (candidate.matchCount < best.of(candidate.style)) {
            if (candidate.isPure) kept.push_back(candidate);
            continue;
        }
        kept.push_back(candidate);
        unsigned long size = candidate.style.components.size();
        unsigned long& least = smallest.of(candidate.style);
        if (!haveSmallest.of(candidate.style) || size < least) least = size;
        haveSmallest.of(candidate.style) = 1;
    }
    // A kind with no candidate left at its best has smallest size 0, so its
    // pure candidates go too. Intended.
    for (const SBuiltinStyleMatcher& candidate : kept)
        if (candidate.style.components.size() <= smallest.of(candidate.style))
            styles.push_back(candidate.style);
    return styles.size();
}
