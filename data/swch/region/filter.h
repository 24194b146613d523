// filter.h - the one rule of all filters: a key of zero matches anything.
#pragma once

#include <cstdint>

struct FilterKey {
    uint32_t dwValue;
    uint32_t dwFilter;
};

template <class... Keys>
constexpr uint32_t PassesFilter(Keys... keys) noexcept
{
    return ((keys.dwFilter == 0 || keys.dwFilter == keys.dwValue) && ...) ? 1 : 0;
}

// Moids keyed by slot and port alone.
template <class Moid>
uint32_t PassesPortFilter(const Moid* pMoid, const Moid* pFilter) noexcept
{
    return pMoid != nullptr && pFilter != nullptr
               ? PassesFilter(FilterKey{pMoid->bSlot, pFilter->bSlot}, FilterKey{pMoid->bPort, pFilter->bPort})
               : 0;
}
