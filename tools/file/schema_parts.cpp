#include "file/schema_parts.h"

namespace tool {

namespace {

Json Reference(const std::string& name)
{
    return {{"$ref", "#/$defs/" + name}};
}

Json NumberSchema(const Range& range)
{
    return {{"type", "integer"}, {"minimum", range.min}, {"maximum", range.max}};
}

// The value without its default and meaning.
Json ValueSchema(const Field& field)
{
    switch (field.notation) {
    case Notation::kNumber: {
        if (field.words.empty()) {
            return NumberSchema(field.StorableRange());
        }
        Json words = Json::array();
        for (const Word& word : field.words) {
            words.push_back(Json::parse(WordText(word)));
        }
        return {{"anyOf", Json::array({{{"enum", std::move(words)}}, NumberSchema(field.StorableRange())})}};
    }
    case Notation::kHex16:
        return Reference("etherType");
    case Notation::kPort:
        return Reference("portName");
    case Notation::kMac:
        return Reference("mac");
    case Notation::kBytes:
        return {{"type", "string"}, {"pattern", "^([0-9A-Fa-f]{2}){1," + std::to_string(field.size) + "}$"}};
    case Notation::kName:
        return Reference("name");
    }
    return Json::object();
}

Json MembersSchema()
{
    const Json ports = {{"type", "array"}, {"items", Reference("portName")}, {"maxItems", 15}, {"uniqueItems", true}};
    return {{"type", "object"},
            {"properties",
             {{std::string(member::kTagged), ports},
              {std::string(member::kUntagged), ports},
              {std::string(member::kOther),
               {{"type", "object"},
                {"propertyNames", Reference("portName")},
                {"additionalProperties", SchemaOf(FieldOf(Class::kMember, "membership"))}}}}},
            {"additionalProperties", false}};
}

// What lies in an object beside its fields.
void AddChildren(Class id, Json& properties)
{
    const auto add = [&properties](Class child, Json schema) {
        properties[std::string(RowOf(child).member)] = std::move(schema);
    };
    const auto list = [](Class child, unsigned most) -> Json {
        return {{"type", "array"}, {"items", Reference(DefinitionName(child))}, {"maxItems", most}};
    };
    switch (id) {
    case Class::kPort:
        add(Class::kPep, list(Class::kPep, SWCT_PEP_MAX));
        add(Class::kRegistration, list(Class::kRegistration, SWCT_PB_VID_MAX));
        add(Class::kDefaultRegistration, Reference(DefinitionName(Class::kDefaultRegistration)));
        add(Class::kTranslation, list(Class::kTranslation, SWCT_PB_VID_MAX));
        add(Class::kQinQ, Reference(DefinitionName(Class::kQinQ)));
        break;
    case Class::kPep:
        add(Class::kPriority,
            {{"type", "array"}, {"items", NumberSchema({1, SWCT_PRIORITY_MAX})}, {"minItems", 8}, {"maxItems", 8}});
        break;
    case Class::kVlan:
        add(Class::kInnerTag, {{"anyOf", {Reference(DefinitionName(Class::kInnerTag)), {{"type", "null"}}}}});
        add(Class::kMember, MembersSchema());
        break;
    default:
        break;
    }
}

} // namespace

Json DefaultOf(const Field& field)
{
    uint8_t record[sizeof(uint32_t)] = {};
    Field atStart = field;
    atStart.offset = 0;
    for (std::size_t i = 0; i < field.size; ++i) {
        record[i] = static_cast<uint8_t>(field.byDefault >> 8U * i);
    }
    std::string text;
    AppendValue(text, atStart, record);
    return Json::parse(text);
}

Json SchemaOf(const Field& field)
{
    Json schema = ValueSchema(field);
    if (!field.meaning.empty()) {
        schema["description"] = field.meaning;
    }
    if (field.IsNumber() && field.presence != Presence::kRequired && field.sameAs == kNoField) {
        schema["default"] = DefaultOf(field);
    }
    return schema;
}

Json ObjectSchema(Class id, const Json& more)
{
    Json properties = Json::object();
    Json required = Json::array();
    for (const Field& field : RowOf(id).fields) {
        const bool isCVids = id == Class::kRegistration && &field == RowOf(id).fields.data();
        const std::string name(isCVids ? member::kCVids : field.name);
        properties[name] = isCVids ? Reference("vids") : SchemaOf(field);
        if (field.notation == Notation::kName) {
            Field bytes = field;
            bytes.notation = Notation::kBytes;
            properties[name + std::string(kBytesSuffix)] = SchemaOf(bytes);
        }
        if (field.presence == Presence::kRequired) {
            required.push_back(name);
        }
    }
    AddChildren(id, properties);
    properties.update(more);
    Json schema = {{"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}};
    if (!required.empty()) {
        schema["required"] = std::move(required);
    }
    return schema;
}

std::string DefinitionName(Class id)
{
    return std::string(id == Class::kPort ? "port" : id == Class::kVlan ? "vlan" : RowOf(id).member);
}

Json Definitions()
{
    Json definitions = {
        {"portName", {{"type", "string"}, {"pattern", "^[1-3]/[1-5]$"}, {"description", "SLOT/PORT"}}},
        {"mac", {{"type", "string"}, {"pattern", "^[0-9A-Fa-f]{2}(:[0-9A-Fa-f]{2}){5}$"}}},
        {"etherType", {{"type", "string"}, {"pattern", "^0x[0-9A-Fa-f]{4}$"}}},
        {"name",
         {{"type", "string"},
          {"maxLength", 80},
          {"description", "At most 80 bytes of UTF-8 without control characters"}}},
        {"vids",
         {{"anyOf",
           {NumberSchema({1, SWCT_PB_VID_MAX}),
            {{"type", "string"},
             {"pattern", "^[1-9][0-9]{0,3}(-[1-9][0-9]{0,3})?(,[1-9][0-9]{0,3}(-[1-9][0-9]{0,3})?)*$"}}}},
          {"description", "A VID, or a list with ranges: 10-19,30"}}}};
    for (const ObjectClass& row : Catalogue()) {
        if (row.id != Class::kNode && row.id != Class::kPriority && row.id != Class::kMember) {
            definitions[DefinitionName(row.id)] = ObjectSchema(row.id);
        }
    }
    return definitions;
}

} // namespace tool
