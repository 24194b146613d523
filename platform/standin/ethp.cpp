// ethp.cpp - link aggregation groups, as the program has set them.
#include "platform/ethp.h"
#include "settings.h"

#include <cstring>

using standin::Lag;
using standin::sSettings;

namespace {

// The entry of a LAG, or null when no LAG has that number.
Lag* FindLag(uint8_t bLag)
{
    return bLag >= 1 && bLag <= STANDIN__LAG_MAX ? &sSettings.asLag[bLag - 1] : nullptr;
}

} // namespace

uint8_t Ethp__DoesLagExist(uint8_t bLag)
{
    const Lag* pLag = FindLag(bLag);
    return pLag != nullptr && pLag->boExists != 0 ? 1 : 0;
}

uint32_t Ethp__LagGetLagPortList(uint8_t bLag, void* pList)
{
    if (pList == nullptr || Ethp__DoesLagExist(bLag) == 0) {
        return 0;
    }
    const standin::LagPortList& sPorts = FindLag(bLag)->sPorts;
    std::memcpy(pList, &sPorts, sizeof(sPorts));
    return 1;
}

uint32_t Standin__SetLag(uint8_t bLag, uint32_t boExists, const StandinLagMember* pMembers, uint32_t dwCount)
{
    Lag* pLag = FindLag(bLag);
    if (pLag == nullptr || dwCount > STANDIN__LAG_MEMBERS_MAX || (pMembers == nullptr && dwCount != 0)) {
        return 0;
    }
    *pLag = Lag{};
    pLag->boExists = boExists != 0 ? 1 : 0;
    pLag->sPorts.bCount = static_cast<uint8_t>(dwCount);
    for (uint32_t i = 0; i < dwCount; ++i) {
        pLag->sPorts.asPort[i] = {pMembers[i].bSlot, pMembers[i].bPort, 0};
    }
    return 1;
}

uint32_t Standin__SetLagList(uint8_t bLag, const void* pList)
{
    Lag* pLag = FindLag(bLag);
    if (pLag == nullptr || pList == nullptr) {
        return 0;
    }
    pLag->boExists = 1;
    std::memcpy(&pLag->sPorts, pList, sizeof(pLag->sPorts));
    return 1;
}

void Standin__ClearLags(void)
{
    for (Lag& sLag : sSettings.asLag) {
        sLag = Lag{};
    }
}
