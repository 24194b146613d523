#include "data.h"

#include <cstdio>
#include <cstring>

#include "swct/swct.h"

namespace {

// Adds a record; 'sRecord' begins with its Moid, if its class has one.
template <class Record>
void Add(ClassData& sClass, uint32_t dwKey, uint32_t dwIndex, const Record& sRecord)
{
    if constexpr (requires { sRecord.sMoid; }) {
        sClass.wClass = sRecord.sMoid.wClassId;
        sClass.moidSize = sizeof sRecord.sMoid;
    }
    sClass.bodySize = sizeof sRecord - sClass.moidSize;
    const auto* pBytes = reinterpret_cast<const uint8_t*>(&sRecord);
    sClass.abRequest.insert(sClass.abRequest.end(), pBytes, pBytes + sizeof sRecord);
    sClass.aRow.push_back({dwKey, dwIndex, nullptr});
}

// Ends the request, after which its bytes stay where they are.
void Finish(ClassData& sClass)
{
    const std::size_t recordSize = sClass.moidSize + sClass.bodySize;
    sClass.abRequest.resize(sClass.abRequest.size() + recordSize);
    for (std::size_t i = 0; i < sClass.aRow.size(); ++i) {
        sClass.aRow[i].pBody = sClass.abRequest.data() + i * recordSize + sClass.moidSize;
    }
}

template <class Visit>
void ForEachPort(Visit visit)
{
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            visit(bSlot, bPort);
        }
    }
}

// Six ports of each VLAN, or all fifteen.
bool IsMember(uint16_t wVid, PortKey sPort, bool boAll)
{
    const bool boLast = wVid == SWCT_PB_VID_MAX;
    return boAll || sPort.bSlot == 1 || (sPort.bSlot == 2 && sPort.bPort == 1 && !boLast) ||
           (PortField(sPort) == PortField(kPortOfOneVlan) && boLast);
}

void AddVlanClasses(std::vector<ClassData>& aClass, bool boAllMembers)
{
    ClassData sVlans{};
    ClassData sInnerTags{};
    ClassData sMembers{};
    for (uint16_t wVid = 1; wVid <= SWCT_PB_VID_MAX; ++wVid) {
        SwctVlanRecord sVlan{{SWCT_CLASS_VLAN, wVid}, {wVid, 0, 2, {}, {}, 0, 0, 0, 1, wVid % 2U, {}}};
        std::snprintf(sVlan.sBody.acName, sizeof sVlan.sBody.acName, "vlan-%hu", wVid);
        Add(sVlans, wVid, 0, sVlan);
        Add(sInnerTags, wVid, 0,
            SwctVlanIfInnerTagRecord{{SWCT_CLASS_VLAN_IF_INNER_TAG, wVid}, {{}, SWCT_INNER_TAG_ON, wVid, 1, 3, 0}});
        ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
            if (IsMember(wVid, {bSlot, bPort}, boAllMembers)) {
                const uint32_t dwPort = PortField({bSlot, bPort});
                Add(sMembers, uint32_t{wVid} << 16 | dwPort, dwPort,
                    SwctVlanPortRecord{{SWCT_CLASS_VLAN_PORT, wVid, bSlot, bPort}, {bSlot, bPort, 1, 1U + wVid % 2U}});
            }
        });
    }
    aClass.insert(aClass.end(), {sVlans, sMembers, sInnerTags});
}

void AddPortClasses(std::vector<ClassData>& aClass, uint32_t dwPbPortType)
{
    ClassData sPorts{};
    ClassData sQinQPorts{};
    ClassData sDefaults{};
    ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
        const auto wPvid = static_cast<uint16_t>(bSlot * 100 + bPort);
        const uint32_t dwKey = ObjectKey({bSlot, bPort}, 0);
        Add(sPorts, dwKey, 0,
            SwctSwitchPortRecord{{SWCT_CLASS_SWITCH_PORT, bSlot, bPort}, {wPvid, 1, 2, 1, dwPbPortType, {}, 2}});
        Add(sQinQPorts, dwKey, 0, SwctQinQPortRecord{{SWCT_CLASS_QINQ_PORT, bSlot, bPort}, {1, wPvid, 1, 1, 1, 1}});
        Add(sDefaults, dwKey, 0,
            SwctDefaultCVidRegistrationRecord{{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, bSlot, bPort}, {4095, 1}});
    });
    aClass.insert(aClass.end(), {sPorts, sQinQPorts});
    if (dwPbPortType == SWCT_PB_PORT_CEP) {
        aClass.push_back(sDefaults);
    }
}

