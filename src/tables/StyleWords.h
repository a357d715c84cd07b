// Splitting of font names into the capitalised words that the style
// scanner looks up. Each call returns one word (possibly empty) from
// `position` and moves `position` on, to npos when the name is used up.
#pragma once

#include <string>

// Words start at a capital and take the lower-case letters after it; any
// other byte ends a word. With `multipleMaster`, words at or after the
// first "_" are instance suffixes and are taken by local_MMSubstring.
std::string local_styleSubstring(const std::string& name, size_t& position, bool multipleMaster);
// The next letter and the capitals directly after it ("_400_XC" gives "XC").
std::string local_MMSubstring(const std::string& name, size_t& position);
