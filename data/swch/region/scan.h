// scan.h - the one pass over a table of records that looks for some of them.
#pragma once

#include <cstddef>
#include <cstdint>

// The first index from 'first' on whose record satisfies 'test', a type of its own so that it is not called for each
// record; 'kSize' for none.  Unrolled: one load and one branch a record.  Tests look at the rarest value first.
template <class Record, std::size_t kSize, class Test>
std::size_t FindRecord(const Record (&aRecord)[kSize], std::size_t first, Test test) noexcept
{
    constexpr std::size_t kBlock = 16;
    std::size_t i = first;
    if (i < kSize && test(aRecord[i])) { // walks mostly go on at once
        return i;
    }
    for (++i; i + kBlock <= kSize; i += kBlock) {
#pragma GCC unroll 16
        for (std::size_t k = 0; k < kBlock; ++k) {
            if (test(aRecord[i + k])) [[unlikely]] {
                return i + k;
            }
        }
    }
    for (; i < kSize; ++i) {
        if (test(aRecord[i])) {
            return i;
        }
    }
    return kSize;
}

template <class Record, std::size_t kSize, class Test>
bool AnyRecord(const Record (&aRecord)[kSize], Test test) noexcept
{
    return FindRecord(aRecord, 0, test) != kSize;
}

// The key of the 'dwNth' record, from 1, that satisfies 'test'; a record's key is its index + 1.  0 for none.
template <class Record, std::size_t kSize, class Test>
uint16_t NthKey(const Record (&aRecord)[kSize], uint32_t dwNth, Test test) noexcept
{
    std::size_t i = FindRecord(aRecord, 0, test);
    for (; i != kSize && --dwNth != 0; i = FindRecord(aRecord, i + 1, test)) {
    }
    return i != kSize ? static_cast<uint16_t>(i + 1) : uint16_t{0};
}
