// platform.h - the stand-in as the unit tests use it: the region lies in memory of the test, and traces are recorded.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/gt.h"
#include "platform/standin.h"
#include "region/region_record.h"

struct RecordedTrace {
    bool isError;
    uint32_t level; // of a debug trace, else 1
    uint32_t code;  // of an error trace, else 0
    std::string function;
    std::string text;

    bool operator==(const RecordedTrace&) const = default;
};

RecordedTrace Error(uint32_t code, std::string function, std::string text);
RecordedTrace Debug(uint32_t level, std::string function, std::string text);
void PrintTo(const RecordedTrace& trace, std::ostream* pOut);

struct TestPlatform {
    // The region between guard pages, writable.  What attaches for reading gets the same bytes at another address,
    // where a store faults.
    SwctData* pRegion = nullptr;
    const void* pReadable = nullptr;

    // Takes everything back, the traces and the library's views included; the region is filled with 'fill' then.
    void Reset(uint8_t fill = 0);
    // Whether creating and opening the region works.
    void SetShm(bool isCreatable, bool isOpenable);
    std::vector<RecordedTrace> TakeTraces();
};

extern TestPlatform thePlatform;
