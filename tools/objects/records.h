// records.h - the order of the records of a class, and finding those of one port or VLAN.
#pragma once

#include "objects/configuration.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace tool {

inline constexpr std::size_t kPortsMax = std::size_t{SWCT_SLOT_MAX} * SWCT_PORT_MAX;

// Which of the two layouts of the provider-bridge data a stored port type means.
enum class PbLayout { kNone, kNetworkPort, kCep };

constexpr PbLayout LayoutOf(uint32_t dwPbPortType)
{
    return dwPbPortType == SWCT_PB_PORT_CEP                                       ? PbLayout::kCep
           : dwPbPortType == SWCT_PB_PORT_PNP || dwPbPortType == SWCT_PB_PORT_CNP ? PbLayout::kNetworkPort
                                                                                  : PbLayout::kNone;
}

// What comes first, the last key (VID, index, priority) and, of the class with two, the one before it.
constexpr uint64_t MakeKey(uint32_t first, uint32_t last, uint32_t middle = 0)
{
    return (uint64_t{first} << 32U) | (uint64_t{middle} << 16U) | last;
}

constexpr uint32_t PortNumber(uint8_t slot, uint8_t port)
{
    return (static_cast<uint32_t>(slot) << 8U) | port;
}

// Moids of a class compare as these numbers do.
inline uint64_t KeyOf(const SwctPortMoid& sMoid)
{
    return MakeKey(PortNumber(sMoid.bSlot, sMoid.bPort), 0);
}
inline uint64_t KeyOf(const SwctVlanMoid& sMoid)
{
    return MakeKey(sMoid.wVlanId, 0);
}
inline uint64_t KeyOf(const SwctVlanPortMoid& sMoid)
{
    return MakeKey(sMoid.wVlanId, PortNumber(sMoid.bSlot, sMoid.bPort));
}
inline uint64_t KeyOf(const SwctCVidRegistrationMoid& sMoid)
{
    return MakeKey(PortNumber(sMoid.bSlot, sMoid.bPort), sMoid.wCVid);
}
inline uint64_t KeyOf(const SwctVidTranslationMoid& sMoid)
{
    return MakeKey(PortNumber(sMoid.bSlot, sMoid.bPort), sMoid.wLocalVid);
}
inline uint64_t KeyOf(const SwctProviderEdgePortMoid& sMoid)
{
    return MakeKey(PortNumber(sMoid.bSlot, sMoid.bPort), 0, sMoid.wPepIndex);
}
inline uint64_t KeyOf(const SwctServicePriorityRegenerationMoid& sMoid)
{
    return MakeKey(PortNumber(sMoid.bSlot, sMoid.bPort), sMoid.dwPriority, sMoid.wPepIndex);
}

// Packed records have no gaps, so they are equal when their bytes are.
template <class Value>
bool IsSame(const Value& left, const Value& right)
{
    return std::memcmp(&left, &right, sizeof(Value)) == 0;
}

template <class Value>
bool IsAllZero(const Value& value)
{
    return IsSame(value, Value{});
}

template <class Record>
void SortByKey(std::vector<Record>& records)
{
    const auto isBefore = [](const Record& left, const Record& right) {
        return KeyOf(left.sMoid) < KeyOf(right.sMoid);
    };
    if (!std::is_sorted(records.begin(), records.end(), isBefore)) {
        std::sort(records.begin(), records.end(), isBefore);
    }
}

// The records from one key to another, both included.
template <class Record>
std::span<const Record> Between(const std::vector<Record>& records, uint64_t first, uint64_t last)
{
    const auto isBefore = [](const Record& record, uint64_t key) { return KeyOf(record.sMoid) < key; };
    const auto begin = std::lower_bound(records.begin(), records.end(), first, isBefore);
    const auto end = std::lower_bound(begin, records.end(), last + 1, isBefore);
    return {begin, end};
}

// The records of one port, or of one VLAN: of all whose first key is 'number'.
template <class Record>
std::span<const Record> OfFirstKey(const std::vector<Record>& records, uint32_t number)
{
    return Between(records, MakeKey(number, 0), MakeKey(number + 1, 0) - 1);
}

// The record with a key, or null.
template <class Record>
const Record* Find(const std::vector<Record>& records, uint64_t key)
{
    const auto found = Between(records, key, key);
    return found.empty() ? nullptr : found.data();
}

} // namespace tool
