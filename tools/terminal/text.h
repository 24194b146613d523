// text.h - values of the region as text.  Nothing of the region is trusted: no byte of it reaches a terminal or a JSON
// document unescaped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// A name of at most 'size' bytes, with or without a terminator.  Control characters, backslashes, marks that turn the
// direction of writing around, and bytes that are no UTF-8 come out as \xNN.
std::string CleanText(const char* name, std::size_t size);
std::string CleanText(std::string_view text);

std::string TimeText(uint32_t seconds); // UTC, of seconds since 1970
// "2 days 3 h", "3 h 12 min", "12 min 5 s": two units are enough.
std::string DurationText(int64_t seconds);

} // namespace tool
