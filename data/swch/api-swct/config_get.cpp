// Read requests.  Records are written as they are found; keys come from the table's index.
#include "api-swct/config_class.h"
#include "region/membership.h"
#include "region/priority_field.h"
#include "region/provider_bridge.h"
#include "region/trace.h"
#include "swct/config_records.h"

namespace {

// Writes records one behind the other into the caller's buffer and counts them.
class Reply {
public:
    explicit Reply(uint8_t* pBuffer) noexcept : pEnd(pBuffer) {}

    template <class Moid, class Body>
    void Add(const Moid& sMoid, const Body& sBody) noexcept
    {
        Append(&sMoid, sizeof sMoid);
        Append(&sBody, sizeof sBody);
        ++dwCount;
    }

    // A Moid of zeroes.
    template <class Moid>
    void Terminate() noexcept
    {
        static constexpr Moid kTerminator{};
        Append(&kTerminator, sizeof kTerminator);
    }

    uint32_t Count() const noexcept
    {
        return dwCount;
    }

private:
    void Append(const void* pBytes, std::size_t size) noexcept
    {
        std::memcpy(pEnd, pBytes, size);
        pEnd += size;
    }

    uint8_t* pEnd;
    uint32_t dwCount = 0;
};

// A class whose objects lie inside the ports: 'add(reply, slot, port)' adds those of one port.  The limit is tested
// before each port only; a list that reached it has no terminator.
template <class Moid, class AddPort>
void ReplyByPort(uint8_t* pBuffer, uint32_t dwMaxElements, AddPort add) noexcept
{
    Reply sReply(pBuffer);
    VisitPorts([&](uint8_t bSlot, uint8_t bPort) {
        if (sReply.Count() >= dwMaxElements) {
            return true;
        }
        add(sReply, bSlot, bPort);
        return false;
    });
    if (sReply.Count() < dwMaxElements) {
        sReply.Terminate<Moid>();
    }
}

} // namespace

void Swct_GetConfig_Switch(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    std::memcpy(pBuffer, &sData.sSwitch.sAttributes, sizeof sData.sSwitch.sAttributes);
}

void Swct_GetConfig_Hrlb(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    const uint32_t dwHrlb = sData.dwHrlb;
    std::memcpy(pBuffer, &dwHrlb, sizeof dwHrlb);
}

void Swct_GetConfig_SwitchPort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    Reply sReply(pBuffer);
    VisitPorts([&](uint8_t bSlot, uint8_t bPort) {
        const SwctSwitchPort& sPort = *SwitchPort(&sData, bSlot, bPort);
        if (sReply.Count() < dwMaxElements && sPort.dwL2PortType != 0) {
            sReply.Add(SwctPortMoid{SWCT_CLASS_SWITCH_PORT, bSlot, bPort}, sPort);
        }
        return false;
    });
    sReply.Terminate<SwctPortMoid>();
}

void Swct_GetConfig_Vlan(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    Reply sReply(pBuffer);
    for (uint16_t wVlanId = 1; wVlanId <= SWCT_VLAN_MAX; ++wVlanId) {
        const SwctVlanEntry& sEntry = sData.sVlan[wVlanId - 1];
        if (sEntry.boExists == 0) {
            continue;
        }
        if (sReply.Count() == dwMaxElements) {
            SWCT_ERROR(kErrorTooMany, "More elements than CDBM expects for class VLAN");
            break;
        }
        sReply.Add(SwctVlanMoid{SWCT_CLASS_VLAN, wVlanId}, sEntry.sVlanData);
    }
    sReply.Terminate<SwctVlanMoid>();
}

void Swct_GetConfig_VlanPort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    Reply sReply(pBuffer);
    for (uint16_t wVlanId = 1; wVlanId <= SWCT_VLAN_MAX; ++wVlanId) {
        const SwctVlanEntry& sEntry = sData.sVlan[wVlanId - 1];
        const bool boFull = sEntry.boExists != 0 && VisitPorts([&](uint8_t bSlot, uint8_t bPort) {
                                const uint32_t dwMembership = sEntry.adwMembership[bSlot - 1][bPort - 1];
                                if (dwMembership == SWCT_MEMBERSHIP_NONE) {
                                    return false;
                                }
                                if (sReply.Count() == dwMaxElements) {
                                    return true;
                                }
                                sReply.Add(SwctVlanPortMoid{SWCT_CLASS_VLAN_PORT, wVlanId, bSlot, bPort},
                                           SwctVlanPortAttributes{bSlot, bPort, 1, dwMembership});
                                return false;
                            });
        if (boFull) {
            SWCT_ERROR(kErrorTooMany, "More elements than CDBM expects for class VLAN_PORT");
            return;
        }
    }
    sReply.Terminate<SwctVlanPortMoid>();
}

void Swct_GetConfig_VlanIfInnerTag(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    Reply sReply(pBuffer);
    for (uint16_t wVlanId = 1; wVlanId <= SWCT_VLAN_MAX; ++wVlanId) {
        const SwctVlanEntry& sEntry = sData.sVlan[wVlanId - 1];
        if (sEntry.boExists != 0 && sEntry.sInnerTag.dwInnerTagEnable != SWCT_INNER_TAG_ABSENT) {
            sReply.Add(SwctVlanMoid{SWCT_CLASS_VLAN_IF_INNER_TAG, wVlanId}, sEntry.sInnerTag);
        }
    }
    sReply.Terminate<SwctVlanMoid>();
}

