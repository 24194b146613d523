// memory.h - values, and reading and writing where another process, or a careless caller, may be at work too.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

// The result of a test, as the interface has it.
constexpr uint32_t YesOrNo(bool boYes) noexcept { return boYes ? 1 : 0; }

// A value that selects memory or bounds a loop.  The compiler cannot read it again behind the test: the empty
// assembler statement hides where the value came from.
template <class Value>
inline Value ReadOnce(Value value) noexcept
{
    asm volatile("" : "+r"(value)); // NOLINT(hicpp-no-assembler)
    return value;
}

// Loads everything before it stores anything, in parts of 16 bytes or what fits of a power of two; the last part
// overlaps the one before it.
template <std::size_t kSize>
inline void CopyBytes(unsigned char* pTo, const unsigned char* pFrom) noexcept
{
    constexpr std::size_t kPart = kSize >= 16 ? 16 : std::bit_floor(kSize);
    struct Part {
        unsigned char abByte[kPart];
    };
    const auto copy = [&]<std::size_t... kI>(std::index_sequence<kI...>)
    {
        constexpr std::size_t kOffsets[] = {std::min(kI * kPart, kSize - kPart)...};
        Part aPart[sizeof...(kI)];
        (std::memcpy(&aPart[kI], pFrom + kOffsets[kI], kPart), ...);
        (std::memcpy(pTo + kOffsets[kI], &aPart[kI], kPart), ...);
    };
    copy(std::make_index_sequence<(kSize + kPart - 1) / kPart>{});
}

// Copies a record.  A caller may pass a pointer into the region, so the two may overlap.  In place by registers, where
// memmove would be a call out of the library.
template <class Record>
inline void CopyRecord(Record* pTo, const Record* pFrom) noexcept
{
    CopyBytes<sizeof(Record)>(reinterpret_cast<unsigned char*>(pTo), reinterpret_cast<const unsigned char*>(pFrom));
}

// The body of a read or a write: copies when there is a place and a record.
template <class Record>
inline void CopyIfThere(Record* pTo, const Record* pFrom) noexcept
{
    if (pTo != nullptr && pFrom != nullptr) {
        CopyRecord(pTo, pFrom);
    }
}

// Calls 'act(record)' when there is one.
template <class Record, class Act>
inline void IfThere(Record* pRecord, Act act) noexcept
{
    if (pRecord != nullptr) {
        act(*pRecord);
    }
}

// Copies the bytes from 'kOffset' on in parts, each by one store if it has 1, 2, 4, 8 or 16 bytes.  Parts that split no
// field let another process see each field as it was or as it becomes; the compiler cannot join them and split again.
template <std::size_t kOffset, std::size_t... kParts, class Record>
inline void CopyParts(Record* pTo, const Record* pFrom) noexcept
{
    auto* pToByte = reinterpret_cast<unsigned char*>(pTo) + kOffset;
    const auto* pFromByte = reinterpret_cast<const unsigned char*>(pFrom) + kOffset;
    const auto copyPart = [&]<std::size_t kPart>() {
        CopyBytes<kPart>(pToByte, pFromByte);
        pToByte += kPart;
        pFromByte += kPart;
        asm volatile("" ::: "memory"); // NOLINT(hicpp-no-assembler)
    };
    (copyPart.template operator()<kParts>(), ...);
}

// Stores what other processes look at first, behind all that was stored before it.
inline void Publish(uint8_t& bTo, uint8_t bValue) noexcept { __atomic_store_n(&bTo, bValue, __ATOMIC_RELEASE); }

// Stores into a caller's variable, which a packed record may have put anywhere.
template <class Value>
inline void StoreAt(Value* pTo, Value value) noexcept
{
    std::memcpy(pTo, &value, sizeof(Value));
}

// Zero-fills a record.
template <class Record>
inline void Clear(Record* pRecord) noexcept
{
    std::memset(pRecord, 0, sizeof(Record));
}

// Copies at most 'longest' characters of a string into a field, and zeroes to its end.  The two may overlap.
template <std::size_t kSize>
inline void StoreName(char (&acField)[kSize], const char* pName, std::size_t longest = kSize - 1) noexcept
{
    const std::size_t length = strnlen(pName, longest);
    std::memmove(acField, pName, length);
    std::memset(acField + length, 0, kSize - length);
}

// Zero-fills an array of the region, whose elements may be misaligned.
#define SWCT_CLEAR_ARRAY(array) std::memset((array), 0, sizeof(array))
