// Write requests for QinQ ports and the provider bridge.  Records are stored whatever their port's type is at that
// moment; only the clearing before them goes by type.
#include "api-swct/config_class.h"
#include "api-swct/config_request.h"
#include "region/pep_summary.h"
#include "region/priority_field.h"

namespace {

// Calls 'clear(data)' for every port of the walk whose stored type qualifies.
template <class Qualifies, class ClearPort>
void ClearPorts(SwctData& sData, Qualifies qualifies, ClearPort clear) noexcept
{
    PortPosition sPosition = BehindPort(0, 0);
    FindPort(sPosition, [&](uint8_t bSlot, uint8_t bPort) {
        if (SwctPbData* pPbData = PbData(&sData, bSlot, bPort)) {
            if (qualifies(StoredPbPortType(&sData, bSlot, bPort))) {
                clear(*pPbData);
            }
        }
        return false;
    });
}

template <class ClearPort>
void ClearCeps(SwctData& sData, ClearPort clear) noexcept
{
    ClearPorts(
        sData, [](uint32_t dwType) { return dwType == SWCT_PB_PORT_CEP; },
        [clear](SwctPbData& sPbData) { clear(sPbData.sCep); });
}

// A QinQ port or provider edge port has come to use a VLAN, whether or not it exists.
void CountUser(SwctData& sData, uint16_t wVlanId) noexcept
{
    if (IsPbVid(wVlanId)) {
        ++sData.sVlan[wVlanId - 1].dwNbrOfQinQOrPep;
    }
}

} // namespace

void Swct_SetConfig_QinQPort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    SWCT_CLEAR_ARRAY(sData.sQinQPort);
    for (const SwctQinQPortRecord& sRecord : Request<SwctQinQPortRecord>(pCdbmRecords)) {
        const SwctPortMoid sMoid = sRecord.sMoid;
        SwctQinQPort* pStored = QinQPort(&sData, sMoid.bSlot, sMoid.bPort);
        if (pStored == nullptr) {
            SWCT_REPORT_SKIPPED(SWCT_CLASS_QINQ_PORT, sMoid);
            continue;
        }
        CopyRecord(pStored, &sRecord.sBody);
        CountUser(sData, ReadOnce<uint16_t>(sRecord.sBody.wProviderTagVid));
    }
}

void Swct_SetConfig_CVidRegistration(SwctData& sData, const void* pCdbmRecords) noexcept
{
    ClearCeps(sData, [](SwctCepData& sCep) {
        SWCT_CLEAR_ARRAY(sCep.aCVidRegistration);
        SWCT_CLEAR_ARRAY(sCep.awNbrOfCVidInPep);
        SWCT_CLEAR_ARRAY(sCep.awFirstCVidInPep);
    });
    for (const SwctCVidRegistrationRecord& sRecord : Request<SwctCVidRegistrationRecord>(pCdbmRecords)) {
        const SwctCVidRegistrationMoid sMoid = sRecord.sMoid;
        SwctCepData* pCep = CepLayout(&sData, sMoid.bSlot, sMoid.bPort);
        if (pCep == nullptr || !IsPbVid(sMoid.wCVid)) {
            SWCT_REPORT_SKIPPED(SWCT_CLASS_CVID_REGISTRATION, sMoid);
            continue;
        }
        CopyRecord(&pCep->aCVidRegistration[sMoid.wCVid - 1], &sRecord.sBody);
        CountCVid(*pCep, ReadOnce<uint16_t>(sRecord.sBody.wSvid), sMoid.wCVid);
    }
}

void Swct_SetConfig_ServicePriorityRegeneration(SwctData& sData, const void* pCdbmRecords) noexcept
{
    for (const SwctServicePriorityRegenerationRecord& sRecord :
         Request<SwctServicePriorityRegenerationRecord>(pCdbmRecords)) {
        const SwctServicePriorityRegenerationMoid sMoid = sRecord.sMoid;
        SwctCepData* pCep = CepLayout(&sData, sMoid.bSlot, sMoid.bPort);
        if (pCep == nullptr || !IsPepIndex(sMoid.wPepIndex) || !IsPriority(sMoid.dwPriority)) {
            SWCT_REPORT_SKIPPED(SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, sMoid);
            continue;
        }
        SwctPackedU32& dwWord = pCep->adwServicePriorityRegeneration[sMoid.wPepIndex - 1];
        dwWord = WithPriority(dwWord, sMoid.dwPriority, sRecord.sBody.dwRegeneratedPriority);
    }
}

