// read_names.h - the site's file of names.
#pragma once

#include "objects/names.h"

#include <string>

namespace tool {

// Throws a Failure that tells file, place and rule of the first fault.
SiteNames ReadNames(const std::string& file);

// How frame admission is called when explain shall act on it.
inline constexpr std::string_view kAdmitAll = "all";
inline constexpr std::string_view kAdmitTagged = "only-tagged";
inline constexpr std::string_view kAdmitUntagged = "only-untagged";
inline constexpr std::string_view kFrameAdmission = "ports.frameAdmission";

} // namespace tool
