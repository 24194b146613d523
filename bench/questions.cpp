// Keyed questions, bitmaps and passes over a table.
#include <algorithm>
#include <cstring>
#include <random>

#include "swct/swct.h"
#include "works.h"

SwctData* pRegion;

namespace {

// Keys in an order that no prefetcher guesses.
struct Key {
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wVid;
};

const std::vector<Key>& Keys()
{
    static const std::vector<Key> aKey = [] {
        std::vector<Key> aMade;
        for (unsigned i = 0; i < SWCT_PB_VID_MAX; ++i) {
            aMade.push_back(
                {static_cast<uint8_t>(1 + i % 3), static_cast<uint8_t>(1 + i / 3 % 5), static_cast<uint16_t>(1 + i)});
        }
        std::shuffle(aMade.begin(), aMade.end(), std::mt19937(1));
        return aMade;
    }();
    return aKey;
}

template <auto kAsk>
uint64_t ForKeys()
{
    uint64_t qwSum = 0;
    for (const Key& sKey : Keys()) {
        qwSum += kAsk(sKey);
    }
    return qwSum;
}

template <class Ask>
Work KeyedWork(const char* pName, uint64_t (*library)(), uint64_t (*limit)(), Ask ask)
{
    const auto rival = [ask](Store& store) {
        uint64_t qwSum = 0;
        for (const Key& sKey : Keys()) {
            qwSum += ask(store, sKey);
        }
        return qwSum;
    };
    return {pName, kKeyed, SWCT_PB_VID_MAX, library, limit, rival};
}

using Bitmap = uint8_t[SWCT_VLAN_BITMAP_SIZE];

uint64_t SumOf(const Bitmap& abBitmap)
{
    uint64_t qwSum = 0;
    for (std::size_t i = 0; i < sizeof abBitmap; i += sizeof(uint64_t)) {
        qwSum = qwSum * 3 + Load<uint64_t>(abBitmap + i);
    }
    return qwSum;
}

void Set(uint8_t* pBitmap, unsigned vid) noexcept
{
    pBitmap[vid / 8] = static_cast<uint8_t>(pBitmap[vid / 8] | 1U << vid % 8);
}

const SwctCepData& Cep(uint8_t bSlot, uint8_t bPort) noexcept
{
    return pRegion->sPbData[bSlot % SWCT_SLOT_MAX][bPort - 1].sCep;
}

bool IsMember(const SwctVlanEntry& sEntry, uint8_t bSlot, uint8_t bPort) noexcept
{
    return sEntry.boExists != 0 && sEntry.adwMembership[bSlot - 1][bPort - 1] != 0;
}

BENCH_CALLED uint32_t DoesVlanExist(uint16_t wVlanId) noexcept
{
    return pRegion->sVlan[wVlanId - 1].boExists;
}

BENCH_CALLED uint32_t IsPortMemberOfVlanId(uint8_t bSlot, uint8_t bPort, uint16_t wVlanId) noexcept
{
    return IsMember(pRegion->sVlan[wVlanId - 1], bSlot, bPort) ? 1 : 0;
}

BENCH_CALLED void ReadVlan(SwctVlanMoid sMoid, SwctVlan* pVlan) noexcept
{
    std::memcpy(pVlan, &pRegion->sVlan[sMoid.wVlanId - 1].sVlanData, sizeof *pVlan);
    pVlan->dwStatus = 2;
    pVlan->sMacAddress = pRegion->sSwitch.sAttributes.sL3MacAddress;
}

BENCH_CALLED const SwctVlan* GetVlanInfo(uint16_t wVlanId) noexcept
{
    return &pRegion->sVlan[wVlanId - 1].sVlanData;
}

BENCH_CALLED uint16_t GetPvid(uint8_t bSlot, uint8_t bPort) noexcept
{
    return pRegion->sSwitchPort[bSlot % SWCT_SLOT_MAX][bPort - 1].wPvid;
}

BENCH_CALLED uint32_t GetPep(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, SwctProviderEdgePort* pRecord) noexcept
{
    const SwctCepData& sCep = Cep(bSlot, bPort);
    const uint16_t wPepIndex = sCep.awPepIndexBySvid[wSvid - 1];
    if (wPepIndex == 0) {
        return 0;
    }
    std::memcpy(pRecord, &sCep.aProviderEdgePort[wPepIndex - 1], sizeof *pRecord);
    return 1;
}

BENCH_CALLED uint32_t GetRegistration(uint8_t bSlot, uint8_t bPort, uint16_t wCVid,
                                      SwctCVidRegistration* pRecord) noexcept
{
    const SwctCVidRegistration& sStored = Cep(bSlot, bPort).aCVidRegistration[wCVid - 1];
    if (sStored.wSvid == 0) {
        return 0;
    }
    std::memcpy(pRecord, &sStored, sizeof *pRecord);
    return 1;
}

BENCH_CALLED void GetPortMembers(uint16_t wVlanId, SwctPortList* pPortList) noexcept
{
    std::memset(pPortList, 0, sizeof *pPortList);
    uint8_t bCount = 0;
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            if (IsMember(pRegion->sVlan[wVlanId - 1], bSlot, bPort)) {
                pPortList->asPort[bCount++] = {bSlot, bPort, 0};
            }
        }
    }
    pPortList->bNbrOfPorts = bCount;
}

