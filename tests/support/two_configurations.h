// two_configurations.h - two configurations that a writer pushes in turn, and what a reader beside it may find.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

#include "region/region_record.h"
#include "swct/swct.h"

// A whole configuration as the requests of one push, in their order.
using Configuration = std::vector<std::pair<uint16_t, std::vector<uint8_t>>>;

template <class Record>
void Add(Configuration& requests, const Record& sRecord)
{
    const auto* pBytes = reinterpret_cast<const uint8_t*>(&sRecord);
    requests.back().second.insert(requests.back().second.end(), pBytes, pBytes + sizeof sRecord);
}

template <class Record>
Record Filled(int variant)
{
    Record sRecord;
    std::memset(static_cast<void*>(&sRecord), 0x51 + 0x22 * variant, sizeof sRecord);
    return sRecord;
}

// How much of it there is: customer edge ports come first, then network ports.
struct Extent {
    unsigned ceps;
    unsigned ports;
    uint16_t wVlans;         // 30 and more hold all VIDs that the ports use
    uint16_t wRegistrations; // of each customer edge port
    uint16_t wTranslations;  // of each network port
};

// 'variant' 0 and 1 differ in all values.
inline Configuration MakeConfiguration(int variant, const Extent& sExtent)
{
    const unsigned ceps = sExtent.ceps;
    const unsigned ports = sExtent.ports;
    const auto wBase = static_cast<uint16_t>(variant == 0 ? 8 : 12);
    Configuration requests;
    const auto begin = [&](uint16_t wClass) { requests.emplace_back(wClass, std::vector<uint8_t>()); };
    const auto forPorts = [&](unsigned from, unsigned to, auto act) {
        for (unsigned i = from; i < to; ++i) {
            act(static_cast<uint8_t>(i / 5 + 1), static_cast<uint8_t>(i % 5 + 1), i);
        }
        Add(requests, uint64_t{0}); // the terminator, and more
        Add(requests, uint64_t{0});
    };
    const auto forVlans = [&](auto act) {
        for (auto wVlanId = static_cast<uint16_t>(wBase - 7); wVlanId < wBase - 7 + sExtent.wVlans; ++wVlanId) {
            act(wVlanId);
        }
        Add(requests, uint64_t{0});
    };
    begin(177);
    forPorts(0, ports, [&](uint8_t bSlot, uint8_t bPort, unsigned i) {
        auto sPort = Filled<SwctSwitchPort>(variant);
        sPort.dwPbPortType = i < ceps ? 3U : i % 2 + 1;
        sPort.dwIngressFiltering = 2;
        Add(requests, SwctSwitchPortRecord{{177, bSlot, bPort}, sPort});
    });
    begin(205);
    forVlans([&](uint16_t wVlanId) {
        auto sVlan = Filled<SwctVlan>(variant);
        sVlan.wVlanId = wVlanId;
        sVlan.dwRowState = 1;
        sVlan.dwVlanIf = variant == 0 ? 1 : 0;
        Add(requests, SwctVlanRecord{{205, wVlanId}, sVlan});
    });
    begin(469);
    forPorts(0, ceps, [&](uint8_t bSlot, uint8_t bPort, unsigned) {
        for (uint16_t wIndex = 1; wIndex <= 16; ++wIndex) {
            auto sPep = Filled<SwctProviderEdgePort>(variant);
            sPep.wSvid = static_cast<uint16_t>(wBase + wIndex);
            Add(requests, SwctProviderEdgePortRecord{{469, bSlot, bPort, wIndex}, sPep});
        }
    });
    begin(514);
    forPorts(0, ports, [&](uint8_t bSlot, uint8_t bPort, unsigned i) {
        auto sQinQ = Filled<SwctQinQPort>(variant);
        sQinQ.wProviderTagVid = static_cast<uint16_t>(wBase + i);
        Add(requests, SwctQinQPortRecord{{514, bSlot, bPort}, sQinQ});
    });
    begin(369);
    forPorts(0, ceps, [&](uint8_t bSlot, uint8_t bPort, unsigned) {
        for (uint16_t wCVid = 1; wCVid <= sExtent.wRegistrations; ++wCVid) {
            auto sRecord = Filled<SwctCVidRegistration>(variant);
            sRecord.wCVid = wCVid;
            sRecord.wSvid = static_cast<uint16_t>(wBase + 1 + wCVid % 16);
            Add(requests, SwctCVidRegistrationRecord{{369, bSlot, bPort, wCVid}, sRecord});
        }
    });
    begin(176);
    auto sSwitch = Filled<SwctSwitchAttributes>(variant);
    sSwitch.dwSwitchMode = 1;
    Add(requests, sSwitch);
    begin(206);
    forVlans([&](uint16_t wVlanId) {
        const SwctVlanPortAttributes sBody{1, 1, 1, static_cast<uint32_t>(variant) + 1};
        Add(requests, SwctVlanPortRecord{{206, wVlanId, static_cast<uint8_t>(wVlanId % 3 + 1), 1}, sBody});
        if (wVlanId == wBase) {
            Add(requests, SwctVlanPortRecord{{206, wVlanId, 3, 5}, sBody}); // a member of just one
        }
    });
    begin(427);
    forPorts(0, ceps, [&](uint8_t bSlot, uint8_t bPort, unsigned) {
        for (unsigned i = 0; i < 16 * 8; ++i) {
            const uint32_t dwPriority = i % 8 + 1;
            Add(requests,
                SwctServicePriorityRegenerationRecord{{427, bSlot, bPort, static_cast<uint16_t>(i / 8 + 1), dwPriority},
                                                      {dwPriority, variant == 0 ? dwPriority : 9 - dwPriority}});
        }
    });
    begin(437);
    forPorts(ceps, ports, [&](uint8_t bSlot, uint8_t bPort, unsigned) {
        for (uint16_t wLocalVid = 1; wLocalVid <= sExtent.wTranslations; ++wLocalVid) {
            auto sRecord = Filled<SwctVidTranslation>(variant);
            sRecord.wLocalVid = wLocalVid;
            sRecord.wRelayVid = static_cast<uint16_t>(wBase + wLocalVid);
            sRecord.dwStatus = variant == 0 ? 3 : 2; // of a port with settings, and without
            Add(requests, SwctVidTranslationRecord{{437, bSlot, bPort, wLocalVid}, sRecord});
        }
    });
    begin(538);
    forPorts(0, ceps, [&](uint8_t bSlot, uint8_t bPort, unsigned) {
        Add(requests, SwctDefaultCVidRegistrationRecord{{538, bSlot, bPort}, {wBase, 1}});
    });
    begin(769);
    forVlans([&](uint16_t wVlanId) {
        Add(requests, SwctVlanIfInnerTagRecord{{769, wVlanId}, Filled<SwctVlanIfInnerTag>(variant)});
    });
    begin(867);
    Add(requests, static_cast<uint32_t>(variant) + 1);
    return requests;
}

