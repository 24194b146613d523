// Long random sequences against recounts, and walks inside walks.
#include "unit/bridge_fixture.h"

namespace {

using BridgeRandomTest = BridgeTest;

constexpr SwctCVidRegistrationMoid Moid(uint8_t bPort, uint16_t wCVid)
{
    return {SWCT_CLASS_CVID_REGISTRATION, 1, bPort, wCVid};
}

// The lowest C-VID registered to an S-VID and how many there are.
std::pair<uint16_t, uint16_t> Recount(const SwctCepData& sCep, uint16_t wSvid)
{
    std::pair<uint16_t, uint16_t> firstAndCount;
    for (const SwctCVidRegistration& sRecord : sCep.aCVidRegistration) {
        if (sRecord.wCVid != 0 && sRecord.wSvid == wSvid && firstAndCount.second++ == 0) {
            firstAndCount.first = sRecord.wCVid;
        }
    }
    return firstAndCount;
}

void CheckSummaries(const SwctCepData& sCep, uint8_t bPort)
{
    std::vector<uint16_t> pepIndexBySvid(SWCT_VLAN_MAX);
    for (uint16_t wIndex = 1; wIndex <= SWCT_PEP_MAX; ++wIndex) {
        const uint16_t wSvid = sCep.aProviderEdgePort[wIndex - 1].wSvid;
        const auto [wFirst, wCount] = wSvid != 0 ? Recount(sCep, wSvid) : std::pair<uint16_t, uint16_t>{};
        ASSERT_EQ(+sCep.awNbrOfCVidInPep[wIndex - 1], wCount) << "PEP " << wIndex;
        ASSERT_EQ(+sCep.awFirstCVidInPep[wIndex - 1], wFirst) << "PEP " << wIndex;
        if (wSvid != 0) {
            pepIndexBySvid[wSvid - 1] = wIndex;
            ASSERT_EQ(Swct_GetNumberOfCVidRegistrationsForSVid(1, bPort, wSvid), wSvid != 4095 ? wCount : 0);
        }
    }
    ASSERT_EQ(std::memcmp(sCep.awPepIndexBySvid, pepIndexBySvid.data(), sizeof sCep.awPepIndexBySvid), 0);
}

// Under the rules that keep the summaries right: a PEP is created with an S-VID that no C-VID goes to yet and keeps it,
// and a registration is created where there is none.
TEST_F(BridgeRandomTest, SummariesEqualARecount)
{
    constexpr uint16_t kSvids[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 4093, 4094, 4095};
    std::mt19937 random = FixedRandom();
    AddPort(1, 1, 3);
    AddPort(1, 2, 3);
    for (int step = 0; step < 20000; ++step) {
        const auto bPort = static_cast<uint8_t>(1 + random() % 2);
        const auto wIndex = static_cast<uint16_t>(1 + random() % 16);
        const auto wCVid = static_cast<uint16_t>(random() % 2 != 0 ? 1 + random() % 20 : 4075 + random() % 20);
        const uint16_t wSvid = kSvids[random() % std::size(kSvids)];
        const SwctProviderEdgePortMoid sPepMoid{SWCT_CLASS_PROVIDER_EDGE_PORT, 1, bPort, wIndex};
        const SwctCVidRegistration sRegistration{wCVid, wSvid, 0, 0, 0, 0, {}};
        SwctCepData& sCep = Cep(1, bPort);
        const bool isPep = sCep.aProviderEdgePort[wIndex - 1].wSvid != 0;
        const bool isRegistered = sCep.aCVidRegistration[wCVid - 1].wCVid != 0;
        switch (random() % 8) {
        case 0:
            if (!isPep && sCep.awPepIndexBySvid[wSvid - 1] == 0 && Recount(sCep, wSvid).second == 0) {
                AddPep(1, bPort, wIndex, wSvid);
            }
            break;
        case 1: {
            const SwctProviderEdgePort sPep{sCep.aProviderEdgePort[wIndex - 1].wSvid, {static_cast<uint8_t>(step)}};
            Swct_WriteProviderEdgePort(sPepMoid, &sPep);
            break;
        }
        case 2:
            if (step % 8 == 0) {
                Swct_DeleteProviderEdgePort(sPepMoid);
            }
            break;
        case 3:
        case 4:
            if (!isRegistered) {
                Swct_CreateCVidRegistration(Moid(bPort, wCVid), &sRegistration);
            }
            break;
        case 5:
            Swct_WriteCVidRegistration(Moid(bPort, wCVid), &sRegistration);
            break;
        default:
            Swct_DeleteCVidRegistration(Moid(bPort, wCVid));
        }
        if (step % 10 == 0) {
            ASSERT_NO_FATAL_FAILURE(CheckSummaries(sCep, bPort)) << "step " << step;
        }
    }
}

// Every walk under way hands on the pointer that it got, while all the others and every question over tables run.
TEST_F(BridgeRandomTest, WalksNest)
{
    std::vector<std::string> expected;
    for (const uint8_t bSlot : Bytes{1, 2, 3}) {
        for (uint8_t bPort = 1; bPort <= 5; ++bPort) {
            AddPort(bSlot, bPort, bPort % 4, 2);
            const std::string port = ":" + std::to_string(bSlot) + "/" + std::to_string(bPort);
            expected.push_back("177" + port);
            for (const uint16_t wKey : Vids{1, 7, 2000, 4094}) {
                if (bPort == 3) {
                    Register(bSlot, bPort, wKey, 7);
                } else {
                    Translate(bSlot, bPort, wKey, 7); // nothing on a port without a type
                }
                if (bPort != 4) {
                    expected.push_back((bPort == 3 ? "369" : "437") + port + "/" + std::to_string(wKey));
                }
            }
            for (uint16_t wIndex = 1; bPort == 3 && wIndex <= 16; wIndex = static_cast<uint16_t>(wIndex + 5)) {
                AddPep(bSlot, bPort, wIndex, wIndex);
                expected.push_back("469" + port + "/" + std::to_string(wIndex));
                for (int priority = 1; priority <= 8; ++priority) {
                    expected.push_back("427" + port + "/" + std::to_string(wIndex) + "/" + std::to_string(priority));
                }
            }
        }
    }
    const auto askAll = [] {
        SwctCVidRegistration sRecord;
        Swct_DoesVlanHaveCVidRegistrations({0, 8});
        Swct_DoesVlanHaveVidTranslations({0, 8});
        Swct_DoesVlanHaveVidTranslationsOnPort({0, 8}, 1, 1);
        Swct_DoesVlanHaveDefaultCVidRegistration({0, 8});
        Swct_GetNumberOfCVidRegistrations(8);
        Swct_GetFirstCVidRegistrationForSVid(1, 3, 7, &sRecord);
        Swct_DoesSwitchPortHaveCVidRegistrationChildren(1, 3);
        Swct_DoesSwitchPortHaveVidTranslationChildren(1, 1);
        Swct_SlotIsUsedForProviderBridge(1, 31);
        Swct_GetServicePriority(1, 3, 1, 1);
        const SwctProviderEdgePortMoid sStart{};
        Swct_GetNextPepConnectedToSvid(&sStart, 1);
    };
    std::vector<std::string> found;
    // Visits the objects behind a start for as long as they belong to the element that the outer walk has reached.
    const auto walk = [&](auto next, auto sStart, auto belongs, auto visit) {
        for (const auto* pMoid = next(&sStart); pMoid != nullptr && belongs(*pMoid); pMoid = next(pMoid)) {
            found.push_back(Text(pMoid));
            askAll();
            visit(*pMoid);
        }
    };
    const auto nothing = [](const auto&) {};
    const auto all = [](const auto&) { return true; };
    walk(Swct_SwitchPortMoidIterator, SwctPortMoid{177, 0, 0}, all, [&](const SwctPortMoid& sPort) {
        const auto isOnPort = [&sPort](const auto& sMoid) {
            return sMoid.bSlot == sPort.bSlot && sMoid.bPort == sPort.bPort;
        };
        walk(Swct_CVidRegistrationMoidIterator, SwctCVidRegistrationMoid{369, sPort.bSlot, sPort.bPort, 0}, isOnPort,
             nothing);
        walk(Swct_VidTranslationMoidIterator, SwctVidTranslationMoid{437, sPort.bSlot, sPort.bPort, 0}, isOnPort,
             nothing);
        walk(Swct_ProviderEdgePortMoidIterator, SwctProviderEdgePortMoid{469, sPort.bSlot, sPort.bPort, 0}, isOnPort,
             [&](const SwctProviderEdgePortMoid& sPep) {
                 walk(
                     Swct_ServicePriorityRegenerationMoidIterator,
                     SwctServicePriorityRegenerationMoid{427, sPort.bSlot, sPort.bPort, sPep.wPepIndex, 0},
                     [&](const auto& sMoid) { return isOnPort(sMoid) && sMoid.wPepIndex == sPep.wPepIndex; }, nothing);
             });
    });
    EXPECT_EQ(found, expected);
}

} // namespace
