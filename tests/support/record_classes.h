// record_classes.h - the classes of the exchange with the CDBM, and how long their records and replies are.
#pragma once

#include <cstddef>
#include <cstdint>

#include "swct/config.h"

struct RecordClass {
    uint16_t wClass;
    std::size_t moidSize; // 0: a single record without Moid and terminator
    std::size_t recordSize;
    uint32_t dwRecordsMax;     // that the region can hold
    uint32_t dwElementsOfPort; // room that a reply needs beyond its limit, which is tested before each port only
    bool boLimited;            // else a reply has as many records as the region, whatever the limit
};

// Moid and body, both as they follow each other in a record.
template <class Record>
constexpr RecordClass Describe(uint16_t wClass, uint32_t dwRecordsMax, uint32_t dwElementsOfPort, bool boLimited)
{
    return {wClass, sizeof Record::sMoid, sizeof(Record), dwRecordsMax, dwElementsOfPort, boLimited};
}

constexpr uint32_t kPorts = SWCT_SLOT_MAX * SWCT_PORT_MAX;
constexpr uint32_t kVids = SWCT_PB_VID_MAX;
constexpr uint32_t kPriorities = SWCT_PEP_MAX * SWCT_PRIORITY_MAX;

// The order in which a whole configuration is pushed.
inline constexpr RecordClass kRecordClasses[] = {
    Describe<SwctSwitchPortRecord>(SWCT_CLASS_SWITCH_PORT, kPorts, 0, true),
    Describe<SwctVlanRecord>(SWCT_CLASS_VLAN, SWCT_VLAN_MAX, 0, true),
    Describe<SwctProviderEdgePortRecord>(SWCT_CLASS_PROVIDER_EDGE_PORT, kPorts* SWCT_PEP_MAX, SWCT_PEP_MAX, true),
    Describe<SwctQinQPortRecord>(SWCT_CLASS_QINQ_PORT, kPorts, 0, false),
    Describe<SwctCVidRegistrationRecord>(SWCT_CLASS_CVID_REGISTRATION, kPorts* kVids, kVids, true),
    {SWCT_CLASS_SWITCH, 0, sizeof(SwctSwitchAttributes), 1, 0, false},
    Describe<SwctVlanPortRecord>(SWCT_CLASS_VLAN_PORT, SWCT_VLAN_MAX* kPorts, 0, true),
    Describe<SwctServicePriorityRegenerationRecord>(SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, kPorts* kPriorities,
                                                    kPriorities, true),
    Describe<SwctVidTranslationRecord>(SWCT_CLASS_VID_TRANSLATION, kPorts* kVids, kVids, true),
    Describe<SwctDefaultCVidRegistrationRecord>(SWCT_CLASS_DEFAULT_CVID_REGISTRATION, kPorts, 0, true),
    Describe<SwctVlanIfInnerTagRecord>(SWCT_CLASS_VLAN_IF_INNER_TAG, SWCT_VLAN_MAX, 0, false),
    {SWCT_CLASS_HRLB, 0, sizeof(uint32_t), 1, 0, false},
};
