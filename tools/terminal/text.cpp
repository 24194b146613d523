#include "terminal/text.h"

#include "objects/notation.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <fmt/format.h>

namespace tool {

namespace {

// U+202A to U+202E and U+2066 to U+2069 could make a line look like another one; U+2028 and U+2029 break it.
bool TurnsText(std::string_view character)
{
    if (character.size() != 3 || character[0] != '\xe2') {
        return false;
    }
    const char last = character[2];
    return (character[1] == '\x80' && last >= '\xa8' && last <= '\xae') ||
           (character[1] == '\x81' && last >= '\xa6' && last <= '\xa9');
}

// Bytes of the harmless character at the start of 'text', 0 when there is none.
std::size_t HarmlessLength(std::string_view text)
{
    for (std::size_t length = 1; length <= std::min<std::size_t>(4, text.size()); ++length) {
        const std::string_view character = text.substr(0, length);
        if (IsPlainText(character)) {
            return character == "\\" || TurnsText(character) ? 0 : length;
        }
    }
    return 0;
}

} // namespace

std::string CleanText(std::string_view text)
{
    std::string clean;
    while (!text.empty()) {
        const std::size_t length = HarmlessLength(text);
        if (length > 0) {
            clean.append(text.substr(0, length));
        } else {
            clean += fmt::format("\\x{:02x}", static_cast<unsigned char>(text[0]));
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return clean;
}

std::string CleanText(const char* name, std::size_t size)
{
    return CleanText(std::string_view(name, strnlen(name, size)));
}

std::string TimeText(uint32_t seconds)
{
    const std::time_t time = seconds;
    std::tm calendar = {};
    gmtime_r(&time, &calendar);
    char text[32];
    std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &calendar);
    return text;
}

std::string DurationText(int64_t seconds)
{
    struct Unit {
        int64_t seconds;
        const char* name;
    };
    constexpr Unit kUnits[] = {{86400, "days"}, {3600, "h"}, {60, "min"}, {1, "s"}};
    std::size_t first = 0;
    while (first + 2 < std::size(kUnits) && seconds < kUnits[first].seconds) {
        ++first;
    }
    const Unit& large = kUnits[first];
    const Unit& small = kUnits[first + 1];
    return fmt::format("{} {} {} {}", seconds / large.seconds, large.name, seconds % large.seconds / small.seconds,
                       small.name);
}

} // namespace tool
