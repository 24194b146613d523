// change_schema.cpp - the schema of change sets, class by class.
#include "file/describe.h"
#include "file/schema_parts.h"
#include "objects/changes.h"

#include <iterator>

namespace tool {

namespace {

constexpr std::string_view kPort = "[1-3]/[1-5]";
constexpr std::string_view kNumber = "[1-9][0-9]{0,3}";

// Of the names of a class's objects, as diff prints them.
std::string NamePattern(const ObjectClass& row)
{
    std::string number(kNumber);
    const std::string range = number + "(-" + number + ")?";
    const std::string list = ' ' + range + "(," + range + ")*";
    std::string pattern = "^";
    if (row.keys == Keys::kPort) {
        pattern.append("port ").append(kPort);
    } else if (row.keys == Keys::kVlan) {
        pattern.append("vlan").append(row.id == Class::kVlan ? "" : ' ' + number);
    }
    pattern += row.id == Class::kPriority ? " pep " + number : "";
    pattern += pattern.size() == 1 || row.label.empty() ? "" : " ";
    pattern += row.label;
    if (row.keyField != kNoField) {
        const bool isPort = row.fields[row.keyField].notation == Notation::kPort;
        pattern += isPort ? "( " + std::string(kPort) + ")+" : list;
    }
    return pattern + '$';
}

Json ValueChange(const Json& value)
{
    const Json orNone = {{"anyOf", {value, {{"type", "null"}}}}};
    return {{"type", "object"},
            {"properties", {{"before", orNone}, {"after", orNone}}},
            {"anyOf", {{{"required", {"before"}}}, {{"required", {"after"}}}}},
            {"additionalProperties", false}};
}

Json ChangeOf(const ObjectClass& row)
{
    Json members = Json::object();
    for (Field field : row.fields) {
        if (IsKey(row, field)) {
            continue;
        }
        members[std::string(field.name)] = ValueChange(SchemaOf(field));
        if (field.notation == Notation::kName) {
            field.notation = Notation::kBytes;
            members[std::string(field.name).append(kBytesSuffix)] = ValueChange(SchemaOf(field));
        }
    }
    return {{"type", "object"},
            {"description", row.one},
            {"properties",
             {{"object", {{"type", "string"}, {"pattern", NamePattern(row)}}},
              {"change", {{"enum", {"added", "removed", "changed"}}}},
              {"members", {{"type", "object"}, {"properties", std::move(members)}, {"additionalProperties", false}}}}},
            {"required", {"object", "change"}}};
}

} // namespace

std::string ChangesSchema()
{
    Json changes = Json::array();
    for (const ObjectClass& row : Catalogue()) {
        changes.push_back(ChangeOf(row));
    }
    Json definitions = Definitions();
    for (auto it = definitions.begin(); it != definitions.end();) { // of whole objects, which no change has
        it = it->contains("properties") ? definitions.erase(it) : std::next(it);
    }
    definitions["change"] = {{"anyOf", std::move(changes)}};
    const Json reference = {{"$ref", "#/$defs/change"}, {"unevaluatedProperties", false}};
    const Json number = {{"const", kSchema}, {"description", "Number of this format"}};
    const Json text = {{"type", "string"}};
    const Json set = {{"type", "object"},
                      {"title", "A change set: what diff --json prints, and apply and the others"},
                      {"properties",
                       {{"schema", number},
                        {"$schema", Json::object()},
                        {"description", Json::object()},
                        {"before", Json::object()},
                        {"after", Json::object()},
                        {"applied", {{"type", "boolean"}}},
                        {"differences", {{"type", "array"}, {"items", reference}}}}},
                      {"required", {"schema", "differences"}},
                      {"additionalProperties", false}};
    const Json more = {{"type", "integer"},
                       {"minimum", 0},
                       {"description", "How many of the following lines belong to the same group; 0 when left out"}};
    Json line = {{"title", "A change in a line of its own: what watch --json prints"},
                 {"properties", {{"schema", number}, {"time", text}, {"event", {{"const", "change"}}}, {"more", more}}},
                 {"required", {"schema", "event"}}};
    line.update(reference);
    const Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                         {"title", "Changes of a switching node's layer-2 configuration"},
                         {"description", "What piovios apply reads; changes.md tells how. Rules between objects, and "
                                         "which values make sense, are in configuration.md."},
                         {"anyOf", {set, line}},
                         {"$defs", std::move(definitions)}};
    return schema.dump(2) + '\n';
}

} // namespace tool
