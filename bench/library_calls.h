// library_calls.h - the works by calls of the library, whatever way they go.
#pragma once

#include "library.h"
#include "swct/swct.h"

// Every operation that is called.
// clang-format off
#define BENCH_OPERATIONS(X) \
    X(Swct_CdbmOpen) \
    X(Swct_SetConfig) \
    X(Swct_GetConfig) \
    X(Swct_DoesVlanExist) \
    X(Swct_IsPortMemberOfVlanId) \
    X(Swct_ReadVlan) \
    X(Swct_GetVlanInfo) \
    X(Swct_SwitchPort_GetPvid) \
    X(Swct_GetProviderEdgePort) \
    X(Swct_GetCVidRegistration) \
    X(Swct_GetPortMembersOfVlan) \
    X(Swct_GetFreeProviderEdgePortMoid) \
    X(Swct_GetPortVlanList) \
    X(Swct_GetConfiguredVlans) \
    X(Swct_GetPortVlanBitMap) \
    X(Swct_GetBitmapOfCVidRegisteredToSVid) \
    X(Swct_GetConfiguredCVlans) \
    X(Swct_GetBitmapOfCVidRegisteredToDefaultSVid) \
    X(Swct_GetCepSVlanList) \
    X(Swct_GetBitmapOfQinQProviderVlanThatDoTunnel) \
    X(Swct_IsPortMemberOfAnyVlan) \
    X(Swct_IsPortMemberOfJustOneVlan) \
    X(Swct_DoesVlanHaveCVidRegistrations) \
    X(Swct_DoesRelayedCVlanExist) \
    X(Swct_GetCVlanFromRelayCVlanId) \
    X(Swct_GetFirstCVidRegisteredToSVid) \
    X(Swct_GetSecondCVidRegistrationForSVid) \
    X(Swct_DoesVlanHaveVidTranslations) \
    X(Swct_GetLowestLocalVidTranslatedToRelayVid) \
    X(Swct_GetSecondLowestLocalVidTranslatedToRelayVid) \
    X(Swct_GetQueueStatisticsHistorical15mLastNRecords) \
    X(Swct_GetQueueStatisticsHistorical15mHistoricalSum) \
    X(Swct_GetNextVlan) \
    X(Swct_GetNextVlanPort) \
    X(Swct_SwitchPortMoidIterator) \
    X(Swct_CVidRegistrationMoidIterator) \
    X(Swct_VidTranslationMoidIterator) \
    X(Swct_QueueStatisticsHistorical15mMoidIterator) \
    X(Swct_DeleteCVidRegistration)
// clang-format on

namespace {

// Calls by name: through the procedure linkage table, or without it where that is compiled so.
struct Linked {
#define BENCH_BY_NAME(name) static constexpr auto name = ::name;
    BENCH_OPERATIONS(BENCH_BY_NAME)
#undef BENCH_BY_NAME
};

// clang-format off
template <class Calls>
struct Library {
    Calls sCalls;

