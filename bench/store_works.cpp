#include <deque>

#include "rivals.h"

namespace {

constexpr uint32_t kAll = UINT32_MAX;

void SetBit(uint8_t* pBitmap, unsigned vid) noexcept
{
    pBitmap[vid / 8] = static_cast<uint8_t>(pBitmap[vid / 8] | 1U << vid % 8);
}

template <class Body>
Body Load(const uint8_t* pBytes) noexcept
{
    Body sBody;
    std::memcpy(&sBody, pBytes, sizeof sBody);
    return sBody;
}

uint32_t First(PortKey s)
{
    return ObjectKey(s, 0);
}

uint32_t Last(PortKey s)
{
    return ObjectKey(s, 0xFFFF);
}

// clang-format off
struct StoreCandidate {
    Store& store;

    // The 'nth' key with an index value; 0 for none.
    uint32_t FindNth(uint16_t wClass, uint32_t dwIndex, uint32_t dwFirst, uint32_t dwLast, unsigned nth)
    {
        uint32_t dwFound = 0;
        store.Find(wClass, dwIndex, dwFirst, dwLast, [&](uint32_t dwKey) {
            dwFound = --nth == 0 ? dwKey : 0;
            return nth != 0;
        });
        return dwFound;
    }
    uint16_t NthOfPort(uint16_t wClass, PortKey s, uint16_t wIndex, unsigned nth)
    { return static_cast<uint16_t>(FindNth(wClass, wIndex, First(s), Last(s), nth)); }
    template <class Field>
    uint32_t CollectPort(uint16_t wClass, PortKey s, uint8_t* pBitmap, Field field)
    {
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
        uint32_t dwAny = 0;
        store.Scan(wClass, First(s), Last(s), [&](uint32_t dwKey, const uint8_t* pBody) {
            SetBit(pBitmap, field(dwKey, pBody));
            dwAny = 1;
            return true;
        });
        return dwAny;
    }

