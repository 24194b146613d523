// config_exchange.h - what the classes of the exchange with the CDBM share: reading a request, merging it with a table,
// writing a reply.
#pragma once

#include "region/memory.h"
#include "region/moid.h"
#include "region/port_walk.h"
#include "region/provider_bridge.h"
#include "region/trace.h"

// A class: how a request is written into the region, and how a table is read as records, 'dwMaxElements' at the most.
// The handlers report under their own names; the rows stand behind them.
struct ConfigClass {
    uint16_t wClass;
    void (*pSet)(SwctData& sData, const void* pCdbmRecords) noexcept;
    void (*pGet)(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept;
};

extern const ConfigClass kSwitchClasses[3];
extern const ConfigClass kVlanClasses[3];
extern const ConfigClass kRegistrationClasses[3];
extern const ConfigClass kEdgeClasses[3];

// The records of a request, for a range-based loop.
template <class Record>
class Request {
public:
    struct End {};

    struct Iterator {
        const Record* pRecord;

        const Record& operator*() const noexcept { return *pRecord; }
        Iterator& operator++() noexcept
        {
            ++pRecord;
            return *this;
        }
        bool operator!=(End /*end*/) const noexcept { return !IsTerminator(pRecord->sMoid); }
    };

    explicit Request(const void* pCdbmRecords) noexcept : pFirst(static_cast<const Record*>(pCdbmRecords)) {}

    Iterator begin() const noexcept { return {pFirst}; }
    End end() const noexcept { return {}; }

private:
    const Record* pFirst;
};

// One merge of a request with a table: what is in both never disappears.  Positions count the elements in key order.
// In front of 'next' the table is as the request has it so far, from there on as it was; so a record out of order, or
// with a key that came before, is simply stored, and the end is the same as that of clearing the table first.
// 'clear(first, end)' clears elements that go.
template <class ClearRange>
class Merge {
public:
    explicit Merge(ClearRange clearRange) noexcept : clear(clearRange) {}

    // Before an element is stored.
    void Reach(unsigned position) noexcept
    {
        if (position >= next) {
            if (position != next) {
                clear(next, position);
            }
            next = position + 1;
        }
    }

    void Finish(unsigned end) noexcept { clear(next, end); }

private:
    ClearRange clear;
    unsigned next = 0;
};

// Ports in key order, 0 to 14; a bad key has a position behind them.
constexpr unsigned kPorts = SWCT_SLOT_MAX * SWCT_PORT_MAX;

constexpr unsigned PortIndex(uint8_t bSlot, uint8_t bPort) noexcept
{
    return IsPort(bSlot, bPort) ? (bSlot - 1U) * SWCT_PORT_MAX + bPort - 1U : kPorts;
}

constexpr uint8_t SlotOf(unsigned port) noexcept { return static_cast<uint8_t>(port / SWCT_PORT_MAX + 1); }

constexpr uint8_t PortOf(unsigned port) noexcept { return static_cast<uint8_t>(port % SWCT_PORT_MAX + 1); }

// Writes records one behind the other into the caller's buffer and counts them.
class Reply {
public:
    explicit Reply(uint8_t* pBuffer) noexcept : pEnd(pBuffer) {}

    template <class Moid, class Body>
    void Add(const Moid& sMoid, const Body& sBody) noexcept
    {
        Append(&sMoid, sizeof sMoid);
        Append(&sBody, sizeof sBody);
        ++dwCount;
    }

    // A Moid of zeroes.
    template <class Moid>
    void Terminate() noexcept
    {
        static constexpr Moid kTerminator{};
        Append(&kTerminator, sizeof kTerminator);
    }

    uint32_t Count() const noexcept { return dwCount; }

private:
    void Append(const void* pBytes, std::size_t size) noexcept
    {
        std::memcpy(pEnd, pBytes, size);
        pEnd += size;
    }

    uint8_t* pEnd;
    uint32_t dwCount = 0;
};
