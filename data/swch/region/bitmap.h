// bitmap.h - VLAN bitmaps of 512 bytes: VLAN v is bit v % 8 of byte v / 8.
#pragma once

#include <cstring>

#include "memory.h"
#include "swct/pb_data.h"

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

// The first two words of four records, the second one in the upper half.
using WordPairs __attribute__((vector_size(16))) = uint32_t;

// The same for C-VID registrations, sixteen at a time: 'test' looks at C-VID and S-VID of four and gives all bits of
// those that satisfy it.
template <std::size_t kSize, class Test>
bool AddKeys(uint8_t* pBitmap, const SwctCVidRegistration (&aRecord)[kSize], Test test) noexcept requires
    requires(WordPairs pairs)
{
    test(pairs);
}
{
    const auto fourAt = [&](std::size_t i) {
        uint32_t adwPair[4];
        for (unsigned k = 0; k < 4; ++k) {
            std::memcpy(&adwPair[k], &aRecord[i + k], sizeof adwPair[k]);
        }
        return WordPairs{adwPair[0], adwPair[1], adwPair[2], adwPair[3]};
    };
    // Bit k is record i + k.
    const auto sixteenAt = [&](std::size_t i) {
        const auto bits = (test(fourAt(i)) & WordPairs{1, 2, 4, 8}) |
                          (test(fourAt(i + 4)) & WordPairs{16, 32, 64, 128}) |
                          (test(fourAt(i + 8)) & WordPairs{1U << 8, 1U << 9, 1U << 10, 1U << 11}) |
                          (test(fourAt(i + 12)) & WordPairs{1U << 12, 1U << 13, 1U << 14, 1U << 15});
        return static_cast<uint32_t>(bits[0] | bits[1] | bits[2] | bits[3]);
    };
    uint32_t dwAnySet = 0;
    uint32_t dwCarry = 0; // record i is bit i + 1 of the bitmap
    const auto add = [&](std::size_t i, uint32_t dwBits) {
        uint16_t wWord = 0;
        std::memcpy(&wWord, pBitmap + i / 8, sizeof wWord);
        wWord = static_cast<uint16_t>(wWord | dwBits << 1 | dwCarry);
        std::memcpy(pBitmap + i / 8, &wWord, sizeof wWord);
        dwCarry = dwBits >> 15;
        dwAnySet |= dwBits;
    };
    constexpr std::size_t kWhole = kSize / 16 * 16;
    for (std::size_t i = 0; i < kWhole; i += 16) {
        add(i, sixteenAt(i));
    }
    add(kWhole, sixteenAt(kSize - 16) >> (kWhole + 16 - kSize)); // the last sixteen again, for those that are left
    return dwAnySet != 0;
}

// Adds the values 1 to 4095 that 'valueOf(record)' gives to a bitmap.  A byte for each value: setting bits would load
// what the record before has stored.
template <class Record, std::size_t kSize, class ValueOf>
void AddValues(uint8_t* pBitmap, const Record (&aRecord)[kSize], ValueOf valueOf) noexcept
{
    uint8_t aboSeen[SWCT_VLAN_BITMAP_SIZE * 8] = {};
    for (const Record& sRecord : aRecord) {
        const uint16_t wValue = ReadOnce<uint16_t>(valueOf(sRecord));
        aboSeen[wValue < sizeof aboSeen ? wValue : 0] = 1;
    }
    aboSeen[0] = 0;
    for (std::size_t byte = 0; byte < SWCT_VLAN_BITMAP_SIZE; ++byte) {
        uint64_t qwEight = 0;
        std::memcpy(&qwEight, &aboSeen[byte * 8], sizeof qwEight);
        pBitmap[byte] = static_cast<uint8_t>(pBitmap[byte] | qwEight * 0x0102040810204080 >> 56);
    }
}
