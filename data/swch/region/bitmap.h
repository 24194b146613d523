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

// Sets the bits of the VLANs from 1 to 'wLast' that satisfy 'test' and clears all others; whether one is set.  A byte
// at a time in a register: setting bit by bit would wait for the store before.
template <class Test>
bool FillBitmap(uint8_t* pBitmap, uint16_t wLast, Test test) noexcept
{
    bool boAnySet = false;
    for (unsigned byte = 0; byte < SWCT_VLAN_BITMAP_SIZE; ++byte) {
        unsigned bits = 0;
        for (unsigned bit = 0; bit < 8; ++bit) {
            const auto wVlanId = static_cast<uint16_t>(byte * 8 + bit);
            bits |= (wVlanId - 1U < wLast && test(wVlanId) ? 1U : 0U) << bit;
        }
        pBitmap[byte] = static_cast<uint8_t>(bits);
        boAnySet |= bits != 0;
    }
    return boAnySet;
}
