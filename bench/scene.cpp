#include "scene.h"

#include <algorithm>
#include <cstdio>
#include <random>

#include "swct/swct.h"

namespace {

// Adds a record; 'sRecord' begins with its Moid, if its class has one.
template <class Record>
void Add(ClassData& sClass, uint32_t dwKey, uint32_t dwIndex, const Record& sRecord)
{
    if constexpr (requires { sRecord.sMoid; }) {
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
            visit(PortKey{bSlot, bPort});
        }
    }
}

constexpr bool IsSame(PortKey sA, PortKey sB) noexcept
{
    return PortField(sA) == PortField(sB);
}

// One configuration: which objects there are, and their values.
struct Plan {
    Shape eShape;
    uint32_t dwOther; // 1 = the second configuration

    // A number that has no period; regular data take 'regular' in its place.
    uint32_t Draw(uint32_t dwWhat, uint32_t dwKey, uint32_t dwRegular) const
    {
        if (eShape == Shape::kRegular) {
            return dwRegular + dwOther;
        }
        uint64_t qw = (uint64_t{dwWhat + 16 * dwOther} << 32 | dwKey) + 0x9E3779B97F4A7C15U;
        qw = (qw ^ qw >> 30) * 0xBF58476D1CE4E5B9U;
        qw = (qw ^ qw >> 27) * 0x94D049BB133111EBU;
        return static_cast<uint32_t>(qw >> 33);
    }

    // All objects; of a second configuration or of random data all but one in sixteen; of sparse data one in sixteen.
    bool Has(uint32_t dwWhat, uint32_t dwKey) const
    {
        if (eShape == Shape::kRegular) {
            return dwOther == 0 || dwKey % 16 != 7;
        }
        return (Draw(dwWhat, dwKey, 0) % 16 == 0) == (eShape == Shape::kSparse);
    }

    unsigned Peps() const
    {
        return eShape == Shape::kSparse ? 4 : SWCT_PEP_MAX;
    }

    // The S-VIDs of the provider edge ports, the same on every port.
    uint16_t Svid(unsigned pep) const
    {
        constexpr uint16_t kSpecial[] = {kPairVid, kRareVid, kLastVid};
        return pep > 13 ? kSpecial[pep - 14] : static_cast<uint16_t>(200 * pep + Plan{eShape, 0}.Draw(1, pep, 0) % 199);
    }

    // S-VID and relay VID of a C-VID or local VID: one of a few, or one of many; 0 = no such object.
    uint16_t VidOf(PortKey sPort, uint16_t wVid, bool boMany) const
    {
        const bool boLastPort = IsSame(sPort, kPortOfOneVlan);
        if (wVid == SWCT_PB_VID_MAX) {
            return boLastPort ? kLastVid : kRareVid;
        }
        if (wVid == 1 || wVid == SWCT_PB_VID_MAX - 1) {
            return kPairVid;
        }
        const uint32_t dwKey = ObjectKey(sPort, wVid);
        if (!Has(2, dwKey)) {
            return 0;
        }
        return boMany ? static_cast<uint16_t>(1 + Draw(3, dwKey, wVid) % 3990) : Svid(1 + Draw(3, dwKey, wVid) % 13);
    }

    bool HasVlan(uint16_t wVid) const
    {
        return wVid == 1 || wVid == SWCT_PB_VID_MAX || Has(4, wVid);
    }

    // Of regular data every port, of random data one in two, of sparse data one in eight.
    bool IsMember(uint16_t wVid, PortKey sPort) const
    {
        if (IsSame(sPort, kPortOfOneVlan) || IsSame(sPort, kPortOfNoVlan)) {
            return IsSame(sPort, kPortOfOneVlan) && wVid == SWCT_PB_VID_MAX;
        }
        return Draw(5, ObjectKey(sPort, wVid), 0) % (eShape == Shape::kSparse ? 8 : 2) == 0 ||
               eShape == Shape::kRegular;
    }
};

ClassData Class(uint16_t wClass)
{
    return {wClass, 0, 0, {}, {}};
}

