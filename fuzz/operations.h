// operations.h - every exported operation as a row, callable with arguments drawn from an input.
//
// The list comes from the version script of the library, the arguments from each operation's type: none can be
// forgotten.  Buffers have exactly their stated size.
#pragma once

#include "input.h"

// What the answers of a run were, so that two runs can be compared.
class Digest {
public:
    void Add(const void* pBytes, std::size_t size);
    uint64_t qwValue = 0;
};

struct Operation {
    const char* pName;
    bool boChanges; // stores into the region; all others must leave it alone
    void (*pCall)(Input& sInput, Digest& sDigest);
};

struct OperationList {
    const Operation* pFirst;
    std::size_t nbrOfOperations;
};

OperationList Operations();

// No walk may take more steps: 15 ports with 4095 objects each.
constexpr unsigned kWalkStepsMax = 15 * 4095;

// Basic blocks of the library that the present call has run; counted in the fuzzers' build only.
extern uint64_t qwNbrOfBlocks;
