// page_text.h - the page that cmake/embed_page.cmake makes of the files in exporter/page/.
#pragma once

#include <string_view>

namespace tool {

extern const std::string_view kPageText;
inline constexpr std::string_view kSourcesMark = "{{sources}}"; // more of the content security policy
inline constexpr std::string_view kDataMark = "{{data}}";

} // namespace tool
