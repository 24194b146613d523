// The exchange with the CDBM: VLANs (205), their ports (206) and the inner tags of their interfaces (769).
#include <algorithm>

#include "config_exchange.h"
#include "region/defaults.h"

namespace {

void Swct_SetConfig_Vlan(SwctData& sData, const void* pCdbmRecords) noexcept
{
    uint16_t wNbrOfVlans = 0;
    Merge sMerge([&sData](unsigned first, unsigned end) {
        for (unsigned i = first; i < end; ++i) {
            sData.sVlan[i].boExists = 0;
            sData.sVlan[i].sVlanData.wVlanId = 0;
        }
    });
    for (const SwctVlanRecord& sRecord : Request<SwctVlanRecord>(pCdbmRecords)) {
        const uint16_t wIndex = ReadOnce<uint16_t>(sRecord.sMoid.wVlanId);
        SwctVlanEntry* pEntry = VlanEntry(&sData, wIndex);
        if (pEntry == nullptr) {
            SWCT_ERROR(kErrorPlain, "VLAN %d: id out of range, record skipped\n", wIndex);
            continue;
        }
        SWCT_DEBUG(6, "CDBM write VLAN: Id:%d Idx:%d.\n", sRecord.sBody.wVlanId, wIndex);
        sMerge.Reach(wIndex - 1U);
        pEntry->dwNbrOfQinQOrPep = 0;
        // All but the row state, in parts that split no field but the name.
        CopyParts<0, 16, 75, 16>(&pEntry->sVlanData, &sRecord.sBody);
        pEntry->sVlanData.dwRowState = kVlanRowState;
        CopyParts<offsetof(SwctVlan, dwVlanIf), 4, 11>(&pEntry->sVlanData, &sRecord.sBody);
        Publish(pEntry->boExists, 1);
        ++wNbrOfVlans;
        SWCT_DEBUG(6, "CDBM-Vlan create:VlanId:%d VlanId:%d Vlans created:%d\n", sRecord.sBody.wVlanId, wIndex,
                   wNbrOfVlans);
    }
    sMerge.Finish(SWCT_VLAN_MAX);
    sData.wNbrOfPopulatedVlans = wNbrOfVlans;
}

void Swct_GetConfig_Vlan(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    Reply sReply(pBuffer);
    const bool boTooMany = AnyExistingVlan(&sData, [&](const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        if (sReply.Count() == dwMaxElements) {
            return true;
        }
        sReply.Add(SwctVlanMoid{SWCT_CLASS_VLAN, wVlanId}, sEntry.sVlanData);
        return false;
    });
    if (boTooMany) {
        SWCT_ERROR(kErrorTooMany, "More elements than CDBM expects for class VLAN");
    }
    sReply.Terminate<SwctVlanMoid>();
}

// The memberships of the VLAN whose records are coming.  Those of a VLAN that is reached for the first time are made
// aside and stored together; a VLAN in front of it, out of order, has its records stored as they come.
class Memberships {
public:
    explicit Memberships(SwctData& sRegion) noexcept : sData(sRegion) {}

    void Open(uint16_t wVlanId) noexcept
    {
        Close();
        pEntry = VlanEntry(&sData, wVlanId);
        boIsFresh = pEntry != nullptr && wVlanId > wReached;
        if (boIsFresh) {
            ClearBetween(wVlanId);
            wReached = wVlanId;
            SWCT_CLEAR_ARRAY(adwMembership);
        }
    }

    // False when the key names no element.
    bool Store(uint8_t bSlot, uint8_t bPort, uint32_t dwMembership) noexcept
    {
        if (pEntry == nullptr || !IsPort(bSlot, bPort)) {
            return false;
        }
        (boIsFresh ? adwMembership : pEntry->adwMembership)[bSlot - 1][bPort - 1] = dwMembership;
        return true;
    }

    void Finish() noexcept
    {
        Close();
        ClearBetween(SWCT_VLAN_MAX + 1);
    }

private:
    void Close() noexcept
    {
        if (boIsFresh) {
            CopyBytes<sizeof adwMembership>(reinterpret_cast<unsigned char*>(pEntry->adwMembership),
                                            reinterpret_cast<const unsigned char*>(adwMembership));
        }
    }

