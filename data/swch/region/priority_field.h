// priority_field.h - the eight 3-bit fields of a PEP's service priority word; a field holds the priority minus 1.
#pragma once

#include <cstdint>

constexpr uint32_t kPriorityMask = 7;

// 'dwPriority' is 1 to 8.
constexpr uint32_t PriorityShift(uint32_t dwPriority) noexcept
{
    return 3 * (dwPriority - 1);
}

constexpr uint32_t PriorityOf(uint32_t dwWord, uint32_t dwPriority) noexcept
{
    return (dwWord >> PriorityShift(dwPriority) & kPriorityMask) + 1;
}

// The word with one field replaced; of the regenerated priority the low three bits of its value minus 1 count.
constexpr uint32_t WithPriority(uint32_t dwWord, uint32_t dwPriority, uint32_t dwRegeneratedPriority) noexcept
{
    const uint32_t dwShift = PriorityShift(dwPriority);
    return (dwWord & ~(kPriorityMask << dwShift)) | ((dwRegeneratedPriority - 1) & kPriorityMask) << dwShift;
}
