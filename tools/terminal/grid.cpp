#include "terminal/grid.h"

#include "terminal/terminal.h"

#include <algorithm>

namespace tool {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kWidthMin = 8; // of a column that is shortened
constexpr std::string_view kEmptyCell = "-";
constexpr std::string_view kMore = "...";

// The first characters of a text, marked as cut; a list is cut between two elements.
std::string Cut(const std::string& text, std::size_t width)
{
    if (WidthOf(text) <= width) {
        return text;
    }
    std::size_t end = 0;
    for (std::size_t characters = 0; end < text.size(); ++end) {
        const bool isStart = (static_cast<unsigned char>(text[end]) & 0xc0U) != 0x80;
        if (isStart && characters++ == width - kMore.size()) {
            break;
        }
    }
    const std::size_t element = text.find_last_of(", ", end);
    const bool isNearby = element != std::string::npos && element + kWidthMin > end && element > 0;
    return text.substr(0, isNearby ? element + (text[element] == ',' ? 1 : 0) : end).append(kMore);
}

void AppendPadded(std::string& line, const std::string& text, std::size_t width, bool toTheRight)
{
    const std::size_t own = WidthOf(text);
    const std::size_t blanks = width > own ? width - own : 0;
    line.append(toTheRight ? blanks : 0, ' ').append(text).append(toTheRight ? 0 : blanks, ' ');
}

} // namespace

std::size_t WidthOf(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80; }));
}

void Grid::Add(std::string_view title, std::string cell, Fit fit)
{
    if (m_next == m_columns.size()) {
        m_columns.push_back({std::string(title), fit});
    }
    m_columns[m_next++].cells.push_back(cell.empty() ? std::string(kEmptyCell) : std::move(cell));
}

void Grid::EndRow()
{
    m_next = 0;
    ++m_nrOfRows;
}

void Grid::HideIfEmpty(std::string_view title)
{
    for (Column& column : m_columns) {
        if (column.title == title) {
            column.isHidden = std::all_of(column.cells.begin(), column.cells.end(),
                                          [](const std::string& cell) { return cell == kEmptyCell; });
        }
    }
}

// Columns that may be cut share what the others leave; one that needs less than its share leaves the rest to the
// others.
std::vector<std::size_t> Grid::Widths(unsigned width) const
{
    std::vector<std::size_t> widths;
    std::vector<std::size_t> cuttable;
    std::size_t fixed = 0;
    for (const Column& column : m_columns) {
        std::size_t own = WidthOf(column.title);
        for (const std::string& cell : column.cells) {
            own = std::max(own, WidthOf(cell));
        }
        if (column.isHidden) {
            own = 0;
        } else if (column.fit == Fit::kCut && own > kWidthMin) {
            cuttable.push_back(widths.size());
            fixed += kGap;
        } else {
            fixed += own + kGap;
        }
        widths.push_back(own);
    }
    std::sort(cuttable.begin(), cuttable.end(), [&](std::size_t a, std::size_t b) { return widths[a] < widths[b]; });
    std::size_t room = width + kGap > fixed ? width + kGap - fixed : 0;
    for (std::size_t i = 0; i < cuttable.size() && width != 0; ++i) {
        const std::size_t share = std::max(room / (cuttable.size() - i), kWidthMin);
        std::size_t& own = widths[cuttable[i]];
        own = std::min(own, std::max(share, WidthOf(m_columns[cuttable[i]].title)));
        room -= std::min(room, own);
    }
    return widths;
}

std::string Grid::TableText(unsigned width) const
{
    const auto widths = Widths(width);
    const auto isShown = [this](std::size_t i) { return !m_columns[i].isHidden; };
    std::size_t last = m_columns.size() - 1;
    while (last > 0 && !isShown(last)) {
        --last;
    }
    std::string text;
    std::string line;
    for (std::size_t row = 0; row <= m_nrOfRows; ++row) {
        line.clear();
        for (std::size_t i = 0; i <= last; ++i) {
            const Column& column = m_columns[i];
            if (!isShown(i)) {
                continue;
            }
            const bool isNumber = column.fit == Fit::kNumber;
            const std::string& cell = row == 0 ? column.title : column.cells[row - 1];
            AppendPadded(line, column.fit == Fit::kCut ? Cut(cell, widths[i]) : cell,
                         i == last && !isNumber ? 0 : widths[i], isNumber);
            line.append(i == last ? 0 : kGap, ' ');
        }
        text += row == 0 ? Styled(Style::kHeading, line) : line;
        text += '\n';
    }
    return text;
}

std::string Grid::SheetText() const
{
    std::size_t width = 0;
    for (const Column& column : m_columns) {
        width = std::max(width, WidthOf(column.title));
    }
    std::string text;
    for (const Column& column : m_columns) {
        if (!column.isHidden) {
            std::string title;
            AppendPadded(title, column.title, width + kGap, false);
            text += Styled(Style::kHeading, title) + column.cells[0] + '\n';
        }
    }
    return text;
}

} // namespace tool
