#include "api/FontArray.h"

#include <set>
#include <string>

bool TP_FontArray::FindIndexForFondResourceID(short fondResourceID, short style,
                                              unsigned int& index) const
{
    const int32_t wantedID = fondResourceID;  // sign-extended
    const int32_t wantedStyle = style;
    for (size_t i = 0; i < faces_.size(); ++i) {
        if (faces_[i].fondResourceID == wantedID && faces_[i].fondStyle == wantedStyle) {
            index = static_cast<unsigned int>(i);
            return true;
        }
    }
    return false;
}

void TP_FontArray::RemoveDups()
{
    std::vector<TP_FontSpecifier> kept;
    // Exact bytes here but a case-blind scan below, so names that differ only
    // in case each keep an entry and may borrow from each other: intended.
    std::set<std::string> seen;
    for (size_t i = 0; i < faces_.size(); ++i) {
        if (!seen.insert(faces_[i].postScriptName.str()).second) continue;
        const TP_FontSpecifier* best = &faces_[i];
        for (size_t j = i + 1; j < faces_.size(); ++j) {
            const TP_FontSpecifier& later = faces_[j];
            // Only a later face with a resource of its own may replace the
            // first, and only with a smaller style code: intended.
            if (later.firstResourceID > 0 && later.postScriptName == best->postScriptName &&
                later.fondStyle < best->fondStyle)
                best = &later;
        }
        kept.push_back(*best);
    }
    faces_ = std::move(kept);
}
