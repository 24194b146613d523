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

// Every walk under way hands on the pointer that it got, while all the others run.
TEST_F(BridgeRandomTest, WalksNest)
{
    AddPort(1, 1, 3, 2);
    AddPort(3, 4, 3, 2);
    AddPort(2, 5, 1);
    for (const uint16_t wKey : Vids{1, 16}) {
        for (const auto& [bSlot, bPort] : {std::pair<uint8_t, uint8_t>{1, 1}, {3, 4}}) {
            Register(bSlot, bPort, wKey, wKey);
            AddPep(bSlot, bPort, wKey, wKey);
        }
        Translate(2, 5, wKey, 7);
    }
    const auto forEach = [](auto act) {
        act(Swct_SwitchPortMoidIterator, SwctPortMoid{});
        act(Swct_CVidRegistrationMoidIterator, SwctCVidRegistrationMoid{});
        act(Swct_VidTranslationMoidIterator, SwctVidTranslationMoid{});
        act(Swct_ProviderEdgePortMoidIterator, SwctProviderEdgePortMoid{});
        act(Swct_ServicePriorityRegenerationMoidIterator, SwctServicePriorityRegenerationMoid{});
    };
    forEach([&](auto outer, auto sStart) {
        std::vector<std::string> found;
        for (const auto* pMoid = outer(&sStart); pMoid != nullptr; pMoid = outer(pMoid)) {
            found.push_back(Text(pMoid));
            forEach([outer](auto inner, auto sFrom) {
                if (reinterpret_cast<void*>(inner) != reinterpret_cast<void*>(outer)) {
                    EXPECT_FALSE(Walk(inner, sFrom).empty());
                }
            });
        }
        EXPECT_EQ(found, Walk(outer, sStart));
    });
    Swct_Switch_SetSwitchMode(2);
    forEach([](auto next, auto sStart) {
        EXPECT_EQ(Walk(next, sStart).size(), sizeof sStart == sizeof(SwctPortMoid) ? 3U : 0U);
    });
}

} // namespace
