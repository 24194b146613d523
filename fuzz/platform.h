// platform.h - the fuzzers' platform: a region between guard pages, and an inventory that may hold anything.
#pragma once

#include <map>

#include "region/region_record.h"

struct Inventory {
    uint8_t bFirstSlot = 1;
    uint8_t bLastSlot = 2;
    uint32_t dwTime = 1000;
    uint32_t adwExpectedMode[256] = {0, 31, 31};
    std::map<uint8_t, SwctPortList> lags;
    bool boShmFails = false;
};

extern Inventory theInventory;

// The same pages twice: the library gets the first for writing, the second for reading, where a store faults.
SwctData* WritableRegion();
const SwctData* ReadableRegion();
// Makes the first mapping read-only too, while something runs that must not change the region.
void ProtectRegion(bool boReadOnly);
