// config_request.h - reading a request record by record.
#pragma once

#include "region/trace.h"
#include "region/views.h"

// How a request ends: at the first record whose class id, or one of the keys that its class names, is zero.  Keys are
// read in order, because the terminator may be shorter than a whole record and end right behind the zero.
template <class Moid>
bool IsTerminator(const Moid& sMoid) noexcept
{
    if (sMoid.wClassId == 0) {
        return true;
    }
    if constexpr (requires { sMoid.wVlanId; }) {
        return false; // VLAN-keyed classes end at a zero class id only
    } else {
        if (sMoid.bSlot == 0 || sMoid.bPort == 0) {
            return true;
        }
        if constexpr (requires { sMoid.wCVid; }) {
            return sMoid.wCVid == 0;
        } else if constexpr (requires { sMoid.wLocalVid; }) {
            return sMoid.wLocalVid == 0;
        } else if constexpr (requires { sMoid.dwPriority; }) {
            return sMoid.wPepIndex == 0 || sMoid.dwPriority == 0;
        } else if constexpr (requires { sMoid.wPepIndex; }) {
            return sMoid.wPepIndex == 0;
        }
        return false;
    }
}

// The records of a request, for a range-based loop.
template <class Record>
class Request {
public:
    struct End {};

    struct Iterator {
        const Record* pRecord;

        const Record& operator*() const noexcept
        {
            return *pRecord;
        }
        Iterator& operator++() noexcept
        {
            ++pRecord;
            return *this;
        }
        bool operator!=(End /*end*/) const noexcept
        {
            return !IsTerminator(pRecord->sMoid);
        }
    };

    explicit Request(const void* pCdbmRecords) noexcept : pFirst(static_cast<const Record*>(pCdbmRecords)) {}

    Iterator begin() const noexcept
    {
        return {pFirst};
    }
    End end() const noexcept
    {
        return {};
    }

private:
    const Record* pFirst;
};

// A record of a QinQ or provider-bridge class whose key names no element.  A macro: the report carries the handler's
// name.
#define SWCT_REPORT_SKIPPED(wClass, sMoid)                                                                 \
    SWCT_ERROR(kErrorPlain, "Class %d: no element for S/P %d/%d, record skipped\n", wClass, (sMoid).bSlot, \
               (sMoid).bPort)
