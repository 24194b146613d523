// moid.h - the keys of each Moid, in their order; filters and the terminators of requests follow from them.
#pragma once

#include <cstring>

#include "swct/types.h"

// An iterator's result goes out in whole stores, as a caller loads it who copies it: four bytes, and two behind them.
inline void StoreMoid(SwctPortMoid* pTo, uint16_t wClassId, uint8_t bSlot, uint8_t bPort) noexcept
{
    const uint32_t dwMoid = wClassId | uint32_t{bSlot} << 16 | uint32_t{bPort} << 24;
    std::memcpy(pTo, &dwMoid, sizeof dwMoid);
}

inline void StoreMoid(SwctVlanMoid* pTo, uint16_t wClassId, uint16_t wVlanId) noexcept
{
    const uint32_t dwMoid = wClassId | uint32_t{wVlanId} << 16;
    std::memcpy(pTo, &dwMoid, sizeof dwMoid);
}

inline void StoreMoid(SwctVlanPortMoid* pTo, uint16_t wVlanId, uint8_t bSlot, uint8_t bPort) noexcept
{
    const uint64_t qwMoid =
        SWCT_CLASS_VLAN_PORT | uint32_t{wVlanId} << 16 | uint64_t{bSlot} << 32 | uint64_t{bPort} << 40;
    std::memcpy(pTo, &qwMoid, sizeof *pTo);
}

// Of the Moids with a 16-bit key behind slot and port.
template <class Moid>
void StoreMoid(Moid* pTo, uint16_t wClassId, uint8_t bSlot, uint8_t bPort, uint16_t wKey) noexcept
{
    static_assert(sizeof(Moid) == 6);
    const uint64_t qwMoid = wClassId | uint32_t{bSlot} << 16 | uint32_t{bPort} << 24 | uint64_t{wKey} << 32;
    std::memcpy(pTo, &qwMoid, sizeof(Moid));
}

// Whether 'test(left key, right key)' is true for each key, one after the other until one fails.
template <class Test>
constexpr bool EveryKey(const SwctVlanMoid& sLeft, const SwctVlanMoid& sRight, Test test) noexcept
{
    return test(sLeft.wVlanId, sRight.wVlanId);
}

template <class Test>
constexpr bool EveryKey(const SwctVlanPortMoid& sLeft, const SwctVlanPortMoid& sRight, Test test) noexcept
{
    return test(sLeft.wVlanId, sRight.wVlanId) && test(sLeft.bSlot, sRight.bSlot) && test(sLeft.bPort, sRight.bPort);
}

// The slot and port of the Moids that begin with them.
template <class Moid, class Test>
constexpr bool BothPortKeys(const Moid& sLeft, const Moid& sRight, Test test) noexcept
{
    return test(sLeft.bSlot, sRight.bSlot) && test(sLeft.bPort, sRight.bPort);
}

template <class Test>
constexpr bool EveryKey(const SwctPortMoid& sLeft, const SwctPortMoid& sRight, Test test) noexcept
{
    return BothPortKeys(sLeft, sRight, test);
}

template <class Test>
constexpr bool EveryKey(const SwctCVidRegistrationMoid& sLeft, const SwctCVidRegistrationMoid& sRight,
                        Test test) noexcept
{
    return BothPortKeys(sLeft, sRight, test) && test(sLeft.wCVid, sRight.wCVid);
}

template <class Test>
constexpr bool EveryKey(const SwctVidTranslationMoid& sLeft, const SwctVidTranslationMoid& sRight, Test test) noexcept
{
    return BothPortKeys(sLeft, sRight, test) && test(sLeft.wLocalVid, sRight.wLocalVid);
}

template <class Test>
constexpr bool EveryKey(const SwctProviderEdgePortMoid& sLeft, const SwctProviderEdgePortMoid& sRight,
                        Test test) noexcept
{
    return BothPortKeys(sLeft, sRight, test) && test(sLeft.wPepIndex, sRight.wPepIndex);
}

template <class Test>
constexpr bool EveryKey(const SwctServicePriorityRegenerationMoid& sLeft,
                        const SwctServicePriorityRegenerationMoid& sRight, Test test) noexcept
{
    return BothPortKeys(sLeft, sRight, test) && test(sLeft.wPepIndex, sRight.wPepIndex) &&
           test(sLeft.dwPriority, sRight.dwPriority);
}

template <class Test>
constexpr bool EveryKey(const SwctQueueStatisticsMoid& sLeft, const SwctQueueStatisticsMoid& sRight, Test test) noexcept
{
    return BothPortKeys(sLeft, sRight, test) && test(sLeft.bQueue, sRight.bQueue);
}

// The one rule of all filters: a key of zero in the filter matches anything, class ids are not compared.
template <class Moid>
constexpr bool PassesFilter(const Moid* pMoid, const Moid* pFilter) noexcept
{
    return pMoid != nullptr && pFilter != nullptr && EveryKey(*pMoid, *pFilter, [](uint32_t dwKey, uint32_t dwFilter) {
               return dwFilter == 0 || dwFilter == dwKey;
           });
}

// How a request ends: at a class id of zero; in the classes of ports also at the first key that is zero.  Keys are read
// in order, because the terminator may be shorter than a whole record and end right behind the zero.
template <class Moid>
constexpr bool IsTerminator(const Moid& sMoid) noexcept
{
    if constexpr (requires { sMoid.wVlanId; }) {
        return sMoid.wClassId == 0;
    } else {
        return sMoid.wClassId == 0 || !EveryKey(sMoid, sMoid, [](uint32_t dwKey, uint32_t) { return dwKey != 0; });
    }
}
