// hand_region.h - the region by hand: addresses without a test of the keys.
#pragma once

#include "kernels.h"
#include "works.h"

namespace hand {

inline constexpr std::size_t kRegistrationSize = sizeof(SwctCVidRegistration);
inline constexpr std::size_t kTranslationSize = sizeof(SwctVidTranslation);

template <class Type>
uint8_t* Bytes(Type& object) noexcept
{
    return reinterpret_cast<uint8_t*>(&object);
}

inline SwctPbData& Pb(PortKey s) noexcept
{
    return pRegion->sPbData[s.bSlot % SWCT_SLOT_MAX][s.bPort - 1];
}

inline const uint8_t* Registrations(PortKey s) noexcept
{
    return Bytes(Pb(s).sCep.aCVidRegistration);
}

inline const uint8_t* Translations(PortKey s) noexcept
{
    return Bytes(Pb(s).sNp.aVidTranslation);
}

inline constexpr auto kIsUsed = [](const uint8_t* p) { return kernels::LoadWord(p) != 0; };
inline constexpr auto kIsRelayed = [](const uint8_t* p) { return p[8] == 1 && kernels::LoadWord(p) != 0; };

// Whether 'ask(port)' is not 0 for a port.
template <class Ask>
uint32_t AskPorts(Ask ask) noexcept
{
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            if (ask(PortKey{bSlot, bPort}) != 0) {
                return 1;
            }
        }
    }
    return 0;
}

// How a class is written and read.
struct Exchange {
    uint16_t wClass;
    void (*pWrite)(const ClassData& sClass) noexcept;
    void (*pRead)(uint8_t* pReply) noexcept;
};
const Exchange* FindExchange(uint16_t wClass) noexcept; // null for a class without a loop

} // namespace hand
