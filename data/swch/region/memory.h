// memory.h - reading and writing where another process, or a careless caller, may be at work too.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

// A value that selects memory or bounds a loop.  The compiler cannot read it again behind the test: the empty
// assembler statement hides where the value came from.
template <class Value>
inline Value ReadOnce(Value value) noexcept
{
    asm volatile("" : "+r"(value)); // NOLINT(hicpp-no-assembler)
    return value;
}

// Loads everything before it stores anything.
template <std::size_t kSize>
inline void CopyBytes(unsigned char* pTo, const unsigned char* pFrom) noexcept
{
    if constexpr (kSize >= 16) {
        using Part __attribute__((vector_size(16))) = unsigned char;
        Part part;
        std::memcpy(&part, pFrom, sizeof part);
        CopyBytes<kSize - sizeof part>(pTo + sizeof part, pFrom + sizeof part);
        std::memcpy(pTo, &part, sizeof part);
    } else if constexpr (kSize != 0) {
        unsigned char abPart[std::bit_floor(kSize)];
        std::memcpy(abPart, pFrom, sizeof abPart);
        CopyBytes<kSize - sizeof abPart>(pTo + sizeof abPart, pFrom + sizeof abPart);
        std::memcpy(pTo, abPart, sizeof abPart);
    }
}

// Copies a record.  A caller may pass a pointer into the region, so the two may overlap.  In place by registers, where
// memmove would be a call out of the library.
template <class Record>
inline void CopyRecord(Record* pTo, const Record* pFrom) noexcept
{
    CopyBytes<sizeof(Record)>(reinterpret_cast<unsigned char*>(pTo), reinterpret_cast<const unsigned char*>(pFrom));
}

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

// Copies a string into a field: what fits of it, and zeroes to the end.  The two may overlap.
template <std::size_t kSize>
inline void StoreName(char (&acField)[kSize], const char* pName) noexcept
{
    const std::size_t length = strnlen(pName, kSize - 1);
    std::memmove(acField, pName, length);
    std::memset(acField + length, 0, kSize - length);
}

// Zero-fills an array of the region, whose elements may be misaligned.
#define SWCT_CLEAR_ARRAY(array) std::memset((array), 0, sizeof(array))
