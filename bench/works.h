// works.h - the one list of works.  A candidate is a class with the methods that it has an answer for; WorksOf turns
// them into what is measured.
//
// What a work gives back, and what it leaves in abOutput or in the region, must be the same for all candidates.
#pragma once

#include <cstring>
#include <functional>
#include <iterator>
#include <string>

#include "region/region_record.h"
#include "scene.h"

struct Work {
    std::string name;
    double wanted;  // the library's time in times of the limit's; 0 = none stated
    unsigned calls; // answers, steps or writes of one run: times are for one
    std::function<uint64_t()> run;
    std::size_t output = 0;                                // bytes of abOutput that it fills
    bool boChanges = false;                                // it changes the region
    std::function<void()> prepare = {};                    // before each run, not timed
    std::vector<const std::vector<uint8_t>*> apInput = {}; // what it reads beside the region
};

// The region as this process maps it.
extern SwctData* pRegion;
extern uint8_t abOutput[2U << 20];

// A call that stays a call, as one into a library is.
#ifdef __clang__
#define BENCH_CALLED __attribute__((noinline))
#else
#define BENCH_CALLED __attribute__((noipa))
#endif

// The keys of a Moid in one number, a store's key.
template <class Moid>
uint64_t NumberOf(const Moid& sMoid) noexcept
{
    uint64_t qwNumber = 0;
    if constexpr (requires { sMoid.bSlot; }) {
        unsigned slot = sMoid.bSlot;
        asm("" : "+r"(slot)); // one load of slot and port would wait for the two stores that made them
        qwNumber = slot << 8 | sMoid.bPort;
    }
    if constexpr (requires { sMoid.wVlanId; }) {
        qwNumber += uint64_t{sMoid.wVlanId} << 16;
    } else if constexpr (requires { sMoid.wCVid; }) {
        qwNumber = qwNumber << 16 | sMoid.wCVid;
    } else if constexpr (requires { sMoid.wLocalVid; }) {
        qwNumber = qwNumber << 16 | sMoid.wLocalVid;
    } else if constexpr (requires { sMoid.bIndex; }) {
        uint64_t qwQueue = sMoid.bQueue;
        asm("" : "+r"(qwQueue));
        qwNumber = qwNumber << 16 | qwQueue << 8 | sMoid.bIndex;
    }
    return qwNumber;
}

// A walk by 'next', from one position to the next by the pointer, or with a copy of the Moid in between.
template <class Moid, bool kCopies, class Next>
uint64_t Walk(uint16_t wClass, Next next)
{
    Moid sPosition{};
    sPosition.wClassId = wClass;
    uint64_t qwSum = 0;
    for (const Moid* p = next(&sPosition); p != nullptr; p = next(kCopies ? &sPosition : p)) {
        if constexpr (kCopies) {
            std::memcpy(&sPosition, p, sizeof sPosition);
            qwSum += NumberOf(sPosition);
        } else {
            qwSum += NumberOf(*p);
        }
    }
    return qwSum;
}

// The region of a walk with a registration, or a translation, at every 1000th key only.
inline void MakeGaps(bool boNetworkPorts)
{
    for (auto& aPort : pRegion->sPbData) {
        for (SwctPbData& sPort : aPort) {
            for (unsigned vid = 1; vid <= SWCT_PB_VID_MAX; ++vid) {
                if (vid % 1000 != 1 && boNetworkPorts) {
                    sPort.sNp.aVidTranslation[vid - 1] = {};
                } else if (vid % 1000 != 1) {
                    sPort.sCep.aCVidRegistration[vid - 1] = {};
                }
            }
        }
    }
}

