// region.cpp - the same calls with the same arguments on every machine: writes the region that they leave to the
// standard output, and then what all the answers were.
#include <cstdio>

#include "support/ask.h"
#include "support/two_configurations.h"

#include "platform/gt.h"
#include "platform/standin.h"

void BeginCall() {}

void EndCall() {}

int main()
{
    StandinMemory sMemory{};
    if (Standin__MapGuarded(sizeof(SwctData), &sMemory) == 0) {
        return 1;
    }
    Standin__UseMemory(&sMemory, sizeof(SwctData));
    Standin__SetErrorTracing(0);
    Standin__SetTime(1767225600);
    Swct_Init();
    PushConfiguration(1);
    const OperationList sList = Operations();
    std::minstd_rand random(18); // NOLINT(cert-msc32-c,cert-msc51-cpp)
    Digest sDigest;
    for (int i = 0; i < 200'000; ++i) {
        const Operation& sOperation = sList.pFirst[random() % sList.nbrOfOperations];
        if (sOperation.eKind != OperationKind::attach) {
            Ask(sOperation, random, sDigest);
        }
    }
    std::fwrite(sMemory.pWritable, sizeof(SwctData), 1, stdout);
    std::fwrite(&sDigest.qwValue, sizeof(sDigest.qwValue), 1, stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
