// Any bytes in the region, any inventory, any operations with any arguments.  What goes wrong ends the process.
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>

#include "blocks.h"
#include "operations.h"
#include "platform.h"
#include "platform/gt.h"
#include "region/views.h"
#include "swct/lifecycle.h"

namespace {

// How often each operation was called; told at the end.
std::map<std::string_view, uint64_t> theCalls;
// The longest call.
uint64_t qwMostBlocks = 0;
const char* pLongestCall = "";

void PrintCalls()
{
    const OperationList sList = Operations();
    uint64_t qwCalls = 0;
    for (std::size_t i = 0; i < sList.nbrOfOperations; ++i) {
        const uint64_t qwOfOperation = theCalls[sList.pFirst[i].pName];
        qwCalls += qwOfOperation;
        if (qwOfOperation == 0) {
            std::fprintf(stderr, "not called: %s\n", sList.pFirst[i].pName);
        }
    }
    std::fprintf(stderr, "%llu calls of %zu operations; the longest ran %llu basic blocks: %s\n",
                 static_cast<unsigned long long>(qwCalls), sList.nbrOfOperations,
                 static_cast<unsigned long long>(qwMostBlocks), pLongestCall);
}

void SetInventory(Input& sInput)
{
    theInventory = {};
    const uint8_t bKind = sInput.Byte();
    theInventory.boShmFails = bKind == 0xFF;
    if (bKind % 4 != 0) {
        return;
    }
    theInventory.bFirstSlot = sInput.Key<uint8_t>();
    theInventory.bLastSlot = sInput.Key<uint8_t>();
    for (uint8_t bSlot = 0; bSlot < 4; ++bSlot) {
        theInventory.adwExpectedMode[bSlot] = sInput.Byte() % 40;
    }
    for (uint8_t bLag = 0; bLag < 6; ++bLag) {
        if (sInput.Byte() % 2 == 0) {
            sInput.Fill(&theInventory.lags[bLag], sizeof(SwctPortList));
            theInventory.lags[bLag].asPort[0] = {sInput.Key<uint8_t>(), sInput.Key<uint8_t>(), 0};
        }
    }
}

// Port types and the switch mode decide which tables an operation looks at: anything there would mostly mean none.
void MakePlausible(Input& sInput)
{
    SwctData& sData = *WritableRegion();
    sData.sSwitch.sAttributes.dwSwitchMode = sInput.Byte() % 3;
    for (auto& aPort : sData.sSwitchPort) {
        for (SwctSwitchPort& sPort : aPort) {
            const uint8_t bKind = sInput.Byte();
            sPort.dwPbPortType = bKind % 4;
            sPort.dwL2PortType = bKind / 4 % 4;
            sPort.dwIngressFiltering = bKind / 16 % 4;
        }
    }
}

void SetRegion(Input& sInput)
{
    const uint8_t bKind = sInput.Byte();
    qwNbrOfBlocks = 0;
    if (bKind % 4 == 0) {
        Swct_Init();
    } else {
        sInput.Fill(WritableRegion(), sizeof(SwctData));
    }
    if (bKind % 8 < 6) {
        MakePlausible(sInput);
    }
}

// What another process may do between two calls.
void Scribble(Input& sInput)
{
    const std::size_t offset = sInput.Raw<uint32_t>() % sizeof(SwctData);
    const std::size_t room = sizeof(SwctData) - offset;
    const std::size_t size = sInput.Raw<uint16_t>();
    sInput.Fill(reinterpret_cast<uint8_t*>(WritableRegion()) + offset, size < room ? size : room);
}

void Attach(Input& sInput)
{
    pSwctRead = nullptr;
    pSwctWrite = nullptr;
    const uint8_t bKind = sInput.Byte() % 8;
    if (bKind == 0) {
        return;
    }
    if (bKind < 4) {
        Swct_Open();
        return;
    }
    // Both views, and questions still go through the mapping where a store faults.
    Swct_CdbmOpen();
    if (pSwctWrite != nullptr) {
        pSwctRead = ReadableRegion();
    }
}

void CallOne(Input& sInput)
{
    static const OperationList sList = Operations();
    const Operation& sOperation = sList.pFirst[sInput.Raw<uint16_t>() % sList.nbrOfOperations];
    ++theCalls[sOperation.pName];
    const bool boProtects = pSwctWrite != nullptr && sOperation.eKind != OperationKind::change;
    if (boProtects) {
        ProtectRegion(true);
    }
    Digest sDigest;
    sOperation.pCall(sInput, sDigest);
    if (qwNbrOfBlocks > qwMostBlocks) {
        qwMostBlocks = qwNbrOfBlocks;
        pLongestCall = sOperation.pName;
    }
    if (boProtects) {
        ProtectRegion(false);
    }
}

} // namespace

// A call must not take longer because of what the region holds.
void BeginCall()
{
    qwNbrOfBlocks = 0;
}

void EndCall() {}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, std::size_t size)
{
    static const int iRegistered = std::atexit(PrintCalls);
    static_cast<void>(iRegistered);
    Input sInput(pBytes, size);
    DBG_SWCH = 0;
    SetInventory(sInput);
    SetRegion(sInput);
    Attach(sInput);
    DBG_SWCH = sInput.Byte() % 4 == 0 ? 9 : 0;
    DBG_EHSL = DBG_SWCH;
    while (!sInput.IsEmpty()) {
        if (sInput.Byte() % 8 == 0) {
            Scribble(sInput);
        }
        CallOne(sInput);
    }
    return 0;
}