BENCH_CALLED void GetPortVlans(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) noexcept
{
    std::memset(pBitmap, 0, sizeof(Bitmap));
    for (unsigned vid = 1; vid <= SWCT_VLAN_MAX; ++vid) {
        if (IsMember(pRegion->sVlan[vid - 1], bSlot, bPort)) {
            Set(pBitmap, vid);
        }
    }
}

BENCH_CALLED void GetCepSvids(uint8_t bSlot, uint8_t bPort, uint8_t* pBitmap) noexcept
{
    for (const SwctCVidRegistration& sRecord : Cep(bSlot, bPort).aCVidRegistration) {
        const uint16_t wSvid = sRecord.wSvid;
        if (wSvid != 0 && wSvid <= SWCT_VLAN_MAX) {
            Set(pBitmap, wSvid);
        }
    }
}

BENCH_CALLED uint32_t GetCVids(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, uint8_t* pBitmap) noexcept
{
    std::memset(pBitmap, 0, sizeof(Bitmap));
    uint32_t dwAny = 0;
    for (unsigned vid = 1; vid <= SWCT_PB_VID_MAX; ++vid) {
        const SwctCVidRegistration& sRecord = Cep(bSlot, bPort).aCVidRegistration[vid - 1];
        if (sRecord.wCVid != 0 && sRecord.wSvid == wSvid) {
            Set(pBitmap, vid);
            dwAny = 1;
        }
    }
    return dwAny;
}

BENCH_CALLED uint32_t IsMemberOfAny(uint8_t bSlot, uint8_t bPort) noexcept
{
    for (const SwctVlanEntry& sEntry : pRegion->sVlan) {
        if (IsMember(sEntry, bSlot, bPort)) {
            return 1;
        }
    }
    return 0;
}

BENCH_CALLED uint32_t IsMemberOfJustOne(uint8_t bSlot, uint8_t bPort, uint16_t* pwVlanId) noexcept
{
    *pwVlanId = 0;
    for (uint16_t wVlanId = 1; wVlanId <= SWCT_VLAN_MAX; ++wVlanId) {
        if (IsMember(pRegion->sVlan[wVlanId - 1], bSlot, bPort)) {
            if (*pwVlanId != 0) {
                return 0;
            }
            *pwVlanId = wVlanId;
        }
    }
    return *pwVlanId != 0 ? 1 : 0;
}

// Whether a record in a table of any port's data satisfies 'test'.
template <class Table, class Test>
uint32_t DoesAny(Table table, Test test) noexcept
{
    for (const auto& aPort : pRegion->sPbData) {
        for (const SwctPbData& sPort : aPort) {
            for (const auto& sRecord : table(sPort)) {
                if (test(sRecord)) {
                    return 1;
                }
            }
        }
    }
    return 0;
}

BENCH_CALLED uint32_t HasRegistrations(SwctVlanMoid sVlan) noexcept
{
    return DoesAny(
        [](const SwctPbData& s) -> auto& { return s.sCep.aCVidRegistration; },
        [sVlan](const auto& s) { return s.wCVid != 0 && s.wSvid == sVlan.wVlanId; });
}

BENCH_CALLED uint32_t HasTranslations(SwctVlanMoid sVlan) noexcept
{
    return DoesAny(
        [](const SwctPbData& s) -> auto& { return s.sNp.aVidTranslation; },
        [sVlan](const auto& s) { return s.wLocalVid != 0 && s.wRelayVid == sVlan.wVlanId; });
}

