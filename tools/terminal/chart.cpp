#include "terminal/chart.h"

#include "terminal/terminal.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <iterator>

namespace tool {

namespace {

constexpr unsigned kLines = 5;
constexpr const char* kEighths[] = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr unsigned kFull = std::size(kEighths) - 1;
constexpr unsigned kWidthWithoutTerminal = 120;
constexpr unsigned kScaleWidth = 12;

std::string ScaleText(double value)
{
    constexpr const char* kUnits[] = {"", "k", "M", "G", "T", "P", "E"};
    std::size_t unit = 0;
    while (value >= 1000 && unit + 1 < std::size(kUnits)) {
        value /= 1000;
        ++unit;
    }
    return fmt::format("{:.3g}{}", value, kUnits[unit]);
}

// The part of a bar that lies in a line, counted from the bottom.
const char* Piece(double value, double highest, unsigned line)
{
    const double height = highest > 0 ? value / highest * kLines * kFull : 0;
    // A value that is not zero is seen.
    const long eighths = std::max(std::lround(height), value > 0 ? 1L : 0L) - static_cast<long>(line * kFull);
    return kEighths[static_cast<std::size_t>(std::clamp(eighths, 0L, static_cast<long>(kFull)))];
}

} // namespace

std::string Chart(const std::vector<ChartBar>& bars)
{
    const unsigned width = TerminalWidth() > kScaleWidth ? TerminalWidth() : kWidthWithoutTerminal;
    const std::size_t shown = std::min<std::size_t>(bars.size(), width - kScaleWidth);
    const auto first = bars.end() - static_cast<std::ptrdiff_t>(shown);
    const double highest = std::max_element(first, bars.end(), [](const ChartBar& a, const ChartBar& b) {
                               return a.value < b.value;
                           })->value;
    std::string text;
    for (unsigned line = kLines; line-- > 0;) {
        text += fmt::format("{:>9} ", line == kLines - 1 ? ScaleText(highest) : line == 0 ? "0" : "");
        for (auto bar = first; bar != bars.end(); ++bar) {
            text += Styled(bar->isDoubtful ? Style::kWarning : Style::kGood, Piece(bar->value, highest, line));
        }
        text += '\n';
    }
    if (std::any_of(first, bars.end(), [](const ChartBar& bar) { return bar.isDoubtful; })) {
        text += fmt::format("{:>9} ", "suspect");
        for (auto bar = first; bar != bars.end(); ++bar) {
            text += bar->isDoubtful ? Styled(Style::kWarning, "^") : " ";
        }
        text += '\n';
    }
    return text;
}

} // namespace tool
