// chart.h - a bar chart of characters.
#pragma once

#include <string>
#include <vector>

namespace tool {

struct ChartBar {
    double value;
    bool isDoubtful; // drawn in another colour, with a mark below it
};

// A few lines: the bars with their scale, and the marks.  Bars that do not fit the terminal are left out at the left.
std::string Chart(const std::vector<ChartBar>& bars);

} // namespace tool
