#include "objects/picture.h"

#include "objects/failure.h"

#include <algorithm>
#include <cstring>
#include <ctime>

namespace tool {

namespace {

constexpr int64_t kSecond = 1'000'000'000;

int64_t Now()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * kSecond + now.tv_nsec;
}

} // namespace

std::unique_ptr<Picture> TakePicture()
{
    auto picture = std::make_unique<Picture>();
    Swct_GetConfig(SWCT_CLASS_SWITCH, &picture->sSwitch, 1); // as stored; the other copy has counts filled in
    picture->dwHrlb = Swct_GetHrlb();
    picture->bManagementSlot = Swct_GetMgmtVlanIntfSlot();
    picture->wManagementVlan = Swct_GetMgmtVlanIntfVlanId();
    picture->dwManagementPriority = Swct_GetMgmtVlanIntfVlanPcp();
    picture->wNbrOfPopulatedVlans = Swct_GetNbrOfPopulatedVlans();
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        picture->aVlan[vlan - 1U] = *Swct_GetVlanEntryRPtr(vlan);
    }
    for (const Port port : AllPorts()) {
        picture->aPort[IndexOf(port)] = *Swct_GetSwitchPortRPtr(port.slot, port.port);
        picture->aQinQ[IndexOf(port)] = *Swct_GetQinQPortRPtr(port.slot, port.port);
        picture->aBridgeData[IndexOf(port)] = *Swct_GetPbDataRPtr(port.slot, port.port);
    }
    return picture;
}

bool IsSame(const Picture& left, const Picture& right)
{
    return std::memcmp(&left, &right, sizeof(Picture)) == 0;
}

Rest::Rest() : m_end(Now() + kSecond / 50) // longer than it takes to write a whole configuration
{
}

void Rest::Sleep() const
{
    const timespec end = {m_end / kSecond, m_end % kSecond};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr);
}

void FailForUnrest()
{
    throw Failure(kInUse, "the region keeps changing: try again when nobody writes to it");
}

} // namespace tool
