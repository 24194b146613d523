// QinQ ports: records, and questions over all of them.
#include "swct/qinq_port.h"

#include "region/bitmap.h"
#include "region/memory.h"
#include "region/views.h"
#include "swct/switch.h"
#include "swct/switch_port.h"
#include "switch_port_buffer.h"

namespace {

// The record of a port on which QinQ is enabled, else null.
const SwctQinQPort* EnabledPort(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctQinQPort* pRecord = QinQPort(pSwctRead, bSlot, bPort);
    return pRecord != nullptr && pRecord->dwQinQStatus == SWCT_QINQ_ENABLED ? pRecord : nullptr;
}

// Whether 'test(record)' is true for an enabled record of any port.
template <class Test>
bool AnyEnabledPort(Test test) noexcept
{
    return AnyPort([&test](uint8_t bSlot, uint8_t bPort) {
        const SwctQinQPort* pRecord = EnabledPort(bSlot, bPort);
        return pRecord != nullptr && test(*pRecord);
    });
}

} // namespace

const SwctQinQPort* Swct_GetQinQPortRPtr(uint8_t bSlot, uint8_t bPort) noexcept
{
    return QinQPort(pSwctRead, bSlot, bPort);
}

SwctQinQPort* Swct_GetQinQPortWPtr(uint8_t bSlot, uint8_t bPort) noexcept { return QinQPort(pSwctWrite, bSlot, bPort); }

void Swct_ReadQinQPort(SwctPortMoid sMoid, SwctQinQPort* pRecord) noexcept
{
    CopyIfThere(pRecord, QinQPort(pSwctRead, sMoid.bSlot, sMoid.bPort));
}

uint32_t Swct_DoesQinQPortExist(SwctPortMoid sMoid) noexcept
{
    return YesOrNo(Swct_DoesSwitchPortExist(sMoid.bSlot, sMoid.bPort) != 0 &&
                   Swct_Switch_GetSwitchMode() == SWCT_SWITCH_MODE_QINQ);
}

SwctPortMoid* Swct_QinQPortMoidIterator(const SwctPortMoid* pMoidPrevious) noexcept
{
    alignas(8) static SwctPortMoid sNext;
    return NextPort(&sNext, pMoidPrevious, [](uint8_t bSlot, uint8_t bPort) {
        return Swct_DoesQinQPortExist({SWCT_CLASS_QINQ_PORT, bSlot, bPort}) != 0;
    });
}

uint32_t Swct_IsQinQEnabledOnPort(SwctPortMoid sMoid) noexcept
{
    return YesOrNo(EnabledPort(sMoid.bSlot, sMoid.bPort) != nullptr);
}

uint32_t Swct_GetQinQPortProviderVid(SwctPortMoid sMoid) noexcept
{
    return Swct_GetQinQPortPVid(sMoid.bSlot, sMoid.bPort);
}

uint32_t Swct_GetQinQPortPVid(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctQinQPort* pRecord = EnabledPort(bSlot, bPort);
    return pRecord != nullptr ? pRecord->wProviderTagVid : uint32_t{SWCT_VID_NONE};
}

uint32_t Swct_GetQinQProviderTagPriority(uint8_t bSlot, uint8_t bPort) noexcept
{
    const SwctQinQPort* pRecord = EnabledPort(bSlot, bPort);
    return pRecord != nullptr ? pRecord->dwProviderTagPriority : 0;
}

uint32_t Swct_IsControlProtocolTunnellingEnabledOnQinQPort(SwctPortMoid sMoid) noexcept
{
    const SwctQinQPort* pRecord = EnabledPort(sMoid.bSlot, sMoid.bPort);
    return pRecord != nullptr ? pRecord->boControlProtocolTunnelling : 0U;
}

uint32_t Swct_GetQinQControlProtocolTunnellingMac(SwctPortMoid sMoid) noexcept
{
    const SwctQinQPort* pRecord = EnabledPort(sMoid.bSlot, sMoid.bPort);
    return pRecord != nullptr && pRecord->boControlProtocolTunnelling == 1 ? pRecord->dwControlProtocolTunnellingMac
                                                                           : 0;
}

uint32_t Swct_IsQinQEnabledOnAnyPort() noexcept
{
    // Slot 3 is not examined.
    return YesOrNo(AnyPort(
        [](uint8_t bSlot, uint8_t bPort) { return bSlot < SWCT_SLOT_MAX && EnabledPort(bSlot, bPort) != nullptr; }));
}

uint32_t Swct_CheckIfVlanIsProviderVlan(uint16_t wVid) noexcept
{
    return YesOrNo(AnyEnabledPort([wVid](const SwctQinQPort& sRecord) { return sRecord.wProviderTagVid == wVid; }));
}

uint32_t Swct_DoesAnyQinQWithProviderVlanDoTunnel(uint16_t wVid) noexcept
{
    return YesOrNo(AnyEnabledPort([wVid](const SwctQinQPort& sRecord) {
        return sRecord.wProviderTagVid == wVid && sRecord.boControlProtocolTunnelling == 1;
    }));
}

uint32_t Swct_DoesAnyQinQWithProviderVlanUseCptMac(uint16_t wVid, uint32_t dwMac) noexcept
{
    return YesOrNo(AnyEnabledPort([wVid, dwMac](const SwctQinQPort& sRecord) {
        return sRecord.wProviderTagVid == wVid && sRecord.boControlProtocolTunnelling == 1 &&
               sRecord.dwControlProtocolTunnellingMac == dwMac;
    }));
}

uint32_t Swct_GetBitmapOfQinQProviderVlanThatDoTunnel(uint8_t* pBitmap) noexcept
{
    if (pBitmap == nullptr) {
        return 0;
    }
    ClearBitmap(pBitmap);
    uint32_t dwAnySet = 0;
    ForEachPort([pBitmap, &dwAnySet](uint8_t bSlot, uint8_t bPort) {
        const SwctQinQPort* pRecord = EnabledPort(bSlot, bPort);
        const uint16_t wVid = pRecord != nullptr ? ReadOnce<uint16_t>(pRecord->wProviderTagVid) : uint16_t{0xFFFF};
        if (wVid <= SWCT_VLAN_MAX && pRecord->boControlProtocolTunnelling == 1) {
            SetBit(pBitmap, wVid);
            dwAnySet = 1;
        }
    });
    return dwAnySet;
}
