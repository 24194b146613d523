#include "terminal/table.h"

#include "objects/notation.h"
#include "terminal/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

std::string ListText(const Json& list, Look look)
{
    if (list.empty()) {
        return "-";
    }
    if (look == Look::kPlain) {
        return list.front().is_string() ? PortsText(list) : RangesText(list);
    }
    std::string joined;
    for (const Json& item : list) {
        joined += joined.empty() ? "" : look == Look::kComma ? ", " : " ";
        joined += item.is_string() ? item.get<std::string>() : item.dump();
    }
    return joined;
}

// Null when the row has no such member.
const Json& Cell(const Json& row, const Column& column)
{
    static const Json kNone;
    const auto cell = row.find(column.key);
    return cell != row.end() ? *cell : kNone;
}

std::string CellText(const Json& cell, Look look)
{
    switch (cell.type()) {
    case Json::value_t::null:
        return "-";
    case Json::value_t::boolean:
        return cell.get<bool>() ? "yes" : "no";
    case Json::value_t::string:
        return cell.get<std::string>().empty() ? "-" : cell.get<std::string>();
    case Json::value_t::array:
        return ListText(cell, look);
    case Json::value_t::number_float:
        return fmt::format("{:.1f}", cell.get<double>());
    default:
        if (look == Look::kTime) {
            return cell == 0 ? "-" : TimeText(cell.get<uint32_t>());
        }
        return cell.dump();
    }
}

// Characters on the screen: every one but the further bytes of UTF-8 sequences.
std::size_t WidthOf(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width, bool toTheRight)
{
    const std::size_t own = WidthOf(text);
    const std::string blanks(width > own ? width - own : 0, ' ');
    return toTheRight ? blanks + text : text + blanks;
}

std::string SheetText(const Table& table)
{
    std::size_t width = 0;
    for (const Column& column : table.columns) {
        width = std::max(width, WidthOf(column.title));
    }
    std::string text;
    for (const Column& column : table.columns) {
        text += fmt::format("{}  {}\n", Styled(Style::kHeading, Padded(column.title, width, false)),
                            CellText(Cell(table.rows[0], column), column.look));
    }
    return text;
}

struct TextColumn {
    std::vector<std::string> cells; // title first
    std::size_t width = 0;
    bool isNumeric = true;
};

TextColumn TextOf(const Table& table, const Column& column)
{
    TextColumn text;
    text.cells.push_back(column.title);
    for (const Json& row : table.rows) {
        const Json& cell = Cell(row, column);
        text.isNumeric = text.isNumeric && (cell.is_number() || cell.is_null());
        text.cells.push_back(CellText(cell, column.look));
    }
    for (const std::string& cell : text.cells) {
        text.width = std::max(text.width, WidthOf(cell));
    }
    return text;
}

bool IsEmpty(const Table& table, const Column& column)
{
    return std::all_of(table.rows.begin(), table.rows.end(),
                       [&column](const Json& row) { return Cell(row, column).empty(); });
}

} // namespace

std::string RangesText(const Json& vlans)
{
    std::vector<VidRange> ranges;
    for (const Json& vlan : vlans) {
        AppendVid(ranges, vlan.get<uint16_t>());
    }
    return VidListText(ranges);
}

std::string PortsText(const Json& ports)
{
    std::string joined;
    for (auto port = ports.begin(); port != ports.end();) {
        const std::string first = *port;
        std::string last = first;
        // The next port of the same slot goes on with the run.
        while (++port != ports.end() && first.size() == 3 &&
               *port == last.substr(0, 2) + static_cast<char>(last[2] + 1)) {
            last = *port;
        }
        joined += fmt::format("{}{}{}{}", joined.empty() ? "" : " ", first, last == first ? "" : "-",
                              last == first ? "" : last.substr(2));
    }
    return joined;
}

std::string ToText(const Table& table)
{
    if (table.rows.empty()) {
        return table.whenEmpty + '\n';
    }
    if (table.isSheet) {
        return SheetText(table);
    }
    std::vector<TextColumn> columns;
    for (const Column& column : table.columns) {
        if (!column.hideEmpty || !IsEmpty(table, column)) {
            columns.push_back(TextOf(table, column));
        }
    }
    std::string text;
    for (std::size_t line = 0; line <= table.rows.size(); ++line) {
        std::string cells;
        for (const TextColumn& column : columns) {
            const bool isLast = &column == &columns.back();
            cells += Padded(column.cells[line], isLast && !column.isNumeric ? 0 : column.width, column.isNumeric);
            cells += isLast ? "" : "  ";
        }
        text += (line == 0 ? Styled(Style::kHeading, cells) : cells) + '\n';
    }
    return text;
}

Json ToJson(const Table& table)
{
    return {{table.key, table.isSheet ? table.rows[0] : Json(table.rows)}};
}

void Show(const Table& table, bool asJson)
{
    if (asJson) {
        PrintJson(ToJson(table));
    } else {
        Print(ToText(table));
    }
}

} // namespace tool
