#include "support/Refusal.h"

#include <algorithm>

namespace {
thread_local RefusalLog* listening = nullptr;
}  // namespace

RefusalLog::RefusalLog() : outer_(listening) { listening = this; }

RefusalLog::~RefusalLog() { listening = outer_; }

UnheardRefusals::UnheardRefusals() : saved_(listening) { listening = nullptr; }

UnheardRefusals::~UnheardRefusals() { listening = saved_; }

bool RefusalLog::Listening() { return listening != nullptr; }

bool RefusalLog::Heard() { return listening && !listening->reasons_.empty(); }

void RefusalLog::Record(std::string reason)
{
    std::vector<std::string>& reasons = listening->reasons_;
    if (std::find(reasons.begin(), reasons.end(), reason) != reasons.end()) return;
    if (reasons.size() == kKept)
        ++listening->more_;
    else
        reasons.push_back(std::move(reason));
}

std::string RefusalLog::text() const
{
    std::string joined;
    for (const std::string& reason : reasons_) {
        if (!joined.empty()) joined += "; ";
        joined += reason;
    }
    if (more_) joined += "; and " + std::to_string(more_) + " more";
    return joined;
}