    uint64_t VlanExists(Key s) const { return sCalls.Swct_DoesVlanExist(s.wVid); }
    uint64_t IsMember(Key s) const { return sCalls.Swct_IsPortMemberOfVlanId(s.bSlot, s.bPort, s.wVid); }
    uint64_t VlanByCopy(Key s) const
    {
        SwctVlan sVlan;
        sCalls.Swct_ReadVlan({SWCT_CLASS_VLAN, s.wVid}, &sVlan);
        return uint64_t{sVlan.wVlanId} + sVlan.dwStatus;
    }
    uint64_t VlanByPointer(Key s) const { return sCalls.Swct_GetVlanInfo(s.wVid)->wVlanId; }
    uint64_t Pvid(Key s) const { return static_cast<uint16_t>(sCalls.Swct_SwitchPort_GetPvid(s.bSlot, s.bPort)); }
    uint64_t Pep(Key s) const
    {
        SwctProviderEdgePort sRecord;
        return sCalls.Swct_GetProviderEdgePort(s.bSlot, s.bPort, s.wSvid, &sRecord) != 0 ? sRecord.wSvid : 0U;
    }
    uint64_t Registration(Key s) const
    {
        SwctCVidRegistration sRecord;
        return sCalls.Swct_GetCVidRegistration(s.bSlot, s.bPort, s.wVid, &sRecord) != 0 ? sRecord.wSvid : 0U;
    }
    uint64_t PortList(Key s) const
    {
        SwctPortList sList;
        sCalls.Swct_GetPortMembersOfVlan(s.wVid, &sList);
        return uint64_t{sList.bNbrOfPorts} + sList.asPort[2].bPort;
    }
    uint64_t FreePep(Key s) const
    {
        SwctProviderEdgePortMoid sMoid{};
        return sCalls.Swct_GetFreeProviderEdgePortMoid(s.bSlot, s.bPort, &sMoid) + uint64_t{sMoid.wPepIndex};
    }
    uint32_t PortVlans(PortKey s, uint8_t* pBitmap) const
    { sCalls.Swct_GetPortVlanList(s.bSlot, s.bPort, pBitmap); return 0; }
    uint32_t Vlans(uint8_t* pBitmap) const { sCalls.Swct_GetConfiguredVlans(pBitmap); return 0; }
    uint32_t CepSvids(PortKey s, uint8_t* pBitmap) const
    {
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE); // it only sets
        sCalls.Swct_GetPortVlanBitMap(s.bSlot, s.bPort, pBitmap);
        return 0;
    }
    uint32_t CVids(PortKey s, uint16_t wSvid, uint8_t* pBitmap) const
    { return sCalls.Swct_GetBitmapOfCVidRegisteredToSVid(s.bSlot, s.bPort, wSvid, pBitmap); }
    uint32_t CVlans(uint8_t* pBitmap) const { sCalls.Swct_GetConfiguredCVlans(pBitmap); return 0; }
    uint32_t DefaultCVids(PortKey s, uint8_t* pBitmap) const
    { return sCalls.Swct_GetBitmapOfCVidRegisteredToDefaultSVid(s.bSlot, s.bPort, pBitmap); }
    uint32_t PepSvids(PortKey s, uint8_t* pBitmap) const
    { return sCalls.Swct_GetCepSVlanList(s.bSlot, s.bPort, pBitmap); }
    uint32_t QinQVlans(uint8_t* pBitmap) const { return sCalls.Swct_GetBitmapOfQinQProviderVlanThatDoTunnel(pBitmap); }
    uint32_t AnyVlan(PortKey s) const { return sCalls.Swct_IsPortMemberOfAnyVlan(s.bSlot, s.bPort); }
    uint16_t JustOneVlan(PortKey s) const
    {
        uint16_t wVlanId = 0;
        sCalls.Swct_IsPortMemberOfJustOneVlan(s.bSlot, s.bPort, &wVlanId);
        return wVlanId;
    }
    uint32_t HasRegistrations(uint16_t wVid) const
    { return sCalls.Swct_DoesVlanHaveCVidRegistrations({SWCT_CLASS_VLAN, wVid}); }
    uint32_t IsRelayed(uint16_t wVid) const { return sCalls.Swct_DoesRelayedCVlanExist(wVid); }
    uint16_t CVidOfRelay(PortKey s, uint16_t wVid) const
    { return static_cast<uint16_t>(sCalls.Swct_GetCVlanFromRelayCVlanId(s.bSlot, s.bPort, wVid)); }
    uint16_t FirstCVid(PortKey s, uint16_t wSvid) const
    { return static_cast<uint16_t>(sCalls.Swct_GetFirstCVidRegisteredToSVid(s.bSlot, s.bPort, wSvid)); }
    uint16_t SecondCVid(PortKey s, uint16_t wSvid) const
    {
        SwctCVidRegistration sRecord;
        sCalls.Swct_GetSecondCVidRegistrationForSVid(s.bSlot, s.bPort, wSvid, &sRecord);
        return sRecord.wCVid;
    }
    uint32_t HasTranslations(uint16_t wVid) const
    { return sCalls.Swct_DoesVlanHaveVidTranslations({SWCT_CLASS_VLAN, wVid}); }
    uint16_t LowestLocalVid(PortKey s, uint16_t wVid) const
    {
        uint16_t wLocalVid = 0;
        sCalls.Swct_GetLowestLocalVidTranslatedToRelayVid(s.bSlot, s.bPort, wVid, &wLocalVid);
        return wLocalVid;
    }
    uint16_t SecondLocalVid(PortKey s, uint16_t wVid) const
    {
        uint16_t wLocalVid = 0;
        sCalls.Swct_GetSecondLowestLocalVidTranslatedToRelayVid(s.bSlot, s.bPort, wVid, &wLocalVid);
        return wLocalVid;
    }
    uint32_t LastRecords(PortKey s, uint8_t* pTo) const
    {
        sCalls.Swct_GetQueueStatisticsHistorical15mLastNRecords(s.bSlot, s.bPort, 3, SWCT_HISTORY_15M_RECORDS,
                                                                reinterpret_cast<SwctQueueStatisticsHistorical*>(pTo));
        return 0;
    }
    uint32_t RingSum(PortKey s) const
    {
        SwctQueueStatisticsHistorical sSum{};
        sCalls.Swct_GetQueueStatisticsHistorical15mHistoricalSum(s.bSlot, s.bPort, 3, 48, &sSum);
        return sSum.aqwCounter[0].dwHigh + sSum.aqwCounter[0].dwLow;
    }
    auto* NextVlan(const SwctVlanMoid* p) const { return sCalls.Swct_GetNextVlan(p); }
    auto* NextVlanPort(const SwctVlanPortMoid* p) const { return sCalls.Swct_GetNextVlanPort(p); }
    auto* NextSwitchPort(const SwctPortMoid* p) const { return sCalls.Swct_SwitchPortMoidIterator(p); }
    auto* NextRegistration(const SwctCVidRegistrationMoid* p) const
    { return sCalls.Swct_CVidRegistrationMoidIterator(p); }
    auto* NextTranslation(const SwctVidTranslationMoid* p) const { return sCalls.Swct_VidTranslationMoidIterator(p); }
    auto* NextHistory(const SwctQueueStatisticsHistoricalMoid* p) const
    { return sCalls.Swct_QueueStatisticsHistorical15mMoidIterator(p); }
    void DeleteRegistration(PortKey s, uint16_t wVid) const
    { sCalls.Swct_DeleteCVidRegistration({SWCT_CLASS_CVID_REGISTRATION, s.bSlot, s.bPort, wVid}); }
    static bool Writes(uint16_t /*wClass*/) { return true; }
    static bool Reads(uint16_t /*wClass*/) { return true; }
    void Write(const ClassData& sClass) const { sCalls.Swct_SetConfig(sClass.wClass, sClass.abRequest.data()); }
    void Read(const ClassData& sClass, uint8_t* pReply) const { sCalls.Swct_GetConfig(sClass.wClass, pReply, 100000); }
};

// clang-format on
} // namespace
