#include "region.h"

#include <sanitizer/asan_interface.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "platform/gt.h"
#include "platform/standin.h"
#include "region/views.h"
#include "steps.h"
#include "support/two_configurations.h"

namespace {

// Traces are formatted by the stand-in, so that a bad pointer or format shows, and then dropped.
void DropTrace(void* /*pContext*/, const StandinTrace* /*pTrace*/) {}

StandinMemory sMemory;

// What regions are made of; built once.
std::vector<SwctData> MakePatterns(SwctData& sRegion)
{
    std::vector<SwctData> aPattern;
    aPattern.reserve(3);
    for (int variant = -1; variant < 2; ++variant) {
        qwNbrOfSteps = 0;
        Swct_Init();
        if (variant >= 0) {
            for (const auto& [wClass, abRequest] : kConfigurations[variant]) {
                qwNbrOfSteps = 0;
                Swct_SetConfig(wClass, abRequest.data());
            }
        }
        aPattern.push_back(sRegion);
    }
    return aPattern;
}

} // namespace

Region& Region::Get()
{
    static Region region;
    return region;
}

Region::Region()
{
    if (Standin__MapGuarded(sizeof(SwctData), &sMemory) == 0) {
        std::fputs("no memory for the region\n", stderr);
        std::abort();
    }
    pWritable = static_cast<SwctData*>(sMemory.pCreated);
    pReadable = static_cast<const SwctData*>(sMemory.pReadable);
    for (const void* pFirst : {static_cast<const void*>(pWritable), static_cast<const void*>(pReadable)}) {
        // What the first page has before the region.
        const std::size_t before = reinterpret_cast<uintptr_t>(pFirst) % 4096;
        ASAN_POISON_MEMORY_REGION(static_cast<const uint8_t*>(pFirst) - before, before);
    }
    Standin__SetTraceSink(DropTrace, nullptr);
    Standin__UseMemory(&sMemory, sizeof(SwctData));
}

// Stores only what differs: of the run before that is what it has touched.
void Region::TakePiece(const SwctData& sFrom, std::size_t first, std::size_t last)
{
    constexpr std::size_t kChunk = 1U << 16;
    const auto* pFrom = reinterpret_cast<const uint8_t*>(&sFrom);
    auto* pTo = reinterpret_cast<uint8_t*>(pWritable);
    for (std::size_t at = first; at < last; at += kChunk) {
        const std::size_t size = std::min(kChunk, last - at);
        if (std::memcmp(pTo + at, pFrom + at, size) != 0) {
            std::memcpy(pTo + at, pFrom + at, size);
        }
    }
}

void Region::Set(Input& sInput)
{
    static const std::vector<SwctData> aPattern = MakePatterns(*pWritable);
    const uint8_t bKind = sInput.Byte();
    if (bKind % 8 == 7) {
        sInput.Fill(pWritable, sizeof(SwctData));
    } else {
        TakePiece(aPattern[bKind % aPattern.size()], 0, sizeof(SwctData));
    }
    // Pieces of another one, at any offset.
    for (unsigned pieces = bKind / 8 % 8 > 3 ? bKind / 8 % 4 : 0; pieces != 0; --pieces) {
        const std::size_t first = sInput.Raw<uint32_t>() % sizeof(SwctData);
        const std::size_t size = sInput.Raw<uint32_t>() % (sizeof(SwctData) - first);
        TakePiece(aPattern[sInput.Byte() % aPattern.size()], first, first + size);
    }
    if (bKind < 0x40) {
        pWritable->sSwitch.sAttributes.dwSwitchMode = sInput.Byte() % 3;
        for (auto& aPort : pWritable->sSwitchPort) {
            for (SwctSwitchPort& sPort : aPort) {
                const uint8_t bPort = sInput.Byte();
                sPort.dwPbPortType = bPort % 4;
                sPort.dwL2PortType = bPort / 4 % 4;
                sPort.dwIngressFiltering = bPort / 16 % 4;
            }
        }
    }
}

void Region::Scribble(Input& sInput)
{
    const std::size_t offset = sInput.Raw<uint32_t>() % sizeof(SwctData);
    const std::size_t room = sizeof(SwctData) - offset;
    const std::size_t size = sInput.Raw<uint16_t>();
    sInput.Fill(reinterpret_cast<uint8_t*>(pWritable) + offset, size < room ? size : room);
}

bool Region::Attach(Input& sInput)
{
    pSwctRead = nullptr;
    pSwctWrite = nullptr;
    const uint8_t bKind = sInput.Byte() % 16;
    if (bKind >= 8) {
        Swct_CdbmOpen();
        pSwctRead = pReadable;
    } else if (bKind >= 1) {
        Swct_Open();
    }
    return pSwctWrite != nullptr;
}

void Region::SetWriteView(bool boMayStore)
{
    pSwctWrite = boMayStore ? pWritable : const_cast<SwctData*>(pReadable);
}

void SetInventory(Input& sInput)
{
    Standin__SetSlotRange(1, 2);
    Standin__ClearLags();
    for (uint8_t bSlot = 0; bSlot < 4; ++bSlot) {
        Standin__SetExpectedMode(bSlot, bSlot == 1 || bSlot == 2 ? 31 : 0);
    }
    const uint8_t bKind = sInput.Byte();
    static const StandinMemory sNone = {};
    Standin__UseMemory(bKind == 0xFF ? &sNone : &sMemory, sizeof(SwctData));
    if (bKind % 4 != 0) {
        return;
    }
    const auto bFirst = sInput.Key<uint8_t>();
    Standin__SetSlotRange(bFirst, sInput.Key<uint8_t>());
    for (uint8_t bSlot = 0; bSlot < 4; ++bSlot) {
        Standin__SetExpectedMode(bSlot, sInput.Byte() % 40);
    }
    for (uint8_t bLag = 0; bLag < 6; ++bLag) {
        if (sInput.Byte() % 2 == 0) {
            SwctPortList sList{};
            sInput.Fill(&sList, sizeof sList);
            sList.asPort[0] = {sInput.Key<uint8_t>(), sInput.Key<uint8_t>(), 0};
            Standin__SetLagList(bLag, &sList);
        }
    }
}