// clang-format off
template <class Candidate>
std::vector<Work> WorksOf(Candidate& c, const Scene& sScene)
{
    constexpr double kKeyed = 1.5, kPass = 1.2, kWrite = 1.15; // wanted
    const Scene* pScene = &sScene;
    std::vector<Work> works;
    const bool boEdge = !sScene.boNetworkPorts;

    // A question for every key.
#define BENCH_KEYED(pName, Method)                                                       \
    if constexpr (requires { c.Method(Key{}); }) {                                       \
        works.push_back({pName, kKeyed, SWCT_PB_VID_MAX, [&c, pScene] {                  \
            uint64_t qwSum = 0;                                                          \
            for (const Key& sKey : pScene->aKey) { qwSum = qwSum * 3 + c.Method(sKey); } \
            return qwSum;                                                                \
        }});                                                                             \
    }
    if (boEdge) {
        BENCH_KEYED("a VLAN exists", VlanExists)
        BENCH_KEYED("a port is a member of a VLAN", IsMember)
        BENCH_KEYED("the VLAN record by copy", VlanByCopy)
        BENCH_KEYED("the VLAN record by pointer", VlanByPointer)
        BENCH_KEYED("a switch port's PVID", Pvid)
        BENCH_KEYED("the PEP of an S-VID", Pep)
        BENCH_KEYED("the effective registration of a C-VID", Registration)
        BENCH_KEYED("a VLAN's port list", PortList)
        BENCH_KEYED("a free provider edge port", FreePep)
    }

    // One question about one port, or the whole node, that goes over a table.
#define BENCH_PASS(boIs, pName, output, call)                                            \
    if constexpr (requires { c.call; }) {                                                \
        if (boIs) {                                                                      \
            works.push_back({pName, kPass, 1, [&c] { return uint64_t{c.call}; }, output}); \
        }                                                                                \
    }
    const std::size_t kBitmap = SWCT_VLAN_BITMAP_SIZE;
    BENCH_PASS(boEdge, "the VLAN bitmap of a port", kBitmap, PortVlans(kPort, abOutput))
    BENCH_PASS(boEdge, "the bitmap of all VLANs", kBitmap, Vlans(abOutput))
    BENCH_PASS(boEdge, "the S-VID bitmap of a CEP", kBitmap, CepSvids(kPort, abOutput))
    BENCH_PASS(boEdge, "the bitmap of C-VIDs of an S-VID", kBitmap, CVids(kPort, kPairVid, abOutput))
    BENCH_PASS(boEdge, "the bitmap of configured C-VLANs", kBitmap, CVlans(abOutput))
    BENCH_PASS(boEdge, "the bitmap of C-VIDs of the default S-VID", kBitmap, DefaultCVids(kPort, abOutput))
    BENCH_PASS(boEdge, "the bitmap of PEPs", kBitmap, PepSvids(kPort, abOutput))
    BENCH_PASS(boEdge, "the bitmap of QinQ VLANs", kBitmap, QinQVlans(abOutput))
    BENCH_PASS(boEdge, "a port is a member of any VLAN (none)", 0, AnyVlan(kPortOfNoVlan))
    BENCH_PASS(boEdge, "a port is a member of just one VLAN (the last)", 0, JustOneVlan(kPortOfOneVlan))
    BENCH_PASS(boEdge, "a VLAN has registrations (none)", 0, HasRegistrations(kUnusedVid))
    BENCH_PASS(boEdge, "a VLAN has registrations (the last)", 0, HasRegistrations(kLastVid))
    BENCH_PASS(boEdge, "a C-VLAN is relayed (none)", 0, IsRelayed(kUnusedVid))
    BENCH_PASS(boEdge, "a C-VLAN is relayed (the last)", 0, IsRelayed(kLastVid))
    BENCH_PASS(boEdge, "the C-VID of a relay C-VID (none)", 0, CVidOfRelay(kPort, kUnusedVid))
    BENCH_PASS(boEdge, "the C-VID of a relay C-VID (the last)", 0, CVidOfRelay(kPort, kRareVid))
    BENCH_PASS(boEdge, "the first C-VID of an S-VID (none)", 0, FirstCVid(kPort, kUnusedVid))
    BENCH_PASS(boEdge, "the first C-VID of an S-VID (the last)", 0, FirstCVid(kPort, kRareVid))
    BENCH_PASS(boEdge, "the second C-VID of an S-VID (none)", 0, SecondCVid(kPort, kUnusedVid))
    BENCH_PASS(boEdge, "the second C-VID of an S-VID (the last)", 0, SecondCVid(kPort, kPairVid))
    BENCH_PASS(!boEdge, "a VLAN has translations (none)", 0, HasTranslations(kUnusedVid))
    BENCH_PASS(!boEdge, "a VLAN has translations (the last)", 0, HasTranslations(kLastVid))
    BENCH_PASS(!boEdge, "the lowest local VID (none)", 0, LowestLocalVid(kPort, kUnusedVid))
    BENCH_PASS(!boEdge, "the lowest local VID (the last)", 0, LowestLocalVid(kPort, kRareVid))
    BENCH_PASS(!boEdge, "the second lowest local VID (the last)", 0, SecondLocalVid(kPort, kPairVid))
    BENCH_PASS(boEdge, "the last 97 records of a ring", 97 * sizeof(SwctQueueStatisticsHistorical), LastRecords(PortKey{1, 2}, abOutput))
    BENCH_PASS(boEdge, "the sum of a ring", 0, RingSum(PortKey{1, 2}))

    // A step of a walk: by the pointer that the step before gave, with a copy of the Moid, over large gaps.
#define BENCH_WALK(boIs, pName, Method, Moid, wClass, boGaps)                                            \
    if (const ClassData* pClass = sScene.Find(wClass); pClass != nullptr && (boIs)) {                    \
        const auto steps = static_cast<unsigned>((boGaps) ? 75 : pClass->aRow.size());                   \
        const std::string name = std::string("a step of the walk of ") + (pName);                        \
        if constexpr (requires { c.Method(static_cast<const Moid*>(nullptr)); }) {                       \
            const auto next = [&c](const Moid* p) { return c.Method(p); };                               \
            works.push_back({name, kPass, steps, [next] { return Walk<Moid, false>(wClass, next); }});   \
            if (boGaps) {                                                                                \
                works.back().boChanges = true;                                                           \
                works.back().prepare = [boEdge] { MakeGaps(!boEdge); };                                  \
            } else {                                                                                     \
                works.push_back({name + ", Moid copied", 0, steps, [next] { return Walk<Moid, true>(wClass, next); }}); \
            }                                                                                            \
        } else if constexpr (requires { c.ScanKeys(wClass); }) {                                         \
            if (!(boGaps)) {                                                                             \
                works.push_back({name, kPass, steps, [&c] { return c.ScanKeys(wClass); }});              \
            }                                                                                            \
        }                                                                                                \
    }
    BENCH_WALK(boEdge, "VLANs", NextVlan, SwctVlanMoid, SWCT_CLASS_VLAN, false)
    BENCH_WALK(boEdge, "VLAN ports", NextVlanPort, SwctVlanPortMoid, SWCT_CLASS_VLAN_PORT, false)
    BENCH_WALK(boEdge, "switch ports", NextSwitchPort, SwctPortMoid, SWCT_CLASS_SWITCH_PORT, false)
    BENCH_WALK(boEdge, "registrations", NextRegistration, SwctCVidRegistrationMoid, SWCT_CLASS_CVID_REGISTRATION, false)
    BENCH_WALK(boEdge, "registrations, gaps of 1000", NextRegistration, SwctCVidRegistrationMoid, SWCT_CLASS_CVID_REGISTRATION, true)
    BENCH_WALK(!boEdge, "translations", NextTranslation, SwctVidTranslationMoid, SWCT_CLASS_VID_TRANSLATION, false)
    BENCH_WALK(!boEdge, "translations, gaps of 1000", NextTranslation, SwctVidTranslationMoid, SWCT_CLASS_VID_TRANSLATION, true)
    BENCH_WALK(boEdge, "history records", NextHistory, SwctQueueStatisticsHistoricalMoid, SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M, false)

    // Single objects: 4094 registrations of a port, in ascending order.
    if constexpr (requires { c.DeleteRegistration(PortKey{}, uint16_t{}); }) {
        if (boEdge) {
            const SwctPbData* pStored = &pRegion->sPbData[kPort.bSlot % SWCT_SLOT_MAX][kPort.bPort - 1];
            const std::vector<SwctPbData> aKept{*pStored};
            works.push_back({"deleting 4094 registrations, ascending", 0, 1, [&c] {
                for (uint16_t wVid = 1; wVid <= SWCT_PB_VID_MAX; ++wVid) { c.DeleteRegistration(kPort, wVid); }
                return uint64_t{0};
            }});
            works.back().boChanges = true;
            works.back().prepare = [pTo = const_cast<SwctPbData*>(pStored), aKept] { *pTo = aKept[0]; };
        }
    }

    // The exchange with the CDBM: the same configuration again, two in turn, and reading it.
    for (std::size_t i = 0; i < sScene.aClass.size(); ++i) {
        const ClassData* pClass = &sScene.aClass[i];
        const ClassData* pOther = &sScene.aOther[i];
        if (pClass->wClass == SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M ||
            sScene.boNetworkPorts != (pClass->wClass == SWCT_CLASS_VID_TRANSLATION)) {
            continue;
        }
        const std::string name = "class " + std::to_string(pClass->wClass);
        if constexpr (requires { c.Write(*pClass); }) {
            if (c.Writes(pClass->wClass)) {
                works.push_back({"write " + name + ", unchanged", kWrite, 1, [&c, pClass] { c.Write(*pClass); return uint64_t{0}; }});
                works.back().boChanges = true;
                works.back().apInput = {&pClass->abRequest};
                works.push_back({"write " + name + ", two in turn", kWrite, 2, [&c, pClass, pOther] {
                    c.Write(*pOther);
                    c.Write(*pClass);
                    return uint64_t{0};
                }});
                works.back().boChanges = true;
                works.back().apInput = {&pClass->abRequest, &pOther->abRequest};
            }
        }
        if constexpr (requires { c.Read(*pClass, abOutput); }) {
            if (c.Reads(pClass->wClass)) {
                works.push_back({"read " + name, kPass, 1, [&c, pClass] { c.Read(*pClass, abOutput); return uint64_t{0}; },
                                 pClass->abRequest.size() - pClass->bodySize});
            }
        }
    }
    return works;
}
// clang-format on
