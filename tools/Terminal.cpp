#include "Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

namespace tpcli {

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

// The code point starting at `at` and its length in bytes; length 0 for
// invalid UTF-8.
std::pair<uint32_t, size_t> Decode(const std::string& text, size_t at)
{
    const auto byte = [&](size_t i) { return uint8_t(text[i]); };
    const uint8_t lead = byte(at);
    size_t length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3
                  : (lead >> 3) == 0x1E ? 4 : 0;
    if (length == 0 || at + length > text.size()) return {0, 0};
    uint32_t point = length == 1 ? lead : lead & (0x7F >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) return {0, 0};
        point = (point << 6) | (byte(at + i) & 0x3F);
    }
    static constexpr uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (point < kSmallest[length] || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF))
        return {0, 0};
    return {point, length};
}

bool IsWide(uint32_t c)
{
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF && c != 0x303F) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1F64F) ||
           (c >= 0x20000 && c <= 0x3FFFD);
}

bool IsCombining(uint32_t c)
{
    return (c >= 0x0300 && c <= 0x036F) || (c >= 0x1AB0 && c <= 0x1AFF) ||
           (c >= 0x1DC0 && c <= 0x1DFF) || (c >= 0x20D0 && c <= 0x20FF) ||
           (c >= 0xFE20 && c <= 0xFE2F) || c == 0x200B || c == 0x200D;
}

// Printable ASCII, most of what a table shows, needs no decoding.
bool IsPrintableAscii(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

}  // namespace

bool IsTerminal(int fd) { return ::isatty(fd) == 1; }

int TerminalWidth(int fd)
{
    winsize size{};
    if (::ioctl(fd, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
    return 80;
}

size_t DisplayWidth(const std::string& text)
{
    if (IsPrintableAscii(text)) return text.size();
    size_t width = 0;
    for (size_t at = 0; at < text.size();) {
        auto [point, length] = Decode(text, at);
        if (length == 0) {
            ++width;
            ++at;
            continue;
        }
        width += IsCombining(point) ? 0 : IsWide(point) ? 2 : 1;
        at += length;
    }
    return width;
}

std::string Printable(const std::string& text)
{
    if (IsPrintableAscii(text)) return text;
    std::string out;
    out.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        auto [point, length] = Decode(text, at);
        if (length == 0 || point < 0x20 || (point >= 0x7F && point < 0xA0)) {
            out += kReplacement;
            at += length ? length : 1;
            continue;
        }
        out.append(text, at, length);
        at += length;
    }
    return out;
}

}  // namespace tpcli
