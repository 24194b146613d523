// memory.h - reading and writing where another process, or a careless caller, may be at work too.
#pragma once

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

// Copies a record.  A caller may pass a pointer into the region, so the two may overlap.
template <class Record>
inline void CopyRecord(Record* pTo, const Record* pFrom) noexcept
{
    std::memmove(pTo, pFrom, sizeof(Record));
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
