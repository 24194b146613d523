// Any bytes in the region, any inventory, any operations with any arguments.  What goes wrong ends the process.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "operations.h"
#include "platform/gt.h"
#include "region.h"
#include "steps.h"

namespace {

// A run makes so many calls, at the most: first by its input, then by numbers that follow from it.
constexpr unsigned kCallsOfRun = 512;

// What was called; told at the end.
struct Totals {
    std::vector<uint64_t> aqwCalls = std::vector<uint64_t>(Operations().nbrOfOperations);
    uint64_t qwMostSteps = 0;
    const char* pLongestCall = "";

    ~Totals()
    {
        const OperationList sList = Operations();
        uint64_t qwSum = 0;
        for (std::size_t i = 0; i < aqwCalls.size(); ++i) {
            qwSum += aqwCalls[i];
            if (aqwCalls[i] == 0) {
                std::fprintf(stderr, "not called: %s\n", sList.pFirst[i].pName);
            }
        }
        const double seconds = double(std::clock()) / CLOCKS_PER_SEC;
        std::fprintf(
            stderr,
            "%llu calls of %zu operations, %.0f in a second of the processor; the longest ran %llu basic blocks: %s\n",
            static_cast<unsigned long long>(qwSum), aqwCalls.size(), double(qwSum) / seconds,
            static_cast<unsigned long long>(qwMostSteps), pLongestCall);
    }
};

void CallOne(Input& sInput, Totals& totals, bool boWrites)
{
    const OperationList sList = Operations();
    const std::size_t number = sInput.Raw<uint16_t>() % sList.nbrOfOperations;
    const Operation& sOperation = sList.pFirst[number];
    ++totals.aqwCalls[number];
    if (boWrites) {
        Region::Get().SetWriteView(sOperation.eKind == OperationKind::change);
    }
    Digest sDigest;
    sOperation.pCall(sInput, sDigest);
    if (qwNbrOfSteps > totals.qwMostSteps) {
        totals.qwMostSteps = qwNbrOfSteps;
        totals.pLongestCall = sOperation.pName;
    }
}

} // namespace

// A call must not take longer because of what the region holds.
void BeginCall()
{
    qwNbrOfSteps = 0;
}

void EndCall() {}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, std::size_t size)
{
    static Totals totals;
    Region& region = Region::Get();
    Input sInput(pBytes, size);
    sInput.GoOnWithNumbers();
    DBG_SWCH = DBG_EHSL = 0;
    SetInventory(sInput);
    qwNbrOfSteps = 0;
    region.Set(sInput);
    const bool boWrites = region.Attach(sInput);
    DBG_SWCH = DBG_EHSL = sInput.Byte() % 8 == 0 ? 9 : 0;
    for (unsigned call = 0; call < kCallsOfRun; ++call) {
        if (sInput.Byte() % 64 == 0) {
            region.Scribble(sInput);
        }
        CallOne(sInput, totals, boWrites);
    }
    return 0;
}
