// bitmap.h - VLAN bitmaps of 512 bytes: VLAN v is bit v % 8 of byte v / 8.
#pragma once

#include <cstring>

#include "swct/types.h"

inline void ClearBitmap(uint8_t* pBitmap) noexcept { std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE); }

// 'wVlanId' is at most 4095.
inline void SetBit(uint8_t* pBitmap, uint16_t wVlanId) noexcept
{
    pBitmap[wVlanId / 8] = static_cast<uint8_t>(pBitmap[wVlanId / 8] | 1U << wVlanId % 8);
}

inline bool IsBitSet(const uint8_t* pBitmap, uint16_t wVlanId) noexcept
{
    return (pBitmap[wVlanId / 8] >> wVlanId % 8 & 1U) != 0;
}

// Adds the keys, index + 1, of the records that satisfy 'test' to a bitmap; whether there is one.  A byte at a time in
// a register: setting bit by bit would wait for the store before.
template <class Record, std::size_t kSize, class Test>
bool AddKeys(uint8_t* pBitmap, const Record (&aRecord)[kSize], Test test) noexcept
{
    unsigned anySet = 0;
    const auto addByte = [&](unsigned byte, unsigned firstBit, unsigned endBit) {
        unsigned bits = 0;
#pragma GCC unroll 8
        for (unsigned bit = firstBit; bit < endBit; ++bit) {
            bits |= (test(aRecord[byte * 8 + bit - 1]) ? 1U : 0U) << bit;
        }
        pBitmap[byte] = static_cast<uint8_t>(pBitmap[byte] | bits);
        anySet |= bits;
    };
    constexpr unsigned kLast = kSize / 8; // the byte of the last key
    addByte(0, 1, 8);
    for (unsigned byte = 1; byte < kLast; ++byte) {
        addByte(byte, 0, 8);
    }
    addByte(kLast, 0, kSize % 8 + 1);
    return anySet != 0;
}
