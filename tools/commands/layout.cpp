// layout.cpp - every record of the region with its fields, from the table that the library asserts its layout with.
#include "commands/command.h"
#include "objects/failure.h"
#include "region/region_layout.h"
#include "terminal/table.h"

#include <fmt/format.h>

namespace tool {

namespace {

Table FieldsOf(const LayoutRecord& record)
{
    Table table{"fields", {{"name", "Field"}, {"offset", "Offset"}, {"size", "Size"}, {"meaning", "Meaning"}}};
    for (std::size_t i = 0; i < record.nbrOfRows; ++i) {
        const LayoutRow& row = record.pRows[i];
        table.rows.push_back(
            {{"name", row.pName}, {"offset", row.offset}, {"size", row.size}, {"meaning", row.pMeaning}});
    }
    return table;
}

int Layout(const Globals& globals)
{
    Json records = Json::array();
    for (const LayoutRecord& record : kLayout) {
        const Table fields = FieldsOf(record);
        if (globals.json) {
            Json document = {{"name", record.pName}, {"size", record.size}};
            document.update(ToJson(fields));
            records.push_back(std::move(document));
        } else {
            const char* separator = &record == std::begin(kLayout) ? "" : "\n";
            Print(fmt::format("{}{}, {} bytes\n{}", separator, record.pName, record.size, ToText(fields)));
        }
    }
    if (globals.json) {
        PrintJson({{"object", kRegionName}, {"size", kRegionSize}, {"records", std::move(records)}});
    }
    return kOk;
}

} // namespace

Action SetUpLayout(CLI::App& /*command*/)
{
    return Layout;
}

} // namespace tool
