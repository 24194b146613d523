// ether_type.h - VLAN ether types by their enumeration.
#pragma once

#include "memory.h"

constexpr uint16_t kEtherTypeServiceTag = 0x88A8;

// Outside 1 to 6 the service tag's.
inline uint16_t EtherTypeOfEnumeration(uint32_t dwEnumeration) noexcept
{
    static constexpr uint16_t kEtherTypes[] = {kEtherTypeServiceTag, 0x8100, 0xFFFF, 0x88A8, 0x9100, 0x9200, 0x9300};
    const uint32_t dwIndex = ReadOnce(dwEnumeration);
    return dwIndex < sizeof kEtherTypes / sizeof kEtherTypes[0] ? kEtherTypes[dwIndex] : kEtherTypeServiceTag;
}