// The questions, asked of the library or of the functions above.
template <auto kAsk>
constexpr auto kVlan = [](Key sKey) { return uint64_t{kAsk(sKey.wVid)}; };
template <auto kAsk>
constexpr auto kMember = [](Key sKey) { return uint64_t{kAsk(sKey.bSlot, sKey.bPort, sKey.wVid)}; };
template <auto kAsk>
constexpr auto kCopy = [](Key sKey) {
    SwctVlan sVlan;
    kAsk({SWCT_CLASS_VLAN, sKey.wVid}, &sVlan);
    return uint64_t{sVlan.wVlanId} + sVlan.dwStatus;
};
template <auto kAsk>
constexpr auto kPointer = [](Key sKey) { return uint64_t{kAsk(sKey.wVid)->wVlanId} + 2; };
template <auto kAsk>
constexpr auto kPvid = [](Key sKey) { return uint64_t{kAsk(sKey.bSlot, sKey.bPort)}; };
template <auto kAsk>
constexpr auto kPep = [](Key sKey) {
    SwctProviderEdgePort sRecord;
    return kAsk(sKey.bSlot, sKey.bPort, SvidOf(sKey.wVid), &sRecord) + uint64_t{sRecord.wSvid};
};
template <auto kAsk>
constexpr auto kRegistration = [](Key sKey) {
    SwctCVidRegistration sRecord;
    return kAsk(sKey.bSlot, sKey.bPort, sKey.wVid, &sRecord) + uint64_t{sRecord.wSvid};
};
template <auto kAsk>
constexpr auto kPortList = [](Key sKey) {
    SwctPortList sList;
    kAsk(sKey.wVid, &sList);
    return uint64_t{sList.bNbrOfPorts} + sList.asPort[5].bPort;
};
template <auto kAsk, PortKey kPort>
uint64_t PortBitmap()
{
    Bitmap abBitmap = {};
    kAsk(kPort.bSlot, kPort.bPort, abBitmap);
    return SumOf(abBitmap);
}
template <auto kAsk>
uint64_t CVidBitmap()
{
    Bitmap abBitmap;
    return kAsk(1, 1, SvidOf(1), abBitmap) + SumOf(abBitmap);
}
template <auto kAsk>
uint64_t AnyVlan()
{
    return kAsk(kPortOfNoVlan.bSlot, kPortOfNoVlan.bPort);
}
template <auto kAsk>
uint64_t JustOneVlan()
{
    uint16_t wVlanId = 0;
    return kAsk(kPortOfOneVlan.bSlot, kPortOfOneVlan.bPort, &wVlanId) + uint64_t{wVlanId};
}
template <auto kAsk>
uint64_t UnusedVlan()
{
    return kAsk({SWCT_CLASS_VLAN, kUnusedVid});
}

constexpr uint32_t kAll = UINT32_MAX;

uint32_t MemberKey(Key sKey)
{
    return uint32_t{sKey.wVid} << 16 | PortField({sKey.bSlot, sKey.bPort});
}

const uint8_t* FindPep(Store& store, Key sKey)
{
    const PortKey sPort{sKey.bSlot, sKey.bPort};
    uint32_t dwPep = 0;
    store.Find(469, SvidOf(sKey.wVid), ObjectKey(sPort, 0), ObjectKey(sPort, 0xFFFF), [&dwPep](uint32_t dwKey) {
        dwPep = dwKey;
        return false;
    });
    return store.Get(469, dwPep);
}

// The bits of the keys that an index gives, 'shift' bits down.
uint64_t FoundBits(Store& store, uint16_t wClass, uint32_t dwIndex, uint32_t dwFirst, uint32_t dwLast, unsigned shift)
{
    Bitmap abBitmap = {};
    store.Find(wClass, dwIndex, dwFirst, dwLast, [&](uint32_t dwKey) {
        Set(abBitmap, dwKey >> shift & 0xFFF);
        return true;
    });
    return SumOf(abBitmap);
}

// How many rows, two at the most, have an index value, and the VLAN of the last one.
uint64_t CountUpToTwo(Store& store, uint16_t wClass, uint32_t dwIndex)
{
    unsigned count = 0;
    uint32_t dwFound = 0;
    store.Find(wClass, dwIndex, 0, kAll, [&](uint32_t dwKey) {
        dwFound = dwKey;
        return ++count < 2;
    });
    return count == 1 ? 1 + uint64_t{dwFound >> 16} : 0;
}

} // namespace

