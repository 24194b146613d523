// moid.h - the keys of each Moid, in their order; filters and the terminators of requests follow from them.
#pragma once

#include "swct/types.h"

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