void Swct_GetConfig_QinQPort(const SwctData& sData, uint8_t* pBuffer, uint32_t /*dwMaxElements*/) noexcept
{
    Reply sReply(pBuffer);
    VisitPorts([&](uint8_t bSlot, uint8_t bPort) {
        const SwctQinQPort& sPort = *QinQPort(&sData, bSlot, bPort);
        if (sPort.dwQinQStatus != SWCT_QINQ_NONE) {
            sReply.Add(SwctPortMoid{SWCT_CLASS_QINQ_PORT, bSlot, bPort}, sPort);
        }
        return false;
    });
    sReply.Terminate<SwctPortMoid>();
}

void Swct_GetConfig_CVidRegistration(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReplyByPort<SwctCVidRegistrationMoid>(
        pBuffer, dwMaxElements, [&sData](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
            const SwctCepData* pCep = StoredCep(&sData, bSlot, bPort);
            for (uint16_t wCVid = 1; pCep != nullptr && wCVid <= SWCT_PB_VID_MAX; ++wCVid) {
                const SwctCVidRegistration& sRecord = pCep->aCVidRegistration[wCVid - 1];
                if (sRecord.wCVid != 0) {
                    sReply.Add(SwctCVidRegistrationMoid{SWCT_CLASS_CVID_REGISTRATION, bSlot, bPort, wCVid}, sRecord);
                }
            }
        });
}

void Swct_GetConfig_VidTranslation(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReplyByPort<SwctVidTranslationMoid>(pBuffer, dwMaxElements, [&sData](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
        const SwctNetworkPortData* pNp = StoredNetworkPort(&sData, bSlot, bPort);
        for (uint16_t wLocalVid = 1; pNp != nullptr && wLocalVid <= SWCT_PB_VID_MAX; ++wLocalVid) {
            const SwctVidTranslation& sRecord = pNp->aVidTranslation[wLocalVid - 1];
            if (sRecord.wLocalVid != 0) {
                sReply.Add(SwctVidTranslationMoid{SWCT_CLASS_VID_TRANSLATION, bSlot, bPort, wLocalVid}, sRecord);
            }
        }
    });
}

void Swct_GetConfig_ProviderEdgePort(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReplyByPort<
        SwctProviderEdgePortMoid>(pBuffer, dwMaxElements, [&sData](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
        const SwctCepData* pCep = StoredCep(&sData, bSlot, bPort);
        for (uint16_t wPepIndex = 1; pCep != nullptr && wPepIndex <= SWCT_PEP_MAX; ++wPepIndex) {
            const SwctProviderEdgePort& sRecord = pCep->aProviderEdgePort[wPepIndex - 1];
            if (sRecord.wSvid != 0) {
                sReply.Add(SwctProviderEdgePortMoid{SWCT_CLASS_PROVIDER_EDGE_PORT, bSlot, bPort, wPepIndex}, sRecord);
            }
        }
    });
}

void Swct_GetConfig_ServicePriorityRegeneration(const SwctData& sData, uint8_t* pBuffer,
                                                uint32_t dwMaxElements) noexcept
{
    ReplyByPort<SwctServicePriorityRegenerationMoid>(
        pBuffer, dwMaxElements, [&sData](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
            const SwctCepData* pCep = StoredCep(&sData, bSlot, bPort);
            for (uint16_t wPepIndex = 1; pCep != nullptr && wPepIndex <= SWCT_PEP_MAX; ++wPepIndex) {
                if (pCep->aProviderEdgePort[wPepIndex - 1].wSvid == 0) {
                    continue;
                }
                const uint32_t dwWord = pCep->adwServicePriorityRegeneration[wPepIndex - 1];
                for (uint32_t dwPriority = 1; dwPriority <= SWCT_PRIORITY_MAX; ++dwPriority) {
                    sReply.Add(SwctServicePriorityRegenerationMoid{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, bSlot,
                                                                   bPort, wPepIndex, dwPriority},
                               SwctServicePriorityRegeneration{dwPriority, PriorityOf(dwWord, dwPriority)});
                }
            }
        });
}

void Swct_GetConfig_DefaultCVidRegistration(const SwctData& sData, uint8_t* pBuffer, uint32_t dwMaxElements) noexcept
{
    ReplyByPort<SwctPortMoid>(pBuffer, dwMaxElements, [&sData](Reply& sReply, uint8_t bSlot, uint8_t bPort) {
        const SwctCepData* pCep = StoredCep(&sData, bSlot, bPort);
        if (pCep != nullptr &&
            SwitchPort(&sData, bSlot, bPort)->dwIngressFiltering == SWCT_INGRESS_FILTERING_DEFAULT_CVID) {
            sReply.Add(SwctPortMoid{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, bSlot, bPort},
                       pCep->sDefaultCVidRegistration);
        }
    });
}