// Ports 7 and 8 change their type.
inline const Configuration kConfigurations[] = {MakeConfiguration(0, {6, 15, 150, 200, 100}),
                                                MakeConfiguration(1, {8, 15, 150, 200, 100})};

inline void Push(const Configuration& requests)
{
    for (const auto& [wClass, abRequest] : requests) {
        Swct_SetConfig(wClass, abRequest.data());
    }
}

inline void PushConfiguration(int variant)
{
    Push(kConfigurations[variant]);
}

inline const uint8_t* RegionBytes()
{
    return reinterpret_cast<const uint8_t*>(Swct_GetVlanEntryRPtr(1)) - offsetof(SwctData, sVlan);
}

inline bool IsRegionEqualTo(const SwctData& sImage)
{
    return std::memcmp(RegionBytes(), reinterpret_cast<const uint8_t*>(&sImage), sizeof sImage) == 0;
}

// Creates the region, pushes the configurations in turn, and takes both images; 0 when they come out the same again.
inline int MakeImages(SwctData (&aImage)[2])
{
    Swct_Init();
    for (int push = 0; push < 4; ++push) {
        PushConfiguration(push % 2);
        std::memcpy(static_cast<void*>(&aImage[push % 2]), RegionBytes(), sizeof(SwctData));
    }
    PushConfiguration(0);
    return IsRegionEqualTo(aImage[0]) ? 0 : 1;
}
