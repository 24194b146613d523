// region.h - the region of the fuzzers: between guard pages, filled from an input, and put back between runs.
#pragma once

#include "input.h"
#include "region/region_record.h"

class Region {
public:
    static Region& Get();

    // The same bytes twice: writable, and at an address where a store faults.
    SwctData* pWritable;
    const SwctData* pReadable;

    // What a run begins with: an empty region, one of two full configurations, a pattern, or pieces of two of these.
    // Port types and the switch mode are mostly made plausible: they decide which tables an operation looks at.
    void Set(Input& sInput);
    // What another process may do between two calls.
    void Scribble(Input& sInput);
    // No view, or a read view, or both; false without a write view.
    bool Attach(Input& sInput);
    // Where the library stores: a question goes through the mapping where a store faults.
    void SetWriteView(bool boMayStore);

private:
    Region();
    void TakePiece(const SwctData& sFrom, std::size_t first, std::size_t last);
};

// The slots, modes and link aggregation groups of the stand-in: the usual ones or anything.
void SetInventory(Input& sInput);
