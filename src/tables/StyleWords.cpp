#include "tables/StyleWords.h"

namespace {

bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}

bool isLetter(char c)
{
    return isUpper(c) || isLower(c);
}

size_t nextUpper(const std::string& name, size_t from)
{
    for (size_t i = from; i < name.size(); ++i)
        if (isUpper(name[i])) return i;
    return std::string::npos;
}

}  // namespace

std::string local_MMSubstring(const std::string& name, size_t& position)
{
    std::string word;
    size_t i = position;
    while (i < name.size() && !isLetter(name[i])) ++i;
    if (i < name.size()) word += name[i++];
    while (i < name.size() && isUpper(name[i])) word += name[i++];
    position = i < name.size() ? i : std::string::npos;
    return word;
}

std::string local_styleSubstring(const std::string& name, size_t& position, bool multipleMaster)
{
    if (position >= name.size()) {
        position = std::string::npos;
        return {};
    }
    if (multipleMaster) {
        size_t underscore = name.find('_');
        if (underscore != std::string::npos && position >= underscore)
            return local_MMSubstring(name, position);
    }
    std::string word;
    size_t i = position;
    for (; i < name.size(); ++i) {
        char c = name[i];
        if (!isLetter(c)) {
            ++i;
            break;
        }
        if (isUpper(c)) {
            if (!word.empty()) break;
            word += c;
        } else if (!word.empty()) {
            word += c;
        }
    }
    position = nextUpper(name, i);
    return word;
}
