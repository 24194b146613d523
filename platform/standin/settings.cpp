// settings.cpp - the settings of the stand-in and their defaults.
#include "settings.h"

#include "platform/gt.h"

namespace standin {

constinit Settings sSettings;

} // namespace standin

void Standin__Reset(void)
{
    standin::sSettings = standin::Settings{};
    DBG_SWCH = 0;
    DBG_EHSL = 0;
}
