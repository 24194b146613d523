// own_region.h - a region for one test, just created.
#pragma once

#include "platform/standin.h"
#include "swct/swct.h"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

class OwnRegion : public testing::Test {
protected:
    OwnRegion()
    {
        Standin__SetErrorTracing(0);
        Standin__SetShmPrefix(("command-test-" + std::to_string(getpid()) + '-').c_str());
        Swct_Init();
    }
    ~OwnRegion() override
    {
        Standin__RemoveShm("/swct-data");
    }
};
