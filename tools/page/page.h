// page.h - the picture of a node as a web page: its text, which the build makes of exporter/page/, and its data.
#pragma once

#include "check/audit.h"
#include "objects/picture.h"

#include <cstdint>
#include <string>

namespace tool {

// What the page shows, as JSON in a form that keeps a full node below a megabyte; exporter/page/model.js reads it.
// 'time', seconds since 1970, is when it was read; 0 on a page that follows the node.  Needs the read view.
std::string PageData(const Picture& picture, const Configuration& configuration, const Findings& findings,
                     uint64_t time);

// One HTML file with everything in it.  Its policy lets nothing load or run but what the build has put in.
std::string ReportPage(const std::string& data);
// The page that asks the server it came from, for "data.json".
std::string LivePage();

} // namespace tool