// Provider edge ports before registrations: the summaries follow their index.
void AddCustomerEdgeClasses(std::vector<ClassData>& aClass)
{
    ClassData sPeps{};
    ClassData sPriorities{};
    ClassData sRegistrations{};
    ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
        const PortKey sPort{bSlot, bPort};
        for (uint16_t wPep = 1; wPep <= SWCT_PEP_MAX; ++wPep) {
            Add(sPeps, ObjectKey(sPort, wPep), SvidOf(wPep),
                SwctProviderEdgePortRecord{{SWCT_CLASS_PROVIDER_EDGE_PORT, bSlot, bPort, wPep}, {SvidOf(wPep), {}}});
            for (uint32_t dw = 1; dw <= SWCT_PRIORITY_MAX; ++dw) {
                Add(sPriorities, ObjectKey(sPort, uint32_t{wPep} << 8 | dw), 0,
                    SwctServicePriorityRegenerationRecord{
                        {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, bSlot, bPort, wPep, dw}, {dw, 9 - dw}});
            }
        }
        for (uint16_t wVid = 1; wVid <= SWCT_PB_VID_MAX; ++wVid) {
            Add(sRegistrations, ObjectKey(sPort, wVid), SvidOf(wVid),
                SwctCVidRegistrationRecord{{SWCT_CLASS_CVID_REGISTRATION, bSlot, bPort, wVid},
                                           {wVid, SvidOf(wVid), 0, 1, wVid, 1, {}}});
        }
    });
    aClass.insert(aClass.end(), {sPeps, sRegistrations, sPriorities});
}

void AddTranslations(std::vector<ClassData>& aClass)
{
    ClassData sTranslations{};
    ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
        for (uint16_t wVid = 1; wVid <= SWCT_PB_VID_MAX; ++wVid) {
            const auto wRelayVid = static_cast<uint16_t>(1 + wVid % 4000);
            Add(sTranslations, ObjectKey({bSlot, bPort}, wVid), wRelayVid,
                SwctVidTranslationRecord{{SWCT_CLASS_VID_TRANSLATION, bSlot, bPort, wVid}, {wVid, wRelayVid, {}, 3}});
        }
    });
    aClass.push_back(sTranslations);
}

// Every ring full, its current period in the middle.
void AddHistory(std::vector<ClassData>& aClass)
{
    ClassData sHistory{SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M, 0, 0, {}, {}};
    ForEachPort([&](uint8_t bSlot, uint8_t bPort) {
        for (uint8_t bQueue = 1; bSlot <= SWCT_HISTORY_SLOTS && bQueue < SWCT_HISTORY_QUEUES; ++bQueue) {
            for (uint8_t bIndex = 0; bIndex < SWCT_HISTORY_15M_RECORDS; ++bIndex) {
                SwctQueueStatisticsHistorical sRecord{{{0xFFFFFFF0U, bIndex}}, {1U + bIndex, 0}, bIndex == 48, 0};
                Swct_WriteQueueStatisticsHistorical15m(bSlot, bPort, bQueue, bIndex, &sRecord);
                Add(sHistory, ObjectKey({bSlot, bPort}, uint32_t{bQueue} << 8 | bIndex), 0, sRecord);
            }
        }
    });
    aClass.push_back(sHistory);
}

} // namespace

std::vector<ClassData> BuildScene(Scene eScene)
{
    Swct_Init();
    SwctSwitchAttributes sAttributes{};
    Swct_GetSwitchAttributes(&sAttributes);
    std::vector<ClassData> aClass{{SWCT_CLASS_SWITCH, 0, 0, {}, {}}, {SWCT_CLASS_HRLB, 0, 0, {}, {}}};
    Add(aClass[0], 1, 0, sAttributes);
    Add(aClass[1], 1, 0, uint32_t{2});
    AddPortClasses(aClass, eScene == Scene::kNetworkPorts ? SWCT_PB_PORT_PNP : SWCT_PB_PORT_CEP);
    AddVlanClasses(aClass, eScene == Scene::kFullClasses);
    if (eScene == Scene::kNetworkPorts) {
        AddTranslations(aClass);
    } else {
        AddCustomerEdgeClasses(aClass);
    }
    for (ClassData& sClass : aClass) {
        Finish(sClass);
        Swct_SetConfig(sClass.wClass, sClass.abRequest.data());
    }
    AddHistory(aClass);
    Finish(aClass.back());
    return aClass;
}
