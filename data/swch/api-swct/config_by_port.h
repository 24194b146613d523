// config_by_port.h - the classes of the exchange with the CDBM whose objects lie in the ports' provider-bridge data.
// Records are stored whatever their port's type is at that moment; only what is cleared goes by type.
#pragma once

#include <bit>

#include "config_exchange.h"

// A record whose key names no element.  A macro: the report carries the handler's name.
#define SWCT_REPORT_SKIPPED(handler, wClass, sMoid)                                                                    \
    SWCT_ERROR_AS(handler, kErrorPlain, "Class %d: no element for S/P %d/%d, record skipped\n", wClass, (sMoid).bSlot, \
                  (sMoid).bPort)

using PairOfWords __attribute__((vector_size(16))) = uint64_t;

// Stores an array of the region that was made aside, in chunks: one that is equal is left alone, no entry is split.
template <std::size_t kSize>
void StoreArray(SwctPackedU16 (&awStored)[kSize], const SwctPackedU16 (&awNew)[kSize]) noexcept
{
    using Eight __attribute__((vector_size(16))) = uint16_t;
    struct Chunk {
        Eight aPart[4];
    };
    constexpr std::size_t kChunk = sizeof(Chunk) / sizeof(uint16_t);
    const auto storeChunk = [&](std::size_t i) {
        Chunk sStored;
        Chunk sNew;
        std::memcpy(&sStored, &awStored[i], sizeof sStored);
        std::memcpy(&sNew, &awNew[i], sizeof sNew);
        const auto difference =
            reinterpret_cast<PairOfWords>((sStored.aPart[0] ^ sNew.aPart[0]) | (sStored.aPart[1] ^ sNew.aPart[1]) |
                                          (sStored.aPart[2] ^ sNew.aPart[2]) | (sStored.aPart[3] ^ sNew.aPart[3]));
        if ((difference[0] | difference[1]) != 0) {
            std::memcpy(&awStored[i], &sNew, sizeof sNew);
        }
    };
    for (std::size_t i = 0; i + kChunk <= kSize; i += kChunk) {
        storeChunk(i);
    }
    if constexpr (kSize % kChunk != 0) {
        std::size_t i = kSize / kChunk * kChunk;
        for (; i < kSize; ++i) {
            awStored[i] = awNew[i];
        }
    }
}

// The records of keys 'wFrom' to 'wEnd' - 1 go.  Mostly there are none, or few.
template <class Record, std::size_t kSize>
inline void ClearKeys(Record (&aRecord)[kSize], uint16_t wFrom, uint16_t wEnd) noexcept
{
    constexpr int kFew = 8;
    if (wEnd == wFrom) [[likely]] {
        return;
    }
    if (wEnd - wFrom > kFew) {
        std::memset(&aRecord[wFrom - 1], 0, static_cast<std::size_t>(wEnd - wFrom) * sizeof(Record));
        return;
    }
    for (uint16_t wKey = wFrom; wKey < wEnd; ++wKey) {
        Clear(&aRecord[wKey - 1]);
    }
}

// Writes a class whose objects lie in the ports: its ports of the type that is cleared first, each as one merge.
// What a class has:
// - Run: the state of the port whose records are coming; apart from the class, so that it stays in registers.
// - EndsAt(moid): whether the key behind slot and port is zero, which ends the request.
// - Open(data, fresh) begins a port; a fresh one holds what it held before the request and takes over the new state
//   only.
// - Store(run, record) stores a record; false when its key names no element.
// - Close(run) ends it: what is left of the old state goes, and what was made aside is stored.
template <class Class>
void WriteByPort(SwctData& sData, const void* pCdbmRecords, Class& sClass) noexcept
{
    uint32_t dwFresh = 0; // a bit for each port
    ForEachWalkedPort([&](uint8_t bSlot, uint8_t bPort) {
        if (Class::IsCleared(StoredPbPortType(&sData, bSlot, bPort))) {
            dwFresh |= 1U << PortIndex(bSlot, bPort);
        }
    });
    const auto open = [&](unsigned port) {
        const bool boFresh = (dwFresh >> port & 1U) != 0;
        dwFresh &= ~(1U << port);
        return sClass.Open(*PbData(&sData, SlotOf(port), PortOf(port)), boFresh);
    };
    // The fresh ports that no record has named go.
    const auto clearUpTo = [&](unsigned end) {
        while ((dwFresh & ((1U << end) - 1)) != 0) {
            sClass.Close(open(static_cast<unsigned>(std::countr_zero(dwFresh))));
        }
    };
    const auto* pRecord = static_cast<const typename Class::Record*>(pCdbmRecords);
    while (!IsTerminator(pRecord->sMoid)) {
        // A run of records of one port, which is looked up once.
        const uint8_t bSlot = ReadOnce<uint8_t>(pRecord->sMoid.bSlot);
        const uint8_t bPort = ReadOnce<uint8_t>(pRecord->sMoid.bPort);
        const unsigned port = PortIndex(bSlot, bPort);
        const bool boIsPort = port != kPorts;
        typename Class::Run sRun{};
        if (boIsPort) {
            clearUpTo(port);
            sRun = open(port);
        }
        do {
            if (!boIsPort || !sClass.Store(sRun, *pRecord)) [[unlikely]] {
                SWCT_REPORT_SKIPPED(Class::kHandler, Class::kClass, pRecord->sMoid);
            }
            ++pRecord;
        } while (pRecord->sMoid.wClassId != 0 && pRecord->sMoid.bSlot == bSlot && pRecord->sMoid.bPort == bPort &&
                 !Class::EndsAt(pRecord->sMoid));
        if (boIsPort) {
            sClass.Close(sRun);
        }
    }
    clearUpTo(kPorts);
}

// Reads such a class: 'add(reply, slot, port)' adds the records of a port.  The limit is tested before each port only;
// a list that reached it has no terminator.
template <class Moid, class AddPort>
void ReadByPort(uint8_t* pBuffer, uint32_t dwMaxElements, AddPort add) noexcept
{
    Reply sReply(pBuffer);
    AnyPort([&](uint8_t bSlot, uint8_t bPort) {
        if (sReply.Count() >= dwMaxElements) {
            return true;
        }
        add(sReply, bSlot, bPort);
        return false;
    });
    if (sReply.Count() < dwMaxElements) {
        sReply.Terminate<Moid>();
    }
}

// Reads a class whose objects are the records in use of a table; 'open(slot, port)' gives that of a port, or null.
template <class Moid, class Open>
void ReadTables(uint16_t wClass, uint8_t* pBuffer, uint32_t dwMaxElements, Open open) noexcept
{
    ReadByPort<Moid>(pBuffer, dwMaxElements, [&](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
        const auto* pTable = open(bSlot, bPort);
        if (pTable == nullptr) {
            return;
        }
        uint16_t wKey = 0;
        for (const auto& sRecord : *pTable) {
            ++wKey;
            if (IsInUse{}(sRecord)) {
                sReply.Add(Moid{wClass, bSlot, bPort, wKey}, sRecord);
            }
        }
    });
}
