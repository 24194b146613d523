// platform_double.h - the platform of the unit tests: the region lies in plain memory, and traces are recorded.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

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

struct PlatformDouble {
    std::vector<RecordedTrace> traces;
    uint32_t errorTracing = 1;
    uint32_t time = 1000;
    uint8_t firstSlot = 1;
    uint8_t lastSlot = 2;
    std::map<uint8_t, uint32_t> expectedMode = {{1, 31}, {2, 31}};
    std::map<uint8_t, SwctPortList> lags;
    int nbrOfOpens = 0;
    bool createFails = false;
    bool openFails = false;
    std::string lastShmCall; // "create /swct-data <size> <mode>"

    // The region between guard pages: an access outside it ends the test.
    SwctData* pRegion = nullptr;

    // Detaches the library and forgets everything; the region is filled with 'fill' then.
    void Reset(uint8_t fill = 0);
    std::vector<RecordedTrace> TakeTraces();
};

extern PlatformDouble thePlatform;