    // The VLANs behind the last one that was reached have no memberships.
    void ClearBetween(unsigned end) noexcept
    {
        for (unsigned vlanId = wReached + 1U; vlanId < end; ++vlanId) {
            SWCT_CLEAR_ARRAY(sData.sVlan[vlanId - 1].adwMembership);
        }
    }

    SwctData& sData;
    SwctVlanEntry* pEntry = nullptr;
    uint16_t wReached = 0;
    bool boIsFresh = false;
    SwctMembership adwMembership[SWCT_SLOT_MAX][SWCT_PORT_MAX];
};

void Swct_SetConfig_VlanPort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    Memberships sMemberships(sData);
    uint16_t wCurrent = 0;
    for (const SwctVlanPortRecord& sRecord : Request<SwctVlanPortRecord>(pCdbmRecords)) {
        const SwctVlanPortMoid sMoid = sRecord.sMoid;
        if (sMoid.wVlanId != wCurrent) {
            wCurrent = sMoid.wVlanId;
            sMemberships.Open(wCurrent);
        }
        if (!sMemberships.Store(sMoid.bSlot, sMoid.bPort, sRecord.sBody.dwMembership)) {
            SWCT_ERROR(kErrorPlain, "VLAN %d: Unable to fetch VLAN_PORT ptr for S/P %d/%d\n", sMoid.wVlanId,
                       sMoid.bSlot, sMoid.bPort);
        }
    }
    sMemberships.Finish();
}

void Swct_GetConfig_VlanPort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    Reply sReply(pBuffer);
    const bool boTooMany = AnyExistingVlan(&sData, [&](const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        return AnyPort([&](uint8_t bSlot, uint8_t bPort) {
            const uint32_t dwMembership = sEntry.adwMembership[bSlot - 1][bPort - 1];
            if (dwMembership == SWCT_MEMBERSHIP_NONE) {
                return false;
            }
            if (sReply.Count() == dwMaxElements) {
                return true;
            }
            sReply.Add(SwctVlanPortMoid{SWCT_CLASS_VLAN_PORT, wVlanId, bSlot, bPort},
                       SwctVlanPortAttributes{bSlot, bPort, 1, dwMembership});
            return false;
        });
    });
    if (boTooMany) {
        SWCT_ERROR(kErrorTooMany, "More elements than CDBM expects for class VLAN_PORT");
        return;
    }
    sReply.Terminate<SwctVlanPortMoid>();
}

void Swct_SetConfig_VlanIfInnerTag(SwctData& sData, const void* pCdbmRecords) noexcept
{
    for (const SwctVlanIfInnerTagRecord& sRecord : Request<SwctVlanIfInnerTagRecord>(pCdbmRecords)) {
        const uint16_t wVlanId = ReadOnce<uint16_t>(sRecord.sMoid.wVlanId);
        SwctVlanEntry* pEntry = VlanEntry(&sData, wVlanId);
        if (pEntry == nullptr) {
            SWCT_ERROR(kErrorPlain, "VLAN %d: id out of range, record skipped\n", wVlanId);
            continue;
        }
        SWCT_DEBUG(6, "CDBM write Inner VLAN Tag: Id:%d, Outer VLAN ID: %d .\n", sRecord.sBody.wInnerVlanId, wVlanId);
        CopyParts<0, 16, 4, 2, 8, 1>(&pEntry->sInnerTag, &sRecord.sBody);
    }
}

void Swct_GetConfig_VlanIfInnerTag(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    Reply sReply(pBuffer);
    ForEachExistingVlan(&sData, [&sReply](const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        if (sEntry.sInnerTag.dwInnerTagEnable != SWCT_INNER_TAG_ABSENT) {
            sReply.Add(SwctVlanMoid{SWCT_CLASS_VLAN_IF_INNER_TAG, wVlanId}, sEntry.sInnerTag);
        }
    });
    sReply.Terminate<SwctVlanMoid>();
}

} // namespace

const ConfigClass kVlanClasses[] = {
    {SWCT_CLASS_VLAN, Swct_SetConfig_Vlan, Swct_GetConfig_Vlan},
    {SWCT_CLASS_VLAN_PORT, Swct_SetConfig_VlanPort, Swct_GetConfig_VlanPort},
    {SWCT_CLASS_VLAN_IF_INNER_TAG, Swct_SetConfig_VlanIfInnerTag, Swct_GetConfig_VlanIfInnerTag},
};
