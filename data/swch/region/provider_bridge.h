// provider_bridge.h - which ports are what in a provider bridge, and the walk over the objects inside their data.
#pragma once

#include "memory.h"
#include "port_walk.h"
#include "swct/switch.h"
#include "swct/switch_port.h"
#include "views.h"

// The stored provider-bridge port type, whether or not the port exists; 0 without such a port.
inline uint32_t StoredPbPortType(const SwctData* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctSwitchPort* pPort = SwitchPort(pData, bSlot, bPort);
    return pPort != nullptr ? pPort->dwPbPortType : 0;
}

// The same, but 0 when the port does not exist.
inline uint32_t PbPortType(const SwctData* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctSwitchPort* pPort = SwitchPort(pData, bSlot, bPort);
    return pPort != nullptr && pPort->dwL2PortType != 0 ? pPort->dwPbPortType : 0;
}

constexpr bool IsNetworkPortType(uint32_t dwPbPortType) noexcept
{
    return dwPbPortType == SWCT_PB_PORT_PNP || dwPbPortType == SWCT_PB_PORT_CNP;
}

inline bool IsProviderBridge(const SwctData* pData) noexcept
{
    return pData != nullptr && pData->sSwitch.sAttributes.dwSwitchMode == SWCT_SWITCH_MODE_PROVIDER_BRIDGE;
}

// A port's data as a CEP's, whatever its type; null for a bad key.
template <class Data>
auto* CepLayout(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    auto* pPbData = PbData(pData, bSlot, bPort);
    return pPbData != nullptr ? &pPbData->sCep : nullptr;
}

// The three kinds of access to a CEP's data: by stored type, by an existing port's type, as a managed object (which
// also asks for switch mode 1).  Null when the port does not qualify.
template <class Data>
auto* StoredCep(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return StoredPbPortType(pData, bSlot, bPort) == SWCT_PB_PORT_CEP ? &PbData(pData, bSlot, bPort)->sCep : nullptr;
}

template <class Data>
auto* ExistingCep(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return PbPortType(pData, bSlot, bPort) == SWCT_PB_PORT_CEP ? &PbData(pData, bSlot, bPort)->sCep : nullptr;
}

template <class Data>
auto* ManagedCep(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return IsProviderBridge(pData) ? ExistingCep(pData, bSlot, bPort) : nullptr;
}

// The same for the VID translations of a PNP or CNP.
template <class Data>
auto* StoredNetworkPort(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return IsNetworkPortType(StoredPbPortType(pData, bSlot, bPort)) ? &PbData(pData, bSlot, bPort)->sNp : nullptr;
}

template <class Data>
auto* ExistingNetworkPort(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return IsNetworkPortType(PbPortType(pData, bSlot, bPort)) ? &PbData(pData, bSlot, bPort)->sNp : nullptr;
}

template <class Data>
auto* ManagedNetworkPort(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return IsProviderBridge(pData) ? ExistingNetworkPort(pData, bSlot, bPort) : nullptr;
}

// The PEP that serves an S-VID: 1 to 16, or 0.  A spoilt index entry counts as none.
inline uint16_t PepIndexOfSvid(const SwctCepData& sCep, uint16_t wSvid) noexcept
{
    if (!IsVlanId(wSvid)) {
        return 0;
    }
    const uint16_t wPepIndex = ReadOnce<uint16_t>(sCep.awPepIndexBySvid[wSvid - 1]);
    return IsPepIndex(wPepIndex) ? wPepIndex : 0;
}

// An object inside a port's data: C-VID, local VID or PEP index are its key.
struct ObjectPosition {
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wKey;
};

// The second-level walk: moves 'sPosition' to the next object in use, keys 1 to 'kLastKey' of a port, ports in walk
// order; false at the end.  'open(slot, port)' gives the data of a port that has such objects, else null;
// 'isInUse(data, key)' tests one.  Slot 0 or port 0 starts at a port.
template <uint16_t kLastKey, class Open, class IsInUse>
bool FindNextObject(ObjectPosition& sPosition, Open open, IsInUse isInUse) noexcept
{
    const auto findInPort = [&](uint8_t bSlot, uint8_t bPort, unsigned key) {
        const auto* pData = open(bSlot, bPort);
        for (; pData != nullptr && key <= kLastKey; ++key) {
            if (isInUse(*pData, static_cast<uint16_t>(key))) {
                sPosition = {bSlot, bPort, static_cast<uint16_t>(key)};
                return true;
            }
        }
        return false;
    };
    // Behind the key in its own port; slot 0 or port 0 is none.
    if (findInPort(sPosition.bSlot, sPosition.bPort, sPosition.wKey + 1U)) {
        return true;
    }
    PortPosition sPort = BehindPort(sPosition.bSlot, sPosition.bPort);
    return FindPort(sPort, [&](uint8_t bSlot, uint8_t bPort) { return findInPort(bSlot, bPort, 1); });
}

// The PEP objects are walked by their own iterator and by that of the priorities below them.
inline bool FindNextProviderEdgePort(ObjectPosition& sPosition) noexcept
{
    return FindNextObject<SWCT_PEP_MAX>(
        sPosition, [](uint8_t bSlot, uint8_t bPort) { return ManagedCep(pSwctRead, bSlot, bPort); },
        [](const SwctCepData& sCep, uint16_t wIndex) { return sCep.aProviderEdgePort[wIndex - 1].wSvid != 0; });
}
