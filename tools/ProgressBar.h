// A one-line progress bar on standard error, for runs that take a while on
// a terminal. It appears only after half a second, redraws at most ten times
// a second, and steps aside (clear) whenever other output is written.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace tpcli {

class ProgressBar {
public:
    // Enabled only when `wanted` and standard error is a terminal.
    ProgressBar(bool wanted, size_t total, std::string noun);
    ~ProgressBar();

    void update(size_t done);
    // Removes the bar from the screen; the next update draws it again.
    void clear();

private:
    using Clock = std::chrono::steady_clock;
    bool enabled_;
    size_t total_;
    std::string noun_;
    Clock::time_point start_;
    Clock::time_point lastDraw_;
    bool visible_ = false;
    std::string lastLine_;

    void draw(size_t done);
};

}  // namespace tpcli
