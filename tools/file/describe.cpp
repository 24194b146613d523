// describe.cpp - the schema and the tables of the configuration.
#include "file/describe.h"

#include "file/roff.h"
#include "file/schema_parts.h"
#include "objects/notation.h"

#include <cctype>
#include <fmt/format.h>

namespace tool {

namespace {

std::string PresenceText(const ObjectClass& row, const Field& field)
{
    if (field.presence == Presence::kRequired) {
        return "required";
    }
    std::string text;
    if (field.sameAs != kNoField) {
        text = "the `" + std::string(row.id == Class::kSwitch ? "bridgeMac" : row.fields[0].name) + '`';
    } else if (field.IsNumber()) {
        Json value = DefaultOf(field);
        text = '`' + value.dump() + '`';
    } else {
        text = field.notation == Notation::kName ? "empty" : "zero";
    }
    return text + (field.presence == Presence::kWritten ? "; always written" : "");
}

std::string TypeText(const Field& field)
{
    switch (field.notation) {
    case Notation::kNumber: {
        const std::string storable = NumberRule(field, field.StorableRange());
        const std::string sensible = NumberRule(field, field.SensibleRange());
        return storable == sensible ? storable : storable + "; sense: " + sensible;
    }
    case Notation::kHex16:
        return "ether type";
    case Notation::kPort:
        return "port";
    case Notation::kMac:
        return "MAC";
    case Notation::kBytes:
        return fmt::format("{} bytes", field.size);
    case Notation::kName:
        return "name";
    }
    return "";
}

std::string MeaningText(const Field& field)
{
    std::string text(field.meaning);
    if (field.isVlan) {
        text += text.empty() ? "a VLAN of the list" : "; a VLAN of the list";
    }
    return text;
}

// A member of an object as the documents tell it.
struct Member {
    std::string name;
    std::string type;
    std::string byDefault;
    std::string meaning;
};

// The classes whose objects lie in an object of this one.
std::vector<const ObjectClass*> ChildrenOf(Class id)
{
    std::vector<const ObjectClass*> children;
    for (const ObjectClass& row : Catalogue()) {
        const bool isOfPep = row.id == Class::kPriority;
        const bool isChild = isOfPep              ? id == Class::kPep
                             : id == Class::kPort ? row.keys == Keys::kPort && row.id != id
                                                  : id == Class::kVlan && row.keys == Keys::kVlan && row.id != id;
        if (isChild) {
            children.push_back(&row);
        }
    }
    return children;
}

std::string TypeOf(const ObjectClass& child)
{
    switch (child.id) {
    case Class::kPriority:
        return "eight numbers from 1 to 8";
    case Class::kMember:
        return "object of `tagged` and `untagged`, lists of ports, and `other`, an object of port and number";
    default:
        return child.isList ? "list of objects, below" : "object, below";
    }
}

std::vector<Member> MembersOf(const ObjectClass& row)
{
    std::vector<Member> members;
    for (const Field& field : row.fields) {
        const bool isCVids = row.id == Class::kRegistration && &field == row.fields.data();
        members.push_back(
            isCVids ? Member{std::string(member::kCVids), "VIDs", "required", "each C-VID once on a port"}
                    : Member{std::string(field.name), TypeText(field), PresenceText(row, field), MeaningText(field)});
    }
    for (const ObjectClass* pChild : ChildrenOf(row.id)) {
        members.push_back({std::string(pChild->member), TypeOf(*pChild), "none", std::string(pChild->meaning)});
    }
    return members;
}

// "Node-wide settings."
std::string Sentence(std::string_view text)
{
    std::string sentence(text);
    if (!sentence.empty()) {
        sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
        sentence += '.';
    }
    return sentence;
}

std::string TableOf(const ObjectClass& row)
{
    std::string text = fmt::format("### `{}`\n\n", row.member);
    text += row.meaning.empty() ? "" : Sentence(row.meaning) + "\n\n";
    text += "| member | value | default | |\n|---|---|---|---|\n";
    for (const auto& [name, type, byDefault, meaning] : MembersOf(row)) {
        text += fmt::format("| `{}` | {} | {} |{}{} |\n", name, type, byDefault, meaning.empty() ? "" : " ", meaning);
    }
    return text + '\n';
}

// Without the marks of Markdown.
std::string Plain(std::string text)
{
    std::erase(text, '`');
    return Roff(text);
}

std::string ManualOf(const ObjectClass& row)
{
    std::string text = fmt::format(".SS {}\n", Roff(row.member));
    text += row.meaning.empty() ? "" : RoffLine(Sentence(row.meaning)) + '\n';
    for (const auto& [name, type, byDefault, meaning] : MembersOf(row)) {
        text += fmt::format(".TP\n.B {}\n{}{}", Roff(name), Plain(Sentence(meaning)), meaning.empty() ? "" : "\n");
        text += fmt::format("Value: {}.\nDefault: {}.\n", Plain(type), Plain(byDefault));
    }
    return text;
}

// The classes that have a table of their own.
template <class MakeText>
std::string ForEachObject(MakeText makeText)
{
    std::string text;
    for (const ObjectClass& row : Catalogue()) {
        if (row.id != Class::kNode && row.id != Class::kPriority && row.id != Class::kMember) {
            text += makeText(row);
        }
    }
    return text;
}

Json ListSchema(Class id, std::size_t most)
{
    return {{"type", "array"},
            {"description", RowOf(id).many},
            {"items", {{"$ref", "#/$defs/" + DefinitionName(id)}}},
            {"maxItems", most}};
}

} // namespace

std::string ConfigurationTables()
{
    std::string text = ForEachObject(TableOf);
    text.pop_back();
    return text;
}

std::string ConfigurationManual()
{
    return ForEachObject(ManualOf);
}

std::string ConfigurationSchema()
{
    Json properties = {{"$schema", Json::object()},
                       {"description", Json::object()},
                       {"schema", {{"const", kSchema}, {"description", "Number of this format"}}}};
    for (const Class id : {Class::kSwitch, Class::kManagement}) {
        properties[std::string(RowOf(id).member)] = {{"$ref", "#/$defs/" + DefinitionName(id)}};
    }
    for (const Field& field : RowOf(Class::kNode).fields) {
        properties[std::string(field.name)] = SchemaOf(field);
    }
    for (const Class id : {Class::kPort, Class::kVlan}) {
        properties[std::string(RowOf(id).member)] = ListSchema(id, RowOf(id).nrOfMost);
    }
    const Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                         {"title", "Layer-2 configuration of a switching node"},
                         {"description", "What piovios load reads and piovios save writes. Rules between objects, and "
                                         "which values make sense, are in configuration.md."},
                         {"type", "object"},
                         {"properties", std::move(properties)},
                         {"required", {"schema"}},
                         {"additionalProperties", false},
                         {"$defs", Definitions()}};
    return schema.dump(2) + '\n';
}

} // namespace tool