void Swct_SetConfig_VidTranslation(SwctData& sData, const void* pCdbmRecords) noexcept
{
    ClearPorts(sData, IsNetworkPortType, [](SwctPbData& sPbData) { Clear(&sPbData.sNp); });
    for (const SwctVidTranslationRecord& sRecord : Request<SwctVidTranslationRecord>(pCdbmRecords)) {
        const SwctVidTranslationMoid sMoid = sRecord.sMoid;
        SwctPbData* pPbData = PbData(&sData, sMoid.bSlot, sMoid.bPort);
        if (pPbData == nullptr || !IsPbVid(sMoid.wLocalVid)) {
            SWCT_REPORT_SKIPPED(SWCT_CLASS_VID_TRANSLATION, sMoid);
            continue;
        }
        SwctNetworkPortData& sNp = pPbData->sNp;
        SwctVidTranslation& sStored = sNp.aVidTranslation[sMoid.wLocalVid - 1];
        CopyRecord(&sStored, &sRecord.sBody);
        if (sStored.dwStatus == 0) {
            sStored.dwStatus = 3;
        }
        const uint16_t wRelayVid = ReadOnce<uint16_t>(sRecord.sBody.wRelayVid);
        if (IsPbVid(wRelayVid)) {
            sNp.awLocalVidByRelayVid[wRelayVid - 1] = sMoid.wLocalVid;
        }
    }
}

void Swct_SetConfig_ProviderEdgePort(SwctData& sData, const void* pCdbmRecords) noexcept
{
    ClearCeps(sData, [](SwctCepData& sCep) {
        SWCT_CLEAR_ARRAY(sCep.aProviderEdgePort);
        SWCT_CLEAR_ARRAY(sCep.awPepIndexBySvid);
    });
    for (const SwctProviderEdgePortRecord& sRecord : Request<SwctProviderEdgePortRecord>(pCdbmRecords)) {
        const SwctProviderEdgePortMoid sMoid = sRecord.sMoid;
        SwctCepData* pCep = CepLayout(&sData, sMoid.bSlot, sMoid.bPort);
        if (pCep == nullptr || !IsPepIndex(sMoid.wPepIndex)) {
            SWCT_REPORT_SKIPPED(SWCT_CLASS_PROVIDER_EDGE_PORT, sMoid);
            continue;
        }
        CopyRecord(&pCep->aProviderEdgePort[sMoid.wPepIndex - 1], &sRecord.sBody);
        const uint16_t wSvid = ReadOnce<uint16_t>(sRecord.sBody.wSvid);
        if (IsVlanId(wSvid)) {
            pCep->awPepIndexBySvid[wSvid - 1] = sMoid.wPepIndex;
        }
        CountUser(sData, wSvid);
    }
}

void Swct_SetConfig_DefaultCVidRegistration(SwctData& sData, const void* pCdbmRecords) noexcept
{
    ClearCeps(sData, [](SwctCepData& sCep) { Clear(&sCep.sDefaultCVidRegistration); });
    for (const SwctDefaultCVidRegistrationRecord& sRecord : Request<SwctDefaultCVidRegistrationRecord>(pCdbmRecords)) {
        const SwctPortMoid sMoid = sRecord.sMoid;
        SwctCepData* pCep = CepLayout(&sData, sMoid.bSlot, sMoid.bPort);
        if (pCep == nullptr) {
            SWCT_REPORT_SKIPPED(SWCT_CLASS_DEFAULT_CVID_REGISTRATION, sMoid);
            continue;
        }
        CopyRecord(&pCep->sDefaultCVidRegistration, &sRecord.sBody);
    }
}
