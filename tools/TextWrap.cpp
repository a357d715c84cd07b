#include "TextWrap.h"

#include <sstream>

namespace tpcli {

namespace {

std::string WrappedLine(const std::string& line, size_t width)
{
    std::istringstream words(line);
    std::string out, current;
    for (std::string word; words >> word;) {
        if (!current.empty() && current.size() + 1 + word.size() > width) {
            out += current + "\n";
            current.clear();
        }
        current += (current.empty() ? "" : " ") + word;
    }
    return out + current;
}

}  // namespace

std::string Wrapped(const std::string& text, size_t width)
{
    std::istringstream in(text);
    std::string out;
    bool first = true;
    for (std::string line; std::getline(in, line); first = false)
        out += (first ? "" : "\n") + WrappedLine(line, width);
    return out;
}

}  // namespace tpcli
