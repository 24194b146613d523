// region_layout.h - the members and fields of the region as one table, for whoever prints or documents the layout.
//
// An array of records is one row; the fields of its first element follow in the rows of the element's type.
#pragma once

#include <cstddef>

#include "region_record.h"

struct LayoutRow {
    const char* pName;
    std::size_t offset; // from the start of the region, or of the record
    std::size_t size;
    const char* pMeaning;
};

#define SWCT_ROW(type, field, meaning) \
    LayoutRow { #field, offsetof(type, field), sizeof(type::field), meaning }

inline constexpr LayoutRow kRegionMembers[] = {
    SWCT_ROW(SwctData, sSwitch, "switch attributes and statistics"),
    SWCT_ROW(SwctData, sQueueStatisticsHistorical15m, "15-minute rings [2 slots][5 ports][9 queues][97 periods]"),
    SWCT_ROW(SwctData, sQueueStatisticsHistorical24h, "24-hour rings [2 slots][5 ports][9 queues][2 periods]"),
    SWCT_ROW(SwctData, bMgmtVlanIntfSlot, "slot of the management VLAN interface"),
    SWCT_ROW(SwctData, wMgmtVlanIntfVlanId, "VLAN id of the management VLAN interface"),
    SWCT_ROW(SwctData, dwMgmtVlanIntfVlanPcp, "priority code point of the management VLAN interface"),
    SWCT_ROW(SwctData, wNbrOfPopulatedVlans, "number of VLANs created and not deleted"),
    SWCT_ROW(SwctData, sVlan, "VLAN entries [VLAN id - 1]"),
    SWCT_ROW(SwctData, sSwitchPort, "switch ports [slot 3, 1, 2][port - 1]"),
    SWCT_ROW(SwctData, sQinQPort, "QinQ ports [slot 3, 1, 2][port - 1]"),
    SWCT_ROW(SwctData, sPbData, "provider-bridge data [slot 3, 1, 2][port - 1]"),
    SWCT_ROW(SwctData, dwHrlb, "HRLB setting"),
};

inline constexpr LayoutRow kSwitchFields[] = {
    SWCT_ROW(SwctSwitchAttributes, sBridgeMacAddress, "bridge MAC address"),
    SWCT_ROW(SwctSwitchAttributes, bNbrOfSwitchPorts, "0; filled in copies only"),
    SWCT_ROW(SwctSwitchAttributes, abReserved1, "carried"),
    SWCT_ROW(SwctSwitchAttributes, dwAgeingTime, "MAC address ageing time, seconds"),
    SWCT_ROW(SwctSwitchAttributes, abReserved2, "carried"),
    SWCT_ROW(SwctSwitchAttributes, wUnicastForwardingTableMaxSize, "entries of the unicast forwarding table"),
    SWCT_ROW(SwctSwitchAttributes, dwSwitchUpTime, "node time at which the switch came up"),
    SWCT_ROW(SwctSwitchAttributes, dwBridgeVlanEtherType, "VLAN ether type of the bridge, enumeration 1 to 6"),
    SWCT_ROW(SwctSwitchAttributes, wNbrOfVlans, "0; filled in copies only"),
    SWCT_ROW(SwctSwitchAttributes, bStaticUnicastForwardingMaxEntries, "static entries of the forwarding table"),
    SWCT_ROW(SwctSwitchAttributes, dwSwitchMode, "1 provider bridge, 2 QinQ"),
    SWCT_ROW(SwctSwitchAttributes, dwL2cpTunnellingMode, "layer-2 control protocol tunnelling mode"),
    SWCT_ROW(SwctSwitchAttributes, wLagSystemPriority, "LAG system priority"),
    SWCT_ROW(SwctSwitchAttributes, acBridgeName, "bridge name, zero-terminated"),
    SWCT_ROW(SwctSwitchAttributes, sL3MacAddress, "MAC address of the layer-3 interfaces"),
    SWCT_ROW(SwctSwitchAttributes, wEtherType1, "configurable VLAN ether type 1"),
    SWCT_ROW(SwctSwitchAttributes, wEtherType2, "configurable VLAN ether type 2"),
    SWCT_ROW(SwctSwitchAttributes, wEtherType3, "configurable VLAN ether type 3"),
    SWCT_ROW(SwctSwitchAttributes, wEtherType4, "configurable VLAN ether type 4"),
    SWCT_ROW(SwctSwitchAttributes, dwL2cpPriority, "priority of tunnelled L2CP frames"),
    SWCT_ROW(SwctSwitchAttributes, abL2cpMacDestTunnel, "variable bytes of the L2CP tunnel destination MAC"),
    SWCT_ROW(SwctSwitchAttributes, dwGLagDistribution, "G-LAG distribution mode"),
    SWCT_ROW(SwctSwitch, sStatistics.dwLearnedEntryDiscardCount, "learned forwarding entries discarded"),
    SWCT_ROW(SwctSwitch, sStatistics.dwNbrOfDeletedVlans, "VLANs deleted since creation"),
};

inline constexpr LayoutRow kHistoryFields[] = {
    SWCT_ROW(SwctQueueStatisticsHistorical, aqwCounter, "eight 64-bit counters, low word first"),
    SWCT_ROW(SwctQueueStatisticsHistorical, adwStamp, "both words 0 = no record"),
    SWCT_ROW(SwctQueueStatisticsHistorical, boIsCurrentPeriod, "1 = current period"),
    SWCT_ROW(SwctQueueStatisticsHistorical, boSuspect, "suspect mark of the period"),
};

inline constexpr LayoutRow kVlanEntryFields[] = {
    SWCT_ROW(SwctVlanEntry, boExists, "1 = the VLAN exists"),
    SWCT_ROW(SwctVlanEntry, dwNbrOfQinQOrPep, "QinQ ports and provider edge ports that use the VLAN"),
    SWCT_ROW(SwctVlanEntry, sVlanData.wVlanId, "VLAN id"),
    SWCT_ROW(SwctVlanEntry, sVlanData.dwCreationTime, "node time of creation"),
    SWCT_ROW(SwctVlanEntry, sVlanData.dwStatus, "2"),
    SWCT_ROW(SwctVlanEntry, sVlanData.acName, "name, zero-terminated"),
    SWCT_ROW(SwctVlanEntry, sVlanData.sMacAddress, "MAC address"),
    SWCT_ROW(SwctVlanEntry, sVlanData.dwVlanParam1, "carried"),
    SWCT_ROW(SwctVlanEntry, sVlanData.dwVlanParam2, "carried"),
    SWCT_ROW(SwctVlanEntry, sVlanData.wVlanParam3, "carried"),
    SWCT_ROW(SwctVlanEntry, sVlanData.dwRowState, "1"),
    SWCT_ROW(SwctVlanEntry, sVlanData.dwVlanIf, "1 = layer-3 VLAN interface"),
    SWCT_ROW(SwctVlanEntry, sVlanData.abVlanReserved, "carried"),
    SWCT_ROW(SwctVlanEntry, sInnerTag.abInnerTagReserved, "carried"),
    SWCT_ROW(SwctVlanEntry, sInnerTag.dwInnerTagEnable, "0 no record, 1 inner tag in use, 2 not in use"),
    SWCT_ROW(SwctVlanEntry, sInnerTag.wInnerVlanId, "VLAN id of the inner tag"),
    SWCT_ROW(SwctVlanEntry, sInnerTag.dwInnerPriorityEnable, "0 no record, 1 priority carried, 2 not carried"),
    SWCT_ROW(SwctVlanEntry, sInnerTag.dwInnerPriority, "priority of the inner tag"),
    SWCT_ROW(SwctVlanEntry, sInnerTag.bInnerTagParam, "carried"),
    SWCT_ROW(SwctVlanEntry, adwMembership, "[slot - 1][port - 1]: 0 none, 1 tagged, 2 untagged"),
};

inline constexpr LayoutRow kSwitchPortFields[] = {
    SWCT_ROW(SwctSwitchPort, wPvid, "port VLAN id"),
    SWCT_ROW(SwctSwitchPort, dwVlanFrameAdmit, "acceptable frame types"),
    SWCT_ROW(SwctSwitchPort, dwIngressFiltering, "ingress filtering; 2 = default C-VID registration"),
    SWCT_ROW(SwctSwitchPort, dwL2PortType, "0 = no such port"),
    SWCT_ROW(SwctSwitchPort, dwPbPortType, "0 none, 1 PNP, 2 CNP, 3 CEP"),
    SWCT_ROW(SwctSwitchPort, abOtherPortSettings, "carried"),
    SWCT_ROW(SwctSwitchPort, dwL2PortVlanEtherTypeEnum, "VLAN ether type, enumeration 1 to 6"),
};

inline constexpr LayoutRow kQinQPortFields[] = {
    SWCT_ROW(SwctQinQPort, dwQinQStatus, "0 no record, 1 enabled"),
    SWCT_ROW(SwctQinQPort, wProviderTagVid, "VID of the outer tag"),
    SWCT_ROW(SwctQinQPort, dwProviderTagPriority, "priority of the outer tag"),
    SWCT_ROW(SwctQinQPort, boControlProtocolTunnelling, "1 = control protocols are tunnelled"),
    SWCT_ROW(SwctQinQPort, dwControlProtocolTunnellingMac, "names the tunnel's MAC address"),
    SWCT_ROW(SwctQinQPort, dwProviderTagEtherType, "ether type of the outer tag"),
};

inline constexpr LayoutRow kCepFields[] = {
    SWCT_ROW(SwctCepData, aCVidRegistration, "registrations [C-VID - 1]"),
    SWCT_ROW(SwctCepData, sDefaultCVidRegistration, "default registration"),
    SWCT_ROW(SwctCepData, aProviderEdgePort, "provider edge ports [PEP index - 1]"),
    SWCT_ROW(SwctCepData, bUnused, "not used"),
    SWCT_ROW(SwctCepData, awNbrOfCVidInPep, "C-VIDs of the PEP's S-VID [PEP index - 1]"),
    SWCT_ROW(SwctCepData, awFirstCVidInPep, "lowest C-VID of the PEP's S-VID [PEP index - 1]"),
    SWCT_ROW(SwctCepData, awPepIndexBySvid, "PEP index [S-VID - 1], 0 = none"),
    SWCT_ROW(SwctCepData, adwServicePriorityRegeneration, "eight 3-bit priorities [PEP index - 1]"),
};

inline constexpr LayoutRow kNetworkPortFields[] = {
    SWCT_ROW(SwctNetworkPortData, aVidTranslation, "translations [local VID - 1]"),
    SWCT_ROW(SwctNetworkPortData, awLocalVidByRelayVid, "local VID [relay VID - 1], 0 = none"),
};

inline constexpr LayoutRow kCVidRegistrationFields[] = {
    SWCT_ROW(SwctCVidRegistration, wCVid, "C-VID, 0 = not in use"),
    SWCT_ROW(SwctCVidRegistration, wSvid, "S-VID"),
    SWCT_ROW(SwctCVidRegistration, boUntaggedCep, "1 = untagged on the CEP"),
    SWCT_ROW(SwctCVidRegistration, boUntaggedPep, "1 = untagged on the PEP"),
    SWCT_ROW(SwctCVidRegistration, wRelayCVid, "relay C-VID"),
    SWCT_ROW(SwctCVidRegistration, boRelayCVid, "1 = the relay C-VID is in force"),
    SWCT_ROW(SwctCVidRegistration, abReserved, "carried"),
};

inline constexpr LayoutRow kDefaultCVidRegistrationFields[] = {
    SWCT_ROW(SwctDefaultCVidRegistration, wSvid, "S-VID, 4095 = none"),
    SWCT_ROW(SwctDefaultCVidRegistration, boUntaggedPep, "1 = untagged on the PEP"),
};

inline constexpr LayoutRow kProviderEdgePortFields[] = {
    SWCT_ROW(SwctProviderEdgePort, wSvid, "S-VID, 0 = not in use"),
    SWCT_ROW(SwctProviderEdgePort, abSettings, "carried"),
};

inline constexpr LayoutRow kVidTranslationFields[] = {
    SWCT_ROW(SwctVidTranslation, wLocalVid, "local VID, 0 = not in use"),
    SWCT_ROW(SwctVidTranslation, wRelayVid, "relay VID"),
    SWCT_ROW(SwctVidTranslation, abReserved, "carried"),
    SWCT_ROW(SwctVidTranslation, dwStatus, "3 = counts as a provider-bridge setting"),
};

#undef SWCT_ROW

// A record and its fields.  The two layouts of SwctPbData are records of their own.
struct LayoutRecord {
    const char* pName;
    std::size_t size;
    const LayoutRow* pRows;
    std::size_t nbrOfRows;
};

template <std::size_t kRows>
constexpr LayoutRecord DescribeRecord(const char* pName, std::size_t size, const LayoutRow (&aRows)[kRows])
{
    return {pName, size, aRows, kRows};
}

inline constexpr LayoutRecord kLayout[] = {
    DescribeRecord("SwctData", sizeof(SwctData), kRegionMembers),
    DescribeRecord("SwctSwitch", sizeof(SwctSwitch), kSwitchFields),
    DescribeRecord("SwctQueueStatisticsHistorical", sizeof(SwctQueueStatisticsHistorical), kHistoryFields),
    DescribeRecord("SwctVlanEntry", sizeof(SwctVlanEntry), kVlanEntryFields),
    DescribeRecord("SwctSwitchPort", sizeof(SwctSwitchPort), kSwitchPortFields),
    DescribeRecord("SwctQinQPort", sizeof(SwctQinQPort), kQinQPortFields),
    DescribeRecord("SwctCepData", sizeof(SwctCepData), kCepFields),
    DescribeRecord("SwctNetworkPortData", sizeof(SwctNetworkPortData), kNetworkPortFields),
    DescribeRecord("SwctCVidRegistration", sizeof(SwctCVidRegistration), kCVidRegistrationFields),
    DescribeRecord("SwctDefaultCVidRegistration", sizeof(SwctDefaultCVidRegistration), kDefaultCVidRegistrationFields),
    DescribeRecord("SwctProviderEdgePort", sizeof(SwctProviderEdgePort), kProviderEdgePortFields),
    DescribeRecord("SwctVidTranslation", sizeof(SwctVidTranslation), kVidTranslationFields),
};

// No gap and no overlap: every row begins where the one before it ends, and the last ends with the record.
constexpr bool IsGapless(const LayoutRecord& sRecord)
{
    std::size_t end = sRecord.pRows[0].offset;
    for (std::size_t i = 0; i < sRecord.nbrOfRows; ++i) {
        if (sRecord.pRows[i].offset != end) {
            return false;
        }
        end += sRecord.pRows[i].size;
    }
    return sRecord.pRows[0].offset == 0 && end == sRecord.size;
}

constexpr bool IsLayoutGapless()
{
    for (const LayoutRecord& sRecord : kLayout) {
        if (!IsGapless(sRecord)) {
            return false;
        }
    }
    return true;
}
static_assert(IsLayoutGapless());
