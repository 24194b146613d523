#include "terminal/table.h"

#include "terminal/grid.h"
#include "terminal/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

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
        return "";
    case Json::value_t::string:
        return cell.get<std::string>();
    case Json::value_t::number_float:
        return fmt::format("{:.1f}", cell.get<double>());
    default:
        return look == Look::kTime ? TimeText(cell.get<uint32_t>()) : cell.dump();
    }
}

} // namespace

std::string ToText(const Table& table)
{
    Grid grid;
    std::vector<Fit> fits;
    for (const Column& column : table.columns) {
        const bool isNumeric = std::all_of(table.rows.begin(), table.rows.end(), [&column](const Json& row) {
            return Cell(row, column).is_number() || Cell(row, column).is_null();
        });
        fits.push_back(isNumeric ? Fit::kNumber : Fit::kWhole);
    }
    for (const Json& row : table.rows) {
        for (std::size_t i = 0; i < fits.size(); ++i) {
            const Column& column = table.columns[i];
            grid.Add(column.title, CellText(Cell(row, column), column.look), fits[i]);
        }
        grid.EndRow();
    }
    for (const Column& column : table.columns) {
        if (column.hideEmpty) {
            grid.HideIfEmpty(column.title);
        }
    }
    return grid.TableText(0);
}

} // namespace tool
