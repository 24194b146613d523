// requests.h - requests and reply buffers of the exchange with the CDBM, of exactly the size that the interface states.
#pragma once

#include <memory>

#include "input.h"
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

inline const RecordClass& DrawRecordClass(Input& sInput)
{
    return kRecordClasses[sInput.Byte() % (sizeof kRecordClasses / sizeof kRecordClasses[0])];
}

// Memory of exactly 'size' bytes: the address sanitizer reports what touches more.
using Bytes = std::unique_ptr<uint8_t[]>;

inline Bytes Allocate(std::size_t size)
{
    return Bytes(new uint8_t[size]());
}

// The records, a terminator, and no byte beyond.  No more than the region can hold are ever written.
inline std::size_t ReplySize(const RecordClass& sClass, uint32_t dwMaxElements)
{
    const uint64_t qwLimit = uint64_t{dwMaxElements} + sClass.dwElementsOfPort;
    const uint64_t qwRecords =
        !sClass.boLimited || qwLimit > sClass.dwRecordsMax ? uint64_t{sClass.dwRecordsMax} : qwLimit;
    return qwRecords * sClass.recordSize + sClass.moidSize;
}

// Records of any content, keys mostly plausible, and a terminator that ends behind the first zero of a Moid: the class
// id, or in classes of ports the slot.
inline Bytes DrawRequest(Input& sInput, const RecordClass& sClass)
{
    if (sClass.moidSize == 0) {
        Bytes pRecord = Allocate(sClass.recordSize);
        sInput.Fill(pRecord.get(), sClass.recordSize);
        return pRecord;
    }
    const std::size_t count = sInput.Key<uint8_t>();
    Bytes pRequest = Allocate(count * sClass.recordSize + sizeof sClass.wClass);
    for (std::size_t i = 0; i < count; ++i) {
        uint8_t* pRecord = &pRequest[i * sClass.recordSize];
        sInput.Fill(pRecord, sClass.recordSize);
        std::memcpy(pRecord, &sClass.wClass, sizeof sClass.wClass);
        for (std::size_t key = sizeof sClass.wClass; key < sClass.moidSize; ++key) {
            pRecord[key] = sInput.Key<uint8_t>();
        }
    }
    return pRequest;
}
