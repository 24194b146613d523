// kernels.h - the fastest loops that were found over packed records of 12 and 17 bytes and VLAN entries.
//
// Sixteen records at a time: one load each, three levels of interleaving, one comparison for eight of them, one branch
// for sixteen.  That is as fast as a branch for each record in an unrolled loop where nothing matches, does not depend
// on what the data hold, on the branch predictor or on where the loop lies, and gives bitmaps at the same cost.  Both
// reach the rate of the second-level cache.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>

namespace kernels {

inline __m128i Load4(const uint8_t* p) noexcept
{
    int i;
    std::memcpy(&i, p, sizeof i);
    return _mm_cvtsi32_si128(i);
}

inline uint16_t LoadWord(const uint8_t* p) noexcept
{
    uint16_t w;
    std::memcpy(&w, p, sizeof w);
    return w;
}

// The words at p, p + kStride, ... of eight records.  Two bytes behind each are read too.
template <std::size_t kStride>
inline __m128i Words8(const uint8_t* p) noexcept
{
    const auto pair = [p](std::size_t i) {
        return _mm_unpacklo_epi16(Load4(p + i * kStride), Load4(p + (i + 4) * kStride));
    };
    return _mm_unpacklo_epi16(_mm_unpacklo_epi16(pair(0), pair(2)), _mm_unpacklo_epi16(pair(1), pair(3)));
}

// The words at p and p + 2 of four records.
template <std::size_t kStride>
inline __m128i Pairs4(const uint8_t* p) noexcept
{
    return _mm_unpacklo_epi64(_mm_unpacklo_epi32(Load4(p), Load4(p + kStride)),
                              _mm_unpacklo_epi32(Load4(p + 2 * kStride), Load4(p + 3 * kStride)));
}

// Tests: 'Hits' has all bits set in the lanes of the eight records that pass.

// A word has a value.
template <std::size_t kOffset>
struct WordIs {
    __m128i key;
    explicit WordIs(uint16_t wKey) noexcept : key(_mm_set1_epi16(static_cast<short>(wKey))) {}

    template <std::size_t kStride>
    __m128i Hits(const uint8_t* p) const noexcept
    {
        return _mm_cmpeq_epi16(Words8<kStride>(p + kOffset), key);
    }
};

// The first word, which says whether a record is in use, is not zero.
struct InUse {
    template <std::size_t kStride>
    __m128i Hits(const uint8_t* p) const noexcept
    {
        return _mm_cmpeq_epi16(_mm_cmpeq_epi16(Words8<kStride>(p), _mm_setzero_si128()), _mm_setzero_si128());
    }
};

// The first word is not zero and the second has a value: exact, for bitmaps.
struct InUseWith {
    __m128i key;
    explicit InUseWith(uint16_t wKey) noexcept : key(_mm_set1_epi32(static_cast<int>(uint32_t{wKey} << 16))) {}

