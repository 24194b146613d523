// picture.h - a private copy of the region's tables: what is read from it does not change between two looks.
#pragma once

#include "objects/configuration.h"
#include "objects/keys.h"
#include "swct/swct.h"

#include <array>
#include <memory>

namespace tool {

// All but the history.  It has no gaps: two pictures are the same when their bytes are.
struct Picture {
    SwctSwitchAttributes sSwitch;
    uint32_t dwHrlb;
    uint32_t dwManagementPriority;
    uint16_t wManagementVlan;
    uint8_t bManagementSlot;
    uint16_t wNbrOfPopulatedVlans;
    std::array<SwctVlanEntry, SWCT_VLAN_MAX> aVlan; // [VLAN id - 1]
    std::array<SwctSwitchPort, kNrOfPorts> aPort;   // [IndexOf(port)], like the next two
    std::array<SwctQinQPort, kNrOfPorts> aQinQ;
    std::array<SwctPbData, kNrOfPorts> aBridgeData;
} SWCT_PACKED;

// What the tables are when a region holds a configuration and nothing else, derived values included; up time 0.
std::unique_ptr<Picture> PictureOf(const Configuration& configuration);

// Both need the read view.
std::unique_ptr<Picture> TakePicture();
// A picture that was the same 20 ms later, at the end of the second look.  'meanwhile' is called with a picture between
// the two, and again when the region has moved; a Failure tells that it never rests.
template <class Work>
std::unique_ptr<Picture> TakeSteadyPicture(Work meanwhile);

bool IsSame(const Picture& left, const Picture& right);

// Sleeps for what is left of the time that a writer may need for one push, counted from the last picture.
class Rest {
public:
    Rest();
    void Sleep() const;

private:
    int64_t m_end; // nanoseconds of the monotonic clock
};
[[noreturn]] void FailForUnrest();

template <class Work>
std::unique_ptr<Picture> TakeSteadyPicture(Work meanwhile)
{
    constexpr int kTriesMax = 50;
    auto picture = TakePicture();
    for (int tries = 0; tries < kTriesMax; ++tries) {
        const Rest rest;
        meanwhile(*picture);
        rest.Sleep();
        auto again = TakePicture();
        if (IsSame(*picture, *again)) {
            return again;
        }
        picture = std::move(again);
    }
    FailForUnrest();
}

} // namespace tool
