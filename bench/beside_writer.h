// beside_writer.h - a reader in this process while a writer in another pushes a class for ever, two configurations in
// turn, records in key order.
#pragma once

#include "scene.h"

#include <string>

struct Asker {
    std::string name;
    void (*pPush)(const ClassData& sClass); // by the writer
    // Whether a port is a member of a VLAN, the S-VID of its C-VID; 0 = none.
    uint32_t (*pAsk)(uint16_t wClass, PortKey sPort, uint16_t wVid);
};

// Rows of a table: pushes and answers in a second, percentiles of the time of an answer, and the share of the answers
// about objects which both configurations have that were "no", or a value that neither of them has.
std::string MeasureBesideWriter(const Scene& sScene, uint16_t wClass, const Asker& sAsker, double seconds);
