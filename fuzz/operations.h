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

enum class OperationKind {
    attach,
    ask, // leaves the region alone
    change
};

struct Operation {
    const char* pName;
    OperationKind eKind;
    void (*pCall)(Input& sInput, Digest& sDigest);
};

struct OperationList {
    const Operation* pFirst;
    std::size_t nbrOfOperations;
};

OperationList Operations();

// No walk may take more steps: 15 ports with 4095 objects each.
constexpr unsigned kWalkStepsMax = 15 * 4095;

// Around every call of the library, but not the making of its arguments; each program has its own.
void BeginCall();
void EndCall();
