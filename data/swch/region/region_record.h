// region_record.h - the data region: the one record that fills the shared-memory object "/swct-data".
//
//       0  sSwitch                        switch attributes, MAC addresses, statistics
//     155  sQueueStatisticsHistorical15m  97 periods for each of 2 slots x 5 ports x 9 queues
//  646175  sQueueStatisticsHistorical24h  2 periods for each
//  659495  management VLAN interface, number of VLANs
//  659504  sVlan                          4095 entries: VLAN record, inner tag, 15 memberships
// 1568594  sSwitchPort                    15 entries
// 1569014  sQinQPort                      15 entries
// 1569299  sPbData                        15 ports: registrations and PEPs of a CEP, or translations of a PNP or CNP
// 2741939  dwHrlb, the last 4 of 2741943 bytes
//
// Every process of the node maps the same bytes, so the layout must never change.  The places of the members are
// asserted here; those of the fields inside the records in region_layout.h, which the library compiles too.
#pragma once

#include "swct/config_records.h"
#include "swct/queue_history.h"

// A ring's place in a history table: [slot - 1][port - 1][queue].
template <unsigned kRecords>
using SwctHistoryTable =
    SwctQueueStatisticsHistorical[SWCT_HISTORY_SLOTS][SWCT_PORT_MAX][SWCT_HISTORY_QUEUES][kRecords];

// Tables of the ports: slot 3 is row 0, slot 1 row 1, slot 2 row 2; the column is port - 1.
template <class Element>
using SwctPortTable = Element[SWCT_SLOT_MAX][SWCT_PORT_MAX];

struct SwctData {
    SwctSwitch sSwitch;
    SwctHistoryTable<SWCT_HISTORY_15M_RECORDS> sQueueStatisticsHistorical15m;
    SwctHistoryTable<SWCT_HISTORY_24H_RECORDS> sQueueStatisticsHistorical24h;
    uint8_t bMgmtVlanIntfSlot;
    uint16_t wMgmtVlanIntfVlanId;
    uint32_t dwMgmtVlanIntfVlanPcp;
    uint16_t wNbrOfPopulatedVlans;
    SwctVlanEntry sVlan[SWCT_VLAN_MAX]; // [VLAN id - 1]
    SwctPortTable<SwctSwitchPort> sSwitchPort;
    SwctPortTable<SwctQinQPort> sQinQPort;
    SwctPortTable<SwctPbData> sPbData;
    uint32_t dwHrlb;
} SWCT_PACKED;
SWCT_ASSERT_SIZE(SwctData, 2741943);
SWCT_ASSERT_AT(SwctData, sSwitch, 0);
SWCT_ASSERT_AT(SwctData, sQueueStatisticsHistorical15m, 155);
SWCT_ASSERT_AT(SwctData, sQueueStatisticsHistorical24h, 646175);
SWCT_ASSERT_AT(SwctData, bMgmtVlanIntfSlot, 659495);
SWCT_ASSERT_AT(SwctData, wMgmtVlanIntfVlanId, 659496);
SWCT_ASSERT_AT(SwctData, dwMgmtVlanIntfVlanPcp, 659498);
SWCT_ASSERT_AT(SwctData, wNbrOfPopulatedVlans, 659502);
SWCT_ASSERT_AT(SwctData, sVlan, 659504);
SWCT_ASSERT_AT(SwctData, sSwitchPort, 1568594);
SWCT_ASSERT_AT(SwctData, sQinQPort, 1569014);
SWCT_ASSERT_AT(SwctData, sPbData, 1569299);
SWCT_ASSERT_AT(SwctData, dwHrlb, 2741939);

inline constexpr char kRegionName[] = "/swct-data";
inline constexpr uint32_t kRegionSize = sizeof(SwctData);
