// clock.cpp - the node's clock: the system's time, or one that a program holds and moves.
#include "platform/slib.h"
#include "settings.h"

#include <ctime>

using standin::sSettings;

uint32_t Slib__GetTime(void)
{
    return sSettings.boTimeIsSet ? sSettings.dwTime : static_cast<uint32_t>(std::time(nullptr));
}

void Standin__SetTime(uint32_t dwSeconds)
{
    sSettings.dwTime = dwSeconds;
    sSettings.boTimeIsSet = true;
}

void Standin__AdvanceTime(uint32_t dwSeconds)
{
    Standin__SetTime(Slib__GetTime() + dwSeconds);
}

void Standin__UseRealTime(void)
{
    sSettings.boTimeIsSet = false;
}
