// table.h - a table of JSON objects.
#pragma once

#include "objects/fields.h"
#include "terminal/terminal.h"

#include <string>
#include <vector>

namespace tool {

struct Column {
    std::string key;   // in JSON
    std::string title; // in the table
    Look look = Look::kPlain;
    bool hideEmpty = false; // no column in a table in which it has nothing to show
};

struct Table {
    std::vector<Column> columns;
    std::vector<Json> rows{}; // objects; the table shows the members that columns name
};

std::string ToText(const Table& table);

} // namespace tool