void AddVlanClasses(std::vector<ClassData>& aClass, const Plan& sPlan)
{
    ClassData sVlans = Class(SWCT_CLASS_VLAN);
    ClassData sMembers = Class(SWCT_CLASS_VLAN_PORT);
    ClassData sInnerTags = Class(SWCT_CLASS_VLAN_IF_INNER_TAG);
    for (uint16_t wVid = 1; wVid <= SWCT_PB_VID_MAX; ++wVid) {
        if (!sPlan.HasVlan(wVid)) {
            continue;
        }
        SwctVlanRecord sVlan{{SWCT_CLASS_VLAN, wVid},
                             {wVid, 0, 2, {}, {}, 0, 0, 0, 1, sPlan.Draw(6, wVid, wVid) % 2U, {}}};
        std::snprintf(sVlan.sBody.acName, sizeof sVlan.sBody.acName, "vlan-%hu%s", wVid,
                      &"-other"[6 - 6 * sPlan.dwOther]);
        Add(sVlans, wVid, 0, sVlan);
        Add(sInnerTags, wVid, 0,
            SwctVlanIfInnerTagRecord{{SWCT_CLASS_VLAN_IF_INNER_TAG, wVid},
                                     {{}, SWCT_INNER_TAG_ON, wVid, 1, 3 + sPlan.dwOther, 0}});
        ForEachPort([&](PortKey s) {
            if (sPlan.IsMember(wVid, s)) {
                Add(sMembers, uint32_t{wVid} << 16 | PortField(s), PortField(s),
                    SwctVlanPortRecord{{SWCT_CLASS_VLAN_PORT, wVid, s.bSlot, s.bPort},
                                       {s.bSlot, s.bPort, 1, 1 + sPlan.Draw(7, ObjectKey(s, wVid), wVid) % 2U}});
            }
        });
    }
    aClass.insert(aClass.end(), {sVlans, sMembers, sInnerTags});
}

void AddPortClasses(std::vector<ClassData>& aClass, bool boNetworkPorts)
{
    ClassData sPorts = Class(SWCT_CLASS_SWITCH_PORT);
    ClassData sQinQPorts = Class(SWCT_CLASS_QINQ_PORT);
    ClassData sDefaults = Class(SWCT_CLASS_DEFAULT_CVID_REGISTRATION);
    const uint32_t dwType = boNetworkPorts ? SWCT_PB_PORT_PNP : SWCT_PB_PORT_CEP;
    ForEachPort([&](PortKey s) {
        const auto wPvid = static_cast<uint16_t>(s.bSlot * 100 + s.bPort);
        Add(sPorts, ObjectKey(s, 0), 0,
            SwctSwitchPortRecord{{SWCT_CLASS_SWITCH_PORT, s.bSlot, s.bPort}, {wPvid, 1, 2, 1, dwType, {}, 2}});
        Add(sQinQPorts, ObjectKey(s, 0), 0,
            SwctQinQPortRecord{{SWCT_CLASS_QINQ_PORT, s.bSlot, s.bPort}, {1, wPvid, 1, 1, 1, 1}});
        Add(sDefaults, ObjectKey(s, 0), 0,
            SwctDefaultCVidRegistrationRecord{{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, s.bSlot, s.bPort},
                                              {kDefaultVid, 1}});
    });
    aClass.insert(aClass.end(), {sPorts, sQinQPorts});
    if (!boNetworkPorts) {
        aClass.push_back(sDefaults);
    }
}

// Provider edge ports before registrations: the summaries follow their index.
void AddCustomerEdgeClasses(std::vector<ClassData>& aClass, const Plan& sPlan)
{
    ClassData sPeps = Class(SWCT_CLASS_PROVIDER_EDGE_PORT);
    ClassData sPriorities = Class(SWCT_CLASS_SERVICE_PRIORITY_REGENERATION);
    ClassData sRegistrations = Class(SWCT_CLASS_CVID_REGISTRATION);
    ForEachPort([&](PortKey s) {
        for (uint16_t wPep = 1; wPep <= sPlan.Peps(); ++wPep) {
            const uint16_t wSvid = sPlan.Svid(wPep);
            Add(sPeps, ObjectKey(s, wPep), wSvid,
                SwctProviderEdgePortRecord{{SWCT_CLASS_PROVIDER_EDGE_PORT, s.bSlot, s.bPort, wPep}, {wSvid, {}}});
            for (uint32_t dw = 1; dw <= SWCT_PRIORITY_MAX; ++dw) {
                Add(sPriorities, ObjectKey(s, uint32_t{wPep} << 8 | dw), 0,
                    SwctServicePriorityRegenerationRecord{
                        {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, s.bSlot, s.bPort, wPep, dw},
                        {dw, sPlan.dwOther != 0 ? dw : 9 - dw}});
            }
        }
        for (uint16_t wVid = 1; wVid <= SWCT_PB_VID_MAX; ++wVid) {
            const uint16_t wSvid = sPlan.VidOf(s, wVid, false);
            if (wSvid != 0) {
                const uint16_t wRelay = sPlan.VidOf(s, wVid, true);
                const uint32_t dwRelays = sPlan.Draw(8, ObjectKey(s, wVid), 1) % 2 | (wRelay > 4000 ? 1U : 0U);
                Add(sRegistrations, ObjectKey(s, wVid), wSvid,
                    SwctCVidRegistrationRecord{{SWCT_CLASS_CVID_REGISTRATION, s.bSlot, s.bPort, wVid},
                                               {wVid, wSvid, 0, 1, wRelay, static_cast<uint8_t>(dwRelays), {}}});
            }
        }
    });
    aClass.insert(aClass.end(), {sPeps, sRegistrations, sPriorities});
}

