// region_record.h - the data region: the one record that fills the shared-memory object "/swct-data".
//
// Every process of the node maps the same bytes, so the layout must never change: sizes and offsets are asserted.
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

inline constexpr char kRegionName[] = "/swct-data";
inline constexpr uint32_t kRegionSize = sizeof(SwctData);