std::vector<Work> Questions()
{
    return {
        KeyedWork("a VLAN exists", ForKeys<kVlan<Swct_DoesVlanExist>>, ForKeys<kVlan<DoesVlanExist>>,
                  [](Store& store, Key sKey) { return uint64_t{store.Get(205, sKey.wVid) != nullptr}; }),
        KeyedWork("a port is a member of a VLAN", ForKeys<kMember<Swct_IsPortMemberOfVlanId>>,
                  ForKeys<kMember<IsPortMemberOfVlanId>>,
                  [](Store& store, Key sKey) { return uint64_t{store.Get(206, MemberKey(sKey)) != nullptr}; }),
        KeyedWork("the VLAN record by copy", ForKeys<kCopy<Swct_ReadVlan>>, ForKeys<kCopy<ReadVlan>>,
                  [](Store& store, Key sKey) {
                      const auto sVlan = Load<SwctVlan>(store.Get(205, sKey.wVid));
                      return uint64_t{sVlan.wVlanId} + sVlan.dwStatus;
                  }),
        KeyedWork("the VLAN record by pointer", ForKeys<kPointer<Swct_GetVlanInfo>>, ForKeys<kPointer<GetVlanInfo>>,
                  [](Store& store, Key sKey) { return uint64_t{Load<uint16_t>(store.Get(205, sKey.wVid))} + 2; }),
        KeyedWork("a switch port's PVID", ForKeys<kPvid<Swct_SwitchPort_GetPvid>>, ForKeys<kPvid<GetPvid>>,
                  [](Store& store, Key sKey) {
                      const uint32_t dwKey = ObjectKey({sKey.bSlot, sKey.bPort}, 0);
                      return uint64_t{Load<uint16_t>(store.Get(177, dwKey))};
                  }),
        KeyedWork("the PEP of an S-VID", ForKeys<kPep<Swct_GetProviderEdgePort>>, ForKeys<kPep<GetPep>>,
                  [](Store& store, Key sKey) { return 1 + uint64_t{Load<uint16_t>(FindPep(store, sKey))}; }),
        KeyedWork("the effective registration of a C-VID", ForKeys<kRegistration<Swct_GetCVidRegistration>>,
                  ForKeys<kRegistration<GetRegistration>>,
                  [](Store& store, Key sKey) {
                      const uint32_t dwKey = ObjectKey({sKey.bSlot, sKey.bPort}, sKey.wVid);
                      return 1 + uint64_t{Load<SwctCVidRegistration>(store.Get(369, dwKey)).wSvid};
                  }),
        KeyedWork("a VLAN's port list", ForKeys<kPortList<Swct_GetPortMembersOfVlan>>,
                  ForKeys<kPortList<GetPortMembers>>,
                  [](Store& store, Key sKey) {
                      SwctPortList sList{};
                      const uint32_t dwVlan = uint32_t{sKey.wVid} << 16;
                      store.Scan(206, dwVlan, dwVlan | 0xFFFF, [&sList](uint32_t dwKey, const uint8_t*) {
                          sList.asPort[sList.bNbrOfPorts++] = {static_cast<uint8_t>(dwKey >> 8),
                                                               static_cast<uint8_t>(dwKey), 0};
                          return true;
                      });
                      return uint64_t{sList.bNbrOfPorts} + sList.asPort[5].bPort;
                  }),
        {"the VLAN bitmap of a port", kPass, 1, PortBitmap<Swct_GetPortVlanList, kPortOfAllVlans>,
         PortBitmap<GetPortVlans, kPortOfAllVlans>,
         [](Store& store) { return FoundBits(store, 206, PortField(kPortOfAllVlans), 0, kAll, 16); }},
        {"the VLAN bitmap of a customer edge port", kPass, 1, PortBitmap<Swct_GetPortVlanBitMap, kPortOfAllVlans>,
         PortBitmap<GetCepSvids, kPortOfAllVlans>,
         [](Store& store) {
             Bitmap abBitmap = {};
             store.Scan(369, ObjectKey(kPortOfAllVlans, 0), ObjectKey(kPortOfAllVlans, 0xFFFF),
                        [&abBitmap](uint32_t, const uint8_t* pBody) {
                            Set(abBitmap, Load<SwctCVidRegistration>(pBody).wSvid);
                            return true;
                        });
             return SumOf(abBitmap);
         }},
        {"the bitmap of C-VIDs of an S-VID", kPass, 1, CVidBitmap<Swct_GetBitmapOfCVidRegisteredToSVid>,
         CVidBitmap<GetCVids>,
         [](Store& store) {
             return 1 + FoundBits(store, 369, SvidOf(1), ObjectKey({1, 1}, 0), ObjectKey({1, 1}, 0xFFFF), 0);
         }},
        {"a port is a member of any VLAN (of none)", kPass, 1, AnyVlan<Swct_IsPortMemberOfAnyVlan>,
         AnyVlan<IsMemberOfAny>, [](Store& store) { return CountUpToTwo(store, 206, PortField(kPortOfNoVlan)); }},
        {"a port is a member of just one VLAN", kPass, 1, JustOneVlan<Swct_IsPortMemberOfJustOneVlan>,
         JustOneVlan<IsMemberOfJustOne>,
         [](Store& store) { return CountUpToTwo(store, 206, PortField(kPortOfOneVlan)); }},
        {"a VLAN has C-VID registrations (none)", kPass, 1, UnusedVlan<Swct_DoesVlanHaveCVidRegistrations>,
         UnusedVlan<HasRegistrations>, [](Store& store) { return CountUpToTwo(store, 369, kUnusedVid); }},
    };
}

Work NetworkPortQuestion()
{
    return {"a VLAN has VID translations (none)",
            kPass,
            1,
            UnusedVlan<Swct_DoesVlanHaveVidTranslations>,
            UnusedVlan<HasTranslations>,
            [](Store& store) { return CountUpToTwo(store, 437, kUnusedVid); }};
}