void AddTranslations(std::vector<ClassData>& aClass, const Plan& sPlan)
{
    ClassData sTranslations = Class(SWCT_CLASS_VID_TRANSLATION);
    ForEachPort([&](PortKey s) {
        for (uint16_t wVid = 1; wVid <= SWCT_PB_VID_MAX; ++wVid) {
            const uint16_t wRelay = sPlan.VidOf(s, wVid, true);
            if (wRelay != 0) {
                Add(sTranslations, ObjectKey(s, wVid), wRelay,
                    SwctVidTranslationRecord{{SWCT_CLASS_VID_TRANSLATION, s.bSlot, s.bPort, wVid},
                                             {wVid, wRelay, {}, 3}});
            }
        }
    });
    aClass.push_back(sTranslations);
}

// Every ring full, its current period in the middle.
void AddHistory(std::vector<ClassData>& aClass)
{
    ClassData sHistory = Class(SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M);
    ForEachPort([&](PortKey s) {
        for (uint8_t bQueue = 1; s.bSlot <= SWCT_HISTORY_SLOTS && bQueue < SWCT_HISTORY_QUEUES; ++bQueue) {
            for (uint8_t bIndex = 0; bIndex < SWCT_HISTORY_15M_RECORDS; ++bIndex) {
                Add(sHistory, ObjectKey(s, uint32_t{bQueue} << 8 | bIndex), 0,
                    SwctQueueStatisticsHistorical{{{0xFFFFFFF0U, bIndex}}, {1U + bIndex, 0}, bIndex == 48, 0});
            }
        }
    });
    aClass.push_back(sHistory);
}

std::vector<ClassData> MakeClasses(const Plan& sPlan, bool boNetworkPorts)
{
    std::vector<ClassData> aClass{Class(SWCT_CLASS_SWITCH), Class(SWCT_CLASS_HRLB)};
    SwctSwitchAttributes sAttributes{};
    sAttributes.dwAgeingTime = 300 + sPlan.dwOther;
    sAttributes.dwBridgeVlanEtherType = 3;
    sAttributes.dwSwitchMode = SWCT_SWITCH_MODE_PROVIDER_BRIDGE;
    Add(aClass[0], 1, 0, sAttributes);
    Add(aClass[1], 1, 0, uint32_t{2});
    AddPortClasses(aClass, boNetworkPorts);
    AddVlanClasses(aClass, sPlan);
    if (boNetworkPorts) {
        AddTranslations(aClass, sPlan);
    } else {
        AddCustomerEdgeClasses(aClass, sPlan);
    }
    AddHistory(aClass);
    for (ClassData& sClass : aClass) {
        Finish(sClass);
    }
    return aClass;
}

} // namespace

const ClassData* Scene::Find(uint16_t wClass) const
{
    const auto found =
        std::find_if(aClass.begin(), aClass.end(), [wClass](const ClassData& s) { return s.wClass == wClass; });
    return found != aClass.end() ? &*found : nullptr;
}

Scene MakeScene(Shape eShape, bool boNetworkPorts)
{
    const Plan sPlan{eShape, 0};
    Scene sScene{
        eShape, boNetworkPorts, MakeClasses(sPlan, boNetworkPorts), MakeClasses(Plan{eShape, 1}, boNetworkPorts), {}};
    for (unsigned i = 0; i < SWCT_PB_VID_MAX; ++i) {
        sScene.aKey.push_back({static_cast<uint8_t>(1 + i % 3), static_cast<uint8_t>(1 + i / 3 % 5),
                               static_cast<uint16_t>(1 + i), sPlan.Svid(1 + i % SWCT_PEP_MAX)});
    }
    std::shuffle(sScene.aKey.begin(), sScene.aKey.end(), std::mt19937(1));
    return sScene;
}
