// table.h - rows for people and for programs: the same objects make a table and a JSON document.
#pragma once

#include "terminal/terminal.h"

#include <string>
#include <vector>

namespace tool {

// How a cell looks in a table; in JSON it is what it is.
enum class Look {
    kPlain, // numbers and texts; lists of VLANs as 10-20,300; lists of ports as 1/1-3 2/1; true as yes, null as -
    kList,  // a list as it stands, separated by blanks
    kComma, // the same, separated by commas
    kTime   // seconds since 1970
};

struct Column {
    std::string key;   // in JSON
    std::string title; // in the table
    Look look = Look::kPlain;
    bool hideEmpty = false; // no column in a table in which it has nothing to show
};

struct Table {
    std::string key; // of the list in JSON, or of the object when the table is a sheet
    std::vector<Column> columns;
    std::vector<Json> rows{}; // objects; the table shows the members that columns name
    bool isSheet = false;     // one row, shown as lines of title and value
    std::string whenEmpty{};  // what the table says without rows
};

std::string ToText(const Table& table);
Json ToJson(const Table& table);

// Prints the table in the way that was asked for.
void Show(const Table& table, bool asJson);

// "1/1-3 2/1": ports in ascending order.
std::string PortsText(const Json& ports);
// "10-20,300": VLAN ids in ascending order.
std::string RangesText(const Json& vlans);

} // namespace tool