    uint64_t VlanExists(Key s) { return store.Get(SWCT_CLASS_VLAN, s.wVid) != nullptr; }
    uint64_t IsMember(Key s)
    { return store.Get(SWCT_CLASS_VLAN_PORT, uint32_t{s.wVid} << 16 | PortField({s.bSlot, s.bPort})) != nullptr; }
    uint64_t VlanByCopy(Key s)
    {
        const uint8_t* pBody = store.Get(SWCT_CLASS_VLAN, s.wVid);
        const SwctVlan sVlan = pBody != nullptr ? Load<SwctVlan>(pBody) : SwctVlan{};
        return uint64_t{sVlan.wVlanId} + 2;
    }
    uint64_t VlanByPointer(Key s)
    { const uint8_t* pBody = store.Get(SWCT_CLASS_VLAN, s.wVid); return pBody != nullptr ? Load<uint16_t>(pBody) : 0; }
    uint64_t Pvid(Key s) { return Load<uint16_t>(store.Get(SWCT_CLASS_SWITCH_PORT, First({s.bSlot, s.bPort}))); }
    uint64_t Pep(Key s)
    {
        const PortKey sPort{s.bSlot, s.bPort};
        const uint32_t dwKey = FindNth(SWCT_CLASS_PROVIDER_EDGE_PORT, s.wSvid, First(sPort), Last(sPort), 1);
        return dwKey != 0 ? Load<uint16_t>(store.Get(SWCT_CLASS_PROVIDER_EDGE_PORT, dwKey)) : 0;
    }
    uint64_t Registration(Key s)
    {
        const PortKey sPort{s.bSlot, s.bPort};
        const uint8_t* pBody = store.Get(SWCT_CLASS_CVID_REGISTRATION, ObjectKey(sPort, s.wVid));
        if (pBody != nullptr) {
            return Load<SwctCVidRegistration>(pBody).wSvid;
        }
        return Load<uint16_t>(store.Get(SWCT_CLASS_DEFAULT_CVID_REGISTRATION, First(sPort)));
    }
    uint64_t PortList(Key s)
    {
        SwctPortList sList{};
        const uint32_t dwVlan = uint32_t{s.wVid} << 16;
        store.Scan(SWCT_CLASS_VLAN_PORT, dwVlan, dwVlan | 0xFFFF, [&sList](uint32_t dwKey, const uint8_t*) {
            sList.asPort[sList.bNbrOfPorts++] = {static_cast<uint8_t>(dwKey >> 8), static_cast<uint8_t>(dwKey), 0};
            return true;
        });
        return uint64_t{sList.bNbrOfPorts} + sList.asPort[2].bPort;
    }
    uint32_t PortVlans(PortKey s, uint8_t* pBitmap)
    {
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
        store.Find(SWCT_CLASS_VLAN_PORT, PortField(s), 0, kAll, [pBitmap](uint32_t dwKey) {
            SetBit(pBitmap, dwKey >> 16);
            return true;
        });
        return 0;
    }
    uint32_t Vlans(uint8_t* pBitmap)
    { CollectPort(SWCT_CLASS_VLAN, {0, 0}, pBitmap, [](uint32_t dwKey, const uint8_t*) { return dwKey; }); return 0; }
    uint32_t CepSvids(PortKey s, uint8_t* pBitmap)
    {
        CollectPort(SWCT_CLASS_CVID_REGISTRATION, s, pBitmap,
                    [](uint32_t, const uint8_t* pBody) { return Load<SwctCVidRegistration>(pBody).wSvid; });
        return 0;
    }
    uint32_t CVids(PortKey s, uint16_t wSvid, uint8_t* pBitmap)
    {
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
        uint32_t dwAny = 0;
        store.Find(SWCT_CLASS_CVID_REGISTRATION, wSvid, First(s), Last(s), [&](uint32_t dwKey) {
            SetBit(pBitmap, dwKey & 0xFFFF);
            dwAny = 1;
            return true;
        });
        return dwAny;
    }
    uint32_t AnyVlan(PortKey s) { return FindNth(SWCT_CLASS_VLAN_PORT, PortField(s), 0, kAll, 1) != 0; }
    uint16_t JustOneVlan(PortKey s)
    {
        const uint32_t dwKey = FindNth(SWCT_CLASS_VLAN_PORT, PortField(s), 0, kAll, 1);
        return FindNth(SWCT_CLASS_VLAN_PORT, PortField(s), 0, kAll, 2) == 0 ? static_cast<uint16_t>(dwKey >> 16) : 0;
    }
    uint32_t HasRegistrations(uint16_t wVid) { return FindNth(SWCT_CLASS_CVID_REGISTRATION, wVid, 0, kAll, 1) != 0; }
    uint16_t FirstCVid(PortKey s, uint16_t wSvid)
    {
        const uint16_t wFound = NthOfPort(SWCT_CLASS_CVID_REGISTRATION, s, wSvid, 1);
        return wFound != 0 ? wFound : static_cast<uint16_t>(SWCT_VID_NONE);
    }
    uint16_t SecondCVid(PortKey s, uint16_t wSvid) { return NthOfPort(SWCT_CLASS_CVID_REGISTRATION, s, wSvid, 2); }
    uint32_t HasTranslations(uint16_t wVid) { return FindNth(SWCT_CLASS_VID_TRANSLATION, wVid, 0, kAll, 1) != 0; }
    uint16_t LowestLocalVid(PortKey s, uint16_t wVid) { return NthOfPort(SWCT_CLASS_VID_TRANSLATION, s, wVid, 1); }
    uint16_t SecondLocalVid(PortKey s, uint16_t wVid) { return NthOfPort(SWCT_CLASS_VID_TRANSLATION, s, wVid, 2); }
    // The sum of what NumberOf makes of the Moids.
    uint64_t ScanKeys(uint16_t wClass)
    {
        uint64_t qwSum = 0;
        store.Scan(wClass, 0, kAll, [&qwSum](uint32_t dwKey, const uint8_t*) {
            qwSum += dwKey;
            return true;
        });
        return wClass == SWCT_CLASS_VLAN ? qwSum << 16 : wClass == SWCT_CLASS_SWITCH_PORT ? qwSum >> 16 : qwSum;
    }
    static bool Writes(uint16_t /*wClass*/) { return true; }
    static bool Reads(uint16_t wClass)
    {
        return wClass != SWCT_CLASS_SWITCH; // the region's has defaults
    }
    void Write(const ClassData& sClass) { store.Replace(sClass); }
    void Read(const ClassData& sClass, uint8_t* pReply)
    {
        const uint8_t* pMoid = sClass.abRequest.data(); // where a Moid comes from makes no difference
        store.Scan(sClass.wClass, 0, kAll, [&](uint32_t, const uint8_t* pBody) {
            std::memcpy(pReply, pMoid, sClass.moidSize);
            std::memcpy(pReply + sClass.moidSize, pBody, sClass.bodySize);
            pReply += sClass.moidSize + sClass.bodySize;
            pMoid += sClass.moidSize + sClass.bodySize;
            return true;
        });
        std::memset(pReply, 0, sClass.moidSize);
    }
};

// clang-format on
} // namespace

std::vector<Work> StoreWorks(Store& store, const Scene& sScene)
{
    static std::deque<StoreCandidate> candidates; // works keep a reference
    for (const ClassData& sClass : sScene.aClass) {
        store.Replace(sClass);
    }
    std::vector<Work> works = WorksOf(candidates.emplace_back(StoreCandidate{store}), sScene);
    for (Work& sWork : works) {
        sWork.boChanges = false; // nothing of the region
    }
    return works;
}
