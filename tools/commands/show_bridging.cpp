// show_bridging.cpp - what show tells of the provider bridge: edge ports, registrations, translations, priorities, and
// QinQ ports.
#include "commands/region_view.h"
#include "commands/show_topics.h"

#include <fmt/format.h>

namespace tool {

namespace {

constexpr char kNoPeps[] = "no provider edge ports";

Json NullForZero(unsigned value)
{
    return value != 0 ? Json(value) : Json();
}

// Visits the PEPs that the filter lets through, with their S-VIDs.
template <class Visit>
void WalkPeps(const Filter& filter, Visit visit)
{
    Walk(Swct_ProviderEdgePortMoidIterator, SWCT_CLASS_PROVIDER_EDGE_PORT, [&](const SwctProviderEdgePortMoid& moid) {
        const auto svid = static_cast<uint16_t>(Swct_ProviderEdgePort_GetSVid(moid));
        const Port port{moid.bSlot, moid.bPort};
        if (filter.HasPort(port) && filter.HasSvid(svid)) {
            visit(moid, port, svid);
        }
    });
}

// The default registration of a CEP as a row among its registrations.
void AddDefaultRegistration(Table& table, const SwctPortMoid& moid, const Filter& filter)
{
    SwctDefaultCVidRegistrationRecord record{moid, {}};
    Swct_ReadDefaultCVidRegistration(moid, &record.sBody);
    const uint16_t svid = record.sBody.wSvid;
    if (svid != SWCT_VID_NONE && filter.HasPort(PortOf(moid)) && filter.HasSvid(svid) && !filter.vlans) {
        table.rows.push_back(RowOf(table, kDefaultRegistrationFields, &record,
                                   {{"port", ToText(PortOf(moid))},
                                    {"cVid", "default"},
                                    {"pep", NullForZero(PepIndexOf(PortOf(moid), svid))}}));
    }
}

// The VIDs, 1 to 4094, for which 'isThere' holds.
template <class IsThere>
Json VidsWith(IsThere isThere)
{
    Json vids = Json::array();
    for (uint16_t vid = 1; vid <= SWCT_PB_VID_MAX; ++vid) {
        if (isThere(vid)) {
            vids.push_back(vid);
        }
    }
    return vids;
}

} // namespace

Table PepTable(const Filter& filter)
{
    Table table{"peps",
                {{"port", "Port"},
                 {"index", "PEP"},
                 {"sVid", "S-VID"},
                 {"name", "Name"},
                 {"cVids", "C-VIDs"},
                 {"firstCVid", "First C-VID"},
                 {"settings", "Settings", Look::kPlain, true}},
                {},
                false,
                kNoPeps};
    WalkPeps(filter, [&table](const SwctProviderEdgePortMoid& moid, Port port, uint16_t svid) {
        SwctProviderEdgePortRecord record{moid, {}};
        Swct_ReadProviderEdgePort(moid, &record.sBody);
        SwctCVidRegistration first{};
        Swct_GetFirstCVidRegistrationForSVid(port.slot, port.port, svid, &first);
        table.rows.push_back(RowOf(table, kPepFields, &record,
                                   {{"port", ToText(port)},
                                    {"name", VlanName(svid)},
                                    {"cVids", Swct_GetNumberOfCVidRegistrationsForSVid(port.slot, port.port, svid)},
                                    {"firstCVid", NullForZero(first.wCVid)}}));
    });
    return table;
}

Table CVidTable(const Filter& filter)
{
    Table table{"cVids",
                {{"port", "Port"},
                 {"cVid", "C-VID"},
                 {"sVid", "S-VID"},
                 {"pep", "PEP"},
                 {"untaggedCep", "Untagged on CEP"},
                 {"untaggedPep", "Untagged on PEP"},
                 {"relayCVid", "Relay C-VID"}},
                {},
                false,
                "no C-VID registrations"};
    Walk(Swct_CVidRegistrationMoidIterator, SWCT_CLASS_CVID_REGISTRATION, [&](const SwctCVidRegistrationMoid& moid) {
        SwctCVidRegistrationRecord record{moid, {}};
        Swct_ReadCVidRegistration(moid, &record.sBody);
        const Port port{moid.bSlot, moid.bPort};
        if (filter.HasPort(port) && filter.HasVlan(moid.wCVid) && filter.HasSvid(record.sBody.wSvid)) {
            table.rows.push_back(
                RowOf(table, kCVidRegistrationFields, &record,
                      {{"port", ToText(port)},
                       {"cVid", +moid.wCVid},
                       {"pep", NullForZero(PepIndexOf(port, record.sBody.wSvid))},
                       {"relayCVid", NullForZero(record.sBody.boRelayCVid == 1 ? +record.sBody.wRelayCVid : 0)}}));
        }
    });
    Walk(Swct_DefaultCVidRegistrationMoidIterator, SWCT_CLASS_DEFAULT_CVID_REGISTRATION,
         [&](const SwctPortMoid& moid) { AddDefaultRegistration(table, moid, filter); });
    return table;
}

Table TranslationTable(const Filter& filter)
{
    Table table{"translations",
                {{"port", "Port"}, {"localVid", "Local VID"}, {"relayVid", "Relay VID"}, {"status", "Status"}},
                {},
                false,
                "no VID translations"};
    Walk(Swct_VidTranslationMoidIterator, SWCT_CLASS_VID_TRANSLATION, [&](const SwctVidTranslationMoid& moid) {
        SwctVidTranslationRecord record{moid, {}};
        Swct_ReadVidTranslation(moid, &record.sBody);
        const Port port{moid.bSlot, moid.bPort};
        if (filter.HasPort(port) && filter.HasVlan(moid.wLocalVid) && filter.HasSvid(record.sBody.wRelayVid)) {
            table.rows.push_back(RowOf(table, kVidTranslationFields, &record, {{"port", ToText(port)}}));
        }
    });
    return table;
}

Table PriorityTable(const Filter& filter)
{
    Table table{"priorities",
                {{"port", "Port"},
                 {"index", "PEP"},
                 {"sVid", "S-VID"},
                 {"priorityRegeneration", "Priority 1 to 8 becomes", Look::kList}},
                {},
                false,
                kNoPeps};
    WalkPeps(filter, [&table](const SwctProviderEdgePortMoid& moid, Port port, uint16_t svid) {
        table.rows.push_back({{"port", ToText(port)},
                              {"index", +moid.wPepIndex},
                              {"sVid", svid},
                              {"priorityRegeneration", RegeneratedPriorities(moid)}});
    });
    return table;
}

Table QinQTable(const Filter& filter)
{
    Table table{"qinqPorts",
                {{"port", "Port"},
                 {"enabled", "Enabled"},
                 {"providerVid", "Provider VID"},
                 {"name", "Name"},
                 {"priority", "Priority"},
                 {"etherType", "Ether type"},
                 {"tunnelControlProtocols", "Tunnelling"},
                 {"tunnelMac", "Tunnel MAC"}},
                {},
                false,
                "no QinQ ports"};
    Walk(Swct_QinQPortMoidIterator, SWCT_CLASS_QINQ_PORT, [&](const SwctPortMoid& moid) {
        SwctQinQPortRecord record{moid, {}};
        Swct_ReadQinQPort(moid, &record.sBody);
        const uint16_t vid = record.sBody.wProviderTagVid;
        if (record.sBody.dwQinQStatus != SWCT_QINQ_NONE && filter.HasPort(PortOf(moid)) && filter.HasSvid(vid)) {
            table.rows.push_back(
                RowOf(table, kQinQFields, &record, {{"port", ToText(PortOf(moid))}, {"name", VlanName(vid)}}));
        }
    });
    return table;
}

void AddBridgeData(Table& table, Json& row, Port port)
{
    const auto add = [&](const char* key, const char* title, Json value, Look look = Look::kPlain) {
        table.columns.push_back({key, title, look});
        row[key] = std::move(value);
    };
    const uint32_t type = Swct_GetPbPortType(port.slot, port.port);
    if (Swct_GetSwitchMode() == SWCT_SWITCH_MODE_QINQ) {
        const Table qinq = QinQTable({{}, {}, port});
        for (std::size_t i = 1; i < qinq.columns.size() && !qinq.rows.empty(); ++i) {
            add(qinq.columns[i].key.c_str(), ("QinQ " + qinq.columns[i].title).c_str(),
                qinq.rows[0][qinq.columns[i].key]);
        }
    } else if (type == SWCT_PB_PORT_CEP) {
        const SwctPortMoid defaults{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, port.slot, port.port};
        const auto defaultSvid = static_cast<uint16_t>(Swct_DefaultCVidRegistration_GetSVid(defaults));
        add("peps", "Provider edge ports", Swct_GetNumberOfPepInCep(port.slot, port.port));
        add("sVids", "Service VLANs", VidsWith([port](uint16_t vid) { return PepIndexOf(port, vid) != 0; }));
        add("cVids", "Registered C-VIDs",
            VidsWith([port](uint16_t vid) { return Swct_DoesCVlanForOnePortExist(vid, port.slot, port.port) != 0; }));
        add("defaultSVid", "Default service VLAN", defaultSvid != SWCT_VID_NONE ? Json(defaultSvid) : Json());
    } else if (type == SWCT_PB_PORT_PNP || type == SWCT_PB_PORT_CNP) {
        Json translations = Json::array();
        for (const Json& translation : TranslationTable({{}, {}, port}).rows) {
            translations.push_back(translation["localVid"].dump() + "->" + translation["relayVid"].dump());
        }
        add("vidTranslations", "VID translations", std::move(translations), Look::kComma);
    }
}

} // namespace tool
