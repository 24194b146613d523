// provider_bridge.h - which ports are what in a provider bridge, and the walk over the objects inside their data.
#pragma once

#include <iterator>

#include "bitmap.h"
#include "port_walk.h"
#include "scan.h"
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

constexpr bool IsCepType(uint32_t dwPbPortType) noexcept { return dwPbPortType == SWCT_PB_PORT_CEP; }

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
    return IsCepType(StoredPbPortType(pData, bSlot, bPort)) ? &PbData(pData, bSlot, bPort)->sCep : nullptr;
}

template <class Data>
auto* ExistingCep(Data* pData, uint8_t bSlot, uint8_t bPort) noexcept
{
    return IsCepType(PbPortType(pData, bSlot, bPort)) ? &PbData(pData, bSlot, bPort)->sCep : nullptr;
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

// The status of a translation that counts as a provider-bridge setting of its port.
inline constexpr uint32_t kVidTranslationStatus = 3;

// A record in use: its key, or a PEP's S-VID, is not 0.
struct IsInUse {
    auto operator()(WordPairs pairs) const noexcept { return (pairs << 16) != 0; }
    bool operator()(const SwctCVidRegistration& sRecord) const noexcept { return sRecord.wCVid != 0; }
    bool operator()(const SwctVidTranslation& sRecord) const noexcept { return sRecord.wLocalVid != 0; }
    bool operator()(const SwctProviderEdgePort& sRecord) const noexcept { return sRecord.wSvid != 0; }
};

// The tables inside a port's data; null without data.
template <class CepData>
auto* Registrations(CepData* pCep) noexcept
{
    return pCep != nullptr ? &pCep->aCVidRegistration : nullptr;
}

template <class CepData>
auto* ProviderEdgePorts(CepData* pCep) noexcept
{
    return pCep != nullptr ? &pCep->aProviderEdgePort : nullptr;
}

template <class NetworkPortData>
auto* Translations(NetworkPortData* pNp) noexcept
{
    return pNp != nullptr ? &pNp->aVidTranslation : nullptr;
}

// The record of a key, 1 to the table's length; null for a bad key or without a table.
template <class Table>
auto* RecordOf(Table* pTable, uint16_t wKey) noexcept
{
    return pTable != nullptr && wKey - 1U < std::size(*pTable) ? &(*pTable)[wKey - 1U] : nullptr;
}

// The same, but null when it is not in use.
template <class Table>
auto* UsedRecordOf(Table* pTable, uint16_t wKey) noexcept
{
    auto* pRecord = RecordOf(pTable, wKey);
    return pRecord != nullptr && IsInUse{}(*pRecord) ? pRecord : nullptr;
}

// A registration in use with an S-VID.
struct GoesToSvid {
    uint16_t wSvid;

    bool operator()(const SwctCVidRegistration& sRecord) const noexcept
    {
        return sRecord.wSvid == wSvid && sRecord.wCVid != 0;
    }
    // S-VID and C-VID as one number: from S-VID * 2^16 + 1 to the next S-VID.  Compared with a sign, as vectors are.
    auto operator()(WordPairs pairs) const noexcept
    {
        using Signed __attribute__((vector_size(16))) = int32_t;
        constexpr uint32_t kLowest = 0x80000000;
        const auto fromFirst = reinterpret_cast<Signed>(pairs - ((uint32_t{wSvid} << 16) + 1) + kLowest);
        return reinterpret_cast<WordPairs>(fromFirst < static_cast<int32_t>(kLowest + 0xFFFF));
    }
};

// A registration that is free: its C-VID goes where the default registration says.
struct IsFree {
    bool operator()(const SwctCVidRegistration& sRecord) const noexcept { return sRecord.wCVid == 0; }
    auto operator()(WordPairs pairs) const noexcept { return (pairs << 16) == 0; }
};

// An object inside a port's data: C-VID, local VID or PEP index are its key.
struct ObjectPosition {
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wKey;
};

// The second-level walk: moves 'sPosition' to the next record in use, ports in walk order; false at the end.
// 'open(slot, port)' gives the table of a port that has such objects, else null.  Slot 0 or port 0 starts at a port.
template <class Open>
bool FindNextObject(ObjectPosition& sPosition, Open open) noexcept
{
    const auto findInPort = [&](uint8_t bSlot, uint8_t bPort, std::size_t first) {
        const auto* pTable = open(bSlot, bPort);
        if (pTable == nullptr) {
            return false;
        }
        const std::size_t index = FindRecord(*pTable, first, IsInUse{});
        if (index >= sizeof *pTable / sizeof **pTable) {
            return false;
        }
        sPosition = {bSlot, bPort, static_cast<uint16_t>(index + 1)};
        return true;
    };
    // Behind the key in its own port; slot 0 or port 0 is none.
    if (findInPort(sPosition.bSlot, sPosition.bPort, sPosition.wKey)) {
        return true;
    }
    PortPosition sPort = BehindPort(sPosition.bSlot, sPosition.bPort);
    return FindWalkedPort(sPort, [&](uint8_t bSlot, uint8_t bPort) { return findInPort(bSlot, bPort, 0); });
}

// The PEP objects are walked by their own iterator and by that of the priorities below them.
inline bool FindNextProviderEdgePort(const SwctData* pData, ObjectPosition& sPosition) noexcept
{
    return FindNextObject(sPosition, [pData](uint8_t bSlot, uint8_t bPort) {
        return ProviderEdgePorts(ManagedCep(pData, bSlot, bPort));
    });
}
