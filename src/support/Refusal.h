// Why a reader refused its input. A reader that gives up on malformed bytes
// says so with Refuse("collection: offset entry ", index, " past the end");
// the words are put together only while a RefusalLog listens on the thread
// (the tool's explanations, a failing test, a fuzz finding), so a refusal
// costs one thread-local test when nobody asks.
//
// Reasons name the structure first, then the rule it broke, so that two
// inputs refused for different reasons read differently.
#pragma once

#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

class RefusalLog {
public:
    // Listens on this thread until destroyed; an inner log hears alone.
    RefusalLog();
    ~RefusalLog();
    RefusalLog(const RefusalLog&) = delete;
    RefusalLog& operator=(const RefusalLog&) = delete;

    // The reasons heard, each once, in the order first heard: the first
    // kKept of them (a file of many broken parts could say thousands).
    const std::vector<std::string>& reasons() const { return reasons_; }
    // The reasons joined by "; ", and how many more were heard; empty when
    // there are none.
    std::string text() const;
    static constexpr size_t kKept = 8;

    static bool Listening();
    // True when the listening log has heard a reason: a reader's own beats a
    // general "not recognised" said after it.
    static bool Heard();
    static void Record(std::string reason);

private:
    std::vector<std::string> reasons_;
    size_t more_ = 0;
    RefusalLog* outer_;
};

// While one lives, refusals on this thread go unheard: for a probe whose
// failure only means "not this format" (a data fork read as a resource file
// to see whether it is one).
class UnheardRefusals {
public:
    UnheardRefusals();
    ~UnheardRefusals();
    UnheardRefusals(const UnheardRefusals&) = delete;
    UnheardRefusals& operator=(const UnheardRefusals&) = delete;

private:
    RefusalLog* saved_;
};

// What Refuse returns: false, or an empty optional, for the reader to return.
// It converts to nothing else, so that a reader whose codes are numbers
// cannot return it as a success by mistake.
struct Refused {
    template <typename T>
        requires std::is_same_v<T, bool>
    constexpr operator T() const { return false; }
    template <typename T>
    constexpr operator std::optional<T>() const { return std::nullopt; }
};

// Bytes print as numbers, not characters.
template <typename T>
const auto& Printable(const T& part)
{
    return part;
}
inline int Printable(uint8_t part) { return part; }
inline int Printable(int8_t part) { return part; }

template <typename... Parts>
Refused Refuse(const Parts&... parts)
{
    if (RefusalLog::Listening()) {
        std::ostringstream reason;
        (reason << ... << Printable(parts));
        RefusalLog::Record(reason.str());
    }
    return {};
}
