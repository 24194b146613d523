// roff.h - text for manual pages.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// As it stands in a line: hyphens stay hyphens that can be searched for and copied.
std::string Roff(std::string_view text);
// As a line of its own: it is no request, whatever it begins with.
std::string RoffLine(std::string_view text);

} // namespace tool
