// requests.h - requests and reply buffers of the exchange with the CDBM, of exactly the size that the interface states.
#pragma once

#include <memory>

#include "input.h"
#include "support/record_classes.h"

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
