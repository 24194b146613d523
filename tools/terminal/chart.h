// chart.h - a bar chart of characters.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tool {

struct ChartBar {
    std::optional<double> value; // nothing: a gap, with a mark below it
    bool isDoubtful = false;     // drawn in another colour, with a mark below it
};

// A few lines: the bars from left to right with their scale, and the marks.  Bars that do not fit a width of so many
// columns (0: any) are left out at the right; a last line says how many.
std::string Chart(const std::vector<ChartBar>& bars, unsigned width);

} // namespace tool
