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

using Bar = std::vector<ChartBar>::const_iterator;

std::string LineText(const std::string& title, const std::string& cells)
{
    std::string line = fmt::format("{:>9} {}", title, cells);
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

// A line of marks below the bars that have one; nothing when none has.
template <class HasMark>
std::string Marks(const char* title, const char* mark, Bar first, Bar last, HasMark hasMark)
{
    std::string cells;
    for (auto bar = first; bar != last; ++bar) {
        cells += hasMark(*bar) ? Styled(Style::kWarning, mark) : " ";
    }
    return std::any_of(first, last, hasMark) ? LineText(title, cells) : "";
}

} // namespace

std::string Chart(const std::vector<ChartBar>& bars, unsigned width)
{
    const std::size_t room = width > kScaleWidth ? width - kScaleWidth : bars.size();
    const auto last = bars.begin() + static_cast<std::ptrdiff_t>(std::min(bars.size(), room));
    double highest = 0;
    std::for_each(bars.begin(), last, [&](const ChartBar& bar) { highest = std::max(highest, bar.value.value_or(0)); });
    std::string text;
    for (unsigned line = kLines; line-- > 0;) {
        std::string cells;
        for (auto bar = bars.begin(); bar != last; ++bar) {
            const std::string piece = Piece(bar->value.value_or(0), highest, line);
            cells += piece == kEighths[0] ? piece : Styled(bar->isDoubtful ? Style::kWarning : Style::kGood, piece);
        }
        text += LineText(line == kLines - 1 ? ScaleText(highest) : line == 0 ? "0" : "", cells);
    }
    text += Marks("suspect", "^", bars.begin(), last, [](const ChartBar& bar) { return bar.isDoubtful; });
    text += Marks("missing", "x", bars.begin(), last, [](const ChartBar& bar) { return !bar.value; });
    if (last != bars.end()) {
        text += fmt::format("{:>9} {} more at the right do not fit\n", "", bars.end() - last);
    }
    return text;
}

} // namespace tool
