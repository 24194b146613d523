// bitmap.h - VLAN bitmaps of 512 bytes: VLAN v is bit v % 8 of byte v / 8.
#pragma once

#include <cstring>

#include "swct/types.h"

inline void ClearBitmap(uint8_t* pBitmap) noexcept
{
    std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
}

// 'wVlanId' is at most 4095.
inline void SetBit(uint8_t* pBitmap, uint16_t wVlanId) noexcept
{
    pBitmap[wVlanId / 8] = static_cast<uint8_t>(pBitmap[wVlanId / 8] | 1U << wVlanId % 8);
}

inline bool IsBitSet(const uint8_t* pBitmap, uint16_t wVlanId) noexcept
{
    return (pBitmap[wVlanId / 8] >> wVlanId % 8 & 1U) != 0;
}
