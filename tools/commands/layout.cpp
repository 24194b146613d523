// layout.cpp - every record of the region with its fields, from the table that the library asserts its layout with.
#include "commands/command.h"
#include "objects/failure.h"
#include "region/region_layout.h"
#include "terminal/grid.h"
#include "terminal/terminal.h"

#include <fmt/format.h>

namespace tool {

namespace {

void PrintText()
{
    const char* separator = "";
    for (const LayoutRecord& record : kLayout) {
        Grid grid;
        for (std::size_t i = 0; i < record.nbrOfRows; ++i) {
            const LayoutRow& row = record.pRows[i];
            grid.Add("Field", row.pName);
            grid.Add("Offset", std::to_string(row.offset), Fit::kNumber);
            grid.Add("Size", std::to_string(row.size), Fit::kNumber);
            grid.Add("Meaning", row.pMeaning);
            grid.EndRow();
        }
        Print(fmt::format("{}{}, {} bytes\n{}", separator, record.pName, record.size, grid.TableText(0)));
        separator = "\n";
    }
}

Json RecordsJson()
{
    Json records = Json::array();
    for (const LayoutRecord& record : kLayout) {
        Json fields = Json::array();
        for (std::size_t i = 0; i < record.nbrOfRows; ++i) {
            const LayoutRow& row = record.pRows[i];
            fields.push_back(
                {{"name", row.pName}, {"offset", row.offset}, {"size", row.size}, {"meaning", row.pMeaning}});
        }
        records.push_back({{"name", record.pName}, {"size", record.size}, {"fields", std::move(fields)}});
    }
    return records;
}

int Layout(const Globals& globals)
{
    if (globals.json) {
        PrintJson({{"object", kRegionName}, {"size", kRegionSize}, {"records", RecordsJson()}});
    } else {
        PrintText();
    }
    return kOk;
}

} // namespace

Action SetUpLayout(CLI::App& /*command*/)
{
    return Layout;
}

} // namespace tool
