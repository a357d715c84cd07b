#include "ProgressBar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "Terminal.h"

namespace tpcli {

namespace {

constexpr auto kDelay = std::chrono::milliseconds(500);
constexpr auto kInterval = std::chrono::milliseconds(100);

}  // namespace

ProgressBar::ProgressBar(bool wanted, size_t total, std::string noun)
    : enabled_(wanted && total > 1 && IsTerminal(STDERR_FILENO)), total_(total),
      noun_(std::move(noun)), start_(Clock::now()), lastDraw_(start_)
{
}

ProgressBar::~ProgressBar() { clear(); }

void ProgressBar::update(size_t done)
{
    if (!enabled_) return;
    const auto now = Clock::now();
    if (now - start_ < kDelay || (visible_ && now - lastDraw_ < kInterval)) return;
    if (done >= total_) {
        clear();
        return;
    }
    lastDraw_ = now;
    draw(done);
}

void ProgressBar::clear()
{
    if (!visible_) return;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    visible_ = false;
}

void ProgressBar::draw(size_t done)
{
    const std::string counter = " " + std::to_string(done) + "/" + std::to_string(total_) + " " + noun_;
    const int width = std::min(TerminalWidth(STDERR_FILENO) - 1, 100);
    const int barWidth = std::max(10, width - int(counter.size()) - 2);
    const int filled = int(double(done) / double(total_) * barWidth);
    std::string line = "\r[";
    line.append(size_t(filled), '#');
    line.append(size_t(barWidth - filled), '.');
    line += "]" + counter + "\033[K";
    if (visible_ && line == lastLine_) return;
    lastLine_ = line;
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
    visible_ = true;
}

}  // namespace tpcli