    template <std::size_t kStride>
    __m128i Hits(const uint8_t* p) const noexcept
    {
        // Of each pair the lower word must differ from 0, the upper one be the value.
        const __m128i pattern = _mm_set1_epi32(static_cast<int>(0xFFFF0000U));
        const __m128i low = _mm_cmpeq_epi32(_mm_cmpeq_epi16(Pairs4<kStride>(p), key), pattern);
        const __m128i high = _mm_cmpeq_epi32(_mm_cmpeq_epi16(Pairs4<kStride>(p + 4 * kStride), key), pattern);
        return _mm_packs_epi32(low, high);
    }
};

// Bit i is record i of sixteen.
template <std::size_t kStride, class Test>
inline unsigned Mask16(const uint8_t* p, const Test& test) noexcept
{
    const __m128i low = test.template Hits<kStride>(p);
    const __m128i high = test.template Hits<kStride>(p + 8 * kStride);
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
}

// Calls 'visit(first, mask)' for sixteen records after the other, from record 'i' on, until it answers true.  The last
// sixteen overlap those before, with the bits cleared that were shown.
template <std::size_t kStride, class Test, class Visit>
inline bool VisitMasks(const uint8_t* p, unsigned i, unsigned count, const Test& test, Visit visit) noexcept
{
    for (; i + 16 <= count; i += 16) {
        if (visit(i, Mask16<kStride>(p + i * kStride, test))) {
            return true;
        }
    }
    if (i < count) {
        const unsigned last = count - 16;
        return visit(last, Mask16<kStride>(p + last * kStride, test) & 0xFFFFU << (i - last));
    }
    return false;
}

// The 'nth' record, from 1, that passes 'filter', a test of the rarest field, and 'confirm(record)'; its index, or
// 'count' for none.
template <std::size_t kStride, class Filter, class Confirm>
inline unsigned Find(const uint8_t* p, unsigned i, unsigned count, unsigned nth, const Filter& filter,
                     Confirm confirm) noexcept
{
    unsigned found = count;
    VisitMasks<kStride>(p, i, count, filter, [&](unsigned first, unsigned mask) {
        for (; __builtin_expect(mask != 0, 0); mask &= mask - 1) {
            const unsigned index = first + static_cast<unsigned>(std::countr_zero(mask));
            if (confirm(p + index * kStride) && --nth == 0) {
                found = index;
                return true;
            }
        }
        return false;
    });
    return found;
}

// Sets bit i + 1 of a bitmap of 512 bytes where record i of 4094 passes, and adds to what is there or clears the rest;
// whether a record passes.
template <std::size_t kStride, bool kAdds, class Test>
inline bool Bitmap(const uint8_t* p, const Test& test, uint8_t* pBitmap) noexcept
{
    constexpr unsigned kCount = 4094;
    unsigned any = 0;
    unsigned carry = 0;
    const auto store = [&](unsigned i, unsigned mask) {
        unsigned bits = carry | mask << 1;
        if (kAdds) {
            bits |= LoadWord(pBitmap + i / 8);
        }
        const auto wBits = static_cast<uint16_t>(bits);
        std::memcpy(pBitmap + i / 8, &wBits, sizeof wBits);
        carry = mask >> 15;
        any |= mask;
    };
    unsigned i = 0;
    for (; i + 16 <= kCount; i += 16) {
        store(i, Mask16<kStride>(p + i * kStride, test));
    }
    store(i, Mask16<kStride>(p + (kCount - 16) * kStride, test) >> (i + 16 - kCount)); // the last fourteen
    return any != 0;
}

// The values below 4096, but 0, of a word of 4094 records, as a bitmap.  A byte for each value: setting bits would load
// what the record before has stored.
template <std::size_t kStride>
inline void BitmapOfValues(const uint8_t* p, uint8_t* pBitmap) noexcept
{
    alignas(16) uint8_t abSeen[4096] = {};
    for (unsigned i = 0; i < 4094; ++i) {
        const unsigned value = LoadWord(p + i * kStride);
        abSeen[value < sizeof abSeen ? value : 0] = 0x80;
    }
    abSeen[0] = 0;
    for (std::size_t i = 0; i < sizeof abSeen; i += 16) {
        __m128i seen;
        std::memcpy(&seen, abSeen + i, sizeof seen);
        const auto wBits = static_cast<uint16_t>(_mm_movemask_epi8(seen));
        std::memcpy(pBitmap + i / 8, &wBits, sizeof wBits);
    }
}

// Which of fifteen memberships are not zero: bit 5 * (slot - 1) + port - 1.  Reads four bytes before them.
inline unsigned Members(const uint8_t* pMemberships) noexcept
{
    __m128i part[4];
    for (int i = 0; i < 4; ++i) {
        std::memcpy(&part[i], pMemberships - 4 + 16 * i, sizeof part[i]);
        part[i] = _mm_cmpeq_epi32(part[i], _mm_setzero_si128());
    }
    const __m128i none = _mm_packs_epi16(_mm_packs_epi32(part[0], part[1]), _mm_packs_epi32(part[2], part[3]));
    return ~static_cast<unsigned>(_mm_movemask_epi8(none)) >> 1 & 0x7FFF;
}

} // namespace kernels
