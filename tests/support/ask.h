// ask.h - questions of all kinds with arguments of random bytes, always the same for a seed.
#pragma once

#include <random>

#include "operations.h"

// Asks one operation.  With a mask of 7 most keys are good ones.
inline void Ask(const Operation& sOperation, std::minstd_rand& random, Digest& sDigest, uint8_t bMask = 0xFF)
{
    uint8_t abInput[64];
    for (uint8_t& bByte : abInput) {
        bByte = static_cast<uint8_t>(random() >> 8 & bMask);
    }
    Input sInput(abInput, sizeof abInput);
    sOperation.pCall(sInput, sDigest);
}

// Draws 'count' operations, asks those that are questions, and returns what the answers were.
inline uint64_t AskEverything(unsigned seed, unsigned count)
{
    const OperationList sList = Operations();
    std::minstd_rand random(seed);
    Digest sDigest;
    while (count-- != 0) {
        const Operation& sOperation = sList.pFirst[random() % sList.nbrOfOperations];
        if (sOperation.eKind == OperationKind::ask) {
            Ask(sOperation, random, sDigest);
        }
    }
    return sDigest.qwValue;
}
