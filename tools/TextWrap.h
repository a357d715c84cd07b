// Word wrapping for help texts (CLI11 prints descriptions as given).
#pragma once

#include <string>

namespace tpcli {

// Each line of `text` broken at spaces into lines of at most `width`
// columns (a longer word stays whole); blank lines are kept.
std::string Wrapped(const std::string& text, size_t width = 79);

}  // namespace tpcli
