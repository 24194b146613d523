// output_schema.cpp - the schema of what the commands print with --json.
#include "file/describe.h"
#include "file/schema_parts.h"

#include <initializer_list>

namespace tool {

namespace {

const Json kText = {{"type", "string"}};
const Json kCount = {{"type", "integer"}, {"minimum", 0}};
const Json kBoolean = {{"type", "boolean"}};
const Json kNull = {{"type", "null"}};
const Json kPortName = {{"$ref", "#/$defs/portName"}};
const Json kVidList = {{"$ref", "#/$defs/vids"}};

Json OrNull(const Json& schema)
{
    return {{"anyOf", {schema, kNull}}};
}

Json ListOf(const Json& items)
{
    return {{"type", "array"}, {"items", items}};
}

// An object that has all of these members and no other.
Json Exactly(const Json& properties)
{
    Json required = Json::array();
    for (const auto& [name, schema] : properties.items()) {
        required.push_back(name);
    }
    return {{"type", "object"},
            {"properties", properties},
            {"required", std::move(required)},
            {"additionalProperties", false}};
}

// A document with one subject: its required members, and those that it may have.
Json Document(const char* title, const Json& required, const Json& optional = Json::object())
{
    Json properties = {{"schema", {{"const", 1}}}};
    properties.update(required);
    Json schema = Exactly(properties);
    schema["properties"].update(optional);
    schema["title"] = title;
    return schema;
}

// With the port, and of a record of one C-VID the C-VID itself.
Json OfPort(Class id, const Json& more)
{
    Json members = {{"port", kPortName}};
    members.update(more);
    return ObjectSchema(id, members);
}

// What tells of several classes at once says which are there by their members.
Json AnyRequired(Json schema)
{
    schema.erase("required");
    return schema;
}

Json ShowDocuments()
{
    const Json inForce = {{"inForce", kBoolean}};
    const auto list = [&](const char* title, const char* name, const Json& items, bool isOfMode) {
        Json required = {{name, ListOf(items)}};
        if (isOfMode) {
            required.update(inForce);
        }
        return Document(title, required);
    };
    const Json port = {{"port", kPortName}};
    const Json pepUse = Exactly({{"port", kPortName}, {"index", kCount}});
    const Json translationUse = Exactly({{"port", kPortName}, {"localVid", kCount}});
    const Json vlans = {
        {"untaggedVlans", OrNull(kVidList)}, {"taggedVlans", OrNull(kVidList)}, {"otherVlans", OrNull(kVidList)}};
    Json management = {{"management", ObjectSchema(Class::kManagement)},
                       {"hrlb", kCount},
                       {"vlans", kCount},
                       {"bridgePorts", kCount},
                       {"upSince", kCount},
                       {"learnedEntryDiscards", kCount},
                       {"deletedVlans", kCount}};
    Json vlanSheet = {{"users", kCount},
                      {"peps", ListOf(pepUse)},
                      {"qinqPorts", ListOf(Exactly(port))},
                      {"translations", ListOf(translationUse)}};
    Json tag = ObjectSchema(Class::kInnerTag, {{"id", kCount}, {"name", kText}, {"nameBytes", kText}});
    Json registration =
        OfPort(Class::kRegistration, {{"pep", OrNull(kCount)}, {"cVid", kCount}, {"isDefault", kBoolean}});
    return Json::array({Document("show switch", {{"switch", ObjectSchema(Class::kSwitch, management)}}),
                        list("show vlans", "vlans", ObjectSchema(Class::kVlan, {{"users", kCount}}), false),
                        Document("show vlan", {{"vlan", ObjectSchema(Class::kVlan, vlanSheet)}}),
                        list("show ports", "ports", ObjectSchema(Class::kPort, vlans), false),
                        Document("show port", {{"port", ObjectSchema(Class::kPort, vlans)}}),
                        list("show peps", "providerEdgePorts",
                             OfPort(Class::kPep, {{"cVids", kCount}, {"firstCVid", OrNull(kCount)}}), true),
                        list("show cvids", "cVidRegistrations", AnyRequired(registration), true),
                        list("show translations", "vidTranslations", OfPort(Class::kTranslation, Json::object()), true),
                        list("show priorities", "priorities", OfPort(Class::kPep, Json::object()), true),
                        list("show qinq", "qinq", OfPort(Class::kQinQ, Json::object()), true),
                        list("show inner-tags", "innerTags", tag, false)});
}

Json Fault()
{
    return Exactly({{"severity", {{"enum", {"error", "warning"}}}},
                    {"line", OrNull(kCount)},
                    {"object", OrNull(kText)},
                    {"path", kText},
                    {"value", Json::object()},
                    {"message", kText}});
}

Json DifferenceShape()
{
    const Json change = Exactly({{"before", Json::object()}, {"after", Json::object()}});
    return {{"object", kText},
            {"change", {{"enum", {"added", "removed", "changed"}}}},
            {"members", {{"type", "object"}, {"additionalProperties", change}}}};
}

Json WatchDocuments()
{
    const auto event = [](const char* name, Json members) {
        Json required = {{"time", kText}, {"event", {{"const", name}}}};
        required.update(members);
        return Document("watch, in each line", required);
    };
    return Json::array({event("start", {{"configuration", {{"type", "object"}}}}),
                        event("change",
                              [] {
                                  Json change = DifferenceShape();
                                  change["more"] = kCount;
                                  return change;
                              }()),
                        event("period", {{"port", kPortName},
                                         {"ring", {{"enum", {"15m", "24h"}}}},
                                         {"queues", ListOf(kCount)},
                                         {"suspect", kBoolean}}),
                        event("restart", {{"upSince", kCount}})});
}

// Every step has its name and its own facts.
Json ExplainSteps(const Json& exits)
{
    const Json vid = OrNull(kCount);
    const Json tag = {{"vid", vid}, {"isCVid", kBoolean}};
    const Json facts = {
        {"port", {{"port", kPortName}, {"exists", kBoolean}, {"type", kText}, {"switchMode", kText}}},
        {"admission", {{"frameAdmission", kCount}, {"isKnown", kBoolean}, {"admitted", kBoolean}}},
        {"tag", tag},
        {"pvid", tag},
        {"registration",
         {{"cVid", kCount},
          {"registration", {{"enum", {"own", "default", nullptr}}}},
          {"sVid", vid},
          {"relayCVid", vid}}},
        {"pep", {{"pep", vid}, {"sVid", kCount}, {"untaggedPep", kBoolean}}},
        {"priority", {{"priorityRegeneration", ListOf(kCount)}}},
        {"translation", {{"localVid", kCount}, {"relayVid", kCount}}},
        {"qinq", {{"providerVid", vid}, {"priority", kCount}}},
        {"vlan", {{"vlan", kCount}, {"exists", kBoolean}}},
        {"ingress", {{"vlan", kCount}, {"membership", kCount}, {"ingressFiltering", kCount}, {"accepted", kBoolean}}},
        {"members",
         {{"vlan", kCount},
          {"members", exits},
          {"passedOver", ListOf(Exactly({{"port", kPortName}, {"reason", kText}}))}}},
        {"return", {{"untaggedCep", kBoolean}}}};
    Json steps = Json::array();
    for (const auto& [name, members] : facts.items()) {
        Json all = {{"step", {{"const", name}}}};
        all.update(members);
        steps.push_back(Exactly(all));
    }
    return ListOf({{"anyOf", std::move(steps)}});
}

Json ExplainDocument()
{
    Json exit = Exactly({{"port", kPortName},
                         {"tagging", {{"enum", {"tagged", "untagged", "by-cvid", "other"}}}},
                         {"vid", OrNull(kCount)},
                         {"innerVid", OrNull(kCount)},
                         {"pep", OrNull(kCount)},
                         {"member", kBoolean}});
    exit["properties"]["cVids"] = kCount;
    return Document("explain",
                    {{"frame", Exactly({{"port", kPortName}, {"vid", OrNull(kCount)}, {"innerVid", OrNull(kCount)}})},
                     {"verdict", {{"enum", {"carried", "dropped"}}}},
                     {"droppedAt", OrNull(kText)},
                     {"reason", OrNull(kText)},
                     {"vlan", OrNull(kCount)},
                     {"members", ListOf(exit)},
                     {"steps", ExplainSteps(ListOf(exit))}});
}

Json HistoryDocument()
{
    const Json period = Exactly({{"period", {{"type", "integer"}, {"maximum", 0}}},
                                 {"current", kBoolean},
                                 {"missing", kBoolean},
                                 {"suspect", OrNull(kBoolean)},
                                 {"stamp", OrNull(ListOf(kCount))},
                                 {"time", OrNull(kCount)},
                                 {"counters", OrNull(ListOf(kCount))},
                                 {"ratesPerSecond", OrNull(ListOf({{"type", "number"}}))}});
    const Json sum = Exactly({{"periods", kCount}, {"counters", ListOf(kCount)}, {"wrapped", ListOf(kCount)}});
    return Document("history",
                    {{"ring", {{"enum", {"15m", "24h"}}}},
                     {"secondsOfPeriod", kCount},
                     {"counterNames", ListOf(OrNull(kText))},
                     {"queues", ListOf(Exactly({{"queue", kText}, {"periods", ListOf(period)}, {"sum", sum}}))}});
}

Json MetricsDocument()
{
    const Json labels = {{"type", "object"}, {"additionalProperties", kText}};
    const Json sample = Exactly({{"labels", labels}, {"value", kCount}});
    return Document("metrics", {{"metrics", ListOf(Exactly({{"name", kText},
                                                            {"type", {{"enum", {"gauge", "counter"}}}},
                                                            {"samples", ListOf(sample)}}))}});
}

Json OtherDocuments()
{
    const Json error = Exactly({{"message", kText}, {"exitCode", kCount}});
    const Json finding = Exactly({{"kind", {{"enum", {"drift", "meaning", "dangling", "torn"}}}},
                                  {"object", kText},
                                  {"field", OrNull(kText)},
                                  {"stored", Json::object()},
                                  {"right", Json::object()},
                                  {"message", kText}});
    const Json counts = Exactly({{"drift", kCount}, {"meaning", kCount}, {"dangling", kCount}, {"torn", kCount}});
    const Json checkpoint = Exactly({{"name", kText}, {"automatic", kBoolean}, {"time", kText}, {"bytes", kCount}});
    const Json field = Exactly({{"name", kText}, {"offset", kCount}, {"size", kCount}, {"meaning", kText}});
    const Json record = Exactly({{"name", kText}, {"size", kCount}, {"fields", ListOf(field)}});
    return Json::array(
        {Document("any command that fails", {{"error", error}}), Document("init", {{"created", kText}}),
         Document("remove", {{"removed", kText}}),
         Document("load",
                  {{"file", kText},
                   {"loaded", kBoolean},
                   {"errors", kCount},
                   {"warnings", kCount},
                   {"faults", ListOf(Fault())}},
                  {{"error", error}}),
         Document("diff",
                  {{"before", OrNull(kText)}, {"after", kText}, {"differences", ListOf(Exactly(DifferenceShape()))}}),
         Document("apply, add, set, delete and edit",
                  {{"applied", kBoolean}, {"differences", ListOf(Exactly(DifferenceShape()))}}),
         Document("check", {{"counts", counts}, {"findings", ListOf(finding)}}),
         Document("status",
                  {{"region",
                    Exactly({{"name", kText}, {"bytes", kCount}, {"created", kCount}, {"ageSeconds", OrNull(kCount)}})},
                   {"users", ListOf(Exactly({{"process", kCount}, {"name", kText}, {"writes", kBoolean}}))},
                   {"switch", Exactly({{"name", kText}, {"mode", kText}})},
                   {"counts", {{"type", "object"}, {"additionalProperties", kCount}}},
                   {"findings", counts},
                   {"awaitsConfirmation", OrNull(Exactly({{"command", kText}, {"secondsLeft", kCount}}))}}),
         Document("checkpoint", {{"checkpoint", kText}}),
         Document("checkpoint --list", {{"checkpoints", ListOf(checkpoint)}}),
         Document("checkpoint --delete", {{"deleted", kText}}), Document("rollback", {{"rolledBackTo", kText}}),
         Document("confirm", {{"confirmed", kText}}), ExplainDocument(), HistoryDocument(), MetricsDocument(),
         Document("layout", {{"object", kText}, {"size", kCount}, {"records", ListOf(record)}})});
}

} // namespace

std::string OutputSchema()
{
    Json documents = Json::array();
    for (const Json& group : {ShowDocuments(), OtherDocuments(), WatchDocuments()}) {
        documents.insert(documents.end(), group.begin(), group.end());
    }
    const Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                         {"title", "What the commands of piovios print with --json"},
                         {"description", "Objects have the members that save gives them. A member is added without a "
                                         "new number of \"schema\", never renamed or removed."},
                         {"anyOf", std::move(documents)},
                         {"$defs", Definitions()}};
    return schema.dump(2) + '\n';
}

} // namespace tool
