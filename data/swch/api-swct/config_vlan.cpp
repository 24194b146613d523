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

// Memberships in key order: kPorts of a VLAN, slot 1 first.
void ClearMemberships(SwctData& sData, unsigned first, unsigned end) noexcept
{
    while (first < end) {
        SwctVlanEntry& sEntry = sData.sVlan[first / kPorts]; // a reference to the array would forget its alignment
        unsigned port = first % kPorts;
        if (port == 0 && end - first >= kPorts) {
            SWCT_CLEAR_ARRAY(sEntry.adwMembership);
            first += kPorts;
            continue;
        }
        for (; port < kPorts && first < end; ++port, ++first) {
            sEntry.adwMembership[port / SWCT_PORT_MAX][port % SWCT_PORT_MAX] = SWCT_MEMBERSHIP_NONE;
        }
    }
}

void Swct_SetConfig_VlanPort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    Merge sMerge([&sData](unsigned first, unsigned end) { ClearMemberships(sData, first, end); });
    for (const SwctVlanPortRecord& sRecord : Request<SwctVlanPortRecord>(pCdbmRecords)) {
        const SwctVlanPortMoid sMoid = sRecord.sMoid;
        SwctMembership* pMembership = Membership(&sData, sMoid.wVlanId, sMoid.bSlot, sMoid.bPort);
        if (pMembership == nullptr) {
            SWCT_ERROR(kErrorPlain, "VLAN %d: Unable to fetch VLAN_PORT ptr for S/P %d/%d\n", sMoid.wVlanId,
                       sMoid.bSlot, sMoid.bPort);
            continue;
        }
        sMerge.Reach((sMoid.wVlanId - 1U) * kPorts + PortIndex(sMoid.bSlot, sMoid.bPort));
        *pMembership = sRecord.sBody.dwMembership;
    }
    sMerge.Finish(SWCT_VLAN_MAX * kPorts);
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
